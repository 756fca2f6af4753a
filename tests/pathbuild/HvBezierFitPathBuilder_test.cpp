// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Strokes as fitted cubics.

#include <hv/pathbuild/HvBezierFitPathBuilder.h>

#include "stroke_test_support.h"
#include <tests/support/allocation_failure.h>

#include <memory>

namespace {

constexpr double kNoDouble = std::numeric_limits<double>::quiet_NaN();

// A fitting builder on a path of its own; gap 0.5, flatness 1, spacing 1.
struct Pen {
    explicit Pen(double longStep = 50.0, double subdivideSpacing = 20.0, double fitTolerance = 1.0,
                 unsigned int minFitPoints = 4)
        : path(4u), builder(gc, &path, longStep, subdivideSpacing, fitTolerance, minFitPoints)
    {
    }

    void Add(std::vector<StrokePoint> const& points, int force = 0)
    {
        for (StrokePoint const& p : points) {
            builder.AddInputPoint(p, force);
        }
    }

    HvGC gc;
    HvPath2f path;
    OpenFit builder;
};

std::vector<int> Flags(OpenFit const& builder)
{
    return std::vector<int>(builder.corners.begin(), builder.corners.end());
}

// The squared sine of the turn at node `i` of a path.
double TurnAt(HvPath2f const& path, unsigned int i)
{
    HvPoint2<double> const in(path.GetPoint(i) - path.GetPoint(i - 1));
    HvPoint2<double> const out(path.GetPoint(i + 1) - path.GetPoint(i));
    double const det = HvPoint2_AdetB(in, out);
    return det * det / HvPoint2_AdotB(in, in) / HvPoint2_AdotB(out, out);
}

}  // namespace

// Input.

TEST(HvBezierFitPathBuilder, ModerateStepIsSubdivided)
{
    Pen pen(100.0, 10.0);
    pen.builder.StartSubpath({0, 0});
    pen.Add({{25, 0}});
    ExpectPoints(ToVector(pen.builder.input), {{0, 0}, {10, 0}, {20, 0}, {25, 0}}, 1e-5);
}

TEST(HvBezierFitPathBuilder, SubdivisionUsesTheCheapDistance)
{
    // 30 + 0.3334 * 30 = 40.002: three points between, at multiples of 10 / 40.002.
    Pen pen(100.0, 10.0);
    pen.builder.StartSubpath({0, 0});
    pen.Add({{30, 30}});
    float const s = static_cast<float>(300.0 / 40.002);
    // The fourth would be within the gap of the end, which takes its place.
    ExpectPoints(ToVector(pen.builder.input),
                 {{0, 0}, {s, s}, {2 * s, 2 * s}, {3 * s, 3 * s}, {30, 30}}, 1e-4);
}

TEST(HvBezierFitPathBuilder, StepOfTheSpacingIsLeftAlone)
{
    Pen pen(100.0, 10.0);
    pen.builder.StartSubpath({0, 0});
    for (int i = 1; i <= 20; ++i) {
        pen.Add({{static_cast<float>(10 * i), 0}});
    }
    EXPECT_EQ(pen.builder.input.Size(), 21u);
}

TEST(HvBezierFitPathBuilder, LongStepIsSubdividedUpToTheLimitInclusive)
{
    Pen pen(50.0, 10.0);
    pen.builder.StartSubpath({0, 0});
    pen.Add({{50, 0}});
    EXPECT_EQ(pen.builder.input.Size(), 6u);
    pen.Add({{101, 0}});
    EXPECT_EQ(pen.builder.input.Size(), 7u);
}

TEST(HvBezierFitPathBuilder, LastOfTheSubdivisionNearTheEndGivesWay)
{
    Pen pen(100.0, 10.0);
    pen.builder.StartSubpath({0, 0});
    pen.Add({{20.4f, 0}});
    ExpectPoints(ToVector(pen.builder.input), {{0, 0}, {10, 0}, {20.4f, 0}}, 1e-5);
    pen.builder.StartSubpath({0, 0});
    pen.Add({{20.6f, 0}});
    ExpectPoints(ToVector(pen.builder.input), {{0, 0}, {10, 0}, {20, 0}, {20.6f, 0}}, 1e-5);
}

