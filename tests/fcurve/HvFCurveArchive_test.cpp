// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/fcurve/HvBooleanFCurve.h>
#include <hv/fcurve/HvFCurveArchive.h>
#include <hv/fcurve/HvIntegerFCurve.h>
#include <hv/fcurve/HvRawFCurve.h>
#include <hv/fcurve/HvStdFCurve.h>
#include <tests/fcurve/archive_bytes.h>
#include <tests/fcurve/std_archive_bodies.h>
#include <tests/fcurve/user_data_samples.h>
#include <tests/support/allocation_failure.h>
#include <tests/support/curve_image.h>
#include <tests/support/generators.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

using Curve = std::unique_ptr<HvBaseFCurve>;

void AddUserData(HvBaseFCurve& curve)
{
    curve.SetFCurveUserData(Guid(1), BytesOf("ab"), 2);
    curve.SetUserDataSet(SetOf(2, "c"), 1);
}

/// SmallArchives begins with the newest version of each kind.
constexpr std::size_t kNumKinds = 4;
/// Where it has that of the standard kind.
constexpr std::size_t kNewestStandard = 2;

/// A small archive of each kind with keys and user data, and one of each older version.
std::vector<Bytes> SmallArchives()
{
    HvBooleanFCurve boolean(1);
    boolean.CreateKey(1, 1);
    AddUserData(boolean);
    HvIntegerFCurve integer(4);
    integer.CreateKey(1, 5);
    AddUserData(integer);
    HvStdFCurve standard(1, 5, 6, HvBaseFCurve::CubicSegment, HvBaseFCurve::CubicSegment);
    AddUserData(standard);
    HvRawFCurve raw(1, 5);
    AddUserData(raw);
    std::vector<Bytes> archives = {ArchiveOf(boolean), ArchiveOf(integer), ArchiveOf(standard),
                                   ArchiveOf(raw)};
    for (std::size_t k = 0; k < 2; ++k) {
        archives.push_back(archives[k]);
        archives.back()[4] = 1;  // version 257: the word's second byte begins the user data
        archives.back().erase(archives.back().begin() + (k == 0 ? 36 + 10 : 42 + 13));
        --archives.back()[0];
    }
    for (unsigned int const version : kStdVersions) {
        archives.push_back(StdBody(version, PlainKeys()).Buffer());
    }
    return archives;
}

/// Bytes of the body that reading needs.
unsigned int Needed(Bytes const& archive)
{
    HvBaseFCurve* curve = nullptr;
    unsigned int const used = HvBaseFCurve_CreateFromBufferBody(archive.data() + 4, &curve);
    delete curve;
    return used;
}

void SetLength(Bytes& archive, std::size_t length)
{
    for (std::size_t k = 0; k < 4; ++k) {
        archive[k] = static_cast<unsigned char>(length >> (8 * k));
    }
}

/// A curve that was read can be asked and saved, whatever it holds.
void ExpectAlive(HvBaseFCurve const& curve)
{
    for (double const x : {-1.0, 0.0, 1.0, 1.5, 2.0, 1e9}) {
        curve.Eval(x, 1);
    }
    Bytes const saved = ArchiveOf(curve);
    Curve const again = CurveOf(saved);
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(ArchiveOf(*again), saved);
}

}  // namespace

TEST(HvFCurveArchive, LengthTakesFourBytes)
{
    EXPECT_EQ(HvBaseFCurve_GetBufferBodyLengthSize(), 4u);
}

