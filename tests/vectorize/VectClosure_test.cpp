// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/vectorize/VectClosure.h>

#include <hv/shape/HvPath2f.h>
#include <hv/vectorize/HvVectorizer.h>
#include <tests/vectorize/trace_support.h>

#include <gtest/gtest.h>

namespace {

using Point = HvPoint2<float>;

bool Extends(Point const& a, Point const& b, Point const& p)
{
    VectClosure closure;
    closure.beforeX = a.x;
    closure.beforeY = a.y;
    closure.x = b.x;
    closure.y = b.y;
    closure.subpathPoints = 2;
    return ShouldExtendLastSegment(closure, p);
}

/// A contour as callbacks draw it that extend the last segment where they can.
TraceContour Drawn(TraceContour const& stops)
{
    VectClosure closure;
    TraceContour points;
    for (TracePoint const& stop : stops) {
        Point const p(static_cast<float>(stop.first), static_cast<float>(stop.second));
        if (ShouldExtendLastSegment(closure, p)) {
            points.back() = stop;
        } else {
            points.push_back(stop);
            closure.beforeX = closure.x;
            closure.beforeY = closure.y;
            ++closure.subpathPoints;
        }
        closure.x = p.x;
        closure.y = p.y;
    }
    return points;
}

}  // namespace

TEST(VectClosure, ExtendsALineInItsOwnDirection)
{
    Point const origin(0, 0);
    for (Point const& d : {Point(2, 0), Point(-2, 0), Point(0, 2), Point(0, -2)}) {
        EXPECT_TRUE(Extends(origin, d, d * 2.0f));
        EXPECT_TRUE(Extends(origin, d, d)) << "by nothing";
        EXPECT_FALSE(Extends(origin, d, d * 0.5f)) << "back";
        EXPECT_FALSE(Extends(origin, d, -d)) << "back beyond the start";
        EXPECT_FALSE(Extends(origin, d, d * 2.0f + Point(d.y, d.x))) << "aside";
        EXPECT_FALSE(Extends(origin, d, d + Point(-d.y, d.x))) << "around a corner";
    }
}

TEST(VectClosure, ExtendsNoPoint)
{
    EXPECT_FALSE(Extends(Point(1, 1), Point(1, 1), Point(1, 1)));
    EXPECT_FALSE(Extends(Point(1, 1), Point(1, 1), Point(2, 1)));
}

TEST(VectClosure, ExtendsNothingInASubpathOfFewerThanTwoPoints)
{
    VectClosure closure;
    closure.x = 1;
    EXPECT_FALSE(ShouldExtendLastSegment(closure, Point(2, 0)));
    closure.subpathPoints = 1;
    EXPECT_FALSE(ShouldExtendLastSegment(closure, Point(2, 0)));
    closure.subpathPoints = 2;
    EXPECT_TRUE(ShouldExtendLastSegment(closure, Point(2, 0)));
}

TEST(VectClosure, MakesOfWhatIsToldWhatTheVectorizerAppends)
{
    std::mt19937 engine(15);
    for (int i = 0; i < 300; ++i) {
        HvUByteRaster const raster = RandomRaster(1 + static_cast<int>(engine() % 14),
                                                  1 + static_cast<int>(engine() % 14), 0.6, engine);
        SCOPED_TRACE(TextOf(raster));
        TraceContour expected;
        for (TraceRegion const& region : TraceRecorder(raster).regions) {
            for (TraceContour const& contour : region) {
                TraceContour const points = Drawn(contour);
                expected.insert(expected.end(), points.begin(), points.end());
            }
        }
        HvPath2f path(0);
        HvVectorizer(0, 0).Vectorize(raster, kInk, HvExtent2<float>(), path);
        TraceContour appended;
        for (unsigned int p = 0; p < path.NumPoints(); ++p) {
            Point const point = path.GetPoint(p);
            appended.emplace_back(static_cast<int>(point.x), static_cast<int>(point.y));
        }
        ASSERT_EQ(appended, expected);
    }
}
