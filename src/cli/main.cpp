#include "cli/CliRegistry.h"

#include <QCoreApplication>

#include <exception>
#include <cstdio>

QMap<QString, CliCommandEntry> &cliRegistry()
{
    static QMap<QString, CliCommandEntry> registry;
    return registry;
}

int main(int argc, char *argv[])
{
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
    try {
        return registry[args[0]].handler(args.mid(1), context);
    } catch (const std::exception &e) {
        err << "tavimetra-cli: " << args[0] << " failed: " << e.what() << Qt::endl;
        return 3;
    }
}
