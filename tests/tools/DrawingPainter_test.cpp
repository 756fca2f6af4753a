// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Strokes and gradients, pixel by pixel.

#include "play_documents.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace {

/// How many pixels of a column or a row are covered: the width of what crosses it.
double CoveredInColumn(Canvas const& canvas, int x)
{
    double sum = 0;
    for (int y = 0; y < canvas.Height(); ++y) {
        sum += canvas.Pixel(x, y)[3] / 255.0;
    }
    return sum;
}

double CoveredInRow(Canvas const& canvas, int y)
{
    double sum = 0;
    for (int x = 0; x < canvas.Width(); ++x) {
        sum += canvas.Pixel(x, y)[3] / 255.0;
    }
    return sum;
}

std::string Line(double x0, double y0, double x1, double y1)
{
    auto const pair = [](double x, double y) {
        return "[" + std::to_string(x) + "," + std::to_string(y) + "]";
    };
    return R"({"ty":"sh","ks":{"k":{"c":false,"v":[)" + pair(x0, y0) + "," + pair(x1, y1) +
           R"(],"i":[[0,0],[0,0]],"o":[[0,0],[0,0]]}}})";
}

std::string Stroke(std::string const& more)
{
    return R"({"ty":"st","c":{"k":[0,0,0]},)" + more + "}";
}

Canvas Painted(std::string const& shapes)
{
    return PlayFrame(PlayDocument(PlayLayer(shapes)), 0);
}

/// Coverage is by four samples a pixel, and a span takes in the samples of both its ends.
constexpr double kWidthSlack = 0.3;

}  // namespace

TEST(DrawingPainter, AStrokeHasItsWidth)
{
    Canvas const canvas = Painted(Line(2, 8, 14, 8) + "," + Stroke(R"("w":{"k":4})"));
    EXPECT_NEAR(CoveredInColumn(canvas, 8), 4.0, kWidthSlack);
    EXPECT_EQ(CoveredInColumn(canvas, 1), 0.0) << "a butt end";
}

TEST(DrawingPainter, EndsAreButtRoundOrSquare)
{
    auto const atEnd = [](std::string const& cap) {
        Canvas const canvas =
            Painted(Line(6, 8, 10, 8) + "," + Stroke(R"("w":{"k":8},"lc":)" + cap));
        return CoveredInRow(canvas, 8);
    };
    EXPECT_NEAR(atEnd("1"), 4.0, kWidthSlack);
    EXPECT_NEAR(atEnd("2"), 12.0, 0.5);
    EXPECT_NEAR(atEnd("3"), 12.0, kWidthSlack);
}

TEST(DrawingPainter, APointWithRoundEndsIsADisc)
{
    Canvas const canvas = Painted(Line(8, 8, 8, 8) + "," + Stroke(R"("w":{"k":8},"lc":2)"));
    EXPECT_NEAR(CoveredInRow(canvas, 8), 8.0, 0.5);
    EXPECT_NEAR(CoveredInColumn(canvas, 8), 8.0, 0.5);
}

TEST(DrawingPainter, ThePenIsStretchedWithItsGroup)
{
    // Twice as high: what runs across is twice as thick, what runs up is not.
    std::string const transform = R"({"ty":"tr","s":{"k":[100,200]}})";
    auto const group = [&transform](std::string const& line) {
        return R"({"ty":"gr","it":[)" + line + "," + Stroke(R"("w":{"k":2})") + "," + transform +
               "]}";
    };
    EXPECT_NEAR(CoveredInColumn(Painted(group(Line(2, 4, 14, 4))), 8), 4.0, kWidthSlack);
    EXPECT_NEAR(CoveredInRow(Painted(group(Line(8, 1, 8, 7))), 8), 2.0, kWidthSlack);
}

TEST(DrawingPainter, ThePenIsNotStretchedWithTheOutline)
{
    std::string const inner =
        R"({"ty":"gr","it":[)" + Line(2, 4, 14, 4) + R"(,{"ty":"tr","s":{"k":[100,200]}}]})";
    Canvas const canvas = Painted(inner + "," + Stroke(R"("w":{"k":2})"));
    EXPECT_NEAR(CoveredInColumn(canvas, 8), 2.0, kWidthSlack);
}

