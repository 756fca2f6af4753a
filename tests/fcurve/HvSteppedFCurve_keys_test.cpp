// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Making, merging, setting and removing the keys of stepped curves.

#include <tests/fcurve/stepped_test_support.h>
#include <tests/support/generators.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cmath>
#include <map>

namespace {

using Kind = HvBaseFCurve;

// Making keys.

TEST(HvSteppedFCurve_keys, LetsTheFirstKeySetTheValueWhenNoKeysAndTheLeftValue)
{
    OpenBoolean curve(0);
    EXPECT_EQ(curve.CreateKey(10, 1), 1);
    EXPECT_EQ(curve.WhenNoKeys(), 1);
    EXPECT_EQ(curve.LeftValue(), 1);
    EXPECT_EQ(curve.Eval(0, 0), 1);
}

TEST(HvSteppedFCurve_keys, LetsAKeyBeforeTheFirstSetTheLeftValue)
{
    OpenInteger curve(0, {{5, 5}});
    curve.CreateKey(7, 7);
    EXPECT_EQ(curve.LeftValue(), 0);
    curve.CreateKey(6, 6);
    EXPECT_EQ(curve.LeftValue(), 0);
    curve.CreateKey(1, 1);
    EXPECT_EQ(curve.LeftValue(), 1);
    EXPECT_EQ(curve.WhenNoKeys(), 0);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 1}, {5, 5}, {6, 6}, {7, 7}}));
}

TEST(HvSteppedFCurve_keys, SetsTheValueOfTheKeyThatIsThere)
{
    OpenInteger curve(0, {{5, 5}, {6, 6}});
    EXPECT_EQ(curve.CreateKey(6, 9), 1);
    EXPECT_EQ(curve.LeftValue(), 0);
    EXPECT_EQ(curve.CreateKey(5, 8), 1);
    EXPECT_EQ(curve.LeftValue(), 8);
    EXPECT_EQ(KeysOf(curve), (Keys{{5, 8}, {6, 9}}));
    Lock(curve, 6, Kind::ValueLocked);
    EXPECT_EQ(curve.CreateKey(6, 9), 0);  // also for the value that it has
}

TEST(HvSteppedFCurve_keys, KeepsTheLeftValueAgainstTheLockOfTheFirstKey)
{
    OpenBoolean curve(0, {{1, 1}});
    curve.SetLeftValue(1);
    Lock(curve, 1, Kind::ValueLocked);
    EXPECT_EQ(curve.SetKeyValue(1, Kind::Left, 0, 0), 0);
    curve.Impl().ApplyLeftValue(false);
    EXPECT_EQ(curve.LeftValue(), 1);
    curve.SetLeftValue(0);
    curve.Impl().ApplyLeftValue(true);  // the key's own value is allowed
    EXPECT_EQ(curve.LeftValue(), 1);
}

TEST(HvSteppedFCurve_keys, HoldsAnyRunOfKeysLikeASortedMap)
{
    EXPECT_TRUE(rc::check([] {
        OpenInteger curve(0);
        std::map<double, double> expected;
        unsigned int const n = PickInRange(1u, 60u);
        for (unsigned int i = 0; i < n; ++i) {
            double const p = PickInRange(0, 40);
            double const v = PickInRange(-5, 6);
            if (PickInRange(0, 4) == 0) {
                RC_ASSERT(curve.RemoveKey(p, 0) ==
                          (expected.empty() ? 1 : static_cast<int>(expected.erase(p))));
            } else {
                RC_ASSERT(curve.CreateKey(p, v) == 1);
                expected[p] = v;
            }
            RC_ASSERT(curve.Impl().keys.Count() == curve.Impl().constraints.Count());
        }
        RC_ASSERT(KeysOf(curve) == Keys(expected.begin(), expected.end()));
    }));
}

// Keys that leave the curve as it is.

