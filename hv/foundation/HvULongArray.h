// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A growing array of unsigned long numbers.

#ifndef HV_FOUNDATION_HVULONGARRAY_H
#define HV_FOUNDATION_HVULONGARRAY_H

#include <hv/foundation/HvTypedArray.h>

extern template class HvTypedArray<unsigned long>;

/// A growing array of unsigned long numbers.
class HV_API HvULongArray : public HvTypedArray<unsigned long> {
public:
    using HvTypedArray::HvTypedArray;
};

#endif