TEST(DrawingPainter, DashesLeaveGaps)
{
    Canvas const canvas =
        Painted(Line(0, 8, 16, 8) + "," +
                Stroke(R"("w":{"k":4},"d":[{"n":"d","v":{"k":4}},{"n":"g","v":{"k":2}},)"
                       R"({"n":"o","v":{"k":1}}])"));
    // Painted from 0 to 3, 5 to 9 and 11 to 15.
    for (int const x : {1, 6, 7, 12, 13}) {
        EXPECT_NEAR(CoveredInColumn(canvas, x), 4.0, kWidthSlack) << x;
    }
    for (int const x : {4, 10}) {
        EXPECT_LT(CoveredInColumn(canvas, x), 4.0 * kWidthSlack) << x;
    }
}

TEST(DrawingPainter, ALinearGradientRunsEvenlyBetweenItsStops)
{
    std::string const gradient =
        R"({"ty":"gf","t":1,"s":{"k":[0,0]},"e":{"k":[16,0]},"o":{"k":100},)"
        R"("g":{"p":2,"k":{"k":[0,1,0,0,1,0,0,1]}}})";
    Canvas const canvas = Painted(PlayRect(0, 0, 16, 16) + "," + gradient);
    for (int x = 0; x < 16; ++x) {
        double const share = (x + 0.5) / 16;
        EXPECT_NEAR(canvas.Pixel(x, 8)[0], 255 * (1 - share), 1.5) << x;
        EXPECT_NEAR(canvas.Pixel(x, 8)[2], 255 * share, 1.5) << x;
        EXPECT_EQ(canvas.Pixel(x, 8)[3], 255);
    }
}

TEST(DrawingPainter, OpacityStopsOfAGradientAreTheirOwn)
{
    std::string const gradient =
        R"({"ty":"gf","t":1,"s":{"k":[0,0]},"e":{"k":[16,0]},"o":{"k":100},)"
        R"("g":{"p":1,"k":{"k":[0,1,1,1,0.5,1,1,0]}}})";
    Canvas const canvas = Painted(PlayRect(0, 0, 16, 16) + "," + gradient);
    EXPECT_EQ(canvas.Pixel(3, 8)[3], 255);
    for (int x = 8; x < 16; ++x) {
        EXPECT_NEAR(canvas.Pixel(x, 8)[3], 255 * (1 - (x + 0.5 - 8) / 8), 1.5) << x;
    }
}

TEST(DrawingPainter, ARadialGradientRunsFromItsHighlightToItsRim)
{
    auto const gradient = [](std::string const& more) {
        return R"({"ty":"gf","t":2,"s":{"k":[8,8]},"e":{"k":[16,8]},"o":{"k":100},)" + more +
               R"("g":{"p":2,"k":{"k":[0,0,0,0,1,1,1,1]}}})";
    };
    Canvas const even = Painted(PlayRect(0, 0, 16, 16) + "," + gradient(""));
    // The distance of the pixel's middle from (8, 8), over 8.
    EXPECT_NEAR(even.Pixel(12, 7)[0], 255 * std::hypot(4.5, 0.5) / 8, 1.5);
    EXPECT_NEAR(even.Pixel(7, 13)[0], 255 * std::hypot(0.5, 5.5) / 8, 1.5);
    EXPECT_EQ(even.Pixel(0, 0)[0], 255) << "beyond the rim";
    // With the highlight half-way to the rim the ray to the right is 4 long, that to the left 12.
    Canvas const shifted = Painted(PlayRect(0, 0, 16, 16) + "," + gradient(R"("h":{"k":50},)"));
    EXPECT_NEAR(shifted.Pixel(13, 8)[0], 255 * 1.5 / 4, 8);
    EXPECT_NEAR(shifted.Pixel(5, 8)[0], 255 * 6.5 / 12, 4);
}
