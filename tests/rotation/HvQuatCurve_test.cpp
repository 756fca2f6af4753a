// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Life, settings, flags and sharing of a quaternion curve.

#include "../support/allocation_failure.h"
#include "quat_curve_support.h"

#include <hv/rotation/HvQuatCurveLock.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

TEST(HvQuatCurve, EmptyAtFirst)
{
    HvQuatCurve const curve;
    EXPECT_EQ(curve.GetNumKeys(), 0u);
    EXPECT_EQ(curve.GetValueWhenNoKeys(), Angles(0, 0, 0));
    EXPECT_EQ(curve.GetExtrapolationMethod(), 1u);
    EXPECT_EQ(curve.IsReadOnly(), 0);
    EXPECT_EQ(curve.IsSelected(), 0);
    EXPECT_EQ(curve.GetRotOrder(), HvQuat::XYZ);
    EXPECT_EQ(curve.IsValid(), 1);
    EXPECT_EQ(curve.GetDynamicMemSize(), 0u);
}

TEST(HvQuatCurve, FlagsAreKeptAsGiven)
{
    HvQuatCurve curve;
    curve.SetSelected(7);
    curve.SetReadOnlyConstraint(-1);
    EXPECT_EQ(curve.IsSelected(), 7);
    EXPECT_EQ(curve.IsReadOnly(), -1);
    // A mere flag: nothing is refused.
    EXPECT_EQ(curve.SetKey(1, Angles(1, 2, 3), 0), 0u);
}

TEST(HvQuatCurve, ValueWhenNoKeysInRadiansAndDegrees)
{
    HvQuatCurve curve;
    curve.SetValueWhenNoKeys(Angles(kPi, 0.5, -kPi / 2));
    EXPECT_EQ(curve.GetValueWhenNoKeys(), Angles(kPi, 0.5, -kPi / 2));
    EXPECT_DOUBLE_EQ(curve.GetValueWhenNoKeys(0), 180);
    EXPECT_DOUBLE_EQ(curve.GetValueWhenNoKeys(2), -90);
    curve.SetValueWhenNoKeys(1, 60);
    EXPECT_DOUBLE_EQ(curve.GetValueWhenNoKeys().y, kPi / 3);
    EXPECT_EQ(curve.GetValueWhenNoKeys().x, kPi);
    // Component 3 reads z and sets nothing.
    EXPECT_DOUBLE_EQ(curve.GetValueWhenNoKeys(3), -90);
    Angles const before = curve.GetValueWhenNoKeys();
    curve.SetValueWhenNoKeys(3, 1);
    curve.SetValueWhenNoKeys(4294967295u, 1);
    EXPECT_EQ(curve.GetValueWhenNoKeys(), before);
    EXPECT_EQ(curve.Eval(5), before);
}

TEST(HvQuatCurve, DegreesUseTheirOwnConstants)
{
    HvQuatCurve curve;
    curve.SetValueWhenNoKeys(0, 1);
    EXPECT_EQ(curve.GetValueWhenNoKeys().x, 0.017453292519943295);
    curve.SetValueWhenNoKeys(Angles(1, 0, 0));
    EXPECT_EQ(curve.GetValueWhenNoKeys(0), 57.29577951308232);
}

TEST(HvQuatCurve, ExtrapolationMethodsAreOneToFour)
{
    HvQuatCurve curve;
    for (unsigned int method : {2u, 3u, 4u, 1u}) {
        EXPECT_EQ(curve.SetExtrapolationMethod(method), 1);
        EXPECT_EQ(curve.GetExtrapolationMethod(), method);
    }
    for (unsigned int method : {0u, 5u, 4294967295u}) {
        EXPECT_EQ(curve.SetExtrapolationMethod(method), 0);
        EXPECT_EQ(curve.GetExtrapolationMethod(), 1u);
    }
}

TEST(HvQuatCurve, AnotherOrderDropsTheSplineAndKeepsTheAngles)
{
    HvQuatCurve curve = CurveOf({0, 1, 2});
    std::vector<HvQuatKey> const keys = KeysOf(curve);
    curve.Eval(0.5);
    curve.SetRotOrder(HvQuat::XYZ);
    EXPECT_FALSE(WasStale(curve));
    curve.SetRotOrder(HvQuat::ZYX);
    EXPECT_EQ(curve.GetRotOrder(), HvQuat::ZYX);
    EXPECT_TRUE(WasStale(curve));
    EXPECT_EQ(KeysOf(curve), keys);
    for (int order : {-1, 6, 1 << 30}) {
        curve.SetRotOrder(static_cast<HvQuat::RotOrder>(order));
        EXPECT_EQ(curve.GetRotOrder(), HvQuat::ZYX);
        EXPECT_FALSE(WasStale(curve));
    }
}

