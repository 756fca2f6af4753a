// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What the archives of all kinds of curve have in common: sections, words of keys, user data,
// sizes.

#ifndef HV_FCURVE_INTERNAL_CURVE_ARCHIVE_H
#define HV_FCURVE_INTERNAL_CURVE_ARCHIVE_H

#include <hv/fcurve/CFCKeyConstraint.h>
#include <hv/fcurve/HvBaseFCurve.h>
#include <hv/foundation/byte_codec.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>

/// Bytes of the length that stands before a body; it counts what follows it.
constexpr unsigned int kCurveArchiveLengthSize = 4;

/// What a reader says of a version or kind that is not one of its own.
constexpr char const* kCurveArchiveNoSuchVersion = "its kind of curve has no such version";
constexpr char const* kCurveArchiveOtherKind = "it is a curve of another kind";
constexpr char const* kCurveArchiveNoSuchKind = "there is no such kind of curve";

/// The tag that opens a section. Stored in files: add at the end, never renumber.
enum class HvCurveSection : std::uint32_t {
    Words = 0x101,           ///< standard: a constraint word for each key
    RawSettings = 0x102,     ///< raw: extrapolation, read only, user data
    StdSettings = 0x103,     ///< standard: extrapolation, read only, private bytes, user data
    DefaultTangent = 0x106,  ///< standard: default Bezier tangent constraint
    TimeCurve = 0x108        ///< standard and raw: the time curve flag
};

inline void HvCurveArchive_WriteTag(HvByteWriter& writer, HvCurveSection section)
{
    writer.WriteUInt32(static_cast<std::uint32_t>(section));
}

/// Reads a tag; the reader fails when it is another one.
inline void HvCurveArchive_ReadTag(HvByteReader& reader, HvCurveSection section)
{
    if (reader.ReadUInt32() != static_cast<std::uint32_t>(section)) {
        reader.Fail("the tag of a section is another one", sizeof(std::uint32_t));
    }
}

/// A flag that is set by 1 alone, not by any number but 0.
inline unsigned char HvCurveArchive_ReadStrictFlag(HvByteReader& reader)
{
    return reader.ReadUInt8() == 1 ? 1 : 0;
}

/// A flag that is set by any number but 0.
inline unsigned char HvCurveArchive_ReadFlag(HvByteReader& reader)
{
    return reader.ReadUInt8() != 0 ? 1 : 0;
}

/// Calls `read(records, i)` for each of the next `count` records of `each` bytes; the reader fails,
/// and nothing is called, when they are not all there. Their bounds are tested here once, so that
/// what `read` takes compiles to plain loads.
template <class Read>
void HvCurveArchive_ReadRecords(HvByteReader& reader, unsigned int count, std::size_t each,
                                Read read)
{
    unsigned char const* const bytes =
        reader.Holds(count, each) ? reader.ReadBytes(count * each) : nullptr;
    if (bytes == nullptr) {
        return;
    }
    HvByteReader records = HvByteReader::Unbounded(bytes);
    for (unsigned int i = 0; i < count; ++i) {
        read(records, i);
    }
}

// Which keys are selected is a matter of the session, not of the file.

inline void HvCurveArchive_WriteWord(HvByteWriter& writer, unsigned short word)
{
    writer.WriteUInt16(word & static_cast<unsigned short>(~CFCKeyConstraint::kSelected));
}

inline unsigned short HvCurveArchive_ReadWord(HvByteReader& reader)
{
    return reader.ReadUInt16() & static_cast<unsigned short>(~CFCKeyConstraint::kSelected);
}

/// Writes the user-data block behind what `writer` has written to `buffer`.
inline void HvCurveArchive_WriteUserData(HvByteWriter& writer, void* buffer,
                                         HvBaseFCurve const& curve)
{
    writer.Skip(curve.WriteUserDataToBuffer(static_cast<unsigned char*>(buffer) + writer.Used()));
}

/// Reads the user-data block into `curve`. A block of no length, or of a version that is not
/// known, is stepped over; the reader fails on one that does not hold what it claims.
inline void HvCurveArchive_ReadUserData(HvByteReader& reader, HvBaseFCurve& curve)
{
    std::uint32_t const length = reader.ReadUInt32();
    if (length == 0) {
        return;
    }
    HvByteReader block = reader.ReadPart(length);
    curve.ReadUserDataBlockBody(block);
    if (block.Failed()) {
        reader.FailAs(block);
    }
}

/// Bytes of an archive; throws std::bad_alloc when its length would not fit its 32 bits.
inline unsigned int HvCurveArchive_Size(unsigned int fixed, unsigned int perKey,
                                        unsigned int numKeys, unsigned int userData)
{
    std::uint64_t const size =
        std::uint64_t(fixed) + std::uint64_t(perKey) * numKeys + std::uint64_t(userData);
    if (size > std::numeric_limits<unsigned int>::max()) {
        throw std::bad_alloc();
    }
    return static_cast<unsigned int>(size);
}

/// What a reader function returns: the bytes used since `start`; 0, with `ok` false, when the
/// reader has failed.
inline unsigned int HvCurveArchive_Used(HvByteReader const& reader, std::size_t start, bool& ok)
{
    ok = ok && !reader.Failed();
    return ok ? static_cast<unsigned int>(reader.Used() - start) : 0;
}

#endif
