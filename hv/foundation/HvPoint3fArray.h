// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A growing array of points of space in float.

#ifndef HV_FOUNDATION_HVPOINT3FARRAY_H
#define HV_FOUNDATION_HVPOINT3FARRAY_H

#include <hv/foundation/HvPoint3.h>
#include <hv/foundation/HvTypedArray.h>

extern template class HvTypedArray<HvPoint3<float>>;

/// A growing array of points of space in float.
class HV_API HvPoint3fArray : public HvTypedArray<HvPoint3<float>> {
public:
    using HvTypedArray::HvTypedArray;
};

#endif