TEST(HvQuatCurve, CopyHasEverythingButTheOwners)
{
    HvQuatCurve curve = CurveOf({0, 1, 2.5});
    curve.SetValueWhenNoKeys(Angles(1, 2, 3));
    curve.SetExtrapolationMethod(4);
    curve.SetReadOnlyConstraint(1);
    curve.SetSelected(1);
    curve.SetRotOrder(HvQuat::YZX);
    curve.SetValueLock(1, 1);
    curve.SetKeySelected(2, 1);
    auto const expectSame = [&](HvQuatCurve& copy) {
        EXPECT_EQ(KeysOf(copy), KeysOf(curve));
        EXPECT_EQ(copy.GetValueWhenNoKeys(), Angles(1, 2, 3));
        EXPECT_EQ(copy.GetExtrapolationMethod(), 4u);
        EXPECT_EQ(copy.IsReadOnly(), 1);
        EXPECT_EQ(copy.IsSelected(), 1);
        EXPECT_EQ(copy.IsKeySelected(2), 1);
        EXPECT_EQ(copy.GetRotOrder(), HvQuat::YZX);
        EXPECT_EQ(copy.Eval(0.7), curve.Eval(0.7));
        copy.SetKeyValue(0, Angles(9, 9, 9));
        EXPECT_NE(KeysOf(copy), KeysOf(curve));
    };
    HvQuatCurve copy(curve);
    expectSame(copy);
    HvQuatCurve assigned = CurveOf({4, 5});
    assigned.Eval(4.5);
    assigned = curve;
    expectSame(assigned);
}

TEST(HvQuatCurve, CopyHasTheSplineAndTheLastResult)
{
    HvQuatCurve curve = CurveOf({0, 1, 2});
    Angles const last = curve.Eval(0.7);
    // The last result outlives a change of method; so does the copy's.
    curve.SetExtrapolationMethod(2);
    curve.Eval(5);
    Angles const linear = curve.Eval(5);
    curve.SetExtrapolationMethod(1);
    HvQuatCurve copy(curve);
    EXPECT_EQ(copy.Eval(5), linear);
    EXPECT_FALSE(WasStale(copy));
    EXPECT_EQ(copy.Eval(0.7), last);
    HvQuatCurve fresh = CurveOf({0, 1, 2});
    HvQuatCurve copyOfFresh(fresh);
    EXPECT_TRUE(WasStale(copyOfFresh));
}

TEST(HvQuatCurve, AssignmentToItselfChangesNothing)
{
    HvQuatCurve curve = CurveOf({0, 1, 2});
    curve.Eval(0.5);
    HvQuatCurve const& itself = curve;
    curve = itself;
    EXPECT_EQ(curve.GetNumKeys(), 3u);
    EXPECT_FALSE(WasStale(curve));
}

TEST(HvQuatCurve, LocksOfKeys)
{
    HvQuatCurve curve = CurveOf({0, 1});
    EXPECT_EQ(curve.IsValueLocked(0), 0);
    EXPECT_EQ(curve.IsParamLocked(0), 0);
    EXPECT_EQ(curve.SetValueLock(0, 1), 1);
    EXPECT_EQ(curve.SetParamLock(1, 3), 1);
    EXPECT_EQ(curve.IsValueLocked(0), -1);
    EXPECT_EQ(curve.IsValueLocked(1), 0);
    EXPECT_EQ(curve.IsParamLocked(0), 0);
    EXPECT_EQ(curve.IsParamLocked(1), -1);
    // Only the lowest bit counts.
    EXPECT_EQ(curve.SetValueLock(0, 2), 1);
    EXPECT_EQ(curve.IsValueLocked(0), 0);
    EXPECT_EQ(curve.SetParamLock(1, -2147483647 - 1), 1);
    EXPECT_EQ(curve.IsParamLocked(1), 0);
    EXPECT_EQ(curve.SetValueLock(0, -1), 1);
    EXPECT_EQ(curve.IsValueLocked(0), -1);
    for (unsigned int i : {2u, kNoKey}) {
        EXPECT_EQ(curve.SetValueLock(i, 1), 0);
        EXPECT_EQ(curve.SetParamLock(i, 1), 0);
        EXPECT_EQ(curve.IsValueLocked(i), 0);
        EXPECT_EQ(curve.IsParamLocked(i), 0);
    }
}

