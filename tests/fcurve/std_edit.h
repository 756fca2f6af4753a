// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Helpers for the tests of editing standard curves.

#ifndef TESTS_FCURVE_STD_EDIT_H
#define TESTS_FCURVE_STD_EDIT_H

#include "std_curve.h"
#include "user_data_samples.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <string>
#include <vector>

using Point = HvPoint2<double>;
using FSKind = HvBaseFCurve::FSKind;
using Word = CFCKeyConstraint;

constexpr FSKind kConstant = HvBaseFCurve::ConstantSegment;
constexpr FSKind kLinear = HvBaseFCurve::LinearSegment;
constexpr FSKind kCubic = HvBaseFCurve::CubicSegment;
constexpr FSKind kKeep = static_cast<FSKind>(0);
constexpr HvBaseFCurve::KeySide kLeft = HvBaseFCurve::Left;
constexpr HvBaseFCurve::KeySide kRight = HvBaseFCurve::Right;

/// A third of a small span is not exact, nor is what is computed from it: a few units in the last
/// place of numbers below 100.
constexpr double kRounding = 1e-13;
/// Values behind the solver of curve parameters, which stops within 1e-9 of the segment; the curves
/// here are less than 10 high and their y(t) not steeper than 100.
constexpr double kSolver = 1e-7;

/// Everything that a standard curve holds, exactly: stored handles, words, fields, user data.
inline std::string StdImage(StdCurve const& curve)
{
    HvStdFCurveImpl const& impl = curve.Impl();
    std::string image;
    auto const add = [&image](double value) {
        char text[40];
        std::snprintf(text, sizeof text, " %a", value);
        image += text;
    };
    for (double const field :
         {impl.valueWhenNoKeys, impl.lowerClamp, impl.upperClamp, double(impl.defaultSegmentKind),
          double(impl.extrapolation), double(impl.defaultBezierTangentConstraint),
          double(impl.readOnly), double(impl.timeCurve), double(impl.selected)}) {
        add(field);
    }
    for (CFCStdKey const& key : impl.keys) {
        image += "\n";
        for (double const field :
             {key.parameter, key.leftValue, key.rightValue, key.leftHandle.x, key.leftHandle.y,
              key.rightHandle.x, key.rightHandle.y, double(key.segmentKind),
              double(key.constraints.word), double(key.privateByte1), double(key.privateByte2)}) {
            add(field);
        }
    }
    std::vector<unsigned char> data(curve.GetUserDataBufferSize());
    curve.WriteUserDataToBuffer(data.data());
    image += "\n" + std::string(data.begin(), data.end());
    return image;
}

/// Whether every cubic segment runs forward over the handles that it really uses.
inline bool EverySegmentRunsForward(StdCurve const& curve)
{
    HvStdFCurveImpl const& impl = curve.Impl();
    for (unsigned int i = 0; i + 1 < impl.NumKeys(); ++i) {
        Point P[4];
        impl.BezierCubicSetupUsingEvaluatedTangents(i, i + 1, P);
        if (!HvStdFCurve_IsCubicSegmentValid(P[0], P[1], P[2], P[3])) {
            return false;
        }
    }
    return true;
}

/// The largest difference of two curves over [from, to], also just beside and at their keys.
inline double LargestDifference(HvStdFCurve const& a, HvStdFCurve const& b, double from, double to)
{
    constexpr int kSamples = 200;
    double largest = 0;
    for (int k = 0; k <= kSamples; ++k) {
        double const x = from + (to - from) * k / kSamples;
        largest = std::max(largest, std::fabs(a.Eval(x, 0) - b.Eval(x, 0)));
    }
    return largest;
}

inline void ExpectNear(Point const& actual, double x, double y, double tolerance = kRounding)
{
    EXPECT_NEAR(actual.x, x, tolerance);
    EXPECT_NEAR(actual.y, y, tolerance);
}

/// Expects that a property holds in every case that RapidCheck tries.
template <class Property>
void ExpectProperty(char const* sentence, Property property)
{
    EXPECT_TRUE(rc::check(sentence, property));
}

/// Expects that `edit` gives 0 and changes nothing of `curve`.
template <class Edit>
void ExpectRefused(StdCurve& curve, Edit edit)
{
    std::string const before = StdImage(curve);
    EXPECT_EQ(edit(), 0);
    EXPECT_EQ(StdImage(curve), before);
}

/// The same of an edit of a curve that is read-only.
template <class Edit>
void ExpectRefusedWhenReadOnly(StdCurve& curve, Edit edit)
{
    curve.SetReadOnlyConstraint(1);
    ExpectRefused(curve, edit);
    curve.SetReadOnlyConstraint(0);
}

inline void Lock(StdCurve& curve, unsigned int i, unsigned short bits)
{
    curve.Impl().keys[i].constraints.Set(bits);
}

/// Numbers that no curve can store.
inline std::vector<double> NonFinite()
{
    double const infinity = std::numeric_limits<double>::infinity();
    return {std::numeric_limits<double>::quiet_NaN(), infinity, -infinity};
}

/// A cubic from (0, 0) to (3, 3) whose handles stand at the thirds, so that x(t) = 3t.
inline StdCurve ThirdsCubic()
{
    return StdCurve(
        {KeyWithHandles(0, 0, {-1, 0}, {1, 2}), KeyWithHandles(3, 3, {-1, -2}, {1, 0})});
}

/// Five keys with jumps, locks of none, every kind of segment and crossing handles.
inline StdCurve MixedCurve()
{
    StdCurve curve({KeyWithHandles(0, 0, {-1, 0}, {1, 1}), KeyAt(2, 1, 3, kLinear),
                    KeyAt(3, 2, 2, kConstant), KeyWithHandles(5, 4, {-0.5, 0.25}, {1.5, -3}),
                    KeyWithHandles(8, 1, {-2.25, 1}, {1, 1})});
    return curve;
}

#endif
