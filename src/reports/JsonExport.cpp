#include "reports/JsonExport.h"

#include <charconv>

namespace {

void text(QString &out, const QString &value)
{
    out += QLatin1Char('"');
    bool plain = true;
    for (QChar c : value) {
        if (c.unicode() < 0x20 || c == u'"' || c == u'\\') {
            plain = false;
            break;
        }
    }
    if (plain) {
        out += value;
        out += QLatin1Char('"');
        return;
    }
    for (QChar c : value) {
        switch (c.unicode()) {
        case u'"': out += QLatin1String("\\\""); break;
        case u'\\': out += QLatin1String("\\\\"); break;
        case u'\n': out += QLatin1String("\\n"); break;
        case u'\r': out += QLatin1String("\\r"); break;
        case u'\t': out += QLatin1String("\\t"); break;
        default:
            if (c.unicode() < 0x20)
                out += QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
            else
                out += c;
        }
    }
    out += QLatin1Char('"');
}

void figure(QString &out, const QString &value)
{
    if (value.isEmpty()) {
        out += QLatin1String("null");
    } else if (const std::optional<double> number = ExportRow::number(value)) {
        char buffer[64];
        const auto written = std::to_chars(buffer, buffer + sizeof buffer, *number);
        out += QLatin1String(buffer, written.ptr - buffer);
    } else {
        text(out, value);
    }
}

void key(QString &out, QLatin1String name, bool first = false)
{
    if (!first)
        out += QLatin1Char(',');
    out += QLatin1Char('"');
    out += name;
    out += QLatin1String("\":");
}

} // namespace

QByteArray JsonExport::write(const QVector<ExportRow> &rows)
{
    QString out;
    out.reserve(480 * (rows.size() + 1));
    out += QLatin1Char('[');
    bool firstRow = true;
    // What a plate says alike in all its rows is written once: the members before the well,
    // those from the test to the filter, the figure's name, and the last two.
    int plate = -1;
    QString head, kit, ratioName, tail;
    for (const ExportRow &r : rows) {
        if (r.plate != plate) {
            plate = r.plate;
            head.clear();
            key(head, QLatin1String("runName"), true);
            text(head, r.runName);
            key(head, QLatin1String("plateName"));
            text(head, r.plateName);
            key(head, QLatin1String("plateId"));
            head += QString::number(r.plateId);
            kit.clear();
            key(kit, QLatin1String("testName"));
            text(kit, r.testName);
            key(kit, QLatin1String("kitLot"));
            text(kit, r.kitLot);
            key(kit, QLatin1String("kitExpiry"));
            if (r.kitExpiry.isValid())
                text(kit, r.kitExpiry.toString(Qt::ISODate));
            else
                kit += QLatin1String("null");
            key(kit, QLatin1String("read"));
            text(kit, r.timeRead.isValid() ? r.dateRead.toString(Qt::ISODate) + u'T' + r.timeRead.toString(Qt::ISODate)
                                           : r.dateRead.toString(Qt::ISODate));
            key(kit, QLatin1String("technician"));
            text(kit, r.technician);
            key(kit, QLatin1String("reader"));
            text(kit, r.reader);
            key(kit, QLatin1String("filter"));
            figure(kit, r.filter);
            ratioName.clear();
            key(ratioName, QLatin1String("ratioName"));
            text(ratioName, r.ratioName);
            tail.clear();
            key(tail, QLatin1String("verdict"));
            text(tail, r.verdict);
            key(tail, QLatin1String("version"));
            text(tail, r.version);
            tail += QLatin1Char('}');
        }
        out += firstRow ? QLatin1String("\n{") : QLatin1String(",\n{");
        firstRow = false;
        out += head;
        key(out, QLatin1String("well"));
        text(out, r.well);
        key(out, QLatin1String("group"));
        text(out, r.group);
        key(out, QLatin1String("sample"));
        text(out, r.sample);
        key(out, QLatin1String("control"));
        out += r.control ? QLatin1String("true") : QLatin1String("false");
        key(out, QLatin1String("included"));
        out += r.included ? QLatin1String("true") : QLatin1String("false");
        out += kit;
        key(out, QLatin1String("od"));
        figure(out, r.od);
        out += ratioName;
        key(out, QLatin1String("ratio"));
        figure(out, r.ratio);
        key(out, QLatin1String("result"));
        text(out, r.result);
        out += tail;
    }
    out += rows.isEmpty() ? QLatin1String("]\n") : QLatin1String("\n]\n");
    return out.toUtf8();
}
