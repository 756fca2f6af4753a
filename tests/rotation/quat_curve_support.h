// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What the tests of the quaternion curve share.

#ifndef HV_TESTS_ROTATION_QUAT_CURVE_SUPPORT_H
#define HV_TESTS_ROTATION_QUAT_CURVE_SUPPORT_H

#include "long_quat.h"

#include <hv/rotation/HvQuatCurve.h>
#include <hv/rotation/HvQuatSpline.h>

#include <gtest/gtest.h>

#include <vector>

using Angles = HvPoint3<double>;

constexpr unsigned int kNoKey = 0xFFFFFFFFu;

/// Sets keys of three angles that depend on the time.
inline void AddKeys(HvQuatCurve& curve, std::vector<double> const& times)
{
    for (double t : times) {
        curve.SetKey(t, Angles(t * 0.1, std::sin(t), 0.2 - t * t * 0.01), 0.0);
    }
}

inline HvQuatCurve CurveOf(std::vector<double> const& times)
{
    HvQuatCurve curve;
    AddKeys(curve, times);
    return curve;
}

/// Whether the curve has no spline: whether an Eval makes one. Leaves the curve with one.
inline bool WasStale(HvQuatCurve& curve)
{
    unsigned long const before = curve.GetDynamicMemSize();
    curve.Eval(123.25);
    unsigned long const spline =
        sizeof(HvQuatSpline) + (curve.GetNumKeys() - 1) * sizeof(HvQuatSpline::Segment);
    unsigned long const grown = curve.GetDynamicMemSize() - before;
    EXPECT_TRUE(grown == 0 || grown == spline) << grown;
    return grown != 0;
}

/// All keys of a curve; their comparison looks at the locks and not at the selection.
inline std::vector<HvQuatKey> KeysOf(HvQuatCurve const& curve)
{
    std::vector<HvQuatKey> keys;
    for (unsigned int i = 0; i < curve.GetNumKeys(); ++i) {
        keys.push_back(curve.GetKey(i));
    }
    return keys;
}

inline double Distance(Angles const& a, Angles const& b)
{
    return HvPoint3_LengthAB(a, b);
}

#endif
