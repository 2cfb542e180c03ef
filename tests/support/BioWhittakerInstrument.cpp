#include "BioWhittakerInstrument.h"

namespace {

constexpr QChar kSTX(2);
constexpr QChar kETX(3);

QString framed(const QString &text)
{
    return QString(kSTX) + text + QString(kETX);
}

} // namespace

QString BioWhittakerInstrument::readyReply()
{
    return framed(QStringLiteral("+0000READY"));
}

BioWhittakerInstrument::Answer BioWhittakerInstrument::normalAnswer(const QString &command) const
{
    if (command == u"G")
        return {Reply{readyReply(), kAnswerMs}};
    if (command.startsWith(u"N 1 "))
        return {Reply{mPlate, kMeasureMs}};
    return {Reply{framed(QStringLiteral("-")), kAnswerMs}};
}

QList<BioWhittakerInstrument::Reply> BioWhittakerInstrument::receive(const QString &bytes)
{
    QList<Reply> replies;
    mLine += bytes;
    qsizetype end;
    while ((end = mLine.indexOf(kETX)) >= 0) {
        const qsizetype start = mLine.lastIndexOf(kSTX, end);
        const QString command = start < 0 ? mLine.left(end) : mLine.mid(start + 1, end - start - 1);
        mLine.remove(0, end + 1);
        mCommands.append(command);
        if (mSilent)
            continue;
        if (mOff) {
            replies.append(Reply{QString(3, QChar(0)), kAnswerMs});
            continue;
        }
        replies += mScript.isEmpty() ? normalAnswer(command) : mScript.takeFirst();
    }
    return replies;
}
