// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Trimming, cutting, joining and pasting stepped curves, and their axes.

#include <tests/fcurve/stepped_test_support.h>
#include <tests/support/generators.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <memory>

namespace {

using Kind = HvBaseFCurve;

OpenInteger Four()
{
    return OpenInteger(7, {{1, 10}, {2, 20}, {3, 30}, {4, 40}});
}

// Head and tail.

TEST(HvSteppedFCurve_pieces, EndsTheCurveAtAKeyOfTheValueThere)
{
    OpenInteger inside = Four();
    EXPECT_EQ(inside.RemoveTail(2.5), 1);
    EXPECT_EQ(KeysOf(inside), (Keys{{1, 10}, {2, 20}, {2.5, 20}}));
    OpenInteger onKey = Four();
    EXPECT_EQ(onKey.RemoveTail(2), 1);
    EXPECT_EQ(KeysOf(onKey), (Keys{{1, 10}, {2, 20}}));
    OpenInteger after = Four();
    EXPECT_EQ(after.RemoveTail(9), 1);
    EXPECT_EQ(KeysOf(after), (Keys{{1, 10}, {2, 20}, {3, 30}, {4, 40}, {9, 40}}));
    OpenInteger before = Four();
    EXPECT_EQ(before.RemoveTail(0), 1);
    EXPECT_EQ(KeysOf(before), (Keys{{0, 0}}));
    OpenInteger empty(7);
    EXPECT_EQ(empty.RemoveTail(3), 1);
    EXPECT_EQ(KeysOf(empty), (Keys{{3, 7}}));
    EXPECT_EQ(empty.Eval(0, 0), 7);
}

TEST(HvSteppedFCurve_pieces, StartsTheCurveAtAKeyOfTheValueThere)
{
    OpenInteger inside = Four();
    EXPECT_EQ(inside.RemoveHead(2.5), 1);
    EXPECT_EQ(KeysOf(inside), (Keys{{2.5, 20}, {3, 30}, {4, 40}}));
    EXPECT_EQ(inside.LeftValue(), 20);
    OpenInteger onKey = Four();
    EXPECT_EQ(onKey.RemoveHead(3), 1);
    EXPECT_EQ(KeysOf(onKey), (Keys{{3, 30}, {4, 40}}));
    EXPECT_EQ(onKey.LeftValue(), 20);
    OpenInteger before = Four();
    EXPECT_EQ(before.RemoveHead(0), 1);
    EXPECT_EQ(KeysOf(before), (Keys{{0, 0}, {1, 10}, {2, 20}, {3, 30}, {4, 40}}));
    OpenInteger after = Four();
    EXPECT_EQ(after.RemoveHead(9), 1);
    EXPECT_EQ(KeysOf(after), (Keys{{9, 40}}));
    EXPECT_EQ(after.LeftValue(), 40);
}

TEST(HvSteppedFCurve_pieces, RefusesToTrimLockedKeysOnly)
{
    OpenInteger tail = Four();
    Lock(tail, 3, Kind::ParameterLocked);
    EXPECT_EQ(tail.RemoveTail(3), 1);  // the new end itself may be locked
    OpenInteger locked = Four();
    Lock(locked, 4, Kind::ValueLocked);
    EXPECT_EQ(locked.RemoveTail(3.5), 0);
    EXPECT_EQ(locked.RemoveTail(4), 1);
    EXPECT_EQ(locked.RemoveHead(4), 1);
    OpenInteger head = Four();
    Lock(head, 1, Kind::ValueLocked);
    EXPECT_EQ(head.RemoveHead(1.5), 0);
    EXPECT_EQ(head.RemoveHead(1), 1);
}

TEST(HvSteppedFCurve_pieces, CopiesASectionWithItsValues)
{
    OpenInteger source = Four();
    source.SetExtrapolationMethod(Kind::CycleExtrapolation);
    source.SetReadOnlyConstraint(1);
    source.SetReadOnlyConstraint(0);
    for (double const p : {1.0, 4.0}) {
        Lock(source, p, Kind::AllLocked);
    }
    source.SetReadOnlyConstraint(1);
    OpenInteger section(source, 1.5, 3.5);
    EXPECT_EQ(KeysOf(section), (Keys{{1.5, 10}, {2, 20}, {3, 30}, {3.5, 30}}));
    EXPECT_EQ(section.IsReadOnly(), 1);
    EXPECT_EQ(section.GetExtrapolationMethod(), Kind::CycleExtrapolation);
    EXPECT_EQ(section.WhenNoKeys(), 7);
    EXPECT_EQ(KeysOf(OpenInteger(source, 0, 9)), KeysOf(source));
    EXPECT_EQ(KeysOf(OpenInteger(source, kNaN, kNaN)), KeysOf(source));
    EXPECT_EQ(KeysOf(OpenInteger(source, 2, 3)), (Keys{{2, 20}, {3, 30}}));
    EXPECT_EQ(KeysOf(source).size(), 4u);
    OpenBoolean const empty(1);
    EXPECT_EQ(OpenBoolean(empty, 1, 2).Image(), empty.Image());
}

// Cutting.

TEST(HvSteppedFCurve_pieces, CutsAnIntervalOutAndClosesTheGap)
{
    OpenInteger curve = Four();
    OpenInteger removed(0);
    EXPECT_EQ(curve.Cut(1.5, 3.5, removed), 1);
    // The end of the gap comes to stand on its start, which takes its value.
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 10}, {1.5, 30}, {2, 40}}));
    EXPECT_EQ(KeysOf(removed), (Keys{{1.5, 10}, {2, 20}, {3, 30}, {3.5, 30}}));
}

