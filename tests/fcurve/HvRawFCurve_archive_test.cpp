// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <tests/fcurve/archive_bytes.h>
#include <tests/fcurve/lock_probe.h>
#include <tests/fcurve/raw_test_support.h>
#include <tests/support/allocation_failure.h>
#include <tests/support/curve_image.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

struct FileFields {
    unsigned int marker = 0;
    unsigned int extrapolation = 3;
    unsigned int readOnly = 1;
    unsigned int timeCurve = 0;
};

/// The body of a version with these keys, each part there from the version on that brought it.
ArchiveBytes RawBody(unsigned int version, Keys const& keys, FileFields const& fields = {})
{
    ArchiveBytes body;
    body.U32(version).U32(30).F64(5.5).F64(-3).F64(900);
    body.U32(static_cast<unsigned int>(keys.size()));
    for (auto const& key : keys) {
        body.F64(key.first).F64(key.second);
    }
    body.U32(fields.marker);
    for (std::size_t i = 0; fields.marker != 0 && i < keys.size(); ++i) {
        body.U16(0xFFFF);
    }
    if (version >= 258) {
        body.U32(0x102).U8(fields.extrapolation).U8(fields.readOnly).NoUserData();
    }
    if (version >= 264) {
        body.U32(0x108).U8(fields.timeCurve);
    }
    return body;
}

Keys const kKeys = {{1, 10}, {2.5, -20}, {4, 1e300}};

}  // namespace

TEST(HvRawFCurve_archive, EmptyCurveTakes64Bytes)
{
    HvRawFCurve const curve(2.5);
    EXPECT_EQ(curve.GetBufferSize(), 64u);
    EXPECT_EQ(ArchiveOf(curve), ArchiveBytes()
                                    .U32(264)
                                    .U32(30)
                                    .F64(2.5)
                                    .F64(-std::numeric_limits<double>::max())
                                    .F64(std::numeric_limits<double>::max())
                                    .U32(0)
                                    .U32(0)
                                    .U32(0x102)
                                    .U8(1)
                                    .U8(0)
                                    .NoUserData()
                                    .U32(0x108)
                                    .U8(1)
                                    .Buffer());
}

TEST(HvRawFCurve_archive, EveryVersionComesFieldByFieldAndIsWrittenAnew)
{
    for (unsigned int const version : {256u, 257u, 258u, 259u, 260u, 261u, 262u, 263u, 264u}) {
        for (unsigned int const marker : {0u, 0xFFFFFFFFu, 1u}) {
            SCOPED_TRACE(testing::Message() << version << " with marker " << marker);
            FileFields fields;
            fields.marker = marker;
            Bytes const body = RawBody(version, kKeys, fields).Body();
            OpenRaw curve(0);
            ASSERT_EQ(curve.ReadFromBufferBody(body.data()), body.size());
            EXPECT_EQ(curve.WhenNoKeys(), 5.5);
            EXPECT_EQ(curve.LowerClamp(), -3);
            EXPECT_EQ(curve.UpperClamp(), 900);
            EXPECT_EQ(KeysOf(curve), kKeys);
            bool const hasSettings = version >= 258;
            EXPECT_EQ(curve.GetExtrapolationMethod(), hasSettings ? 3 : 1);
            EXPECT_EQ(curve.IsReadOnly(), hasSettings ? 1 : 0);
            EXPECT_EQ(curve.IsTimeFCurve(), version >= 264 ? 0 : 1);

            FileFields newest;
            newest.extrapolation = hasSettings ? 3 : 1;
            newest.readOnly = hasSettings ? 1 : 0;
            newest.timeCurve = version >= 264 ? 0 : 1;
            Bytes const archive = ArchiveOf(curve);
            EXPECT_EQ(archive, RawBody(264, kKeys, newest).Buffer());
            OpenRaw again(0);
            EXPECT_EQ(again.ReadFromBufferBody(archive.data() + 4), archive.size() - 4);
            EXPECT_EQ(CurveImage(again), CurveImage(curve));
        }
    }
}

TEST(HvRawFCurve_archive, VersionAboveTheNewestReadsAsTheNewest)
{
    Bytes const body = RawBody(0xFFFFFFFFu, kKeys).U32(0x109).Body();
    HvRawFCurve curve(0);
    EXPECT_EQ(curve.ReadFromBufferBody(body.data()), body.size() - 4);
    EXPECT_EQ(ArchiveOf(curve), RawBody(264, kKeys).Buffer());
}

TEST(HvRawFCurve_archive, OddBytesStayAsTheyAre)
{
    FileFields fields;
    fields.extrapolation = 200;
    fields.readOnly = 9;
    fields.timeCurve = 2;
    Bytes const body = RawBody(264, {{3, 1}, {2, kNaN}, {-kInfinity, 5}}, fields).Body();
    OpenRaw curve(0);
    ASSERT_EQ(curve.ReadFromBufferBody(body.data()), body.size());
    EXPECT_EQ(curve.Impl().extrapolation, 200);
    EXPECT_EQ(curve.Impl().readOnly, 1);
    EXPECT_EQ(curve.Impl().timeCurve, 0);
    EXPECT_EQ(KeysOf(curve), (Keys{{3, 1}, {2, 0}, {0, 5}}));
    for (double const x : {-1.0, 0.0, 2.5, 3.0, 9.0}) {
        curve.Eval(x, 1);
    }
}

