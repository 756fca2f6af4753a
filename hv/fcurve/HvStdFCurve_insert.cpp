// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Inserting keys into the standard curve.
//
// A key inside the key range splits the cubic over the stored handles of its two neighbours,
// whatever the kind of their segment:
//
//      P1 ---- P12 ---- P2            inner handles: P012 and P123 from the split at t
//      /     P012 P123    \           outer handles: P0 + u*(P1 - P0) and P3 + (1 - u)*(P2 - P3),
//    P01       P0123      P23         u the share of the span before the key
//    /                      \         Where x(t) is linear, t = u and the shape stays.
//   P0                      P3
//
// A key beyond the ends gets a segment with handles at the thirds.

#include <hv/fcurve/HvStdFCurve.h>

#include <hv/bezier/cubic_split.h>
#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>
#include <hv/fcurve/internal/std_edit_checks.h>

#include <cmath>

namespace {

using Point = HvPoint2<double>;

/// `handle` mirrored through `key`.
Point MirroredThrough(Point const& key, Point const& handle)
{
    return HvStdEdit_FiniteOr(
        Point(handle.x - 2 * (handle.x - key.x), handle.y - 2 * (handle.y - key.y)), key);
}

/// Whether a handle vector is too short to give a direction.
bool IsShort(Point const& vector)
{
    return kHvGeometryTolerance > vector.x * vector.x + vector.y * vector.y;
}

/// The height at `run` beyond `key` of the line along `vector`; on a vertical line as far up or
/// down as the run is long, against the vector. A line too steep for a number counts as flat.
double YBeyond(Point const& key, Point const& vector, double run)
{
    double y = key.y + vector.y * run / vector.x;
    if (kHvGeometryTolerance > std::fabs(vector.x)) {
        double const sign = vector.y > 0 ? 1 : (vector.y < 0 ? -1 : 0);
        y = key.y - sign * std::fabs(run);
    }
    return std::isfinite(y) ? y : key.y;
}

/// The handle of `key` that continues the line of its other handle `vector` over `run`, which is
/// negative to the left. A vertical line is continued vertically.
Point ContinuedHandle(Point const& key, Point const& vector, double run)
{
    bool const vertical = kHvGeometryTolerance > std::fabs(vector.x);
    return Point(vertical ? key.x : key.x + run, YBeyond(key, vector, run));
}

}  // namespace

bool HvStdFCurveImpl::CanHoldParameter(double x) const
{
    return HvStdEdit_AreFinite(x) &&
           (NumKeys() == 0 || HvStdEdit_AreFinite(x - FirstParameter(), LastParameter() - x));
}

double HvStdFCurveImpl::EvalInsideKeys(double x) const
{
    if (NumKeys() == 0) {
        return valueWhenNoKeys;
    }
    int exact = 0;
    unsigned int const r = LocateParameter(x, exact);
    if (r == 0) {
        return keys[0].leftValue;
    }
    return exact || r == NumKeys() ? keys[r - 1].rightValue : EvalJustAfterIndex(x, r - 1);
}

void HvStdFCurveImpl::SetValOnExistingKey(unsigned int i, double y)
{
    CFCStdKey& key = keys[i];
    bool const locked = key.constraints.HasAny(CFCKeyConstraint::kValueLocked);
    key.leftHandle =
        HvStdEdit_FiniteOr(key.leftHandle + Point(0, y - key.leftValue), Point(key.parameter, y));
    if (!locked) {
        key.leftValue = y;
    }
    key.rightHandle =
        HvStdEdit_FiniteOr(key.rightHandle + Point(0, y - key.rightValue), Point(key.parameter, y));
    if (!locked) {
        key.rightValue = y;
    }
    if (i == 0) {
        valueWhenNoKeys = y;
    }
}

