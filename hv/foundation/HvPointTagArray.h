// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A growing array of tags of a flattened sequence.

#ifndef HV_FOUNDATION_HVPOINTTAGARRAY_H
#define HV_FOUNDATION_HVPOINTTAGARRAY_H

#include <hv/foundation/HvPointTag.h>
#include <hv/foundation/HvTypedArray.h>

extern template class HvTypedArray<HvPointTag>;

/// A growing array of tags of a flattened sequence.
class HV_API HvPointTagArray : public HvTypedArray<HvPointTag> {
public:
    using HvTypedArray::HvTypedArray;
};

#endif
