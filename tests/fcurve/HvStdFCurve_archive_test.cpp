// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/fcurve/internal/curve_archive.h>
#include <tests/fcurve/lock_probe.h>
#include <tests/fcurve/std_archive_bodies.h>
#include <tests/fcurve/std_curve.h>
#include <tests/fcurve/user_data_samples.h>
#include <tests/support/allocation_failure.h>
#include <tests/support/curve_image.h>

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// The word that a file of this version leaves a key with.
unsigned int WordOf(unsigned int version, FileKey const& key)
{
    return version <= 256 ? 1 : version <= 260 ? key.word & 0xFF : key.word & 0x7FFF;
}

void ExpectKey(CFCStdKey const& key, FileKey const& expected, unsigned int version)
{
    EXPECT_EQ(key.parameter, expected.numbers[0]);
    EXPECT_EQ(key.leftValue, expected.numbers[1]);
    EXPECT_EQ(key.rightValue, expected.numbers[2]);
    EXPECT_EQ(key.leftHandle.x, expected.numbers[3]);
    EXPECT_EQ(key.leftHandle.y, expected.numbers[4]);
    EXPECT_EQ(key.rightHandle.x, expected.numbers[5]);
    EXPECT_EQ(key.rightHandle.y, expected.numbers[6]);
    EXPECT_EQ(key.segmentKind, expected.kind);
    EXPECT_EQ(key.constraints.word, WordOf(version, expected));
    EXPECT_EQ(key.privateByte1, version >= 259 ? expected.private1 : 0);
    EXPECT_EQ(key.privateByte2, version >= 259 ? expected.private2 : 0);
}

/// The keys and fields of a version, as the newest version tells them.
Bytes Renewed(unsigned int version, std::vector<FileKey> keys)
{
    FileFields fields;
    for (FileKey& key : keys) {
        key.word = WordOf(version, key);
        if (version < 259) {
            key.private1 = 0;
            key.private2 = 0;
        }
    }
    if (version < 259) {
        fields.extrapolation = 1;
        fields.readOnly = 0;
    }
    fields.defaultTangent = version >= 262 ? 1 : 0;
    fields.timeCurve = version >= 264 ? 0 : 1;
    Bytes archive = NewestStdArchive(StdBody(266, keys, fields));
    if (version == 1) {
        // Clamps that limit nothing.
        Bytes const clamps = ArchiveBytes()
                                 .F64(-std::numeric_limits<double>::max())
                                 .F64(std::numeric_limits<double>::max())
                                 .Body();
        std::copy(clamps.begin(), clamps.end(), archive.begin() + 20);
    }
    return archive;
}

}  // namespace

TEST(HvStdFCurve_archive, EmptyCurveTakes77BytesOfWhichFourStayAsTheyWere)
{
    HvStdFCurve const curve(2.5, HvBaseFCurve::LinearSegment);
    EXPECT_EQ(curve.GetBufferSize(), 77u);
    EXPECT_EQ(ArchiveOf(curve), ArchiveBytes()
                                    .U32(266)
                                    .U32(20)
                                    .F64(2.5)
                                    .F64(-std::numeric_limits<double>::max())
                                    .F64(std::numeric_limits<double>::max())
                                    .U32(2)
                                    .U32(0)
                                    .U32(0x101)
                                    .U32(0x103)
                                    .U8(1)
                                    .U8(0)
                                    .NoUserData()
                                    .U32(0x106)
                                    .U8(0)
                                    .U32(0x108)
                                    .U8(1)
                                    .U32(0xCDCDCDCDu)
                                    .Buffer());
}

TEST(HvStdFCurve_archive, EveryVersionComesFieldByFieldAndIsWrittenAnew)
{
    for (unsigned int const version : kStdVersions) {
        SCOPED_TRACE(version);
        std::vector<FileKey> const keys = PlainKeys();
        Bytes const body = StdBody(version, keys).Body();
        StdCurve curve(0, HvBaseFCurve::CubicSegment);
        ASSERT_EQ(curve.ReadFromBufferBody(body.data()), body.size());

        HvStdFCurveImpl const& impl = curve.Impl();
        double const most = std::numeric_limits<double>::max();
        EXPECT_EQ(impl.valueWhenNoKeys, 5.5);
        EXPECT_EQ(impl.lowerClamp, version == 1 ? -most : -3);
        EXPECT_EQ(impl.upperClamp, version == 1 ? most : 900);
        EXPECT_EQ(impl.defaultSegmentKind, HvBaseFCurve::LinearSegment);
        EXPECT_EQ(impl.extrapolation, version >= 259 ? 4 : 1);
        EXPECT_EQ(impl.readOnly, version >= 259 ? 1 : 0);
        EXPECT_EQ(impl.defaultBezierTangentConstraint, version >= 262 ? 1 : 0);
        EXPECT_EQ(impl.timeCurve, version >= 264 ? 0 : 1);
        ASSERT_EQ(impl.NumKeys(), 2u);
        ExpectKey(impl.keys[0], keys[0], version);
        ExpectKey(impl.keys[1], keys[1], version);

        Bytes const newest = ArchiveOf(curve);
        EXPECT_EQ(newest, Renewed(version, keys));
        StdCurve again(0, HvBaseFCurve::CubicSegment);
        EXPECT_EQ(again.ReadFromBufferBody(newest.data() + 4), newest.size() - 4 - 4);
        EXPECT_EQ(CurveImage(again), CurveImage(curve));
        EXPECT_EQ(ArchiveOf(again), newest);
    }
}

