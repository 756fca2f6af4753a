// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/foundation/HvPoint2dArray.h>
#include <tests/fcurve/std_curve.h>
#include <tests/support/generators.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace {

using Point = HvPoint2<double>;

constexpr HvBaseFCurve::FSKind kConstant = HvBaseFCurve::ConstantSegment;
constexpr HvBaseFCurve::FSKind kLinear = HvBaseFCurve::LinearSegment;
constexpr HvBaseFCurve::FSKind kCubic = HvBaseFCurve::CubicSegment;

double Real(double low, double high)
{
    return low + (high - low) * PickInRange(0, 1000001) / 1e6;
}

HvPoint2dArray PointsOf(std::initializer_list<Point> points)
{
    HvPoint2dArray array(1);
    for (Point const& point : points) {
        array.Add(point);
    }
    return array;
}

HvPoint2dArray RandomPoints(unsigned n)
{
    HvPoint2dArray points(n);
    double x = Real(-5, 5);
    for (unsigned i = 0; i < n; ++i) {
        points.Add(x, Real(-10, 10));
        x += Real(0.1, 3);
    }
    return points;
}

void ExpectNear(Point const& actual, Point const& expected)
{
    EXPECT_NEAR(actual.x, expected.x, 1e-12);
    EXPECT_NEAR(actual.y, expected.y, 1e-12);
}

/// The second derivatives of the clamped spline by elimination in long double.
std::vector<long double> SplineMoments(HvPoint2dArray const& p)
{
    unsigned const n = p.Size();
    std::vector<long double> lower(n), diagonal(n), upper(n), right(n);
    auto const h = [&](unsigned i) { return static_cast<long double>(p[i + 1].x) - p[i].x; };
    auto const s = [&](unsigned i) {
        return (static_cast<long double>(p[i + 1].y) - p[i].y) / h(i);
    };
    // The end slopes are those of the end chords, so the right sides of the end rows are 0.
    diagonal[0] = 2 * h(0);
    upper[0] = h(0);
    for (unsigned i = 1; i + 1 < n; ++i) {
        lower[i] = h(i - 1);
        diagonal[i] = 2 * (h(i - 1) + h(i));
        upper[i] = h(i);
        right[i] = 6 * (s(i) - s(i - 1));
    }
    lower[n - 1] = h(n - 2);
    diagonal[n - 1] = 2 * h(n - 2);
    for (unsigned i = 1; i < n; ++i) {
        long double const factor = lower[i] / diagonal[i - 1];
        diagonal[i] -= factor * upper[i - 1];
        right[i] -= factor * right[i - 1];
    }
    std::vector<long double> m(n);
    m[n - 1] = right[n - 1] / diagonal[n - 1];
    for (unsigned i = n - 1; i-- > 0;) {
        m[i] = (right[i] - upper[i] * m[i + 1]) / diagonal[i];
    }
    return m;
}

}  // namespace

TEST(HvStdFCurve_fit, LeadsCatmullRomTangentsAlongNeighbours)
{
    StdCurve const curve(PointsOf({{0, 0}, {1, 2}, {4, 5}, {5, 0}}), HvStdFCurve::InterpCatmullRom,
                         0, kLinear, kLinear);
    HvStdFCurveImpl const& impl = curve.Impl();
    ASSERT_EQ(impl.NumKeys(), 4u);
    // Ends: a third of the end chords. Inner keys: slopes 5/4 and -2/4, handles at thirds.
    ExpectNear(impl.keys[0].rightHandle, Point(1.0 / 3, 2.0 / 3));
    ExpectNear(impl.keys[1].leftHandle, Point(2.0 / 3, 2 - 5.0 / 12));
    ExpectNear(impl.keys[1].rightHandle, Point(2, 3.25));
    ExpectNear(impl.keys[2].leftHandle, Point(3, 5.5));
    ExpectNear(impl.keys[2].rightHandle, Point(4 + 1.0 / 3, 5 - 0.5 / 3));
    ExpectNear(impl.keys[3].leftHandle, Point(5 - 1.0 / 3, 5.0 / 3));
    EXPECT_EQ(impl.IsValid(), 1);
}

TEST(HvStdFCurve_fit, JoinsTwoPointsByTheirChord)
{
    for (int method : {1, 2, 4}) {
        StdCurve const curve(PointsOf({{1, 1}, {4, 10}}), HvStdFCurve::DPMethod(method), 0, kCubic,
                             kCubic);
        ASSERT_EQ(curve.Impl().NumKeys(), 2u);
        ExpectNear(curve.Impl().keys[0].rightHandle, Point(2, 4));
        ExpectNear(curve.Impl().keys[1].leftHandle, Point(3, 7));
        EXPECT_NEAR(curve.Eval(2.5, 0), 5.5, 1e-8);
    }
}

