// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What the two numeric vectors share.

#ifndef HV_FOUNDATION_HVNUMERICVECTOR_H
#define HV_FOUNDATION_HVNUMERICVECTOR_H

#include <hv/foundation/HvMemory.h>
#include <hv/platform/HvExport.h>

#include <cstddef>

/// How many whole numbers lie from `low` to `high`, 0 when high < low. Throws std::bad_alloc for
/// more than an array holds.
HV_API unsigned int HvIndexRange_Count(int low, int high);

/// A row of numbers with an index range of any bounds: the shape behind HvVectorDouble and
/// HvVectorLong, which are classes of their own so that a host can declare them in advance.
///
/// The block has one element more than the range. No index is checked. Not thread-safe.
template <class T>
class HV_API HvNumericVector {
public:
    /// Zeros for the indices `low` to `high`; none when high < low. Throws std::bad_alloc, also for
    /// more elements than an array holds.
    HvNumericVector(int low, int high);
    ~HvNumericVector()
    {
        HvFree(elements_);
        elements_ = nullptr;
    }
    HvNumericVector(HvNumericVector const&) = delete;
    HvNumericVector& operator=(HvNumericVector const&) = delete;

    /// The index of the first element.
    int Low() const { return low_; }
    /// The index of the last element.
    int High() const { return high_; }
    /// The element of index i, from Low() to High().
    T& operator[](int i) { return elements_[static_cast<std::ptrdiff_t>(i) - low_]; }
    /// The element of index i, from Low() to High().
    T const& operator[](int i) const { return elements_[static_cast<std::ptrdiff_t>(i) - low_]; }

private:
    int low_;
    int high_;
    T* elements_;
};

#endif
