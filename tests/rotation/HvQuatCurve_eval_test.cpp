// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Evaluation of a quaternion curve, its spline and its last result.

#include "../support/allocation_failure.h"
#include "quat_curve_support.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <functional>

namespace {

/// Keys about x alone, in degrees.
HvQuatCurve XCurve(std::vector<std::pair<double, double>> const& keys)
{
    HvQuatCurve curve;
    for (auto const& [t, degrees] : keys) {
        curve.SetKey(t, Angles(degrees * kDegree, 0, 0), 0);
    }
    return curve;
}

}  // namespace

TEST(HvQuatCurve_eval, NoKeysAndOneKey)
{
    HvQuatCurve curve;
    curve.SetValueWhenNoKeys(Angles(0.1, 7, -9));
    EXPECT_EQ(curve.Eval(3), Angles(0.1, 7, -9));
    EXPECT_DOUBLE_EQ(curve.Eval(3, 1), 7 / kDegree);
    curve.SetKey(5, Angles(1, 20, -30), 0);
    for (double t : {-1e300, 5.0, 6.0, kInfinity, kNaN}) {
        EXPECT_EQ(curve.Eval(t), Angles(1, 20, -30));
    }
    EXPECT_DOUBLE_EQ(curve.Eval(0, 2), -30 / kDegree);
    EXPECT_DOUBLE_EQ(curve.Eval(0, 3), -30 / kDegree);
}

TEST(HvQuatCurve_eval, TwoKeysTurnWithConstantVelocity)
{
    HvQuatCurve const curve = XCurve({{0, 10}, {4, 130}});
    for (double t = 0; t <= 4; t += 0.125) {
        EXPECT_NEAR(curve.Eval(t, 0), 10 + 30 * t, 1e-12);
        EXPECT_NEAR(curve.Eval(t, 1), 0, 1e-12);
        EXPECT_NEAR(curve.Eval(t, 2), 0, 1e-12);
    }
}

TEST(HvQuatCurve_eval, WindingOfTheKeysIsKept)
{
    // Two turns are no rotation on the sphere; the angles still go from one key to the other.
    HvQuatCurve const curve = XCurve({{0, 0}, {1, 720}});
    EXPECT_NEAR(curve.Eval(0, 0), 0, 1e-12);
    EXPECT_NEAR(curve.Eval(1, 0), 720, 1e-12);
    double previous = 0;
    for (double t = 0.0625; t < 1; t += 0.0625) {
        double const x = curve.Eval(t, 0);
        // Some whole number of turns, half a turn around the line at most.
        EXPECT_NEAR(x, 720 * t, 180 + 1e-9);
        EXPECT_NEAR(std::remainder(x, 360), 0, 1e-9);
        EXPECT_GE(x, previous - 1e-9);
        previous = x;
    }
    EXPECT_NEAR(curve.Eval(0.5, 0), 360, 1e-9);

    HvQuatCurve const slow = XCurve({{0, 0}, {1, 720 + 90}});
    for (double t = 0; t <= 1; t += 0.125) {
        EXPECT_NEAR(slow.Eval(t, 0), (720 + 90) * t, 180);
    }
}

TEST(HvQuatCurve_eval, OutsideTheWindingIsThatOfTheEndKeys)
{
    HvQuatCurve curve = XCurve({{0, 370}, {1, 720}});
    EXPECT_NEAR(curve.Eval(-1, 0), 370, 1e-12);
    EXPECT_NEAR(curve.Eval(9, 0), 720, 1e-12);
    curve.SetExtrapolationMethod(HvQuatSpline::CycleExtrapolation);
    // From 370 it turns back by 10 to 360, nearest to 370 before and to 720 after.
    EXPECT_NEAR(curve.Eval(-0.5, 0), 365, 1e-9);
    EXPECT_NEAR(curve.Eval(1.5, 0), 725, 1e-9);
}

