// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The three stores that keep a curve's keys, each in one contiguous array, strictly ascending by
// parameter. They differ in what a key costs: a stepped key is small and its constraint word lies
// beside it, a raw key has no word at all, a standard key carries its word inside. All offer the
// same operations, so that the implementation over them is written once.

#ifndef HV_FCURVE_INTERNAL_CFCKEYSTORE_H
#define HV_FCURVE_INTERNAL_CFCKEYSTORE_H

#include <hv/fcurve/CFCKeyConstraint.h>
#include <hv/fcurve/CFCSingleValueKey.h>
#include <hv/fcurve/CFCStdKey.h>
#include <hv/foundation/HvAltDynArray.h>
#include <hv/foundation/HvBoolArray.h>
#include <hv/foundation/array_capacity.h>

#include <algorithm>
#include <new>
#include <type_traits>
#include <utility>

class CFCFlattenOutput;

/// Initial capacity of the arrays of keys.
constexpr unsigned int kKeyStoreCapacity = 2;

/// Removes the records `first` to `last` inclusive; the storage stays as it is.
template <class Record>
void CFCKeyStore_RemoveRange(HvAltDynArray<Record>& records, unsigned int first,
                             unsigned int last) noexcept
{
    std::copy(records.begin() + last + 1, records.end(), records.begin() + first);
    records.Chop(records.Count() - (last - first + 1));
}

/// Removes the records marked in `dropped`, which is as long as they are; the storage stays as it
/// is.
template <class Record>
void CFCKeyStore_RemoveMarked(HvAltDynArray<Record>& records, HvBoolArray const& dropped) noexcept
{
    unsigned int kept = 0;
    for (unsigned int i = 0; i < records.Count(); ++i) {
        if (!dropped[i]) {
            records[kept++] = records[i];
        }
    }
    records.Chop(kept);
}

/// Gives back storage of which less than half is in use. Without memory for the smaller block the
/// larger one stays, so that an edit that is done does not fail by tidying up.
template <class Record>
void CFCKeyStore_ReleaseSpare(HvAltDynArray<Record>& records) noexcept
{
    if (records.Count() < records.Capacity() / 2) {
        try {
            records.Resize(records.Count());
        } catch (std::bad_alloc const&) {
        }
    }
}

/// Both at once: where storage is given back, what stays is copied into the smaller block straight
/// away.
template <class Record>
void CFCKeyStore_RemoveRangeAndSpare(HvAltDynArray<Record>& records, unsigned int first,
                                     unsigned int last) noexcept
{
    try {
        records.RemoveClosedRange(first, last);
    } catch (std::bad_alloc const&) {
        CFCKeyStore_RemoveRange(records, first, last);
    }
}

/// Inserts a record at `index`. Never shrinks the storage, and never fails where there is room.
template <class Record>
void CFCKeyStore_Insert(HvAltDynArray<Record>& records, unsigned int index, Record const& record)
{
    Record const copy = record;
    records.Add(copy);
    std::copy_backward(records.begin() + index, records.end() - 1, records.end());
    records[index] = copy;
}

/// Stepped keys: K is CFCSingleValueKey<T>.
template <class T, class K>
class CFCKeyStoreA {
public:
    /// The locks that a stepped key knows.
    static constexpr unsigned short kEveryLock =
        CFCKeyConstraint::kValueLocked | CFCKeyConstraint::kParameterLocked;

    HvAltDynArray<K> keys{kKeyStoreCapacity};
    HvAltDynArray<CFCKeyConstraint> constraints{kKeyStoreCapacity};  ///< element i belongs to key i
    T leftValue{};                ///< the curve's value before the first key
    bool keepsSpareKeys = false;  ///< ReleaseSpareKeys does nothing: what goes comes back

