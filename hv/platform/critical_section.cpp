// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// CRITICAL_SECTION where the platform has none of its own. The three states and their transitions
// are those of U. Drepper, Futexes Are Tricky, 2011, section 5 ("mutex, take 2"); owner and depth
// are added for the recursion.

#if !defined(_WIN32)

#include <hv/platform/critical_section.h>
#include <hv/platform/internal/fast_thread_local.h>
#include <hv/platform/internal/parking.h>

namespace {

constexpr std::uint32_t kFree = 0;
constexpr std::uint32_t kHeld = 1;
constexpr std::uint32_t kHeldAndWaitedFor = 2;

// Looks at a held section before its visitor is parked, each after twice the rest of the one
// before: one or two microseconds in all. An evaluation holds its curve for some ten to a hundred
// nanoseconds, while parking and waking cost microseconds. Looking more often takes the record's
// cache line from the holder and makes two threads on one curve slower than either alone (measured:
// five times slower at 40 looks without rests).
constexpr int kLooksBeforeParking = 5;

HV_FAST_THREAD_LOCAL char identity;

// The address of a thread's own variable: unlike that of any other living thread, never 0.
std::uintptr_t OwnIdentity()
{
    return reinterpret_cast<std::uintptr_t>(&identity);
}

// Rests for `count` pauses of the processor, ten to fifty nanoseconds each.
void Rest(int count)
{
    for (int k = 0; k < count; ++k) {
#if defined(__x86_64__) || defined(__i386__)
        __builtin_ia32_pause();
#elif defined(__aarch64__)
        __asm__ __volatile__("yield");
#endif
    }
}

bool TakeIfFree(CRITICAL_SECTION& section)
{
    std::uint32_t expected = kFree;
    return section.state.compare_exchange_strong(expected, kHeld, std::memory_order_acquire,
                                                 std::memory_order_relaxed);
}

void TakeContended(CRITICAL_SECTION& section)
{
    for (int look = 0; look < kLooksBeforeParking; ++look) {
        if (section.state.load(std::memory_order_relaxed) == kFree && TakeIfFree(section)) {
            return;
        }
        Rest(1 << look);
    }
    // Whoever has been here may have left others parked, so it holds the section as waited for.
    while (section.state.exchange(kHeldAndWaitedFor, std::memory_order_acquire) != kFree) {
        HvParking_Wait(section.state, kHeldAndWaitedFor);
    }
}

// Nobody but the owner can read its own identity there: it alone stores it, and takes it out again
// before it frees the section. So a relaxed load decides, and `reentries` needs no atomic.
bool EnterAgain(CRITICAL_SECTION& section, std::uintptr_t self)
{
    if (section.owner.load(std::memory_order_relaxed) != self) {
        return false;
    }
    ++section.reentries;
    return true;
}

}  // namespace

void InitializeCriticalSection(CRITICAL_SECTION* section)
{
    section->state.store(kFree, std::memory_order_relaxed);
    section->reentries = 0;
    section->owner.store(0, std::memory_order_relaxed);
}

void EnterCriticalSection(CRITICAL_SECTION* section)
{
    std::uintptr_t const self = OwnIdentity();
    if (EnterAgain(*section, self)) {
        return;
    }
    if (!TakeIfFree(*section)) {
        TakeContended(*section);
    }
    section->owner.store(self, std::memory_order_relaxed);
}

int TryEnterCriticalSection(CRITICAL_SECTION* section)
{
    std::uintptr_t const self = OwnIdentity();
    if (EnterAgain(*section, self)) {
        return 1;
    }
    if (!TakeIfFree(*section)) {
        return 0;
    }
    section->owner.store(self, std::memory_order_relaxed);
    return 1;
}

void LeaveCriticalSection(CRITICAL_SECTION* section)
{
    if (section->reentries != 0) {
        --section->reentries;
        return;
    }
    section->owner.store(0, std::memory_order_relaxed);
    // From the exchange on the next owner may delete the section: only its address is used after.
    if (section->state.exchange(kFree, std::memory_order_release) == kHeldAndWaitedFor) {
        HvParking_WakeOne(section->state);
    }
}

void DeleteCriticalSection(CRITICAL_SECTION* section)
{
    InitializeCriticalSection(section);
}

#endif
