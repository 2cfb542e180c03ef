#pragma once

#include <vector>

// The scale that a spreadsheet program gives a chart's value axis when it chooses the
// scale itself, from the values of all the series on the axis. The tracking charts ask for
// a major unit of a fifth of this scale's span, so they are worked out here beforehand.
//
// The rules are those Excel publishes for its automatic axis limits:
// - the major unit is a step of 1, 2 or 5 times a power of ten: the smallest one that
//   gives the axis no more than maxIntervals intervals (ten for a chart of ordinary size);
// - with no negative value, the maximum is the largest value plus 5 % of the values'
//   span, rounded up to a whole number of major units; the minimum is 0, unless the
//   values' span is at most a sixth of the largest value: then the minimum is the
//   smallest value minus half the span, rounded down to a whole number of major units;
// - with no positive value, the same rules mirrored;
// - with values on both sides of 0, the maximum is the largest value plus 5 % of the
//   span rounded up, the minimum the smallest value minus 5 % of the span rounded down;
// - all values equal count as a span from 0 to that value; no values, or all 0, give the
//   axis 0 to 1.
struct ValueAxisScale {
    double minimum = 0;
    double maximum = 1;
    double majorUnit = 0.2;

    // Values that are not finite are left out.
    static ValueAxisScale automatic(const std::vector<double> &values, int maxIntervals = 10);

    // A fifth of the span, the step the tracking charts use: five intervals between the
    // limits. Rounded to 12 significant digits, so that 0.2 x 1.2 is written 0.24.
    double fifthOfSpan() const;
};
