// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Sets of user data, and their image in an archive:
//
//     4  size of what follows      4  version      4  number of entries
//     then for each entry: 16 identifier (4, 2, 2, 8), 4 size of the blob, the blob

#include <hv/fcurve/CFCUserDataSet.h>
#include <hv/foundation/byte_codec.h>

#include <cstring>

namespace {

constexpr std::uint32_t kImageVersion = 256;

// The field in front of an image that tells the size of the rest.
constexpr unsigned int kSizeFieldSize = 4;

void WriteGuid(HvByteWriter& writer, _GUID const& guid)
{
    writer.WriteUInt32(guid.Data1);
    writer.WriteUInt16(guid.Data2);
    writer.WriteUInt16(guid.Data3);
    writer.WriteBytes(guid.Data4, sizeof guid.Data4);
}

_GUID ReadGuid(HvByteReader& reader)
{
    _GUID guid{};
    guid.Data1 = reader.ReadUInt32();
    guid.Data2 = reader.ReadUInt16();
    guid.Data3 = reader.ReadUInt16();
    if (unsigned char const* const bytes = reader.ReadBytes(sizeof guid.Data4)) {
        std::memcpy(guid.Data4, bytes, sizeof guid.Data4);
    }
    return guid;
}

}  // namespace

bool CFCUserDataKey::operator<(CFCUserDataKey const& other) const
{
    if (guid.Data1 != other.guid.Data1) {
        return guid.Data1 < other.guid.Data1;
    }
    if (guid.Data2 != other.guid.Data2) {
        return guid.Data2 < other.guid.Data2;
    }
    if (guid.Data3 != other.guid.Data3) {
        return guid.Data3 < other.guid.Data3;
    }
    return std::memcmp(guid.Data4, other.guid.Data4, sizeof guid.Data4) < 0;
}

bool CFCUserDataKey::operator==(CFCUserDataKey const& other) const
{
    return !(*this < other) && !(other < *this);
}

CFCUserDataValue::CFCUserDataValue(unsigned char const* bytes, unsigned int size)
{
    if (size != 0) {
        bytes_ = static_cast<unsigned char*>(HvAllocate(size));
        std::memcpy(bytes_, bytes, size);
        size_ = size;
    }
}

CFCUserDataValue const* CFCUserDataSet::FindUserData(_GUID const& guid) const
{
    auto const found = blobs_.find(CFCUserDataKey(guid));
    return found == blobs_.end() ? nullptr : &found->second;
}

int CFCUserDataSet::InsertUserData(_GUID const& guid, unsigned char const* bytes, unsigned int size)
{
    if (bytes == nullptr && size != 0) {
        return 0;
    }
    CFCUserDataValue copy(bytes, size);  // before the bytes' own entry is touched
    auto const entry = blobs_.try_emplace(CFCUserDataKey(guid));
    bool const isNew = entry.second;
    CFCUserDataValue& stored = entry.first->second;
    entrySizes_ += EntrySize(size);
    entrySizes_ -= isNew ? 0 : EntrySize(stored.Size());
    stored.Swap(copy);
    return 1;
}

int CFCUserDataSet::RemoveUserData(_GUID const& guid)
{
    auto const found = blobs_.find(CFCUserDataKey(guid));
    if (found == blobs_.end()) {
        return 0;
    }
    entrySizes_ -= EntrySize(found->second.Size());
    blobs_.erase(found);
    return 1;
}

void CFCUserDataSet::Swap(CFCUserDataSet& other) noexcept
{
    blobs_.swap(other.blobs_);
    std::swap(entrySizes_, other.entrySizes_);
}

void CFCUserDataSet::WriteImage(HvByteWriter& writer) const
{
    writer.WriteUInt32(static_cast<std::uint32_t>(ImageSize() - kSizeFieldSize));
    writer.WriteUInt32(kImageVersion);
    writer.WriteUInt32(Count());
    for (auto const& entry : blobs_) {
        WriteGuid(writer, entry.first.guid);
        writer.WriteUInt32(entry.second.Size());
        writer.WriteBytes(entry.second.Bytes(), entry.second.Size());
    }
}

void CFCUserDataSet::ReadImage(HvByteReader& reader)
{
    CFCUserDataSet read;
    HvByteReader image = reader.ReadPart(reader.ReadUInt32());
    if (image.ReadUInt32() == kImageVersion) {
        std::uint32_t const count = image.ReadUInt32();
        image.Holds(count, kEntryHeaderSize);
        for (std::uint32_t k = 0; k < count && !image.Failed(); ++k) {
            _GUID const guid = ReadGuid(image);
            std::uint32_t const size = image.ReadUInt32();
            unsigned char const* const bytes = image.ReadBytes(size);
            if (bytes != nullptr) {
                read.InsertUserData(guid, bytes, size);
            }
        }
    }
    if (image.Failed()) {
        reader.FailAs(image);
        read = CFCUserDataSet();
    }
    Swap(read);
}
