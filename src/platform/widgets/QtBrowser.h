#pragma once

#include "platform/Browser.h"

// Opens files in the user's default application.
class QtBrowser : public Browser {
public:
    bool openFile(const QString &path) override;
};
