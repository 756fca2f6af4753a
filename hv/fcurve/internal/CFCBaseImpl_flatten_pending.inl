// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Flattening that gives nothing, until CFCBaseImpl_flatten.inl takes this file's place.

#ifndef HV_FCURVE_INTERNAL_CFCBASEIMPL_FLATTEN_PENDING_INL
#define HV_FCURVE_INTERNAL_CFCBASEIMPL_FLATTEN_PENDING_INL

#include <hv/fcurve/internal/CFCBaseImpl.h>

template <class T, class K, class S>
unsigned int CFCBaseImpl<T, K, S>::Flatten(HvTransfo4 const&, double, HvPoint2dArray&,
                                           HvPointTagArray&, int) const
{
    return 0;
}

template <class T, class K, class S>
void CFCBaseImpl<T, K, S>::FlattenFromTo(HvExtent2<double> const&, HvTransfo4 const&, double,
                                         HvPoint2dArray&, HvPointTagArray&, HvBoolArray&) const
{
}

template <class T, class K, class S>
unsigned int CFCBaseImpl<T, K, S>::EvalSequence(double, double, double, double, HvDoubleArray&,
                                                HvDoubleArray&, int) const
{
    return 0;
}

#endif
