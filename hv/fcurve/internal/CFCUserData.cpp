// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A curve's record of user data, and its block in an archive.

#include <hv/fcurve/internal/CFCUserData.h>
#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/byte_codec.h>

#include <cmath>
#include <new>

namespace {

constexpr std::uint32_t kBlockVersion = 256;

// Of the block: its length; the version and the flag of any data; the flags of curve and keys; the
// number of keys' sets; the parameter of one.
constexpr unsigned int kLengthSize = 4;
constexpr unsigned int kFlagsSize = 2;
constexpr unsigned int kCountSize = 4;
constexpr unsigned int kParameterSize = 8;

// The least that a key's set takes in a block.
constexpr std::size_t kLeastKeySetSize = kParameterSize + CFCUserDataSet::kImageHeaderSize;

// An archive tells its length in 32 bits. Half of that range is left to the curve's keys, which is
// more than their array can hold.
constexpr unsigned long long kMostBlockSize = 0x7FFFFFFFULL;

unsigned long long KeySetBytes(CFCUserDataSet const& set)
{
    return kParameterSize + set.ImageSize();
}

}  // namespace

void CFCUserData_RequireRoomInArchive(unsigned long long blockSize, unsigned long long more)
{
    if (more > kMostBlockSize || blockSize > kMostBlockSize - more) {
        throw std::bad_alloc();
    }
}

// The curve's own blobs.

int CFCUserData::InsertCurveBlob(_GUID const& guid, unsigned char const* bytes, unsigned int size)
{
    RequireRoom(CFCUserDataSet::EntrySize(size));
    return curveSet_.InsertUserData(guid, bytes, size);
}

int CFCUserData::RemoveCurveBlob(_GUID const& guid)
{
    return curveSet_.RemoveUserData(guid);
}

// The keys' sets.

// The map is never asked for NaN, which is neither below nor above any of its keys.
CFCUserDataSet const* CFCUserData::FindKeySet(double parameter) const
{
    if (!std::isfinite(parameter)) {
        return nullptr;
    }
    auto const found = keySets_.find(parameter);
    return found == keySets_.end() ? nullptr : &found->second;
}

int CFCUserData::SetKeySet(double parameter, CFCUserDataSet set)
{
    if (!std::isfinite(parameter)) {
        return 0;
    }
    if (set.IsEmpty()) {
        RemoveKeySet(parameter);
        return 1;
    }
    RequireRoom(KeySetBytes(set));
    CFCUserDataSet& stored = keySets_[parameter];
    keySetBytes_ -= stored.IsEmpty() ? 0 : KeySetBytes(stored);
    keySetBytes_ += KeySetBytes(set);
    stored.Swap(set);
    return 1;
}

int CFCUserData::InsertKeyBlob(double parameter, _GUID const& guid, unsigned char const* bytes,
                               unsigned int size)
{
    RequireRoom(CFCUserDataSet::EntrySize(size));
    if (FindKeySet(parameter) == nullptr) {
        CFCUserDataSet set;
        return set.InsertUserData(guid, bytes, size) == 0 ? 0
                                                          : SetKeySet(parameter, std::move(set));
    }
    return EditKeySet(parameter,
                      [&](CFCUserDataSet& set) { return set.InsertUserData(guid, bytes, size); });
}

int CFCUserData::RemoveKeyBlob(double parameter, _GUID const& guid)
{
    return EditKeySet(parameter, [&](CFCUserDataSet& set) { return set.RemoveUserData(guid); });
}

int CFCUserData::RemoveKeySet(double parameter)
{
    return EditKeySet(parameter, [](CFCUserDataSet& set) {
        set = CFCUserDataSet();
        return 1;
    });
}

void CFCUserData::RemoveAllKeySets() noexcept
{
    keySets_.clear();
    keySetBytes_ = 0;
}

// Applies `edit` to the set at `parameter`, if there is one, and drops the set when it comes out
// empty.
template <class Edit>
int CFCUserData::EditKeySet(double parameter, Edit edit)
{
    auto const found = std::isfinite(parameter) ? keySets_.find(parameter) : keySets_.end();
    if (found == keySets_.end()) {
        return 0;
    }
    unsigned long long const before = KeySetBytes(found->second);
    int const done = edit(found->second);
    keySetBytes_ -= before;
    if (found->second.IsEmpty()) {
        keySets_.erase(found);
    } else {
        keySetBytes_ += KeySetBytes(found->second);
    }
    return done;
}

// Moving the keys' sets. The nodes of the map travel from one map to another, so nothing is
// allocated and nothing can fail once the parameters are found to be finite.

template <class Move>
int CFCUserData::MoveEachKeySet(Move move)
{
    for (auto const& entry : keySets_) {
        if (!std::isfinite(move(entry.first))) {
            return 0;
        }
    }
    KeySets moved;
    while (!keySets_.empty()) {
        KeySets::node_type lifted = keySets_.extract(keySets_.begin());
        lifted.key() = move(lifted.key());
        PutDown(moved, std::move(lifted));
    }
    keySets_.swap(moved);
    CountKeySetBytes();
    return 1;
}

