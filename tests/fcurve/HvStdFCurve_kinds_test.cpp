// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include "std_edit.h"

#include <gtest/gtest.h>

namespace {

StdCurve ThreeKeys()
{
    StdCurve curve({KeyAt(0, 0, 0, kConstant), KeyAt(3, 3, 3, kLinear), KeyAt(6, 0, 0, kConstant)});
    curve.SetFirstSegmentKind(kLinear);
    return curve;
}

std::string Kinds(StdCurve const& curve)
{
    std::string kinds = std::to_string(int(curve.GetFirstSegmentKind()));
    for (CFCStdKey const& key : curve.Impl().keys) {
        kinds += std::to_string(int(key.segmentKind));
    }
    return kinds;
}

}  // namespace

TEST(HvStdFCurve_kinds, SideOfAKeyNamesItsSpan)
{
    struct Row {
        double x;
        HvBaseFCurve::KeySide side;
        char const* kinds;
    };
    for (Row const& row :
         {Row{0, kLeft, "3121"}, Row{0, kRight, "2321"}, Row{3.1, kLeft, "2321"},
          Row{2.9, kRight, "2131"}, Row{6, kLeft, "2131"}, Row{6, kRight, "2123"}}) {
        StdCurve curve = ThreeKeys();
        EXPECT_EQ(curve.SetSegmentKind(row.x, row.side, kCubic, 0.2), 1);
        EXPECT_EQ(Kinds(curve), row.kinds) << row.x;
    }
    StdCurve empty(0, kLinear);
    EXPECT_EQ(empty.SetSegmentKind(5, kRight, kCubic, 0), 1);
    EXPECT_EQ(empty.GetFirstSegmentKind(), kCubic);
}

TEST(HvStdFCurve_kinds, ParameterNamesTheSpanThatHoldsIt)
{
    double const infinity = std::numeric_limits<double>::infinity();
    struct Row {
        double x;
        char const* kinds;
    };
    for (Row const& row :
         {Row{-1, "3121"}, Row{0, "2321"}, Row{2, "2321"}, Row{3, "2131"}, Row{6, "2123"},
          Row{9, "2123"}, Row{-infinity, "3121"}, Row{infinity, "2123"}}) {
        StdCurve curve = ThreeKeys();
        EXPECT_EQ(curve.SetSegmentKindAtParameter(row.x, kCubic), 1);
        EXPECT_EQ(Kinds(curve), row.kinds) << row.x;
    }
    StdCurve empty(0, kLinear);
    EXPECT_EQ(empty.SetSegmentKindAtParameter(5, kCubic), 1);
    EXPECT_EQ(empty.GetFirstSegmentKind(), kCubic);
}

TEST(HvStdFCurve_kinds, SegmentThatBecomesCubicGetsChordHandlesWhenItsOwnTurnBack)
{
    StdCurve curve = ThreeKeys();
    curve.Impl().keys[0].rightHandle = Point(-1, 0);
    curve.Impl().keys[0].rightValue = 1;
    EXPECT_EQ(curve.SetSegmentKind(0, kRight, kCubic, 0), 1);
    // The chord runs from (0, 1) to (3, 3).
    ExpectNear(curve.Impl().keys[0].rightHandle, 1, 1 + 2.0 / 3);
    ExpectNear(curve.Impl().keys[1].leftHandle, 2, 1 + 4.0 / 3);
    EXPECT_TRUE(curve.Impl().IsValid());
}

TEST(HvStdFCurve_kinds, ValidHandlesStayWhenTheKindChanges)
{
    StdCurve curve = ThreeKeys();
    curve.Impl().keys[0].rightHandle = Point(2, 7);
    EXPECT_EQ(curve.SetSegmentKind(0, kRight, kCubic, 0), 1);
    EXPECT_EQ(curve.Impl().keys[0].rightHandle, Point(2, 7));
    EXPECT_EQ(curve.Impl().keys[1].leftHandle, Point(3, 3));
}

TEST(HvStdFCurve_kinds, HandlesThatTurnBackStayUnlessTheSegmentBecomesCubic)
{
    StdCurve curve = ThreeKeys();
    curve.Impl().keys[0].rightHandle = Point(-1, 0);
    EXPECT_EQ(curve.SetSegmentKind(0, kRight, kLinear, 0), 1);
    EXPECT_EQ(curve.Impl().keys[0].rightHandle, Point(-1, 0));
    curve.Impl().SetKind(0, kCubic);
    EXPECT_EQ(curve.SetSegmentKind(0, kRight, kCubic, 0), 1);
    EXPECT_EQ(curve.Impl().keys[0].rightHandle, Point(-1, 0)) << "a kind that stays does nothing";
}

