// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What the key mover refuses, and what it holds while it works: locks, memory, threads.

#include "key_drag.h"
#include "quat_fcurve_support.h"

#include <tests/support/allocation_failure.h>
#include <tests/support/lock_probe.h>

#include <atomic>
#include <memory>
#include <thread>

// Refusals.

TEST(HvFCurveKeyMover_refusals, IsNotUsableWithoutKeysThatMayMove)
{
    for (Parameters const& keys :
         {Parameters{}, Parameters{3}, Parameters{2, 2}, Parameters{2, NonFinite()[0]},
          Parameters{NonFinite()[1]}, Parameters{8}}) {
        StdCurve curve = Steps();
        Lock(curve, 4, Word::kParameterLocked | Word::kValueLocked);
        Drag drag(curve, keys);
        ExpectRefused(curve, [&] { return drag.To(1, 1); });
        EXPECT_EQ(drag.translation, Point(1, 1));
        EXPECT_EQ(drag.invalid.state, Extent::Empty);
        EXPECT_EQ(drag.mover.Finalize(), 0);
    }
    StdCurve empty(0.0, kCubic);
    Drag drag(empty, {0});
    EXPECT_EQ(drag.To(1, 1), 0);
}

TEST(HvFCurveKeyMover_refusals, ReadOnlyCurveIsLeftAlone)
{
    StdCurve curve = Steps();
    Drag drag(curve, {4}, Extent(-10, -10, 5, 10));
    ExpectRefusedWhenReadOnly(curve, [&] { return drag.To(3, 1); });
    EXPECT_EQ(drag.translation, Point(1, 1)) << "limited all the same";
    EXPECT_EQ(drag.parameters, Parameters());
    EXPECT_EQ(drag.To(1, 1), 1);
}

TEST(HvFCurveKeyMover_refusals, RefusesPlacesThatAreNone)
{
    double const infinity = NonFinite()[1];
    Extent const anywhere(-infinity, -infinity, infinity, infinity);
    for (double const bad : NonFinite()) {
        StdCurve curve = Steps();
        Drag drag(curve, {4}, anywhere);
        ExpectRefused(curve, [&] { return drag.To(bad, 1); });
        ExpectRefused(curve, [&] { return drag.To(1, bad); });
        EXPECT_EQ(drag.invalid.state, Extent::Empty);
        EXPECT_EQ(drag.parameters, Parameters());
        OpenInteger integers(0, {{1, 10}, {2, 20}});
        Drag other(integers, {1}, anywhere);
        std::string const before = integers.Image();
        EXPECT_EQ(other.To(0, NonFinite()[0]), 0);
        EXPECT_EQ(other.To(bad, 0), 0);
        EXPECT_EQ(integers.Image(), before);
    }
}

TEST(HvFCurveKeyMover_refusals, RefusesKeysThatWouldMeetOrLeaveTheNumbers)
{
    StdCurve curve = Steps();
    curve.Impl().keys[0].parameter = -1e308;
    Drag drag(curve, {2, 4});
    ExpectRefused(curve, [&] { return drag.To(1e17, 0); });     // both come to one parameter
    ExpectRefused(curve, [&] { return drag.To(1.7e308, 0); });  // and too far from the first
    StdCurve high({KeyAt(0, 1e308, 1e308, kLinear), KeyAt(1, 0, 0, kLinear)});
    double const infinity = NonFinite()[1];
    Drag up(high, {0}, Extent(-infinity, -infinity, infinity, infinity));
    ExpectRefused(high, [&] { return up.To(0, 1.7e308); });
}

