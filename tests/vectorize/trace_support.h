// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Rasters as text, what the tracer tells of them, and a slow model of what it must tell.

#ifndef TESTS_VECTORIZE_TRACE_SUPPORT_H
#define TESTS_VECTORIZE_TRACE_SUPPORT_H

#include <hv/foundation/HvExtent2.h>
#include <hv/raster/HvUByteRaster.h>
#include <hv/vectorize/ObContext.h>
#include <hv/vectorize/ObVectorize.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <map>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

/// The value that the rasters here are traced for.
constexpr unsigned char kInk = 7;

using TracePoint = std::pair<int, int>;
using TraceContour = std::vector<TracePoint>;

/// A region as it was told: the outer contour, then the holes.
using TraceRegion = std::vector<TraceContour>;

/// Rows of text, '#' being ink.
inline HvUByteRaster RasterOf(std::vector<std::string> const& rows)
{
    HvUByteRaster raster(static_cast<int>(rows[0].size()), static_cast<int>(rows.size()), 0);
    std::size_t i = 0;
    for (std::string const& row : rows) {
        for (char const pixel : row) {
            raster.data[i++] = pixel == '#' ? kInk : 0;
        }
    }
    return raster;
}

/// The raster as text, for messages.
inline std::string TextOf(HvUByteRaster const& raster)
{
    std::string text = "\n";
    for (std::size_t i = 0; i < raster.NumPixels(); ++i) {
        text += raster.data[i] == kInk ? '#' : '.';
        if ((i + 1) % static_cast<std::size_t>(raster.width) == 0) {
            text += '\n';
        }
    }
    return text;
}

/// Each pixel is ink with the given probability.
inline HvUByteRaster RandomRaster(int width, int height, double ink, std::mt19937& engine)
{
    std::bernoulli_distribution isInk(ink);
    HvUByteRaster raster(width, height, 0);
    for (std::size_t i = 0; i < raster.NumPixels(); ++i) {
        raster.data[i] = isInk(engine) ? kInk : static_cast<unsigned char>(engine() % 3);
    }
    return raster;
}

/// Keeps what the tracer tells, and that it tells it in order.
class TraceRecorder {
public:
    std::vector<TraceRegion> regions;
    int begun = 0;
    int ended = 0;

    /// Traces a raster. The row buffers are as long as they must be, and hold rubbish at first.
    explicit TraceRecorder(HvUByteRaster const& raster, double perimeter = 0, double area = 0,
                           unsigned char value = kInk)
    {
        std::vector<unsigned short> rows[3];
        for (auto& row : rows) {
            row.assign(static_cast<std::size_t>(raster.width / 2 * 2 + 4), 12345);
        }
        ObContext context = {Begin,     BeginRegion,
                             MoveTo,    LineTo,
                             EndRegion, End,
                             this,      perimeter,
                             area,      {rows[0].data(), rows[1].data(), rows[2].data()}};
        ObVectorize(context, raster, value, HvExtent2<float>());
        EXPECT_EQ(begun, 1);
        EXPECT_EQ(ended, 1);
        EXPECT_FALSE(isInRegion_);
    }

private:
    static TraceRecorder& Of(void* user) { return *static_cast<TraceRecorder*>(user); }
    static void Begin(void* user, HvUByteRaster const&, unsigned char, HvExtent2<float> const&)
    {
        ++Of(user).begun;
    }
    static void BeginRegion(void* user)
    {
        EXPECT_FALSE(Of(user).isInRegion_);
        Of(user).isInRegion_ = true;
        Of(user).regions.emplace_back();
    }
    static void MoveTo(int x, int y, void* user)
    {
        EXPECT_TRUE(Of(user).isInRegion_);
        Of(user).regions.back().push_back({{x, y}});
    }
    static void LineTo(int x, int y, void* user)
    {
        Of(user).regions.back().back().push_back({x, y});
    }
    static void EndRegion(void* user)
    {
        EXPECT_TRUE(Of(user).isInRegion_);
        Of(user).isInRegion_ = false;
    }
    static void End(void* user) { ++Of(user).ended; }

    bool isInRegion_ = false;
};

// --- measures of a contour ----------------------------------------------------------------------

/// A side of a pixel, from corner to corner.
using TraceSide = std::pair<TracePoint, TracePoint>;

