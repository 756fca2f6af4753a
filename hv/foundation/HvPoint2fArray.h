// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A growing array of points of the plane in float.

#ifndef HV_FOUNDATION_HVPOINT2FARRAY_H
#define HV_FOUNDATION_HVPOINT2FARRAY_H

#include <hv/foundation/HvPoint2.h>
#include <hv/foundation/HvTypedArray.h>

extern template class HvTypedArray<HvPoint2<float>>;

/// A growing array of points of the plane in float.
class HV_API HvPoint2fArray : public HvTypedArray<HvPoint2<float>> {
public:
    using HvTypedArray::HvTypedArray;
};

#endif
