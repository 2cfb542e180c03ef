#include "worksheet/PlateMap.h"

#include "core/RecordSet.h"
#include "core/WellList.h"
#include "platform/Clock.h"
#include "worksheet/Workbench.h"

#include <QLocale>

PlateMapPage PlateMap::fromRecord(const RecordSet &plates, const QString &runName, const QString &date)
{
    PlateMapPage page;
    page.run = runName;
    page.plate = plates.text(u"PlateName");
    page.test = plates.text(u"CurrentTest");
    if (page.test.isEmpty())
        page.test = plates.text(u"TestName");
    page.lot = plates.text(u"LotNumber");
    page.technician = plates.text(u"TechName");
    page.date = date;
    const QStringList groups = splitWellList(plates.text(u"Groups"));
    const QStringList samples = splitWellList(plates.text(u"Samples"));
    // Flags as stored (a well list) or as never stored (96 digits without delimiters).
    const QString flagText = plates.text(u"IncludeExcludeFlags");
    const QStringList flags =
        flagText.contains(kWellDelimiter) ? splitWellList(flagText) : flagText.split(QString(), Qt::SkipEmptyParts);
    for (int k = 0; k < wells::kCount; ++k) {
        PlateMapPage::Well &w = page.wells[k];
        w.sample = samples.value(k);
        w.control = isControlName(w.sample.toUpper());
        w.group = w.control ? QString() : groups.value(k);
        w.excluded = w.control && flags.value(k).trimmed() == u"0";
    }
    return page;
}

QList<PlateMapPage> PlateMap::fromRun(Workbench &workbench)
{
    workbench.storePlateRecord();
    RecordSet &plates = workbench.plates();
    const int current = plates.position();
    const QString date = QLocale::c().toString(workbench.clock().now().date(), QStringLiteral("yyyy-MM-dd"));
    QList<PlateMapPage> pages;
    for (plates.moveFirst(); !plates.eof(); plates.moveNext())
        pages << fromRecord(plates, workbench.runName(), date);
    plates.setPosition(current);
    return pages;
}
