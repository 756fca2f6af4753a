// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Writing and repairing the stored handles of the standard curve.

#include <hv/fcurve/HvStdFCurve.h>
#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>

#include <cmath>

namespace {

using Point = HvPoint2<double>;

/// Below this handle length in x the slope is read as if the handle had this length: the slope of a
/// vertical handle stays finite.
constexpr double kLeastSlopeRun = 0.001;
/// The steepest slope, up or down, that the slope limit rule stores.
constexpr double kSteepestSlope = 100000.0;
/// What one step of shrinking a handle multiplies it by.
constexpr double kShrinkFactor = 0.9;
/// Steps after which shrinking one handle is given up and the handle put on its key: 0.9 to this
/// power is below 1e-45, so nothing that a double resolves is left of it.
constexpr unsigned int kMaxShrinkSteps = 1000;
/// Steps after which RegularizeBezierCubicPoints tries handles of a third of the span.
constexpr unsigned int kMaxCommonShrinkSteps = 20;

double Limited(double value, double low, double high)
{
    return value < low ? low : (value > high ? high : value);
}

/// `vector` made `length` long; the zero vector stays.
Point WithLength(Point const& vector, double length)
{
    double const old = std::hypot(vector.x, vector.y);
    return old > 0 ? vector * (length / old) : vector;
}

/// Shrinks the handle `handle` of the key at `key` until `isValid` accepts it; at last it lies on
/// the key.
template <class IsValid>
Point ShrunkTowardsKey(Point const& handle, Point const& key, IsValid isValid)
{
    Point const vector = handle - key;
    Point shrunk = handle;
    double scale = 1;
    for (unsigned int step = 0; step < kMaxShrinkSteps; ++step) {
        if (isValid(shrunk)) {
            return shrunk;
        }
        scale *= kShrinkFactor;
        shrunk = key + vector * scale;
    }
    return key;
}

}  // namespace

bool CubicRises(double a, double b, double c, double d)
{
    if (!(a < d && a <= b && c <= d)) {
        return false;
    }
    if (c >= b || (a == b && c == d)) {
        return true;
    }
    // The handles cross: the derivative, a parabola, must not dip below zero between them. Written
    // in the parameters themselves: which border cases count as valid, rounding included, decides
    // what edits accept, and stays.
    return (a + b) * c + d * (b - a) >= c * c + b * b;
}

int HvStdFCurve_IsCubicSegmentValid(HvPoint2<double> const& P0, HvPoint2<double> const& P1,
                                    HvPoint2<double> const& P2, HvPoint2<double> const& P3)
{
    return CubicRises(P0.x, P1.x, P2.x, P3.x) ? 1 : 0;
}

void RegularizeBezierCubicPoints(HvPoint2<double>* P)
{
    auto const keepHandlesInside = [P] {
        P[1].x = P[1].x < P[0].x ? P[0].x : P[1].x;
        P[2].x = P[2].x > P[3].x ? P[3].x : P[2].x;
    };
    auto const isValid = [P] { return CubicRises(P[0].x, P[1].x, P[2].x, P[3].x); };

    keepHandlesInside();
    if (isValid()) {
        return;
    }
    Point const right = P[1] - P[0];
    Point const left = P[2] - P[3];
    double scale = 1;
    for (unsigned int step = 0; step < kMaxCommonShrinkSteps && !isValid(); ++step) {
        scale *= kShrinkFactor;
        P[1] = P[0] + right * scale;
        P[2] = P[3] + left * scale;
    }
    if (!isValid()) {
        double const third = (P[3].x - P[0].x) * kThirdOfSpan;
        P[1] = P[0] + WithLength(right, third);
        P[2] = P[3] + WithLength(left, third);
    }
    keepHandlesInside();
}

HvPoint2<double> HvStdFCurveImpl::SlopeLimitRule(unsigned int i, KeySide side,
                                                 Point const& handle) const
{
    bool const isLeft = side == HvBaseFCurve::Left;
    bool const hasNeighbour = isLeft ? i > 0 : i + 1 < NumKeys();
    if (defaultBezierTangentConstraint == 0 || !hasNeighbour) {
        return handle;
    }
    CFCStdKey const& key = keys[i];
    double const value = isLeft ? key.leftValue : key.rightValue;
    double const span = Parameter(isLeft ? i - 1 : i + 1) - key.parameter;
    double const run = isLeft ? key.parameter - handle.x : handle.x - key.parameter;
    double const rise = isLeft ? value - handle.y : handle.y - value;
    double const slope = Limited(rise / (std::fabs(run) < kLeastSlopeRun ? kLeastSlopeRun : run),
                                 -kSteepestSlope, kSteepestSlope);
    double const third = span * kThirdOfSpan;
    return {key.parameter + third, slope * third + value};
}

