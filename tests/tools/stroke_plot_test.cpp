// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The picture of a stroke and its fit: what is in it.

#include <tools/plot/stroke_plot.h>

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace {

int Count(std::string const& text, std::string const& part)
{
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

StrokeDocument Wave(int count)
{
    StrokeDocument stroke;
    for (int i = 0; i < count; ++i) {
        StrokePoint point;
        point.place =
            HvPoint2<float>(static_cast<float>(i), static_cast<float>(30 * std::sin(i * 0.05)));
        stroke.points.push_back(point);
    }
    return stroke;
}

std::string Draw(StrokeDocument const& stroke, StrokeFitOptions const& options = {})
{
    return StrokePlot_Draw(stroke, StrokeFit_Make(stroke, {}, options, [](std::size_t) {}),
                           {"title & more", "subtitle"});
}

}  // namespace

TEST(stroke_plot, HasEveryPointNodeAndHandle)
{
    StrokeDocument const wave = Wave(100);
    StrokeFit const fit = StrokeFit_Make(wave, {}, {}, [](std::size_t) {});
    std::string const svg = StrokePlot_Draw(wave, fit, {"title & more", "subtitle"});
    int const curves = static_cast<int>(fit.numCurves);
    // One more of each stands in the legend.
    EXPECT_EQ(Count(svg, "class=\"point\""), 100 + 1);
    EXPECT_EQ(Count(svg, "class=\"key\""), curves + 1 + 1);
    EXPECT_EQ(Count(svg, "class=\"grip\""), 2 * curves + 1);
    EXPECT_EQ(Count(svg, "<polyline class=\"curve\""), 1);
    EXPECT_EQ(Count(svg, "title &amp; more"), 2);
}

TEST(stroke_plot, ManyPointsAreThinnedOut)
{
    std::string const svg = Draw(Wave(50001));
    EXPECT_EQ(Count(svg, "class=\"point\""), 50001 / 3 + 1);
    EXPECT_NE(svg.find("every 3 points"), std::string::npos);
}

TEST(stroke_plot, StrokesOfAnyShapeFit)
{
    for (double width : {0.0, 1e-6, 1.0, 1e9}) {
        for (double height : {0.0, 1e-6, 1.0, 1e9}) {
            StrokeDocument stroke = Wave(3);
            for (std::size_t i = 0; i < 3; ++i) {
                stroke.points[i].place =
                    HvPoint2<float>(static_cast<float>(width * (i == 1 ? 1 : 0)),
                                    static_cast<float>(height * (i == 2 ? 1 : 0)));
            }
            std::string const svg = Draw(stroke);
            EXPECT_EQ(svg.find("nan"), std::string::npos) << width << " " << height;
            EXPECT_EQ(svg.find("inf"), std::string::npos) << width << " " << height;
        }
    }
}

TEST(stroke_plot, WidthsAreDrawnAlongThePathAndBelowIt)
{
    StrokeDocument const wave = Wave(100);
    std::vector<double> widths;
    for (int i = 0; i < 100; ++i) {
        widths.push_back(0.5 + 0.4 * std::sin(i * 0.2));
    }
    StrokeFit const fit = StrokeFit_Make(wave, widths, {}, [](std::size_t) {});
    std::string const svg = StrokePlot_Draw(wave, fit, widths, {"title", "subtitle"});
    EXPECT_EQ(Count(svg, "<polygon class=\"ribbon\""), 1);
    EXPECT_EQ(Count(svg, "<polyline class=\"profile\""), 1);
    EXPECT_EQ(Count(svg, "class=\"point\""), 2 * 100 + 1);
    EXPECT_NE(svg.find(">length<"), std::string::npos);
}

TEST(stroke_plot, WidthsOfNothingAreDrawnSafely)
{
    StrokeDocument still;
    still.points.resize(4);
    for (double width : {0.0, 1.0}) {
        std::vector<double> const widths(4, width);
        for (unsigned int const live : {0u, 1u}) {
            StrokeFitOptions options;
            options.live = live;
            StrokeFit const fit = StrokeFit_Make(still, widths, options, [](std::size_t) {});
            std::string const svg = StrokePlot_Draw(still, fit, widths, {"title", ""});
            EXPECT_EQ(svg.find("nan"), std::string::npos);
            EXPECT_EQ(svg.find("inf\""), std::string::npos);
        }
    }
}
