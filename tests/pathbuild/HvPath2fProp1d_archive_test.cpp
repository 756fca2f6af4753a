// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Paths with a property in archives: every byte, every version, and bytes that nobody vouches for.

#include <hv/pathbuild/HvPath2fProp1d.h>

#include <hv/fcurve/HvStdFCurve.h>
#include <hv/foundation/byte_codec.h>
#include <tests/support/allocation_failure.h>
#include <tests/support/generators.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "prop_path_support.h"

#include <cstdint>
#include <memory>

namespace {

using Bytes = std::vector<unsigned char>;

Bytes operator+(Bytes a, Bytes const& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

Bytes UInt32(std::uint32_t n)
{
    return {static_cast<unsigned char>(n), static_cast<unsigned char>(n >> 8),
            static_cast<unsigned char>(n >> 16), static_cast<unsigned char>(n >> 24)};
}

/// The archive of a shape or a curve, its length included.
template <class Object>
Bytes Written(Object const& object)
{
    // One more byte, to see that it is not written.
    Bytes bytes(object.GetBufferSize() + 1, 0xee);
    EXPECT_EQ(object.WriteToBuffer(bytes.data()), object.GetBufferSize());
    EXPECT_EQ(bytes.back(), 0xee);
    bytes.pop_back();
    return bytes;
}

Bytes BodyOf(Bytes const& archive)
{
    return Bytes(archive.begin() + 4, archive.end());
}

/// The body of a version, from the archives of path and curves.
Bytes Body(unsigned char versionLow, unsigned char versionHigh, HvPath2f const& path,
           std::vector<std::pair<unsigned int, Bytes>> const& curves)
{
    Bytes body = Bytes{4, 0, versionLow, versionHigh} + Written(HvPath2f(path)) +
                 UInt32(static_cast<std::uint32_t>(curves.size()));
    for (auto const& [start, curve] : curves) {
        body = body + UInt32(start) + curve;
    }
    return body;
}

/// Two lines, with a lone point between: subpaths at 0, 2 and 3.
OpenProp Three()
{
    OpenProp path;
    path.AddLines({{0, 0}, {1, 0}});
    path.Moveto({7, 7});
    path.AddLines({{0, 2}, {3, 4}});
    return path;
}

struct ReadResult {
    unsigned int used = 0;
    std::size_t place = 0;
    std::string reason;
};

ReadResult ReadBounded(HvPath2fProp1d& path, Bytes const& body)
{
    // Bytes of its own size, so that a sanitizer sees a read beyond it.
    std::unique_ptr<unsigned char[]> const exact(new unsigned char[body.size()]);
    std::copy(body.begin(), body.end(), exact.get());
    HvByteReader reader(exact.get(), body.size());
    ReadResult result;
    result.used = path.ReadArchiveBody(reader);
    EXPECT_EQ(result.used == 0, reader.Failed());
    if (reader.Failed()) {
        result.place = reader.FaultPlace();
        result.reason = reader.Fault();
    }
    return result;
}

/// Reads a body that must be refused both ways, leaving the path as it was.
void ExpectRefused(Bytes const& body, std::size_t place, std::string const& reason)
{
    OpenProp path = ThreeLines();
    Bytes const before = Written(path);
    ReadResult const result = ReadBounded(path, body);
    EXPECT_EQ(result.used, 0u);
    EXPECT_EQ(result.place, place) << result.reason;
    EXPECT_EQ(result.reason, reason);
    EXPECT_EQ(Written(path), before);
}

}  // namespace

// Writing.

TEST(HvPath2fProp1d_archive, IsWrittenByteByByte)
{
    OpenProp path;
    path.AddLines({{1, -2}, {0, 0.5F}});
    path.SetPropCurve(0, Through({{0, 1}, {2, 0.25}}));
    Bytes const curve = Written(*path.GetPropCurve(0));
    ASSERT_EQ(curve.size(), 64u + 2 * 16);
    Bytes const expected = UInt32(46 + 96) +                         // length of the body
                           Bytes{4, 0, 0x00, 0x01} +                 // kind, zero, version
                           UInt32(30) + Bytes{1, 0, 0, 0} +          // the path: length and kind,
                           UInt32(2) +                               // points,
                           Bytes{0, 0, 0x80, 0x3f, 0, 0, 0, 0xc0} +  // (1, -2)
                           Bytes{0, 0, 0, 0, 0, 0, 0, 0x3f} +        // (0, 0.5)
                           Bytes{1, 3} +                             // roles,
                           UInt32(1) +                               // open
                           UInt32(1) +                               // curves
                           UInt32(0) + curve;  // the subpath of the first, and itself
    EXPECT_EQ(Written(path), expected);
    EXPECT_EQ(path.GetBufferSize(), path.HvPath2f::GetBufferSize() + 12 + 4 + 96);
}

TEST(HvPath2fProp1d_archive, WithoutPointsAndCurvesItHasItsHeadsAlone)
{
    OpenProp const path;
    Bytes const expected = UInt32(24) + Bytes{4, 0, 0, 1} + UInt32(12) + Bytes{1, 0, 0, 0} +
                           UInt32(0) + UInt32(0) + UInt32(0);
    EXPECT_EQ(Written(path), expected);
}

// Reading.

TEST(HvPath2fProp1d_archive, IsReadAsItWasWritten)
{
    OpenProp const path = ThreeLines();
    Bytes const body = BodyOf(Written(path));
    std::size_t const undercounted = body.size() - 4 * 3;
    for (bool const isBounded : {false, true}) {
        OpenProp read;
        read.AddLines({{9, 9}, {8, 8}});
        read.SetPropCurve(0, Constant(77));
        EXPECT_EQ(isBounded ? ReadBounded(read, body).used : read.ReadFromBufferBody(body.data()),
                  undercounted);
        EXPECT_EQ(read.Keys(), path.Keys());
        EXPECT_EQ(read.IsSiblingOf(path), 1);
        EXPECT_EQ(BodyOf(Written(read)), body);
    }
}

TEST(HvPath2fProp1d_archive, LaterVersionsAreReadAsTheNewest)
{
    Bytes const curve = Written(Constant(5));
    for (auto const& [low, high] : {std::pair(1, 1), std::pair(0, 2), std::pair(255, 255)}) {
        OpenProp read;
        Bytes const body = Body(static_cast<unsigned char>(low), static_cast<unsigned char>(high),
                                Three(), {{3, curve}});
        EXPECT_EQ(ReadBounded(read, body).used, body.size() - 4);
        EXPECT_EQ(read.Keys(), (PropKeys{{3, 5}}));
    }
}

TEST(HvPath2fProp1d_archive, VersionsBetweenTheOldAndTheNewAreRefused)
{
    Bytes const curve = Written(Constant(5));
    for (unsigned char const low : Bytes{1, 0x80, 0xff}) {
        Bytes const body = Body(low, 0, Three(), {{3, curve}});
        ExpectRefused(body, 2, "there is no such version of it");
        OpenProp path = ThreeLines();
        EXPECT_EQ(path.ReadFromBufferBody(body.data()), 0u);
        EXPECT_EQ(path.Keys(), ThreeLines().Keys());
    }
}

TEST(HvPath2fProp1d_archive, OtherKindsAreRefused)
{
    for (auto const& [first, second] :
         {std::pair(0, 0), std::pair(1, 0), std::pair(5, 0), std::pair(4, 1)}) {
        Bytes body = BodyOf(Written(Three()));
        body[0] = static_cast<unsigned char>(first);
        body[1] = static_cast<unsigned char>(second);
        ExpectRefused(body, 0, "its kind is not that of a path with a property");
        OpenProp path = ThreeLines();
        EXPECT_EQ(path.ReadFromBufferBody(body.data()), 0u);
        EXPECT_EQ(path.Keys(), ThreeLines().Keys());
        EXPECT_EQ(path.NumPoints(), 12u);
    }
    EXPECT_EQ(OpenProp().ReadFromBufferBody(nullptr), 0u);
}

TEST(HvPath2fProp1d_archive, PathThatIsRefusedRefusesAll)
{
    Bytes body = BodyOf(Written(Three()));
    body[8] = 2;
    ExpectRefused(body, 8, "its kind is not that of a path");
    OpenProp path = ThreeLines();
    EXPECT_EQ(path.ReadFromBufferBody(body.data()), 0u);
    EXPECT_EQ(path.Keys(), ThreeLines().Keys());
}

TEST(HvPath2fProp1d_archive, CurveThatIsRefusedRefusesAll)
{
    Bytes const good = Written(Constant(5));
    Bytes bad = Written(Constant(6));
    bad[8] = 20;  // the kind of a standard curve
    Bytes const body = Body(0, 1, Three(), {{0, good}, {3, bad}});
    OpenProp path = ThreeLines();
    EXPECT_EQ(path.ReadFromBufferBody(body.data()), 0u);
    EXPECT_EQ(path.Keys(), ThreeLines().Keys());
    ReadResult const result = ReadBounded(path, body);
    EXPECT_EQ(result.used, 0u);
    std::size_t const second = body.size() - bad.size();
    EXPECT_EQ(result.place, second + 8);
    EXPECT_EQ(path.Keys(), ThreeLines().Keys());
}

// Bytes that nobody vouches for.

TEST(HvPath2fProp1d_archive, EveryShorterBodyIsRefused)
{
    OpenProp source = Three();
    source.SetPropCurve(0, Through({{0, 1}, {2, 3}}));
    source.SetPropCurve(3, Constant(4));
    Bytes const body = BodyOf(Written(source));
    OpenProp path = ThreeLines();
    for (std::size_t size = 0; size < body.size(); ++size) {
        EXPECT_EQ(ReadBounded(path, Bytes(body.begin(), body.begin() + std::ptrdiff_t(size))).used,
                  0u);
        EXPECT_EQ(path.NumPoints(), 12u);
    }
    EXPECT_EQ(path.Keys(), ThreeLines().Keys());
}

TEST(HvPath2fProp1d_archive, CurvesBelongToSubpathsInOrder)
{
    Bytes const curve = Written(Constant(5));
    std::size_t const first = 8 + (9 * 5 + 12) + 4;
    std::size_t const second = first + 4 + curve.size();
    for (unsigned int const start : {1u, 4u, 5u, 0xffffffffu}) {
        ExpectRefused(Body(0, 1, Three(), {{start, curve}}), first,
                      "a curve belongs to no subpath");
    }
    for (unsigned int const start : {0u, 2u}) {
        ExpectRefused(Body(0, 1, Three(), {{2, curve}, {start, curve}}), second,
                      "its curves are not in the order of their subpaths");
    }
    OpenProp read;
    EXPECT_NE(ReadBounded(read, Body(0, 1, Three(), {{0, curve}, {2, curve}, {3, curve}})).used,
              0u);
    EXPECT_EQ(read.Keys(), (PropKeys{{0, 5}, {2, 5}, {3, 5}}));
}

TEST(HvPath2fProp1d_archive, VouchedCurvesComeAsTheyStand)
{
    Bytes const curve = Written(Constant(5));
    OpenProp read;
    EXPECT_NE(read.ReadFromBufferBody(Body(0, 1, Three(), {{9, curve}, {1, curve}}).data()), 0u);
    EXPECT_EQ(read.Keys(), (PropKeys{{9, 5}, {1, 5}}));
    // Out of order they mean nothing, and harm nothing.
    read.SetPropCurve(0, Constant(1));
    read.SetPropCurve(3, Constant(2));
    read.RemoveSubpath(2);
    read.RemoveSubpathSection(0, 1);
    HvPoint2fArray points;
    HvPointTagArray tags;
    HvDoubleArray values;
    read.Flatten(HvGC(), points, tags, values);
    read.PropertySample(HvGC(), points, tags, values);
    EXPECT_EQ(points.Size(), values.Size());
}

TEST(HvPath2fProp1d_archive, CountsAreNotTrusted)
{
    Bytes const curve = Written(Constant(5));
    Bytes body = Body(0, 1, Three(), {{0, curve}});
    std::size_t const count = 8 + (9 * 5 + 12);
    OpenProp path;
    AllocationCounter const counter;
    for (std::uint32_t const claimed : {2u, 0x10000000u, 0xffffffffu}) {
        Bytes const claim = UInt32(claimed);
        std::copy(claim.begin(), claim.end(), body.begin() + std::ptrdiff_t(count));
        ReadResult const result = ReadBounded(path, body);
        EXPECT_EQ(result.used, 0u);
        EXPECT_EQ(result.reason, HvByteReader::kEndsEarly);
        EXPECT_LT(counter.Bytes(), 100000u);
    }
}

TEST(HvPath2fProp1d_archive, RandomDamageIsRefusedOrReadWhole)
{
    OpenProp source = ThreeLines();
    source.SetPropCurve(4, Through({{0, 1}, {1, 2}, {5, 3}}));
    Bytes const body = BodyOf(Written(source));
    EXPECT_TRUE(rc::check([&] {
        Bytes damaged = body;
        int const count = PickInRange(1, 4);
        for (int k = 0; k < count; ++k) {
            damaged[PickInRange<std::size_t>(0, damaged.size())] =
                static_cast<unsigned char>(PickInRange(0, 256));
        }
        OpenProp path;
        if (ReadBounded(path, damaged).used != 0) {
            Bytes const again = BodyOf(Written(path));
            OpenProp second;
            RC_ASSERT(ReadBounded(second, again).used != 0);
            RC_ASSERT(BodyOf(Written(second)) == again);
        } else {
            RC_ASSERT(path.NumPoints() == 0);
        }
    }));
}

// The old version, of standard curves.

TEST(HvPath2fProp1d_archive, OldCurvesBecomeRawCurvesOfTheirRightValues)
{
    HvStdFCurve old(0.0, 1.0, 2.0, HvBaseFCurve::CubicSegment, HvBaseFCurve::CubicSegment);
    old.CreateKey(3, 7);
    old.CreateKey(5, 4);
    old.SetKeyValue(3, HvBaseFCurve::Left, 6, 0);
    old.SetClampingValues(-1, 9);
    Bytes const body = Body(0, 0, Three(), {{3, Written(old)}});
    for (bool const isBounded : {false, true}) {
        OpenProp read;
        EXPECT_EQ(isBounded ? ReadBounded(read, body).used : read.ReadFromBufferBody(body.data()),
                  body.size() - 4);
        HvRawFCurve const& curve = *read.GetPropCurve(4);
        ASSERT_EQ(curve.GetNumKeys(), 3u);
        EXPECT_EQ(curve.Eval(0, 0), 2.0);
        EXPECT_EQ(curve.Eval(3, 0), 7.0);
        EXPECT_EQ(curve.Eval(1.5, 0), 4.5);
        EXPECT_EQ(curve.Eval(5, 0), 4.0);
        double lower = 0;
        double upper = 0;
        curve.GetClampingValues(lower, upper);
        EXPECT_EQ(lower, -1);
        EXPECT_EQ(upper, 9);
        // From now on it is written as the new version.
        EXPECT_EQ(Written(read)[7], 1);
    }
}

TEST(HvPath2fProp1d_archive, OldCurveThatBeginsElsewhereIsLost)
{
    HvStdFCurve late(1.0, 5.0, 5.0, HvBaseFCurve::LinearSegment, HvBaseFCurve::LinearSegment);
    HvStdFCurve good(0.0, 6.0, 6.0, HvBaseFCurve::LinearSegment, HvBaseFCurve::LinearSegment);
    Bytes const body = Body(0, 0, Three(), {{0, Written(late)}, {3, Written(good)}});
    OpenProp read;
    EXPECT_EQ(ReadBounded(read, body).used, body.size() - 8);
    EXPECT_EQ(read.Keys(), (PropKeys{{3, 6}}));
    EXPECT_EQ(read.NumPoints(), 5u);
}

TEST(HvPath2fProp1d_archive, OldCurveWithoutKeysHasOneOfZero)
{
    HvStdFCurve const old(5.0, HvBaseFCurve::LinearSegment);
    OpenProp read;
    EXPECT_NE(ReadBounded(read, Body(0, 0, Three(), {{0, Written(old)}})).used, 0u);
    HvRawFCurve& curve = *read.GetPropCurve(0);
    EXPECT_EQ(curve.GetNumKeys(), 1u);
    EXPECT_EQ(curve.Eval(0, 0), 0.0);
    curve.RemoveKey(0.0, 0.0);
    EXPECT_EQ(curve.Eval(0, 0), 5.0);
}

TEST(HvPath2fProp1d_archive, OldCurveWhoseClampingValuesCrossIsLost)
{
    HvStdFCurve old(0.0, 6.0, 6.0, HvBaseFCurve::LinearSegment, HvBaseFCurve::LinearSegment);
    old.SetClampingValues(2.0, 3.0);
    Bytes bytes = Written(old);
    // The clamping values are two doubles in a row; exchange them.
    Bytes const two{0, 0, 0, 0, 0, 0, 0, 0x40};
    auto const at = std::search(bytes.begin(), bytes.end(), two.begin(), two.end());
    ASSERT_NE(at, bytes.end());
    std::swap_ranges(at, at + 8, at + 8);
    OpenProp read;
    EXPECT_NE(ReadBounded(read, Body(0, 0, Three(), {{0, bytes}})).used, 0u);
    EXPECT_EQ(read.Keys(), PropKeys());
    EXPECT_EQ(read.NumPoints(), 5u);
}

TEST(HvPath2fProp1d_archive, RawCurveInAnOldArchiveIsRefused)
{
    Bytes const body = Body(0, 0, Three(), {{0, Written(Constant(5))}});
    OpenProp path = ThreeLines();
    EXPECT_EQ(ReadBounded(path, body).used, 0u);
    EXPECT_EQ(path.Keys(), ThreeLines().Keys());
}

// Memory.

TEST(HvPath2fProp1d_archive, IsAsItWasWithoutMemory)
{
    HvStdFCurve const old(0.0, 1.0, 2.0, HvBaseFCurve::CubicSegment, HvBaseFCurve::CubicSegment);
    OpenProp source = Three();
    source.SetPropCurve(3, Constant(4));
    for (Bytes const& body : {BodyOf(Written(source)), Body(0, 0, Three(), {{3, Written(old)}})}) {
        for (bool const isBounded : {false, true}) {
            unsigned int used = 0;
            RefuseEachAllocation([] { return ThreeLines(); },
                                 [&](OpenProp& path) {
                                     HvByteReader reader(body.data(), body.size());
                                     used = isBounded ? path.ReadArchiveBody(reader)
                                                      : path.ReadFromBufferBody(body.data());
                                 },
                                 [&](OpenProp& path, bool completed) {
                                     EXPECT_TRUE(completed) << "nothing is thrown";
                                     EXPECT_EQ(path.NumPoints(), used == 0 ? 12u : 5u);
                                     EXPECT_EQ(path.propCurves->Count(), used == 0 ? 3u : 1u);
                                 });
            EXPECT_NE(used, 0u);
        }
    }
}
