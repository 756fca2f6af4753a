// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The archive of the raw curve, read: the layout of every version.
//
//     256   fields, keys, constraint marker
//     258   + section of settings and user data
//     259   its fields and keys are the same bytes, read by a function of their own
//     264   + section of the time curve flag
//
// A version above the newest is read as the newest.

#include <hv/fcurve/internal/curve_archive.h>
#include <hv/fcurve/internal/curve_archive_readers.h>

namespace {

constexpr std::uint32_t kFirstVersion = 256;
constexpr std::uint32_t kFirstVersionWithSettings = 258;
constexpr std::uint32_t kFirstVersionWithOwnKeyReader = 259;
constexpr std::uint32_t kFirstVersionWithTimeCurve = 264;

constexpr std::size_t kKeySize = 16;
constexpr std::size_t kWordSize = 2;

/// Fields, keys and marker, behind the version.
void ReadFieldsAndKeys(HvByteReader& body, HvRawFCurveImpl& impl)
{
    if (body.ReadUInt32() != HvBaseFCurve::Raw) {
        body.Fail(kCurveArchiveOtherKind, sizeof(std::uint32_t));
        return;
    }
    impl.valueWhenNoKeys = body.ReadFiniteDouble();
    impl.lowerClamp = body.ReadFiniteDouble();
    impl.upperClamp = body.ReadFiniteDouble();
    std::uint32_t const count = body.ReadUInt32();
    if (!body.Holds(count, kKeySize)) {
        return;
    }
    impl.keys.Resize(count);
    HvCurveArchive_ReadRecords(body, count, kKeySize, [&](HvByteReader& keys, unsigned int i) {
        impl.keys[i].parameter = keys.ReadFiniteDouble();
        impl.keys[i].value = keys.ReadFiniteDouble();
    });
    // Raw keys keep no constraints: the words behind a marker are stepped over.
    if (body.ReadUInt32() != 0 && body.Holds(count, kWordSize)) {
        body.Skip(count * kWordSize);
    }
}

}  // namespace

unsigned int SetFromHvRawFCurve_010221_Buffer(HvByteReader& body, HvRawFCurveImpl& impl,
                                              HvRawFCurve&, bool& ok)
{
    std::size_t const start = body.Used();
    ReadFieldsAndKeys(body, impl);
    return HvCurveArchive_Used(body, start, ok);
}

unsigned int SetFromHvRawFCurve_980508_Buffer(HvByteReader& body, HvRawFCurveImpl& impl,
                                              HvRawFCurve& curve, bool& ok)
{
    std::size_t const start = body.Used();
    HvCurveArchive_ReadTag(body, HvCurveSection::RawSettings);
    impl.extrapolation = body.ReadUInt8();
    impl.readOnly = HvCurveArchive_ReadFlag(body);
    HvCurveArchive_ReadUserData(body, curve);
    return HvCurveArchive_Used(body, start, ok);
}

unsigned int SetFromHvRawFCurve_050118_Buffer(HvByteReader& body, HvRawFCurveImpl& impl,
                                              HvRawFCurve&, bool& ok)
{
    std::size_t const start = body.Used();
    HvCurveArchive_ReadTag(body, HvCurveSection::TimeCurve);
    impl.timeCurve = HvCurveArchive_ReadStrictFlag(body);
    return HvCurveArchive_Used(body, start, ok);
}

unsigned int HvRawArchive_Read(HvByteReader& body, HvRawFCurveImpl& impl, HvRawFCurve& curve,
                               bool& ok)
{
    std::size_t const start = body.Used();
    std::uint32_t const version = body.ReadUInt32();
    if (version < kFirstVersion) {
        body.Fail(kCurveArchiveNoSuchVersion, sizeof version);
    }
    if (version >= kFirstVersionWithOwnKeyReader) {
        SetFromHvRawFCurve_010221_Buffer(body, impl, curve, ok);
    } else {
        ReadFieldsAndKeys(body, impl);
    }
    if (version >= kFirstVersionWithSettings) {
        SetFromHvRawFCurve_980508_Buffer(body, impl, curve, ok);
    }
    if (version >= kFirstVersionWithTimeCurve) {
        SetFromHvRawFCurve_050118_Buffer(body, impl, curve, ok);
    }
    return HvCurveArchive_Used(body, start, ok);
}