TEST(HvSteppedFCurve_keys, InsertsTheValueThatTheCurveHasThere)
{
    OpenInteger curve(3, {{2, 20}, {5, 50}});
    curve.SetLeftValue(10);
    EXPECT_EQ(curve.CreateNonModifyingKey(3, 0), 1);
    EXPECT_EQ(curve.CreateNonModifyingKey(9, 0), 1);
    EXPECT_EQ(curve.CreateNonModifyingKey(1, 0), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 10}, {2, 20}, {3, 20}, {5, 50}, {9, 50}}));
    EXPECT_EQ(curve.LeftValue(), 10);
    OpenInteger empty(3);
    EXPECT_EQ(empty.CreateNonModifyingKey(1, 0), 1);
    EXPECT_EQ(KeysOf(empty), (Keys{{1, 3}}));
}

TEST(HvSteppedFCurve_keys, FoldsANonModifyingKeyUnlessToldNot)
{
    for (auto const method : {Kind::CycleExtrapolation, Kind::RelativeCycleExtrapolation}) {
        OpenInteger curve(0, {{0, 1}, {10, 2}});
        curve.SetExtrapolationMethod(method);
        EXPECT_EQ(curve.CreateNonModifyingKey(25, 0), 1);
        EXPECT_EQ(KeysOf(curve), (Keys{{0, 1}, {5, 1}, {10, 2}}));
        EXPECT_EQ(curve.CreateNonModifyingKey(25, 1), 1);
        EXPECT_EQ(KeysOf(curve), (Keys{{0, 1}, {5, 1}, {10, 2}, {25, 2}}));
    }
    OpenInteger constant(0, {{0, 1}, {10, 2}});
    EXPECT_EQ(constant.CreateNonModifyingKey(25, 0), 1);
    EXPECT_EQ(KeysOf(constant), (Keys{{0, 1}, {10, 2}, {25, 2}}));
}

TEST(HvSteppedFCurve_keys, OverwritesTheLeftValueByANonModifyingKeyOnTheFirst)
{
    OpenInteger curve(0, {{2, 20}});
    curve.SetLeftValue(10);
    EXPECT_EQ(curve.CreateNonModifyingKey(2, 0), 1);
    EXPECT_EQ(curve.LeftValue(), 20);
    Lock(curve, 2, Kind::ValueLocked);
    EXPECT_EQ(curve.CreateNonModifyingKey(2, 0), 0);
}

TEST(HvSteppedFCurve_keys, LeavesAnExistingKeyAloneInsideTheImplementation)
{
    OpenInteger curve(6, {{2, 20}, {4, 40}});
    curve.SetLeftValue(10);
    std::string const image = curve.Image();
    unsigned int i = 99;
    curve.Impl().CreateNonModifyingKey(2, i, curve);
    EXPECT_EQ(i, 0u);
    curve.Impl().CreateNonModifyingKey(4, i, curve);
    EXPECT_EQ(i, 1u);
    EXPECT_EQ(curve.Image(), image);
    OpenInteger empty(6);
    empty.Impl().CreateNonModifyingKey(2, i, empty);
    EXPECT_EQ(i, 0u);
    EXPECT_EQ(empty.LeftValue(), 6);  // or the curve would change before the key
}

// Merging.

