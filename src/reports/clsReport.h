#pragma once

#include "core/RecordSet.h"
#include "reports/PlateLists.h"
#include "reports/ResultTable.h"
#include "reports/SampleRanking.h"

#include <QString>

#include <functional>
#include <QStringList>

#include <functional>
#include <stdexcept>

class AnalyticalRows;
class Prompt;
class ReportHtml;
class ReportFile;
class clsTests;

// A report can't be made from what it was given (a plate name that isn't in the set).
class ReportError : public std::runtime_error {
public:
    explicit ReportError(const QString &what) : std::runtime_error(what.toStdString()) {}
};

// The two printed products of the laboratory, the client report and the analytical
// report, written as one HTML file. The plate records are first flattened into a table of
// per-sample result rows (buildResultRows), which the writers sort and walk.
//
// The plates given are only read. Kit questions go through clsTests, whose validation text
// is kept to the report: a report never changes what the main window shows.
class clsReport {
public:
    static inline const QString kReportFileName = QStringLiteral("TempHTML.htm");
    static inline const QString kNoGroup = QStringLiteral("No Group");
    static inline const QString kGeneric = QStringLiteral("Generic");
    // Title of the box that a replicates report shows for a plate with too few controls.
    static inline const QString kTooFewControlsTitle = QStringLiteral("Too Few Controls");

    // The report is written to reportPath (the program folder's TempHTML.htm, or the file
    // the command line names). Boxes and kit messages go to prompt.
    clsReport(Prompt &prompt, const QString &reportPath);

    // True when there is a report to show. False: the client report leaves an empty file,
    // the analytical report a document that stops where the data ran out. The file is
    // complete and closed when these return. plateName and groupName are empty when not
    // limiting; replicatesMode 1 treats like-named samples of one group as replicates.
    bool makeCustomerReport(const RecordSet &plates, bool separateGroups, const QString &runName, qint16 replicatesMode,
                            bool sortByName, const QString &plateName, const QString &groupName);
    bool makeAnalyticalReport(const RecordSet &plates, bool separateGroups, const QString &runName,
                              qint16 replicatesMode, bool sortByName, const QString &plateName,
                              const QString &groupName);

    // The rows of one plate (row `plate` of the set, its lists already split), each sample
    // well alone, in well order: what the result table holds for that plate. A plate never
    // read gives none.
    ResultTable plateResultRows(const RecordSet &plates, int plate, const PlateLists &lists, const QString &runName,
                                const QString &groupName);
    // What those rows hold of their own: calls row(well, calcRatio) for each sample well
    // reported, in well order (OD, result, group and sample are the lists' items), and
    // returns the plate's critical OD (Null when none). An export asks this of each plate.
    QVariant plateFigures(const RecordSet &plates, int plate, const PlateLists &lists, const QString &groupName,
                          const std::function<void(int well, QString &&calcRatio)> &row);

    // The result table: one row per reported sample (Group, Sample, Result, TestName,
    // DateRead, TimeRead, RunName, PlateName, PlatePosition, OD, CriticalOD, CalcRatio,
    // LastVersionValidated, NumericSample), in plate and well order.
    RecordSet buildResultRows(const RecordSet &plates, const QString &runName, qint16 replicatesMode,
                              const QString &plateName, const QString &groupName);
    // The same rows as the table the writers sort and walk.
    ResultTable resultTable(const RecordSet &plates, const QString &runName, qint16 replicatesMode,
                            const QString &plateName, const QString &groupName);

    // Wells whose sample, upper-cased, equals controlType upper-cased and whose flag is
    // above 0.
    static qint16 countIncludedControls(const QStringList &samples, const QStringList &flags,
                                        const QString &controlType);
    // Mean and %CV of the ODs of those wells, as plain doubles. The mean of no wells is an
    // error (ReportError).
    static double reportControlMean(const QStringList &samples, const QStringList &flags, const QStringList &ODs,
                                    const QString &controlType);
    double reportControlCV(const QStringList &samples, const QStringList &flags, const QStringList &ODs,
                           const QString &controlType) const;
    // "A1", "B1", ... "H12" in well order.
    static const QStringList &getWellPositions();

    static QVector<SampleRank> rankSampleNames(QVector<SampleRank> entries)
    {
        return SampleRanking::rankSampleNames(std::move(entries));
    }
    static bool sampleNameInOrder(const QString &a, const QString &b) { return SampleRanking::sampleNameInOrder(a, b); }

    // The sort of the result table in each report.
    static QString customerSort(bool sortByName);
    static QString analyticalSort(bool sortByName);
    static const QStringList &resultFields() { return ResultTable::fieldNames(); }

    // The text of the box for a plate whose replicates can't be worked out.
    static QString tooFewControlsText(const QString &plateName);

private:
    // What a reported well gives its row, with the facts of its plate. The references live
    // as long as the call to the sink.
    struct PlateFacts {
        int plate;
        const QString &testName;
        const QString &version;
        const QString &plateName;
        const QVariant &dateRead;
        const QVariant &timeRead;
        const QVariant &criticalOD; // text, or Null
    };
    struct WellRow {
        int index;
        QStringView group; // as the plate has it: empty for no group
        QStringView sample;
        QStringView result;
        QStringView od;
        const QString &calcRatio;
    };
    using RowSink = std::function<void(const PlateFacts &, const WellRow &)>;

    // Hands each reported well of the plate at row `plate` to sink, in well order. A plate
    // never read gives none.
    void visitPlateRows(const RecordSet &plates, int plate, qint16 replicatesMode, const QString &groupName,
                        const RowSink &sink);
    // Appends the rows of the plate at row `plate` of the set. A plate never read adds none.
    void addPlateRows(const RecordSet &plates, int plate, ResultTable &rows, const QString &runName,
                      qint16 replicatesMode, const QString &groupName);
    // The row of the plate with that name; ReportError when there is none.
    static int findPlate(const RecordSet &plates, const QString &plateName);
    void writeAnalyticalRows(ReportFile &out, ReportHtml &html, const AnalyticalRows &rows, const QString &runName,
                             bool separateGroups);

    Prompt &mPrompt;
    QString mReportPath;
};
