// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The curve stretcher without memory, under locks and between threads.

#include "std_edit.h"
#include "stretch_drag.h"

#include "../support/allocation_failure.h"
#include "../support/curve_image.h"
#include "../support/lock_probe.h"

#include <hv/fcurve/HvBooleanFCurve.h>
#include <hv/fcurve/HvCurveLock.h>
#include <hv/fcurve/HvIntegerFCurve.h>
#include <hv/fcurve/HvQuatFCurve.h>
#include <hv/fcurve/HvRawFCurve.h>

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string>
#include <thread>

namespace {

constexpr HvBaseFCurve::Kind kKinds[] = {HvBaseFCurve::Boolean, HvBaseFCurve::Integer,
                                         HvBaseFCurve::Standard, HvBaseFCurve::Raw,
                                         HvBaseFCurve::Quaternion};

/// Keys at 0, 10, ..., 60 with user data at 20 and 30.
std::unique_ptr<HvBaseFCurve> Tens(HvBaseFCurve::Kind kind)
{
    std::unique_ptr<HvBaseFCurve> curve;
    switch (kind) {
    case HvBaseFCurve::Boolean:
        curve.reset(new HvBooleanFCurve(0));
        break;
    case HvBaseFCurve::Integer:
        curve.reset(new HvIntegerFCurve(0));
        break;
    case HvBaseFCurve::Raw:
        curve.reset(new HvRawFCurve(0));
        break;
    case HvBaseFCurve::Quaternion:
        curve.reset(new HvQuatFCurve(1u));
        break;
    default:
        curve.reset(new HvStdFCurve(0, kCubic));
    }
    for (int i = 0; i < 7; ++i) {
        curve->CreateKey(10 * i, i % 2);
    }
    curve->SetUserDataSet(SetOf(1, "twenty"), 20);
    curve->SetUserDataSet(SetOf(1, "thirty"), 30);
    return curve;
}

StretchArguments Middle(HvBaseFCurve::RegionHandle handle = kLeftHandle)
{
    StretchArguments arguments;
    arguments.region = HvExtent2<double>(15, -2, 45, 2);
    arguments.pivot = Point(45, -2);
    arguments.handle = handle;
    arguments.ripple = true;
    arguments.listed = {10, 20};
    return arguments;
}

/// A curve and a drag on it.
struct Scene {
    Scene(HvBaseFCurve::Kind kind, HvBaseFCurve::RegionHandle handle)
        : curve(Tens(kind)), drag(new StretchDrag(*curve, Middle(handle)))
    {
    }
    std::unique_ptr<HvBaseFCurve> curve;
    std::unique_ptr<StretchDrag> drag;
};

}  // namespace

TEST(HvFCurveStretcher_failure, ConstructionWithoutMemoryLeavesNothing)
{
    for (HvBaseFCurve::Kind const kind : kKinds) {
        for (HvBaseFCurve::RegionHandle const handle : {kLeftHandle, kTopHandle}) {
            std::string image;
            RefuseEachAllocation(
                [&] {
                    std::unique_ptr<HvBaseFCurve> curve = Tens(kind);
                    image = CurveImage(*curve);
                    return curve;
                },
                [&](std::unique_ptr<HvBaseFCurve>& curve) {
                    StretchDrag const drag(*curve, Middle(handle));
                },
                [&](std::unique_ptr<HvBaseFCurve>& curve, bool) {
                    EXPECT_EQ(CurveImage(*curve), image);
                    EXPECT_TRUE(LockProbe_AreBothFree(*curve));
                });
        }
    }
}

TEST(HvFCurveStretcher_failure, StepWithoutMemoryLeavesTheCurveAsItWas)
{
    for (HvBaseFCurve::Kind const kind : kKinds) {
        for (HvBaseFCurve::RegionHandle const handle : {kLeftHandle, kTopHandle}) {
            std::string image;
            long const count = RefuseEachAllocation(
                [&] {
                    Scene scene(kind, handle);
                    image = CurveImage(*scene.curve);
                    return scene;
                },
                [](Scene& scene) { EXPECT_EQ(scene.drag->To(-1.5), 1); },
                [&](Scene& scene, bool completed) {
                    EXPECT_EQ(CurveImage(*scene.curve) == image, !completed);
                    EXPECT_TRUE(LockProbe_AreBothFree(*scene.curve));
                    EXPECT_EQ(scene.drag->before.Size(), completed ? scene.drag->after.Size() : 0);
                    EXPECT_EQ(scene.drag->invalid.state, completed ? 0 : 1);
                    // The drag goes on as if nothing had been.
                    EXPECT_EQ(scene.drag->To(-2.5), 1);
                    EXPECT_EQ(scene.drag->To(0), 1);
                    EXPECT_EQ(scene.drag->stretcher.Finalize(), 1);
                    EXPECT_EQ(CurveImage(*scene.curve), image);
                });
            EXPECT_GT(count, 0);
        }
    }
}

