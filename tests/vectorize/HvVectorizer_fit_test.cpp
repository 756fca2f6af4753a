// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/bezier/HvBezierTool.h>
#include <hv/foundation/HvDoubleArray.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvOval2f.h>
#include <hv/shape/HvPath2f.h>
#include <hv/shape/HvPath2fIter.h>
#include <hv/vectorize/HvVectorizer.h>
#include <tests/support/allocation_failure.h>
#include <tests/vectorize/trace_support.h>

#include <limits>

namespace {

using Point = HvPoint2<float>;
using Vector = HvPoint2<double>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// How far the middle of two steps around a corner lies from the cubic that has it for both its
/// handles: a quarter of its distance from the chord, half a diagonal.
constexpr double kCornerOfTwoSteps = 0.1768;

unsigned int Fit(HvUByteRaster const& raster, double tolerance, HvPath2f& path)
{
    HvGC gc;
    gc.flatness = tolerance;
    return HvVectorizer(0, 0).VectorizeAndFit(raster, kInk, HvExtent2<float>(), gc, path);
}

std::vector<Point> PointsOf(HvPath2f const& path)
{
    std::vector<Point> points;
    for (unsigned int i = 0; i < path.NumPoints(); ++i) {
        points.push_back(path.GetPoint(i));
    }
    return points;
}

/// The corners of pixels along a closed polygon, the first one repeated at the end.
std::vector<Point> WalkOf(HvPath2f const& polygons, unsigned int first, unsigned int last)
{
    std::vector<Point> walk = {polygons.GetPoint(first)};
    for (unsigned int i = first + 1; i <= last; ++i) {
        Point const to = polygons.GetPoint(i);
        while (walk.back() != to) {
            Point next = walk.back();
            if (next.x == to.x) {
                next.y += to.y > next.y ? 1.0f : -1.0f;
            } else {
                next.x += to.x > next.x ? 1.0f : -1.0f;
            }
            walk.push_back(next);
        }
    }
    return walk;
}

Vector Direction(Vector v)
{
    double const length = std::hypot(v.x, v.y);
    return length == 0 ? v : Vector(v.x / length, v.y / length);
}

bool IsTiny(Vector const& v)
{
    return std::fabs(v.x) < 1e-7 && std::fabs(v.y) < 1e-7;
}

/// The same fits, by recursion and with every formula written out.
class SlowFit {
public:
    SlowFit(std::vector<Point> const& walk, double tolerance, HvPath2f& path)
        : tolerance_(tolerance), path_(path)
    {
        for (std::size_t i = 0; i < walk.size(); ++i) {
            points_.Add(walk[i]);
            parameters_.Add(static_cast<double>(i));
        }
        m_ = points_.Size() - 1;
        unsigned int const n = points_.Size();
        path.Moveto(points_[0]);
        Vector tangent;
        for (unsigned int k = 2; k <= 4; ++k) {
            tangent = tangent + At(k % m_) - At((n + k - 1) % m_);
        }
        if (IsTiny(tangent)) {
            tangent = At(1) - At(n - 2);
        }
        Run(0, n - 1, Direction(tangent), Direction(tangent));
        path.Closeto();
    }

private:
    Vector At(unsigned int i) const { return Vector(points_[i]); }

    void Run(unsigned int first, unsigned int last, Vector t1, Vector t2)
    {
        if (last == first + 1) {
            path_.Lineto(points_[last]);
            return;
        }
        if (last == first + 2) {
            path_.Curveto(points_[first + 1], points_[first + 1], points_[last]);
            return;
        }
        Point cubic[4];
        unsigned int s = 0;
        if (HvBezierTool().SingleCurveFitG1G1(points_, parameters_, first, last, t1, t2, tolerance_,
                                              3, cubic, s) != 0) {
            path_.AltCurveto(cubic + 1, 3);
            return;
        }
        Vector t;
        for (unsigned int k = 2; k <= 4; ++k) {
            t = t + (s > 3 && s + 4 <= m_ ? At(s + k) - At(s - k)
                                          : At((s + k) % m_) - At((m_ - s + k) % m_));
        }
        if (IsTiny(t)) {
            t = At(s + 1) - At(s - 1);
        }
        Run(first, s, t1, Direction(t));
        Run(s, last, Direction(t), t2);
    }