TEST(HvSteppedFCurve_pieces, CutsFromKeyToKeyAndBeyondTheEnds)
{
    OpenInteger curve = Four();
    OpenInteger removed(0);
    EXPECT_EQ(curve.Cut(2, 3, removed), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 10}, {2, 30}, {3, 40}}));
    EXPECT_EQ(KeysOf(removed), (Keys{{2, 20}, {3, 30}}));
    OpenInteger tail = Four();
    OpenInteger tailRemoved(0);
    EXPECT_EQ(tail.Cut(3, 9, tailRemoved), 1);
    EXPECT_EQ(KeysOf(tail), (Keys{{1, 10}, {2, 20}, {3, 40}}));
    EXPECT_EQ(KeysOf(tailRemoved), (Keys{{3, 30}, {4, 40}, {9, 40}}));
    OpenInteger head = Four();
    OpenInteger headRemoved(0);
    EXPECT_EQ(head.Cut(0, 2, headRemoved), 1);
    EXPECT_EQ(KeysOf(head), (Keys{{0, 20}, {1, 30}, {2, 40}}));
    EXPECT_EQ(head.LeftValue(), 20);  // the fused key is the first
    EXPECT_EQ(KeysOf(headRemoved), (Keys{{0, 0}, {1, 10}, {2, 20}}));
    OpenInteger point = Four();
    OpenInteger pointRemoved(0);
    EXPECT_EQ(point.Cut(2.5, 2.5, pointRemoved), 1);
    EXPECT_EQ(KeysOf(point), (Keys{{1, 10}, {2, 20}, {2.5, 20}, {3, 30}, {4, 40}}));
    EXPECT_EQ(KeysOf(pointRemoved), (Keys{{2.5, 20}}));
}

TEST(HvSteppedFCurve_pieces, CutsPastLocksOutsideTheInterval)
{
    OpenInteger curve = Four();
    Lock(curve, 1, Kind::AllLocked);
    Lock(curve, 4, Kind::ValueLocked);
    OpenInteger removed(0);
    EXPECT_EQ(curve.Cut(1.5, 3.5, removed), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 10}, {1.5, 30}, {2, 40}}));
    EXPECT_EQ(IsLocked(curve, 1, Kind::AllLocked), 1);
    EXPECT_EQ(IsLocked(curve, 2, Kind::ValueLocked), 1);
    EXPECT_EQ(KeysOf(removed), (Keys{{1.5, 10}, {2, 20}, {3, 30}, {3.5, 30}}));
}

