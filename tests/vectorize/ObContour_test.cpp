// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/vectorize/ObContour.h>

#include <tests/vectorize/trace_support.h>

#include <limits>

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// A closed contour through given vertices.
class Ring {
public:
    explicit Ring(TraceContour const& places)
    {
        for (TracePoint const& place : places) {
            vertices_.push_back({nullptr, nullptr, ObVertexStepLeft, place.first, place.second});
        }
        for (std::size_t i = 0; i < vertices_.size(); ++i) {
            vertices_[i].next = &vertices_[(i + 1) % vertices_.size()];
            vertices_[i].next->previous = &vertices_[i];
        }
        contour_.start = &vertices_[0];
        contour_.closed = true;
    }
    Ring(Ring const&) = delete;
    Ring& operator=(Ring const&) = delete;

    bool HasArea(double threshold)
    {
        ObContext context = {};
        context.areaThreshold = threshold;
        return ObTestContourArea(context, &contour_);
    }
    bool HasPerimeter(double threshold)
    {
        ObContext context = {};
        context.perimeterThreshold = threshold;
        return ObTestContourPerimeter(context, &contour_);
    }

private:
    std::vector<ObVertex> vertices_;
    ObContour contour_ = {};
};

/// Regions and holes, as counts, of a frame of 6 x 5 pixels around a hole of 4 x 3.
std::pair<std::size_t, std::size_t> FrameAt(double perimeter, double area)
{
    TraceRecorder const traced(RasterOf({"######", "#....#", "#....#", "#....#", "######"}),
                               perimeter, area);
    std::size_t holes = 0;
    for (TraceRegion const& region : traced.regions) {
        holes += region.size() - 1;
    }
    return {traced.regions.size(), holes};
}

using Counts = std::pair<std::size_t, std::size_t>;

}  // namespace

TEST(ObContour, HasTheAreaOfItsVertices)
{
    // A triangle of 6 square pixels.
    Ring clockwise({{0, 0}, {4, 0}, {0, 3}});
    Ring counterClockwise({{0, 0}, {0, 3}, {4, 0}});
    for (Ring* ring : {&clockwise, &counterClockwise}) {
        EXPECT_TRUE(ring->HasArea(6.0));
        EXPECT_FALSE(ring->HasArea(std::nextafter(6.0, 7.0)));
        EXPECT_TRUE(ring->HasArea(0.0));
        EXPECT_TRUE(ring->HasArea(-100.0));
        EXPECT_FALSE(ring->HasArea(kInfinity));
        EXPECT_FALSE(ring->HasArea(kNaN));
    }
}

TEST(ObContour, HasNoAreaBelowThreeVertices)
{
    Ring two({{0, 0}, {4, 0}});
    EXPECT_TRUE(two.HasArea(0.0));
    EXPECT_FALSE(two.HasArea(-1.0));
    EXPECT_FALSE(two.HasArea(1e-300));
    Ring one({{3, 3}});
    EXPECT_FALSE(one.HasArea(-1.0));
}

TEST(ObContour, HasTheAreaOfTheLargestRasterExactly)
{
    // 32767 x 65535 pixels, far from the origin.
    constexpr int kFar = 2000000000;
    Ring ring({{1, kFar}, {1, kFar + 65535}, {32768, kFar + 65535}, {32768, kFar}});
    double const area = 32767.0 * 65535.0;
    EXPECT_TRUE(ring.HasArea(area));
    EXPECT_FALSE(ring.HasArea(area + 0.5));
}

TEST(ObContour, HasThePerimeterOfItsVertices)
{
    Ring ring({{0, 0}, {4, 0}, {0, 3}});
    EXPECT_TRUE(ring.HasPerimeter(12.0));
    EXPECT_FALSE(ring.HasPerimeter(std::nextafter(12.0, 13.0)));
    EXPECT_TRUE(ring.HasPerimeter(0.0));
    EXPECT_TRUE(ring.HasPerimeter(-1.0));
    EXPECT_FALSE(ring.HasPerimeter(kInfinity));
    EXPECT_FALSE(ring.HasPerimeter(kNaN));
}

