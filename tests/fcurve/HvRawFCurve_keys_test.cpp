// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Making, merging and removing the keys of raw curves, their pieces and their parameter axis.

#include <tests/fcurve/raw_test_support.h>
#include <tests/support/generators.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cmath>

namespace {

using C = HvBaseFCurve;

/// Zigzag with data on its keys, and key 3 selected.
OpenRaw Marked()
{
    OpenRaw curve = Zigzag();
    for (int i = 1; i <= 4; ++i) {
        Tag(curve, i, static_cast<unsigned char>(i));
    }
    curve.SetSelected(1);
    curve.SetKeySelected(3.0, 1);
    return curve;
}

// Making keys.

TEST(HvRawFCurve_keys, CreatesOrSetsAKey)
{
    OpenRaw curve(7);
    EXPECT_EQ(curve.CreateKey(2, 5), 1);
    EXPECT_EQ(curve.WhenNoKeys(), 5) << "the first key sets the value when no keys";
    EXPECT_EQ(curve.CreateKey(4, 1), 1);
    EXPECT_EQ(curve.CreateKey(0, 2), 1);
    EXPECT_EQ(curve.CreateKey(3, 8), 1);
    EXPECT_EQ(curve.CreateKey(2, 6.5), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{0, 2}, {2, 6.5}, {3, 8}, {4, 1}}));
    EXPECT_EQ(curve.WhenNoKeys(), 5);
}

TEST(HvRawFCurve_keys, NonModifyingKeyTakesTheValueOfThePolyline)
{
    OpenRaw curve = Zigzag();
    EXPECT_EQ(curve.CreateNonModifyingKey(2.5, 0), 1);
    EXPECT_EQ(curve.CreateNonModifyingKey(3, 0), 1);
    EXPECT_EQ(curve.CreateNonModifyingKey(0, 0), 1);
    EXPECT_EQ(curve.CreateNonModifyingKey(6, 0), 1);
    EXPECT_EQ(KeysOf(curve),
              (Keys{{0, 10}, {1, 10}, {2, 30}, {2.5, 15}, {3, 0}, {4, 40}, {6, 40}}));
    OpenRaw empty(7);
    EXPECT_EQ(empty.CreateNonModifyingKey(3, 0), 1);
    EXPECT_EQ(KeysOf(empty), (Keys{{3, 7}}));
}

TEST(HvRawFCurve_keys, NonModifyingKeyContinuesTheLineOfLinearExtrapolation)
{
    OpenRaw curve = Zigzag();
    curve.SetExtrapolationMethod(C::LinearExtrapolation);
    EXPECT_EQ(curve.CreateNonModifyingKey(0, 0), 1);
    EXPECT_EQ(curve.CreateNonModifyingKey(5, 1), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{0, -10}, {1, 10}, {2, 30}, {3, 0}, {4, 40}, {5, 80}}));
}

TEST(HvRawFCurve_keys, NonModifyingKeyFoldsIntoTheCycleUnlessToldNot)
{
    for (C::ExtrapolationMethod const method :
         {C::CycleExtrapolation, C::RelativeCycleExtrapolation}) {
        OpenRaw curve = Zigzag();
        curve.SetExtrapolationMethod(method);
        EXPECT_EQ(curve.CreateNonModifyingKey(5.5, 0), 1);
        EXPECT_EQ(curve.CreateNonModifyingKey(4, 0), 1);
        EXPECT_EQ(KeysOf(curve), (Keys{{1, 10}, {2, 30}, {2.5, 15}, {3, 0}, {4, 40}}));
        EXPECT_EQ(curve.CreateNonModifyingKey(5.5, 1), 1);
        EXPECT_EQ(KeysOf(curve), (Keys{{1, 10}, {2, 30}, {2.5, 15}, {3, 0}, {4, 40}, {5.5, 40}}));
    }
}

TEST(HvRawFCurve_keys, NonModifyingKeyLeavesTheCurveAsItIs)
{
    EXPECT_TRUE(rc::check("a key on the curve changes nothing", [] {
        OpenRaw curve = Zigzag();
        auto const method = static_cast<C::ExtrapolationMethod>(PickInRange(1, 5));
        curve.SetExtrapolationMethod(method);
        OpenRaw const before(curve);
        double const x = PickInRange(-20, 80) / 8.0;
        RC_ASSERT(curve.CreateNonModifyingKey(x, 0) == 1);
        // Values are below 400 up to here, and slopes up to 40 multiply the rounding of x.
        constexpr double kRounding = 1e-11;
        for (double p = -2.5; p < 10; p += 0.3125) {
            RC_ASSERT(std::fabs(curve.Eval(p, 0) - before.Eval(p, 0)) <= kRounding);
        }
    }));
}

