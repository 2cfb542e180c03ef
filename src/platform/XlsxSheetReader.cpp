#include "platform/XlsxSheetReader.h"

#include <QFileInfo>
#include <QXmlStreamReader>

#include <zip.h>

namespace {

// The largest part of a workbook read into memory: far above any plate layout, and a stop
// for archives that unpack into gigabytes.
constexpr zip_uint64_t kMaxPartSize = 64u * 1024 * 1024;

class ZipArchive {
public:
    explicit ZipArchive(const QString &path)
    {
        int code = 0;
        mZip = zip_open(QFile::encodeName(path).constData(), ZIP_RDONLY, &code);
        if (!mZip) {
            zip_error_t error;
            zip_error_init_with_code(&error, code);
            mError = QString::fromLocal8Bit(zip_error_strerror(&error));
            zip_error_fini(&error);
        }
    }
    ~ZipArchive()
    {
        if (mZip)
            zip_discard(mZip);
    }
    ZipArchive(const ZipArchive &) = delete;
    ZipArchive &operator=(const ZipArchive &) = delete;

    bool isOpen() const { return mZip != nullptr; }
    const QString &error() const { return mError; }
    bool has(const QString &name) const { return mZip && zip_name_locate(mZip, name.toUtf8().constData(), 0) >= 0; }

    std::optional<QByteArray> part(const QString &name, QString *error) const
    {
        const QByteArray entry = name.toUtf8();
        zip_stat_t st;
        zip_stat_init(&st);
        if (zip_stat(mZip, entry.constData(), 0, &st) != 0) {
            *error = QStringLiteral("The workbook has no part \"%1\".").arg(name);
            return std::nullopt;
        }
        if (!(st.valid & ZIP_STAT_SIZE) || st.size > kMaxPartSize) {
            *error = QStringLiteral("The workbook's part \"%1\" is too large.").arg(name);
            return std::nullopt;
        }
        zip_file_t *file = zip_fopen(mZip, entry.constData(), 0);
        if (!file) {
            *error = QStringLiteral("The workbook's part \"%1\" can't be unpacked: %2")
                         .arg(name, QString::fromLocal8Bit(zip_strerror(mZip)));
            return std::nullopt;
        }
        QByteArray bytes(qsizetype(st.size), Qt::Uninitialized);
        const zip_int64_t n = bytes.isEmpty() ? 0 : zip_fread(file, bytes.data(), st.size);
        zip_fclose(file);
        if (n < 0 || zip_uint64_t(n) != st.size) {
            *error = QStringLiteral("The workbook's part \"%1\" is damaged.").arg(name);
            return std::nullopt;
        }
        return bytes;
    }

private:
    zip_t *mZip = nullptr;
    QString mError;
};

// The path inside the archive of a relationship's target, seen from the folder "xl/".
QString partPath(const QString &target)
{
    if (target.startsWith(u'/'))
        return target.mid(1);
    return target.startsWith(u"xl/") ? target : QStringLiteral("xl/") + target;
}

// The first sheet's part and the shared strings' part named by the workbook.
bool findParts(const ZipArchive &zip, QString *sheetPart, QString *stringsPart, QString *error)
{
    const std::optional<QByteArray> workbook = zip.part(QStringLiteral("xl/workbook.xml"), error);
    if (!workbook)
        return false;
    QString firstSheetId;
    QXmlStreamReader wx(*workbook);
    while (!wx.atEnd() && firstSheetId.isEmpty()) {
        if (wx.readNext() != QXmlStreamReader::StartElement || wx.name() != u"sheet")
            continue;
        // The relationship id (r:id); "sheetId" is another attribute.
        for (const QXmlStreamAttribute &a : wx.attributes())
            if (a.name() == u"id")
                firstSheetId = a.value().toString();
    }
    if (firstSheetId.isEmpty()) {
        *error = QStringLiteral("The workbook has no sheet.");
        return false;
    }
    const std::optional<QByteArray> rels = zip.part(QStringLiteral("xl/_rels/workbook.xml.rels"), error);
    if (!rels)
        return false;
    QXmlStreamReader rx(*rels);
    while (!rx.atEnd()) {
        if (rx.readNext() != QXmlStreamReader::StartElement || rx.name() != u"Relationship")
            continue;
        const QXmlStreamAttributes a = rx.attributes();
        if (a.value(QLatin1String("Id")) == firstSheetId)
            *sheetPart = partPath(a.value(QLatin1String("Target")).toString());
        else if (a.value(QLatin1String("Type")).endsWith(u"/sharedStrings"))
            *stringsPart = partPath(a.value(QLatin1String("Target")).toString());
    }
    if (sheetPart->isEmpty()) {
        *error = QStringLiteral("The workbook's first sheet can't be found.");
        return false;
    }
    return true;
}

// The text of the element the reader stands on, the texts of all its <t> elements joined
// (a rich string is a run of <r><t>...</t></r>; phonetic hints are left out).
QString joinedText(QXmlStreamReader &x)
{
    QString text;
    const QString element = x.name().toString();
    int depth = 1;
    bool inHint = false;
    while (depth > 0 && !x.atEnd()) {
        const QXmlStreamReader::TokenType token = x.readNext();
        if (token == QXmlStreamReader::StartElement) {
            ++depth;
            if (x.name() == u"rPh")
                inHint = true;
            else if (x.name() == u"t" && !inHint)
                text += x.readElementText(), --depth;
        } else if (token == QXmlStreamReader::EndElement) {
            --depth;
            if (x.name() == u"rPh")
                inHint = false;
        }
    }
    return text;
}

} // namespace