TEST(HvBezierFitPathBuilder, NearPointsAreDroppedUnlessForced)
{
    Pen pen;
    pen.builder.StartSubpath({0, 0});
    pen.Add({{0.5f, 0.5f}, {kNoNumber, kNoNumber}, {kNoNumber, 0}});
    EXPECT_EQ(pen.builder.input.Size(), 1u);
    pen.Add({{0.5f, 0.5f}}, 7);
    pen.Add({{45.0f, 0.5f}}, -1);  // a forced step is not subdivided
    EXPECT_EQ(pen.builder.input.Size(), 3u);
}

TEST(HvBezierFitPathBuilder, HostileSubdivisionTakesThePointAlone)
{
    for (double spacing :
         {0.0, -0.0, -5.0, kNoDouble, 1e-300, 1e-9, 1e-4, std::numeric_limits<double>::denorm_min(),
          -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()}) {
        Pen pen(1e300, spacing);
        pen.builder.StartSubpath({0, 0});
        pen.Add({{40, 0}, {kInfinite, 0}, {3e38f, -3e38f}});
        EXPECT_EQ(pen.builder.input.Size(), 4u) << spacing;
    }
    // 40 / 0.001 are 40,000 points, which is still allowed.
    Pen pen(1e300, 0.001);
    pen.builder.StartSubpath({0, 0});
    pen.Add({{40, 0}});
    EXPECT_NEAR(pen.builder.input.Size(), 40001.0, 500.0);
}

// Corners and smoothing.

TEST(HvBezierFitPathBuilder, TurnBackBetweenLongStepsIsACorner)
{
    struct {
        StrokePoint before, here, after;
        bool isCorner;
    } const cases[] = {
        {{0, 0}, {10, 0}, {0, 0}, true},     // a full reversal
        {{0, 0}, {10, 0}, {9, 10}, true},    // a little more than 90 degrees
        {{0, 0}, {10, 0}, {10, 10}, false},  // 90 degrees
        {{0, 0}, {10, 0}, {11, 10}, false},
        {{0, 0}, {10, 0}, {9, 0}, false},        // the step back is the tolerance
        {{9, 0}, {10, 0}, {0, 0}, false},        // the step there is
        {{0, 0}, {10, 0}, {9, 0.9f}, false},     // short on both axes
        {{0, 0}, {10, 0}, {9.5f, -1.1f}, true},  // long on one of them
        {{0, 0}, {kNoNumber, 0}, {0, 0}, false},
        {{0, 0}, {kInfinite, 0}, {0, 0}, false},
    };
    for (auto const& c : cases) {
        Pen pen;
        pen.builder.StartSubpath(c.before);
        pen.Add({c.here, c.after}, 1);
        pen.builder.GetTrailingSamples();
        EXPECT_EQ(Flags(pen.builder), (std::vector<int>{0, c.isCorner ? 1 : 0}))
            << c.here << c.after;
    }
}

