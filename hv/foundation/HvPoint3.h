// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Points and vectors of space.

#ifndef HV_FOUNDATION_HVPOINT3_H
#define HV_FOUNDATION_HVPOINT3_H

#include <hv/platform/HvExport.h>

/// A point or vector of space; T is float or double.
template <class T>
struct HV_API_TYPE HvPoint3 {
    T x;  ///< along the first axis
    T y;  ///< along the second axis
    T z;  ///< along the third axis

    /// The origin.
    constexpr HvPoint3() : x(0), y(0), z(0) {}
    /// The point of these coordinates.
    constexpr HvPoint3(T px, T py, T pz) : x(px), y(py), z(pz) {}

    /// Converts each coordinate; from double to float it rounds to nearest.
    template <class U>
    constexpr explicit HvPoint3(HvPoint3<U> const& other)
        : x(static_cast<T>(other.x)), y(static_cast<T>(other.y)), z(static_cast<T>(other.z))
    {
    }

    /// Exact comparison; a NaN coordinate is equal to nothing.
    friend constexpr bool operator==(HvPoint3 const& a, HvPoint3 const& b)
    {
        return a.x == b.x && a.y == b.y && a.z == b.z;
    }
    /// Whether a coordinate differs.
    friend constexpr bool operator!=(HvPoint3 const& a, HvPoint3 const& b) { return !(a == b); }
    /// The sum of each coordinate.
    friend constexpr HvPoint3 operator+(HvPoint3 const& a, HvPoint3 const& b)
    {
        return HvPoint3(a.x + b.x, a.y + b.y, a.z + b.z);
    }
    /// The difference of each coordinate.
    friend constexpr HvPoint3 operator-(HvPoint3 const& a, HvPoint3 const& b)
    {
        return HvPoint3(a.x - b.x, a.y - b.y, a.z - b.z);
    }
    /// The opposite vector.
    friend constexpr HvPoint3 operator-(HvPoint3 const& a) { return HvPoint3(-a.x, -a.y, -a.z); }
    /// Every coordinate times `factor`.
    friend constexpr HvPoint3 operator*(HvPoint3 const& a, T factor)
    {
        return HvPoint3(a.x * factor, a.y * factor, a.z * factor);
    }
};

/// Length of the vector A: by hypot when A.z is 0, otherwise the root of the sum of squares.
HV_API double HvPoint3_Length(HvPoint3<double> const& A);

/// Distance of A and B: by hypot when both z are 0, otherwise the root of the sum of squares.
HV_API double HvPoint3_LengthAB(HvPoint3<double> const& A, HvPoint3<double> const& B);

/// Squared length of the vector A.
HV_API double HvPoint3_SquaredLength(HvPoint3<double> const& A);

/// Squared distance of A and B.
HV_API double HvPoint3_SquaredLengthAB(HvPoint3<double> const& A, HvPoint3<double> const& B);

#endif
