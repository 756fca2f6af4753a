// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What older versions of the standard curve's archive are migrated to, each on both sides of the
// version where it ends.

#include <hv/fcurve/internal/curve_archive_readers.h>
#include <tests/fcurve/std_archive_bodies.h>
#include <tests/fcurve/std_curve.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using Point = HvPoint2<double>;

constexpr double kThird = 0.3333333333333333;

/// A version 1 to 266 of three keys with these words; the middle one has its handles on it.
StdCurve ReadThreeKeys(unsigned int version, unsigned int word0, unsigned int word1,
                       unsigned int word2)
{
    std::vector<FileKey> const keys = {{{0, 0, 0, -1, 5, 0.5, 2}, 3, word0, 0, 0},
                                       {{3, 6, 6, 3, 6, 3, 6}, 3, word1, 0, 0},
                                       {{9, 12, 12, 8, 11, 10, 10}, 3, word2, 0, 0}};
    FileFields fields;
    fields.defaultTangent = 0;
    fields.readOnly = 0;
    Bytes const body = StdBody(version, keys, fields).Body();
    StdCurve curve(0, HvBaseFCurve::CubicSegment);
    EXPECT_EQ(curve.ReadFromBufferBody(body.data()), body.size());
    return curve;
}

/// Two keys at (1, 10) and (2, 20) with these handles, read from a version.
StdCurve ReadTwoKeys(unsigned int version, Point left0, Point right0, Point left1, Point right1,
                     unsigned int kind0 = 3)
{
    std::vector<FileKey> const keys = {
        {{1, 10, 10, left0.x, left0.y, right0.x, right0.y}, kind0, 1, 0, 0},
        {{2, 20, 20, left1.x, left1.y, right1.x, right1.y}, 3, 1, 0, 0}};
    Bytes const body = StdBody(version, keys).Body();
    StdCurve curve(0, HvBaseFCurve::CubicSegment);
    EXPECT_EQ(curve.ReadFromBufferBody(body.data()), body.size());
    return curve;
}

}  // namespace

TEST(std_archive_migrations, LoneSlopeBitBecomesAutomaticUpTo265)
{
    StdCurve const migrated = ReadThreeKeys(265, 0x0081, 0x0081, 0x0001);
    EXPECT_EQ(migrated.Impl().keys[0].constraints.word, 0x1081);
    EXPECT_EQ(migrated.Impl().keys[1].constraints.word, 0x1081);
    EXPECT_EQ(migrated.Impl().keys[2].constraints.word, 0x0001);
    EXPECT_EQ(ReadThreeKeys(266, 0x0081, 1, 1).Impl().keys[0].constraints.word, 0x0081);
    // One key is enough for this one.
    std::vector<FileKey> const one = {{{0, 0, 0, 0, 0, 0, 0}, 3, 0x0080, 0, 0}};
    Bytes const body = StdBody(265, one).Body();
    StdCurve curve(0, HvBaseFCurve::CubicSegment);
    curve.ReadFromBufferBody(body.data());
    EXPECT_EQ(curve.Impl().keys[0].constraints.word, 0x1080);
}

TEST(std_archive_migrations, AutomaticBitIsLostUpTo259WithTheHandlesAsTheyWere)
{
    for (unsigned int const version : {257u, 258u, 259u}) {
        StdCurve const curve = ReadThreeKeys(version, 1, 0x0080, 1);
        EXPECT_EQ(curve.Impl().keys[1].constraints.word, 0x0080) << version;
        EXPECT_EQ(curve.Impl().keys[1].leftHandle, Point(3, 6)) << version;
    }
    // From 260 on the bit is added and its handles are stored instead.
    StdCurve const stored = ReadThreeKeys(260, 1, 0x0080, 1);
    EXPECT_EQ(stored.Impl().keys[1].constraints.word, 0x0080);
    EXPECT_NE(stored.Impl().keys[1].leftHandle, Point(3, 6));
}

