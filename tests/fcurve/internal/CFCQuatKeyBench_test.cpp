// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Rotations under the key mover and the curve stretcher: whole keys go, and all components see it.

#include <hv/fcurve/internal/CFCKeyBench.h>

#include "../key_drag.h"
#include "../quat_fcurve_support.h"
#include "../stretch_drag.h"

#include <tests/support/lock_probe.h>
#include <tests/support/wait_probe.h>

#include <algorithm>
#include <atomic>
#include <optional>
#include <thread>

namespace {

/// The rotation of MakeTrio, its key at 2 with everything that a key can have.
Trio MakeShapedTrio()
{
    Trio trio = MakeTrio();
    HvQuatKey key = trio.curve->GetKey(1);
    key.tension = 0.25f;
    key.continuity = -0.5f;
    key.bias = 0.75f;
    key.spins = -2;
    key.spinsUnused = 9;
    key.flagsUnusedLow = 5;
    key.flagsUnusedHigh = 1;
    key.selected = 1;
    trio.curve->SetKey(1u, key);
    return trio;
}

/// A key as MakeShapedTrio has made it, with time and angles as the test expects.
void ExpectShaped(HvQuatKey const& key, double time)
{
    HvQuatKey expected = MakeShapedTrio().curve->GetKey(1);
    expected.time = time;
    expected.angles = key.angles;
    EXPECT_EQ(key, expected);
    EXPECT_EQ(key.selected, 1) << "though the curve is not selected";
    EXPECT_EQ(key.spinsUnused, 9);
    EXPECT_EQ(key.flagsUnusedLow, 5);
    EXPECT_EQ(key.flagsUnusedHigh, 1);
}

/// The whole width of MakeTrio, about its left end.
StretchArguments WholeWidth(HvBaseFCurve::RegionHandle handle)
{
    StretchArguments arguments;
    arguments.region = Extent(1, -300, 5, 300);
    arguments.pivot = Point(1, 0);
    arguments.handle = handle;
    return arguments;
}

}  // namespace

// The key mover.

TEST(CFCQuatKeyBench, KeyGoesWithAllThatItHas)
{
    Trio const trio = MakeShapedTrio();
    Drag drag(*trio.y, {2});
    EXPECT_EQ(drag.To(0.5, 0), 1);
    for (HvQuatFCurve const* curve : {trio.x.get(), trio.y.get(), trio.z.get()}) {
        EXPECT_EQ(TimesOf(*curve), (Parameters{1, 2.5, 4, 5}));
    }
    ExpectShaped(trio.curve->GetKey(1), 2.5);
    EXPECT_EQ(trio.curve->GetKey(1).angles, MakeTrio().curve->GetKey(1).angles) << "to the bit";
}

TEST(CFCQuatKeyBench, KeyPassesOverAKeyThatStays)
{
    Trio const trio = MakeShapedTrio();
    HvQuatKey const stays = trio.curve->GetKey(2);
    Drag drag(*trio.z, {2});
    EXPECT_EQ(drag.To(2.5, 0), 1);
    EXPECT_EQ(TimesOf(*trio.x), (Parameters{1, 4, 4.5, 5}));
    EXPECT_EQ(trio.curve->GetKey(1), stays);
    ExpectShaped(trio.curve->GetKey(2), 4.5);
    ExpectNear(ValuesOf(*trio.x), {10, -30, 40, 20});
    EXPECT_EQ(drag.To(10, 0), 1) << "to the end";
    EXPECT_EQ(TimesOf(*trio.x), (Parameters{1, 4, 5, 12}));
    EXPECT_EQ(drag.To(-10, 0), 1) << "to the front";
    EXPECT_EQ(TimesOf(*trio.x), (Parameters{-8, 1, 4, 5}));
    ExpectShaped(trio.curve->GetKey(0), -8);
}

