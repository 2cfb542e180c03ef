#include "reports/clsReport.h"

#include "core/LegacyFormat.h"
#include "core/WellList.h"
#include "core/Wells.h"
#include "evaluation/MathLibrary.h"
#include "evaluation/clsTests.h"
#include "platform/Prompt.h"
#include "reports/ReportFile.h"
#include "reports/ReportHtml.h"
#include "reports/ReportText.h"
#include "worksheet/PlateSheet.h"

#include <QHash>

#include <array>

namespace {

const QString kPC = QStringLiteral("PC");
const QString kNC = QStringLiteral("NC");

bool isIncludedControl(const QString &sample, const QString &flag, const QString &upperType)
{
    return sample.toUpper() == upperType && legacy::toInt16(flag) > 0;
}

// The ODs of the included wells of a control type, as plain doubles.
std::vector<double> includedControlODs(const QStringList &samples, const QStringList &flags, const QStringList &ODs,
                                       const QString &controlType)
{
    const QString upperType = controlType.toUpper();
    std::vector<double> values;
    for (int i = 0; i < wells::kCount; ++i) {
        if (isIncludedControl(samples[i], flags[i], upperType))
            values.push_back(legacy::toDouble(ODs[i]));
    }
    return values;
}

QStringList wellList(const RecordSet &plates, int plate, QStringView field)
{
    return splitWellList(plates.valueAt(plate, field).toString());
}

} // namespace

clsReport::clsReport(Prompt &prompt, const QString &reportPath) : mPrompt(prompt), mReportPath(reportPath) {}

const QStringList &clsReport::resultFields()
{
    static const QStringList fields = {
        QStringLiteral("Group"),     QStringLiteral("Sample"),        QStringLiteral("Result"),
        QStringLiteral("TestName"),  QStringLiteral("DateRead"),      QStringLiteral("TimeRead"),
        QStringLiteral("RunName"),   QStringLiteral("PlateName"),     QStringLiteral("PlatePosition"),
        QStringLiteral("OD"),        QStringLiteral("CriticalOD"),    QStringLiteral("CalcRatio"),
        QStringLiteral("LastVersionValidated"), QStringLiteral("NumericSample"),
    };
    return fields;
}

QString clsReport::customerSort(bool sortByName)
{
    return sortByName ? QStringLiteral("Group ASC, NumericSample ASC, Testname ASC, DateRead ASC")
                      : QStringLiteral("Group ASC, Testname ASC, DateRead ASC");
}

QString clsReport::analyticalSort(bool sortByName)
{
    return sortByName ? QStringLiteral("Group ASC, Testname ASC, PlateName, NumericSample ASC")
                      : QStringLiteral("Group ASC, Testname ASC, PlateName");
}

QString clsReport::tooFewControlsText(const QString &plateName)
{
    return QStringLiteral("The plate \"%1\" has too few included controls (PC and NC) to work out the results of its "
                          "replicates. Its samples are left out of this report.")
        .arg(plateName);
}

const QStringList &clsReport::getWellPositions()
{
    static const QStringList positions = [] {
        QStringList list;
        for (int k = 0; k < wells::kCount; ++k)
            list << wells::name(k);
        return list;
    }();
    return positions;
}

qint16 clsReport::countIncludedControls(const QStringList &samples, const QStringList &flags,
                                        const QString &controlType)
{
    const QString upperType = controlType.toUpper();
    qint16 count = 0;
    for (int i = 0; i < wells::kCount; ++i) {
        if (isIncludedControl(samples[i], flags[i], upperType))
            ++count;
    }
    return count;
}

double clsReport::reportControlMean(const QStringList &samples, const QStringList &flags, const QStringList &ODs,
                                    const QString &controlType)
{
    const std::vector<double> values = includedControlODs(samples, flags, ODs, controlType);
    if (values.empty())
        throw ReportError(QStringLiteral("There are no included %1 wells to take a mean of.").arg(controlType));
    double sum = 0;
    for (double v : values)
        sum += v;
    return sum / double(values.size());
}

double clsReport::reportControlCV(const QStringList &samples, const QStringList &flags, const QStringList &ODs,
                                  const QString &controlType) const
{
    return MathLibrary::calculateCV(includedControlODs(samples, flags, ODs, controlType), mPrompt);
}

int clsReport::findPlate(const RecordSet &plates, const QString &plateName)
{
    for (int p = 0; p < plates.recordCount(); ++p) {
        if (plates.valueAt(p, u"PlateName").toString() == plateName)
            return p;
    }
    throw ReportError(QStringLiteral("There is no plate named \"%1\" to report.").arg(plateName));
}

