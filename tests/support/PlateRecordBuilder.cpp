#include "PlateRecordBuilder.h"

#include "core/WellList.h"
#include "core/Wells.h"
#include "store/clsPlates.h"

#include <QStringList>

void TestPlate::addTo(RecordSet &plates) const
{
    QStringList groups, samples, ods, results, rawODs, flags;
    for (int k = 0; k < wells::kCount; ++k) {
        const TestWell well = this->wells.value(wells::name(k));
        groups << well.group;
        samples << well.sample;
        ods << well.od;
        results << well.result;
        rawODs << (well.od.isEmpty() ? QStringLiteral("0") : well.od);
        flags << QString::number(well.flag);
    }
    const auto orNull = [](const auto &value) { return value.isValid() ? QVariant(value) : QVariant(); };
    const std::pair<const char16_t *, QVariant> values[] = {{u"PlateID", plateID},
                                                            {u"PlateName", plateName},
                                                            {u"RunID", runID},
                                                            {u"TestName", testName},
                                                            {u"LotNumber", lotNumber},
                                                            {u"ExpDate", orNull(expDate)},
                                                            {u"TimeRead", orNull(timeRead)},
                                                            {u"DateRead", orNull(dateRead)},
                                                            {u"FilterUsed", u"630"_qs},
                                                            {u"ReaderUsed", u"Demo"_qs},
                                                            {u"LastVersionValidated", version},
                                                            {u"Groups", joinWellList(groups)},
                                                            {u"Samples", joinWellList(samples)},
                                                            {u"ODs", joinWellList(ods)},
                                                            {u"RawODs", joinWellList(rawODs)},
                                                            {u"Results", joinWellList(results)},
                                                            {u"IncludeExcludeFlags", joinWellList(flags)},
                                                            {u"CurrentTest", testName},
                                                            {u"CurrentReader", u"Demo"_qs},
                                                            {u"CurrentFilter", u"630"_qs},
                                                            {u"TechName", techName}};
    plates.addNew();
    for (const auto &[field, value] : values)
        plates.setValue(QStringView(field), value);
}

RecordSet plateRecordSet(const QList<TestPlate> &plates)
{
    RecordSet set(clsPlates::fieldNames());
    for (const TestPlate &plate : plates)
        plate.addTo(set);
    set.moveFirst();
    return set;
}
