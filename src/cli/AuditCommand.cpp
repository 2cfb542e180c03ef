// audit: the audit trail of a database as JSON lines, in time order.
#include "cli/CliCommand.h"

#include "store/AuditQuery.h"
#include "store/DatabaseError.h"
#include "store/DbConnection.h"

#include <QDate>

namespace {

// A positive id, or a message naming the option.
bool idOption(const CliOptions &options, const QString &name, std::optional<qint64> &id, QString &problem)
{
    if (!options.has(name))
        return true;
    bool ok = false;
    const qint64 value = options.value(name).toLongLong(&ok);
    if (!ok || value < 1) {
        problem = QStringLiteral("--%1 must be a whole number from 1 up, not '%2'").arg(name, options.value(name));
        return false;
    }
    id = value;
    return true;
}

bool dateOption(const CliOptions &options, const QString &name, QDate &date, QString &problem)
{
    if (!options.has(name))
        return true;
    date = QDate::fromString(options.value(name), QStringLiteral("M/d/yyyy"));
    if (!date.isValid()) {
        problem = QStringLiteral("--%1 must be a date as M/D/YYYY, not '%2'").arg(name, options.value(name));
        return false;
    }
    return true;
}

int audit(const QStringList &args, CliContext &context)
{
    const CliOptions options(args, {});
    if (!options.problem().isEmpty())
        return cliError(context, QStringLiteral("audit: ") + options.problem());
    if (options.value("db").isEmpty())
        return cliError(context, QStringLiteral("audit: --db is required"));
    AuditFilter filter;
    QString problem;
    if (!idOption(options, QStringLiteral("run-id"), filter.runID, problem) ||
        !idOption(options, QStringLiteral("plate-id"), filter.plateID, problem) ||
        !dateOption(options, QStringLiteral("from"), filter.from, problem) ||
        !dateOption(options, QStringLiteral("to"), filter.to, problem))
        return cliError(context, QStringLiteral("audit: ") + problem);
    if (filter.from.isValid() && filter.to.isValid() && filter.to < filter.from)
        return cliError(context, QStringLiteral("audit: --to comes before --from"));
    try {
        const DbConnection db(options.value("db"), DbConnection::Mode::ReadOnly);
        for (const AuditRow &row : AuditQuery::rows(db, filter))
            context.out << AuditQuery::jsonLine(row) << '\n';
        context.out.flush();
        return 0;
    } catch (const DatabaseError &e) {
        return cliError(context, QStringLiteral("audit: ") + e.message());
    }
}

const CliCommandRegistration
    registration("audit", "audit --db FILE|URI [--run-id N] [--plate-id N] [--from M/D/YYYY --to M/D/YYYY]", audit);

} // namespace
