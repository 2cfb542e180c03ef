#pragma once

#include "core/RecordSet.h"

#include <QString>
#include <QVariant>

class DbConnection;

// Plate record sets for tests of saving and opening runs: every field of every plate holds
// something of its own, so that a plate that comes back whole is told from one that was
// mixed up with another, cut short or left from an older save.
namespace RunPlates {

// count plates "Plate #1" ... of the run, ids 1 ... count. tag goes into the lot number
// and into every well of every list, so that two saves of the same run can be told apart.
// The texts hold apostrophes and the delimiter's neighbours on purpose.
RecordSet make(int count, qint64 runID, const QString &tag = QStringLiteral("first"));

// Sets the tag of every plate, as a change between two saves would.
void retag(RecordSet &plates, const QString &tag);

// The plate rows of a run in the database: count, and the distinct lot numbers (tags).
int rowCount(const DbConnection &db, qint64 runID);
QStringList tags(const DbConnection &db, qint64 runID);

// The first column of what a query gives, in order.
QStringList column(const DbConnection &db, const QString &sql, const QVariantList &values = {});

// Inserts a folder and returns its id / a run (with no plates) and returns its id.
qint64 addFolder(const DbConnection &db, const QString &name);
qint64 addRun(const DbConnection &db, const QString &name, qint64 folderID);

// The id of the run named so in the folder; -1 when there is none.
qint64 runID(const DbConnection &db, const QString &folderName, const QString &runName);

} // namespace RunPlates
