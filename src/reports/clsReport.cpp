#include "reports/clsReport.h"

#include "core/LegacyFormat.h"
#include "core/WellList.h"
#include "core/Wells.h"
#include "evaluation/MathLibrary.h"
#include "evaluation/TestKit.h"
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

clsReport::clsReport(Prompt &prompt, const QString &reportPath) : mPrompt(prompt), mReportPath(reportPath)
{
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

void clsReport::addPlateRows(const RecordSet &plates, int plate, ResultTable &rows, const QString &runName,
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

    const bool enoughControls =
        tests.isEnoughPC(testName, version, numPC) && tests.isEnoughNC(testName, version, numNC);
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

        ResultRow &row = rows.rows().emplaceBack();
        row.group = groups[i].isEmpty() ? kNoGroup : groups[i];
        row.sample = samples[i];
        row.result = results[i];
        row.testName = testName;
        row.dateRead = dateRead;
        row.timeRead = timeRead;
        row.runName = runName;
        row.plateName = plateName;
        row.platePosition = positions[i];
        row.od = ODs[i];
        row.criticalOD = criticalOD;
        row.calcRatio = validated
                            ? tests.getCalculationRatio(testName, version, legacy::toDouble(ODs[i]), meanPC, meanNC)
                            : QString(QStringLiteral(""));
        row.lastVersionValidated = version;
    }
}

namespace {

// sample.toUpper() == upperType, without making the upper-cased text for a plain ASCII name
// (the usual case): an export asks it of every well of every plate.
bool isOfType(const QString &sample, QStringView upperType)
{
    const auto upper = [](char16_t c) { return c >= u'a' && c <= u'z' ? char16_t(c - u'a' + u'A') : c; };
    // Upper-casing maps each character alone, so a plain first letter decides most names.
    if (!sample.isEmpty() && sample[0].unicode() < 0x80 &&
        (upperType.isEmpty() || upper(sample[0].unicode()) != upperType[0].unicode()))
        return false;
    for (QChar c : sample) {
        if (c.unicode() >= 0x80)
            return sample.toUpper() == upperType;
    }
    if (sample.size() != upperType.size())
        return false;
    for (qsizetype i = 0; i < sample.size(); ++i) {
        if (upper(sample[i].unicode()) != upperType[i].unicode())
            return false;
    }
    return true;
}

// countIncludedControls over split lists.
qint16 includedCount(const PlateLists &lists, const QString &controlType)
{
    const QString upperType = controlType.toUpper();
    qint16 count = 0;
    for (int i = 0; i < wells::kCount; ++i) {
        if (isOfType(lists.samples[i], upperType) && legacy::toInt16(lists.flags[i]) > 0)
            ++count;
    }
    return count;
}

} // namespace

ResultTable clsReport::plateResultRows(const RecordSet &plates, int plate, const PlateLists &lists,
                                       const QString &runName, const QString &groupName)
{
    ResultTable table;
    const QVariant dateRead = plates.valueAt(plate, u"DateRead");
    if (dateRead.isNull())
        return table;
    const QString testName = plates.valueAt(plate, u"TestName").toString();
    const QString version = plates.valueAt(plate, u"LastVersionValidated").toString();
    const QString plateName = plates.valueAt(plate, u"PlateName").toString();
    const QVariant timeRead = plates.valueAt(plate, u"TimeRead");
    const QStringList &positions = getWellPositions();
    table.rows().reserve(wells::kCount);
    const QVariant criticalOD = plateFigures(plates, plate, lists, groupName, [&](int i, QString &&calcRatio) {
        ResultRow &row = table.rows().emplaceBack();
        row.group = lists.groups[i].isEmpty() ? kNoGroup : lists.groups[i];
        row.sample = lists.samples[i];
        row.result = lists.results[i];
        row.testName = testName;
        row.dateRead = dateRead;
        row.timeRead = timeRead;
        row.runName = runName;
        row.plateName = plateName;
        row.platePosition = positions[i];
        row.od = lists.ods[i];
        row.calcRatio = std::move(calcRatio);
        row.lastVersionValidated = version;
    });
    for (ResultRow &row : table.rows())
        row.criticalOD = criticalOD;
    return table;
}

QVariant clsReport::plateFigures(const RecordSet &plates, int plate, const PlateLists &lists, const QString &groupName,
                                 const std::function<void(int well, QString &&calcRatio)> &row)
{
    if (plates.valueAt(plate, u"DateRead").isNull())
        return QVariant();
    // As addPlateRows without replicates, with the kit made once and each control type
    // gathered once: the same questions asked in the same order, so the same boxes.
    const auto odsOf = [&lists](const QString &controlType) {
        const QString upperType = controlType.toUpper();
        std::vector<double> values;
        for (int i = 0; i < wells::kCount; ++i) {
            if (isOfType(lists.samples[i], upperType) && legacy::toInt16(lists.flags[i]) > 0)
                values.push_back(PlateLists::number(lists.ods[i]));
        }
        if (values.empty())
            throw ReportError(QStringLiteral("There are no included %1 wells to take a mean of.").arg(controlType));
        return values;
    };
    const auto meanOf = [](const std::vector<double> &values) {
        double sum = 0;
        for (double v : values)
            sum += v;
        return sum / double(values.size());
    };

    const qint16 numPC = includedCount(lists, kPC);
    const qint16 numNC = includedCount(lists, kNC);
    const QString testName = plates.valueAt(plate, u"TestName").toString();
    const QString version = plates.valueAt(plate, u"LastVersionValidated").toString();
    const std::unique_ptr<TestKit> kit = clsTests(mPrompt).getTestClass(testName, version);

    const bool enoughControls = numPC >= kit->getMinimumPC() && numNC >= kit->getMinimumNC();
    double meanPC = 0;
    double meanNC = 0;
    bool validated = false;
    if (enoughControls && testName != kGeneric) {
        const std::vector<double> pc = odsOf(kPC);
        const std::vector<double> nc = odsOf(kNC);
        meanPC = meanOf(pc);
        meanNC = meanOf(nc);
        const double cvPC = MathLibrary::calculateCV(pc, mPrompt);
        const double cvNC = MathLibrary::calculateCV(nc, mPrompt);
        KitValidationText reportOnly; // the main window's validation boxes stay as they are
        validated = kit->validateTest(meanPC, meanNC, cvPC, cvNC, version, reportOnly);
    }

    const QString criticalType = kit->getCriticalControl();
    const qint16 criticalCount = includedCount(lists, criticalType);
    const QVariant criticalOD =
        criticalCount != 0 ? QVariant(legacy::format(meanOf(odsOf(criticalType)), u"#0.000")) : QVariant();

    for (int i = 0; i < wells::kCount; ++i) {
        const QString &sample = lists.samples[i];
        if (sample.isEmpty() || isControlName(sample) || !(groupName.isEmpty() || groupName == lists.groups[i]))
            continue;
        row(i, validated ? kit->getCalculationRatio(PlateLists::number(lists.ods[i]), meanPC, meanNC)
                         : QString(QStringLiteral("")));
    }
    return criticalOD;
}

