// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A growing array of unsigned short numbers.

#ifndef HV_FOUNDATION_HVUSHORTARRAY_H
#define HV_FOUNDATION_HVUSHORTARRAY_H

#include <hv/foundation/HvTypedArray.h>

extern template class HvTypedArray<unsigned short>;

/// A growing array of unsigned short numbers.
class HV_API HvUShortArray : public HvTypedArray<unsigned short> {
public:
    using HvTypedArray::HvTypedArray;
};

#endif
