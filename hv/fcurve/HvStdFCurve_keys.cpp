// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Reading the keys of the standard curve: values, kinds, handles, constraints.

#include <hv/fcurve/HvStdFCurve.h>
#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>
#include <hv/foundation/HvDoubleArray.h>

namespace {

using Point = HvPoint2<double>;

bool IsSide(HvBaseFCurve::KeySide side)
{
    return side == HvBaseFCurve::Left || side == HvBaseFCurve::Right;
}

Point LeftVectorOf(CFCStdKey const& key, Point const& handle)
{
    return {handle.x - key.parameter, handle.y - key.leftValue};
}

Point RightVectorOf(CFCStdKey const& key, Point const& handle)
{
    return {handle.x - key.parameter, handle.y - key.rightValue};
}

Point EvaluatedLeftVector(HvStdFCurveImpl const& impl, unsigned int i)
{
    return LeftVectorOf(impl.keys[i], impl.GetEvaluatedLeftTgt(i));
}

Point EvaluatedRightVector(HvStdFCurveImpl const& impl, unsigned int i)
{
    return RightVectorOf(impl.keys[i], impl.GetEvaluatedRightTgt(i));
}

bool IsSelectedKey(HvStdFCurveImpl const& impl, unsigned int i)
{
    return impl.selected != 0 && impl.IsSelected(i);
}

/// Fills what the mask names but the index and the parameter.
void FillKeyInfo(HvStdFCurveImpl const& impl, unsigned int i, HvBaseFCurve::KeyInfo& info)
{
    CFCStdKey const& key = impl.keys[i];
    if ((info.mask & 0x004) != 0) {
        info.leftValue = key.leftValue;
    }
    if ((info.mask & 0x008) != 0) {
        info.rightValue = key.rightValue;
    }
    if ((info.mask & 0x030) != 0) {
        Point const left = EvaluatedLeftVector(impl, i);
        info.leftTangentX = (info.mask & 0x010) != 0 ? left.x : info.leftTangentX;
        info.leftTangentY = (info.mask & 0x020) != 0 ? left.y : info.leftTangentY;
    }
    if ((info.mask & 0x0C0) != 0) {
        Point const right = EvaluatedRightVector(impl, i);
        info.rightTangentX = (info.mask & 0x040) != 0 ? right.x : info.rightTangentX;
        info.rightTangentY = (info.mask & 0x080) != 0 ? right.y : info.rightTangentY;
    }
    if ((info.mask & 0x100) != 0) {
        info.segmentKind = static_cast<HvBaseFCurve::FSKind>(key.segmentKind);
    }
    if ((info.mask & 0x200) != 0) {
        info.selected = IsSelectedKey(impl, i) ? 1 : 0;
    }
}

int HasConstraint(HvStdFCurveImpl const& impl, unsigned int i,
                  HvBaseFCurve::KeyConstraint constraint)
{
    unsigned short const bits = CFCKeyConstraint_Bits(constraint);
    return bits != 0 && impl.keys[i].constraints.HasAll(bits) ? 1 : 0;
}

int HasBits(HvStdFCurveImpl const& impl, unsigned int i, unsigned short bits)
{
    return i < impl.NumKeys() && impl.keys[i].constraints.HasAll(bits) ? 1 : 0;
}

int FoundKeyHasBits(HvStdFCurveImpl const& impl, double x, double tolerance, unsigned short bits)
{
    unsigned int i = 0;
    return impl.FindKey(x, tolerance, i) != 0 ? HasBits(impl, i, bits) : 0;
}

}  // namespace

HvBaseFCurve::FSKind HvStdFCurveImpl::SegmentKind(unsigned int i, KeySide side) const
{
    if (side == HvBaseFCurve::Left) {
        return static_cast<FSKind>(i == 0 ? defaultSegmentKind : keys[i - 1].segmentKind);
    }
    return static_cast<FSKind>(keys[i].segmentKind);
}

int HvStdFCurve::GetKeyInfoFromIndex(unsigned int index, KeyInfo* info) const
{
    if (info == nullptr) {
        return 0;
    }
    HvCurveReader const lock(*this);
    if (index >= impl_->NumKeys()) {
        info->mask = 0;
        return 0;
    }
    if ((info->mask & 0x001) != 0) {
        info->index = index;
    }
    if ((info->mask & 0x002) != 0) {
        info->parameter = impl_->Parameter(index);
    }
    FillKeyInfo(*impl_, index, *info);
    return 1;
}

