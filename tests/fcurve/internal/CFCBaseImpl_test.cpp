// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Lookup and folding, against linear searches.

#include <hv/fcurve/internal/CFCSingleValueImpl.h>
#include <hv/platform/thread_local_slots.h>
#include <tests/support/generators.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

void Fill(CFCIntegerImpl& impl, std::vector<double> const& parameters)
{
    for (double const p : parameters) {
        impl.InsertKey(impl.NumKeys(),
                       CFCSingleValueKey<int>{p, static_cast<int>(impl.NumKeys()), 0}, 0);
    }
}

std::vector<double> Counting(unsigned int n)
{
    std::vector<double> parameters;
    for (unsigned int i = 0; i < n; ++i) {
        parameters.push_back(i);
    }
    return parameters;
}

void SetHint(CFCIntegerImpl const& impl, unsigned int hint)
{
    XQTlsSetValue(impl.hintSlot, reinterpret_cast<void*>(static_cast<std::uintptr_t>(hint)));
}

unsigned int Hint(CFCIntegerImpl const& impl)
{
    return static_cast<unsigned int>(
        reinterpret_cast<std::uintptr_t>(XQTlsGetValue(impl.hintSlot)));
}

struct Found {
    unsigned int count;
    int exact;
    bool operator==(Found const& other) const
    {
        return count == other.count && exact == other.exact;
    }
};

Found Locate(CFCIntegerImpl const& impl, double p)
{
    Found found{};
    found.count = impl.LocateParameter(p, found.exact);
    return found;
}

Found LocateByWalk(CFCIntegerImpl const& impl, double p)
{
    Found found{0, 0};
    while (found.count < impl.NumKeys() && impl.Parameter(found.count) <= p) {
        ++found.count;
    }
    found.exact = found.count != 0 && impl.Parameter(found.count - 1) == p ? 1 : 0;
    return found;
}

/// Rising parameters with steps of 1 to 4, so that parameters on, beside and between keys are
/// frequent.
std::vector<double> PickParameters(unsigned int most)
{
    std::vector<double> parameters;
    double p = PickInRange(-50, 50);
    unsigned int const n = PickInRange(1u, most);
    for (unsigned int i = 0; i < n; ++i) {
        parameters.push_back(p);
        p += PickInRange(1, 5);
    }
    return parameters;
}

double PickNear(std::vector<double> const& parameters)
{
    double const low = parameters.front() - 3;
    double const high = parameters.back() + 3;
    return low + PickInRange(0, static_cast<int>(2 * (high - low)) + 1) * 0.5;
}

TEST(CFCBaseImpl, LocatesAroundASingleKey)
{
    CFCIntegerImpl impl(0);
    Fill(impl, {5});
    EXPECT_TRUE(Locate(impl, 5) == (Found{1, 1}));
    EXPECT_TRUE(Locate(impl, 4) == (Found{0, 0}));
    EXPECT_TRUE(Locate(impl, 6) == (Found{1, 0}));
}

TEST(CFCBaseImpl, MovesItsHintAlongASequence)
{
    CFCIntegerImpl impl(0);
    Fill(impl, Counting(20));
    EXPECT_TRUE(Locate(impl, 7.5) == (Found{8, 0}));
    EXPECT_EQ(Hint(impl), 7u);
    EXPECT_TRUE(Locate(impl, 8.5) == (Found{9, 0}));
    EXPECT_EQ(Hint(impl), 8u);
    SetHint(impl, 19);
    EXPECT_TRUE(Locate(impl, 8.5) == (Found{9, 0}));
    EXPECT_EQ(Hint(impl), 8u);
}

TEST(CFCBaseImpl, LeavesTheHintOnTheKeyBeforeTheParameter)
{
    CFCIntegerImpl impl(0);
    Fill(impl, Counting(30));
    for (unsigned int hint = 0; hint < 32; ++hint) {
        for (double p = -0.5; p < 31; p += 0.5) {
            SetHint(impl, hint);
            Found const found = Locate(impl, p);
            EXPECT_EQ(Hint(impl), found.count == 0 ? 0 : found.count - 1) << hint << " " << p;
        }
    }
}

