// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The one way in which archives are read from and written to memory: byte by byte, low byte first,
// at any alignment, and never with a number that is not finite.

#ifndef HV_FOUNDATION_BYTE_CODEC_H
#define HV_FOUNDATION_BYTE_CODEC_H

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <utility>

/// Reads an archive from front to back. A reader with an end never touches a byte beyond it: a read
/// that would fails, fails every read after it, gives 0, and moves nothing. So a format is read
/// straight through and asked once, at its end or before it allocates, whether all went well.
///
///     HvByteReader reader(bytes, size);
///     std::uint32_t const count = reader.ReadUInt32();
///     if (!reader.Holds(count, kBytesPerKey)) {
///         return 0;  // before anything is allocated for `count` keys
///     }
///
/// The first fault is remembered: where the reader stood, and why it failed.
///
/// A reader is a small value; copy it to look ahead. Threads: as any value.
class HvByteReader {
public:
    /// Why a read beyond the end fails.
    static constexpr char const* kEndsEarly = "it ends in the middle of what it should hold";

    /// Reads `size` bytes from `start`.
    HvByteReader(void const* start, std::size_t size)
        : start_(static_cast<unsigned char const*>(start)), size_(size)
    {
    }

    /// Reads from `start` without an end: for bytes that the caller vouches for.
    static HvByteReader Unbounded(void const* start)
    {
        return HvByteReader(start, std::numeric_limits<std::size_t>::max());
    }

    /// Whether a read has gone beyond the end, or Fail was called.
    bool Failed() const { return fault_ != nullptr; }
    /// Makes the reader fail, for bytes that are there but wrong.
    ///
    /// @param reason  why, a text that outlives the reader.
    /// @param behind  how many bytes of the wrong field have been read.
    void Fail(char const* reason, std::size_t behind = 0)
    {
        if (!Failed()) {
            fault_ = reason;
            faultPlace_ = base_ + used_ - behind;
        }
    }
    /// Makes the reader fail where and why `part`, a reader that came from it, has failed.
    void FailAs(HvByteReader const& part)
    {
        if (!Failed()) {
            fault_ = part.fault_;
            faultPlace_ = part.faultPlace_;
        }
    }
    /// Why the reader has failed; null while it has not.
    char const* Fault() const { return fault_; }
    /// Where it has failed, in bytes from the start of the first reader, of which this one may be a
    /// part.
    std::size_t FaultPlace() const { return faultPlace_; }
    /// Bytes read and skipped so far.
    std::size_t Used() const { return used_; }
    /// Bytes that may still be read; 0 once the reader has failed. Without an end, a number that no
    /// archive reaches.
    std::size_t Left() const { return Failed() ? 0 : size_ - used_; }

    /// Whether `count` records of at least `each` bytes can follow; otherwise the reader fails. A
    /// count that was read is held against this before storage is allocated for it.
    bool Holds(std::uint64_t count, std::size_t each)
    {
        if (each != 0 && count > Left() / each) {
            Fail(kEndsEarly);
        }
        return !Failed();
    }

    /// A number of one byte; 0 when it is not there and the reader has failed, as for all that
    /// follow.
    std::uint8_t ReadUInt8() { return static_cast<std::uint8_t>(ReadLow<1>()); }
    /// A number of two bytes, the low one first.
    std::uint16_t ReadUInt16() { return static_cast<std::uint16_t>(ReadLow<2>()); }
    /// A number of four bytes, the low one first.
    std::uint32_t ReadUInt32() { return static_cast<std::uint32_t>(ReadLow<4>()); }
    /// A number of four bytes in two's complement, the low one first.
    std::int32_t ReadInt32()
    {
        std::uint32_t const bits = ReadUInt32();
        std::int32_t value;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }
    /// A number; 0 for one that is not finite.
    float ReadFiniteFloat()
    {
        std::uint32_t const bits = ReadUInt32();
        float value;
        std::memcpy(&value, &bits, sizeof value);
        return std::isfinite(value) ? value : 0.0F;
    }
    /// A number; 0 for one that is not finite.
    double ReadFiniteDouble()
    {
        std::uint64_t const bits = ReadLow<8>();
        double value;
        std::memcpy(&value, &bits, sizeof value);
        return std::isfinite(value) ? value : 0.0;
    }