TEST(HvSteppedFCurve_keys, ReplacesTheKeysOfAnIntervalByOne)
{
    struct Row {
        double from, to, p;
        int openFrom, openTo;
        Keys keys;
    };
    // On keys at 1, 2, 3, 4 with values 10 times that; the new value is 9.
    std::vector<Row> const rows = {
        {2, 3, 2.5, 0, 0, {{1, 10}, {2.5, 9}, {4, 40}}},
        {2, 3, 2.5, 1, 1, {{1, 10}, {2, 20}, {2.5, 9}, {3, 30}, {4, 40}}},
        {2, 3, 2.5, 1, 0, {{1, 10}, {2, 20}, {2.5, 9}, {4, 40}}},
        {2, 3, 2.5, 0, 1, {{1, 10}, {2.5, 9}, {3, 30}, {4, 40}}},
        {1, 2, 1, 0, 0, {{1, 9}, {3, 30}, {4, 40}}},
        {0, 2.5, 1.5, 0, 0, {{1.5, 9}, {3, 30}, {4, 40}}},
        {2.5, 9, 5, 0, 0, {{1, 10}, {2, 20}, {5, 9}}},
        {0, 9, 7, 0, 0, {{7, 9}}},
        {-kInfinity, kInfinity, 2, 0, 0, {{2, 9}}},
        {2, 2, 2, 0, 0, {{1, 10}, {2, 9}, {3, 30}, {4, 40}}},
        {1, 1, 1, 0, 0, {{1, 9}, {2, 20}, {3, 30}, {4, 40}}},
        {4, 4, 4, 0, 0, {{1, 10}, {2, 20}, {3, 30}, {4, 9}}},
        {2.2, 2.8, 2.5, 0, 0, {{1, 10}, {2, 20}, {2.5, 9}, {3, 30}, {4, 40}}},
    };
    for (Row const& row : rows) {
        OpenInteger curve(0, {{1, 10}, {2, 20}, {3, 30}, {4, 40}});
        EXPECT_EQ(curve.MergeAndCreateKey(row.from, row.to, row.p, 9, row.openFrom, row.openTo, 0),
                  1);
        EXPECT_EQ(KeysOf(curve), row.keys) << row.from << " to " << row.to << " at " << row.p;
    }
}

TEST(HvSteppedFCurve_keys, RefusesToMergeOntoOrBeyondAKeyThatStays)
{
    struct Row {
        double from, to, p;
        int openFrom, openTo;
    };
    for (Row const& row :
         {Row{2, 2, 2, 1, 0}, Row{2, 2, 2, 0, 1}, Row{2, 3, 5, 0, 0}, Row{2, 3, 0, 0, 0},
          Row{2, 3, 4, 0, 0}, Row{2, 3, 1, 0, 0}, Row{2, 3, 2, 1, 0}, Row{3, 1, 2, 0, 0},
          Row{2, 3, kNaN, 0, 0}, Row{2, 9, kInfinity, 0, 0}, Row{kNaN, 3, 2.5, 0, 0},
          Row{2, kNaN, 2.5, 0, 0}}) {
        OpenInteger curve(0, {{1, 10}, {2, 20}, {3, 30}, {4, 40}});
        std::string const image = curve.Image();
        EXPECT_EQ(curve.MergeAndCreateKey(row.from, row.to, row.p, 9, row.openFrom, row.openTo, 0),
                  0)
            << row.from << " to " << row.to << " at " << row.p;
        EXPECT_EQ(curve.Image(), image);
    }
}

TEST(HvSteppedFCurve_keys, MergesIntoAnEmptyCurveAsItCreates)
{
    OpenInteger curve(3);
    EXPECT_EQ(curve.MergeAndCreateKey(1, 2, 7, 9.7, 0, 0, 1), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{7, 9}}));
    EXPECT_EQ(curve.WhenNoKeys(), 9);
}

TEST(HvSteppedFCurve_keys, TakesTheNewValueWhenNoKeysOnlyWhenAllKeysWent)
{
    OpenInteger curve(3, {{1, 10}, {2, 20}});
    curve.MergeAndCreateKey(1.5, 9, 3, 7, 0, 0, 0);
    EXPECT_EQ(curve.WhenNoKeys(), 3);
    curve.MergeAndCreateKey(0, 9, 3, 8, 0, 0, 0);
    EXPECT_EQ(curve.WhenNoKeys(), 8);
    EXPECT_EQ(curve.LeftValue(), 8);
}

TEST(HvSteppedFCurve_keys, KeepsTheDataOfTheNearestKeyWhenItMerges)
{
    OpenInteger curve(0, {{1, 10}, {2, 20}, {3, 30}, {4, 40}});
    Tag(curve, 2, 22);
    Tag(curve, 3, 33);
    curve.SetKeySelected(2.0, 1);
    curve.MergeAndCreateKey(2, 3, 2.4, 9, 0, 0, 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 10}, {2.4, 9}, {4, 40}}));
    EXPECT_EQ(TagAt(curve, 2.4), 22);
    EXPECT_EQ(TagAt(curve, 2), -1);
    EXPECT_EQ(TagAt(curve, 3), -1);
    EXPECT_EQ(curve.Impl().ConstraintWord(1), CFCKeyConstraint::kSelected);
}

