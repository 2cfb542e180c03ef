#pragma once

#include "FakeBrowser.h"
#include "FakeClipboard.h"
#include "FakeWorksheetDialogs.h"
#include "WorkbenchFixture.h"

#include "ui/frmMain.h"

#include <QApplication>

#include <memory>

// The real main window on a fresh program folder, with a fake browser and clipboard; the
// worksheet's dialogs are scripted unless the test wants the real ones.
struct MainWindowFixture : WorkbenchFixture {
    FakeBrowser browser;
    FakeWorksheetDialogs dialogs;
    FakeClipboard clipboard;
    std::unique_ptr<frmMain> window;

    frmMain &show(bool scriptedDialogs = true)
    {
        start();
        window = std::make_unique<frmMain>(*wb, prompt, browser);
        if (scriptedDialogs)
            wb->setWorksheetDialogs(dialogs);
        wb->setClipboard(clipboard);
        window->show();
        QApplication::setActiveWindow(window.get());
        return *window;
    }
    template <typename T> T *find(const char *name) const { return window->findChild<T *>(QString::fromLatin1(name)); }
};
