#pragma once

#include "tracking/TrackingData.h"

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <memory>

class Browser;
class Prompt;
class Workbook;
struct QcHistory;

// What the charts show: the names ticked for the X axis, and the bands of one and two
// standard deviations around the super mean.
struct TrackingChartOptions {
    bool plateName = true;
    bool runName = false;
    bool date = false;
    bool time = false;
    bool stdDev = true;

    int numChecked() const { return int(plateName) + int(runName) + int(date) + int(time); }
};

// The tracking workbook: the tracking table written as plain values (no formulas) on a
// new sheet, with a line chart of the plates' control means against the super mean's
// bands, and a second of the ratio means when the kit has a ratio. The file is kept in the
// user's documents folder and opens in the user's spreadsheet program, which shows,
// prints or closes it; the program neither saves it elsewhere nor closes it.
//
// Sheet: row 1 holds the heads, bold in columns A to R; one row per table row from row 2.
// A technician, B to E the four labels (the ticked ones first, so that one range serves as
// X values), F lot, G to L the control mean, the super standard deviation and the four
// band values, M to R the same for the ratio (written only for a kit with a ratio). The
// control figures are numbers; the ratio figures are percentages, as the text of the
// number followed by "%" is taken by a spreadsheet: 45.12% is the number 0.4512 shown
// with the format "0.00%". Dates and times are written as they read (M/d/yyyy,
// h:mm:ss AM/PM), since they label the X axis.
class TrackingWorkbook {
public:
    using WorkbookFactory = std::function<std::unique_ptr<Workbook>()>;

    static inline const QString kFileName = QStringLiteral("Control report");

    static inline const QString kPlateName = QStringLiteral("Plate Name");
    static inline const QString kRunName = QStringLiteral("Run Name");
    static inline const QString kDateRead = QStringLiteral("Date Read");
    static inline const QString kTimeRead = QStringLiteral("Time Read");

    // folder: where the workbooks go; each takes a new name there (DocumentFolder), so an
    // earlier one, or one still open in the spreadsheet program, is never written over.
    TrackingWorkbook(Prompt &prompt, Browser &browser, const QString &folder, WorkbookFactory newWorkbook = {});

    // Writes the workbook of the data and opens it. Its name: "Control report", the parts
    // given (the test, the lot ...) and the time when. Returns the file written; empty when
    // no program could open it (the user was told, and the file is gone). Throws
    // std::runtime_error when the file can't be written, std::invalid_argument when no
    // label is ticked.
    // With a quality-control history of the same plates (the "Westgard rules" of the
    // dialog), the sheet also holds its columns (QcWorkbookColumns) from column S on.
    QString writeTrackingWorkbook(const TrackingData &data, const TrackingChartOptions &options,
                                  const QStringList &nameParts, const QDateTime &when, const QcHistory *qc = nullptr);

    // Fills a workbook with the sheet and the charts, as writeTrackingWorkbook does.
    static void fillWorkbook(Workbook &workbook, const TrackingData &data, const TrackingChartOptions &options,
                             const QcHistory *qc = nullptr);

    // The four labels: the ticked ones (plate name, run name, date, time in this order)
    // first, then the others in the same order.
    static QStringList labelOrder(const TrackingChartOptions &options);

    // The value of a label in the current row of the tracking table; Null for a name that
    // is not a label.
    static QVariant getTrackingField(const RecordSet &rows, const QString &label);

    // A value as a spreadsheet reads the text of the number followed by "%": the text has
    // up to 15 significant digits, and the percentage is that decimal divided by 100.
    static double percentValue(double value);
    static QString percentFormat(double value);

private:
    Prompt &mPrompt;
    Browser &mBrowser;
    QString mFolder;
    WorkbookFactory mNewWorkbook;
};