QString XlsxSheetReader::columnLetters(int col)
{
    QString letters;
    for (int n = col + 1; n > 0; n = (n - 1) / 26)
        letters.prepend(QChar(u'A' + (n - 1) % 26));
    return letters;
}

bool XlsxSheetReader::parseReference(const QString &reference, int *row, int *col)
{
    int i = 0, c = 0, r = 0;
    for (; i < reference.size() && reference[i].isUpper() && reference[i].unicode() < 128; ++i) {
        c = c * 26 + (reference[i].unicode() - 'A' + 1);
        if (c > 20000)
            return false;
    }
    const int letters = i;
    for (; i < reference.size() && reference[i].isDigit() && reference[i].unicode() < 128; ++i) {
        r = r * 10 + (reference[i].unicode() - '0');
        if (r > 10'000'000)
            return false;
    }
    if (letters == 0 || i == letters || i != reference.size() || r == 0)
        return false;
    *row = r - 1;
    *col = c - 1;
    return true;
}

QStringList XlsxSheetReader::readSharedStrings(const QByteArray &xml)
{
    QStringList strings;
    QXmlStreamReader x(xml);
    while (!x.atEnd()) {
        if (x.readNext() == QXmlStreamReader::StartElement && x.name() == u"si")
            strings.append(joinedText(x));
    }
    return strings;
}

std::optional<QList<QStringList>> XlsxSheetReader::readSheetXml(const QByteArray &xml, const QStringList &sharedStrings,
                                                                QString *error)
{
    QList<QStringList> rows;
    QXmlStreamReader x(xml);
    int row = -1, nextCol = 0;
    while (!x.atEnd()) {
        if (x.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (x.name() == u"row") {
            bool ok = false;
            const int r = x.attributes().value(QLatin1String("r")).toInt(&ok);
            row = ok && r > 0 ? r - 1 : row + 1;
            nextCol = 0;
            continue;
        }
        if (x.name() != u"c")
            continue;
        const QXmlStreamAttributes a = x.attributes();
        const QString reference = a.value(QLatin1String("r")).toString();
        const QString type = a.value(QLatin1String("t")).toString();
        int r = std::max(row, 0), c = nextCol;
        if (!reference.isEmpty() && !parseReference(reference, &r, &c)) {
            *error = QStringLiteral("The sheet names a cell \"%1\" that doesn't exist.").arg(reference);
            return std::nullopt;
        }
        if (r >= kMaxRows || c >= kMaxCols) {
            *error =
                QStringLiteral("Cell %1%2 is beyond what a plate layout can use.").arg(columnLetters(c)).arg(r + 1);
            return std::nullopt;
        }
        row = r;
        nextCol = c + 1;
        QString value, inlineText;
        bool hasInline = false;
        while (!x.atEnd()) {
            const QXmlStreamReader::TokenType token = x.readNext();
            if (token == QXmlStreamReader::EndElement && x.name() == u"c")
                break;
            if (token != QXmlStreamReader::StartElement)
                continue;
            if (x.name() == u"v")
                value = x.readElementText();
            else if (x.name() == u"is")
                inlineText = joinedText(x), hasInline = true;
            else
                x.skipCurrentElement();
        }
        QString text;
        if (type == u"s") {
            bool ok = false;
            const int index = value.trimmed().toInt(&ok);
            if (!ok || index < 0 || index >= sharedStrings.size()) {
                *error = QStringLiteral("Cell %1%2 refers to a text the workbook doesn't have.")
                             .arg(columnLetters(c))
                             .arg(r + 1);
                return std::nullopt;
            }
            text = sharedStrings[index];
        } else if (type == u"inlineStr" || hasInline) {
            text = inlineText;
        } else if (type == u"b") {
            text = value.trimmed() == u"1" ? QStringLiteral("TRUE") : QStringLiteral("FALSE");
        } else if (type == u"str" || type == u"e") {
            text = value;
        } else {
            bool ok = false;
            const double number = value.trimmed().toDouble(&ok);
            text = ok ? QString::number(number, 'g', 15) : value;
        }
        if (text.isEmpty())
            continue;
        while (rows.size() <= r)
            rows.append(QStringList());
        QStringList &cells = rows[r];
        while (cells.size() <= c)
            cells.append(QString());
        cells[c] = text;
    }
    if (x.hasError()) {
        *error = QStringLiteral("The sheet can't be read: %1 (line %2).").arg(x.errorString()).arg(x.lineNumber());
        return std::nullopt;
    }
    return rows;
}

std::optional<QList<QStringList>> XlsxSheetReader::read(const QString &path, QString *error)
{
    ZipArchive zip(path);
    if (!zip.isOpen()) {
        *error = QStringLiteral("The workbook can't be opened: %1.").arg(zip.error());
        return std::nullopt;
    }
    QString sheetPart, stringsPart;
    if (!findParts(zip, &sheetPart, &stringsPart, error))
        return std::nullopt;
    if (stringsPart.isEmpty() && zip.has(QStringLiteral("xl/sharedStrings.xml")))
        stringsPart = QStringLiteral("xl/sharedStrings.xml");
    QStringList strings;
    if (!stringsPart.isEmpty()) {
        const std::optional<QByteArray> xml = zip.part(stringsPart, error);
        if (!xml)
            return std::nullopt;
        strings = readSharedStrings(*xml);
    }
    const std::optional<QByteArray> sheet = zip.part(sheetPart, error);
    if (!sheet)
        return std::nullopt;
    return readSheetXml(*sheet, strings, error);
}
