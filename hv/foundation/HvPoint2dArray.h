// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A growing array of points of the plane in double.

#ifndef HV_FOUNDATION_HVPOINT2DARRAY_H
#define HV_FOUNDATION_HVPOINT2DARRAY_H

#include <hv/foundation/HvPoint2.h>
#include <hv/foundation/HvTypedArray.h>

extern template class HvTypedArray<HvPoint2<double>>;

/// A growing array of points of the plane in double.
class HV_API HvPoint2dArray : public HvTypedArray<HvPoint2<double>> {
public:
    using HvTypedArray::Add;
    using HvTypedArray::HvTypedArray;

    /// Appends the point (x, y).
    void Add(double x, double y) { Add(HvPoint2<double>(x, y)); }
};

#endif
