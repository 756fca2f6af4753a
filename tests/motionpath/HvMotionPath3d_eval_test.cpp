// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Positions on motion paths.

#include <hv/motionpath/HvMotionPath3d.h>

#include <hv/rotation/HvTransfo4.h>
#include <tests/motionpath/motion_path_support.h>
#include <tests/motionpath/reference_path.h>
#include <tests/platform/run_threads.h>
#include <tests/support/allocation_failure.h>

namespace {

/// What the polyline of a segment may be off: its tolerance, and with it the lengths that place the
/// point along it. A chord is shorter than its arc by about (8/3) e^2 / chord for a bulge e, so the
/// lengths are off far less.
constexpr double kPolylineError = 2e-6;
constexpr double kTolerance = 1e-6;

/// Cubics at even parameters on a line: distance is what the polynomial says, exactly.
Path LineOfCubics(std::vector<double> const& times, std::vector<double> const& places)
{
    Path path;
    path.Moveto({places[0], 0, 0}, times[0]);
    for (std::size_t i = 1; i < times.size(); ++i) {
        double const step = (places[i] - places[i - 1]) / 3;
        path.Curveto({places[i - 1] + step, 0, 0}, {places[i] - step, 0, 0}, {places[i], 0, 0},
                     times[i]);
    }
    return path;
}

void SetRules(Path& path, unsigned int node, Path::TangentInfo left, Path::TangentInfo right)
{
    ASSERT_EQ(path.SetLeftTangentInfo(3 * node, left), 1);
    ASSERT_EQ(path.SetRightTangentInfo(3 * node, right), 1);
}

struct Bracket {
    unsigned int left = 77;
    int leftValid = -1;
    unsigned int right = 88;
    int rightValid = -1;
};

Bracket BracketOf(Path const& path, double t)
{
    Bracket b;
    path.GetBracketingIndices(t, 0.5, b.left, b.leftValid, b.right, b.rightValid, 0);
    return b;
}

TEST(IsInEXtent, IsAClosedCube)
{
    EXPECT_EQ(IsInEXtent({0, 0, 0}, 1, {1, -1, 1}), 1);
    EXPECT_EQ(IsInEXtent({0, 0, 0}, 1, {1.0001, 0, 0}), 0);
    EXPECT_EQ(IsInEXtent({0, 0, 0}, 1, {0, -1.0001, 0}), 0);
    EXPECT_EQ(IsInEXtent({0, 0, 0}, 1, {0, 0, 1.0001}), 0);
    EXPECT_EQ(IsInEXtent({5, 5, 5}, 0, {5, 5, 5}), 1);
    EXPECT_EQ(IsInEXtent({0, 0, 0}, -1, {0, 0, 0}), 0);
    EXPECT_EQ(IsInEXtent({0, 0, 0}, kNaN, {0, 0, 0}), 0);
    EXPECT_EQ(IsInEXtent({0, 0, 0}, 1, {0, kNaN, 0}), 0);
}

TEST(HvMotionPath3d_eval, BracketsATime)
{
    Path const path = LineOfCubics({10, 20, 40}, {0, 1, 2});
    Bracket b = BracketOf(path, 5);
    EXPECT_EQ(b.leftValid, 0);
    EXPECT_EQ(b.left, 77u);
    EXPECT_EQ(b.right, 0u);
    EXPECT_EQ(b.rightValid, 1);
    b = BracketOf(path, 20);
    EXPECT_EQ(b.left, 3u);
    EXPECT_EQ(b.right, 3u);
    EXPECT_EQ(b.leftValid, 1);
    EXPECT_EQ(b.rightValid, 1);
    b = BracketOf(path, 40);
    EXPECT_EQ(b.left, 6u);
    EXPECT_EQ(b.right, 6u);
    EXPECT_EQ(b.rightValid, 1);
    b = BracketOf(path, 25);
    EXPECT_EQ(b.left, 3u);
    EXPECT_EQ(b.right, 6u);
    b = BracketOf(path, 41);
    EXPECT_EQ(b.left, 6u);
    EXPECT_EQ(b.leftValid, 1);
    EXPECT_EQ(b.rightValid, 0);
    EXPECT_EQ(b.right, 88u);
    b = BracketOf(path, kNaN);
    EXPECT_EQ(b.leftValid, 0);
    EXPECT_EQ(b.right, 0u);
    b = BracketOf(Path(), 0);
    EXPECT_EQ(b.leftValid, 0);
    EXPECT_EQ(b.rightValid, 0);
    EXPECT_EQ(b.left, 77u);
    EXPECT_EQ(b.right, 88u);
}

TEST(HvMotionPath3d_eval, FindsNodesByTheirTimes)
{
    Path const path = LineOfCubics({10, 20, 40}, {0, 1, 2});
    struct Case {
        double t;
        double tolerance;
        int found;
        unsigned int point;
    };
    Case const cases[] = {
        {9, 0.5, 0, 0},    {9.75, 0.5, 1, 0}, {9.5, 0.5, 0, 0},    // the limit is open before
        {10, 0, 1, 0},     {20, 0, 1, 3},     {20, -1, 1, 3},      // at a node
        {10.5, 0.5, 1, 0},                                         // closed on the right of a node
        {19.5, 0.5, 0, 0}, {19.5, 0.6, 1, 3},                      // open on its left
        {15, 6, 1, 0},     {15.5, 6, 1, 3},   {14.5, 6, 1, 0},     // both: the nearer, a tie left
        {15, 1, 0, 0},     {40.5, 0.5, 1, 6}, {40.75, 0.5, 0, 0},  // behind
        {kNaN, 1, 0, 0},   {15, kNaN, 0, 0},  {15, kInfinity, 1, 0},
    };
    for (Case const& c : cases) {
        unsigned int point = 99;
        EXPECT_EQ(path.GetNodeIndexFromInitialTime(c.t, c.tolerance, point), c.found)
            << c.t << " " << c.tolerance;
        EXPECT_EQ(point, c.found != 0 ? c.point : 99) << c.t << " " << c.tolerance;
    }
    unsigned int point = 99;
    EXPECT_EQ(Path().GetNodeIndexFromInitialTime(0, 1, point), 0);
    EXPECT_EQ(point, 99u);
}

TEST(HvMotionPath3d_eval, FindsTheNearestPointInACube)
{
    Path path;
    path.Moveto({0, 0, 0}, 0);
    path.Curveto({2, 2, 0}, {2.5, 0, 0}, {9, 9, 9}, 1);
    unsigned int point = 99;
    // Point 1 is nearer than point 2 in no axis alone, but point 2 in distance.
    EXPECT_EQ(path.GetClosestControlPointIndex({2.4, 0.5, 0}, 2.5, point), 1);
    EXPECT_EQ(point, 2u);
    EXPECT_EQ(path.GetClosestControlPointIndex({5, 5, 5}, 1, point), 0);
    EXPECT_EQ(path.GetClosestControlPointIndex({0, 0, 0}, kNaN, point), 0);
    EXPECT_EQ(path.GetClosestControlPointIndex({kNaN, 0, 0}, 1, point), 0);
    EXPECT_EQ(point, 2u);
    Path tie;
    tie.Moveto({-1, 0, 0}, 0);
    tie.Curveto({1, 0, 0}, {0, 1, 0}, {0, 0, 1}, 1);
    EXPECT_EQ(tie.GetClosestControlPointIndex({0, 0, 0}, 1, point), 1);
    EXPECT_EQ(point, 0u) << "the first of several";
}

TEST(HvMotionPath3d_eval, RestsBeforeTheFirstAndBehindTheLastNode)
{
    Path const path = LineOfCubics({10, 20, 40}, {3, 1, 2});
    for (double const t : {-kInfinity, -1e308, 9.999, kNaN, 10.0}) {
        EXPECT_EQ(At(path, t), Point(3, 0, 0)) << t;
    }
    for (double const t : {40.0, 40.001, 1e308, kInfinity}) {
        EXPECT_EQ(At(path, t), Point(2, 0, 0)) << t;
    }
    EXPECT_EQ(At(path, 20), Point(1, 0, 0));
    Point out(7, 7, 7);
    Path().Eval(0, 1, out, 0);
    EXPECT_EQ(out, Point(7, 7, 7));
    Path single;
    single.Moveto({1, 2, 3}, 5);
    for (double const t : {4.0, 5.0, 6.0, kNaN}) {
        EXPECT_EQ(At(single, t), Point(1, 2, 3));
    }
}

TEST(HvMotionPath3d_eval, StraightSegmentsAreTravelledEvenly)
{
    Path path({0, 0, 0}, {8, 4, -8}, 2, 6);
    path.SetRightTangentInfo(0, Path::TangentStop);
    EXPECT_EQ(At(path, 3), Point(2, 1, -2));
    EXPECT_EQ(At(path, 5.5), Point(7, 3.5, -7));
}

TEST(HvMotionPath3d_eval, AStepHoldsTheSegmentAlsoAStraightOne)
{
    Path path({0, 0, 0}, {8, 4, -8}, 2, 6);
    path.SetRightTangentInfo(0, Path::TangentStep);
    EXPECT_EQ(At(path, std::nextafter(6.0, 0.0)), Point(0, 0, 0));
    EXPECT_EQ(At(path, 6), Point(8, 4, -8));
    Path curve = LineOfCubics({0, 1, 2}, {0, 1, 2});
    curve.SetRightTangentInfo(3, Path::TangentStep);
    curve.SetLeftTangentInfo(3, Path::TangentStep);  // means nothing there
    EXPECT_EQ(At(curve, 1.999), Point(1, 0, 0));
    EXPECT_GT(At(curve, 0.5).x, 0.1);
}

TEST(HvMotionPath3d_eval, LinearPairGivesEvenSpeed)
{
    PathSource source(1);
    Path path = source.CurvedPath(3);
    for (unsigned int node = 0; node < 4; ++node) {
        SetRules(path, node, Path::TangentLinear, Path::TangentLinear);
    }
    ReferencePath const reference(path);
    double const t0 = TimeOf(path, 3);
    double const t1 = TimeOf(path, 6);
    double const speed = static_cast<double>(reference.Length(1)) / (t1 - t0);
    // Steps so short that arc and chord agree to 1e-7 of it or better, along a curve without cusp.
    constexpr int kSteps = 2000;
    double const step = (t1 - t0) / kSteps;
    Point before = At(path, t0, 1e-9);
    for (int i = 1; i <= kSteps; ++i) {
        Point const now = At(path, t0 + i * step, 1e-9);
        EXPECT_NEAR(Distance(before, now), speed * step, speed * step * 1e-3) << i;
        before = now;
    }
}

TEST(HvMotionPath3d_eval, OnlySegmentEasesInAndOut)
{
    Path const path = LineOfCubics({2, 6}, {0, 10});
    // Both speeds 0: 3 u^2 - 2 u^3.
    for (double const u : {0.1, 0.25, 0.5, 0.9}) {
        EXPECT_NEAR(At(path, 2 + 4 * u).x, 10 * (3 * u * u - 2 * u * u * u), 1e-12);
    }
}

TEST(HvMotionPath3d_eval, EveryPairOfRulesGivesItsPolynomial)
{
    constexpr Path::TangentInfo kRules[] = {Path::TangentFree, Path::TangentStep,
                                            Path::TangentLinear, Path::TangentSmooth,
                                            Path::TangentStop};
    for (Path::TangentInfo const right : kRules) {
        for (Path::TangentInfo const left : kRules) {
            Path path = LineOfCubics({0, 1, 3, 7}, {0, 2, 5, 6});
            ASSERT_EQ(path.SetRightTangentInfo(3, right), 1);
            ASSERT_EQ(path.SetLeftTangentInfo(6, left), 1);
            // Speeds by hand: (2 + 3) / (3 - 0) at node 1, (3 + 1) / (7 - 1) at node 2.
            double const smooth0 = 5.0 / 3;
            double const smooth1 = 4.0 / 6;
            double const v0 = right == Path::TangentStop ? 0 : smooth0;
            double const v1 = left == Path::TangentStop     ? 0
                              : left == Path::TangentLinear ? 3.0 / 2
                                                            : smooth1;
            for (double const t : {1.25, 2.0, 2.75}) {
                double const u = (t - 1) / 2;
                double expected = 2 + (v0 * 2) * u * (1 - u) * (1 - u) -
                                  (v1 * 2) * u * u * (1 - u) + 3 * u * u * (3 - 2 * u);
                if (right == Path::TangentStep) {
                    expected = 2;
                } else if (right == Path::TangentLinear && left == Path::TangentLinear) {
                    expected = 2 + 3 * u;
                }
                EXPECT_NEAR(At(path, t).x, expected, 1e-12) << right << " " << left << " " << t;
            }
        }
    }
}

TEST(HvMotionPath3d_eval, MatchesArcLengthByBruteForce)
{
    constexpr Path::TangentInfo kRules[] = {Path::TangentFree, Path::TangentLinear,
                                            Path::TangentSmooth, Path::TangentStop};
    PathSource source(2);
    for (int round = 0; round < 3; ++round) {
        Path path = source.CurvedPath(4);
        for (unsigned int node = 0; node < 5; ++node) {
            SetRules(path, node, kRules[source.Index(4)], kRules[source.Index(4)]);
        }
        ReferencePath const reference(path);
        for (unsigned int k = 0; k < 4; ++k) {
            double const t0 = TimeOf(path, 3 * k);
            double const t1 = TimeOf(path, 3 * k + 3);
            for (int i = 0; i < 4; ++i) {
                double const t = source.Number(t0, t1);
                ExpectNear(At(path, t, kTolerance), reference.At(k, t), kPolylineError);
            }
        }
    }
}

TEST(HvMotionPath3d_eval, StaysWithinItsToleranceOfTheCurve)
{
    PathSource source(3);
    Path const path = source.CurvedPath(3);
    ReferencePath const reference(path);
    for (double const tolerance : {1e-1, 1e-2, 1e-3, 1e-4}) {
        double const t0 = TimeOf(path, 3);
        double const t1 = TimeOf(path, 6);
        for (int i = 0; i < 5; ++i) {
            double const t = source.Number(t0, t1);
            // Along the curve a coarse polyline is off by its missing length, at most about one
            // tolerance for each of its few chords.
            ExpectNear(At(path, t, tolerance), reference.At(1, t), 8 * tolerance);
        }
    }
}

TEST(HvMotionPath3d_eval, PositionAndSpeedAreContinuousAtSmoothNodes)
{
    PathSource source(4);
    Path path;
    path.Moveto({0, 0, 0}, 0);
    path.Curveto({1, 2, 0}, {2, 2, 1}, {4, 0, 1}, 1);
    path.Curveto({6, -2, 1}, {7, 0, 3}, {9, 1, 1}, 3);
    constexpr double kStep = 1e-5;
    Point const before = At(path, 1 - kStep, 1e-10);
    Point const node = At(path, 1, 1e-10);
    Point const behind = At(path, 1 + kStep, 1e-10);
    Point const in = (node - before) * (1 / kStep);
    Point const out = (behind - node) * (1 / kStep);
    double const speed = Distance(in, {});
    EXPECT_GT(speed, 1.0);
    // The handles at the node are collinear, and one-sided differences over 1e-5 see accelerations
    // of some tens.
    ExpectNear(in, out, 1e-3);
}

TEST(HvMotionPath3d_eval, SpeedIsZeroAtAStop)
{
    Path path;
    path.Moveto({0, 0, 0}, 0);
    path.Curveto({1, 2, 0}, {2, 2, 1}, {4, 0, 1}, 1);
    path.Curveto({6, -2, 1}, {7, 0, 3}, {9, 1, 1}, 3);
    SetRules(path, 1, Path::TangentStop, Path::TangentStop);
    constexpr double kStep = 1e-4;
    // Distance from a stop grows with the square of time.
    EXPECT_LT(Distance(At(path, 1 - kStep, 1e-10), At(path, 1, 1e-10)), 100 * kStep * kStep);
    EXPECT_LT(Distance(At(path, 1 + kStep, 1e-10), At(path, 1, 1e-10)), 100 * kStep * kStep);
}

TEST(HvMotionPath3d_eval, OvershootIsHeldAtTheEnds)
{
    // Long neighbours give speeds far above the mean of a short segment: the polynomial leaves it.
    Path const path = LineOfCubics({0, 1, 2, 3}, {0, 100, 101, 201});
    bool restsAtEnd = false;
    for (double t = 1; t < 2; t += 1.0 / 64) {
        double const x = At(path, t).x;
        EXPECT_GE(x, 100);
        EXPECT_LE(x, 101);
        restsAtEnd = restsAtEnd || (t < 1.9 && x == 101);
    }
    EXPECT_TRUE(restsAtEnd);
}

TEST(HvMotionPath3d_eval, FarTimesLoseNoAccuracy)
{
    constexpr double kFar = 16777216;  // 2^24: the sums below are exact
    Path const near = LineOfCubics({0, 1, 3, 7}, {0, 2, 5, 6});
    Path const far = LineOfCubics({kFar, kFar + 1, kFar + 3, kFar + 7}, {0, 2, 5, 6});
    for (double t = 0; t < 7; t += 1.0 / 16) {
        EXPECT_EQ(At(far, kFar + t), At(near, t)) << t;
    }
}

TEST(HvMotionPath3d_eval, SegmentWithoutLengthGivesItsFirstNode)
{
    Path path;
    path.Moveto({1, 2, 3}, 0);
    path.Curveto({1, 2, 3}, {1, 2, 3}, {1, 2, 3}, 1);
    path.Curveto({1, 2, 3}, {1, 2, 3 + 1e-8}, {1, 2, 3 + 5e-8}, 2);
    EXPECT_EQ(At(path, 0.5), Point(1, 2, 3));
    EXPECT_EQ(At(path, 1.5, 1e-12), Point(1, 2, 3));
}

TEST(HvMotionPath3d_eval, EditsAreSeenAtOnce)
{
    PathSource source(5);
    Path path = source.CurvedPath(3);
    for (int i = 0; i < 50; ++i) {
        double const t = source.Number(TimeOf(path, 0), TimeOf(path, 9));
        path.ReplaceControlPointIgnoringLock(source.Index(10), source.Place());
        Point const known = At(path, t);
        EXPECT_EQ(At(Path(path), t), known) << "a copy has nothing flattened";
        EXPECT_EQ(At(path, t), known);
    }
}

TEST(HvMotionPath3d_eval, SecondEvaluationFlattensNothing)
{
    PathSource source(6);
    Path const path = source.CurvedPath(200);
    double const first = path.GetFirstTime(0);
    double const last = path.GetLastTime(0);
    HvPoint3dArray once;
    path.EvalSequence(first, last, (last - first) / 1000, 1e-3, once, 0);
    AllocationCounter const counter;
    for (int i = 0; i < 2000; ++i) {
        At(path, source.Number(first, last), 1e-3);
    }
    EXPECT_EQ(counter.Allocations(), 0);
}

TEST(HvMotionPath3d_eval, OrderOfEvaluationIsInvisible)
{
    PathSource source(7);
    Path const path = source.CurvedPath(20);
    Path const fresh(path);
    double const first = path.GetFirstTime(0);
    double const last = path.GetLastTime(0);
    for (int i = 0; i < 200; ++i) {
        double const t = source.Number(first, last);
        double const tolerance = i % 3 == 0 ? 1e-2 : 1e-4;
        Point const used = At(path, t, tolerance);
        EXPECT_EQ(used, At(Path(fresh), t, tolerance));
    }
}

TEST(HvMotionPath3d_eval, HostileTimesAndTolerancesEnd)
{
    PathSource source(8);
    Path const path = source.CurvedPath(1);
    double const middle = (path.GetFirstTime(0) + path.GetLastTime(0)) / 2;
    for (double const number : kHostileNumbers) {
        Point const at = At(path, number);
        EXPECT_TRUE(std::isfinite(at.x)) << number;
        HvPoint3dArray none;
        path.EvalSequence(middle, number, kNaN, 1, none, 0);
        EXPECT_EQ(none.Size(), 0u);
    }
    // A tolerance that means nothing is the finest one, a huge one leaves the chord.
    Point const fine = At(path, middle, 1e-9);
    for (double const tolerance : {kNaN, -1.0, 0.0, 1e-300}) {
        ExpectNear(At(path, middle, tolerance), fine, 1e-8);
    }
    EXPECT_TRUE(std::isfinite(At(path, middle, kInfinity).x));
}

TEST(HvMotionPath3d_eval, HostilePointsEnd)
{
    for (double const number : kHostileNumbers) {
        Path path;
        path.Moveto({number, 1, 2}, 0);
        path.Curveto({3, number, 4}, {5, 6, number}, {7, 8, 9}, 1);
        path.Curveto({number, number, number}, {number, 1, 0}, {number, -number, 2}, 2);
        for (double const t : {0.25, 0.5, 1.0, 1.5}) {
            At(path, t, 1e-1);
        }
    }
}

TEST(HvMotionPath3d_eval, HugeTimesEnd)
{
    Path path;
    path.Moveto({0, 0, 0}, -1e308);
    EXPECT_EQ(path.Curveto({1, 2, 0}, {2, 2, 0}, {3, 0, 0}, 1e308), 1);
    EXPECT_EQ(path.Lineto({4, 0, 0}, 1.5e308), 1);
    At(path, 0);
    EXPECT_EQ(At(path, 1e308), Point(3, 0, 0));
}

TEST(HvMotionPath3d_eval, SequenceIsEvalAtEachStep)
{
    PathSource source(9);
    Path const path = source.CurvedPath(5);
    HvPoint3dArray out(Point(9, 9, 9), 2);
    path.EvalSequence(0.5, 9.25, 0.25, 1e-4, out, 0);
    ASSERT_EQ(out.Size(), 2u + 36u);
    EXPECT_EQ(out[1], Point(9, 9, 9));
    for (unsigned int i = 0; i < 36; ++i) {
        EXPECT_EQ(out[2 + i], At(path, 0.5 + i * 0.25, 1e-4));
    }
}

TEST(HvMotionPath3d_eval, SequenceEndsAsItsStepsSay)
{
    Path const path({0, 0, 0}, {1, 0, 0}, 0, 1);
    auto const count = [&](double first, double last, double step) {
        HvPoint3dArray out;
        path.EvalSequence(first, last, step, 1, out, 0);
        return out.Size();
    };
    EXPECT_EQ(count(0, 1, 0.25), 5u);
    EXPECT_EQ(count(0, 0.9, 0.25), 4u);
    EXPECT_EQ(count(0, 1, 0.1), 11u);
    EXPECT_EQ(count(0, 0.3, 0.1), 3u) << "three times 0.1 is above 0.3";
    EXPECT_EQ(count(1, 1, 1), 1u);
    EXPECT_EQ(count(1, 0, 1), 0u);
    EXPECT_EQ(count(0, 1, 0), 0u);
    EXPECT_EQ(count(0, 1, -1), 0u);
    EXPECT_EQ(count(0, 1, kNaN), 0u);
    EXPECT_EQ(count(kNaN, 1, 1), 0u);
    EXPECT_EQ(count(0, kNaN, 1), 0u);
    EXPECT_EQ(count(0, 1, kInfinity), 1u);
    EXPECT_EQ(count(-8e307, 8e307, 8e307), 3u);
    EXPECT_LE(count(1e18, 1e18, 1), 2u) << "steps that rounding swallows";
    HvPoint3dArray none;
    Path().EvalSequence(0, 1, 0.1, 1, none, 0);
    EXPECT_EQ(none.Size(), 0u);
}

TEST(HvMotionPath3d_eval, SequenceBeyondAnArrayIsRefused)
{
    Path const path({0, 0, 0}, {1, 0, 0}, 0, 1);
    HvPoint3dArray out(Point(), 3);
    EXPECT_THROW(path.EvalSequence(0, 1, 1e-300, 1, out, 0), std::bad_alloc);
    EXPECT_THROW(path.EvalSequence(0, kInfinity, 1, 1, out, 0), std::bad_alloc);
    EXPECT_THROW(path.EvalSequence(-kInfinity, 0, 1, 1, out, 0), std::bad_alloc);
    EXPECT_THROW(path.EvalSequence(0, 1, std::numeric_limits<double>::denorm_min(), 1, out, 0),
                 std::bad_alloc);
    EXPECT_EQ(out.Size(), 3u);
    EXPECT_EQ(At(path, 0.5), Point(0.5, 0, 0)) << "the lock is released";
}

TEST(HvMotionPath3d_eval, FailedAllocationsLeaveOutputsAsTheyWere)
{
    PathSource source(10);
    Path const path = source.CurvedPath(3);
    double const middle = (path.GetFirstTime(0) + path.GetLastTime(0)) / 2;
    Point const expected = At(path, middle, 1e-3);
    struct Work {
        Path path;
        Point out = Point(7, 7, 7);
        HvPoint3dArray outs = HvPoint3dArray(Point(8, 8, 8), 1);
    };
    auto const prepare = [&] { return Work{Path(path)}; };
    RefuseEachAllocation(
        prepare, [&](Work& work) { work.path.Eval(middle, 1e-3, work.out, 0); },
        [&](Work& work, bool completed) {
            EXPECT_EQ(work.out, completed ? expected : Point(7, 7, 7));
            EXPECT_EQ(At(work.path, middle, 1e-3), expected);
        });
    RefuseEachAllocation(
        prepare, [&](Work& work) { work.path.EvalSequence(1, 4, 0.125, 1e-3, work.outs, 0); },
        [&](Work& work, bool completed) {
            EXPECT_EQ(work.outs.Size(), completed ? 26u : 1u);
            EXPECT_EQ(work.outs[0], Point(8, 8, 8));
            EXPECT_EQ(At(work.path, middle, 1e-3), expected);
        });
}

TEST(HvMotionPath3d_eval_threads, EightThreadsReadWhileOneEdits)
{
    PathSource source(11);
    Path path = source.CurvedPath(12);
    double const first = path.GetFirstTime(0);
    double const last = path.GetLastTime(0);
    Path const a(path);
    path.Transform(HvTransfo4());
    RunThreads(8, [&](int k) {
        PathSource own(100 + static_cast<unsigned int>(k));
        for (int i = 0; i < 300; ++i) {
            if (k == 0) {
                path.Transform(HvTransfo4());  // the identity: drops what was flattened
                continue;
            }
            double const t = own.Number(first, last);
            double const tolerance = k % 2 == 0 ? 1e-3 : 1e-2;
            Point const expected = At(a, t, tolerance);
            EXPECT_EQ(At(path, t, tolerance), expected);
        }
    });
}

TEST(HvMotionPath3d_eval_threads, NodesComeAndGoUnderReaders)
{
    PathSource source(12);
    Path path = source.CurvedPath(12);
    RunThreads(4, [&](int k) {
        PathSource own(200 + static_cast<unsigned int>(k));
        for (int i = 0; i < 200; ++i) {
            double const t = own.Number(0, 40);
            unsigned int point = 0;
            int exact = 0;
            if (k == 0) {
                path.InsertNode(t, 1e-2, 1e-6, point, exact);
            } else if (k == 1) {
                path.RemoveNodes(3 + 3 * own.Index(6), 3 + 3 * own.Index(12));
                path.Lineto(own.Place(), path.GetLastTime(0) + 1);
            } else {
                HvPoint3dArray out;
                path.EvalSequence(t, t + 1, 0.125, 1e-2, out, 0);
                Path const copy(path);
                EXPECT_EQ(copy.NumPoints() == 0 ? 0 : copy.NumPoints() / 3 + 1, copy.NumNodes());
            }
        }
    });
}

}  // namespace
