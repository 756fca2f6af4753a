// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What splines ask of the values that they run through: numbers, and points of plane and space.

#ifndef HV_BEZIER_INTERNAL_SPLINE_VALUE_H
#define HV_BEZIER_INTERNAL_SPLINE_VALUE_H

#include <hv/foundation/HvPoint2.h>
#include <hv/foundation/HvPoint3.h>

#include <cmath>

/// The value whose coordinates are those of another, put through a function in their order.
template <class F>
double HvSplineValue_Map(double a, F const& f)
{
    return f(a);
}
template <class F>
HvPoint2<double> HvSplineValue_Map(HvPoint2<double> const& a, F const& f)
{
    return {f(a.x), f(a.y)};
}
template <class F>
HvPoint3<double> HvSplineValue_Map(HvPoint3<double> const& a, F const& f)
{
    return {f(a.x), f(a.y), f(a.z)};
}

/// Calls a function with each coordinate in turn.
template <class Value, class F>
void HvSplineValue_ForEach(Value const& v, F const& f)
{
    HvSplineValue_Map(v, [&f](double c) {
        f(c);
        return c;
    });
}

/// The greatest coordinate without its sign.
template <class Value>
double HvSplineValue_Magnitude(Value const& v)
{
    double greatest = 0.0;
    HvSplineValue_ForEach(v, [&](double c) { greatest = std::fmax(greatest, std::fabs(c)); });
    return greatest;
}

/// The length of a difference; neither overflows nor vanishes before its coordinates do.
inline double HvSplineValue_Length(double v)
{
    return std::fabs(v);
}
template <class Point>
double HvSplineValue_Length(Point const& v)
{
    // Squares between these are exact enough, and a root is much cheaper than hypot.
    constexpr double kLeastSquare = 1e-290;
    constexpr double kGreatestSquare = 1e300;
    double squared = 0.0;
    HvSplineValue_ForEach(v, [&](double c) { squared += c * c; });
    if (squared > kLeastSquare && squared < kGreatestSquare) {
        return std::sqrt(squared);
    }
    double length = 0.0;
    HvSplineValue_ForEach(v, [&](double c) { length = std::hypot(length, c); });
    return length;
}

template <class Value>
bool HvSplineValue_IsFinite(Value const& v)
{
    bool isFinite = true;
    HvSplineValue_ForEach(v, [&](double c) { isFinite = isFinite && std::isfinite(c); });
    return isFinite;
}

/// The value with 0 for coordinates that are not finite.
template <class Value>
Value HvSplineValue_FiniteOrZero(Value const& v)
{
    return HvSplineValue_Map(v, [](double c) { return std::isfinite(c) ? c : 0.0; });
}

template <class Value>
Value HvSplineValue_Quotient(Value const& v, double divisor)
{
    return HvSplineValue_Map(v, [divisor](double c) { return c / divisor; });
}

/// `derivative` times a distance that may be infinite; what does not change goes nowhere.
template <class Value>
Value HvSplineValue_Step(Value const& derivative, double distance)
{
    return HvSplineValue_Map(derivative, [distance](double c) {
        return c == 0.0 && !std::isnan(distance) ? 0.0 : c * distance;
    });
}

#endif