TEST(HvSteppedFCurve_keys, LooksForTheNearestKeyAmongThoseThatStayToo)
{
    OpenInteger curve(0, {{1, 10}, {2, 20}, {3, 30}});
    Lock(curve, 1, Kind::AllLocked);
    Tag(curve, 1, 11);
    // Key 2 goes, key 1 stays and is nearer to the new one.
    EXPECT_EQ(curve.MergeAndCreateKey(1.5, 2.5, 1.2, 9, 0, 0, 1), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 10}, {1.2, 9}, {3, 30}}));
    EXPECT_EQ(IsLocked(curve, 1.2, Kind::AllLocked), 1);
    EXPECT_EQ(TagAt(curve, 1.2), 11);
    EXPECT_EQ(TagAt(curve, 1), 11);
}

TEST(HvSteppedFCurve_keys, GivesAMergedKeyNoDataUnlessAskedTo)
{
    OpenInteger curve(0, {{1, 10}, {2, 20}, {3, 30}});
    Tag(curve, 2, 22);
    curve.SetKeySelected(2.0, 1);
    curve.MergeAndCreateKey(1.5, 2.5, 2.2, 9, 0, 0, 0);
    EXPECT_EQ(TagAt(curve, 2.2), -1);
    EXPECT_EQ(curve.Impl().ConstraintWord(1), 0);
}

TEST(HvSteppedFCurve_keys, MergesWithoutChangingTheValueThere)
{
    OpenInteger curve(0, {{1, 10}, {2, 20}, {3, 30}});
    EXPECT_EQ(curve.MergeAndCreateNonModifyingKey(1.5, 3.5, 2.5, 0, 0, 0, 0), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 10}, {2.5, 20}}));
}

TEST(HvSteppedFCurve_keys, MovesTheMergedIntervalIntoTheKeyRange)
{
    OpenInteger curve(0, {{0, 1}, {4, 4}, {6, 6}, {10, 2}});
    curve.SetExtrapolationMethod(Kind::CycleExtrapolation);
    // 25 folds to 5, and 23 to 27 becomes 3 to 7.
    EXPECT_EQ(curve.MergeAndCreateNonModifyingKey(23, 27, 25, 0, 0, 0, 0), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{0, 1}, {5, 4}, {10, 2}}));
    OpenInteger kept(0, {{0, 1}, {4, 4}, {6, 6}, {10, 2}});
    kept.SetExtrapolationMethod(Kind::CycleExtrapolation);
    EXPECT_EQ(kept.MergeAndCreateNonModifyingKey(23, 27, 25, 0, 0, 0, 1), 1);
    EXPECT_EQ(KeysOf(kept), (Keys{{0, 1}, {4, 4}, {6, 6}, {10, 2}, {25, 2}}));
}

// Removing.

TEST(HvSteppedFCurve_keys, KeepsWhatWasBeforeTheKeyThatBecomesTheFirst)
{
    OpenInteger curve(3, {{1, 10}, {2, 20}, {3, 30}});
    EXPECT_EQ(curve.RemoveKey(1, 0), 1);
    EXPECT_EQ(curve.LeftValue(), 10);
    EXPECT_EQ(curve.Eval(1.5, 0), 10);
    EXPECT_EQ(curve.RemoveKey(3, 0), 1);
    EXPECT_EQ(curve.LeftValue(), 10);
    EXPECT_EQ(KeysOf(curve), (Keys{{2, 20}}));
    EXPECT_EQ(curve.RemoveKey(2, 0), 1);
    EXPECT_EQ(curve.LeftValue(), 3);
    EXPECT_EQ(curve.GetNumKeys(), 0u);
    EXPECT_EQ(curve.RemoveKey(2, 0), 1);  // nothing left to remove
}

