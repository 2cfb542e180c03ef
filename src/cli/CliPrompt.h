#pragma once

#include "platform/Prompt.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QString>

// The boxes of a command-line run: nothing is shown, every box is kept in the order it
// came, and every question is answered with its first button (Yes, OK or Retry), as a
// technician who goes on would answer it.
class CliPrompt : public Prompt {
public:
    struct Box {
        QString title;
        QString text;
        MsgIcon icon = MsgIcon::None;
    };

    void message(const QString &text, const QString &title, MsgIcon icon) override
    {
        mBoxes.append({title, text, icon});
    }

    MsgAnswer ask(const QString &text, const QString &title, MsgButtons buttons, MsgIcon icon) override
    {
        mBoxes.append({title, text, icon});
        switch (buttons) {
        case MsgButtons::Ok:
        case MsgButtons::OkCancel: return MsgAnswer::Ok;
        case MsgButtons::YesNo:
        case MsgButtons::YesNoCancel: return MsgAnswer::Yes;
        case MsgButtons::RetryCancel: return MsgAnswer::Retry;
        }
        return MsgAnswer::Ok;
    }

    const QList<Box> &boxes() const { return mBoxes; }
    void clear() { mBoxes.clear(); }

    static QString iconName(MsgIcon icon)
    {
        switch (icon) {
        case MsgIcon::None: return QStringLiteral("none");
        case MsgIcon::Critical: return QStringLiteral("critical");
        case MsgIcon::Exclamation: return QStringLiteral("exclamation");
        case MsgIcon::Information: return QStringLiteral("information");
        case MsgIcon::Question: return QStringLiteral("question");
        }
        return QString();
    }

    // [{"title", "text", "icon"}, ...] in the order shown.
    QJsonArray toJson() const
    {
        QJsonArray list;
        for (const Box &box : mBoxes)
            list.append(QJsonObject{{QStringLiteral("title"), box.title},
                                    {QStringLiteral("text"), box.text},
                                    {QStringLiteral("icon"), iconName(box.icon)}});
        return list;
    }

    // The boxes as lines for an error report: "title: text".
    QString summary() const
    {
        QStringList lines;
        for (const Box &box : mBoxes)
            lines << (box.title.isEmpty() ? box.text : box.title + QStringLiteral(": ") + box.text);
        return lines.join(u'\n');
    }

private:
    QList<Box> mBoxes;
};
