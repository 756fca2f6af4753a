// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The process's side of the thread-local slots: which numbers are alive, and which life they are
// in.

#ifndef HV_PLATFORM_INTERNAL_HVSLOTREGISTRY_H
#define HV_PLATFORM_INTERNAL_HVSLOTREGISTRY_H

#include <hv/platform/internal/raw_storage.h>
#include <hv/platform/internal/static_section.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>

/// Numbers slots and counts their lives. The generation of a number is raised when the number is
/// given out and when it is taken back: it is odd while the slot is alive, and a thread that keeps
/// the generation beside its value sees whether the value is of this life. `Generation` is an
/// unsigned integer; a number whose generations are used up is never given out again.
///
///     segment 0: numbers 0..255 | segment 1: 256..767 | segment 2: 768..1791 | ...
///
/// Each segment is twice as long as the one before, is made when the first number in it is given
/// out, and never moves or goes: a generation is read without a lock while other threads allocate.
/// An object with static storage is ready before any constructor runs and outlives every
/// destructor.
template <class Generation>
class HvSlotRegistry {
public:
    /// Gives out a number that is not alive, one that has been used before if there is any. Throws
    /// std::bad_alloc when there is no memory or no number left; nothing has changed then.
    unsigned int Allocate()
    {
        Lock const lock;
        if (firstFree == 0) {
            return AllocateNewNumber();
        }
        unsigned int const slot = firstFree - 1;
        Record& record = RecordOf(slot);
        firstFree = record.nextFree;
        Raise(record);
        return slot;
    }

    /// Takes the number back; one that is not alive does nothing.
    void Free(unsigned int slot) noexcept
    {
        Lock const lock;
        if (!IsAlive(GenerationOf(slot))) {
            return;
        }
        Record& record = RecordOf(slot);
        // The generation after the last would begin anew with one that a thread may still keep.
        if (Raise(record) != kLastGeneration) {
            record.nextFree = firstFree;
            firstFree = slot + 1;
        }
    }

    /// The generation of `slot`, 0 for a number that has never been given out. No lock.
    Generation GenerationOf(unsigned int slot) const noexcept
    {
        Place const place = PlaceOf(slot);
        Record const* const segment = segments[place.segment].load(std::memory_order_acquire);
        if (segment == nullptr) {
            return 0;
        }
        return segment[place.index].generation.load(std::memory_order_relaxed);
    }

    static bool IsAlive(Generation generation) { return generation % 2 != 0; }

private:
    struct Record {
        std::atomic<Generation> generation;
        std::uint32_t nextFree;  // the free number below this one, plus 1; 0 ends the stack
    };

    struct Place {
        unsigned int segment;
        unsigned int index;
    };

    class Lock {
    public:
        Lock() { EnterCriticalSection(&HvStaticSection_Of<HvSlotRegistry>()); }
        ~Lock() { LeaveCriticalSection(&HvStaticSection_Of<HvSlotRegistry>()); }
        Lock(Lock const&) = delete;
        Lock& operator=(Lock const&) = delete;
    };

    static constexpr Generation kLastGeneration = std::numeric_limits<Generation>::max() - 1;
    static constexpr unsigned int kFirstSegmentBits = 8;
    static constexpr unsigned int kFirstSegmentLength = 1U << kFirstSegmentBits;
    static constexpr unsigned int kSegments = 33 - kFirstSegmentBits;
    static constexpr std::uint32_t kMostNumbers = std::numeric_limits<std::uint32_t>::max();

    static unsigned int HighestBit(std::uint64_t value) noexcept
    {
#if defined(__GNUC__) || defined(__clang__)
        return 63U - static_cast<unsigned int>(__builtin_clzll(value));
#else
        unsigned int bit = 0;
        while ((value >>= 1) != 0) {
            ++bit;
        }
        return bit;
#endif
    }

    // With the first length added to it, the number's highest bit names its segment, and the bits
    // below are the index there.
    static Place PlaceOf(unsigned int slot) noexcept
    {
        std::uint64_t const shifted = std::uint64_t(slot) + kFirstSegmentLength;
        unsigned int const bit = HighestBit(shifted);
        std::uint64_t const index = shifted - (std::uint64_t(1) << bit);
        return {bit - kFirstSegmentBits, static_cast<unsigned int>(index)};
    }

    Record& RecordOf(unsigned int slot) noexcept
    {
        Place const place = PlaceOf(slot);
        return segments[place.segment].load(std::memory_order_relaxed)[place.index];
    }

    // Only the holder of the section writes a generation, so a load and a store serve.
    static Generation Raise(Record& record) noexcept
    {
        Generation const raised =
            static_cast<Generation>(record.generation.load(std::memory_order_relaxed) + 1);
        record.generation.store(raised, std::memory_order_relaxed);
        return raised;
    }

    unsigned int AllocateNewNumber()
    {
        if (numbered == kMostNumbers) {
            throw std::bad_alloc();
        }
        Place const place = PlaceOf(numbered);
        if (place.index == 0) {
            std::size_t const length = std::size_t(kFirstSegmentLength) << place.segment;
            void* const storage = HvRawStorage_Allocate(length, sizeof(Record));
            if (storage == nullptr) {
                throw std::bad_alloc();
            }
            // Its zero bytes are the records of numbers that have not lived yet.
            segments[place.segment].store(static_cast<Record*>(storage), std::memory_order_release);
        }
        unsigned int const slot = numbered++;
        Raise(RecordOf(slot));
        return slot;
    }

    // Guarded by the static section, like each `nextFree`.
    std::uint32_t firstFree = 0;  // top of the stack of free numbers, plus 1
    std::uint32_t numbered = 0;   // numbers ever given out: 0 .. numbered - 1

    std::atomic<Record*> segments[kSegments] = {};
};

#endif
