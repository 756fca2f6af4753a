// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Evaluation of a quaternion spline: the segment of a time, and what lies outside.

#include "../support/allocation_failure.h"
#include "long_quat.h"

#include <hv/rotation/HvQuatSpline.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <random>

namespace {

constexpr unsigned int kMethods[] = {1, 2, 3, 4};

HvQuatSpline SplineOf(std::vector<HvQuatKey> const& keys, unsigned int method)
{
    return HvQuatSpline(static_cast<int>(keys.size()), keys.data(), HvQuat::XYZ, method);
}

HvQuatKey XKey(double time, double x)
{
    return HvQuatKey(time, HvPoint3<double>(x, 0, 0), 0, 0, 0, 0);
}

/// Three keys from time 2 to 6 that turn about changing axes.
std::vector<HvQuatKey> ThreeKeys()
{
    return {HvQuatKey(2, {0.3, -0.4, 0.5}, 0, 0, 0, 0), HvQuatKey(3, {1.0, 0.6, -0.8}, 0, 0, 0, 0),
            HvQuatKey(6, {1.4, 0.1, 0.7}, 0, 0, 0, 0)};
}

/// The rotation about x that has turned by `angle`.
LongQuat AboutX(long double angle)
{
    return LongQuat(std::cos(angle / 2), std::sin(angle / 2), 0, 0);
}

/// The point at `s` of the great circle that leads from `a` to `b`.
LongQuat LongSlerp(LongQuat const& a, LongQuat const& b, long double s)
{
    LongVector const w = LongLog(a.Conjugate() * b);
    return a * LongExp(w.v, s);
}

bool IsFinite(HvQuat const& q)
{
    return std::isfinite(q.w) && std::isfinite(q.x) && std::isfinite(q.y) && std::isfinite(q.z);
}

/// The rule itself: the first segment that ends after `t`, the last one when there is none.
int FirstMatch(HvQuatSpline const& spline, double t)
{
    for (int i = 0; i < spline.GetNumSegments(); ++i) {
        if (spline.GetSegment(i).endTime > t) {
            return i;
        }
    }
    return spline.GetNumSegments() - 1;
}

/// What GetEvalInterval gives must be what the rule says.
void ExpectInterval(HvQuatSpline const& spline, double t)
{
    double u = -7;
    int const i = spline.GetEvalInterval(t, u);
    int const last = spline.GetNumSegments() - 1;
    if (t <= spline.GetSegment(0).startTime) {
        EXPECT_EQ(i, 0);
        EXPECT_EQ(u, -7);
    } else if (t >= spline.GetSegment(last).endTime) {
        EXPECT_EQ(i, last);
        EXPECT_EQ(u, 1);
    } else {
        ASSERT_EQ(i, FirstMatch(spline, t)) << t;
        EXPECT_EQ(u, (t - spline.GetSegment(i).startTime) * spline.GetSegment(i).inverseLength);
    }
}

}  // namespace

TEST(HvQuatSpline_eval, IntervalOfEachTime)
{
    HvQuatSpline const spline = SplineOf(ThreeKeys(), 1);
    struct {
        double t;
        int index;
        double u;
    } const cases[] = {{-1, 0, 9}, {2, 0, 9}, {2.25, 0, 0.25},    {3, 1, 0},        {4, 1, 1 / 3.0},
                       {6, 1, 1},  {7, 1, 1}, {-kInfinity, 0, 9}, {kInfinity, 1, 1}};
    for (auto const& c : cases) {
        double u = 9;
        EXPECT_EQ(spline.GetEvalInterval(c.t, u), c.index) << c.t;
        EXPECT_DOUBLE_EQ(u, c.u) << c.t;
    }
}

