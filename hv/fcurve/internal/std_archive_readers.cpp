// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The archive of the standard curve, read: the layout of every version.
//
//     1            no kind, no clamps, keys of 64 bytes; nothing behind them
//     256          kind and clamps, keys of 60 bytes
//     257 to 260   + section of constraint words, one byte each
//     259          + section of settings and user data
//     261          words of two bytes
//     262          + section of the default Bezier tangent constraint
//     264          + section of the time curve flag
//
// Versions between these and after them changed what a curve does with the same bytes; see
// std_archive_migrations.cpp. A version above the newest is read as the newest.

#include <hv/fcurve/internal/curve_archive.h>
#include <hv/fcurve/internal/curve_archive_readers.h>

namespace {

constexpr std::uint32_t kOldestVersion = 1;
constexpr std::uint32_t kFirstVersionWithKind = 256;
constexpr std::uint32_t kFirstVersionWithWords = 257;
constexpr std::uint32_t kFirstVersionWithSettings = 259;
constexpr std::uint32_t kFirstVersionWithTwoByteWords = 261;
constexpr std::uint32_t kFirstVersionWithDefaultTangent = 262;
constexpr std::uint32_t kFirstVersionWithTimeCurve = 264;

constexpr std::size_t kKeySize = 60;
constexpr std::size_t kKeyPadding = 3;
constexpr std::size_t kOldestKeySize = 64;

/// Fills a key: what the file does not tell is as in a new one.
void ReadKey(HvByteReader& body, CFCStdKey& key)
{
    key.parameter = body.ReadFiniteDouble();
    key.leftValue = body.ReadFiniteDouble();
    key.rightValue = body.ReadFiniteDouble();
    key.leftHandle.x = body.ReadFiniteDouble();
    key.leftHandle.y = body.ReadFiniteDouble();
    key.rightHandle.x = body.ReadFiniteDouble();
    key.rightHandle.y = body.ReadFiniteDouble();
    key.segmentKind = body.ReadUInt8();
    body.Skip(kKeyPadding);
    key.constraints.word = CFCKeyConstraint::kTangentContinuityLocked;
}

/// Reads count and keys. There is no room made for keys before it is sure that their bytes are
/// there.
template <class Read>
void ReadKeys(HvByteReader& body, HvStdFCurveImpl& impl, std::size_t keySize, Read read)
{
    std::uint32_t const count = body.ReadUInt32();
    if (body.Holds(count, keySize)) {
        impl.keys.Resize(count);
        HvCurveArchive_ReadRecords(body, count, keySize, [&](HvByteReader& keys, unsigned int i) {
            read(keys, impl.keys[i]);
        });
    }
}

/// The layout of version 1, behind the version.
void ReadOldest(HvByteReader& body, HvStdFCurveImpl& impl)
{
    impl.valueWhenNoKeys = body.ReadFiniteDouble();
    impl.defaultSegmentKind = body.ReadInt32();
    std::uint32_t behindKeys = 0;
    ReadKeys(body, impl, kOldestKeySize, [&](HvByteReader& keys, CFCStdKey& key) {
        ReadKey(keys, key);
        behindKeys |= keys.ReadUInt32();
    });
    if (behindKeys != 0) {
        body.Fail("a key of version 1 does not end with zeros");
    }
}

/// The fields and keys of every version from 256 on, behind the version.
void ReadFieldsAndKeys(HvByteReader& body, HvStdFCurveImpl& impl)
{
    if (body.ReadUInt32() != HvBaseFCurve::Standard) {
        body.Fail(kCurveArchiveOtherKind, sizeof(std::uint32_t));
        return;
    }
    impl.valueWhenNoKeys = body.ReadFiniteDouble();
    impl.lowerClamp = body.ReadFiniteDouble();
    impl.upperClamp = body.ReadFiniteDouble();
    impl.defaultSegmentKind = body.ReadInt32();
    ReadKeys(body, impl, kKeySize, &ReadKey);
}

/// The words of versions 257 to 260.
void ReadOneByteWords(HvByteReader& body, HvStdFCurveImpl& impl)
{
    HvCurveArchive_ReadTag(body, HvCurveSection::Words);
    HvCurveArchive_ReadRecords(body, impl.NumKeys(), 1, [&](HvByteReader& words, unsigned int i) {
        impl.keys[i].constraints.word = words.ReadUInt8();
    });
}

void ReadSections(HvByteReader& body, std::uint32_t version, HvStdFCurveImpl& impl,
                  HvStdFCurve& curve, bool& ok)
{
    if (version >= kFirstVersionWithTwoByteWords) {
        SetFromHvStdFCurve_010221_Buffer(body, impl, curve, ok);
    } else if (version >= kFirstVersionWithWords) {
        ReadOneByteWords(body, impl);
    }
    if (version >= kFirstVersionWithSettings) {
        SetFromHvStdFCurve_980508_Buffer(body, impl, curve, ok);
    }
    if (version >= kFirstVersionWithDefaultTangent) {
        SetFromHvStdFCurve_020305_Buffer(body, impl, curve, ok);
    }
    if (version >= kFirstVersionWithTimeCurve) {
        SetFromHvStdFCurve_050118_Buffer(body, impl, curve, ok);
    }
}

}  // namespace

