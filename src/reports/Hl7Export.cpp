#include "reports/Hl7Export.h"

#include "evaluation/PlateEvaluator.h"

#include <QUuid>

#include <charconv>

namespace {

const QString kProgramVersion = PlateEvaluator::kProgramVersion;

// A segment written straight into the message: its name, then the fields at their
// positions, "|" before each; end() closes it with CR.
class Segment {
public:
    Segment(QString &out, const char *name) : mOut(out) { mOut += QLatin1String(name); }
    template <typename Text> Segment &field(int position, const Text &raw)
    {
        while (mCount < position) {
            mOut += QLatin1Char('|');
            ++mCount;
        }
        mOut += raw;
        return *this;
    }
    void end() { mOut += QLatin1Char('\r'); }

private:
    QString &mOut;
    int mCount = 0;
};

QString cwe(const QString &id, const QString &text, const QString &system)
{
    return Hl7Export::escape(id) + QLatin1Char('^') + Hl7Export::escape(text) + QLatin1Char('^') + system;
}

// A number written straight into the text.
void appendNumber(QString &out, int value)
{
    char buffer[16];
    const auto written = std::to_chars(buffer, buffer + sizeof buffer, value);
    out += QLatin1String(buffer, written.ptr - buffer);
}

// What every well of a plate says alike, escaped once for all its wells.
struct PlateTexts {
    QString test;
    QString plateName;
    QString verdictNote; // the NTE, CR included; empty when there is no verdict
    QString versionNote; // the NTE's text
    QString time;
    QString ratio;  // the figure's observation id
    QString obxEnd; // OBX-12 to OBX-18 and the CR
};

QString numberText(const QString &text)
{
    QString t = text.trimmed();
    if (t.endsWith(QLatin1Char('%')))
        t.chop(1);
    return t;
}

PlateTexts textsOf(const ExportRow &r, const QString &readTime)
{
    PlateTexts texts;
    texts.test = cwe(r.testName, r.testName, QStringLiteral("L"));
    texts.plateName = Hl7Export::escape(r.plateName);
    const QString verdict = Hl7Export::escape(r.verdict);
    if (!verdict.isEmpty())
        Segment(texts.verdictNote, "NTE")
            .field(1, QStringLiteral("1"))
            .field(2, QStringLiteral("L"))
            .field(3, verdict)
            .end();
    texts.versionNote = Hl7Export::escape(QStringLiteral("Validated by version ") + r.version);
    texts.time = readTime;
    texts.ratio = cwe(QStringLiteral("RATIO"), r.ratioName, QStringLiteral("L"));

    QString kit = r.testName;
    if (!r.kitLot.isEmpty())
        kit += QStringLiteral(", lot ") + r.kitLot;
    if (r.kitExpiry.isValid())
        kit += QStringLiteral(", expires ") + r.kitExpiry.toString(Qt::ISODate);
    QString reader = r.reader;
    if (!r.filter.isEmpty())
        reader += QStringLiteral(" (") + r.filter + QStringLiteral(" nm)");
    const QString technician = Hl7Export::escape(r.technician);
    const QString equipment = Hl7Export::escape(reader);
    // Written as a segment from field 11 on, then the part from field 11 kept.
    QString end;
    Segment s(end, "");
    s.field(11, QString()).field(14, readTime);
    if (!technician.isEmpty())
        s.field(16, QLatin1Char('^') + technician);
    s.field(17, cwe(r.testName, kit, QStringLiteral("L")));
    if (!equipment.isEmpty())
        s.field(18, equipment);
    s.end();
    texts.obxEnd = end.mid(11);
    return texts;
}

void obx(QString &out, int &setId, QLatin1String type, const QString &observation, const QString &value,
         const QString &units, const QString &flag, QLatin1String status, const PlateTexts &plate)
{
    Segment s(out, "OBX");
    s.field(1, QString()); // the set id, written in place
    appendNumber(out, ++setId);
    s.field(2, type).field(3, observation).field(5, value);
    if (!units.isEmpty())
        s.field(6, units);
    if (!flag.isEmpty())
        s.field(8, flag);
    s.field(11, status);
    out += plate.obxEnd;
}

void writeWell(QString &out, const ExportRow &r, int order, const PlateTexts &plate)
{
    static const QString od = cwe(QStringLiteral("OD"), QStringLiteral("Optical density"), QStringLiteral("L"));
    static const QString included =
        cwe(QStringLiteral("INCLUDED"), QStringLiteral("Included in the plate's validation"), QStringLiteral("L"));
    static const QString yes = cwe(QStringLiteral("Y"), QStringLiteral("Yes"), QStringLiteral("HL70136"));
    static const QString no = cwe(QStringLiteral("N"), QStringLiteral("No"), QStringLiteral("HL70136"));
    static const QString resultId =
        cwe(QStringLiteral("RESULT"), QStringLiteral("Qualitative result"), QStringLiteral("L"));
    static const QString positive = cwe(QStringLiteral("POS"), QStringLiteral("Positive"), QStringLiteral("L"));
    static const QString negative = cwe(QStringLiteral("NEG"), QStringLiteral("Negative"), QStringLiteral("L"));
    const QLatin1String f("F");
    const QLatin1String x("X");

    const QString sample = Hl7Export::escape(r.sample);
    Segment orc(out, "ORC");
    orc.field(1, QLatin1String("RE")).field(3, sample);
    if (!r.group.isEmpty())
        orc.field(21, Hl7Export::escape(r.group));
    orc.end();

    Segment obr(out, "OBR");
    obr.field(1, QString());
    appendNumber(out, order);
    obr.field(3, sample)
        .field(4, plate.test)
        .field(7, plate.time)
        .field(20, plate.plateName)
        .field(21, r.well)
        .field(25, f);
    obr.end();

    out += plate.verdictNote;
    Segment(out, "NTE")
        .field(1, plate.verdictNote.isEmpty() ? QLatin1String("1") : QLatin1String("2"))
        .field(2, QLatin1String("L"))
        .field(3, plate.versionNote)
        .end();

    int setId = 0;
    const bool odIsNumber = ExportRow::number(r.od).has_value();
    obx(out, setId, odIsNumber ? QLatin1String("NM") : QLatin1String("ST"), od, Hl7Export::escape(r.od), QString(),
        QString(), r.od.isEmpty() ? x : f, plate);
    if (r.control) {
        obx(out, setId, QLatin1String("CWE"), included, r.included ? yes : no, QString(), QString(), f, plate);
    } else {
        if (!r.ratioName.isEmpty() && ExportRow::number(r.ratio)) {
            static const QString percent = QStringLiteral("%");
            obx(out, setId, QLatin1String("NM"), plate.ratio, Hl7Export::escape(numberText(r.ratio)),
                r.ratio.trimmed().endsWith(QLatin1Char('%')) ? percent : QString(), QString(), f, plate);
        }
        const QString &result = r.result;
        const QString value = result == u"POS"   ? positive
                              : result == u"NEG" ? negative
                              : result.isEmpty() ? QString()
                                                 : cwe(result, result, QStringLiteral("L"));
        obx(out, setId, QLatin1String("CWE"), resultId, value, QString(), Hl7Export::escape(result),
            result.isEmpty() ? x : f, plate);
    }

    Segment spm(out, "SPM");
    spm.field(1, QLatin1String("1")).field(2, sample).field(11, r.control ? QLatin1String("Q") : QLatin1String("P"));
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
    const QString messageTime = timestamp(now.date(), now.time());
    QString out;
    out.reserve(900 * rows.size());
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
                .field(1, QStringLiteral("^~\\&"))
                .field(2, kApplication)
                .field(6, messageTime)
                .field(8, QStringLiteral("ORU^R01^ORU_R01"))
                .field(9, id)
                .field(10, QStringLiteral("P"))
                .field(11, QStringLiteral("2.5.1"))
                .field(17, QStringLiteral("UNICODE UTF-8"))
                .end();
            Segment(out, "SFT")
                .field(1, QStringLiteral("Qorn"))
                .field(2, kProgramVersion)
                .field(3, kApplication)
                .field(4, kProgramVersion)
                .end();
        }
        writeWell(out, r, ++order, texts);
    }
    return out.toUtf8();
}