TEST(HvQuatSpline_eval, FindsTheFirstMatchHoweverKeysAreSpaced)
{
    std::mt19937 random(3);
    std::uniform_real_distribution<double> unit(0, 1);
    for (int spacing = 0; spacing < 4; ++spacing) {
        for (int n : {2, 3, 4, 5, 17, 100}) {
            std::vector<HvQuatKey> keys;
            for (int i = 0; i < n; ++i) {
                double const time = spacing == 0   ? i
                                    : spacing == 1 ? std::exp2(i * 0.3)
                                    : spacing == 2 ? -std::exp2((n - i) * 0.3)
                                                   : i + unit(random) * 0.9;
                keys.push_back(XKey(time, unit(random)));
            }
            HvQuatSpline const spline = SplineOf(keys, 1);
            double const first = keys.front().time;
            double const span = keys.back().time - first;
            for (int k = 0; k < 200; ++k) {
                ExpectInterval(spline, first + span * unit(random));
            }
            for (HvQuatKey const& key : keys) {
                ExpectInterval(spline, key.time);
                ExpectInterval(spline, std::nextafter(key.time, kInfinity));
                ExpectInterval(spline, std::nextafter(key.time, -kInfinity));
            }
        }
    }
}

TEST(HvQuatSpline_eval, FindsTheLastSegmentWhereRoundingReachesTheEnd)
{
    // 1 - 2^-53 is 2 after the start in doubles, which is the whole of the length.
    for (int n : {2, 3, 5}) {
        std::vector<HvQuatKey> keys;
        for (int i = 0; i < n; ++i) {
            keys.push_back(XKey(-1 + 2.0 * i / (n - 1), 0.1 * i));
        }
        ExpectInterval(SplineOf(keys, 1), std::nextafter(1.0, 0.0));
    }
}

TEST(HvQuatSpline_eval, FindsTheFirstMatchAmongTimesInDisorder)
{
    std::mt19937 random(4);
    std::uniform_int_distribution<int> anyTime(0, 9);
    for (int round = 0; round < 300; ++round) {
        std::vector<HvQuatKey> keys;
        for (int i = 0; i < 6; ++i) {
            keys.push_back(XKey(anyTime(random), 0.1 * i));
        }
        HvQuatSpline const spline = SplineOf(keys, 1 + static_cast<unsigned>(round) % 4);
        for (double t = -1; t <= 10; t += 0.5) {
            ExpectInterval(spline, t);
            spline.Eval(t);
        }
    }
}

TEST(HvQuatSpline_eval, LastEndIsTheLastKeyAlsoInDisorder)
{
    HvQuatSpline const spline = SplineOf({XKey(0, 0), XKey(5, 1), XKey(3, 2)}, 1);
    EXPECT_EQ(Difference(spline.Eval(3), spline.GetSegment(1).Eval(1)), 0);
}

TEST(HvQuatSpline_eval, IntervalComesWithTheValue)
{
    for (unsigned int method : kMethods) {
        HvQuatSpline const spline = SplineOf(ThreeKeys(), method);
        for (double t : {-3.0, 2.0, 2.5, 3.0, 4.7, 6.0, 11.0}) {
            int index = -1;
            double u = -1;
            HvQuat const q = spline.EvalWithInterval(t, index, u);
            EXPECT_EQ(Difference(q, spline.Eval(t)), 0) << t;
            double expected = 0;
            EXPECT_EQ(index, spline.GetEvalInterval(t, expected)) << t;
            EXPECT_EQ(u, expected) << t;
        }
    }
}

TEST(HvQuatSpline_eval, ConstantHoldsTheEnds)
{
    // A number that is no method holds as well.
    for (unsigned int method : {1u, 0u, 5u, 4294967295u}) {
        HvQuatSpline const spline = SplineOf(ThreeKeys(), method);
        for (double t : {1.9, -1e300, -kInfinity}) {
            EXPECT_EQ(Difference(spline.Eval(t), spline.Eval(2)), 0);
        }
        for (double t : {6.1, 1e300, kInfinity}) {
            EXPECT_EQ(Difference(spline.Eval(t), spline.Eval(6)), 0);
        }
    }
}

