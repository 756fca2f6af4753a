// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Editing of keys that hold one value. Included by the one source file of each kind that
// instantiates it.

#ifndef HV_FCURVE_INTERNAL_CFCSINGLEVALUEIMPL_INL
#define HV_FCURVE_INTERNAL_CFCSINGLEVALUEIMPL_INL

#include <hv/fcurve/CFCUserDataSet.h>
#include <hv/fcurve/internal/CFCSingleValueImpl.h>
#include <hv/foundation/HvDoubleArray.h>

#include <cmath>

// Making keys.

template <class T, class K, class S>
T CFCSingleValueImpl<T, K, S>::ValueHeldAt(double p) const
{
    unsigned int const n = this->NumKeys();
    if (n == 0) {
        return this->valueWhenNoKeys;
    }
    int exact;
    unsigned int const r = this->LocateParameter(p, exact);
    if (r == 0) {
        return this->LeftValueOf(0);
    }
    return exact || r == n ? this->RightValueOf(r - 1)
                           : static_cast<T>(this->EvalJustAfterIndex(p, r - 1));
}

template <class T, class K, class S>
int CFCSingleValueImpl<T, K, S>::SetValOnExistingKey(unsigned int i, T value)
{
    CFCKeyConstraint const word{this->ConstraintWord(i)};
    if (word.HasAny(CFCKeyConstraint::kValueLocked) && this->keys[i].value != value) {
        return 0;
    }
    this->keys[i].value = value;
    if (i == 0) {
        this->ApplyLeftValue(value);
    }
    return 1;
}

template <class T, class K, class S>
int CFCSingleValueImpl<T, K, S>::CreateKey(double p, T value, HvBaseFCurve& curve)
{
    unsigned int const n = this->NumKeys();
    if (n == 0) {
        this->InsertKey(0, K{p, value, 0}, 0);
        this->valueWhenNoKeys = value;
        this->ApplyLeftValue(value);
        return 1;
    }
    int exact;
    unsigned int const r = this->LocateParameter(p, exact);
    if (exact) {
        CFCKeyConstraint const word{this->ConstraintWord(r - 1)};
        return word.HasAny(CFCKeyConstraint::kValueLocked) ? 0 : SetValOnExistingKey(r - 1, value);
    }
    if (r == n) {
        RemoveTailAndCreateKeyAfterExistingKey(p, value, n - 1, curve);
    } else if (r == 0) {
        RemoveHeadAndCreateKeyBeforeExistingKey(p, value, 0, curve);
    } else {
        RemoveBodyAndCreateKeyBetweenExistingKeys(p, value, r - 1, r, curve);
    }
    return 1;
}

template <class T, class K, class S>
void CFCSingleValueImpl<T, K, S>::CreateNonModifyingKey(double p, unsigned int& index,
                                                        HvBaseFCurve& curve)
{
    unsigned int const n = this->NumKeys();
    if (n == 0) {
        this->InsertKey(0, K{p, this->valueWhenNoKeys, 0}, 0);
        // Without this the curve would change before its new key.
        this->ApplyLeftValue(this->valueWhenNoKeys);
        index = 0;
        return;
    }
    int exact;
    unsigned int const r = this->LocateParameter(p, exact);
    index = exact ? r - 1 : r;
    if (exact) {
        return;
    }
    T const value = ValueHeldAt(p);
    if (r == 0) {
        RemoveHeadAndCreateKeyBeforeExistingKey(p, value, 0, curve);
    } else {
        this->InsertKey(r, K{p, value, 0}, 0);
    }
}

// Merging.

template <class T, class K, class S>
typename CFCSingleValueImpl<T, K, S>::Neighbours
CFCSingleValueImpl<T, K, S>::FindNeighbours(double from, double to, int openAtFrom,
                                            int openAtTo) const
{
    int exact;
    unsigned int const r = this->LocateParameter(from, exact);
    unsigned int const begin = exact && !openAtFrom ? r - 1 : r;
    unsigned int const s = this->LocateParameter(to, exact);
    unsigned int const end = exact && openAtTo ? s - 1 : s;
    return {begin, end, this->NumKeys()};
}

