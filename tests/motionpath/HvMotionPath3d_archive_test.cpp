// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Archives of motion paths, built byte by byte without the library.

#include <hv/foundation/byte_codec.h>
#include <hv/motionpath/HvMotionPath3d.h>

#include <tests/motionpath/motion_path_support.h>
#include <tests/support/allocation_failure.h>

#include <algorithm>
#include <memory>

namespace {

using Bytes = std::vector<unsigned char>;

/// Puts bytes together, low byte first.
class ByteList {
public:
    ByteList& U8(unsigned int value) { return Low(value, 1); }
    ByteList& U32(std::uint64_t value) { return Low(value, 4); }
    ByteList& F64(double value)
    {
        std::uint64_t bits;
        std::memcpy(&bits, &value, sizeof bits);
        return Low(bits, 8);
    }
    ByteList& F64s(std::initializer_list<double> values)
    {
        for (double const value : values) {
            F64(value);
        }
        return *this;
    }
    ByteList& U8s(std::initializer_list<unsigned int> values)
    {
        for (unsigned int const value : values) {
            U8(value);
        }
        return *this;
    }

    Bytes const& Body() const { return bytes_; }
    /// Behind its length.
    Bytes Buffer() const
    {
        Bytes buffer = ByteList().U32(bytes_.size()).Body();
        buffer.insert(buffer.end(), bytes_.begin(), bytes_.end());
        return buffer;
    }

private:
    ByteList& Low(std::uint64_t value, int size)
    {
        for (int k = 0; k < size; ++k) {
            bytes_.push_back(static_cast<unsigned char>(value >> (8 * k)));
        }
        return *this;
    }

