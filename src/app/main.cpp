#include "platform/Clock.h"
#include "platform/widgets/QtBrowser.h"
#include "platform/widgets/QtClipboard.h"
#include "platform/widgets/QtPrompt.h"
#include "store/ProgramFolder.h"
#include "store/StartUp.h"
#include "ui/QtRunDialogs.h"
#include "ui/frmMain.h"
#include "worksheet/Workbench.h"

#include <QApplication>
#include <QTimer>

#include <cstdio>
#include <ctime>
#include <exception>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("Qorn"));
    QApplication::setApplicationName(QStringLiteral("Tavimetra"));
    QApplication::setApplicationVersion(QStringLiteral("1.5.4"));
    // Ties the windows to the installed desktop entry, and so to its icon.
    QApplication::setDesktopFileName(QStringLiteral("tavimetra"));

    QtPrompt prompt;
    const ProgramFolder folder = ProgramFolder::standard();
    if (!startProgram(folder, prompt))
        return 1;

    SystemClock clock;
    QtBrowser browser;
    QtClipboard clipboard;
    QtRunDialogs runDialogs(folder, prompt);
    Workbench workbench(folder, prompt, clock, runDialogs);
    workbench.setClipboard(clipboard);
    try {
        workbench.load();
    } catch (const std::exception &e) {
        prompt.message(QStringLiteral("Tavimetra could not start:") + kCrLf + QString::fromUtf8(e.what()),
                       QStringLiteral("Critical Error"), MsgIcon::Critical);
        return 1;
    }
    frmMain window(workbench, prompt, browser);
    prompt.setParent(&window);
    runDialogs.setParentWindow(&window);
    window.show();
    // For the start-up benchmark: tell when the window has gone through its first turn of
    // the event loop, with the processor time spent so far (seconds), and end there.
    if (qEnvironmentVariableIsSet("TAVIMETRA_QUIT_WHEN_SHOWN"))
        QTimer::singleShot(0, &app, [] {
            std::printf("main window shown %.6f\n", double(std::clock()) / CLOCKS_PER_SEC);
            std::fflush(stdout);
            QApplication::quit();
        });
    return app.exec();
}