TEST(HvSteppedFCurve_keys, RemovesTheNearestKeyWithinTheTolerance)
{
    OpenInteger curve(0, {{1, 10}, {2, 20}, {3, 30}});
    EXPECT_EQ(curve.RemoveKey(2.5, 0.4), 0);
    EXPECT_EQ(curve.RemoveKey(2.5, 0.5), 1);  // the earliest of two at the same distance
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 10}, {3, 30}}));
}

TEST(HvSteppedFCurve_keys, RemovesALockedKeyThatIsOnlyNear)
{
    OpenInteger curve(0, {{1, 10}, {2, 20}});
    Lock(curve, 2, Kind::AllLocked);
    EXPECT_EQ(curve.RemoveKey(2, 0.5), 0);
    EXPECT_EQ(curve.RemoveKey(2.1, 0.5), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 10}}));
}

TEST(HvSteppedFCurve_keys, RemovesTheKeysOfAnInterval)
{
    struct Row {
        double from, to;
        int openFrom, openTo;
        Keys keys;
        double left;
    };
    std::vector<Row> const rows = {
        {2, 3, 0, 0, {{1, 10}, {4, 40}}, 0},
        {2, 3, 1, 0, {{1, 10}, {2, 20}, {4, 40}}, 0},
        {2, 3, 0, 1, {{1, 10}, {3, 30}, {4, 40}}, 0},
        {2, 3, 1, 1, {{1, 10}, {2, 20}, {3, 30}, {4, 40}}, 0},
        {1, 2, 0, 0, {{3, 30}, {4, 40}}, 20},
        {1, 2, 1, 0, {{1, 10}, {3, 30}, {4, 40}}, 0},
        {-9, 2.5, 0, 0, {{3, 30}, {4, 40}}, 20},
        {3, 99, 0, 0, {{1, 10}, {2, 20}}, 0},
        {3, 99, 1, 0, {{1, 10}, {2, 20}, {3, 30}}, 0},
        {1, 4, 0, 0, {}, 7},
        {1, 4, 1, 1, {{1, 10}, {4, 40}}, 0},
        {2, 2, 0, 0, {{1, 10}, {3, 30}, {4, 40}}, 0},
        {2, 2, 1, 0, {{1, 10}, {3, 30}, {4, 40}}, 0},
        {2, 2, 0, 1, {{1, 10}, {3, 30}, {4, 40}}, 0},
        {2, 2, 1, 1, {{1, 10}, {2, 20}, {3, 30}, {4, 40}}, 0},
        {3, 2, 0, 0, {{1, 10}, {2, 20}, {3, 30}, {4, 40}}, 0},
        {kNaN, 2, 0, 0, {{1, 10}, {2, 20}, {3, 30}, {4, 40}}, 0},
        {2, kNaN, 0, 0, {{1, 10}, {2, 20}, {3, 30}, {4, 40}}, 0},
        {-kInfinity, kInfinity, 1, 1, {}, 7},
    };
    for (Row const& row : rows) {
        OpenInteger curve(7, {{1, 10}, {2, 20}, {3, 30}, {4, 40}});
        EXPECT_EQ(curve.RemoveKeys(row.from, row.to, row.openFrom, row.openTo), 1);
        EXPECT_EQ(KeysOf(curve), row.keys) << row.from << " to " << row.to;
        EXPECT_EQ(curve.LeftValue(), row.left) << row.from << " to " << row.to;
    }
    OpenInteger empty(7);
    EXPECT_EQ(empty.RemoveKeys(0, 9, 0, 0), 1);
}

TEST(HvSteppedFCurve_keys, DropsTheDataOfKeysThatGo)
{
    OpenInteger curve(7, {{1, 10}, {2, 20}, {3, 30}, {4, 40}});
    for (int i = 1; i <= 4; ++i) {
        Tag(curve, i, static_cast<unsigned char>(i));
    }
    curve.RemoveKey(3, 0);
    EXPECT_EQ(TagAt(curve, 3), -1);
    EXPECT_EQ(TagAt(curve, 4), 4);
    curve.RemoveKeys(0, 1.5, 0, 0);
    EXPECT_EQ(TagAt(curve, 1), -1);
    EXPECT_EQ(TagAt(curve, 2), 2);
    curve.RemoveKeys(0, 9, 0, 0);
    EXPECT_EQ(curve.HasUserData(), 0);
}