/// Drags two keys of a fresh curve to every pair of hostile numbers, with hostile edges and limits,
/// and expects the same number of keys, in order and finite, and the curve valid.
template <class Make>
void ExpectHostileNumbersLeaveAValidCurve(Make make, Parameters const& keys)
{
    double const numbers[] = {0.0,    -0.0,           5e-324,         -5e-324,
                              1e-300, 2147483648.0,   9.1e15,         1.7e308,
                              -1e308, NonFinite()[0], NonFinite()[1], NonFinite()[2]};
    for (double const x : numbers) {
        for (double const y : numbers) {
            auto curve = make();
            unsigned int const numKeys = curve.GetNumKeys();
            HvFCurveKeyMover mover(curve, Drag::Array(keys), Extent(y, x, x, y),
                                   Extent(x, y, y, x));
            HvFCurveKeyMover free(curve, Drag::Array(keys), Extent(), Extent(x, y, y, x));
            for (HvFCurveKeyMover* tool : {&mover, &free, &free}) {
                Point translation(x, y);
                HvDoubleArray parameters;
                Extent invalid;
                Extent moved;
                tool->Update(translation, parameters, invalid, moved, y, x);
                translation = Point(y, x);
                tool->Update(translation, parameters, invalid, moved, x, y);
            }
            free.Finalize();
            ASSERT_EQ(curve.GetNumKeys(), numKeys) << x << " " << y;
            ASSERT_EQ(curve.Impl().IsValid(), 1) << x << " " << y;
            for (double const p : ParametersOf(curve)) {
                ASSERT_TRUE(std::isfinite(p)) << x << " " << y;
            }
        }
    }
}

/// The z component of a rotation with keys at 1, 2, 4 and 5.
struct OpenQuat : HvQuatFCurve {
    OpenQuat() : HvQuatFCurve(*MakeTrio().z) {}
    HvQuatCurve const& Impl() const { return *GetQuatCurve(); }
};

TEST(HvFCurveKeyMover_refusals, HostileNumbersLeaveAValidCurve)
{
    ExpectHostileNumbersLeaveAValidCurve([] { return OpenQuat(); }, {1, 4});
    ExpectHostileNumbersLeaveAValidCurve([] { return OpenQuat(); }, {1, 2, 4, 5});
    ExpectHostileNumbersLeaveAValidCurve(Steps, {0, 4});
    ExpectHostileNumbersLeaveAValidCurve(Steps, {0, 2, 4, 6, 8});
    ExpectHostileNumbersLeaveAValidCurve(
        [] {
            StdCurve curve = MixedCurve();
            curve.SetExtrapolationMethod(HvBaseFCurve::RelativeCycleExtrapolation);
            return curve;
        },
        {2, 5, 8});
    ExpectHostileNumbersLeaveAValidCurve(
        [] {
            return OpenInteger(0, {{1, 10}, {2, 20}, {3, 30}});
        },
        {1, 3});
    ExpectHostileNumbersLeaveAValidCurve([] { return Zigzag(); }, {1, 3});
}

TEST(HvFCurveKeyMover_refusals, TinySpansTakeNoKeyFromTheCurve)
{
    StdCurve curve({KeyAt(0, 1, 2, kCubic), KeyAt(1e12, 3, 4, kCubic), KeyAt(2e12, 5, 6, kCubic)});
    Drag drag(curve, {1e12});
    EXPECT_EQ(drag.To(-1e12 + 0.001, 1), 1);
    ASSERT_EQ(curve.GetNumKeys(), 3u);
    EXPECT_EQ(curve.Impl().keys[0].leftValue, 1);
    EXPECT_EQ(curve.Impl().keys[0].rightValue, 2);
    EXPECT_EQ(curve.Impl().keys[1].rightValue, 5);
    EXPECT_TRUE(EverySegmentRunsForward(curve));
}

// Locks and memory.

TEST(HvFCurveKeyMover_refusals, TakesBothLocks)
{
    StdCurve curve = Steps();
    HvFCurveKeyMover mover(curve, Drag::Array({4}), Extent(), Extent());
    auto const waits = [&](ProbedLock lock, auto call) {
        return LockProbe_Waits(curve, lock, true, call);
    };
    auto const update = [&] {
        Point translation(1, 0);
        HvDoubleArray parameters;
        Extent invalid;
        Extent moved;
        mover.Update(translation, parameters, invalid, moved, 0, 1);
    };
    auto const construct = [&] {
        HvFCurveKeyMover const other(curve, Drag::Array({0}), Extent(), Extent());
    };
    for (ProbedLock const lock : {ProbedLock::Access, ProbedLock::Section}) {
        EXPECT_TRUE(waits(lock, construct));
        EXPECT_TRUE(waits(lock, update));
        EXPECT_TRUE(waits(lock, [&] { mover.Finalize(); }));
    }
    EXPECT_TRUE(LockProbe_AreBothFree(curve));
}