TEST(HvQuatCurve, KeysAreSelectedBehindTheCurve)
{
    HvQuatCurve curve = CurveOf({0, 1});
    EXPECT_EQ(curve.SetKeySelected(1, 1), 1);
    EXPECT_EQ(curve.IsKeySelected(1), 0);
    curve.SetSelected(1);
    EXPECT_EQ(curve.IsKeySelected(1), 1);
    EXPECT_EQ(curve.IsKeySelected(0), 0);
    EXPECT_EQ(curve.SetKeySelected(1, 2), 1);
    EXPECT_EQ(curve.IsKeySelected(1), 0);
    EXPECT_EQ(curve.SetKeySelected(2, 1), 0);
    EXPECT_EQ(curve.IsKeySelected(2), 0);
}

TEST(HvQuatCurve, ConstraintDataIsTwoBits)
{
    HvQuatCurve curve = CurveOf({0});
    for (int flags : {0, 2, 4, 6, 0xFFFF, 0xFFF9}) {
        EXPECT_EQ(curve.SetConstraintData(0, static_cast<unsigned short>(flags)), 1);
        EXPECT_EQ(curve.GetConstraintData(0), flags & 6);
        EXPECT_EQ(curve.IsValueLocked(0), flags & 2 ? -1 : 0);
        EXPECT_EQ(curve.IsParamLocked(0), flags & 4 ? -1 : 0);
    }
    EXPECT_EQ(curve.SetConstraintData(1, 6), 0);
    EXPECT_EQ(curve.GetConstraintData(1), 0);
}

TEST(HvQuatCurve, MemoryIsThatOfKeysAndSpline)
{
    HvQuatCurve curve = CurveOf({0, 1, 2});
    unsigned long const keys = curve.GetDynamicMemSize();
    EXPECT_GE(keys, 3 * sizeof(HvQuatKey));
    EXPECT_EQ(keys % sizeof(HvQuatKey), 0u);
    curve.Eval(1.5);
    EXPECT_EQ(curve.GetDynamicMemSize(),
              keys + 2 * sizeof(HvQuatSpline::Segment) + sizeof(HvQuatSpline));
}

TEST(HvQuatCurve, LastOwnerDestroysIt)
{
    AllocationCounter const counter;
    auto* const curve = new HvQuatCurve;
    EXPECT_EQ(counter.Live(), 1);
    curve->Ref();
    curve->Ref();
    curve->Ref();
    AddKeys(*curve, {0, 1, 2});
    curve->Eval(0.5);
    curve->UnRef();
    curve->UnRef();
    EXPECT_GT(counter.Live(), 1);
    EXPECT_EQ(curve->GetNumKeys(), 3u);
    curve->UnRef();
    EXPECT_EQ(counter.Live(), 0);
    // Without an owner the first UnRef is the last.
    (new HvQuatCurve)->UnRef();
    EXPECT_EQ(counter.Live(), 0);
}

TEST(HvQuatCurve, CopyHasNoOwners)
{
    AllocationCounter const counter;
    auto* const curve = new HvQuatCurve;
    curve->Ref();
    curve->Ref();
    auto* const copy = new HvQuatCurve(*curve);
    copy->UnRef();
    EXPECT_EQ(counter.Live(), 1);
    auto* const assigned = new HvQuatCurve;
    assigned->Ref();
    *assigned = *curve;
    assigned->UnRef();
    EXPECT_EQ(counter.Live(), 1);
    curve->UnRef();
    curve->UnRef();
    EXPECT_EQ(counter.Live(), 0);
}

