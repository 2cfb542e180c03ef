#include "THERMOmaxInstrument.h"

namespace {

const QStringList kCommands = {QStringLiteral("\r"), QStringLiteral("BEP"), QStringLiteral("MOD1"),
                               QStringLiteral("ASCRDP"), QStringLiteral("LCL")};

} // namespace

QList<THERMOmaxInstrument::Reply> THERMOmaxInstrument::receive(const QString &bytes)
{
    QList<Reply> replies;
    for (const QChar c : bytes) {
        if (mSilent)
            continue;
        QChar echo = c == mGarbled && !mInstead.isNull() ? mInstead : c.toUpper();
        if (mLowerCase)
            echo = echo.toLower();
        replies.append(Reply{QString(echo), 0});
        mCommand += c.toUpper();
        // A command is complete when it is one of the known ones, or "SWV" and a digit.
        if (mCommand.startsWith(u"SWV") && mCommand.size() == 4 && mCommand[3].isDigit()) {
            mFilter = mCommand[3].digitValue();
            mCommands.append(mCommand);
            mCommand.clear();
        } else if (kCommands.contains(mCommand)) {
            mCommands.append(mCommand);
            if (mCommand == u"ASCRDP")
                replies.append(Reply{mPlate, kPlateAfterMs});
            mCommand.clear();
        } else if (mCommand.size() > 6) {
            mCommands.append(mCommand);
            mCommand.clear();
        }
    }
    return replies;
}
