#pragma once

#include <QString>

// Opens a local file in the user's default application (browser, spreadsheet program).
class Browser {
public:
    virtual ~Browser() = default;
    // False when no application could be started for the file.
    virtual bool openFile(const QString &path) = 0;
};