TEST(HvQuatSpline_eval, CycleRepeatsThePath)
{
    HvQuatSpline const spline = SplineOf(ThreeKeys(), HvQuatSpline::CycleExtrapolation);
    for (double t = 2.25; t < 6; t += 0.25) {
        HvQuat const q = spline.Eval(t);
        // Quarters of whole numbers: no rounding before the path.
        for (double cycles : {1.0, 2.0, 100.0}) {
            EXPECT_EQ(Difference(spline.Eval(t + 4 * cycles), q), 0);
            EXPECT_EQ(Difference(spline.Eval(t - 4 * cycles), q), 0);
        }
    }
    // Where cycles meet, the start serves after the path and the end before it.
    EXPECT_EQ(Difference(spline.Eval(-2), spline.Eval(6)), 0);
    EXPECT_EQ(Difference(spline.Eval(10), spline.Eval(2)), 0);
}

TEST(HvQuatSpline_eval, CycleCountsFromTheFirstKey)
{
    HvQuatSpline const spline =
        SplineOf({XKey(1, 0.2), XKey(2, 1.4), XKey(4, 0.7)}, HvQuatSpline::CycleExtrapolation);
    for (double t : {1.25, 1.75, 2.0, 3.5}) {
        EXPECT_EQ(Difference(spline.Eval(t + 3), spline.Eval(t)), 0) << t;
        EXPECT_EQ(Difference(spline.Eval(t - 3), spline.Eval(t)), 0) << t;
    }
}

TEST(HvQuatSpline_eval, RelativeCycleGoesOnFromTheEnd)
{
    HvQuatSpline const spline = SplineOf(ThreeKeys(), HvQuatSpline::RelativeCycleExtrapolation);
    LongQuat const first(spline.Eval(2));
    LongQuat const last(spline.Eval(6));
    LongQuat const forwards = first.Conjugate() * last;
    LongQuat power;
    LongQuat inverse = forwards.Conjugate();
    for (int n = 1; n <= 40; ++n) {
        power = power * forwards;
        // Roundings of the power's angle add up with each cycle.
        long double const tolerance = 1e-15L * (n + 3);
        for (double t : {2.25, 3.0, 5.5, 6.0}) {
            LongQuat const inside = first.Conjugate() * LongQuat(spline.Eval(t));
            EXPECT_LT(Difference(spline.Eval(t + 4 * n), first * power * inside), tolerance);
        }
        for (double t : {2.0, 2.25, 3.0, 5.5}) {
            LongQuat const inside = first.Conjugate() * LongQuat(spline.Eval(t));
            EXPECT_LT(Difference(spline.Eval(t - 4 * n), first * inverse * inside), tolerance);
        }
        inverse = inverse * forwards.Conjugate();
    }
}

TEST(HvQuatSpline_eval, RelativeCycleOfAHalfTurn)
{
    // The power of a quaternion without scalar part.
    HvQuatSpline const spline = SplineOf({XKey(0, 0), XKey(1, 1.5), XKey(2, kPi)},
                                         HvQuatSpline::RelativeCycleExtrapolation);
    for (double t : {-5.5, -4.0, -1.25, 2.5, 4.0, 7.75}) {
        double const cycle = std::floor(t / 2);
        LongQuat const inside(spline.Eval(t - 2 * cycle));
        EXPECT_LT(Difference(spline.Eval(t), AboutX(kLongPi * cycle) * inside), 1e-14L) << t;
    }
}

TEST(HvQuatSpline_eval, RelativeCycleBeginsWithoutAJumpWhereRoundingHidesTheDistance)
{
    // 1 + 2^-52 is 2 after the start in doubles: one cycle and nothing.
    HvQuatSpline const one =
        SplineOf({XKey(-1, 0), XKey(1, 1)}, HvQuatSpline::RelativeCycleExtrapolation);
    EXPECT_LT(Difference(one.Eval(std::nextafter(1.0, 2.0)), AboutX(1)), 1e-15L);
    // The part of a cycle that the smallest number is of 1e300 is 0.
    HvQuatSpline const wide =
        SplineOf({XKey(0, 0), XKey(1e300, 1)}, HvQuatSpline::RelativeCycleExtrapolation);
    EXPECT_LT(Difference(wide.Eval(-5e-324), AboutX(0)), 1e-15L);
}