RecordSet clsReport::buildResultRows(const RecordSet &plates, const QString &runName, qint16 replicatesMode,
                                     const QString &plateName, const QString &groupName)
{
    return resultTable(plates, runName, replicatesMode, plateName, groupName).toRecordSet();
}

ResultTable clsReport::resultTable(const RecordSet &plates, const QString &runName, qint16 replicatesMode,
                                   const QString &plateName, const QString &groupName)
{
    ResultTable table;
    table.rows().reserve(plates.recordCount() * wells::kCount);
    if (!plateName.isEmpty()) {
        const int plate = findPlate(plates, plateName);
        if (!plates.valueAt(plate, u"TestName").toString().isEmpty())
            addPlateRows(plates, plate, table, runName, replicatesMode, groupName);
    } else {
        for (int plate = 0; plate < plates.recordCount(); ++plate) {
            if (!plates.valueAt(plate, u"TestName").toString().isEmpty())
                addPlateRows(plates, plate, table, runName, replicatesMode, groupName);
        }
    }

    QVector<ResultRow> &rows = table.rows();
    if (rows.size() >= 2) {
        QVector<SampleRank> entries;
        entries.reserve(rows.size());
        for (const ResultRow &row : rows)
            entries.append({row.sample, 0});
        entries = rankSampleNames(std::move(entries));
        // Every row of a name takes the number of the first entry of that name.
        QHash<QString, qint32> numbers;
        for (const SampleRank &entry : entries) {
            if (!numbers.contains(entry.name))
                numbers.insert(entry.name, entry.number);
        }
        for (ResultRow &row : rows)
            row.numericSample = qulonglong(numbers.value(row.sample));
    }
    return table;
}

bool clsReport::makeCustomerReport(const RecordSet &plates, bool separateGroups, const QString &runName,
                                   qint16 replicatesMode, bool sortByName, const QString &plateName,
                                   const QString &groupName)
{
    ReportFile out(mReportPath);
    const clsTests tests(mPrompt);
    ResultTable table = resultTable(plates, runName, replicatesMode, plateName, groupName);
    if (table.count() == 0) {
        out.close();
        return false;
    }
    table.sort(customerSort(sortByName));

    ReportHtml html(out, tests);
    html.writeDocumentHead();
    bool first = true;
    const QVector<ResultRow> &rows = table.rows();
    const int count = table.count();
    int r = 0;
    while (r < count) {
        if (!separateGroups || first) {
            out.writeLine(u"<P>");
            first = false;
        } else {
            out.writeLine(u"<P CLASS = \"breakhere\">");
        }
        const QString group = rows[r].group;
        html.writeClientGroupHeading(group);
        while (r < count && rows[r].group == group) {
            const ResultRow &row = rows[r];
            html.writeRow({row.sample, row.testName, row.result, ReportText::defaultText(row.dateRead)});
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

    ResultTable table = resultTable(plates, runName, replicatesMode, plateName, groupName);
    if (table.count() == 0) {
        out.close();
        return false;
    }
    table.sort(analyticalSort(sortByName));
    writeAnalyticalRows(out, tests, table, separateGroups);
    html.writeDocumentTail();
    out.close();
    return true;
}

void clsReport::writeAnalyticalRows(ReportFile &out, clsTests &tests, const ResultTable &table, bool separateGroups)
{
    ReportHtml html(out, tests);
    bool first = true;
    QString currentGroup;
    QString currentTest;
    for (const ResultRow &row : table.rows()) {
        if (row.group != currentGroup) {
            if (first) {
                out.writeLine(u"<P>");
                first = false;
            } else {
                out.writeLine(u"</TABLE>");
                out.writeLine(separateGroups ? u"<P CLASS = \"breakhere\">" : u"<P>");
            }
            html.writeAnalyticalGroupHeading(row.group);
            currentGroup = row.group;
            currentTest.clear();
        }
        if (row.testName != currentTest) {
            html.writeTestHeading(row.testName, row.lastVersionValidated);
            currentTest = row.testName;
        }
        html.writeRow({row.sample, row.od, row.criticalOD.toString(), row.calcRatio, row.result,
                       ReportText::defaultText(row.dateRead) + u' ' + ReportText::defaultText(row.timeRead),
                       row.runName, row.plateName, row.platePosition});
    }
}
