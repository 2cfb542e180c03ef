#include "evaluation/kits/KitMath.h"

namespace KitMath {

double divide(double a, double b)
{
    if (b == 0.0)
        throw KitDivisionByZero();
    return a / b;
}

float divideSingle(float a, float b)
{
    if (b == 0.0f)
        throw KitDivisionByZero();
    return a / b;
}

} // namespace KitMath
