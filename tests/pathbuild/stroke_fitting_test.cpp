// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Curves through and near a run of points, appended to a path.

#include <hv/pathbuild/stroke_fitting.h>

#include "stroke_test_support.h"
#include <hv/pathbuild/stroke_tangents.h>
#include <tests/support/generators.h>

#include <rapidcheck.h>

namespace {

constexpr double kNoDouble = std::numeric_limits<double>::quiet_NaN();

// How a run is given to the functions.
struct Request {
    unsigned int first;
    int firstIsCorner;
    unsigned int last;
    int lastIsCorner;
    int close;
};

// A stroke, and the path that it is drawn into.
struct Stroke {
    explicit Stroke(std::vector<StrokePoint> const& p)
        : points(Points(p)), chord(ChordOf(points)), path(16u)
    {
    }

    void Interpolate(double tolerance, Request const& r)
    {
        CubicInterpolation(points, chord, tolerance, r.first, r.firstIsCorner, r.last,
                           r.lastIsCorner, r.close, &path);
    }
    void Find(unsigned int maxDegree, Request const& r)
    {
        FindBezierCurve(points, maxDegree, r.first, r.firstIsCorner, r.last, r.lastIsCorner,
                        r.close, &path);
    }
    void Fit(double tolerance, unsigned int maxPoints, Request const& r)
    {
        FitBezierCurve(points, chord, tolerance, maxPoints, r.first, r.firstIsCorner, r.last,
                       r.lastIsCorner, r.close, tool, &path);
    }

    HvPoint2fArray points;
    HvDoubleArray chord;
    HvPath2f path;
    HvBezierTool tool;
};

// A path whose first cubic leaves upward from `from` and arrives rightward at `to`.
void AddArc(HvPath2f& path, StrokePoint const& from, StrokePoint const& to)
{
    path.Moveto(from);
    path.Curveto({from.x, from.y + 1}, {to.x - 1, to.y}, to);
}

bool IsClosed(HvPath2f const& path)
{
    return path.IsSubpathClosed(path.NumPoints() - 1) != 0;
}

// Points of a parabola with noise that a curve cannot follow within 0.5.
std::vector<StrokePoint> Zigzag(unsigned int count)
{
    std::vector<StrokePoint> points;
    for (unsigned int i = 0; i < count; ++i) {
        points.emplace_back(static_cast<float>(10 * i), i % 2 == 0 ? 0.0f : 8.0f);
    }
    return points;
}

// A gentle curve, which one cubic fits.
std::vector<StrokePoint> Bow(unsigned int count)
{
    std::vector<StrokePoint> points;
    for (unsigned int i = 0; i < count; ++i) {
        double const x = 10.0 * i;
        points.emplace_back(static_cast<float>(x), static_cast<float>(x * x * 0.01));
    }
    return points;
}

}  // namespace

// Interpolation.

TEST(CubicInterpolation, StraightStepsHaveHandlesOfAThird)
{
    Stroke stroke({{0, 0}, {3, 0}, {9, 0}});
    stroke.path.Moveto({0, 0});
    stroke.Interpolate(1.0, {0, 0, 2, 0, 0});
    ExpectPoints(PointsOf(stroke.path), {{0, 0}, {1, 0}, {2, 0}, {3, 0}, {5, 0}, {7, 0}, {9, 0}},
                 1e-6);
}

TEST(CubicInterpolation, TangentsComeFromTheNeighbours)
{
    // At the start the circle through a right angle of legs 4 and 3, inside the direction across.
    Stroke stroke({{0, 0}, {4, 0}, {4, 3}});
    stroke.path.Moveto({0, 0});
    stroke.Interpolate(100.0, {0, 0, 2, 0, 0});
    float const t = 4.0f / 3.0f;
    ExpectPoints(PointsOf(stroke.path),
                 {{0, 0},
                  {0.6f * t, -0.8f * t},
                  {4 - 0.8f * t, -0.6f * t},
                  {4, 0},
                  {4 + 0.8f, 0.6f},
                  {4 + 0.6f, 3 - 0.8f},
                  {4, 3}},
                 1e-5);
}

