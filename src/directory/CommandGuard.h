#pragma once

#include <functional>

class Prompt;

// The command boundary of a directory dialog. A command that fails unexpectedly (a
// database that can't be read or written, a plate list that can't be read) is told in a
// critical box, in the words of the main window's boundary, and the dialog goes on; the
// work of the command was undone before the failure got here. Returns false after a
// failure.
//
// Dialogs run their commands through it because a failure must not cross the modal
// dialog's event loop.
bool runGuarded(Prompt &prompt, const std::function<void()> &command);