TEST(HvSteppedFCurve_pieces, LeavesAKeyWithALockedParameterWhereItIs)
{
    OpenInteger curve(0, {{1, 10}, {2, 20}, {5, 50}, {6, 60}});
    Lock(curve, 5, Kind::ParameterLocked);
    OpenInteger removed(0);
    // Key 6 would come to 5.5 and stay after key 5.
    EXPECT_EQ(curve.Cut(1.5, 2, removed), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 10}, {1.5, 20}, {5, 50}, {5.5, 60}}));
    // Now it would come to 4.5: refused.
    OpenInteger again(0);
    std::string const image = curve.Image();
    EXPECT_EQ(curve.Cut(2, 3, again), 0);
    EXPECT_EQ(curve.Image(), image);
    EXPECT_EQ(again.GetNumKeys(), 0u);
}

TEST(HvSteppedFCurve_pieces, MovesDataAlongWithTheKeysOfACut)
{
    OpenInteger curve = Four();
    for (int i = 1; i <= 4; ++i) {
        Tag(curve, i, static_cast<unsigned char>(i));
    }
    OpenInteger removed(0);
    curve.Cut(1.5, 3, removed);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 10}, {1.5, 30}, {2.5, 40}}));
    EXPECT_EQ(TagAt(curve, 1), 1);
    EXPECT_EQ(TagAt(curve, 1.5), 3);
    EXPECT_EQ(TagAt(curve, 2.5), 4);
    EXPECT_EQ(TagAt(curve, 2), -1);
    EXPECT_EQ(TagAt(removed, 2), 2);
    EXPECT_EQ(TagAt(removed, 3), 3);
    EXPECT_EQ(TagAt(removed, 1), -1);
    EXPECT_EQ(TagAt(removed, 4), -1);
}

TEST(HvSteppedFCurve_pieces, TakesTheEarlierMovesOfARefusedShiftBackOnlyInTheCurve)
{
    // The implementation leaves them standing.
    OpenInteger curve(0, {{1, 10}, {2, 20}, {3, 30}, {4, 40}});
    Lock(curve, 3, Kind::ParameterLocked);
    EXPECT_EQ(curve.Impl().TranslateParamsAfterExistingKey(0, 1.5, 1.5, curve), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 10}, {1.5, 20}, {3, 30}, {5.5, 40}}));
    EXPECT_EQ(curve.Impl().TranslateParamsAfterExistingKey(0, 1.25, -3, curve), 0);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 10}, {1.25, 20}, {3, 30}, {5.5, 40}}));
    EXPECT_EQ(curve.Impl().TranslateParamsAfterExistingKey(3, 0, 0, curve), 1);
    EXPECT_EQ(curve.Impl().TranslateParamsAfterExistingKey(0, 0.5, 0, curve), 0);
    EXPECT_EQ(curve.Impl().TranslateParamsAfterExistingKey(0, 1, kNaN, curve), 0);
    EXPECT_EQ(curve.Impl().TranslateParamsAfterExistingKey(2, kInfinity, 0, curve), 0);
}

// Appending.

TEST(HvSteppedFCurve_pieces, FusesTheLastKeyWithTheFirstOfTheNext)
{
    OpenInteger curve(0, {{1, 10}, {2, 20}});
    OpenInteger next(0, {{10, -1}, {13, -2}, {15, -3}});
    Lock(next, 13, Kind::AllLocked);
    Tag(next, 10, 100);
    Tag(next, 15, 150);
    EXPECT_EQ(curve.Append(next), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 10}, {2, -1}, {5, -2}, {7, -3}}));
    EXPECT_EQ(IsLocked(curve, 5, Kind::AllLocked), 1);
    EXPECT_EQ(TagAt(curve, 2), 100);
    EXPECT_EQ(TagAt(curve, 7), 150);
    OpenInteger one(0, {{1, 10}});
    EXPECT_EQ(one.Append(next), 1);
    EXPECT_EQ(one.LeftValue(), -1);  // the fused key is the first
}