void clsReport::addPlateRows(const RecordSet &plates, int plate, RecordSet &rows, const QString &runName,
                             qint16 replicatesMode, const QString &groupName)
{
    // A plate that was never read has nothing to report and no readings to work with.
    const QVariant dateRead = plates.valueAt(plate, u"DateRead");
    if (dateRead.isNull())
        return;

    const clsTests tests(mPrompt);
    std::array<bool, wells::kCount> used{};
    const QStringList groups = wellList(plates, plate, u"Groups");
    const QStringList samples = wellList(plates, plate, u"Samples");
    QStringList results = wellList(plates, plate, u"Results");
    QStringList ODs = wellList(plates, plate, u"ODs");
    const QStringList flags = wellList(plates, plate, u"IncludeExcludeFlags");
    const QStringList &positions = getWellPositions();

    const qint16 numPC = countIncludedControls(samples, flags, kPC);
    const qint16 numNC = countIncludedControls(samples, flags, kNC);
    const QString testName = plates.valueAt(plate, u"TestName").toString();
    const QString version = plates.valueAt(plate, u"LastVersionValidated").toString();
    const QString plateName = plates.valueAt(plate, u"PlateName").toString();

    const bool enoughControls = tests.isEnoughPC(testName, version, numPC) && tests.isEnoughNC(testName, version, numNC);
    double meanPC = 0;
    double meanNC = 0;
    bool validated = false;
    if (enoughControls && testName != kGeneric) {
        meanPC = reportControlMean(samples, flags, ODs, kPC);
        meanNC = reportControlMean(samples, flags, ODs, kNC);
        const double cvPC = reportControlCV(samples, flags, ODs, kPC);
        const double cvNC = reportControlCV(samples, flags, ODs, kNC);
        KitValidationText reportOnly; // the main window's validation boxes stay as they are
        validated = tests.validateTest(testName, version, meanPC, meanNC, cvPC, cvNC, reportOnly);
    }

    const QString criticalType = tests.getCriticalControl(testName, version);
    const qint16 criticalCount = countIncludedControls(samples, flags, criticalType);
    const double criticalMean = criticalCount != 0 ? reportControlMean(samples, flags, ODs, criticalType) : 0.0;
    const QVariant criticalOD = criticalCount != 0 ? QVariant(legacy::format(criticalMean, u"#0.000")) : QVariant();

    auto reported = [&](int i) {
        return !samples[i].isEmpty() && !used[i] && !isControlName(samples[i]) &&
               (groupName.isEmpty() || groupName == groups[i]);
    };

    if (replicatesMode == 1 && testName != kGeneric && !enoughControls) {
        // Replicate results rest on the control means, which this plate can't give.
        for (int i = 0; i < wells::kCount; ++i) {
            if (reported(i)) {
                mPrompt.message(tooFewControlsText(plateName), kTooFewControlsTitle, MsgIcon::Exclamation);
                break;
            }
        }
        return;
    }

    const QVariant timeRead = plates.valueAt(plate, u"TimeRead");
    for (int i = 0; i < wells::kCount; ++i) {
        if (!reported(i))
            continue;
        if (replicatesMode == 1) {
            used[i] = true;
            double sum = legacy::toDouble(ODs[i]);
            int count = 1;
            for (int j = i + 1; j < wells::kCount; ++j) {
                if (!samples[j].isEmpty() && !used[j] && samples[j] == samples[i] && groups[j] == groups[i] &&
                    !isControlName(samples[j])) {
                    sum += legacy::toDouble(ODs[j]);
                    ++count;
                    used[j] = true;
                }
            }
            ODs[i] = ReportText::legacyNumberText(sum / count);
            results[i] = tests.mathResults(testName, version, legacy::toSingle(ODs[i]), meanPC, meanNC);
        }

        rows.addNew();
        rows.setValue(u"Group", groups[i].isEmpty() ? kNoGroup : groups[i]);
        rows.setValue(u"Sample", samples[i]);
        rows.setValue(u"Result", results[i]);
        rows.setValue(u"TestName", testName);
        rows.setValue(u"DateRead", dateRead);
        rows.setValue(u"TimeRead", timeRead);
        rows.setValue(u"RunName", runName);
        rows.setValue(u"PlateName", plateName);
        rows.setValue(u"PlatePosition", positions[i]);
        rows.setValue(u"OD", ODs[i]);
        rows.setValue(u"CriticalOD", criticalOD);
        rows.setValue(u"CalcRatio", validated ? tests.getCalculationRatio(testName, version, legacy::toDouble(ODs[i]),
                                                                          meanPC, meanNC)
                                              : QString(QStringLiteral("")));
        rows.setValue(u"LastVersionValidated", version);
    }
}

RecordSet clsReport::buildResultRows(const RecordSet &plates, const QString &runName, qint16 replicatesMode,
                                     const QString &plateName, const QString &groupName)
{
    RecordSet rows(resultFields());
    if (!plateName.isEmpty()) {
        const int plate = findPlate(plates, plateName);
        if (!plates.valueAt(plate, u"TestName").toString().isEmpty())
            addPlateRows(plates, plate, rows, runName, replicatesMode, groupName);
    } else {
        for (int plate = 0; plate < plates.recordCount(); ++plate) {
            if (!plates.valueAt(plate, u"TestName").toString().isEmpty())
                addPlateRows(plates, plate, rows, runName, replicatesMode, groupName);
        }
    }

    if (rows.recordCount() >= 2) {
        QVector<SampleRank> entries;
        entries.reserve(rows.recordCount());
        for (int r = 0; r < rows.recordCount(); ++r)
            entries.append({rows.valueAt(r, u"Sample").toString(), 0});
        entries = rankSampleNames(std::move(entries));
        // Every row of a name takes the number of the first entry of that name.
        QHash<QString, qint32> numbers;
        for (const SampleRank &entry : entries) {
            if (!numbers.contains(entry.name))
                numbers.insert(entry.name, entry.number);
        }
        for (int r = 0; r < rows.recordCount(); ++r)
            rows.setValueAt(r, u"NumericSample", qulonglong(numbers.value(rows.valueAt(r, u"Sample").toString())));
    }
    rows.moveFirst();
    return rows;
}

