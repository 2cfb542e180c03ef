#include "SavedPlates.h"

#include "RunPlates.h"

#include "store/DbTransaction.h"
#include "store/PlateRows.h"

#include <QSet>

SavedPlates::SavedPlates()
{
    const DbConnection db = mTemp.open();
    mFolderID = RunPlates::addFolder(db, QStringLiteral("Tracking tests"));
}

qint64 SavedPlates::saveRun(const QString &runName, QList<TestPlate> plates)
{
    const DbConnection db = mTemp.open();
    DbTransaction transaction(db);
    const qint64 runID = RunPlates::addRun(db, runName, mFolderID);
    QSet<int> ids;
    for (int i = 0; i < plates.size(); ++i) {
        plates[i].runID = runID;
        if (ids.contains(plates[i].plateID))
            plates[i].plateID = i + 1;
        ids.insert(plates[i].plateID);
    }
    RecordSet set = plateRecordSet(plates);
    PlateRows::insert(db, set);
    transaction.commit();
    return runID;
}

void SavedPlates::addTechnician(const QString &name)
{
    mTemp.open().execute(QStringLiteral("INSERT INTO Technicians (TechName) VALUES (?)"), {name});
}
