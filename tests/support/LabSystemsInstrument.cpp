#include "LabSystemsInstrument.h"

namespace {

const QString kLineEnd = QStringLiteral("\r\n");

} // namespace

LabSystemsInstrument::LabSystemsInstrument(Model model, const QString &plateStream)
    : mModel(model), mPlateStream(plateStream)
{
}

QString LabSystemsInstrument::readCommand() const
{
    return mModel == Model::Multiscan ? QStringLiteral("P") : QStringLiteral("M12");
}

QString LabSystemsInstrument::key(const QString &command) const
{
    return command.startsWith(u'F') ? QStringLiteral("F") : command;
}

int LabSystemsInstrument::count(const QString &command) const
{
    int n = 0;
    for (const QString &c : mCommands) {
        if (key(c) == key(command))
            ++n;
    }
    return n;
}

void LabSystemsInstrument::script(const QString &command, const QList<Answer> &answers)
{
    mScript[key(command)] += answers;
}

LabSystemsInstrument::Answer LabSystemsInstrument::plateData() const
{
    Answer data;
    const QStringList lines = mPlateStream.split(kLineEnd, Qt::SkipEmptyParts);
    for (int i = 0; i < lines.size(); ++i)
        data.append(Reply{lines[i] + kLineEnd, kFirstDataMs + i * kDataLineMs});
    return data;
}

QList<LabSystemsInstrument::Reply> LabSystemsInstrument::receive(const QString &bytes)
{
    QList<Reply> replies;
    mLine += bytes;
    qsizetype end;
    while ((end = mLine.indexOf(kLineEnd)) >= 0) {
        const QString command = mLine.left(end);
        mLine.remove(0, end + kLineEnd.size());
        mCommands.append(command);
        if (mSilent)
            continue;
        QList<Answer> &scripted = mScript[key(command)];
        if (scripted.isEmpty()) {
            replies += normalAnswer(command);
            continue;
        }
        // A scripted "OK" (in pieces or not) does what the command does.
        const Answer answer = scripted.takeFirst();
        QString text;
        for (const Reply &r : answer)
            text += r.text;
        if (text.remove(kLineEnd).trimmed() == u"OK")
            normalAnswer(command);
        replies += answer;
    }
    return replies;
}

LabSystemsInstrument::Answer LabSystemsInstrument::normalAnswer(const QString &command)
{
    const Answer ok = answer(QStringLiteral("OK") + kLineEnd);
    const Answer sequenceError = answer(QStringLiteral("ER2") + kLineEnd);
    if (command == u"R") {
        mRemote = true;
        return ok;
    }
    if (command == u"Q") {
        mRemote = false;
        return ok;
    }
    if (!mRemote)
        return sequenceError;
    if (command.startsWith(u'F')) {
        bool number = false;
        const int filter = command.mid(1).toInt(&number);
        if (!number || filter < 1 || filter > 8)
            return answer(QStringLiteral("ER1") + kLineEnd);
        mFilter = filter;
        return ok;
    }
    if (command == u"A")
        return ok;
    if (command == readCommand())
        return plateData();
    return sequenceError;
}