TEST(HvSteppedFCurve_pieces, AppendsItselfAsItWouldACopy)
{
    OpenInteger curve(0, {{1, 10}, {2, 20}, {4, 40}});
    Tag(curve, 2, 22);
    EXPECT_EQ(curve.Append(curve), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 10}, {2, 20}, {4, 10}, {5, 20}, {7, 40}}));
    EXPECT_EQ(TagAt(curve, 5), 22);
}

TEST(HvSteppedFCurve_pieces, RefusesToAppendWhatDoesNotFit)
{
    OpenInteger curve(0, {{1, 10}, {2, 20}});
    OpenInteger const empty(0);
    OpenBoolean const on(0, {{1, 1}});
    std::string const image = curve.Image();
    EXPECT_EQ(curve.Append(empty), 0);
    EXPECT_EQ(curve.Append(on), 0);
    Lock(curve, 2, Kind::ValueLocked);
    std::string const locked = curve.Image();
    EXPECT_EQ(curve.Append(OpenInteger(0, {{1, 21}, {2, 3}})), 0);
    EXPECT_EQ(curve.Image(), locked);
    EXPECT_NE(image, locked);
    EXPECT_EQ(curve.Append(OpenInteger(0, {{1, 20}, {2, 3}})), 1);
    OpenInteger target(0);
    EXPECT_EQ(target.Append(curve), 0);
    // Parameters that would no longer differ, or overflow.
    OpenInteger far(0, {{1e17, 1}});
    EXPECT_EQ(far.Append(OpenInteger(0, {{0, 1}, {1, 2}})), 0);
    OpenInteger huge(0, {{1.7e308, 1}});
    EXPECT_EQ(huge.Append(OpenInteger(0, {{0, 1}, {1e308, 2}})), 0);
    EXPECT_EQ(KeysOf(huge), (Keys{{1.7e308, 1}}));
}

// Pasting.

TEST(HvSteppedFCurve_pieces, ReplacesAnIntervalByAnotherCurve)
{
    OpenInteger curve = Four();
    OpenInteger const patch(0, {{0, -1}, {0.5, -2}, {2, -3}});
    EXPECT_EQ(curve.Paste(patch, 1.5, 3), 1);
    // The head to 1.5, the patch in its own length, then the tail from 3.
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 10}, {1.5, -1}, {2, -2}, {3.5, 30}, {4.5, 40}}));
    OpenInteger empty(7);
    EXPECT_EQ(empty.Paste(patch, 5, 6), 1);
    EXPECT_EQ(KeysOf(empty), (Keys{{5, -1}, {5.5, -2}, {7, 7}}));
}

TEST(HvSteppedFCurve_pieces, PastesItself)
{
    OpenInteger curve(0, {{1, 10}, {2, 20}});
    OpenInteger expected(0, {{1, 10}, {2, 20}});
    EXPECT_EQ(expected.Paste(OpenInteger(curve), 1.5, 1.75), 1);
    EXPECT_EQ(curve.Paste(curve, 1.5, 1.75), 1);
    EXPECT_EQ(curve.Image(), expected.Image());
}

TEST(HvSteppedFCurve_pieces, RefusesToPasteOverLocks)
{
    OpenInteger const patch(0, {{0, -1}, {0.5, -2}});
    OpenInteger curve = Four();
    Lock(curve, 4, Kind::ParameterLocked);
    std::string const image = curve.Image();
    EXPECT_EQ(curve.Paste(patch, 1.5, 3), 0);
    EXPECT_EQ(curve.Paste(patch, 4, 5), 0);
    EXPECT_EQ(curve.Image(), image);
    EXPECT_EQ(curve.Paste(patch, 5, 6), 1);
    OpenInteger head = Four();
    Lock(head, 1, Kind::AllLocked);  // before the interval: no hindrance
    EXPECT_EQ(head.Paste(patch, 1.5, 3), 1);
    EXPECT_EQ(IsLocked(head, 1, Kind::AllLocked), 1);
}

