#pragma once

#include "PlateRecordBuilder.h"
#include "TempProgramFolder.h"

#include <QList>
#include <QString>

// A program folder whose database holds saved runs of plates built for a test, for what
// reads saved plates back (control tracking, reports by date). Runs go into one folder.
class SavedPlates {
public:
    SavedPlates();

    const ProgramFolder &folder() const { return mTemp.folder(); }
    TempProgramFolder &temp() { return mTemp; }
    QString databasePath() const { return mTemp.databasePath(); }

    // Saves the plates as the rows of a new run of that name, in one transaction, and
    // returns the run's id (each plate's run id is set to it; plate ids count from 1 when
    // two plates share one).
    qint64 saveRun(const QString &runName, QList<TestPlate> plates);

    void addTechnician(const QString &name);

private:
    TempProgramFolder mTemp;
    qint64 mFolderID = 0;
};
