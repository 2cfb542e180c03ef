#pragma once

#include <QAbstractTableModel>

class PlateSheet;

// One of the four sheets of the plate on screen as a table of 8 rows (A to H) and
// 12 columns: texts, exclusion marks, bold, italic and colours.
class SheetTableModel : public QAbstractTableModel {
    Q_OBJECT
public:
    SheetTableModel(PlateSheet &sheet, int sheetIndex, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;

    int sheetIndex() const { return mSheetIndex; }
    // The grid's name, shown in its corner: "Groups", "Samples", "ODs", "Results".
    QString cornerText() const;
    // Whether the user may type in the cells (set by the window for the layout sheets).
    void setEditable(bool editable) { mEditable = editable; }

signals:
    // A cell edit ended with this text (row 1..8, col 1..12).
    void cellEdited(int row, int col, const QString &text);

private:
    PlateSheet &mSheet;
    int mSheetIndex;
    bool mEditable = false;
};
