#pragma once

#include <QJsonValue>
#include <QMap>
#include <QStringList>
#include <QTextStream>

// One command of tavimetra-cli. Each command lives in its own file and registers itself
// with a static CliCommandRegistration, so adding a command touches no other file.
struct CliContext {
    QTextStream &out;
    QTextStream &err;
};

// Returns the exit code: 0 for success, 2 for bad input (told on err).
using CliHandler = int (*)(const QStringList &args, CliContext &context);

struct CliCommandRegistration {
    CliCommandRegistration(const char *name, const char *usage, CliHandler handler);
};

// Writes a JSON value on out, indented, keys sorted.
void printJson(CliContext &context, const QJsonValue &value);
// Tells a usage or input error on err and returns 2.
int cliError(CliContext &context, const QString &message);

// Reads "--name value" options and flags. Positional arguments are kept in order.
class CliOptions {
public:
    CliOptions(const QStringList &args, const QStringList &flagNames);
    bool has(const QString &name) const { return mValues.contains(name) || mFlags.contains(name); }
    QString value(const QString &name, const QString &fallback = QString()) const
    {
        return mValues.value(name, fallback);
    }
    const QStringList &positional() const { return mPositional; }
    // An option given without its value, or an unknown flag; empty when all is well.
    const QString &problem() const { return mProblem; }

private:
    QMap<QString, QString> mValues;
    QStringList mFlags;
    QStringList mPositional;
    QString mProblem;
};
