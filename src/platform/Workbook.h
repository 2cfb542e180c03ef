#pragma once

#include <QList>
#include <QString>

#include <optional>

// A block of cells on the sheet of a workbook; rows and columns count from 1.
struct WorkbookRange {
    int firstRow = 1;
    int firstColumn = 1;
    int lastRow = 1;
    int lastColumn = 1;

    bool operator==(const WorkbookRange &) const = default;
};

// What marks each point of a line.
enum class WorkbookMarker { None, Circle, Diamond };

// One line of a chart: its values, and the X values (category labels) under it. A range
// of several columns as X values gives labels of several levels (plate, run, date ...).
struct WorkbookSeries {
    QString name;
    WorkbookRange values;
    std::optional<WorkbookRange> categories;
    // X values taken from several blocks together, in this order, as one reference
    // "(Sheet1!$B$2:$B$9,Sheet1!$C$2:$C$9)"; when given, they stand in place of categories.
    QList<WorkbookRange> categoryAreas = {};
    // The mark of each point; a line without marks draws nothing for a single point.
    WorkbookMarker marker = WorkbookMarker::None;
    // A dashed line rather than a solid one.
    bool dashed = false;
};

// A line chart on the sheet, placed in points from the sheet's top left corner.
struct WorkbookLineChart {
    double left = 50;
    double top = 40;
    double width = 300;
    double height = 200;
    QString title;
    double titleFontSize = 0; // 0: the spreadsheet's own size
    QList<WorkbookSeries> series;
    // The value (Y) axis: its title, and fixed scale figures where given; otherwise the
    // spreadsheet program chooses.
    QString valueAxisTitle;
    std::optional<double> valueAxisMinimum;
    std::optional<double> valueAxisMaximum;
    std::optional<double> valueAxisMajorUnit;
    // The number format of the value axis' labels ("0.0%"); empty: that of the values' cells.
    QString valueAxisNumberFormat = {};
    // The size in points of the X-axis labels; 0: the spreadsheet's own size.
    double categoryAxisFontSize = 0;
};

// A new spreadsheet of one sheet ("Sheet1"), built up in memory and written as a whole:
// cell values (text or number, no formulas), bold cells, column widths and line charts.
// Writing it does not open it; the caller hands the file to the user's spreadsheet program
// (Browser).
class Workbook {
public:
    // The box when no program on the machine opens a workbook; one wording wherever a
    // workbook is handed to the user.
    static inline const QString kNotFoundTitle = QStringLiteral("Microsoft Excel not found.");
    static inline const QString kNotFoundText =
        QStringLiteral("Unable to export data.  Make sure you have Microsoft Excel version 5.0 or higher installed.");

    virtual ~Workbook() = default;

    // The name of the sheet, as chart ranges refer to it.
    virtual QString sheetName() const = 0;

    // A text value; an empty text leaves the cell empty.
    virtual void setText(int row, int column, const QString &text) = 0;
    // A number, shown with the number format given (such as "0.000" or "0.0%"), or in the
    // general format when it is empty.
    virtual void setNumber(int row, int column, double value, const QString &numberFormat = QString()) = 0;
    virtual void setBold(int row, int column, bool bold = true) = 0;
    // Width in characters of the default font, as spreadsheet programs measure it.
    virtual void setColumnWidth(int column, double width) = 0;
    virtual void addLineChart(const WorkbookLineChart &chart) = 0;
    // A plain text printed at the top of every page of the sheet, in the middle.
    virtual void setPageHeader(const QString &text) = 0;

    // Writes the workbook to a file (.xlsx), replacing it. False, with the reason in
    // *error, when it can't be written.
    virtual bool save(const QString &path, QString *error = nullptr) = 0;
};
