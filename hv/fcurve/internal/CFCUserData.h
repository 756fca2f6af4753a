// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// CFCUserData: a curve's record of user data, made on first use.

#ifndef HV_FCURVE_INTERNAL_CFCUSERDATA_H
#define HV_FCURVE_INTERNAL_CFCUSERDATA_H

#include <hv/fcurve/CFCUserDataSet.h>

class HvDoubleArray;

/// The curve's own set and the sets of its keys, each under its key's exact parameter. A set
/// without blobs is not kept, so a key has a set exactly when it has data.
///
/// It takes no locks: the curve that owns it holds them. Results are 1, or 0 for nothing found or
/// refused; a refusal and a failed allocation leave the record as it was. A parameter that is not
/// finite is refused. Moving sets allocates nothing. Costs are O(log sets) unless told.
class CFCUserData : public HvAllocated {
public:
    CFCUserData() = default;
    CFCUserData(CFCUserData const& other) = default;
    CFCUserData& operator=(CFCUserData const&) = delete;

    /// Whether neither the curve nor any key has data.
    bool IsEmpty() const { return curveSet_.IsEmpty() && keySets_.empty(); }

    // The curve's own blobs.

    CFCUserDataSet const& CurveSet() const { return curveSet_; }
    /// As CFCUserDataSet::InsertUserData.
    int InsertCurveBlob(_GUID const& guid, unsigned char const* bytes, unsigned int size);
    int RemoveCurveBlob(_GUID const& guid);

    // The keys' sets.

    /// The set of the key at exactly `parameter`, or null.
    CFCUserDataSet const* FindKeySet(double parameter) const;
    /// Replaces the set of the key at `parameter`; an empty one removes it.
    int SetKeySet(double parameter, CFCUserDataSet set);
    /// As CFCUserDataSet::InsertUserData, into the set at `parameter`.
    int InsertKeyBlob(double parameter, _GUID const& guid, unsigned char const* bytes,
                      unsigned int size);
    int RemoveKeyBlob(double parameter, _GUID const& guid);
    int RemoveKeySet(double parameter);
    void RemoveAllKeySets() noexcept;

    // Moving the keys' sets. Where two come onto one parameter, the one that was at the larger
    // parameter stays; in MoveKeySets the one that is later in the list. Refused when any parameter
    // would not be finite; 1 also when there was nothing to move.

    /// Multiplies each parameter by `scale`. Cost: O(sets log sets).
    int ScaleKeySets(double scale);
    /// Adds `offset` to each parameter. Cost: O(sets).
    int TranslateKeySets(double offset);
    /// Moves the set at from[i] to to[i] for each i, as if all were lifted before the first is put
    /// down; a set that is not moved and stands where one is put down goes. Refused when the arrays
    /// differ in size.
    int MoveKeySets(HvDoubleArray const& from, HvDoubleArray const& to);

    // The archive's block: length of what follows, version 256, 1 for any data; with data 1 and an
    // image when the curve has a set, and 1, a count and parameters with images when keys have
    // sets.

    /// Bytes of the block of a record without data.
    static constexpr unsigned int kEmptyBlockSize = 9;

    /// Bytes of the block, its length field included. Cost: O(1).
    unsigned int BlockSize() const;
    void WriteBlock(HvByteWriter& writer) const;
    /// Replaces the record by what follows the length of a block. 0, with the record as it was,
    /// when the block is of another version than 256, of which nothing more is read, and when the
    /// reader fails because the bytes do not hold what they claim. A parameter that is not finite
    /// reads as 0; one that comes again replaces the earlier. A set without blobs counts as none.
    int ReadBlockBody(HvByteReader& reader);

    void Swap(CFCUserData& other) noexcept;

private:
    friend struct XQDynamicMemRule<CFCUserData, CXQMemBaseType>;

    using KeySets = std::map<double, CFCUserDataSet, std::less<double>,
                             HvStlAllocator<std::pair<double const, CFCUserDataSet>>>;

    template <class Edit>
    int EditKeySet(double parameter, Edit edit);
    template <class Move>
    int MoveEachKeySet(Move move);
    static void PutDown(KeySets& sets, KeySets::node_type lifted) noexcept;
    void CountKeySetBytes() noexcept;
    // Throws std::bad_alloc when the block has no room for `more` bytes of images.
    void RequireRoom(unsigned long long more) const;

    CFCUserDataSet curveSet_;
    KeySets keySets_;
    unsigned long long keySetBytes_ = 0;  // parameters and images of all keys' sets in a block
};

/// Throws std::bad_alloc when a block of `blockSize` bytes must not grow by `more`: an archive
/// tells its length in 32 bits and has to hold the curve too.
void CFCUserData_RequireRoomInArchive(unsigned long long blockSize, unsigned long long more);

template <>
struct XQDynamicMemRule<CFCUserData, CXQMemBaseType> {
    static unsigned long Get(CFCUserData const& data)
    {
        return XQGetDynamicMemSize(data.curveSet_) + XQGetDynamicMemSize(data.keySets_);
    }
};

#endif