    /// Inserts a key and its word at `index`. Both arrays are grown before either changes.
    void InsertKey(unsigned int index, K const& key, unsigned short word)
    {
        keys.Reserve(HvArrayCapacity_GrownSize(keys.Count(), 1));
        constraints.Reserve(HvArrayCapacity_GrownSize(constraints.Count(), 1));
        CFCKeyStore_Insert(keys, index, key);
        CFCKeyStore_Insert(constraints, index, CFCKeyConstraint{word});
    }
    /// Makes room for `count` keys in all, so that inserting up to them cannot fail.
    void ReserveKeys(unsigned int count)
    {
        keys.Reserve(count);
        constraints.Reserve(count);
    }
    /// Removes the keys `first` to `last` inclusive, and their words.
    void RemoveKeyRange(unsigned int first, unsigned int last) noexcept
    {
        CFCKeyStore_RemoveRange(keys, first, last);
        CFCKeyStore_RemoveRange(constraints, first, last);
    }
    /// RemoveKeyRange and ReleaseSpareKeys at once.
    void RemoveKeyRangeAndSpare(unsigned int first, unsigned int last) noexcept
    {
        if (keepsSpareKeys) {
            RemoveKeyRange(first, last);
        } else {
            CFCKeyStore_RemoveRangeAndSpare(keys, first, last);
            CFCKeyStore_RemoveRangeAndSpare(constraints, first, last);
        }
    }
    /// Removes the keys marked in `dropped`, and their words, in one pass.
    void RemoveMarkedKeys(HvBoolArray const& dropped) noexcept
    {
        CFCKeyStore_RemoveMarked(keys, dropped);
        CFCKeyStore_RemoveMarked(constraints, dropped);
    }
    void ReleaseSpareKeys() noexcept
    {
        if (!keepsSpareKeys) {
            CFCKeyStore_ReleaseSpare(keys);
            CFCKeyStore_ReleaseSpare(constraints);
        }
    }
    /// The last key becomes the first; parameters are the caller's.
    void ReverseKeys() noexcept
    {
        std::reverse(keys.begin(), keys.end());
        std::reverse(constraints.begin(), constraints.end());
    }
    void Swap(CFCKeyStoreA& other) noexcept
    {
        keys.Swap(other.keys);
        constraints.Swap(other.constraints);
        std::swap(leftValue, other.leftValue);
    }
    unsigned short ConstraintWord(unsigned int index) const { return constraints[index].word; }
    void SetConstraintWord(unsigned int index, unsigned short word)
    {
        constraints[index].word = word;
    }
    bool IsSelected(unsigned int index) const
    {
        return constraints[index].HasAny(CFCKeyConstraint::kSelected);
    }
    void SetSelected(unsigned int index, bool on)
    {
        constraints[index].Assign(CFCKeyConstraint::kSelected, on);
    }
    /// Value of the curve just before key `index`.
    T LeftValueOf(unsigned int index) const
    {
        return index == 0 ? leftValue : keys[index - 1].value;
    }
    T RightValueOf(unsigned int index) const { return keys[index].value; }

    /// Makes the left value `value`, unless the first key's value is locked and differs from it.
    /// Everything that changes the first key goes through this rule.
    void ApplyLeftValue(T value)
    {
        bool const locked = keys.Count() != 0 &&
                            constraints[0].HasAny(CFCKeyConstraint::kValueLocked) &&
                            keys[0].value != value;
        if (!locked) {
            leftValue = value;
        }
    }

    /// The value strictly inside the segment to the right of key i.
    double EvalJustAfterIndex(double, unsigned int i) const
    {
        return static_cast<double>(keys[i].value);
    }
    static constexpr HvBaseFCurve::FSKind SegmentKindOf(unsigned int)
    {
        return HvBaseFCurve::ConstantSegment;
    }
    /// What each relative cycle adds to the values: last minus first value, 1 where booleans
    /// differ.
    double CycleOffset() const
    {
        double const offset =
            static_cast<double>(keys[keys.Count() - 1].value) - static_cast<double>(keys[0].value);
        return std::is_same<T, bool>::value && offset != 0 ? 1 : offset;
    }

    /// Drops the keys between `first` and `last` whose step away from what is held since the last
    /// key that stays is at most `tolerance` times the range of the values. A locked key stays.
    /// User data go with their keys. Returns how many went. Cost: one pass.
    unsigned int ReduceNumKeys(unsigned int first, unsigned int last, double tolerance,
                               HvBaseFCurve& curve);
    /// Convolves the values of the keys `first` to `last` with a kernel, rounded; integers only. A
    /// value that is locked, or would be no finite number, stays. Without memory nothing changes.
    void SmoothSequence(unsigned int first, unsigned int last, double const* kernel,
                        unsigned int kernelSize, HvBaseFCurve& curve);

    void AddFlattenedSegments(unsigned int i, unsigned int j, CFCFlattenOutput& out) const;
    void AddFlattenedLeftPiece(unsigned int i, double x, CFCFlattenOutput& out) const;
    void AddFlattenedRightPiece(unsigned int i, double x, CFCFlattenOutput& out) const;
    void AddFlattenedPartialSegment(unsigned int i, double a, double b,
                                    CFCFlattenOutput& out) const;
};

/// Raw keys: K is CFCSingleValueKey<double>. They take no constraints.
template <class T, class K>
class CFCKeyStoreB {
public:
    /// The locks that would make a raw key locked, if it could hold any.
    static constexpr unsigned short kEveryLock =
        CFCKeyConstraint::kValueLocked | CFCKeyConstraint::kParameterLocked;

    HvAltDynArray<K> keys{kKeyStoreCapacity};
    HvAltDynArray<CFCKeyConstraint>* constraints = nullptr;  ///< nothing creates the array
    bool keepsSpareKeys = false;  ///< ReleaseSpareKeys does nothing: what goes comes back