TEST(HvStdFCurve_kinds, AllSpansBecomeOneKind)
{
    StdCurve curve = ThreeKeys();
    curve.Impl().keys[1].rightHandle = Point(2, 0);
    EXPECT_EQ(curve.ConvertToUniformSegmentKind(kCubic), 1);
    EXPECT_EQ(Kinds(curve), "3333");
    EXPECT_TRUE(curve.Impl().IsValid());
    std::string const before = StdImage(curve);
    EXPECT_EQ(curve.ConvertToUniformSegmentKind(kCubic), 1);
    EXPECT_EQ(StdImage(curve), before);
    StdCurve empty(0, kLinear);
    EXPECT_EQ(empty.ConvertToUniformSegmentKind(kConstant), 1);
    EXPECT_EQ(empty.GetFirstSegmentKind(), kConstant);
}

TEST(HvStdFCurve_kinds, UnusedHandlesThatTurnBackAreLaidOnTheirKeys)
{
    StdCurve curve({KeyAt(0, 0, 1, kConstant), KeyAt(3, 3, 4, kCubic), KeyAt(6, 5, 5, kLinear),
                    KeyAt(9, 0, 0, kLinear)});
    curve.SetFirstSegmentKind(kLinear);
    auto& keys = curve.Impl().keys;
    keys[0].leftHandle = Point(1, 9);
    keys[0].rightHandle = Point(-1, 9);
    keys[1].rightHandle = Point(9, 9);  // a cubic segment, not looked at
    keys[2].rightHandle = Point(7, 9);  // valid
    curve.Impl().SetValidBezierTangentsOnConstantOrLinearSegments();
    EXPECT_EQ(keys[0].leftHandle, Point(0, 0));
    EXPECT_EQ(keys[0].rightHandle, Point(0, 1));
    EXPECT_EQ(keys[1].leftHandle, Point(3, 3));
    EXPECT_EQ(keys[1].rightHandle, Point(9, 9));
    EXPECT_EQ(keys[2].rightHandle, Point(7, 9));

    keys[0].leftHandle = Point(1, 9);
    curve.SetFirstSegmentKind(kCubic);
    curve.Impl().SetValidBezierTangentsOnConstantOrLinearSegments();
    EXPECT_EQ(keys[0].leftHandle, Point(1, 9));
}

TEST(HvStdFCurve_kinds, UnknownKindsAndSidesMissingKeysAndReadOnlyCurvesAreRefused)
{
    StdCurve curve = ThreeKeys();
    StdCurve empty(0, kLinear);
    for (int const value : {-1, 0, 4}) {
        auto const kind = static_cast<FSKind>(value);
        for (StdCurve* target : {&curve, &empty}) {
            ExpectRefused(*target, [&] { return target->SetSegmentKind(3, kLeft, kind, 0); });
            ExpectRefused(*target, [&] { return target->SetSegmentKindAtParameter(3, kind); });
            ExpectRefused(*target, [&] { return target->SetFirstSegmentKind(kind); });
            ExpectRefused(*target, [&] { return target->ConvertToUniformSegmentKind(kind); });
        }
    }
    auto const side = static_cast<HvBaseFCurve::KeySide>(3);
    ExpectRefused(curve, [&] { return curve.SetSegmentKind(3, side, kCubic, 0); });
    ExpectRefused(curve, [&] { return curve.SetSegmentKind(2, kLeft, kCubic, 0.5); });
    ExpectRefused(curve, [&] { return curve.SetSegmentKindAtParameter(std::nan(""), kCubic); });
    ExpectRefusedWhenReadOnly(curve, [&] { return curve.SetSegmentKind(3, kLeft, kCubic, 0); });
    ExpectRefusedWhenReadOnly(curve, [&] { return curve.SetSegmentKindAtParameter(3, kCubic); });
    ExpectRefusedWhenReadOnly(curve, [&] { return curve.SetFirstSegmentKind(kCubic); });
    ExpectRefusedWhenReadOnly(curve, [&] { return curve.ConvertToUniformSegmentKind(kCubic); });
}