// Merging.

TEST(HvRawFCurve_keys, MergesAnIntervalIntoOneKey)
{
    OpenRaw closed = Zigzag();
    EXPECT_EQ(closed.MergeAndCreateKey(2, 3, 2.5, 99, 0, 0, 0), 1);
    EXPECT_EQ(KeysOf(closed), (Keys{{1, 10}, {2.5, 99}, {4, 40}}));
    OpenRaw open = Zigzag();
    EXPECT_EQ(open.MergeAndCreateKey(2, 3, 2.5, 99, 1, 1, 0), 1);
    EXPECT_EQ(KeysOf(open), (Keys{{1, 10}, {2, 30}, {2.5, 99}, {3, 0}, {4, 40}}));
    OpenRaw all = Zigzag();
    EXPECT_EQ(all.MergeAndCreateKey(0, 9, 7, 99, 0, 0, 0), 1);
    EXPECT_EQ(KeysOf(all), (Keys{{7, 99}}));
    EXPECT_EQ(all.WhenNoKeys(), 99);
    OpenRaw empty(7);
    EXPECT_EQ(empty.MergeAndCreateKey(0, 9, 7, 99, 0, 0, 1), 1);
    EXPECT_EQ(KeysOf(empty), (Keys{{7, 99}}));
}

TEST(HvRawFCurve_keys, MergingKeepsDataAndSelectionOfTheNearestKey)
{
    OpenRaw kept = Marked();
    EXPECT_EQ(kept.MergeAndCreateKey(2, 3, 2.6, 99, 0, 0, 1), 1);
    EXPECT_EQ(TagAt(kept, 2.6), 3);
    EXPECT_EQ(kept.IsKeySelected(2.6), 1);
    EXPECT_EQ(TagAt(kept, 2), -1);
    EXPECT_EQ(TagAt(kept, 3), -1);
    EXPECT_EQ(TagAt(kept, 4), 4);
    OpenRaw left = Marked();
    EXPECT_EQ(left.MergeAndCreateKey(2, 3, 2.5, 99, 0, 0, 1), 1);
    EXPECT_EQ(TagAt(left, 2.5), 2) << "the left one on a tie";
    EXPECT_EQ(left.IsKeySelected(2.5), 0);
    OpenRaw dropped = Marked();
    EXPECT_EQ(dropped.MergeAndCreateKey(2, 3, 2.6, 99, 0, 0, 0), 1);
    EXPECT_EQ(TagAt(dropped, 2.6), -1);
    EXPECT_EQ(dropped.IsKeySelected(2.6), 0);
    OpenRaw same = Marked();
    EXPECT_EQ(same.MergeAndCreateKey(2.5, 3.5, 3, 99, 0, 0, 0), 1);
    EXPECT_EQ(TagAt(same, 3), 3) << "the one key of the interval stays what it is";
    EXPECT_EQ(same.IsKeySelected(3.0), 1);
}

TEST(HvRawFCurve_keys, RefusesToMergeOntoAKeyThatStays)
{
    OpenRaw curve = Marked();
    std::string const image = CurveImage(curve);
    EXPECT_EQ(curve.MergeAndCreateKey(2, 3, 5, 99, 0, 0, 0), 0);
    EXPECT_EQ(curve.MergeAndCreateKey(2, 3, 1, 99, 0, 0, 0), 0);
    EXPECT_EQ(curve.MergeAndCreateKey(2, 3, 2, 99, 1, 0, 0), 0);
    EXPECT_EQ(CurveImage(curve), image);
}

TEST(HvRawFCurve_keys, MergesNothingInAnIntervalThatIsTurnedRound)
{
    OpenRaw curve = Marked();
    std::string const image = CurveImage(curve);
    EXPECT_EQ(curve.MergeAndCreateKey(3, 2, 2.5, 99, 0, 0, 0), 1);
    EXPECT_EQ(curve.MergeAndCreateKey(2.7, 2.3, 2.5, 99, 0, 0, 0), 1);
    EXPECT_EQ(curve.MergeAndCreateNonModifyingKey(3, 2, 2.5, 0, 0, 0, 0), 1);
    EXPECT_EQ(curve.RemoveKeys(3, 2, 0, 0), 1);
    EXPECT_EQ(CurveImage(curve), image);
}