TEST(HvFCurveArchive, KindStandsBehindTheVersionFrom256On)
{
    auto const kind = [](unsigned int version, unsigned int second) {
        return HvBaseFCurve_GetKindFromBufferBody(
            ArchiveBytes().U32(version).U32(second).Body().data());
    };
    for (unsigned int const known : {10u, 15u, 20u, 30u, 40u}) {
        EXPECT_EQ(kind(256, known), static_cast<int>(known));
        EXPECT_EQ(kind(0xFFFFFFFFu, known), static_cast<int>(known));
    }
    for (unsigned int const unknown : {0u, 1u, 11u, 50u, 0x80000014u, 0xFFFFFFFFu, 0x1400u}) {
        EXPECT_EQ(kind(256, unknown), 0);
    }
    for (unsigned int const version : {0u, 1u, 100u, 255u}) {
        EXPECT_EQ(kind(version, 10), HvBaseFCurve::Standard);
    }
    // Of the oldest format four bytes are enough.
    std::unique_ptr<unsigned char[]> const four(new unsigned char[4]{1, 0, 0, 0});
    EXPECT_EQ(HvBaseFCurve_GetKindFromBufferBody(four.get()), HvBaseFCurve::Standard);
    EXPECT_EQ(HvBaseFCurve_GetKindFromBufferBody(nullptr), 0);
}

TEST(HvFCurveArchive, CurveOfEachKindComesBack)
{
    std::vector<Bytes> const archives = SmallArchives();
    for (std::size_t k = 0; k < archives.size(); ++k) {
        unsigned char const* const body = archives[k].data() + 4;
        HvBaseFCurve* curve = nullptr;
        unsigned int const used = HvBaseFCurve_CreateFromBufferBody(body, &curve);
        ASSERT_NE(curve, nullptr);
        Curve const owned(curve);
        EXPECT_EQ(curve->GetKind(), HvBaseFCurve_GetKindFromBufferBody(body));
        // The standard curve counts four bytes that it neither writes nor reads.
        std::size_t const unused = k == kNewestStandard ? 4 : 0;
        EXPECT_EQ(used, archives[k].size() - 4 - unused);
        Curve const bounded = CurveOf(archives[k]);
        ASSERT_NE(bounded, nullptr);
        EXPECT_EQ(CurveImage(*bounded), CurveImage(*owned));
        EXPECT_EQ(ArchiveOf(*bounded), ArchiveOf(*owned));
    }
}

TEST(HvFCurveArchive, NullPointersAndOtherKindsAreRefused)
{
    Bytes const archive = SmallArchives()[0];
    auto* const sentinel = reinterpret_cast<HvBaseFCurve*>(1);
    HvBaseFCurve* curve = sentinel;
    EXPECT_EQ(HvBaseFCurve_CreateFromBufferBody(nullptr, &curve), 0u);
    EXPECT_EQ(HvBaseFCurve_CreateFromBufferBody(archive.data() + 4, nullptr), 0u);
    Bytes const unknown = ArchiveBytes().U32(266).U32(50).Body();
    EXPECT_EQ(HvBaseFCurve_CreateFromBufferBody(unknown.data(), &curve), 0u);
    Bytes const refused = ArchiveBytes().U32(100).U32(0).Body();
    EXPECT_EQ(HvBaseFCurve_CreateFromBufferBody(refused.data(), &curve), 0u);
    EXPECT_EQ(curve, sentinel);

    EXPECT_EQ(HvBaseFCurve_CreateFromBuffer(archive.data(), archive.size(), nullptr), 0u);
    EXPECT_EQ(HvBaseFCurve_CreateFromBuffer(nullptr, 100, &curve), 0u);
    EXPECT_EQ(curve, nullptr);
    curve = sentinel;
    EXPECT_EQ(HvBaseFCurve_CreateFromBuffer(archive.data(), 0, &curve), 0u);
    EXPECT_EQ(curve, nullptr);
}

