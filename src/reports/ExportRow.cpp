#include "reports/ExportRow.h"

#include <cmath>

std::optional<double> ExportRow::number(const QString &text)
{
    QString t = text.trimmed();
    if (t.endsWith(QLatin1Char('%')))
        t.chop(1);
    bool ok = false;
    const double value = t.toDouble(&ok);
    if (!ok || !std::isfinite(value))
        return std::nullopt;
    return value;
}