TEST(CFCBaseImpl, LocatesLikeALinearSearchWhateverTheHint)
{
    EXPECT_TRUE(rc::check([] {
        CFCIntegerImpl impl(0);
        std::vector<double> const parameters = PickParameters(40);
        Fill(impl, parameters);
        for (int i = 0; i < 40; ++i) {
            if (PickInRange(0, 2) == 0) {
                SetHint(impl, PickInRange(0u, 50u));
            }
            double const p = PickNear(parameters);
            RC_ASSERT(Locate(impl, p) == LocateByWalk(impl, p));
        }
    }));
}

TEST(CFCBaseImpl, LocatesInEveryWindowOnBothSidesOfItsThreshold)
{
    for (unsigned int n = 1; n <= 16; ++n) {
        CFCIntegerImpl impl(0);
        Fill(impl, Counting(n));
        for (unsigned int hint = 0; hint <= n; ++hint) {
            for (double p = -1; p <= n; p += 0.25) {
                SetHint(impl, hint);
                EXPECT_TRUE(Locate(impl, p) == LocateByWalk(impl, p))
                    << n << " keys, hint " << hint << ", parameter " << p;
            }
        }
    }
}

TEST(CFCBaseImpl, LocatesHostileParametersInBounds)
{
    CFCIntegerImpl impl(0);
    Fill(impl, Counting(13));
    EXPECT_TRUE(Locate(impl, kNaN) == (Found{0, 0}));
    EXPECT_TRUE(Locate(impl, kInfinity) == (Found{13, 0}));
    EXPECT_TRUE(Locate(impl, -kInfinity) == (Found{0, 0}));
    SetHint(impl, std::numeric_limits<unsigned int>::max());
    EXPECT_TRUE(Locate(impl, 5.5) == (Found{6, 0}));
}

TEST(CFCBaseImpl, StaysInBoundsWhenTheOrderIsBroken)
{
    EXPECT_TRUE(rc::check([] {
        CFCIntegerImpl impl(0);
        std::vector<double> parameters;
        unsigned int const n = PickInRange(1u, 20u);
        for (unsigned int i = 0; i < n; ++i) {
            int const pick = PickInRange(-6, 6);
            parameters.push_back(pick == -6 ? kNaN : pick == 5 ? kInfinity : pick);
        }
        Fill(impl, parameters);
        for (int i = 0; i < 20; ++i) {
            SetHint(impl, PickInRange(0u, 25u));
            double const p = PickInRange(-7, 7);
            Found const found = Locate(impl, p);
            RC_ASSERT(found.count <= n);
            RC_ASSERT(!found.exact || found.count != 0);
            unsigned int first = 0;
            unsigned int last = 0;
            if (impl.GetKeyIndicesInClosedInterval(p - 2, p + 2, first, last)) {
                RC_ASSERT(first <= last && last < n);
            }
            if (impl.GetKeyIndicesInInterval(p - 2, p + 2, first, last, 1, 1)) {
                RC_ASSERT(first <= last && last < n);
            }
            if (impl.FindKey(p, 3, first)) {
                RC_ASSERT(first < n);
            }
            RC_ASSERT(impl.GetNearestKeyIndex(p) < n);
        }
    }));
}

TEST(CFCBaseImpl, GivesTheLeftKeyHalfWayBetweenTwo)
{
    CFCIntegerImpl impl(0);
    Fill(impl, {0, 10});
    EXPECT_EQ(impl.GetNearestKeyIndex(5), 0u);
    EXPECT_EQ(impl.GetNearestKeyIndex(5.001), 1u);
    EXPECT_EQ(impl.GetNearestKeyIndex(4.999), 0u);
    EXPECT_EQ(impl.GetNearestKeyIndex(-9), 0u);
    EXPECT_EQ(impl.GetNearestKeyIndex(99), 1u);
    EXPECT_EQ(impl.GetNearestKeyIndex(10), 1u);
    EXPECT_EQ(impl.GetNearestKeyIndex(kNaN), 0u);
}