TEST(std_archive_migrations, AutomaticHandlesAreStoredAtThirdsUpTo264)
{
    for (unsigned int const version : {261u, 262u, 263u, 264u}) {
        SCOPED_TRACE(version);
        // The slope of the chord between the neighbours: 12 over 9; no limit bites.
        StdCurve const curve = ReadThreeKeys(version, 1, 0x1001, 1);
        CFCStdKey const& key = curve.Impl().keys[1];
        EXPECT_EQ(key.constraints.word, 0x0001);
        EXPECT_DOUBLE_EQ(key.leftHandle.x, 3 - 3 * kThird);
        EXPECT_DOUBLE_EQ(key.leftHandle.y, 6 - 4.0 / 3);
        EXPECT_DOUBLE_EQ(key.rightHandle.x, 3 + 6 * kThird);
        EXPECT_DOUBLE_EQ(key.rightHandle.y, 6 + 8.0 / 3);
        EXPECT_EQ(curve.Impl().defaultBezierTangentConstraint, 0);
    }
    StdCurve const kept = ReadThreeKeys(265, 1, 0x1001, 1);
    EXPECT_EQ(kept.Impl().keys[1].constraints.word, 0x1001);
    EXPECT_EQ(kept.Impl().keys[1].leftHandle, Point(3, 6));
}

TEST(std_archive_migrations, AutomaticEndKeysKeepTheirOuterHandlesX)
{
    StdCurve const curve = ReadThreeKeys(264, 0x1000, 1, 0x1000);
    CFCStdKey const& first = curve.Impl().keys[0];
    CFCStdKey const& last = curve.Impl().keys[2];
    EXPECT_EQ(first.leftHandle, Point(-1, 0));  // flat, and no neighbour whose third it could take
    EXPECT_EQ(first.rightHandle, Point(3 * kThird, 0));
    EXPECT_EQ(last.leftHandle, Point(9 - 6 * kThird, 12));
    EXPECT_EQ(last.rightHandle, Point(10, 12));
    EXPECT_EQ(first.constraints.word, 0);
    EXPECT_EQ(last.constraints.word, 0);
}

TEST(std_archive_migrations, StoredSlopesAreLimited)
{
    // Unlimited automatic slope of 1e9 over a span of 2e-3.
    std::vector<FileKey> const keys = {{{0, 0, 0, -1, 0, 0, 0}, 3, 1, 0, 0},
                                       {{1e-3, 1e6, 1e6, 0, 0, 0, 0}, 3, 0x1080, 0, 0},
                                       {{2e-3, 2e6, 2e6, 0, 0, 3, 2e6}, 3, 1, 0, 0}};
    Bytes const body = StdBody(264, keys).Body();
    StdCurve curve(0, HvBaseFCurve::CubicSegment);
    ASSERT_NE(curve.ReadFromBufferBody(body.data()), 0u);
    CFCStdKey const& key = curve.Impl().keys[1];
    double const third = 1e-3 * kThird;
    EXPECT_DOUBLE_EQ(key.rightHandle.x, 1e-3 + third);
    EXPECT_DOUBLE_EQ(key.rightHandle.y, 1e6 + 100000 * third);
    EXPECT_DOUBLE_EQ(key.leftHandle.y, 1e6 - 100000 * third);
}

TEST(std_archive_migrations, OneAutomaticKeyAloneStaysAutomatic)
{
    std::vector<FileKey> const keys = {{{0, 1, 1, -1, 0, 1, 0}, 3, 0x1000, 0, 0}};
    Bytes const body = StdBody(264, keys).Body();
    StdCurve curve(0, HvBaseFCurve::CubicSegment);
    ASSERT_NE(curve.ReadFromBufferBody(body.data()), 0u);
    EXPECT_EQ(curve.Impl().keys[0].constraints.word, 0x1000);
    EXPECT_EQ(curve.Impl().keys[0].leftHandle, Point(-1, 0));
}

TEST(std_archive_migrations, DamagedKeysGetFiniteHandles)
{
    // Neighbours at one parameter, with values whose difference overflows.
    std::vector<FileKey> const keys = {{{1, -1e308, -1e308, 0, 0, 0, 0}, 3, 1, 0, 0},
                                       {{1, 0, 0, 0, 0, 0, 0}, 3, 0x1080, 0, 0},
                                       {{1, 1e308, 1e308, 0, 0, 0, 0}, 3, 1, 0, 0}};
    Bytes const body = StdBody(264, keys).Body();
    StdCurve curve(0, HvBaseFCurve::CubicSegment);
    ASSERT_NE(curve.ReadFromBufferBody(body.data()), 0u);
    for (CFCStdKey const& key : curve.Impl().keys) {
        EXPECT_TRUE(std::isfinite(key.leftHandle.x) && std::isfinite(key.leftHandle.y));
        EXPECT_TRUE(std::isfinite(key.rightHandle.x) && std::isfinite(key.rightHandle.y));
    }
}