TEST(HvStdFCurve_fit, KeepsAnEndHandleOnItsKeyWhereTheChordIsVertical)
{
    StdCurve const curve(PointsOf({{0, 0}, {5e-324, 1e308}}), HvStdFCurve::InterpCatmullRom, 0,
                         kCubic, kCubic);
    ASSERT_EQ(curve.Impl().NumKeys(), 2u);
    EXPECT_EQ(curve.Impl().keys[0].rightHandle, Point(0, 0));
    EXPECT_EQ(curve.Impl().keys[1].leftHandle, Point(5e-324, 1e308));
}

RC_GTEST_PROP(HvStdFCurve_fit, SplinePassesItsPointsWithContinuousCurvature, ())
{
    HvPoint2dArray const points = RandomPoints(PickInRange(2u, 12u));
    StdCurve const curve(points, HvStdFCurve::InterpCubicC2, 0, kCubic, kCubic);
    HvStdFCurveImpl const& impl = curve.Impl();
    RC_ASSERT(impl.NumKeys() == points.Size());
    std::vector<long double> const m = SplineMoments(points);
    double previousBend = 0;
    for (unsigned i = 0; i + 1 < points.Size(); ++i) {
        CFCStdKey const& a = impl.keys[i];
        CFCStdKey const& b = impl.keys[i + 1];
        RC_ASSERT(a.rightValue == points[i].y);
        RC_ASSERT(a.leftValue == points[i].y);
        double const h = b.parameter - a.parameter;
        // Bezier to second derivative at the ends of the span, in x, where x is linear in t.
        double const bendAtA = 6 * (a.rightValue - 2 * a.rightHandle.y + b.leftHandle.y) / (h * h);
        double const bendAtB = 6 * (a.rightHandle.y - 2 * b.leftHandle.y + b.leftValue) / (h * h);
        // Values up to 1e4 / h^2, a dozen roundings, spans from 0.1.
        RC_ASSERT(std::fabs(bendAtA - static_cast<double>(m[i])) < 1e-8);
        RC_ASSERT(std::fabs(bendAtB - static_cast<double>(m[i + 1])) < 1e-8);
        if (i > 0) {
            RC_ASSERT(std::fabs(bendAtA - previousBend) < 1e-8);
            double const slopeLeft =
                (a.leftValue - a.leftHandle.y) / (a.parameter - a.leftHandle.x);
            double const slopeRight =
                (a.rightHandle.y - a.rightValue) / (a.rightHandle.x - a.parameter);
            RC_ASSERT(std::fabs(slopeLeft - slopeRight) < 1e-8);
        }
        previousBend = bendAtB;
    }
}

TEST(HvStdFCurve_fit, KeepsThePointBeforeTheOneThatLeavesTheLine)
{
    // The line from (0, 0) through (1, 0) meets (2, 0.1) within 0.1, leaves (3, 1); it restarts
    // from (2, 0.1) through (3, 1), slope 0.9, and meets (4, 1.9).
    HvPoint2dArray const points = PointsOf({{0, 0}, {1, 0}, {2, 0.1}, {3, 1}, {4, 1.9}});
    StdCurve const curve(points, HvStdFCurve::ApproxLinearFitC0, 0.1, kCubic, kConstant);
    HvStdFCurveImpl const& impl = curve.Impl();
    ASSERT_EQ(impl.NumKeys(), 3u);
    EXPECT_EQ(impl.keys[1].parameter, 2);
    EXPECT_EQ(impl.keys[1].leftValue, 0.1);
    EXPECT_EQ(impl.keys[2].parameter, 4);
    EXPECT_EQ(impl.keys[0].segmentKind, kLinear);
    EXPECT_EQ(impl.keys[1].segmentKind, kLinear);
    EXPECT_EQ(impl.keys[2].segmentKind, kConstant);
    // A tighter tolerance keeps more.
    StdCurve const tight(points, HvStdFCurve::ApproxLinearFitC0, 0.09, kCubic, kCubic);
    EXPECT_EQ(tight.Impl().NumKeys(), 4u);
}

RC_GTEST_PROP(HvStdFCurve_fit, LinearFitKeepsASubsetWithBothEnds, ())
{
    HvPoint2dArray const points = RandomPoints(PickInRange(2u, 40u));
    StdCurve const curve(points, HvStdFCurve::ApproxLinearFitC0, Real(0, 8), kCubic, kCubic);
    HvStdFCurveImpl const& impl = curve.Impl();
    unsigned at = 0;
    for (CFCStdKey const& key : impl.keys) {
        while (at < points.Size() && points[at].x != key.parameter) {
            ++at;
        }
        RC_ASSERT(at < points.Size());
        RC_ASSERT(key.leftValue == points[at].y);
    }
    RC_ASSERT(impl.FirstParameter() == points[0].x);
    RC_ASSERT(impl.LastParameter() == points[points.Size() - 1].x);
    StdCurve const all(points, HvStdFCurve::ApproxLinearFitC0, -1, kCubic, kCubic);
    RC_ASSERT(all.Impl().NumKeys() == points.Size());
}

