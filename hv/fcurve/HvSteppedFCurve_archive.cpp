// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The archive of the stepped curves: its size, writing the newest version, reading both versions.
// Version 257 has constraint words of one byte, version 258 of two.

#include <hv/fcurve/HvBooleanFCurve.h>
#include <hv/fcurve/HvIntegerFCurve.h>
#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/curve_archive.h>
#include <hv/fcurve/internal/curve_archive_readers.h>

#include <cstring>

namespace {

constexpr std::uint32_t kFirstVersion = 257;
constexpr std::uint32_t kVersion = 258;
constexpr unsigned int kIdentifierSize = 16;

/// Bytes of an archive without its two values, keys and user data: length, version, kind,
/// identifier, extrapolation, read only, key count.
constexpr unsigned int kFixedSizeBesideValues = 34;
constexpr unsigned int kKeySizeBesideValue = 10;

/// What the two kinds differ in.
template <class T>
struct Format;

template <>
struct Format<bool> {
    using Curve = HvBooleanFCurve;
    static constexpr std::uint32_t kKind = HvBaseFCurve::Boolean;
    static constexpr unsigned char kIdentifier[kIdentifierSize] = {
        0x62, 0x14, 0xF2, 0x84, 0xCA, 0x97, 0xD1, 0x11,
        0x93, 0x6A, 0x00, 0xA0, 0x24, 0x3E, 0x35, 0xF0};
    static constexpr unsigned int kValueSize = 1;

    static bool ReadCurveValue(HvByteReader& body) { return HvCurveArchive_ReadFlag(body) != 0; }
    static bool ReadKeyValue(HvByteReader& body)
    {
        return HvCurveArchive_ReadStrictFlag(body) != 0;
    }
    static void WriteValue(HvByteWriter& writer, bool value) { writer.WriteUInt8(value ? 1 : 0); }
    static constexpr auto kReadOneByteWords = &SetFromHvBooleanFCurve980121ArchiveBuffer;
    static constexpr auto kReadTwoByteWords = &SetFromHvBooleanFCurve_010221_Buffer;
};

template <>
struct Format<int> {
    using Curve = HvIntegerFCurve;
    static constexpr std::uint32_t kKind = HvBaseFCurve::Integer;
    static constexpr unsigned char kIdentifier[kIdentifierSize] = {
        0x61, 0x14, 0xF2, 0x84, 0xCA, 0x97, 0xD1, 0x11,
        0x93, 0x6A, 0x00, 0xA0, 0x24, 0x3E, 0x35, 0xF0};
    static constexpr unsigned int kValueSize = 4;

    static int ReadCurveValue(HvByteReader& body) { return body.ReadInt32(); }
    static int ReadKeyValue(HvByteReader& body) { return body.ReadInt32(); }
    static void WriteValue(HvByteWriter& writer, int value) { writer.WriteInt32(value); }
    static constexpr auto kReadOneByteWords = &SetFromHvIntegerFCurve980121ArchiveBuffer;
    static constexpr auto kReadTwoByteWords = &SetFromHvIntegerFCurve_010221_Buffer;
};

/// The fields and keys, behind the identifier, with constraint words of this size.
template <class T, std::size_t kWordSize>
unsigned int ReadFieldsAndKeys(CFCSteppedImpl<T>& impl, HvByteReader& body, bool& ok)
{
    std::size_t const start = body.Used();
    impl.valueWhenNoKeys = Format<T>::ReadCurveValue(body);
    impl.ApplyLeftValue(Format<T>::ReadCurveValue(body));
    impl.extrapolation = body.ReadUInt8();
    impl.readOnly = HvCurveArchive_ReadFlag(body);
    std::uint32_t const count = body.ReadUInt32();
    constexpr std::size_t kKeySize = sizeof(double) + Format<T>::kValueSize + kWordSize;
    if (body.Holds(count, kKeySize)) {
        impl.keys.Resize(count);
        impl.constraints.Resize(count);
        HvCurveArchive_ReadRecords(body, count, kKeySize, [&](HvByteReader& keys, unsigned int i) {
            impl.keys[i].parameter = keys.ReadFiniteDouble();
            impl.keys[i].value = Format<T>::ReadKeyValue(keys);
            impl.constraints[i].word =
                kWordSize == 1 ? keys.ReadUInt8() : HvCurveArchive_ReadWord(keys);
        });
    }
    return HvCurveArchive_Used(body, start, ok);
}

template <class T>
bool ReadHead(HvByteReader& body, std::uint32_t& version)
{
    version = body.ReadUInt32();
    if (version < kFirstVersion) {
        body.Fail(kCurveArchiveNoSuchVersion, sizeof version);
    }
    if (body.ReadUInt32() != Format<T>::kKind) {
        body.Fail(kCurveArchiveOtherKind, sizeof(std::uint32_t));
    }
    unsigned char const* const identifier = body.ReadBytes(kIdentifierSize);
    if (identifier != nullptr &&
        std::memcmp(identifier, Format<T>::kIdentifier, kIdentifierSize) != 0) {
        body.Fail("the identifier of its class is another one", kIdentifierSize);
    }
    return !body.Failed();
}

}  // namespace

