// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Points and vectors of the plane.

#include <hv/foundation/HvPoint2.h>

#include <hv/foundation/angle.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr double kFullCircleDegree = 360.0;

bool IsSmall(double value)
{
    return kHvGeometryTolerance > std::fabs(value);
}

/// Whether P lies in the closed bounding box of A and B; a NaN coordinate of P does not.
bool IsInBox(HvPoint2<float> const& P, HvPoint2<float> const& A, HvPoint2<float> const& B)
{
    return P.x >= std::min(A.x, B.x) && P.y >= std::min(A.y, B.y) && std::max(A.x, B.x) >= P.x &&
           std::max(A.y, B.y) >= P.y;
}

int IsOnBorder(HvPoint2<float> const& P, HvPoint2<float> const& A, HvPoint2<float> const& B,
               HvPoint2<float> const& C)
{
    return HvPoint2_IsInLineSegment(P, A, B) != 0 || HvPoint2_IsInLineSegment(P, B, C) != 0 ||
                   HvPoint2_IsInLineSegment(P, C, A) != 0
               ? 1
               : 0;
}

}  // namespace

template <class T>
int HvPoint2_AngleInDegrees(HvPoint2<T> const& A, HvPoint2<T> const& B, double& angle)
{
    if ((IsSmall(A.x) && IsSmall(A.y)) || (IsSmall(B.x) && IsSmall(B.y))) {
        return 0;
    }
    double const a = AngleWithFirstAxisDegree(A.x, A.y);
    double const b = AngleWithFirstAxisDegree(B.x, B.y);
    double const turn = b >= a ? b - a : b + kFullCircleDegree - a;
    angle = turn >= kFullCircleDegree || turn < 0.0 ? 0.0 : turn;
    return 1;
}

template HV_API int HvPoint2_AngleInDegrees(HvPoint2<float> const&, HvPoint2<float> const&,
                                            double&);
template HV_API int HvPoint2_AngleInDegrees(HvPoint2<double> const&, HvPoint2<double> const&,
                                            double&);

int HvPoint2_FindClosestPointOnLineSegment(HvPoint2<double> const& P, HvPoint2<double> const& A,
                                           HvPoint2<double> const& B, double limit,
                                           double& squaredDistance, double& parameter)
{
    // The parameter is stored before the distance is judged: callers read the unclamped foot of a
    // point that is too far. Distances are compared so that NaN counts as a hit.
    auto const isHit = [&](HvPoint2<double> const& closest) {
        double const d = HvPoint2_SquaredLengthAB(closest, P);
        if (d > limit) {
            return false;
        }
        squaredDistance = d;
        return true;
    };
    if (HvPoint2_AIsNearB(A, B) != 0) {
        parameter = 0.0;
        return isHit(A) ? 1 : 0;
    }
    double const t = HvPoint2_ABdotCD(A, B, A, P) / HvPoint2_SquaredLengthAB(A, B);
    parameter = t;
    if (t <= 0.0 || t >= 1.0) {
        if (!isHit(t <= 0.0 ? A : B)) {
            return 0;
        }
        parameter = t <= 0.0 ? 0.0 : 1.0;
        return 1;
    }
    return isHit(A + (B - A) * t) ? 1 : 0;
}

int HvPoint2_IsInLineSegment(HvPoint2<float> const& P, HvPoint2<float> const& A,
                             HvPoint2<float> const& B)
{
    if (HvPoint2_AIsNearB(A, B) != 0) {
        return HvPoint2_AIsNearB(A, P);
    }
    if (!IsInBox(P, A, B)) {
        return 0;
    }
    double const d = HvPoint2_ABdetCD(A, B, A, P);
    return IsSmall(d * d / HvPoint2_SquaredLengthAB(A, B)) ? 1 : 0;
}

int HvPoint2_IsInTriangle(HvPoint2<float> const& P, HvPoint2<float> const& A,
                          HvPoint2<float> const& B, HvPoint2<float> const& C)
{
    if (HvPoint2_AIsNearB(A, B) != 0) {
        return HvPoint2_IsInLineSegment(P, A, C);
    }
    if (HvPoint2_AIsNearB(A, C) != 0 || HvPoint2_AIsNearB(B, C) != 0) {
        return HvPoint2_IsInLineSegment(P, A, B);
    }
    // P lies inside when it lies on the same side of all three edges. A small determinant has no
    // side: P lies on the line of an edge, and only the edge itself belongs to the triangle.
    double const d1 = HvPoint2_ABdetCD(A, B, A, P);
    if (IsSmall(d1)) {
        return IsOnBorder(P, A, B, C);
    }
    double const d2 = HvPoint2_ABdetCD(B, C, B, P);
    if (IsSmall(d2)) {
        return IsOnBorder(P, A, B, C);
    }
    if (std::isnan(d1) || std::isnan(d2) || (d1 > 0.0) != (d2 > 0.0)) {
        return 0;
    }
    double const d3 = HvPoint2_ABdetCD(C, A, C, P);
    if (IsSmall(d3)) {
        return IsOnBorder(P, A, B, C);
    }
    return !std::isnan(d3) && (d3 > 0.0) == (d2 > 0.0) ? 1 : 0;
}