TEST(CubicInterpolation, LongSideStepIsCutTo8ThirdsOfTheTolerance)
{
    // T0 is (0.6, -0.8), T1 is (0.8, 0.6) and the step (40, 0): side-steps of 32 and 24.
    for (double tolerance : {4.0, 3.9, 1.0, 0.1}) {
        Stroke stroke({{0, 0}, {40, 0}, {40, 30}});
        stroke.path.Moveto({0, 0});
        stroke.Interpolate(tolerance, {0, 0, 2, 0, 0});
        double const share = tolerance * 8.0 < 32.0 ? tolerance * (8.0 / 3.0) / 32.0 : 1.0 / 3.0;
        float const h = static_cast<float>(share * 40.0);
        std::vector<StrokePoint> const points = PointsOf(stroke.path);
        ASSERT_EQ(points.size(), 7u);
        EXPECT_NEAR(points[1].x, 0.6f * h, 1e-4) << tolerance;
        EXPECT_NEAR(points[1].y, -0.8f * h, 1e-4);
        EXPECT_NEAR(points[2].x, 40 - 0.8f * h, 1e-4);
        EXPECT_NEAR(points[2].y, -0.6f * h, 1e-4);
    }
}

TEST(CubicInterpolation, GoesOnInTheDirectionOfThePathUnlessItStartsAtACorner)
{
    for (int isCorner : {0, 1}) {
        Stroke stroke({{-5, -5}, {0, 0}, {0, 3}});
        AddArc(stroke.path, {-5, -5}, {0, 0});
        stroke.Interpolate(100.0, {1, isCorner, 2, 0, 0});
        StrokePoint const handle = stroke.path.GetPoint(4);
        EXPECT_NEAR(handle.x, isCorner ? 0 : 1, 1e-6);
        EXPECT_NEAR(handle.y, isCorner ? 1 : 0, 1e-6);
    }
}

TEST(CubicInterpolation, EndsAcrossItsLastPointUnlessThatIsACornerOrTheEnd)
{
    // The next point lies upward.
    std::vector<StrokePoint> const points = {{0, 0}, {3, 0}, {3, 3}, {9, 9}};
    struct {
        int isCorner;
        unsigned int last;
        double x, y;
    } const cases[] = {{0, 1, std::sqrt(0.5), std::sqrt(0.5)}, {1, 1, 1, 0}};
    for (auto const& c : cases) {
        Stroke stroke(points);
        stroke.path.Moveto({0, 0});
        stroke.Interpolate(100.0, {0, 0, c.last, c.isCorner, 0});
        EXPECT_NEAR(stroke.path.GetPoint(2).x, 3 - c.x, 1e-5);
        EXPECT_NEAR(stroke.path.GetPoint(2).y, 0 - c.y, 1e-5);
    }
    Stroke stroke({{0, 0}, {3, 0}, {3, 3}});
    stroke.path.Moveto({0, 0});
    stroke.Interpolate(100.0, {0, 0, 2, 0, 0});
    // The end of the stroke: the circle around (1.5, 1.5) is left upward and inward.
    EXPECT_NEAR(stroke.path.GetPoint(5).x, 3 + std::sqrt(0.5), 1e-5);
    EXPECT_NEAR(stroke.path.GetPoint(5).y, 3 - std::sqrt(0.5), 1e-5);
}

TEST(CubicInterpolation, ClosesInTheDirectionOfTheStart)
{
    for (int isCorner : {0, 1}) {
        Stroke stroke({{-6, 0}, {0, 0}, {-6, 0}});
        AddArc(stroke.path, {-6, 0}, {0, 0});
        stroke.Interpolate(100.0, {1, 0, 2, isCorner, 1});
        EXPECT_TRUE(IsClosed(stroke.path));
        // Handles of 2: the start is left upward; a corner is reached by the step itself.
        StrokePoint const handle = stroke.path.GetPoint(5);
        EXPECT_NEAR(handle.x, isCorner ? -4 : -6, 1e-6);
        EXPECT_NEAR(handle.y, isCorner ? 0 : -2, 1e-6);
    }
}

TEST(CubicInterpolation, RunsWithoutStepsAppendNothing)
{
    Stroke stroke({{0, 0}, {3, 0}});
    stroke.path.Moveto({0, 0});
    for (Request const& r : {Request{0, 0, 0, 0, 1}, Request{1, 0, 0, 0, 0}, Request{0, 0, 2, 0, 0},
                             Request{7, 0, 9, 0, 0}, Request{0, 0, ~0u, 0, 0}}) {
        stroke.Interpolate(1.0, r);
        stroke.Find(8, r);
        stroke.Fit(1.0, 4, r);
    }
    stroke.chord.Chop(1);
    stroke.Interpolate(1.0, {0, 0, 1, 0, 0});
    stroke.Fit(1.0, 4, {0, 0, 1, 0, 0});
    EXPECT_EQ(stroke.path.NumPoints(), 1u);
}

