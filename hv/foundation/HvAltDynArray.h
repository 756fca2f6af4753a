// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A growing array of records that may be moved as raw bytes.

#ifndef HV_FOUNDATION_HVALTDYNARRAY_H
#define HV_FOUNDATION_HVALTDYNARRAY_H

#include <hv/foundation/array_capacity.h>
#include <hv/foundation/raw_elements.h>

#include <algorithm>
#include <cassert>
#include <type_traits>
#include <utility>

/// A growing array of records that may be moved as raw bytes, such as the keys of a curve.
///
/// The storage is one zero-filled block, and the slots beyond the count always hold zeros: an
/// operation that frees slots zeroes them. Capacity follows the rule of the typed arrays, see
/// HvArrayCapacity_AfterResize. Storage is allocated before any field changes, so a std::bad_alloc
/// leaves the array as it was. No index is checked. Not thread-safe: the owner serialises access.
template <class T>
class HvAltDynArray {
    static_assert(std::is_trivially_copyable<T>::value, "records are moved as raw bytes");

public:
    /// Count 0, capacity `capacity`, at least 1.
    explicit HvAltDynArray(unsigned int capacity)
        : count_(0), capacity_(std::max(capacity, 1u)), data_(HvElements_Allocate<T>(capacity_))
    {
    }
    /// Deep copy, with the capacity of `other`.
    HvAltDynArray(HvAltDynArray const& other) : HvAltDynArray(other.capacity_)
    {
        HvElements_Copy(data_, other.data_, other.count_);
        count_ = other.count_;
    }
    /// Deep copy; keeps its storage where Resize(other.Count()) would.
    HvAltDynArray& operator=(HvAltDynArray const& other)
    {
        if (this != &other) {
            SetCapacity(HvArrayCapacity_AfterResize(capacity_, other.count_), 0);
            HvElements_Copy(data_, other.data_, other.count_);
            SetCount(other.count_);
        }
        return *this;
    }
    ~HvAltDynArray() { HvFree(data_); }

    /// Records in use.
    unsigned int Count() const { return count_; }
    /// Records allocated.
    unsigned int Capacity() const { return capacity_; }
    /// The first record; good until an operation changes the count.
    T* Data() { return data_; }
    /// The first record; good until an operation changes the count.
    T const* Data() const { return data_; }
    /// Record `i`, which is not checked.
    T& operator[](unsigned int i) { return data_[i]; }
    /// Record `i`, which is not checked.
    T const& operator[](unsigned int i) const { return data_[i]; }
    /// The first record.
    T* begin() { return data_; }
    /// The first record.
    T const* begin() const { return data_; }
    /// Behind the last record.
    T* end() { return data_ + count_; }
    /// Behind the last record.
    T const* end() const { return data_ + count_; }

    /// Makes the count `n`; grows or shrinks the storage. New records are zeros.
    void Resize(unsigned int n)
    {
        SetCapacity(HvArrayCapacity_AfterResize(capacity_, n), std::min(count_, n));
        SetCount(n);
    }
    /// Makes the count `n` when it is above; the capacity stays.
    void Chop(unsigned int n) { SetCount(std::min(count_, n)); }
    /// Makes the capacity hold `n` records without changing the count, so that as many can be added
    /// without a further allocation. Never shrinks.
    void Reserve(unsigned int n)
    {
        if (n > capacity_) {
            SetCapacity(HvArrayCapacity_AfterResize(capacity_, n), count_);
        }
    }

    /// Appends a copy; `record` may be one of the array. Cost: amortised constant.
    void Add(T const& record)
    {
        T const copy = record;
        if (count_ == capacity_) {
            Reserve(HvArrayCapacity_GrownSize(count_, 1));
        }
        data_[count_++] = copy;
    }
    /// Moves the records from `i` on one place up and stores a copy at `i`, 0 <= i <= Count();
    /// `record` may be one of the array. Storage follows Resize(Count() + 1).
    void InsertBefore(unsigned int i, T const& record)
    {
        assert(i <= count_);
        T const copy = record;
        SetCapacity(HvArrayCapacity_AfterResize(capacity_, HvArrayCapacity_GrownSize(count_, 1)),
                    count_);
        HvElements_Move(data_ + i + 1, data_ + i, count_ - i);
        data_[i] = copy;
        ++count_;
    }

    /// Removes record `i`; the storage shrinks when the count falls below half the capacity.
    void Remove(unsigned int i) { RemoveClosedRange(i, i); }
    /// Removes the records `first` to `last` inclusive, first <= last; shrinks like Remove.
    void RemoveClosedRange(unsigned int first, unsigned int last)
    {
        assert(first <= last && last < count_);
        unsigned int const count = count_ - (last - first + 1);
        unsigned int const tail = count_ - (last + 1);
        if (count < capacity_ / 2) {
            // Built aside, so that a shrink that gets no memory leaves the array as it was.
            HvAltDynArray shrunk(HvArrayCapacity_AfterResize(capacity_, count));
            HvElements_Copy(shrunk.data_, data_, first);
            HvElements_Copy(shrunk.data_ + first, data_ + last + 1, tail);
            shrunk.count_ = count;
            Swap(shrunk);
        } else {
            HvElements_Move(data_ + first, data_ + last + 1, tail);
            SetCount(count);
        }
    }

    /// Exchanges the contents of two arrays.
    void Swap(HvAltDynArray& other) noexcept
    {
        std::swap(count_, other.count_);
        std::swap(capacity_, other.capacity_);
        std::swap(data_, other.data_);
    }

private:
    /// Publishes the count and zeroes the slots that it frees.
    void SetCount(unsigned int n)
    {
        if (n < count_) {
            HvElements_Zero(data_ + n, count_ - n);
        }
        count_ = n;
    }

    /// Moves the first `keep` records into a block of `capacity`, unless it has that capacity.
    void SetCapacity(unsigned int capacity, unsigned int keep)
    {
        if (capacity != capacity_) {
            T* const data = HvElements_Allocate<T>(capacity);
            HvElements_Copy(data, data_, keep);
            HvFree(data_);
            data_ = data;
            capacity_ = capacity;
            count_ = keep;
        }
    }

    unsigned int count_;
    unsigned int capacity_;
    T* data_;
};

#endif
