#pragma once

#include "readers/ReaderConfiguration.h"

class Workbench;

// The main window after the reader configuration dialog closed: when changes were applied,
// its readers and filters are filled again, the dialog's reader and filter chosen, and the
// plate's panel and evaluation refreshed.
void refreshMainWindow(Workbench &workbench, const ReaderConfiguration::Outcome &outcome);
