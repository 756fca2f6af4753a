// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The contours of any raster run along each side between the value and another exactly once, with
// the pixels of the value on their left; fits of them come to an end.

#include <hv/raster/HvUByteRaster.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvPath2f.h>
#include <hv/vectorize/HvVectorizer.h>
#include <hv/vectorize/ObContext.h>
#include <hv/vectorize/ObVectorize.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <vector>

namespace {

constexpr unsigned char kInk = 1;
constexpr double kTolerances[] = {0.5,
                                  0.0,
                                  -1.0,
                                  3.0,
                                  std::numeric_limits<double>::quiet_NaN(),
                                  std::numeric_limits<double>::infinity()};

void Require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

/// Which sides of the pixels were drawn, and how the pixels want it.
class Sides {
public:
    explicit Sides(HvUByteRaster const& raster)
        : raster_(raster), columns_(raster.width + 1),
          drawn_(static_cast<std::size_t>(columns_) * static_cast<std::size_t>(raster.height + 1) *
                 kDirections)
    {
    }

    static void MoveTo(int x, int y, void* user)
    {
        Sides& sides = *static_cast<Sides*>(user);
        sides.startX_ = sides.x_ = x;
        sides.startY_ = sides.y_ = y;
    }
    static void LineTo(int x, int y, void* user)
    {
        Sides& sides = *static_cast<Sides*>(user);
        Require((x == sides.x_) != (y == sides.y_));
        while (x != sides.x_ || y != sides.y_) {
            sides.Draw((x > sides.x_) - (x < sides.x_), (y > sides.y_) - (y < sides.y_));
        }
        sides.isClosed_ = x == sides.startX_ && y == sides.startY_;
    }
    static void EndRegion(void* user) { Require(static_cast<Sides*>(user)->isClosed_); }

    /// Every side that lies between the value and another is drawn.
    void RequireAll() const
    {
        for (int y = 0; y <= raster_.height; ++y) {
            for (int x = 0; x <= raster_.width; ++x) {
                for (int direction = 0; direction < kDirections; ++direction) {
                    Require((drawn_[At(x, y, direction)] != 0) == IsBorder(x, y, direction));
                }
            }
        }
    }

private:
    /// From a corner to the right, down, to the left, up.
    static constexpr int kDirections = 4;

    bool IsInk(int x, int y) const
    {
        return x >= 0 && y >= 0 && x < raster_.width && y < raster_.height &&
               raster_.data[y * raster_.width + x] == kInk;
    }
    bool IsBorder(int x, int y, int direction) const
    {
        switch (direction) {
        case 0:
            return IsInk(x, y - 1) && !IsInk(x, y);
        case 1:
            return IsInk(x, y) && !IsInk(x - 1, y);
        case 2:
            return IsInk(x - 1, y) && !IsInk(x - 1, y - 1);
        default:
            return IsInk(x - 1, y - 1) && !IsInk(x, y - 1);
        }
    }
    std::size_t At(int x, int y, int direction) const
    {
        return static_cast<std::size_t>((y * columns_ + x) * kDirections + direction);
    }
    void Draw(int dx, int dy)
    {
        int const direction = dx != 0 ? 1 - dx : 2 - dy;
        unsigned char& drawn = drawn_[At(x_, y_, direction)];
        Require(drawn == 0);
        drawn = 1;
        x_ += dx;
        y_ += dy;
    }

    HvUByteRaster const& raster_;
    int columns_;
    std::vector<unsigned char> drawn_;
    int x_ = 0;
    int y_ = 0;
    int startX_ = 0;
    int startY_ = 0;
    bool isClosed_ = false;
};

void TraceAll(HvUByteRaster const& raster)
{
    std::vector<unsigned short> rows[3];
    for (auto& row : rows) {
        row.resize(static_cast<std::size_t>(raster.width / 2 * 2 + 4));
    }
    Sides sides(raster);
    ObContext context = {};
    context.begin = [](void*, HvUByteRaster const&, unsigned char, HvExtent2<float> const&) {};
    context.beginRegion = context.end = [](void*) {};
    context.moveto = Sides::MoveTo;
    context.lineto = Sides::LineTo;
    context.endRegion = Sides::EndRegion;
    context.user = &sides;
    for (int i = 0; i < 3; ++i) {
        context.rows[i] = rows[i].data();
    }
    ObVectorize(context, raster, kInk, HvExtent2<float>());
    sides.RequireAll();
}

}  // namespace

// The first three bytes are the width, the choice of a tolerance and a threshold; then come the
// pixels, a bit each.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    constexpr std::size_t kHead = 3;
    constexpr std::size_t kMostBytes = 512;
    if (size < kHead || size > kHead + kMostBytes) {
        return 0;
    }
    int const width = data[0];
    int const pixels = static_cast<int>(8 * (size - kHead));
    HvUByteRaster raster(width, width == 0 ? 1 : pixels / width, 0);
    for (std::size_t i = 0; i < raster.NumPixels(); ++i) {
        raster.data[i] = (data[kHead + i / 8] >> (i % 8) & 1) != 0 ? kInk : 0;
    }
    TraceAll(raster);
    HvGC gc;
    gc.flatness = kTolerances[data[1] % (sizeof(kTolerances) / sizeof(*kTolerances))];
    HvPath2f path(0);
    unsigned int const added = HvVectorizer(data[2] % 16, data[2] / 16)
                                   .VectorizeAndFit(raster, kInk, HvExtent2<float>(), gc, path);
    Require(added == path.NumPoints());
    return 0;
}
