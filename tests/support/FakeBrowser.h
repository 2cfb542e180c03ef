#pragma once

#include "platform/Browser.h"

#include <QStringList>

// A Browser for tests: records every file it is asked to open, and answers as told
// (opened, or no program for the file).
class FakeBrowser : public Browser {
public:
    bool openFile(const QString &path) override
    {
        opened << path;
        return canOpen;
    }

    QStringList opened;
    bool canOpen = true;
};