TEST(CFCQuatKeyBench, ValueGoesThroughTheComponentDragged)
{
    Trio const trio = MakeShapedTrio();
    double const between = trio.x->Eval(3, 0);
    Drag drag(*trio.y, {2, 4});
    EXPECT_EQ(drag.To(0, 50), 1);
    ExpectNear(ValuesOf(*trio.y), {-20, 65, 85, 5});
    HvQuatKey const before = MakeTrio().curve->GetKey(2);
    EXPECT_EQ(trio.curve->GetKey(2).angles.x, before.angles.x);
    EXPECT_EQ(trio.curve->GetKey(2).angles.z, before.angles.z);
    EXPECT_NE(trio.x->Eval(3, 0), between) << "another rotation lies between other rotations";
    ExpectShaped(trio.curve->GetKey(1), 2);
}

TEST(CFCQuatKeyBench, DragBackRestoresEveryBit)
{
    for (unsigned int component = 0; component < 3; ++component) {
        Trio const trio = MakeShapedTrio();
        // Angles that no number of degrees gives.
        HvQuatKey key = trio.curve->GetKey(2);
        key.angles = HvPoint3<double>(1.0, 1.0 / 3, 0.1);
        trio.curve->SetKey(2u, key);
        HvQuatFCurve* const curves[] = {trio.x.get(), trio.y.get(), trio.z.get()};
        std::string const before = QuatImage(*curves[component]);
        for (Parameters const& keys : {Parameters{2, 4}, Parameters{1, 2, 4, 5}}) {
            Drag drag(*curves[component], keys);
            for (Point const& way : {Point(0.7, 0), Point(1.3, 33.3), Point(-9, 1e-3)}) {
                EXPECT_EQ(drag.To(way.x, way.y), 1);
            }
            EXPECT_EQ(drag.To(0, 0), 1);
            EXPECT_EQ(drag.mover.Finalize(), 1);
            EXPECT_EQ(QuatImage(*curves[component]), before);
        }
    }
}

TEST(CFCQuatKeyBench, WholeRotationMovesKeyByKey)
{
    Trio const trio = MakeTrio();
    trio.curve->SetValueWhenNoKeys(1, 3);
    Drag drag(*trio.y, {1, 2, 4, 5});
    EXPECT_EQ(drag.To(10, 7), 1);
    EXPECT_EQ(TimesOf(*trio.x), (Parameters{11, 12, 14, 15}));
    ExpectNear(ValuesOf(*trio.y), {-13, 22, 42, 12});
    EXPECT_EQ(drag.mover.Finalize(), 1);
    EXPECT_EQ(TextIn(trio.y->GetUserDataSet(14), 1), "four");
    HvBaseFCurve::FCurveInfo info{};
    info.mask = 0x04;
    trio.y->GetFCurveInfo(&info);
    EXPECT_NEAR(info.valueWhenNoKeys, 3, kRoundTrip) << "no key, and not seen";
}

TEST(CFCQuatKeyBench, LocksOfTheRotationRestrictEachComponent)
{
    Trio const trio = MakeTrio();
    trio.curve->SetParamLock(1, 1);
    trio.curve->SetValueLock(2, 1);
    Drag drag(*trio.x, {2, 4});
    EXPECT_EQ(drag.To(0.5, 10), 1);
    EXPECT_EQ(TimesOf(*trio.x), (Parameters{1, 2, 4.5, 5}));
    ExpectNear(ValuesOf(*trio.x), {10, 50, -30, 20});
    EXPECT_EQ(trio.curve->IsParamLocked(1), -1);
    EXPECT_EQ(trio.curve->IsValueLocked(2), -1);
}

TEST(CFCQuatKeyBench, WhatOthersChangeInMidDragStays)
{
    Trio const trio = MakeTrio();
    Drag drag(*trio.x, {2});
    EXPECT_EQ(drag.To(0.5, 10), 1);
    EXPECT_EQ(trio.z->SetKeyValue(2.5, HvBaseFCurve::Left, -70, 0), 1);
    EXPECT_EQ(trio.x->SetKeyValue(2.5, HvBaseFCurve::Left, 33, 0), 1);
    trio.curve->SetValueLock(1, 1);
    trio.curve->SetKeySelected(1, 1);
    EXPECT_EQ(drag.To(1, 20), 1);
    ExpectNear(ValuesOf(*trio.z), {30, -70, 200, 120});
    ExpectNear(ValuesOf(*trio.x), {10, 33, -30, 20});
    EXPECT_EQ(TimesOf(*trio.x), (Parameters{1, 3, 4, 5}));
    EXPECT_EQ(trio.curve->IsValueLocked(1), -1);
    EXPECT_EQ(trio.curve->GetKey(1).selected, 1);
}

