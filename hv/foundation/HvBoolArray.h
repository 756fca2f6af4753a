// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A growing array of flags of four bytes, 0 or not 0.

#ifndef HV_FOUNDATION_HVBOOLARRAY_H
#define HV_FOUNDATION_HVBOOLARRAY_H

#include <hv/foundation/HvTypedArray.h>

extern template class HvTypedArray<int>;

/// A growing array of flags of four bytes, 0 or not 0.
class HV_API HvBoolArray : public HvTypedArray<int> {
public:
    using HvTypedArray::HvTypedArray;
};

#endif
