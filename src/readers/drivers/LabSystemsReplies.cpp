#include "readers/drivers/LabSystemsReplies.h"

#include "core/LegacyFormat.h"

#include <QStringList>

namespace LabSystemsReplies {

namespace {

// The causes listed under a malfunction: each on a line of its own, indented by a tab.
QString causes(const QStringList &lines)
{
    QString text;
    for (const QString &line : lines)
        text += QStringLiteral("\r\n\t") + line;
    return text;
}

} // namespace

const QString kStartRemoteFailure = QStringLiteral("Could not connect to the plate reader.  Please verify ") +
                                    QStringLiteral("that you have chosen the correct reader type and the reader ") +
                                    QStringLiteral("is connected to your computer.");

const QString kStopRemoteFailure = QStringLiteral("There were problems stopping computer control of the reader.  ") +
                                   QStringLiteral("You may have to restart the plate reader.");

QString removeLineEnds(const QString &text)
{
    QString result = text;
    result.remove(kLineEnd);
    return result;
}

QString addCommandInput(const QString &reply, const QString &input)
{
    return reply + legacy::trimBlanks(removeLineEnds(input));
}

QString addReadInput(const QString &data, const QString &input)
{
    return data + removeLineEnds(input);
}

bool isErrorReply(const QString &reply)
{
    return reply.contains(QStringLiteral("ER")) && reply.size() >= 3;
}

bool commandReplyComplete(const QString &reply)
{
    return reply == kOK || isErrorReply(reply);
}

bool readReplyComplete(const QString &data, int completeLength)
{
    return data.size() >= completeLength || data.contains(QStringLiteral("ER"));
}

DriverMessages::PlateFault plateFault(const QString &data, qsizetype attemptStart, int plateLength, bool stillSending)
{
    using DriverMessages::PlateFault;
    if (attemptStart > 0)
        return PlateFault::Mixed;
    if (data.size() < plateLength)
        return PlateFault::Partial;
    if (data.size() > plateLength)
        return stillSending ? PlateFault::Endless : PlateFault::NotAPlate;
    return PlateFault::None;
}

QString setFilterFailure(const QString &reply)
{
    if (reply == kER1)
        return QStringLiteral("An instrument malfunction was encountered when attempting to set ") +
               QStringLiteral("the filter.  Possible causes of this error include: ") +
               causes({QStringLiteral("* Incorrect reader selected"), QStringLiteral("* Light bulb has failed"),
                       QStringLiteral("* Selected filter is damaged / not available")});
    if (reply == kER2)
        return QStringLiteral("An invalid command sequence error was encountered when attempting ") +
               QStringLiteral("to set the filter.  This is probably due either to a problem with the ") +
               QStringLiteral("instrument or the use of an instrument incompatible with the driver that ") +
               QStringLiteral("you selected.");
    return QStringLiteral("An unknown error occurred when attempting to set the filter.  ") +
           QStringLiteral("Please make sure that you have selected the correct driver for the ") +
           QStringLiteral("instrument you are using.");
}

QString blankOnAirFailure(const QString &reply)
{
    if (reply == kER1)
        return QStringLiteral("An instrument malfunction was encountered when attempting to set ") +
               QStringLiteral("the instrument to blank on air. Please make sure that you have selected ") +
               QStringLiteral("the correct driver for the instrument that you are trying to use.");
    if (reply == kER2)
        return QStringLiteral("An invalid command sequence error was encountered when attempting ") +
               QStringLiteral("to set the instrument to blank on air.  This is probably due either to a ") +
               QStringLiteral("problem with the instrument or the use of an instrument incompatible ") +
               QStringLiteral("with the driver you selected.  ");
    return QStringLiteral("An unknown error occurred when attempting to set the instrument ") +
           QStringLiteral(" to blank on air. Please make sure that you have selected the correct ") +
           QStringLiteral("driver for the instrument you are using.");
}

QString readPlateFailure(const QString &data)
{
    if (data == kER1)
        return QStringLiteral("An instrument malfunction was encountered when attempting to ") +
               QStringLiteral("read the plate. Possible causes of this error include: ") +
               causes({QStringLiteral("* Incorrect reader selected"),
                       QStringLiteral("* Plate carriage is obstructed or broken "),
                       QStringLiteral("* Light bulb has failed"),
                       QStringLiteral("* Selected filter is damaged / not available")});
    if (data == kER2)
        return QStringLiteral("An invalid command sequence error was encountered when attempting ") +
               QStringLiteral("read the plate.  This is probably due either to a ") +
               QStringLiteral("problem with the instrument or the use of an instrument incompatible ") +
               QStringLiteral("with the driver you selected.  ");
    if (data == kER3)
        return QString();
    return QStringLiteral("An unknown error occurred when attempting to ") +
           QStringLiteral("read the plate.  Please make sure that you have selected the correct ") +
           QStringLiteral("driver for the instrument you are using.");
}

} // namespace LabSystemsReplies