int HvStdFCurveImpl::CreateKey(double x, double y, FSKind left, FSKind right, HvBaseFCurve& curve)
{
    if (NumKeys() == 0) {
        InsertKey(0, CFCStdKey(x, y, HvStdEdit_KindOr(right, FirstSegmentKind())),
                  CFCKeyConstraint::kTangentContinuityLocked);
        valueWhenNoKeys = y;
        defaultSegmentKind = HvStdEdit_KindOr(left, FirstSegmentKind());
        return 1;
    }
    int exact = 0;
    unsigned int const r = LocateParameter(x, exact);
    if (exact) {
        if (keys[r - 1].constraints.HasAny(CFCKeyConstraint::kValueLocked)) {
            return 0;
        }
        SetValOnExistingKey(r - 1, y);
        return 1;
    }
    FSKind const inPlace = r == 0 ? FirstSegmentKind() : SegmentKind(r - 1);
    FSKind const newLeft = HvStdEdit_KindOr(left, inPlace);
    FSKind const newRight = HvStdEdit_KindOr(right, inPlace);
    if (r == 0) {
        RemoveHeadAndCreateKeyBeforeExistingKey(x, y, newLeft, newRight, 0, curve);
    } else if (r == NumKeys()) {
        RemoveTailAndCreateKeyAfterExistingKey(x, y, newLeft, newRight, r - 1, curve);
    } else {
        RemoveBodyAndCreateKeyBetweenExistingKeys(x, y, newLeft, newRight, r - 1, r, curve);
    }
    return 1;
}

void HvStdFCurveImpl::RemoveAllKeysAndCreateNewKey(double x, double y, FSKind left, FSKind right,
                                                   HvBaseFCurve& curve)
{
    ReserveForOneMoreKey();
    curve.RemoveAllKeyUserData();
    keys.Chop(0);
    InsertKey(0, CFCStdKey(x, y, right), CFCKeyConstraint::kTangentContinuityLocked);
    ReleaseSpareKeys();
    defaultSegmentKind = left;
    valueWhenNoKeys = y;
}

/// Gives key 0 a left handle over the span to a new first key: on the line of its right handle
/// while tangent continuity is locked, otherwise flat.
void HvStdFCurveImpl::AimAtNewFirstKey(double third)
{
    bool const continuous =
        NumKeys() > 1 && keys[0].constraints.HasAny(CFCKeyConstraint::kTangentContinuityLocked);
    Point const key = LeftPoint(0);
    WriteLeftHandle(0, continuous ? ContinuedHandle(key, RightVector(0), -third)
                                  : Point(key.x - third, key.y));
}

void HvStdFCurveImpl::RemoveHeadAndCreateKeyBeforeExistingKey(double x, double y, FSKind left,
                                                              FSKind right, unsigned int i,
                                                              HvBaseFCurve& curve)
{
    ReserveForOneMoreKey();
    double const third = (Parameter(i) - x) * kThirdOfSpan;
    if (i == 0) {
        AimAtNewFirstKey(third);
    } else {
        RegularizeLeftTgt(i, Point(x, y));
    }
    if (i + 1 == NumKeys() && IsShort(RightVector(i))) {
        WriteRightHandle(i, MirroredThrough(LeftPoint(i), keys[i].leftHandle));
    }

    if (i != 0) {
        RemoveKeyRangeWithUserData(0, i - 1, curve);
    }
    InsertKey(0, CFCStdKey(x, y, right), CFCKeyConstraint::kTangentContinuityLocked);
    ReleaseSpareKeys();
    valueWhenNoKeys = y;
    defaultSegmentKind = left;
    if (i != 0) {
        WriteLeftHandle(1, keys[1].leftHandle);  // its third is now that of the new span
    }
    WriteRightHandle(0, Point(x + third, y));
    if (IsShort(LeftVector(0))) {
        WriteLeftHandle(0, MirroredThrough(Point(x, y), keys[0].rightHandle));
    }
}

/// Gives the last key a right handle over the span to a new last key: on the line of its left
/// handle while tangent continuity is locked, otherwise flat. An only key has no segment to
/// continue.
void HvStdFCurveImpl::AimAtNewLastKey(double third)
{
    unsigned int const i = NumKeys() - 1;
    bool const continuous =
        i != 0 && keys[i].constraints.HasAny(CFCKeyConstraint::kTangentContinuityLocked);
    Point const key = RightPoint(i);
    WriteRightHandle(i, continuous ? ContinuedHandle(key, LeftVector(i), third)
                                   : Point(key.x + third, key.y));
}

