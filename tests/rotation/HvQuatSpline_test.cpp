// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The segments of a quaternion spline.

#include "../support/allocation_failure.h"
#include "long_quat.h"

#include <hv/rotation/HvQuatSpline.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

using Segment = HvQuatSpline::Segment;

HvQuatSpline SplineOf(std::vector<HvQuatKey> const& keys, HvQuat::RotOrder order = HvQuat::XYZ)
{
    return HvQuatSpline(static_cast<int>(keys.size()), keys.data(), order,
                        HvQuatSpline::ConstantExtrapolation);
}

/// A key that turns about x alone: its logarithms are half angles along x, and add up.
HvQuatKey XKey(double time, double x, float tension = 0, float continuity = 0, float bias = 0,
               int spins = 0)
{
    return HvQuatKey(time, HvPoint3<double>(x, 0, 0), tension, continuity, bias, spins);
}

/// Three keys about x at 0, 1 and 3, with half angles 0, 0.2 and 0.5: logarithms 0.2 and 0.3, and
/// 0.2 before and 0.3 after them. Settings are those of the inner and the last key.
std::vector<HvQuatKey> UnevenKeys(HvQuatKey const& inner, HvQuatKey const& last)
{
    HvQuatKey b = inner;
    b.time = 1;
    b.angles.x = 0.4;
    HvQuatKey c = last;
    c.time = 3;
    c.angles.x = 1.0;
    return {XKey(0, 0), b, c};
}

constexpr double kRounding = 1e-15;

}  // namespace

TEST(HvQuatSpline, FreshSegmentIsTheIdentity)
{
    Segment const segment;
    for (HvQuat const& q : {segment.q0, segment.w1, segment.w2, segment.w3, segment.q1}) {
        EXPECT_EQ(Difference(q, HvQuat()), 0);
    }
    EXPECT_EQ(segment.startTime, 0);
    EXPECT_EQ(segment.endTime, 0);
    EXPECT_EQ(segment.inverseLength, 0);
}

TEST(HvQuatSpline, OneSegmentLessThanKeys)
{
    std::vector<HvQuatKey> const keys = {XKey(1, 0.1), XKey(2, 0.2), XKey(6, 0.3)};
    HvQuatSpline const spline(3, keys.data(), HvQuat::XYZ, 3);
    EXPECT_EQ(spline.GetNumSegments(), 2);
    EXPECT_EQ(spline.GetExtrapolationMethod(), 3u);
    EXPECT_EQ(spline.GetDynamicMemSize(), 2 * sizeof(Segment));
    EXPECT_EQ(spline.GetSegment(0).startTime, 1);
    EXPECT_EQ(spline.GetSegment(0).endTime, 2);
    EXPECT_EQ(spline.GetSegment(0).inverseLength, 1);
    EXPECT_EQ(spline.GetSegment(1).startTime, 2);
    EXPECT_EQ(spline.GetSegment(1).endTime, 6);
    EXPECT_EQ(spline.GetSegment(1).inverseLength, 0.25);
}

TEST(HvQuatSpline, TooFewKeysMakeNoSegments)
{
    HvQuatKey const key = XKey(1, 2);
    for (int n : {1, 0, -1, -2147483647 - 1}) {
        HvQuatSpline const spline(n, &key, HvQuat::XYZ, 2);
        EXPECT_EQ(spline.GetNumSegments(), 0);
        EXPECT_EQ(Difference(spline.Eval(1), HvQuat()), 0);
        double u = 7;
        EXPECT_EQ(spline.GetEvalInterval(5, u), 0);
        EXPECT_EQ(u, 7);
    }
}

TEST(HvQuatSpline, TwoKeysTurnWithConstantVelocity)
{
    for (HvQuat::RotOrder order : kAllOrders) {
        std::vector<HvQuatKey> const keys = {HvQuatKey(2, {0.3, -0.4, 0.5}, 0, 0, 0, 0),
                                             HvQuatKey(7, {1.0, 0.6, -0.8}, 0, 0, 0, 0)};
        HvQuatSpline const spline = SplineOf(keys, order);
        LongQuat const q0 = LongQuat::FromAngles(keys[0].angles, order);
        LongVector const log =
            LongLog(q0.Conjugate() * LongQuat::FromAngles(keys[1].angles, order));
        for (int i = 0; i <= 50; ++i) {
            EXPECT_LT(Difference(spline.Eval(2 + i * 0.1), q0 * LongExp(log.v, i / 50.0L)), 2e-15L);
        }
    }
}

