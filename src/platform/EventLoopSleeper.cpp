#include "platform/EventLoopSleeper.h"

#include <QEventLoop>
#include <QTimer>

void EventLoopSleeper::sleep(int milliseconds)
{
    if (milliseconds <= 0)
        return;
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
}
