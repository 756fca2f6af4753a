// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The hash that results are compared by.

#ifndef TESTS_SAMENESS_DIGEST_H
#define TESTS_SAMENESS_DIGEST_H

#include <cstddef>
#include <cstdint>
#include <cstring>

/// FNV-1a, 64 bits, over the bytes of what is added: two results have one digest when they are the
/// same to the last bit.
class Digest {
public:
    std::uint64_t Value() const { return value_; }

    void AddBytes(void const* bytes, std::size_t size)
    {
        auto const* const byte = static_cast<unsigned char const*>(bytes);
        for (std::size_t i = 0; i < size; ++i) {
            value_ = (value_ ^ byte[i]) * kPrime;
        }
    }

    /// A NaN has many bit patterns, and the language leaves open which an operation gives; all of
    /// them count as one here.
    void Add(double number)
    {
        std::uint64_t bits = kAnyNaN;
        if (number == number) {
            std::memcpy(&bits, &number, sizeof bits);
        }
        AddBytes(&bits, sizeof bits);
    }
    void Add(std::uint64_t number) { AddBytes(&number, sizeof number); }

    /// Every element of an array of numbers.
    template <class Array>
    void AddAll(Array const& array)
    {
        Add(std::uint64_t{array.Size()});
        for (auto const& element : array) {
            AddElement(element);
        }
    }

private:
    static constexpr std::uint64_t kPrime = 0x100000001b3;
    static constexpr std::uint64_t kAnyNaN = 0x7ff8000000000000;

    void AddElement(double number) { Add(number); }
    template <class Point>
    void AddElement(Point const& point)
    {
        Add(static_cast<double>(point.x));
        Add(static_cast<double>(point.y));
    }

    std::uint64_t value_ = 0xcbf29ce484222325;
};

#endif
