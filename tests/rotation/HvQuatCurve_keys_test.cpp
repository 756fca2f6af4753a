// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Reading, finding and editing keys of a quaternion curve.

#include "../support/generators.h"
#include "quat_curve_support.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

/// The walks themselves, over a plain row of keys.
struct PlainKeys {
    std::vector<HvQuatKey> keys;

    unsigned int Find(double t, double tolerance) const
    {
        double best = kInfinity;
        unsigned int found = kNoKey;
        for (unsigned int i = 0; i < keys.size(); ++i) {
            double const time = keys[i].time;
            if (time < t - tolerance) {
                continue;
            }
            if (time > t + tolerance) {
                break;
            }
            double const d = std::fabs(time - t);
            if (d < best) {
                best = d;
                found = i;
            } else if (d > best) {
                break;
            }
        }
        return found;
    }
    unsigned int Previous(double t, double tolerance) const
    {
        unsigned int found = kNoKey;
        for (unsigned int i = 0; i < keys.size(); ++i) {
            if (keys[i].time < t - tolerance) {
                found = i;
            }
        }
        return found;
    }
    unsigned int Next(double t, double tolerance) const
    {
        for (unsigned int i = 0; i < keys.size(); ++i) {
            if (keys[i].time > t + tolerance) {
                return i;
            }
        }
        return kNoKey;
    }
    unsigned int Insert(HvQuatKey const& key)
    {
        unsigned int i = 0;
        while (i < keys.size() && !(keys[i].time >= key.time)) {
            ++i;
        }
        keys.insert(keys.begin() + i, key);
        return i;
    }
    bool Rises() const
    {
        for (std::size_t i = 1; i < keys.size(); ++i) {
            if (!(keys[i - 1].time < keys[i].time)) {
                return false;
            }
        }
        return true;
    }
};

HvQuatKey AnyKey(double time)
{
    HvQuatKey key(time, *AnyPoint3(), 0.5f, 0.25f, -0.5f, *rc::gen::inRange(-3, 4));
    key.valueLocked = *rc::gen::inRange(0, 4) == 0;
    key.parameterLocked = *rc::gen::inRange(0, 4) == 0;
    return key;
}

}  // namespace

TEST(HvQuatCurve_keys, OutOfRangeReadsDefaults)
{
    HvQuatCurve curve = CurveOf({1, 2});
    curve.SetValueWhenNoKeys(Angles(0.1, 0.2, 0.3));
    for (unsigned int i : {2u, kNoKey}) {
        EXPECT_EQ(curve.GetKey(i), HvQuatKey());
        EXPECT_EQ(curve.GetKeyValue(i), Angles(0.1, 0.2, 0.3));
        EXPECT_DOUBLE_EQ(curve.GetKeyValue(i, 1), 0.2 / kDegree);
        EXPECT_EQ(curve.GetKeyTime(i), 0);
        EXPECT_EQ(curve.GetKeyExtent(i, 0).state, 1);
        EXPECT_EQ(curve.GetKeyExtent(i, 0).min.x, 0);
        EXPECT_EQ(curve.SetKeyValue(i, Angles()), 0);
        EXPECT_EQ(curve.SetKeyValue(i, 0, 1), 0);
        EXPECT_EQ(curve.SetParameter(i, 5), 0);
        EXPECT_EQ(curve.SetKey(i, HvQuatKey(5, {}, 0, 0, 0, 0)), 0);
        EXPECT_EQ(curve.RemoveKeyAt(i), 0);
        EXPECT_EQ(curve.RemoveKeyRange(0, i), 0);
    }
    EXPECT_EQ(curve.GetNumKeys(), 2u);
}

TEST(HvQuatCurve_keys, ComponentsAreDegrees)
{
    HvQuatCurve curve;
    curve.SetKey(0, Angles(kPi, kPi / 2, -kPi / 4), 0);
    EXPECT_DOUBLE_EQ(curve.GetKeyValue(0, 0), 180);
    EXPECT_DOUBLE_EQ(curve.GetKeyValue(0, 1), 90);
    EXPECT_DOUBLE_EQ(curve.GetKeyValue(0, 2), -45);
    EXPECT_DOUBLE_EQ(curve.GetKeyValue(0, 3), -45);
    EXPECT_EQ(curve.SetKeyValue(0, 1, 720), 1);
    EXPECT_DOUBLE_EQ(curve.GetKeyValue(0).y, 4 * kPi);
    Angles const before = curve.GetKeyValue(0);
    EXPECT_EQ(curve.SetKeyValue(0, 3, 1), 1);
    EXPECT_EQ(curve.GetKeyValue(0), before);
}