TEST(CFCBaseImpl, FindsTheKeysOfAClosedInterval)
{
    EXPECT_TRUE(rc::check([] {
        CFCIntegerImpl impl(0);
        std::vector<double> const parameters = PickParameters(20);
        Fill(impl, parameters);
        double const lo = PickNear(parameters);
        double const hi = lo + PickInRange(-4, 20) * 0.5;
        std::vector<unsigned int> inside;
        for (unsigned int i = 0; i < impl.NumKeys(); ++i) {
            if (lo <= impl.Parameter(i) && impl.Parameter(i) <= hi) {
                inside.push_back(i);
            }
        }
        unsigned int first = 77;
        unsigned int last = 88;
        int const found = impl.GetKeyIndicesInClosedInterval(lo, hi, first, last);
        RC_ASSERT(found == (inside.empty() ? 0 : 1));
        if (found) {
            RC_ASSERT(first == inside.front() && last == inside.back());
        } else {
            RC_ASSERT(last == 88u);
            RC_ASSERT(first == (lo > parameters.back() ? impl.NumKeys() : 77u));
        }
    }));
}

TEST(CFCBaseImpl, FindsTheKeysOfAnIntervalWithOpenEnds)
{
    EXPECT_TRUE(rc::check([] {
        CFCIntegerImpl impl(0);
        std::vector<double> const parameters = PickParameters(20);
        Fill(impl, parameters);
        double const lo = PickNear(parameters);
        double const hi = lo + PickInRange(-4, 20) * 0.5;
        int const openAtLo = PickInRange(0, 2);
        int const openAtHi = PickInRange(0, 2);
        std::vector<unsigned int> inside;
        for (unsigned int i = 0; i < impl.NumKeys(); ++i) {
            double const p = impl.Parameter(i);
            if ((openAtLo ? lo < p : lo <= p) && (openAtHi ? p < hi : p <= hi)) {
                inside.push_back(i);
            }
        }
        unsigned int first = 0;
        unsigned int last = 0;
        int const found = impl.GetKeyIndicesInInterval(lo, hi, first, last, openAtLo, openAtHi);
        // Where no key lies strictly between the ends, an open end at a key still counts as a run
        // of none.
        if (found) {
            RC_ASSERT(!inside.empty());
            RC_ASSERT(first == inside.front() && last == inside.back());
        } else {
            RC_ASSERT(inside.empty());
        }
    }));
}

TEST(CFCBaseImpl, FindsNothingInAnIntervalOfNaN)
{
    CFCIntegerImpl impl(0);
    Fill(impl, Counting(3));
    unsigned int first = 0;
    unsigned int last = 0;
    EXPECT_EQ(impl.GetKeyIndicesInClosedInterval(kNaN, 2, first, last), 0);
    EXPECT_EQ(impl.GetKeyIndicesInClosedInterval(0, kNaN, first, last), 0);
    EXPECT_EQ(impl.GetKeyIndicesInInterval(kNaN, 2, first, last, 0, 0), 0);
    EXPECT_EQ(impl.GetKeyIndicesInInterval(0, kNaN, first, last, 0, 0), 0);
    EXPECT_EQ(impl.FindKey(kNaN, 1, first), 0);
    EXPECT_EQ(impl.FindKey(1, kNaN, first), 0);
    EXPECT_EQ(impl.FindKey(kInfinity, kInfinity, first), 0);
}

TEST(CFCBaseImpl, FindsNothingBetweenTwoOpenEndsAtOneKey)
{
    CFCIntegerImpl impl(0);
    Fill(impl, {1, 2});
    unsigned int first = 7;
    unsigned int last = 7;
    EXPECT_EQ(impl.GetKeyIndicesInInterval(2, 2, first, last, 1, 1), 0);
    EXPECT_EQ(impl.GetKeyIndicesInInterval(2, 2, first, last, 1, 0), 0);
    EXPECT_EQ(impl.GetKeyIndicesInInterval(2, 2, first, last, 0, 1), 0);
    EXPECT_EQ(impl.GetKeyIndicesInInterval(2, 2, first, last, 0, 0), 1);
    EXPECT_EQ(first, 1u);
    EXPECT_EQ(last, 1u);
}

