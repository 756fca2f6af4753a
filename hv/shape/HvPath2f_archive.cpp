// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Paths in archives. A path of n points, behind the length that all shapes have in front:
//
//     offset   size
//     0        4     kind, 1
//     4        4     n
//     8        8 n   the points, x and y of each
//     8 + 8 n  n     the tags, only their roles
//     8 + 9 n  4     whether the last subpath is open

#include <hv/shape/HvPath2f.h>

#include <hv/shape/HvShapeLock.h>
#include <hv/shape/internal/HvPathTags.h>
#include <hv/shape/internal/shape_archive.h>

#include <cstring>
#include <limits>
#include <new>

namespace {

constexpr unsigned int kBytesPerPoint = 9;
constexpr unsigned int kBytesPerPath = 16;

// The most points of which an archive can tell its own length in 32 bits.
constexpr unsigned int kMostPoints =
    (std::numeric_limits<unsigned int>::max() - kBytesPerPath) / kBytesPerPoint;

static_assert(sizeof(HvPoint2<float>) == 8, "points are copied as they stand in memory");

// Where the parts of a body stand.
struct PathBytes {
    unsigned int count;
    unsigned char const* points;
    unsigned char const* tags;
    std::int32_t lastSubpathOpen;
};

// Finds the parts of a body; false when it is not that of a path, or not all there, and the reader
// then fails.
bool FindPathBytes(HvByteReader& reader, PathBytes& bytes)
{
    if (!HvShapeArchive_ReadKind(reader, HvShape2f::Path)) {
        reader.Fail("its kind is not that of a path", kHvShapeKindBytes);
        return false;
    }
    bytes.count = reader.ReadUInt32();
    if (bytes.count > kMostPoints) {
        reader.Fail("it has more points than an archive can hold", sizeof bytes.count);
    }
    if (!reader.Holds(bytes.count, kBytesPerPoint)) {
        return false;
    }
    bytes.points = reader.ReadBytes(sizeof(HvPoint2<float>) * bytes.count);
    bytes.tags = reader.ReadBytes(bytes.count);
    bytes.lastSubpathOpen = reader.ReadInt32();
    return !reader.Failed();
}

}  // namespace

unsigned int HvPath2f::GetBufferSize() const
{
    HvShapeLock const lock(*this);
    unsigned int const count = points.Size();
    return count <= kMostPoints ? kBytesPerPoint * count + kBytesPerPath : 0;
}

unsigned int HvPath2f::WriteToBuffer(void* buffer) const
{
    HvShapeLock const lock(*this);
    unsigned int const size = HvPath2f::GetBufferSize();
    if (size == 0) {
        return 0;
    }
    HvByteWriter writer = HvShapeArchive_Begin(buffer, size, Path);
    writer.WriteUInt32(points.Size());
    writer.WriteBytes(points.Data(), std::size_t{8} * points.Size());
    for (unsigned char const tag : tags) {
        writer.WriteUInt8(static_cast<std::uint8_t>(tag & kHvPathRoleMask));
    }
    writer.WriteInt32(lastSubpathOpen);
    return size;
}

unsigned int HvPath2f::ReadFromBufferBody(void const* body)
{
    HvByteReader reader = HvByteReader::Unbounded(body);
    return ReadBody(reader, true);
}

unsigned int HvPath2f::ReadArchiveBody(HvByteReader& body)
{
    return ReadBody(body, false);
}

unsigned int HvPath2f::ReadBody(HvByteReader& reader, bool isVouched)
{
    HvShapeLock const lock(*this);
    PathBytes bytes;
    if (!FindPathBytes(reader, bytes)) {
        return 0;
    }
    if (!isVouched && !HvPathTags(bytes.tags, bytes.count).AreWellFormed()) {
        reader.Fail("the roles of its points make up no segments",
                    bytes.count + sizeof bytes.lastSubpathOpen);
        return 0;
    }
    try {
        HvUByteArray newTags(bytes.tags, bytes.count);
        for (unsigned char& tag : newTags) {
            tag &= kHvPathRoleMask;
        }
        HvPoint2fArray newPoints(bytes.count);
        newPoints.Resize(bytes.count);
        // The bytes stand at any address, so they are no points yet.
        std::memcpy(static_cast<void*>(newPoints.Data()), bytes.points,
                    sizeof(HvPoint2<float>) * bytes.count);
        points.Swap(newPoints);
        tags.Swap(newTags);
        lastSubpathOpen = bytes.lastSubpathOpen;
    } catch (std::bad_alloc const&) {
        points.Chop(0);
        tags.Chop(0);
        lastSubpathOpen = 0;
        reader.Fail("there is no memory for its points");
        return 0;
    }
    return kBytesPerPoint * bytes.count + kBytesPerPath - kHvShapeLengthBytes;
}
