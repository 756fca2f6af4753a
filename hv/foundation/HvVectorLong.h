// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A row of 32-bit integers with an index range of any bounds.

#ifndef HV_FOUNDATION_HVVECTORLONG_H
#define HV_FOUNDATION_HVVECTORLONG_H

#include <hv/foundation/HvNumericVector.h>

#include <iosfwd>

extern template class HvNumericVector<int>;

/// A row of 32-bit integers with an index range of any bounds.
class HV_API HvVectorLong : public HvNumericVector<int> {
public:
    using HvNumericVector::HvNumericVector;
};

/// Writes the bounds alone, "LONG vector [1..3]", and a line end.
HV_API std::ostream& operator<<(std::ostream& stream, HvVectorLong const& vector);

#endif
