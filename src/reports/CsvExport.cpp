#include "reports/CsvExport.h"

namespace {

QString yesNo(bool value)
{
    return value ? QStringLiteral("yes") : QStringLiteral("no");
}

// A figure in the dialect's decimal sign; a text that is no figure stays as it is.
QString figure(const QString &text, CsvExport::Dialect dialect)
{
    if (text.isEmpty())
        return text;
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
        return text; // shared, not copied
    QString quoted = text;
    quoted.replace(QLatin1Char('"'), QStringLiteral("\"\""));
    return QLatin1Char('"') + quoted + QLatin1Char('"');
}

QByteArray CsvExport::write(const QVector<ExportRow> &rows, Dialect dialect)
{
    const QChar separator = dialect == Dialect::Comma ? QLatin1Char(',') : QLatin1Char(';');
    QString out;
    out.reserve(220 * (rows.size() + 1));
    bool first = true;
    auto put = [&](const QString &text) {
        if (!first)
            out += separator;
        first = false;
        out += field(text, separator);
    };
    auto end = [&] {
        out += QLatin1String("\r\n");
        first = true;
    };
    for (const QString &name : header())
        put(name);
    end();
    // A plate's texts are made once for all its rows.
    int plate = -1;
    QString expiry, date, time;
    for (const ExportRow &r : rows) {
        if (r.plate != plate) {
            plate = r.plate;
            expiry = r.kitExpiry.isValid() ? r.kitExpiry.toString(Qt::ISODate) : QString();
            date = r.dateRead.toString(Qt::ISODate);
            time = r.timeRead.isValid() ? r.timeRead.toString(Qt::ISODate) : QString();
        }
        put(r.runName);
        put(r.plateName);
        put(QString::number(r.plateId));
        put(r.well);
        put(r.group);
        put(r.sample);
        put(yesNo(r.control));
        put(yesNo(r.included));
        put(r.testName);
        put(r.kitLot);
        put(expiry);
        put(date);
        put(time);
        put(r.technician);
        put(r.reader);
        put(r.filter);
        put(figure(r.od, dialect));
        put(r.ratioName);
        put(figure(r.ratio, dialect));
        put(r.result);
        put(r.verdict);
        put(r.version);
        end();
    }
    return out.toUtf8();
}