RC_GTEST_PROP(HvStdFCurve_fit, CubicFitMeetsItsPointsSmoothly, ())
{
    HvPoint2dArray const points = RandomPoints(PickInRange(3u, 30u));
    double const tolerance = Real(0.01, 5);
    StdCurve const curve(points, HvStdFCurve::ApproxCubicFitG1, tolerance, kCubic, kCubic);
    HvStdFCurveImpl const& impl = curve.Impl();
    RC_ASSERT(impl.IsValid() == 1);
    for (Point const& point : points) {
        // The solver's 1e-9 at slopes below 1000 adds to the fit's own tolerance.
        RC_ASSERT(std::fabs(curve.Eval(point.x, 0) - point.y) <= tolerance + 1e-5);
    }
    for (unsigned i = 0; i < impl.NumKeys(); ++i) {
        CFCStdKey const& key = impl.keys[i];
        RC_ASSERT(curve.IsTangentContinuityLockedByIndex(i) == 1);
        if (i > 0 && i + 1 < impl.NumKeys()) {
            double const left =
                (key.leftValue - key.leftHandle.y) / (key.parameter - key.leftHandle.x);
            double const right =
                (key.rightHandle.y - key.rightValue) / (key.rightHandle.x - key.parameter);
            RC_ASSERT(std::fabs(left - right) <= 1e-9 * (1 + std::fabs(left)));
        }
    }
}

TEST(HvStdFCurve_fit, FallsBackToTheChordWhereNoSplineFits)
{
    StdCurve const curve(PointsOf({{0, 0}, {1, 5}, {3, 3}}), HvStdFCurve::ApproxCubicFitG1, -1,
                         kCubic, kCubic);
    ASSERT_EQ(curve.Impl().NumKeys(), 2u);
    ExpectNear(curve.Impl().keys[0].rightHandle, Point(1, 1));
    ExpectNear(curve.Impl().keys[1].leftHandle, Point(2, 2));
}

TEST(HvStdFCurve_fit, FitsAnyNumbers)
{
    double const numbers[] = {0,
                              5e-324,
                              1,
                              1.7e308,
                              -1.7e308,
                              std::numeric_limits<double>::infinity(),
                              std::numeric_limits<double>::quiet_NaN()};
    for (double a : numbers) {
        for (double b : numbers) {
            for (double c : numbers) {
                for (int method = 1; method <= 4; ++method) {
                    HvStdFCurve const curve(
                        PointsOf({{-1.5e308, b}, {0, a}, {a, b}, {b, c}, {1.1, c}}),
                        HvStdFCurve::DPMethod(method), c, kCubic, kCubic);
                    curve.Eval(0.5, 0);
                }
            }
        }
    }
}

// Appending.

TEST(HvStdFCurve_fit, AppendsSegments)
{
    StdCurve curve(7, kConstant);
    HvStdFCurveImpl& impl = curve.Impl();
    impl.AppendLinearSegment({0, 1});
    ASSERT_EQ(impl.NumKeys(), 1u);
    EXPECT_EQ(impl.keys[0].segmentKind, kConstant);
    impl.AppendLinearSegment({2, 5});
    EXPECT_EQ(impl.keys[0].segmentKind, kLinear);
    EXPECT_EQ(impl.keys[1].segmentKind, kConstant);
    impl.AppendCubicSegment({9, 9}, {3, 6}, {4, 7}, {5, 8});
    ASSERT_EQ(impl.NumKeys(), 3u);
    EXPECT_EQ(impl.keys[1].segmentKind, kCubic);
    EXPECT_EQ(impl.keys[1].rightHandle, Point(3, 6));
    EXPECT_EQ(impl.keys[2].leftHandle, Point(4, 7));
    EXPECT_EQ(impl.keys[2].rightHandle, Point(5, 8));
    EXPECT_EQ(impl.keys[2].segmentKind, kConstant);

    StdCurve fresh(7, kConstant);
    fresh.Impl().AppendCubicSegment({0, 1}, {1, 2}, {2, 3}, {3, 4});
    ASSERT_EQ(fresh.Impl().NumKeys(), 2u);
    EXPECT_EQ(fresh.Impl().keys[0].leftHandle, Point(0, 1));
    EXPECT_EQ(fresh.Impl().keys[0].rightHandle, Point(1, 2));
    EXPECT_EQ(fresh.Impl().keys[1].segmentKind, kCubic);

    // Under the slope limit rule both handles go to thirds.
    impl.defaultBezierTangentConstraint = 1;
    impl.AppendCubicSegment({0, 0}, {6, 9}, {7, 12}, {8, 14});
    ExpectNear(impl.keys[2].rightHandle, Point(6, 9));
    ExpectNear(impl.keys[3].leftHandle, Point(7, 12));
}
