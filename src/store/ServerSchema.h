#pragma once

class DbConnection;

// The run database on a server carries its schema version in the one row of the table
// TavimetraSchema. A database without tables is ours to fill: the first connection makes
// the tables, the delivery rows and the version row in one transaction (two workstations
// starting at the same moment wait for each other). A database of a newer version, or one
// that holds other tables and no version row, is refused with a DatabaseError that tells
// the user why.
namespace ServerSchema {

// The version this program writes and reads. 1: the tables of the file database, with
// a change counter on Runs, the plates' insertion order, and MiscSettings per workstation.
constexpr int kVersion = 1;

// Checks (and on an empty database makes) the schema, once per database per process.
void prepareOnce(const DbConnection &db);

// The same, every time it is called.
void prepare(const DbConnection &db);

// The version of the schema in the database; 0 when there is no version row.
int versionOf(const DbConnection &db);

} // namespace ServerSchema