TEST(CubicInterpolation, HostileToleranceKeepsHandlesFinite)
{
    for (double tolerance : {0.0, -0.0, -1.0, -std::numeric_limits<double>::infinity(), kNoDouble,
                             std::numeric_limits<double>::infinity(), 1e308,
                             std::numeric_limits<double>::denorm_min()}) {
        Stroke stroke({{0, 0}, {4, 0}, {4, 3}, {4, 3}, {8, 3}});
        stroke.path.Moveto({0, 0});
        stroke.Interpolate(tolerance, {0, 0, 4, 0, 0});
        for (StrokePoint const& p : PointsOf(stroke.path)) {
            EXPECT_TRUE(std::isfinite(p.x) && std::isfinite(p.y)) << tolerance;
        }
        // A third for all but a tolerance below what the steps ask for.
        bool const isCut = tolerance < 1e-9;
        EXPECT_EQ(stroke.path.GetPoint(1) == StrokePoint(0, 0), isCut) << tolerance;
    }
}

// One segment for a whole run.

TEST(FindBezierCurve, TakesThePointsAsControls)
{
    for (unsigned int steps = 1; steps <= 7; ++steps) {
        Stroke stroke(Bow(steps + 1));
        stroke.path.Moveto({0, 0});
        stroke.Find(1, {0, 0, steps, 0, 0});  // an open run does not ask for the degree
        EXPECT_EQ(DegreesOf(stroke.path), std::vector<unsigned int>{steps + 1});
        std::vector<StrokePoint> const points = PointsOf(stroke.path);
        ASSERT_EQ(points.size(), steps + 2);
        StrokePoint const t = EstimateTangentDirection(stroke.points, 0, 1, 0, 0);
        float const h = static_cast<float>(
            HvPoint2_LengthAB(stroke.points[0], stroke.points[steps]) / (steps + 1));
        EXPECT_EQ(points[1], t * h);
        for (unsigned int i = 1; i <= steps; ++i) {
            EXPECT_EQ(points[i + 1], stroke.points[i]);
        }
    }
}

TEST(FindBezierCurve, GoesOnInTheDirectionOfThePathUnlessItStartsAtACorner)
{
    for (int isCorner : {0, 1}) {
        Stroke stroke({{-5, -5}, {0, 0}, {0, 3}, {0, 6}});
        AddArc(stroke.path, {-5, -5}, {0, 0});
        stroke.Find(8, {1, isCorner, 3, 0, 0});
        ExpectPoints({stroke.path.GetPoint(4)}, {isCorner ? StrokePoint(0, 2) : StrokePoint(2, 0)},
                     1e-6);
    }
}

TEST(FindBezierCurve, ClosingRaisesTheDegreeWhereThatIsAdmitted)
{
    // Two steps, so n is 3: degree 4 when admitted, else the last point between gives way.
    for (unsigned int maxDegree : {0u, 3u, 4u, 8u, ~0u}) {
        Stroke stroke({{-6, 0}, {0, 0}, {0, -3}, {-6, 0}});
        AddArc(stroke.path, {-6, 0}, {0, 0});
        stroke.Find(maxDegree, {1, 0, 3, 0, 1});
        EXPECT_TRUE(IsClosed(stroke.path));
        // Handles of 6 / 3; the start is left upward.
        std::vector<StrokePoint> expected = {{2, 0}};
        if (maxDegree >= 4) {
            expected.push_back({0, -3});
        }
        expected.push_back({-6, -2});
        expected.push_back({-6, 0});
        std::vector<StrokePoint> const points = PointsOf(stroke.path);
        ExpectPoints(std::vector<StrokePoint>(points.begin() + 4, points.end()), expected, 1e-6);
    }
}

