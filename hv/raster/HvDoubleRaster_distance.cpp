// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Distance maps by propagation of offsets. Danielsson, "Euclidean distance mapping", 1980.

#include <hv/raster/HvDoubleRaster.h>

#include <hv/raster/internal/HvScratchArray.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace {

constexpr unsigned char kSeed = 1;
constexpr unsigned char kInside = 2;

/// Greatest initial offset m for which offsets fit 16 bits and squared distances 32: a candidate
/// lies at most one step beyond (m, m), and (m + 1)^2 + m^2 < 2^31. Larger rasters take doubles.
constexpr int kMaxSmallOffset = 32766;

/// Offsets in 16 bits, computed with in 32.
struct SmallNumbers {
    using Stored = std::int16_t;
    using Computed = std::int32_t;
};

struct LargeNumbers {
    using Stored = double;
    using Computed = double;
};

struct LInfinity {
    template <class N>
    static N Length(N dx, N dy)
    {
        return dx > dy ? dx : dy;
    }
    static double Result(double length, unsigned char) { return length; }
};

struct SquaredEuclidean {
    template <class N>
    static N Length(N dx, N dy)
    {
        return dx * dx + dy * dy;
    }
    static double Result(double length, unsigned char maskValue)
    {
        return maskValue == kInside ? -length : length;
    }
};

/// The offset of each pixel to the seed that it knows of.
template <class Numbers, class Metric>
class OffsetMap {
    using Stored = typename Numbers::Stored;
    using Computed = typename Numbers::Computed;

public:
    OffsetMap(int width, int height, unsigned char const* mask)
        : width_(static_cast<std::size_t>(width)), height_(static_cast<std::size_t>(height)),
          dx_(width_ * height_), dy_(width_ * height_), mask_(mask)
    {
        Stored const far = static_cast<Stored>(static_cast<Computed>(std::max(width, height)) + 1);
        for (std::size_t i = 0; i < width_ * height_; ++i) {
            dx_[i] = dy_[i] = mask[i] == kSeed ? Stored(0) : far;
        }
    }

    void Propagate()
    {
        for (std::size_t y = 1; y < height_; ++y) {
            TakeFromRow(y, y - 1);
            SweepRow(y);
        }
        for (std::size_t y = height_ - 1; y-- > 0;) {
            TakeFromRow(y, y + 1);
            SweepRow(y);
        }
    }

    void Write(double* result) const
    {
        for (std::size_t i = 0; i < width_ * height_; ++i) {
            result[i] =
                Metric::Result(Metric::Length(Computed(dx_[i]), Computed(dy_[i])), mask_[i]);
        }
    }

private:
    /// Row y takes the offsets of its neighbour row, one step longer, where they are shorter than
    /// its own.
    void TakeFromRow(std::size_t y, std::size_t neighbour)
    {
        Stored* const dx = dx_.Data() + y * width_;
        Stored* const dy = dy_.Data() + y * width_;
        Stored const* const fromX = dx_.Data() + neighbour * width_;
        Stored const* const fromY = dy_.Data() + neighbour * width_;
        for (std::size_t x = 0; x < width_; ++x) {
            Computed const candidateX = fromX[x];
            Computed const candidateY = Computed(fromY[x]) + 1;
            bool const isShorter = Metric::Length(Computed(dx[x]), Computed(dy[x])) >
                                   Metric::Length(candidateX, candidateY);
            dx[x] = isShorter ? static_cast<Stored>(candidateX) : dx[x];
            dy[x] = isShorter ? static_cast<Stored>(candidateY) : dy[x];
        }
    }

    /// The same along a row, to the right and back.
    void SweepRow(std::size_t y)
    {
        Stored* const dx = dx_.Data() + y * width_;
        Stored* const dy = dy_.Data() + y * width_;
        for (std::size_t x = 1; x < width_; ++x) {
            TakeFromPixel(dx, dy, x, x - 1);
        }
        for (std::size_t x = width_ - 1; x-- > 0;) {
            TakeFromPixel(dx, dy, x, x + 1);
        }
    }

    static void TakeFromPixel(Stored* dx, Stored* dy, std::size_t x, std::size_t neighbour)
    {
        Computed const candidateX = Computed(dx[neighbour]) + 1;
        Computed const candidateY = dy[neighbour];
        if (Metric::Length(Computed(dx[x]), Computed(dy[x])) >
            Metric::Length(candidateX, candidateY)) {
            dx[x] = static_cast<Stored>(candidateX);
            dy[x] = static_cast<Stored>(candidateY);
        }
    }

    std::size_t width_;
    std::size_t height_;
    HvScratchArray<Stored> dx_;
    HvScratchArray<Stored> dy_;
    unsigned char const* mask_;
};

template <class Numbers, class Metric>
void SetWith(HvDoubleRaster& raster, HvUByteRaster const& mask)
{
    OffsetMap<Numbers, Metric> offsets(raster.width, raster.height, mask.data);
    offsets.Propagate();
    offsets.Write(raster.data);
}

template <class Metric>
void SetTo(HvDoubleRaster& raster, HvUByteRaster const& mask)
{
    if (raster.NumPixels() == 0 || mask.NumPixels() < raster.NumPixels()) {
        return;
    }
    if (std::max(raster.width, raster.height) < kMaxSmallOffset) {
        SetWith<SmallNumbers, Metric>(raster, mask);
    } else {
        SetWith<LargeNumbers, Metric>(raster, mask);
    }
}

}  // namespace

void HvDoubleRaster::SetToLInfinityDistanceMap(HvUByteRaster const& mask)
{
    SetTo<LInfinity>(*this, mask);
}

void HvDoubleRaster::SetToSquaredEuclideanDistanceMap(HvUByteRaster const& mask)
{
    SetTo<SquaredEuclidean>(*this, mask);
}
