// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Storage of the library over calloc, realloc and free.

#include <hv/foundation/HvMemory.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<HvAllocationHook> allocationHook{nullptr};
std::atomic<HvReleaseHook> releaseHook{nullptr};

void AskAllocationHook(std::size_t size)
{
    HvAllocationHook const hook = allocationHook.load(std::memory_order_acquire);
    if (hook != nullptr && hook(size) == 0) {
        throw std::bad_alloc();
    }
}

void TellReleaseHook(void* block) noexcept
{
    HvReleaseHook const hook = releaseHook.load(std::memory_order_acquire);
    if (hook != nullptr && block != nullptr) {
        hook(block);
    }
}

void* NotNull(void* block)
{
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

}  // namespace

void* HvAllocate(std::size_t size)
{
    AskAllocationHook(size);
    return NotNull(std::calloc(1, std::max(size, std::size_t(1))));
}

void* HvReallocate(void* block, std::size_t size)
{
    AskAllocationHook(size);
    TellReleaseHook(block);
    return NotNull(std::realloc(block, std::max(size, std::size_t(1))));
}

void HvFree(void* block) noexcept
{
    TellReleaseHook(block);
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