TEST(FindBezierCurve, ClosesACornerInTheDirectionThatArrivesAtTheRun)
{
    // Backward at `first`, point 2: from point 1 to it, rightward.
    Stroke stroke({{-6, 0}, {-3, 3}, {0, 3}, {0, -3}, {-6, 0}});
    AddArc(stroke.path, {-6, 0}, {0, 3});
    stroke.Find(8, {2, 0, 4, 1, 1});
    float const h = static_cast<float>(std::hypot(6.0, 3.0) / 3.0);
    // Points 0, 1, 2 bend by 45 degrees: the circle through them is around (-1.5, -1.5).
    double const root = std::hypot(1.5, 4.5);
    StrokePoint const handle = stroke.path.GetPoint(6);
    EXPECT_NEAR(handle.x, -6 - 4.5 / root * h, 1e-5);
    EXPECT_NEAR(handle.y, 0 + 1.5 / root * h, 1e-5);
}

TEST(FindBezierCurve, ClosesAWholeRingSafely)
{
    for (int isCorner : {0, 1}) {
        Stroke stroke({{0, 0}, {4, 0}, {4, 4}, {0, 0}});
        stroke.path.Moveto({0, 0});
        stroke.Find(8, {0, 0, 3, isCorner, 1});
        // The ends are one point, so both handles have no length.
        ExpectPoints(PointsOf(stroke.path), {{0, 0}, {0, 0}, {4, 0}, {4, 4}, {0, 0}, {0, 0}}, 0.0);
        EXPECT_TRUE(IsClosed(stroke.path));
    }
}

TEST(FindBezierCurve, LongRunsAreHalved)
{
    Stroke stroke(Bow(10));  // nine steps: four and five
    stroke.path.Moveto({0, 0});
    stroke.Find(100, {0, 0, 9, 0, 0});
    EXPECT_EQ(DegreesOf(stroke.path), (std::vector<unsigned int>{5, 6}));
    ExpectPoints(NodesOf(stroke.path), {stroke.points[0], stroke.points[4], stroke.points[9]}, 0.0);

    Stroke eight(Bow(9));
    eight.path.Moveto({0, 0});
    eight.Find(100, {0, 0, 8, 0, 0});
    EXPECT_EQ(DegreesOf(eight.path), (std::vector<unsigned int>{5, 5}));
}

TEST(FindBezierCurve, HalvesJoinSmoothlyAndTheSecondCloses)
{
    std::vector<StrokePoint> ring = Bow(9);
    ring.push_back({0, 0});
    for (int isCorner : {0, 1}) {
        Stroke stroke(ring);
        stroke.path.Moveto({0, 0});
        stroke.Find(100, {0, isCorner, 9, 0, 1});
        EXPECT_TRUE(IsClosed(stroke.path));
        unsigned int const node = 5;
        HvPoint2<double> const in(stroke.path.GetPoint(node) - stroke.path.GetPoint(node - 1));
        HvPoint2<double> const out(stroke.path.GetPoint(node + 1) - stroke.path.GetPoint(node));
        EXPECT_NEAR(HvPoint2_AdetB(in, out) / HvPoint2_Length(in) / HvPoint2_Length(out), 0.0,
                    1e-6);
        EXPECT_GT(HvPoint2_AdotB(in, out), 0.0);
    }
}

TEST(FindBezierCurve, SevenStepsCloseAtDegreeEight)
{
    std::vector<StrokePoint> points = Bow(7);
    points.push_back({0, 0});
    Stroke stroke(points);
    stroke.path.Moveto({0, 0});
    stroke.Find(100, {0, 0, 7, 0, 1});
    EXPECT_EQ(DegreesOf(stroke.path), std::vector<unsigned int>{8});
    EXPECT_TRUE(IsClosed(stroke.path));
}

// Fits.

TEST(FitBezierCurve, OneCubicServesAGentleRun)
{
    Stroke stroke(Bow(12));
    stroke.path.Moveto({0, 0});
    stroke.Fit(0.5, 4, {0, 0, 11, 0, 0});
    EXPECT_EQ(DegreesOf(stroke.path), std::vector<unsigned int>{3});
}

