// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Points and vectors of space.

#include <hv/foundation/HvPoint3.h>

#include <cmath>

double HvPoint3_Length(HvPoint3<double> const& A)
{
    return A.z == 0.0 ? std::hypot(A.x, A.y) : std::sqrt(HvPoint3_SquaredLength(A));
}

double HvPoint3_LengthAB(HvPoint3<double> const& A, HvPoint3<double> const& B)
{
    return A.z == 0.0 && B.z == 0.0 ? std::hypot(A.x - B.x, A.y - B.y)
                                    : std::sqrt(HvPoint3_SquaredLengthAB(A, B));
}

double HvPoint3_SquaredLength(HvPoint3<double> const& A)
{
    return A.x * A.x + A.y * A.y + A.z * A.z;
}

double HvPoint3_SquaredLengthAB(HvPoint3<double> const& A, HvPoint3<double> const& B)
{
    return HvPoint3_SquaredLength(A - B);
}
