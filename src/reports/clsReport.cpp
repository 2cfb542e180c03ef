#include "reports/clsReport.h"

#include "core/LegacyFormat.h"
#include "core/WellList.h"
#include "core/Wells.h"
#include "evaluation/MathLibrary.h"
#include "evaluation/TestKit.h"
#include "evaluation/clsTests.h"
#include "platform/Prompt.h"
#include "reports/AnalyticalRows.h"
#include "reports/ReportFile.h"
#include "reports/ReportHtml.h"
#include "reports/ReportText.h"
#include "worksheet/PlateSheet.h"

#include <QHash>

#include <array>
#include <bitset>

namespace {

const QString kPC = QStringLiteral("PC");
const QString kNC = QStringLiteral("NC");

WellTexts viewsOf(const QStringList &list)
{
    WellTexts items{};
    for (qsizetype i = 0; i < wells::kCount && i < list.size(); ++i)
        items[size_t(i)] = list[i];
    return items;
}

// A QString over a view's characters without copying them, for the conversions that take
// a QString. It must not outlive the text viewed.
QString viewed(QStringView text)
{
    return QString::fromRawData(text.data(), text.size());
}

// legacy::toDouble of the text; plain decimals (the ODs) read without the general parser,
// to the same value.
double numberOf(QStringView text)
{
    double value;
    return legacy::readPlainDecimal(text, value) ? value : legacy::toDouble(viewed(text));
}

// sample.toUpper() == upperType, without making the upper-case text when the sample is
// plain ASCII (it is asked for every well several times a plate).
bool equalsInUpperCase(QStringView sample, const QString &upperType)
{
    // An ASCII first letter stays the first letter in upper case: most names part here.
    if (!sample.isEmpty() && !upperType.isEmpty() && sample[0].unicode() < 0x80) {
        char16_t first = sample[0].unicode();
        if (first >= u'a' && first <= u'z')
            first = char16_t(first - (u'a' - u'A'));
        if (first != upperType[0].unicode())
            return false;
    }
    const qsizetype n = sample.size();
    for (qsizetype i = 0; i < n; ++i) {
        if (sample[i].unicode() >= 0x80)
            return sample.toString().toUpper() == upperType;
    }
    if (n != upperType.size())
        return false;
    for (qsizetype i = 0; i < n; ++i) {
        char16_t c = sample[i].unicode();
        if (c >= u'a' && c <= u'z')
            c = char16_t(c - (u'a' - u'A'));
        if (c != upperType[i].unicode())
            return false;
    }
    return true;
}

bool isIncludedControl(QStringView sample, QStringView flag, const QString &upperType)
{
    if (!equalsInUpperCase(sample, upperType))
        return false;
    // The flags are single digits as a rule.
    if (flag.size() == 1 && flag[0] >= u'0' && flag[0] <= u'9')
        return flag[0] != u'0';
    return legacy::toInt16(viewed(flag)) > 0;
}

// The included wells of a control type.
using WellSet = std::bitset<wells::kCount>;

WellSet includedWells(const WellTexts &samples, const WellTexts &flags, const QString &controlType)
{
    const QString upperType = controlType.toUpper();
    WellSet included;
    for (size_t i = 0; i < wells::kCount; ++i)
        included[i] = isIncludedControl(samples[i], flags[i], upperType);
    return included;
}

qint16 countIncluded(const WellTexts &samples, const WellTexts &flags, const QString &controlType)
{
    return qint16(includedWells(samples, flags, controlType).count());
}

// The ODs of a set of wells, as plain doubles.
std::vector<double> odsOfWells(const WellSet &included, const WellTexts &ODs)
{
    std::vector<double> values;
    values.reserve(included.count());
    for (size_t i = 0; i < wells::kCount; ++i) {
        if (included[i])
            values.push_back(numberOf(ODs[i]));
    }
    return values;
}

// The ODs of the included wells of a control type, as plain doubles.
std::vector<double> includedControlODs(const WellTexts &samples, const WellTexts &flags, const WellTexts &ODs,
                                       const QString &controlType)
{
    return odsOfWells(includedWells(samples, flags, controlType), ODs);
}

double meanOfControls(const std::vector<double> &values, const QString &controlType)
{
    if (values.empty())
        throw ReportError(QStringLiteral("There are no included %1 wells to take a mean of.").arg(controlType));
    double sum = 0;
    for (double v : values)
        sum += v;
    return sum / double(values.size());
}

double controlMean(const WellTexts &samples, const WellTexts &flags, const WellTexts &ODs, const QString &controlType)
{
    return meanOfControls(includedControlODs(samples, flags, ODs, controlType), controlType);
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
    return countIncluded(viewsOf(samples), viewsOf(flags), controlType);
}

double clsReport::reportControlMean(const QStringList &samples, const QStringList &flags, const QStringList &ODs,
                                    const QString &controlType)
{
    return controlMean(viewsOf(samples), viewsOf(flags), viewsOf(ODs), controlType);
}

double clsReport::reportControlCV(const QStringList &samples, const QStringList &flags, const QStringList &ODs,
                                  const QString &controlType) const
{
    return MathLibrary::calculateCV(includedControlODs(viewsOf(samples), viewsOf(flags), viewsOf(ODs), controlType),
                                    mPrompt);
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
    const QStringList &positions = getWellPositions();
    visitPlateRows(plates, plate, replicatesMode, groupName, [&](const PlateFacts &facts, const WellRow &well) {
        ResultRow &row = rows.rows().emplaceBack();
        row.group = well.group.isEmpty() ? kNoGroup : well.group.toString();
        row.sample = well.sample.toString();
        row.result = well.result.toString();
        row.testName = facts.testName;
        row.dateRead = facts.dateRead;
        row.timeRead = facts.timeRead;
        row.runName = runName;
        row.plateName = facts.plateName;
        row.platePosition = positions[well.index];
        row.od = well.od.toString();
        row.criticalOD = facts.criticalOD;
        row.calcRatio = well.calcRatio;
        row.lastVersionValidated = facts.version;
    });
}

void clsReport::visitPlateRows(const RecordSet &plates, int plate, qint16 replicatesMode, const QString &groupName,
                               const RowSink &sink)
{
    // A plate that was never read has nothing to report and no readings to work with.
    const QVariant dateRead = plates.valueAt(plate, u"DateRead");
    if (dateRead.isNull())
        return;

    const clsTests tests(mPrompt);
    std::array<bool, wells::kCount> used{};
    const QString groupsText = plates.valueAt(plate, u"Groups").toString();
    const QString samplesText = plates.valueAt(plate, u"Samples").toString();
    const QString resultsText = plates.valueAt(plate, u"Results").toString();
    const QString odsText = plates.valueAt(plate, u"ODs").toString();
    const QString flagsText = plates.valueAt(plate, u"IncludeExcludeFlags").toString();
    const WellTexts groups = splitWellListViews(groupsText);
    const WellTexts samples = splitWellListViews(samplesText);
    const WellTexts results = splitWellListViews(resultsText);
    const WellTexts ODs = splitWellListViews(odsText);
    const WellTexts flags = splitWellListViews(flagsText);

    // Each control type's wells are found once; their ODs are read once for mean and CV.
    const WellSet pcWells = includedWells(samples, flags, kPC);
    const WellSet ncWells = includedWells(samples, flags, kNC);
    const qint16 numPC = qint16(pcWells.count());
    const qint16 numNC = qint16(ncWells.count());
    const QString testName = plates.valueAt(plate, u"TestName").toString();
    const QString version = plates.valueAt(plate, u"LastVersionValidated").toString();
    const QString plateName = plates.valueAt(plate, u"PlateName").toString();

    const bool enoughControls =
        tests.isEnoughPC(testName, version, numPC) && tests.isEnoughNC(testName, version, numNC);
    double meanPC = 0;
    double meanNC = 0;
    bool validated = false;
    if (enoughControls && testName != kGeneric) {
        const std::vector<double> pcODs = odsOfWells(pcWells, ODs);
        meanPC = meanOfControls(pcODs, kPC);
        const std::vector<double> ncODs = odsOfWells(ncWells, ODs);
        meanNC = meanOfControls(ncODs, kNC);
        const double cvPC = MathLibrary::calculateCV(pcODs, mPrompt);
        const double cvNC = MathLibrary::calculateCV(ncODs, mPrompt);
        KitValidationText reportOnly; // the main window's validation boxes stay as they are
        validated = tests.validateTest(testName, version, meanPC, meanNC, cvPC, cvNC, reportOnly);
    }

    const QString criticalType = tests.getCriticalControl(testName, version);
    const QString upperCritical = criticalType.toUpper();
    const WellSet criticalWells = upperCritical == kPC   ? pcWells
                                  : upperCritical == kNC ? ncWells
                                                         : includedWells(samples, flags, criticalType);
    const double criticalMean =
        criticalWells.any() ? meanOfControls(odsOfWells(criticalWells, ODs), criticalType) : 0.0;
    const qint16 criticalCount = qint16(criticalWells.count());
    const QVariant criticalOD = criticalCount != 0 ? QVariant(legacy::format(criticalMean, u"#0.000")) : QVariant();

    auto isControl = [](QStringView sample) { return isControlName(viewed(sample)); };
    auto reported = [&](size_t i) {
        return !samples[i].isEmpty() && !used[i] && !isControl(samples[i]) &&
               (groupName.isEmpty() || groupName == groups[i]);
    };

    if (replicatesMode == 1 && testName != kGeneric && !enoughControls) {
        // Replicate results rest on the control means, which this plate can't give.
        for (size_t i = 0; i < wells::kCount; ++i) {
            if (reported(i)) {
                mPrompt.message(tooFewControlsText(plateName), kTooFewControlsTitle, MsgIcon::Exclamation);
                break;
            }
        }
        return;
    }

    // The kit answers the same for every well of the plate: asked for once (the questions
    // above have already found it).
    const std::unique_ptr<TestKit> kit = tests.getTestClass(testName, version);
    const QVariant timeRead = plates.valueAt(plate, u"TimeRead");
    const PlateFacts facts{plate, testName, version, plateName, dateRead, timeRead, criticalOD};
    QString replicateOD, replicateResult;
    for (size_t i = 0; i < wells::kCount; ++i) {
        if (!reported(i))
            continue;
        QStringView od = ODs[i];
        QStringView result = results[i];
        if (replicatesMode == 1) {
            used[i] = true;
            double sum = numberOf(ODs[i]);
            int count = 1;
            for (size_t j = i + 1; j < wells::kCount; ++j) {
                if (!samples[j].isEmpty() && !used[j] && samples[j] == samples[i] && groups[j] == groups[i] &&
                    !isControl(samples[j])) {
                    sum += numberOf(ODs[j]);
                    ++count;
                    used[j] = true;
                }
            }
            replicateOD = ReportText::legacyNumberText(sum / count);
            replicateResult = kit->mathResults(legacy::toSingle(replicateOD), meanPC, meanNC);
            od = replicateOD;
            result = replicateResult;
        }
        const QString calcRatio =
            validated ? kit->getCalculationRatio(numberOf(od), meanPC, meanNC) : QString(QStringLiteral(""));
        sink(facts, WellRow{int(i), groups[i], samples[i], result, od, calcRatio});
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

    // The rows are kept small (not as a result table): the report's memory barely grows with
    // the plates. Their order is that of analyticalSort(sortByName) on the result table.
    AnalyticalRows rows(sortByName);
    auto addRows = [&](int plate) {
        int started = -1;
        visitPlateRows(plates, plate, replicatesMode, groupName, [&](const PlateFacts &facts, const WellRow &well) {
            if (started != facts.plate) {
                rows.startPlate(facts.testName, facts.version, facts.plateName, facts.criticalOD.toString(),
                                ReportText::defaultText(facts.dateRead) + u' ' +
                                    ReportText::defaultText(facts.timeRead));
                started = facts.plate;
            }
            rows.addRow(well.index, well.group.isEmpty() ? QStringView(kNoGroup) : well.group, well.sample, well.od,
                        well.calcRatio, well.result);
        });
    };
    if (!plateName.isEmpty()) {
        const int plate = findPlate(plates, plateName);
        if (!plates.valueAt(plate, u"TestName").toString().isEmpty())
            addRows(plate);
    } else {
        for (int plate = 0; plate < plates.recordCount(); ++plate) {
            if (!plates.valueAt(plate, u"TestName").toString().isEmpty())
                addRows(plate);
        }
    }
    if (rows.count() == 0) {
        out.close();
        return false;
    }
    rows.sort();
    writeAnalyticalRows(out, html, rows, runName, separateGroups);
    html.writeDocumentTail();
    out.close();
    return true;
}

void clsReport::writeAnalyticalRows(ReportFile &out, ReportHtml &html, const AnalyticalRows &rows,
                                    const QString &runName, bool separateGroups)
{
    static const std::array<QByteArray, wells::kCount> positions = [] {
        std::array<QByteArray, wells::kCount> texts;
        for (int k = 0; k < wells::kCount; ++k)
            texts[size_t(k)] = wells::name(k).toLatin1();
        return texts;
    }();
    const QByteArray run = ReportText::toWindows1252(runName);
    // A row is its nine values between constant pieces; the end of one cell and the start
    // of the next go out as one.
    static constexpr char kRowStart[] = "<tr>\r\n\t<td align=\"center\"><font size=\"-1\">";
    static constexpr char kNextCell[] = "</td>\r\n\t<td align=\"center\"><font size=\"-1\">";
    static constexpr char kRowEnd[] = "</td>\r\n</tr>\r\n";
    bool first = true;
    int currentGroup = -1;
    const QString *currentTest = nullptr;
    constexpr size_t kAhead = 8; // rows whose texts are fetched while this one is written
    const std::vector<AnalyticalRows::Row> &all = rows.rows();
    for (size_t r = 0; r < all.size(); ++r) {
        const AnalyticalRows::Row &row = all[r];
        if (r + kAhead < all.size())
            rows.prefetchTexts(all[r + kAhead]);
        const AnalyticalRows::Plate &plate = rows.plate(row);
        if (row.group != currentGroup) {
            if (first) {
                out.writeLine(u"<P>");
                first = false;
            } else {
                out.writeLine(u"</TABLE>");
                out.writeLine(separateGroups ? u"<P CLASS = \"breakhere\">" : u"<P>");
            }
            html.writeAnalyticalGroupHeading(rows.group(row));
            currentGroup = row.group;
            currentTest = nullptr;
        }
        if (!currentTest || plate.testName != *currentTest) {
            html.writeTestHeading(plate.testName, plate.version);
            currentTest = &plate.testName;
        }
        const QByteArrayView values[] = {rows.text(row, 0),
                                         rows.text(row, 1),
                                         plate.criticalOD,
                                         rows.text(row, 2),
                                         rows.text(row, 3),
                                         plate.dateTime,
                                         run,
                                         plate.plateName,
                                         positions[size_t(row.well)]};
        out.append(kRowStart);
        for (size_t i = 0; i < std::size(values); ++i) {
            if (i > 0)
                out.append(kNextCell);
            out.append(values[i]);
        }
        out.append(kRowEnd);
    }
}
