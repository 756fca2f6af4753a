// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <tests/fcurve/archive_bytes.h>
#include <tests/fcurve/lock_probe.h>
#include <tests/fcurve/stepped_test_support.h>
#include <tests/support/allocation_failure.h>

#include <gtest/gtest.h>

namespace {

using C = HvBaseFCurve;

ArchiveBytes BooleanHead(unsigned int version)
{
    return ArchiveBytes().U32(version).U32(10).Raw({0x62, 0x14, 0xF2, 0x84, 0xCA, 0x97, 0xD1, 0x11,
                                                    0x93, 0x6A, 0x00, 0xA0, 0x24, 0x3E, 0x35,
                                                    0xF0});
}

ArchiveBytes IntegerHead(unsigned int version)
{
    return ArchiveBytes().U32(version).U32(15).Raw({0x61, 0x14, 0xF2, 0x84, 0xCA, 0x97, 0xD1, 0x11,
                                                    0x93, 0x6A, 0x00, 0xA0, 0x24, 0x3E, 0x35,
                                                    0xF0});
}

/// Two keys with words of one byte in version 257 and of two from 258 on.
ArchiveBytes BooleanBody(unsigned int version)
{
    ArchiveBytes body = BooleanHead(version);
    body.U8(1).U8(1).U8(3).U8(1).U32(2);
    body.F64(1.5).U8(1);
    version == 257 ? body.U8(0x86) : body.U16(0x0086);
    body.F64(2.5).U8(0);
    version == 257 ? body.U8(0x04) : body.U16(0x1204);
    return body.NoUserData();
}

ArchiveBytes IntegerBody(unsigned int version)
{
    ArchiveBytes body = IntegerHead(version);
    body.U32(static_cast<unsigned int>(-7)).U32(static_cast<unsigned int>(-2147483647 - 1));
    body.U8(4).U8(0).U32(2);
    body.F64(-0.5).U32(300);
    version == 257 ? body.U8(0x02) : body.U16(0x0002);
    body.F64(9).U32(static_cast<unsigned int>(-1));
    version == 257 ? body.U8(0xFF) : body.U16(0x70FF);
    return body.NoUserData();
}

template <class Curve>
void ExpectReadBack(Open<Curve>& curve, Bytes const& newest)
{
    EXPECT_EQ(ArchiveOf(curve), newest);
    Open<Curve> again(0);
    EXPECT_EQ(again.ReadFromBufferBody(newest.data() + 4), newest.size() - 4);
    EXPECT_EQ(again.Image(), curve.Image());
}

}  // namespace

TEST(HvSteppedFCurve_archive, EmptyBooleanCurveTakes45Bytes)
{
    HvBooleanFCurve const curve(1);
    EXPECT_EQ(curve.GetBufferSize(), 45u);
    EXPECT_EQ(ArchiveOf(curve),
              BooleanHead(258).U8(1).U8(0).U8(1).U8(0).U32(0).NoUserData().Buffer());
    EXPECT_EQ(ArchiveOf(curve)[0], 41);
}

TEST(HvSteppedFCurve_archive, EmptyIntegerCurveTakes51Bytes)
{
    HvIntegerFCurve const curve(-2);
    EXPECT_EQ(ArchiveOf(curve),
              IntegerHead(258).U32(0xFFFFFFFEu).U32(0).U8(1).U8(0).U32(0).NoUserData().Buffer());
    EXPECT_EQ(curve.GetBufferSize(), 51u);
}

TEST(HvSteppedFCurve_archive, BooleanVersionsComeFieldByField)
{
    for (unsigned int const version : {257u, 258u, 259u, 0xFFFFFFFFu}) {
        SCOPED_TRACE(version);
        Bytes const body = BooleanBody(version).Body();
        OpenBoolean curve(0);
        ASSERT_EQ(curve.ReadFromBufferBody(body.data()), body.size());
        EXPECT_EQ(curve.WhenNoKeys(), 1);
        EXPECT_EQ(curve.LeftValue(), 1);
        EXPECT_EQ(curve.GetExtrapolationMethod(), C::CycleExtrapolation);
        EXPECT_EQ(curve.IsReadOnly(), 1);
        EXPECT_EQ(curve.IsTimeFCurve(), 1);
        EXPECT_EQ(KeysOf(curve), (Keys{{1.5, 1}, {2.5, 0}}));
        EXPECT_EQ(curve.Impl().constraints[0].word, 0x0086);
        EXPECT_EQ(curve.Impl().constraints[1].word, version == 257 ? 0x0004 : 0x1204);
        EXPECT_EQ(curve.HasUserData(), 0);

        Bytes newest = BooleanBody(258).Buffer();
        if (version == 257) {
            newest[newest.size() - 10] = 0;  // the high byte of the last word
        }
        ExpectReadBack(curve, newest);
    }
}

