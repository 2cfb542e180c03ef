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
        switch (c.unicode()) {
        case '\r':
            *os << "\\r";
            break;
        case '\n':
            *os << "\\n";
            break;
        case '\t':
            *os << "\\t";
            break;
        case '"':
            *os << "\\\"";
            break;
        case '\\':
            *os << "\\\\";
            break;
        default:
            if (c.unicode() < 0x20)
                *os << "\\x" << std::hex << int(c.unicode()) << std::dec;
            else
                *os << QString(c).toStdString();
        }
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
    if (!value.isValid() || value.isNull()) {
        *os << "QVariant(Null";
        if (value.isValid())
            *os << " " << value.typeName();
        *os << ")";
        return;
    }
    *os << "QVariant(" << value.typeName() << ", ";
    PrintTo(value.toString(), os);
    *os << ")";
}
