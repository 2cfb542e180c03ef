#pragma once

#include "FakeClock.h"
#include "FakePrompt.h"
#include "FakeRunDialogs.h"
#include "TempProgramFolder.h"

#include "worksheet/Workbench.h"

#include <memory>

// A main window's work in hand on a fresh program folder, with fake boxes, clock and run
// dialogs.
struct WorkbenchFixture {
    TempProgramFolder folder;
    FakePrompt prompt;
    FakeClock clock;
    FakeRunDialogs runDialogs;
    std::unique_ptr<Workbench> wb;

    Workbench &start()
    {
        wb = std::make_unique<Workbench>(folder.folder(), prompt, clock, runDialogs);
        wb->load();
        return *wb;
    }

    // Adds a reader with the given filters; returns its id.
    int addReader(const QString &name, const QList<int> &filters, int defaultFilterNo = 1)
    {
        DbConnection db = folder.open();
        db.execute(QStringLiteral("INSERT INTO UserReaders (UserReaderName, ReaderModelID, UserCOMPort, UserSettings, "
                                  "UserFlowControl, UserDefaultFilterNo) VALUES (?, 1, 1, '9600,N,8,1', 0, ?)"),
                   {name, defaultFilterNo});
        const int id =
            db.scalar(QStringLiteral("SELECT UserReaderID FROM UserReaders WHERE UserReaderName = ?"), {name}).toInt();
        for (int i = 0; i < filters.size(); ++i)
            db.execute(QStringLiteral("INSERT INTO UserFilters VALUES (?, ?, ?)"), {id, filters[i], i + 1});
        return id;
    }
};
