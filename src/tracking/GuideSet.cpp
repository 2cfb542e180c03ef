#include "tracking/GuideSet.h"

#include <cmath>

QString GuideSet::problemWith(double mean, double sd)
{
    if (!std::isfinite(mean))
        return QStringLiteral("the mean must be a number.");
    if (!std::isfinite(sd) || sd <= 0)
        return QStringLiteral("the SD must be above 0 (it is %1).").arg(sd);
    return QString();
}

std::optional<GuideSet::Baseline> GuideSet::fromBaseline(const std::vector<double> &values, QString *error)
{
    auto fail = [error](const QString &why) -> std::optional<Baseline> {
        if (error)
            *error = why;
        return std::nullopt;
    };
    if (values.empty())
        return fail(
            QStringLiteral("A guide set needs plates: none of the plates picked has a value of this quantity."));
    if (values.size() < 2)
        return fail(
            QStringLiteral("A guide set needs at least two plates with a value to figure an SD; one was picked."));
    double sum = 0;
    for (double v : values)
        sum += v;
    const double mean = sum / double(values.size());
    double squares = 0;
    for (double v : values)
        squares += (v - mean) * (v - mean);
    const double sd = std::sqrt(squares / double(values.size() - 1));
    if (!(sd > 0))
        return fail(QStringLiteral("The plates picked all have the same value (%1): their SD is 0, which gives no "
                                   "limits. Pick more plates or type the SD in.")
                        .arg(mean));
    Baseline b{mean, sd, int(values.size()), QString()};
    if (b.plates < kAdvisedPlates)
        b.warning = QStringLiteral("The guide set is figured from %1 plates; at least %2 are advised for limits "
                                   "that hold.")
                        .arg(b.plates)
                        .arg(kAdvisedPlates);
    return b;
}
