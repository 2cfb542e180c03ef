#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>

#include <ostream>

// GoogleTest printers for Qt values, so that a failed EXPECT_EQ on texts shows the texts
// (with line breaks and other control characters made visible) instead of raw bytes.

inline void PrintTo(const QString &text, std::ostream *os)
{
    *os << '"';
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        if (u == '\r' || u == '\n' || u == '\t' || u == '"' || u == '\\')
            *os << '\\' << (u == '\r' ? 'r' : u == '\n' ? 'n' : u == '\t' ? 't' : char(u));
        else if (u < 0x20)
            *os << "\\x" << std::hex << int(u) << std::dec;
        else
            *os << QString(c).toStdString();
    }
    *os << '"';
}

inline void PrintTo(const QByteArray &bytes, std::ostream *os)
{
    *os << "QByteArray(" << bytes.size() << " bytes: " << bytes.left(64).toHex(' ').toStdString()
        << (bytes.size() > 64 ? " ..." : "") << ")";
}

inline void PrintTo(const QVariant &value, std::ostream *os)
{
    *os << "QVariant(" << (value.isValid() ? value.typeName() : "Invalid");
    if (value.isNull()) {
        *os << ", Null)";
        return;
    }
    *os << ", ";
    PrintTo(value.toString(), os);
    *os << ")";
}
