// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Slots of both stepped kinds whose bodies land with their topics; each leaves this file when its
// own arrives.

#ifndef HV_FCURVE_INTERNAL_HVSTEPPEDFCURVE_PENDING_INL
#define HV_FCURVE_INTERNAL_HVSTEPPEDFCURVE_PENDING_INL

#include <hv/fcurve/HvSteppedFCurve.h>

template <class T>
int HvSteppedFCurve<T>::ScaleAndOffsetParameters(double, double, double, double, double, int, int,
                                                 RegionHandle, int)
{
    return 0;
}
template <class T>
int HvSteppedFCurve<T>::ResampleSequence(double, double, double, int, int)
{
    return 0;
}
template <class T>
unsigned int HvSteppedFCurve<T>::ReduceNumKeys(double, double, double)
{
    return 0;
}

#endif
