// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What has to be drawn anew when a key moves: the extents of keys with their neighbours.

#include <hv/fcurve/internal/CFCBaseImpl.h>
#include <hv/foundation/HvExtent2.h>

#include <algorithm>
#include <type_traits>

namespace {

using Extent = HvExtent2<double>;

template <class Store>
void AugmentWithKeys(Store const& store, unsigned int first, unsigned int last, Extent& extent)
{
    for (unsigned int i = first; i <= last; ++i) {
        double const p = store.keys[i].parameter;
        extent.Augment({p, static_cast<double>(store.LeftValueOf(i))});
        extent.Augment({p, static_cast<double>(store.RightValueOf(i))});
        if constexpr (std::is_same<Store, CFCStdStore>::value) {
            extent.Augment(store.keys[i].leftHandle);
            extent.Augment(store.keys[i].rightHandle);
            extent.Augment(store.GetEvaluatedLeftTgt(i));
            extent.Augment(store.GetEvaluatedRightTgt(i));
        }
    }
}

template <class Store>
void AugmentAround(Store const& store, unsigned int i, unsigned int reach, Extent& extent)
{
    unsigned int const last = store.keys.Count() - 1;
    unsigned int const from = i - std::min(i, reach);
    unsigned int const to = i + std::min(last - i, reach);
    AugmentWithKeys(store, from, to, extent);
}

}  // namespace

template <class T, class K, class S>
int CFCBaseImpl<T, K, S>::ComputeKeyExtent(double p, HvExtent2<double>& extent) const
{
    unsigned int i = 0;
    if (FindKey(p, 0, i) == 0) {
        return 0;
    }
    AugmentAround<S>(*this, i, kExtentReach, extent);
    return 1;
}

template <class T, class K, class S>
int CFCBaseImpl<T, K, S>::ComputeNeighboringKeysExtent(double p, HvExtent2<double>& extent) const
{
    if (NumKeys() == 0) {
        return 0;
    }
    int exact = 0;
    unsigned int const located = LocateParameter(p, exact);
    unsigned int const below = located - (exact != 0 ? 1 : 0);
    if (below != 0) {
        AugmentAround<S>(*this, below - 1, kExtentReach, extent);
    }
    if (located < NumKeys()) {
        AugmentAround<S>(*this, located, kExtentReach, extent);
    }
    return below != 0 || located < NumKeys() ? 1 : 0;
}

template <class T, class K, class S>
int CFCBaseImpl<T, K, S>::ComputeAllKeysExtent(HvExtent2<double>& extent) const
{
    if (NumKeys() == 0) {
        return 0;
    }
    AugmentWithKeys<S>(*this, 0, NumKeys() - 1, extent);
    return 1;
}

template <class T, class K, class S>
void CFCBaseImpl<T, K, S>::AugmentByKeys(unsigned int first, unsigned int last,
                                         HvExtent2<double>& extent) const
{
    AugmentWithKeys<S>(*this, first, last, extent);
}

template int CFCBaseImpl<bool, CFCSingleValueKey<bool>, CFCBooleanStore>::ComputeKeyExtent(
    double, HvExtent2<double>&) const;
template int
CFCBaseImpl<bool, CFCSingleValueKey<bool>, CFCBooleanStore>::ComputeNeighboringKeysExtent(
    double, HvExtent2<double>&) const;
template int CFCBaseImpl<bool, CFCSingleValueKey<bool>, CFCBooleanStore>::ComputeAllKeysExtent(
    HvExtent2<double>&) const;
template int CFCBaseImpl<int, CFCSingleValueKey<int>, CFCIntegerStore>::ComputeKeyExtent(
    double, HvExtent2<double>&) const;
template int
CFCBaseImpl<int, CFCSingleValueKey<int>, CFCIntegerStore>::ComputeNeighboringKeysExtent(
    double, HvExtent2<double>&) const;
template int CFCBaseImpl<int, CFCSingleValueKey<int>, CFCIntegerStore>::ComputeAllKeysExtent(
    HvExtent2<double>&) const;
template int CFCBaseImpl<double, CFCSingleValueKey<double>, CFCRawStore>::ComputeKeyExtent(
    double, HvExtent2<double>&) const;
template int
CFCBaseImpl<double, CFCSingleValueKey<double>, CFCRawStore>::ComputeNeighboringKeysExtent(
    double, HvExtent2<double>&) const;
template int CFCBaseImpl<double, CFCSingleValueKey<double>, CFCRawStore>::ComputeAllKeysExtent(
    HvExtent2<double>&) const;
template int
CFCBaseImpl<double, CFCStdKey, CFCStdStore>::ComputeKeyExtent(double, HvExtent2<double>&) const;
template int
CFCBaseImpl<double, CFCStdKey, CFCStdStore>::ComputeNeighboringKeysExtent(double,
                                                                          HvExtent2<double>&) const;
template int
CFCBaseImpl<double, CFCStdKey, CFCStdStore>::ComputeAllKeysExtent(HvExtent2<double>&) const;
template void CFCBaseImpl<bool, CFCSingleValueKey<bool>, CFCBooleanStore>::AugmentByKeys(
    unsigned int, unsigned int, HvExtent2<double>&) const;
template void
CFCBaseImpl<int, CFCSingleValueKey<int>, CFCIntegerStore>::AugmentByKeys(unsigned int, unsigned int,
                                                                         HvExtent2<double>&) const;
template void CFCBaseImpl<double, CFCSingleValueKey<double>, CFCRawStore>::AugmentByKeys(
    unsigned int, unsigned int, HvExtent2<double>&) const;
template void CFCBaseImpl<double, CFCStdKey, CFCStdStore>::AugmentByKeys(unsigned int, unsigned int,
                                                                         HvExtent2<double>&) const;