TEST(HvRawFCurve_archive, SelectionAndWhatIsNotFiniteStayOutOfTheFile)
{
    OpenRaw curve(5.5, {{1, 10}});
    curve.SetClampingValues(-3, 900);
    curve.SetSelected(1);
    curve.SetKeySelected(0u, 1);
    curve.Impl().keys[0].value = kNaN;
    FileFields fields;
    fields.extrapolation = 1;
    fields.readOnly = 0;
    fields.timeCurve = 1;
    EXPECT_EQ(ArchiveOf(curve), RawBody(264, {{1, 0}}, fields).Buffer());
    EXPECT_TRUE(std::isnan(curve.Impl().keys[0].value));
}

TEST(HvRawFCurve_archive, BrokenOrderIsRepairedBeforeTheSizeIsTold)
{
    OpenRaw curve(0, {{1, 10}, {2, 20}, {3, 30}});
    curve.Impl().keys[1].parameter = 1;
    EXPECT_EQ(curve.GetBufferSize(), 64 + 2 * 16u);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 10}, {3, 30}}));
}

TEST(HvRawFCurve_archive, UserDataComeAlong)
{
    OpenRaw curve(0, {{1, 10}, {2, 20}});
    Tag(curve, 2, 77);
    Bytes const archive = ArchiveOf(curve);
    EXPECT_EQ(archive.size(), 55 + 2 * 16 + curve.GetUserDataBufferSize());
    HvRawFCurve again(0);
    EXPECT_EQ(again.ReadFromBufferBody(archive.data() + 4), archive.size() - 4);
    EXPECT_EQ(TagAt(again, 2), 77);
    EXPECT_EQ(ArchiveOf(again), archive);
}

TEST(HvRawFCurve_archive, OtherBytesAreRefusedWithTheCurveAsItWas)
{
    OpenRaw curve(0, {{1, 10}});
    Tag(curve, 1, 5);
    curve.SetReadOnlyConstraint(1);
    Bytes const before = ArchiveOf(curve);
    std::vector<Bytes> bad;
    for (unsigned int const version : {0u, 1u, 255u}) {
        bad.push_back(RawBody(version, kKeys).Body());
    }
    for (unsigned int const version : {256u, 258u, 264u}) {
        bad.push_back(RawBody(version, kKeys).Body());
        bad.back()[4] = 20;  // the kind
    }
    Bytes const good = RawBody(264, kKeys).Body();
    for (std::size_t const at : {std::size_t(36 + 3 * 16 + 4), good.size() - 5}) {
        for (unsigned int byte = 0; byte < 4; ++byte) {
            bad.push_back(good);
            bad.back()[at + byte] ^= 0x40;  // a tag
        }
    }
    for (Bytes const& body : bad) {
        EXPECT_EQ(curve.ReadFromBufferBody(body.data()), 0u);
        EXPECT_EQ(ArchiveOf(curve), before);
    }
    EXPECT_EQ(curve.ReadFromBufferBody(nullptr), 0u);
    EXPECT_EQ(curve.ReadFromBufferBody(good.data()),
              good.size());  // read-only does not hold it off
    EXPECT_EQ(curve.HasUserData(), 0);
}

TEST(HvRawFCurve_archive, WordsBehindAMarkerMustBeThere)
{
    FileFields fields;
    fields.marker = 1;
    Bytes archive = RawBody(257, kKeys, fields).Buffer();
    EXPECT_NE(CurveOf(archive), nullptr);
    archive.pop_back();
    --archive[0];
    EXPECT_EQ(CurveOf(archive), nullptr);
}

TEST(HvRawFCurve_archive, SavingReadsAndReadingWrites)
{
    HvRawFCurve curve(1);
    Bytes buffer(curve.GetBufferSize());
    ExpectLocks(curve, kReaderLocks, [&] { curve.GetBufferSize(); });
    ExpectLocks(curve, kReaderLocks, [&] { curve.WriteToBuffer(buffer.data()); });
    ExpectLocks(curve, kWriterLocks, [&] { curve.ReadFromBufferBody(buffer.data() + 4); });
}

TEST(HvRawFCurve_archive, FailedAllocationLeavesTheCurve)
{
    OpenRaw source(3, {{1, 10}, {2, 20}, {3, 30}});
    Tag(source, 2, 9);
    Bytes const archive = ArchiveOf(source);
    auto const prepare = [] {
        auto curve = std::make_unique<HvRawFCurve>(5.0, 6.0);
        Tag(*curve, 5, 4);
        return curve;
    };
    Bytes const before = ArchiveOf(*prepare());
    long const allocations = RefuseEachAllocation(
        prepare,
        [&](std::unique_ptr<HvRawFCurve>& curve) { curve->ReadFromBufferBody(archive.data() + 4); },
        [&](std::unique_ptr<HvRawFCurve>& curve, bool completed) {
            EXPECT_EQ(ArchiveOf(*curve), completed ? archive : before);
        });
    EXPECT_GT(allocations, 3);
}
