#pragma once

#include <QString>
#include <QStringList>

class DbConnection;

// The tables of the run database and the rows a new database is delivered with.
//
// Types: ids and counts are INTEGER or SMALLINT, texts TEXT (TechName CHAR(50)), and the
// date and time columns ExpDate, TimeRead and DateRead hold ISO 8601 texts, so that
// ranges compare correctly as text.

// The technician of a plate that names none; also the first entry of the technician list.
inline const QString kNoTechnicianSelected = QStringLiteral("<No Technician Selected>");

// Reader models of the two demo readers a new database is delivered with: their ids in
// the reader catalogue ("Demo" and "Demo2", read from Results.INI and Results2.INI).
constexpr int kDemoReaderModelID = 6;
constexpr int kDemo2ReaderModelID = 7;

// The folder a new database is delivered with.
constexpr int kDeliveryFolderID = 1;
inline const QString kDeliveryFolderName = QStringLiteral("Runs");

// The tables every database has had since the first generation; the second adds
// Technicians (and the column Plates.TechName).
QStringList generation1Tables();

// Creates every table of the current (2nd) generation in an empty database (on a server,
// with the additions of ServerSchema).
void createDatabaseSchema(const DbConnection &db);

// Writes the delivery rows: the one MiscSettings row (on a file; a server's rows are made
// per workstation), the readers "Demo" and "Demo2" with
// one filter each, and one folder.
void insertDeliveryRows(const DbConnection &db);
