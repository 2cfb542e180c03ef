#include "cli/CliCommand.h"

#include "cli/CliRegistry.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

CliCommandRegistration::CliCommandRegistration(const char *name, const char *usage, CliHandler handler)
{
    cliRegistry().insert(QString::fromLatin1(name), {QString::fromLatin1(usage), handler});
}

void printJson(CliContext &context, const QJsonValue &value)
{
    QJsonDocument doc;
    if (value.isArray())
        doc = QJsonDocument(value.toArray());
    else
        doc = QJsonDocument(value.toObject());
    context.out << QString::fromUtf8(doc.toJson(QJsonDocument::Indented));
    context.out.flush();
}

int cliError(CliContext &context, const QString &message)
{
    context.err << "tavimetra-cli: " << message << Qt::endl;
    return 2;
}

CliOptions::CliOptions(const QStringList &args, const QStringList &flagNames)
{
    for (int i = 0; i < args.size(); ++i) {
        const QString &a = args[i];
        if (!a.startsWith(QStringLiteral("--"))) {
            mPositional << a;
            continue;
        }
        const QString name = a.mid(2);
        if (flagNames.contains(name)) {
            mFlags << name;
        } else if (i + 1 < args.size()) {
            mValues.insert(name, args[++i]);
        } else {
            mProblem = QStringLiteral("option --%1 needs a value").arg(name);
        }
    }
}
