#include "RestartedProgram.h"

#include "ChildProcess.h"
#include "FakePrompt.h"

#include "store/StartUp.h"

#include <unistd.h>

RestartedProgram RestartedProgram::run(const ProgramFolder &folder)
{
    ChildProcess child([&folder](int pipeOut) {
        FakePrompt prompt;
        const bool started = startProgram(folder, prompt);
        for (const PromptBox &box : prompt.boxes()) {
            const QByteArray text = box.text.toUtf8() + '\0';
            (void)!::write(pipeOut, text.constData(), size_t(text.size()));
        }
        return started ? 0 : 1;
    });
    RestartedProgram result;
    const QByteArray told = child.readToEnd();
    result.started = child.wait() == 0;
    for (const QByteArray &text : told.split('\0')) {
        if (!text.isEmpty())
            result.boxes << QString::fromUtf8(text);
    }
    return result;
}