TEST(HvFCurveKeyMover_refusals, DragsWhileTheHostHoldsTheLocks)
{
    StdCurve curve = Steps();
    curve.AcquireLocks();
    Drag drag(curve, {4});
    EXPECT_EQ(drag.To(1, 0), 1);
    EXPECT_EQ(drag.mover.Finalize(), 1);
    curve.ReleaseLocks();
    EXPECT_TRUE(LockProbe_AreBothFree(curve));
}

TEST(HvFCurveKeyMover_refusals, FailedAllocationLeavesTheCurveAsItWas)
{
    struct Scene {
        StdCurve curve = Steps();
        std::string before;
        HvDoubleArray keys = Drag::Array({0, 4, 6});
        HvDoubleArray parameters;
        Extent invalid;
    };
    auto const prepare = [] {
        auto scene = std::make_unique<Scene>();
        scene->curve.SetUserDataSet(SetOf(1, "four"), 4);
        scene->before = StdImage(scene->curve);
        return scene;
    };
    long const allocations = RefuseEachAllocation(
        prepare,
        [](std::unique_ptr<Scene>& scene) {
            HvFCurveKeyMover mover(scene->curve, scene->keys, Extent(), Extent());
            Point translation(3, 1);
            Extent moved;
            try {
                mover.Update(translation, scene->parameters, scene->invalid, moved, 0, 9);
            } catch (std::bad_alloc const&) {
                EXPECT_EQ(StdImage(scene->curve), scene->before);
                EXPECT_EQ(scene->invalid.state, Extent::Empty);
                throw;
            }
            // What is not given back now is by another call.
            try {
                mover.Finalize();
            } catch (std::bad_alloc const&) {
                mover.Finalize();
                EXPECT_EQ(TextIn(scene->curve.GetUserDataSet(7), 1), "four");
                throw;
            }
        },
        [](std::unique_ptr<Scene>& scene, bool completed) {
            EXPECT_TRUE(LockProbe_AreBothFree(scene->curve));
            EXPECT_EQ(scene->curve.Impl().IsValid(), 1);
            EXPECT_EQ(scene->curve.GetNumKeys(), 5u);
            if (completed) {
                EXPECT_EQ(TextIn(scene->curve.GetUserDataSet(7), 1), "four");
            }
        });
    EXPECT_GT(allocations, 10);
}

TEST(HvFCurveKeyMover_refusals, FailedAllocationLeavesOtherKindsAsTheyWere)
{
    auto const prepare = [] {
        return std::make_unique<OpenInteger>(
            0, std::initializer_list<std::pair<double, double>>{{1, 10}, {2, 20}, {3, 30}});
    };
    std::string const before = prepare()->Image();
    HvDoubleArray const keys = Drag::Array({1, 3});
    long const allocations = RefuseEachAllocation(
        prepare,
        [&](std::unique_ptr<OpenInteger>& curve) {
            HvFCurveKeyMover mover(*curve, keys, Extent(), Extent());
            Point translation(0.5, 1);
            HvDoubleArray parameters;
            Extent invalid;
            Extent moved;
            mover.Update(translation, parameters, invalid, moved, 0, 9);
        },
        [&](std::unique_ptr<OpenInteger>& curve, bool completed) {
            EXPECT_TRUE(LockProbe_AreBothFree(*curve));
            if (completed) {
                EXPECT_EQ(KeysOf(*curve), (Keys{{1.5, 11}, {2, 20}, {3.5, 31}}));
            } else {
                EXPECT_EQ(curve->Image(), before);
            }
        });
    EXPECT_GT(allocations, 10);
}