TEST(HvFCurveStretcher_failure, StepAfterTheFirstTakesNoMemory)
{
    for (HvBaseFCurve::Kind const kind : kKinds) {
        for (HvBaseFCurve::RegionHandle const handle :
             {kLeftHandle, kRightHandle, kTopHandle, kBottomHandle}) {
            Scene scene(kind, handle);
            scene.drag->To(-1.5);
            AllocationCounter const counter;
            for (double const amount : {0.5, -3.0, 1.25, 0.0}) {
                EXPECT_EQ(scene.drag->To(amount), 1);
            }
            EXPECT_EQ(counter.Allocations(), 0) << "kind " << kind << ", handle " << handle;
        }
    }
}

TEST(HvFCurveStretcher_failure, EndWithoutMemoryCanBeTriedAgain)
{
    for (HvBaseFCurve::Kind const kind : kKinds) {
        RefuseEachAllocation(
            [&] {
                Scene scene(kind, kLeftHandle);
                scene.drag->To(-15);
                return scene;
            },
            [](Scene& scene) { EXPECT_EQ(scene.drag->stretcher.Finalize(), 1); },
            [&](Scene& scene, bool) {
                EXPECT_TRUE(LockProbe_AreBothFree(*scene.curve));
                EXPECT_EQ(scene.drag->stretcher.Finalize(), 1);
                EXPECT_EQ(TextIn(scene.curve->GetUserDataSet(7.5), 1), "twenty");
                EXPECT_EQ(TextIn(scene.curve->GetUserDataSet(22.5), 1), "thirty");
            });
    }
}

TEST(HvFCurveStretcher_failure, DragThatIsNeverEndedLosesNoMemory)
{
    AllocationCounter const counter;
    {
        Scene scene(HvBaseFCurve::Standard, kLeftHandle);
        scene.drag->To(-15);
    }
    EXPECT_EQ(counter.Live(), 0);
}

TEST(HvFCurveStretcher_failure, EveryOperationIsAWriter)
{
    Scene scene(HvBaseFCurve::Standard, kLeftHandle);
    auto const isWriter = [&](auto call) {
        return LockProbe_Waits(*scene.curve, ProbedLock::Access, true, call) &&
               LockProbe_Waits(*scene.curve, ProbedLock::Section, true, call);
    };
    EXPECT_TRUE(isWriter([&] { scene.drag->To(-2); }));
    EXPECT_TRUE(isWriter([&] {
        HvPoint2<double> vector(1, 0);
        double scale = 0;
        scene.drag->stretcher.ComputeScalingFactorAndTranslationVector(vector, scale);
    }));
    EXPECT_TRUE(isWriter([&] { scene.drag->stretcher.Finalize(); }));
    EXPECT_TRUE(isWriter([&] { StretchDrag const another(*scene.curve, Middle()); }));
    EXPECT_TRUE(LockProbe_AreBothFree(*scene.curve));
}

TEST(HvFCurveStretcher_failure, DragGoesOnUnderLocksThatAreHeld)
{
    Scene scene(HvBaseFCurve::Standard, kLeftHandle);
    {
        HvCurveLock const lock(*scene.curve);
        EXPECT_EQ(scene.drag->To(-15), 1);
        EXPECT_EQ(scene.curve->IsKeyParameter(7.5, 0), 1);
        EXPECT_EQ(scene.drag->stretcher.Finalize(), 1);
    }
    EXPECT_TRUE(LockProbe_AreBothFree(*scene.curve));
}

TEST(HvFCurveStretcher_failure, TwoDragsRunBesideAThirdThreadThatEvaluates)
{
    constexpr int kSteps = 300;
    std::unique_ptr<HvBaseFCurve> const a = Tens(HvBaseFCurve::Standard);
    std::unique_ptr<HvBaseFCurve> const b = Tens(HvBaseFCurve::Raw);
    auto const dragging = [](HvBaseFCurve& curve, HvBaseFCurve::RegionHandle handle) {
        StretchDrag drag(curve, Middle(handle));
        for (int i = 0; i < kSteps; ++i) {
            drag.To(i % 7 * 0.25 - 1);
        }
        drag.To(0);
        drag.stretcher.Finalize();
    };
    std::atomic<bool> done{false};
    std::atomic<int> outside{0};
    std::thread evaluating([&] {
        while (!done) {
            for (double x = -20; x < 80; x += 3) {
                // The values are 0 and 1, the handles of new keys flat.
                for (HvBaseFCurve const* curve : {a.get(), b.get()}) {
                    double const value = curve->Eval(x, 0);
                    outside += value >= -1 && value <= 2 ? 0 : 1;
                }
            }
        }
    });
    std::thread first([&] { dragging(*a, kLeftHandle); });
    std::thread second([&] { dragging(*b, kTopHandle); });
    first.join();
    second.join();
    done = true;
    evaluating.join();
    EXPECT_EQ(outside, 0);
    EXPECT_EQ(a->IsKeyParameter(20, 0), 1);
    EXPECT_EQ(TextIn(a->GetUserDataSet(20), 1), "twenty");
}