void HvStdFCurveImpl::WriteLeftHandle(unsigned int i, Point const& handle)
{
    keys[i].leftHandle = SlopeLimitRule(i, HvBaseFCurve::Left, handle);
}

void HvStdFCurveImpl::WriteRightHandle(unsigned int i, Point const& handle)
{
    keys[i].rightHandle = SlopeLimitRule(i, HvBaseFCurve::Right, handle);
}

void HvStdFCurveImpl::SetDefaultBezierTangentConstraint(bool on)
{
    defaultBezierTangentConstraint = on ? 1 : 0;
    for (unsigned int i = 0; on && i < NumKeys(); ++i) {
        WriteLeftHandle(i, keys[i].leftHandle);
        WriteRightHandle(i, keys[i].rightHandle);
    }
}

int HvStdFCurveImpl::AdjustAdjacentAutomaticKeysTangents(unsigned int)
{
    return 1;
}

void HvStdFCurveImpl::StoreEvaluatedHandles(unsigned int i, bool left, bool right)
{
    Point const leftHandle = GetEvaluatedLeftTgt(i);
    Point const rightHandle = GetEvaluatedRightTgt(i);
    if (left) {
        double const before = keys[i].leftHandle.x;
        WriteLeftHandle(i, leftHandle);
        if (i != 0 && keys[i].leftHandle.x != before) {
            FitHandleToFacingOne(i - 1, HvBaseFCurve::Right);
        }
    }
    if (right) {
        double const before = keys[i].rightHandle.x;
        WriteRightHandle(i, rightHandle);
        if (i + 1 < NumKeys() && keys[i].rightHandle.x != before) {
            FitHandleToFacingOne(i + 1, HvBaseFCurve::Left);
        }
    }
}

/// Shortens the handle of key i towards its neighbour on `side` until their segment is valid. A
/// handle may reach past the far end of its segment only where the facing one is long enough, and a
/// frozen facing handle may have become shorter.
void HvStdFCurveImpl::FitHandleToFacingOne(unsigned int i, KeySide side)
{
    bool const isLeft = side == HvBaseFCurve::Left;
    unsigned int const segment = isLeft ? i - 1 : i;
    auto const isValid = [&](Point const& handle) {
        return isLeft ? IsSegmentValidWith(segment, keys[segment].rightHandle, handle)
                      : IsSegmentValidWith(segment, handle, keys[segment + 1].leftHandle);
    };
    Point const handle = StoredHandle(i, side);
    if (isValid(handle)) {
        return;
    }
    Point const fitting = ShrunkTowardsKey(handle, KeyPoint(i, side), isValid);
    if (isLeft) {
        WriteLeftHandle(i, fitting);
    } else {
        WriteRightHandle(i, fitting);
    }
}

void HvStdFCurveImpl::FreezeKey(unsigned int i)
{
    StoreEvaluatedHandles(i, true, true);
    keys[i].constraints.Clear(CFCKeyConstraint::kAutomaticTangents |
                              CFCKeyConstraint::kUnlimitedAutoSlope);
}

void HvStdFCurveImpl::FixKeyHandles(unsigned int i)
{
    FreezeKey(i);
    keys[i].constraints.Clear(CFCKeyConstraint::kFlatAtExtremum |
                              CFCKeyConstraint::kLinearTangents);
}

void HvStdFCurveImpl::RegularizeLeftTgt(unsigned int i, Point const& start)
{
    CFCStdKey const& key = keys[i];
    double const firstHandleX = start.x + (key.parameter - start.x) * kThirdOfSpan;
    Point const end(key.parameter, key.leftValue);
    WriteLeftHandle(i, ShrunkTowardsKey(key.leftHandle, end, [&](Point const& handle) {
                        return CubicRises(start.x, firstHandleX, handle.x, end.x);
                    }));
}

void HvStdFCurveImpl::RegularizeRightTgt(unsigned int i, Point const& end)
{
    CFCStdKey const& key = keys[i];
    double const lastHandleX = end.x - (end.x - key.parameter) * kThirdOfSpan;
    Point const start(key.parameter, key.rightValue);
    WriteRightHandle(i, ShrunkTowardsKey(key.rightHandle, start, [&](Point const& handle) {
                         return CubicRises(start.x, handle.x, lastHandleX, end.x);
                     }));
}

int HvStdFCurve::SetDefaultBezierTangentConstraint(bool on)
{
    HvCurveWriter const lock(*this);
    impl_->SetDefaultBezierTangentConstraint(on);
    return 1;
}

int HvStdFCurve::AdjustAdjacentAutomaticKeysTangents(double, double)
{
    return 1;
}