/// What FindKey is defined by: the walk over the closed interval.
int FindKeyByWalk(CFCIntegerImpl const& impl, double p, double tolerance, unsigned int& index)
{
    bool found = false;
    for (unsigned int i = 0; i < impl.NumKeys(); ++i) {
        double const key = impl.Parameter(i);
        if (p - tolerance <= key && key <= p + tolerance &&
            (!found || std::fabs(p - key) < std::fabs(p - impl.Parameter(index)))) {
            index = i;
            found = true;
        }
    }
    return found ? 1 : 0;
}

TEST(CFCBaseImpl, FindsTheKeyThatAWalkOverTheToleranceFinds)
{
    EXPECT_TRUE(rc::check([] {
        CFCIntegerImpl impl(0);
        std::vector<double> const parameters = PickParameters(20);
        Fill(impl, parameters);
        double const p = PickNear(parameters);
        double const tolerance = PickInRange(-2, 30) * 0.5;
        unsigned int expected = 99;
        unsigned int index = 99;
        RC_ASSERT(impl.FindKey(p, tolerance, index) == FindKeyByWalk(impl, p, tolerance, expected));
        RC_ASSERT(index == expected);
    }));
}

TEST(CFCBaseImpl, FindsTheEarliestOfKeysThatRoundToOneDistance)
{
    // From 2^60 on, whole numbers below 64 are all at distance 2^60.
    double const far = std::ldexp(1.0, 60);
    CFCIntegerImpl impl(0);
    Fill(impl, Counting(40));
    for (double const p : {far, -far}) {
        for (double const tolerance : {far, 2 * far, kInfinity}) {
            unsigned int expected = 99;
            unsigned int index = 98;
            EXPECT_EQ(impl.FindKey(p, tolerance, index), 1);
            EXPECT_EQ(FindKeyByWalk(impl, p, tolerance, expected), 1);
            EXPECT_EQ(index, expected);
            EXPECT_EQ(index, 0u);
        }
    }
}

TEST(CFCBaseImpl, FindsNoKeyWithoutKeys)
{
    CFCIntegerImpl const impl(0);
    unsigned int index = 5;
    EXPECT_EQ(impl.FindKey(0, kInfinity, index), 0);
    EXPECT_EQ(index, 5u);
    EXPECT_EQ(impl.HasConstraintInInterval(0x0002, true, -1, 1, 0, 0), 0);
}

TEST(CFCBaseImpl, AsksForAnyOrAllOfTheBits)
{
    CFCIntegerImpl impl(0);
    Fill(impl, Counting(4));
    impl.SetConstraintWord(1, CFCKeyConstraint::kValueLocked);
    impl.SetConstraintWord(2, CFCKeyConstraint::kParameterLocked);
    unsigned short const both = CFCIntegerImpl::kEveryLock;
    EXPECT_EQ(impl.HasConstraintInInterval(both, false, 0, 3, 0, 0), 1);
    EXPECT_EQ(impl.HasConstraintInInterval(both, true, 0, 3, 0, 0), 0);
    impl.SetConstraintWord(2, both);
    EXPECT_EQ(impl.HasConstraintInInterval(both, true, 0, 3, 0, 0), 1);
    EXPECT_EQ(impl.HasConstraintInInterval(both, true, 0, 2, 0, 1), 0);
    EXPECT_EQ(impl.HasConstraintInInterval(both, false, 1, 2, 1, 1), 0);
}

