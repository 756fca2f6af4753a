// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Edits of whole stretches: head and tail off, cut, paste, and one curve behind another.

#include <hv/fcurve/HvStdFCurve.h>

#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>
#include <hv/fcurve/internal/HvStdFCurveRollback.h>
#include <hv/fcurve/internal/HvUserDataMoves.h>
#include <hv/fcurve/internal/std_edit_checks.h>
#include <hv/fcurve/internal/std_mend.h>

#include <algorithm>

namespace {

constexpr unsigned short kKeyLocks =
    CFCKeyConstraint::kParameterLocked | CFCKeyConstraint::kValueLocked;

/// Lets the keys `first` to `last`, not included, go.
void ClearLocks(HvStdFCurveImpl& curve, unsigned int first, unsigned int last)
{
    for (unsigned int i = first; i < last; ++i) {
        curve.keys[i].constraints.Clear(kKeyLocks);
    }
}

/// Sets a value of a key that is not locked.
void SetRightValue(CFCStdKey& key, double value)
{
    if (!key.constraints.HasAny(CFCKeyConstraint::kValueLocked)) {
        key.rightValue = value;
    }
}

}  // namespace

int HvStdFCurveImpl::TranslateParamsAndTgtsAfterExistingKey(unsigned int i, double target,
                                                            double shift, HvBaseFCurve& curve)
{
    auto const movedParameter = [&](unsigned int k) {
        double const p = Parameter(k);
        bool const locked = keys[k].constraints.HasAny(CFCKeyConstraint::kParameterLocked);
        return locked ? p : (k == i + 1 ? target : p + shift);
    };

    HvUserDataMoves moves(curve);
    double previous = Parameter(i);
    for (unsigned int k = i + 1; k < NumKeys(); ++k) {
        double const moved = movedParameter(k);
        bool const inOrder = k == i + 1 ? moved >= previous : moved > previous;
        if (!inOrder || !CanHoldParameter(moved)) {
            return 0;
        }
        moves.Add(Parameter(k), moved);
        previous = moved;
    }
    if (!moves.Apply()) {
        return 0;
    }

    double const firstShift = i + 1 < NumKeys() ? target - Parameter(i + 1) : 0;
    for (unsigned int k = i + 1; k < NumKeys(); ++k) {
        keys[k].parameter = movedParameter(k);
    }
    for (unsigned int k = i + 1; k < NumKeys(); ++k) {
        CFCStdKey& key = keys[k];
        double const d = k == i + 1 ? firstShift : shift;
        key.leftHandle.x =
            MovedHandleX(k, HvBaseFCurve::Left, std::min(key.leftHandle.x + d, key.parameter));
        key.rightHandle.x =
            MovedHandleX(k, HvBaseFCurve::Right, std::max(key.rightHandle.x + d, key.parameter));
    }
    return 1;
}

int HvStdFCurve::RemoveHead(double x)
{
    HvCurveWriter const guard(*this);
    if (impl_->readOnly || !impl_->CanHoldParameter(x)) {
        return 0;
    }
    if (impl_->NumKeys() != 0) {
        double const first = impl_->FirstParameter();
        if (x == first) {
            return 1;
        }
        if (x > first && impl_->AreKeysLocked(first, x, 0, 0)) {
            return 0;
        }
    }
    unsigned int index = 0;
    impl_->CreateNonModifyingKey(x, index, *this);
    impl_->RemoveHeadBeforeExistingKey(impl_->FirstSegmentKind(), index, *this);
    return 1;
}

int HvStdFCurve::RemoveTail(double x)
{
    HvCurveWriter const guard(*this);
    if (impl_->readOnly || !impl_->CanHoldParameter(x)) {
        return 0;
    }
    if (impl_->NumKeys() != 0) {
        double const last = impl_->LastParameter();
        if (x == last) {
            return 1;
        }
        if (x < last && impl_->AreKeysLocked(x, last, 0, 0)) {
            return 0;
        }
    }
    unsigned int index = 0;
    impl_->CreateNonModifyingKey(x, index, *this);
    impl_->RemoveTailAfterExistingKey(impl_->SegmentKind(index), index, *this);
    return 1;
}

int HvStdFCurve::Append(HvBaseFCurve const& source)
{
    if (&source == this) {
        HvCurveWriter const guard(*this);
        HvStdFCurve const copy(*this);
        return Append(copy);
    }
    HvCurveWriter const guard(*this);
    HvCurveReader const sourceGuard(source);
    auto const* const standard = static_cast<HvStdFCurve const*>(source.QueryFCurveKind(Standard));
    if (impl_->readOnly || standard == nullptr || standard->impl_->NumKeys() == 0 ||
        impl_->NumKeys() == 0) {
        return 0;
    }
    HvStdFCurveImpl const& other = *standard->impl_;
    double const shift = impl_->LastParameter() - other.FirstParameter();
    if (!impl_->CanHoldParameter(other.LastParameter() + shift)) {
        return 0;
    }
    bool const wereValid = impl_->IsValid() != 0 && other.IsValid() != 0;
    auto const appendKeys = [&] {
        impl_->Append(other, shift);
        if (wereValid) {
            HvStdEdit_MendSegments(*impl_);
        }
    };
    if (!source.HasUserData()) {
        appendKeys();
        return impl_->IsValid();
    }

    // User data need memory of their own, so they may fail when the keys are in.
    Rollback rollback(*this);
    appendKeys();
    for (CFCStdKey const& key : other.keys) {
        double const p = key.parameter;
        if (source.HasUserData(p) && IsKeyParameter(p + shift, 0)) {
            CopyKeyUserData(source, p, p + shift);
        }
    }
    rollback.Commit();
    return impl_->IsValid();
}

