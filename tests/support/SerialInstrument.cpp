#include "SerialInstrument.h"

namespace {

constexpr QChar kSTX(2);
constexpr QChar kETX(3);
constexpr QChar kENQ(5);
constexpr QChar kACK(6);
const QString kLineEnd = QStringLiteral("\r\n");

const QStringList kTHERMOmaxCommands = {QStringLiteral("\r"), QStringLiteral("BEP"), QStringLiteral("MOD1"),
                                        QStringLiteral("ASCRDP"), QStringLiteral("LCL")};

} // namespace

QString SerialInstrument::framed(const QString &text)
{
    return QString(kSTX) + text + QString(kETX);
}

void SerialInstrument::attach(FakeSerialPort &port)
{
    port.setDevice([this](FakeSerialPort &p, const QString &sent) {
        for (const Reply &r : receive(sent))
            p.reply(r.text, r.afterMs);
    });
}

QString SerialInstrument::key(const QString &command) const
{
    const bool labSystems = mModel == Model::Multiscan || mModel == Model::MC340;
    return labSystems && command.startsWith(u'F') ? QStringLiteral("F") : command;
}

int SerialInstrument::count(const QString &command) const
{
    int n = 0;
    for (const QString &c : mCommands)
        n += key(c) == key(command) ? 1 : 0;
    return n;
}

void SerialInstrument::script(const QString &command, const QList<Answer> &answers)
{
    mScript[key(command)] += answers;
}

QList<SerialInstrument::Reply> SerialInstrument::receive(const QString &bytes)
{
    if (mModel == Model::THERMOmax)
        return echo(bytes);
    QList<Reply> replies;
    const auto arrived = [&](const QString &command) {
        mCommands.append(command);
        if (mOff)
            replies.append(Reply{QString(3, QChar(0)), mModel == Model::MS2 ? 50 : 300});
        else if (!mSilent)
            replies += completed(command);
    };
    if (mModel == Model::Multiscan || mModel == Model::MC340) {
        mLine += bytes;
        for (qsizetype end; (end = mLine.indexOf(kLineEnd)) >= 0; mLine.remove(0, end + kLineEnd.size()))
            arrived(mLine.left(end));
    } else if (mModel == Model::BioWhittaker) {
        mLine += bytes;
        for (qsizetype end; (end = mLine.indexOf(kETX)) >= 0; mLine.remove(0, end + 1)) {
            const qsizetype start = mLine.lastIndexOf(kSTX, end);
            arrived(start < 0 ? mLine.left(end) : mLine.mid(start + 1, end - start - 1));
        }
    } else {
        for (const QChar c : bytes) {
            if (c == kSTX) {
                mInFrame = true;
                mLine.clear();
            } else if (mInFrame && c != kETX) {
                mLine += c;
            } else if (mInFrame) {
                mInFrame = false;
                arrived(mLine);
            } else if (c == kACK && !mSilent) {
                replies += mOff ? QList<Reply>{Reply{QString(QChar(0)), 50}} : ms2Acknowledged();
            }
        }
    }
    return replies;
}

QList<SerialInstrument::Reply> SerialInstrument::completed(const QString &command)
{
    QList<Answer> &scripted = mScript[key(command)];
    if (scripted.isEmpty())
        return normalAnswer(command);
    const Answer answer = scripted.takeFirst();
    QString text;
    for (const Reply &r : answer)
        text += r.text;
    if (mModel == Model::MS2)
        mWaiting = Waiting::Nothing;
    else if (text.remove(kLineEnd).trimmed() == u"OK")
        labSystemsAnswer(command); // what the command does
    return answer;
}

SerialInstrument::Answer SerialInstrument::normalAnswer(const QString &command)
{
    switch (mModel) {
    case Model::MS2:
        if (command == u"11") {
            mWaiting = Waiting::AckOfEnq;
            return {Reply{QString(kACK), 50}, Reply{QString(kENQ), 500}};
        }
        mWaiting = Waiting::AckOfAnswer;
        return {Reply{QString(kACK), 50}, Reply{framed(command + QStringLiteral(" OK")), 1600}};
    case Model::BioWhittaker:
        if (command == u"G")
            return answer(framed(QStringLiteral("+0000READY")), 300);
        if (command.startsWith(u"N 1 "))
            return answer(mPlate, 3000);
        return answer(framed(QStringLiteral("-")), 300);
    default: return labSystemsAnswer(command);
    }
}

SerialInstrument::Answer SerialInstrument::labSystemsAnswer(const QString &command)
{
    const Answer ok = answer(QStringLiteral("OK") + kLineEnd);
    if (command == u"R" || command == u"Q") {
        mRemote = command == u"R";
        return ok;
    }
    if (!mRemote || !(command.startsWith(u'F') || command == u"A" || command == readCommand()))
        return answer(QStringLiteral("ER2") + kLineEnd);
    if (command.startsWith(u'F')) {
        const int filter = command.mid(1).toInt();
        return filter >= 1 && filter <= 8 ? ok : answer(QStringLiteral("ER1") + kLineEnd);
    }
    if (command == u"A")
        return ok;
    Answer data; // a line every 200 ms
    const QStringList lines = mPlate.split(kLineEnd, Qt::SkipEmptyParts);
    for (int i = 0; i < lines.size(); ++i)
        data.append(Reply{lines[i] + kLineEnd, 1500 + i * 200});
    return data;
}

QList<SerialInstrument::Reply> SerialInstrument::ms2Acknowledged()
{
    switch (std::exchange(mWaiting, Waiting::Nothing)) {
    case Waiting::AckOfEnq: mWaiting = Waiting::AckOfAnswer; return {Reply{mPlate, 100}};
    case Waiting::AckOfAnswer: mWaiting = Waiting::AckOfClosing; return {Reply{framed(QString(kACK)), 50}};
    case Waiting::AckOfClosing: return {};
    case Waiting::Nothing: break;
    }
    return {Reply{QString(kACK), 50}};
}

QList<SerialInstrument::Reply> SerialInstrument::echo(const QString &bytes)
{
    QList<Reply> replies;
    for (const QChar c : bytes) {
        if (mSilent)
            continue;
        replies.append(Reply{QString(c == mGarbled && !mInstead.isNull() ? mInstead : c.toUpper()), 0});
        mLine += c.toUpper();
        // Complete: one of the known commands, "SWV" and a digit, or too long to be one.
        const bool filter = mLine.startsWith(u"SWV") && mLine.size() == 4 && mLine[3].isDigit();
        if (filter || kTHERMOmaxCommands.contains(mLine) || mLine.size() > 6) {
            mCommands.append(mLine);
            if (mLine == u"ASCRDP")
                replies.append(Reply{mPlate, 30});
            mLine.clear();
        }
    }
    return replies;
}
