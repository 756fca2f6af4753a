// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The one way in which the library splits a cubic Bezier curve.

#ifndef HV_BEZIER_CUBIC_SPLIT_H
#define HV_BEZIER_CUBIC_SPLIT_H

/// Splits a cubic by de Casteljau's construction.
///
/// With `lerp` taking the point between two points:
///
///     P0 --- P01 --- P012 --- P0123 --- P123 --- P23 --- P3
///
/// @param cubic  P0 to P3.
/// @param out    receives the five new points P01, P012, P0123, P123, P23; it may overlap `cubic`.
/// @param lerp   called with two points, gives the point between them.
///
/// Source: P. de Casteljau's algorithm; Farin, Curves and Surfaces for CAGD, 2002, 4.2.
template <class Point, class Lerp>
inline void HvCubic_DeCasteljau(Point const* cubic, Point* out, Lerp const& lerp)
{
    Point const p01 = lerp(cubic[0], cubic[1]);
    Point const p12 = lerp(cubic[1], cubic[2]);
    Point const p23 = lerp(cubic[2], cubic[3]);
    Point const p012 = lerp(p01, p12);
    Point const p123 = lerp(p12, p23);
    out[0] = p01;
    out[1] = p012;
    out[2] = lerp(p012, p123);
    out[3] = p123;
    out[4] = p23;
}

/// The five new points of a split at `t`, as HvCubic_DeCasteljau gives them; every interpolation is
/// (b - a) * t + a. `t` outside 0 to 1 extrapolates.
template <class Point, class T>
inline void HvCubic_SplitInner(Point const* cubic, Point* out, T t)
{
    HvCubic_DeCasteljau(cubic, out,
                        [t](Point const& a, Point const& b) { return (b - a) * t + a; });
}

/// Splits a cubic at `t` into two cubics of four points each. Their outer ends are the ends of
/// `cubic` and their common point is one value; no two of the three may overlap.
template <class Point, class T>
inline void HvCubic_Split(Point const* cubic, T t, Point* left, Point* right)
{
    Point inner[5];
    HvCubic_SplitInner(cubic, inner, t);
    left[0] = cubic[0];
    left[1] = inner[0];
    left[2] = inner[1];
    left[3] = right[0] = inner[2];
    right[1] = inner[3];
    right[2] = inner[4];
    right[3] = cubic[3];
}

/// Splits a cubic at one half; every average is (a + b) * 0.5 in the type of the coordinates, so it
/// lies between a and b. The seven points of the two halves are written in order along the curve:
/// halves[0..3] is the left one, halves[3..6] the right one. `halves` must not overlap `cubic`.
template <class Point>
inline void HvCubic_Halve(Point const* cubic, Point* halves)
{
    using T = decltype(cubic->x);
    halves[0] = cubic[0];
    HvCubic_DeCasteljau(cubic, halves + 1,
                        [](Point const& a, Point const& b) { return (a + b) * T(0.5); });
    halves[6] = cubic[3];
}

#endif