TEST(HvStdFCurve_archive, VersionAboveTheNewestReadsAsTheNewest)
{
    for (unsigned int const version : {267u, 1000u, 0xFFFFFFFFu}) {
        Bytes const body = StdBody(version, PlainKeys()).U32(0x109).Body();
        HvStdFCurve curve(0, HvBaseFCurve::CubicSegment);
        EXPECT_EQ(curve.ReadFromBufferBody(body.data()), body.size() - 4);
        EXPECT_EQ(ArchiveOf(curve), NewestStdArchive(StdBody(266, PlainKeys())));
    }
}

TEST(HvStdFCurve_archive, OddBytesStayAsTheyAre)
{
    // Kinds, extrapolation and order are not judged; read only is set by any number but 0, the two
    // late flags by 1 alone; the selection bit means nothing in a file.
    FileFields fields;
    fields.extrapolation = 0;
    fields.readOnly = 0x80;
    fields.defaultTangent = 2;
    fields.timeCurve = 255;
    std::vector<FileKey> keys = PlainKeys();
    std::swap(keys[0], keys[1]);
    keys[0].kind = 0;
    keys[1].kind = 200;
    keys[1].word = 0x8004;
    keys[1].numbers[2] = -kInfinity;
    Bytes body = StdBody(266, keys, fields).Body();
    body[8 + 24] = 77;  // the default segment kind
    StdCurve curve(0, HvBaseFCurve::CubicSegment);
    ASSERT_EQ(curve.ReadFromBufferBody(body.data()), body.size());
    HvStdFCurveImpl const& impl = curve.Impl();
    EXPECT_EQ(impl.defaultSegmentKind, 77);
    EXPECT_EQ(impl.extrapolation, 0);
    EXPECT_EQ(impl.readOnly, 1);
    EXPECT_EQ(impl.defaultBezierTangentConstraint, 0);
    EXPECT_EQ(impl.timeCurve, 0);
    EXPECT_EQ(impl.Parameter(0), 2);
    EXPECT_EQ(impl.Parameter(1), 1);
    EXPECT_EQ(impl.keys[0].segmentKind, 0);
    EXPECT_EQ(impl.keys[1].segmentKind, 200);
    EXPECT_EQ(impl.keys[1].constraints.word, 0x0004);
    EXPECT_EQ(impl.keys[1].rightValue, 0);
    for (double const x : {-1.0, 1.0, 1.5, 2.0, 9.0}) {
        curve.Eval(x, 1);
    }
}

TEST(HvStdFCurve_archive, DefaultTangentConstraintMovesNoHandleWhenItIsRead)
{
    Bytes const body = StdBody(266, PlainKeys()).Body();
    StdCurve curve(0, HvBaseFCurve::CubicSegment);
    ASSERT_NE(curve.ReadFromBufferBody(body.data()), 0u);
    EXPECT_EQ(curve.Impl().defaultBezierTangentConstraint, 1);
    EXPECT_EQ(curve.Impl().keys[0].rightHandle.x, 1.25);  // not at the third
}

TEST(HvStdFCurve_archive, SelectionAndWhatIsNotFiniteStayOutOfTheFile)
{
    CFCStdKey key(kNaN, kInfinity, HvBaseFCurve::CubicSegment);
    key.rightValue = -kInfinity;
    StdCurve curve({key});
    curve.SetSelected(1);
    curve.SetKeySelected(0u, 1);
    Bytes const archive = ArchiveOf(curve);
    Bytes const expected = ArchiveBytes()
                               .F64(0)
                               .F64(0)
                               .F64(0)
                               .F64(0)
                               .F64(0)
                               .F64(0)
                               .F64(0)
                               .Raw({3, 0, 0, 0})
                               .U32(0x101)
                               .U16(1)
                               .Body();
    ASSERT_EQ(archive.size(), 77 + 64u);
    EXPECT_EQ(Bytes(archive.begin() + 44, archive.begin() + 44 + 66), expected);
    EXPECT_EQ(curve.IsKeySelected(0u), 1);
}