void HvStdFCurveImpl::RemoveTailAndCreateKeyAfterExistingKey(double x, double y, FSKind left,
                                                             FSKind right, unsigned int i,
                                                             HvBaseFCurve& curve)
{
    ReserveForOneMoreKey();
    double const third = (x - Parameter(i)) * kThirdOfSpan;
    unsigned int const numKeys = NumKeys();
    if (i + 1 != numKeys) {
        RegularizeRightTgt(i, Point(x, y));
    } else {
        AimAtNewLastKey(third);
    }
    if (i == 0 && IsShort(LeftVector(i))) {
        WriteLeftHandle(i, MirroredThrough(RightPoint(i), keys[i].rightHandle));
    }
    SetKind(i, left);

    if (i + 1 != numKeys) {
        RemoveKeyRangeWithUserData(i + 1, numKeys - 1, curve);
    }
    unsigned int const added = i + 1;
    InsertKey(added, CFCStdKey(x, y, right), CFCKeyConstraint::kTangentContinuityLocked);
    if (added != numKeys) {
        ReleaseSpareKeys();
        WriteRightHandle(i, keys[i].rightHandle);  // its third is now that of the new span
    }
    WriteLeftHandle(added, Point(x - third, y));
    if (IsShort(RightVector(added))) {
        WriteRightHandle(added, MirroredThrough(Point(x, y), keys[added].leftHandle));
    }
}

/// Splits the segment after key i at its curve parameter t, strictly between 0 and 1, and puts
/// `key` there. The inner handles move with the key when it lies off the curve.
void HvStdFCurveImpl::InsertIntoSegment(unsigned int i, CFCStdKey const& key, FSKind left, double t)
{
    Point const P[4] = {RightPoint(i), keys[i].rightHandle, keys[i + 1].leftHandle,
                        LeftPoint(i + 1)};
    double const x = key.parameter;
    double const y = key.leftValue;
    double const u = (x - P[0].x) / (P[3].x - P[0].x);
    Point A[4];
    Point B[4];
    HvCubic_Split(P, t, A, B);
    double const splitY = A[3].y;
    A[1] = P[0] + (P[1] - P[0]) * u;
    A[3].x = x;
    B[0].x = x;
    B[2] = P[3] + (P[2] - P[3]) * (1 - u);
    RegularizeBezierCubicPoints(A);
    RegularizeBezierCubicPoints(B);

    unsigned int const added = i + 1;
    InsertKey(added, key, CFCKeyConstraint::kTangentContinuityLocked);
    SetKind(i, left);
    WriteRightHandle(i, HvStdEdit_FiniteOr(A[1], P[0]));
    keys[added].leftHandle = HvStdEdit_FiniteOr(
        Point(MovedHandleX(added, HvBaseFCurve::Left, A[2].x), A[2].y + y - splitY), Point(x, y));
    keys[added].rightHandle = HvStdEdit_FiniteOr(
        Point(MovedHandleX(added, HvBaseFCurve::Right, B[1].x), B[1].y + y - splitY), Point(x, y));
    WriteLeftHandle(added + 1, HvStdEdit_FiniteOr(B[2], P[3]));
}

/// Gives the two segments beside key i + 1, which took the place of removed keys, the directions
/// that the outermost removed handles had.
void HvStdFCurveImpl::RestoreRemovedTangents(unsigned int i, Point const& removedLeft,
                                             Point const& removedRight)
{
    Point right = RightVector(i);
    Point left = removedLeft;
    ComputeBestMatchTangents(i, right, left, 3);
    WriteRightHandle(i, RightPoint(i) + right);
    WriteLeftHandle(i + 1, LeftPoint(i + 1) + left);

    right = removedRight;
    left = LeftVector(i + 2);
    ComputeBestMatchTangents(i + 1, right, left, 0);
    WriteRightHandle(i + 1, RightPoint(i + 1) + right);
    WriteLeftHandle(i + 2, LeftPoint(i + 2) + left);
}

