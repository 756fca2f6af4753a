// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A growing array of elements with constructors and destructors.

#ifndef HV_FOUNDATION_HVDYNARRAY_H
#define HV_FOUNDATION_HVDYNARRAY_H

#include <hv/foundation/array_capacity.h>
#include <hv/foundation/raw_elements.h>

#include <algorithm>
#include <cassert>
#include <memory>
#include <type_traits>
#include <utility>

/// A growing array of elements with constructors and destructors, such as arrays of arrays.
///
/// Every slot up to the capacity holds a live element, from the start a default one (plain types:
/// zeros); a slot beyond the count that was in use holds whatever was left there. Capacity follows
/// the rule of the typed arrays, see HvArrayCapacity_AfterResize. Elements move between slots by
/// move assignment where that cannot throw, so arrays in an array hand over their storage;
/// otherwise they are copied. A std::bad_alloc leaves the array as it was, but for elements whose
/// moves can throw. No index is checked. Not thread-safe: the owner serialises access.
template <class T>
class HvDynArray {
public:
    /// Count 0, capacity `capacity`, at least 1.
    explicit HvDynArray(unsigned int capacity)
        : count_(0), capacity_(std::max(capacity, 1u)), data_(MakeSlots(capacity_))
    {
    }
    /// Deep copy, with the capacity of `other`.
    HvDynArray(HvDynArray const& other) : HvDynArray(other, other.capacity_) {}
    /// Deep copy, with the capacity that Resize(other.Count()) would give.
    HvDynArray& operator=(HvDynArray const& other)
    {
        if (this != &other) {
            HvDynArray copy(other, HvArrayCapacity_AfterResize(capacity_, other.count_));
            Swap(copy);
        }
        return *this;
    }
    ~HvDynArray()
    {
        std::destroy_n(data_, capacity_);
        HvFree(data_);
    }

    /// Elements in use.
    unsigned int Count() const { return count_; }
    /// Elements allocated.
    unsigned int Capacity() const { return capacity_; }
    /// The first element; good until an operation changes the count.
    T* Data() { return data_; }
    /// The first element; good until an operation changes the count.
    T const* Data() const { return data_; }
    /// Element `i`, which is not checked.
    T& operator[](unsigned int i) { return data_[i]; }
    /// Element `i`, which is not checked.
    T const& operator[](unsigned int i) const { return data_[i]; }
    /// The first element.
    T* begin() { return data_; }
    /// The first element.
    T const* begin() const { return data_; }
    /// Behind the last element.
    T* end() { return data_ + count_; }
    /// Behind the last element.
    T const* end() const { return data_ + count_; }

    /// Makes the count `n`; grows or shrinks the storage. Elements that come into use are not set:
    /// in a slot used before they hold what was left there.
    void Resize(unsigned int n)
    {
        SetCapacity(HvArrayCapacity_AfterResize(capacity_, n), std::min(count_, n));
        count_ = n;
    }
    /// Makes the count `n` when it is above; the capacity and the elements stay.
    void Chop(unsigned int n) { count_ = std::min(count_, n); }
    /// Makes the capacity hold `n` elements without changing the count. Never shrinks.
    void Reserve(unsigned int n)
    {
        if (n > capacity_) {
            SetCapacity(HvArrayCapacity_AfterResize(capacity_, n), count_);
        }
    }

    /// Appends a copy; `element` may be one of the array. Cost: amortised constant number of moves.
    void Add(T const& element)
    {
        if (count_ < capacity_) {
            data_[count_] = element;
            ++count_;
        } else {
            Add(T(element));
        }
    }
    /// Appends by move assignment; `element` is not one of the array.
    void Add(T&& element)
    {
        if (count_ == capacity_) {
            Reserve(HvArrayCapacity_GrownSize(count_, 1));
        }
        data_[count_] = std::move(element);
        ++count_;
    }
    /// Moves the elements from `i` on one place up and stores a copy at `i`, 0 <= i <= Count();
    /// `element` may be one of the array. Storage follows Resize(Count() + 1).
    void InsertBefore(unsigned int i, T const& element)
    {
        assert(i <= count_);
        T copy(element);
        SetCapacity(HvArrayCapacity_AfterResize(capacity_, HvArrayCapacity_GrownSize(count_, 1)),
                    count_);
        std::move_backward(data_ + i, data_ + count_, data_ + count_ + 1);
        data_[i] = std::move(copy);
        ++count_;
    }

    /// Removes the elements `first` to `last` inclusive, first <= last; the storage shrinks when
    /// the count falls below half the capacity.
    void RemoveClosedRange(unsigned int first, unsigned int last)
    {
        assert(first <= last && last < count_);
        unsigned int const count = count_ - (last - first + 1);
        if (count < capacity_ / 2) {
            // Built aside, so that a shrink that gets no memory leaves the array as it was.
            HvDynArray shrunk(HvArrayCapacity_AfterResize(capacity_, count));
            Transfer(data_, data_ + first, shrunk.data_);
            Transfer(data_ + last + 1, data_ + count_, shrunk.data_ + first);
            Swap(shrunk);
        } else {
            std::move(data_ + last + 1, data_ + count_, data_ + first);
        }
        count_ = count;
    }

    /// Exchanges the contents of two arrays.
    void Swap(HvDynArray& other) noexcept
    {
        std::swap(count_, other.count_);
        std::swap(capacity_, other.capacity_);
        std::swap(data_, other.data_);
    }

private:
    HvDynArray(HvDynArray const& other, unsigned int capacity) : HvDynArray(capacity)
    {
        std::copy(other.begin(), other.end(), data_);
        count_ = other.count_;
    }

    static T* MakeSlots(unsigned int capacity)
    {
        T* const data = HvElements_Allocate<T>(capacity);
        try {
            std::uninitialized_value_construct_n(data, capacity);
        } catch (...) {
            HvFree(data);
            throw;
        }
        return data;
    }

    /// Hands elements over to another block; those whose moves can throw are copied, so that the
    /// old block stays whole.
    static void Transfer(T* first, T* last, T* to)
    {
        if constexpr (std::is_nothrow_move_assignable<T>::value) {
            std::move(first, last, to);
        } else {
            std::copy(first, last, to);
        }
    }

    /// Moves the first `keep` elements into a block of `capacity`, unless it has that capacity.
    void SetCapacity(unsigned int capacity, unsigned int keep)
    {
        if (capacity != capacity_) {
            HvDynArray block(capacity);
            Transfer(data_, data_ + keep, block.data_);
            block.count_ = keep;
            Swap(block);
        }
    }

    unsigned int count_;
    unsigned int capacity_;
    T* data_;
};

#endif