TEST(HvRawFCurve_keys, MergesIntoAKeyOfTheValueThere)
{
    OpenRaw curve = Zigzag();
    EXPECT_EQ(curve.MergeAndCreateNonModifyingKey(2, 3, 2.5, 0, 0, 0, 0), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 10}, {2.5, 15}, {4, 40}}));
    OpenRaw after = Zigzag();
    after.SetExtrapolationMethod(C::LinearExtrapolation);
    EXPECT_EQ(after.MergeAndCreateNonModifyingKey(4, 6, 5, 0, 0, 0, 0), 1);
    EXPECT_EQ(KeysOf(after), (Keys{{1, 10}, {2, 30}, {3, 0}, {5, 40}})) << "no extrapolation";
    OpenRaw cycle = Zigzag();
    cycle.SetExtrapolationMethod(C::CycleExtrapolation);
    EXPECT_EQ(cycle.MergeAndCreateNonModifyingKey(5, 6, 5.5, 0, 0, 0, 0), 1);
    EXPECT_EQ(KeysOf(cycle), (Keys{{1, 10}, {2.5, 15}, {4, 40}})) << "the interval moves along";
    OpenRaw unfolded = Zigzag();
    unfolded.SetExtrapolationMethod(C::CycleExtrapolation);
    EXPECT_EQ(unfolded.MergeAndCreateNonModifyingKey(5, 6, 5.5, 0, 0, 0, 1), 1);
    EXPECT_EQ(KeysOf(unfolded), (Keys{{1, 10}, {2, 30}, {3, 0}, {4, 40}, {5.5, 40}}));
}

// Removing.

TEST(HvRawFCurve_keys, RemovesTheKeyWithinTheTolerance)
{
    OpenRaw curve = Marked();
    EXPECT_EQ(curve.RemoveKey(2.2, 0.1), 0);
    EXPECT_EQ(curve.RemoveKey(2.05, 0.1), 1);
    EXPECT_EQ(TagAt(curve, 2), -1);
    EXPECT_EQ(curve.RemoveKey(1, 0), 1);
    EXPECT_EQ(curve.RemoveKey(4, 0), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{3, 0}}));
    EXPECT_EQ(TagAt(curve, 3), 3);
    EXPECT_EQ(curve.RemoveKey(3, 0), 1);
    EXPECT_EQ(curve.GetNumKeys(), 0u);
    EXPECT_EQ(curve.Eval(3, 0), 7);
    EXPECT_EQ(curve.HasUserData(), 0);
    EXPECT_EQ(curve.RemoveKey(3, 0), 1) << "nothing to remove";
}

TEST(HvRawFCurve_keys, RemovesTheKeysOfAnInterval)
{
    struct {
        double from, to;
        int openFrom, openTo;
        Keys kept;
    } const cases[] = {
        {2, 3, 0, 0, {{1, 10}, {4, 40}}},
        {2, 3, 1, 0, {{1, 10}, {2, 30}, {4, 40}}},
        {2, 3, 0, 1, {{1, 10}, {3, 0}, {4, 40}}},
        {2, 3, 1, 1, {{1, 10}, {2, 30}, {3, 0}, {4, 40}}},
        {2, 2, 1, 0, {{1, 10}, {3, 0}, {4, 40}}},
        {2, 2, 0, 1, {{1, 10}, {3, 0}, {4, 40}}},
        {2, 2, 1, 1, {{1, 10}, {2, 30}, {3, 0}, {4, 40}}},
        {0, 2.5, 0, 0, {{3, 0}, {4, 40}}},
        {2.5, 9, 0, 0, {{1, 10}, {2, 30}}},
        {0, 9, 0, 0, {}},
        {5, 9, 0, 0, {{1, 10}, {2, 30}, {3, 0}, {4, 40}}},
        {-kInfinity, kInfinity, 0, 0, {}},
    };
    for (auto const& c : cases) {
        OpenRaw curve = Zigzag();
        EXPECT_EQ(curve.RemoveKeys(c.from, c.to, c.openFrom, c.openTo), 1);
        EXPECT_EQ(KeysOf(curve), c.kept) << c.from << " " << c.to << " " << c.openFrom << c.openTo;
    }
    OpenRaw empty(7);
    EXPECT_EQ(empty.RemoveKeys(0, 1, 0, 0), 1);
}

