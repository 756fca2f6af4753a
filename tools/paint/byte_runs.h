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

/// In which bytes a step of bytes differs from those of `pattern`.
inline std::uint64_t ByteRun_Difference(std::uint8_t const* bytes, std::uint64_t pattern)
{
    std::uint64_t word;
    static_assert(sizeof word == kByteRunStep);
    std::memcpy(&word, bytes, sizeof word);
    return word ^ pattern;
}

/// A pattern of one byte.
constexpr std::uint64_t ByteRun_PatternOf(std::uint8_t value)
{
    return value * 0x0101010101010101U;
}

/// The first byte, in memory, of a word that is not 0.
inline std::size_t ByteRun_FirstByte(std::uint64_t word)
{
#if defined(__GNUC__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
    return static_cast<std::size_t>(__builtin_ctzll(word)) / 8;
#else
    std::uint8_t bytes[sizeof word];
    std::memcpy(bytes, &word, sizeof word);
    std::size_t first = 0;
    while (bytes[first] == 0) {
        ++first;
    }
    return first;
#endif
}

/// How many of the `count` bytes at `bytes` are those of `pattern`, again and again, before one is
/// not.
inline std::size_t ByteRun_OfPattern(std::uint8_t const* bytes, std::size_t count,
                                     std::uint64_t pattern)
{
    std::size_t run = 0;
    for (; run + 2 * kByteRunStep <= count; run += 2 * kByteRunStep) {
        std::uint64_t const first = ByteRun_Difference(bytes + run, pattern);
        std::uint64_t const second = ByteRun_Difference(bytes + run + kByteRunStep, pattern);
        if ((first | second) != 0) {
            return first != 0 ? run + ByteRun_FirstByte(first)
                              : run + kByteRunStep + ByteRun_FirstByte(second);
        }
    }
    std::uint8_t expected[kByteRunStep];
    std::memcpy(expected, &pattern, sizeof pattern);
    while (run < count && bytes[run] == expected[run % kByteRunStep]) {
        ++run;
    }
    return run;
}

/// How many of the `count` bytes at `bytes` are `value` before another one comes.
inline std::size_t ByteRun_Of(std::uint8_t const* bytes, std::size_t count, std::uint8_t value)
{
    return ByteRun_OfPattern(bytes, count, ByteRun_PatternOf(value));
}

#endif
