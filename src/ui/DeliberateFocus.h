#pragma once

#include <QObject>

#include <functional>

class QWidget;

// Keeps a widget that changes with single keys (a combo box) from taking keys the user
// meant for somewhere else. It takes keys only after the user has moved into it
// deliberately: a click, Tab or Shift+Tab, or its shortcut. When the focus merely fell
// into it (a dialog closed, the window came back), the keys go to handOver, which gives
// the focus to where the work is and delivers the key there.
class DeliberateFocus : public QObject {
public:
    DeliberateFocus(QWidget *widget, std::function<QWidget *()> handOver);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    std::function<QWidget *()> mHandOver;
    bool mDeliberate = false;
};
