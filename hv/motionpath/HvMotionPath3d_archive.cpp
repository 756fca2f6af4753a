// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The archive of a motion path.

#include <hv/foundation/archive_envelope.h>
#include <hv/motionpath/HvMotionPath3d.h>
#include <hv/motionpath/internal/HvMotionPath3dImpl.h>

#include <limits>
#include <new>

namespace {

/// Bytes of the length that stands before a body; it counts what follows it.
/// Bytes of the version, a reserved number and the number of points.
constexpr unsigned int kHeaderSize = 12;
/// Bytes behind the flags, which no reader counts.
constexpr unsigned int kTrailerSize = 4;
/// Bytes that points and nodes may take, so that the size of the archive fits 32 bits.
constexpr std::uint64_t kMostContent =
    std::numeric_limits<unsigned int>::max() - kHvArchiveLengthSize - kHeaderSize - kTrailerSize;

// Versions. Each reader takes those from its own to the next one; what is above the newest is read
// as the newest.

constexpr std::uint32_t kFirstVersion = 257;        ///< no tangents
constexpr std::uint32_t kVersionWithSpacing = 258;  ///< a byte for each node that means nothing now
constexpr std::uint32_t kVersionWithTangents = 259;
constexpr std::uint32_t kNewestVersion = kVersionWithTangents;

/// Bytes of all points and nodes in a version.
std::uint64_t ContentSize(unsigned int points, std::uint32_t version)
{
    if (points == 0) {
        return 0;
    }
    constexpr std::uint64_t kPoint = 24;
    constexpr std::uint64_t kTimeAndFlags = 9;
    std::uint64_t node = kTimeAndFlags;
    if (version == kVersionWithSpacing) {
        node += 1;
    } else if (version >= kVersionWithTangents) {
        node += 2;
    }
    return kPoint * points + node * (points / 3 + 1);
}

HvPoint3<double> ReadPoint(HvByteReader& body)
{
    double const x = body.ReadFiniteDouble();
    double const y = body.ReadFiniteDouble();
    double const z = body.ReadFiniteDouble();
    return {x, y, z};
}

/// A byte that is no rule becomes the rule that a new node has.
HvMotionPath3d::TangentInfo ReadTangent(HvByteReader& body)
{
    auto const info = static_cast<HvMotionPath3d::TangentInfo>(body.ReadUInt8());
    return HvTwoSidedTangent::IsValid(info) != 0 ? info : HvMotionPath3d::TangentSmooth;
}

}  // namespace

unsigned int HvMotionPath3d_GetBufferBodyLengthSize()
{
    return kHvArchiveLengthSize;
}

// The implementation.

unsigned int HvMotionPath3dImpl::GetBufferSize() const
{
    std::uint64_t const content = ContentSize(NumPoints(), kNewestVersion);
    if (content > kMostContent) {
        throw std::bad_alloc();
    }
    return kHvArchiveLengthSize + kHeaderSize + static_cast<unsigned int>(content) + kTrailerSize;
}

void HvMotionPath3dImpl::Write(HvByteWriter& writer) const
{
    writer.WriteUInt32(GetBufferSize() - kHvArchiveLengthSize);
    writer.WriteUInt32(kNewestVersion);
    writer.WriteUInt32(0);
    writer.WriteUInt32(NumPoints());
    for (Point const& p : points) {
        writer.WriteFiniteDouble(p.x);
        writer.WriteFiniteDouble(p.y);
        writer.WriteFiniteDouble(p.z);
    }
    for (double const t : times) {
        writer.WriteFiniteDouble(t);
    }
    for (HvTwoSidedTangent const& tangent : tangents) {
        writer.WriteUInt8(static_cast<std::uint8_t>(tangent.left));
        writer.WriteUInt8(static_cast<std::uint8_t>(tangent.right));
    }
    writer.WriteBytes(nodeFlags.Data(), nodeFlags.Size());
    writer.WriteUInt32(0);
}