    void InsertKey(unsigned int index, K const& key, unsigned short)
    {
        CFCKeyStore_Insert(keys, index, key);
    }
    /// Makes room for `count` keys in all, so that inserting up to them cannot fail.
    void ReserveKeys(unsigned int count) { keys.Reserve(count); }
    void RemoveKeyRange(unsigned int first, unsigned int last) noexcept
    {
        CFCKeyStore_RemoveRange(keys, first, last);
    }
    /// RemoveKeyRange and ReleaseSpareKeys at once.
    void RemoveKeyRangeAndSpare(unsigned int first, unsigned int last) noexcept
    {
        if (keepsSpareKeys) {
            RemoveKeyRange(first, last);
        } else {
            CFCKeyStore_RemoveRangeAndSpare(keys, first, last);
        }
    }
    /// Removes the keys marked in `dropped` in one pass.
    void RemoveMarkedKeys(HvBoolArray const& dropped) noexcept
    {
        CFCKeyStore_RemoveMarked(keys, dropped);
    }
    void ReleaseSpareKeys() noexcept
    {
        if (!keepsSpareKeys) {
            CFCKeyStore_ReleaseSpare(keys);
        }
    }
    /// The last key becomes the first; parameters are the caller's.
    void ReverseKeys() noexcept { std::reverse(keys.begin(), keys.end()); }
    void Swap(CFCKeyStoreB& other) noexcept
    {
        keys.Swap(other.keys);
        std::swap(constraints, other.constraints);
    }
    /// The word that a key would have: there is nothing in it but the selection.
    unsigned short ConstraintWord(unsigned int index) const
    {
        return IsSelected(index) ? CFCKeyConstraint::kSelected : 0;
    }
    void SetConstraintWord(unsigned int index, unsigned short word)
    {
        SetSelected(index, (word & CFCKeyConstraint::kSelected) != 0);
    }
    bool IsSelected(unsigned int index) const { return keys[index].flag != 0; }
    void SetSelected(unsigned int index, bool on) { keys[index].flag = on ? 1 : 0; }
    T LeftValueOf(unsigned int index) const { return keys[index].value; }
    T RightValueOf(unsigned int index) const { return keys[index].value; }
    void ApplyLeftValue(T) {}

    /// The value strictly inside the segment to the right of key i.
    double EvalJustAfterIndex(double x, unsigned int i) const
    {
        K const& a = keys[i];
        K const& b = keys[i + 1];
        return a.value + (b.value - a.value) * ((x - a.parameter) / (b.parameter - a.parameter));
    }
    static constexpr HvBaseFCurve::FSKind SegmentKindOf(unsigned int)
    {
        return HvBaseFCurve::LinearSegment;
    }
    /// What each relative cycle adds to the values: last minus first value.
    double CycleOffset() const { return keys[keys.Count() - 1].value - keys[0].value; }

    /// Drops the keys between `first` and `last` that lie within `tolerance` times the range of the
    /// values of lines between those that stay. User data go with their keys. Returns how many
    /// went. Cost: one pass.
    unsigned int ReduceNumKeys(unsigned int first, unsigned int last, double tolerance,
                               HvBaseFCurve& curve);
    /// Convolves the values of the keys `first` to `last` with a kernel. A value that would be no
    /// finite number stays. Without memory nothing changes.
    void SmoothSequence(unsigned int first, unsigned int last, double const* kernel,
                        unsigned int kernelSize, HvBaseFCurve& curve);

    void AddFlattenedSegments(unsigned int i, unsigned int j, CFCFlattenOutput& out) const;
    void AddFlattenedLeftPiece(unsigned int i, double x, CFCFlattenOutput& out) const;
    void AddFlattenedRightPiece(unsigned int i, double x, CFCFlattenOutput& out) const;
    void AddFlattenedPartialSegment(unsigned int i, double a, double b,
                                    CFCFlattenOutput& out) const;
};

/// Standard keys: K is CFCStdKey.
template <class T, class K>
class CFCKeyStoreC {
public:
    /// The locks that a standard key knows.
    static constexpr unsigned short kEveryLock = CFCKeyConstraint::kAllLocked;

    HvAltDynArray<K> keys{kKeyStoreCapacity};
    int defaultSegmentKind =
        HvBaseFCurve::CubicSegment;  ///< span before the first key, and new keys
    bool keepsSpareKeys = false;     ///< ReleaseSpareKeys does nothing: what goes comes back