int CFCUserData::ScaleKeySets(double scale)
{
    return MoveEachKeySet([scale](double parameter) { return parameter * scale; });
}

int CFCUserData::TranslateKeySets(double offset)
{
    return MoveEachKeySet([offset](double parameter) { return parameter + offset; });
}

int CFCUserData::MoveKeySets(HvDoubleArray const& from, HvDoubleArray const& to)
{
    if (keySets_.empty()) {
        return 1;
    }
    if (from.Size() != to.Size()) {
        return 0;
    }
    for (unsigned int k = 0; k < from.Size(); ++k) {
        if (!std::isfinite(from[k]) || !std::isfinite(to[k])) {
            return 0;
        }
    }
    KeySets liftedSets;
    for (unsigned int k = 0; k < from.Size(); ++k) {
        KeySets::node_type lifted = keySets_.extract(from[k]);
        if (!lifted.empty()) {
            lifted.key() = to[k];
            PutDown(liftedSets, std::move(lifted));
        }
    }
    while (!liftedSets.empty()) {
        PutDown(keySets_, liftedSets.extract(liftedSets.begin()));
    }
    CountKeySetBytes();
    return 1;
}

// Puts a node into `sets`, in place of the one that has its parameter. Nodes mostly come in rising
// order, for which the end is the right place to look first.
void CFCUserData::PutDown(KeySets& sets, KeySets::node_type lifted) noexcept
{
    auto const place = sets.insert(sets.end(), std::move(lifted));
    if (!lifted.empty()) {
        place->second.Swap(lifted.mapped());
    }
}

void CFCUserData::CountKeySetBytes() noexcept
{
    keySetBytes_ = 0;
    for (auto const& entry : keySets_) {
        keySetBytes_ += KeySetBytes(entry.second);
    }
}

// The archive's block.

void CFCUserData::RequireRoom(unsigned long long more) const
{
    // What a first set of either sort brings with it counts too.
    CFCUserData_RequireRoomInArchive(BlockSize(), more + kFlagsSize + kCountSize + kParameterSize +
                                                      CFCUserDataSet::kImageHeaderSize);
}

unsigned int CFCUserData::BlockSize() const
{
    if (IsEmpty()) {
        return kEmptyBlockSize;
    }
    unsigned long long size = kEmptyBlockSize + kFlagsSize;
    if (!curveSet_.IsEmpty()) {
        size += curveSet_.ImageSize();
    }
    if (!keySets_.empty()) {
        size += kCountSize + keySetBytes_;
    }
    return static_cast<unsigned int>(size);
}

void CFCUserData::WriteBlock(HvByteWriter& writer) const
{
    writer.WriteUInt32(BlockSize() - kLengthSize);
    writer.WriteUInt32(kBlockVersion);
    writer.WriteUInt8(IsEmpty() ? 0 : 1);
    if (IsEmpty()) {
        return;
    }
    writer.WriteUInt8(curveSet_.IsEmpty() ? 0 : 1);
    if (!curveSet_.IsEmpty()) {
        curveSet_.WriteImage(writer);
    }
    writer.WriteUInt8(keySets_.empty() ? 0 : 1);
    if (!keySets_.empty()) {
        writer.WriteUInt32(static_cast<std::uint32_t>(keySets_.size()));
        for (auto const& entry : keySets_) {
            writer.WriteFiniteDouble(entry.first);
            entry.second.WriteImage(writer);
        }
    }
}

int CFCUserData::ReadBlockBody(HvByteReader& reader)
{
    CFCUserData read;
    if (reader.ReadUInt32() != kBlockVersion) {
        return 0;
    }
    bool const anyData = reader.ReadUInt8() != 0;
    if (anyData && reader.ReadUInt8() != 0) {
        CFCUserDataSet set;
        set.ReadImage(reader);
        read.RequireRoom(set.ImageSize());
        read.curveSet_.Swap(set);
    }
    if (anyData && reader.ReadUInt8() != 0) {
        std::uint32_t const count = reader.ReadUInt32();
        reader.Holds(count, kLeastKeySetSize);
        for (std::uint32_t k = 0; k < count && !reader.Failed(); ++k) {
            double const parameter = reader.ReadFiniteDouble();
            CFCUserDataSet set;
            set.ReadImage(reader);
            read.SetKeySet(parameter, std::move(set));
        }
    }
    if (reader.Failed()) {
        return 0;
    }
    Swap(read);
    return 1;
}

void CFCUserData::Swap(CFCUserData& other) noexcept
{
    curveSet_.Swap(other.curveSet_);
    keySets_.swap(other.keySets_);
    std::swap(keySetBytes_, other.keySetBytes_);
}
