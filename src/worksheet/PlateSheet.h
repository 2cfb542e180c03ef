#pragma once

#include "core/Wells.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <array>
#include <bitset>

// One cell of a sheet: its text and its look.
struct SheetCell {
    QString text;
    bool bold = false;
    bool italic = false;
    quint32 foreColour = 0; // legacy colour value: 255 red, 65280 green, 0 default
};

// The rectangle of a selection, normalised: first row/col to last row/col.
struct SheetRange {
    int firstRow = 1;
    int firstCol = 1;
    int lastRow = 1;
    int lastCol = 1;
};

// The plate on screen: four parallel sheets of 8 x 12 wells (groups, samples, adjusted
// ODs, results), the exclusion mark of each well (its back colour in all four sheets),
// the raw ODs and the inclusion flags, and one cursor and selection shared by the four
// sheets (they are locked together). The grids of the main window are views of it.
class PlateSheet : public QObject {
    Q_OBJECT
public:
    enum Sheet { Groups = 0, Samples = 1, ODs = 2, Results = 3 };
    static constexpr int kSheets = 4;
    // Back colour of an excluded well: the system's application-workspace colour.
    static constexpr quint32 kExcludedBackColour = 0x8000000C;

    explicit PlateSheet(QObject *parent = nullptr);

    // Cells, by row 1..8 and column 1..12 or by well index 0..95.
    const SheetCell &cell(int sheet, int row, int col) const { return mCells[sheet][wells::index(row, col)]; }
    const QString &text(int sheet, int row, int col) const { return cell(sheet, row, col).text; }
    const QString &textAt(int sheet, int well) const { return mCells[sheet][well].text; }
    void setText(int sheet, int row, int col, const QString &text);
    void setTextAt(int sheet, int well, const QString &text);
    void setStyle(int sheet, int row, int col, bool bold, bool italic, quint32 foreColour);
    // Writes text and plain style into every cell of a sheet / of a rectangle.
    void clearSheet(int sheet);
    void fillSheetRange(int sheet, int firstRow, int firstCol, int lastRow, int lastCol, const QString &text);
    // The 96 texts of a sheet in well order, and back.
    QStringList sheetTexts(int sheet) const;
    void setSheetTexts(int sheet, const QStringList &texts);

    // Exclusion marks and the per-well arrays. Indices outside the plate throw std::out_of_range.
    quint32 backColour(int row, int col) const;
    bool isMarked(int row, int col) const { return backColour(row, col) != 0; }
    double getRawOD(int row, int col) const;
    double rawODAt(int well) const { return mRawODs.at(well); }
    void setRawODAt(int well, double value) { mRawODs.at(well) = value; }
    qint16 getInclusionFlag(int row, int col) const;
    qint16 inclusionFlagAt(int well) const { return mIncludeFlags.at(well); }
    // Stores the flag and marks the well in all four sheets: shaded for 0, plain otherwise.
    void setInclusionFlag(int row, int col, qint16 flag);
    void setInclusionFlagAt(int well, qint16 flag);
    // All raw ODs to 0 and all flags to 1 (with their marks).
    void resetWellArrays();

    // Counts wells whose back colour equals backColour and whose text equals name,
    // both compared in upper case.
    int countSheetSamples(int sheet, const QString &name, quint32 backColour) const;

    // Cursor and selection, shared by the four sheets. Row/Col is the cursor, RowSel/ColSel
    // the other end of the selection.
    int row() const { return mRow; }
    int col() const { return mCol; }
    int rowSel() const { return mRowSel; }
    int colSel() const { return mColSel; }
    void setCursor(int row, int col); // collapses the selection to the cell
    void setSelection(int row, int col, int rowSel, int colSel);
    SheetRange getSheetSelection() const;

    // Bulk changes: per-cell signals are held back. At the end the cells whose text, style
    // or mark did change are told as a few rectangles (cellsChanged), or as one sheetReset()
    // when a whole sheet was rewritten; so a grid repaints only what changed.
    void beginUpdate();
    void endUpdate();

signals:
    void cellChanged(int sheet, int row, int col);
    void cellsChanged(int sheet, const SheetRange &range);
    void markChanged(int row, int col);
    void selectionChanged();
    void sheetReset();

private:
    void emitCell(int sheet, int well);
    void emitMark(int well);
    void emitPendingCells();

    std::array<std::array<SheetCell, wells::kCount>, kSheets> mCells;
    std::array<double, wells::kCount> mRawODs{};
    std::array<qint16, wells::kCount> mIncludeFlags{};
    std::array<bool, wells::kCount> mMarked{};
    int mRow = 1, mCol = 1, mRowSel = 1, mColSel = 1;
    int mUpdateDepth = 0;
    // Held back during a bulk change: the changed wells of each sheet, and whether a whole
    // sheet was rewritten.
    std::array<std::bitset<wells::kCount>, kSheets> mPending;
    bool mResetPending = false;
};
