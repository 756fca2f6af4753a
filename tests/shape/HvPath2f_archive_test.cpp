// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Paths in archives: every byte, and bytes that nobody vouches for.

#include <hv/shape/HvPath2f.h>

#include <hv/foundation/byte_codec.h>
#include <hv/shape/HvShapeArchive.h>

#include "path_model.h"
#include <tests/support/allocation_failure.h>
#include <tests/support/generators.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>

namespace {

using Bytes = std::vector<unsigned char>;
using Tags = std::vector<unsigned int>;

Bytes Written(HvPath2f const& path)
{
    // One more byte, to see that it is not written.
    Bytes bytes(path.GetBufferSize() + 1, 0xee);
    EXPECT_EQ(path.WriteToBuffer(bytes.data()), path.GetBufferSize());
    EXPECT_EQ(bytes.back(), 0xee);
    bytes.pop_back();
    return bytes;
}

Bytes BodyOf(HvPath2f const& path)
{
    Bytes bytes = Written(path);
    bytes.erase(bytes.begin(), bytes.begin() + 4);
    return bytes;
}

void Append(Bytes& bytes, std::uint32_t number)
{
    for (int k = 0; k < 4; ++k) {
        bytes.push_back(static_cast<unsigned char>(number >> (8 * k)));
    }
}

// A body of these roles, at points (0, 0).
Bytes BodyOfTags(Tags const& tags)
{
    Bytes body = {1, 0, 0, 0};
    Append(body, static_cast<std::uint32_t>(tags.size()));
    body.resize(body.size() + 8 * tags.size());
    body.insert(body.end(), tags.begin(), tags.end());
    Append(body, 1);
    return body;
}

// Reads the bytes, bounded, into a copy of the triangle. They stand in a block of just their size,
// so that a sanitizer sees a step beyond. A refusal leaves the triangle.
unsigned int ReadBounded(Bytes const& body, PathImage* image = nullptr)
{
    std::unique_ptr<unsigned char[]> const block(new unsigned char[body.size()]);
    std::copy(body.begin(), body.end(), block.get());
    HvByteReader reader(block.get(), body.size());
    OpenPath path = Triangle();
    unsigned int const used = path.ReadArchiveBody(reader);
    EXPECT_EQ(reader.Failed(), used == 0);
    EXPECT_EQ(used == 0, ImageOf(path) == ImageOf(Triangle()));
    if (used != 0) {
        EXPECT_EQ(reader.Used(), used);
    }
    if (image != nullptr) {
        *image = ImageOf(path);
    }
    return used;
}

// Whether roles make up whole subpaths, by taking one segment after the other off the front.
bool AreWhole(Tags tags)
{
    while (!tags.empty()) {
        if (tags[0] != 1) {
            return false;
        }
        tags.erase(tags.begin());
        bool found = true;
        while (found && !tags.empty() && tags[0] != 1) {
            found = false;
            for (unsigned int degree = 1; degree <= 8 && !found; ++degree) {
                for (bool const isClosing : {false, true}) {
                    Tags segment;
                    for (unsigned int place = 1; place <= degree; ++place) {
                        segment.push_back(PathModel::RoleOf(
                            {{}, degree, place, isClosing && place == degree, false}));
                    }
                    if (tags.size() >= segment.size() &&
                        std::equal(segment.begin(), segment.end(), tags.begin())) {
                        tags.erase(tags.begin(), tags.begin() + std::ptrdiff_t(segment.size()));
                        found = true;
                        break;
                    }
                }
            }
        }
        if (!found) {
            return false;
        }
    }
    return true;
}

}  // namespace