TEST(HvBezierFitPathBuilder, CommitsInThreeCalls)
{
    // Ten points with a corner at 5, then five more, of which the first made 9 a corner, then none.
    Pen pen;
    OpenFit& b = pen.builder;
    std::vector<StrokePoint> const head = {{0, 0},   {10, 3},  {20, 0}, {30, 3},  {40, 0},
                                           {50, 10}, {40, 13}, {30, 9}, {20, 13}, {10, 10}};
    std::vector<StrokePoint> const tail = {{20, 30}, {30, 33}, {40, 30}, {50, 33}, {60, 30}};
    b.StartSubpath(head[0]);
    pen.Add({head.begin() + 1, head.end()}, 1);
    b.GetTrailingSamples();
    EXPECT_EQ(Flags(b), (std::vector<int>{0, 0, 0, 0, 0, 1, 0, 0, 0}));
    EXPECT_EQ(b.chordLengths.Size(), 10u);
    EXPECT_EQ(b.processedIndex, 9u);
    // 1 to 4 and 6 to 8 have moved, each with the originals before and behind it.
    for (unsigned int i = 0; i < 10; ++i) {
        bool const isFixed = i == 0 || i == 5 || i == 9;
        StrokePoint const smooth =
            isFixed ? head[i] : head[i] * 0.5f + (head[i - 1] + head[i + 1]) * 0.25f;
        EXPECT_EQ(b.input[i], smooth) << i;
    }
    std::vector<StrokePoint> const committed = ToVector(b.input);
    std::vector<double> const lengths(b.chordLengths.begin(), b.chordLengths.end());
    unsigned int const pathPoints = pen.path.NumPoints();

    pen.Add(tail, 1);
    b.GetTrailingSamples();
    EXPECT_EQ(Flags(b), (std::vector<int>{0, 0, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 0}));
    EXPECT_EQ(b.chordLengths.Size(), 15u);
    EXPECT_EQ(b.processedIndex, 14u);
    for (unsigned int i = 0; i < 10; ++i) {
        EXPECT_EQ(b.input[i], committed[i]);
        EXPECT_EQ(b.chordLengths[i], lengths[i]);
    }
    // Point 10 is smoothed between the fixed 9 and 11.
    EXPECT_EQ(b.input[10], tail[0] * 0.5f + (head[9] + tail[1]) * 0.25f);
    HvDoubleArray const chord = ChordOf(b.input);
    for (unsigned int i = 0; i < 15; ++i) {
        EXPECT_NEAR(b.chordLengths[i], chord[i], 1e-9);
    }
    // The corner at 9 is one: the path turns there.
    EXPECT_GT(TurnAt(pen.path, pathPoints - 1), 0.1);

    unsigned int const before = pen.path.NumPoints();
    EXPECT_EQ(b.GetTrailingSamples()->Size(), 0u);
    EXPECT_EQ(pen.path.NumPoints(), before);
    EXPECT_EQ(b.corners.Size(), 14u);
    EXPECT_EQ(b.chordLengths.Size(), 15u);
}

TEST(HvBezierFitPathBuilder, SmoothingNeverTouchesWhatACornerIsTestedOn)
{
    // At (20, 0) the steps (10, -10) and (3, 5) turn back; after smoothing (10, 10) to (10, 5) they
    // would not.
    Pen pen;
    pen.builder.StartSubpath({0, 0});
    pen.Add({{10, 10}, {20, 0}, {23, 5}, {30, 20}}, 1);
    pen.builder.GetTrailingSamples();
    EXPECT_EQ(Flags(pen.builder), (std::vector<int>{0, 0, 1, 0}));
    EXPECT_EQ(pen.builder.input[1], StrokePoint(10, 5));
}

TEST(HvBezierFitPathBuilder, AskedAfterEachPointNothingIsSmoothedAndEachStepIsACubic)
{
    Pen pen;
    std::vector<StrokePoint> const points = {{0, 0}, {10, 4}, {20, 0}, {30, 9}, {40, 0}, {50, 2}};
    pen.builder.StartSubpath(points[0]);
    pen.builder.GetTrailingSamples();
    for (unsigned int i = 1; i < points.size(); ++i) {
        pen.Add({points[i]});
        pen.builder.GetTrailingSamples();
    }
    EXPECT_EQ(DegreesOf(pen.path), (std::vector<unsigned int>{3, 3, 3, 3, 3}));
    ExpectPoints(NodesOf(pen.path), points, 0.0);
    for (unsigned int i = 3; i < 15; i += 3) {
        EXPECT_LT(TurnAt(pen.path, i), 1e-6);
    }
}

// Runs.

TEST(HvBezierFitPathBuilder, RunsGoToTheFunctionOfTheirLength)
{
    // One, two, three, four steps, at least four to fit.
    for (unsigned int steps = 1; steps <= 4; ++steps) {
        Pen pen(50.0, 100.0, 1.0, 4);
        pen.builder.StartSubpath({0, 0});
        for (unsigned int i = 1; i <= steps; ++i) {
            pen.Add({{static_cast<float>(10 * i), 0}});
        }
        pen.builder.GetTrailingSamples();
        std::vector<unsigned int> const expected[] = {{3}, {3}, {4}, {3}};
        EXPECT_EQ(DegreesOf(pen.path), expected[steps - 1]) << steps;
        // Handles: a third of a step; the chord over the degree; a third of it in the fit.
        float const handle[] = {10.0f / 3, 20.0f / 3, 30.0f / 4, 40.0f / 3};
        EXPECT_NEAR(pen.path.GetPoint(1).x, handle[steps - 1], 1e-3) << steps;
    }
}

