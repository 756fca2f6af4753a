// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Storage of the platform layer itself, which lies below the library's allocator.

#ifndef HV_PLATFORM_INTERNAL_RAW_STORAGE_H
#define HV_PLATFORM_INTERNAL_RAW_STORAGE_H

#include <cstddef>

/// Returns `count` zero-filled elements of `size` bytes from calloc, or null when there is no
/// memory or the refusal says no.
void* HvRawStorage_Allocate(std::size_t count, std::size_t size) noexcept;

/// Gives back what HvRawStorage_Allocate returned; null does nothing.
void HvRawStorage_Free(void* block) noexcept;

/// Decides about one allocation of `bytes` bytes: 0 refuses it.
using HvRawStorageRefusal = int (*)(std::size_t bytes);

/// Sets whom HvRawStorage_Allocate asks first; null, the initial state, asks nobody. For tests.
void HvRawStorage_SetRefusal(HvRawStorageRefusal refusal) noexcept;

#endif
