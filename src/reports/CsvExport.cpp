#include "reports/CsvExport.h"

namespace {

QString yesNo(bool value)
{
    return value ? QStringLiteral("yes") : QStringLiteral("no");
}

// A figure in the dialect's decimal sign; a text that is no figure stays as it is.
QString figure(const QString &text, CsvExport::Dialect dialect)
{
    QString t = text;
    if (t.endsWith(QLatin1Char('%')))
        t.chop(1);
    if (!ExportRow::number(t))
        return text;
    if (dialect == CsvExport::Dialect::Semicolon)
        t.replace(QLatin1Char('.'), QLatin1Char(','));
    return t;
}

} // namespace

const QStringList &CsvExport::header()
{
    static const QStringList names{
        QStringLiteral("Run"),        QStringLiteral("Plate"),         QStringLiteral("Plate ID"),
        QStringLiteral("Well"),       QStringLiteral("Group"),         QStringLiteral("Sample"),
        QStringLiteral("Control"),    QStringLiteral("Included"),      QStringLiteral("Test"),
        QStringLiteral("Kit Lot"),    QStringLiteral("Kit Expiry"),    QStringLiteral("Date Read"),
        QStringLiteral("Time Read"),  QStringLiteral("Technician"),    QStringLiteral("Reader"),
        QStringLiteral("Filter (nm)"), QStringLiteral("OD"),           QStringLiteral("Ratio Name"),
        QStringLiteral("Ratio"),      QStringLiteral("Result"),        QStringLiteral("Plate Verdict"),
        QStringLiteral("Program Version")};
    return names;
}

QString CsvExport::field(const QString &text, QChar separator)
{
    bool quote = false;
    for (QChar c : text) {
        if (c == separator || c == u'"' || c == u'\r' || c == u'\n') {
            quote = true;
            break;
        }
    }
    if (!quote)
        return text;
    QString quoted = text;
    quoted.replace(QLatin1Char('"'), QStringLiteral("\"\""));
    return QLatin1Char('"') + quoted + QLatin1Char('"');
}

QByteArray CsvExport::write(const QVector<ExportRow> &rows, Dialect dialect)
{
    const QChar separator = dialect == Dialect::Comma ? QLatin1Char(',') : QLatin1Char(';');
    QString out;
    out.reserve(160 * (rows.size() + 1));
    auto record = [&](const QStringList &fields) {
        for (int i = 0; i < fields.size(); ++i) {
            if (i > 0)
                out += separator;
            out += field(fields[i], separator);
        }
        out += QLatin1String("\r\n");
    };
    record(header());
    for (const ExportRow &r : rows) {
        record({r.runName, r.plateName, QString::number(r.plateId), r.well, r.group, r.sample, yesNo(r.control),
                yesNo(r.included), r.testName, r.kitLot,
                r.kitExpiry.isValid() ? r.kitExpiry.toString(Qt::ISODate) : QString(),
                r.dateRead.toString(Qt::ISODate), r.timeRead.isValid() ? r.timeRead.toString(Qt::ISODate) : QString(),
                r.technician, r.reader, r.filter, figure(r.od, dialect), r.ratioName, figure(r.ratio, dialect),
                r.result, r.verdict, r.version});
    }
    return out.toUtf8();
}
