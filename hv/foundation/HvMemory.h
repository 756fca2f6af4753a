// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Storage of the library: everything that it owns comes from HvAllocate and goes to HvFree.

#ifndef HV_FOUNDATION_HVMEMORY_H
#define HV_FOUNDATION_HVMEMORY_H

#include <hv/platform/HvExport.h>

#include <cstddef>

/// Returns `size` bytes, zero-filled and aligned for any standard type; `size` 0 gives one byte.
/// Throws std::bad_alloc when there is no memory or the allocation hook refuses; nothing then
/// changes. Threads: any.
HV_API void* HvAllocate(std::size_t size);

/// Makes `block`, which HvAllocate returned, `size` bytes long, at its place or at another one, and
/// returns that. Its bytes stay as far as they fit; what is new is not set. Large blocks are not
/// copied where the system can move their pages.
///
/// Throws std::bad_alloc as HvAllocate does; the block is then as it was. To the hooks this is an
/// allocation of `size` bytes and the release of a block. Threads: any.
HV_API void* HvReallocate(void* block, std::size_t size);

/// Gives back what HvAllocate returned; null does nothing.
HV_API void HvFree(void* block) noexcept;

/// Decides about one allocation of `size` bytes: 0 refuses it, so that HvAllocate or HvReallocate
/// throws.
using HvAllocationHook = int (*)(std::size_t size);

/// Sets the hook that HvAllocate asks before each allocation; null, the initial state, asks nobody.
/// For tests: refuse the n-th allocation, or count them. Threads: the hook is called by every
/// allocating thread at once.
HV_API void HvSetAllocationHook(HvAllocationHook hook) noexcept;

/// Is told of one block, not null, that is about to be given back.
using HvReleaseHook = void (*)(void* block);

/// Sets the hook that HvFree tells; null, the initial state, tells nobody. For tests: together with
/// the allocation hook it counts the blocks that are alive. Threads: as the allocation hook.
HV_API void HvSetReleaseHook(HvReleaseHook hook) noexcept;

/// Base without data of the classes that a caller may `new` and `delete`: their storage is the
/// library's own, whatever the host does with the global operators.
class HvAllocated {
public:
    /// HvAllocate: zeros, or std::bad_alloc.
    static void* operator new(std::size_t size) { return HvAllocate(size); }
    /// Places an object in storage of the caller.
    static void* operator new(std::size_t, void* place) noexcept { return place; }
    /// HvFree; null does nothing.
    static void operator delete(void* block) noexcept { HvFree(block); }
    /// Matches the placement form; does nothing.
    static void operator delete(void*, void*) noexcept {}
    /// HvAllocate: zeros, or std::bad_alloc.
    static void* operator new[](std::size_t size) { return HvAllocate(size); }
    /// HvFree; null does nothing.
    static void operator delete[](void* block) noexcept { HvFree(block); }

protected:
    HvAllocated() = default;
    ~HvAllocated() = default;
};

#endif
