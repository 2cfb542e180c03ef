#include "worksheet/CsvTable.h"

#include <QStringDecoder>

QString CsvTable::decode(const QByteArray &bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8.decode(bytes);
    if (utf8.hasError()) {
        QStringDecoder legacy("windows-1252");
        text = legacy.isValid() ? legacy.decode(bytes) : QString::fromLatin1(bytes);
    }
    if (text.startsWith(QChar(0xFEFF)))
        text.remove(0, 1);
    return text;
}

QChar CsvTable::detectDelimiter(const QString &text)
{
    int commas = 0, semicolons = 0, tabs = 0;
    bool quoted = false;
    for (const QChar c : text) {
        if (c == u'"')
            quoted = !quoted;
        else if (!quoted && (c == u'\n' || c == u'\r') && commas + semicolons + tabs > 0)
            break;
        else if (!quoted)
            commas += c == u',', semicolons += c == u';', tabs += c == u'\t';
    }
    if (tabs > commas && tabs > semicolons)
        return u'\t';
    return semicolons > commas ? u';' : u',';
}

LayoutTable CsvTable::split(const QString &text)
{
    const QChar delimiter = detectDelimiter(text);
    LayoutTable table;
    QStringList row;
    QString field;
    bool quoted = false, fieldStarted = false;
    int line = 1, rowLine = 1;
    auto endField = [&] {
        row.append(field);
        field.clear();
        fieldStarted = false;
    };
    auto endRow = [&] {
        endField();
        table.rows.append(row);
        table.lines.append(rowLine);
        row.clear();
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (quoted) {
            if (c == u'"') {
                if (i + 1 < text.size() && text[i + 1] == u'"') {
                    field += u'"';
                    ++i;
                } else {
                    quoted = false;
                }
            } else {
                if (c == u'\n' || (c == u'\r' && !(i + 1 < text.size() && text[i + 1] == u'\n')))
                    ++line;
                field += c;
            }
        } else if (c == u'"' && !fieldStarted && field.trimmed().isEmpty()) {
            quoted = true;
            fieldStarted = true;
            field.clear();
        } else if (c == delimiter) {
            endField();
        } else if (c == u'\r' || c == u'\n') {
            if (c == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n')
                ++i;
            endRow();
            rowLine = ++line;
        } else {
            field += c;
            if (!c.isSpace())
                fieldStarted = true;
        }
    }
    if (!field.isEmpty() || !row.isEmpty() || quoted)
        endRow();
    return table;
}
