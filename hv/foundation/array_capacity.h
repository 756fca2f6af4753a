// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The rule by which every array of the library grows and shrinks.

#ifndef HV_FOUNDATION_ARRAY_CAPACITY_H
#define HV_FOUNDATION_ARRAY_CAPACITY_H

#include <cstddef>
#include <limits>
#include <new>

/// Most elements that an array may hold: doubling a 32-bit capacity beyond this would wrap.
constexpr unsigned int kHvArrayMaxCapacity = 1u << 31;

/// The capacity that an array of `capacity` elements has after it was resized to `size`: unchanged
/// while `size` lies above half of it, otherwise halved and doubled until it serves; never 0.
/// Throws std::bad_alloc when `size` lies above kHvArrayMaxCapacity or doubling would pass it.
inline unsigned int HvArrayCapacity_AfterResize(unsigned int capacity, unsigned int size)
{
    if (size > capacity / 2 && size <= capacity) {
        return capacity;
    }
    unsigned int c = capacity;
    while (size < c) {
        c /= 2;
    }
    while (c < size) {
        if (c > kHvArrayMaxCapacity / 2) {
            throw std::bad_alloc();
        }
        c *= 2;
    }
    return c == 0 ? 1 : c;
}

/// Bytes of `capacity` elements of `elementSize` bytes; throws std::bad_alloc beyond what an array
/// or the address space can hold.
inline std::size_t HvArrayCapacity_Bytes(unsigned int capacity, std::size_t elementSize)
{
    if (capacity > kHvArrayMaxCapacity ||
        capacity > std::numeric_limits<std::size_t>::max() / elementSize) {
        throw std::bad_alloc();
    }
    return capacity * elementSize;
}

/// The sum of a size and an increment; throws std::bad_alloc beyond kHvArrayMaxCapacity.
inline unsigned int HvArrayCapacity_GrownSize(unsigned int size, unsigned int increment)
{
    if (increment > kHvArrayMaxCapacity || size > kHvArrayMaxCapacity - increment) {
        throw std::bad_alloc();
    }
    return size + increment;
}

#endif
