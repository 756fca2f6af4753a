// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The archive of the standard curve: its size, writing the newest version, reading every version.

#include <hv/fcurve/HvStdFCurve.h>
#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>
#include <hv/fcurve/internal/curve_archive.h>
#include <hv/fcurve/internal/curve_archive_readers.h>

namespace {

constexpr std::uint32_t kVersion = 266;
constexpr unsigned int kKeySize = 64;  // 60 of the key, 2 of its word, 2 private
constexpr std::size_t kKeyPadding = 3;

/// Bytes of an archive without keys and user data. The last four are never written: files have been
/// made and measured with them, so they stay.
constexpr unsigned int kFixedSize = 68;

void WriteKey(HvByteWriter& writer, CFCStdKey const& key)
{
    static constexpr unsigned char kPadding[kKeyPadding] = {};
    writer.WriteFiniteDouble(key.parameter);
    writer.WriteFiniteDouble(key.leftValue);
    writer.WriteFiniteDouble(key.rightValue);
    writer.WriteFiniteDouble(key.leftHandle.x);
    writer.WriteFiniteDouble(key.leftHandle.y);
    writer.WriteFiniteDouble(key.rightHandle.x);
    writer.WriteFiniteDouble(key.rightHandle.y);
    writer.WriteUInt8(key.segmentKind);
    writer.WriteBytes(kPadding, kKeyPadding);
}

void WriteFieldsAndKeys(HvByteWriter& writer, HvStdFCurveImpl const& impl)
{
    writer.WriteFiniteDouble(impl.valueWhenNoKeys);
    writer.WriteFiniteDouble(impl.lowerClamp);
    writer.WriteFiniteDouble(impl.upperClamp);
    writer.WriteInt32(impl.defaultSegmentKind);
    writer.WriteUInt32(impl.NumKeys());
    for (CFCStdKey const& key : impl.keys) {
        WriteKey(writer, key);
    }
}

void WriteSections(HvByteWriter& writer, void* buffer, HvStdFCurveImpl const& impl,
                   HvBaseFCurve const& curve)
{
    HvCurveArchive_WriteTag(writer, HvCurveSection::Words);
    for (CFCStdKey const& key : impl.keys) {
        HvCurveArchive_WriteWord(writer, key.constraints.word);
    }
    HvCurveArchive_WriteTag(writer, HvCurveSection::StdSettings);
    writer.WriteUInt8(impl.extrapolation);
    writer.WriteUInt8(impl.readOnly != 0 ? 1 : 0);
    for (CFCStdKey const& key : impl.keys) {
        writer.WriteUInt8(key.privateByte1);
        writer.WriteUInt8(key.privateByte2);
    }
    HvCurveArchive_WriteUserData(writer, buffer, curve);
    HvCurveArchive_WriteTag(writer, HvCurveSection::DefaultTangent);
    writer.WriteUInt8(impl.defaultBezierTangentConstraint != 0 ? 1 : 0);
    HvCurveArchive_WriteTag(writer, HvCurveSection::TimeCurve);
    writer.WriteUInt8(impl.timeCurve != 0 ? 1 : 0);
}

}  // namespace

unsigned int HvStdFCurve::GetBufferSize() const
{
    HvCurveReader const lock(*this);
    impl_->RepairOrder();
    return HvCurveArchive_Size(kFixedSize, kKeySize, impl_->NumKeys(), GetUserDataBufferSize());
}

unsigned int HvStdFCurve::WriteToBuffer(void* buffer) const
{
    // Version and kind are the same for every curve, so they are written before the lock is taken.
    HvByteWriter writer(buffer);
    writer.Skip(kHvArchiveLengthSize);
    writer.WriteUInt32(kVersion);
    writer.WriteUInt32(Standard);

    HvCurveReader const lock(*this);
    unsigned int const size = GetBufferSize();
    HvByteWriter(buffer).WriteUInt32(size - kHvArchiveLengthSize);
    WriteFieldsAndKeys(writer, *impl_);
    WriteSections(writer, buffer, *impl_, *this);
    return size;
}

unsigned int HvStdFCurve::ReadFromBufferBody(void const* body)
{
    if (body == nullptr) {
        return 0;
    }
    HvByteReader reader = HvByteReader::Unbounded(body);
    return ReadArchiveBody(reader);
}

unsigned int HvStdFCurve::ReadArchiveBody(HvByteReader& body)
{
    HvStdFCurve read(0.0, CubicSegment);
    bool ok = true;
    unsigned int const used = HvStdArchive_Read(body, *read.impl_, read, ok);
    if (ok) {
        TakeOver(read);
    }
    return used;
}