TEST(HvBezierFitPathBuilder, LongJumpIsOneCubic)
{
    Pen pen(50.0, 10.0);
    pen.builder.StartSubpath({0, 0});
    pen.Add({{51, 0}});
    pen.builder.GetTrailingSamples();
    EXPECT_EQ(DegreesOf(pen.path), std::vector<unsigned int>{3});
    ExpectPoints(PointsOf(pen.path), {{0, 0}, {17, 0}, {34, 0}, {51, 0}}, 1e-4);
}

TEST(HvBezierFitPathBuilder, LongStepsAreInterpolatedAmongFits)
{
    // Five steps of 10, two of 100, five of 10. Smoothing evens out the steps beside the long ones:
    // 32.5, 77.5, 77.5, 32.5, so two are long still.
    Pen pen(50.0, 200.0, 1.0, 4);
    std::vector<float> const xs = {0, 10, 20, 30, 40, 50, 150, 250, 260, 270, 280, 290, 300};
    pen.builder.StartSubpath({xs[0], 0});
    for (std::size_t i = 1; i < xs.size(); ++i) {
        pen.Add({{xs[i], 0}}, 1);
    }
    pen.builder.GetTrailingSamples();
    ExpectPoints(NodesOf(pen.path), {{0, 0}, {72.5f, 0}, {150, 0}, {227.5f, 0}, {300, 0}}, 1e-4);
    EXPECT_EQ(DegreesOf(pen.path), (std::vector<unsigned int>{3, 3, 3, 3}));
    // The two between have handles of a third of their step.
    EXPECT_NEAR(pen.path.GetPoint(4).x, 72.5 + 77.5 / 3, 1e-3);
    EXPECT_NEAR(pen.path.GetPoint(7).x, 150 + 77.5 / 3, 1e-3);
}

TEST(HvBezierFitPathBuilder, StepOfExactlyTheLimitIsLong)
{
    struct {
        float step;
        unsigned int segments;
    } const cases[] = {{50.0f, 5}, {49.0f, 1}};
    for (auto const& c : cases) {
        Pen pen(50.0, 100.0, 1.0, 4);
        pen.builder.StartSubpath({0, 0});
        for (int i = 1; i <= 5; ++i) {
            pen.Add({{c.step * static_cast<float>(i), 0}});
        }
        pen.builder.GetTrailingSamples();
        EXPECT_EQ(DegreesOf(pen.path).size(), c.segments) << c.step;
    }
}

TEST(HvBezierFitPathBuilder, CornerCutsTheRunAndTheCurvesMeetAtAnAngle)
{
    Pen pen;
    std::vector<StrokePoint> points;
    for (int i = 0; i <= 6; ++i) {
        points.emplace_back(static_cast<float>(10 * i), 0.0f);
    }
    for (int i = 1; i <= 6; ++i) {
        points.emplace_back(static_cast<float>(60 - 5 * i), static_cast<float>(10 * i));
    }
    pen.builder.StartSubpath(points[0]);
    pen.Add({points.begin() + 1, points.end()}, 1);
    pen.builder.GetTrailingSamples();
    EXPECT_EQ(DegreesOf(pen.path), (std::vector<unsigned int>{3, 3}));
    ExpectPoints(NodesOf(pen.path), {{0, 0}, {60, 0}, {30, 60}}, 0.0);
    // The turn has a squared sine of 0.8.
    EXPECT_NEAR(TurnAt(pen.path, 3), 0.8, 0.01);
}

TEST(HvBezierFitPathBuilder, CornerBetweenLongAndShortStepsIsJoinedSmoothly)
{
    // Short steps rightward, then a long one back: where the runs change kind, the flag of the
    // corner is not asked for.
    Pen pen(50.0, 100.0, 1.0, 4);
    pen.builder.StartSubpath({0, 0});
    pen.Add({{10, 0}, {20, 0}, {30, 0}, {40, 0}, {50, 0}, {0, 60}}, 1);
    pen.builder.GetTrailingSamples();
    EXPECT_EQ(Flags(pen.builder), (std::vector<int>{0, 0, 0, 0, 0, 1}));
    EXPECT_EQ(pen.builder.input[5], StrokePoint(50, 0));
    EXPECT_EQ(DegreesOf(pen.path), (std::vector<unsigned int>{3, 3}));
    EXPECT_LT(TurnAt(pen.path, 3), 1e-6);
}

