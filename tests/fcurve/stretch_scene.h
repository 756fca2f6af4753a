// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The curve and the region of the curve stretcher's tests.

#ifndef HV_TESTS_FCURVE_STRETCH_SCENE_H
#define HV_TESTS_FCURVE_STRETCH_SCENE_H

#include "std_edit.h"
#include "stretch_drag.h"

#include <limits>
#include <vector>

using Numbers = std::vector<double>;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// Keys at 0, 10, ... with a tenth of that as value and handles of (3, 1) on both sides.
inline StdCurve Tens(int count = 7)
{
    StdCurve curve{KeyWithHandles(0, 0, {-3, -1}, {3, 1})};
    for (int i = 1; i < count; ++i) {
        curve.Impl().keys.Add(KeyWithHandles(10 * i, i, {-3, -1}, {3, 1}));
    }
    return curve;
}

/// The region from x = 15 to 45 with all values, about its side opposite to the handle.
inline StretchArguments Middle(HvBaseFCurve::RegionHandle handle = kLeftHandle)
{
    StretchArguments arguments;
    arguments.region = HvExtent2<double>(15, -100, 45, 100);
    arguments.pivot = handle == kLeftHandle ? Point(45, 0) : Point(15, 0);
    arguments.handle = handle;
    return arguments;
}

inline Numbers Parameters(HvBaseFCurve const& curve)
{
    HvDoubleArray parameters;
    curve.GetAllKeyParameters(parameters);
    return Numbers(parameters.begin(), parameters.end());
}

inline Numbers Values(HvBaseFCurve const& curve)
{
    Numbers values;
    for (unsigned int i = 0; i < curve.GetNumKeys(); ++i) {
        double left = 0;
        double right = 0;
        curve.GetKeyValuesByIndex(i, left, right);
        values.push_back(right);
    }
    return values;
}

inline Numbers ListOf(HvDoubleArray const& array)
{
    return Numbers(array.begin(), array.end());
}

inline void ExpectVectors(StdCurve const& curve, unsigned int i, Point const& left,
                          Point const& right)
{
    SCOPED_TRACE(testing::Message() << "key " << i);
    ExpectNear(curve.Impl().LeftVector(i), left.x, left.y);
    ExpectNear(curve.Impl().RightVector(i), right.x, right.y);
}

#endif
