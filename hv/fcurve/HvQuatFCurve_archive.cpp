// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The archive of the quaternion curve kind: its size, writing the newest version, reading both.
// Version "0010" does not tell the component.

#include <hv/fcurve/HvQuatFCurve.h>
#include <hv/fcurve/internal/HvQuatFCurveImpl.h>
#include <hv/fcurve/internal/curve_archive.h>
#include <hv/foundation/HvAltDynArray.h>

namespace {

/// A version is four characters, first one first in the file.
constexpr std::uint32_t VersionOf(char const (&text)[5])
{
    return static_cast<std::uint32_t>(text[0]) | static_cast<std::uint32_t>(text[1]) << 8 |
           static_cast<std::uint32_t>(text[2]) << 16 | static_cast<std::uint32_t>(text[3]) << 24;
}

constexpr std::uint32_t kVersionWithoutComponent = VersionOf("0010");
constexpr std::uint32_t kVersion = VersionOf("1010");

/// Bytes of an archive without keys and user data.
constexpr unsigned int kFixedSize = 52;
constexpr unsigned int kKeySize = 48;

void WriteAngles(HvByteWriter& writer, HvPoint3<double> const& angles)
{
    writer.WriteFiniteDouble(angles.x);
    writer.WriteFiniteDouble(angles.y);
    writer.WriteFiniteDouble(angles.z);
}

HvPoint3<double> ReadAngles(HvByteReader& reader)
{
    HvPoint3<double> angles;
    angles.x = reader.ReadFiniteDouble();
    angles.y = reader.ReadFiniteDouble();
    angles.z = reader.ReadFiniteDouble();
    return angles;
}

/// The constraint word of a key goes through the curve, which knows its bits.
void WriteKey(HvByteWriter& writer, HvQuatCurve const& curve, unsigned int i)
{
    HvQuatKey const key = curve.GetKey(i);
    writer.WriteFiniteDouble(key.time);
    WriteAngles(writer, key.angles);
    writer.WriteFiniteFloat(key.tension);
    writer.WriteFiniteFloat(key.continuity);
    writer.WriteFiniteFloat(key.bias);
    writer.WriteUInt16(static_cast<std::uint16_t>(key.spins));
    HvCurveArchive_WriteWord(writer, curve.GetConstraintData(i));
}

/// One key; which locks it has is told by `word`.
HvQuatKey ReadKey(HvByteReader& reader, unsigned short& word)
{
    double const time = reader.ReadFiniteDouble();
    HvPoint3<double> const angles = ReadAngles(reader);
    float const tension = reader.ReadFiniteFloat();
    float const continuity = reader.ReadFiniteFloat();
    float const bias = reader.ReadFiniteFloat();
    int const spins = reader.ReadUInt16();
    word = HvCurveArchive_ReadWord(reader);
    return HvQuatKey(time, angles, tension, continuity, bias, spins);
}

void ReadKeys(HvByteReader& reader, HvQuatCurve& curve)
{
    std::uint32_t const count = reader.ReadUInt32();
    if (!reader.Holds(count, kKeySize)) {
        return;
    }
    HvAltDynArray<HvQuatKey> keys(count);
    HvAltDynArray<unsigned short> words(count);
    HvCurveArchive_ReadRecords(reader, count, kKeySize, [&](HvByteReader& record, unsigned int) {
        unsigned short word;
        keys.Add(ReadKey(record, word));
        words.Add(word);
    });
    curve.SetKeys(keys.Data(), keys.Count());
    for (unsigned int i = 0; i < words.Count(); ++i) {
        curve.SetConstraintData(i, words[i]);
    }
}

/// Drops each key whose time is not above that of the key kept before it.
void RepairOrder(HvQuatCurve& curve)
{
    if (curve.IsValid()) {
        return;
    }
    HvAltDynArray<HvQuatKey> kept(curve.GetNumKeys());
    for (unsigned int i = 0; i < curve.GetNumKeys(); ++i) {
        HvQuatKey const key = curve.GetKey(i);
        if (kept.Count() == 0 || key.time > kept[kept.Count() - 1].time) {
            kept.Add(key);
        }
    }
    curve.SetKeys(kept.Data(), kept.Count());
}

}  // namespace

unsigned int HvQuatFCurve::GetBufferSize() const
{
    Reader const lock(*this);
    RepairOrder(impl_->Curve());
    return HvCurveArchive_Size(kFixedSize, kKeySize, impl_->NumKeys(), GetUserDataBufferSize());
}

unsigned int HvQuatFCurve::WriteToBuffer(void* buffer) const
{
    Reader const lock(*this);
    unsigned int const size = GetBufferSize();
    HvQuatCurve const& curve = impl_->Curve();
    HvByteWriter writer(buffer);
    writer.WriteUInt32(size - kHvArchiveLengthSize);
    writer.WriteUInt32(kVersion);
    writer.WriteUInt32(Quaternion);
    writer.WriteUInt32(impl_->component);
    writer.WriteUInt32(curve.GetNumKeys());
    for (unsigned int i = 0; i < curve.GetNumKeys(); ++i) {
        WriteKey(writer, curve, i);
    }
    WriteAngles(writer, curve.GetValueWhenNoKeys());
    writer.WriteUInt32(impl_->IsReadOnly() ? 1 : 0);
    writer.WriteUInt32(curve.GetExtrapolationMethod());
    HvCurveArchive_WriteUserData(writer, buffer, *this);
    return size;
}

unsigned int HvQuatFCurve::ReadFromBufferBody(void const* body)
{
    if (body == nullptr) {
        return 0;
    }
    HvByteReader reader = HvByteReader::Unbounded(body);
    return ReadArchiveBody(reader);
}

unsigned int HvQuatFCurve::ReadArchiveBody(HvByteReader& body)
{
    std::size_t const start = body.Used();
    std::uint32_t const version = body.ReadUInt32();
    if (version != kVersion && version != kVersionWithoutComponent) {
        body.Fail(kCurveArchiveNoSuchVersion, sizeof version);
    }
    if (body.ReadUInt32() != Quaternion) {
        body.Fail(kCurveArchiveOtherKind, sizeof(std::uint32_t));
    }
    if (body.Failed()) {
        return 0;
    }
    HvQuatFCurve read(GetComponent());
    if (version == kVersion) {
        read.impl_->component = body.ReadUInt32();
    }
    HvQuatCurve& curve = read.impl_->Curve();
    ReadKeys(body, curve);
    curve.SetValueWhenNoKeys(ReadAngles(body));
    curve.SetReadOnlyConstraint(body.ReadUInt32() != 0 ? 1 : 0);
    // The curve holds no method that there is not: it stays constant for one.
    curve.SetExtrapolationMethod(body.ReadUInt32());
    HvCurveArchive_ReadUserData(body, read);
    bool ok = true;
    unsigned int const used = HvCurveArchive_Used(body, start, ok);
    if (ok) {
        *this = read;
    }
    return used;
}