// Pieces.

TEST(HvRawFCurve_keys, EndsTheCurveAtAKeyOfTheValueThere)
{
    OpenRaw inside = Marked();
    EXPECT_EQ(inside.RemoveTail(2.5), 1);
    EXPECT_EQ(KeysOf(inside), (Keys{{1, 10}, {2, 30}, {2.5, 15}}));
    EXPECT_EQ(TagAt(inside, 3), -1);
    OpenRaw onKey = Zigzag();
    EXPECT_EQ(onKey.RemoveTail(3), 1);
    EXPECT_EQ(KeysOf(onKey), (Keys{{1, 10}, {2, 30}, {3, 0}}));
    OpenRaw after = Zigzag();
    EXPECT_EQ(after.RemoveTail(9), 1);
    EXPECT_EQ(KeysOf(after), (Keys{{1, 10}, {2, 30}, {3, 0}, {4, 40}, {9, 40}}));
    OpenRaw before = Zigzag();
    EXPECT_EQ(before.RemoveTail(0), 1);
    EXPECT_EQ(KeysOf(before), (Keys{{0, 10}}));
    OpenRaw empty(7);
    EXPECT_EQ(empty.RemoveTail(3), 1);
    EXPECT_EQ(KeysOf(empty), (Keys{{3, 7}}));
}

TEST(HvRawFCurve_keys, StartsTheCurveAtAKeyOfTheValueThere)
{
    OpenRaw inside = Marked();
    EXPECT_EQ(inside.RemoveHead(2.5), 1);
    EXPECT_EQ(KeysOf(inside), (Keys{{2.5, 15}, {3, 0}, {4, 40}}));
    EXPECT_EQ(TagAt(inside, 2), -1);
    EXPECT_EQ(inside.IsKeySelected(3.0), 1);
    OpenRaw onKey = Zigzag();
    EXPECT_EQ(onKey.RemoveHead(3), 1);
    EXPECT_EQ(KeysOf(onKey), (Keys{{3, 0}, {4, 40}}));
    OpenRaw onFirst = Zigzag();
    EXPECT_EQ(onFirst.RemoveHead(1), 1);
    EXPECT_EQ(KeysOf(onFirst), KeysOf(Zigzag()));
    OpenRaw before = Zigzag();
    EXPECT_EQ(before.RemoveHead(0), 1);
    EXPECT_EQ(KeysOf(before), (Keys{{0, 10}, {1, 10}, {2, 30}, {3, 0}, {4, 40}}));
    OpenRaw after = Zigzag();
    EXPECT_EQ(after.RemoveHead(9), 1);
    EXPECT_EQ(KeysOf(after), (Keys{{9, 40}}));
}

TEST(HvRawFCurve_keys, SectionIsTheStretchBetweenItsEnds)
{
    OpenRaw const source = Marked();
    HvRawFCurve const section(source, 1.5, 3.5);
    EXPECT_EQ(KeysOf(section), (Keys{{1.5, 20}, {2, 30}, {3, 0}, {3.5, 20}}));
    EXPECT_EQ(TagAt(section, 2), 2);
    EXPECT_EQ(TagAt(section, 1), -1);
    EXPECT_EQ(KeysOf(HvRawFCurve(source, 0, 9)), KeysOf(source));
    EXPECT_EQ(KeysOf(HvRawFCurve(source, 2, 3)), (Keys{{2, 30}, {3, 0}}));
    OpenRaw locked = Zigzag();
    locked.SetReadOnlyConstraint(1);
    HvRawFCurve const ofLocked(locked, 1.5, 3.5);
    EXPECT_EQ(KeysOf(ofLocked), KeysOf(section));
    EXPECT_EQ(ofLocked.IsReadOnly(), 1);
    EXPECT_EQ(KeysOf(HvRawFCurve(OpenRaw(7, {}), 1, 2)), Keys{});
}

