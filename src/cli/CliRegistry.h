#pragma once

#include "cli/CliCommand.h"

#include <QMap>
#include <QString>

struct CliCommandEntry {
    QString usage;
    CliHandler handler = nullptr;
};

// The commands of tavimetra-cli by name, filled by the static registrations.
QMap<QString, CliCommandEntry> &cliRegistry();