// Setting values.

TEST(HvSteppedFCurve_keys, ReadsAndSetsBothSidesOfAKey)
{
    OpenInteger curve(0, {{1, 10}, {2, 20}, {3, 30}});
    curve.SetLeftValue(5);
    double value = 0;
    EXPECT_EQ(curve.GetKeyValue(1, Kind::Left, value, 0), 1);
    EXPECT_EQ(value, 5);
    EXPECT_EQ(curve.GetKeyValue(2.1, Kind::Left, value, 0.2), 1);
    EXPECT_EQ(value, 10);
    EXPECT_EQ(curve.GetKeyValue(2, Kind::Right, value, 0), 1);
    EXPECT_EQ(value, 20);
    EXPECT_EQ(curve.GetKeyValue(2, static_cast<Kind::KeySide>(9), value, 0), 1);
    EXPECT_EQ(value, 20);
    EXPECT_EQ(curve.GetKeyValue(2.5, Kind::Right, value, 0.1), 0);

    EXPECT_EQ(curve.SetKeyValue(2, Kind::Left, 11.9, 0), 1);
    EXPECT_EQ(curve.SetKeyValue(2.9, Kind::Right, -31.9, 0.2), 1);
    EXPECT_EQ(curve.SetKeyValue(1, Kind::Left, 6, 0), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 11}, {2, 20}, {3, -31}}));
    EXPECT_EQ(curve.LeftValue(), 6);
    EXPECT_EQ(curve.SetKeyValue(1, Kind::Right, 12, 0), 1);
    EXPECT_EQ(curve.LeftValue(), 6);  // the right side of the first key leaves it alone
}

TEST(HvSteppedFCurve_keys, RefusesToSetALockedSide)
{
    OpenInteger curve(0, {{1, 10}, {2, 20}, {3, 30}});
    Lock(curve, 2, Kind::ValueLocked);
    EXPECT_EQ(curve.SetKeyValue(2, Kind::Right, 20, 0), 0);  // asked for at the parameter itself
    EXPECT_EQ(curve.SetKeyValue(2.1, Kind::Right, 21, 0.2), 0);
    EXPECT_EQ(curve.SetKeyValue(2.1, Kind::Right, 20, 0.2), 1);
    EXPECT_EQ(curve.SetKeyValue(3, Kind::Left, 21, 0), 0);
    EXPECT_EQ(curve.SetKeyValue(3, Kind::Left, 20, 0), 1);
    EXPECT_EQ(curve.SetKeyValue(3, static_cast<Kind::KeySide>(0), 7, 0), 0);
    EXPECT_EQ(curve.SetKeyValue(3, static_cast<Kind::KeySide>(3), 7, 0), 0);
    EXPECT_EQ(curve.SetKeyValue(9, Kind::Right, 7, 0.1), 0);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 10}, {2, 20}, {3, 30}}));
}

// What the records tell.

TEST(HvSteppedFCurve_keys, FillsTheCurveInfoThatItHas)
{
    OpenBoolean curve(1, {{1, 1}, {2, 0}});
    curve.SetExtrapolationMethod(Kind::CycleExtrapolation);
    HvBaseFCurve::FCurveInfo info{};
    info.mask = 0x7F;
    info.lowerClamp = 5;
    EXPECT_EQ(curve.GetFCurveInfo(&info), 0);
    EXPECT_EQ(info.mask, 0x47u);
    EXPECT_EQ(info.kind, Kind::Boolean);
    EXPECT_EQ(info.numKeys, 2u);
    EXPECT_EQ(info.valueWhenNoKeys, 1);
    EXPECT_EQ(info.extrapolation, Kind::CycleExtrapolation);
    EXPECT_EQ(info.defaultSegmentKind, Kind::ConstantSegment);
    EXPECT_EQ(info.lowerClamp, 0);
    EXPECT_EQ(info.upperClamp, 0);
    for (unsigned int const bit : {0x08u, 0x10u, 0x20u}) {
        info.mask = bit | 0x01 | 0x80;
        EXPECT_EQ(curve.GetFCurveInfo(&info), 0);
        EXPECT_EQ(info.mask, 0x81u);
    }
    HvBaseFCurve::FCurveInfo part{};
    part.mask = 0x82;
    part.valueWhenNoKeys = -9;
    EXPECT_EQ(curve.GetFCurveInfo(&part), 1);
    EXPECT_EQ(part.mask, 0x82u);
    EXPECT_EQ(part.numKeys, 2u);
    EXPECT_EQ(part.valueWhenNoKeys, -9);
    EXPECT_EQ(curve.GetFCurveInfo(nullptr), 0);
}

