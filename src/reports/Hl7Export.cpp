#include "reports/Hl7Export.h"

#include "evaluation/PlateEvaluator.h"
#include "reports/ExportBuffer.h"

#include <QUuid>

namespace {

const QString kProgramVersion = PlateEvaluator::kProgramVersion;

// The escape of a character in an HL7 text, or nullptr for one written as it is.
const char *hl7Escape(char16_t c)
{
    switch (c) {
    case u'\\': return "\\E\\";
    case u'|': return "\\F\\";
    case u'^': return "\\S\\";
    case u'&': return "\\T\\";
    case u'~': return "\\R\\";
    case u'\r': return "\\X0D\\";
    case u'\n': return "\\X0A\\";
    default: return nullptr;
    }
}

void escaped(ExportBuffer &out, QStringView text)
{
    out.text(text, hl7Escape);
}

// A segment written straight into the message: its name, then the fields at their
// positions, "|" before each; end() closes it with CR.
class Segment {
public:
    Segment(ExportBuffer &out, const char *name) : mOut(out) { mOut.ascii(name); }
    // The buffer, at the field's position.
    ExportBuffer &at(int position)
    {
        if (mCount < position) {
            mOut.repeat('|', position - mCount);
            mCount = position;
        }
        return mOut;
    }
    Segment &field(int position, const char *ascii)
    {
        at(position).ascii(ascii);
        return *this;
    }
    Segment &field(int position, const QByteArray &bytes)
    {
        at(position).bytes(bytes);
        return *this;
    }
    // A text written as it is (no escapes).
    Segment &plain(int position, QStringView text)
    {
        at(position).text(text);
        return *this;
    }
    Segment &text(int position, QStringView text)
    {
        escaped(at(position), text);
        return *this;
    }
    void end() { mOut.ascii('\r'); }

private:
    ExportBuffer &mOut;
    int mCount = 0;
};

QByteArray cwe(QStringView id, QStringView text, const char *system)
{
    ExportBuffer out;
    escaped(out, id);
    out.ascii('^');
    escaped(out, text);
    out.ascii('^');
    out.ascii(system);
    return out.take();
}

// What every well of a plate says alike, escaped once for all its wells.
struct PlateTexts {
    QByteArray obrMiddle; // OBR-4 to OBR-20 with the "|" before and after them
    QByteArray notes;     // the NTEs of the verdict and the version, CRs included
    QByteArray time;
    QByteArray ratio;  // the figure's observation id
    QByteArray obxEnd; // OBX-12 to OBX-18 and the CR
};

QStringView numberText(const QString &text)
{
    QStringView t = QStringView(text).trimmed();
    if (t.endsWith(QLatin1Char('%')))
        t.chop(1);
    return t;
}

PlateTexts textsOf(const ExportRow &r, const QString &readTime)
{
    PlateTexts texts;
    texts.time = readTime.toUtf8();
    // Written as an OBR from field 3 on, then the part from the "|" after field 3 kept.
    ExportBuffer obr;
    Segment(obr, "")
        .field(3, "")
        .field(4, cwe(r.testName, r.testName, "L"))
        .field(7, texts.time)
        .text(20, r.plateName)
        .field(21, "");
    texts.obrMiddle = obr.take().mid(3);
    ExportBuffer notes;
    if (!r.verdict.isEmpty())
        Segment(notes, "NTE").field(1, "1").field(2, "L").text(3, r.verdict).end();
    Segment(notes, "NTE")
        .field(1, r.verdict.isEmpty() ? "1" : "2")
        .field(2, "L")
        .text(3, QString(QStringLiteral("Validated by version ") + r.version))
        .end();
    texts.notes = notes.take();
    texts.ratio = cwe(u"RATIO", r.ratioName, "L");

    QString kit = r.testName;
    if (!r.kitLot.isEmpty())
        kit += QStringLiteral(", lot ") + r.kitLot;
    if (r.kitExpiry.isValid())
        kit += QStringLiteral(", expires ") + r.kitExpiry.toString(Qt::ISODate);
    QString reader = r.reader;
    if (!r.filter.isEmpty())
        reader += QStringLiteral(" (") + r.filter + QStringLiteral(" nm)");
    // Written as a segment from field 11 on, then the part from field 11 kept.
    ExportBuffer end;
    Segment s(end, "");
    s.field(11, "").field(14, texts.time);
    if (!r.technician.isEmpty()) {
        s.field(16, "^");
        escaped(end, r.technician);
    }
    s.field(17, cwe(r.testName, kit, "L"));
    if (!reader.isEmpty())
        s.text(18, reader);
    s.end();
    texts.obxEnd = end.take().mid(11);
    return texts;
}

// An OBX: its set id, type and observation id, then value(buffer) writes OBX-5, then
// the units, the abnormal flag (escaped here), the status and the plate's part.
template <typename Value>
void obx(ExportBuffer &out, int &setId, const char *type, const QByteArray &observation, Value value, const char *units,
         QStringView flag, const char *status, const PlateTexts &plate)
{
    Segment s(out, "OBX");
    s.at(1).number(++setId);
    s.field(2, type).field(3, observation);
    value(s.at(5));
    if (*units)
        s.field(6, units);
    if (!flag.isEmpty())
        s.text(8, flag);
    s.field(11, status);
    out.bytes(plate.obxEnd);
}

void writeWell(ExportBuffer &out, const ExportRow &r, int order, const PlateTexts &plate)
{
    static const QByteArray od = cwe(u"OD", u"Optical density", "L");
    static const QByteArray included = cwe(u"INCLUDED", u"Included in the plate's validation", "L");
    static const QByteArray yes = cwe(u"Y", u"Yes", "HL70136");
    static const QByteArray no = cwe(u"N", u"No", "HL70136");
    static const QByteArray resultId = cwe(u"RESULT", u"Qualitative result", "L");
    static const QByteArray positive = cwe(u"POS", u"Positive", "L");
    static const QByteArray negative = cwe(u"NEG", u"Negative", "L");

    Segment orc(out, "ORC");
    orc.field(1, "RE").text(3, r.sample);
    if (!r.group.isEmpty())
        orc.text(21, r.group);
    orc.end();

    // The plate's part of the OBR and its notes are bytes made once per plate.
    Segment obr(out, "OBR");
    obr.at(1).number(order);
    obr.text(3, r.sample);
    out.bytes(plate.obrMiddle);
    out.text(r.well);
    out.ascii("||||F\r");
    out.bytes(plate.notes);

    const auto text = [](QStringView text) { return [text](ExportBuffer &to) { escaped(to, text); }; };
    const auto bytes = [](const QByteArray &bytes) { return [&bytes](ExportBuffer &to) { to.bytes(bytes); }; };
    int setId = 0;
    const bool odIsNumber = ExportRow::isNumber(r.od);
    obx(out, setId, odIsNumber ? "NM" : "ST", od, text(r.od), "", {}, r.od.isEmpty() ? "X" : "F", plate);
    if (r.control) {
        obx(out, setId, "CWE", included, bytes(r.included ? yes : no), "", {}, "F", plate);
    } else {
        if (!r.ratioName.isEmpty() && ExportRow::isNumber(r.ratio)) {
            obx(out, setId, "NM", plate.ratio, text(numberText(r.ratio)),
                QStringView(r.ratio).trimmed().endsWith(QLatin1Char('%')) ? "%" : "", {}, "F", plate);
        }
        const QString &result = r.result;
        const QByteArray shown = result == u"POS"   ? positive
                                 : result == u"NEG" ? negative
                                 : result.isEmpty() ? QByteArray()
                                                    : cwe(result, result, "L");
        obx(out, setId, "CWE", resultId, bytes(shown), "", result, result.isEmpty() ? "X" : "F", plate);
    }

    Segment spm(out, "SPM");
    spm.field(1, "1").text(2, r.sample).field(11, r.control ? "Q" : "P");
    spm.end();
}

} // namespace