TEST(HvQuatSpline, TangentWeightsFollowTheirFormulas)
{
    // Second segment: 1 before it, 2 of it, 3 in all.
    Segment const plain = SplineOf(UnevenKeys(XKey(0, 0), XKey(0, 0))).GetSegment(1);
    EXPECT_NEAR(plain.w1.x, (0.2 + 0.3) / 3 / 3, kRounding);
    EXPECT_NEAR(plain.w3.x, 2 * (0.3 + 0.3) / 3 / 3, kRounding);
    EXPECT_NEAR(plain.w1.x + plain.w2.x + plain.w3.x, 0.3, kRounding);
    for (double w : {plain.w1.w, plain.w2.w, plain.w3.w}) {
        EXPECT_EQ(w, 0);
    }

    Segment const tense = SplineOf(UnevenKeys(XKey(0, 0, 0.25f), XKey(0, 0, -0.5f))).GetSegment(1);
    EXPECT_NEAR(tense.w1.x, plain.w1.x * 0.75, kRounding);
    EXPECT_NEAR(tense.w3.x, plain.w3.x * 1.5, kRounding);

    Segment const biased =
        SplineOf(UnevenKeys(XKey(0, 0, 0, 0, 0.5f), XKey(0, 0, 0, 0, -0.25f))).GetSegment(1);
    EXPECT_NEAR(biased.w1.x, (1.5 * 0.2 + 0.5 * 0.3) / 3 / 3, kRounding);
    EXPECT_NEAR(biased.w3.x, 2 * (0.75 * 0.3 + 1.25 * 0.3) / 3 / 3, kRounding);

    // The start's continuity weighs on the end's tangent as well.
    Segment const cornered =
        SplineOf(UnevenKeys(XKey(0, 0, 0, 0.5f), XKey(0, 0, 0, 0.25f))).GetSegment(1);
    EXPECT_NEAR(cornered.w1.x, (1.5 * 0.2 + 0.5 * 0.3) / 3 / 3, kRounding);
    EXPECT_NEAR(cornered.w3.x, 2 * (0.75 * 0.3 + 1.5 * 0.3) / 3 / 3, kRounding);
}

TEST(HvQuatSpline, SettingsAreWidenedBeforeTheyAreUsed)
{
    // In float 1 - 0.1f would be off by 1.5e-8.
    Segment const segment = SplineOf(UnevenKeys(XKey(0, 0, 0.1f), XKey(0, 0))).GetSegment(1);
    EXPECT_NEAR(segment.w1.x, 0.5 / 9 * (1 - static_cast<double>(0.1f)), kRounding);
}

TEST(HvQuatSpline, FirstSegmentHasItsMirrorBefore)
{
    // The key before the first lies one interval back: lengths 1 and 1.
    Segment const segment = SplineOf(UnevenKeys(XKey(0, 0), XKey(0, 0))).GetSegment(0);
    EXPECT_NEAR(segment.w1.x, (0.2 + 0.2) / 2 / 3, kRounding);
    EXPECT_NEAR(segment.w3.x, (0.2 + 0.3) / 2 / 3, kRounding);
}

TEST(HvQuatSpline, SmoothAtEvenKeys)
{
    std::vector<HvQuatKey> keys;
    for (int i = 0; i < 6; ++i) {
        keys.push_back(HvQuatKey(i, {i * 0.3, std::sin(i), i * i * 0.1}, 0, 0, 0, 0));
    }
    HvQuatSpline const spline = SplineOf(keys);
    for (int i = 0; i < 4; ++i) {
        EXPECT_LT(Difference(spline.GetSegment(i).w3, spline.GetSegment(i + 1).w1), 1e-15L);
    }
}