TEST(HvSteppedFCurve_keys, FillsTheKeyInfoThatItHas)
{
    OpenInteger curve(0, {{1, 10}, {2, 20}});
    curve.SetSelected(1);
    curve.SetKeySelected(1u, 1);
    HvBaseFCurve::KeyInfo info{};
    info.mask = 0x3FF | 0x400;
    info.leftTangentX = 9;
    EXPECT_EQ(curve.GetKeyInfoFromIndex(1, &info), 0);
    EXPECT_EQ(info.mask, 0x60Fu);
    EXPECT_EQ(info.index, 1u);
    EXPECT_EQ(info.parameter, 2);
    EXPECT_EQ(info.leftValue, 20);  // the key's own, unlike GetKeyValues
    EXPECT_EQ(info.rightValue, 20);
    EXPECT_EQ(info.selected, 1);
    EXPECT_EQ(info.leftTangentX, 0);
    EXPECT_EQ(info.segmentKind, Kind::ConstantSegment);
    info.mask = 0x20F;
    EXPECT_EQ(curve.GetKeyInfoFromIndex(0, &info), 1);
    EXPECT_EQ(info.selected, 0);
    EXPECT_EQ(info.leftValue, 10);
    EXPECT_EQ(curve.GetKeyInfoFromIndex(2, &info), 0);
    EXPECT_EQ(info.mask, 0u);
    EXPECT_EQ(info.leftValue, 10);
    EXPECT_EQ(curve.GetKeyInfoFromIndex(0, nullptr), 0);
}

TEST(HvSteppedFCurve_keys, FindsTheKeyInfoAtAnExactParameter)
{
    OpenInteger curve(0, {{0, 10}, {2, 20}});
    HvBaseFCurve::KeyInfo info{};
    info.mask = 0x003;
    EXPECT_EQ(curve.GetKeyInfoFromParameter(-0.0, &info), 1);
    EXPECT_EQ(info.index, 0u);
    EXPECT_TRUE(std::signbit(info.parameter));  // as the caller gave it
    EXPECT_EQ(curve.GetKeyInfoFromParameter(1e-300, &info), 0);
    EXPECT_EQ(info.mask, 0u);
    EXPECT_EQ(curve.GetKeyInfoFromParameter(0, nullptr), 0);
}

TEST(HvSteppedFCurve_keys, ListsItsKeys)
{
    OpenInteger curve(0, {{1, 10}, {2, 20}});
    curve.SetLeftValue(5);
    HvDoubleArray parameters;
    HvDoubleArray left;
    HvDoubleArray right;
    parameters.Add(-1);
    EXPECT_EQ(curve.GetKeys(parameters, left, right, 1), 2u);
    ASSERT_EQ(parameters.Size(), 3u);
    EXPECT_EQ(parameters[2], 2);
    ASSERT_EQ(left.Size(), 2u);
    EXPECT_EQ(left[0], 5);
    EXPECT_EQ(left[1], 10);
    EXPECT_EQ(right[1], 20);
}

// Constraints.