    double tolerance_;
    HvPath2f& path_;
    HvPoint2fArray points_;
    HvDoubleArray parameters_;
    unsigned int m_ = 0;
};

/// Distance of a point from a segment.
double Distance(Point const& p, Point const& a, Point const& b)
{
    Vector const ab = Vector(b) - Vector(a);
    Vector const ap = Vector(p) - Vector(a);
    double const square = ab.x * ab.x + ab.y * ab.y;
    double const t =
        square == 0 ? 0 : std::min(1.0, std::max(0.0, (ap.x * ab.x + ap.y * ab.y) / square));
    return std::hypot(ap.x - t * ab.x, ap.y - t * ab.y);
}

/// Expects the fit to have a closed subpath for each contour, near all of its pixel corners.
void ExpectNear(HvUByteRaster const& raster, double tolerance)
{
    HvPath2f polygons(0);
    HvVectorizer(0, 0).Vectorize(raster, kInk, HvExtent2<float>(), polygons);
    HvPath2f fitted(0);
    unsigned int const added = Fit(raster, tolerance, fitted);
    EXPECT_EQ(added, fitted.NumPoints());
    ASSERT_EQ(fitted.NumSubpaths(), polygons.NumSubpaths());
    constexpr double kFlattening = 0.01;
    double const within = std::max(tolerance, kCornerOfTwoSteps) + kFlattening;
    HvPath2fIter corners(polygons);
    HvPath2fIter curves(fitted);
    unsigned int first = 0;
    unsigned int last = 0;
    while (corners.GetNextSubPathIndices(first, last) != 0) {
        std::vector<Point> const walk = WalkOf(polygons, first, last);
        ASSERT_EQ(curves.GetNextSubPathIndices(first, last), 1);
        EXPECT_EQ(fitted.IsSubpathClosed(first), 1);
        HvPoint2fArray flat;
        fitted.FlattenSubpath(first, kFlattening, flat);
        for (Point const& p : walk) {
            double nearest = kInfinity;
            for (unsigned int i = 1; i < flat.Size() && nearest > 1e-3; ++i) {
                nearest = std::min(nearest, Distance(p, flat[i - 1], flat[i]));
            }
            EXPECT_LE(nearest, within) << "(" << p.x << ", " << p.y << ")";
        }
    }
}

/// What a path covers, sampled at the middle of each pixel to an eighth.
HvUByteRaster Drawn(HvPath2f const& path, int width, int height)
{
    HvGC gc;
    gc.transform.Scale(8, 1, 1);
    HvUByteRaster wide(8 * width, height, 0);
    path.Fill(gc, wide, nullptr);
    HvUByteRaster drawn(width, height, 0);
    for (std::size_t i = 0; i < drawn.NumPixels(); ++i) {
        drawn.data[i] = wide.data[8 * i + 4] != 0 ? kInk : 0;
    }
    return drawn;
}

/// Pixels of ink in both over pixels of ink in either.
double Overlap(HvUByteRaster const& a, HvUByteRaster const& b)
{
    double both = 0;
    double either = 0;
    for (std::size_t i = 0; i < a.NumPixels(); ++i) {
        both += a.data[i] == kInk && b.data[i] == kInk ? 1 : 0;
        either += a.data[i] == kInk || b.data[i] == kInk ? 1 : 0;
    }
    return either == 0 ? 1 : both / either;
}

HvPath2f Circle(float x, float y, float radius)
{
    return HvPath2f(HvOval2f(Point(x - radius, y - radius), Point(x + radius, y - radius),
                             Point(x - radius, y + radius)));
}

}  // namespace

TEST(HvVectorizer_fit, AppendsNothingWithoutAContour)
{
    HvPath2f path(0);
    path.Moveto(Point(3, 4));
    EXPECT_EQ(Fit(HvUByteRaster(8, 8, 0), 1.0, path), 0u);
    EXPECT_EQ(path.NumPoints(), 1u);
}

TEST(HvVectorizer_fit, FollowsEachStepWhereNothingElseIsNearEnough)
{
    // Split in its middle, twice two steps; a NaN is no tolerance, so no fit succeeds.
    HvPath2f path(0);
    EXPECT_EQ(Fit(HvUByteRaster(1, 1, kInk), kNaN, path), 7u);
    EXPECT_EQ(PointsOf(path),
              (std::vector<Point>{Point(0, 0), Point(0, 1), Point(0, 1), Point(1, 1), Point(1, 0),
                                  Point(1, 0), Point(0, 0)}));
    EXPECT_EQ(path.IsSubpathClosed(0), 1);
}