TEST(HvFCurveArchive, BoundedFormTellsLengthAndPrefix)
{
    Bytes archive = SmallArchives()[kNewestStandard];
    Bytes two = archive;
    two.insert(two.end(), archive.begin(), archive.end());
    HvBaseFCurve* curve = nullptr;
    EXPECT_EQ(HvBaseFCurve_CreateFromBuffer(two.data(), two.size(), &curve), archive.size());
    delete curve;
    curve = nullptr;
    // A length greater than needed is accepted and counted.
    SetLength(two, two.size() - 4);
    EXPECT_EQ(HvBaseFCurve_CreateFromBuffer(two.data(), two.size(), &curve), two.size());
    delete curve;
    SetLength(two, 0xFFFFFFFFu);
    EXPECT_EQ(HvBaseFCurve_CreateFromBuffer(two.data(), two.size(), &curve), 0u);
    EXPECT_EQ(curve, nullptr);
}

TEST(HvFCurveArchive, RefusalTellsPlaceAndReason)
{
    HvArchiveFault fault;
    auto const refuse = [&fault](Bytes const& archive) {
        fault = HvArchiveFault();
        HvBaseFCurve* curve = nullptr;
        EXPECT_EQ(HvBaseFCurve_CreateFromBuffer(archive.data(), archive.size(), &curve, fault), 0u);
        EXPECT_EQ(curve, nullptr);
        return std::string(fault.reason == nullptr ? "" : fault.reason);
    };
    auto const with = [](Bytes archive, std::size_t at, unsigned char byte) {
        archive[at] = byte;
        return archive;
    };
    std::vector<Bytes> const archives = SmallArchives();
    Bytes const& standard = archives[kNewestStandard];

    EXPECT_EQ(refuse({0, 0, 0}), "it ends in the middle of what it should hold");
    EXPECT_EQ(fault.place, 0u);
    EXPECT_EQ(refuse(Bytes(standard.begin(), standard.end() - 1)),
              "it ends in the middle of what it should hold");
    EXPECT_EQ(fault.place, 4u);
    Bytes huge = standard;
    SetLength(huge, 0xFFFFFFFCu);
    EXPECT_EQ(refuse(huge), "its length is beyond what an archive can have");
    EXPECT_EQ(fault.place, 0u);

    EXPECT_EQ(refuse(with(standard, 8, 50)), "there is no such kind of curve");
    EXPECT_EQ(fault.place, 8u);
    EXPECT_EQ(refuse(with(archives[0], 12, 0)), "the identifier of its class is another one");
    EXPECT_EQ(fault.place, 12u);
    EXPECT_EQ(refuse(with(archives[1], 4, 0)), "its kind of curve has no such version");
    EXPECT_EQ(fault.place, 4u);
    // The count claims more keys than there are bytes.
    EXPECT_EQ(refuse(with(standard, 42, 1)), "it ends in the middle of what it should hold");
    EXPECT_EQ(fault.place, 44u);
    std::size_t const words = 44 + 60;
    EXPECT_EQ(refuse(with(standard, words, 2)), "the tag of a section is another one");
    EXPECT_EQ(fault.place, words);
    // The user data behind words, tag, two settings and private bytes claim a byte too many.
    std::size_t const userData = words + 4 + 2 + 4 + 2 + 2;
    EXPECT_EQ(refuse(with(standard, userData + 1, 1)),
              "it ends in the middle of what it should hold");
    EXPECT_EQ(fault.place, userData + 4);
    Bytes const oldest = StdBody(1, PlainKeys()).Buffer();
    std::size_t const keyEnd = 4 + 4 + 8 + 4 + 4 + 64;
    refuse(with(oldest, keyEnd - 1, 1));
    EXPECT_STREQ(fault.reason, "a key of version 1 does not end with zeros");

    // Nothing is told of what is no buffer, or of one that is read.
    fault = HvArchiveFault();
    HvBaseFCurve* curve = nullptr;
    HvBaseFCurve_CreateFromBuffer(nullptr, 9, &curve, fault);
    HvBaseFCurve_CreateFromBuffer(standard.data(), standard.size(), nullptr, fault);
    EXPECT_NE(HvBaseFCurve_CreateFromBuffer(standard.data(), standard.size(), &curve, fault), 0u);
    delete curve;
    EXPECT_EQ(fault.reason, nullptr);
}

