#include "reports/Hl7Export.h"

#include "evaluation/PlateEvaluator.h"

#include <QUuid>

namespace {

const QString kProgramVersion = PlateEvaluator::kProgramVersion;

// A segment written straight into the message: its name, then the fields at their
// positions, "|" before each; end() closes it with CR.
class Segment {
public:
    Segment(QString &out, const char *name) : mOut(out) { mOut += QLatin1String(name); }
    Segment &field(int position, const QString &raw)
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

struct ObxCommon {
    QString test;
    QString plateName;
    QString verdict;
    QString versionNote;
    QString time;
    QString technician;
    QString method;
    QString equipment;
};

void obx(QString &out, int &setId, const QString &type, const QString &observation, const QString &value,
         const QString &units, const QString &flag, const QString &status, const ObxCommon &common)
{
    Segment s(out, "OBX");
    s.field(1, QString::number(++setId)).field(2, type).field(3, observation).field(5, value);
    if (!units.isEmpty())
        s.field(6, units);
    if (!flag.isEmpty())
        s.field(8, flag);
    s.field(11, status).field(14, common.time);
    if (!common.technician.isEmpty())
        s.field(16, QLatin1Char('^') + common.technician);
    s.field(17, common.method);
    if (!common.equipment.isEmpty())
        s.field(18, common.equipment);
    s.end();
}

QString numberText(const QString &text)
{
    QString t = text.trimmed();
    if (t.endsWith(QLatin1Char('%')))
        t.chop(1);
    return t;
}

// What every OBX of a plate says alike.
ObxCommon commonOf(const ExportRow &r, const QString &readTime)
{
    ObxCommon common;
    common.test = cwe(r.testName, r.testName, QStringLiteral("L"));
    common.plateName = Hl7Export::escape(r.plateName);
    common.verdict = Hl7Export::escape(r.verdict);
    common.versionNote = Hl7Export::escape(QStringLiteral("Validated by version ") + r.version);
    common.time = readTime;
    common.technician = Hl7Export::escape(r.technician);
    QString kit = r.testName;
    if (!r.kitLot.isEmpty())
        kit += QStringLiteral(", lot ") + r.kitLot;
    if (r.kitExpiry.isValid())
        kit += QStringLiteral(", expires ") + r.kitExpiry.toString(Qt::ISODate);
    common.method = cwe(r.testName, kit, QStringLiteral("L"));
    QString reader = r.reader;
    if (!r.filter.isEmpty())
        reader += QStringLiteral(" (") + r.filter + QStringLiteral(" nm)");
    common.equipment = Hl7Export::escape(reader);
    return common;
}

void writeWell(QString &out, const ExportRow &r, int order, const ObxCommon &common)
{
    const QString &readTime = common.time;
    const QString sample = Hl7Export::escape(r.sample);
    Segment orc(out, "ORC");
    orc.field(1, QStringLiteral("RE")).field(3, sample);
    if (!r.group.isEmpty())
        orc.field(21, Hl7Export::escape(r.group));
    orc.end();

    Segment obr(out, "OBR");
    obr.field(1, QString::number(order))
        .field(3, sample)
        .field(4, common.test)
        .field(7, readTime)
        .field(20, common.plateName)
        .field(21, r.well)
        .field(25, QStringLiteral("F"));
    obr.end();

    int note = 0;
    if (!common.verdict.isEmpty())
        Segment(out, "NTE").field(1, QString::number(++note)).field(2, QStringLiteral("L")).field(3, common.verdict).end();
    Segment(out, "NTE").field(1, QString::number(++note)).field(2, QStringLiteral("L")).field(3, common.versionNote).end();

    int setId = 0;
    const bool odIsNumber = ExportRow::number(r.od).has_value();
    obx(out, setId, odIsNumber ? QStringLiteral("NM") : QStringLiteral("ST"),
        cwe(QStringLiteral("OD"), QStringLiteral("Optical density"), QStringLiteral("L")), Hl7Export::escape(r.od),
        QString(), QString(), r.od.isEmpty() ? QStringLiteral("X") : QStringLiteral("F"), common);
    if (r.control) {
        obx(out, setId, QStringLiteral("CWE"),
            cwe(QStringLiteral("INCLUDED"), QStringLiteral("Included in the plate's validation"), QStringLiteral("L")),
            r.included ? cwe(QStringLiteral("Y"), QStringLiteral("Yes"), QStringLiteral("HL70136"))
                       : cwe(QStringLiteral("N"), QStringLiteral("No"), QStringLiteral("HL70136")),
            QString(), QString(), QStringLiteral("F"), common);
    } else {
        if (!r.ratioName.isEmpty() && ExportRow::number(r.ratio)) {
            obx(out, setId, QStringLiteral("NM"), cwe(QStringLiteral("RATIO"), r.ratioName, QStringLiteral("L")),
                Hl7Export::escape(numberText(r.ratio)), r.ratio.trimmed().endsWith(QLatin1Char('%')) ? QStringLiteral("%") : QString(),
                QString(), QStringLiteral("F"), common);
        }
        const QString result = r.result;
        const QString text = result == u"POS" ? QStringLiteral("Positive")
                             : result == u"NEG" ? QStringLiteral("Negative")
                                                : result;
        obx(out, setId, QStringLiteral("CWE"), cwe(QStringLiteral("RESULT"), QStringLiteral("Qualitative result"), QStringLiteral("L")),
            result.isEmpty() ? QString() : cwe(result, text, QStringLiteral("L")), QString(), Hl7Export::escape(result),
            result.isEmpty() ? QStringLiteral("X") : QStringLiteral("F"), common);
    }

    Segment spm(out, "SPM");
    spm.field(1, QStringLiteral("1")).field(2, sample).field(11, r.control ? QStringLiteral("Q") : QStringLiteral("P"));
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
    ObxCommon common;
    for (const ExportRow &r : rows) {
        if (r.plate != plate) {
            plate = r.plate;
            order = 0;
            common = commonOf(r, timestamp(r.dateRead, r.timeRead));
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
        writeWell(out, r, ++order, common);
    }
    return out.toUtf8();
}