// Which tangents are given, by what stands before and behind the run. Each case is held against
// the fitter itself with the tangents of the table.
TEST(FitBezierCurve, TangentsOfOpenRuns)
{
    std::vector<StrokePoint> points = Bow(9);
    points.insert(points.begin(), StrokePoint(-8, -8));
    points.emplace_back(75.0f, 80.0f);
    constexpr double kTolerance = 9.0;  // below the steps of 10, so the end tangent is given
    struct {
        unsigned int first;
        int firstIsCorner;
        unsigned int last;
        int lastIsCorner;
        bool fromPath;
        int backward;
    } const cases[] = {
        {0, 0, 8, 0, false, 0}, {0, 1, 8, 1, false, 1},  {1, 0, 8, 0, true, 0},
        {1, 1, 8, 0, false, 0}, {1, 0, 8, 1, true, 1},   {1, 1, 10, 0, false, 1},
        {1, 0, 10, 0, true, 1}, {0, 0, 10, 1, false, 1},
    };
    for (auto const& c : cases) {
        Stroke stroke(points);
        if (c.first == 0) {
            stroke.path.Moveto(points[0]);
        } else {
            AddArc(stroke.path, points[0], points[1]);
        }
        HvPoint2<double> const start =
            c.fromPath
                ? HvPoint2<double>(1, 0)
                : HvPoint2<double>(EstimateTangentDirection(stroke.points, c.first, 1, 0, 0));
        HvPoint2<double> const end(
            EstimateTangentDirection(stroke.points, c.last, 0, c.backward, 0));
        unsigned int const before = stroke.path.NumPoints();
        stroke.Fit(kTolerance, 4, {c.first, c.firstIsCorner, c.last, c.lastIsCorner, 0});

        StrokePoint cubic[4];
        unsigned int split = 0;
        ASSERT_EQ(stroke.tool.SingleCurveFitG1G1(stroke.points, stroke.chord, c.first, c.last,
                                                 start, end, kTolerance, 4, cubic, split),
                  1);
        std::vector<StrokePoint> const added = PointsOf(stroke.path);
        ASSERT_EQ(added.size(), before + 3);
        for (unsigned int k = 0; k < 3; ++k) {
            EXPECT_EQ(added[before + k], cubic[k + 1]) << c.first << " " << c.firstIsCorner;
        }
    }
}

TEST(FitBezierCurve, TangentsOfClosingRuns)
{
    std::vector<StrokePoint> points = {{0, 0}};
    for (int i = 0; i <= 8; ++i) {
        double const a = (120.0 + 20.0 * i) * std::acos(-1.0) / 180.0;
        points.emplace_back(static_cast<float>(60 + 30 * std::cos(a)),
                            static_cast<float>(30 * std::sin(a)));
    }
    points.emplace_back(0.0f, 0.0f);
    HvPoint2<double> const pathEnd(1, 0);
    HvPoint2<double> const pathStart(0, 1);
    struct {
        unsigned int first;
        int firstIsCorner;
        int lastIsCorner;
        int startIsGiven;
        int endIsGiven;
    } const cases[] = {{0, 0, 0, 1, 1}, {0, 1, 0, 0, 0}, {0, 0, 1, 0, 0}, {0, 1, 1, 0, 0},
                       {1, 0, 0, 1, 1}, {1, 1, 0, 0, 1}, {1, 0, 1, 1, 0}, {1, 1, 1, 0, 0}};
    for (auto const& c : cases) {
        Stroke stroke(points);
        HvPoint2<double> start = pathEnd;
        HvPoint2<double> end = pathStart;
        if (c.first == 0) {
            stroke.path.Moveto(points[0]);
            // There is no curve to go on from: the first step tells, at both ends.
            double const length = HvPoint2_LengthAB(points[0], points[1]);
            start = HvPoint2<double>(points[1]) * (1.0 / length);
            end = start;
        } else {
            AddArc(stroke.path, points[0], points[1]);
        }
        unsigned int const before = stroke.path.NumPoints();
        stroke.Fit(1000.0, 4, {c.first, c.firstIsCorner, 10, c.lastIsCorner, 1});
        EXPECT_TRUE(IsClosed(stroke.path));

        StrokePoint cubic[4];
        unsigned int split = 0;
        int const found =
            c.startIsGiven != 0
                ? (c.endIsGiven != 0
                       ? stroke.tool.SingleCurveFitG1G1(stroke.points, stroke.chord, c.first, 10,
                                                        start, end, 1000.0, 4, cubic, split)
                       : stroke.tool.SingleCurveFitG1C0(stroke.points, stroke.chord, c.first, 10,
                                                        start, 1000.0, 4, cubic, split))
                : (c.endIsGiven != 0
                       ? stroke.tool.SingleCurveFitC0G1(stroke.points, stroke.chord, c.first, 10,
                                                        end, 1000.0, 4, cubic, split)
                       : stroke.tool.SingleCurveFitC0C0(stroke.points, stroke.chord, c.first, 10,
                                                        1000.0, 4, cubic, split));
        ASSERT_EQ(found, 1);
        std::vector<StrokePoint> const added = PointsOf(stroke.path);
        ASSERT_EQ(added.size(), before + 3);
        for (unsigned int k = 0; k < 3; ++k) {
            EXPECT_NEAR(added[before + k].x, cubic[k + 1].x, 1e-3);
            EXPECT_NEAR(added[before + k].y, cubic[k + 1].y, 1e-3);
        }
    }
}

