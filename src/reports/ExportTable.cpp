#include "reports/ExportTable.h"

#include "core/LegacyFormat.h"
#include "core/Wells.h"
#include "evaluation/PlateEvaluator.h"
#include "evaluation/clsTests.h"
#include "reports/PlateLists.h"
#include "reports/clsReport.h"
#include "store/DatabaseSchema.h"

#include <array>
#include <optional>

namespace {

// "A1" ... "H12", made once and shared by every row.
const QString &wellName(int k)
{
    static const std::array<QString, wells::kCount> names = [] {
        std::array<QString, wells::kCount> list;
        for (int i = 0; i < wells::kCount; ++i)
            list[i] = wells::name(i);
        return list;
    }();
    return names[k];
}

QDate dateOf(const QVariant &value)
{
    if (value.typeId() == QMetaType::QDateTime)
        return value.toDateTime().date();
    if (value.typeId() == QMetaType::QString)
        return QDate::fromString(value.toString(), Qt::ISODate);
    return value.toDate();
}

QTime timeOf(const QVariant &value)
{
    if (value.typeId() == QMetaType::QDateTime)
        return value.toDateTime().time();
    if (value.typeId() == QMetaType::QString)
        return QTime::fromString(value.toString(), Qt::ISODate);
    return value.toTime();
}

// The plate as the evaluation sees it, from its record: what the screen shows of it.
PlateInput plateInput(const RecordSet &plates, int plate, const PlateLists &lists)
{
    PlateInput input;
    input.testName = plates.valueAt(plate, u"TestName").toString();
    input.version = plates.valueAt(plate, u"LastVersionValidated").toString();
    forEachWellItem(plates.valueAt(plate, u"RawODs").toString(),
                    [&input](int k, QStringView od) { input.rawODs[k] = PlateLists::numberOr(od, 0.0); });
    for (int k = 0; k < wells::kCount; ++k) {
        input.flags[k] = PlateLists::numberOr(lists.flags[k], qint16(1));
        input.samples[k] = lists.samples[k];
        input.groups[k] = lists.groups[k];
    }
    input.filter = plates.valueAt(plate, u"FilterUsed").toString();
    input.expDate = plates.valueAt(plate, u"ExpDate");
    input.dateRead = plates.valueAt(plate, u"DateRead");
    input.today = dateOf(input.dateRead);
    return input;
}

} // namespace

QString ExportTable::notReadText(const QString &plateName)
{
    return QStringLiteral("The plate \"%1\" has not been read: it has no results to export.").arg(plateName);
}

QString ExportTable::nothingText()
{
    return QStringLiteral("There are no results to export for this selection: none of its plates has been read, "
                          "or none has samples of the group chosen.");
}

QString ExportTable::badVersionText(const QString &plateName, const QString &version)
{
    return QStringLiteral("The plate \"%1\" carries the version stamp \"%2\", which this program can't read, so the "
                          "rules it was validated by are unknown. Nothing was exported.")
        .arg(plateName, version);
}

QString ExportTable::olderVersionText(const QString &plateName, const QString &version)
{
    return QStringLiteral("The plate \"%1\" was validated by version %2 and keeps that version's rules; its rows "
                          "carry the version.")
        .arg(plateName, version);
}

QString ExportTable::leftOutText(int count)
{
    return count == 1 ? QStringLiteral("1 plate not read was left out.")
                      : QStringLiteral("%1 plates not read were left out.").arg(count);
}

ExportTable ExportTable::build(const RecordSet &plates, const QString &plateName, const QString &groupName,
                               const RunNamer &runName, bool withControls, Prompt &prompt)
{
    ExportTable table;
    const clsTests tests(prompt);
    clsReport report(prompt, QString());
    int leftOut = 0;
    bool found = false;
    table.rows.reserve(plates.recordCount() * wells::kCount);

    for (int p = 0; p < plates.recordCount(); ++p) {
        const QString name = plates.valueAt(p, u"PlateName").toString();
        if (!plateName.isEmpty() && name != plateName)
            continue;
        found = true;
        const QString testName = plates.valueAt(p, u"TestName").toString();
        if (testName.isEmpty() || plates.valueAt(p, u"DateRead").isNull()) {
            if (!plateName.isEmpty())
                throw ExportError(notReadText(name));
            ++leftOut;
            continue;
        }
        const QString version = plates.valueAt(p, u"LastVersionValidated").toString();
        try {
            getVersionMinor(version);
        } catch (const ConversionError &) {
            throw ExportError(badVersionText(name, version));
        }

        try {
            const QString run = runName(plates.valueAt(p, u"RunID"));
            const PlateLists lists = PlateLists::of(plates, p);
            // The report's figures of its rows; their OD and result are the lists' items.
            std::array<std::optional<QString>, wells::kCount> ratioOf;
            bool anySample = false;
            report.plateFigures(plates, p, lists, groupName, [&](int k, QString &&ratio) {
                ratioOf[k] = std::move(ratio);
                anySample = true;
            });
            if (!anySample && !groupName.isEmpty())
                continue;
            const PlateInput input = plateInput(plates, p, lists);
            const PlateEvaluation evaluation = PlateEvaluator::evaluate(input);

            ExportRow plate;
            plate.plate = table.plateCount;
            plate.runName = run;
            plate.plateName = name;
            plate.plateId = plates.valueAt(p, u"PlateID").toInt();
            plate.testName = testName;
            plate.kitLot = plates.valueAt(p, u"LotNumber").toString();
            plate.kitExpiry = dateOf(plates.valueAt(p, u"ExpDate"));
            plate.dateRead = dateOf(plates.valueAt(p, u"DateRead"));
            plate.timeRead = timeOf(plates.valueAt(p, u"TimeRead"));
            plate.technician = plates.valueAt(p, u"TechName").toString();
            if (plate.technician == kNoTechnicianSelected)
                plate.technician.clear();
            plate.reader = plates.valueAt(p, u"ReaderUsed").toString();
            plate.filter = plates.valueAt(p, u"FilterUsed").toString();
            plate.ratioName = tests.getCalculationRatioHeader(testName, version);
            plate.verdict = evaluation.validation.value_or(QString());
            plate.version = version;

            for (int k = 0; k < wells::kCount; ++k) {
                const bool control = isControlName(lists.samples[k]);
                if (!ratioOf[k] && !(control && withControls))
                    continue;
                ExportRow &row = table.rows.emplaceBack(plate);
                row.well = wellName(k);
                row.group = lists.groups[k];
                row.sample = lists.samples[k];
                row.control = control;
                row.included = input.flags[k] > 0; // as stored: a flag that is no number includes
                row.od = lists.ods[k];
                if (ratioOf[k]) {
                    row.ratio = std::move(*ratioOf[k]);
                    row.result = lists.results[k];
                }
            }
            ++table.plateCount;
            if (version != PlateEvaluator::kProgramVersion)
                table.notes << olderVersionText(name, version);
        } catch (const ExportError &) {
            throw;
        } catch (const std::exception &e) {
            throw ExportError(
                QStringLiteral("The plate \"%1\" could not be exported: %2").arg(name, QString::fromUtf8(e.what())));
        }
    }
    if (!plateName.isEmpty() && !found)
        throw ExportError(QStringLiteral("There is no plate named \"%1\" to export.").arg(plateName));
    if (table.rows.isEmpty())
        throw ExportError(nothingText());
    if (leftOut > 0)
        table.notes << leftOutText(leftOut);
    return table;
}
