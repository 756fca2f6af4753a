// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Splines through points of plane and space: tolerance, knots, motions of the points, refusals,
// hostile numbers. Splines of numbers have tests of their own.

#include <hv/bezier/HvSpline2d.h>
#include <hv/bezier/HvSpline3d.h>

#include "../support/allocation_failure.h"
#include "../support/generators.h"
#include "cubic_test_support.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <memory>

namespace {

struct Plane {
    using Spline = HvSpline2d;
    using Points = HvPoint2dArray;
    using Point = Point2;
    static Point Make(double x, double y, double) { return {x, y}; }
};

struct Space {
    using Spline = HvSpline3d;
    using Points = HvPoint3dArray;
    using Point = Point3;
    static Point Make(double x, double y, double z) { return {x, y, z}; }
};

double LengthOf(Point2 const& v)
{
    return std::hypot(v.x, v.y);
}
double LengthOf(Point3 const& v)
{
    return std::hypot(v.x, v.y, v.z);
}

bool IsFinite(Point2 const& v)
{
    return std::isfinite(v.x) && std::isfinite(v.y);
}
bool IsFinite(Point3 const& v)
{
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

/// The fit's length and the test's hypot differ by some roundings.
constexpr double kRounding = 1 + 1e-15;

}  // namespace

template <class Kind>
class HvSpline_points : public testing::Test {
protected:
    using Spline = typename Kind::Spline;
    using Points = typename Kind::Points;
    using Point = typename Kind::Point;

    static Points Make(std::initializer_list<Point> list)
    {
        return Points(list.begin(), static_cast<unsigned int>(list.size()));
    }

    /// Points of a wavy closed curve.
    static Points Curve(unsigned int count)
    {
        Points points;
        for (unsigned int i = 0; i < count; ++i) {
            double const t = 6.0 * i / count;
            points.Add(Kind::Make(100 * std::cos(t), 60 * std::sin(t) + 20 * std::sin(3 * t),
                                  30 * std::cos(2 * t)));
        }
        return points;
    }

    static int Fit(Spline& spline, Points const& points, double tolerance,
                   HvDoubleArray* parameters = nullptr)
    {
        return spline.OpenFit(points, tolerance, Spline::ContinuousDerivative, parameters);
    }

