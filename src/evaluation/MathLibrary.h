#pragma once

#include <QtGlobal>

#include <stdexcept>
#include <vector>

class Prompt;

// Raised by the numeric routines where the program stops with a numbered error; the
// only one today is 522, the mean of no values.
class MathLibraryError : public std::runtime_error {
public:
    MathLibraryError(int number, const char *what) : std::runtime_error(what), mNumber(number) {}
    int number() const { return mNumber; }

private:
    int mNumber;
};

// The small routines on arrays of numbers that the evaluation uses. Arrays are plain
// 0-based vectors; their length is the number of values.
namespace MathLibrary {

inline constexpr int kErrorMeanOfNothing = 522;

// Sum in a 64-bit accumulator divided by the count. With no values: a critical box
// "Cannot calculate mean.  Please contact Qorn." titled "Critical Error", then
// MathLibraryError 522.
double calculateMean(const std::vector<double> &values, Prompt &prompt);

// Sample standard deviation (n - 1 form); 0 for fewer than two values.
double calculateStdDev(const std::vector<double> &values);

// |StdDev / mean * 100|, division first; 0 when the mean is exactly 0. The mean comes
// first, so no values ends as calculateMean does.
double calculateCV(const std::vector<double> &values, Prompt &prompt);

// Exchange sort, ascending. Sorts the argument and returns a copy of it.
std::vector<qint16> sortIntegers(std::vector<qint16> &values);

// A new array with every element but the one at index (0-based), in order. An index
// outside the array is a bounds failure (std::out_of_range).
std::vector<double> removeElement(const std::vector<double> &values, int index);

} // namespace MathLibrary