TEST(HvQuatCurve_keys, ExtentReachesTwoKeysAndAWholeTurn)
{
    HvQuatCurve curve;
    double const degrees[] = {10, -20, 30, 700, 50, -900};
    for (int i = 0; i < 6; ++i) {
        curve.SetKey(i * 2, Angles(0, degrees[i] * kDegree, 0), 0);
    }
    struct {
        unsigned int i;
        double fromTime, toTime, low, high;
    } const cases[] = {{0, 0, 4, -20 - 360, 30 + 360},    {1, 0, 6, -20 - 360, 700 + 360},
                       {2, 0, 8, -20 - 360, 700 + 360},   {3, 2, 10, -900 - 360, 700 + 360},
                       {4, 4, 10, -900 - 360, 700 + 360}, {5, 6, 10, -900 - 360, 700 + 360}};
    for (auto const& c : cases) {
        HvExtent2<double> const extent = curve.GetKeyExtent(c.i, 1);
        EXPECT_EQ(extent.state, 0);
        EXPECT_EQ(extent.min.x, c.fromTime) << c.i;
        EXPECT_EQ(extent.max.x, c.toTime) << c.i;
        EXPECT_NEAR(extent.min.y, c.low, 1e-12) << c.i;
        EXPECT_NEAR(extent.max.y, c.high, 1e-12) << c.i;
    }
    HvQuatCurve one;
    one.SetKey(3, Angles(), 0);
    EXPECT_EQ(one.GetKeyExtent(0, 2).min, HvPoint2<double>(3, -360));
    EXPECT_EQ(one.GetKeyExtent(0, 2).max, HvPoint2<double>(3, 360));
}

TEST(HvQuatCurve_keys, FindsTheNearestAndTheEarlierOfTwo)
{
    HvQuatCurve const curve = CurveOf({0, 1, 2, 4});
    struct {
        double t, tolerance;
        unsigned int index;
    } const cases[] = {{1, 0, 1},
                       {1.25, 0.25, 1},
                       {1.25, 0.2, kNoKey},
                       {1.5, 0.5, 1},
                       {1.6, 0.5, 2},
                       {3, 1, 2},
                       {3, 100, 2},
                       {-5, 5, 0},
                       {-5, 4.9, kNoKey},
                       {9, 5, 3},
                       {9, kInfinity, 3},
                       {1.2, kNaN, 1},
                       {1, -1, kNoKey},
                       {kNaN, 1, kNoKey},
                       {kInfinity, 1, kNoKey},
                       {kInfinity, kInfinity, kNoKey},
                       {-kInfinity, kInfinity, kNoKey}};
    for (auto const& c : cases) {
        EXPECT_EQ(curve.FindKey(c.t, c.tolerance), c.index) << c.t << " " << c.tolerance;
    }
    EXPECT_EQ(HvQuatCurve().FindKey(0, 1), kNoKey);
    // Distances of 2e16 and 2e16 + 2 are the same number.
    EXPECT_EQ(CurveOf({-1e16 - 2, -1e16}).FindKey(1e16, kInfinity), 0u);
    EXPECT_EQ(CurveOf({-1e16 - 2, -1e16}).FindKey(-1e16, kInfinity), 1u);
}