TEST(HvSteppedFCurve_keys, MapsItsConstraintsToTheirBits)
{
    OpenBoolean curve(0, {{1, 1}, {2, 1}});
    struct Row {
        Kind::KeyConstraint constraint;
        unsigned short word;
    };
    for (Row const& row : {Row{Kind::ParameterLocked, 0x0004}, Row{Kind::ValueLocked, 0x0002},
                           Row{Kind::AllLocked, 0x0006}}) {
        double p = 1.9;
        EXPECT_EQ(curve.SetConstraint(p, row.constraint, 1, 0.5), 1);
        EXPECT_EQ(p, 2);
        EXPECT_EQ(curve.Impl().ConstraintWord(1), row.word);
        int on = -1;
        p = 2.1;
        EXPECT_EQ(curve.GetConstraint(p, row.constraint, on, 0.5), 1);
        EXPECT_EQ(p, 2);
        EXPECT_EQ(on, 1);
        EXPECT_EQ(curve.GetConstraintByIndex(1, row.constraint, on), 1);
        EXPECT_EQ(on, 1);
        EXPECT_EQ(curve.GetConstraintByIndex(0, row.constraint, on), 1);
        EXPECT_EQ(on, 0);
        EXPECT_EQ(curve.GetConstraintByIndex(1, Kind::AllLocked, on), 1);
        EXPECT_EQ(on, row.constraint == Kind::AllLocked ? 1 : 0);
        EXPECT_EQ(curve.SetConstraint(p, row.constraint, 0, 0), 1);
        EXPECT_EQ(curve.Impl().ConstraintWord(1), 0);
    }
}

TEST(HvSteppedFCurve_keys, RefusesConstraintsOfOtherKinds)
{
    OpenBoolean on(0, {{1, 1}});
    OpenInteger number(0, {{1, 1}});
    for (HvBaseFCurve* const curve :
         {static_cast<HvBaseFCurve*>(&on), static_cast<HvBaseFCurve*>(&number)}) {
        for (int c = 0; c <= 8192; c = c == 0 ? 1 : 2 * c) {
            auto const constraint = static_cast<Kind::KeyConstraint>(c);
            int const supported = c == 1 || c == 2 || c == 32 ? 1 : 0;
            double p = 1;
            int isOn = 7;
            EXPECT_EQ(curve->IsConstraintSupported(constraint), supported);
            EXPECT_EQ(curve->SetConstraint(p, constraint, 0, 0), supported);
            EXPECT_EQ(curve->GetConstraint(p, constraint, isOn, 0), supported);
            EXPECT_EQ(curve->GetConstraintByIndex(0, constraint, isOn), supported);
            EXPECT_EQ(isOn, supported ? 0 : 7);
        }
        int isOn = 7;
        double p = 9;
        EXPECT_EQ(curve->GetConstraintByIndex(1, Kind::ValueLocked, isOn), 0);
        EXPECT_EQ(curve->SetConstraint(p, Kind::ValueLocked, 1, 0.5), 0);
        EXPECT_EQ(curve->GetConstraint(p, Kind::ValueLocked, isOn, 0.5), 0);
        EXPECT_EQ(isOn, 7);
        EXPECT_EQ(p, 9);
    }
}

TEST(HvSteppedFCurve_keys, TakesTheExtrapolationsOfSteppedCurves)
{
    OpenBoolean curve(0);
    for (int m = -1; m <= 6; ++m) {
        int const accepted = m == 1 || m == 3 || m == 4 ? 1 : 0;
        auto const before = curve.GetExtrapolationMethod();
        EXPECT_EQ(curve.SetExtrapolationMethod(static_cast<Kind::ExtrapolationMethod>(m)),
                  accepted);
        EXPECT_EQ(curve.GetExtrapolationMethod(), accepted ? m : before);
    }
}

TEST(HvSteppedFCurve_keys, StoresTheDefaultTangentFlag)
{
    OpenBoolean curve(0);
    EXPECT_EQ(curve.IsDefautlBezierTangentConstraintOn(), 0);
    EXPECT_EQ(curve.SetDefaultBezierTangentConstraint(true), 1);
    EXPECT_EQ(curve.IsDefautlBezierTangentConstraintOn(), 1);
}

}  // namespace
