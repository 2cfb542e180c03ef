#include "reports/ResultExport.h"

#include "platform/SafeFile.h"
#include "reports/CsvExport.h"
#include "reports/ExportBuffer.h"
#include "reports/Hl7Export.h"
#include "reports/JsonExport.h"

#include <QDir>

std::optional<ResultExport::Format> ResultExport::formatNamed(const QString &name)
{
    for (Format f : {Format::Csv, Format::CsvSemicolon, Format::Json, Format::Hl7}) {
        if (ResultExport::name(f) == name)
            return f;
    }
    return std::nullopt;
}

QString ResultExport::name(Format format)
{
    switch (format) {
    case Format::Csv: return QStringLiteral("csv");
    case Format::CsvSemicolon: return QStringLiteral("csv-semicolon");
    case Format::Json: return QStringLiteral("json");
    case Format::Hl7: return QStringLiteral("hl7");
    }
    return QString();
}

QString ResultExport::caption(Format format)
{
    switch (format) {
    case Format::Csv: return QStringLiteral("CSV, comma separated, decimal point (0.512)");
    case Format::CsvSemicolon: return QStringLiteral("CSV, semicolon separated, decimal comma (0,512)");
    case Format::Json: return QStringLiteral("JSON");
    case Format::Hl7: return QStringLiteral("HL7 v2.5.1 (ORU^R01, one message per plate)");
    }
    return QString();
}

QString ResultExport::suffix(Format format)
{
    switch (format) {
    case Format::Csv:
    case Format::CsvSemicolon: return QStringLiteral("csv");
    case Format::Json: return QStringLiteral("json");
    case Format::Hl7: return QStringLiteral("hl7");
    }
    return QString();
}

QByteArray ResultExport::encode(const ExportTable &table, Format format, const QDateTime &now)
{
    switch (format) {
    case Format::Csv: return CsvExport::write(table.rows, CsvExport::Dialect::Comma);
    case Format::CsvSemicolon: return CsvExport::write(table.rows, CsvExport::Dialect::Semicolon);
    case Format::Json: return JsonExport::write(table.rows);
    case Format::Hl7: return Hl7Export::write(table.rows, now);
    }
    return QByteArray();
}

namespace {

void encodeInto(ExportBuffer &out, const ExportTable &table, ResultExport::Format format, const QDateTime &now)
{
    switch (format) {
    case ResultExport::Format::Csv: CsvExport::write(out, table.rows, CsvExport::Dialect::Comma); return;
    case ResultExport::Format::CsvSemicolon: CsvExport::write(out, table.rows, CsvExport::Dialect::Semicolon); return;
    case ResultExport::Format::Json: JsonExport::write(out, table.rows); return;
    case ResultExport::Format::Hl7: Hl7Export::write(out, table.rows, now); return;
    }
}

void requirePath(const QString &path)
{
    if (path.trimmed().isEmpty())
        throw ExportError(QStringLiteral("No file name was given for the results."));
}

} // namespace

void ResultExport::write(const QByteArray &contents, const QString &path)
{
    requirePath(path);
    QString error;
    if (!SafeFile::writeWhole(path, contents, &error))
        throw ExportError(error);
}

void ResultExport::write(const ExportTable &table, Format format, const QDateTime &now, const QString &path)
{
    requirePath(path);
    SafeFile file(path);
    if (!file.open())
        throw ExportError(file.errorString());
    // A failed write is remembered by the file and refused at commit.
    ExportBuffer out([&file](const char *data, qsizetype size) { file.write(data, size); }, 1 << 20);
    encodeInto(out, table, format, now);
    out.flush();
    if (!file.commit())
        throw ExportError(file.errorString());
}

QString ResultExport::summary(const ExportTable &table, Format format, const QString &path)
{
    const QString plates =
        table.plateCount == 1 ? QStringLiteral("1 plate") : QStringLiteral("%1 plates").arg(table.plateCount);
    const QString rows =
        table.rows.size() == 1 ? QStringLiteral("1 row") : QStringLiteral("%1 rows").arg(table.rows.size());
    const QString as = format == Format::Hl7    ? QStringLiteral("HL7")
                       : format == Format::Json ? QStringLiteral("JSON")
                                                : QStringLiteral("CSV");
    return QStringLiteral("Results of %1 (%2) exported as %3 to %4")
        .arg(plates, rows, as, QDir::toNativeSeparators(path));
}
