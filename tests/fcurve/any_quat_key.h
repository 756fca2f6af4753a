// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Keys of rotations for properties.

#ifndef TESTS_FCURVE_ANY_QUAT_KEY_H
#define TESTS_FCURVE_ANY_QUAT_KEY_H

#include "quat_fcurve_support.h"

#include <tests/support/generators.h>

/// A key of any shape, inside of a property.
inline HvQuatKey AnyQuatKey(double time)
{
    auto const degrees = [] { return PickInRange(-400, 401) / 2.0; };
    auto const shape = [] {
        return PickInRange(0, 2) == 0 ? 0.0f : static_cast<float>(PickInRange(-4, 5)) / 4.0f;
    };
    HvQuatKey key = KeyOf(time, degrees(), degrees(), degrees(), PickInRange(-1, 2));
    key.tension = shape();
    key.continuity = shape();
    key.bias = shape();
    return key;
}

#endif
