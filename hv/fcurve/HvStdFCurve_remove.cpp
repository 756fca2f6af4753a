// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Removing keys from the standard curve. The primitives need no memory, so an edit that begins with
// a removal cannot fail after it.

#include <hv/fcurve/HvStdFCurve.h>

#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>
#include <hv/fcurve/internal/std_edit_checks.h>

#include <cmath>

namespace {

using Point = HvPoint2<double>;

/// Whether a handle vector is too short to give a direction.
bool IsDegenerate(Point const& vector)
{
    return kHvGeometryTolerance > HvPoint2_Length(vector);
}

/// `key` plus `vector` lengthened by `factor`; the key itself for a handle without a direction, the
/// handle as it is where it would become longer than numbers are.
Point Lengthened(Point const& key, Point const& vector, double factor)
{
    return IsDegenerate(vector) ? key : HvStdEdit_FiniteOr(key + vector * factor, key + vector);
}

}  // namespace

unsigned int HvStdFCurveImpl::NumKeysNotAbove(double x) const
{
    int exact = 0;
    return NumKeys() == 0 ? 0 : LocateParameter(x, exact);
}

unsigned int HvStdFCurveImpl::NumKeysBelow(double x) const
{
    int exact = 0;
    unsigned int const notAbove = NumKeys() == 0 ? 0 : LocateParameter(x, exact);
    return exact ? notAbove - 1 : notAbove;
}

HvStdFCurveImpl::KeptKeys HvStdFCurveImpl::FindKeptKeys(double from, double to, int openAtFrom,
                                                        int openAtTo) const
{
    return {openAtFrom ? NumKeysNotAbove(from) : NumKeysBelow(from),
            openAtTo ? NumKeysBelow(to) : NumKeysNotAbove(to)};
}

bool HvStdFCurveImpl::AreKeysLocked(double from, double to, int openAtFrom, int openAtTo) const
{
    return HasConstraintInInterval(CFCKeyConstraint::kParameterLocked |
                                       CFCKeyConstraint::kValueLocked,
                                   false, from, to, openAtFrom, openAtTo) != 0;
}

/// Drops the user data of the keys `first` to `last` inclusive.
void HvStdFCurveImpl::RemoveUserData(unsigned int first, unsigned int last,
                                     HvBaseFCurve& curve) const
{
    if (curve.HasUserData()) {
        for (unsigned int i = first; i <= last; ++i) {
            curve.RemoveKeyUserData(Parameter(i));
        }
    }
}

void HvStdFCurveImpl::RemoveKeyRangeWithUserData(unsigned int first, unsigned int last,
                                                 HvBaseFCurve& curve)
{
    RemoveUserData(first, last, curve);
    RemoveKeyRange(first, last);
}

void HvStdFCurveImpl::RemoveAllKeys(FSKind kind, HvBaseFCurve& curve)
{
    curve.RemoveAllKeyUserData();
    keys.Chop(0);
    ReleaseSpareKeys();
    defaultSegmentKind = kind;
}

void HvStdFCurveImpl::RemoveHeadBeforeExistingKey(FSKind kind, unsigned int i, HvBaseFCurve& curve)
{
    if (i == 0) {
        return;
    }
    RemoveUserData(0, i - 1, curve);
    RemoveKeyRangeAndSpare(0, i - 1);
    CFCStdKey& key = keys[0];
    bool const jumps = key.rightValue != key.leftValue;
    if (jumps && !key.constraints.HasAny(CFCKeyConstraint::kValueLocked)) {
        key.leftHandle.y += key.rightValue - key.leftValue;
        key.leftValue = key.rightValue;
    }
    valueWhenNoKeys = key.leftValue;
    defaultSegmentKind = kind;
}

void HvStdFCurveImpl::RemoveTailAfterExistingKey(FSKind kind, unsigned int i, HvBaseFCurve& curve)
{
    if (i + 1 < NumKeys()) {
        RemoveUserData(i + 1, NumKeys() - 1, curve);
        RemoveKeyRangeAndSpare(i + 1, NumKeys() - 1);
    }
    SetKind(i, kind);
}

void HvStdFCurveImpl::SetupBezierCubicWhenRemoving(unsigned int i, unsigned int j)
{
    double const span = Parameter(j) - Parameter(i);
    Point P[4] = {
        RightPoint(i),
        Lengthened(RightPoint(i), RightVector(i), span / (Parameter(i + 1) - Parameter(i))),
        Lengthened(LeftPoint(j), LeftVector(j), span / (Parameter(j) - Parameter(j - 1))),
        LeftPoint(j)};
    RegularizeBezierCubicPoints(P);
    // Written past the slope limit rule, which would draw the handle back to a third of the span
    // that goes.
    keys[i].rightHandle = P[1];
    WriteLeftHandle(j, P[2]);
}