TEST(HvRawFCurve_keys, CutsAStretchOutAndClosesTheGap)
{
    OpenRaw curve = Marked();
    HvRawFCurve removed(99, 99);
    EXPECT_EQ(curve.Cut(1.5, 3.5, removed), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 10}, {1.5, 20}, {2, 40}}));
    EXPECT_EQ(TagAt(curve, 2), 4) << "data move along";
    EXPECT_EQ(KeysOf(removed), (Keys{{1.5, 20}, {2, 30}, {3, 0}, {3.5, 20}}))
        << "whatever was there is replaced";
    EXPECT_EQ(TagAt(removed, 3), 3);

    OpenRaw onKeys = Zigzag();
    EXPECT_EQ(onKeys.Cut(2, 3, removed), 1);
    EXPECT_EQ(KeysOf(onKeys), (Keys{{1, 10}, {2, 0}, {3, 40}}));
    EXPECT_EQ(KeysOf(removed), (Keys{{2, 30}, {3, 0}}));
}

TEST(HvRawFCurve_keys, RefusesToCutWhatIsNoStretch)
{
    OpenRaw curve = Marked();
    std::string const image = CurveImage(curve);
    HvRawFCurve removed(5.0);
    HvIntegerFCurve other(0);
    EXPECT_EQ(curve.Cut(3, 2, removed), 0);
    EXPECT_EQ(curve.Cut(kNaN, 2, removed), 0);
    EXPECT_EQ(curve.Cut(1, kInfinity, removed), 0);
    EXPECT_EQ(curve.Cut(2, 3, other), 0);
    EXPECT_EQ(curve.Cut(2, 3, curve), 0);
    EXPECT_EQ(CurveImage(curve), image);
    EXPECT_EQ(removed.GetNumKeys(), 0u);
}

TEST(HvRawFCurve_keys, AppendedCurveContinuesAtTheLastKey)
{
    OpenRaw curve(7, {{1, 10}, {2, 30}});
    Tag(curve, 2, 2);
    OpenRaw other(0, {{0, 7}, {1, 8}, {3, 9}});
    Tag(other, 0, 100);
    Tag(other, 3, 103);
    EXPECT_EQ(curve.Append(other), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 10}, {2, 7}, {3, 8}, {5, 9}}));
    EXPECT_EQ(TagAt(curve, 2), 100);
    EXPECT_EQ(TagAt(curve, 5), 103);
    EXPECT_EQ(curve.Append(HvRawFCurve(0, 1)), 1) << "a single key gives its value";
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 10}, {2, 7}, {3, 8}, {5, 1}}));
}

TEST(HvRawFCurve_keys, AppendsItselfLikeACopy)
{
    OpenRaw curve(7, {{1, 10}, {2, 30}});
    EXPECT_EQ(curve.Append(curve), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 10}, {2, 10}, {3, 30}}));
}

TEST(HvRawFCurve_keys, AppendLeavesOutKeysThatRoundToOne)
{
    // Doubles near 1e17 lie 16 apart.
    OpenRaw curve(0, {{0, 1}, {1e17, 2}});
    EXPECT_EQ(curve.Append(OpenRaw(0, {{0, 5}, {1, 6}, {160, 7}})), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{0, 1}, {1e17, 5}, {1e17 + 160, 7}}));
}

TEST(HvRawFCurve_keys, RefusesToAppendWhatHasNoPlace)
{
    OpenRaw curve = Marked();
    std::string const image = CurveImage(curve);
    EXPECT_EQ(curve.Append(HvRawFCurve(0.0)), 0);
    EXPECT_EQ(curve.Append(OpenInteger(0, {{0, 1}, {1, 2}})), 0);
    EXPECT_EQ(curve.Append(OpenRaw(0, {{-1.5e308, 1}, {1.5e308, 2}})), 0);
    EXPECT_EQ(CurveImage(curve), image);
    OpenRaw empty(7);
    EXPECT_EQ(empty.Append(curve), 0);
    EXPECT_EQ(empty.GetNumKeys(), 0u);
}