TEST(HvQuatCurve_keys, NeighboursLieBeyondTheTolerance)
{
    HvQuatCurve const curve = CurveOf({0, 1, 2});
    EXPECT_EQ(curve.GetPrevKey(1, 0), 0u);
    EXPECT_EQ(curve.GetPrevKey(1.5, 0.5), 0u);
    EXPECT_EQ(curve.GetPrevKey(1.5, 0.25), 1u);
    EXPECT_EQ(curve.GetPrevKey(0, 0), kNoKey);
    EXPECT_EQ(curve.GetPrevKey(99, 0), 2u);
    EXPECT_EQ(curve.GetNextKey(1, 0), 2u);
    EXPECT_EQ(curve.GetNextKey(0.5, 0.5), 2u);
    EXPECT_EQ(curve.GetNextKey(0.5, 0.25), 1u);
    EXPECT_EQ(curve.GetNextKey(2, 0), kNoKey);
    EXPECT_EQ(curve.GetNextKey(-99, 0), 0u);
    EXPECT_EQ(curve.GetPrevKey(kNaN, 0), kNoKey);
    EXPECT_EQ(curve.GetNextKey(kNaN, 0), kNoKey);
    EXPECT_EQ(HvQuatCurve().GetPrevKey(1, 0), kNoKey);
    EXPECT_EQ(HvQuatCurve().GetNextKey(1, 0), kNoKey);
}

TEST(HvQuatCurve_keys, AnglesReplaceThoseOfTheKeyFoundAndNothingElse)
{
    HvQuatCurve curve;
    EXPECT_EQ(curve.SetKey(HvQuatKey(5, {1, 2, 3}, 0.5f, 0.25f, 0.75f, 2), 0), 0u);
    EXPECT_EQ(curve.SetKey(5.1, Angles(4, 5, 6), 0.2), 0u);
    EXPECT_EQ(curve.GetKey(0), HvQuatKey(5, {4, 5, 6}, 0.5f, 0.25f, 0.75f, 2));
    EXPECT_EQ(curve.SetKey(5.1, Angles(7, 8, 9), 0.05), 1u);
    EXPECT_EQ(curve.GetKey(1), HvQuatKey(5.1, {7, 8, 9}, 0, 0, 0, 0));
    EXPECT_EQ(curve.SetKey(-1, Angles(), 0), 0u);
    EXPECT_EQ(curve.GetNumKeys(), 3u);
}

TEST(HvQuatCurve_keys, LockedValueStaysUnlessTheWholeKeyIsSet)
{
    HvQuatCurve curve = CurveOf({0, 1, 2});
    curve.SetValueLock(1, 1);
    curve.Eval(0.5);
    Angles const before = curve.GetKeyValue(1);
    EXPECT_EQ(curve.SetKey(1, Angles(9, 9, 9), 0), 1u);
    EXPECT_EQ(curve.SetKey(1, 0, 99, 0), 1u);
    EXPECT_EQ(curve.SetKeyValue(1, Angles(9, 9, 9)), 1);
    EXPECT_EQ(curve.SetKeyValue(1, 2, 99), 1);
    EXPECT_EQ(curve.GetKeyValue(1), before);
    EXPECT_FALSE(WasStale(curve));
    EXPECT_EQ(curve.SetKey(HvQuatKey(1.1, {1, 1, 1}, 1, 1, 1, 1), 0.2), 1u);
    EXPECT_EQ(curve.GetKey(1), HvQuatKey(1.1, {1, 1, 1}, 1, 1, 1, 1));
    EXPECT_EQ(curve.IsValueLocked(1), 0);
}

TEST(HvQuatCurve_keys, WholeKeyByIndexMustStayBetweenItsNeighbours)
{
    HvQuatCurve curve = CurveOf({0, 1, 2});
    std::vector<HvQuatKey> const before = KeysOf(curve);
    for (double t : {0.0, 2.0, -1.0, 3.0, kNaN, kInfinity}) {
        EXPECT_EQ(curve.SetKey(1u, HvQuatKey(t, {}, 0, 0, 0, 0)), 0) << t;
    }
    EXPECT_EQ(curve.SetKey(0u, HvQuatKey(1, {}, 0, 0, 0, 0)), 0);
    EXPECT_EQ(curve.SetKey(0u, HvQuatKey(-kInfinity, {}, 0, 0, 0, 0)), 0);
    EXPECT_EQ(curve.SetKey(2u, HvQuatKey(1, {}, 0, 0, 0, 0)), 0);
    EXPECT_EQ(curve.SetKey(2u, HvQuatKey(kInfinity, {}, 0, 0, 0, 0)), 0);
    EXPECT_EQ(KeysOf(curve), before);
    EXPECT_EQ(curve.SetKey(1u, HvQuatKey(1.9, {3, 2, 1}, 1, 0, 0, -2)), 1);
    EXPECT_EQ(curve.GetKey(1), HvQuatKey(1.9, {3, 2, 1}, 1, 0, 0, -2));
    EXPECT_EQ(curve.SetKey(0u, HvQuatKey(-9, {}, 0, 0, 0, 0)), 1);
    EXPECT_EQ(curve.SetKey(2u, HvQuatKey(99, {}, 0, 0, 0, 0)), 1);
    EXPECT_EQ(curve.IsValid(), 1);
}

