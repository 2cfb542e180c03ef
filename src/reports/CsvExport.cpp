#include "reports/CsvExport.h"

namespace {

QLatin1String yesNo(bool value)
{
    return value ? QLatin1String("yes") : QLatin1String("no");
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

// The figure as a field. Plain digits ("0.512", "47.4%") are copied with the dialect's
// decimal sign and without the percent sign, with nothing made on the way; they never
// need quotes.
void appendFigure(QString &out, const QString &text, CsvExport::Dialect dialect, QChar separator)
{
    qsizetype end = text.size();
    if (end > 0 && text[end - 1] == u'%')
        --end;
    bool plain = end > 0 && end <= 24;
    for (qsizetype i = 0; plain && i < end; ++i) {
        const char16_t c = text[i].unicode();
        plain = (c >= u'0' && c <= u'9') || (c == u'.' && i > 0 && i + 1 < end && text[i - 1].isDigit()) ||
                (c == u'-' && i == 0);
    }
    if (plain && text[end - 1].isDigit() && text.count(QLatin1Char('.')) <= 1) {
        const QChar point = dialect == CsvExport::Dialect::Semicolon ? QLatin1Char(',') : QLatin1Char('.');
        for (qsizetype i = 0; i < end; ++i)
            out += text[i] == u'.' ? point : text[i];
        return;
    }
    CsvExport::appendField(out, figure(text, dialect), separator);
}

} // namespace

const QStringList &CsvExport::header()
{
    static const QStringList names{QStringLiteral("Run"),
                                   QStringLiteral("Plate"),
                                   QStringLiteral("Plate ID"),
                                   QStringLiteral("Well"),
                                   QStringLiteral("Group"),
                                   QStringLiteral("Sample"),
                                   QStringLiteral("Control"),
                                   QStringLiteral("Included"),
                                   QStringLiteral("Test"),
                                   QStringLiteral("Kit Lot"),
                                   QStringLiteral("Kit Expiry"),
                                   QStringLiteral("Date Read"),
                                   QStringLiteral("Time Read"),
                                   QStringLiteral("Technician"),
                                   QStringLiteral("Reader"),
                                   QStringLiteral("Filter (nm)"),
                                   QStringLiteral("OD"),
                                   QStringLiteral("Ratio Name"),
                                   QStringLiteral("Ratio"),
                                   QStringLiteral("Result"),
                                   QStringLiteral("Plate Verdict"),
                                   QStringLiteral("Program Version")};
    return names;
}

void CsvExport::appendField(QString &out, const QString &text, QChar separator)
{
    bool quote = false;
    for (QChar c : text) {
        if (c == separator || c == u'"' || c == u'\r' || c == u'\n') {
            quote = true;
            break;
        }
    }
    if (!quote) {
        out += text;
        return;
    }
    out += QLatin1Char('"');
    for (QChar c : text) {
        if (c == u'"')
            out += QLatin1Char('"');
        out += c;
    }
    out += QLatin1Char('"');
}

QByteArray CsvExport::write(const QVector<ExportRow> &rows, Dialect dialect)
{
    const QChar separator = dialect == Dialect::Comma ? QLatin1Char(',') : QLatin1Char(';');
    QString out;
    out.reserve(220 * (rows.size() + 1));
    bool first = true;
    for (const QString &name : header()) {
        if (!first)
            out += separator;
        first = false;
        appendField(out, name, separator);
    }
    out += QLatin1String("\r\n");

    // What a plate says alike in all its rows is written once: the fields before the well,
    // those from the test to the filter, the figure's name, and the last two.
    int plate = -1;
    QString head, kit, ratioName, tail;
    auto field = [&](QString &to, const QString &text) {
        appendField(to, text, separator);
        to += separator;
    };
    for (const ExportRow &r : rows) {
        if (r.plate != plate) {
            plate = r.plate;
            head.clear();
            field(head, r.runName);
            field(head, r.plateName);
            field(head, QString::number(r.plateId));
            kit.clear();
            field(kit, r.testName);
            field(kit, r.kitLot);
            field(kit, r.kitExpiry.isValid() ? r.kitExpiry.toString(Qt::ISODate) : QString());
            field(kit, r.dateRead.toString(Qt::ISODate));
            field(kit, r.timeRead.isValid() ? r.timeRead.toString(Qt::ISODate) : QString());
            field(kit, r.technician);
            field(kit, r.reader);
            field(kit, r.filter);
            ratioName.clear();
            field(ratioName, r.ratioName);
            tail.clear();
            field(tail, r.verdict);
            appendField(tail, r.version, separator);
            tail += QLatin1String("\r\n");
        }
        out += head;
        field(out, r.well);
        field(out, r.group);
        field(out, r.sample);
        out += yesNo(r.control);
        out += separator;
        out += yesNo(r.included);
        out += separator;
        out += kit;
        appendFigure(out, r.od, dialect, separator);
        out += separator;
        out += ratioName;
        appendFigure(out, r.ratio, dialect, separator);
        out += separator;
        field(out, r.result);
        out += tail;
    }
    return out.toUtf8();
}
