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
    plates.addNew();
    plates.setValue(u"PlateID", plateID);
    plates.setValue(u"PlateName", plateName);
    plates.setValue(u"RunID", runID);
    plates.setValue(u"TestName", testName);
    plates.setValue(u"LotNumber", lotNumber);
    plates.setValue(u"ExpDate", expDate.isValid() ? QVariant(expDate) : QVariant());
    plates.setValue(u"TimeRead", timeRead.isValid() ? QVariant(timeRead) : QVariant());
    plates.setValue(u"DateRead", dateRead.isValid() ? QVariant(dateRead) : QVariant());
    plates.setValue(u"FilterUsed", QStringLiteral("630"));
    plates.setValue(u"ReaderUsed", QStringLiteral("Demo"));
    plates.setValue(u"LastVersionValidated", version);
    plates.setValue(u"Groups", joinWellList(groups));
    plates.setValue(u"Samples", joinWellList(samples));
    plates.setValue(u"ODs", joinWellList(ods));
    plates.setValue(u"RawODs", joinWellList(rawODs));
    plates.setValue(u"Results", joinWellList(results));
    plates.setValue(u"IncludeExcludeFlags", joinWellList(flags));
    plates.setValue(u"CurrentTest", testName);
    plates.setValue(u"CurrentReader", QStringLiteral("Demo"));
    plates.setValue(u"CurrentFilter", QStringLiteral("630"));
    plates.setValue(u"TechName", techName);
}

RecordSet plateRecordSet(const QList<TestPlate> &plates)
{
    RecordSet set(clsPlates::fieldNames());
    for (const TestPlate &plate : plates)
        plate.addTo(set);
    set.moveFirst();
    return set;
}
