#include "evaluation/MessageLog.h"

#include <stdexcept>

void MessageLog::message(const QString &text, const QString &title, MsgIcon icon)
{
    mMessages.push_back({text, title, icon});
}

MsgAnswer MessageLog::ask(const QString &text, const QString &title, MsgButtons, MsgIcon)
{
    throw std::logic_error(("An evaluation asked \"" + title + "\": " + text).toStdString());
}