TEST(HvQuatSpline, SpinAddsAWholeTurnAndEndsOnTheOtherSign)
{
    HvQuatSpline const spline = SplineOf({XKey(0, 0, 0, 0, 0, 1), XKey(1, 0.6)});
    Segment const& segment = spline.GetSegment(0);
    EXPECT_NEAR(segment.w2.x, 0.1 + kPi, kRounding);
    EXPECT_EQ(segment.w2.w, 0);
    LongQuat const end = LongQuat::FromAngles({0.6, 0, 0}, HvQuat::XYZ);
    EXPECT_LT(Difference(segment.q1, end), 1e-15L);
    EXPECT_LT(Difference(segment.Eval(1), end.Negative()), 2e-15L);
    // Half way, by symmetry, half of all: 0.15 + pi / 2.
    EXPECT_LT(Difference(spline.Eval(0.5), HvQuat(-std::sin(0.15), std::cos(0.15), 0, 0)), 2e-15L);

    Segment const three = SplineOf({XKey(0, 0, 0, 0, 0, 3), XKey(1, 0.6)}).GetSegment(0);
    EXPECT_NEAR(three.w2.x, 0.1 + 3 * kPi, 4 * kRounding);
}

TEST(HvQuatSpline, NegativeSpinsTurnTheTangentsRound)
{
    std::vector<HvQuatKey> const keys = {XKey(0, 0), XKey(1, 0.4, 0, 0, 0, -1), XKey(2, 1.0)};
    HvQuatSpline const spline = SplineOf(keys);
    // Arriving at the key and leaving it.
    EXPECT_NEAR(spline.GetSegment(0).w3.x, -(0.2 + 0.3) / 2 / 3, kRounding);
    EXPECT_NEAR(spline.GetSegment(1).w1.x, -(0.2 + 0.3) / 2 / 3, kRounding);
    EXPECT_NEAR(spline.GetSegment(1).w3.x, 0.1, kRounding);
    // What remains is 0.3 + 0.25 / 3 - 0.1, and the spin goes the other way.
    EXPECT_NEAR(spline.GetSegment(1).w2.x, 0.2 + 0.25 / 3 - kPi, 2 * kRounding);
    EXPECT_NEAR(spline.GetSegment(0).w2.x, 0.2 - 0.2 / 3 + 0.25 / 3, kRounding);
}

TEST(HvQuatSpline, SpinWithoutADirectionChangesNothing)
{
    HvQuatSpline const spline = SplineOf({XKey(0, 0.5, 0, 0, 0, 2), XKey(1, 0.5)});
    Segment const& segment = spline.GetSegment(0);
    EXPECT_LT(std::fabs(segment.w2.x) + std::fabs(segment.w2.y) + std::fabs(segment.w2.z), 1e-15);
    EXPECT_NEAR(segment.w2.w, 2 * kPi, kRounding);
    EXPECT_LT(Difference(spline.Eval(0.3), segment.q0), 1e-15L);
}

TEST(HvQuatSpline, TakesTheShortWay)
{
    // A whole turn is the negative of none.
    HvQuatSpline const spline = SplineOf({XKey(0, 0), XKey(1, 2 * kPi), XKey(2, 4 * kPi + 0.2)});
    EXPECT_LT(Difference(spline.Eval(0.5), LongQuat(1, 0, 0, 0)), 0.1L);
    for (int i = 0; i < 2; ++i) {
        Segment const& segment = spline.GetSegment(i);
        EXPECT_GT(Dot(LongQuat(segment.q0), LongQuat(segment.q1)), 0.99L);
    }
    EXPECT_LT(RotationDifference(spline.Eval(1), HvQuat()), 1e-15L);
}

RC_GTEST_PROP(HvQuatSpline, PassesThroughItsKeys, ())
{
    std::vector<HvQuatKey> const keys = AnyKeys(2, 8);
    HvQuat::RotOrder const order = kAllOrders[*rc::gen::inRange(0, 6)];
    HvQuatSpline const spline = SplineOf(keys, order);
    for (HvQuatKey const& key : keys) {
        // Angles of up to 10 radians; half a dozen products.
        RC_ASSERT(RotationDifference(spline.Eval(key.time), HvQuat(key.angles, order)) < 2e-14L);
    }
    for (int i = 0; i < spline.GetNumSegments(); ++i) {
        RC_ASSERT(RotationDifference(spline.GetSegment(i).Eval(1), spline.GetSegment(i).q1) <
                  2e-14L);
    }
}