TEST(CFCQuatKeyBench, UserDataOfTheCurveDraggedGoAlong)
{
    Trio const trio = MakeTrio();
    trio.z->SetUserDataSet(SetOf(1, "other"), 4);
    Drag drag(*trio.y, {4});
    EXPECT_EQ(drag.To(0.5, 0), 1);
    EXPECT_EQ(drag.mover.Finalize(), 1);
    EXPECT_EQ(TextIn(trio.y->GetUserDataSet(4.5), 1), "four");
    EXPECT_EQ(trio.y->GetUserDataSet(4), nullptr);
    EXPECT_EQ(TextIn(trio.z->GetUserDataSet(4), 1), "other") << "those of another stay";
}

TEST(CFCQuatKeyBench, RotationThatIsReadOnlyIsLeftAlone)
{
    Trio const trio = MakeTrio();
    Drag drag(*trio.x, {2}, Extent(0, -100, 2.5, 100));
    StretchDrag stretch(*trio.x, WholeWidth(kRightHandle));
    trio.z->SetReadOnlyConstraint(1);
    std::string const before = QuatImage(*trio.x);
    EXPECT_EQ(drag.To(1, 1), 0);
    EXPECT_EQ(drag.translation, Point(0.5, 1)) << "limited all the same";
    EXPECT_EQ(stretch.To(1), 0);
    EXPECT_EQ(QuatImage(*trio.x), before);
    trio.z->SetReadOnlyConstraint(0);
    EXPECT_EQ(drag.To(1, 1), 1);
}

TEST(CFCQuatKeyBench, KeysInDisorderAreNotMoved)
{
    Trio const trio = MakeTrio();
    Drag drag(*trio.x, {2, 4});
    StretchDrag stretch(*trio.x, WholeWidth(kRightHandle));
    StretchDrag values(*trio.x, WholeWidth(kTopHandle));
    trio.curve->SetParameter(0, 7);
    std::string const before = QuatImage(*trio.x);
    EXPECT_EQ(drag.To(0.25, 1), 0);
    EXPECT_EQ(stretch.To(1), 0);
    EXPECT_EQ(QuatImage(*trio.x), before);
    EXPECT_EQ(values.To(30), 1) << "values need no order";
    EXPECT_EQ(values.To(0), 1);
    EXPECT_EQ(QuatImage(*trio.x), before);
}

TEST(CFCQuatKeyBench, ComponentOfNoRotationHasNoValuesToDrag)
{
    HvQuatFCurve curve(3u);
    curve.GetQuatCurve()->SetKey(KeyOf(1, 10, 20, 30), 0.0);
    curve.GetQuatCurve()->SetKey(KeyOf(2, 40, 50, 60), 0.0);
    Drag drag(curve, {2});
    EXPECT_EQ(drag.To(0.5, 9), 1);
    EXPECT_EQ(drag.translation, Point(0.5, 0));
    EXPECT_EQ(TimesOf(curve), (Parameters{1, 2.5}));
    ExpectNear(ValuesOf(curve), {30, 60});
    StretchArguments arguments = WholeWidth(kTopHandle);
    StretchDrag values(curve, arguments);
    EXPECT_EQ(values.To(10), 0);
    EXPECT_EQ(values.stretcher.Finalize(), 0);
    ExpectNear(ValuesOf(curve), {30, 60});
}

