#include "tracking/ValueAxisScale.h"

#include <QString>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// Tolerance for a value that lies on a multiple of the unit but for binary rounding.
constexpr double kSlack = 1e-9;

double roundUp(double value, double unit)
{
    return std::ceil(value / unit - kSlack);
}
double roundDown(double value, double unit)
{
    return std::floor(value / unit + kSlack);
}

double roundSignificant(double value, int digits)
{
    return QString::number(value, 'g', digits).toDouble();
}

// The limits for one major unit, in whole units.
struct Limits {
    double bottom;
    double top;
};

Limits limitsFor(double lo, double hi, double unit)
{
    const double span = hi - lo;
    if (lo >= 0) {
        const double top = roundUp(hi + 0.05 * span, unit);
        const double bottom = span > hi / 6.0 ? 0.0 : roundDown(lo - span / 2.0, unit);
        return {bottom, top};
    }
    if (hi <= 0) {
        const double bottom = roundDown(lo - 0.05 * span, unit);
        const double top = span > -lo / 6.0 ? 0.0 : roundUp(hi + span / 2.0, unit);
        return {bottom, top};
    }
    return {roundDown(lo - 0.05 * span, unit), roundUp(hi + 0.05 * span, unit)};
}

} // namespace

ValueAxisScale ValueAxisScale::automatic(const std::vector<double> &values, int maxIntervals)
{
    double lo = std::numeric_limits<double>::infinity();
    double hi = -std::numeric_limits<double>::infinity();
    for (const double v : values) {
        if (!std::isfinite(v))
            continue;
        lo = std::min(lo, v);
        hi = std::max(hi, v);
    }
    if (!std::isfinite(lo) || (lo == 0 && hi == 0))
        return ValueAxisScale{};
    if (lo == hi) {
        if (hi > 0)
            lo = 0;
        else
            hi = 0;
    }
    maxIntervals = std::max(maxIntervals, 1);

    // Steps 1, 2, 5 x 10^n upwards from well below the span.
    double decade = std::pow(10.0, std::floor(std::log10(hi - lo)) - 3);
    const double steps[] = {1, 2, 5};
    for (int round = 0; round < 40; ++round, decade *= 10) {
        for (const double step : steps) {
            const double unit = roundSignificant(step * decade, 12);
            const Limits limits = limitsFor(lo, hi, unit);
            if (limits.top - limits.bottom <= maxIntervals) {
                return ValueAxisScale{roundSignificant(limits.bottom * unit, 12),
                                      roundSignificant(limits.top * unit, 12), unit};
            }
        }
    }
    return ValueAxisScale{lo, hi, hi - lo};
}

double ValueAxisScale::fifthOfSpan() const
{
    return roundSignificant(0.2 * (maximum - minimum), 12);
}
