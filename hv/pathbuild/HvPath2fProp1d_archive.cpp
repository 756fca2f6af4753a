// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Paths with a property in archives. Behind the length that all shapes have in front:
//
//     offset   size
//     0        1      kind, 4
//     1        1      zero
//     2        2      version
//     4        4 + L  the archive of the path, length L and body
//     8 + L    4      the number of curves; for each of them:
//              4      its subpath's first point
//              4 + M  its archive, length M and body

#include <hv/pathbuild/HvPath2fProp1d.h>

#include <hv/fcurve/HvStdFCurve.h>
#include <hv/foundation/archive_envelope.h>
#include <hv/pathbuild/internal/prop_curves.h>
#include <hv/shape/HvShapeLock.h>

#include <limits>
#include <new>

namespace {

/// Curves are standard curves.
constexpr unsigned int kVersionOfStandardCurves = 0;
/// Curves are raw curves; so they are in all later versions.
constexpr unsigned int kVersionOfRawCurves = 0x0100;
constexpr unsigned int kNewestVersion = kVersionOfRawCurves;

/// Bytes beside path and curves: length, kind, version, number of curves.
constexpr unsigned int kBytesPerPath = 12;
/// Bytes beside each curve: its subpath.
constexpr unsigned int kBytesPerCurve = 4;
/// Bytes of the least that stands for a curve: its subpath and a length.
constexpr unsigned int kLeastCurveBytes = kBytesPerCurve + kHvArchiveLengthSize;

using Entry = std::unique_ptr<HvPropCurveData>;

Entry ReadRawCurve(HvByteReader& body, unsigned int start)
{
    auto entry = std::make_unique<HvPropCurveData>(start, HvRawFCurve(0.0, 0.0));
    return entry->curve.ReadArchiveBody(body) != 0 ? std::move(entry) : nullptr;
}

/// The raw curve that stands for an old standard curve: its keys with their right values, joined by
/// lines. Null for a curve that cannot be one: clamping values that cross, or a first key elsewhere
/// than at 0. A curve without keys becomes a single key of 0, as it always was read.
Entry RawFromStandard(HvStdFCurve const& standard, unsigned int start)
{
    HvBaseFCurve::FCurveInfo info{};
    info.mask = 0x36;  // value when no keys, number of keys, clamping values
    standard.GetFCurveInfo(&info);
    double parameter = 0.0;
    double left = 0.0;
    double right = 0.0;
    if (info.numKeys != 0) {
        standard.GetKeyParameter(0, parameter);
        standard.GetKeyValuesByIndex(0, left, right);
    }
    if (!(info.lowerClamp <= info.upperClamp) || parameter != 0.0) {
        return nullptr;
    }
    // The key at 0 sets the value when no keys, and then takes its own.
    auto entry = std::make_unique<HvPropCurveData>(start, HvRawFCurve(0.0, info.valueWhenNoKeys));
    HvRawFCurve& curve = entry->curve;
    curve.SetKeyValue(0.0, HvBaseFCurve::Right, right, 0.0);
    curve.SetClampingValues(info.lowerClamp, info.upperClamp);
    for (unsigned int key = 1; key < info.numKeys; ++key) {
        standard.GetKeyParameter(key, parameter);
        standard.GetKeyValuesByIndex(key, left, right);
        curve.AppendLinearSegment({parameter, right});
    }
    return entry;
}

/// Null, without a fault, for a curve that is dropped.
Entry ReadStandardCurve(HvByteReader& body, unsigned int start)
{
    HvStdFCurve standard(0.0, HvBaseFCurve::CubicSegment);
    return standard.ReadArchiveBody(body) != 0 ? RawFromStandard(standard, start) : nullptr;
}

}  // namespace

unsigned int HvPath2fProp1d::GetBufferSize() const
{
    HvShapeLock const lock(*this);
    unsigned int const sizeOfPath = HvPath2f::GetBufferSize();
    std::uint64_t size = std::uint64_t{sizeOfPath} + kBytesPerPath;
    HvDLListIter<HvPropCurveData> entries(propCurves);
    while (HvPropCurveData const* const entry = entries.Next()) {
        size += std::uint64_t{kBytesPerCurve} + entry->curve.GetBufferSize();
    }
    bool const fits = sizeOfPath != 0 && size <= std::numeric_limits<unsigned int>::max();
    return fits ? static_cast<unsigned int>(size) : 0;
}

