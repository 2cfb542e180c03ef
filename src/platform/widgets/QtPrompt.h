#pragma once

#include "platform/Prompt.h"

class QWidget;

// Message boxes on the screen, modal to the given window.
class QtPrompt : public Prompt {
public:
    explicit QtPrompt(QWidget *parent = nullptr) : mParent(parent) {}
    void setParent(QWidget *parent) { mParent = parent; }

    void message(const QString &text, const QString &title = QString(), MsgIcon icon = MsgIcon::None) override;
    MsgAnswer ask(const QString &text, const QString &title, MsgButtons buttons,
                  MsgIcon icon = MsgIcon::Question) override;

private:
    QWidget *mParent;
};
