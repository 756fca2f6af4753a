// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A growing array of float numbers.

#ifndef HV_FOUNDATION_HVFLOATARRAY_H
#define HV_FOUNDATION_HVFLOATARRAY_H

#include <hv/foundation/HvTypedArray.h>

extern template class HvTypedArray<float>;

/// A growing array of float numbers.
class HV_API HvFloatArray : public HvTypedArray<float> {
public:
    using HvTypedArray::HvTypedArray;
};

#endif