void HvStdFCurveImpl::SetupBezierCubicWhenRemovingWithCubicLastSegment(unsigned int i,
                                                                       unsigned int j)
{
    double const span = Parameter(j) - Parameter(i);
    double const third = span * kThirdOfSpan;
    Point const left = LeftVector(i);
    Point const right =
        i != 0 && !IsDegenerate(left) ? left * (-third / HvPoint2_Length(left)) : Point(third, 0);
    Point P[4] = {RightPoint(i), RightPoint(i) + right,
                  Lengthened(LeftPoint(j), LeftVector(j), span / (Parameter(j) - Parameter(j - 1))),
                  LeftPoint(j)};
    RegularizeBezierCubicPoints(P);
    WriteRightHandle(i, P[1]);
    WriteLeftHandle(j, P[2]);
}

void HvStdFCurveImpl::SetupBezierCubicWhenRemovingWithCubicFirstSegment(unsigned int i,
                                                                        unsigned int j)
{
    double const span = Parameter(j) - Parameter(i);
    double const third = span * kThirdOfSpan;
    Point const right = RightVector(j);
    Point const left = j + 1 < NumKeys() && !IsDegenerate(right)
                           ? right * (-third / HvPoint2_Length(right))
                           : Point(-third, 0);
    Point P[4] = {
        RightPoint(i),
        Lengthened(RightPoint(i), RightVector(i), span / (Parameter(i + 1) - Parameter(i))),
        LeftPoint(j) + left, LeftPoint(j)};
    RegularizeBezierCubicPoints(P);
    WriteRightHandle(i, P[1]);
    WriteLeftHandle(j, P[2]);
}

void HvStdFCurveImpl::SetStandardCubic(unsigned int i, unsigned int j)
{
    double const third = (Parameter(j) - Parameter(i)) * kThirdOfSpan;
    keys[i].rightHandle =
        Point(MovedHandleX(i, HvBaseFCurve::Right, Parameter(i) + third), keys[i].rightValue);
    keys[j].leftHandle =
        Point(MovedHandleX(j, HvBaseFCurve::Left, Parameter(j) - third), keys[j].leftValue);
    SetKind(i, HvBaseFCurve::CubicSegment);
}

void HvStdFCurveImpl::RemoveBodyBetweenExistingKeys(FSKind kind, unsigned int i, unsigned int j,
                                                    HvBaseFCurve& curve)
{
    if (i + 1 >= j) {
        return;
    }
    SetKind(i, kind);
    SetupBezierCubicWhenRemoving(i, j);
    RemoveUserData(i + 1, j - 1, curve);
    RemoveKeyRangeAndSpare(i + 1, j - 1);
}

int HvStdFCurveImpl::RemoveKey(double x, FSKind kind, double tolerance, HvBaseFCurve& curve)
{
    unsigned int k = 0;
    if (!FindKey(x, tolerance, k)) {
        return 0;
    }
    RemoveKeys({k, k + 1}, kind, curve);
    return 1;
}

void HvStdFCurveImpl::RemoveKeys(KeptKeys const& kept, FSKind kind, HvBaseFCurve& curve)
{
    FSKind const span = HvStdEdit_KindOr(kind, kept.before == 0 ? FirstSegmentKind()
                                                                : SegmentKind(kept.before - 1));
    if (kept.before == 0 && kept.after == NumKeys()) {
        RemoveAllKeys(span, curve);
    } else if (kept.before == 0) {
        RemoveHeadBeforeExistingKey(span, kept.after, curve);
    } else if (kept.after == NumKeys()) {
        RemoveTailAfterExistingKey(span, kept.before - 1, curve);
    } else {
        RemoveBodyBetweenExistingKeys(span, kept.before - 1, kept.after, curve);
    }
}

int HvStdFCurve::RemoveKey(double x, double tolerance)
{
    return RemoveKey(x, kHvKeepKind, tolerance);
}

int HvStdFCurve::RemoveKey(double x, FSKind kind, double tolerance)
{
    HvCurveWriter const guard(*this);
    if (impl_->readOnly || !HvStdEdit_IsKindOrKeep(kind)) {
        return 0;
    }
    if (impl_->NumKeys() == 0) {
        return 1;
    }
    if (impl_->AreKeysLocked(x, x, 0, 0)) {
        return 0;
    }
    return impl_->RemoveKey(x, kind, tolerance, *this);
}

int HvStdFCurve::RemoveKeys(double from, double to, int openAtFrom, int openAtTo)
{
    return RemoveKeys(from, to, kHvKeepKind, openAtFrom, openAtTo);
}

int HvStdFCurve::RemoveKeys(double from, double to, FSKind kind, int openAtFrom, int openAtTo)
{
    HvCurveWriter const guard(*this);
    if (impl_->readOnly || !HvStdEdit_IsKindOrKeep(kind)) {
        return 0;
    }
    if (impl_->NumKeys() == 0 || !(from <= to)) {
        return 1;  // no key, or an interval that holds none
    }
    if (from == to && !openAtFrom != !openAtTo) {
        openAtFrom = 0;
        openAtTo = 0;
    }
    if (impl_->AreKeysLocked(from, to, openAtFrom, openAtTo)) {
        return 0;
    }
    HvStdFCurveImpl::KeptKeys const kept = impl_->FindKeptKeys(from, to, openAtFrom, openAtTo);
    impl_->RemoveKeys(kept, kind, *this);
    return 1;
}