TEST(HvStdFCurve_archive, BrokenOrderIsRepairedBeforeTheSizeIsTold)
{
    StdCurve curve(
        {KeyAt(1, 1, 1, HvBaseFCurve::LinearSegment), KeyAt(3, 3, 3, HvBaseFCurve::LinearSegment),
         KeyAt(2, 2, 2, HvBaseFCurve::LinearSegment), KeyAt(3, 9, 9, HvBaseFCurve::LinearSegment),
         KeyAt(4, 4, 4, HvBaseFCurve::LinearSegment)});
    EXPECT_EQ(ArchiveOf(curve).size(), 77 + 3 * 64u);
    ASSERT_EQ(curve.GetNumKeys(), 3u);
    EXPECT_EQ(curve.Eval(3, 0), 3);
    EXPECT_EQ(curve.Eval(4, 0), 4);
}

TEST(HvStdFCurve_archive, CrossingHandlesAreNoReasonToDropAKey)
{
    // The curve is not valid, but its order is: saving keeps every key.
    StdCurve curve({KeyWithHandles(0, 0, {0, 0}, {5, 0}), KeyWithHandles(1, 0, {-5, 0}, {0, 0})});
    ASSERT_EQ(curve.Impl().IsValid(), 0);
    EXPECT_EQ(ArchiveOf(curve).size(), 77 + 2 * 64u);
    EXPECT_EQ(curve.GetNumKeys(), 2u);
}

TEST(HvStdFCurve_archive, UserDataComeAlong)
{
    HvStdFCurve curve(0, 0, 1, 1, HvBaseFCurve::LinearSegment, HvBaseFCurve::LinearSegment);
    curve.SetFCurveUserData(Guid(1), BytesOf("curve"), 5);
    curve.SetUserDataSet(SetOf(2, "key"), 1);
    Bytes const archive = ArchiveOf(curve);
    EXPECT_EQ(archive.size(), 68 + 2 * 64 + curve.GetUserDataBufferSize());
    HvStdFCurve again(0, HvBaseFCurve::CubicSegment);
    again.SetUserDataSet(SetOf(3, "old"), 0);
    EXPECT_EQ(again.ReadFromBufferBody(archive.data() + 4), archive.size() - 8);
    EXPECT_EQ(TextIn(again.GetUserDataSet(1), 2), "key");
    EXPECT_EQ(again.GetUserDataSet(0), nullptr);
    EXPECT_EQ(ArchiveOf(again), archive);
}

TEST(HvStdFCurve_archive, UserDataBlockOfNoLengthOrUnknownVersionIsSteppedOver)
{
    Bytes const whole = StdBody(266, {}).Body();
    Bytes const head(whole.begin(), whole.begin() + 40 + 4 + 4 + 2);
    Bytes const tail(whole.end() - 10, whole.end());
    for (Bytes const& block :
         {ArchiveBytes().U32(0).Body(), ArchiveBytes().U32(7).U32(255).Raw({9, 9, 9}).Body()}) {
        Bytes body = head;
        body.insert(body.end(), block.begin(), block.end());
        body.insert(body.end(), tail.begin(), tail.end());
        HvStdFCurve curve(0, HvBaseFCurve::CubicSegment);
        EXPECT_EQ(curve.ReadFromBufferBody(body.data()), body.size());
        EXPECT_EQ(curve.HasUserData(), 0);
        EXPECT_EQ(curve.IsTimeFCurve(), 0);
    }
}

TEST(HvStdFCurve_archive, OtherBytesAreRefusedWithTheCurveAsItWas)
{
    StdCurve curve({KeyAt(1, 2, 3, HvBaseFCurve::CubicSegment)});
    curve.SetUserDataSet(SetOf(3, "old"), 1);
    Bytes const before = ArchiveOf(curve);
    std::vector<Bytes> bad;
    for (unsigned int const version : {0u, 2u, 100u, 255u}) {
        bad.push_back(StdBody(version, PlainKeys()).Body());
    }
    Bytes const good = StdBody(266, PlainKeys()).Body();
    bad.push_back(good);
    bad.back()[4] = 10;  // the kind
    // The tags: 0x101 behind the keys, 0x103 behind the words, the last two from the end.
    for (std::size_t const at : {std::size_t(40 + 120), std::size_t(40 + 120 + 4 + 4),
                                 good.size() - 10, good.size() - 5}) {
        for (unsigned int byte = 0; byte < 4; ++byte) {
            bad.push_back(good);
            bad.back()[at + byte] ^= 0x40;
        }
    }
    bad.push_back(StdBody(258, PlainKeys()).Body());
    bad.back()[40 + 120] = 0x02;  // the tag of one-byte words
    bad.push_back(StdBody(1, PlainKeys()).Body());
    bad.back()[bad.back().size() - 1] = 1;  // behind the last key, which must be 0
    bad.push_back(StdBody(1, PlainKeys()).Body());
    bad.back()[20 + 63] = 1;  // behind the first key
    for (Bytes const& body : bad) {
        EXPECT_EQ(curve.ReadFromBufferBody(body.data()), 0u) << "of " << bad.size();
        EXPECT_EQ(ArchiveOf(curve), before);
    }
    EXPECT_EQ(curve.ReadFromBufferBody(nullptr), 0u);
}

