// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Cubics that come back from their own points, however uneven the pace of these is.

#include <hv/bezier/HvBezierTool.h>

#include "../fit_test_support.h"

#include <gtest/gtest.h>

namespace {

constexpr double kSize = 1000.0;
constexpr int kCurves = 150;

/// How the points lie on a curve.
enum class Pace {
    EvenParameter,
    EvenLength,
    Random
};

/// The parameters of `count` points.
std::vector<double> ParametersOf(Point2 const* cubic, int count, Pace pace, RandomCurves& random)
{
    std::vector<double> parameters;
    for (int i = 0; i < count; ++i) {
        parameters.push_back(pace == Pace::Random ? random.Uniform(0, 1) : double(i) / (count - 1));
    }
    if (pace == Pace::EvenLength) {
        constexpr int kSteps = 2000;
        std::vector<double> lengths(1, 0.0);
        for (int i = 1; i <= kSteps; ++i) {
            lengths.push_back(lengths.back() + Length(CubicAt(cubic, double(i) / kSteps) -
                                                      CubicAt(cubic, (i - 1.0) / kSteps)));
        }
        for (double& u : parameters) {
            auto const at = std::lower_bound(lengths.begin(), lengths.end(), u * lengths.back());
            u = double(at - lengths.begin()) / kSteps;
        }
    }
    std::sort(parameters.begin(), parameters.end());
    parameters.front() = 0.0;
    parameters.back() = 1.0;
    return parameters;
}

/// Whether a single step turns a corner: then the polyline is to be cut there.
bool HasCorner(HvPoint2fArray const& points)
{
    for (unsigned int i = 1; i + 1 < points.Size(); ++i) {
        Point2 const in = Point2(points[i]) - Point2(points[i - 1]);
        Point2 const out = Point2(points[i + 1]) - Point2(points[i]);
        double const dot = Dot(in, out);
        if (dot < 0.0 || dot * dot < kCorner * Dot(in, in) * Dot(out, out)) {
            return true;
        }
    }
    return false;
}

FittedChain FitOf(HvPoint2fArray const& points, double tolerance)
{
    FittedChain chain;
    HvBezierTool().OpenFit(points, kCorner, 3, tolerance, 0, chain, 0);
    return chain;
}

/// Of random cubics without corners the share that comes back as one, each within the tolerance.
double ShareOfSingles(Pace pace, double tolerance)
{
    RandomCurves random(1);
    int smooth = 0;
    int singles = 0;
    for (int k = 0; k < kCurves; ++k) {
        Point2 cubic[4];
        random.Fill(cubic, 4, 0.5 * kSize);
        int const count = 50 + static_cast<int>(random.Uniform(0, 151));
        HvPoint2fArray points;
        for (double const u : ParametersOf(cubic, count, pace, random)) {
            points.Add(ToFloat(CubicAt(cubic, u)));
        }
        if (!HasCorner(points)) {
            FittedChain const chain = FitOf(points, tolerance);
            ++smooth;
            singles += chain.Segments() == 1 ? 1 : 0;
            EXPECT_LE(ErrorOf(chain, points), tolerance + Slack(points));
        }
    }
    EXPECT_GT(smooth, kCurves / 2);
    return double(singles) / smooth;
}

}  // namespace

// The shares are those that the manual promises. Of 1,500 curves of each kind none was missed, but
// one in a hundred of those with points at even lengths within the smaller tolerance.

TEST(cubic_fitter_pace, CubicsWithPointsAtEvenParametersComeBackAsOne)
{
    EXPECT_EQ(ShareOfSingles(Pace::EvenParameter, 0.01 * kSize), 1.0);
    EXPECT_EQ(ShareOfSingles(Pace::EvenParameter, 0.001 * kSize), 1.0);
}

TEST(cubic_fitter_pace, CubicsWithPointsAtRandomParametersComeBackAsOne)
{
    EXPECT_EQ(ShareOfSingles(Pace::Random, 0.01 * kSize), 1.0);
    EXPECT_EQ(ShareOfSingles(Pace::Random, 0.001 * kSize), 1.0);
}

TEST(cubic_fitter_pace, CubicsWithPointsAtEvenLengthsComeBackAsOneNearlyAlways)
{
    EXPECT_EQ(ShareOfSingles(Pace::EvenLength, 0.01 * kSize), 1.0);
    EXPECT_GE(ShareOfSingles(Pace::EvenLength, 0.001 * kSize), 0.98);
}

TEST(cubic_fitter_pace, LoopsAndNearCuspsComeBackAsOne)
{
    // The handles cross: a wide loop, a narrow one, a near cusp beside the cusp of handles that
    // meet in (50, 100), a tight S.
    std::vector<std::vector<Point2>> const cubics = {{{0, 0}, {160, 100}, {-60, 100}, {100, 0}},
                                                     {{0, 0}, {120, 100}, {-20, 100}, {100, 0}},
                                                     {{0, 0}, {97, 100}, {3, 100}, {100, 0}},
                                                     {{0, 0}, {150, 10}, {-50, 90}, {100, 100}}};
    for (auto const& cubic : cubics) {
        for (int const count : {60, 200, 900}) {
            HvPoint2fArray points;
            for (int i = 0; i <= count; ++i) {
                points.Add(ToFloat(CubicAt(cubic.data(), double(i) / count)));
            }
            FittedChain const chain = FitOf(points, 0.1);
            EXPECT_TRUE(chain.Segments() == 1 || HasCorner(points)) << cubic[1].x << " " << count;
            EXPECT_LE(ErrorOf(chain, points), 0.1 + Slack(points));
        }
    }
}

TEST(cubic_fitter_pace, TurnAndScaleOfACubicLeaveItOne)
{
    Point2 const cubic[4] = {{0, 0}, {130, 90}, {-40, 110}, {100, 10}};
    for (double const scale : {1e-30, 1e-3, 1.0, 1e5, 1e30}) {
        for (double const angle : {0.0, 1.0, 2.5, 4.0}) {
            HvPoint2fArray points;
            for (int i = 0; i <= 120; ++i) {
                Point2 const p = CubicAt(cubic, i / 120.0);
                points.Add(ToFloat(Point2(p.x * std::cos(angle) - p.y * std::sin(angle),
                                          p.x * std::sin(angle) + p.y * std::cos(angle)) *
                                   scale));
            }
            FittedChain const chain = FitOf(points, 0.2 * scale);
            EXPECT_EQ(chain.Segments(), 1u) << scale << " " << angle;
            EXPECT_LE(ErrorOf(chain, points), 0.2 * scale + Slack(points));
        }
    }
}

TEST(cubic_fitter_pace, SpiralIsNotTakenForACubic)
{
    // Two turns and a half; the direction of a cubic turns once around at most.
    HvPoint2fArray points;
    for (int i = 0; i <= 300; ++i) {
        double const angle = 2.5 * kTwoPi * i / 300;
        points.Add(ToFloat(Point2(std::cos(angle), std::sin(angle)) * (20 + 4 * angle)));
    }
    FittedChain const chain = FitOf(points, 0.5);
    EXPECT_GE(chain.Segments(), 3u);
    EXPECT_LE(ErrorOf(chain, points), 0.5 + Slack(points));
}