TEST(HvBezierFitPathBuilder, CornerAtTheLastCommittedPointIsFoundByTheNextCall)
{
    for (bool turns : {false, true}) {
        Pen pen;
        pen.builder.StartSubpath({0, 0});
        pen.Add({{10, 0}, {20, 0}, {30, 0}, {40, 0}});
        pen.builder.GetTrailingSamples();
        pen.Add(turns ? std::vector<StrokePoint>{{30, 8}, {20, 16}, {10, 24}, {0, 32}}
                      : std::vector<StrokePoint>{{50, 8}, {60, 16}, {70, 24}, {80, 32}});
        pen.builder.GetTrailingSamples();
        EXPECT_EQ(Flags(pen.builder)[4], turns ? 1 : 0);
        EXPECT_EQ(TurnAt(pen.path, 3) < 1e-6, !turns);
    }
}

// Closing.

TEST(HvBezierFitPathBuilder, ClosedRingIsSmoothAtItsSeam)
{
    Pen pen(50.0, 20.0, 1.0, 4);
    int const count = 60;
    for (int i = 0; i <= count; ++i) {
        double const a = 2.0 * std::acos(-1.0) * i / count;
        StrokePoint const p(static_cast<float>(100 * std::cos(a)),
                            static_cast<float>(100 * std::sin(a)));
        if (i == 0) {
            pen.builder.StartSubpath(p);
        } else if (i < count) {
            pen.Add({p});
        }
        if (i % 15 == 14) {
            pen.builder.GetTrailingSamples();
        }
    }
    pen.builder.EndSubpath({100, 0}, 1);
    unsigned int const last = pen.path.NumPoints() - 1;
    EXPECT_EQ(pen.path.IsSubpathClosed(last), 1);
    EXPECT_EQ(pen.path.IsG1Continuous(0), 1);
    // Smoothing draws the points inward by r * (1 - cos 6 deg) / 2 = 0.27; the fit adds its
    // tolerance.
    HvPoint2fArray flat(64);
    pen.path.FlattenSubpath(0, 0.01, flat);
    for (StrokePoint const& p : flat) {
        EXPECT_NEAR(std::hypot(double(p.x), double(p.y)), 100.0, 1.5);
    }
}

TEST(HvBezierFitPathBuilder, RingInOneRunIsClosed)
{
    for (unsigned int minFit : {0u, 1u, 2u, 4u, 8u, 9u, 30u, ~0u}) {
        Pen pen(50.0, 20.0, 1.0, minFit);
        pen.builder.StartSubpath({40, 0});
        for (int i = 1; i < 24; ++i) {
            double const a = 2.0 * std::acos(-1.0) * i / 24;
            pen.Add({{static_cast<float>(40 * std::cos(a)), static_cast<float>(40 * std::sin(a))}});
        }
        pen.builder.EndSubpath({40, 0}, 1);
        EXPECT_EQ(pen.path.IsSubpathClosed(0), 1) << minFit;
        EXPECT_EQ(NodesOf(pen.path).back(), StrokePoint(40, 0));
        for (StrokePoint const& p : PointsOf(pen.path)) {
            EXPECT_LT(std::hypot(double(p.x), double(p.y)), 120.0) << minFit;
        }
    }
}

TEST(HvBezierFitPathBuilder, OnlyTheLastRunCloses)
{
    // Two steps to a corner, then three back to the start, all below the fit: degrees 2 + 1 and,
    // with the control that closes, 3 + 2.
    Pen pen(100.0, 100.0, 1.0, 8);
    pen.builder.StartSubpath({0, 0});
    pen.Add({{20, 0}, {40, 0}, {30, 20}, {15, 20}});
    pen.builder.EndSubpath({0, 0}, 1);
    EXPECT_EQ(Flags(pen.builder), (std::vector<int>{0, 0, 1, 0, 0}));
    EXPECT_EQ(DegreesOf(pen.path), (std::vector<unsigned int>{3, 5}));
    EXPECT_EQ(pen.path.IsSubpathClosed(0), 1);
}