TEST(std_archive_migrations, OuterHandlesOnTheirKeysAreReflectedUpTo262)
{
    Point const right0(1.25, 12);
    Point const left1(1.5, 19);
    for (unsigned int const version : {256u, 258u, 262u}) {
        StdCurve const curve = ReadTwoKeys(version, {1, 10}, right0, left1, {2, 20});
        EXPECT_EQ(curve.Impl().keys[0].leftHandle, Point(0.75, 8)) << version;
        EXPECT_EQ(curve.Impl().keys[1].rightHandle, Point(2.5, 21)) << version;
        EXPECT_EQ(curve.Impl().keys[0].rightHandle, right0);
        EXPECT_EQ(curve.Impl().keys[1].leftHandle, left1);
    }
    StdCurve const kept = ReadTwoKeys(263, {1, 10}, right0, left1, {2, 20});
    EXPECT_EQ(kept.Impl().keys[0].leftHandle, Point(1, 10));
    EXPECT_EQ(kept.Impl().keys[1].rightHandle, Point(2, 20));
    // The oldest version is taken as it stands.
    StdCurve const oldest = ReadTwoKeys(1, {1, 10}, right0, left1, {2, 20});
    EXPECT_EQ(oldest.Impl().keys[0].leftHandle, Point(1, 10));
}

TEST(std_archive_migrations, OuterHandleCountsAsOnItsKeyBelowASquaredDistance)
{
    // 1e-7 squared distance: 3.1e-4 lies below it, 3.2e-4 above.
    EXPECT_EQ(ReadTwoKeys(262, {1, 10 + 3.1e-4}, {1.25, 12}, {1.5, 19}, {2, 21})
                  .Impl()
                  .keys[0]
                  .leftHandle,
              Point(0.75, 8));
    EXPECT_EQ(ReadTwoKeys(262, {1, 10 + 3.2e-4}, {1.25, 12}, {1.5, 19}, {2, 21})
                  .Impl()
                  .keys[0]
                  .leftHandle,
              Point(1, 10 + 3.2e-4));
}

TEST(std_archive_migrations, ReflectedHandlesBelongToTheValueOfTheirSide)
{
    std::vector<FileKey> const keys = {{{1, 10, 30, 1, 10, 1.25, 32}, 3, 1, 0, 0},
                                       {{2, 20, 40, 1.5, 19, 2, 40}, 3, 1, 0, 0}};
    Bytes const body = StdBody(262, keys).Body();
    StdCurve curve(0, HvBaseFCurve::CubicSegment);
    ASSERT_NE(curve.ReadFromBufferBody(body.data()), 0u);
    EXPECT_EQ(curve.Impl().keys[0].leftHandle, Point(0.75, 8));
    EXPECT_EQ(curve.Impl().keys[1].rightHandle, Point(2.5, 41));
}

TEST(std_archive_migrations, LooseHandlesOfALineAreDrawnInUpTo257)
{
    Point const beyond(5, 12);
    for (unsigned int const version : {256u, 257u}) {
        StdCurve const line = ReadTwoKeys(version, {0, 9}, beyond, {1.5, 19}, {3, 21}, 2);
        EXPECT_EQ(line.Impl().keys[0].rightHandle, Point(1, 10)) << version;
        EXPECT_EQ(line.Impl().keys[1].leftHandle, Point(2, 20)) << version;
        StdCurve const cubic = ReadTwoKeys(version, {0, 9}, beyond, {1.5, 19}, {3, 21}, 3);
        EXPECT_EQ(cubic.Impl().keys[0].rightHandle, beyond) << version;
    }
    StdCurve const kept = ReadTwoKeys(258, {0, 9}, beyond, {1.5, 19}, {3, 21}, 2);
    EXPECT_EQ(kept.Impl().keys[0].rightHandle, beyond);
}

TEST(std_archive_migrations, EmptyCurvesOfEveryVersionStayEmpty)
{
    for (unsigned int const version : kStdVersions) {
        Bytes const body = StdBody(version, {}).Body();
        StdCurve curve(0, HvBaseFCurve::CubicSegment);
        EXPECT_EQ(curve.ReadFromBufferBody(body.data()), body.size());
        EXPECT_EQ(curve.GetNumKeys(), 0u);
    }
}
