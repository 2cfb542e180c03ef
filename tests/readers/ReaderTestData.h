#pragma once

#include "FakeClock.h"
#include "FakePrompt.h"
#include "FakeSerialPort.h"
#include "SerialInstrument.h"

#include "core/RecordSet.h"
#include "core/Wells.h"
#include "readers/ReaderDriver.h"

#include <QFile>
#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

// The captured byte streams and files of tests/data, one byte per character.
inline QString readerTestData(const QString &relativePath)
{
    QFile file(QStringLiteral(TESTS_DATA_DIR "/") + relativePath);
    if (!file.open(QIODevice::ReadOnly)) {
        ADD_FAILURE() << "missing test data " << relativePath.toStdString();
        return QString();
    }
    return QString::fromLatin1(file.readAll());
}

// The plate a serial reader of the model sends.
inline QString plateCapture(SerialInstrument::Model model)
{
    using M = SerialInstrument::Model;
    switch (model) {
    case M::Multiscan: return readerTestData(QStringLiteral("clsLabSystemsReader/plate.cap"));
    case M::MC340: return readerTestData(QStringLiteral("clsLabSystemsMC340/plate.cap"));
    case M::MS2: return readerTestData(QStringLiteral("clsMS2_Reader/plate.cap"));
    case M::BioWhittaker: return readerTestData(QStringLiteral("clsBioWhittakerReader/plate.cap"));
    case M::THERMOmax: break;
    }
    return readerTestData(QStringLiteral("clsTHERMOmaxReader/plate.cap"));
}

// What a driver collects from a reader of the model without a fault.
inline QString wholeRead(SerialInstrument::Model model)
{
    using M = SerialInstrument::Model;
    const QString plate = plateCapture(model);
    if (model == M::Multiscan || model == M::MC340)
        return QString(plate).remove(QStringLiteral("\r\n"));
    if (model == M::MS2)
        return QStringLiteral("\x02"
                              "7 OK\x03\x02"
                              "320 OK\x03\x02"
                              "301 OK\x03") +
               plate +
               QStringLiteral("\x02"
                              "16 OK\x03");
    return plate;
}

// A field of a set of well values ("Val" or "Pos"), in its order.
inline QStringList wellVals(RecordSet values, const char16_t *field = u"Val")
{
    QStringList vals;
    for (values.moveFirst(); !values.eof(); values.moveNext())
        vals << values.text(field);
    return vals;
}

// A driver on a fake port and the virtual clock, with a simulated instrument behind the
// port: minutes of polls cost no time.
template <typename Driver> struct DriverBench {
    FakeClock clock;
    FakeSleeper sleeper{clock};
    FakePrompt prompt;
    FakeSerialPort port{clock};
    SerialInstrument instrument;
    Driver driver{ReaderEnvironment{prompt, sleeper, QString()}};
    QList<qint64> askedAt; // virtual milliseconds slept when each question came

    DriverBench(SerialInstrument::Model model, int comPort) : instrument(model, plateCapture(model))
    {
        port.setCommPort(comPort);
        instrument.attach(port);
        prompt.setOnBox([this](const PromptBox &box) {
            if (box.question)
                askedAt.append(sleeper.totalSlept());
        });
    }
    bool read(QString &data, const QString &filterNo, const QString &filterValue = QStringLiteral("450"))
    {
        return driver.readData(port, filterNo, filterValue, data);
    }
    std::string told() const { return prompt.texts().join(QStringLiteral(" | ")).toStdString(); }
};

// A demo reader's capture of 96 value texts (6 characters each, in well order), in the
// layout of the delivered files, after a header of that many frames.
inline QByteArray demoCapture(const QStringList &values, int headerFrames = 6)
{
    QByteArray bytes;
    for (int i = 0; i < headerFrames; ++i)
        bytes += "\x02"
                 "FRAME\x03\r\n";
    for (int col = 1; col <= 12; ++col) {
        for (int row = 1; row <= 8; ++row) {
            const QString value = values.value(wells::index(row, col)).rightJustified(6, u' ');
            bytes += QStringLiteral("%1-%2   %3\r\n").arg(col, 2).arg(wells::rowLetter(row)).arg(value).toLatin1();
        }
        bytes += "-\r\n";
    }
    return bytes;
}
