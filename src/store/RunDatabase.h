#pragma once

#include "store/DbConnection.h"

#include <QString>

class ProgramFolder;

// A new open connection to the run database at path, for one piece of work; an empty
// path means the database that settings.txt names. Throws DatabaseError when there is
// no such database or it can't be opened.
DbConnection openDatabase(const ProgramFolder &folder, const QString &path = QString());

// Ids of new rows: the smallest free positive id of the table (an empty table gives 1,
// ids 1, 2, 4 give 3, ids 2, 3 give 1). An id is not reserved by being handed out: two
// calls without an insert between them give the same id. Called inside the transaction
// that inserts the row: on a server, other workstations then wait for its end before
// they choose an id of the same table (lockBeforeNewId).
int getNewRunID(const DbConnection &db);
int getNewFolderID(const DbConnection &db);
int getNewGroupID(const DbConnection &db);

// Makes other workstations wait for the end of this transaction before choosing an id of
// the table; nothing on a file, where the write transaction excludes them already.
void lockBeforeNewId(const DbConnection &db, const QString &table);

// The walk behind the three: reads the ids of the query (one column, ascending) and
// returns the first hole above 0, or one past the last id.
int firstFreeID(const DbConnection &db, const QString &idsInAscendingOrderSql);
