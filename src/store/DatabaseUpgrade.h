#pragma once

#include <QString>

class Prompt;
class ProgramFolder;

// Generations of the run database. The 1st has no technicians; the 2nd adds the table
// Technicians and the column Plates.TechName, and is what the program works with.
constexpr int kFirstGeneration = 1;
constexpr int kCurrentGeneration = 2;

// Returned by upgradeDatabase when a failure has no number of the engine's own.
constexpr int kUpgradeFailedWithoutNumber = -1;

// True when the file at path fits the generation: generation 1 has the tables Groups,
// Folders, MiscSettings, Plates, Runs, UserFilters and UserReaders, each readable;
// generation 2 has Technicians and Plates.TechName. Any failure (no file, not a database,
// a table or column missing) gives false with no message: it is the signal, not an error.
// An unknown generation shows "Failed database validation - wrong version specified."
// and gives false. The file is opened read-only and never made.
bool validateDatabase(const QString &path, int generation, Prompt &prompt);

// Copies the database in use to the upgrade backup folder under the temporary folder
// (same file name), replacing an older copy. False when there is no database file or the
// copy can't be made.
bool backupForUpgrade(const ProgramFolder &folder);

// Puts the copy taken by backupForUpgrade back in place of the database in use. False
// when there is no copy or it can't be put back.
bool restoreUpgradeBackup(const ProgramFolder &folder);

// Upgrades a 1st generation database at path to the 2nd: adds Plates.TechName, gives
// every plate the technician "<No Technician Selected>" and creates Technicians. All three
// in one transaction, so a failure leaves the file as it was. 0 on success, otherwise the
// engine's number of the failure.
int upgradeDatabase(const QString &path);

// The kit "RTUV 419" is now "PZV 419": renames it in saved plates, so that they find their
// kit. Run at every start; it changes nothing once no such plate is left. Throws
// DatabaseError on failure.
void renameLegacyKit(const ProgramFolder &folder);