RC_GTEST_PROP(HvQuatCurve_eval, KeysComeBackAtTheirTimes, ())
{
    HvQuatCurve curve;
    std::vector<HvQuatKey> const keys = AnyKeys(2, 8);
    for (HvQuatKey const& key : keys) {
        curve.SetKey(key, 0);
    }
    HvQuat::RotOrder const order = kAllOrders[*rc::gen::inRange(0, 6)];
    curve.SetRotOrder(order);
    for (HvQuatKey const& key : keys) {
        double const byAxis[3] = {key.angles.x, key.angles.y, key.angles.z};
        // Near a pole the outer angles are less certain than the rotation, and at it not at all.
        double const c = std::fabs(std::cos(byAxis[kOrderAxes[order][1]]));
        RC_PRE(c > 1e-3);
        RC_ASSERT(Distance(curve.Eval(key.time), key.angles) < 1e-14 / c);
    }
}

RC_GTEST_PROP(HvQuatCurve_eval, RotationIsThatOfTheSplineAndNearTheLine, ())
{
    HvQuatCurve curve;
    std::vector<HvQuatKey> const keys = AnyKeys(2, 8);
    for (HvQuatKey const& key : keys) {
        curve.SetKey(key, 0);
    }
    HvQuat::RotOrder const order = kAllOrders[*rc::gen::inRange(0, 6)];
    curve.SetRotOrder(order);
    curve.SetExtrapolationMethod(*rc::gen::inRange(1u, 5u));
    HvQuatSpline const spline(static_cast<int>(keys.size()), keys.data(), order,
                              curve.GetExtrapolationMethod());
    double const first = keys.front().time;
    double const span = keys.back().time - first;
    for (int k = -5; k <= 15; ++k) {
        double const t = first + span * k / 10;
        Angles const angles = curve.Eval(t);
        double u = 0;
        auto const i = static_cast<std::size_t>(spline.GetEvalInterval(t, u));
        Angles const line = keys[i].angles * (1 - u) + keys[i + 1].angles * u;
        RC_ASSERT(std::fabs(angles.x - line.x) <= kPi + 1e-12);
        RC_ASSERT(std::fabs(angles.y - line.y) <= kPi + 1e-12);
        RC_ASSERT(std::fabs(angles.z - line.z) <= kPi + 1e-12);
        HvQuat q = spline.Eval(t);
        if (std::fabs(q.w * q.w + q.x * q.x + q.y * q.y + q.z * q.z - 1) < 1e-13) {
            // A pole may take up to 1.5e-6.
            RC_ASSERT(RotationDifference(HvQuat(angles, order), q) < 1.5e-6L);
        }
    }
}

TEST(HvQuatCurve_eval, LastResultIsGivenAgain)
{
    HvQuatCurve curve = XCurve({{0, 10}, {4, 130}});
    curve.SetExtrapolationMethod(HvQuatSpline::LinearExtrapolation);
    Angles const linear = curve.Eval(5);
    // The method changes what lies outside, and neither the spline nor the last result goes.
    EXPECT_EQ(curve.SetExtrapolationMethod(HvQuatSpline::ConstantExtrapolation), 1);
    EXPECT_EQ(curve.Eval(5), linear);
    EXPECT_NEAR(curve.Eval(6, 0), 130, 1e-12);
    EXPECT_NEAR(curve.Eval(5, 0), 130, 1e-12);
    EXPECT_FALSE(WasStale(curve));
}

TEST(HvQuatCurve_eval, MethodReachesALiveSpline)
{
    HvQuatCurve curve = XCurve({{0, 10}, {4, 130}});
    curve.Eval(1);
    curve.SetExtrapolationMethod(HvQuatSpline::CycleExtrapolation);
    EXPECT_NEAR(curve.Eval(5, 0), 40, 1e-9);
    curve.SetExtrapolationMethod(HvQuatSpline::RelativeCycleExtrapolation);
    EXPECT_NEAR(curve.Eval(5.5, 0), 175, 1e-9);
    EXPECT_FALSE(WasStale(curve));
}