TEST(HvQuatCurve_keys, ComponentAtATimeTakesTheOthersFromTheCurve)
{
    HvQuatCurve curve = CurveOf({0, 1, 2, 3, 4, 5, 6});
    HvQuatCurve evaluated(curve);
    Angles expected = evaluated.Eval(2.5);
    expected.y = 30 * kDegree;
    EXPECT_EQ(curve.SetKey(2.5, 1, 30, 0), 3u);
    EXPECT_LT(Distance(curve.GetKeyValue(3), expected), 1e-14);
    EXPECT_DOUBLE_EQ(curve.GetKeyValue(3, 1), 30);
    // Component 3 replaces none.
    HvQuatCurve plain = evaluated;
    EXPECT_EQ(plain.SetKey(4.5, 3, 30, 0), 5u);
    EXPECT_LT(Distance(plain.GetKeyValue(5), evaluated.Eval(4.5)), 1e-14);
    // The first key starts from the value when no keys.
    HvQuatCurve empty;
    empty.SetValueWhenNoKeys(Angles(1, 2, 3));
    EXPECT_EQ(empty.SetKey(7, 0, 90, 0), 0u);
    EXPECT_EQ(empty.GetKeyValue(0), Angles(90 * 0.017453292519943295, 2, 3));
}

// Without a spline the segments beside the time serve; with one it does.
RC_GTEST_PROP(HvQuatCurve_keys, ComponentAtATimeIsTheSameWithAndWithoutASpline, ())
{
    HvQuatCurve curve;
    for (HvQuatKey const& key : AnyKeys(2, 12)) {
        curve.SetKey(key, 0);
    }
    curve.SetRotOrder(kAllOrders[*rc::gen::inRange(0, 6)]);
    curve.SetExtrapolationMethod(*rc::gen::inRange(1u, 5u));
    double const first = curve.GetKeyTime(0);
    double const span = curve.GetKeyTime(curve.GetNumKeys() - 1) - first;
    double t = first + span * PickInRange(-30, 131) / 100;
    if (PickInRange(0, 4) == 0) {
        t = curve.GetKeyTime(PickInRange(0u, curve.GetNumKeys()));
    }
    HvQuatCurve with(curve);
    Angles const value = with.Eval(t);
    HvQuatCurve without(curve);
    unsigned int const i = with.SetKey(t, 3, 0, 0);
    RC_ASSERT(without.SetKey(t, 3, 0, 0) == i);
    RC_ASSERT(with.GetKeyValue(i) == value);
    RC_ASSERT(Distance(without.GetKeyValue(i), value) < 1e-8);
    RC_ASSERT(RotationDifference(HvQuat(without.GetKeyValue(i), without.GetRotOrder()),
                                 HvQuat(value, with.GetRotOrder())) < 1e-12L);
}

TEST(HvQuatCurve_keys, ComponentAtATimeBeyondTheKeysFollowsTheExtrapolation)
{
    for (unsigned int method : {1u, 2u, 3u, 4u}) {
        for (double t : {-4.5, 9.25}) {
            HvQuatCurve curve = CurveOf({0, 1, 2, 3, 4, 5, 6});
            curve.SetExtrapolationMethod(method);
            Angles const expected = HvQuatCurve(curve).Eval(t);
            unsigned int const i = curve.SetKey(t, 3, 0, 0);
            EXPECT_LT(Distance(curve.GetKeyValue(i), expected), 1e-8) << method << " " << t;
        }
    }
}

TEST(HvQuatCurve_keys, ComponentAtATimeTakesTheOthersAlsoInDisorder)
{
    HvQuatCurve curve = CurveOf({0, 1, 2, 3, 4, 5, 6});
    curve.SetParameter(1, 4.75);
    Angles const expected = HvQuatCurve(curve).Eval(3.5);
    unsigned int const i = curve.SetKey(3.5, 3, 0, 0);
    EXPECT_EQ(curve.GetKeyTime(i), 3.5);
    EXPECT_EQ(curve.GetKeyValue(i), expected);
}

