// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Elements in a row of raw storage, as the growing arrays keep them.

#ifndef HV_FOUNDATION_RAW_ELEMENTS_H
#define HV_FOUNDATION_RAW_ELEMENTS_H

#include <hv/foundation/HvMemory.h>
#include <hv/foundation/array_capacity.h>

#include <cstring>
#include <functional>

/// Zero-filled storage for `capacity` elements; throws std::bad_alloc.
template <class T>
T* HvElements_Allocate(unsigned int capacity)
{
    static_assert(alignof(T) <= alignof(std::max_align_t), "HvAllocate aligns no further");
    return static_cast<T*>(HvAllocate(HvArrayCapacity_Bytes(capacity, sizeof(T))));
}

/// Storage from HvElements_Allocate with room for `capacity` elements instead, see HvReallocate;
/// throws std::bad_alloc.
template <class T>
T* HvElements_Reallocate(T* elements, unsigned int capacity)
{
    return static_cast<T*>(HvReallocate(elements, HvArrayCapacity_Bytes(capacity, sizeof(T))));
}

/// Copies `count` elements as bytes between two places that do not overlap.
template <class T>
void HvElements_Copy(T* to, T const* from, unsigned int count)
{
    if (count != 0) {
        std::memcpy(static_cast<void*>(to), from, count * sizeof(T));
    }
}

/// Copies `count` elements as bytes; the places may overlap.
template <class T>
void HvElements_Move(T* to, T const* from, unsigned int count)
{
    if (count != 0) {
        std::memmove(static_cast<void*>(to), from, count * sizeof(T));
    }
}

/// Sets the bytes of `count` elements to 0.
template <class T>
void HvElements_Zero(T* elements, unsigned int count)
{
    if (count != 0) {
        std::memset(static_cast<void*>(elements), 0, count * sizeof(T));
    }
}

/// Index of the element that lies at `place`, `count` when it lies outside the row.
template <class T>
unsigned int HvElements_IndexOf(T const* elements, unsigned int count, T const* place)
{
    std::less<T const*> const before{};
    bool const inside = !before(place, elements) && before(place, elements + count);
    return inside ? static_cast<unsigned int>(place - elements) : count;
}

#endif