int HvStdFCurveImpl::RemoveBodyAndCreateKeyBetweenExistingKeys(double x, double y, FSKind left,
                                                               FSKind right, unsigned int i,
                                                               unsigned int j, HvBaseFCurve& curve)
{
    ReserveForOneMoreKey();
    bool const removesAny = i + 1 < j;
    Point removedLeft;
    Point removedRight;
    if (removesAny) {
        removedLeft = LeftVector(i + 1);
        removedRight = RightVector(j - 1);
        SetKind(i, HvBaseFCurve::CubicSegment);
        SetupBezierCubicWhenRemoving(i, j);
        RemoveKeyRangeWithUserData(i + 1, j - 1, curve);
    }

    double const t = FindCubicParameter(x, Parameter(i), keys[i].rightHandle.x,
                                        keys[i + 1].leftHandle.x, Parameter(i + 1));
    int result = 0;
    if (t == 0) {
        SetValOnExistingKey(i, y);
        result = -1;
    } else if (t == 1) {
        SetValOnExistingKey(i + 1, y);
        result = 1;
    } else {
        InsertIntoSegment(i, CFCStdKey(x, y, right), left, t);
        if (removesAny) {
            RestoreRemovedTangents(i, removedLeft, removedRight);
        }
    }
    if (removesAny) {
        ReleaseSpareKeys();
    }
    return result;
}

void HvStdFCurveImpl::CreateNonModifyingKey(double x, unsigned int& index, HvBaseFCurve& curve)
{
    unsigned int const numKeys = NumKeys();
    if (numKeys == 0) {
        InsertKey(0, CFCStdKey(x, valueWhenNoKeys, FirstSegmentKind()),
                  CFCKeyConstraint::kTangentContinuityLocked);
        index = 0;
        return;
    }
    int exact = 0;
    unsigned int const r = LocateParameter(x, exact);
    if (exact) {
        index = r - 1;
        return;
    }
    ReserveForOneMoreKey();
    if (r == numKeys) {
        unsigned int const last = numKeys - 1;
        SetConstraints(last, HvBaseFCurve::AutomaticTangents, false);
        RemoveTailAndCreateKeyAfterExistingKey(x, keys[last].rightValue, SegmentKind(last),
                                               SegmentKind(last), last, curve);
        index = numKeys;
    } else if (r == 0) {
        SetConstraints(0, HvBaseFCurve::AutomaticTangents, false);
        RemoveHeadAndCreateKeyBeforeExistingKey(x, keys[0].leftValue, FirstSegmentKind(),
                                                FirstSegmentKind(), 0, curve);
        index = 0;
    } else {
        unsigned int const i = r - 1;
        FreezeKey(i);
        FreezeKey(r);
        FSKind const kind = SegmentKind(i);
        double const value = EvalJustAfterIndex(x, i);
        // Between values near the limit of a double a segment may have none that can be stored.
        double const y = HvStdEdit_AreFinite(value) ? value : keys[i].rightValue;
        int const result = RemoveBodyAndCreateKeyBetweenExistingKeys(x, y, kind, kind, i, r, curve);
        index = result == -1 ? i : r;
    }
}

int HvStdFCurve::CreateKey(double x, double y)
{
    return CreateKey(x, y, kHvKeepKind, kHvKeepKind);
}

int HvStdFCurve::CreateKey(double x, double y, FSKind left, FSKind right)
{
    HvCurveWriter const guard(*this);
    if (impl_->readOnly || !impl_->CanHoldParameter(x) || !HvStdEdit_AreFinite(y) ||
        !HvStdEdit_IsKindOrKeep(left) || !HvStdEdit_IsKindOrKeep(right)) {
        return 0;
    }
    return impl_->CreateKey(x, y, left, right, *this);
}

int HvStdFCurve::CreateNonModifyingKey(double x, int ignoreExtrapolation)
{
    HvCurveWriter const guard(*this);
    double const at = ignoreExtrapolation ? x : impl_->FoldParameter(x);
    if (impl_->readOnly || !impl_->CanHoldParameter(at) ||
        impl_->HasConstraintInInterval(CFCKeyConstraint::kValueLocked, false, at, at, 0, 0) ||
        !HvStdEdit_AreFinite(impl_->EvalRight(at, 0))) {
        return 0;
    }
    impl_->ReserveForOneMoreKey();
    impl_->FreezeNeighbours(at);
    return impl_->CreateKey(at, impl_->EvalRight(at, 0), kHvKeepKind, kHvKeepKind, *this);
}
