// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What the sources share about angles. The constants are those of the transform, and not the
// doubles nearest to their names: its results have always been computed with these digits, and
// files and pictures depend on them to the last bit.

#ifndef HV_ROTATION_INTERNAL_TRANSFO_ANGLES_H
#define HV_ROTATION_INTERNAL_TRANSFO_ANGLES_H

/// Radians in a degree.
constexpr double kTransfoRadiansPerDegree = 0.017453292519943278;
/// Degrees in a radian: 180 over kTransfoPi, so that the straight angle gives 180 exactly.
constexpr double kTransfoDegreesPerRadian = 57.29577951308238;
/// Half a turn, in fifteen digits.
constexpr double kTransfoPi = 3.14159265358979;
/// A full turn.
constexpr double kTransfoTwoPi = 6.28318530717958;

/// `value` cut to -1 .. 1, so that rounding never leaves the domain of acos and asin; NaN stays.
constexpr double HvTransfo_ClampToUnit(double value)
{
    return value < -1.0 ? -1.0 : (value > 1.0 ? 1.0 : value);
}

#endif
