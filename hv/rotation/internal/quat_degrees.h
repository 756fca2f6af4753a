// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// One member of a triple of angles in degrees, as the quaternion curve shows it.

#ifndef HV_ROTATION_INTERNAL_QUAT_DEGREES_H
#define HV_ROTATION_INTERNAL_QUAT_DEGREES_H

#include <hv/foundation/HvPoint3.h>

/// Radians in a degree. The doubles nearest to pi / 180 and 180 / pi; the transform's differ.
constexpr double kQuatRadiansPerDegree = 0.017453292519943295;
/// Degrees in a radian.
constexpr double kQuatDegreesPerRadian = 57.29577951308232;

/// Component 0 = x, 1 = y, and z for all others.
inline double HvQuatDegrees_Get(HvPoint3<double> const& angles, unsigned int component)
{
    double const radians = component == 0 ? angles.x : (component == 1 ? angles.y : angles.z);
    return radians * kQuatDegreesPerRadian;
}

/// `angles` with component 0 = x, 1 = y, 2 = z replaced; as they are for all others.
inline HvPoint3<double> HvQuatDegrees_With(HvPoint3<double> angles, unsigned int component,
                                           double degrees)
{
    double const radians = degrees * kQuatRadiansPerDegree;
    if (component == 0) {
        angles.x = radians;
    } else if (component == 1) {
        angles.y = radians;
    } else if (component == 2) {
        angles.z = radians;
    }
    return angles;
}

#endif
