#include "cli/CliRegistry.h"

#include <QCoreApplication>

#include <csignal>
#include <cstdio>
#include <exception>

QMap<QString, CliCommandEntry> &cliRegistry()
{
    static QMap<QString, CliCommandEntry> registry;
    return registry;
}

namespace {

// What a command printed must have reached standard output (not a full disk, not a reader
// that went away); otherwise the run failed, whatever the command made of it.
int finishOutput(QTextStream &out, QTextStream &err, int code)
{
    out.flush();
    const bool written = out.status() == QTextStream::Ok && std::fflush(stdout) == 0 && !std::ferror(stdout);
    if (written)
        return code;
    err << "tavimetra-cli: the output could not be written to standard output" << Qt::endl;
    return code != 0 ? code : 4;
}

} // namespace

int main(int argc, char *argv[])
{
    // A reader of the output that goes away is told as a failed write, not a silent end.
#ifdef SIGPIPE
    std::signal(SIGPIPE, SIG_IGN);
#endif
    QCoreApplication app(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Qorn"));
    QCoreApplication::setApplicationName(QStringLiteral("Tavimetra"));
    QTextStream out(stdout);
    QTextStream err(stderr);
    CliContext context{out, err};

    const QStringList args = QCoreApplication::arguments().mid(1);
    const auto &registry = cliRegistry();
    if (args.isEmpty() || !registry.contains(args[0])) {
        if (!args.isEmpty())
            err << "tavimetra-cli: unknown command '" << args[0] << "'" << Qt::endl;
        err << "Usage:" << Qt::endl;
        for (auto it = registry.begin(); it != registry.end(); ++it)
            err << "  tavimetra-cli " << it.value().usage << Qt::endl;
        return 2;
    }
    int code = 0;
    try {
        code = registry[args[0]].handler(args.mid(1), context);
    } catch (const std::exception &e) {
        err << "tavimetra-cli: " << args[0] << " failed: " << e.what() << Qt::endl;
        code = 3;
    }
    return finishOutput(out, err, code);
}
