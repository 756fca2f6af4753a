// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Storage of the platform layer over calloc and free.

#include <hv/platform/internal/raw_storage.h>

#include <atomic>
#include <cstdlib>

namespace {

std::atomic<HvRawStorageRefusal> allocationRefusal{nullptr};

}  // namespace

void* HvRawStorage_Allocate(std::size_t count, std::size_t size) noexcept
{
    HvRawStorageRefusal const refusal = allocationRefusal.load(std::memory_order_acquire);
    if (refusal != nullptr && refusal(count * size) == 0) {
        return nullptr;
    }
    return std::calloc(count, size);
}

void HvRawStorage_Free(void* block) noexcept
{
    std::free(block);
}

void HvRawStorage_SetRefusal(HvRawStorageRefusal refusal) noexcept
{
    allocationRefusal.store(refusal, std::memory_order_release);
}