TEST(HvSteppedFCurve_archive, IntegerVersionsComeFieldByField)
{
    for (unsigned int const version : {257u, 258u, 300u}) {
        SCOPED_TRACE(version);
        Bytes const body = IntegerBody(version).Body();
        OpenInteger curve(0);
        ASSERT_EQ(curve.ReadFromBufferBody(body.data()), body.size());
        EXPECT_EQ(curve.WhenNoKeys(), -7);
        EXPECT_EQ(curve.LeftValue(), -2147483648.0);
        EXPECT_EQ(curve.GetExtrapolationMethod(), C::RelativeCycleExtrapolation);
        EXPECT_EQ(curve.IsReadOnly(), 0);
        EXPECT_EQ(KeysOf(curve), (Keys{{-0.5, 300}, {9, -1}}));
        EXPECT_EQ(curve.Impl().constraints[0].word, 0x0002);
        EXPECT_EQ(curve.Impl().constraints[1].word, version == 257 ? 0x00FF : 0x70FF);

        Bytes newest = IntegerBody(258).Buffer();
        if (version == 257) {
            newest[newest.size() - 10] = 0;
        }
        ExpectReadBack(curve, newest);
    }
}

TEST(HvSteppedFCurve_archive, BytesOfBooleansReadAsTold)
{
    // Values of the curve and read only: any number but 0. A key's value: 1 alone.
    Bytes const body = BooleanHead(258)
                           .U8(2)
                           .U8(0x80)
                           .U8(1)
                           .U8(7)
                           .U32(2)
                           .F64(0)
                           .U8(2)
                           .U16(0)
                           .F64(1)
                           .U8(1)
                           .U16(0)
                           .NoUserData()
                           .Body();
    OpenBoolean curve(0);
    ASSERT_EQ(curve.ReadFromBufferBody(body.data()), body.size());
    EXPECT_EQ(curve.WhenNoKeys(), 1);
    EXPECT_EQ(curve.LeftValue(), 1);
    EXPECT_EQ(curve.IsReadOnly(), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{0, 0}, {1, 1}}));
}

TEST(HvSteppedFCurve_archive, OddBytesStayAsTheyAre)
{
    // Extrapolation is not judged, and 2 gives 0 outside the keys; what is not finite becomes 0;
    // the selection bit means nothing in a file.
    Bytes const body = IntegerHead(258)
                           .U32(5)
                           .U32(6)
                           .U8(2)
                           .U8(0)
                           .U32(1)
                           .F64(kNaN)
                           .U32(8)
                           .U16(0x8004)
                           .NoUserData()
                           .Body();
    OpenInteger curve(0);
    ASSERT_EQ(curve.ReadFromBufferBody(body.data()), body.size());
    EXPECT_EQ(curve.GetExtrapolationMethod(), C::LinearExtrapolation);
    EXPECT_EQ(curve.Eval(-1, 0), 0);
    EXPECT_EQ(KeysOf(curve), (Keys{{0, 8}}));
    EXPECT_EQ(curve.Impl().constraints[0].word, 0x0004);
    EXPECT_EQ(ArchiveOf(curve)[4 + 32], 2);
}

TEST(HvSteppedFCurve_archive, SelectionAndWhatIsNotFiniteStayOutOfTheFile)
{
    OpenBoolean curve(0, {{1, 1}});
    curve.SetSelected(1);
    curve.SetKeySelected(0u, 1);
    curve.Impl().keys[0].parameter = kInfinity;
    EXPECT_EQ(
        ArchiveOf(curve),
        BooleanHead(258).U8(0).U8(0).U8(1).U8(0).U32(1).F64(0).U8(1).U16(0).NoUserData().Buffer());
    EXPECT_EQ(curve.IsKeySelected(0u), 1);
}

TEST(HvSteppedFCurve_archive, BrokenOrderIsRepairedBeforeTheSizeIsTold)
{
    OpenInteger curve(0, {{1, 10}, {2, 20}, {3, 30}, {4, 40}});
    Lock(curve, 4, C::ValueLocked);
    curve.Impl().keys[1].parameter = 3.5;
    curve.Impl().keys[2].parameter = 3.5;
    HvBaseFCurve const& constant = curve;
    EXPECT_EQ(constant.GetBufferSize(), 51 + 3 * 14u);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 10}, {3.5, 20}, {4, 40}}));
    EXPECT_EQ(IsLocked(curve, 4, C::ValueLocked), 1);
    EXPECT_EQ(IsLocked(curve, 3.5, C::ValueLocked), 0);
}

