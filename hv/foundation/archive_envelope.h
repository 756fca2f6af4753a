// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What stands around the body of every archive: its length, in four bytes.

#ifndef HV_FOUNDATION_ARCHIVE_ENVELOPE_H
#define HV_FOUNDATION_ARCHIVE_ENVELOPE_H

#include <hv/foundation/HvArchiveFault.h>
#include <hv/foundation/byte_codec.h>

#include <cstddef>
#include <cstdint>
#include <limits>

/// Bytes of the length that stands before a body; it counts what follows it.
constexpr unsigned int kHvArchiveLengthSize = 4;

/// Reads an archive that may be damaged or hostile: calls `unsigned int readBody(HvByteReader&)`
/// with a reader that ends where the length says, and not beyond `size`.
///
/// @param buffer    `size` bytes, from the length on; there may be more than the archive has.
/// @param fault     where and why the bytes were refused; untouched when the reader did not fail.
/// @param readBody  makes the object and returns the bytes used; 0, with the reader failed, when it
///                  refuses. A reader that comes to it failed gives nothing.
/// @return          bytes of the archive, its length included; 0 when it is refused.
template <class ReadBody>
unsigned int HvArchive_ReadBounded(void const* buffer, std::size_t size, HvArchiveFault& fault,
                                   ReadBody readBody)
{
    HvByteReader archive(buffer, size);
    std::uint32_t const length = archive.ReadUInt32();
    if (length > std::numeric_limits<unsigned int>::max() - kHvArchiveLengthSize) {
        // Nobody writes one, and its size could not be told.
        archive.Fail("its length is beyond what an archive can have", sizeof length);
    }
    HvByteReader body = archive.ReadPart(length);
    unsigned int const used = readBody(body);
    if (body.Failed()) {
        fault.place = body.FaultPlace();
        fault.reason = body.Fault();
    }
    return used == 0 ? 0 : length + kHvArchiveLengthSize;
}

/// The same for an archive that makes an object: `*out` is what `readBody` stores there, null when
/// it refuses. Without a buffer, or without an `out`, nothing is read.
template <class Object, class ReadBody>
unsigned int HvArchive_CreateBounded(void const* buffer, std::size_t size, Object** out,
                                     HvArchiveFault& fault, ReadBody readBody)
{
    if (out == nullptr) {
        return 0;
    }
    *out = nullptr;
    return buffer == nullptr ? 0 : HvArchive_ReadBounded(buffer, size, fault, readBody);
}

#endif
