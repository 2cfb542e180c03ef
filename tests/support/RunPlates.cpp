#include "RunPlates.h"

#include "core/WellList.h"
#include "core/Wells.h"
#include "store/DbConnection.h"
#include "store/clsPlates.h"

#include <QDate>
#include <QSqlQuery>
#include <QTime>

namespace RunPlates {

namespace {

QString wellList(const QString &prefix, int plate, const QString &tag)
{
    QStringList items;
    for (int k = 0; k < wells::kCount; ++k)
        items.append(QStringLiteral("%1 %2/%3 %4").arg(prefix).arg(plate).arg(k).arg(tag));
    return joinWellList(items);
}

void fill(RecordSet &plates, int row, const QString &tag)
{
    const int n = plates.valueAt(row, u"PlateID").toInt();
    plates.setValueAt(row, u"LotNumber", QStringLiteral("Lot %1 %2").arg(n).arg(tag));
    plates.setValueAt(row, u"Groups", wellList(QStringLiteral("O'Brien"), n, tag));
    plates.setValueAt(row, u"Samples", wellList(QStringLiteral("Cow"), n, tag));
    plates.setValueAt(row, u"ODs", wellList(QStringLiteral("0.1"), n, tag));
    plates.setValueAt(row, u"Results", wellList(QStringLiteral("Pos"), n, tag));
    QStringList raw;
    QStringList flags;
    for (int k = 0; k < wells::kCount; ++k) {
        raw.append(QString::number(0.001 * (k + 1) + n));
        flags.append(k % 7 == 0 ? QStringLiteral("0") : QStringLiteral("1"));
    }
    plates.setValueAt(row, u"RawODs", joinWellList(raw));
    plates.setValueAt(row, u"IncludeExcludeFlags", joinWellList(flags));
}

} // namespace

RecordSet make(int count, qint64 runID, const QString &tag)
{
    RecordSet plates(clsPlates::fieldNames());
    for (int n = 1; n <= count; ++n) {
        clsPlates::addDefaultPlate(plates, n, QStringLiteral("Plate #%1").arg(n), runID);
        const int row = plates.position();
        plates.setValueAt(row, u"TestName", QStringLiteral("PZV 419"));
        plates.setValueAt(row, u"ExpDate", QDate(2027, 1 + n % 12, 1 + n % 28));
        plates.setValueAt(row, u"TimeRead", QTime(8 + n % 10, n % 60, 5));
        plates.setValueAt(row, u"DateRead", QDate(2026, 11, 1 + n % 28));
        plates.setValueAt(row, u"FilterUsed", QStringLiteral("450"));
        plates.setValueAt(row, u"ReaderUsed", QStringLiteral("Demo"));
        plates.setValueAt(row, u"LastVersionValidated", QStringLiteral("1.5.4"));
        plates.setValueAt(row, u"TechName", QStringLiteral("D'Arcy"));
        fill(plates, row, tag);
    }
    plates.moveFirst();
    return plates;
}

void retag(RecordSet &plates, const QString &tag)
{
    for (int row = 0; row < plates.recordCount(); ++row)
        fill(plates, row, tag);
}

int rowCount(const DbConnection &db, qint64 runID)
{
    return db.scalar(QStringLiteral("SELECT COUNT(*) FROM Plates WHERE RunID = ?"), {runID}).toInt();
}

QStringList tags(const DbConnection &db, qint64 runID)
{
    QStringList found;
    QSqlQuery rows = db.query(QStringLiteral("SELECT LotNumber FROM Plates WHERE RunID = ?"), {runID});
    while (rows.next()) {
        const QString tag = rows.value(0).toString().section(QLatin1Char(' '), 2);
        if (!found.contains(tag))
            found.append(tag);
    }
    return found;
}

QStringList column(const DbConnection &db, const QString &sql, const QVariantList &values)
{
    QSqlQuery rows = db.query(sql, values);
    QStringList found;
    while (rows.next())
        found << rows.value(0).toString();
    return found;
}

qint64 addFolder(const DbConnection &db, const QString &name)
{
    const qint64 id = db.scalar(QStringLiteral("SELECT COALESCE(MAX(FolderID), 0) + 1 FROM Folders")).toLongLong();
    db.execute(QStringLiteral("INSERT INTO Folders (FolderID, FolderName) VALUES (?, ?)"), {id, name});
    return id;
}

qint64 addRun(const DbConnection &db, const QString &name, qint64 folderID)
{
    const qint64 id = db.scalar(QStringLiteral("SELECT COALESCE(MAX(RunID), 0) + 1 FROM Runs")).toLongLong();
    db.execute(QStringLiteral("INSERT INTO Runs (RunID, RunName, FolderID) VALUES (?, ?, ?)"), {id, name, folderID});
    return id;
}

qint64 runID(const DbConnection &db, const QString &folderName, const QString &runName)
{
    const QVariant id =
        db.scalar(QStringLiteral("SELECT Runs.RunID FROM Runs INNER JOIN Folders ON "
                                 "Folders.FolderID = Runs.FolderID WHERE FolderName = ? AND RunName = ?"),
                  {folderName, runName});
    return id.isNull() ? -1 : id.toLongLong();
}

} // namespace RunPlates