TEST(HvQuatCurve_keys, ParametersMayBeSetToDisorder)
{
    HvQuatCurve curve = CurveOf({0, 1, 2});
    curve.SetParamLock(1, 1);
    EXPECT_EQ(curve.SetParameter(1, 7), 1);
    EXPECT_EQ(curve.GetKeyTime(1), 7);
    EXPECT_EQ(curve.IsValid(), 0);
    EXPECT_EQ(curve.SetParameter(1, 2), 1);
    EXPECT_EQ(curve.IsValid(), 0);
    EXPECT_EQ(curve.SetParameter(1, 1.5), 1);
    EXPECT_EQ(curve.IsValid(), 1);
    for (double t : {kNaN, kInfinity, -kInfinity}) {
        EXPECT_EQ(curve.SetParameter(1, t), 0);
        EXPECT_EQ(curve.GetKeyTime(1), 1.5);
    }
}

TEST(HvQuatCurve_keys, ShiftAndScaleMoveWhatIsNotLocked)
{
    HvQuatCurve curve = CurveOf({1, 2, 4});
    curve.SetParamLock(1, 1);
    EXPECT_EQ(curve.Shift(0.5), 1);
    EXPECT_EQ(curve.GetKeyTime(0), 1.5);
    EXPECT_EQ(curve.GetKeyTime(1), 2);
    EXPECT_EQ(curve.GetKeyTime(2), 4.5);
    EXPECT_EQ(curve.Scale(2), 1);
    EXPECT_EQ(curve.GetKeyTime(0), 3);
    EXPECT_EQ(curve.GetKeyTime(1), 2);
    EXPECT_EQ(curve.GetKeyTime(2), 9);
    EXPECT_EQ(curve.IsValid(), 0);
    EXPECT_EQ(curve.Shift(-2), 1);
    EXPECT_EQ(curve.IsValid(), 1);
    EXPECT_EQ(HvQuatCurve().Shift(1), 1);
    EXPECT_EQ(HvQuatCurve().Scale(1), 1);
}

TEST(HvQuatCurve_keys, ShiftAndScaleRefuseWhatWouldNotBeFinite)
{
    HvQuatCurve curve = CurveOf({1, 2, 4});
    curve.Eval(1.5);
    std::vector<HvQuatKey> const before = KeysOf(curve);
    for (double factor : {1e-13, 9.9e-13, 0.0, -1.0, kNaN, kInfinity, 1e308}) {
        EXPECT_EQ(curve.Scale(factor), 0) << factor;
    }
    for (double delta : {kNaN, kInfinity, -kInfinity}) {
        EXPECT_EQ(curve.Shift(delta), 0) << delta;
    }
    EXPECT_EQ(KeysOf(curve), before);
    EXPECT_FALSE(WasStale(curve));
    EXPECT_EQ(curve.Scale(1e-12), 1);
    EXPECT_EQ(curve.GetKeyTime(2), 4e-12);
}

TEST(HvQuatCurve_keys, TimesThatAreNotFiniteAreNotInserted)
{
    HvQuatCurve curve = CurveOf({0, 1});
    for (double t : {kNaN, kInfinity, -kInfinity}) {
        EXPECT_EQ(curve.SetKey(t, Angles(), 0), kNoKey);
        EXPECT_EQ(curve.SetKey(t, Angles(), kInfinity), kNoKey);
        EXPECT_EQ(curve.SetKey(HvQuatKey(t, {}, 0, 0, 0, 0), 1), kNoKey);
        EXPECT_EQ(curve.SetKey(t, 1, 5, 0), kNoKey);
    }
    EXPECT_EQ(curve.GetNumKeys(), 2u);
}