int HvStdFCurve::GetKeyInfoFromParameter(double parameter, KeyInfo* info) const
{
    if (info == nullptr) {
        return 0;
    }
    HvCurveReader const lock(*this);
    unsigned int index = 0;
    if (impl_->FindKey(parameter, 0, index) == 0) {
        info->mask = 0;
        return 0;
    }
    if ((info->mask & 0x001) != 0) {
        info->index = index;
    }
    if ((info->mask & 0x002) != 0) {
        info->parameter = parameter;
    }
    FillKeyInfo(*impl_, index, *info);
    return 1;
}

int HvStdFCurve::GetKeyValue(double x, KeySide side, double& value, double tolerance) const
{
    HvCurveReader const lock(*this);
    unsigned int i = 0;
    if (!IsSide(side) || impl_->FindKey(x, tolerance, i) == 0) {
        return 0;
    }
    value = side == Left ? impl_->keys[i].leftValue : impl_->keys[i].rightValue;
    return 1;
}

unsigned int HvStdFCurve::GetKeys(HvDoubleArray& parameters, HvDoubleArray& leftValues,
                                  HvDoubleArray& rightValues, int selectedOnly) const
{
    return CollectKeys(parameters, leftValues, rightValues, selectedOnly);
}

// Segment kinds.

int HvStdFCurve::GetSegmentKind(double x, KeySide side, FSKind& kind, double tolerance) const
{
    HvCurveReader const lock(*this);
    unsigned int i = 0;
    if (!IsSide(side) || impl_->FindKey(x, tolerance, i) == 0) {
        return 0;
    }
    kind = impl_->SegmentKind(i, side);
    return 1;
}

int HvStdFCurve::GetSegmentKinds(double x, FSKind& left, FSKind& right, double tolerance) const
{
    HvCurveReader const lock(*this);
    unsigned int i = 0;
    if (impl_->FindKey(x, tolerance, i) == 0) {
        return 0;
    }
    left = impl_->SegmentKind(i, Left);
    right = impl_->SegmentKind(i, Right);
    return 1;
}

int HvStdFCurve::GetSegmentKindsByIndex(unsigned int i, FSKind& left, FSKind& right) const
{
    HvCurveReader const lock(*this);
    if (i >= impl_->NumKeys()) {
        return 0;
    }
    left = impl_->SegmentKind(i, Left);
    right = impl_->SegmentKind(i, Right);
    return 1;
}

int HvStdFCurve::GetSegmentKindByIndex(unsigned int i, KeySide side, FSKind& kind) const
{
    HvCurveReader const lock(*this);
    if (i >= impl_->NumKeys() || !IsSide(side)) {
        return 0;
    }
    kind = impl_->SegmentKind(i, side);
    return 1;
}

HvBaseFCurve::FSKind HvStdFCurve::GetSegmentKindAtParameter(double x) const
{
    HvCurveReader const lock(*this);
    int exact = 0;
    unsigned int const count = impl_->NumKeys() == 0 ? 0 : impl_->LocateParameter(x, exact);
    return count == 0 ? static_cast<FSKind>(impl_->defaultSegmentKind)
                      : impl_->SegmentKind(count - 1, Right);
}

HvBaseFCurve::FSKind HvStdFCurve::GetFirstSegmentKind() const
{
    HvCurveReader const lock(*this);
    return static_cast<FSKind>(impl_->defaultSegmentKind);
}

int HvStdFCurve::HasUniformSegmentKind(FSKind& kind) const
{
    HvCurveReader const lock(*this);
    for (CFCStdKey const& key : impl_->keys) {
        if (key.segmentKind != impl_->defaultSegmentKind) {
            return 0;
        }
    }
    kind = static_cast<FSKind>(impl_->defaultSegmentKind);
    return 1;
}

// Handles.

int HvStdFCurve::GetActualKeyTgtHandle(double x, KeySide side, HvPoint2<double>& handle,
                                       double tolerance) const
{
    HvCurveReader const lock(*this);
    unsigned int i = 0;
    if (!IsSide(side) || impl_->FindKey(x, tolerance, i) == 0) {
        return 0;
    }
    CFCStdKey const& key = impl_->keys[i];
    handle = side == Left ? LeftVectorOf(key, key.leftHandle) : RightVectorOf(key, key.rightHandle);
    return 1;
}

