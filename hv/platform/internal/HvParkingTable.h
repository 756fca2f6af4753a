// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Parking on any word in memory, over the mutexes and condition variables of the standard library.

#ifndef HV_PLATFORM_INTERNAL_HVPARKINGTABLE_H
#define HV_PLATFORM_INTERNAL_HVPARKINGTABLE_H

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <mutex>

/// A fixed number of waiting rooms, chosen by the address of the word: the word itself needs no
/// room for a queue. Two words may share a room, so a wake calls everybody in it, and who was not
/// meant lies down again.
class HvParkingTable {
public:
    void Wait(std::atomic<std::uint32_t> const& word, std::uint32_t expected)
    {
        Room& room = RoomOf(&word);
        std::unique_lock<std::mutex> lock(room.mutex);
        if (word.load(std::memory_order_relaxed) == expected) {
            room.woken.wait(lock);
        }
    }

    void Wake(void const* address)
    {
        Room& room = RoomOf(address);
        // Under the mutex, so that the call cannot fall between a sleeper's look and its sleep.
        std::lock_guard<std::mutex> const lock(room.mutex);
        room.woken.notify_all();
    }

private:
    struct Room {
        std::mutex mutex;
        std::condition_variable woken;
    };

    // Enough that the sections that are waited for at one time seldom share one.
    static constexpr std::size_t kRooms = 64;

    Room& RoomOf(void const* address)
    {
        std::uintptr_t const bits = reinterpret_cast<std::uintptr_t>(address);
        return rooms[((bits >> 4) ^ (bits >> 12)) % kRooms];
    }

    Room rooms[kRooms];
};

#endif