TEST(FitBezierCurve, RunThatComesToRestEndsInAFreeDirection)
{
    // The last steps turn back within the tolerance of 1; each case shortens one of them too
    // little.
    struct {
        StrokePoint beforeLast, last;
        bool isFree;
    } const cases[] = {
        {{50.5f, 0.5f}, {50.0f, 0.9f}, true},
        {{51.0f, 0.5f}, {50.5f, 0.9f}, false},   // the first of the two is 1 long, not below
        {{50.5f, 0.5f}, {50.5f, 1.5f}, false},   // the second is
        {{50.7f, -0.8f}, {51.4f, -1.7f}, true},  // the diagonal does not count
    };
    for (auto const& c : cases) {
        Stroke stroke({{0, 0}, {10, 4}, {25, 6}, {40, 4}, {50, 0}, c.beforeLast, c.last});
        stroke.path.Moveto({0, 0});
        stroke.Fit(1.0, 32, {0, 0, 6, 0, 0});
        HvPoint2<double> const start(EstimateTangentDirection(stroke.points, 0, 1, 0, 0));
        HvPoint2<double> const end(EstimateTangentDirection(stroke.points, 6, 0, 1, 0));
        StrokePoint cubic[4];
        unsigned int split = 0;
        int const found = c.isFree
                              ? stroke.tool.SingleCurveFitG1C0(stroke.points, stroke.chord, 0, 6,
                                                               start, 1.0, 32, cubic, split)
                              : stroke.tool.SingleCurveFitG1G1(stroke.points, stroke.chord, 0, 6,
                                                               start, end, 1.0, 32, cubic, split);
        std::vector<StrokePoint> const points = PointsOf(stroke.path);
        if (found != 0) {
            ASSERT_EQ(points.size(), 4u);
            EXPECT_EQ(points[1], cubic[1]);
            EXPECT_EQ(points[2], cubic[2]);
        } else {
            EXPECT_GT(points.size(), 4u) << c.last;
        }
        if (c.isFree) {
            EXPECT_EQ(found, 1) << c.last;
        }
    }
}

TEST(FitBezierCurve, RestOfARunOfOneStepIsSeenOnThatStepAlone)
{
    // The step before the run is long, and the point behind it turns the direction at its end.
    Stroke stroke({{0, 0}, {10, 0}, {10.5f, 0.0f}, {10.5f, 9.0f}});
    stroke.path.Moveto({10, 0});
    stroke.Fit(1.0, 1, {1, 1, 2, 0, 0});
    std::vector<StrokePoint> const points = PointsOf(stroke.path);
    ASSERT_EQ(points.size(), 4u);
    // A free handle of a third of the chord.
    EXPECT_NEAR(points[2].x, 10.5 - 0.5 / 3, 1e-6);
    EXPECT_EQ(points[2].y, 0.0f);
}

TEST(FitBezierCurve, FailedRunIsHalvedAndSmallHalvesBecomeOneSegment)
{
    // Eight steps, at least four to fit: halves of four fail too, and theirs are of two.
    Stroke stroke(Zigzag(9));
    stroke.path.Moveto({0, 0});
    stroke.Fit(0.5, 4, {0, 0, 8, 0, 0});
    EXPECT_EQ(DegreesOf(stroke.path), (std::vector<unsigned int>{3, 3, 3, 3}));
    ExpectPoints(
        NodesOf(stroke.path),
        {stroke.points[0], stroke.points[2], stroke.points[4], stroke.points[6], stroke.points[8]},
        0.0);
    // The last inner control is the point between.
    EXPECT_EQ(stroke.path.GetPoint(2), stroke.points[1]);
}

