// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The stored tangent handles of the standard curve: setting them, fitting them into their segments,
// comparing and uniting the two of a key.

#include <hv/fcurve/HvStdFCurve.h>

#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>
#include <hv/fcurve/internal/std_edit_checks.h>

#include <algorithm>
#include <cmath>

namespace {

using Point = HvPoint2<double>;

/// A handle that does not fit into its segment is shortened by this factor at a time: small enough
/// steps that it stays close to the longest that fits.
constexpr double kShrinkFactor = 0.99;
/// Steps of shortening one handle; the last leaves 0.99^1023 of it, about 3e-5.
constexpr int kMaxShrinkSteps = 0x3ff;
/// Steps of shortening two handles in turns.
constexpr int kMaxMatchSteps = 1024;

bool IsZero(Point const& v)
{
    return kHvGeometryTolerance > std::fabs(v.x) && kHvGeometryTolerance > std::fabs(v.y);
}

bool AreBothVertical(Point const& a, Point const& b)
{
    return kHvGeometryTolerance > std::fabs(a.x) && kHvGeometryTolerance > std::fabs(b.x);
}

Point WithLength(Point const& direction, double length)
{
    double const own = HvPoint2_Length(direction);
    return own > 0 ? direction * (length / own) : Point();
}

/// Whether two handles that are not zero lie on one line through the key, one on either side.
bool AreOnOneLine(Point const& left, Point const& right)
{
    if (AreBothVertical(left, right)) {
        return (left.y >= 0 && right.y <= 0) || (left.y <= 0 && right.y >= 0);
    }
    return kHvGeometryTolerance > std::fabs(HvPoint2_AdetB(left, right));
}

/// Whether two handles that are not zero mirror each other in the vertical through the key, but for
/// their lengths.
bool AreMirrored(Point const& left, Point const& right)
{
    if (AreBothVertical(left, right)) {
        return (left.y >= 0 && right.y >= 0) || (left.y <= 0 && right.y <= 0);
    }
    Point const l = WithLength(left, 1);
    Point const r = WithLength(right, 1);
    return kHvGeometryTolerance > std::fabs(l.x + r.x) &&
           kHvGeometryTolerance > std::fabs(l.y - r.y);
}

}  // namespace

bool HvStdFCurveImpl::FindFreeHandles(double x, double tolerance, unsigned int& i) const
{
    constexpr unsigned short kLocks =
        CFCKeyConstraint::kTangentDirectionLocked | CFCKeyConstraint::kTangentLengthLocked;
    return !readOnly && !HasConstraintInInterval(kLocks, false, x, x, 0, 0) &&
           FindKey(x, tolerance, i) != 0;
}

double HvStdFCurveImpl::MovedHandleX(unsigned int i, KeySide side, double x) const
{
    bool const hasNeighbour = side == HvBaseFCurve::Left ? i != 0 : i + 1 < NumKeys();
    if (!defaultBezierTangentConstraint || !hasNeighbour) {
        return x;
    }
    double const neighbour = Parameter(side == HvBaseFCurve::Left ? i - 1 : i + 1);
    return Parameter(i) + (neighbour - Parameter(i)) * kThirdOfSpan;
}

bool HvStdFCurveImpl::IsSegmentValidWith(unsigned int i, Point const& rightHandle,
                                         Point const& nextLeftHandle) const
{
    return HvStdFCurve_IsCubicSegmentValid(RightPoint(i), rightHandle, nextLeftHandle,
                                           LeftPoint(i + 1)) != 0;
}

/// Whether the segment on one side of key i is a function of the parameter with `vector` as the
/// handle there; beyond the end keys there is no segment to spoil.
bool HvStdFCurveImpl::IsHandleValid(unsigned int i, KeySide side, Point const& vector) const
{
    if (side == HvBaseFCurve::Left) {
        return i == 0 || IsSegmentValidWith(i - 1, keys[i - 1].rightHandle, LeftPoint(i) + vector);
    }
    return i + 1 == NumKeys() ||
           IsSegmentValidWith(i, RightPoint(i) + vector, keys[i + 1].leftHandle);
}

void HvStdFCurveImpl::WriteVector(unsigned int i, KeySide side, Point const& vector)
{
    if (side == HvBaseFCurve::Left) {
        WriteLeftHandle(i, KeyPoint(i, side) + vector);
    } else {
        WriteRightHandle(i, KeyPoint(i, side) + vector);
    }
}

int HvStdFCurveImpl::SetActualKeyTgtHandle(unsigned int i, KeySide side, Point const& vector)
{
    if (!HvStdEdit_IsSide(side) || !HvStdEdit_AreFinite(KeyPoint(i, side) + vector) ||
        !IsHandleValid(i, side, vector)) {
        return 0;
    }
    WriteVector(i, side, vector);
    return 1;
}

int HvStdFCurveImpl::FitActualKeyTgtHandle(unsigned int i, KeySide side, Point& vector) const
{
    if (!HvStdEdit_AreFinite(KeyPoint(i, side) + vector)) {
        return 0;
    }
    if (defaultBezierTangentConstraint || IsHandleValid(i, side, vector)) {
        return 1;
    }
    double scale = 1;
    for (int step = 0; step < kMaxShrinkSteps; ++step) {
        scale *= kShrinkFactor;
        if (IsHandleValid(i, side, vector * scale)) {
            vector = vector * scale;
            return 1;
        }
    }
    return 0;
}

