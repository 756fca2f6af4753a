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
#include <hv/foundation/array_capacity.h>

#include <algorithm>
#include <new>

#include <algorithm>
#include <type_traits>
#include <utility>

class CFCFlattenOutput;

/// Initial capacity of the arrays of keys.
constexpr unsigned int kKeyStoreCapacity = 2;

/// Stepped keys: K is CFCSingleValueKey<T>.
template <class T, class K>
class CFCKeyStoreA {
public:
    /// The locks that a stepped key knows.
    static constexpr unsigned short kEveryLock =
        CFCKeyConstraint::kValueLocked | CFCKeyConstraint::kParameterLocked;

    HvAltDynArray<K> keys{kKeyStoreCapacity};
    HvAltDynArray<CFCKeyConstraint> constraints{kKeyStoreCapacity};  ///< element i belongs to key i
    T leftValue{};  ///< the curve's value before the first key

    /// Inserts a key and its word at `index`. Both arrays are grown before either changes.
    void InsertKey(unsigned int index, K const& key, unsigned short word)
    {
        keys.Reserve(HvArrayCapacity_GrownSize(keys.Count(), 1));
        constraints.Reserve(HvArrayCapacity_GrownSize(constraints.Count(), 1));
        keys.Add(key);
        constraints.Add(CFCKeyConstraint{word});
        std::rotate(keys.begin() + index, keys.end() - 1, keys.end());
        std::rotate(constraints.begin() + index, constraints.end() - 1, constraints.end());
    }
    /// Makes room for `count` keys in all, so that inserting up to them cannot fail.
    void ReserveKeys(unsigned int count)
    {
        keys.Reserve(count);
        constraints.Reserve(count);
    }
    /// Removes the keys `first` to `last` inclusive, and their words.
    void RemoveKeyRange(unsigned int first, unsigned int last)
    {
        // The words go from a copy first: a shrink that gets no memory leaves both arrays as they
        // were.
        HvAltDynArray<CFCKeyConstraint> words(constraints);
        words.RemoveClosedRange(first, last);
        keys.RemoveClosedRange(first, last);
        constraints.Swap(words);
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

    void InsertKey(unsigned int index, K const& key, unsigned short)
    {
        keys.InsertBefore(index, key);
    }
    /// Makes room for `count` keys in all, so that inserting up to them cannot fail.
    void ReserveKeys(unsigned int count) { keys.Reserve(count); }
    void RemoveKeyRange(unsigned int first, unsigned int last)
    {
        keys.RemoveClosedRange(first, last);
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

    /// Inserts a key at `index`, with `word` as its constraint word. Cannot fail after
    /// ReserveForOneMoreKey.
    void InsertKey(unsigned int index, K const& key, unsigned short word)
    {
        K copy = key;
        copy.constraints.word = word;
        keys.Add(copy);
        std::copy_backward(keys.begin() + index, keys.end() - 1, keys.end());
        keys[index] = copy;
    }
    void ReserveForOneMoreKey() { keys.Reserve(HvArrayCapacity_GrownSize(keys.Count(), 1)); }
    /// Removes the keys `first` to `last` inclusive. Never fails: the storage stays as it is until
    /// ReleaseSpareKeys, so that what follows a removal can be done without memory.
    void RemoveKeyRange(unsigned int first, unsigned int last) noexcept
    {
        std::copy(keys.begin() + last + 1, keys.end(), keys.begin() + first);
        keys.Chop(keys.Count() - (last - first + 1));
    }
    /// Gives back storage of which less than half is in use. Without memory for the smaller block
    /// the larger one stays, so that an edit that is done does not fail by tidying up.
    void ReleaseSpareKeys() noexcept
    {
        if (keys.Count() < keys.Capacity() / 2) {
            try {
                keys.Resize(keys.Count());
            } catch (std::bad_alloc const&) {
            }
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
