#pragma once

#include "platform/Clock.h"

// Waits in a local event loop, so the window keeps painting during a long serial dialogue
// while everything stays on one thread.
class EventLoopSleeper : public Sleeper {
public:
    void sleep(int milliseconds) override;
};