int HvStdFCurveImpl::SetActualKeyTgtHandleDirectionAndLength(double x, KeySide side,
                                                             Point const& direction, double length)
{
    unsigned int i = 0;
    if (!HvStdEdit_IsSide(side) || !FindKey(x, 0, i)) {
        return 0;
    }
    Point vector = length > 0 ? direction * length : Point();
    if (!FitActualKeyTgtHandle(i, side, vector)) {
        return 0;
    }
    WriteVector(i, side, vector);
    return 1;
}

int HvStdFCurveImpl::UnifyActualLeftTangentWithActualRightTangent(unsigned int i)
{
    Point const right = RightVector(i);
    if (kHvGeometryTolerance > HvPoint2_Length(right)) {
        return 1;
    }
    return SetActualKeyTgtHandle(i, HvBaseFCurve::Left,
                                 -WithLength(right, HvPoint2_Length(LeftVector(i))));
}

int HvStdFCurveImpl::UnifyActualRightTangentWithActualLeftTangent(unsigned int i)
{
    Point const left = LeftVector(i);
    if (kHvGeometryTolerance > HvPoint2_Length(left)) {
        return 1;
    }
    return SetActualKeyTgtHandle(i, HvBaseFCurve::Right,
                                 -WithLength(left, HvPoint2_Length(RightVector(i))));
}

bool HvStdFCurveImpl::ActualTangentsAreUnified(unsigned int i) const
{
    if (!keys[i].constraints.HasAny(CFCKeyConstraint::kMirroredTangents)) {
        return ActualTangentsAreParallel(i);
    }
    Point const left = GetEvaluatedLeftTgt(i) - LeftPoint(i);
    Point const right = GetEvaluatedRightTgt(i) - RightPoint(i);
    return IsZero(left) || IsZero(right) || AreMirrored(left, right);
}

bool HvStdFCurveImpl::ActualTangentsAreParallel(unsigned int i) const
{
    Point const left = GetEvaluatedLeftTgt(i) - LeftPoint(i);
    Point const right = GetEvaluatedRightTgt(i) - RightPoint(i);
    return IsZero(left) || IsZero(right) || AreOnOneLine(left, right);
}

bool HvStdFCurveImpl::ActualTangentsHaveSameVisualLength(unsigned int i, double scale) const
{
    auto const visualLength = [scale](Point const& v) { return std::hypot(v.x, v.y * scale); };
    double const difference = visualLength(LeftVector(i)) - visualLength(RightVector(i));
    return kHvGeometryTolerance > std::fabs(difference);
}

void HvStdFCurveImpl::ComputeBestMatchTangents(unsigned int i, Point& a, Point& b, int turn) const
{
    auto const valid = [&] {
        return IsSegmentValidWith(i, RightPoint(i) + a, LeftPoint(i + 1) + b);
    };
    Point const a0 = a;
    Point const b0 = b;
    bool shrinkA = a0.x != 0 && (b0.x == 0 || turn == 0);
    double scale = 1;
    bool fits = valid();
    for (int step = 0; step < kMaxMatchSteps && !fits; ++step) {
        scale *= kShrinkFactor;
        (shrinkA ? a : b) = (shrinkA ? a0 : b0) * scale;
        fits = valid();
        if (a0.x != 0 && b0.x != 0) {
            shrinkA = !shrinkA;
        }
    }
    if (!fits) {
        double const third = (Parameter(i + 1) - Parameter(i)) * kThirdOfSpan;
        a = WithLength(a0, third);
        b = WithLength(b0, third);
    }
    a.x = std::max(a.x, 0.0);
    b.x = std::min(b.x, 0.0);
}

int HvStdFCurve::SetKeyTgtHandle(double x, KeySide side, HvPoint2<double> const& handle,
                                 double tolerance)
{
    HvCurveWriter const guard(*this);
    HvPoint2<double> vector = handle;
    unsigned int i = 0;
    if (!HvStdEdit_IsSide(side) || !impl_->FindFreeHandles(x, tolerance, i) ||
        !impl_->FitActualKeyTgtHandle(i, side, vector)) {
        return 0;
    }
    impl_->WriteVector(i, side, vector);
    return 1;
}

int HvStdFCurve::SetKeyTgtHandles(double x, HvPoint2<double> const& left,
                                  HvPoint2<double> const& right, double tolerance)
{
    HvCurveWriter const guard(*this);
    HvPoint2<double> leftVector = left;
    HvPoint2<double> rightVector = right;
    unsigned int i = 0;
    if (!impl_->FindFreeHandles(x, tolerance, i) ||
        !impl_->FitActualKeyTgtHandle(i, Left, leftVector) ||
        !impl_->FitActualKeyTgtHandle(i, Right, rightVector)) {
        return 0;
    }
    impl_->WriteVector(i, Left, leftVector);
    impl_->WriteVector(i, Right, rightVector);
    return 1;
}