TEST(HvFCurveArchive, EveryTruncatedBufferIsRefused)
{
    for (Bytes const& archive : SmallArchives()) {
        for (std::size_t size = 0; size < archive.size(); ++size) {
            EXPECT_EQ(CurveOf(Bytes(archive.begin(), archive.begin() + static_cast<long>(size))),
                      nullptr);
        }
    }
}

TEST(HvFCurveArchive, EveryTruncatedBodyIsRefusedUntilItHoldsWhatIsNeeded)
{
    for (Bytes const& archive : SmallArchives()) {
        unsigned int const needed = Needed(archive);
        ASSERT_NE(needed, 0u);
        for (std::size_t size = 4; size < archive.size(); ++size) {
            Bytes shorter(archive.begin(), archive.begin() + static_cast<long>(size));
            SetLength(shorter, size - 4);
            EXPECT_EQ(CurveOf(shorter) != nullptr, size - 4 >= needed) << size;
        }
    }
}

TEST(HvFCurveArchive, EveryCorruptedByteIsRefusedOrRead)
{
    int refused = 0;
    int read = 0;
    for (Bytes const& archive : SmallArchives()) {
        for (std::size_t at = 0; at < archive.size(); ++at) {
            for (unsigned int const flip :
                 {1u, 2u, 4u, 8u, 16u, 32u, 64u, 128u, 255u, 0x7Fu, 0x1Eu}) {
                Bytes corrupted = archive;
                corrupted[at] = static_cast<unsigned char>(corrupted[at] ^ flip);
                Curve const curve = CurveOf(corrupted);
                ++(curve == nullptr ? refused : read);
                if (curve != nullptr && flip == 1u << at % 8) {
                    ExpectAlive(*curve);
                }
            }
        }
    }
    EXPECT_GT(refused, 0);
    EXPECT_GT(read, 0);
}

TEST(HvFCurveArchive, EveryValueOfEveryByteOfTheNewestIsRefusedOrRead)
{
    std::vector<Bytes> const archives = SmallArchives();
    for (std::size_t k = 0; k < kNumKinds; ++k) {
        for (std::size_t at = 0; at < archives[k].size(); ++at) {
            Bytes corrupted = archives[k];
            for (unsigned int value = 0; value < 256; ++value) {
                corrupted[at] = static_cast<unsigned char>(value);
                CurveOf(corrupted);
            }
        }
    }
}

TEST(HvFCurveArchive, ClaimedCountTakesNoMemory)
{
    // Where the key count stands in the archives of the kinds.
    std::vector<Bytes> const archives = SmallArchives();
    std::size_t const places[] = {32, 38, 40, 36};
    for (std::size_t k = 0; k < kNumKinds; ++k) {
        for (unsigned int const count : {0xFFFFFFFFu, 0x80000000u, 0x01000000u}) {
            Bytes archive = archives[k];
            Bytes const low = ArchiveBytes().U32(count).Body();
            std::copy(low.begin(), low.end(), archive.begin() + static_cast<long>(places[k]));
            AllocationCounter const counter;
            EXPECT_EQ(CurveOf(archive), nullptr);
            EXPECT_LT(counter.Bytes(), 4096u);
            EXPECT_EQ(counter.Live(), 0);
        }
    }
}

TEST(HvFCurveArchive, KeysTakeNoAllocationEach)
{
    auto const allocations = [](int keys) {
        HvStdFCurve curve(0, HvBaseFCurve::CubicSegment);
        for (int i = 0; i < keys; ++i) {
            curve.CreateKey(i, i);
        }
        Bytes buffer(curve.GetBufferSize());
        AllocationCounter const counter;
        curve.WriteToBuffer(buffer.data());
        EXPECT_EQ(counter.Allocations(), 0);
        CurveOf(buffer);
        return counter.Allocations();
    };
    EXPECT_EQ(allocations(1000), allocations(10));
}