unsigned int HvPath2fProp1d::WriteToBuffer(void* buffer) const
{
    HvShapeLock const lock(*this);
    unsigned int const size = HvPath2fProp1d::GetBufferSize();
    if (size == 0) {
        return 0;
    }
    auto* const bytes = static_cast<unsigned char*>(buffer);
    HvByteWriter writer(buffer);
    writer.WriteUInt32(size - kHvArchiveLengthSize);
    writer.WriteUInt16(static_cast<std::uint16_t>(PathProp1d));
    writer.WriteUInt16(static_cast<std::uint16_t>(kNewestVersion));
    writer.Skip(HvPath2f::WriteToBuffer(bytes + writer.Used()));
    writer.WriteUInt32(propCurves->Count());
    HvDLListIter<HvPropCurveData> entries(propCurves);
    while (HvPropCurveData const* const entry = entries.Next()) {
        writer.WriteUInt32(entry->subpathStart);
        writer.Skip(entry->curve.WriteToBuffer(bytes + writer.Used()));
    }
    return size;
}

unsigned int HvPath2fProp1d::ReadFromBufferBody(void const* body)
{
    if (body == nullptr) {
        return 0;
    }
    HvByteReader reader = HvByteReader::Unbounded(body);
    return ReadAside(reader, true);
}

unsigned int HvPath2fProp1d::ReadArchiveBody(HvByteReader& body)
{
    return ReadAside(body, false);
}

unsigned int HvPath2fProp1d::ReadAside(HvByteReader& body, bool isVouched)
{
    HvShapeLock const lock(*this);
    try {
        HvPath2fProp1d read(0u);
        unsigned int const used = read.ReadVersion(body, isVouched);
        if (used != 0) {
            TakeOver(read);
        }
        return used;
    } catch (std::bad_alloc const&) {
        body.Fail("there is no memory for it");
        return 0;
    }
}

// Reads into a path that is new. What is counted as read leaves out where each curve belongs.
unsigned int HvPath2fProp1d::ReadVersion(HvByteReader& body, bool isVouched)
{
    if (body.ReadUInt16() != PathProp1d) {
        body.Fail("its kind is not that of a path with a property", 2);
        return 0;
    }
    unsigned int const version = body.ReadUInt16();
    if (version != kVersionOfStandardCurves && version < kVersionOfRawCurves) {
        body.Fail("there is no such version of it", 2);
    }
    unsigned int const length = body.ReadUInt32();
    HvByteReader path = body.ReadPart(length);
    if (ReadBody(path, isVouched) == 0) {
        body.FailAs(path);
        return 0;
    }
    unsigned int const count = body.ReadUInt32();
    body.Holds(count, kLeastCurveBytes);
    unsigned int used = kBytesPerPath + length;
    for (unsigned int i = 0; i < count && !body.Failed(); ++i) {
        used += ReadCurve(body, version, isVouched);
    }
    return body.Failed() ? 0 : used;
}

// Reads one curve and returns how much that counts; fails the reader when it refuses.
unsigned int HvPath2fProp1d::ReadCurve(HvByteReader& body, unsigned int version, bool isVouched)
{
    unsigned int const start = body.ReadUInt32();
    HvPropCurves::Node const* const head = propCurves->Head();
    if (!isVouched && IsStartOfSubpath(start) == 0) {
        body.Fail("a curve belongs to no subpath", sizeof start);
    } else if (!isVouched && head != nullptr && head->previous->item->subpathStart >= start) {
        body.Fail("its curves are not in the order of their subpaths", sizeof start);
    }
    unsigned int const length = body.ReadUInt32();
    HvByteReader curve = body.ReadPart(length);
    Entry entry = version == kVersionOfStandardCurves ? ReadStandardCurve(curve, start)
                                                      : ReadRawCurve(curve, start);
    if (curve.Failed()) {
        body.FailAs(curve);
        return 0;
    }
    if (entry != nullptr) {
        HvPropCurves_Append(*propCurves, std::move(entry));
    }
    return kHvArchiveLengthSize + length;
}