template <class T, class K, class S>
int CFCSingleValueImpl<T, K, S>::MergeAndCreateKey(double from, double to, double p, T value,
                                                   HvBaseFCurve& curve, int openAtFrom,
                                                   int openAtTo, int keepNearest)
{
    if (this->NumKeys() == 0) {
        return CreateKey(p, value, curve);
    }
    Neighbours const stay = FindNeighbours(from, to, openAtFrom, openAtTo);
    // A key on or beyond one that stays would break the order.
    if ((stay.HasPre() && !(p > this->Parameter(stay.Pre()))) ||
        (stay.HasPost() && !(p < this->Parameter(stay.Post())))) {
        return 0;
    }
    if (stay.NumBetween() == 1 && this->Parameter(stay.begin) == p) {
        return CreateKey(p, value, curve);
    }
    unsigned short word = 0;
    CFCUserDataSet data;
    if (keepNearest && stay.NumBetween() != 0) {
        unsigned int const nearest = this->GetNearestKeyIndex(p);
        word = this->ConstraintWord(nearest);
        CFCUserDataSet const* const kept = curve.GetUserDataSet(this->Parameter(nearest));
        if (kept != nullptr) {
            data = *kept;
        }
    }
    unsigned int index = 0;
    if (stay.HasPre() && stay.HasPost()) {
        RemoveBodyAndCreateKeyBetweenExistingKeys(p, value, stay.Pre(), stay.Post(), curve);
        index = stay.begin;
    } else if (stay.HasPre()) {
        RemoveTailAndCreateKeyAfterExistingKey(p, value, stay.Pre(), curve);
        index = stay.begin;
    } else if (stay.HasPost()) {
        RemoveHeadAndCreateKeyBeforeExistingKey(p, value, stay.Post(), curve);
    } else {
        RemoveAllKeysAndCreateNewKey(p, value, curve);
    }
    this->SetConstraintWord(index, word);
    if (!data.IsEmpty()) {
        curve.SetUserDataSet(data, p);
    }
    return 1;
}

// Removing. The user data of a key go before the key.

template <class T, class K, class S>
int CFCSingleValueImpl<T, K, S>::RemoveKey(double p, double tolerance, HvBaseFCurve& curve)
{
    unsigned int i;
    if (!this->FindKey(p, tolerance, i)) {
        return 0;
    }
    unsigned int const last = this->NumKeys() - 1;
    if (last == 0) {
        RemoveAllKeys(curve);
    } else if (i == 0) {
        RemoveHeadBeforeExistingKey(1, curve);
    } else if (i == last) {
        RemoveTailAfterExistingKey(i - 1, curve);
    } else {
        RemoveBodyBetweenExistingKeys(i - 1, i + 1, curve);
    }
    return 1;
}

template <class T, class K, class S>
void CFCSingleValueImpl<T, K, S>::RemoveKeysBetween(double from, double to, int openAtFrom,
                                                    int openAtTo, HvBaseFCurve& curve)
{
    Neighbours const stay = FindNeighbours(from, to, openAtFrom, openAtTo);
    if (stay.HasPre() && stay.HasPost()) {
        RemoveBodyBetweenExistingKeys(stay.Pre(), stay.Post(), curve);
    } else if (stay.HasPre()) {
        RemoveTailAfterExistingKey(stay.Pre(), curve);
    } else if (stay.HasPost()) {
        RemoveHeadBeforeExistingKey(stay.Post(), curve);
    } else {
        RemoveAllKeys(curve);
    }
}

template <class T, class K, class S>
void CFCSingleValueImpl<T, K, S>::RemoveRangeWithUserData(unsigned int first, unsigned int last,
                                                          HvBaseFCurve& curve)
{
    if (curve.HasUserData()) {
        for (unsigned int i = first; i <= last; ++i) {
            curve.RemoveKeyUserData(this->Parameter(i));
        }
    }
    this->RemoveKeyRangeAndSpare(first, last);
}

template <class T, class K, class S>
void CFCSingleValueImpl<T, K, S>::RemoveAllKeys(HvBaseFCurve& curve)
{
    if (this->NumKeys() == 0) {
        return;
    }
    curve.RemoveAllKeyUserData();
    this->ApplyLeftValue(this->valueWhenNoKeys);
    this->RemoveKeyRange(0, this->NumKeys() - 1);
    this->ReleaseSpareKeys();
}

template <class T, class K, class S>
void CFCSingleValueImpl<T, K, S>::RemoveHeadBeforeExistingKey(unsigned int i, HvBaseFCurve& curve)
{
    if (i == 0) {
        return;
    }
    // What the curve was just before the key that becomes the first, it stays.
    T const value = this->keys[i - 1].value;
    RemoveRangeWithUserData(0, i - 1, curve);
    this->ApplyLeftValue(value);
}

