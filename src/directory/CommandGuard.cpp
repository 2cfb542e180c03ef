#include "directory/CommandGuard.h"

#include "platform/Prompt.h"

#include <exception>

bool runGuarded(Prompt &prompt, const std::function<void()> &command)
{
    try {
        command();
        return true;
    } catch (const std::exception &e) {
        prompt.message(QStringLiteral("The command could not be completed:") + kCrLf + QString::fromUtf8(e.what()),
                       QStringLiteral("Error"), MsgIcon::Critical);
        return false;
    }
}
