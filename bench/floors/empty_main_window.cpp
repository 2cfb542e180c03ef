// The floor of the program's start: an empty main window shown, told and ended the same
// way as the program does under TAVIMETRA_QUIT_WHEN_SHOWN.
#include <QApplication>
#include <QMainWindow>
#include <QTimer>

#include <cstdio>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QMainWindow window;
    window.show();
    QTimer::singleShot(0, &app, [] {
        std::fputs("main window shown\n", stdout);
        std::fflush(stdout);
        QApplication::quit();
    });
    return app.exec();
}