TEST(HvQuatCurve_keys, RemovesByIndexTimeAndRange)
{
    HvQuatCurve curve = CurveOf({0, 1, 2, 3, 4, 5});
    EXPECT_EQ(curve.RemoveKeyAt(0), 1);
    EXPECT_EQ(curve.GetKeyTime(0), 1);
    EXPECT_EQ(curve.RemoveKey(2.1, 0.05), 0);
    EXPECT_EQ(curve.RemoveKey(2.1, 0.2), 1);
    EXPECT_EQ(curve.GetKeyTime(1), 3);
    EXPECT_EQ(curve.RemoveKeyRange(2, 1), 0);
    EXPECT_EQ(curve.RemoveKeyRange(1, 4), 0);
    EXPECT_EQ(curve.RemoveKeyRange(1, 2), 1);
    EXPECT_EQ(curve.GetNumKeys(), 2u);
    EXPECT_EQ(curve.GetKeyTime(1), 5);
    EXPECT_EQ(curve.RemoveAllKeys(), 1);
    EXPECT_EQ(curve.GetNumKeys(), 0u);
    EXPECT_EQ(curve.RemoveAllKeys(), 1);
    EXPECT_EQ(curve.RemoveKeyRange(0, 0), 0);
    // Without keys there is no disorder.
    HvQuatCurve disorder = CurveOf({0, 1, 2});
    disorder.SetParameter(0, 5);
    EXPECT_EQ(disorder.IsValid(), 0);
    EXPECT_EQ(disorder.RemoveAllKeys(), 1);
    EXPECT_EQ(disorder.IsValid(), 1);
}

TEST(HvQuatCurve_keys, OnesThatWereRemovedAreNotReadAgain)
{
    HvQuatCurve curve = CurveOf({1, 2, 3, 4, 5, 6});
    curve.SetSelected(1);
    curve.SetKeySelected(4, 1);
    curve.SetConstraintData(4, 6);
    curve.SetKeySelected(5, 1);
    curve.SetConstraintData(5, 6);
    EXPECT_EQ(curve.RemoveKeyRange(4, 5), 1);
    EXPECT_EQ(curve.GetKeyTime(4), 0);
    EXPECT_EQ(curve.IsKeySelected(4), 0);
    EXPECT_EQ(curve.GetConstraintData(4), 0);
    EXPECT_EQ(curve.GetKey(4), HvQuatKey());
    HvQuatKey const rising[] = {curve.GetKey(3), HvQuatKey(5, {}, 0, 0, 0, 0)};
    EXPECT_EQ(curve.ReplaceKeys(3, rising, 2), 0);
    EXPECT_EQ(curve.GetNumKeys(), 4u);
}

RC_GTEST_PROP(HvQuatCurve_keys, SearchesFollowTheirWalks, ())
{
    HvQuatCurve curve;
    PlainKeys plain;
    bool const rises = PickInRange(0, 2) == 1;
    // Whole numbers far off, whose distances round to the same.
    double const scale = PickInRange(0, 3) == 0 ? 2e15 : 0.5;
    for (int i = PickInRange(0, 12); i > 0; --i) {
        double const t = PickInRange(-8, 9) * scale + PickInRange(0, 3);
        curve.SetKey(t, Angles(), 0);
    }
    for (unsigned int i = 0; !rises && i < curve.GetNumKeys(); i += 2) {
        curve.SetParameter(i, PickInRange(-8, 9) * 0.5);
    }
    plain.keys = KeysOf(curve);
    RC_ASSERT(curve.IsValid() == (plain.Rises() ? 1 : 0));
    for (int k = 0; k < 40; ++k) {
        double const t =
            PickInRange(0, 4) == 0 ? PickInRange(-8, 9) * scale : PickInRange(-40, 41) * 0.125;
        double const tolerances[] = {0, 0.25, 0.5, 3, -0.5, 1e17, kInfinity, kNaN};
        double const tolerance = tolerances[PickInRange(0, 8)];
        RC_ASSERT(curve.FindKey(t, tolerance) == plain.Find(t, tolerance));
        RC_ASSERT(curve.GetPrevKey(t, tolerance) == plain.Previous(t, tolerance));
        RC_ASSERT(curve.GetNextKey(t, tolerance) == plain.Next(t, tolerance));
    }
}