template <class T, class K, class S>
void CFCSingleValueImpl<T, K, S>::RemoveTailAfterExistingKey(unsigned int i, HvBaseFCurve& curve)
{
    unsigned int const last = this->NumKeys() - 1;
    if (i < last) {
        RemoveRangeWithUserData(i + 1, last, curve);
    }
}

template <class T, class K, class S>
void CFCSingleValueImpl<T, K, S>::RemoveBodyBetweenExistingKeys(unsigned int i, unsigned int j,
                                                                HvBaseFCurve& curve)
{
    if (i + 1 < j) {
        RemoveRangeWithUserData(i + 1, j - 1, curve);
    }
}

template <class T, class K, class S>
void CFCSingleValueImpl<T, K, S>::RemoveAllKeysAndCreateNewKey(double p, T value,
                                                               HvBaseFCurve& curve)
{
    RemoveAllKeys(curve);
    this->InsertKey(0, K{p, value, 0}, 0);
    this->ApplyLeftValue(value);
    this->valueWhenNoKeys = value;
}

template <class T, class K, class S>
void CFCSingleValueImpl<T, K, S>::RemoveHeadAndCreateKeyBeforeExistingKey(double p, T value,
                                                                          unsigned int i,
                                                                          HvBaseFCurve& curve)
{
    RemoveHeadBeforeExistingKey(i, curve);
    this->InsertKey(0, K{p, value, 0}, 0);
    this->ApplyLeftValue(value);
}

template <class T, class K, class S>
void CFCSingleValueImpl<T, K, S>::RemoveTailAndCreateKeyAfterExistingKey(double p, T value,
                                                                         unsigned int i,
                                                                         HvBaseFCurve& curve)
{
    RemoveTailAfterExistingKey(i, curve);
    this->InsertKey(i + 1, K{p, value, 0}, 0);
}

template <class T, class K, class S>
void CFCSingleValueImpl<T, K, S>::RemoveBodyAndCreateKeyBetweenExistingKeys(double p, T value,
                                                                            unsigned int i,
                                                                            unsigned int j,
                                                                            HvBaseFCurve& curve)
{
    RemoveBodyBetweenExistingKeys(i, j, curve);
    this->InsertKey(i + 1, K{p, value, 0}, 0);
}

// Moving.

template <class T, class K, class S>
int CFCSingleValueImpl<T, K, S>::TranslateParamsAfterExistingKey(unsigned int i,
                                                                 double newParameter, double shift,
                                                                 HvBaseFCurve& curve)
{
    bool const hasUserData = curve.HasUserData() != 0;
    HvDoubleArray from;
    HvDoubleArray to;
    int result = 1;
    for (unsigned int k = i + 1; k < this->NumKeys(); ++k) {
        double const old = this->Parameter(k);
        double moved = k == i + 1 ? newParameter : old + shift;
        if (CFCKeyConstraint{this->ConstraintWord(k)}.HasAny(CFCKeyConstraint::kParameterLocked)) {
            moved = old;
        }
        // The first key may come to stand on its predecessor: a cut makes the two one.
        double const before = this->Parameter(k - 1);
        bool const staysAfter = k == i + 1 ? moved >= before : moved > before;
        if (!staysAfter || !std::isfinite(moved)) {
            result = 0;
            break;
        }
        if (hasUserData && moved != old && curve.HasUserData(old)) {
            from.Add(old);
            to.Add(moved);
        }
        this->keys[k].parameter = moved;
    }
    if (from.Size() != 0 && !curve.MoveKeyUserDataTail(from, to)) {
        return 0;
    }
    return result;
}

template <class T, class K, class S>
int CFCSingleValueImpl<T, K, S>::Cut(double from, double to, HvBaseFCurve& curve)
{
    unsigned int i;
    unsigned int j;
    CreateNonModifyingKey(from, i, curve);
    CreateNonModifyingKey(to, j, curve);
    if (i == j) {
        return 1;
    }
    RemoveBodyBetweenExistingKeys(i, j, curve);
    if (!TranslateParamsAfterExistingKey(i, from, from - to, curve) ||
        !SetValOnExistingKey(i, this->keys[i + 1].value)) {
        return 0;
    }
    // The data of the key that goes have moved onto the one that stays.
    this->RemoveKeyRange(i + 1, i + 1);
    this->ReleaseSpareKeys();
    return 1;
}

template <class T, class K, class S>
int CFCSingleValueImpl<T, K, S>::IsValid() const
{
    return this->HasAscendingParameters();
}

#endif