TEST(ObContour, HasAPerimeterOfItsLastSideToo)
{
    Ring ring({{0, 0}, {0, 1}, {100, 1}});
    EXPECT_TRUE(ring.HasPerimeter(201.0));
    EXPECT_FALSE(ring.HasPerimeter(201.1));
}

TEST(ObContour, MeasuresPixelsNotTheirCorners)
{
    // 6 x 5 pixels: 5 * 4 from pixel to pixel, 18 around. The hole of 4 x 3: 5 * 2, and 14.
    EXPECT_EQ(FrameAt(0, 10), Counts(1, 1));
    EXPECT_EQ(FrameAt(0, 10.01), Counts(1, 0));
    EXPECT_EQ(FrameAt(0, 20), Counts(1, 0));
    EXPECT_EQ(FrameAt(14, 0), Counts(1, 1));
    EXPECT_EQ(FrameAt(14.01, 0), Counts(1, 0));
    EXPECT_EQ(FrameAt(18, 0), Counts(1, 0));
}

TEST(ObContour, TakesItsHolesAlongWhenItIsDropped)
{
    EXPECT_EQ(FrameAt(0, 20.01), Counts(0, 0));
    EXPECT_EQ(FrameAt(18.01, 0), Counts(0, 0));
}

TEST(ObContour, PassesBothTestsOrNone)
{
    EXPECT_EQ(FrameAt(14, 10), Counts(1, 1));
    EXPECT_EQ(FrameAt(14, 10.01), Counts(1, 0));
    EXPECT_EQ(FrameAt(14.01, 10), Counts(1, 0));
    EXPECT_EQ(FrameAt(18.01, 1), Counts(0, 0));
    EXPECT_EQ(FrameAt(1, 20.01), Counts(0, 0));
}

TEST(ObContour, IsKeptAtZeroEvenWhereItHasNoExtent)
{
    HvUByteRaster const pixel(1, 1, kInk);
    EXPECT_EQ(TraceRecorder(pixel, 0, 0).regions.size(), 1u);
    EXPECT_EQ(TraceRecorder(pixel, 1e-300, 0).regions.size(), 0u);
    EXPECT_EQ(TraceRecorder(pixel, 0, 1e-300).regions.size(), 0u);
    EXPECT_EQ(TraceRecorder(pixel, 1, 0).regions.size(), 0u);
    EXPECT_EQ(TraceRecorder(pixel, 0, 1).regions.size(), 0u);
    EXPECT_EQ(TraceRecorder(pixel, -1, -1).regions.size(), 1u);
    EXPECT_EQ(TraceRecorder(pixel, kNaN, 0).regions.size(), 0u);
    EXPECT_EQ(TraceRecorder(pixel, 0, kNaN).regions.size(), 0u);
}

TEST(ObContour, IsKeptAsItsMeasuresSayInRandomRasters)
{
    std::mt19937 engine(5);
    for (int i = 0; i < 150; ++i) {
        HvUByteRaster const raster = RandomRaster(16, 16, 0.7, engine);
        SCOPED_TRACE(TextOf(raster));
        std::vector<TraceRegion> const all = TraceRecorder(raster).regions;
        // No area is a multiple of a half and a third, and no sum of square roots comes so close to
        // a multiple of the other.
        double const perimeter = 0.37 + static_cast<double>(engine() % 24);
        double const area = 0.3 + static_cast<double>(engine() % 12);
        std::vector<TraceRegion> expected;
        for (TraceRegion const& region : all) {
            TraceRegion kept;
            for (TraceContour const& contour : region) {
                PixelMeasure const measure(contour);
                if (measure.perimeter >= perimeter && measure.area >= area) {
                    kept.push_back(contour);
                } else if (kept.empty()) {
                    break;
                }
            }
            if (!kept.empty()) {
                expected.push_back(kept);
            }
        }
        EXPECT_EQ(TraceRecorder(raster, perimeter, area).regions, expected);
    }
}
