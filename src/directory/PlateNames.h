#pragma once

#include <QString>

class RecordSet;

// Group and technician names as the plates of a run hold them: group names inside the
// well list Groups, the technician in TechName. Names are compared exactly, case included.
//
// The plate record set is walked by row; its cursor stays on the plate it was on.

// The list with every item exactly equal to oldName replaced by newName; the result is
// always a whole list of 96 items. Throws WellListOverflow for a list of more than 96.
QString replaceGroupInList(const QString &oldName, const QString &newName, const QString &list);

// True when an item of the well list is exactly name. Throws WellListOverflow for a list
// of more than 96 items.
bool wellListHasName(const QString &list, const QString &name);

// True when a well of any plate belongs to the group. Throws WellListOverflow for a plate
// whose list can't be read: no plate is known not to use the group then.
bool platesUseGroup(const RecordSet &plates, const QString &groupName);

// Renames the group in the Groups list of every plate. A Null list stays Null, and a list
// that can't be read (more than 96 items) is left as it stands: it can't be loaded anyway.
void renameGroupInPlates(RecordSet &plates, const QString &oldName, const QString &newName);

// True when any plate's TechName is exactly name.
bool platesUseTech(const RecordSet &plates, const QString &techName);

// Sets TechName to newName on every plate whose TechName is exactly oldName.
void renameTechInPlates(RecordSet &plates, const QString &oldName, const QString &newName);
