// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// CFCUserDataSet: the blobs that clients of a curve have hung on it or on one of its keys.

#ifndef HV_FCURVE_CFCUSERDATASET_H
#define HV_FCURVE_CFCUSERDATASET_H

#include <hv/foundation/HvMemory.h>
#include <hv/foundation/HvStlAllocator.h>
#include <hv/foundation/dynamic_mem_size.h>
#include <hv/platform/HvExport.h>
#include <hv/platform/guid.h>

#include <map>
#include <utility>

class HvByteReader;
class HvByteWriter;

/// The identifier of a client's blob, in an order: by the fields of the identifier as numbers,
/// first to last. The order is the same on every machine, and so are the bytes of an archive.
class HV_API CFCUserDataKey {
public:
    /// The key of `identifier`.
    explicit CFCUserDataKey(_GUID const& identifier) : guid(identifier) {}

    /// Whether this identifier comes before that of `other`.
    bool operator<(CFCUserDataKey const& other) const;
    /// Whether both identifiers are the same.
    bool operator==(CFCUserDataKey const& other) const;

    _GUID guid;  ///< the identifier
};

/// An owned copy of a blob; nobody looks inside.
class HV_API CFCUserDataValue {
public:
    /// No bytes.
    CFCUserDataValue() = default;
    /// Copies `size` bytes; `bytes` may be null when there are none.
    CFCUserDataValue(unsigned char const* bytes, unsigned int size);
    /// Copies the bytes.
    CFCUserDataValue(CFCUserDataValue const& other) : CFCUserDataValue(other.bytes_, other.size_) {}
    /// Takes the bytes of `other`, which has none then.
    CFCUserDataValue(CFCUserDataValue&& other) noexcept { Swap(other); }
    /// Copies or takes the bytes of `other`.
    CFCUserDataValue& operator=(CFCUserDataValue other) noexcept
    {
        Swap(other);
        return *this;
    }
    ~CFCUserDataValue() { HvFree(bytes_); }

    /// Null when there are no bytes.
    unsigned char const* Bytes() const { return bytes_; }
    /// Number of bytes.
    unsigned int Size() const { return size_; }

    /// Exchanges the bytes with `other`.
    void Swap(CFCUserDataValue& other) noexcept
    {
        std::swap(bytes_, other.bytes_);
        std::swap(size_, other.size_);
    }

private:
    unsigned char* bytes_ = nullptr;
    unsigned int size_ = 0;
};

/// An ordered set of blobs, each under the identifier of its client, so that several clients share
/// a curve without knowing each other. Not thread-safe: the curve that owns it serialises access,
/// and its owner that of any other set.
///
/// A failed allocation leaves the set as it was.
class HV_API CFCUserDataSet : public HvAllocated {
    using Map = std::map<CFCUserDataKey, CFCUserDataValue, std::less<CFCUserDataKey>,
                         HvStlAllocator<std::pair<CFCUserDataKey const, CFCUserDataValue>>>;

public:
    /// Walks over pairs of a CFCUserDataKey and a CFCUserDataValue, in the order of the keys.
    using const_iterator = Map::const_iterator;

    CFCUserDataSet() = default;
    /// Copies every blob.
    CFCUserDataSet(CFCUserDataSet const& other) = default;
    /// Takes the blobs of `other`, which is empty then.
    CFCUserDataSet(CFCUserDataSet&& other) noexcept { Swap(other); }
    /// Copies or takes the blobs of `other`.
    CFCUserDataSet& operator=(CFCUserDataSet other) noexcept
    {
        Swap(other);
        return *this;
    }

    /// Whether there are no blobs.
    bool IsEmpty() const { return blobs_.empty(); }
    /// Number of blobs.
    unsigned int Count() const { return static_cast<unsigned int>(blobs_.size()); }
    /// The first blob.
    const_iterator begin() const { return blobs_.begin(); }
    /// Behind the last blob.
    const_iterator end() const { return blobs_.end(); }
    /// The blob of `guid`, or null. Cost: O(log blobs), as of all that follow.
    CFCUserDataValue const* FindUserData(_GUID const& guid) const;

    /// Copies a blob into the set, in place of the one that `guid` had. A size of 0 stores an entry
    /// without bytes. `bytes` may lie in a blob of this set. Returns 1; 0 for a null pointer with a
    /// size.
    int InsertUserData(_GUID const& guid, unsigned char const* bytes, unsigned int size);
    /// Drops the blob of `guid`; 0 when there is none.
    int RemoveUserData(_GUID const& guid);
    /// Exchanges the blobs with `other`.
    void Swap(CFCUserDataSet& other) noexcept;

    /// Bytes of an image without entries, and of one entry with a blob of `size` bytes.
    static constexpr unsigned int kImageHeaderSize = 12;
    /// Bytes that one entry with a blob of `size` bytes takes in an image.
    static unsigned long long EntrySize(unsigned int size)
    {
        return kEntryHeaderSize + static_cast<unsigned long long>(size);
    }
    /// Bytes of the set's image in an archive. Cost: O(1).
    unsigned long long ImageSize() const { return kImageHeaderSize + entrySizes_; }
    /// Writes the image: size of what follows, version 256, number of entries; for each the
    /// identifier as 4, 2, 2 and 8 bytes, the blob's size and the blob. The image must be below
    /// 2^32 bytes.
    void WriteImage(HvByteWriter& writer) const;
    /// Reads an image and steps over it. A set of another version than 256 is empty. An identifier
    /// that comes again replaces what it had. The reader fails, and the set is empty, when the
    /// image does not hold what it claims; std::bad_alloc leaves the set as it was.
    void ReadImage(HvByteReader& reader);

private:
    friend struct XQDynamicMemRule<CFCUserDataSet, CXQMemBaseType>;

    static constexpr unsigned int kEntryHeaderSize = 20;  // the identifier and the blob's size

    Map blobs_;
    unsigned long long entrySizes_ = 0;  // bytes of all entries in an image
};

template <>
/// Counts the bytes of a blob.
struct XQDynamicMemRule<CFCUserDataValue, CXQMemBaseType> {
    /// Bytes that `value` holds outside itself.
    static unsigned long Get(CFCUserDataValue const& value) { return value.Size(); }
};

template <>
/// Counts the bytes of a set.
struct XQDynamicMemRule<CFCUserDataSet, CXQMemBaseType> {
    /// Bytes that `set` holds outside itself.
    static unsigned long Get(CFCUserDataSet const& set) { return XQGetDynamicMemSize(set.blobs_); }
};

#endif
