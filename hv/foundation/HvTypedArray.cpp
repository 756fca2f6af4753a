// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What the twelve typed arrays share.

#include <hv/foundation/HvTypedArray.h>

#include <hv/foundation/HvPoint2.h>
#include <hv/foundation/HvPoint3.h>
#include <hv/foundation/HvPointTag.h>
#include <hv/foundation/raw_elements.h>

#include <algorithm>
#include <cassert>
#include <utility>

template <class T>
HvTypedArray<T>::HvTypedArray() : HvTypedArray(1u)
{
}

template <class T>
HvTypedArray<T>::HvTypedArray(unsigned int count)
    : size_(0), capacity_(std::max(count, 1u)), data_(HvElements_Allocate<T>(capacity_))
{
}

template <class T>
HvTypedArray<T>::HvTypedArray(T value, unsigned int count) : HvTypedArray(count)
{
    std::fill_n(data_, count, value);
    size_ = count;
}

template <class T>
HvTypedArray<T>::HvTypedArray(HvTypedArray const& other) : HvTypedArray(other.capacity_)
{
    HvElements_Copy(data_, other.data_, other.size_);
    size_ = other.size_;
}

template <class T>
HvTypedArray<T>::HvTypedArray(HvTypedArray&& other) : HvTypedArray()
{
    Swap(other);
}

template <class T>
HvTypedArray<T>& HvTypedArray<T>::operator=(HvTypedArray const& other)
{
    if (this != &other) {
        unsigned int const capacity = HvArrayCapacity_AfterResize(capacity_, other.size_);
        if (capacity != capacity_) {
            HvTypedArray fresh(capacity);
            Swap(fresh);
        }
        HvElements_Copy(data_, other.data_, other.size_);
        size_ = other.size_;
    }
    return *this;
}

template <class T>
HvTypedArray<T>& HvTypedArray<T>::operator=(HvTypedArray&& other) noexcept
{
    Swap(other);
    return *this;
}

template <class T>
void HvTypedArray<T>::Resize(unsigned int n)
{
    unsigned int const capacity = HvArrayCapacity_AfterResize(capacity_, n);
    if (capacity != capacity_) {
        Reallocate(capacity);
    }
    size_ = n;
}

template <class T>
void HvTypedArray<T>::Chop(unsigned int n)
{
    size_ = std::min(size_, n);
}

template <class T>
void HvTypedArray<T>::ChopAndResize(unsigned int n)
{
    if (size_ > n) {
        Resize(n);
    }
}

template <class T>
void HvTypedArray<T>::Reserve(unsigned int n)
{
    if (n > capacity_) {
        Reallocate(HvArrayCapacity_AfterResize(capacity_, n));
    }
}

template <class T>
void HvTypedArray<T>::Add(HvTypedArray const& other)
{
    InsertBefore(size_, other.data_, other.size_);
}

template <class T>
void HvTypedArray<T>::Add(HvTypedArray const& other, unsigned int first, unsigned int count)
{
    InsertBefore(size_, other.data_ + first, count);
}

template <class T>
void HvTypedArray<T>::InsertBefore(unsigned int i, T const& element)
{
    T const copy = element;
    InsertBefore(i, &copy, 1);
}

template <class T>
void HvTypedArray<T>::InsertBefore(unsigned int i, T const* elements, unsigned int count)
{
    // Elements of the array itself move under the insertion: those from i on lie `count` further up
    // once the gap is open.
    assert(i <= size_);
    unsigned int const from = HvElements_IndexOf(data_, size_, elements);
    bool const own = from < size_;
    Reserve(HvArrayCapacity_GrownSize(size_, count));
    HvElements_Move(data_ + i + count, data_ + i, size_ - i);
    if (own) {
        unsigned int const below = from < i ? std::min(count, i - from) : 0;
        HvElements_Move(data_ + i, data_ + from, below);
        HvElements_Move(data_ + i + below, data_ + from + below + count, count - below);
    } else {
        HvElements_Copy(data_ + i, elements, count);
    }
    size_ += count;
}

template <class T>
void HvTypedArray<T>::InsertBefore(unsigned int i, HvTypedArray const& other)
{
    InsertBefore(i, other.data_, other.size_);
}

template <class T>
void HvTypedArray<T>::Remove(unsigned int i)
{
    RemoveClosedRange(i, i);
}

template <class T>
void HvTypedArray<T>::RemoveClosedRange(unsigned int i, unsigned int j)
{
    assert(i <= j && j < size_);
    // The tail moves only once nothing can fail any more: a shrink that gets no memory leaves the
    // array as it was.
    unsigned int const size = size_ - (j - i + 1);
    unsigned int const tail = size_ - (j + 1);
    unsigned int const capacity =
        size < capacity_ / 2 ? HvArrayCapacity_AfterResize(capacity_, size) : capacity_;
    if (capacity == capacity_) {
        HvElements_Move(data_ + i, data_ + j + 1, tail);
    } else {
        T* const data = HvElements_Allocate<T>(capacity);
        HvElements_Copy(data, data_, i);
        HvElements_Copy(data + i, data_ + j + 1, tail);
        HvFree(data_);
        data_ = data;
        capacity_ = capacity;
    }
    size_ = size;
}

template <class T>
void HvTypedArray<T>::Swap(HvTypedArray& other) noexcept
{
    std::swap(size_, other.size_);
    std::swap(capacity_, other.capacity_);
    std::swap(data_, other.data_);
}

template <class T>
void HvTypedArray<T>::GrowForOneMore()
{
    Reallocate(HvArrayCapacity_AfterResize(capacity_, HvArrayCapacity_GrownSize(size_, 1)));
}

template <class T>
void HvTypedArray<T>::Reallocate(unsigned int capacity)
{
    data_ = HvElements_Reallocate(data_, capacity);
    capacity_ = capacity;
}

template class HvTypedArray<int>;
template class HvTypedArray<HvPointTag>;
template class HvTypedArray<float>;
template class HvTypedArray<double>;
template class HvTypedArray<unsigned char>;
template class HvTypedArray<unsigned short>;
template class HvTypedArray<unsigned long>;
template class HvTypedArray<void*>;
template class HvTypedArray<HvPoint2<float>>;
template class HvTypedArray<HvPoint2<double>>;
template class HvTypedArray<HvPoint3<float>>;
template class HvTypedArray<HvPoint3<double>>;
