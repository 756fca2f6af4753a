// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Parking over the futex of Linux; elsewhere over the standard library.

#if !defined(_WIN32)

#include <hv/platform/internal/parking.h>

#if defined(__linux__)

#include <cerrno>

#include <linux/futex.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

static_assert(sizeof(std::atomic<std::uint32_t>) == 4 &&
                  std::atomic<std::uint32_t>::is_always_lock_free,
              "the kernel reads the word as a plain 32-bit integer");

// A lock must not disturb the errno of the code around it; EAGAIN and EINTR are ordinary here, and
// the callers look at the word again in any case.
void Futex(std::atomic<std::uint32_t>& word, int operation, std::uint32_t value)
{
    int const saved = errno;
    syscall(SYS_futex, reinterpret_cast<std::uint32_t*>(&word), operation, value, nullptr, nullptr,
            0);
    errno = saved;
}

}  // namespace

void HvParking_Wait(std::atomic<std::uint32_t>& word, std::uint32_t expected) noexcept
{
    Futex(word, FUTEX_WAIT_PRIVATE, expected);
}

void HvParking_WakeOne(std::atomic<std::uint32_t>& word) noexcept
{
    Futex(word, FUTEX_WAKE_PRIVATE, 1);
}

#else

#include <hv/platform/internal/HvParkingTable.h>

#include <new>

namespace {

// Never destroyed: sections are entered until the last static object of the process is gone.
HvParkingTable& Table()
{
    alignas(HvParkingTable) static unsigned char storage[sizeof(HvParkingTable)];
    static HvParkingTable* const table = new (storage) HvParkingTable;
    return *table;
}

}  // namespace

void HvParking_Wait(std::atomic<std::uint32_t>& word, std::uint32_t expected) noexcept
{
    Table().Wait(word, expected);
}

void HvParking_WakeOne(std::atomic<std::uint32_t>& word) noexcept
{
    Table().Wake(&word);
}

#endif

#endif
