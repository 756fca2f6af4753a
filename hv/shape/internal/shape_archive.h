// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// How each class of shape begins its archive, and how points stand in it.

#ifndef HV_SHAPE_INTERNAL_SHAPE_ARCHIVE_H
#define HV_SHAPE_INTERNAL_SHAPE_ARCHIVE_H

#include <hv/foundation/HvPoint2.h>
#include <hv/foundation/archive_envelope.h>
#include <hv/shape/HvShape2f.h>

#include <cstdint>
#include <cstring>

/// The length in front of a body.
constexpr unsigned int kHvShapeLengthBytes = kHvArchiveLengthSize;
/// The kind that a body begins with, and the zeros behind it.
constexpr unsigned int kHvShapeKindBytes = 4;
/// A point: two coordinates of four bytes.
constexpr unsigned int kHvShapePointBytes = 8;

/// Writes the length, the kind and the zeros of a shape of `bufferSize` bytes; the class's data
/// follow through the writer that is returned.
inline HvByteWriter HvShapeArchive_Begin(void* buffer, unsigned int bufferSize,
                                         HvShape2f::Kind kind)
{
    HvByteWriter writer(buffer);
    writer.WriteUInt32(bufferSize - kHvShapeLengthBytes);
    writer.WriteUInt32(static_cast<std::uint32_t>(kind));
    return writer;
}

/// Steps over the kind at the start of a body; whether it is `kind`. The kind has two bytes there,
/// and what the two behind it hold does not matter.
inline bool HvShapeArchive_ReadKind(HvByteReader& body, HvShape2f::Kind kind)
{
    bool const isKind = body.ReadUInt16() == kind;
    body.Skip(2);
    return isKind && !body.Failed();
}

// Coordinates are kept to the bit: a shape that holds a number that is not finite is read back as
// it was.

inline void HvShapeArchive_WriteCoordinate(HvByteWriter& writer, float value)
{
    std::uint32_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    writer.WriteUInt32(bits);
}

inline float HvShapeArchive_ReadCoordinate(HvByteReader& reader)
{
    std::uint32_t const bits = reader.ReadUInt32();
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

inline void HvShapeArchive_WritePoint(HvByteWriter& writer, HvPoint2<float> const& point)
{
    HvShapeArchive_WriteCoordinate(writer, point.x);
    HvShapeArchive_WriteCoordinate(writer, point.y);
}

inline HvPoint2<float> HvShapeArchive_ReadPoint(HvByteReader& reader)
{
    float const x = HvShapeArchive_ReadCoordinate(reader);
    float const y = HvShapeArchive_ReadCoordinate(reader);
    return HvPoint2<float>(x, y);
}

#endif
