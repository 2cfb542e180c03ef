#include "reports/CsvExport.h"

#include "reports/ExportBuffer.h"

namespace {

const char *yesNo(bool value)
{
    return value ? "yes" : "no";
}

// A figure in the dialect's decimal sign; a text that is no figure stays as it is.
QString figure(const QString &text, CsvExport::Dialect dialect)
{
    if (text.isEmpty())
        return text;
    QString t = text;
    if (t.endsWith(QLatin1Char('%')))
        t.chop(1);
    if (!ExportRow::isNumber(t))
        return text;
    if (dialect == CsvExport::Dialect::Semicolon)
        t.replace(QLatin1Char('.'), QLatin1Char(','));
    return t;
}

// One field as it stands in a record.
void field(ExportBuffer &out, QStringView text, char separator)
{
    bool quote = false;
    for (QChar c : text) {
        if (c == QLatin1Char(separator) || c == u'"' || c == u'\r' || c == u'\n') {
            quote = true;
            break;
        }
    }
    if (!quote) {
        out.text(text);
        return;
    }
    out.ascii('"');
    out.text(text, [](char16_t c) { return c == u'"' ? "\"\"" : nullptr; });
    out.ascii('"');
}

// The figure as a field. Plain digits ("0.512", "47.4%") are copied with the dialect's
// decimal sign and without the percent sign, with nothing made on the way; they never
// need quotes.
void appendFigure(ExportBuffer &out, const QString &text, CsvExport::Dialect dialect, char separator)
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
        const char point = dialect == CsvExport::Dialect::Semicolon ? ',' : '.';
        for (qsizetype i = 0; i < end; ++i)
            out.ascii(text[i] == u'.' ? point : char(text[i].unicode()));
        return;
    }
    field(out, figure(text, dialect), separator);
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

QByteArray CsvExport::write(const QVector<ExportRow> &rows, Dialect dialect)
{
    ExportBuffer out(240 * (rows.size() + 1));
    write(out, rows, dialect);
    return out.take();
}

void CsvExport::write(ExportBuffer &out, const QVector<ExportRow> &rows, Dialect dialect)
{
    const char separator = dialect == Dialect::Comma ? ',' : ';';
    bool first = true;
    for (const QString &name : header()) {
        if (!first)
            out.ascii(separator);
        first = false;
        field(out, name, separator);
    }
    out.ascii("\r\n");

    // What a plate says alike in all its rows is written once: the fields before the well,
    // those from the test to the filter, the figure's name, and the last two.
    int plate = -1;
    ExportBuffer head, kit, ratioName, tail;
    auto cell = [separator](ExportBuffer &to, QStringView text) {
        field(to, text, separator);
        to.ascii(separator);
    };
    for (const ExportRow &r : rows) {
        if (r.plate != plate) {
            plate = r.plate;
            head.clear();
            cell(head, r.runName);
            cell(head, r.plateName);
            head.number(r.plateId);
            head.ascii(separator);
            kit.clear();
            cell(kit, r.testName);
            cell(kit, r.kitLot);
            cell(kit, r.kitExpiry.isValid() ? r.kitExpiry.toString(Qt::ISODate) : QString());
            cell(kit, r.dateRead.toString(Qt::ISODate));
            cell(kit, r.timeRead.isValid() ? r.timeRead.toString(Qt::ISODate) : QString());
            cell(kit, r.technician);
            cell(kit, r.reader);
            cell(kit, r.filter);
            ratioName.clear();
            cell(ratioName, r.ratioName);
            tail.clear();
            cell(tail, r.verdict);
            field(tail, r.version, separator);
            tail.ascii("\r\n");
        }
        out.bytes(head);
        cell(out, r.well);
        cell(out, r.group);
        cell(out, r.sample);
        out.ascii(yesNo(r.control));
        out.ascii(separator);
        out.ascii(yesNo(r.included));
        out.ascii(separator);
        out.bytes(kit);
        appendFigure(out, r.od, dialect, separator);
        out.ascii(separator);
        out.bytes(ratioName);
        appendFigure(out, r.ratio, dialect, separator);
        out.ascii(separator);
        cell(out, r.result);
        out.bytes(tail);
    }
}
