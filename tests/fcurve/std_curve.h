// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Standard curves with any keys, jumps and handles, for tests.

#ifndef TESTS_FCURVE_STD_CURVE_H
#define TESTS_FCURVE_STD_CURVE_H

#include <hv/fcurve/HvStdFCurve.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>

#include <cmath>
#include <initializer_list>

/// A key with different values on both sides; handles on the key's sides.
inline CFCStdKey KeyAt(double x, double left, double right, HvBaseFCurve::FSKind kind)
{
    CFCStdKey key(x, left, kind);
    key.rightValue = right;
    key.rightHandle.y = right;
    return key;
}

/// A key without a jump and with handles given as vectors from it.
inline CFCStdKey KeyWithHandles(double x, double y, HvPoint2<double> left, HvPoint2<double> right,
                                HvBaseFCurve::FSKind kind = HvBaseFCurve::CubicSegment)
{
    CFCStdKey key(x, y, kind);
    key.leftHandle = HvPoint2<double>(x, y) + left;
    key.rightHandle = HvPoint2<double>(x, y) + right;
    return key;
}

/// A vector whose squared length is `squared` to the last bit.
inline HvPoint2<double> VectorOfSquaredLength(double squared)
{
    for (double x = 0.1; x > 0.001; x *= 0.99) {
        HvPoint2<double> v(x * std::sqrt(squared), std::sqrt(squared * (1 - x * x)));
        if (v.x * v.x + v.y * v.y == squared) {
            return v;
        }
    }
    return {};
}

/// A standard curve whose implementation a test may reach.
class StdCurve : public HvStdFCurve {
public:
    using HvStdFCurve::HvStdFCurve;

    explicit StdCurve(std::initializer_list<CFCStdKey> keys,
                      HvBaseFCurve::ExtrapolationMethod method = ConstantExtrapolation)
        : HvStdFCurve(0, CubicSegment)
    {
        for (CFCStdKey const& key : keys) {
            impl_->keys.Add(key);
        }
        SetExtrapolationMethod(method);
    }

    HvStdFCurveImpl& Impl() { return *impl_; }
    HvStdFCurveImpl const& Impl() const { return *impl_; }
};

#endif
