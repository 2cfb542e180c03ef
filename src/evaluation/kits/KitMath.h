#pragma once

#include <stdexcept>

// A division by a control mean, or by the span between the two means, that is zero.
class KitDivisionByZero : public std::runtime_error {
public:
    KitDivisionByZero() : std::runtime_error("Division by zero") {}
};

namespace KitMath {

// a / b; a zero divisor is an error, as it always was for the kits, rather than an
// infinity that would slip into a verdict.
double divide(double a, double b);
float divideSingle(float a, float b);

} // namespace KitMath
