#pragma once

#include <QString>

#include <optional>

// The line settings of a serial port in their text form "baud,parity,data bits,stop bits",
// as the reader settings store them: "9600,N,8,1", "4800,E,7,2", "9600,N,8,1.5".
struct SerialLineSettings {
    int baudRate = 9600;
    QChar parity = u'N'; // N, E, O, M or S
    int dataBits = 8;    // 5 to 8
    int stopBits = 1;    // 1, 2, or 3 for one and a half

    static constexpr int kOneAndAHalfStopBits = 3;

    // Reads the text (blanks around the parts and the case of the parity letter don't
    // matter). No value when the text doesn't describe a line.
    static std::optional<SerialLineSettings> parse(const QString &text);
    // The text form, "9600,N,8,1".
    QString toText() const;
};
