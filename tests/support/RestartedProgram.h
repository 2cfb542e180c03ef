#pragma once

#include "store/ProgramFolder.h"

#include <QStringList>

// The program started again as a user starts it: the real start-up checks, in a new
// process, as after a crash. The boxes it showed and whether it would open its window.
struct RestartedProgram {
    bool started = false;
    QStringList boxes;

    static RestartedProgram run(const ProgramFolder &folder);
};
