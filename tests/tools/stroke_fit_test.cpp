// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// From a stroke to a path: how near, how many curves, corners, ends.

#include <tools/stroke/stroke_fit.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

StrokeDocument Wave(int count)
{
    StrokeDocument stroke;
    for (int i = 0; i < count; ++i) {
        StrokePoint point;
        point.place =
            HvPoint2<float>(static_cast<float>(2 * i), static_cast<float>(30 * std::sin(i * 0.05)));
        stroke.points.push_back(point);
    }
    return stroke;
}

/// Points ten units apart on a line.
StrokeDocument Line(int count)
{
    StrokeDocument stroke;
    for (int i = 0; i < count; ++i) {
        StrokePoint point;
        point.place = HvPoint2<float>(static_cast<float>(10 * i), 0);
        stroke.points.push_back(point);
    }
    return stroke;
}

StrokeDocument Square(bool repeatsStart)
{
    StrokeDocument stroke;
    auto const add = [&stroke](float x, float y) {
        StrokePoint point;
        point.place = HvPoint2<float>(x, y);
        stroke.points.push_back(point);
    };
    for (int side = 0; side < 4; ++side) {
        for (int i = 0; i < 10; ++i) {
            float const along = static_cast<float>(10 * i);
            float const back = 100 - along;
            if (side % 2 == 0) {
                add(side == 0 ? along : back, side == 0 ? 0.0f : 100.0f);
            } else {
                add(side == 1 ? 100.0f : 0.0f, side == 1 ? along : back);
            }
        }
    }
    if (repeatsStart) {
        add(0, 0);
    }
    return stroke;
}

StrokeFit Fit(StrokeDocument const& stroke, StrokeFitOptions const& options)
{
    std::size_t done = 0;
    StrokeFit fit =
        StrokeFit_Make(stroke, {}, options, [&done](std::size_t points) { done += points; });
    EXPECT_EQ(done, stroke.points.size());
    return fit;
}

}  // namespace

TEST(stroke_fit, FewCurvesKeepTheTolerance)
{
    StrokeDocument const wave = Wave(500);
    double before = 1000;
    for (double tolerance : {0.01, 0.1, 1.0, 5.0}) {
        StrokeFitOptions options;
        options.tolerance = tolerance;
        StrokeFit const fit = Fit(wave, options);
        EXPECT_LE(fit.farthest, tolerance * 1.001 + 1e-4);
        EXPECT_LE(fit.numCurves, before);
        before = fit.numCurves;
        EXPECT_EQ(fit.path.GetPoint(0), wave.points.front().place);
        EXPECT_EQ(fit.path.GetCurrentPoint(), wave.points.back().place);
    }
    EXPECT_LE(before, 12);
}

TEST(stroke_fit, TurnsBelowTheCornerAreRounded)
{
    StrokeFitOptions options;
    StrokeFit const sharp = Fit(Square(true), options);
    EXPECT_EQ(sharp.numCurves, 4u);
    EXPECT_NEAR(sharp.length, 400.0, 1e-3);
    EXPECT_NEAR(sharp.farthest, 0.0, 1e-3);
}

TEST(stroke_fit, ClosedStrokeComesBackToItsStart)
{
    for (bool repeatsStart : {false, true}) {
        for (unsigned int live : {0u, 7u}) {
            StrokeFitOptions options;
            options.isClosed = true;
            options.live = live;
            StrokeFit const fit = Fit(Square(repeatsStart), options);
            EXPECT_EQ(fit.path.IsSubpathClosed(0), 1);
            EXPECT_NEAR(fit.length, 400.0, live == 0 ? 1e-3 : 20.0);
        }
    }
}

TEST(stroke_fit, LiveFitStaysNearWithMoreCurves)
{
    StrokeDocument const wave = Wave(500);
    StrokeFitOptions options;
    unsigned int const atOnce = Fit(wave, options).numCurves;
    for (unsigned int live : {1u, 10u, 100u, 100000u}) {
        options.live = live;
        StrokeFit const fit = Fit(wave, options);
        EXPECT_LE(fit.farthest, 1.5) << live;
        EXPECT_GE(fit.numCurves, atOnce) << live;
    }
}

TEST(stroke_fit, DegenerateStrokesAreFittedToo)
{
    for (unsigned int live : {0u, 1u}) {
        StrokeFitOptions options;
        options.live = live;
        StrokeDocument still;
        still.points.resize(5);
        StrokeFit const none = Fit(still, options);
        EXPECT_EQ(none.length, 0.0);
        EXPECT_EQ(none.farthest, 0.0);
        StrokeDocument two;
        two.points.resize(2);
        two.points[1].place = HvPoint2<float>(30, 40);
        StrokeFit const line = Fit(two, options);
        EXPECT_EQ(line.numCurves, 1u);
        EXPECT_NEAR(line.length, 50.0, 1e-4);
    }
}

TEST(stroke_fit, FeetRiseToTheEndOfThePath)
{
    StrokeFit const fit = Fit(Line(41), {});
    EXPECT_EQ(fit.feet.front(), 0.0);
    EXPECT_NEAR(fit.feet.back(), fit.length, 1e-3);
    for (std::size_t i = 1; i < fit.feet.size(); ++i) {
        EXPECT_GE(fit.feet[i], fit.feet[i - 1]);
        EXPECT_NEAR(fit.feet[i], 10.0 * static_cast<double>(i), 1e-2);
    }
}

TEST(stroke_fit, WidthsAreThePropertyOfThePath)
{
    StrokeDocument const stroke = Line(41);
    std::vector<double> widths;
    for (std::size_t i = 0; i < stroke.points.size(); ++i) {
        widths.push_back(1.0 + std::sin(static_cast<double>(i) * 0.3));
    }
    for (unsigned int const live : {0u, 1u, 7u}) {
        StrokeFitOptions options;
        options.live = live;
        StrokeFit const fit = StrokeFit_Make(stroke, widths, options, [](std::size_t) {});
        ASSERT_EQ(fit.path.HasPropCurve(0), 1);
        EXPECT_NEAR(fit.path.EvalPropCurve(0, 0.0), widths.front(), 1e-12);
        EXPECT_NEAR(fit.path.GetLargestArcLength(0), fit.length, 1e-2);
        EXPECT_LT(fit.path.GetPropCurve(0)->GetNumKeys(), widths.size());
        for (std::size_t i = 0; i < widths.size(); ++i) {
            // 2 % of at most 2, and a slope of 0.03 over the error of the feet.
            EXPECT_NEAR(fit.path.EvalPropCurve(0, fit.feet[i]), widths[i], 0.04 + 1e-3)
                << i << " of a live fit of " << live;
        }
    }
}

TEST(stroke_fit, WithoutWidthsNothingIsWideOrOneEverywhere)
{
    EXPECT_EQ(Fit(Line(41), {}).path.HasPropCurve(0), 0);
    StrokeFitOptions options;
    options.live = 3;
    StrokeFit const live = Fit(Line(41), options);
    EXPECT_EQ(live.path.EvalPropCurve(0, 0.5 * live.length), 1.0);
}
