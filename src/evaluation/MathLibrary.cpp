#include "evaluation/MathLibrary.h"

#include "platform/Prompt.h"

#include <cmath>
#include <utility>

namespace MathLibrary {

namespace {

double meanOf(const std::vector<double> &values)
{
    double sum = 0.0;
    for (double v : values)
        sum += v;
    return sum / static_cast<double>(values.size());
}

} // namespace

double calculateMean(const std::vector<double> &values, Prompt &prompt)
{
    if (values.empty()) {
        prompt.message(QStringLiteral("Cannot calculate mean.  Please contact Qorn."), QStringLiteral("Critical Error"),
                       MsgIcon::Critical);
        throw MathLibraryError(kErrorMeanOfNothing, "Cannot calculate mean.");
    }
    return meanOf(values);
}

double calculateStdDev(const std::vector<double> &values)
{
    if (values.size() < 2)
        return 0.0;
    const double m = meanOf(values);
    double sum = 0.0;
    for (double v : values)
        sum += (v - m) * (v - m);
    return std::sqrt(sum / static_cast<double>(values.size() - 1));
}

double calculateCV(const std::vector<double> &values, Prompt &prompt)
{
    const double mean = calculateMean(values, prompt);
    if (mean == 0.0)
        return 0.0;
    return std::fabs(calculateStdDev(values) / mean * 100.0);
}

std::vector<qint16> sortIntegers(std::vector<qint16> &values)
{
    const std::size_t n = values.size();
    for (std::size_t i = 0; i < n; ++i) {
        for (std::size_t j = i + 1; j < n; ++j) {
            if (values[j] < values[i])
                std::swap(values[i], values[j]);
        }
    }
    return values;
}

std::vector<double> removeElement(const std::vector<double> &values, int index)
{
    if (index < 0 || static_cast<std::size_t>(index) >= values.size())
        throw std::out_of_range("Subscript out of range");
    std::vector<double> result;
    result.reserve(values.size() - 1);
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (i != static_cast<std::size_t>(index))
            result.push_back(values[i]);
    }
    return result;
}

} // namespace MathLibrary
