// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A flattened curve in one value, and the implementations it comes from.

#ifndef TESTS_FCURVE_FLATTENED_H
#define TESTS_FCURVE_FLATTENED_H

#include <hv/fcurve/internal/HvStdFCurveImpl.h>
#include <hv/foundation/HvBoolArray.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/rotation/HvTransfo4.h>

#include <gtest/gtest.h>

#include <ostream>
#include <vector>

struct Flattened {
    std::vector<HvPoint2<double>> points;
    std::vector<int> tags;
    std::vector<int> flags;

    friend bool operator==(Flattened const& a, Flattened const& b)
    {
        return a.points == b.points && a.tags == b.tags && a.flags == b.flags;
    }
    friend std::ostream& operator<<(std::ostream& stream, Flattened const& f)
    {
        for (auto const& p : f.points) {
            stream << '(' << p.x << ',' << p.y << ')';
        }
        stream << " tags";
        for (int tag : f.tags) {
            stream << ' ' << tag;
        }
        stream << " flags";
        for (int flag : f.flags) {
            stream << ' ' << flag;
        }
        return stream;
    }
};

/// The three arrays of a FlattenFromTo.
struct FlattenArrays {
    HvPoint2dArray points;
    HvPointTagArray tags;
    HvBoolArray flags;

    Flattened Get() const
    {
        Flattened f;
        f.points.assign(points.begin(), points.end());
        f.tags.assign(tags.begin(), tags.end());
        f.flags.assign(flags.begin(), flags.end());
        return f;
    }
};

constexpr double kTestTolerance = 0.01;

/// FlattenFromTo over [from, to] x [low, high].
template <class Impl>
Flattened FromTo(Impl const& impl, double from, double to, double low = -100, double high = 100,
                 HvTransfo4 const& transfo = HvTransfo4())
{
    FlattenArrays out;
    impl.FlattenFromTo(HvExtent2<double>(from, low, to, high), transfo, kTestTolerance, out.points,
                       out.tags, out.flags);
    return out.Get();
}

/// Flatten; no flags.
template <class Impl>
Flattened Whole(Impl const& impl, int clamp = 0, HvTransfo4 const& transfo = HvTransfo4())
{
    FlattenArrays out;
    unsigned int const count = impl.Flatten(transfo, kTestTolerance, out.points, out.tags, clamp);
    EXPECT_EQ(count, out.points.Size());
    return out.Get();
}

/// One key of a standard curve.
struct StdKey {
    HvBaseFCurve::FSKind kind;
    double x;
    double left;
    double right;
};

constexpr HvBaseFCurve::FSKind kConstant = HvBaseFCurve::ConstantSegment;
constexpr HvBaseFCurve::FSKind kLinear = HvBaseFCurve::LinearSegment;
constexpr HvBaseFCurve::FSKind kCubic = HvBaseFCurve::CubicSegment;

/// A standard curve whose handles stand on the chords, at thirds.
inline HvStdFCurveImpl MakeStd(std::vector<StdKey> const& keys, int extrapolation = 1)
{
    HvStdFCurveImpl impl(0, kLinear);
    impl.extrapolation = static_cast<unsigned char>(extrapolation);
    for (std::size_t i = 0; i < keys.size(); ++i) {
        CFCStdKey key(keys[i].x, 0, keys[i].kind);
        key.leftValue = keys[i].left;
        key.rightValue = keys[i].right;
        key.leftHandle = {key.parameter, key.leftValue};
        key.rightHandle = {key.parameter, key.rightValue};
        if (i != 0) {
            double const third = (keys[i].x - keys[i - 1].x) / 3;
            double const rise = (keys[i].left - keys[i - 1].right) / 3;
            key.leftHandle = {keys[i].x - third, keys[i].left - rise};
        }
        if (i + 1 < keys.size()) {
            double const third = (keys[i + 1].x - keys[i].x) / 3;
            double const rise = (keys[i + 1].left - keys[i].right) / 3;
            key.rightHandle = {keys[i].x + third, keys[i].right + rise};
        }
        impl.keys.Add(key);
    }
    return impl;
}

#endif