TEST(HvBezierFitPathBuilder, EndOnTheStartIsNotRepeated)
{
    Pen pen;
    pen.builder.StartSubpath({0, 0});
    pen.Add({{10, 0}});
    pen.builder.EndSubpath({0, 0}, 1);
    EXPECT_EQ(pen.builder.input.Size(), 3u);
    EXPECT_EQ(pen.path.IsSubpathClosed(0), 1);
}

TEST(HvBezierFitPathBuilder, StrokeThatIsCommittedOnTheStartIsOnlyClosed)
{
    Pen pen;
    pen.builder.StartSubpath({0, 0});
    pen.Add({{10, 0}, {10, 10}, {0, 10}, {0, 0}});
    pen.builder.GetTrailingSamples();
    unsigned int const before = pen.path.NumPoints();
    EXPECT_EQ(pen.path.IsSubpathClosed(0), 0);
    pen.builder.EndSubpath({0, 0}, 1);
    EXPECT_EQ(pen.path.NumPoints(), before);
    EXPECT_EQ(pen.path.IsSubpathClosed(0), 1);
}

TEST(HvBezierFitPathBuilder, ClosingStepIsSmoothedWithTheRest)
{
    Pen pen;
    pen.builder.StartSubpath({0, 0});
    pen.Add({{20, 0}, {20, 15}});
    pen.builder.EndSubpath({0, 15}, 1);
    // The old last point lies between its neighbours now: (0, 15) / 2 + ((20, 15) + (0, 0)) / 4.
    EXPECT_EQ(pen.builder.input[3], StrokePoint(5, 11.25f));
    EXPECT_EQ(pen.builder.input[4], StrokePoint(0, 0));
}

// Quality.

TEST(HvBezierFitPathBuilder, WaveIsSmoothAndNear)
{
    Pen pen(60.0, 30.0, 1.0, 4);
    std::vector<StrokePoint> wave;
    for (int i = 0; i <= 200; ++i) {
        wave.emplace_back(static_cast<float>(3 * i), static_cast<float>(40 * std::sin(i * 0.07)));
    }
    pen.builder.StartSubpath(wave[0]);
    for (std::size_t i = 1; i < wave.size(); ++i) {
        pen.Add({wave[i]});
        if (i % 20 == 0) {
            pen.builder.GetTrailingSamples();
        }
    }
    pen.builder.EndSubpath(wave.back(), 0);
    EXPECT_LE(DegreesOf(pen.path).size(), 20u);
    for (unsigned int i = 3; i + 1 < pen.path.NumPoints(); i = pen.path.EndOfSegment(i + 1)) {
        EXPECT_LT(TurnAt(pen.path, i), 1e-5);
    }
    HvPoint2fArray flat(64);
    pen.path.FlattenSubpath(0, 0.01, flat);
    for (StrokePoint const& p : wave) {
        EXPECT_LE(DistanceFrom(ToVector(flat), p), 1.2);
    }
}

// Failures.

TEST(HvBezierFitPathBuilder, FailedCommitIsNotedAnew)
{
    auto const prepare = [] {
        auto pen = std::make_unique<Pen>();
        pen->builder.StartSubpath({0, 0});
        for (int i = 1; i < 300; ++i) {
            pen->Add({{static_cast<float>(5 * i), static_cast<float>(20 * (i % 3))}});
        }
        return pen;
    };
    RefuseEachAllocation(
        prepare, [](std::unique_ptr<Pen>& pen) { pen->builder.GetTrailingSamples(); },
        [](std::unique_ptr<Pen>& pen, bool) {
            pen->builder.GetTrailingSamples();
            unsigned int const last = pen->builder.input.Size() - 1;
            EXPECT_EQ(pen->builder.processedIndex, last);
            EXPECT_EQ(pen->builder.corners.Size(), last);
            EXPECT_EQ(pen->builder.chordLengths.Size(), last + 1);
        });
}