TEST(FitBezierCurve, HalvesOfOneStepAreInterpolated)
{
    // Three steps: the first half has one.
    Stroke stroke(Zigzag(4));
    stroke.path.Moveto({0, 0});
    stroke.Fit(0.0, 3, {0, 0, 3, 0, 0});
    EXPECT_EQ(DegreesOf(stroke.path), (std::vector<unsigned int>{3, 3}));
    ExpectPoints(NodesOf(stroke.path), {stroke.points[0], stroke.points[1], stroke.points[3]}, 0.0);
    EXPECT_EQ(stroke.path.GetPoint(5), stroke.points[2]);
}

TEST(FitBezierCurve, OnlyTheSecondHalfCloses)
{
    std::vector<StrokePoint> points = Zigzag(8);
    points.emplace_back(0.0f, 0.0f);
    for (unsigned int maxPoints : {0u, 1u, 2u, 4u, 8u, ~0u}) {
        Stroke stroke(points);
        stroke.path.Moveto({0, 0});
        stroke.Fit(0.5, maxPoints, {0, 0, 8, 0, 1});
        EXPECT_TRUE(IsClosed(stroke.path)) << maxPoints;
        EXPECT_EQ(stroke.path.NumSubpaths(), 1u);
        std::vector<StrokePoint> const nodes = NodesOf(stroke.path);
        EXPECT_EQ(nodes.front(), nodes.back());
    }
}

TEST(FitBezierCurve, AnyFewestPointsEnds)
{
    for (unsigned int maxPoints : {0u, 1u, 2u, 3u, 1000u, ~0u}) {
        for (double tolerance : {0.0, -1.0, 0.5, kNoDouble, std::numeric_limits<double>::infinity(),
                                 std::numeric_limits<double>::denorm_min()}) {
            Stroke stroke(Zigzag(40));
            stroke.path.Moveto({0, 0});
            stroke.Fit(tolerance, maxPoints, {0, 0, 39, 0, 0});
            EXPECT_EQ(NodesOf(stroke.path).back(), stroke.points[39]);
        }
    }
}

TEST(FitBezierCurve, NumbersThatAreNoneEnd)
{
    for (float bad : {kNoNumber, kInfinite, -kInfinite, 3e38f, -3e38f}) {
        for (unsigned int at : {0u, 7u, 19u}) {
            std::vector<StrokePoint> points = Zigzag(20);
            points[at].y = bad;
            for (int close : {0, 1}) {
                Stroke stroke(points);
                stroke.path.Moveto(points[0]);
                stroke.Fit(0.5, 1, {0, 0, 19, 0, close});
                stroke.Fit(0.5, 4, {0, 0, 19, 0, close});
                stroke.Interpolate(0.5, {0, 0, 19, 0, close});
                stroke.Find(8, {0, 0, 19, 0, close});
                EXPECT_GT(stroke.path.NumPoints(), 4u);
            }
        }
    }
}

TEST(FitBezierCurve, FittedPointsLieWithinTheTolerance)
{
    rc::check([] {
        unsigned int const count = PickInRange(5u, 60u);
        double const bend = 0.002 * PickInRange(-20, 20);
        double const tolerance = 0.25 * PickInRange(1, 9);
        std::vector<StrokePoint> points;
        double angle = 0.0;
        HvPoint2<double> p;
        for (unsigned int i = 0; i < count; ++i) {
            points.emplace_back(p);
            angle += bend * i * 0.2 + 0.001 * PickInRange(-100, 100);
            p = p + HvPoint2<double>(std::cos(angle), std::sin(angle)) * 5.0;
        }
        Stroke stroke(points);
        stroke.path.Moveto(points[0]);
        // No run falls below two steps, so all points are nodes or fitted.
        stroke.Fit(tolerance, 2, {0, 0, count - 1, 0, 0});
        HvPoint2fArray flat(64);
        stroke.path.FlattenSubpath(0, 0.001, flat);
        std::vector<StrokePoint> const line = ToVector(flat);
        for (StrokePoint const& q : points) {
            // The polyline is within 0.001 of the curve; floats of a few hundred add 1e-4.
            RC_ASSERT(DistanceFrom(line, q) <= tolerance + 0.002);
        }
    });
}