TEST(HvStdFCurve_archive, ReadingReplacesAReadOnlyCurve)
{
    StdCurve curve({KeyAt(1, 2, 3, HvBaseFCurve::CubicSegment)});
    curve.SetSelected(1);
    curve.SetKeySelected(0u, 1);
    curve.SetReadOnlyConstraint(1);
    FileFields fields;
    fields.readOnly = 0;
    Bytes const body = StdBody(266, PlainKeys(), fields).Body();
    EXPECT_EQ(curve.ReadFromBufferBody(body.data()), body.size());
    EXPECT_EQ(curve.IsReadOnly(), 0);
    EXPECT_EQ(curve.IsSelected(), 0);
    EXPECT_EQ(curve.GetNumKeys(), 2u);
}

TEST(HvStdFCurve_archive, SavingReadsAndReadingWrites)
{
    HvStdFCurve curve(1, HvBaseFCurve::CubicSegment);
    Bytes buffer(curve.GetBufferSize());
    ExpectLocks(curve, kReaderLocks, [&] { curve.GetBufferSize(); });
    ExpectLocks(curve, kReaderLocks, [&] { curve.WriteToBuffer(buffer.data()); });
    ExpectLocks(curve, kWriterLocks, [&] { curve.ReadFromBufferBody(buffer.data() + 4); });
}

TEST(HvStdFCurve_archive, SizeThatAFileCannotTellIsRefused)
{
    // 2^26 keys of 64 bytes are 2^32 bytes.
    EXPECT_THROW(HvCurveArchive_Size(68, 64, 1u << 26, 9), std::bad_alloc);
    EXPECT_EQ(HvCurveArchive_Size(68, 64, (1u << 26) - 2, 59), 0xFFFFFFFFu);
    EXPECT_THROW(HvCurveArchive_Size(68, 64, (1u << 26) - 2, 60), std::bad_alloc);
    EXPECT_THROW(HvCurveArchive_Size(68, 64, 0, 0xFFFFFFFFu), std::bad_alloc);
}

TEST(HvStdFCurve_archive, FailedAllocationLeavesTheCurve)
{
    HvStdFCurve source(0, 0, 1, 1, HvBaseFCurve::LinearSegment, HvBaseFCurve::LinearSegment);
    source.SetUserDataSet(SetOf(2, "key"), 1);
    Bytes const archive = ArchiveOf(source);
    auto const prepare = [] {
        auto curve = std::make_unique<HvStdFCurve>(5, 6, 7, HvBaseFCurve::CubicSegment,
                                                   HvBaseFCurve::CubicSegment);
        curve->SetUserDataSet(SetOf(2, "old"), 5);
        return curve;
    };
    Bytes const before = ArchiveOf(*prepare());
    long const allocations = RefuseEachAllocation(
        prepare,
        [&](std::unique_ptr<HvStdFCurve>& curve) { curve->ReadFromBufferBody(archive.data() + 4); },
        [&](std::unique_ptr<HvStdFCurve>& curve, bool completed) {
            EXPECT_EQ(ArchiveOf(*curve), completed ? archive : before);
        });
    EXPECT_GT(allocations, 3);
}

TEST(HvStdFCurve_archive, FailedAllocationWhileRepairingLeavesAWorkingCurve)
{
    auto const prepare = [] {
        auto curve = std::make_unique<StdCurve>(
            std::initializer_list<CFCStdKey>{KeyAt(1, 1, 1, HvBaseFCurve::LinearSegment),
                                             KeyAt(1, 3, 3, HvBaseFCurve::LinearSegment),
                                             KeyAt(0, 3, 3, HvBaseFCurve::LinearSegment),
                                             KeyAt(1, 9, 9, HvBaseFCurve::LinearSegment)});
        return curve;
    };
    RefuseEachAllocation(
        prepare, [](std::unique_ptr<StdCurve>& curve) { curve->GetBufferSize(); },
        [](std::unique_ptr<StdCurve>& curve, bool) {
            EXPECT_EQ(curve->GetBufferSize(), 77 + 64u);
        });
}
