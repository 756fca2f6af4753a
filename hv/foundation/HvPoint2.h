// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Points and vectors of the plane.

#ifndef HV_FOUNDATION_HVPOINT2_H
#define HV_FOUNDATION_HVPOINT2_H

#include <hv/platform/HvExport.h>

#include <cmath>

/// The general tolerance of the geometry helpers, always compared strictly: tolerance > value. What
/// is compared differs: a component, a squared distance or a determinant. A larger one would merge
/// points that hosts keep apart, a smaller one would let near-degenerate edges through.
constexpr double kHvGeometryTolerance = 1e-7;

/// A point or vector of the plane; T is float or double.
template <class T>
struct HV_API_TYPE HvPoint2 {
    T x;  ///< along the first axis
    T y;  ///< along the second axis

    /// The origin.
    constexpr HvPoint2() : x(0), y(0) {}
    /// The point of these coordinates.
    constexpr HvPoint2(T px, T py) : x(px), y(py) {}

    /// Converts each coordinate; from double to float it rounds to nearest.
    template <class U>
    constexpr explicit HvPoint2(HvPoint2<U> const& other)
        : x(static_cast<T>(other.x)), y(static_cast<T>(other.y))
    {
    }

    /// Exact comparison; a NaN coordinate is equal to nothing.
    friend constexpr bool operator==(HvPoint2 const& a, HvPoint2 const& b)
    {
        return a.x == b.x && a.y == b.y;
    }
    /// Whether a coordinate differs.
    friend constexpr bool operator!=(HvPoint2 const& a, HvPoint2 const& b) { return !(a == b); }
    /// The sum of each coordinate.
    friend constexpr HvPoint2 operator+(HvPoint2 const& a, HvPoint2 const& b)
    {
        return HvPoint2(a.x + b.x, a.y + b.y);
    }
    /// The difference of each coordinate.
    friend constexpr HvPoint2 operator-(HvPoint2 const& a, HvPoint2 const& b)
    {
        return HvPoint2(a.x - b.x, a.y - b.y);
    }
    /// The opposite vector.
    friend constexpr HvPoint2 operator-(HvPoint2 const& a) { return HvPoint2(-a.x, -a.y); }
    /// Every coordinate times `factor`.
    friend constexpr HvPoint2 operator*(HvPoint2 const& a, T factor)
    {
        return HvPoint2(a.x * factor, a.y * factor);
    }
};

// The helpers below compute in double, whatever T is, and return double.

/// Dot product of the vectors A and B.
template <class T>
double HvPoint2_AdotB(HvPoint2<T> const& A, HvPoint2<T> const& B)
{
    return double(A.x) * double(B.x) + double(A.y) * double(B.y);
}

/// Dot product of the vectors A to B and C to D.
template <class T>
double HvPoint2_ABdotCD(HvPoint2<T> const& A, HvPoint2<T> const& B, HvPoint2<T> const& C,
                        HvPoint2<T> const& D)
{
    return (double(B.x) - double(A.x)) * (double(D.x) - double(C.x)) +
           (double(B.y) - double(A.y)) * (double(D.y) - double(C.y));
}

/// Determinant of the vectors A and B: positive when B lies counter-clockwise of A.
template <class T>
double HvPoint2_AdetB(HvPoint2<T> const& A, HvPoint2<T> const& B)
{
    return double(A.x) * double(B.y) - double(A.y) * double(B.x);
}

/// Determinant of the vectors A to B and C to D.
template <class T>
double HvPoint2_ABdetCD(HvPoint2<T> const& A, HvPoint2<T> const& B, HvPoint2<T> const& C,
                        HvPoint2<T> const& D)
{
    return (double(B.x) - double(A.x)) * (double(D.y) - double(C.y)) -
           (double(B.y) - double(A.y)) * (double(D.x) - double(C.x));
}

/// Length of the vector A, by hypot.
template <class T>
double HvPoint2_Length(HvPoint2<T> const& A)
{
    return std::hypot(double(A.x), double(A.y));
}

/// Distance of A and B, by hypot.
template <class T>
double HvPoint2_LengthAB(HvPoint2<T> const& A, HvPoint2<T> const& B)
{
    return std::hypot(double(A.x) - double(B.x), double(A.y) - double(B.y));
}

/// Squared distance of A and B.
template <class T>
double HvPoint2_SquaredLengthAB(HvPoint2<T> const& A, HvPoint2<T> const& B)
{
    double const dx = double(A.x) - double(B.x);
    double const dy = double(A.y) - double(B.y);
    return dx * dx + dy * dy;
}

/// How much the shorter of the two differences counts in a cheap distance: about a third, which
/// keeps the estimate within 6 percent of the distance. Picking and thresholds of shapes and
/// builders depend on its exact value.
constexpr double kHvCheapLengthWeight = 0.3334;

/// Estimates the distance of A and B without a root: the longer difference of their coordinates and
/// kHvCheapLengthWeight of the shorter. The differences are taken in T, so that a host's float
/// arithmetic agrees.
template <class T>
double HvPoint2_CheapLengthAB(HvPoint2<T> const& A, HvPoint2<T> const& B)
{
    double const dx = std::fabs(A.x - B.x);
    double const dy = std::fabs(A.y - B.y);
    return dx > dy ? dx + kHvCheapLengthWeight * dy : dy + kHvCheapLengthWeight * dx;
}

/// 1 when the squared distance of A and B is below kHvGeometryTolerance, that is, up to a distance
/// of about 3.16e-4; otherwise 0, also for NaN. Degenerate segments and triangles are recognised by
/// this wider reach.
template <class T>
int HvPoint2_AIsNearB(HvPoint2<T> const& A, HvPoint2<T> const& B)
{
    return kHvGeometryTolerance > HvPoint2_SquaredLengthAB(A, B) ? 1 : 0;
}

/// Measures the counter-clockwise angle from direction A to direction B.
///
/// @param angle  degrees, 0 up to but not including 360.
/// @return       1; 0, with `angle` as it was, when both components of A or of B are below 1e-7.
///
/// Instantiated for float and double.
template <class T>
HV_API int HvPoint2_AngleInDegrees(HvPoint2<T> const& A, HvPoint2<T> const& B, double& angle);

/// Finds the point of the segment A to B closest to P.
///
/// @param limit            limit of the squared distance; a hit lies at it or below.
/// @param squaredDistance  squared distance of P from the closest point; written only on a hit.
/// @param parameter        0 at A to 1 at B. On a refusal it holds the foot on the infinite line,
///                         below 0 or above 1 where the foot lies outside; only a hit clamps it. 0
///                         when A is near B.
/// @return                 1 on a hit, otherwise 0. A NaN distance counts as a hit.
HV_API int HvPoint2_FindClosestPointOnLineSegment(HvPoint2<double> const& P,
                                                  HvPoint2<double> const& A,
                                                  HvPoint2<double> const& B, double limit,
                                                  double& squaredDistance, double& parameter);

/// 1 when P lies in the closed bounding box of A and B and its squared distance from their line is
/// below 1e-7, otherwise 0, also for NaN. When A is near B: whether P is near A.
HV_API int HvPoint2_IsInLineSegment(HvPoint2<float> const& P, HvPoint2<float> const& A,
                                    HvPoint2<float> const& B);

/// 1 when P lies in the closed triangle A, B, C of either orientation, otherwise 0, also for NaN. A
/// triangle with two near corners counts as a segment.
HV_API int HvPoint2_IsInTriangle(HvPoint2<float> const& P, HvPoint2<float> const& A,
                                 HvPoint2<float> const& B, HvPoint2<float> const& C);

#endif