TEST(HvRawFCurve_keys, PastesACurveInPlaceOfAStretch)
{
    OpenRaw curve = Marked();
    EXPECT_EQ(curve.Paste(OpenRaw(0, {{0, 5}, {1, 6}}), 1.5, 3.5), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 10}, {1.5, 5}, {2.5, 20}, {3, 40}}));
    EXPECT_EQ(TagAt(curve, 3), 4);
    OpenRaw single = Zigzag();
    EXPECT_EQ(single.Paste(HvRawFCurve(0, 5), 1.5, 3.5), 1);
    EXPECT_EQ(KeysOf(single), (Keys{{1, 10}, {1.5, 20}, {2, 40}}));
    OpenRaw empty(7);
    EXPECT_EQ(empty.Paste(OpenRaw(0, {{0, 5}, {1, 6}}), 1.5, 3.5), 1);
    EXPECT_EQ(KeysOf(empty), (Keys{{1.5, 5}, {2.5, 7}}));
    OpenRaw self(7, {{0, 1}, {2, 3}});
    EXPECT_EQ(self.Paste(self, 1, 1), 1);
    EXPECT_EQ(KeysOf(self), (Keys{{0, 1}, {1, 1}, {3, 2}, {4, 3}}));
}

TEST(HvRawFCurve_keys, RefusesToPasteWhatHasNoPlace)
{
    OpenRaw curve = Marked();
    std::string const image = CurveImage(curve);
    OpenRaw const other(0, {{0, 5}, {1, 6}});
    EXPECT_EQ(curve.Paste(other, 3, 2), 0);
    EXPECT_EQ(curve.Paste(other, kNaN, 2), 0);
    EXPECT_EQ(curve.Paste(other, 2, kInfinity), 0);
    EXPECT_EQ(curve.Paste(HvRawFCurve(0.0), 2, 3), 0);
    EXPECT_EQ(curve.Paste(OpenInteger(0, {{0, 1}, {1, 2}}), 2, 3), 0);
    EXPECT_EQ(curve.Paste(OpenRaw(0, {{-1.5e308, 1}, {1.5e308, 2}}), 2, 3), 0);
    EXPECT_EQ(CurveImage(curve), image);
}

// The parameter axis.

TEST(HvRawFCurve_keys, ShiftsParametersWithTheirData)
{
    OpenRaw curve = Marked();
    EXPECT_EQ(curve.ShiftParameters(0.5), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1.5, 10}, {2.5, 30}, {3.5, 0}, {4.5, 40}}));
    EXPECT_EQ(TagAt(curve, 2.5), 2);
    EXPECT_EQ(curve.IsKeySelected(3.5), 1);
}

TEST(HvRawFCurve_keys, ScalesTheParameterAxis)
{
    OpenRaw curve = Marked();
    EXPECT_EQ(curve.ScaleParameterAxis(2), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{2, 10}, {4, 30}, {6, 0}, {8, 40}}));
    EXPECT_EQ(TagAt(curve, 4), 2);
    OpenRaw single(0, {{2, 5}});
    EXPECT_EQ(single.ScaleParameterAxis(-1), 1);
    EXPECT_EQ(KeysOf(single), (Keys{{-2, 5}}));
}

TEST(HvRawFCurve_keys, RefusesAnAxisOutOfOrder)
{
    OpenRaw curve = Marked();
    std::string const image = CurveImage(curve);
    for (double const scale : {-1.0, 0.0, kNaN, kInfinity, 1e308}) {
        EXPECT_EQ(curve.ScaleParameterAxis(scale), 0) << scale;
    }
    for (double const offset : {kNaN, kInfinity, -kInfinity, 1e17, 1e308}) {
        EXPECT_EQ(curve.ShiftParameters(offset), 0) << offset;
    }
    EXPECT_EQ(CurveImage(curve), image);
}

TEST(HvRawFCurve_keys, MirrorsTheParameterAxis)
{
    OpenRaw curve(7, {{1, 10}, {2, 30}, {4, 40}});
    Tag(curve, 2, 2);
    curve.SetSelected(1);
    curve.SetKeySelected(4.0, 1);
    EXPECT_EQ(curve.MirrorParameters(), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 40}, {3, 30}, {4, 10}}));
    EXPECT_EQ(TagAt(curve, 3), 2);
    EXPECT_EQ(TagAt(curve, 2), -1);
    EXPECT_EQ(curve.IsKeySelected(1.0), 1);
    EXPECT_EQ(curve.IsKeySelected(4.0), 0);
    EXPECT_EQ(curve.WhenNoKeys(), 7);
    OpenRaw empty(7);
    EXPECT_EQ(empty.MirrorParameters(), 1);
    EXPECT_EQ(empty.WhenNoKeys(), 7);
}

}  // namespace