    /// Inserts a key at `index`, with `word` as its constraint word. Cannot fail after
    /// ReserveForOneMoreKey.
    void InsertKey(unsigned int index, K const& key, unsigned short word)
    {
        K copy = key;
        copy.constraints.word = word;
        CFCKeyStore_Insert(keys, index, copy);
    }
    /// Makes room for `count` keys in all, so that inserting up to them cannot fail.
    void ReserveKeys(unsigned int count) { keys.Reserve(count); }
    void ReserveForOneMoreKey() { keys.Reserve(HvArrayCapacity_GrownSize(keys.Count(), 1)); }
    /// Removes the keys `first` to `last` inclusive. Never fails: the storage stays as it is until
    /// ReleaseSpareKeys, so that what follows a removal can be done without memory.
    void RemoveKeyRange(unsigned int first, unsigned int last) noexcept
    {
        CFCKeyStore_RemoveRange(keys, first, last);
    }
    /// RemoveKeyRange and ReleaseSpareKeys at once.
    void RemoveKeyRangeAndSpare(unsigned int first, unsigned int last) noexcept
    {
        if (keepsSpareKeys) {
            RemoveKeyRange(first, last);
        } else {
            CFCKeyStore_RemoveRangeAndSpare(keys, first, last);
        }
    }
    /// Removes the keys marked in `dropped` in one pass.
    void RemoveMarkedKeys(HvBoolArray const& dropped) noexcept
    {
        CFCKeyStore_RemoveMarked(keys, dropped);
    }
    void ReleaseSpareKeys() noexcept
    {
        if (!keepsSpareKeys) {
            CFCKeyStore_ReleaseSpare(keys);
        }
    }
    void Swap(CFCKeyStoreC& other) noexcept
    {
        keys.Swap(other.keys);
        std::swap(defaultSegmentKind, other.defaultSegmentKind);
    }
    unsigned short ConstraintWord(unsigned int index) const { return keys[index].constraints.word; }
    void SetConstraintWord(unsigned int index, unsigned short word)
    {
        keys[index].constraints.word = word;
    }
    bool IsSelected(unsigned int index) const
    {
        return keys[index].constraints.HasAny(CFCKeyConstraint::kSelected);
    }
    void SetSelected(unsigned int index, bool on)
    {
        keys[index].constraints.Assign(CFCKeyConstraint::kSelected, on);
    }
    T LeftValueOf(unsigned int index) const { return keys[index].leftValue; }
    T RightValueOf(unsigned int index) const { return keys[index].rightValue; }

    // Evaluated tangents: the handles that segments really use, the stored ones after the key's
    // constraints are applied.
    HvPoint2<double> GetEvaluatedLeftTgt(unsigned int i) const;
    HvPoint2<double> GetEvaluatedRightTgt(unsigned int i) const;
    double GetEvaluatedLeftTgtY(unsigned int i) const;
    double GetEvaluatedRightTgtY(unsigned int i) const;
    /// The four control points of the segment from key i to key j.
    void BezierCubicSetupUsingEvaluatedTangents(unsigned int i, unsigned int j,
                                                HvPoint2<double>* P) const;
    /// The value strictly inside the segment to the right of key i.
    double EvalJustAfterIndex(double x, unsigned int i) const;

    unsigned char SegmentKindOf(unsigned int i) const { return keys[i].segmentKind; }
    /// What each relative cycle adds to the values when it is drawn: last right minus first left
    /// value.
    double CycleOffset() const { return keys[keys.Count() - 1].rightValue - keys[0].leftValue; }

    /// Drops the keys between `first` and `last`, inside runs of constant or of linear segments,
    /// that lie within `tolerance` times the range of the values of their run of lines between
    /// those that stay. A locked key stays, and so does a key where the kind changes; cubic runs
    /// are left alone. User data go with their keys. Returns how many went. Cost: one pass.
    unsigned int ReduceNumKeys(unsigned int first, unsigned int last, double tolerance,
                               HvBaseFCurve& curve);
    /// Convolves the left and the right values of the keys `first` to `last`, each with their own
    /// kind, with a kernel; handles move along. Values of a locked key stay, and so does a value
    /// that would be no finite number. Without memory nothing changes.
    void SmoothSequence(unsigned int first, unsigned int last, double const* kernel,
                        unsigned int kernelSize, HvBaseFCurve& curve);

    void AddFlattenedSegments(unsigned int i, unsigned int j, CFCFlattenOutput& out) const;
    void AddFlattenedLeftPiece(unsigned int i, double x, CFCFlattenOutput& out) const;
    void AddFlattenedRightPiece(unsigned int i, double x, CFCFlattenOutput& out) const;
    void AddFlattenedPartialSegment(unsigned int i, double a, double b,
                                    CFCFlattenOutput& out) const;
};

using CFCBooleanStore = CFCKeyStoreA<bool, CFCSingleValueKey<bool>>;
using CFCIntegerStore = CFCKeyStoreA<int, CFCSingleValueKey<int>>;
using CFCRawStore = CFCKeyStoreB<double, CFCSingleValueKey<double>>;
using CFCStdStore = CFCKeyStoreC<double, CFCStdKey>;

#endif
