// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A growing array of double numbers.

#ifndef HV_FOUNDATION_HVDOUBLEARRAY_H
#define HV_FOUNDATION_HVDOUBLEARRAY_H

#include <hv/foundation/HvTypedArray.h>

extern template class HvTypedArray<double>;

/// A growing array of double numbers.
class HV_API HvDoubleArray : public HvTypedArray<double> {
public:
    using HvTypedArray::HvTypedArray;
};

#endif
