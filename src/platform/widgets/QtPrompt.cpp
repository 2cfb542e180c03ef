#include "platform/widgets/QtPrompt.h"

#include <QApplication>
#include <QMessageBox>

namespace {

QMessageBox::Icon toIcon(MsgIcon icon)
{
    switch (icon) {
    case MsgIcon::Critical: return QMessageBox::Critical;
    case MsgIcon::Exclamation: return QMessageBox::Warning;
    case MsgIcon::Information: return QMessageBox::Information;
    case MsgIcon::Question: return QMessageBox::Question;
    case MsgIcon::None: break;
    }
    return QMessageBox::NoIcon;
}

QString titleOf(const QString &title)
{
    return title.isEmpty() ? QStringLiteral("Tavimetra") : title;
}

} // namespace

void QtPrompt::message(const QString &text, const QString &title, MsgIcon icon)
{
    QMessageBox box(toIcon(icon), titleOf(title), text, QMessageBox::Ok, mParent);
    QApplication::setOverrideCursor(Qt::ArrowCursor);
    box.exec();
    QApplication::restoreOverrideCursor();
}

MsgAnswer QtPrompt::ask(const QString &text, const QString &title, MsgButtons buttons, MsgIcon icon)
{
    QMessageBox::StandardButtons set;
    switch (buttons) {
    case MsgButtons::Ok: set = QMessageBox::Ok; break;
    case MsgButtons::OkCancel: set = QMessageBox::Ok | QMessageBox::Cancel; break;
    case MsgButtons::YesNo: set = QMessageBox::Yes | QMessageBox::No; break;
    case MsgButtons::YesNoCancel: set = QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel; break;
    case MsgButtons::RetryCancel: set = QMessageBox::Retry | QMessageBox::Cancel; break;
    }
    QMessageBox box(toIcon(icon), titleOf(title), text, set, mParent);
    QApplication::setOverrideCursor(Qt::ArrowCursor);
    const int pressed = box.exec();
    QApplication::restoreOverrideCursor();
    switch (pressed) {
    case QMessageBox::Ok: return MsgAnswer::Ok;
    case QMessageBox::Yes: return MsgAnswer::Yes;
    case QMessageBox::No: return MsgAnswer::No;
    case QMessageBox::Retry: return MsgAnswer::Retry;
    default: return MsgAnswer::Cancel; // Cancel, Escape or the window's close button
    }
}
