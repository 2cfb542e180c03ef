#include "XlsxReadBack.h"

#include <QProcess>
#include <QXmlStreamReader>

namespace {

QByteArray unzip(const QStringList &args, QString *error)
{
    QProcess process;
    process.start(QStringLiteral("unzip"), args);
    if (!process.waitForFinished(30000) || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        if (error)
            *error = QStringLiteral("unzip %1 failed: %2")
                         .arg(args.join(u' '), QString::fromLocal8Bit(process.readAllStandardError()));
        return QByteArray();
    }
    return process.readAllStandardOutput();
}

QStringList sharedStrings(const QByteArray &xml)
{
    QStringList strings;
    QXmlStreamReader reader(xml);
    QString current;
    bool inItem = false;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement() && reader.name() == u"si") {
            inItem = true;
            current.clear();
        } else if (reader.isStartElement() && reader.name() == u"t" && inItem) {
            current += reader.readElementText();
        } else if (reader.isEndElement() && reader.name() == u"si") {
            strings << current;
            inItem = false;
        }
    }
    return strings;
}

struct Style {
    bool bold = false;
    QString numberFormat;
};

QList<Style> cellStyles(const QByteArray &xml)
{
    QMap<int, QString> formats;
    QList<bool> fontBold;
    QList<Style> styles;
    QXmlStreamReader reader(xml);
    bool inFonts = false, inCellXfs = false, inFont = false;
    while (!reader.atEnd()) {
        reader.readNext();
        const auto name = reader.name();
        const auto a = reader.attributes();
        if (reader.isEndElement()) {
            inFonts = inFonts && name != u"fonts";
            inFont = inFont && name != u"font";
            inCellXfs = inCellXfs && name != u"cellXfs";
        } else if (!reader.isStartElement()) {
            continue;
        } else if (name == u"numFmt") {
            formats.insert(a.value(QLatin1String("numFmtId")).toInt(), a.value(QLatin1String("formatCode")).toString());
        } else if (name == u"fonts" || name == u"cellXfs") {
            (name == u"fonts" ? inFonts : inCellXfs) = true;
        } else if (name == u"font" && inFonts) {
            inFont = true;
            fontBold << false;
        } else if (name == u"b" && inFont) {
            fontBold.last() = true;
        } else if (name == u"xf" && inCellXfs) {
            const int font = a.value(QLatin1String("fontId")).toInt();
            styles << Style{font < fontBold.size() && fontBold[font],
                            formats.value(a.value(QLatin1String("numFmtId")).toInt())};
        }
    }
    return styles;
}

} // namespace

XlsxReadBack::XlsxReadBack(const QString &path) : mPath(path)
{
    unzip({QStringLiteral("-Z1"), mPath}, &mError);
    if (mError.isEmpty())
        readSheet();
}

QByteArray XlsxReadBack::part(const QString &name) const
{
    return unzip({QStringLiteral("-p"), mPath, name}, nullptr); // empty when there is no such part
}

void XlsxReadBack::readSheet()
{
    const QStringList strings = sharedStrings(part(QStringLiteral("xl/sharedStrings.xml")));
    const QList<Style> styles = cellStyles(part(QStringLiteral("xl/styles.xml")));
    QXmlStreamReader reader(part(QStringLiteral("xl/worksheets/sheet1.xml")));
    while (!reader.atEnd()) {
        reader.readNext();
        if (!reader.isStartElement())
            continue;
        if (reader.name() == u"col") {
            const auto a = reader.attributes();
            for (int c = a.value(QLatin1String("min")).toInt(); c <= a.value(QLatin1String("max")).toInt(); ++c)
                mWidths.insert(c, a.value(QLatin1String("width")).toDouble());
        } else if (reader.name() == u"c") {
            const auto a = reader.attributes();
            const QString ref = a.value(QLatin1String("r")).toString();
            const QString type = a.value(QLatin1String("t")).toString();
            const int style = a.value(QLatin1String("s")).toInt();
            XlsxCell cell;
            if (style < styles.size()) {
                cell.bold = styles[style].bold;
                cell.numberFormat = styles[style].numberFormat;
            }
            QString value;
            while (!(reader.isEndElement() && reader.name() == u"c") && !reader.atEnd()) {
                reader.readNext();
                if (reader.isStartElement() && (reader.name() == u"v" || reader.name() == u"t"))
                    value += reader.readElementText();
            }
            cell.text = type == u"s" ? strings.value(value.toInt()) : value;
            cell.isNumber = (type.isEmpty() || type == u"n") && !value.isEmpty();
            mCells.insert(ref, cell);
        }
    }
}