    Bytes bytes_;
};

/// The part that all versions share: a curved segment from (1, 2, 3) to (10, 11, 12), times 5, 7.
ByteList TwoNodes(unsigned int version)
{
    ByteList bytes;
    bytes.U32(version).U32(0).U32(4);
    return bytes.F64s({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}).F64s({5, 7});
}

Path TwoNodePath()
{
    return Path({1, 2, 3}, {10, 11, 12}, 5, 7, {4, 5, 6}, {7, 8, 9});
}

/// Reads a buffer of exactly this size through the bounded form; null when it is refused.
std::unique_ptr<Path> Read(Bytes const& buffer, unsigned int* used = nullptr)
{
    // A copy on the heap, behind which the address sanitizer watches.
    std::unique_ptr<unsigned char[]> const copy(new unsigned char[buffer.size()]);
    std::copy(buffer.begin(), buffer.end(), copy.get());
    Path* path = reinterpret_cast<Path*>(1);
    unsigned int const result = HvMotionPath3d_CreateFromBuffer(copy.get(), buffer.size(), &path);
    EXPECT_EQ(result != 0, path != nullptr);
    EXPECT_LE(result, buffer.size());
    if (used != nullptr) {
        *used = result;
    }
    return std::unique_ptr<Path>(path);
}

TEST(HvMotionPath3d_archive, EmptyPathTakesTwentyBytes)
{
    Bytes const expected = {16, 0, 0, 0, 3, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(Path().GetBufferSize(), 20u);
    EXPECT_EQ(ArchiveOf(Path()), expected);
    EXPECT_EQ(HvMotionPath3d_GetBufferBodyLengthSize(), 4u);
}

TEST(HvMotionPath3d_archive, NewestVersionByteForByte)
{
    Path path = TwoNodePath();
    path.SetLeftTangentInfo(0, Path::TangentFree);
    path.SetRightTangentInfo(0, Path::TangentStep);
    path.SetLeftTangentInfo(3, Path::TangentLinear);
    path.SetRightTangentInfo(3, Path::TangentStop);
    path.LockG1Continuity(3);
    int data = 0;
    path.SetClientData(1, &data);
    Bytes const expected = TwoNodes(259).U8s({0, 1, 2, 4}).U8s({0, 2}).U32(0).Buffer();
    EXPECT_EQ(path.GetBufferSize(), 24u * 4 + 11 * 1 + 31);
    EXPECT_EQ(ArchiveOf(path), expected);
}

TEST(HvMotionPath3d_archive, SingleNodeTakesFiftyFiveBytes)
{
    Path path;
    path.Moveto({1, 2, 3}, 4);
    EXPECT_EQ(path.GetBufferSize(), 55u);
    EXPECT_EQ(ArchiveOf(path).size(), 55u);
    Bytes const expected =
        ByteList().U32(259).U32(0).U32(1).F64s({1, 2, 3, 4}).U8s({3, 3, 0}).U32(0).Buffer();
    EXPECT_EQ(ArchiveOf(path), expected);
}

TEST(HvMotionPath3d_archive, NumbersThatAreNotFiniteAreWrittenAsZero)
{
    Path path;
    path.Moveto({kNaN, kInfinity, -kInfinity}, 4);
    Bytes const expected =
        ByteList().U32(259).U32(0).U32(1).F64s({0, 0, 0, 4}).U8s({3, 3, 0}).U32(0).Buffer();
    EXPECT_EQ(ArchiveOf(path), expected);
}

TEST(HvMotionPath3d_archive, ReadsWhatItWrote)
{
    PathSource source(1);
    for (unsigned int segments : {1u, 2u, 5u}) {
        Path path = source.CurvedPath(segments);
        path.Lineto(source.Place(), 100);
        path.LockG1ContinuityAtAllNodes();
        path.SetRightTangentInfo(3, Path::TangentStep);
        Bytes const archive = ArchiveOf(path);
        Path read({9, 9, 9}, {8, 8, 8}, 0, 1);
        // Four less than the whole: the trailing zeros are not counted.
        EXPECT_EQ(read.ReadFromBufferBody(archive.data() + 4), archive.size() - 4);
        EXPECT_EQ(ImageOf(read), ImageOf(path));
        EXPECT_EQ(ArchiveOf(read), archive);
    }
    Path emptied = source.CurvedPath(2);
    Bytes const empty = ArchiveOf(Path());
    EXPECT_EQ(emptied.ReadFromBufferBody(empty.data() + 4), 16u);
    EXPECT_EQ(emptied.NumPoints(), 0u);
}

TEST(HvMotionPath3d_archive, OlderVersionsGetLinearRules)
{
    Path expected = TwoNodePath();
    for (unsigned int point : {0u, 3u}) {
        expected.SetLeftTangentInfo(point, Path::TangentLinear);
        expected.SetRightTangentInfo(point, Path::TangentLinear);
    }
    expected.LockG1Continuity(3);
    Bytes const first = TwoNodes(257).U8s({0, 2}).Body();
    Bytes const second = TwoNodes(258).U8s({77, 78}).U8s({0, 2}).Body();
    Path path;
    EXPECT_EQ(path.ReadFromBufferBody(first.data()), 24u * 4 + 9 + 21 + 4);
    EXPECT_EQ(ImageOf(path), ImageOf(expected));
    path = Path();
    EXPECT_EQ(path.ReadFromBufferBody(second.data()), 24u * 4 + 10 + 22 + 4);
    EXPECT_EQ(ImageOf(path), ImageOf(expected));
}

TEST(HvMotionPath3d_archive, LaterVersionsAreReadAsTheNewest)
{
    for (unsigned int version : {259u, 260u, 4294967295u}) {
        Bytes const body = TwoNodes(version).U8s({0, 1, 2, 4}).U8s({0, 2}).Body();
        Path path;
        EXPECT_EQ(path.ReadFromBufferBody(body.data()), 24u * 4 + 11 + 23 + 4);
        Path::TangentInfo info = Path::TangentFree;
        EXPECT_EQ(path.GetRightTangentInfo(0, info), 1);
        EXPECT_EQ(info, Path::TangentStep);
    }
}

TEST(HvMotionPath3d_archive, RefusalsLeaveThePath)
{
    Path path = TwoNodePath();
    auto const before = ImageOf(path);
    for (unsigned int version : {0u, 1u, 255u, 256u}) {
        Bytes const body = TwoNodes(version).U8s({0, 1, 2, 4}).U8s({0, 2}).U32(0).Body();
        EXPECT_EQ(path.ReadFromBufferBody(body.data()), 0u) << version;
    }
    for (unsigned int count : {2u, 3u, 5u, 6u, 4294967295u}) {
        Bytes const body = ByteList().U32(259).U32(0).U32(count).Body();
        EXPECT_EQ(path.ReadFromBufferBody(body.data()), 0u) << count;
    }
    // So many that their size does not fit 32 bits: refused before anything is read.
    Bytes const body = ByteList().U32(259).U32(0).U32(155239783).Body();
    EXPECT_EQ(path.ReadFromBufferBody(body.data()), 0u);
    EXPECT_EQ(path.ReadFromBufferBody(nullptr), 0u);
    EXPECT_EQ(ImageOf(path), before);
}

TEST(HvMotionPath3d_archive, OddContentIsMadeUsable)
{
    ByteList bytes;
    bytes.U32(259).U32(0xABCD).U32(4);
    bytes.F64s({kNaN, 2, kInfinity, 4, 5, 6, 7, 8, 9, 10, 11, 12}).F64s({kInfinity, -kInfinity});
    bytes.U8s({5, 255, 4, 0}).U8s({0xF4, 0xFF});
    Path path;
    ASSERT_NE(path.ReadFromBufferBody(bytes.Body().data()), 0u);
    EXPECT_EQ(PointOf(path, 0), Point(0, 2, 0));
    EXPECT_EQ(TimeOf(path, 0), 0);
    EXPECT_EQ(TimeOf(path, 3), 0) << "equal times come as they stand";
    Path::TangentInfo info = Path::TangentFree;
    path.GetLeftTangentInfo(0, info);
    EXPECT_EQ(info, Path::TangentSmooth);
    path.GetRightTangentInfo(0, info);
    EXPECT_EQ(info, Path::TangentSmooth);
    path.GetLeftTangentInfo(3, info);
    EXPECT_EQ(info, Path::TangentStop);
    EXPECT_EQ(KindOf(path, 0), Path::CurveNode);
    EXPECT_EQ(KindOf(path, 3), Path::LastLineNode);
    // Bits that mean nothing yet go along.
    EXPECT_EQ(ArchiveOf(path)[16 + 96 + 16 + 4], 0xF4);
    EXPECT_EQ(At(path, 0), Point(10, 11, 12));
}

TEST(HvMotionPath3d_archive, TimesOutOfOrderAreLivedWith)
{
    ByteList bytes;
    bytes.U32(259).U32(0).U32(10);
    for (int i = 0; i < 30; ++i) {
        bytes.F64(i * 0.5);
    }
    bytes.F64s({3, 1, 2, -5}).U8s({3, 3, 3, 3, 3, 3, 3, 3}).U8s({0, 0, 1, 0});
    Path path;
    ASSERT_NE(path.ReadFromBufferBody(bytes.Body().data()), 0u);
    for (double t = -6; t < 5; t += 0.25) {
        At(path, t);
        unsigned int point = 0;
        int exact = 0;
        path.GetNodeIndexFromInitialTime(t, 1, point);
        EXPECT_LT(point, path.NumPoints());
        Path(path).InsertNode(t, 1e-3, 0, point, exact);
        EXPECT_LT(point, path.NumPoints());
    }
    HvPoint3dArray out;
    path.EvalSequence(-6, 5, 0.5, 1e-3, out, 0);
    EXPECT_EQ(out.Size(), 23u);
}

TEST(HvMotionPath3d_archive, PathsAreMadeFromBodies)
{
    Bytes const archive = ArchiveOf(TwoNodePath());
    unsigned int consumed = 99;
    std::unique_ptr<Path> const path(
        HvMotionPath3d_CreateFromBufferBody(archive.data() + 4, consumed));
    ASSERT_NE(path, nullptr);
    EXPECT_EQ(consumed, archive.size() - 4);
    EXPECT_EQ(ImageOf(*path), ImageOf(TwoNodePath()));
    Bytes const old = TwoNodes(256).U8s({0, 0}).Body();
    EXPECT_EQ(HvMotionPath3d_CreateFromBufferBody(old.data(), consumed), nullptr);
    EXPECT_EQ(consumed, 0u);
    consumed = 99;
    EXPECT_EQ(HvMotionPath3d_CreateFromBufferBody(nullptr, consumed), nullptr);
    EXPECT_EQ(consumed, 0u);
}

TEST(HvMotionPath3d_archive, NoExceptionComesOutOfMakingFromABody)
{
    Bytes const archive = ArchiveOf(TwoNodePath());
    long const made = RefuseEachAllocation([&] {
        unsigned int consumed = 99;
        std::unique_ptr<Path> const path(
            HvMotionPath3d_CreateFromBufferBody(archive.data() + 4, consumed));
        EXPECT_EQ(consumed, path == nullptr ? 0 : archive.size() - 4);
    });
    EXPECT_GT(made, 7);
}

TEST(HvMotionPath3d_archive, FailedReadsLeaveThePath)
{
    PathSource source(2);
    Path const original = source.CurvedPath(2);
    Bytes const archive = ArchiveOf(TwoNodePath());
    RefuseEachAllocation([&] { return Path(original); },
                         [&](Path& path) { path.ReadFromBufferBody(archive.data() + 4); },
                         [&](Path& path, bool completed) {
                             EXPECT_EQ(ImageOf(path),
                                       ImageOf(completed ? TwoNodePath() : original));
                         });
    RefuseEachAllocation([&] {
        Path* path = nullptr;
        try {
            HvMotionPath3d_CreateFromBuffer(archive.data(), archive.size(), &path);
        } catch (std::bad_alloc const&) {
            EXPECT_EQ(path, nullptr);
            throw;
        }
        delete path;
    });
}

TEST(HvMotionPath3d_archive, BoundedFormTellsWholeArchives)
{
    Bytes archive = ArchiveOf(TwoNodePath());
    std::size_t const size = archive.size();
    archive.resize(size + 5, 0xEE);
    unsigned int used = 0;
    std::unique_ptr<Path> const path = Read(archive, &used);
    ASSERT_NE(path, nullptr);
    EXPECT_EQ(used, size);
    EXPECT_EQ(ImageOf(*path), ImageOf(TwoNodePath()));
    // Without the trailing zeros, which no reader needs.
    Bytes const old = TwoNodes(257).U8s({0, 0}).Buffer();
    ASSERT_NE(Read(old, &used), nullptr);
    EXPECT_EQ(used, old.size());
}

TEST(HvMotionPath3d_archive, BoundedFormRefusesEveryTruncation)
{
    Bytes const archive = ArchiveOf(TwoNodePath());
    for (std::size_t size = 0; size < archive.size(); ++size) {
        Bytes part(archive.begin(), archive.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_EQ(Read(part), nullptr) << size;
        if (size < 4) {
            continue;
        }
        // The same with a length that agrees: it may lack the trailing zeros alone.
        Bytes const length = ByteList().U32(size - 4).Body();
        std::copy(length.begin(), length.end(), part.begin());
        EXPECT_EQ(Read(part) != nullptr, size >= archive.size() - 4) << size;
    }
}

TEST(HvMotionPath3d_archive, RefusalTellsPlaceAndReason)
{
    Bytes const archive = ArchiveOf(TwoNodePath());
    HvArchiveFault fault;
    Path* path = nullptr;
    EXPECT_EQ(HvMotionPath3d_CreateFromBuffer(archive.data(), archive.size() - 1, &path, fault),
              0u);
    EXPECT_EQ(path, nullptr);
    EXPECT_EQ(fault.place, 4u);
    EXPECT_STREQ(fault.reason, HvByteReader::kEndsEarly);
    fault = HvArchiveFault();
    EXPECT_EQ(HvMotionPath3d_CreateFromBuffer(nullptr, 9, &path, fault), 0u);
    EXPECT_EQ(HvMotionPath3d_CreateFromBuffer(archive.data(), archive.size(), nullptr, fault), 0u);
    EXPECT_EQ(HvMotionPath3d_CreateFromBuffer(archive.data(), archive.size(), &path, fault),
              archive.size());
    delete path;
    EXPECT_EQ(fault.reason, nullptr);
}

TEST(HvMotionPath3d_archive, BoundedFormRefusesClaimsBeyondItsSize)
{
    AllocationCounter const counter;
    for (std::uint64_t count :
         {std::uint64_t(7), std::uint64_t(155239783), std::uint64_t(4294967293)}) {
        Bytes archive = ArchiveOf(TwoNodePath());
        Bytes const number = ByteList().U32(count).Body();
        std::copy(number.begin(), number.end(), archive.begin() + 12);
        EXPECT_EQ(Read(archive), nullptr);
    }
    EXPECT_LT(counter.Bytes(), 100000u);
    Bytes const longest = ByteList().U32(4294967295u).Body();
    EXPECT_EQ(Read(longest), nullptr);
    unsigned char byte = 0;
    Path* path = nullptr;
    EXPECT_EQ(HvMotionPath3d_CreateFromBuffer(&byte, 1, nullptr), 0u);
    EXPECT_EQ(HvMotionPath3d_CreateFromBuffer(nullptr, 100, &path), 0u);
}

}  // namespace