RC_GTEST_PROP(HvQuatSpline, FollowsItsFormulaInHigherPrecision, ())
{
    std::vector<HvQuatKey> const keys = AnyKeys(2, 8);
    HvQuat::RotOrder const order = kAllOrders[*rc::gen::inRange(0, 6)];
    HvQuatSpline const spline = SplineOf(keys, order);
    LongSpline const reference(keys, order);
    for (int i = 0; i < spline.GetNumSegments(); ++i) {
        auto const& segment = reference.segments[static_cast<std::size_t>(i)];
        // Where keys are almost half a turn apart, or the key beyond the end is at a pole, a
        // rounding decides; and a logarithm near half a turn of the sphere has a direction no more
        // certain than its sine.
        LongQuat const delta =
            LongQuat(spline.GetSegment(i).q0).Conjugate() * LongQuat(spline.GetSegment(i).q1);
        RC_PRE(delta.w > 0.01L);
        LongQuat const middle = LongExp(segment.w1.v, -1) * delta * LongExp(segment.w3.v, -1);
        RC_PRE(middle.w > -0.99L && middle.w < 0.99999L);
        for (int k = 0; k <= 8; ++k) {
            double const u = k / 8.0;
            LongQuat const expected = segment.Eval(u);
            RC_ASSERT(std::min(Difference(spline.GetSegment(i).Eval(u), expected),
                               Difference(spline.GetSegment(i).Eval(u), expected.Negative())) <
                      1e-12L);
        }
    }
}

RC_GTEST_PROP(HvQuatSpline, HermiteIsTheSegmentInOneCall, ())
{
    std::vector<HvQuatKey> const keys = AnyKeys(2, 4);
    HvQuatSpline const spline = SplineOf(keys);
    int const i = *rc::gen::inRange(0, spline.GetNumSegments());
    Segment const& s = spline.GetSegment(i);
    HvQuat const tangent0(5, s.w1.x * 3, s.w1.y * 3, s.w1.z * 3);
    HvQuat const tangent1(-5, s.w3.x * 3, s.w3.y * 3, s.w3.z * 3);
    for (double u : {0.0, 0.25, 0.7, 1.0}) {
        HvQuat const q = Hermite(s.q0, s.q0.Conjugate() * s.q1, tangent0, tangent1, u,
                                 keys[static_cast<std::size_t>(i)].spins);
        // A third of three times a number is that number but for a rounding.
        RC_ASSERT(Difference(q, s.Eval(u)) < 1e-12L);
    }
}

TEST(HvQuatSpline, CopiesAreDeep)
{
    std::vector<HvQuatKey> const keys = {XKey(0, 0.1), XKey(1, 0.4), XKey(2, 0.3)};
    HvQuatSpline const spline = SplineOf(keys);
    HvQuatSpline copy(spline);
    HvQuatSpline assigned(0, nullptr, HvQuat::XYZ, 1);
    assigned = spline;
    copy.SetExtrapolationMethod(4);
    EXPECT_EQ(spline.GetExtrapolationMethod(), 1u);
    EXPECT_NE(&copy.GetSegment(0), &spline.GetSegment(0));
    EXPECT_EQ(Difference(copy.Eval(1.5), spline.Eval(1.5)), 0);
    EXPECT_EQ(Difference(assigned.Eval(0.5), spline.Eval(0.5)), 0);
    HvQuatSpline const& itself = assigned;
    assigned = itself;
    EXPECT_EQ(assigned.GetNumSegments(), 2);
    assigned = HvQuatSpline(1, keys.data(), HvQuat::XYZ, 2);
    EXPECT_EQ(assigned.GetNumSegments(), 0);
    EXPECT_EQ(assigned.GetExtrapolationMethod(), 2u);
}

TEST(HvQuatSpline, RefusedMemoryLeavesAllAsItWas)
{
    std::vector<HvQuatKey> const keys = {XKey(0, 0.1), XKey(1, 0.4), XKey(2, 0.3)};
    HvQuatSpline const spline = SplineOf(keys);
    EXPECT_EQ(RefuseEachAllocation([&] { SplineOf(keys); }), 1);
    EXPECT_EQ(RefuseEachAllocation([&] { SplineOf({keys[0]}); }), 0);
    EXPECT_EQ(RefuseEachAllocation([&] { HvQuatSpline const copy(spline); }), 1);
    EXPECT_EQ(RefuseEachAllocation(
                  [&] {
                      return SplineOf({keys[0], keys[1]});
                  },
                  [&](HvQuatSpline& target) { target = spline; },
                  [](HvQuatSpline& target, bool completed) {
                      EXPECT_EQ(target.GetNumSegments(), completed ? 2 : 1);
                      EXPECT_FALSE(std::isnan(target.Eval(0.5).w));
                  }),
              1);
}