TEST(HvQuatSpline_eval, CyclesWithoutNumberCostNothing)
{
    for (unsigned int method : {3u, 4u}) {
        HvQuatSpline const spline = SplineOf(ThreeKeys(), method);
        for (double t : {1e9, 1e17, 1e300, 1.7e308, -1e9, -1e17, -1e300, -1.7e308}) {
            HvQuat const q = spline.Eval(t);
            EXPECT_TRUE(IsFinite(q)) << t;
            EXPECT_NEAR(q.w * q.w + q.x * q.x + q.y * q.y + q.z * q.z, 1, 1e-14) << t;
        }
        for (double t : {kInfinity, -kInfinity}) {
            EXPECT_TRUE(std::isnan(spline.Eval(t).w));
        }
    }
}

TEST(HvQuatSpline_eval, LinearTurnsOnWithTheEndsVelocity)
{
    HvQuatSpline const spline =
        SplineOf({XKey(1, 0.2), XKey(3, 1.4)}, HvQuatSpline::LinearExtrapolation);
    for (double t : {-7.0, -1.5, 0.99, 3.01, 5.0, 20.0}) {
        // The velocity is taken from a ten-thousandth of the segment, whose angle of 6e-5 is known
        // to a rounding of 2e-16 over its sine.
        double const amplified = 2e-16 / (3e-5) / 3e-5 * std::fabs(t - 2);
        EXPECT_LT(Difference(spline.Eval(t), AboutX(0.2L + 0.6L * (t - 1.0L))), amplified) << t;
    }
    // On three keys it is the end segments' velocity.
    HvQuatSpline const three = SplineOf(ThreeKeys(), HvQuatSpline::LinearExtrapolation);
    double const h = 1e-4;
    LongQuat const before(three.Eval(2 - h));
    LongQuat const after(three.Eval(2 + h));
    LongQuat const here(three.Eval(2));
    LongQuat const backwards = here.Conjugate() * before;
    LongQuat const forwards = after.Conjugate() * here;
    EXPECT_LT(Difference(backwards, forwards), 1e-7L);
}

TEST(HvQuatSpline_eval, LinearIsTheGreatCircleThroughATenThousandthOfTheSegment)
{
    std::vector<HvQuatKey> const keys = ThreeKeys();
    HvQuatSpline const spline = SplineOf(keys, HvQuatSpline::LinearExtrapolation);
    LongSpline const exact(keys, HvQuat::XYZ);
    // Angles of some 5e-5, whose cosines are rounded to 1e-16, are known to 4e-8 of themselves, and
    // ten segments on they have grown to 5; a stretch half as long has a velocity that differs by
    // the change of the velocity over 2.5e-5 of the segment, some 1e-4 by then.
    long double const tolerance = 1e-6L;
    LongQuat const first = exact.segments.front().Eval(0);
    LongQuat const leaves = exact.segments.front().Eval(0.0001L);
    LongQuat const arrives = exact.segments.back().Eval(0.9999L);
    LongQuat const last = exact.segments.back().Eval(1);
    for (double distance : {0.5, 2.0, 10.0}) {
        long double const n = distance * 10000.0L;
        EXPECT_LT(Difference(spline.Eval(2 - distance), LongSlerp(first, leaves, -n)), tolerance);
        EXPECT_LT(Difference(spline.Eval(6 + 3 * distance), LongSlerp(last, arrives, -n)),
                  tolerance);
    }
}

TEST(HvQuatSpline_eval, LinearKeepsItsSignAfterASpin)
{
    std::vector<HvQuatKey> keys = {XKey(1, 0.2), XKey(3, 1.4)};
    keys[0].spins = 1;
    HvQuatSpline const spline = SplineOf(keys, HvQuatSpline::LinearExtrapolation);
    // The last segment ends on the other sign; the rotation goes on without a jump.
    EXPECT_LT(RotationDifference(spline.Eval(3), spline.Eval(3 + 1e-9)), 1e-7L);
    EXPECT_LT(RotationDifference(spline.Eval(1), spline.Eval(1 - 1e-9)), 1e-7L);
    // Its velocity at the ends is that without the spin; over a ten-thousandth of the segment the
    // spin adds 3e-8 of a half turn to 6e-5, a six-hundredth.
    EXPECT_LT(Difference(LongQuat(spline.Eval(5)).Matrix(), AboutX(1.4L + 1.2L).Matrix()), 4e-3L);
    EXPECT_LT(Difference(LongQuat(spline.Eval(-1)).Matrix(), AboutX(0.2L - 1.2L).Matrix()), 4e-3L);
}

