// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A row of double numbers with an index range of any bounds.

#ifndef HV_FOUNDATION_HVVECTORDOUBLE_H
#define HV_FOUNDATION_HVVECTORDOUBLE_H

#include <hv/foundation/HvNumericVector.h>

#include <iosfwd>

extern template class HvNumericVector<double>;

/// A row of double numbers with an index range of any bounds.
class HV_API HvVectorDouble : public HvNumericVector<double> {
public:
    using HvNumericVector::HvNumericVector;
};

/// Writes the bounds alone, "double vector [1..3]", and a line end.
HV_API std::ostream& operator<<(std::ostream& stream, HvVectorDouble const& vector);

#endif