TEST(HvQuatCurve_eval, EveryEditDropsTheSplineAndNothingElseDoes)
{
    using Edit = std::function<void(HvQuatCurve&)>;
    struct {
        char const* name;
        bool drops;
        Edit edit;
    } const cases[] = {
        {"SetKey angles", true, [](HvQuatCurve& c) { c.SetKey(1, Angles(1, 1, 1), 0); }},
        {"SetKey new", true, [](HvQuatCurve& c) { c.SetKey(1.5, Angles(1, 1, 1), 0); }},
        {"SetKey key", true, [](HvQuatCurve& c) { c.SetKey(c.GetKey(1), 0); }},
        {"SetKey new key", true, [](HvQuatCurve& c) { c.SetKey(HvQuatKey(9, {}, 0, 0, 0, 0), 0); }},
        {"SetKey index", true, [](HvQuatCurve& c) { c.SetKey(1u, c.GetKey(1)); }},
        {"SetKey component", true, [](HvQuatCurve& c) { c.SetKey(1, 0, 10, 0); }},
        {"SetParameter", true, [](HvQuatCurve& c) { c.SetParameter(1, 1.25); }},
        {"SetKeyValue", true, [](HvQuatCurve& c) { c.SetKeyValue(1, Angles()); }},
        {"SetKeyValue component", true, [](HvQuatCurve& c) { c.SetKeyValue(1, 0, 5); }},
        {"Shift", true, [](HvQuatCurve& c) { c.Shift(0); }},
        {"Scale", true, [](HvQuatCurve& c) { c.Scale(1); }},
        {"RemoveKeyAt", true, [](HvQuatCurve& c) { c.RemoveKeyAt(1); }},
        {"RemoveKey", true, [](HvQuatCurve& c) { c.RemoveKey(1, 0); }},
        {"RemoveKeyRange", true, [](HvQuatCurve& c) { c.RemoveKeyRange(1, 1); }},
        {"SetRotOrder", true, [](HvQuatCurve& c) { c.SetRotOrder(HvQuat::XZY); }},
        {"SetRotOrder same", false, [](HvQuatCurve& c) { c.SetRotOrder(HvQuat::XYZ); }},
        {"locked SetKey", false, [](HvQuatCurve& c) { c.SetKey(2, Angles(), 0); }},
        {"locked SetKeyValue", false, [](HvQuatCurve& c) { c.SetKeyValue(2, Angles()); }},
        {"refusals", false,
         [](HvQuatCurve& c) {
             c.SetKey(kNaN, Angles(), 0);
             c.SetKey(9u, HvQuatKey());
             c.SetKey(1u, HvQuatKey(3, {}, 0, 0, 0, 0));
             c.SetParameter(9, 1);
             c.SetKeyValue(9, Angles());
             c.Shift(kInfinity);
             c.Scale(0);
             c.RemoveKeyAt(9);
             c.RemoveKey(1.5, 0);
             c.RemoveKeyRange(2, 1);
         }},
        {"settings", false,
         [](HvQuatCurve& c) {
             c.SetExtrapolationMethod(4);
             c.SetValueWhenNoKeys(Angles(1, 1, 1));
             c.SetValueWhenNoKeys(1, 1);
             c.SetSelected(1);
             c.SetReadOnlyConstraint(1);
             c.SetValueLock(0, 1);
             c.SetParamLock(0, 1);
             c.SetKeySelected(0, 1);
             c.SetConstraintData(0, 6);
         }},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        HvQuatCurve curve = CurveOf({0, 1, 2, 3});
        curve.SetValueLock(2, 1);
        curve.Eval(0.5);
        c.edit(curve);
        EXPECT_EQ(WasStale(curve), c.drops);
        // And so the next result is that of a curve made anew.
        HvQuatCurve fresh;
        for (HvQuatKey const& key : KeysOf(curve)) {
            fresh.SetKey(key, 0);
        }
        fresh.SetRotOrder(curve.GetRotOrder());
        EXPECT_EQ(curve.Eval(0.5), fresh.Eval(0.5));
    }
}