    /// Where the next `size` bytes lie, and steps over them; null when they are not all there. The
    /// place of no bytes is not null unless the reader has failed.
    unsigned char const* ReadBytes(std::size_t size)
    {
        if (!Holds(size, 1)) {
            return nullptr;
        }
        unsigned char const* const bytes = start_ + used_;
        used_ += size;
        return bytes;
    }
    /// Steps over `size` bytes; fails when they are not all there.
    void Skip(std::size_t size) { ReadBytes(size); }

    /// A bounded reader of the next `size` bytes, which this one steps over. When they are not all
    /// there, both have failed. It serves a part that tells its own size: what the part does not
    /// use is stepped over, and what it claims beyond its size is refused.
    HvByteReader ReadPart(std::size_t size)
    {
        HvByteReader part(start_ + used_, size);
        part.base_ = base_ + used_;
        if (ReadBytes(size) == nullptr) {
            part.FailAs(*this);
        }
        return part;
    }

private:
    // The next `kSize` bytes as the low ones of a number; 0 when they are not there.
    template <std::size_t kSize>
    std::uint64_t ReadLow()
    {
        unsigned char const* const bytes = ReadBytes(kSize);
        return bytes == nullptr ? 0 : Join(bytes, std::make_index_sequence<kSize>());
    }
    // One expression, which compilers turn into one load where the machine stores low bytes first.
    template <std::size_t... kIndex>
    static std::uint64_t Join(unsigned char const* bytes, std::index_sequence<kIndex...>)
    {
        return ((std::uint64_t(bytes[kIndex]) << (8 * kIndex)) | ...);
    }

    unsigned char const* start_;
    std::size_t size_;
    std::size_t used_ = 0;
    std::size_t base_ = 0;  // where this reader starts in the first one
    char const* fault_ = nullptr;
    std::size_t faultPlace_ = 0;
};

/// Writes an archive from front to back into memory of the caller, who has asked for its size and
/// provides that much: nothing is checked here.
class HvByteWriter {
public:
    /// Writes from `start` on.
    explicit HvByteWriter(void* start) : start_(static_cast<unsigned char*>(start)) {}

    /// Bytes written and skipped so far.
    std::size_t Used() const { return used_; }

    /// Writes one byte.
    void WriteUInt8(std::uint8_t value) { WriteLow<1>(value); }
    /// Writes two bytes, the low one first.
    void WriteUInt16(std::uint16_t value) { WriteLow<2>(value); }
    /// Writes four bytes, the low one first.
    void WriteUInt32(std::uint32_t value) { WriteLow<4>(value); }
    /// Writes four bytes in two's complement, the low one first.
    void WriteInt32(std::int32_t value)
    {
        std::uint32_t bits;
        std::memcpy(&bits, &value, sizeof bits);
        WriteUInt32(bits);
    }
    /// Writes 0 for a number that is not finite.
    void WriteFiniteFloat(float value)
    {
        float const finite = std::isfinite(value) ? value : 0.0F;
        std::uint32_t bits;
        std::memcpy(&bits, &finite, sizeof bits);
        WriteUInt32(bits);
    }
    /// Writes 0 for a number that is not finite.
    void WriteFiniteDouble(double value)
    {
        double const finite = std::isfinite(value) ? value : 0.0;
        std::uint64_t bits;
        std::memcpy(&bits, &finite, sizeof bits);
        WriteLow<8>(bits);
    }
    /// Copies `size` bytes as they are; `bytes` may be null when there are none.
    void WriteBytes(void const* bytes, std::size_t size)
    {
        if (size != 0) {
            std::memcpy(start_ + used_, bytes, size);
            used_ += size;
        }
    }
    /// Steps over `size` bytes, which keep what the caller had in them.
    void Skip(std::size_t size) { used_ += size; }

private:
    template <std::size_t kSize>
    void WriteLow(std::uint64_t value)
    {
        Split(start_ + used_, value, std::make_index_sequence<kSize>());
        used_ += kSize;
    }
    template <std::size_t... kIndex>
    static void Split(unsigned char* bytes, std::uint64_t value, std::index_sequence<kIndex...>)
    {
        ((bytes[kIndex] = static_cast<unsigned char>(value >> (8 * kIndex))), ...);
    }

    unsigned char* start_;
    std::size_t used_ = 0;
};

#endif
