#include "store/clsPlates.h"

#include "core/WellList.h"
#include "core/Wells.h"

const QStringList &clsPlates::fieldNames()
{
    static const QStringList names = {
        QStringLiteral("PlateID"),
        QStringLiteral("PlateName"),
        QStringLiteral("RunID"),
        QStringLiteral("TestName"),
        QStringLiteral("LotNumber"),
        QStringLiteral("ExpDate"),
        QStringLiteral("TimeRead"),
        QStringLiteral("DateRead"),
        QStringLiteral("FilterUsed"),
        QStringLiteral("ReaderUsed"),
        QStringLiteral("LastVersionValidated"),
        QStringLiteral("Groups"),
        QStringLiteral("Samples"),
        QStringLiteral("ODs"),
        QStringLiteral("RawODs"),
        QStringLiteral("Results"),
        QStringLiteral("IncludeExcludeFlags"),
        QStringLiteral("CurrentTest"),
        QStringLiteral("CurrentReader"),
        QStringLiteral("CurrentFilter"),
        QStringLiteral("TechName"),
    };
    return names;
}

QString clsPlates::neverStoredFlags()
{
    return QString(wells::kCount, u'1');
}

void clsPlates::addDefaultPlate(RecordSet &plates, int plateID, const QString &plateName, const QVariant &runID)
{
    const QString empty = emptyWellList();
    plates.addNew();
    plates.setValue(u"PlateID", plateID);
    plates.setValue(u"PlateName", plateName);
    plates.setValue(u"RunID", runID);
    plates.setValue(u"TestName", QString(""));
    plates.setValue(u"LotNumber", QString(""));
    plates.setValue(u"ExpDate", QVariant());
    plates.setValue(u"TimeRead", QVariant());
    plates.setValue(u"DateRead", QVariant());
    plates.setValue(u"FilterUsed", QVariant());
    plates.setValue(u"ReaderUsed", QString(""));
    plates.setValue(u"LastVersionValidated", QString(""));
    plates.setValue(u"Groups", empty);
    plates.setValue(u"Samples", empty);
    plates.setValue(u"ODs", empty);
    plates.setValue(u"RawODs", QString(""));
    plates.setValue(u"Results", empty);
    plates.setValue(u"IncludeExcludeFlags", neverStoredFlags());
    plates.setValue(u"CurrentTest", QString(""));
    plates.setValue(u"CurrentReader", QString(""));
    plates.setValue(u"CurrentFilter", QString(""));
    plates.setValue(u"TechName", QString(""));
}

RecordSet clsPlates::getNewPlateRecordSet(qint64 runID)
{
    RecordSet plates(fieldNames());
    addDefaultPlate(plates, 1, QStringLiteral("Plate #1"), runID);
    plates.moveFirst();
    return plates;
}
