#include "ui/DeliberateFocus.h"

#include <QCoreApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QWidget>

DeliberateFocus::DeliberateFocus(QWidget *widget, std::function<QWidget *()> handOver)
    : QObject(widget), mHandOver(std::move(handOver))
{
    widget->installEventFilter(this);
}

bool DeliberateFocus::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::FocusIn:
        switch (static_cast<QFocusEvent *>(event)->reason()) {
        case Qt::MouseFocusReason:
        case Qt::TabFocusReason:
        case Qt::BacktabFocusReason:
        case Qt::ShortcutFocusReason: mDeliberate = true; break;
        case Qt::PopupFocusReason:
        case Qt::ActiveWindowFocusReason: break; // back from its own list or another window
        default: mDeliberate = false; break;
        }
        break;
    case QEvent::FocusOut: {
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason)
            mDeliberate = false;
        break;
    }
    case QEvent::KeyPress: {
        auto *key = static_cast<QKeyEvent *>(event);
        if (mDeliberate || key->key() == Qt::Key_Tab || key->key() == Qt::Key_Backtab)
            break;
        // Nowhere else to go (no grid on the view shown): the key is dropped.
        if (QWidget *target = mHandOver(); target && target != watched) {
            QKeyEvent copy(key->type(), key->key(), key->modifiers(), key->text(), key->isAutoRepeat(),
                           ushort(key->count()));
            QCoreApplication::sendEvent(target, &copy);
        }
        return true;
    }
    default: break;
    }
    return QObject::eventFilter(watched, event);
}
