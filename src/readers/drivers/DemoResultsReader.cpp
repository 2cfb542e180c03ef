#include "readers/drivers/DemoResultsReader.h"

#include "core/LegacyFormat.h"
#include "core/Wells.h"
#include "platform/Prompt.h"
#include "readers/ReadError.h"
#include "readers/WellValues.h"
#include "readers/drivers/DriverMessages.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <limits>

namespace {

constexpr QChar kETX(3);
constexpr int kHeaderFrames = 6;
constexpr int kPositionSize = 4;
constexpr int kSkipToValue = 7;
constexpr int kValueSize = 6;

// Positions are one-based and kept within 16 bits, as the capture layout was made for.
int checkedPosition(qsizetype position)
{
    if (position > std::numeric_limits<qint16>::max())
        throw ReadError(QStringLiteral("The reader's data is too long to be read: position %1 is past %2.")
                            .arg(position)
                            .arg(std::numeric_limits<qint16>::max()));
    return int(position);
}

// Characters from a one-based position, as many as there are up to count.
QString midText(const QString &text, int position, int count)
{
    return text.mid(position - 1, count);
}

} // namespace

DemoResultsReader::DemoResultsReader(const ReaderEnvironment &environment, const QString &fileName)
    : mEnvironment(environment), mFileName(fileName)
{
}

QString DemoResultsReader::filePath() const
{
    return QDir(mEnvironment.programFolder).filePath(mFileName);
}

bool DemoResultsReader::testCommunication(SerialPort &)
{
    mEnvironment.prompt.message(QStringLiteral("Communication test not required for demo readers."), QString(),
                                MsgIcon::Information);
    return true;
}

bool DemoResultsReader::readData(SerialPort &, const QString &, const QString &, QString &data)
{
    const QString path = filePath();
    if (!QFileInfo(path).isFile())
        throw ReadError(QStringLiteral("The demo reader's data file \"%1\" is missing from the program's folder %2.")
                            .arg(mFileName, QDir::toNativeSeparators(mEnvironment.programFolder)));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw ReadError(QStringLiteral("The demo reader's data file \"%1\" could not be read: %2")
                            .arg(QDir::toNativeSeparators(path), file.errorString()));
    const QByteArray bytes = file.readAll();
    QString text = QString::fromLatin1(bytes);
    text.remove(u'\r');
    text.remove(u'\n');
    data += text;
    // A capture too short for a plate fails in the parse, as it always has; one whose
    // records don't name their wells is not a capture of a plate at all.
    RecordSet values = WellValues::create();
    try {
        parse(values, data);
    } catch (const ReadError &) {
        return true;
    }
    if (WellValues::positionsNameTheirWells(values))
        return true;
    mEnvironment.prompt.message(QStringLiteral("The demo reader's data file \"%1\" does not hold a plate of 96 "
                                               "values.  The plate has not been read and stays as it was.")
                                    .arg(mFileName),
                                DriverMessages::kPlateFaultTitle, MsgIcon::Exclamation);
    return false;
}

void DemoResultsReader::parse(RecordSet &values, const QString &data)
{
    int position = 1;
    for (int frame = 0; frame < kHeaderFrames; ++frame) {
        const qsizetype found = data.indexOf(kETX, position - 1);
        position = checkedPosition(found < 0 ? 1 : found + 2);
    }
    for (int col = 0; col < wells::kCols; ++col) {
        for (int row = 0; row < wells::kRows; ++row) {
            const QString field = legacy::trimBlanks(midText(data, position, kPositionSize));
            if (field.size() < 2)
                throw ReadError(QStringLiteral("The reader's data ends too early: there is no position of well %1 at "
                                               "character %2.")
                                    .arg(wells::name(wells::index(row + 1, col + 1)))
                                    .arg(position));
            const QString pos = field.left(field.size() - 2) + field.right(1);
            position = checkedPosition(qsizetype(position) + kSkipToValue);
            const QString val = midText(data, position, kValueSize);
            WellValues::append(values, pos, val);
            position = checkedPosition(qsizetype(position) + kValueSize);
        }
        position = checkedPosition(qsizetype(position) + 1);
    }
}