void HvStdFCurveImpl::Append(HvStdFCurveImpl const& other, double shift)
{
    unsigned int const join = NumKeys() - 1;
    unsigned int const numAdded = other.NumKeys() - 1;
    keys.Reserve(HvArrayCapacity_GrownSize(NumKeys(), numAdded));
    for (unsigned int k = 1; k <= numAdded; ++k) {
        CFCStdKey key = other.keys[k];
        key.parameter += shift;
        key.leftHandle = HvStdEdit_FiniteOr(key.leftHandle + Point(shift, 0),
                                            Point(key.parameter, key.leftHandle.y));
        key.rightHandle = HvStdEdit_FiniteOr(key.rightHandle + Point(shift, 0),
                                             Point(key.parameter, key.rightHandle.y));
        if (key.parameter > LastParameter()) {  // two keys may round to one
            keys.Add(key);
        }
    }

    CFCStdKey const& from = other.keys[0];
    SetRightValue(keys[join], from.rightValue);
    SetKind(join, other.SegmentKind(0));
    double const handleX = std::max(from.rightHandle.x + shift, Parameter(join));
    keys[join].rightHandle =
        Point(MovedHandleX(join, HvBaseFCurve::Right, handleX), from.rightHandle.y);
    if (!ActualTangentsAreUnified(join)) {
        UnlockTangentContinuity(join);
    }
}

int HvStdFCurve::Cut(double from, double to, HvBaseFCurve& clipboard)
{
    HvCurveWriter const guard(*this);
    if (clipboard.QueryFCurveKind(Standard) == nullptr || &clipboard == this || impl_->readOnly ||
        !impl_->CanHoldParameter(from) || !impl_->CanHoldParameter(to) || !(from <= to) ||
        impl_->AreKeysLocked(from, to, 0, 0)) {
        return 0;
    }
    HvStdFCurve piece(*this);
    HvStdFCurveImpl& cutOut = *piece.impl_;
    if (cutOut.NumKeys() != 0) {
        unsigned int const below = cutOut.NumKeysBelow(from);
        unsigned int const last = std::min(cutOut.NumKeysBelow(to), cutOut.NumKeys() - 1);
        cutOut.FreezeAutomaticKeys(below == 0 ? 0 : below - 1, last);
    }

    HvStdFCurve rest(*this);
    if (!rest.impl_->CutAndClose(from, to, rest)) {
        // A locked key behind the cut stands in the way. The curve keeps its shape and takes over
        // the keys that were frozen for the clipboard.
        ExchangeContents(piece);
        return 0;
    }

    unsigned int const numKeys = cutOut.NumKeys();
    if (numKeys != 0) {
        ClearLocks(cutOut, 0, cutOut.NumKeysBelow(from));
        ClearLocks(cutOut, cutOut.NumKeysNotAbove(to), numKeys);
    }
    piece.RemoveHead(from);
    piece.RemoveTail(to);
    if (!clipboard.Set(piece)) {
        return 0;
    }
    ExchangeContents(rest);
    return 1;
}

int HvStdFCurveImpl::CutAndClose(double from, double to, HvBaseFCurve& curve)
{
    unsigned int a = 0;
    unsigned int b = 0;
    CreateNonModifyingKey(from, a, curve);
    CreateNonModifyingKey(to, b, curve);
    if (a == b) {
        return 1;  // nothing lies between the two
    }
    RemoveBodyBetweenExistingKeys(HvBaseFCurve::ConstantSegment, a, b, curve);
    if (!TranslateParamsAndTgtsAfterExistingKey(a, Parameter(a), from - to, curve) ||
        Parameter(a + 1) != Parameter(a)) {
        return 0;
    }
    CFCStdKey const& moved = keys[a + 1];
    SetRightValue(keys[a], moved.rightValue);
    SetKind(a, SegmentKind(a + 1));
    Point const handle = moved.rightHandle;
    RemoveKeyRange(a + 1, a + 1);
    WriteRightHandle(a, handle);
    ReleaseSpareKeys();
    return 1;
}

int HvStdFCurve::Paste(HvBaseFCurve const& source, double from, double to)
{
    if (&source == this) {
        HvCurveWriter const guard(*this);
        HvStdFCurve const copy(*this);
        return Paste(copy, from, to);
    }
    HvCurveWriter const guard(*this);
    if (source.QueryFCurveKind(Standard) == nullptr || source.GetNumKeys() == 0 ||
        impl_->readOnly || !impl_->CanHoldParameter(from) || !impl_->CanHoldParameter(to) ||
        !(from <= to)) {
        return 0;
    }
    unsigned int const numKeys = impl_->NumKeys();
    if (numKeys != 0 && from <= impl_->LastParameter() &&
        impl_->AreKeysLocked(from, impl_->LastParameter(), 0, 0)) {
        return 0;
    }

    Rollback rollback(*this);
    if (numKeys != 0) {
        unsigned int const belowFrom = impl_->NumKeysBelow(from);
        unsigned int const belowTo = impl_->NumKeysBelow(to);
        if (belowFrom != 0) {
            impl_->FreezeAutomaticKeys(belowFrom - 1, belowFrom - 1);
        }
        if (belowTo != numKeys) {
            impl_->FreezeAutomaticKeys(belowTo, belowTo);
        }
    }
    HvStdFCurve tail(*this);
    ClearLocks(*tail.impl_, 0, tail.impl_->NumKeysBelow(to));
    tail.RemoveHead(to);
    if (!RemoveTail(from) || !Append(source) || !Append(tail)) {
        return 0;
    }
    return rollback.Commit();
}

void HvStdFCurve::ExchangeContents(HvStdFCurve& other) noexcept
{
    impl_->Swap(*other.impl_);
    ExchangeUserData(other);
}
