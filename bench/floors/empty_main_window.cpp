// The floor of the program's start: an empty main window shown, told (with the processor
// time spent) and ended the same way as the program does under TAVIMETRA_QUIT_WHEN_SHOWN.
#include <QApplication>
#include <QMainWindow>
#include <QTimer>

#include <cstdio>
#include <ctime>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QMainWindow window;
    window.show();
    QTimer::singleShot(0, &app, [] {
        std::printf("main window shown %.6f\n", double(std::clock()) / CLOCKS_PER_SEC);
        std::fflush(stdout);
        QApplication::quit();
    });
    return app.exec();
}