TEST(HvVectorizer_fit, AppendsToAPathAndReturnsItsGrowth)
{
    HvPath2f alone(0);
    unsigned int const added = Fit(HvUByteRaster(9, 9, kInk), 0.5, alone);
    HvPath2f path(0);
    path.Moveto(Point(0, 0));
    path.Lineto(Point(5, 5));
    EXPECT_EQ(Fit(HvUByteRaster(9, 9, kInk), 0.5, path), added);
    EXPECT_EQ(path.NumPoints(), added + 2);
    EXPECT_EQ(path.GetPoint(2), alone.GetPoint(0));
    EXPECT_EQ(path.IsSubpathClosed(0), 0);
}

TEST(HvVectorizer_fit, FitsAndSplitsAsTheRecursionDoes)
{
    std::mt19937 engine(31);
    for (int i = 0; i < 120; ++i) {
        HvUByteRaster const raster = RandomRaster(1 + static_cast<int>(engine() % 16),
                                                  1 + static_cast<int>(engine() % 16), 0.7, engine);
        double const tolerance = 0.1 + 0.15 * static_cast<double>(engine() % 8);
        SCOPED_TRACE(testing::Message() << tolerance << TextOf(raster));
        HvPath2f polygons(0);
        HvVectorizer(0, 0).Vectorize(raster, kInk, HvExtent2<float>(), polygons);
        HvPath2f expected(0);
        HvPath2fIter subpaths(polygons);
        unsigned int first = 0;
        unsigned int last = 0;
        while (subpaths.GetNextSubPathIndices(first, last) != 0) {
            SlowFit(WalkOf(polygons, first, last), tolerance, expected);
        }
        HvPath2f path(0);
        Fit(raster, tolerance, path);
        ASSERT_EQ(PointsOf(path), PointsOf(expected));
        ASSERT_EQ(path.IsSiblingOf(expected), 1);
    }
}

TEST(HvVectorizer_fit, StaysNearEveryPixelCorner)
{
    std::mt19937 engine(32);
    for (double const tolerance : {0.05, 0.25, 0.5, 1.0, 3.0}) {
        SCOPED_TRACE(tolerance);
        for (int i = 0; i < 15; ++i) {
            HvUByteRaster const raster = RandomRaster(15, 15, 0.75, engine);
            SCOPED_TRACE(TextOf(raster));
            ExpectNear(raster, tolerance);
        }
        ExpectNear(Drawn(Circle(20, 20, 17), 40, 40), tolerance);
        ExpectNear(HvUByteRaster(25, 13, kInk), tolerance);
    }
}

TEST(HvVectorizer_fit, GivesBackWhatWasDrawn)
{
    constexpr int kSide = 200;
    HvPath2f ring = Circle(100, 100, 90);
    HvPath2f const inner = Circle(95, 105, 50);
    for (unsigned int i = inner.NumPoints(); i-- > 0;) {  // the other way round
        Point const p = inner.GetPoint(i);
        if (i + 1 == inner.NumPoints()) {
            ring.Moveto(p);
        } else if (i % 3 == 0) {
            ring.Curveto(inner.GetPoint(i + 2), inner.GetPoint(i + 1), p);
        }
    }
    ring.Closeto();
    HvPath2f star(0);
    for (int i = 0; i <= 5; ++i) {
        double const angle = 2 * 3.14159265358979 * (2 * (i % 5) / 5.0 - 0.25);
        Point const p(static_cast<float>(100 + 95 * std::cos(angle)),
                      static_cast<float>(100 + 95 * std::sin(angle)));
        i == 0 ? star.Moveto(p) : star.Lineto(p);
    }
    star.Closeto();
    HvPath2f bar(0);
    bar.Moveto(Point(20, 30));
    bar.Curveto(Point(120, 10), Point(60, 150), Point(180, 120));
    bar.Lineto(Point(170, 170));
    bar.Curveto(Point(20, 200), Point(60, 80), Point(20, 30));
    bar.Closeto();
    for (HvPath2f const& shape : {Circle(100, 100, 90), ring, star, bar}) {
        HvUByteRaster const raster = Drawn(shape, kSide, kSide);
        HvPath2f fitted(0);
        EXPECT_GT(Fit(raster, 0.5, fitted), 0u);
        EXPECT_GE(Overlap(raster, Drawn(fitted, kSide, kSide)), 0.99);
    }
}