unsigned int SetFromHvStdFCurve_980508_Buffer(HvByteReader& body, HvStdFCurveImpl& impl,
                                              HvStdFCurve& curve, bool& ok)
{
    std::size_t const start = body.Used();
    HvCurveArchive_ReadTag(body, HvCurveSection::StdSettings);
    impl.extrapolation = body.ReadUInt8();
    impl.readOnly = HvCurveArchive_ReadFlag(body);
    HvCurveArchive_ReadRecords(body, impl.NumKeys(), 2, [&](HvByteReader& bytes, unsigned int i) {
        impl.keys[i].privateByte1 = bytes.ReadUInt8();
        impl.keys[i].privateByte2 = bytes.ReadUInt8();
    });
    HvCurveArchive_ReadUserData(body, curve);
    return HvCurveArchive_Used(body, start, ok);
}

unsigned int SetFromHvStdFCurve_010221_Buffer(HvByteReader& body, HvStdFCurveImpl& impl,
                                              HvStdFCurve&, bool& ok)
{
    std::size_t const start = body.Used();
    HvCurveArchive_ReadTag(body, HvCurveSection::Words);
    HvCurveArchive_ReadRecords(body, impl.NumKeys(), 2, [&](HvByteReader& words, unsigned int i) {
        impl.keys[i].constraints.word = HvCurveArchive_ReadWord(words);
    });
    return HvCurveArchive_Used(body, start, ok);
}

unsigned int SetFromHvStdFCurve_020305_Buffer(HvByteReader& body, HvStdFCurveImpl& impl,
                                              HvStdFCurve&, bool& ok)
{
    std::size_t const start = body.Used();
    HvCurveArchive_ReadTag(body, HvCurveSection::DefaultTangent);
    impl.defaultBezierTangentConstraint = HvCurveArchive_ReadStrictFlag(body);
    return HvCurveArchive_Used(body, start, ok);
}

unsigned int SetFromHvStdFCurve_050118_Buffer(HvByteReader& body, HvStdFCurveImpl& impl,
                                              HvStdFCurve&, bool& ok)
{
    std::size_t const start = body.Used();
    HvCurveArchive_ReadTag(body, HvCurveSection::TimeCurve);
    impl.timeCurve = HvCurveArchive_ReadStrictFlag(body);
    return HvCurveArchive_Used(body, start, ok);
}

unsigned int HvStdArchive_Read(HvByteReader& body, HvStdFCurveImpl& impl, HvStdFCurve& curve,
                               bool& ok)
{
    std::size_t const start = body.Used();
    std::uint32_t const version = body.ReadUInt32();
    if (version == kOldestVersion) {
        ReadOldest(body, impl);
        return HvCurveArchive_Used(body, start, ok);
    }
    if (version < kFirstVersionWithKind) {
        body.Fail(kCurveArchiveNoSuchVersion, sizeof version);
    }
    ReadFieldsAndKeys(body, impl);
    ReadSections(body, version, impl, curve, ok);
    unsigned int const used = HvCurveArchive_Used(body, start, ok);
    if (ok) {
        HvStdArchive_Migrate(impl, version);
    }
    return used;
}