TEST(HvPath2f_archive, HasTheseBytes)
{
    OpenPath path;
    path.Moveto({1, -2});
    path.Curveto({0.5F, 0}, {0, 3}, {1, -2});
    path.Closeto();
    path.tags[0] |= 128;  // neither locks nor the reserved bit are saved
    path.tags[3] |= 128;
    path.tags[1] |= 64;
    Bytes const expected = {
        48, 0, 0,    0,     // length of the body
        1,  0, 0,    0,     // kind
        4,  0, 0,    0,     // points
        0,  0, 0x80, 0x3f,  // 1
        0,  0, 0,    0xc0,  // -2
        0,  0, 0,    0x3f,  // 0.5
        0,  0, 0,    0,     // 0
        0,  0, 0,    0,     // 0
        0,  0, 0x40, 0x40,  // 3
        0,  0, 0x80, 0x3f,  // 1
        0,  0, 0,    0xc0,  // -2
        1,  8, 9,    11,    // roles
        0,  0, 0,    0      // not open
    };
    EXPECT_EQ(path.GetBufferSize(), 52u);
    EXPECT_EQ(Written(path), expected);
    EXPECT_EQ(HvShape2f_GetKindFromBufferBody(expected.data() + 4), HvShape2f::Path);

    OpenPath read = Triangle();
    EXPECT_EQ(read.ReadFromBufferBody(expected.data() + 4), 48u);
    EXPECT_EQ(TagsOf(read), (Tags{1, 8, 9, 11}));
    EXPECT_EQ(ImageOf(read).points, ImageOf(path).points);
    EXPECT_EQ(read.lastSubpathOpen, 0);
}

TEST(HvPath2f_archive, HasSixteenBytesWithoutPoints)
{
    OpenPath path;
    path.lastSubpathOpen = 1;
    EXPECT_EQ(Written(path), (Bytes{12, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0}));
    OpenPath read = Triangle();
    EXPECT_EQ(read.ReadFromBufferBody(BodyOf(path).data()), 12u);
    EXPECT_EQ(ImageOf(read), ImageOf(path));
    PathImage image;
    EXPECT_EQ(ReadBounded(BodyOf(path), &image), 12u);
    EXPECT_EQ(image, ImageOf(path));
}

TEST(HvPath2f_archive, KeepsEveryNumberToTheBit)
{
    using Limits = std::numeric_limits<float>;
    float nan = 0;
    std::uint32_t const bits = 0xffc12345;
    std::memcpy(&nan, &bits, sizeof nan);
    OpenPath path;
    path.Moveto({nan, Limits::infinity()});
    path.Lineto({Limits::denorm_min(), -0.0F});
    path.Lineto({-Limits::max(), Limits::lowest()});
    path.lastSubpathOpen = -3;
    OpenPath read;
    EXPECT_EQ(read.ReadFromBufferBody(BodyOf(path).data()), 9u * 3 + 12);
    EXPECT_EQ(ImageOf(read), ImageOf(path));
    PathImage image;
    EXPECT_EQ(ReadBounded(BodyOf(path), &image), 9u * 3 + 12);
    EXPECT_EQ(image, ImageOf(path));
}

TEST(HvPath2f_archive, ReadsBackWhatRandomPathsWrite)
{
    EXPECT_TRUE(rc::check([] {
        OpenPath path;
        for (unsigned int k = PickInRange(1u, 30u); k > 0; --k) {
            PathPoint const pts[8] = {{float(PickInRange(-9, 9)), 1}};
            unsigned int const degree = PickInRange(0u, 9u);
            if (degree == 0 || path.NumPoints() == 0) {
                path.Moveto(pts[0]);
            } else {
                path.AltCurveto(pts, degree);
                path.Closeto();
            }
        }
        PathImage image;
        RC_ASSERT(ReadBounded(BodyOf(path), &image) == 9 * path.NumPoints() + 12);
        RC_ASSERT(image == ImageOf(path));
    }));
}

TEST(HvPath2f_archive, ReadsOnlyItsOwnKind)
{
    Bytes body = BodyOf(Triangle());
    for (unsigned int const kind : {0u, 2u, 3u, 4u, 5u, 256u, 257u, 0xff01u}) {
        body[0] = static_cast<unsigned char>(kind);
        body[1] = static_cast<unsigned char>(kind >> 8);
        OpenPath path = SmoothLoop();
        EXPECT_EQ(path.ReadFromBufferBody(body.data()), 0u);
        EXPECT_EQ(ImageOf(path), ImageOf(SmoothLoop()));
        EXPECT_EQ(ReadBounded(body), 0u);
    }
    // What stands behind the kind does not matter.
    body[0] = 1;
    body[1] = 0;
    body[2] = body[3] = 0xff;
    OpenPath path = SmoothLoop();
    EXPECT_EQ(path.ReadFromBufferBody(body.data()), 48u);
    EXPECT_EQ(ImageOf(path), ImageOf(Triangle()));
}

