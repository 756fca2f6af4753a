// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Archives of curves, built byte by byte without the library, and read back through it.

#ifndef TESTS_FCURVE_ARCHIVE_BYTES_H
#define TESTS_FCURVE_ARCHIVE_BYTES_H

#include <hv/fcurve/HvBaseFCurve.h>
#include <hv/fcurve/HvFCurveArchive.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <vector>

using Bytes = std::vector<unsigned char>;

/// Puts an archive's body together, low byte first.
class ArchiveBytes {
public:
    ArchiveBytes& U8(unsigned int value) { return Low(value, 1); }
    ArchiveBytes& U16(unsigned int value) { return Low(value, 2); }
    ArchiveBytes& U32(unsigned int value) { return Low(value, 4); }
    ArchiveBytes& F64(double value)
    {
        std::uint64_t bits;
        std::memcpy(&bits, &value, sizeof bits);
        return Low(bits, 8);
    }
    ArchiveBytes& Raw(std::initializer_list<unsigned char> bytes)
    {
        body_.insert(body_.end(), bytes);
        return *this;
    }
    /// A user-data block without data.
    ArchiveBytes& NoUserData() { return U32(5).U32(256).U8(0); }

    Bytes const& Body() const { return body_; }
    /// The body behind its length.
    Bytes Buffer() const
    {
        Bytes buffer = ArchiveBytes().U32(static_cast<unsigned int>(body_.size())).Body();
        buffer.insert(buffer.end(), body_.begin(), body_.end());
        return buffer;
    }

private:
    ArchiveBytes& Low(std::uint64_t value, int size)
    {
        for (int k = 0; k < size; ++k) {
            body_.push_back(static_cast<unsigned char>(value >> (8 * k)));
        }
        return *this;
    }

    Bytes body_;
};

/// What is in a buffer before a curve writes to it.
constexpr unsigned char kUnwritten = 0xCD;

/// The archive that a curve writes.
inline Bytes ArchiveOf(HvBaseFCurve const& curve)
{
    Bytes buffer(curve.GetBufferSize(), kUnwritten);
    EXPECT_EQ(curve.WriteToBuffer(buffer.data()), buffer.size());
    return buffer;
}

/// The curve of a buffer of exactly this size, through the bounded form; null when it is refused.
inline std::unique_ptr<HvBaseFCurve> CurveOf(Bytes const& buffer)
{
    // A copy on the heap, behind which the address sanitizer watches.
    std::unique_ptr<unsigned char[]> const copy(new unsigned char[buffer.size()]);
    std::copy(buffer.begin(), buffer.end(), copy.get());
    HvBaseFCurve* curve = nullptr;
    unsigned int const used = HvBaseFCurve_CreateFromBuffer(copy.get(), buffer.size(), &curve);
    EXPECT_EQ(used != 0, curve != nullptr);
    EXPECT_LE(used, buffer.size());
    return std::unique_ptr<HvBaseFCurve>(curve);
}

#endif