TEST(CFCQuatKeyBench, DrawnAnewIsWhatIsNearAndATurn)
{
    Trio const trio = MakeTrio();
    trio.curve->SetKey(KeyOf(8, 0, 0, 0), 0.0);
    trio.curve->SetKey(KeyOf(9, 0, 0, 0), 0.0);
    Drag drag(*trio.x, {8});
    EXPECT_EQ(drag.To(0.5, 0), 1);
    // Around the place that is empty now the keys at 2, 4 and 5, and those behind.
    EXPECT_EQ(drag.invalid.min, Point(2, -30 - 360.0));
    EXPECT_EQ(drag.invalid.max, Point(100, 40 + 360.0)) << "the last key holds to the edge";
    Drag last(*trio.x, {9});
    trio.curve->SetExtrapolationMethod(2);
    EXPECT_EQ(last.To(0, 500), 1);
    EXPECT_EQ(last.invalid.max, Point(100, 500 + 360.0)) << "turns on, near the last key";
    Drag inner(*trio.x, {4});
    trio.curve->SetExtrapolationMethod(3);
    EXPECT_EQ(inner.To(0.25, 0), 1);
    EXPECT_EQ(inner.invalid.min.x, -100) << "cycles are seen everywhere";
    EXPECT_EQ(inner.invalid.max, Point(100, 500 + 360.0));
}

// The stretcher.

TEST(CFCQuatKeyBench, RegionStretchesForAllComponents)
{
    Trio const trio = MakeShapedTrio();
    StretchDrag drag(*trio.z, WholeWidth(kRightHandle));
    EXPECT_EQ(drag.To(4), 1);
    EXPECT_EQ(TimesOf(*trio.x), (Parameters{1, 3, 7, 9}));
    ExpectShaped(trio.curve->GetKey(1), 3);
    ExpectNear(ValuesOf(*trio.x), {10, 40, -30, 20});
}

TEST(CFCQuatKeyBench, ValuesStretchThroughTheComponentDragged)
{
    Trio const trio = MakeShapedTrio();
    std::string const before = QuatImage(*trio.y);
    StretchArguments arguments = WholeWidth(kTopHandle);
    arguments.region = Extent(1, 0, 5, 20);
    StretchDrag drag(*trio.y, arguments);
    EXPECT_EQ(drag.To(20), 1);
    ExpectNear(ValuesOf(*trio.y), {-20, 30, 35, 10});
    EXPECT_EQ(ValuesOf(*trio.x), ValuesOf(*MakeTrio().x));
    EXPECT_EQ(ValuesOf(*trio.z), ValuesOf(*MakeTrio().z));
    ExpectShaped(trio.curve->GetKey(1), 2);
    EXPECT_EQ(drag.To(0), 1);
    EXPECT_EQ(QuatImage(*trio.y), before);
}

TEST(CFCQuatKeyBench, KeysTurnedRoundArePassedTheOtherWay)
{
    Trio const trio = MakeShapedTrio();
    std::string const before = QuatImage(*trio.z);
    StretchArguments arguments = WholeWidth(kRightHandle);
    arguments.region = Extent(1.5, -300, 4.5, 300);
    arguments.pivot = Point(3.25, 0);
    StretchDrag drag(*trio.z, arguments);
    EXPECT_EQ(drag.To(-2.5), 1) << "about the pivot, to the same size";
    EXPECT_EQ(TimesOf(*trio.x), (Parameters{1, 2.5, 4.5, 5}));
    ExpectNear(ValuesOf(*trio.x), {10, -30, 40, 20});
    HvQuatKey const turned = trio.curve->GetKey(2);
    EXPECT_EQ(turned.bias, -0.75f);
    EXPECT_EQ(turned.spins, 0) << "of the span from 1 to 2";
    EXPECT_EQ(turned.tension, 0.25f);
    EXPECT_EQ(trio.curve->GetKey(1).spins, -2) << "the span that turned still turns";
    EXPECT_EQ(drag.To(-2), 1) << "no second time";
    EXPECT_EQ(trio.curve->GetKey(2).bias, -0.75f);
    EXPECT_EQ(drag.To(0), 1);
    EXPECT_EQ(QuatImage(*trio.z), before);
}

