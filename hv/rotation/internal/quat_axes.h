// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The six orders of rotation as data.

#ifndef HV_ROTATION_INTERNAL_QUAT_AXES_H
#define HV_ROTATION_INTERNAL_QUAT_AXES_H

#include <hv/rotation/HvQuat.h>

/// The axes of an order, 0 = x, 1 = y, 2 = z, as they act on a point.
struct HvQuatAxes {
    int first;
    int second;
    int third;
    double parity;  ///< 1 when first, second, third are x, y, z or turned round from it, else -1
};

constexpr HvQuatAxes kQuatAxes[6] = {{0, 1, 2, 1.0}, {0, 2, 1, -1.0}, {1, 0, 2, -1.0},
                                     {1, 2, 0, 1.0}, {2, 0, 1, 1.0},  {2, 1, 0, -1.0}};

/// Whether a number, perhaps from a file, is one of the six orders.
constexpr bool HvQuat_IsOrder(HvQuat::RotOrder order)
{
    return order >= HvQuat::XYZ && order <= HvQuat::ZYX;
}

#endif
