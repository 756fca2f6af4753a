// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Fits noisy points: a stroke within two tolerances, and an outline with corners.
//
//     hv_example_fitting [FILE]     writes the picture, fitting.svg by default
//
// Points are grey, curves coloured, and where two cubics join there is a ring.

#include "support/FitSink.h"

#include <cmath>
#include <random>

namespace {

constexpr double kCornerCosSquared = 0.82;  // a turn by 25 degrees is a corner

/// Even noise of one unit to each side, the same on every machine.
double Noise()
{
    static std::mt19937 engine(7);
    return static_cast<double>(engine()) / 2147483648.0 - 1.0;
}

void AddNoisy(HvPoint2fArray& points, double x, double y)
{
    double const dx = Noise();
    points.Add(HvPoint2<float>(HvPoint2<double>(x + dx, y + Noise())));
}

}  // namespace

int main(int argc, char** argv)
{
    SvgPage page(argc > 1 ? argv[1] : "fitting.svg", 660, 220,
                 "font-family='sans-serif' font-size='13' fill='none' stroke-width='1.6'");
    FitSink sink(page);
    HvBezierTool tool;
    char text[80];

    HvPoint2fArray stroke;
    for (int i = 0; i <= 300; ++i) {
        double const t = i / 300.0;
        AddNoisy(stroke, 30 + 270 * t, 110 - 60 * std::sin(7 * t) * (1.1 - 0.5 * t));
    }
    DrawPoints(page, stroke, 1);
    sink.Begin("#2060a0");
    tool.OpenFit(stroke, kCornerCosSquared, 3, 1.2, 0, sink, 0);
    unsigned int const fine = sink.End();
    sink.Begin("#c04020");
    tool.OpenFit(stroke, kCornerCosSquared, 3, 2.5, 0, sink, 0);
    std::snprintf(text, sizeof text, "within 1.2 blue: %u cubics; within 2.5 red: %u", fine,
                  sink.End());
    page.Text({20, 22}, text);

    // A star, its sides closely set with points.
    HvPoint2fArray star;
    HvPoint2<double> corners[10];
    for (int i = 0; i < 10; ++i) {
        double const radius = i % 2 == 0 ? 80 : 38;
        double const angle = 0.6283185307179586 * i - 1.5707963267948966;
        corners[i] = {500 + radius * std::cos(angle), 120 + radius * std::sin(angle)};
    }
    for (int i = 0; i < 400; ++i) {
        HvPoint2<double> const from = corners[i / 40];
        HvPoint2<double> const side = corners[(i / 40 + 1) % 10] - from;
        AddNoisy(star, from.x + side.x * (i % 40) / 40, from.y + side.y * (i % 40) / 40);
    }
    DrawPoints(page, star, 1);
    sink.Begin("#2060a0");
    tool.ClosedFit(star, kCornerCosSquared, 3, 3, 0, sink);
    std::snprintf(text, sizeof text, "corners are kept: %u cubics", sink.End());
    page.Text({345, 22}, text);
    return page.Close("fitting") ? 0 : 1;
}