TEST(HvSteppedFCurve_pieces, RefusesToPasteOneKeyOrAnotherKind)
{
    OpenInteger curve = Four();
    std::string const image = curve.Image();
    EXPECT_EQ(curve.Paste(OpenInteger(0, {{1, 1}}), 1, 2), 0);
    EXPECT_EQ(curve.Paste(OpenBoolean(0, {{1, 1}, {2, 0}}), 1, 2), 0);
    EXPECT_EQ(curve.Paste(OpenInteger(0, {{1, 1}, {2, 2}}), kNaN, 2), 0);
    EXPECT_EQ(curve.Paste(OpenInteger(0, {{1, 1}, {2, 2}}), 1, kInfinity), 0);
    EXPECT_EQ(curve.Image(), image);
}

// The axes.

TEST(HvSteppedFCurve_pieces, ShiftsKeysAndTheirData)
{
    OpenInteger curve = Four();
    Tag(curve, 3, 33);
    EXPECT_EQ(curve.ShiftParameters(2), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{3, 10}, {4, 20}, {5, 30}, {6, 40}}));
    EXPECT_EQ(TagAt(curve, 5), 33);
    std::string const image = curve.Image();
    for (double const d : {kNaN, kInfinity, -kInfinity, 1e17}) {
        EXPECT_EQ(curve.ShiftParameters(d), 0);
    }
    Lock(curve, 6, Kind::ParameterLocked);
    EXPECT_EQ(curve.ShiftParameters(1), 0);
    EXPECT_EQ(KeysOf(curve), (Keys{{3, 10}, {4, 20}, {5, 30}, {6, 40}}));
    EXPECT_EQ(OpenInteger(0).ShiftParameters(1), 1);
}

TEST(HvSteppedFCurve_pieces, ScalesTheParameterAxisWhenTheOrderStays)
{
    OpenInteger curve = Four();
    Tag(curve, 3, 33);
    EXPECT_EQ(curve.ScaleParameterAxis(0.5), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{0.5, 10}, {1, 20}, {1.5, 30}, {2, 40}}));
    EXPECT_EQ(TagAt(curve, 1.5), 33);
    std::string const image = curve.Image();
    for (double const s : {-1.0, 0.0, kNaN, kInfinity, 1e308, 4.9e-324}) {
        EXPECT_EQ(curve.ScaleParameterAxis(s), 0) << s;
        EXPECT_EQ(curve.Image(), image);
    }
    OpenInteger one(0, {{2, 5}});
    EXPECT_EQ(one.ScaleParameterAxis(-1), 1);
    EXPECT_EQ(KeysOf(one), (Keys{{-2, 5}}));
    EXPECT_EQ(one.ScaleParameterAxis(0), 1);
    EXPECT_EQ(OpenInteger(0).ScaleParameterAxis(-1), 1);
}

TEST(HvSteppedFCurve_pieces, MirrorsParametersAboutTheMiddle)
{
    OpenInteger curve(7, {{1, 10}, {2, 20}, {5, 50}});
    curve.SetLeftValue(9);
    Lock(curve, 5, Kind::ValueLocked);
    Tag(curve, 1, 11);
    Tag(curve, 2, 22);
    EXPECT_EQ(curve.MirrorParameters(), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 50}, {4, 20}, {5, 10}}));
    EXPECT_EQ(curve.WhenNoKeys(), 50);
    EXPECT_EQ(curve.LeftValue(), 0);
    EXPECT_EQ(IsLocked(curve, 1, Kind::ValueLocked), 1);
    EXPECT_EQ(IsLocked(curve, 5, Kind::ValueLocked), 0);
    EXPECT_EQ(TagAt(curve, 5), 11);
    EXPECT_EQ(TagAt(curve, 4), 22);
    EXPECT_EQ(TagAt(curve, 1), -1);
    Lock(curve, 4, Kind::ParameterLocked);
    EXPECT_EQ(curve.MirrorParameters(), 0);
    OpenInteger empty(7);
    EXPECT_EQ(empty.MirrorParameters(), 1);
    EXPECT_EQ(empty.WhenNoKeys(), 7);
    OpenInteger one(7, {{3, 4}});
    EXPECT_EQ(one.MirrorParameters(), 1);
    EXPECT_EQ(KeysOf(one), (Keys{{3, 4}}));
    EXPECT_EQ(one.WhenNoKeys(), 4);
}