TEST(HvSteppedFCurve_archive, UserDataComeAlong)
{
    OpenInteger curve(0, {{1, 10}, {2, 20}});
    Tag(curve, 2, 77);
    unsigned int const userData = curve.GetUserDataBufferSize();
    Bytes const buffer = ArchiveOf(curve);
    EXPECT_EQ(buffer.size(), 51 - 9 + 2 * 14 + userData);
    OpenInteger again(0);
    EXPECT_EQ(again.ReadFromBufferBody(buffer.data() + 4), buffer.size() - 4);
    EXPECT_EQ(TagAt(again, 2), 77);
    EXPECT_EQ(ArchiveOf(again), buffer);
}

TEST(HvSteppedFCurve_archive, UserDataBlockOfNoLengthOrUnknownVersionIsSteppedOver)
{
    ArchiveBytes const head = BooleanHead(258).U8(0).U8(0).U8(1).U8(0).U32(0);
    HvBooleanFCurve curve(0);
    Bytes const none = ArchiveBytes(head).U32(0).Body();
    EXPECT_EQ(curve.ReadFromBufferBody(none.data()), 36u);
    Bytes const other = ArchiveBytes(head).U32(7).U32(257).Raw({1, 2, 3}).Body();
    EXPECT_EQ(curve.ReadFromBufferBody(other.data()), 43u);
    EXPECT_EQ(curve.HasUserData(), 0);
}

TEST(HvSteppedFCurve_archive, OtherBytesAreRefusedWithTheCurveAsItWas)
{
    OpenBoolean curve(0, {{1, 1}, {2, 0}});
    Tag(curve, 1, 5);
    std::string const before = curve.Image();
    Bytes const good = BooleanBody(258).Body();
    std::vector<Bytes> bad;
    for (unsigned int const version : {0u, 1u, 256u}) {
        bad.push_back(BooleanBody(version).Body());
    }
    for (unsigned int at = 8; at < 24; ++at) {  // the identifier
        bad.push_back(good);
        bad.back()[at] ^= 0x01;
    }
    bad.push_back(good);
    bad.back()[4] = 15;  // the kind
    bad.push_back(IntegerBody(258).Body());
    for (Bytes const& body : bad) {
        EXPECT_EQ(curve.ReadFromBufferBody(body.data()), 0u);
        EXPECT_EQ(curve.Image(), before);
        EXPECT_EQ(TagAt(curve, 1), 5);
    }
    EXPECT_EQ(curve.ReadFromBufferBody(nullptr), 0u);
    EXPECT_EQ(curve.Image(), before);
}

TEST(HvSteppedFCurve_archive, ReadingReplacesAReadOnlyCurve)
{
    OpenInteger curve(0, {{1, 10}});
    Lock(curve, 1, C::AllLocked);
    Tag(curve, 1, 5);
    curve.SetReadOnlyConstraint(1);
    Bytes const body = IntegerBody(258).Body();
    EXPECT_EQ(curve.ReadFromBufferBody(body.data()), body.size());
    EXPECT_EQ(curve.IsReadOnly(), 0);
    EXPECT_EQ(curve.GetNumKeys(), 2u);
    EXPECT_EQ(curve.HasUserData(), 0);
}

TEST(HvSteppedFCurve_archive, SavingReadsAndReadingWrites)
{
    HvBooleanFCurve curve(1);
    Bytes buffer(curve.GetBufferSize());
    ExpectLocks(curve, kReaderLocks, [&] { curve.GetBufferSize(); });
    ExpectLocks(curve, kReaderLocks, [&] { curve.WriteToBuffer(buffer.data()); });
    ExpectLocks(curve, kWriterLocks, [&] { curve.ReadFromBufferBody(buffer.data() + 4); });
}

TEST(HvSteppedFCurve_archive, FailedAllocationLeavesTheCurve)
{
    OpenInteger source(3, {{1, 10}, {2, 20}, {3, 30}});
    Tag(source, 2, 9);
    Bytes const buffer = ArchiveOf(source);
    auto const prepare = [] {
        auto curve = std::make_unique<OpenInteger>(
            0, std::initializer_list<std::pair<double, double>>{{5, 6}});
        Tag(*curve, 5, 4);
        return curve;
    };
    std::string const before = prepare()->Image();
    long const allocations = RefuseEachAllocation(
        prepare,
        [&](std::unique_ptr<OpenInteger>& curve) { curve->ReadFromBufferBody(buffer.data() + 4); },
        [&](std::unique_ptr<OpenInteger>& curve, bool completed) {
            EXPECT_EQ(curve->Image(), completed ? source.Image() : before);
            EXPECT_EQ(TagAt(*curve, completed ? 2 : 5), completed ? 9 : 4);
        });
    EXPECT_GT(allocations, 3);
}