TEST(CFCBaseImpl, DropsKeysThatDoNotAscend)
{
    CFCIntegerImpl impl(0);
    Fill(impl, {1, 1, 3, 2, 3, 4, kNaN, 5});
    for (unsigned int i = 0; i < impl.NumKeys(); ++i) {
        impl.SetConstraintWord(i, static_cast<unsigned short>(i));
    }
    EXPECT_EQ(impl.HasAscendingParameters(), 0);
    impl.RepairOrder();
    EXPECT_EQ(impl.HasAscendingParameters(), 1);
    ASSERT_EQ(impl.NumKeys(), 4u);
    unsigned short const kept[] = {0, 2, 5, 7};
    for (unsigned int i = 0; i < 4; ++i) {
        EXPECT_EQ(impl.ConstraintWord(i), kept[i]);
        EXPECT_EQ(impl.keys[i].value, kept[i]);
    }
    impl.RepairOrder();
    EXPECT_EQ(impl.NumKeys(), 4u);
}

TEST(CFCBaseImpl, KeepsItsOwnHintWhenItIsCopiedOrAssigned)
{
    CFCIntegerImpl impl(3);
    Fill(impl, Counting(5));
    CFCIntegerImpl copy(impl);
    EXPECT_NE(copy.hintSlot, impl.hintSlot);
    unsigned int const slot = copy.hintSlot;
    copy = impl;
    EXPECT_EQ(copy.hintSlot, slot);
    CFCIntegerImpl other(7);
    other.Swap(copy);
    EXPECT_EQ(copy.hintSlot, slot);
    EXPECT_EQ(copy.valueWhenNoKeys, 7);
    EXPECT_EQ(other.NumKeys(), 5u);
}

TEST(CFCBaseImpl, FoldsOnlyWhenItCycles)
{
    CFCIntegerImpl impl(0);
    EXPECT_EQ(impl.FoldParameter(25), 25);
    Fill(impl, {0});
    impl.extrapolation = HvBaseFCurve::CycleExtrapolation;
    EXPECT_EQ(impl.FoldParameter(25), 25);
    Fill(impl, {10});
    EXPECT_EQ(impl.FoldParameter(25), 5);
    impl.extrapolation = HvBaseFCurve::ConstantExtrapolation;
    EXPECT_EQ(impl.FoldParameter(25), 25);
    EXPECT_EQ(impl.FoldParameter(kInfinity), kInfinity);
}

TEST(CFCBaseImpl, FoldsIntoTheKeyRange)
{
    CFCIntegerImpl impl(0);
    Fill(impl, {2, 5, 12});
    impl.extrapolation = HvBaseFCurve::RelativeCycleExtrapolation;
    EXPECT_EQ(impl.FoldParameter(7), 7);
    EXPECT_EQ(impl.FoldParameter(13), 3);
    EXPECT_EQ(impl.FoldParameter(22), 2);   // whole cycles after the end fold to the start,
    EXPECT_EQ(impl.FoldParameter(-8), 12);  // before the start to the end
    EXPECT_EQ(impl.FoldParameter(1), 11);
    EXPECT_EQ(impl.FoldParameter(-9), 11);
    EXPECT_TRUE(std::isnan(impl.FoldParameter(kNaN)));
    EXPECT_TRUE(std::isnan(impl.FoldParameter(kInfinity)));
}

TEST(CFCBaseImpl, SnapsWhatItFoldedToAKey)
{
    CFCIntegerImpl impl(0);
    Fill(impl, {0, 5, 10});
    impl.extrapolation = HvBaseFCurve::CycleExtrapolation;
    EXPECT_EQ(impl.FoldParameter(5 + 1e-13), 5);
    EXPECT_EQ(impl.FoldParameter(15.0 - 4e-15), 5);
    EXPECT_NE(impl.FoldParameter(5 + 1e-11), 5);
}

TEST(CFCBaseImpl, FoldsHugeRangesWithoutHarm)
{
    CFCIntegerImpl impl(0);
    Fill(impl, {-1e308, 1e308});
    impl.extrapolation = HvBaseFCurve::CycleExtrapolation;
    EXPECT_EQ(impl.FoldParameter(3), 3);
    double const beyond = impl.FoldParameter(kHvMaxDouble);
    EXPECT_TRUE(std::isnan(beyond) || std::fabs(beyond) <= 1e308);
}

}  // namespace
