// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A failed allocation at every allocation of every operation: std::bad_alloc comes out, the locks
// are free, nothing leaks and the curves stay valid.

#include <hv/foundation/HvPoint2dArray.h>
#include <tests/fcurve/raw_test_support.h>
#include <tests/support/allocation_failure.h>
#include <tests/support/lock_probe.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {

using C = HvBaseFCurve;
using Point = HvPoint2<double>;

/// Two curves with user data.
struct Pair {
    std::unique_ptr<OpenRaw> curve;
    std::unique_ptr<OpenRaw> other;
    std::string image;
    std::string otherImage;
};

Pair MakePair()
{
    // Four keys fill the array: the next one makes it grow, and removing three makes it shrink.
    Pair pair;
    pair.curve = std::make_unique<OpenRaw>(Zigzag());
    pair.other = std::make_unique<OpenRaw>(0, 1, 2, 3);
    for (double const p : {1.0, 2.0, 4.0}) {
        Tag(*pair.curve, p, 1);
    }
    Tag(*pair.other, 0, 2);
    Tag(*pair.other, 2, 2);
    pair.image = CurveImage(*pair.curve);
    pair.otherImage = CurveImage(*pair.other);
    return pair;
}

struct Scenario {
    char const* name;
    bool isAllOrNothing;
    std::function<void(Pair&)> call;
};

std::vector<Scenario> Scenarios()
{
    using P = Pair;
    return {
        {"CreateKey at the end", true, [](P& p) { p.curve->CreateKey(9, 1); }},
        {"CreateKey at the start", true, [](P& p) { p.curve->CreateKey(0, 1); }},
        {"CreateKey inside", true, [](P& p) { p.curve->CreateKey(2.5, 1); }},
        {"CreateNonModifyingKey", true, [](P& p) { p.curve->CreateNonModifyingKey(2.5, 0); }},
        {"MergeAndCreateKey", false,
         [](P& p) { p.curve->MergeAndCreateKey(2, 3, 2.5, 1, 0, 0, 1); }},
        {"MergeAndCreateKey of all", false,
         [](P& p) { p.curve->MergeAndCreateKey(0, 9, 2.5, 1, 0, 0, 1); }},
        {"MergeAndCreateKey of none", true,
         [](P& p) { p.curve->MergeAndCreateKey(2.2, 2.7, 2.5, 1, 0, 0, 1); }},
        {"MergeAndCreateNonModifyingKey", false,
         [](P& p) { p.curve->MergeAndCreateNonModifyingKey(2, 9, 2.5, 0, 0, 1, 0); }},
        {"RemoveKey", false, [](P& p) { p.curve->RemoveKey(2, 0); }},
        {"RemoveKeys", false, [](P& p) { p.curve->RemoveKeys(2, 9, 0, 0); }},
        {"RemoveKeys of all", false, [](P& p) { p.curve->RemoveKeys(0, 9, 0, 0); }},
        {"RemoveTail", false, [](P& p) { p.curve->RemoveTail(1.5); }},
        {"RemoveHead", false, [](P& p) { p.curve->RemoveHead(3.5); }},
        {"Cut", true,
         [](P& p) {
             HvRawFCurve removed(0.0);
             p.curve->Cut(1.5, 2.5, removed);
         }},
        {"Append", false, [](P& p) { p.curve->Append(*p.other); }},
        {"Append itself", false, [](P& p) { p.curve->Append(*p.curve); }},
        {"Paste", true, [](P& p) { p.curve->Paste(*p.other, 1.5, 2.5); }},
        {"ShiftParameters", true, [](P& p) { p.curve->ShiftParameters(2); }},
        {"ScaleParameterAxis", true, [](P& p) { p.curve->ScaleParameterAxis(2); }},
        {"ShiftValues", true, [](P& p) { p.curve->ShiftValues(2); }},
        {"ScaleAndShiftValues", true, [](P& p) { p.curve->ScaleAndShiftValues(2, 1); }},
        {"MirrorValues", true, [](P& p) { p.curve->MirrorValues(); }},
        {"MirrorParameters", true, [](P& p) { p.curve->MirrorParameters(); }},
        {"AppendLinearSegment", true, [](P& p) { p.curve->AppendLinearSegment(Point(9, 9)); }},
        {"AppendOrExtendLinearSegment", true,
         [](P& p) { p.curve->AppendOrExtendLinearSegment(Point(5, 80), 1); }},
        {"assignment", true,
         [](P& p) { static_cast<HvRawFCurve&>(*p.curve) = static_cast<HvRawFCurve&>(*p.other); }},
        {"Set", true, [](P& p) { p.curve->Set(*p.other); }},
        {"Clone", true, [](P& p) { std::unique_ptr<C> const copy(p.curve->Clone()); }},
        {"section", true, [](P& p) { HvRawFCurve const section(*p.curve, 1.5, 2.5); }},
        {"construction", true, [](P&) { HvRawFCurve const curve(1, 2, 3, 4); }},
        {"construction from points", true,
         [](P&) {
             HvPoint2dArray points;
             for (int i = 0; i < 5; ++i) {
                 points.Add(Point(i, i * i));
             }
             HvRawFCurve const curve(points, 0);
         }},
        {"GetKeyParameters", true,
         [](P& p) {
             HvDoubleArray a;
             p.curve->GetKeyParameters(0, 9, a, 0, 0, 0);
             p.curve->GetAllKeyParameters(a);
         }},
    };
}

