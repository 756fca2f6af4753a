// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The numeric vectors.

#include <hv/foundation/HvVectorDouble.h>
#include <hv/foundation/HvVectorLong.h>

#include <hv/foundation/raw_elements.h>

#include <new>
#include <ostream>

unsigned int HvIndexRange_Count(int low, int high)
{
    if (high < low) {
        return 0;
    }
    // One less than the count always fits.
    unsigned int const distance = static_cast<unsigned int>(high) - static_cast<unsigned int>(low);
    return HvArrayCapacity_GrownSize(distance, 1);
}

template <class T>
HvNumericVector<T>::HvNumericVector(int low, int high)
    : low_(low), high_(high),
      elements_(HvElements_Allocate<T>(HvArrayCapacity_GrownSize(HvIndexRange_Count(low, high), 1)))
{
}

template class HvNumericVector<double>;
template class HvNumericVector<int>;

std::ostream& operator<<(std::ostream& stream, HvVectorDouble const& vector)
{
    return stream << "double vector [" << vector.Low() << ".." << vector.High() << "]" << std::endl;
}

std::ostream& operator<<(std::ostream& stream, HvVectorLong const& vector)
{
    return stream << "LONG vector [" << vector.Low() << ".." << vector.High() << "]" << std::endl;
}
