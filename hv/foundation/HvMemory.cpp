// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Storage of the library over calloc and free.

#include <hv/foundation/HvMemory.h>

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<HvAllocationHook> allocationHook{nullptr};
std::atomic<HvReleaseHook> releaseHook{nullptr};

}  // namespace

void* HvAllocate(std::size_t size)
{
    HvAllocationHook const hook = allocationHook.load(std::memory_order_acquire);
    if (hook != nullptr && hook(size) == 0) {
        throw std::bad_alloc();
    }
    void* const block = std::calloc(1, size == 0 ? 1 : size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

void HvFree(void* block) noexcept
{
    HvReleaseHook const hook = releaseHook.load(std::memory_order_acquire);
    if (hook != nullptr && block != nullptr) {
        hook(block);
    }
    std::free(block);
}

void HvSetAllocationHook(HvAllocationHook hook) noexcept
{
    allocationHook.store(hook, std::memory_order_release);
}

void HvSetReleaseHook(HvReleaseHook hook) noexcept
{
    releaseHook.store(hook, std::memory_order_release);
}
