// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Parking of a thread on a word in memory until another thread wakes it.

#ifndef HV_PLATFORM_INTERNAL_PARKING_H
#define HV_PLATFORM_INTERNAL_PARKING_H

#include <atomic>
#include <cstdint>

/// Sleeps while `word` holds `expected`, until woken. May return for no reason: the caller looks at
/// the word again. The value is compared when the thread is already listed as sleeping, so a wake
/// that follows a change of the word is not missed.
void HvParking_Wait(std::atomic<std::uint32_t>& word, std::uint32_t expected) noexcept;

/// Wakes at least one of the threads that sleep on `word`, if there are any. Only the address
/// counts: the word itself is not read and may be gone.
void HvParking_WakeOne(std::atomic<std::uint32_t>& word) noexcept;

#endif
