// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The slots that all key-based kinds share, on stepped curves.

#include <tests/fcurve/stepped_test_support.h>

#include <gtest/gtest.h>

#include <memory>

namespace {

std::vector<double> ToVector(HvDoubleArray const& array)
{
    return std::vector<double>(array.begin(), array.end());
}

TEST(HvFCurveShell, AnswersForACurveWithoutKeys)
{
    OpenInteger const curve(3);
    double value = 77;
    unsigned int index = 77;
    HvDoubleArray array;
    EXPECT_EQ(curve.GetNumKeys(), 0u);
    EXPECT_EQ(curve.GetKeyParameter(0, value), 0);
    EXPECT_EQ(curve.GetKeyIndex(0, index), 0);
    EXPECT_EQ(curve.GetKeyParameters(-9, 9, array, 0, 0, 0), 0u);
    EXPECT_EQ(curve.GetAllKeyParameters(array), 0u);
    EXPECT_EQ(curve.IsKeyParameter(0, 99), 0);
    EXPECT_EQ(curve.GetNextKeyParameter(0, value, 1), 0);
    EXPECT_EQ(curve.GetPrevKeyParameter(0, value, 1), 0);
    EXPECT_EQ(curve.GetNearestKeyParameter(0, value), 0);
    EXPECT_EQ(curve.GetNearestKeyParameterInCenteredInterval(value, 99), 0);
    EXPECT_EQ(curve.GetSmallestKeyParameter(value), 0);
    EXPECT_EQ(curve.GetLargestKeyParameter(value), 0);
    EXPECT_EQ(curve.IsSmallestKeyParameter(0), 0);
    EXPECT_EQ(curve.IsLargestKeyParameter(0), 0);
    EXPECT_EQ(curve.IsKeySelected(0u), 0);
    EXPECT_EQ(curve.IsKeySelected(0.0), 0);
    EXPECT_EQ(value, 77);
    EXPECT_EQ(index, 77u);
    EXPECT_EQ(array.Size(), 0u);
    EXPECT_EQ(curve.GetMinusInfinityVal(), 3);
    EXPECT_EQ(curve.GetPlusInfinityVal(), 3);
    EXPECT_EQ(curve.AreAnyKeysLockedInInterval(-9, 9, 0, 0), 0);
}

TEST(HvFCurveShell, FindsKeysByIndexAndParameter)
{
    OpenInteger const curve(0, {{1, 10}, {2, 20}, {4, 40}});
    double value = 0;
    unsigned int index = 0;
    EXPECT_EQ(curve.GetKeyParameter(2, value), 1);
    EXPECT_EQ(value, 4);
    EXPECT_EQ(curve.GetKeyParameter(3, value), 0);
    EXPECT_EQ(curve.GetKeyParameter(0xFFFFFFFFu, value), 0);
    EXPECT_EQ(curve.GetKeyIndex(2, index), 1);
    EXPECT_EQ(index, 1u);
    EXPECT_EQ(curve.GetKeyIndex(2.0000001, index), 0);
    double left = 0;
    double right = 0;
    EXPECT_EQ(curve.GetKeyValues(3.9, left, right, 0.5), 1);
    EXPECT_EQ(left, 20);
    EXPECT_EQ(right, 40);
    EXPECT_EQ(curve.GetKeyValuesByIndex(0, left, right), 1);
    EXPECT_EQ(left, 0);
    EXPECT_EQ(right, 10);
    EXPECT_EQ(curve.GetKeyValuesByIndex(3, left, right), 0);
    EXPECT_EQ(curve.GetKeyValues(3, left, right, 0.5), 0);
    EXPECT_EQ(right, 10);
}

TEST(HvFCurveShell, WalksToTheNextAndPreviousKey)
{
    OpenInteger const curve(0, {{1, 0}, {2, 0}, {4, 0}});
    struct Row {
        double p;
        int inclusive;
        double next;  // -1 for none
        double previous;
    };
    for (Row const& row :
         {Row{0, 0, 1, -1}, Row{1, 0, 2, -1}, Row{1, 1, 1, 1}, Row{1.5, 1, 2, 1}, Row{2, 0, 4, 1},
          Row{4, 0, -1, 2}, Row{4, 1, 4, 4}, Row{5, 1, -1, 4}, Row{kInfinity, 0, -1, 4},
          Row{-kInfinity, 0, 1, -1}, Row{kNaN, 1, -1, -1}}) {
        double next = -1;
        double previous = -1;
        EXPECT_EQ(curve.GetNextKeyParameter(row.p, next, row.inclusive), row.next == -1 ? 0 : 1);
        EXPECT_EQ(curve.GetPrevKeyParameter(row.p, previous, row.inclusive),
                  row.previous == -1 ? 0 : 1);
        EXPECT_EQ(next, row.next) << row.p;
        EXPECT_EQ(previous, row.previous) << row.p;
    }
}

TEST(HvFCurveShell, GivesTheRightKeyHalfWayBetweenTwo)
{
    OpenInteger const curve(0, {{0, 0}, {10, 0}});
    double nearest = -1;
    EXPECT_EQ(curve.GetNearestKeyParameter(5, nearest), 1);
    EXPECT_EQ(nearest, 10);
    curve.GetNearestKeyParameter(4.9, nearest);
    EXPECT_EQ(nearest, 0);
    curve.GetNearestKeyParameter(-kInfinity, nearest);
    EXPECT_EQ(nearest, 0);
    curve.GetNearestKeyParameter(kInfinity, nearest);
    EXPECT_EQ(nearest, 10);
    // Within a tolerance the earliest wins.
    double p = 5;
    EXPECT_EQ(curve.GetNearestKeyParameterInCenteredInterval(p, 5), 1);
    EXPECT_EQ(p, 0);
    p = 5;
    EXPECT_EQ(curve.GetNearestKeyParameterInCenteredInterval(p, 4.9), 0);
    EXPECT_EQ(p, 5);
    EXPECT_EQ(curve.IsKeyParameter(5, 5), 1);
    EXPECT_EQ(curve.IsKeyParameter(5, -1), 0);
    EXPECT_EQ(curve.IsKeyParameter(10, 0), 1);
}

TEST(HvFCurveShell, ListsTheParametersOfAnInterval)
{
    OpenInteger curve(0, {{1, 0}, {2, 0}, {3, 0}, {4, 0}});
    auto const list = [&](double from, double to, int openFrom, int openTo, int selected) {
        HvDoubleArray array;
        array.Add(-7);
        unsigned int const n = curve.GetKeyParameters(from, to, array, openFrom, openTo, selected);
        EXPECT_EQ(n, array.Size() - 1);
        EXPECT_EQ(array[0], -7);
        array.Remove(0);
        return ToVector(array);
    };
    using List = std::vector<double>;
    EXPECT_EQ(list(1, 3, 0, 0, 0), (List{1, 2, 3}));
    EXPECT_EQ(list(1, 3, 1, 1, 0), (List{2}));
    EXPECT_EQ(list(1, 3, 0, 1, 0), (List{1, 2}));
    EXPECT_EQ(list(0.5, 3.5, 1, 1, 0), (List{1, 2, 3}));
    EXPECT_EQ(list(1, 2, 1, 1, 0), (List{}));
    EXPECT_EQ(list(2, 2, 1, 1, 0), (List{}));
    EXPECT_EQ(list(2, 2, 1, 0, 0), (List{2}));  // one open end of a point counts as closed
    EXPECT_EQ(list(2, 2, 0, 1, 0), (List{2}));
    EXPECT_EQ(list(3, 1, 0, 0, 0), (List{}));
    EXPECT_EQ(list(-kInfinity, kInfinity, 0, 0, 0), (List{1, 2, 3, 4}));
    EXPECT_EQ(list(kNaN, 3, 0, 0, 0), (List{}));
    curve.SetKeySelected(3.0, 1);
    EXPECT_EQ(list(1, 4, 0, 0, 1), (List{}));
    curve.SetSelected(1);
    EXPECT_EQ(list(1, 4, 0, 0, 1), (List{3}));
    HvDoubleArray all;
    EXPECT_EQ(curve.GetAllKeyParameters(all), 4u);
    EXPECT_EQ(ToVector(all), (List{1, 2, 3, 4}));
}

TEST(HvFCurveShell, ComparesItsEndsExactly)
{
    OpenInteger const curve(0, {{1, 5}, {2, 6}});
    EXPECT_EQ(curve.IsSmallestKeyParameter(1), 1);
    EXPECT_EQ(curve.IsSmallestKeyParameter(1 + 1e-15), 0);
    EXPECT_EQ(curve.IsLargestKeyParameter(2), 1);
    EXPECT_EQ(curve.IsLargestKeyParameter(1), 0);
    EXPECT_EQ(curve.GetMinusInfinityVal(), 0);
    EXPECT_EQ(curve.GetPlusInfinityVal(), 6);
}

TEST(HvFCurveShell, ShowsTheSelectionOfKeysBehindTheCurvesOwn)
{
    OpenBoolean curve(0, {{1, 1}, {2, 0}});
    EXPECT_EQ(curve.SetKeySelected(1u, 5), 1);
    EXPECT_EQ(curve.SetKeySelected(2u, 1), 0);
    EXPECT_EQ(curve.SetKeySelected(9.0, 1), 0);
    EXPECT_EQ(curve.IsKeySelected(1u), 0);
    EXPECT_EQ(curve.SetSelected(1), 1);
    EXPECT_EQ(curve.IsSelected(), 1);
    EXPECT_EQ(curve.IsKeySelected(1u), 1);
    EXPECT_EQ(curve.IsKeySelected(2.0), 1);
    EXPECT_EQ(curve.IsKeySelected(0u), 0);
    EXPECT_EQ(curve.IsKeySelected(7u), 0);
    EXPECT_EQ(curve.Impl().keys[1].flag, 0);
    EXPECT_EQ(curve.Impl().constraints[1].word, CFCKeyConstraint::kSelected);
    EXPECT_EQ(curve.SetKeySelected(2.0, 0), 1);
    EXPECT_EQ(curve.IsKeySelected(1u), 0);
}

TEST(HvFCurveShell, SelectsOnAReadOnlyCurve)
{
    OpenBoolean curve(0, {{1, 1}});
    EXPECT_EQ(curve.SetReadOnlyConstraint(1), 1);
    EXPECT_EQ(curve.IsReadOnly(), 1);
    EXPECT_EQ(curve.CreateKey(2, 1), 0);
    EXPECT_EQ(curve.SetSelected(1), 1);
    EXPECT_EQ(curve.SetKeySelected(0u, 1), 1);
    EXPECT_EQ(curve.IsKeySelected(1.0), 1);
    EXPECT_EQ(curve.SetReadOnlyConstraint(0), 1);
    EXPECT_EQ(curve.CreateKey(2, 1), 1);
}

TEST(HvFCurveShell, TellsWhetherTheTimeFlagChanged)
{
    OpenBoolean curve(0);
    EXPECT_EQ(curve.IsTimeFCurve(), 1);
    EXPECT_EQ(curve.SetAsTimeFCurve(true), 0);
    EXPECT_EQ(curve.SetAsTimeFCurve(false), 1);
    EXPECT_EQ(curve.IsTimeFCurve(), 0);
    curve.SetReadOnlyConstraint(1);
    EXPECT_EQ(curve.SetAsTimeFCurve(true), 0);
    EXPECT_EQ(curve.IsTimeFCurve(), 0);
}

TEST(HvFCurveShell, AsksForLocksInAnIntervalWithItsOwnEnds)
{
    OpenBoolean curve(0, {{1, 1}, {2, 1}, {3, 1}});
    Lock(curve, 2, HvBaseFCurve::ValueLocked);
    EXPECT_EQ(curve.AreAnyValuesLockedInInterval(1, 3, 0, 0), 1);
    EXPECT_EQ(curve.AreAnyParametersLockedInInterval(1, 3, 0, 0), 0);
    EXPECT_EQ(curve.AreAnyKeysLockedInInterval(1, 3, 0, 0), 0);
    EXPECT_EQ(curve.AreAnyValuesLockedInInterval(2, 3, 1, 0), 0);
    EXPECT_EQ(curve.AreAnyValuesLockedInInterval(1, 2, 0, 1), 0);
    EXPECT_EQ(curve.AreAnyValuesLockedInInterval(2, 2, 0, 0), 1);
    EXPECT_EQ(curve.AreAnyValuesLockedInInterval(2, 2, 1, 1), 0);
    EXPECT_EQ(curve.AreAnyValuesLockedInInterval(2, 2, 1, 0), 0);  // flags are passed on here
    EXPECT_EQ(curve.AreAnyValuesLockedInInterval(3, 1, 0, 0), 0);
    EXPECT_EQ(curve.AreAnyValuesLockedInInterval(kNaN, kNaN, 0, 0), 0);
    Lock(curve, 2, HvBaseFCurve::ParameterLocked);
    EXPECT_EQ(curve.AreAnyParametersLockedInInterval(1, 3, 0, 0), 1);
    EXPECT_EQ(curve.AreAnyKeysLockedInInterval(1, 3, 0, 0), 1);
}

TEST(HvFCurveShell, CopiesEverythingButTheHintSlot)
{
    OpenInteger curve(3, {{1, 5}, {2, 6}});
    curve.SetExtrapolationMethod(HvBaseFCurve::CycleExtrapolation);
    curve.SetSelected(1);
    curve.SetKeySelected(0u, 1);
    curve.SetAsTimeFCurve(false);
    curve.SetDefaultBezierTangentConstraint(true);
    Lock(curve, 2, HvBaseFCurve::AllLocked);
    curve.SetLeftValue(9);
    Tag(curve, 2, 200);
    curve.SetReadOnlyConstraint(1);

    OpenInteger const copy(curve);
    EXPECT_EQ(copy.Image(), curve.Image());
    OpenInteger assigned(0, {{7, 7}});
    assigned = curve;
    EXPECT_EQ(assigned.Image(), curve.Image());
    std::unique_ptr<HvBaseFCurve> const clone(curve.Clone());
    EXPECT_EQ(CurveImage(*clone), CurveImage(curve));
    EXPECT_EQ(TagAt(*clone, 2), 200);
    OpenInteger set(0);
    EXPECT_EQ(set.Set(curve), 1);
    EXPECT_EQ(set.Image(), curve.Image());
    std::string const image = curve.Image();
    EXPECT_EQ(curve.Set(curve), 1);
    HvIntegerFCurve& self = curve;
    static_cast<HvIntegerFCurve&>(curve) = self;
    EXPECT_EQ(curve.Image(), image);
}

TEST(HvFCurveShell, IsSetOnlyFromItsOwnKind)
{
    OpenBoolean on(1, {{1, 1}});
    OpenInteger number(3, {{2, 2}});
    std::string const image = on.Image();
    EXPECT_EQ(on.Set(number), 0);
    EXPECT_EQ(number.Set(on), 0);
    EXPECT_EQ(on.Image(), image);
    EXPECT_EQ(on.QueryFCurveKind(HvBaseFCurve::Boolean), &on);
    EXPECT_EQ(on.QueryFCurveKind(HvBaseFCurve::Integer), nullptr);
    EXPECT_EQ(number.QueryFCurveKind(HvBaseFCurve::Integer), &number);
    EXPECT_EQ(on.GetKind(), 10);
    EXPECT_EQ(number.GetKind(), 15);
}

TEST(HvFCurveShell, CountsTheStorageOfItsKeys)
{
    OpenInteger curve(0);
    unsigned long const perKey = sizeof(CFCSingleValueKey<int>) + sizeof(CFCKeyConstraint);
    EXPECT_EQ(curve.GetDynamicMemSize(), 2 * perKey);
    curve.CreateKey(1, 1);
    curve.CreateKey(2, 1);
    curve.CreateKey(3, 1);
    EXPECT_EQ(curve.GetDynamicMemSize(), 4 * perKey);
    Tag(curve, 3, 1);
    EXPECT_GT(curve.GetDynamicMemSize(), 4 * perKey);
}

}  // namespace