RC_GTEST_PROP(HvQuatCurve_keys, EditsFollowAPlainRowOfKeys, ())
{
    HvQuatCurve curve;
    PlainKeys plain;
    for (int step = 0; step < 60; ++step) {
        double const t = PickInRange(-20, 21) * 0.25;
        double const tolerance = PickInRange(-1, 4) * 0.2;
        unsigned int const i = PickInRange(0u, curve.GetNumKeys() + 2);
        bool const inRange = i < plain.keys.size();
        unsigned int const found = plain.Find(t, tolerance);
        switch (PickInRange(0, 9)) {
        case 0: {
            Angles const angles = *AnyPoint3();
            unsigned int expected = found;
            if (found == kNoKey) {
                expected = plain.Insert(HvQuatKey(t, angles, 0, 0, 0, 0));
            } else if (!plain.keys[found].valueLocked) {
                plain.keys[found].angles = angles;
            }
            RC_ASSERT(curve.SetKey(t, angles, tolerance) == expected);
            break;
        }
        case 1: {
            HvQuatKey const key = AnyKey(t);
            unsigned int expected = found;
            if (found == kNoKey) {
                expected = plain.Insert(key);
            } else {
                plain.keys[found] = key;
            }
            RC_ASSERT(curve.SetKey(key, tolerance) == expected);
            break;
        }
        case 2: {
            HvQuatKey const key = AnyKey(t);
            bool const fits = inRange && (i == 0 || plain.keys[i - 1].time < t) &&
                              (i + 1 >= plain.keys.size() || plain.keys[i + 1].time > t);
            if (fits) {
                plain.keys[i] = key;
            }
            RC_ASSERT(curve.SetKey(i, key) == (fits ? 1 : 0));
            break;
        }
        case 3:
            if (inRange) {
                plain.keys[i].time = t;
            }
            RC_ASSERT(curve.SetParameter(i, t) == (inRange ? 1 : 0));
            break;
        case 4: {
            Angles const angles = *AnyPoint3();
            if (inRange && !plain.keys[i].valueLocked) {
                plain.keys[i].angles = angles;
            }
            RC_ASSERT(curve.SetKeyValue(i, angles) == (inRange ? 1 : 0));
            break;
        }
        case 5:
            for (HvQuatKey& key : plain.keys) {
                key.time += key.parameterLocked ? 0 : tolerance;
            }
            RC_ASSERT(curve.Shift(tolerance) == 1);
            break;
        case 6:
            for (HvQuatKey& key : plain.keys) {
                key.time *= key.parameterLocked ? 1 : 1.25;
            }
            RC_ASSERT(curve.Scale(1.25) == 1);
            break;
        case 7:
            if (found != kNoKey) {
                plain.keys.erase(plain.keys.begin() + found);
            }
            RC_ASSERT(curve.RemoveKey(t, tolerance) == (found != kNoKey ? 1 : 0));
            break;
        default: {
            unsigned int const last = i + PickInRange(0u, 3u);
            bool const fits = last < plain.keys.size();
            if (fits) {
                plain.keys.erase(plain.keys.begin() + i, plain.keys.begin() + last + 1);
            }
            RC_ASSERT(curve.RemoveKeyRange(i, last) == (fits ? 1 : 0));
        }
        }
        RC_ASSERT(KeysOf(curve) == plain.keys);
        RC_ASSERT(curve.IsValid() == (plain.Rises() ? 1 : 0));
    }
}

TEST(HvQuatCurve_keys, HostileNumbersComeToAnEnd)
{
    for (double a : kHostileNumbers) {
        for (double b : kHostileNumbers) {
            HvQuatCurve curve = CurveOf({0, 1, 2});
            curve.SetKey(a, Angles(a, b, 1), b);
            curve.SetKey(b, 1, a, a);
            curve.SetKey(HvQuatKey(b, {a, a, a}, 1, 1, 1, 5), a);
            curve.SetKeyValue(1, 2, a);
            curve.SetValueWhenNoKeys(0, a);
            curve.SetParameter(1, a);
            curve.Shift(b);
            curve.Scale(a);
            curve.Eval(b);
            curve.GetKeyExtent(1, 1);
            curve.GetPrevKey(a, b);
            curve.GetNextKey(a, b);
            curve.RemoveKey(a, b);
            for (HvQuatKey const& key : KeysOf(curve)) {
                EXPECT_TRUE(std::isfinite(key.time)) << a << " " << b;
            }
        }
    }
}