TEST(HvFCurveArchive, FailedAllocationLeavesNothing)
{
    std::vector<Bytes> const archives = SmallArchives();
    for (std::size_t k = 0; k < kNumKinds; ++k) {
        long const allocations = RefuseEachAllocation([&] {
            HvBaseFCurve* curve = nullptr;
            try {
                HvBaseFCurve_CreateFromBuffer(archives[k].data(), archives[k].size(), &curve);
            } catch (std::bad_alloc const&) {
                EXPECT_EQ(curve, nullptr);
                throw;
            }
            delete curve;
        });
        EXPECT_GT(allocations, 3);
    }
}

namespace {

/// A curve of one of the kinds after some edits.
Curve RandomCurve()
{
    Curve curve;
    switch (PickInRange(0, 4)) {
    case 0:
        curve = std::make_unique<HvBooleanFCurve>(PickInRange(0, 2));
        break;
    case 1:
        curve = std::make_unique<HvIntegerFCurve>(PickInRange(-9, 10));
        break;
    case 2:
        curve = std::make_unique<HvRawFCurve>(PickInRange(-9, 10));
        break;
    default:
        curve = std::make_unique<HvStdFCurve>(PickInRange(-9, 10),
                                              HvBaseFCurve::FSKind(PickInRange(1, 4)));
    }
    int const edits = PickInRange(0, 20);
    for (int edit = 0; edit < edits; ++edit) {
        double const x = PickInRange(-20, 20) / 4.0;
        curve->CreateKey(x, curve->GetKind() == HvBaseFCurve::Boolean ? PickInRange(0, 2)
                                                                      : PickInRange(-99, 99));
        double parameter = x;
        curve->SetConstraint(parameter, HvBaseFCurve::KeyConstraint(1 << PickInRange(0, 14)),
                             PickInRange(0, 2), 0);
        if (PickInRange(0, 4) == 0) {
            curve->SetUserDataSet(SetOf(static_cast<unsigned int>(PickInRange(0, 3)), "blob"), x);
        }
        if (PickInRange(0, 4) == 0) {
            curve->SetFCurveUserData(Guid(7), BytesOf("data"),
                                     static_cast<unsigned int>(PickInRange(0, 5)));
        }
    }
    curve->SetExtrapolationMethod(HvBaseFCurve::ExtrapolationMethod(PickInRange(1, 5)));
    curve->SetDefaultBezierTangentConstraint(PickInRange(0, 2) != 0);
    curve->SetReadOnlyConstraint(PickInRange(0, 2));
    return curve;
}

}  // namespace

RC_GTEST_PROP(HvFCurveArchive, WrittenReadAndWrittenAreTheSameBytes, ())
{
    Curve const curve = RandomCurve();
    Bytes const archive = ArchiveOf(*curve);
    Curve const again = CurveOf(archive);
    RC_ASSERT(again != nullptr);
    RC_ASSERT(ArchiveOf(*again) == archive);
    RC_ASSERT(again->GetNumKeys() == curve->GetNumKeys());
    for (int k = -30; k < 30; ++k) {
        RC_ASSERT(again->Eval(k * 0.3, 1) == curve->Eval(k * 0.3, 1));
    }
}

RC_GTEST_PROP(HvFCurveArchive, AnyBytesAreRefusedOrRead, ())
{
    // A good archive with a few bytes replaced, cut and lengthened.
    Bytes archive = ArchiveOf(*RandomCurve());
    int const changes = PickInRange(1, 5);
    for (int change = 0; change < changes; ++change) {
        archive[PickInRange<std::size_t>(4, archive.size())] =
            static_cast<unsigned char>(PickInRange(0, 256));
    }
    archive.resize(archive.size() + 10 - PickInRange<std::size_t>(0, 12));
    SetLength(archive, archive.size() - 4);
    Curve const curve = CurveOf(archive);
    if (curve != nullptr) {
        ExpectAlive(*curve);
    }
}
