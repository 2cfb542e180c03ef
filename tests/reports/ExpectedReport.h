#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

// Expected report documents, put together line by line from the description of the report
// format: the document head and tail, the group and test headings, plate sections and
// table rows. Tests compare whole files against them, byte for byte.
namespace expected {

QStringList head();
QStringList tail();
QStringList clientHeading(const QString &group);
QStringList analyticalHeading(const QString &group);
QStringList testHeading(const QString &testName, const QString &criticalHeader, const QString &ratioHeader);
QStringList row(const QStringList &values);

struct PlateHeading {
    QString testName, runName, plateName, lot, expiry, date, time;
};
// Heading, the four maps (group, sample, OD and result of each position such as "A1") and
// the notes.
QStringList plateSection(const PlateHeading &heading, const QMap<QString, QString> &groups,
                         const QMap<QString, QString> &samples, const QMap<QString, QString> &ods,
                         const QMap<QString, QString> &results);

// The lines as the file holds them: windows-1252, each line ended by CR LF.
QByteArray bytes(const QStringList &lines);

} // namespace expected
