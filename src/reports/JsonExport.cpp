#include "reports/JsonExport.h"

#include "reports/ExportBuffer.h"

#include <array>
#include <charconv>
#include <cstdio>

namespace {

// The escape of a character in a JSON string, or nullptr for one written as it is.
const char *jsonEscape(char16_t c)
{
    static const auto controls = [] {
        std::array<std::array<char, 8>, 0x20> names{};
        for (int i = 0; i < 0x20; ++i)
            std::snprintf(names[i].data(), names[i].size(), "\\u%04x", i);
        return names;
    }();
    switch (c) {
    case u'"': return "\\\"";
    case u'\\': return "\\\\";
    case u'\n': return "\\n";
    case u'\r': return "\\r";
    case u'\t': return "\\t";
    default: return c < 0x20 ? controls[c].data() : nullptr;
    }
}

void text(ExportBuffer &out, QStringView value)
{
    out.ascii('"');
    out.text(value, jsonEscape);
    out.ascii('"');
}

// The figure's text when it is already the shortest form of its number, as std::to_chars
// writes it ("0.512", "47.4" of "47.4%"): an optional minus, digits with no leading 0 but
// the one before the point, a point, digits ending in no 0, at most one 0 right after
// "0.", 15 digits at most. Such a text reads back as the one double it names and no
// shorter text does; and its plain form is shorter than an exponent form. Empty otherwise.
QStringView ownNumberText(const QString &value)
{
    QStringView t(value);
    if (t.endsWith(u'%'))
        t.chop(1);
    const QStringView digits = t.startsWith(u'-') ? t.sliced(1) : t;
    const qsizetype point = digits.indexOf(u'.');
    if (point < 1 || point + 1 >= digits.size() || digits.size() > 16 || digits.back() == u'0')
        return {};
    for (qsizetype i = 0; i < digits.size(); ++i) {
        if (i != point && !(digits[i] >= u'0' && digits[i] <= u'9'))
            return {};
    }
    if (digits[0] == u'0' && (point != 1 || (digits[2] == u'0' && digits[3] == u'0')))
        return {};
    return t;
}

void figure(ExportBuffer &out, const QString &value)
{
    if (const QStringView own = ownNumberText(value); !own.isEmpty()) {
        out.text(own);
    } else if (value.isEmpty()) {
        out.ascii("null");
    } else if (const std::optional<double> number = ExportRow::number(value)) {
        char buffer[64];
        const auto written = std::to_chars(buffer, buffer + sizeof buffer - 1, *number);
        *written.ptr = '\0';
        out.ascii(buffer);
    } else {
        text(out, value);
    }
}

void key(ExportBuffer &out, const char *name, bool first = false)
{
    if (!first)
        out.ascii(',');
    out.ascii('"');
    out.ascii(name);
    out.ascii("\":");
}

} // namespace

QByteArray JsonExport::write(const QVector<ExportRow> &rows)
{
    ExportBuffer out(480 * (rows.size() + 1));
    write(out, rows);
    return out.take();
}

void JsonExport::write(ExportBuffer &out, const QVector<ExportRow> &rows)
{
    out.ascii('[');
    bool firstRow = true;
    // What a plate says alike in all its rows is written once: the members before the well,
    // those from the test to the filter, the figure's name, and the last two.
    int plate = -1;
    ExportBuffer head, kit, ratioName, tail;
    for (const ExportRow &r : rows) {
        if (r.plate != plate) {
            plate = r.plate;
            head.clear();
            key(head, "runName", true);
            text(head, r.runName);
            key(head, "plateName");
            text(head, r.plateName);
            key(head, "plateId");
            head.number(r.plateId);
            kit.clear();
            key(kit, "testName");
            text(kit, r.testName);
            key(kit, "kitLot");
            text(kit, r.kitLot);
            key(kit, "kitExpiry");
            if (r.kitExpiry.isValid())
                text(kit, r.kitExpiry.toString(Qt::ISODate));
            else
                kit.ascii("null");
            key(kit, "read");
            text(kit, r.timeRead.isValid() ? r.dateRead.toString(Qt::ISODate) + u'T' + r.timeRead.toString(Qt::ISODate)
                                           : r.dateRead.toString(Qt::ISODate));
            key(kit, "technician");
            text(kit, r.technician);
            key(kit, "reader");
            text(kit, r.reader);
            key(kit, "filter");
            figure(kit, r.filter);
            ratioName.clear();
            key(ratioName, "ratioName");
            text(ratioName, r.ratioName);
            tail.clear();
            key(tail, "verdict");
            text(tail, r.verdict);
            key(tail, "version");
            text(tail, r.version);
            tail.ascii('}');
        }
        out.ascii(firstRow ? "\n{" : ",\n{");
        firstRow = false;
        out.bytes(head);
        key(out, "well");
        text(out, r.well);
        key(out, "group");
        text(out, r.group);
        key(out, "sample");
        text(out, r.sample);
        key(out, "control");
        out.ascii(r.control ? "true" : "false");
        key(out, "included");
        out.ascii(r.included ? "true" : "false");
        out.bytes(kit);
        key(out, "od");
        figure(out, r.od);
        out.bytes(ratioName);
        key(out, "ratio");
        figure(out, r.ratio);
        key(out, "result");
        text(out, r.result);
        out.bytes(tail);
    }
    out.ascii(rows.isEmpty() ? "]\n" : "\n]\n");
}