TEST(HvFCurveKeyMover_refusals, FailedAllocationLeavesARotationAsItWas)
{
    struct Scene {
        Trio trio = MakeTrio();
        std::string before = QuatImage(*trio.y);
        HvDoubleArray keys = Drag::Array({1, 4});
        HvDoubleArray parameters;
        Extent invalid;
    };
    long const allocations = RefuseEachAllocation(
        [] { return std::make_unique<Scene>(); },
        [](std::unique_ptr<Scene>& scene) {
            HvFCurveKeyMover mover(*scene->trio.y, scene->keys, Extent(), Extent());
            Point translation(2.5, 1);
            Extent moved;
            try {
                mover.Update(translation, scene->parameters, scene->invalid, moved, 0, 9);
            } catch (std::bad_alloc const&) {
                EXPECT_EQ(scene->invalid.state, Extent::Empty);
                throw;
            }
            try {
                mover.Finalize();
            } catch (std::bad_alloc const&) {
                mover.Finalize();
                throw;
            }
        },
        [](std::unique_ptr<Scene>& scene, bool completed) {
            HvQuatFCurve const& curve = *scene->trio.y;
            EXPECT_TRUE(LockProbe_AreBothFree(curve));
            if (completed || curve.IsKeyParameter(6.5, 0)) {
                EXPECT_EQ(ParametersOf(curve), (Parameters{2, 3.5, 5, 6.5}));
                EXPECT_EQ(TextIn(curve.GetUserDataSet(6.5), 1), "four");
            } else {
                EXPECT_EQ(QuatImage(curve), scene->before);
            }
        });
    EXPECT_GT(allocations, 10);
}

template <class Curve>
void ExpectNoAllocationAfterTheFirstStep(Curve& curve, Parameters const& keys)
{
    HvFCurveKeyMover mover(curve, Drag::Array(keys), Extent(), Extent());
    HvDoubleArray parameters(100);
    Extent invalid;
    Extent moved;
    Point translation(0.25, 1);
    EXPECT_EQ(mover.Update(translation, parameters, invalid, moved, -9, 9), 1);
    AllocationCounter const counter;
    for (double const x : {0.5, -0.25, 0.0, 0.125}) {
        translation = Point(x, 1);
        EXPECT_EQ(mover.Update(translation, parameters, invalid, moved, -9, 9), 1);
    }
    EXPECT_EQ(counter.Allocations(), 0);
}

TEST(HvFCurveKeyMover_refusals, StepsAfterTheFirstTakeNoMemory)
{
    StdCurve curve = Steps();
    ExpectNoAllocationAfterTheFirstStep(curve, {0, 4, 6});
    OpenRaw raw = Zigzag();
    ExpectNoAllocationAfterTheFirstStep(raw, {1, 3});
    OpenInteger integers(0, {{1, 10}, {2, 20}, {3, 30}, {4, 40}});
    ExpectNoAllocationAfterTheFirstStep(integers, {1, 3, 4});
    OpenQuat rotation;
    ExpectNoAllocationAfterTheFirstStep(rotation, {1, 4});
    OpenQuat whole;
    ExpectNoAllocationAfterTheFirstStep(whole, {1, 2, 4, 5});
    OpenBoolean booleans(0, {{1, 1}, {2, 0}, {3, 1}});
    ExpectNoAllocationAfterTheFirstStep(booleans, {1, 2, 3});
}

TEST(HvFCurveKeyMover_refusals, TwoCurvesAreDraggedWhileAThirdThreadEvaluatesBoth)
{
    StdCurve one = Steps();
    StdCurve two = Steps();
    std::atomic<bool> isOver{false};
    std::atomic<int> faults{0};
    auto const drag = [](StdCurve& curve) {
        Drag it(curve, {2, 4});
        for (int k = 0; k < 300; ++k) {
            it.To(k % 7 - 3.25, k % 5);
        }
        it.To(0, 0);
    };
    std::thread reader([&] {
        while (!isOver) {
            for (StdCurve const* curve : {&one, &two}) {
                if (!std::isfinite(curve->Eval(3.3, 0)) || curve->GetNumKeys() != 5) {
                    ++faults;
                }
            }
        }
    });
    std::thread first([&] { drag(one); });
    std::thread second([&] { drag(two); });
    first.join();
    second.join();
    isOver = true;
    reader.join();
    EXPECT_EQ(faults, 0);
    EXPECT_EQ(ParametersOf(one), ParametersOf(Steps()));
    EXPECT_EQ(ParametersOf(two), ParametersOf(Steps()));
}