/// The sides that a contour runs along, in its order. Steps that are not straight fail.
inline std::vector<TraceSide> SidesOf(TraceContour const& contour)
{
    std::vector<TraceSide> sides;
    for (std::size_t i = 1; i < contour.size(); ++i) {
        TracePoint at = contour[i - 1];
        TracePoint const to = contour[i];
        EXPECT_TRUE((at.first == to.first) != (at.second == to.second)) << "a step of no length, "
                                                                           "or a slanted one";
        while (at != to && (at.first == to.first || at.second == to.second)) {
            TracePoint const next(at.first + (to.first > at.first) - (to.first < at.first),
                                  at.second + (to.second > at.second) - (to.second < at.second));
            sides.emplace_back(at, next);
            at = next;
        }
    }
    return sides;
}

/// Twice the signed area within the corners, positive for an outer contour: down the left side.
inline long TwiceArea(TraceContour const& contour)
{
    long twice = 0;
    for (std::size_t i = 1; i < contour.size(); ++i) {
        twice += long(contour[i].first) * contour[i - 1].second -
                 long(contour[i - 1].first) * contour[i].second;
    }
    return twice;
}

/// Area and perimeter as the thresholds measure them: of the polygon through the pixels that the
/// contour passes at their left or right side.
struct PixelMeasure {
    double area = 0;
    double perimeter = 0;

    explicit PixelMeasure(TraceContour const& contour)
    {
        std::vector<TracePoint> pixels;
        for (TraceSide const& side : SidesOf(contour)) {
            if (side.second.second > side.first.second) {
                pixels.push_back(side.first);
            } else if (side.second.second < side.first.second) {
                pixels.emplace_back(side.second.first - 1, side.second.second);
            }
        }
        long twice = 0;
        for (std::size_t i = 0; i < pixels.size(); ++i) {
            TracePoint const a = pixels[i];
            TracePoint const b = pixels[(i + 1) % pixels.size()];
            twice += long(a.first) * b.second - long(b.first) * a.second;
            perimeter += std::sqrt(double(b.first - a.first) * (b.first - a.first) +
                                   double(b.second - a.second) * (b.second - a.second));
        }
        area = 0.5 * static_cast<double>(std::labs(twice));
    }
};

// --- the model ----------------------------------------------------------------------------------

/// A region found by flood fill.
struct ModelRegion {
    std::set<TracePoint> pixels;
    /// The sides of its pixels that do not lie against another of its pixels, with it on the left
    /// as y points down.
    std::set<TraceSide> sides;
    /// Where the holes must start: at the lower left corner of their topmost, then leftmost pixel.
    std::set<TracePoint> holeStarts;
    TracePoint topLeft;
    /// The order in which regions come: row of the last pixels, then column of the last of these.
    TracePoint completion;
};

/// Collects what can be reached from `start` among the pixels that `isIn` accepts.
template <class IsIn>
std::set<TracePoint> Flood(TracePoint start, bool diagonally, IsIn const& isIn)
{
    std::set<TracePoint> found = {start};
    std::vector<TracePoint> open = {start};
    while (!open.empty()) {
        TracePoint const p = open.back();
        open.pop_back();
        for (int dy = -1; dy <= 1; ++dy) {
            for (int dx = -1; dx <= 1; ++dx) {
                TracePoint const q(p.first + dx, p.second + dy);
                if ((diagonally || dx == 0 || dy == 0) && isIn(q) && found.insert(q).second) {
                    open.push_back(q);
                }
            }
        }
    }
    return found;
}