    /// All that a fit promises.
    static void CheckFit(Points const& points, double tolerance)
    {
        Spline spline;
        HvDoubleArray parameters;
        ASSERT_EQ(Fit(spline, points, tolerance, &parameters), 1);
        ASSERT_EQ(parameters.Size(), points.Size());
        EXPECT_EQ(parameters[0], 0.0);
        unsigned int knot = 0;
        for (unsigned int i = 0; i < points.Size(); ++i) {
            EXPECT_LE(LengthOf(spline.Eval(parameters[i]) - points[i]), tolerance * kRounding);
            if (i > 0) {
                EXPECT_EQ(parameters[i] > parameters[i - 1], points[i] != points[i - 1]);
                EXPECT_GE(parameters[i], parameters[i - 1]);
            }
            if (knot < spline.NumKnots() && spline.Knot(knot) == parameters[i] &&
                (i == 0 || parameters[i] != parameters[i - 1])) {
                EXPECT_EQ(spline.Value(knot), points[i]);
                EXPECT_EQ(spline.Eval(spline.Knot(knot)), points[i]);
                EXPECT_EQ(spline.LeftDerivative(knot), spline.RightDerivative(knot));
                EXPECT_TRUE(IsFinite(spline.LeftDerivative(knot)));
                ++knot;
            }
        }
        EXPECT_EQ(knot, spline.NumKnots());
        EXPECT_EQ(spline.Knot(0), 0.0);
        EXPECT_EQ(spline.Knot(knot - 1), parameters[points.Size() - 1]);
    }
};

using Kinds = testing::Types<Plane, Space>;
TYPED_TEST_SUITE(HvSpline_points, Kinds, );

TYPED_TEST(HvSpline_points, StartsWithoutKnots)
{
    typename TypeParam::Spline const spline;
    EXPECT_EQ(spline.NumKnots(), 0u);
    EXPECT_EQ(spline.Eval(3.0), typename TypeParam::Point());
}

TYPED_TEST(HvSpline_points, RefusesWhatIsNoPolylineAndStaysAsItWas)
{
    auto const make = TypeParam::Make;
    typename TypeParam::Points const good = this->Make({make(0, 0, 0), make(3, 4, 0)});
    typename TypeParam::Spline spline;
    ASSERT_EQ(this->Fit(spline, good, 0.1), 1);
    struct {
        typename TypeParam::Points points;
        double tolerance;
        int kind;
    } const rows[] = {{this->Make({}), 0.1, 20},
                      {this->Make({make(1, 2, 3)}), 0.1, 20},
                      {this->Make({make(0, 0, 0), make(kNaN, 1, 1)}), 0.1, 20},
                      {this->Make({make(0, kNaN, 0), make(1, 1, 1)}), 0.1, 20},
                      {this->Make({make(0, 0, 0), make(1, kInfinity, 1)}), 0.1, 20},
                      {this->Make({make(-kGreatest, 0, 0), make(kGreatest, 0, 0)}), 0.1, 20},
                      {good, -0.1, 20},
                      {good, kNaN, 20},
                      {good, 0.1, 0},
                      {good, 0.1, 21}};
    for (auto const& row : rows) {
        HvDoubleArray parameters(7.0, 3u);
        EXPECT_EQ(spline.OpenFit(row.points, row.tolerance, row.kind, &parameters), 0);
        EXPECT_EQ(parameters.Size(), 3u);
        EXPECT_EQ(spline.NumKnots(), 2u);
        EXPECT_EQ(spline.Knot(1), 5.0);
        EXPECT_EQ(spline.Value(1), make(3, 4, 0));
    }
}

TYPED_TEST(HvSpline_points, IsALineOverTheLengthBetweenTwoPoints)
{
    auto const make = TypeParam::Make;
    typename TypeParam::Spline spline;
    ASSERT_EQ(this->Fit(spline, this->Make({make(1, 1, 0), make(4, 5, 0)}), 0.0), 1);
    EXPECT_EQ(spline.NumKnots(), 2u);
    EXPECT_EQ(spline.Knot(1), 5.0);
    EXPECT_NEAR(LengthOf(spline.RightDerivative(0) - make(0.6, 0.8, 0)), 0.0, 1e-15);
    EXPECT_NEAR(LengthOf(spline.Eval(2.5) - make(2.5, 3, 0)), 0.0, 1e-15);
    // Beyond the ends the line goes on.
    EXPECT_NEAR(LengthOf(spline.Eval(10) - make(7, 9, 0)), 0.0, 1e-14);
    EXPECT_NEAR(LengthOf(spline.Eval(-5) - make(-2, -3, 0)), 0.0, 1e-14);
    EXPECT_TRUE(std::isnan(spline.Eval(kNaN).x));
}

TYPED_TEST(HvSpline_points, EndsThatDoNotRiseStayWhereTheyAreForEver)
{
    auto const make = TypeParam::Make;
    typename TypeParam::Spline spline;
    ASSERT_EQ(this->Fit(spline, this->Make({make(1, 7, 0), make(4, 7, 0)}), 0.0), 1);
    EXPECT_EQ(spline.Eval(kInfinity), make(kInfinity, 7, 0));
    EXPECT_EQ(spline.Eval(-kInfinity), make(-kInfinity, 7, 0));
}

TYPED_TEST(HvSpline_points, EqualPointsMakeOneKnot)
{
    auto const point = TypeParam::Make(3, -4, 5);
    typename TypeParam::Spline spline;
    HvDoubleArray parameters;
    ASSERT_EQ(this->Fit(spline, this->Make({point, point, point}), 0.0, &parameters), 1);
    EXPECT_EQ(spline.NumKnots(), 1u);
    EXPECT_EQ(spline.Value(0), point);
    EXPECT_EQ(parameters.Size(), 3u);
    for (double const x : {-kInfinity, -1.0, 0.0, 2.0, kInfinity}) {
        EXPECT_EQ(spline.Eval(x), point);
    }
}

TYPED_TEST(HvSpline_points, RepeatedPointsCountOnce)
{
    typename TypeParam::Points const once = this->Curve(60);
    typename TypeParam::Points often;
    for (unsigned int i = 0; i < 60; ++i) {
        for (unsigned int k = 0; k <= i % 3; ++k) {
            often.Add(once[i]);
        }
    }
    typename TypeParam::Spline expected;
    typename TypeParam::Spline spline;
    ASSERT_EQ(this->Fit(expected, once, 0.1), 1);
    ASSERT_EQ(this->Fit(spline, often, 0.1), 1);
    ASSERT_EQ(spline.NumKnots(), expected.NumKnots());
    for (unsigned int i = 0; i < spline.NumKnots(); ++i) {
        EXPECT_EQ(spline.Knot(i), expected.Knot(i));
        EXPECT_EQ(spline.LeftDerivative(i), expected.LeftDerivative(i));
    }
    this->CheckFit(often, 0.1);
}

TYPED_TEST(HvSpline_points, ACubicOverItsOwnParametersTakesTwoKnots)
{
    auto const make = TypeParam::Make;
    auto const cubic = [&](double t) {
        return make(((t - 3) * t + 0.5) * t - 2, (1 - t * t) * t, 2 * t * t - t);
    };
    auto const derivative = [&](double t) {
        return make((3 * t - 6) * t + 0.5, 1 - 3 * t * t, 4 * t - 1);
    };
    HvDoubleArray times;
    typename TypeParam::Points points;
    for (int i = 0; i <= 200; ++i) {
        times.Add(-2 + 0.03 * i);
        points.Add(cubic(times[static_cast<unsigned int>(i)]));
    }
    typename TypeParam::Spline spline;
    ASSERT_EQ(spline.OpenFit(times, points, 1e-9, 20), 1);
    EXPECT_EQ(spline.NumKnots(), 2u);
    for (double t = -2; t <= 4; t += 0.1) {
        EXPECT_NEAR(LengthOf(spline.Eval(t) - cubic(t)), 0.0, 1e-9);
    }
    EXPECT_NEAR(LengthOf(spline.RightDerivative(0) - derivative(-2)), 0.0, 1e-8);
    EXPECT_NEAR(LengthOf(spline.LeftDerivative(1) - derivative(4)), 0.0, 1e-8);
}

TYPED_TEST(HvSpline_points, RunsAtASpeedOfAboutOneAlongASmoothCurve)
{
    typename TypeParam::Spline spline;
    ASSERT_EQ(this->Fit(spline, this->Curve(2000), 0.01), 1);
    EXPECT_LE(spline.NumKnots(), 36u);
    for (unsigned int i = 0; i < spline.NumKnots(); ++i) {
        EXPECT_NEAR(LengthOf(spline.LeftDerivative(i)), 1.0, 0.03);
    }
}

TYPED_TEST(HvSpline_points, TurnsAndShiftsWithItsPoints)
{
    typename TypeParam::Points const points = this->Curve(300);
    typename TypeParam::Spline expected;
    ASSERT_EQ(this->Fit(expected, points, 0.2), 1);
    for (double const angle : {0.3, 1.5707963267948966, 2.0, 4.4}) {
        double const c = std::cos(angle);
        double const s = std::sin(angle);
        auto const move = [&](typename TypeParam::Point const& p, double shift) {
            typename TypeParam::Point q = p;
            q.x = c * p.x - s * p.y + 3 * shift;
            q.y = s * p.x + c * p.y - 2 * shift;
            return q;
        };
        typename TypeParam::Points moved;
        for (auto const& p : points) {
            moved.Add(move(p, 50));
        }
        typename TypeParam::Spline spline;
        ASSERT_EQ(this->Fit(spline, moved, 0.2), 1);
        ASSERT_EQ(spline.NumKnots(), expected.NumKnots());
        for (unsigned int i = 0; i < spline.NumKnots(); ++i) {
            // Coordinates of some hundreds are rounded by 3e-14; their lengths add up 300 of them.
            EXPECT_NEAR(spline.Knot(i), expected.Knot(i), 1e-11);
            EXPECT_NEAR(LengthOf(spline.Value(i) - move(expected.Value(i), 50)), 0.0, 1e-12);
            EXPECT_NEAR(LengthOf(spline.LeftDerivative(i) - move(expected.LeftDerivative(i), 0)),
                        0.0, 1e-10);
        }
    }
}

TYPED_TEST(HvSpline_points, ScalesExactlyWithPowersOfTwo)
{
    typename TypeParam::Points const points = this->Curve(200);
    typename TypeParam::Spline expected;
    ASSERT_EQ(this->Fit(expected, points, 0x1p-4), 1);
    for (double const scale : {0x1p-400, 0x1p-20, 0x1p20, 0x1p400}) {
        typename TypeParam::Points scaled;
        for (auto const& p : points) {
            scaled.Add(p * scale);
        }
        typename TypeParam::Spline spline;
        ASSERT_EQ(this->Fit(spline, scaled, 0x1p-4 * scale), 1);
        ASSERT_EQ(spline.NumKnots(), expected.NumKnots()) << scale;
        for (unsigned int i = 0; i < spline.NumKnots(); ++i) {
            // At 2^-400 lengths are found by hypot, which rounds otherwise.
            EXPECT_NEAR(spline.Knot(i) / scale, expected.Knot(i), 1e-12);
            EXPECT_NEAR(LengthOf(spline.LeftDerivative(i) - expected.LeftDerivative(i)), 0.0,
                        1e-11);
        }
    }
}

TYPED_TEST(HvSpline_points, KeepsKnotsTogetherAtCorners)
{
    auto const make = TypeParam::Make;
    typename TypeParam::Points points;
    for (int i = 0; i <= 400; ++i) {
        points.Add(make(i < 200 ? i : 200, i < 200 ? 0 : i - 200, i < 200 ? 0 : i - 200));
    }
    typename TypeParam::Spline spline;
    ASSERT_EQ(this->Fit(spline, points, 1e-3), 1);
    EXPECT_LE(spline.NumKnots(), 6u);
    this->CheckFit(points, 1e-3);
}

TYPED_TEST(HvSpline_points, MeetsSpikesAndWaysBack)
{
    auto const make = TypeParam::Make;
    typename TypeParam::Points points;
    for (int i = 0; i <= 50; ++i) {
        points.Add(make(i, i == 25 ? 1000 : 0, 0));
    }
    for (int i = 50; i >= 0; --i) {
        points.Add(make(i, 0, 0));
    }
    for (double const tolerance : {0.0, 0.01, 1.0, 2000.0}) {
        this->CheckFit(points, tolerance);
    }
}

TYPED_TEST(HvSpline_points, MeetsPointsAtTheEndsOfTheNumberRange)
{
    auto const make = TypeParam::Make;
    typename TypeParam::Points const hostile[] = {
        this->Make({make(0, 0, 0), make(4e307, 1, 5e-324), make(0, 0, 1), make(0, 4e307, -1)}),
        this->Make({make(0, 0, 0), make(5e-324, 0, 0), make(0, 5e-324, 0), make(1, 1, 1)}),
        this->Make({make(1e200, 0, 0), make(1e200, 1, 0), make(1e200, 2, 1), make(1e200, 0, 0),
                    make(1e200, -7, 3)}),
        // Steps that are lost beside the length before them.
        this->Make({make(0, 0, 0), make(1e20, 0, 0), make(1e20, 1, 0), make(1e20, 2, 1),
                    make(1e20, 0, 0)}),
        this->Make({make(1e-200, 0, 1e-200), make(0, 1e-200, 0), make(-1e-200, 1e-200, 0),
                    make(3e-200, -1e-200, 0)}),
        this->Make({make(1e154, 0, 0), make(-1e154, 1e154, 3e153), make(0, 0, 1e154),
                    make(1e153, -1e154, 0)})};
    for (auto const& points : hostile) {
        for (double const tolerance : {0.0, 1e-210, 1e-3, 1e150, kGreatest, kInfinity}) {
            this->CheckFit(points, tolerance);
        }
    }
}

TYPED_TEST(HvSpline_points, FitsManyPointsInLittleTime)
{
    // Noise of the size of the tolerance is the dear case: halving goes far down.
    RandomCurves random(16);
    typename TypeParam::Points points = this->Curve(100000);
    for (auto& p : points) {
        p.x += random.Uniform(-0.01, 0.01);
    }
    typename TypeParam::Spline spline;
    ASSERT_EQ(this->Fit(spline, points, 0.008), 1);
    EXPECT_LT(spline.NumKnots(), 100000u);
}

TYPED_TEST(HvSpline_points, StayAsTheyWereWhenMemoryFails)
{
    auto const make = TypeParam::Make;
    typename TypeParam::Points const before = this->Make({make(0, 0, 0), make(3, 4, 0)});
    typename TypeParam::Points const points = this->Curve(50);
    HvDoubleArray parameters;
    long const allocations = RefuseEachAllocation(
        [&] {
            auto spline = std::make_unique<typename TypeParam::Spline>();
            this->Fit(*spline, before, 0.1);
            return spline;
        },
        [&](auto& spline) { this->Fit(*spline, points, 0.5, &parameters); },
        [&](auto& spline, bool completed) {
            EXPECT_EQ(spline->NumKnots() == 2 && spline->Knot(1) == 5, !completed);
            EXPECT_EQ(parameters.Size() == 0, !completed);
            parameters = HvDoubleArray();
        });
    EXPECT_GT(allocations, 5);
}

RC_GTEST_PROP(HvSpline_points_property, AnyPointsAreMetWithinAnyTolerance, ())
{
    auto const count = PickInRange<unsigned int>(2, 120);
    auto const seed = PickInRange<unsigned int>(0, 1000000);
    auto const roughness = PickInRange<int>(-12, 3);
    auto const exponent = PickInRange<int>(-25, 5);
    RandomCurves random(seed);
    HvPoint2dArray plane;
    HvPoint3dArray space;
    Point3 at;
    Point3 way(1, 0, 0);
    for (unsigned int i = 0; i < count; ++i) {
        Point3 bend;
        random.Fill(&bend, 1, std::ldexp(1.0, roughness));
        way = way + bend;
        at = at + way * (i % 7 == 3 ? 0.0 : random.Scale(-6, 2) / Length(way));
        plane.Add(at.x, at.y);
        space.Add(at);
    }
    double const tolerance = std::ldexp(1.0, exponent);
    HvDoubleArray parameters;
    HvSpline2d inPlane;
    RC_ASSERT(inPlane.OpenFit(plane, tolerance, 20, &parameters) == 1);
    for (unsigned int i = 0; i < count; ++i) {
        RC_ASSERT(LengthOf(inPlane.Eval(parameters[i]) - plane[i]) <= tolerance * kRounding);
    }
    HvSpline3d inSpace;
    RC_ASSERT(inSpace.OpenFit(space, tolerance, 20, &parameters) == 1);
    for (unsigned int i = 0; i < count; ++i) {
        RC_ASSERT(LengthOf(inSpace.Eval(parameters[i]) - space[i]) <= tolerance * kRounding);
    }
}