std::unique_ptr<HvMotionPath3dImpl> HvMotionPath3dImpl::Read(HvByteReader& body)
{
    std::uint32_t const version = body.ReadUInt32();
    if (version < kFirstVersion) {
        body.Fail("there is no such version of it", sizeof version);
    }
    body.Skip(4);
    std::uint32_t const count = body.ReadUInt32();
    std::uint64_t const size = ContentSize(count, version);
    if (count != 0 && count % 3 != 1) {
        body.Fail("no path has so many points", sizeof count);
    } else if (size > kMostContent) {
        body.Fail("its points are more than an archive can have", sizeof count);
    }
    if (!body.Holds(size, 1)) {
        return nullptr;
    }
    auto read = std::make_unique<HvMotionPath3dImpl>();
    if (count != 0) {
        read->ReadPoints(body, count);
        read->ReadNodes(body, count / 3 + 1, version);
    }
    return read;
}

void HvMotionPath3dImpl::ReadPoints(HvByteReader& body, unsigned int count)
{
    points.Resize(count);
    for (Point& p : EditPoints()) {
        p = ReadPoint(body);
    }
    clientData.Resize(count);
    std::fill(clientData.begin(), clientData.end(), nullptr);
}

void HvMotionPath3dImpl::ReadNodes(HvByteReader& body, unsigned int count, std::uint32_t version)
{
    times.Resize(count);
    for (double& t : times) {
        t = body.ReadFiniteDouble();
    }
    tangents.Resize(count);
    for (HvTwoSidedTangent& tangent : tangents) {
        tangent.left = tangent.right = HvMotionPath3d::TangentLinear;
        if (version >= kVersionWithTangents) {
            tangent.left = ReadTangent(body);
            tangent.right = ReadTangent(body);
        }
    }
    if (version == kVersionWithSpacing) {
        body.Skip(count);
    }
    nodeFlags.Resize(count);
    for (std::uint8_t& flags : nodeFlags) {
        flags = body.ReadUInt8();
    }
}

// The path.

unsigned int HvMotionPath3d::GetBufferSize() const
{
    CXQCriticalSectionLock const lock(section);
    return impl->GetBufferSize();
}

unsigned int HvMotionPath3d::WriteToBuffer(void* buffer) const
{
    CXQCriticalSectionLock const lock(section);
    HvByteWriter writer(buffer);
    impl->Write(writer);
    return static_cast<unsigned int>(writer.Used());
}

unsigned int HvMotionPath3d::ReadFromBufferBody(void const* body)
{
    if (body == nullptr) {
        return 0;
    }
    HvByteReader reader = HvByteReader::Unbounded(body);
    return ReadArchiveBody(reader);
}

unsigned int HvMotionPath3d::ReadArchiveBody(HvByteReader& body)
{
    std::size_t const start = body.Used();
    std::unique_ptr<HvMotionPath3dImpl> read = HvMotionPath3dImpl::Read(body);
    if (read == nullptr) {
        return 0;
    }
    CXQCriticalSectionLock const lock(section);
    impl.swap(read);
    return static_cast<unsigned int>(body.Used() - start) + kHvArchiveLengthSize;
}

HvMotionPath3d* HvMotionPath3d_CreateFromBufferBody(void const* body, unsigned int& consumed)
{
    consumed = 0;
    try {
        auto path = std::make_unique<HvMotionPath3d>();
        consumed = path->ReadFromBufferBody(body);
        return consumed == 0 ? nullptr : path.release();
    } catch (...) {
        return nullptr;
    }
}

unsigned int HvMotionPath3d_CreateFromBuffer(void const* buffer, std::size_t size,
                                             HvMotionPath3d** path)
{
    HvArchiveFault unasked;
    return HvMotionPath3d_CreateFromBuffer(buffer, size, path, unasked);
}

unsigned int HvMotionPath3d_CreateFromBuffer(void const* buffer, std::size_t size,
                                             HvMotionPath3d** path, HvArchiveFault& fault)
{
    return HvArchive_CreateBounded(buffer, size, path, fault, [path](HvByteReader& body) {
        auto read = std::make_unique<HvMotionPath3d>();
        unsigned int const used = read->ReadArchiveBody(body);
        if (used != 0) {
            *path = read.release();
        }
        return used;
    });
}