TEST(HvQuatCurve_keys, AreReplacedAllAtOnceInTheOrderInWhichTheyStand)
{
    HvQuatCurve curve = CurveOf({0, 1, 2});
    curve.SetValueLock(1, 1);
    HvQuatKey const keys[] = {HvQuatKey(5, {1, 2, 3}, 0.5f, 0, 0, 2), HvQuatKey(4, {}, 0, 0, 0, 0)};
    curve.Eval(1);
    EXPECT_EQ(curve.SetKeys(keys, 2), 1);
    EXPECT_EQ(KeysOf(curve), (std::vector<HvQuatKey>{keys[0], keys[1]}));
    EXPECT_EQ(curve.IsValid(), 0);
    EXPECT_TRUE(WasStale(curve));
    EXPECT_EQ(curve.SetKeys(keys, 1), 1);
    EXPECT_EQ(curve.IsValid(), 1);
    HvQuatKey const bad[] = {keys[0], HvQuatKey(INFINITY, {}, 0, 0, 0, 0)};
    EXPECT_EQ(curve.SetKeys(bad, 2), 0);
    EXPECT_EQ(curve.GetNumKeys(), 1u);
    EXPECT_EQ(curve.SetKeys(nullptr, 0), 1);
    EXPECT_EQ(curve.GetNumKeys(), 0u);
}

TEST(HvQuatCurve_keys, OfARangeAreReplaced)
{
    auto const at = [](double t) { return HvQuatKey(t, {t, 2 * t, 3 * t}, 0.5f, 0, 0, 1); };
    auto const times = [](HvQuatCurve const& curve) {
        std::vector<double> all;
        for (unsigned int i = 0; i < curve.GetNumKeys(); ++i) {
            all.push_back(curve.GetKeyTime(i));
        }
        return all;
    };
    HvQuatCurve curve;
    for (double const t : {1, 2, 3, 4}) {
        curve.SetKey(t, HvPoint3<double>(), 0.0);
    }
    curve.SetValueLock(1, 1);
    curve.Eval(2.5);
    HvQuatKey const middle[] = {at(1.5), at(3.5)};
    EXPECT_EQ(curve.ReplaceKeys(1, middle, 2), 1);
    EXPECT_EQ(times(curve), (std::vector<double>{1, 1.5, 3.5, 4}));
    EXPECT_EQ(curve.GetKey(1), middle[0]);
    EXPECT_TRUE(WasStale(curve)) << "the spline of before";
    double const inf = std::numeric_limits<double>::infinity();
    HvQuatKey const refused[][2] = {{at(1), at(2)},    {at(0.5), at(2)},       {at(2), at(4)},
                                    {at(3), at(3)},    {at(3), at(2)},         {at(2), at(inf)},
                                    {at(-inf), at(2)}, {at(2), at(-inf + inf)}};
    for (auto const& keys : refused) {
        EXPECT_EQ(curve.ReplaceKeys(1, keys, 2), 0) << keys[0].time << " " << keys[1].time;
    }
    HvQuatKey const ends[] = {at(-inf), at(inf)};
    EXPECT_EQ(curve.ReplaceKeys(0, ends, 1), 0);
    EXPECT_EQ(curve.ReplaceKeys(3, ends + 1, 1), 0);
    HvQuatKey const far[] = {at(-7), at(7)};
    EXPECT_EQ(curve.ReplaceKeys(3, far, 2), 0) << "too few";
    EXPECT_EQ(curve.ReplaceKeys(5, far, 0), 0);
    EXPECT_EQ(times(curve), (std::vector<double>{1, 1.5, 3.5, 4}));
    EXPECT_EQ(curve.ReplaceKeys(0, far, 1), 1);
    EXPECT_EQ(curve.ReplaceKeys(3, far + 1, 1), 1);
    EXPECT_EQ(curve.ReplaceKeys(4, far, 0), 1) << "nothing";
    EXPECT_EQ(times(curve), (std::vector<double>{-7, 1.5, 3.5, 7}));
    // All of a curve in disorder, which is in order then.
    curve.SetParameter(0, 5);
    HvQuatKey const all[] = {at(1), at(2), at(3), at(4)};
    EXPECT_EQ(curve.ReplaceKeys(0, all, 4), 1);
    EXPECT_EQ(curve.IsValid(), 1);
    EXPECT_EQ(curve.FindKey(2, 0), 1u);
}
