// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What the tests of the quaternion curve kind share.

#ifndef TESTS_FCURVE_QUAT_FCURVE_SUPPORT_H
#define TESTS_FCURVE_QUAT_FCURVE_SUPPORT_H

#include "user_data_samples.h"

#include <hv/fcurve/HvQuatFCurve.h>
#include <hv/foundation/HvDoubleArray.h>
#include <hv/rotation/HvQuatCurve.h>
#include <hv/rotation/HvQuatCurveLock.h>
#include <tests/support/curve_image.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

constexpr double kDegree = 0.017453292519943295;
/// An angle goes to radians and back with an error of a few units in the last place.
constexpr double kRoundTrip = 1e-12;

/// The three components of one rotation.
struct Trio {
    HvQuatCurve* curve = new HvQuatCurve;
    std::unique_ptr<HvQuatFCurve> x = std::make_unique<HvQuatFCurve>(curve, 0u);
    std::unique_ptr<HvQuatFCurve> y = std::make_unique<HvQuatFCurve>(curve, 1u);
    std::unique_ptr<HvQuatFCurve> z = std::make_unique<HvQuatFCurve>(curve, 2u);
};

inline HvQuatKey KeyOf(double time, double x, double y, double z, int spins = 0)
{
    HvPoint3<double> const angles(x * kDegree, y * kDegree, z * kDegree);
    return HvQuatKey(time, angles, 0.0f, 0.0f, 0.0f, spins);
}

/// Keys at 1, 2, 4 and 5, with user data of the y component on 1 and 4.
inline Trio MakeTrio()
{
    Trio trio;
    trio.curve->SetKey(KeyOf(1, 10, -20, 30), 0.0);
    trio.curve->SetKey(KeyOf(2, 40, 15, 60), 0.0);
    trio.curve->SetKey(KeyOf(4, -30, 35, 200), 0.0);
    trio.curve->SetKey(KeyOf(5, 20, 5, 120), 0.0);
    trio.y->SetUserDataSet(SetOf(1, "one"), 1);
    trio.y->SetUserDataSet(SetOf(1, "four"), 4);
    return trio;
}

inline std::vector<double> TimesOf(HvBaseFCurve const& curve)
{
    std::vector<double> times;
    for (unsigned int i = 0; i < curve.GetNumKeys(); ++i) {
        double t = 0;
        curve.GetKeyParameter(i, t);
        times.push_back(t);
    }
    return times;
}

inline std::vector<double> ValuesOf(HvBaseFCurve const& curve)
{
    std::vector<double> values;
    for (unsigned int i = 0; i < curve.GetNumKeys(); ++i) {
        double left = 0;
        double right = 0;
        curve.GetKeyValuesByIndex(i, left, right);
        EXPECT_EQ(left, right);
        values.push_back(right);
    }
    return values;
}

inline void ExpectNear(std::vector<double> const& got, std::vector<double> const& expected,
                       double tolerance = kRoundTrip)
{
    ASSERT_EQ(got.size(), expected.size());
    for (std::size_t i = 0; i < got.size(); ++i) {
        EXPECT_NEAR(got[i], expected[i], tolerance) << "at " << i;
    }
}

/// Everything of a rotation and of the curve that shows it, as bytes.
inline std::string QuatImage(HvQuatFCurve const& curve)
{
    std::string image = CurveImage(curve);
    HvQuatCurve const& quat = *curve.GetQuatCurve();
    auto const add = [&](char const* name, double value) {
        CurveImage_AddNumber(image, name, value);
    };
    add("component", curve.GetComponent());
    add("order", quat.GetRotOrder());
    for (unsigned int i = 0; i < quat.GetNumKeys(); ++i) {
        HvQuatKey const key = quat.GetKey(i);
        image += "\n";
        for (double const number :
             {key.time, key.angles.x, key.angles.y, key.angles.z, double(key.tension),
              double(key.continuity), double(key.bias), double(key.spins)}) {
            add("", number);
        }
    }
    return image;
}

#endif