TEST(CFCQuatKeyBench, KeyThatIsGoneTakesNoPart)
{
    Trio const trio = MakeTrio();
    Drag drag(*trio.x, {2, 4});
    StretchDrag stretch(*trio.x, WholeWidth(kRightHandle));
    trio.y->RemoveKey(2, 0);
    EXPECT_EQ(drag.To(0.5, 5), 1);
    EXPECT_EQ(TimesOf(*trio.x), (Parameters{1, 4.5, 5}));
    EXPECT_EQ(drag.To(0, 0), 1);
    EXPECT_EQ(stretch.To(4), 1);
    EXPECT_EQ(TimesOf(*trio.x), (Parameters{1, 7, 9}));
}

// Life and locks.

TEST(CFCQuatKeyBench, ComponentsDieInEveryOrderAfterADrag)
{
    int order[] = {0, 1, 2};
    do {
        Trio trio = MakeTrio();
        std::unique_ptr<HvQuatFCurve>* const curves[] = {&trio.x, &trio.y, &trio.z};
        {
            std::optional<Drag> drag(std::in_place, *trio.y, Parameters{2});
            EXPECT_EQ(drag->To(0.5, 5), 1);
            for (int const c : order) {
                if (c != 1) {
                    curves[c]->reset();  // in mid-drag
                    EXPECT_EQ(drag->To(0.25, 1), 1);
                }
                if (c == 1) {
                    EXPECT_EQ(drag->mover.Finalize(), 1);
                }
            }
            EXPECT_EQ(TimesOf(*trio.y), (Parameters{1, 2.25, 4, 5}));
        }
        for (int const c : order) {
            curves[c]->reset();
        }
    } while (std::next_permutation(std::begin(order), std::end(order)));
}

TEST(CFCQuatKeyBench, ToolsWaitForTheLockOfTheRotation)
{
    Trio const trio = MakeTrio();
    Drag drag(*trio.y, {2});
    StretchDrag stretch(*trio.y, WholeWidth(kRightHandle));
    auto const waits = [&](auto call) {
        trio.curve->AcquireLock();
        return WaitProbe_Waits([&] { trio.curve->ReleaseLock(); }, true, call);
    };
    EXPECT_TRUE(waits([&] { Drag const other(*trio.y, {4}); }));
    EXPECT_TRUE(waits([&] { drag.To(0.5, 1); }));
    EXPECT_TRUE(waits([&] { drag.mover.Finalize(); }));
    EXPECT_TRUE(waits([&] { StretchDrag const other(*trio.y, WholeWidth(kTopHandle)); }));
    EXPECT_TRUE(waits([&] { stretch.To(1); }));
    EXPECT_TRUE(waits([&] { stretch.stretcher.Finalize(); }));
    EXPECT_TRUE(LockProbe_AreBothFree(*trio.y));
}

TEST(CFCQuatKeyBench, TwoComponentsAreDraggedWhileTheThirdIsEvaluated)
{
    Trio const trio = MakeTrio();
    std::string const before = QuatImage(*trio.z);
    std::atomic<bool> isOver{false};
    std::atomic<int> faults{0};
    auto const drag = [&](HvQuatFCurve& curve, Parameters const& keys) {
        Drag it(curve, keys);
        for (int k = 0; k < 100; ++k) {
            faults += it.To(0, k % 5) == 1 ? 0 : 1;
        }
        it.To(0, 0);
    };
    std::thread reader([&] {
        while (!isOver) {
            faults += std::isfinite(trio.z->Eval(3.3, 0)) && trio.z->GetNumKeys() == 4 ? 0 : 1;
        }
    });
    std::thread first([&] { drag(*trio.x, {2, 4}); });
    std::thread second([&] { drag(*trio.y, {4, 5}); });
    first.join();
    second.join();
    isOver = true;
    reader.join();
    EXPECT_EQ(faults, 0);
    EXPECT_EQ(QuatImage(*trio.z), before);
}