TEST(HvRawFCurve_failure, LeavesEverythingValidAtEachAllocation)
{
    for (Scenario const& scenario : Scenarios()) {
        SCOPED_TRACE(scenario.name);
        RefuseEachAllocation(
            MakePair, [&](Pair& pair) { scenario.call(pair); },
            [&](Pair& pair, bool completed) {
                EXPECT_EQ(pair.curve->Impl().IsValid(), 1);
                EXPECT_EQ(CurveImage(*pair.other), pair.otherImage);
                EXPECT_TRUE(LockProbe_AreBothFree(*pair.curve));
                EXPECT_TRUE(LockProbe_AreBothFree(*pair.other));
                if (!completed && scenario.isAllOrNothing) {
                    EXPECT_EQ(CurveImage(*pair.curve), pair.image);
                }
            });
    }
}

TEST(HvRawFCurve_failure, LeavesTheCutCurveAndItsTargetAlone)
{
    RefuseEachAllocation([] { return MakePair(); },
                         [](Pair& pair) { pair.curve->Cut(1.5, 2.5, *pair.other); },
                         [](Pair& pair, bool completed) {
                             if (!completed) {
                                 EXPECT_EQ(CurveImage(*pair.curve), pair.image);
                                 EXPECT_EQ(CurveImage(*pair.other), pair.otherImage);
                             }
                         });
}

TEST(HvRawFCurve_failure, EmptiesTheArraysOfKeysWithoutMemory)
{
    struct Arrays {
        HvDoubleArray a{1}, b{1}, c{1};
    };
    OpenRaw const curve = Zigzag();
    unsigned int result = 9;
    long const allocations = RefuseEachAllocation(
        [] { return std::make_unique<Arrays>(); },
        [&](std::unique_ptr<Arrays>& out) { result = curve.GetKeys(out->a, out->b, out->c, 0); },
        [&](std::unique_ptr<Arrays>& out, bool completed) {
            EXPECT_TRUE(completed) << "the exception stops here";
            EXPECT_EQ(out->a.Size(), result);
            EXPECT_EQ(out->b.Size(), result);
            EXPECT_EQ(out->c.Size(), result);
            EXPECT_TRUE(result == 0 || result == 4);
        });
    EXPECT_GT(allocations, 0);
    EXPECT_EQ(result, 4u);
}

TEST(HvRawFCurve_failure, ReadsWithoutAllocating)
{
    OpenRaw const curve = Zigzag();
    AllocationCounter const counter;
    double out = 0;
    curve.Eval(2.5, 1);
    curve.EvalNoLock(9, 0);
    curve.EvalInverse(3, out, 0);
    curve.IsBijective();
    curve.GetValueUpperBound(1);
    curve.FoldParameter(9);
    EXPECT_EQ(counter.Allocations(), 0);
}

}  // namespace
