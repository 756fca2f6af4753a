// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A growing array of pointers, not owned.

#ifndef HV_FOUNDATION_HVLPVOIDARRAY_H
#define HV_FOUNDATION_HVLPVOIDARRAY_H

#include <hv/foundation/HvTypedArray.h>

extern template class HvTypedArray<void*>;

/// A growing array of pointers, not owned.
class HV_API HvLPVoidArray : public HvTypedArray<void*> {
public:
    using HvTypedArray::HvTypedArray;
};

#endif
