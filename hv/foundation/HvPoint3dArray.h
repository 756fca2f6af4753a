// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A growing array of points of space in double.

#ifndef HV_FOUNDATION_HVPOINT3DARRAY_H
#define HV_FOUNDATION_HVPOINT3DARRAY_H

#include <hv/foundation/HvPoint3.h>
#include <hv/foundation/HvTypedArray.h>

extern template class HvTypedArray<HvPoint3<double>>;

/// A growing array of points of space in double.
class HV_API HvPoint3dArray : public HvTypedArray<HvPoint3<double>> {
public:
    using HvTypedArray::HvTypedArray;
};

#endif
