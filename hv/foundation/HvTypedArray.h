// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What the twelve typed arrays share.

#ifndef HV_FOUNDATION_HVTYPEDARRAY_H
#define HV_FOUNDATION_HVTYPEDARRAY_H

#include <hv/foundation/HvMemory.h>
#include <hv/foundation/array_capacity.h>
#include <hv/platform/HvExport.h>

#include <type_traits>

/// A growing array of plain elements with deep copy: the shape behind the typed arrays. Those are
/// classes of their own, so that a host can declare them in advance; nobody uses this base by name,
/// and it has no virtual members.
///
/// Capacity is never 0: a requested capacity of 0 becomes 1. It grows by doubling and shrinks at
/// half occupancy, see HvArrayCapacity_AfterResize. Storage is allocated before any field changes,
/// so a std::bad_alloc leaves the array as it was; a size beyond 2^31 elements is refused the same
/// way. No index is checked. Elements, pointers and arrays given to an operation may be parts of
/// the array itself. Not thread-safe: the owner serialises access.
template <class T>
class HV_API HvTypedArray {
    static_assert(std::is_trivially_copyable<T>::value, "elements are moved as raw bytes");

    template <class P>
    using IfPointer =
        std::enable_if_t<std::is_pointer<P>::value && std::is_convertible<P, T const*>::value>;

public:
    /// Size 0, capacity 1.
    HvTypedArray();
    /// Size 0, capacity `count`.
    explicit HvTypedArray(unsigned int count);
    /// `count` elements, each `value`; capacity `count`.
    HvTypedArray(T value, unsigned int count);
    /// A copy of `count` elements at a T const*; capacity `count`. A template of any pointer, so
    /// that a literal 0 is a value and not the null pointer.
    template <class P, class = IfPointer<P>>
    HvTypedArray(P elements, unsigned int count) : HvTypedArray(count)
    {
        InsertBefore(0, elements, count);
    }
    /// Deep copy, with the capacity of `other`.
    HvTypedArray(HvTypedArray const& other);
    /// Deep copy; keeps its storage where Resize(other.Size()) would.
    HvTypedArray& operator=(HvTypedArray const& other);
    /// Takes the contents of `other`, which is then an empty array of capacity 1.
    HvTypedArray(HvTypedArray&& other);
    /// Exchanges the contents with `other`.
    HvTypedArray& operator=(HvTypedArray&& other) noexcept;
    ~HvTypedArray() { HvFree(data_); }

    /// Elements in use.
    unsigned int Size() const { return size_; }
    /// Elements allocated.
    unsigned int Capacity() const { return capacity_; }
    /// The first element; good until an operation changes size or capacity.
    T* Data() { return data_; }
    /// The first element; good until an operation changes size or capacity.
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
    T* end() { return data_ + size_; }
    /// Behind the last element.
    T const* end() const { return data_ + size_; }

    /// Makes the size `n`; grows or shrinks the storage. Elements beyond the old size are not set.
    void Resize(unsigned int n);
    /// Makes the size `n` when it is above; the capacity stays.
    void Chop(unsigned int n);
    /// Resize(n) when the size is above `n`, otherwise nothing.
    void ChopAndResize(unsigned int n);
    /// Makes the capacity hold `n` elements without changing the size, so that as many can be added
    /// without a further allocation. Never shrinks.
    void Reserve(unsigned int n);

    /// Appends a copy. Cost: amortised constant.
    void Add(T const& element)
    {
        T const copy = element;
        if (size_ == capacity_) {
            GrowForOneMore();
        }
        data_[size_++] = copy;
    }
    /// Appends `count` elements at a T const*.
    template <class P, class = IfPointer<P>>
    void Add(P elements, unsigned int count)
    {
        InsertBefore(size_, elements, count);
    }
    /// Appends all of `other`.
    void Add(HvTypedArray const& other);
    /// Appends `count` elements of `other` from index `first` on.
    void Add(HvTypedArray const& other, unsigned int first, unsigned int count);

    /// Moves the elements from `i` on one place up and stores a copy at `i`, 0 <= i <= Size().
    void InsertBefore(unsigned int i, T const& element);
    /// The same with `count` elements.
    void InsertBefore(unsigned int i, T const* elements, unsigned int count);
    /// The same with all of `other`.
    void InsertBefore(unsigned int i, HvTypedArray const& other);

    /// Removes element `i`; the storage shrinks when the size falls below half the capacity.
    void Remove(unsigned int i);
    /// Removes the elements `i` to `j` inclusive, i <= j; shrinks like Remove.
    void RemoveClosedRange(unsigned int i, unsigned int j);

    /// Exchanges the contents of two arrays.
    void Swap(HvTypedArray& other) noexcept;

private:
    void GrowForOneMore();
    void Reallocate(unsigned int capacity);

    unsigned int size_;
    unsigned int capacity_;
    T* data_;
};

#endif
