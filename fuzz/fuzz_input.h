// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The bytes of an input as the numbers of a scene.

#ifndef HV_FUZZ_FUZZ_INPUT_H
#define HV_FUZZ_FUZZ_INPUT_H

#include <hv/foundation/HvPoint2.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>

/// Hands out the input byte by byte; beyond its end there are zeros.
class FuzzInput {
public:
    FuzzInput(std::uint8_t const* data, std::size_t size) : data_(data), left_(size) {}

    bool Empty() const { return left_ == 0; }
    int Next()
    {
        if (left_ == 0) {
            return 0;
        }
        --left_;
        return *data_++;
    }
    /// A number on a grid of 256ths from -64 to 191; one in 256 times one that is hostile.
    double Coordinate()
    {
        int const high = Next();
        int const low = Next();
        if (high == 255) {
            double const hostile[] = {
                std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
                -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::max(),
                -std::numeric_limits<double>::max(),      1e-310};
            isTame_ = false;
            return hostile[low % 6];
        }
        return (high * 256 + low) / 256.0 - 64.0;
    }
    HvPoint2<float> Point()
    {
        double const x = Coordinate();
        return HvPoint2<float>(HvPoint2<double>(x, Coordinate()));
    }
    /// Whether no hostile number has come so far.
    bool IsTame() const { return isTame_; }

private:
    std::uint8_t const* data_;
    std::size_t left_;
    bool isTame_ = true;
};

inline void FuzzRequire(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

#endif
