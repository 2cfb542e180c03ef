#pragma once

#include "platform/Prompt.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QString>

#include <exception>
#include <functional>
#include <optional>

// Widgets the selection dialogs (reports, export, control tracking) make alike.
namespace FormParts {

// A radio button named "<name>_<index>".
inline QRadioButton *radio(const QString &caption, const QString &name, int index, QWidget *parent)
{
    auto *button = new QRadioButton(caption, parent);
    button->setObjectName(QStringLiteral("%1_%2").arg(name).arg(index));
    return button;
}

// One part of a date (month, day: 2 characters; year: 4), named "<name>_<index>".
inline QLineEdit *dateBox(const QString &name, int index, int maxLength, QWidget *parent)
{
    auto *box = new QLineEdit(parent);
    box->setObjectName(QStringLiteral("%1_%2").arg(name).arg(index));
    box->setMaxLength(maxLength);
    box->setFixedWidth(maxLength == 4 ? 48 : 30);
    box->setAlignment(Qt::AlignCenter);
    return box;
}

// Shows a combo's state (items, current index, and whether it is enabled where the state
// says) without firing the combo's handlers.
template <class ComboState> void showCombo(QComboBox *combo, const ComboState &state)
{
    const QSignalBlocker block(combo);
    combo->clear();
    combo->addItems(state.items);
    combo->setCurrentIndex(state.index);
    if constexpr (requires { state.enabled; })
        combo->setEnabled(state.enabled);
}

// Runs a dialog's OK under the wait cursor. Its answer (whether the dialog closes), or
// nothing when it failed: then a critical box says `failure`, the reason and the caption.
inline std::optional<bool> runOk(Prompt &prompt, const QString &failure, const QString &caption,
                                 const std::function<bool()> &ok)
{
    QApplication::setOverrideCursor(Qt::WaitCursor);
    try {
        const bool close = ok();
        QApplication::restoreOverrideCursor();
        return close;
    } catch (const std::exception &e) {
        QApplication::restoreOverrideCursor();
        prompt.message(failure + QStringLiteral("\r\n\r\n") + QString::fromUtf8(e.what()), caption, MsgIcon::Critical);
        return std::nullopt;
    }
}

} // namespace FormParts