unsigned int SetFromHvBooleanFCurve980121ArchiveBuffer(CFCBooleanImpl& impl, HvByteReader& body,
                                                       bool& ok)
{
    return ReadFieldsAndKeys<bool, 1>(impl, body, ok);
}

unsigned int SetFromHvBooleanFCurve_010221_Buffer(CFCBooleanImpl& impl, HvByteReader& body,
                                                  bool& ok)
{
    return ReadFieldsAndKeys<bool, 2>(impl, body, ok);
}

unsigned int SetFromHvIntegerFCurve980121ArchiveBuffer(CFCIntegerImpl& impl, HvByteReader& body,
                                                       bool& ok)
{
    return ReadFieldsAndKeys<int, 1>(impl, body, ok);
}

unsigned int SetFromHvIntegerFCurve_010221_Buffer(CFCIntegerImpl& impl, HvByteReader& body,
                                                  bool& ok)
{
    return ReadFieldsAndKeys<int, 2>(impl, body, ok);
}

template <class T>
unsigned int HvSteppedFCurve<T>::GetBufferSize() const
{
    HvCurveReader const lock(*this);
    impl_->RepairOrder();
    return HvCurveArchive_Size(kFixedSizeBesideValues + 2 * Format<T>::kValueSize,
                               kKeySizeBesideValue + Format<T>::kValueSize, impl_->NumKeys(),
                               this->GetUserDataBufferSize());
}

template <class T>
unsigned int HvSteppedFCurve<T>::WriteToBuffer(void* buffer) const
{
    HvCurveReader const lock(*this);
    unsigned int const size = this->GetBufferSize();
    HvByteWriter writer(buffer);
    writer.WriteUInt32(size - kCurveArchiveLengthSize);
    writer.WriteUInt32(kVersion);
    writer.WriteUInt32(Format<T>::kKind);
    writer.WriteBytes(Format<T>::kIdentifier, kIdentifierSize);
    Format<T>::WriteValue(writer, impl_->valueWhenNoKeys);
    Format<T>::WriteValue(writer, impl_->leftValue);
    writer.WriteUInt8(impl_->extrapolation);
    writer.WriteUInt8(impl_->readOnly != 0 ? 1 : 0);
    writer.WriteUInt32(impl_->NumKeys());
    for (unsigned int i = 0; i < impl_->NumKeys(); ++i) {
        writer.WriteFiniteDouble(impl_->keys[i].parameter);
        Format<T>::WriteValue(writer, impl_->keys[i].value);
        HvCurveArchive_WriteWord(writer, impl_->constraints[i].word);
    }
    HvCurveArchive_WriteUserData(writer, buffer, *this);
    return size;
}

template <class T>
unsigned int HvSteppedFCurve<T>::ReadFromBufferBody(void const* body)
{
    if (body == nullptr) {
        return 0;
    }
    HvByteReader reader = HvByteReader::Unbounded(body);
    return ReadArchiveBody(reader);
}

template <class T>
unsigned int HvSteppedFCurve<T>::ReadArchiveBody(HvByteReader& body)
{
    std::size_t const start = body.Used();
    std::uint32_t version = 0;
    if (!ReadHead<T>(body, version)) {
        return 0;
    }
    typename Format<T>::Curve read(0);
    HvSteppedFCurve& contents = read;
    bool ok = true;
    if (version == kFirstVersion) {
        Format<T>::kReadOneByteWords(*contents.impl_, body, ok);
    } else {
        Format<T>::kReadTwoByteWords(*contents.impl_, body, ok);
    }
    HvCurveArchive_ReadUserData(body, contents);
    unsigned int const used = HvCurveArchive_Used(body, start, ok);
    if (ok) {
        this->TakeOver(contents);
    }
    return used;
}

template unsigned int HvSteppedFCurve<bool>::GetBufferSize() const;
template unsigned int HvSteppedFCurve<bool>::WriteToBuffer(void*) const;
template unsigned int HvSteppedFCurve<bool>::ReadFromBufferBody(void const*);
template unsigned int HvSteppedFCurve<bool>::ReadArchiveBody(HvByteReader&);
template unsigned int HvSteppedFCurve<int>::GetBufferSize() const;
template unsigned int HvSteppedFCurve<int>::WriteToBuffer(void*) const;
template unsigned int HvSteppedFCurve<int>::ReadFromBufferBody(void const*);
template unsigned int HvSteppedFCurve<int>::ReadArchiveBody(HvByteReader&);