TEST(HvSteppedFCurve_pieces, KeepsItsEndsExactlyWhenItMirrors)
{
    // a + b - b is not a here.
    OpenInteger curve(0, {{0.1, 1}, {0.7, 2}, {1e8, 3}});
    EXPECT_EQ(curve.MirrorParameters(), 1);
    EXPECT_TRUE(curve.IsSmallestKeyParameter(0.1));
    EXPECT_TRUE(curve.IsLargestKeyParameter(1e8));
    // Both inner keys would round onto one parameter.
    OpenInteger close(0, {{0, 1}, {0.25, 2}, {0.5, 3}, {1e17, 4}});
    std::string const image = close.Image();
    EXPECT_EQ(close.MirrorParameters(), 0);
    EXPECT_EQ(close.Image(), image);
}

TEST(HvSteppedFCurve_pieces, MirrorsValuesAndForgetsTheLeftOne)
{
    OpenBoolean curve(1, {{1, 1}, {2, 0}});
    curve.SetLeftValue(1);
    curve.SetExtrapolationMethod(Kind::CycleExtrapolation);
    curve.SetKeySelected(1u, 1);
    Tag(curve, 2, 22);
    EXPECT_EQ(curve.MirrorValues(), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 0}, {2, 1}}));
    EXPECT_EQ(curve.WhenNoKeys(), 0);
    EXPECT_EQ(curve.LeftValue(), 0);
    EXPECT_EQ(curve.GetExtrapolationMethod(), Kind::CycleExtrapolation);
    EXPECT_EQ(curve.Impl().ConstraintWord(1), CFCKeyConstraint::kSelected);
    EXPECT_EQ(TagAt(curve, 2), 22);
    Lock(curve, 1, Kind::ValueLocked);
    EXPECT_EQ(curve.MirrorValues(), 0);
    OpenBoolean empty(1);
    EXPECT_EQ(empty.MirrorValues(), 1);
    EXPECT_EQ(empty.WhenNoKeys(), 1);

    OpenInteger number(4, {{1, 5}, {2, -2147483647 - 1}});
    number.SetLeftValue(3);
    EXPECT_EQ(number.MirrorValues(), 1);
    EXPECT_EQ(KeysOf(number), (Keys{{1, -5}, {2, 2147483647}}));
    EXPECT_EQ(number.WhenNoKeys(), -4);
    EXPECT_EQ(number.LeftValue(), 0);
}

TEST(HvSteppedFCurve_pieces, IsItselfAgainAfterTwoMirrors)
{
    EXPECT_TRUE(rc::check([] {
        OpenInteger curve(0);
        unsigned int const n = PickInRange(1u, 12u);
        for (unsigned int i = 0; i < n; ++i) {
            curve.CreateKey(PickInRange(-40, 40) * 0.25, PickInRange(-9, 10));
        }
        Keys const keys = KeysOf(curve);
        RC_ASSERT(curve.MirrorParameters() == 1);
        RC_ASSERT(curve.MirrorValues() == 1);
        RC_ASSERT(curve.MirrorParameters() == 1);
        RC_ASSERT(curve.MirrorValues() == 1);
        RC_ASSERT(KeysOf(curve) == keys);
    }));
}

TEST(HvSteppedFCurve_pieces, IsWholeAgainWhenTheCutPieceIsPastedBack)
{
    EXPECT_TRUE(rc::check([] {
        OpenInteger curve(0);
        unsigned int const n = PickInRange(1u, 12u);
        for (unsigned int i = 0; i < n; ++i) {
            curve.CreateKey(PickInRange(-20, 20), PickInRange(-9, 10));
        }
        double const from = PickInRange(-25, 25) * 0.5;
        double const to = from + PickInRange(1, 20) * 0.5;
        OpenInteger const before(curve);
        OpenInteger removed(0);
        RC_ASSERT(curve.Cut(from, to, removed) == 1);
        RC_ASSERT(curve.Paste(removed, from, from) == 1);
        // Everywhere but at the two seams, where a value is set for the join.
        for (double p = -30.25; p < 40; p += 0.5) {
            RC_ASSERT(curve.Eval(p, 0) == before.Eval(p, 0));
        }
    }));
}

}  // namespace
