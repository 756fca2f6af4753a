// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Bodies of standard curves of every version, built by hand.

#ifndef TESTS_FCURVE_STD_ARCHIVE_BODIES_H
#define TESTS_FCURVE_STD_ARCHIVE_BODIES_H

#include <tests/fcurve/archive_bytes.h>

/// Every version that a curve was ever saved with.
constexpr unsigned int kStdVersions[] = {1, 256, 257, 258, 259, 260, 261, 262, 263, 264, 265, 266};

/// A key as the file has it: parameter, values, handles, then kind, word and private bytes.
struct FileKey {
    double numbers[7];
    unsigned int kind;
    unsigned int word;
    unsigned int private1;
    unsigned int private2;
};

/// Fields of a body that tests vary.
struct FileFields {
    unsigned int extrapolation = 4;
    unsigned int readOnly = 1;
    unsigned int defaultTangent = 1;
    unsigned int timeCurve = 0;
};

/// The body of a version, each part there from the version on that brought it.
inline ArchiveBytes StdBody(unsigned int version, std::vector<FileKey> const& keys,
                            FileFields const& fields = {})
{
    auto const numKeys = static_cast<unsigned int>(keys.size());
    ArchiveBytes body;
    body.U32(version);
    if (version >= 256) {
        body.U32(20);
    }
    body.F64(5.5);
    if (version >= 256) {
        body.F64(-3).F64(900);
    }
    body.U32(2).U32(numKeys);
    for (FileKey const& key : keys) {
        for (double const number : key.numbers) {
            body.F64(number);
        }
        body.U8(key.kind).Raw({0, 0, 0});
        if (version == 1) {
            body.U32(0);
        }
    }
    if (version >= 257) {
        body.U32(0x101);
        for (FileKey const& key : keys) {
            version <= 260 ? body.U8(key.word & 0xFF) : body.U16(key.word);
        }
    }
    if (version >= 259) {
        body.U32(0x103).U8(fields.extrapolation).U8(fields.readOnly);
        for (FileKey const& key : keys) {
            body.U8(key.private1).U8(key.private2);
        }
        body.NoUserData();
    }
    if (version >= 262) {
        body.U32(0x106).U8(fields.defaultTangent);
    }
    if (version >= 264) {
        body.U32(0x108).U8(fields.timeCurve);
    }
    return body;
}

/// Keys in which no migration finds anything to do: the outer handles have a length, the segment is
/// valid, and no key is automatic.
inline std::vector<FileKey> PlainKeys()
{
    return {{{1, 10, 11, 0.25, 9, 1.25, 12}, 3, 0x0042, 0xA1, 0xA2},
            {{2, 20, 21, 1.75, 19, 2.5, 22}, 1, 0x0207, 0xB1, 0xB2}};
}

/// The archive that a curve of a newest body writes: four bytes more than the body, not written.
inline Bytes NewestStdArchive(ArchiveBytes body)
{
    return body.U32(0xCDCDCDCDu).Buffer();
}

#endif
