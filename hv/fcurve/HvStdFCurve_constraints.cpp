// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Constraints of the keys of the standard curve: setting them, locking tangent continuity, and
// freezing derived tangents into stored ones.

#include <hv/fcurve/HvStdFCurve.h>

#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>
#include <hv/fcurve/internal/std_edit_checks.h>

#include <cmath>

namespace {

/// The constraints that derive handles, as a mask of KeyConstraint values: clearing one of them on
/// frozen keys also clears the others of the caller's mask.
constexpr int kTangentDerivingConstraints =
    HvBaseFCurve::FlatTangents | HvBaseFCurve::FlatAtExtremum | HvBaseFCurve::ZeroLengthTangents |
    HvBaseFCurve::LinearTangents | HvBaseFCurve::AutomaticTangents;

}  // namespace

void HvStdFCurveImpl::SetConstraints(unsigned int i, int constraints, bool on)
{
    for (int bit = 1; bit <= HvBaseFCurve::AutomaticTangents; bit <<= 1) {
        auto const constraint = static_cast<HvBaseFCurve::KeyConstraint>(bit);
        if (constraints & bit) {
            keys[i].constraints.Assign(CFCKeyConstraint_Bits(constraint), on);
        }
    }
    if ((constraints & HvBaseFCurve::AutomaticTangents) && !on) {
        keys[i].constraints.Clear(CFCKeyConstraint::kUnlimitedAutoSlope);
    }
}

int HvStdFCurveImpl::LockTangentContinuity(unsigned int i)
{
    keys[i].constraints.Set(CFCKeyConstraint::kTangentContinuityLocked);
    return 1;
}

int HvStdFCurveImpl::UnlockTangentContinuity(unsigned int i)
{
    keys[i].constraints.Clear(CFCKeyConstraint::kTangentContinuityLocked);
    return 1;
}

int HvStdFCurveImpl::LockTangentLengthContinuity(unsigned int i, double scale)
{
    CFCKeyConstraint& word = keys[i].constraints;
    bool const betweenCubics = i != 0 && i + 1 < NumKeys() &&
                               SegmentKind(i - 1) == HvBaseFCurve::CubicSegment &&
                               SegmentKind(i) == HvBaseFCurve::CubicSegment;
    if (!word.HasAny(CFCKeyConstraint::kTangentLengthContinuityLocked) && betweenCubics &&
        !ActualTangentsHaveSameVisualLength(i, scale)) {
        return 0;
    }
    word.Set(CFCKeyConstraint::kTangentLengthContinuityLocked);
    return 1;
}

int HvStdFCurveImpl::UnlockTangentLengthContinuity(unsigned int i, double)
{
    keys[i].constraints.Clear(CFCKeyConstraint::kTangentLengthContinuityLocked);
    return 1;
}

void HvStdFCurveImpl::FreezeAutomaticKeys(unsigned int first, unsigned int last)
{
    for (unsigned int i = first; i <= last; ++i) {
        if (keys[i].constraints.HasAny(CFCKeyConstraint::kAutomaticTangents)) {
            FreezeKey(i);
        }
    }
}

void HvStdFCurveImpl::FreezeNeighbours(double x)
{
    unsigned int const below = NumKeysBelow(x);
    unsigned int const notAbove = NumKeysNotAbove(x);
    if (notAbove < NumKeys()) {
        FreezeKey(notAbove);
    }
    if (below != 0) {
        FreezeKey(below - 1);
    }
}

/// Writes the evaluated handles of the sides asked for to the stored ones, gives up tangent
/// continuity where they are no longer on one line, and then clears the constraints of the mask if
/// any of them derives handles.
void HvStdFCurveImpl::FreezeHandles(unsigned int i, bool left, bool right, int constraints)
{
    StoreEvaluatedHandles(i, left, right);
    if (!ActualTangentsAreUnified(i)) {
        UnlockTangentContinuity(i);
    }
    if (constraints & kTangentDerivingConstraints) {
        SetConstraints(i, constraints, false);
    }
}

void HvStdFCurveImpl::FreezeTangentsInInterval(unsigned int i, unsigned int j, int leftSide,
                                               int rightSide, int constraints)
{
    unsigned int first = i;
    unsigned int end = j + 1;
    if (leftSide) {
        FreezeHandles(i, false, true, constraints);
        ++first;
    }
    if (rightSide) {
        FreezeHandles(j, true, false, constraints);
        --end;
    }
    for (unsigned int k = first; k < end; ++k) {
        FreezeHandles(k, true, true, constraints);
    }
}

int HvStdFCurve::SetConstraint(double& parameter, KeyConstraint constraint, int on,
                               double tolerance)
{
    HvCurveWriter const guard(*this);
    unsigned int i = 0;
    if (impl_->readOnly || !impl_->FindKey(parameter, tolerance, i)) {
        return 0;
    }
    impl_->SetConstraints(i, constraint, on != 0);
    parameter = impl_->Parameter(i);
    return 1;
}

int HvStdFCurve::LockTangentContinuity(double& x, double tolerance)
{
    HvCurveWriter const guard(*this);
    unsigned int i = 0;
    if (impl_->readOnly || !impl_->FindKey(x, tolerance, i)) {
        return 0;
    }
    x = impl_->Parameter(i);
    return impl_->LockTangentContinuity(i);
}

int HvStdFCurve::UnlockTangentContinuity(double& x, double tolerance)
{
    HvCurveWriter const guard(*this);
    unsigned int i = 0;
    if (impl_->readOnly || !impl_->FindKey(x, tolerance, i)) {
        return 0;
    }
    x = impl_->Parameter(i);
    return impl_->UnlockTangentContinuity(i);
}

int HvStdFCurve::LockTangentLengthContinuity(double& x, double scale, double tolerance)
{
    HvCurveWriter const guard(*this);
    unsigned int i = 0;
    if (impl_->readOnly || !impl_->FindKey(x, tolerance, i) ||
        !impl_->LockTangentLengthContinuity(i, scale)) {
        return 0;
    }
    x = impl_->Parameter(i);
    return 1;
}

int HvStdFCurve::UnlockTangentLengthContinuity(double& x, double scale, double tolerance)
{
    HvCurveWriter const guard(*this);
    unsigned int i = 0;
    if (impl_->readOnly || !impl_->FindKey(x, tolerance, i)) {
        return 0;
    }
    x = impl_->Parameter(i);
    return impl_->UnlockTangentLengthContinuity(i, scale);
}

int HvStdFCurve::FreezeAllTangents(int constraints)
{
    HvCurveWriter const guard(*this);
    if (impl_->readOnly || impl_->NumKeys() == 0) {
        return 0;
    }
    impl_->FreezeTangentsInInterval(0, impl_->NumKeys() - 1, 0, 0, constraints);
    return 1;
}

int HvStdFCurve::FreezeTangentsInInterval(double from, double to, int leftSide, int rightSide,
                                          int constraints)
{
    HvCurveWriter const guard(*this);
    if (impl_->NumKeys() == 0 || std::isnan(from) || std::isnan(to)) {
        return 0;
    }
    return FreezeTangentsInInterval(impl_->GetNearestKeyIndex(from), impl_->GetNearestKeyIndex(to),
                                    leftSide, rightSide, constraints);
}

int HvStdFCurve::FreezeTangentsInInterval(unsigned int i, unsigned int j, int leftSide,
                                          int rightSide, int constraints)
{
    HvCurveWriter const guard(*this);
    if (impl_->readOnly || i > j || j >= impl_->NumKeys()) {
        return 0;
    }
    impl_->FreezeTangentsInInterval(i, j, leftSide, rightSide, constraints);
    return 1;
}
