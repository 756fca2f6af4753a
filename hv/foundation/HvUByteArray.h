// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A growing array of bytes.

#ifndef HV_FOUNDATION_HVUBYTEARRAY_H
#define HV_FOUNDATION_HVUBYTEARRAY_H

#include <hv/foundation/HvTypedArray.h>

extern template class HvTypedArray<unsigned char>;

/// A growing array of bytes.
class HV_API HvUByteArray : public HvTypedArray<unsigned char> {
public:
    using HvTypedArray::HvTypedArray;
};

#endif
