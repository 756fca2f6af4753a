// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Runs of equal bytes.

#ifndef HV_TOOLS_PAINT_BYTE_RUNS_H
#define HV_TOOLS_PAINT_BYTE_RUNS_H

#include <cstddef>
#include <cstdint>
#include <cstring>

/// How many bytes are looked at together.
constexpr std::size_t kByteRunStep = 8;

/// Whether the first kByteRunStep bytes are all `value`.
inline bool ByteRun_IsStepOf(std::uint8_t const* bytes, std::uint8_t value)
{
    std::uint64_t word;
    static_assert(sizeof word == kByteRunStep);
    std::memcpy(&word, bytes, sizeof word);
    return word == value * 0x0101010101010101U;
}

/// How many of the `count` bytes at `bytes` are `value` before another one comes.
inline std::size_t ByteRun_Of(std::uint8_t const* bytes, std::size_t count, std::uint8_t value)
{
    // Long runs first: four words without a branch between them.
    constexpr std::size_t kLongStep = 32;
    std::uint64_t const eight = value * 0x0101010101010101U;
    std::size_t run = 0;
    for (; run + kLongStep <= count; run += kLongStep) {
        std::uint64_t words[4];
        std::memcpy(words, bytes + run, sizeof words);
        if (((words[0] ^ eight) | (words[1] ^ eight) | (words[2] ^ eight) | (words[3] ^ eight)) !=
            0) {
            break;
        }
    }
    while (run + kByteRunStep <= count && ByteRun_IsStepOf(bytes + run, value)) {
        run += kByteRunStep;
    }
    while (run < count && bytes[run] == value) {
        ++run;
    }
    return run;
}

#endif