TEST(HvPath2f_archive, ReadsNoFlagsOfTags)
{
    Bytes body = BodyOf(Triangle());
    for (std::size_t k = 8 + 8 * 4; k < 8 + 9 * 4; ++k) {
        body[k] |= 0xc0;
    }
    OpenPath path;
    EXPECT_EQ(path.ReadFromBufferBody(body.data()), 48u);
    EXPECT_EQ(TagsOf(path), (Tags{1, 3, 3, 4}));
    HvByteReader reader(body.data(), body.size());
    OpenPath bounded;
    EXPECT_EQ(bounded.ReadArchiveBody(reader), 48u);
    EXPECT_EQ(TagsOf(bounded), (Tags{1, 3, 3, 4}));
}

TEST(HvPath2f_archive, HasNoLocksOnceReadBack)
{
    OpenPath path = SmoothLoop();
    path.LockG1(0);
    path.LockG1(3);
    OpenPath read;
    read.ReadFromBufferBody(BodyOf(path).data());
    EXPECT_EQ(ImageOf(read), ImageOf(SmoothLoop()));
}

// Hostile bytes.

TEST(HvPath2f_archive, RefusesABodyCutAtAnyByte)
{
    Bytes const body = BodyOf(SmoothLoop());
    for (std::size_t size = 0; size < body.size(); ++size) {
        EXPECT_EQ(ReadBounded(Bytes(body.begin(), body.begin() + std::ptrdiff_t(size))), 0u);
    }
    EXPECT_EQ(ReadBounded(body), body.size());
    // More bytes than needed are left alone.
    Bytes longer = body;
    longer.resize(longer.size() + 5, 0xff);
    EXPECT_EQ(ReadBounded(longer), body.size());
}

TEST(HvPath2f_archive, RefusesCountsThatItsBytesDoNotHoldBeforeItAllocates)
{
    Bytes body = BodyOf(SmoothLoop());
    // The last: 9 times it and 12 wraps around 32 bits to 17.
    for (std::uint32_t const count :
         {8u, 100u, 0x7fffffffu, 0x80000000u, 0xffffffffu, 477218588u, 477218589u}) {
        for (int k = 0; k < 4; ++k) {
            body[std::size_t(4 + k)] = static_cast<unsigned char>(count >> (8 * k));
        }
        HvByteReader reader(body.data(), body.size());
        OpenPath path = Triangle();
        {
            AllocationCounter const counter;
            EXPECT_EQ(path.ReadArchiveBody(reader), 0u);
            EXPECT_EQ(counter.Allocations(), 0);
            if (count > 477218586) {
                // No archive of so many points can tell its length, so vouched bytes are none.
                EXPECT_EQ(path.ReadFromBufferBody(body.data()), 0u);
                EXPECT_EQ(counter.Allocations(), 0);
            }
        }
        EXPECT_EQ(ImageOf(path), ImageOf(Triangle()));
    }
}

TEST(HvPath2f_archive, RefusesRolesThatMakeUpNoSubpaths)
{
    // All pairs; in pairs behind a start and an incomplete cubic; single roles.
    for (unsigned int a = 0; a < 64; ++a) {
        EXPECT_EQ(ReadBounded(BodyOfTags({a})) != 0, AreWhole({a})) << a;
        EXPECT_EQ(ReadBounded(BodyOfTags({1, 8, 9, a})) != 0, AreWhole({1, 8, 9, a})) << a;
        for (unsigned int b = 0; b < 64; ++b) {
            EXPECT_EQ(ReadBounded(BodyOfTags({a, b})) != 0, AreWhole({a, b})) << a << " " << b;
            EXPECT_EQ(ReadBounded(BodyOfTags({1, a, b})) != 0, AreWhole({1, a, b}))
                << a << " " << b;
        }
    }
}

