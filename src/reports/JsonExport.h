#pragma once

#include "reports/ExportBuffer.h"
#include "reports/ExportRow.h"

#include <QByteArray>
#include <QVector>

// Export rows as a JSON array of objects, one per row and line, UTF-8. Figures are numbers (a text
// that is no figure stays a text, an empty one is null), flags true or false, dates and
// times ISO 8601 ("2026-11-23", "2026-11-23T09:30:00").
//
// Keys: runName, plateName, plateId, well, group, sample, control, included, testName,
// kitLot, kitExpiry, read, technician, reader, filter, od, ratioName, ratio, result,
// verdict, version.
class JsonExport {
public:
    static QByteArray write(const QVector<ExportRow> &rows);
    // The same bytes into out.
    static void write(ExportBuffer &out, const QVector<ExportRow> &rows);
};
