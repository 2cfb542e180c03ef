#pragma once

#include "platform/Prompt.h"

#include <QTextStream>

// Boxes of a command-line run written as lines on the error stream; questions are
// answered Yes (or OK), as a technician who goes on would answer them.
class StreamPrompt : public Prompt {
public:
    explicit StreamPrompt(QTextStream &err) : mErr(err) {}
    void message(const QString &text, const QString &title, MsgIcon) override
    {
        mErr << "tavimetra-cli: " << (title.isEmpty() ? QString() : title + QStringLiteral(": ")) << text << Qt::endl;
    }
    MsgAnswer ask(const QString &text, const QString &title, MsgButtons buttons, MsgIcon icon) override
    {
        message(text, title, icon);
        return buttons == MsgButtons::YesNo || buttons == MsgButtons::YesNoCancel ? MsgAnswer::Yes : MsgAnswer::Ok;
    }

private:
    QTextStream &mErr;
};