TEST(HvQuatCurve_eval, EditAtTheLastParameterIsSeen)
{
    HvQuatCurve curve = XCurve({{0, 10}, {4, 130}});
    EXPECT_NEAR(curve.Eval(2, 0), 70, 1e-12);
    curve.SetKeyValue(1, 0, 50);
    EXPECT_NEAR(curve.Eval(2, 0), 30, 1e-12);
    // Also where a parameter and the parameter plus one are the same number.
    for (double t : {1e17, kInfinity}) {
        HvQuatCurve far = XCurve({{0, 10}, {4, 130}});
        far.Eval(t);
        far.SetKeyValue(1, 0, 50);
        EXPECT_NEAR(far.Eval(t, 0), 50, 1e-12) << t;
    }
}

TEST(HvQuatCurve_eval, FewerThanTwoKeysLeaveTheLastResult)
{
    HvQuatCurve curve = XCurve({{0, 10}, {4, 130}});
    curve.Eval(2);
    curve.RemoveAllKeys();
    EXPECT_EQ(curve.Eval(2), Angles(0, 0, 0));
    curve.SetKey(0, Angles(0.5, 0, 0), 0);
    EXPECT_EQ(curve.Eval(2), Angles(0.5, 0, 0));
}

TEST(HvQuatCurve_eval, AllocatesForTheSplineAlone)
{
    HvQuatCurve const curve = CurveOf({0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
    AllocationCounter const counter;
    curve.Eval(0.5);
    EXPECT_EQ(counter.Allocations(), 2);
    for (double t = -5; t < 15; t += 0.1) {
        curve.Eval(t);
        curve.Eval(t, 1);
    }
    EXPECT_EQ(counter.Allocations(), 2);
}

TEST(HvQuatCurve_eval, KeysSetOneByOneCostNoSplineEach)
{
    HvQuatCurve curve;
    curve.SetKey(0, Angles(), 0);
    AllocationCounter const counter;
    constexpr int kKeys = 2000;
    for (int i = 1; i < kKeys; ++i) {
        curve.SetKey(i, 0, i * 3.0, 0);
    }
    // Four keys at most are looked at for each.
    EXPECT_LT(counter.Bytes(), kKeys * (sizeof(HvQuatSpline) + 3 * sizeof(HvQuatSpline::Segment)) +
                                   4 * kKeys * sizeof(HvQuatKey));
    EXPECT_NEAR(curve.Eval(1000, 0), 3000, 1e-9);
}

TEST(HvQuatCurve_eval, DisorderComesToAnEnd)
{
    HvQuatCurve curve = CurveOf({0, 1, 2, 3, 4});
    curve.SetParameter(1, 3.5);
    curve.SetParameter(4, 0);
    for (unsigned int method : {1u, 2u, 3u, 4u}) {
        curve.SetExtrapolationMethod(method);
        for (double t = -2; t < 6; t += 0.25) {
            curve.Eval(t);
            HvQuatCurve copy(curve);
            copy.SetKey(t, 1, 10, 0);
        }
    }
}

TEST(HvQuatCurve_eval, HostileNumbersComeToAnEnd)
{
    for (double a : kHostileNumbers) {
        for (unsigned int method : {1u, 2u, 3u, 4u}) {
            HvQuatCurve curve = CurveOf({0, 1, 3});
            curve.SetExtrapolationMethod(method);
            // Turning on linearly for 1e308 is further than angles are counted.
            bool const overflows = std::isinf(a) || (method == 2 && std::fabs(a) > 1e303);
            EXPECT_EQ(std::isnan(curve.Eval(a).x), std::isnan(a) || (overflows && method != 1));
            curve.SetKeyValue(1, Angles(a, 1, a));
            curve.Eval(0.5);
            curve.Eval(-7);
            curve.Eval(7);
        }
    }
}
