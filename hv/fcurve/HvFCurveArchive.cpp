// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Curves from their archives: the kind decides which curve is made, and that reads itself.

#include <hv/fcurve/HvBooleanFCurve.h>
#include <hv/fcurve/HvFCurveArchive.h>
#include <hv/fcurve/HvIntegerFCurve.h>
#include <hv/fcurve/HvQuatFCurve.h>
#include <hv/fcurve/HvRawFCurve.h>
#include <hv/fcurve/HvStdFCurve.h>
#include <hv/fcurve/internal/curve_archive.h>
#include <hv/foundation/archive_envelope.h>

#include <memory>

namespace {

/// Versions below this one have no kind behind them.
constexpr std::uint32_t kFirstVersionWithKind = 256;

/// The kind of a body; 0, with `body` failed, when it has none.
int ReadKind(HvByteReader& body)
{
    std::uint32_t const version = body.ReadUInt32();
    if (body.Failed()) {
        return 0;
    }
    if (version < kFirstVersionWithKind) {
        return HvBaseFCurve::Standard;
    }
    std::uint32_t const kind = body.ReadUInt32();
    switch (kind) {
    case HvBaseFCurve::Boolean:
    case HvBaseFCurve::Integer:
    case HvBaseFCurve::Standard:
    case HvBaseFCurve::Raw:
    case HvBaseFCurve::Quaternion:
        return static_cast<int>(kind);
    default:
        body.Fail(kCurveArchiveNoSuchKind, sizeof kind);
        return 0;
    }
}

template <class Curve>
unsigned int ReadInto(std::unique_ptr<Curve> read, HvByteReader& body, HvBaseFCurve** curve)
{
    unsigned int const used = read->ReadArchiveBody(body);
    if (used != 0) {
        *curve = read.release();
    }
    return used;
}

unsigned int Create(HvByteReader& body, HvBaseFCurve** curve)
{
    HvByteReader ahead = body;
    switch (ReadKind(ahead)) {
    case HvBaseFCurve::Boolean:
        return ReadInto(std::make_unique<HvBooleanFCurve>(1.0), body, curve);
    case HvBaseFCurve::Integer:
        return ReadInto(std::make_unique<HvIntegerFCurve>(0.0), body, curve);
    case HvBaseFCurve::Standard:
        return ReadInto(std::make_unique<HvStdFCurve>(0.0, HvBaseFCurve::CubicSegment), body,
                        curve);
    case HvBaseFCurve::Raw:
        return ReadInto(std::make_unique<HvRawFCurve>(0.0), body, curve);
    case HvBaseFCurve::Quaternion:
        return ReadInto(std::make_unique<HvQuatFCurve>(0u), body, curve);
    default:
        body.FailAs(ahead);
        return 0;
    }
}

}  // namespace

unsigned int HvBaseFCurve_GetBufferBodyLengthSize()
{
    return kHvArchiveLengthSize;
}

int HvBaseFCurve_GetKindFromBufferBody(void const* body)
{
    if (body == nullptr) {
        return 0;
    }
    HvByteReader reader = HvByteReader::Unbounded(body);
    return ReadKind(reader);
}

unsigned int HvBaseFCurve_CreateFromBufferBody(void const* body, HvBaseFCurve** curve)
{
    if (body == nullptr || curve == nullptr) {
        return 0;
    }
    HvByteReader reader = HvByteReader::Unbounded(body);
    return Create(reader, curve);
}

unsigned int HvBaseFCurve_CreateFromBuffer(void const* buffer, std::size_t size,
                                           HvBaseFCurve** curve)
{
    HvArchiveFault unasked;
    return HvBaseFCurve_CreateFromBuffer(buffer, size, curve, unasked);
}

unsigned int HvBaseFCurve_CreateFromBuffer(void const* buffer, std::size_t size,
                                           HvBaseFCurve** curve, HvArchiveFault& fault)
{
    return HvArchive_CreateBounded(buffer, size, curve, fault,
                                   [curve](HvByteReader& body) { return Create(body, curve); });
}