int HvStdFCurve::GetActualKeyTgtHandles(double x, HvPoint2<double>& left, HvPoint2<double>& right,
                                        double tolerance) const
{
    HvCurveReader const lock(*this);
    unsigned int i = 0;
    if (impl_->FindKey(x, tolerance, i) == 0) {
        return 0;
    }
    CFCStdKey const& key = impl_->keys[i];
    left = LeftVectorOf(key, key.leftHandle);
    right = RightVectorOf(key, key.rightHandle);
    return 1;
}

int HvStdFCurve::GetEvaluatedKeyTgtHandle(double x, KeySide side, HvPoint2<double>& handle,
                                          double tolerance) const
{
    HvCurveReader const lock(*this);
    unsigned int i = 0;
    if (!IsSide(side) || impl_->FindKey(x, tolerance, i) == 0) {
        return 0;
    }
    handle = side == Left ? EvaluatedLeftVector(*impl_, i) : EvaluatedRightVector(*impl_, i);
    return 1;
}

int HvStdFCurve::GetEvaluatedKeyTgtHandles(double x, HvPoint2<double>& left,
                                           HvPoint2<double>& right, double tolerance) const
{
    HvCurveReader const lock(*this);
    unsigned int i = 0;
    if (impl_->FindKey(x, tolerance, i) == 0) {
        return 0;
    }
    left = EvaluatedLeftVector(*impl_, i);
    right = EvaluatedRightVector(*impl_, i);
    return 1;
}

int HvStdFCurve::GetEvaluatedKeyTgtHandlesByIndex(unsigned int i, HvPoint2<double>& left,
                                                  HvPoint2<double>& right) const
{
    HvCurveReader const lock(*this);
    if (i >= impl_->NumKeys()) {
        return 0;
    }
    left = EvaluatedLeftVector(*impl_, i);
    right = EvaluatedRightVector(*impl_, i);
    return 1;
}

// Constraints.

int HvStdFCurve::GetConstraint(double& parameter, KeyConstraint constraint, int& on,
                               double tolerance) const
{
    HvCurveReader const lock(*this);
    unsigned int i = 0;
    if (impl_->FindKey(parameter, tolerance, i) == 0) {
        return 0;
    }
    on = HasConstraint(*impl_, i, constraint);
    parameter = impl_->Parameter(i);
    return 1;
}

int HvStdFCurve::GetConstraintByIndex(unsigned int i, KeyConstraint constraint, int& on) const
{
    HvCurveReader const lock(*this);
    if (i >= impl_->NumKeys()) {
        return 0;
    }
    on = HasConstraint(*impl_, i, constraint);
    return 1;
}

int HvStdFCurve::IsConstraintSupported(KeyConstraint) const
{
    return 1;
}

int HvStdFCurve::IsTangentContinuityLocked(double x, double tolerance) const
{
    HvCurveReader const lock(*this);
    return FoundKeyHasBits(*impl_, x, tolerance, CFCKeyConstraint::kTangentContinuityLocked);
}

int HvStdFCurve::IsTangentContinuityLockedByIndex(unsigned int i) const
{
    HvCurveReader const lock(*this);
    return HasBits(*impl_, i, CFCKeyConstraint::kTangentContinuityLocked);
}

int HvStdFCurve::IsTangentLengthContinuityLocked(double x, double tolerance) const
{
    HvCurveReader const lock(*this);
    return FoundKeyHasBits(*impl_, x, tolerance, CFCKeyConstraint::kTangentLengthContinuityLocked);
}

int HvStdFCurve::IsTangentLengthContinuityLockedByIndex(unsigned int i) const
{
    HvCurveReader const lock(*this);
    return HasBits(*impl_, i, CFCKeyConstraint::kTangentLengthContinuityLocked);
}

int HvStdFCurve::AreAnyTgtDirectionsLockedInInterval(double from, double to, int openAtFrom,
                                                     int openAtTo) const
{
    HvCurveReader const lock(*this);
    return impl_->HasConstraintInInterval(CFCKeyConstraint::kTangentDirectionLocked, true, from, to,
                                          openAtFrom, openAtTo);
}

int HvStdFCurve::AreAnyTgtLengthsLockedInInterval(double from, double to, int openAtFrom,
                                                  int openAtTo) const
{
    HvCurveReader const lock(*this);
    return impl_->HasConstraintInInterval(CFCKeyConstraint::kTangentLengthLocked, true, from, to,
                                          openAtFrom, openAtTo);
}
