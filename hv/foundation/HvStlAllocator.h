// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// HvStlAllocator: the library's storage for containers of the standard library.

#ifndef HV_FOUNDATION_HVSTLALLOCATOR_H
#define HV_FOUNDATION_HVSTLALLOCATOR_H

#include <hv/foundation/HvMemory.h>

#include <cstddef>
#include <limits>
#include <new>

/// An allocator over HvAllocate and HvFree, for the few places where a container of the standard
/// library is the right one. All of them are equal, so nodes and buffers move freely between
/// containers.
template <class T>
class HvStlAllocator {
    static_assert(alignof(T) <= alignof(std::max_align_t), "HvAllocate aligns for standard types");

public:
    /// What is allocated.
    using value_type = T;

    HvStlAllocator() noexcept = default;
    /// All allocators are alike.
    template <class U>
    HvStlAllocator(HvStlAllocator<U> const&) noexcept
    {
    }

    /// Storage for `count` elements. Throws std::bad_alloc, also for a size that no memory holds.
    T* allocate(std::size_t count)
    {
        if (count > std::numeric_limits<std::size_t>::max() / sizeof(T)) {
            throw std::bad_alloc();
        }
        return static_cast<T*>(HvAllocate(count * sizeof(T)));
    }
    /// HvFree; the count has no effect.
    void deallocate(T* elements, std::size_t) noexcept { HvFree(elements); }
};

/// All allocators are alike: what one took, another may give back.
template <class T, class U>
bool operator==(HvStlAllocator<T> const&, HvStlAllocator<U> const&) noexcept
{
    return true;
}

/// Never: all allocators are alike.
template <class T, class U>
bool operator!=(HvStlAllocator<T> const&, HvStlAllocator<U> const&) noexcept
{
    return false;
}

#endif
