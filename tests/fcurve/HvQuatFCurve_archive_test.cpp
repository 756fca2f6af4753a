// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The archive of the quaternion curve kind: bytes by hand of both versions, and what is refused.

#include "archive_bytes.h"
#include "quat_fcurve_support.h"

#include <hv/foundation/byte_codec.h>

#include <cmath>
#include <limits>

namespace {

using C = HvBaseFCurve;

/// 0.5, 0.25 and -1 as floats.
constexpr unsigned int kHalf = 0x3F000000;
constexpr unsigned int kQuarter = 0x3E800000;
constexpr unsigned int kMinusOne = 0xBF800000;

ArchiveBytes Header(bool hasComponent, unsigned int component)
{
    ArchiveBytes bytes;
    bytes.Raw({static_cast<unsigned char>(hasComponent ? '1' : '0'), '0', '1', '0'}).U32(40);
    return hasComponent ? bytes.U32(component) : bytes;
}

/// Two keys, a value when no keys, read only, a cycle.
Bytes Archive(bool hasComponent, unsigned int component)
{
    ArchiveBytes bytes = Header(hasComponent, component);
    bytes.U32(2);
    bytes.F64(1).F64(0.5).F64(-0.25).F64(2).U32(kHalf).U32(kQuarter).U32(kMinusOne);
    bytes.U16(0xFFFE).U16(2);  // two spins backwards, value locked
    bytes.F64(3.5).F64(0).F64(1).F64(-1).U32(0).U32(0).U32(0).U16(5).U16(4);
    bytes.F64(0.125).F64(0.75).F64(-3);
    bytes.U32(1).U32(3);
    return bytes.NoUserData().Buffer();
}

/// The curve of those archives, made through its interface.
HvQuatFCurve Model(unsigned int component)
{
    HvQuatFCurve curve(component);
    HvQuatCurve& quat = *curve.GetQuatCurve();
    quat.SetKey(HvQuatKey(1, {0.5, -0.25, 2}, 0.5f, 0.25f, -1.0f, -2), 0.0);
    quat.SetKey(HvQuatKey(3.5, {0, 1, -1}, 0.0f, 0.0f, 0.0f, 5), 0.0);
    quat.SetValueLock(0, 1);
    quat.SetParamLock(1, 1);
    quat.SetValueWhenNoKeys({0.125, 0.75, -3});
    quat.SetExtrapolationMethod(C::CycleExtrapolation);
    quat.SetReadOnlyConstraint(1);
    return curve;
}

Bytes Written(C const& curve)
{
    Bytes bytes(curve.GetBufferSize());
    EXPECT_EQ(curve.WriteToBuffer(bytes.data()), bytes.size());
    return bytes;
}

std::unique_ptr<C> Read(Bytes const& bytes)
{
    C* curve = nullptr;
    unsigned int const used = HvBaseFCurve_CreateFromBuffer(bytes.data(), bytes.size(), &curve);
    EXPECT_EQ(used, curve == nullptr ? 0 : bytes.size());
    return std::unique_ptr<C>(curve);
}

TEST(HvQuatFCurve_archive, WritesTheNewestVersion)
{
    EXPECT_EQ(Written(Model(1)), Archive(true, 1));
    EXPECT_EQ(Written(Model(1)).size(), 52u + 2 * 48 + 9);
    EXPECT_EQ(Written(HvQuatFCurve(0u)).size(), 61u);
}

TEST(HvQuatFCurve_archive, LeavesTheSelectionOut)
{
    HvQuatFCurve curve = Model(1);
    curve.SetKeySelected(0u, 1);
    curve.SetSelected(1);
    EXPECT_EQ(Written(curve), Archive(true, 1));
}

TEST(HvQuatFCurve_archive, ReadsTheNewestVersion)
{
    std::unique_ptr<C> const curve = Read(Archive(true, 2));
    ASSERT_TRUE(curve);
    EXPECT_EQ(QuatImage(static_cast<HvQuatFCurve const&>(*curve)), QuatImage(Model(2)));
}

TEST(HvQuatFCurve_archive, ReadsTheVersionWithoutAComponent)
{
    std::unique_ptr<C> const curve = Read(Archive(false, 0));
    ASSERT_TRUE(curve);
    EXPECT_EQ(QuatImage(static_cast<HvQuatFCurve const&>(*curve)), QuatImage(Model(0)));
    HvQuatFCurve third(2u);
    Bytes const bytes = Archive(false, 0);
    EXPECT_EQ(third.ReadFromBufferBody(bytes.data() + 4), bytes.size() - 4);
    EXPECT_EQ(QuatImage(third), QuatImage(Model(2))) << "the component stays";
    Bytes const newer = Archive(true, 1);
    EXPECT_EQ(third.ReadFromBufferBody(newer.data() + 4), newer.size() - 4);
    EXPECT_EQ(third.GetComponent(), 1u);
}

TEST(HvQuatFCurve_archive, TellsItsKindInBothVersions)
{
    EXPECT_EQ(HvBaseFCurve_GetKindFromBufferBody(Archive(true, 1).data() + 4), 40);
    EXPECT_EQ(HvBaseFCurve_GetKindFromBufferBody(Archive(false, 1).data() + 4), 40);
    C* curve = nullptr;
    Bytes const bytes = Archive(true, 1);
    EXPECT_EQ(HvBaseFCurve_CreateFromBufferBody(bytes.data() + 4, &curve), bytes.size() - 4);
    std::unique_ptr<C> const owned(curve);
    EXPECT_EQ(owned->GetKind(), C::Quaternion);
}

TEST(HvQuatFCurve_archive, FillsTheSharedRotation)
{
    Trio const trio = MakeTrio();
    Bytes const bytes = Archive(true, 1);
    ASSERT_NE(trio.y->ReadFromBufferBody(bytes.data() + 4), 0u);
    EXPECT_EQ(trio.y->GetQuatCurve(), trio.curve);
    EXPECT_EQ(TimesOf(*trio.x), (std::vector<double>{1, 3.5}));
    EXPECT_EQ(trio.y->HasUserData(), 0);
}

TEST(HvQuatFCurve_archive, BringsUserDataBack)
{
    Trio const trio = MakeTrio();
    std::unique_ptr<C> const read = Read(Written(*trio.y));
    ASSERT_TRUE(read);
    EXPECT_EQ(QuatImage(static_cast<HvQuatFCurve const&>(*read)), QuatImage(*trio.y));
}

TEST(HvQuatFCurve_archive, RefusesEveryTruncation)
{
    for (bool const hasComponent : {false, true}) {
        Bytes const whole = Archive(hasComponent, 1);
        for (std::size_t size = 0; size < whole.size(); ++size) {
            // The buffer ends early; and so does a body whose length says so.
            Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
            EXPECT_EQ(Read(cut), nullptr) << size;
            if (size >= 4) {
                cut[0] = static_cast<unsigned char>(size - 4);
                EXPECT_EQ(Read(cut), nullptr) << size;
            }
        }
    }
}

TEST(HvQuatFCurve_archive, RefusesOtherVersionsKindsAndCounts)
{
    Trio const trio = MakeTrio();
    std::string const image = QuatImage(*trio.y);
    Bytes const whole = Archive(true, 1);
    auto const refuses = [&](std::size_t place, unsigned char byte) {
        Bytes bytes = whole;
        bytes[place] = byte;
        HvByteReader body(bytes.data() + 4, bytes.size() - 4);
        EXPECT_EQ(trio.y->ReadArchiveBody(body), 0u) << place;
        EXPECT_TRUE(body.Failed());
        EXPECT_EQ(QuatImage(*trio.y), image);
    };
    refuses(4, '2');
    refuses(7, '1');
    refuses(8, 30);
    refuses(16, 3);
    refuses(19, 0x80);
    EXPECT_EQ(trio.y->ReadFromBufferBody(nullptr), 0u);
}

TEST(HvQuatFCurve_archive, KeepsNumbersFinite)
{
    double const nan = std::numeric_limits<double>::quiet_NaN();
    ArchiveBytes bytes = Header(true, 0);
    bytes.U32(1).F64(nan).F64(nan).F64(HUGE_VAL).F64(1).U32(0x7F800000).U32(0xFFC00000).U32(kHalf);
    bytes.U16(0xF801).U16(0xFFFF).F64(nan).F64(2).F64(-HUGE_VAL).U32(2).U32(9);
    std::unique_ptr<C> const read = Read(bytes.NoUserData().Buffer());
    ASSERT_TRUE(read);
    HvQuatCurve const& quat = *static_cast<HvQuatFCurve const&>(*read).GetQuatCurve();
    HvQuatKey const key = quat.GetKey(0);
    EXPECT_EQ(key.time, 0);
    EXPECT_EQ(key.angles, HvPoint3<double>(0, 0, 1));
    EXPECT_EQ(key.tension, 0.0f);
    EXPECT_EQ(key.continuity, 0.0f);
    EXPECT_EQ(key.bias, 0.5f);
    EXPECT_EQ(key.spins, -2047) << "twelve bits, the highest the sign";
    EXPECT_EQ(key.selected, 0);
    EXPECT_EQ(quat.GetConstraintData(0), 6);
    EXPECT_EQ(quat.GetValueWhenNoKeys(), HvPoint3<double>(0, 2, 0));
    EXPECT_EQ(quat.IsReadOnly(), 1);
    EXPECT_EQ(quat.GetExtrapolationMethod(), 1u) << "9 is no method";

    HvQuatFCurve curve(0u);
    curve.GetQuatCurve()->SetKey(HvQuatKey(1, {nan, 2, 3}, NAN, 0.0f, 0.0f, 0), 0.0);
    Bytes const written = Written(curve);
    std::unique_ptr<C> const again = Read(written);
    EXPECT_EQ(again->Eval(0, 0), 0);
    EXPECT_EQ(Written(*again), written);
}

TEST(HvQuatFCurve_archive, DropsKeysOutOfOrderWhenWritten)
{
    Trio const trio = MakeTrio();
    trio.curve->SetParameter(1, 4.5);
    EXPECT_EQ(trio.curve->IsValid(), 0);
    EXPECT_EQ(trio.y->GetBufferSize(), 52u + 3 * 48 + trio.y->GetUserDataBufferSize());
    EXPECT_EQ(TimesOf(*trio.x), (std::vector<double>{1, 4.5, 5}));
    trio.curve->SetParameter(1, 5);
    EXPECT_EQ(trio.y->GetBufferSize(), 52u + 2 * 48 + trio.y->GetUserDataBufferSize());
    EXPECT_EQ(TimesOf(*trio.x), (std::vector<double>{1, 5})) << "the earlier of two as late";
    ExpectNear(ValuesOf(*trio.x), {10, 40});
}

TEST(HvQuatFCurve_archive, KeepsALinearExtrapolationOfTheRotation)
{
    HvQuatFCurve curve(0u);
    curve.GetQuatCurve()->SetExtrapolationMethod(2);
    std::unique_ptr<C> const read = Read(Written(curve));
    EXPECT_EQ(read->GetExtrapolationMethod(), C::LinearExtrapolation);
}

}  // namespace
