#pragma once

#include <QtGlobal>

#include <optional>

class DbConnection;

// On a server each run counts its saves (Runs.ChangeCount), and this workstation remembers
// the count of each run as it last opened or saved it. A save that finds another count
// knows the run was saved elsewhere meanwhile. On a file nothing is counted and nothing is
// ever found changed.
namespace RunChangeCounter {

// Remembers the run's count now (after an open).
void noteSeen(const DbConnection &db, qint64 runID);

// Whether the run was saved elsewhere since this workstation last saw it. A run this
// workstation never saw is not changed.
bool changedElsewhere(const DbConnection &db, qint64 runID);

// Inside the save's transaction: locks the run's row until the end of the transaction and
// counts the save. The new count (0 on a file), to be given to noteSaved once the
// transaction is committed; none when the run has no row any more (deleted elsewhere).
std::optional<int> countSave(const DbConnection &db, qint64 runID);

// Remembers the count a committed save gave the run.
void noteSaved(const DbConnection &db, qint64 runID, int count);

} // namespace RunChangeCounter
