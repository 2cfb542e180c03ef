#pragma once

#include "reports/ExportBuffer.h"
#include "reports/ExportRow.h"

#include <QByteArray>
#include <QStringList>
#include <QVector>

// Export rows as comma-separated values: a header row, CR LF after every record, UTF-8.
// A field is quoted when it holds the separator, a quote, a CR or an LF, and a quote in
// it is doubled. Figures keep the decimals the sheet shows; the semicolon dialect, for
// spreadsheets that take "," as decimal sign, writes them with ",".
class CsvExport {
public:
    enum class Dialect { Comma, Semicolon };

    static const QStringList &header();
    static QByteArray write(const QVector<ExportRow> &rows, Dialect dialect);
    // The same bytes into out.
    static void write(ExportBuffer &out, const QVector<ExportRow> &rows, Dialect dialect);
};