bool clsReport::makeCustomerReport(const RecordSet &plates, bool separateGroups, const QString &runName,
                                   qint16 replicatesMode, bool sortByName, const QString &plateName,
                                   const QString &groupName)
{
    ReportFile out(mReportPath);
    const clsTests tests(mPrompt);
    RecordSet rows = buildResultRows(plates, runName, replicatesMode, plateName, groupName);
    if (rows.recordCount() == 0) {
        out.close();
        return false;
    }
    rows.sort(customerSort(sortByName));

    ReportHtml html(out, tests);
    html.writeDocumentHead();
    bool first = true;
    const int count = rows.recordCount();
    int r = 0;
    while (r < count) {
        if (!separateGroups || first) {
            out.writeLine(u"<P>");
            first = false;
        } else {
            out.writeLine(u"<P CLASS = \"breakhere\">");
        }
        const QString group = rows.valueAt(r, u"Group").toString();
        html.writeClientGroupHeading(group);
        while (r < count && rows.valueAt(r, u"Group").toString() == group) {
            html.writeRow({rows.valueAt(r, u"Sample").toString(), rows.valueAt(r, u"TestName").toString(),
                           rows.valueAt(r, u"Result").toString(), ReportText::defaultText(rows.valueAt(r, u"DateRead"))});
            ++r;
        }
        out.writeLine(u"</table>");
    }
    html.writeDocumentTail();
    out.close();
    return true;
}

bool clsReport::makeAnalyticalReport(const RecordSet &plates, bool separateGroups, const QString &runName,
                                     qint16 replicatesMode, bool sortByName, const QString &plateName,
                                     const QString &groupName)
{
    ReportFile out(mReportPath);
    clsTests tests(mPrompt);
    ReportHtml html(out, tests);
    html.writeDocumentHead();

    if (groupName.isEmpty()) {
        if (!plateName.isEmpty()) {
            const int plate = findPlate(plates, plateName);
            if (plates.valueAt(plate, u"DateRead").isNull()) {
                out.close();
                return false;
            }
            html.writePlateSection(plates, plate, runName);
        } else {
            bool anyRead = false;
            for (int plate = 0; plate < plates.recordCount(); ++plate) {
                if (!plates.valueAt(plate, u"DateRead").isNull()) {
                    html.writePlateSection(plates, plate, runName);
                    anyRead = true;
                }
            }
            if (!anyRead) {
                out.close();
                return false;
            }
        }
    }

    RecordSet rows = buildResultRows(plates, runName, replicatesMode, plateName, groupName);
    if (rows.recordCount() == 0) {
        out.close();
        return false;
    }
    rows.sort(analyticalSort(sortByName));
    writeAnalyticalRows(out, tests, rows, separateGroups);
    html.writeDocumentTail();
    out.close();
    return true;
}

void clsReport::writeAnalyticalRows(ReportFile &out, clsTests &tests, RecordSet &rows, bool separateGroups)
{
    ReportHtml html(out, tests);
    bool first = true;
    QString currentGroup;
    QString currentTest;
    for (int r = 0; r < rows.recordCount(); ++r) {
        const QString group = rows.valueAt(r, u"Group").toString();
        if (group != currentGroup) {
            if (first) {
                out.writeLine(u"<P>");
                first = false;
            } else {
                out.writeLine(u"</TABLE>");
                out.writeLine(separateGroups ? u"<P CLASS = \"breakhere\">" : u"<P>");
            }
            html.writeAnalyticalGroupHeading(group);
            currentGroup = group;
            currentTest.clear();
        }
        const QString testName = rows.valueAt(r, u"TestName").toString();
        if (testName != currentTest) {
            html.writeTestHeading(testName, rows.valueAt(r, u"LastVersionValidated").toString());
            currentTest = testName;
        }
        html.writeRow({rows.valueAt(r, u"Sample").toString(), rows.valueAt(r, u"OD").toString(),
                       rows.valueAt(r, u"CriticalOD").toString(), rows.valueAt(r, u"CalcRatio").toString(),
                       rows.valueAt(r, u"Result").toString(),
                       ReportText::defaultText(rows.valueAt(r, u"DateRead")) + u' ' +
                           ReportText::defaultText(rows.valueAt(r, u"TimeRead")),
                       rows.valueAt(r, u"RunName").toString(), rows.valueAt(r, u"PlateName").toString(),
                       rows.valueAt(r, u"PlatePosition").toString()});
    }
}
