// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Slots of both stepped kinds whose bodies land with their topics; each leaves this file when its
// own arrives.

#ifndef HV_FCURVE_INTERNAL_HVSTEPPEDFCURVE_PENDING_INL
#define HV_FCURVE_INTERNAL_HVSTEPPEDFCURVE_PENDING_INL

#include <hv/fcurve/HvSteppedFCurve.h>

template <class T>
unsigned int HvSteppedFCurve<T>::GetBufferSize() const
{
    return 0;
}
template <class T>
unsigned int HvSteppedFCurve<T>::WriteToBuffer(void*) const
{
    return 0;
}
template <class T>
unsigned int HvSteppedFCurve<T>::ReadFromBufferBody(void const*)
{
    return 0;
}

#endif