TEST(HvPath2f_archive, RefusesRandomChangesOfRolesAsTheGrammarSays)
{
    EXPECT_TRUE(rc::check([] {
        Tags tags;
        for (unsigned int k = PickInRange(1u, 6u); k > 0; --k) {
            unsigned int const degree = PickInRange(0u, 9u);
            tags.insert(tags.end(), tags.empty() || degree == 0 ? 1 : 0, 1);
            for (unsigned int place = 1; place <= degree; ++place) {
                bool const isClosing = place == degree && PickInRange(0, 3) == 0;
                tags.push_back(PathModel::RoleOf({{}, degree, place, isClosing, false}));
            }
        }
        RC_ASSERT(AreWhole(tags));
        RC_ASSERT(ReadBounded(BodyOfTags(tags)) != 0);
        std::size_t const at = PickInRange<std::size_t>(0, tags.size());
        switch (PickInRange(0, 3)) {
        case 0:
            tags[at] = PickInRange(0u, 64u);
            break;
        case 1:
            tags.erase(tags.begin() + std::ptrdiff_t(at));
            break;
        default:
            tags.insert(tags.begin() + std::ptrdiff_t(at), PickInRange(0u, 64u));
            break;
        }
        RC_ASSERT((ReadBounded(BodyOfTags(tags)) != 0) == AreWhole(tags));
    }));
}

TEST(HvPath2f_archive, TakesVouchedRolesAsTheyCome)
{
    OpenPath path;
    EXPECT_EQ(path.ReadFromBufferBody(BodyOfTags({3, 63, 8}).data()), 39u);
    EXPECT_EQ(TagsOf(path), (Tags{3, 63, 8}));
}

TEST(HvPath2f_archive, TellsWhereAndWhyItIsRefused)
{
    struct Case {
        Bytes body;
        std::size_t place;
        char const* reason;
    };
    Bytes kind = BodyOf(Triangle());
    kind[0] = 2;
    Bytes many = BodyOf(Triangle());
    many[7] = 0xff;
    Bytes const whole = BodyOf(Triangle());
    for (Case const& c : std::vector<Case>{
             {kind, 0, "its kind is not that of a path"},
             {many, 4, "it has more points than an archive can hold"},
             {Bytes(whole.begin(), whole.end() - 5), 8, HvByteReader::kEndsEarly},
             {BodyOfTags({1, 3, 8, 3}), 40, "the roles of its points make up no segments"}}) {
        HvByteReader reader(c.body.data(), c.body.size());
        EXPECT_EQ(OpenPath().ReadArchiveBody(reader), 0u);
        EXPECT_EQ(reader.FaultPlace(), c.place);
        EXPECT_STREQ(reader.Fault(), c.reason);
    }
}

// Memory.

TEST(HvPath2f_archive, IsEmptyWithoutMemory)
{
    Bytes const body = BodyOf(SmoothLoop());
    for (bool const isBounded : {false, true}) {
        unsigned int used = 0;
        long const allocations =
            RefuseEachAllocation([] { return Triangle(); },
                                 [&](OpenPath& path) {
                                     HvByteReader reader(body.data(), body.size());
                                     used = isBounded ? path.ReadArchiveBody(reader)
                                                      : path.ReadFromBufferBody(body.data());
                                 },
                                 [&](OpenPath& path, bool completed) {
                                     EXPECT_TRUE(completed) << "nothing is thrown";
                                     EXPECT_EQ(path.points.Size(), used == 0 ? 0u : 7u);
                                     EXPECT_EQ(path.tags.Size(), used == 0 ? 0u : 7u);
                                     EXPECT_EQ(path.lastSubpathOpen, 0);
                                 });
        EXPECT_EQ(used, 9u * 7 + 12);
        EXPECT_EQ(allocations, 2);
    }
}
