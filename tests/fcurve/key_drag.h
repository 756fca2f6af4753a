// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A key mover in few words, and a curve to drag keys of.

#ifndef TESTS_FCURVE_KEY_DRAG_H
#define TESTS_FCURVE_KEY_DRAG_H

#include <hv/fcurve/HvFCurveKeyMover.h>

#include "raw_test_support.h"
#include "std_edit.h"

using Extent = HvExtent2<double>;
using Parameters = std::vector<double>;

/// A mover with one call for a step.
class Drag {
public:
    Drag(HvBaseFCurve& curve, Parameters const& keys, Extent const& limits = Extent(),
         Extent const& movedExtent = Extent())
        : mover(curve, Array(keys), limits, movedExtent)
    {
    }

    int To(double x, double y)
    {
        translation = Point(x, y);
        HvDoubleArray stand;
        invalid = Extent();
        int const result = mover.Update(translation, stand, invalid, moved, -100, 100);
        parameters.assign(stand.begin(), stand.end());
        return result;
    }

    static HvDoubleArray Array(Parameters const& values)
    {
        HvDoubleArray array;
        for (double const value : values) {
            array.Add(value);
        }
        return array;
    }

    HvFCurveKeyMover mover;
    Point translation;
    Parameters parameters;
    Extent invalid;
    Extent moved;
};

inline Parameters ParametersOf(HvBaseFCurve const& curve)
{
    HvDoubleArray parameters;
    curve.GetAllKeyParameters(parameters);
    return Parameters(parameters.begin(), parameters.end());
}

/// Cubic keys at 0, 2, 4, 6, 8 of heights 0, 1, 2, 3, 4, with handles half a unit long.
inline StdCurve Steps()
{
    StdCurve curve({});
    for (int i = 0; i < 5; ++i) {
        curve.Impl().keys.Add(KeyWithHandles(2 * i, i, {-0.5, -0.25}, {0.5, 0.25}));
    }
    return curve;
}

#endif