TEST(HvVectorizer_fit, NeedsFarFewerCubicsThanSteps)
{
    // 720 steps around; the directions at splits, taken from a few pixels, keep it from less.
    HvPath2f path(0);
    Fit(Drawn(Circle(100, 100, 90), 200, 200), 1.0, path);
    EXPECT_LE(path.NumSegments(), 720u / 8);
}

TEST(HvVectorizer_fit, EndsForAnyTolerance)
{
    std::mt19937 engine(33);
    HvUByteRaster const raster = RandomRaster(40, 40, 0.65, engine);
    HvPath2f polygons(0);
    HvVectorizer(0, 0).Vectorize(raster, kInk, HvExtent2<float>(), polygons);
    for (double const tolerance :
         {0.0, -0.0, -1.0, kNaN, kInfinity, -kInfinity, 1e-310, 1e-7,
          std::numeric_limits<double>::max(), std::numeric_limits<double>::lowest()}) {
        SCOPED_TRACE(tolerance);
        HvPath2f path(0);
        unsigned int const added = Fit(raster, tolerance, path);
        EXPECT_EQ(added, path.NumPoints());
        EXPECT_EQ(path.NumSubpaths(), polygons.NumSubpaths());
        for (Point const& p : PointsOf(path)) {
            ASSERT_TRUE(std::isfinite(p.x) && std::isfinite(p.y));
        }
        HvPath2fIter subpaths(path);
        unsigned int first = 0;
        unsigned int last = 0;
        while (subpaths.GetNextSubPathIndices(first, last) != 0) {
            EXPECT_EQ(path.IsSubpathClosed(first), 1);
        }
    }
}

TEST(HvVectorizer_fit, SplitsLongContoursWithoutRecursion)
{
    // A comb whose contour of 60,000 steps is split down to single ones.
    HvUByteRaster raster(401, 100, 0);
    for (int y = 0; y < 100; ++y) {
        for (int x = 0; x < 401; ++x) {
            raster.data[y * 401 + x] = x % 2 == 0 || y == 99 ? kInk : 0;
        }
    }
    HvPath2f path(0);
    Fit(raster, kNaN, path);
    EXPECT_GT(path.NumPoints(), 20000u);
    EXPECT_EQ(path.IsSubpathClosed(0), 1);
}

TEST(HvVectorizer_fit, ComesToAnEndWhereFloatHasNoNextRow)
{
    // Beyond 2^24 a float plus 1 may be itself.
    constexpr int kRows = (1 << 24) + 40;
    HvUByteRaster raster(1, kRows, 0);
    for (int y = kRows - 30; y < kRows - 5; ++y) {
        raster.data[y] = (kRows - y) % 7 == 0 ? 0 : kInk;  // all but 28, 21, 14 and 7 from below
    }
    HvPath2f path(0);
    EXPECT_GT(Fit(raster, 0.5, path), 0u);
    EXPECT_EQ(path.NumSubpaths(), 5u);  // rows 30-29, 27-22, 20-15, 13-8, 6 from below
}

TEST(HvVectorizer_fit_failure, LeavesAUsablePathWhenThereIsNoMemory)
{
    HvUByteRaster const raster = RasterOf({"####.##", "#..#.##", "####..."});
    struct Scene {
        HvVectorizer vectorizer{0, 0};
        HvGC gc;
        HvPath2f path{0};
    };
    HvPath2f whole(0);
    Fit(raster, 1.0, whole);
    std::vector<Point> const all = PointsOf(whole);
    long const allocations =
        RefuseEachAllocation([] { return Scene(); },
                             [&](Scene& scene) {
                                 scene.vectorizer.VectorizeAndFit(raster, kInk, HvExtent2<float>(),
                                                                  scene.gc, scene.path);
                             },
                             [&](Scene& scene, bool completed) {
                                 std::vector<Point> const found = PointsOf(scene.path);
                                 EXPECT_EQ(completed, found == all);
                                 EXPECT_TRUE(std::equal(found.begin(), found.end(), all.begin()));
                             });
    EXPECT_GT(allocations, 10);
}
