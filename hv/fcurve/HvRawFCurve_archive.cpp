// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The archive of the raw curve: its size, writing the newest version, reading every version.

#include <hv/fcurve/HvRawFCurve.h>
#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvRawFCurveImpl.h>
#include <hv/fcurve/internal/curve_archive.h>
#include <hv/fcurve/internal/curve_archive_readers.h>

namespace {

constexpr std::uint32_t kVersion = 264;
/// Bytes of an archive without keys and user data.
constexpr unsigned int kFixedSize = 55;
constexpr unsigned int kKeySize = 16;
/// Stands behind the keys of a curve without constraints, which every raw curve is.
constexpr std::uint32_t kNoConstraints = 0;

}  // namespace

unsigned int HvRawFCurve::GetBufferSize() const
{
    HvCurveReader const lock(*this);
    impl_->RepairOrder();
    return HvCurveArchive_Size(kFixedSize, kKeySize, impl_->NumKeys(), GetUserDataBufferSize());
}

unsigned int HvRawFCurve::WriteToBuffer(void* buffer) const
{
    // Version and kind are the same for every curve, so they are written before the lock is taken.
    HvByteWriter writer(buffer);
    writer.Skip(kHvArchiveLengthSize);
    writer.WriteUInt32(kVersion);
    writer.WriteUInt32(Raw);

    HvCurveReader const lock(*this);
    unsigned int const size = GetBufferSize();
    HvByteWriter(buffer).WriteUInt32(size - kHvArchiveLengthSize);
    writer.WriteFiniteDouble(impl_->valueWhenNoKeys);
    writer.WriteFiniteDouble(impl_->lowerClamp);
    writer.WriteFiniteDouble(impl_->upperClamp);
    writer.WriteUInt32(impl_->NumKeys());
    for (CFCSingleValueKey<double> const& key : impl_->keys) {
        writer.WriteFiniteDouble(key.parameter);
        writer.WriteFiniteDouble(key.value);
    }
    writer.WriteUInt32(kNoConstraints);
    HvCurveArchive_WriteTag(writer, HvCurveSection::RawSettings);
    writer.WriteUInt8(impl_->extrapolation);
    writer.WriteUInt8(impl_->readOnly != 0 ? 1 : 0);
    HvCurveArchive_WriteUserData(writer, buffer, *this);
    HvCurveArchive_WriteTag(writer, HvCurveSection::TimeCurve);
    writer.WriteUInt8(impl_->timeCurve != 0 ? 1 : 0);
    return size;
}

unsigned int HvRawFCurve::ReadFromBufferBody(void const* body)
{
    if (body == nullptr) {
        return 0;
    }
    HvByteReader reader = HvByteReader::Unbounded(body);
    return ReadArchiveBody(reader);
}

unsigned int HvRawFCurve::ReadArchiveBody(HvByteReader& body)
{
    HvRawFCurve read(0.0);
    bool ok = true;
    unsigned int const used = HvRawArchive_Read(body, *read.impl_, read, ok);
    if (ok) {
        TakeOver(read);
    }
    return used;
}
