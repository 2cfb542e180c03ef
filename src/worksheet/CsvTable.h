#pragma once

#include "worksheet/PlateLayout.h"

#include <QByteArray>
#include <QChar>
#include <QString>

// Delimited text as spreadsheets and LIMS write it: fields separated by commas, semicolons
// or tabs (whichever the first line uses most), optionally in double quotes with "" for a
// quote and line breaks inside; lines ended by LF, CR LF or CR.
class CsvTable {
public:
    // Text from a file's bytes: UTF-8 (a byte order mark is dropped), or Windows-1252 when
    // the bytes aren't UTF-8 (what older spreadsheets save).
    static QString decode(const QByteArray &bytes);
    static QChar detectDelimiter(const QString &text);
    static LayoutTable split(const QString &text);
};
