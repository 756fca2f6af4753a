// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Replacing the keys of an interval of the standard curve by one key.

#include <hv/fcurve/HvStdFCurve.h>

#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>
#include <hv/fcurve/internal/HvStdFCurveRollback.h>
#include <hv/fcurve/internal/std_edit_checks.h>

#include <algorithm>

int HvStdFCurveImpl::MergeAndCreateKey(double from, double to, double x, double y, FSKind left,
                                       FSKind right, int openAtFrom, int openAtTo, int keepKeyData,
                                       HvBaseFCurve& curve)
{
    unsigned int const numKeys = NumKeys();
    if (numKeys == 0) {
        return CreateKey(x, y, left, right, curve);
    }
    KeptKeys const kept = FindKeptKeys(from, to, openAtFrom, openAtTo);
    bool const hasBefore = kept.before != 0;
    bool const hasAfter = kept.after != numKeys;
    if ((hasBefore && !(Parameter(kept.before - 1) < x)) ||
        (hasAfter && !(x < Parameter(kept.after)))) {
        return 0;
    }
    FSKind const first = FirstSegmentKind();
    FSKind const newLeft = HvStdEdit_KindOr(left, hasBefore ? SegmentKind(kept.before - 1) : first);
    FSKind const newRight =
        HvStdEdit_KindOr(right, kept.after != 0 ? SegmentKind(kept.after - 1) : first);
    if (kept.after - kept.before == 1 && Parameter(kept.before) == x) {
        return CreateKey(x, y, newLeft, newRight, curve);
    }

    unsigned short const nearestWord = ConstraintWord(GetNearestKeyIndex(x));
    bool made = true;
    if (!hasBefore && !hasAfter) {
        RemoveAllKeysAndCreateNewKey(x, y, newLeft, newRight, curve);
    } else if (!hasBefore) {
        RemoveHeadAndCreateKeyBeforeExistingKey(x, y, newLeft, newRight, kept.after, curve);
    } else if (!hasAfter) {
        RemoveTailAndCreateKeyAfterExistingKey(x, y, newLeft, newRight, kept.before - 1, curve);
    } else {
        made = RemoveBodyAndCreateKeyBetweenExistingKeys(x, y, newLeft, newRight, kept.before - 1,
                                                         kept.after, curve) == 0;
    }
    if (keepKeyData && kept.RemovesAny() && made) {
        SetConstraintWord(kept.before, nearestWord);
    }
    return 1;
}

int HvStdFCurve::MergeAndCreateKey(double from, double to, double x, double y, int openAtFrom,
                                   int openAtTo, int keepKeyData)
{
    return MergeAndCreateKey(from, to, x, y, kHvKeepKind, kHvKeepKind, openAtFrom, openAtTo,
                             keepKeyData);
}

int HvStdFCurve::MergeAndCreateKey(double from, double to, double x, double y, FSKind left,
                                   FSKind right, int openAtFrom, int openAtTo, int keepKeyData)
{
    HvCurveWriter const guard(*this);
    if (impl_->readOnly || !impl_->CanHoldParameter(x) || !HvStdEdit_AreFinite(y) ||
        !HvStdEdit_IsKindOrKeep(left) || !HvStdEdit_IsKindOrKeep(right) ||
        impl_->AreKeysLocked(from, to, openAtFrom, openAtTo)) {
        return 0;
    }
    if (!(from <= to)) {
        return 1;
    }
    bool const carriesUserData = keepKeyData && impl_->NumKeys() != 0 && HasUserData() &&
                                 impl_->FindKeptKeys(from, to, openAtFrom, openAtTo).RemovesAny();
    if (!carriesUserData) {
        return impl_->MergeAndCreateKey(from, to, x, y, left, right, openAtFrom, openAtTo,
                                        keepKeyData, *this);
    }

    // The data of the nearest key go with it, and come back from the copy.
    double const nearest = impl_->Parameter(impl_->GetNearestKeyIndex(x));
    Rollback rollback(*this);
    if (!impl_->MergeAndCreateKey(from, to, x, y, left, right, openAtFrom, openAtTo, keepKeyData,
                                  *this)) {
        return 0;
    }
    int made = 0;
    impl_->LocateParameter(x, made);
    if (made && rollback.Before().HasUserData(nearest)) {
        CopyKeyUserData(rollback.Before(), nearest, x);
    }
    return rollback.Commit();
}

int HvStdFCurve::MergeAndCreateNonModifyingKey(double from, double to, double x, int openAtFrom,
                                               int openAtTo, int keepKeyData,
                                               int ignoreExtrapolation)
{
    HvCurveWriter const guard(*this);
    if (impl_->readOnly || impl_->AreKeysLocked(from, to, openAtFrom, openAtTo)) {
        return 0;
    }
    double low = from;
    double high = to;
    double at = x;
    if (!ignoreExtrapolation && impl_->Cycles()) {
        // The interval moves with its parameter, into the cycle of the keys.
        at = impl_->FoldParameter(x);
        double const shift = at - x;
        low = std::min(from + shift, to + shift);
        high = std::max(from + shift, to + shift);
        at = std::max(low, std::min(high, at));
    }
    return MergeAndCreateKey(low, high, at, impl_->EvalInsideKeys(at), kHvKeepKind, kHvKeepKind,
                             openAtFrom, openAtTo, keepKeyData);
}