inline ModelRegion ModelOfRegion(std::set<TracePoint> pixels, int width, int height)
{
    ModelRegion region;
    region.pixels = std::move(pixels);
    region.topLeft = {width, height};
    for (TracePoint const& p : region.pixels) {
        int const x = p.first;
        int const y = p.second;
        auto const isBorder = [&](int px, int py) { return region.pixels.count({px, py}) == 0; };
        if (isBorder(x - 1, y)) {
            region.sides.insert({{x, y}, {x, y + 1}});
        }
        if (isBorder(x, y + 1)) {
            region.sides.insert({{x, y + 1}, {x + 1, y + 1}});
        }
        if (isBorder(x + 1, y)) {
            region.sides.insert({{x + 1, y + 1}, {x + 1, y}});
        }
        if (isBorder(x, y - 1)) {
            region.sides.insert({{x + 1, y}, {x, y}});
        }
        if (std::make_pair(y, x) < std::make_pair(region.topLeft.second, region.topLeft.first)) {
            region.topLeft = p;
        }
        region.completion = std::max(region.completion, TracePoint(y, x));
    }
    // What is not of the region falls into the outside, which reaches around it, and the holes.
    TracePoint low(width, height);
    TracePoint high(-1, -1);
    for (TracePoint const& p : region.pixels) {
        low = {std::min(low.first, p.first - 1), std::min(low.second, p.second - 1)};
        high = {std::max(high.first, p.first + 1), std::max(high.second, p.second + 1)};
    }
    auto const isFree = [&](TracePoint const& q) {
        return q.first >= low.first && q.first <= high.first && q.second >= low.second &&
               q.second <= high.second && region.pixels.count(q) == 0;
    };
    std::set<TracePoint> seen;
    for (int y = low.second; y <= high.second; ++y) {
        for (int x = low.first; x <= high.first; ++x) {
            TracePoint const p(x, y);
            if (isFree(p) && seen.count(p) == 0) {
                if (!seen.empty()) {  // the first part is the outside
                    region.holeStarts.insert({x, y + 1});
                }
                std::set<TracePoint> const part = Flood(p, true, isFree);
                seen.insert(part.begin(), part.end());
            }
        }
    }
    return region;
}

/// All regions, in the order in which they must come.
inline std::vector<ModelRegion> ModelOf(HvUByteRaster const& raster)
{
    auto const isInk = [&](TracePoint const& p) {
        return p.first >= 0 && p.first < raster.width && p.second >= 0 &&
               p.second < raster.height && raster.data[p.second * raster.width + p.first] == kInk;
    };
    std::vector<ModelRegion> regions;
    std::set<TracePoint> seen;
    for (int y = 0; y < raster.height; ++y) {
        for (int x = 0; x < raster.width; ++x) {
            TracePoint const p(x, y);
            if (isInk(p) && seen.count(p) == 0) {
                std::set<TracePoint> const pixels = Flood(p, false, isInk);
                seen.insert(pixels.begin(), pixels.end());
                regions.push_back(ModelOfRegion(pixels, raster.width, raster.height));
            }
        }
    }
    std::sort(regions.begin(), regions.end(), [](ModelRegion const& a, ModelRegion const& b) {
        return a.completion < b.completion;
    });
    return regions;
}

/// Holds one region as it was told against the model.
inline void ExpectRegion(TraceRegion const& told, ModelRegion const& model)
{
    ASSERT_EQ(told.size(), 1 + model.holeStarts.size());
    EXPECT_EQ(told[0][0], model.topLeft);
    std::set<TracePoint> holeStarts;
    std::set<TraceSide> sides;
    std::size_t steps = 0;
    for (std::size_t i = 0; i < told.size(); ++i) {
        EXPECT_EQ(told[i].front(), told[i].back()) << "contour " << i << " is open";
        EXPECT_EQ(TwiceArea(told[i]) > 0, i == 0) << "contour " << i << " runs the wrong way";
        if (i > 0) {
            holeStarts.insert(told[i][0]);
        }
        std::vector<TraceSide> const run = SidesOf(told[i]);
        sides.insert(run.begin(), run.end());
        steps += run.size();
    }
    EXPECT_EQ(holeStarts, model.holeStarts);
    EXPECT_EQ(steps, sides.size()) << "a side is drawn twice";
    EXPECT_EQ(sides, model.sides);
}

/// Traces a raster and holds all that is told against the model.
inline void ExpectTraced(HvUByteRaster const& raster)
{
    SCOPED_TRACE(TextOf(raster));
    TraceRecorder const traced(raster);
    std::vector<ModelRegion> const model = ModelOf(raster);
    ASSERT_EQ(traced.regions.size(), model.size());
    for (std::size_t i = 0; i < model.size(); ++i) {
        SCOPED_TRACE(testing::Message() << "region " << i);
        ExpectRegion(traced.regions[i], model[i]);
    }
}

#endif
