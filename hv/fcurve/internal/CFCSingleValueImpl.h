// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Editing of curves whose keys hold one value: boolean, integer and raw.

#ifndef HV_FCURVE_INTERNAL_CFCSINGLEVALUEIMPL_H
#define HV_FCURVE_INTERNAL_CFCSINGLEVALUEIMPL_H

#include <hv/fcurve/internal/CFCBaseImpl.h>

/// The operations that change keys take the curve that owns the implementation, because the user
/// data of keys that go or move go or move with them. Indices are below the number of keys.
template <class T, class K, class S>
class CFCSingleValueImpl : public CFCBaseImpl<T, K, S> {
public:
    using Key = K;

    using CFCBaseImpl<T, K, S>::CFCBaseImpl;

    /// The value at p without extrapolation: that of an end key is held beyond it.
    T ValueHeldAt(double p) const;
    /// 0 when the value is locked and differs.
    int SetValOnExistingKey(unsigned int i, T value);
    int CreateKey(double p, T value, HvBaseFCurve& curve);
    /// Creates a key that leaves the curve as it is, or finds the one there, and reports its index.
    void CreateNonModifyingKey(double p, unsigned int& index, HvBaseFCurve& curve);
    int MergeAndCreateKey(double from, double to, double p, T value, HvBaseFCurve& curve,
                          int openAtFrom, int openAtTo, int keepNearest);
    int RemoveKey(double p, double tolerance, HvBaseFCurve& curve);
    /// Removes the keys of an interval.
    void RemoveKeysBetween(double from, double to, int openAtFrom, int openAtTo,
                           HvBaseFCurve& curve);

    void RemoveAllKeys(HvBaseFCurve& curve);
    void RemoveHeadBeforeExistingKey(unsigned int i, HvBaseFCurve& curve);
    void RemoveTailAfterExistingKey(unsigned int i, HvBaseFCurve& curve);
    void RemoveBodyBetweenExistingKeys(unsigned int i, unsigned int j, HvBaseFCurve& curve);
    void RemoveAllKeysAndCreateNewKey(double p, T value, HvBaseFCurve& curve);
    void RemoveHeadAndCreateKeyBeforeExistingKey(double p, T value, unsigned int i,
                                                 HvBaseFCurve& curve);
    void RemoveTailAndCreateKeyAfterExistingKey(double p, T value, unsigned int i,
                                                HvBaseFCurve& curve);
    void RemoveBodyAndCreateKeyBetweenExistingKeys(double p, T value, unsigned int i,
                                                   unsigned int j, HvBaseFCurve& curve);
    /// Moves key i+1 to `newParameter` and each later key by `shift`; 0, with the earlier moves
    /// standing, at the first that would not stay after its predecessor.
    int TranslateParamsAfterExistingKey(unsigned int i, double newParameter, double shift,
                                        HvBaseFCurve& curve);
    /// Takes out what lies between `from` and `to`, from <= to, and closes the gap; 0, with the
    /// curve half changed, when a lock stands in the way.
    int Cut(double from, double to, HvBaseFCurve& curve);
    int IsValid() const;

    /// Keys at `from`, each `step` on and at `to` with the values that the curve has there; keys
    /// between them go unless `keepExisting`. 0, with the keys as they were, for an interval or a
    /// step that gives none, and when a value would not be finite. Throws std::bad_alloc before it
    /// starts when there are more samples than an array holds. Cost: one pass.
    int ResampleSequence(double from, double to, double step, int keepExisting,
                         HvBaseFCurve& curve);
    /// Makes keys at both ends and drops those between that add less than `tolerance` times the
    /// range of the values: of a polyline those that lie on lines, of a stepped curve those whose
    /// step is that small. Returns by how much the number of keys fell. Cost: one pass.
    unsigned int ReduceNumKeys(double from, double to, double tolerance, HvBaseFCurve& curve);

private:
    /// The keys of an interval, begin to end - 1, and the keys beside it, which stay.
    struct Neighbours {
        unsigned int begin;
        unsigned int end;
        unsigned int numKeys;

        bool HasPre() const { return begin != 0; }
        unsigned int Pre() const { return begin - 1; }
        bool HasPost() const { return end != numKeys; }
        unsigned int Post() const { return end; }
        unsigned int NumBetween() const { return end > begin ? end - begin : 0; }
    };

    Neighbours FindNeighbours(double from, double to, int openAtFrom, int openAtTo) const;
    void RemoveRangeWithUserData(unsigned int first, unsigned int last, HvBaseFCurve& curve);
};

using CFCBooleanImpl = CFCSingleValueImpl<bool, CFCSingleValueKey<bool>, CFCBooleanStore>;
using CFCIntegerImpl = CFCSingleValueImpl<int, CFCSingleValueKey<int>, CFCIntegerStore>;

#endif