QString Hl7Export::escape(const QString &text)
{
    bool plain = true;
    for (QChar c : text) {
        const char16_t u = c.unicode();
        if (u == u'\\' || u == u'|' || u == u'^' || u == u'&' || u == u'~' || u == u'\r' || u == u'\n') {
            plain = false;
            break;
        }
    }
    if (plain)
        return text;
    QString out;
    out.reserve(text.size());
    for (QChar c : text) {
        switch (c.unicode()) {
        case u'\\': out += QLatin1String("\\E\\"); break;
        case u'|': out += QLatin1String("\\F\\"); break;
        case u'^': out += QLatin1String("\\S\\"); break;
        case u'&': out += QLatin1String("\\T\\"); break;
        case u'~': out += QLatin1String("\\R\\"); break;
        case u'\r': out += QLatin1String("\\X0D\\"); break;
        case u'\n': out += QLatin1String("\\X0A\\"); break;
        default: out += c;
        }
    }
    return out;
}

QString Hl7Export::timestamp(const QDate &date, const QTime &time)
{
    if (!date.isValid())
        return QString();
    if (!time.isValid())
        return date.toString(QStringLiteral("yyyyMMdd"));
    return date.toString(QStringLiteral("yyyyMMdd")) + time.toString(QStringLiteral("HHmmss"));
}

QByteArray Hl7Export::write(const QVector<ExportRow> &rows, const QDateTime &now, const ControlIds &controlId)
{
    ExportBuffer out(800 * rows.size());
    write(out, rows, now, controlId);
    return out.take();
}

void Hl7Export::write(ExportBuffer &out, const QVector<ExportRow> &rows, const QDateTime &now,
                      const ControlIds &controlId)
{
    const QString messageTime = timestamp(now.date(), now.time());
    int plate = -1;
    int order = 0;
    PlateTexts texts;
    for (const ExportRow &r : rows) {
        if (r.plate != plate) {
            plate = r.plate;
            order = 0;
            texts = textsOf(r, timestamp(r.dateRead, r.timeRead));
            const QString id = controlId ? controlId() : QUuid::createUuid().toString(QUuid::Id128);
            Segment(out, "MSH")
                .field(1, "^~\\&")
                .plain(2, kApplication)
                .plain(6, messageTime)
                .field(8, "ORU^R01^ORU_R01")
                .plain(9, id)
                .field(10, "P")
                .field(11, "2.5.1")
                .field(17, "UNICODE UTF-8")
                .end();
            Segment(out, "SFT")
                .field(1, "Qorn")
                .plain(2, kProgramVersion)
                .plain(3, kApplication)
                .plain(4, kProgramVersion)
                .end();
        }
        writeWell(out, r, ++order, texts);
    }
}