TEST(HvQuatSpline_eval, SlowLinearFollowsTheStraightLine)
{
    // Half angles 0 and 0.001: over a ten-thousandth 1e-7, whose cosine is 1 but for 5e-15.
    HvQuatSpline const spline =
        SplineOf({XKey(0, 0), XKey(1, 0.002)}, HvQuatSpline::LinearExtrapolation);
    // Tens of thousands of stretches of 1e-7 amplify the rounding of the second point.
    HvQuat const q = spline.Eval(-100);
    EXPECT_NEAR(q.w, 1, 1e-8);
    EXPECT_NEAR(q.x, -0.1, 1e-9);
    HvQuat const p = spline.Eval(101);
    EXPECT_NEAR(p.w, 1 - 0.0005 * 0.001 - 100 * 0.001 * 0.001, 1e-7);
    // The end's velocity along x is 0.001 cos(0.001).
    EXPECT_NEAR(p.x, 0.101 - 100 * 0.001 * 0.0000005, 1e-9);
}

TEST(HvQuatSpline_eval, OddSpinsKeepTheRotationContinuousInEveryMethod)
{
    std::vector<HvQuatKey> keys = ThreeKeys();
    keys[1].spins = 1;
    for (unsigned int method : kMethods) {
        HvQuatSpline const spline = SplineOf(keys, method);
        if (method != HvQuatSpline::CycleExtrapolation) {
            EXPECT_LT(RotationDifference(spline.Eval(6), spline.Eval(6 + 1e-9)), 1e-7L) << method;
            EXPECT_LT(RotationDifference(spline.Eval(2), spline.Eval(2 - 1e-9)), 1e-7L) << method;
        }
    }
}

TEST(HvQuatSpline_eval, NoEvaluationAllocates)
{
    for (unsigned int method : kMethods) {
        HvQuatSpline const spline = SplineOf(ThreeKeys(), method);
        AllocationCounter const counter;
        for (double t = -20; t < 20; t += 0.37) {
            spline.Eval(t);
        }
        EXPECT_EQ(counter.Allocations(), 0);
    }
}

TEST(HvQuatSpline_eval, NaNGivesNaN)
{
    for (unsigned int method : kMethods) {
        HvQuatSpline const spline = SplineOf(ThreeKeys(), method);
        EXPECT_TRUE(std::isnan(spline.Eval(kNaN).w));
        double u = 0;
        EXPECT_EQ(spline.GetEvalInterval(kNaN, u), 1);
    }
}

TEST(HvQuatSpline_eval, HostileNumbersComeToAnEnd)
{
    for (unsigned int method : kMethods) {
        for (double a : kHostileNumbers) {
            for (double b : kHostileNumbers) {
                // Times that are equal, in disorder, too far apart or not finite, and such angles.
                std::vector<HvQuatKey> const keys = {
                    XKey(a, b), XKey(1, 0.2), XKey(b, a),
                    HvQuatKey(b, {a, b, a}, static_cast<float>(std::fmod(a, 1e30)), 1, -1, 2047)};
                for (int n : {2, 3, 4}) {
                    HvQuatSpline const spline(n, keys.data(), HvQuat::YZX, method);
                    for (double t : {-1e300, 0.0, 0.5, 1.0, a, 1e300, kInfinity, kNaN}) {
                        double u = 0;
                        int index = -1;
                        spline.EvalWithInterval(t, index, u);
                        EXPECT_TRUE(index >= 0 && index < n - 1);
                    }
                }
            }
        }
    }
}
