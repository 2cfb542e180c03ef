#include "reports/JsonExport.h"

#include "core/LegacyFormat.h"

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
        out += legacy::doubleToText(*number);
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
    // A plate's dates are made once for all its rows.
    int plate = -1;
    QString expiry, read;
    for (const ExportRow &r : rows) {
        if (r.plate != plate) {
            plate = r.plate;
            expiry.clear();
            if (r.kitExpiry.isValid())
                text(expiry, r.kitExpiry.toString(Qt::ISODate));
            else
                expiry = QStringLiteral("null");
            read.clear();
            text(read, r.timeRead.isValid() ? r.dateRead.toString(Qt::ISODate) + u'T' + r.timeRead.toString(Qt::ISODate)
                                            : r.dateRead.toString(Qt::ISODate));
        }
        out += firstRow ? QLatin1String("\n{") : QLatin1String(",\n{");
        firstRow = false;
        key(out, QLatin1String("runName"), true);
        text(out, r.runName);
        key(out, QLatin1String("plateName"));
        text(out, r.plateName);
        key(out, QLatin1String("plateId"));
        out += QString::number(r.plateId);
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
        key(out, QLatin1String("testName"));
        text(out, r.testName);
        key(out, QLatin1String("kitLot"));
        text(out, r.kitLot);
        key(out, QLatin1String("kitExpiry"));
        out += expiry;
        key(out, QLatin1String("read"));
        out += read;
        key(out, QLatin1String("technician"));
        text(out, r.technician);
        key(out, QLatin1String("reader"));
        text(out, r.reader);
        key(out, QLatin1String("filter"));
        figure(out, r.filter);
        key(out, QLatin1String("od"));
        figure(out, r.od);
        key(out, QLatin1String("ratioName"));
        text(out, r.ratioName);
        key(out, QLatin1String("ratio"));
        figure(out, r.ratio);
        key(out, QLatin1String("result"));
        text(out, r.result);
        key(out, QLatin1String("verdict"));
        text(out, r.verdict);
        key(out, QLatin1String("version"));
        text(out, r.version);
        out += QLatin1Char('}');
    }
    out += rows.isEmpty() ? QLatin1String("]\n") : QLatin1String("\n]\n");
    return out.toUtf8();
}