TEST(HvQuatCurve, OwnersInManyThreadsShareOneCurve)
{
    constexpr int kThreads = 4;
    auto* const curve = new HvQuatCurve(CurveOf({0, 1, 2, 3, 4}));
    curve->Ref();
    std::vector<double> expected;
    for (int i = 0; i < 64; ++i) {
        expected.push_back(HvQuatCurve(*curve).Eval(i * 0.0625, 1));
    }
    std::vector<std::thread> threads;
    std::atomic<int> wrong{0};
    for (int n = 0; n < kThreads; ++n) {
        curve->Ref();
        threads.emplace_back([&, n] {
            for (int k = 0; k < 200; ++k) {
                curve->Ref();
                {
                    HvQuatCurveLock const lock(*curve);
                    int const i = (k * 7 + n * 11) % 64;
                    if (k % 50 == n) {
                        curve->SetKeyValue(0, curve->GetKeyValue(0));
                    }
                    if (curve->Eval(i * 0.0625, 1) != expected[static_cast<std::size_t>(i)]) {
                        ++wrong;
                    }
                }
                curve->UnRef();
            }
            curve->UnRef();
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(curve->GetNumKeys(), 5u);
    curve->UnRef();
}

TEST(HvQuatCurve, LockIsReentrantAndKeepsOthersOut)
{
    HvQuatCurve const curve;
    std::atomic<bool> started{false};
    std::atomic<bool> entered{false};
    curve.AcquireLock();
    {
        HvQuatCurveLock const again(curve);
    }
    std::thread other([&] {
        started = true;
        HvQuatCurveLock const lock(curve);
        entered = true;
    });
    while (!started) {
        std::this_thread::yield();
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
    EXPECT_FALSE(entered);
    curve.ReleaseLock();
    other.join();
    EXPECT_TRUE(entered);
}

TEST(HvQuatCurve, RefusedMemoryLeavesAllAsItWas)
{
    auto const prepare = [] { return CurveOf({0, 1, 2, 3, 4, 5, 6, 7}); };
    std::vector<HvQuatKey> const keys = KeysOf(prepare());
    auto const unchangedOr = [&](auto expected) {
        return [&keys, expected](HvQuatCurve& curve, bool completed) {
            if (completed) {
                expected(curve);
            } else {
                EXPECT_EQ(KeysOf(curve), keys);
            }
            EXPECT_EQ(curve.IsValid(), 1);
            EXPECT_FALSE(std::isnan(curve.Eval(2.5).x));
        };
    };
    auto const hasNine = unchangedOr([](HvQuatCurve& c) { EXPECT_EQ(c.GetNumKeys(), 9u); });
    auto const hasEight = unchangedOr([](HvQuatCurve& c) { EXPECT_EQ(c.GetNumKeys(), 8u); });
    EXPECT_EQ(RefuseEachAllocation(
                  prepare, [](HvQuatCurve& c) { c.SetKey(2.5, Angles(), 0); }, hasNine),
              1);
    EXPECT_EQ(
        RefuseEachAllocation(
            prepare, [](HvQuatCurve& c) { c.SetKey(HvQuatKey(2.5, {}, 0, 0, 0, 0), 0); }, hasNine),
        1);
    EXPECT_EQ(RefuseEachAllocation(
                  prepare, [](HvQuatCurve& c) { c.SetKey(2.5, 1, 30, 0); }, hasNine),
              2);
    EXPECT_EQ(RefuseEachAllocation(
                  prepare, [](HvQuatCurve& c) { c.Eval(2.5); }, hasEight),
              2);
    EXPECT_EQ(RefuseEachAllocation(
                  prepare, [](HvQuatCurve& c) { c.Eval(2.5, 1); }, hasEight),
              2);

    HvQuatCurve source = CurveOf({0, 1, 2});
    source.Eval(0.5);
    auto const hasThree = unchangedOr([](HvQuatCurve& c) { EXPECT_EQ(c.GetNumKeys(), 3u); });
    EXPECT_EQ(RefuseEachAllocation(
                  prepare, [&](HvQuatCurve& c) { c = source; }, hasThree),
              3);
    EXPECT_EQ(RefuseEachAllocation([&] { HvQuatCurve const copy(source); }), 3);
    EXPECT_EQ(RefuseEachAllocation([&] { (new HvQuatCurve(source))->UnRef(); }), 4);
    // No other operation allocates.
    EXPECT_EQ(RefuseEachAllocation(
                  prepare,
                  [](HvQuatCurve& c) {
                      c.SetKeyValue(1, Angles(1, 2, 3));
                      c.SetKeyValue(1, 2, 45);
                      c.SetKey(1, Angles(3, 2, 1), 0.1);
                      c.Shift(2);
                      c.Scale(3);
                      c.SetParameter(0, -1);
                      c.RemoveKeyAt(3);
                      c.RemoveKeyRange(1, 2);
                      c.RemoveAllKeys();
                  },
                  [](HvQuatCurve&, bool completed) { EXPECT_TRUE(completed); }),
              0);
}

TEST(HvQuatCurve, SwapExchangesAllButOwners)
{
    HvQuatCurve a = CurveOf({0, 1, 2});
    HvQuatCurve b = CurveOf({5});
    b.SetRotOrder(HvQuat::ZYX);
    b.SetReadOnlyConstraint(1);
    b.SetSelected(1);
    b.SetExtrapolationMethod(3);
    b.SetValueWhenNoKeys(Angles(1, 2, 3));
    Angles const atHalf = a.Eval(0.5);
    a.Swap(b);
    EXPECT_EQ(a.GetNumKeys(), 1u);
    EXPECT_EQ(a.GetRotOrder(), HvQuat::ZYX);
    EXPECT_EQ(a.IsReadOnly(), 1);
    EXPECT_EQ(a.IsSelected(), 1);
    EXPECT_EQ(a.GetExtrapolationMethod(), 3u);
    EXPECT_EQ(a.GetValueWhenNoKeys(), Angles(1, 2, 3));
    EXPECT_EQ(b.Eval(0.5), atHalf);
    EXPECT_EQ(b.GetRotOrder(), HvQuat::XYZ);
    EXPECT_EQ(b.GetExtrapolationMethod(), 1u);
}
