#pragma once

#include <QString>

class ProgramFolder;

// settings.txt in the program's folder names the database in use: its first field (up to
// a comma or the end of the first line) is the full path of the database file. A new
// install leaves "NEW INSTALL" there until the first start.

inline const QString kNewInstallMarker = QStringLiteral("NEW INSTALL");

enum class NewInstallCheck {
    Rewritten,       // "NEW INSTALL" was replaced by the path of the folder's database
    Unchanged,       // settings.txt names a database already and was left alone
    SettingsMissing, // there is no settings.txt to read (start-up can't go on)
};

// The first start: if settings.txt reads "NEW INSTALL", rewrites it with one line, the
// path of the database in the program's folder. Any other content is left alone.
// Throws DatabaseError when the file can't be rewritten.
NewInstallCheck checkNewInstall(const ProgramFolder &folder);

// The path of the database in use: the first field of settings.txt, read anew at each
// call. A path with a comma in it is cut at the comma. Empty when settings.txt is missing
// or empty.
QString getDatabasePath(const ProgramFolder &folder);

// Replaces settings.txt with one line.
void writeSettingsFile(const ProgramFolder &folder, const QString &line);
