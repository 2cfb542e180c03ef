#pragma once

#include <QFile>
#include <QString>

#include <gtest/gtest.h>

// The captured byte streams and files of tests/data, one byte per character.
inline QString readerTestData(const QString &relativePath)
{
    QFile file(QStringLiteral(TESTS_DATA_DIR "/") + relativePath);
    if (!file.open(QIODevice::ReadOnly)) {
        ADD_FAILURE() << "missing test data " << relativePath.toStdString();
        return QString();
    }
    return QString::fromLatin1(file.readAll());
}

// The values of a set of well values, in its order.
#include "core/RecordSet.h"
#include <QStringList>
inline QStringList wellVals(RecordSet values)
{
    QStringList vals;
    for (values.moveFirst(); !values.eof(); values.moveNext())
        vals << values.text(u"Val");
    return vals;
}
inline QStringList wellPositions(RecordSet values)
{
    QStringList pos;
    for (values.moveFirst(); !values.eof(); values.moveNext())
        pos << values.text(u"Pos");
    return pos;
}

#include "core/Wells.h"

// A demo reader's capture of 96 value texts (6 characters each, in well order), in the
// layout of the delivered files.
inline QByteArray demoCapture(const QStringList &values)
{
    QByteArray bytes;
    for (int i = 0; i < 6; ++i)
        bytes += "\x02" "HEADER\x03\r\n";
    for (int col = 1; col <= 12; ++col) {
        for (int row = 1; row <= 8; ++row) {
            const QString value = values.value(wells::index(row, col)).rightJustified(6, u' ');
            bytes += QStringLiteral("%1-%2   %3\r\n").arg(col, 2).arg(wells::rowLetter(row)).arg(value).toLatin1();
        }
        bytes += "-\r\n";
    }
    return bytes;
}
