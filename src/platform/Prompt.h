#pragma once

#include <QString>

// Icons of a message box.
enum class MsgIcon { None, Critical, Exclamation, Information, Question };

// Button sets of a message box.
enum class MsgButtons { Ok, OkCancel, YesNo, YesNoCancel, RetryCancel };

// The button the user pressed.
enum class MsgAnswer { Ok, Cancel, Yes, No, Retry };

// Every message box of the program goes through this interface, so that each rule and
// each flow can be run without a screen. An empty title means the program's own title.
class Prompt {
public:
    virtual ~Prompt() = default;

    // A box with one OK button.
    virtual void message(const QString &text, const QString &title = QString(), MsgIcon icon = MsgIcon::None) = 0;

    // A question; returns the button pressed.
    virtual MsgAnswer ask(const QString &text, const QString &title, MsgButtons buttons,
                          MsgIcon icon = MsgIcon::Question) = 0;
};

// Line break of message and validation texts.
inline const QString kCrLf = QStringLiteral("\r\n");
