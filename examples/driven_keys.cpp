// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Drives a wheel's angle by a car's position, and draws both over time.
//
//     hv_example_driven_keys [FILE]     writes the picture, driven_keys.svg unless told otherwise
//
// The car starts, waits at a light, goes on over a patch of ice, on which the wheel does not turn,
// and backs into a parking space. Nobody animates the wheel: its angle is a curve over the position
// and follows every change of the car's keys.

#include "support/CurvePanel.h"

#include <cstdio>
#include <memory>

using Point = HvPoint2<double>;

int main(int argc, char** argv)
{
    // Metres over seconds. Automatic tangents ease in and out of every stop.
    HvStdFCurve car(0, HvBaseFCurve::CubicSegment);
    double const stops[][2] = {{0, 0}, {4, 10}, {6, 10}, {11, 22}, {12, 22}, {14, 18}};
    for (auto const& stop : stops) {
        double time = stop[0];
        car.CreateKey(time, stop[1], HvBaseFCurve::CubicSegment, HvBaseFCurve::CubicSegment);
        car.SetConstraint(time, HvBaseFCurve::AutomaticTangents, 1, 0);
    }

    // Degrees over metres: a turn every two metres, none on the ice from 14 to 16.
    HvStdFCurve wheel(0, 0, 14, 7 * 360, HvBaseFCurve::LinearSegment, HvBaseFCurve::LinearSegment);
    wheel.AppendConstantSegment(Point(16, 7 * 360));
    wheel.AppendLinearSegment(Point(18, 8 * 360));
    wheel.SetExtrapolationMethod(HvBaseFCurve::LinearExtrapolation);

    HvControlOperator const drive(car, wheel);
    std::unique_ptr<HvStdFCurve> const angle(drive.Compose(0, 14, 0.5));
    if (angle == nullptr) {
        return 1;
    }
    std::printf(
        "%u keys drive %u keys; after 5 s the wheel stands at %g degrees, at the end at %g\n",
        car.GetNumKeys(), angle->GetNumKeys(), drive.Eval(5), drive.Eval(14));

    SvgPage page(argc > 1 ? argv[1] : "driven_keys.svg", 640, 520,
                 "font-family='sans-serif' font-size='14' fill='none' stroke-width='2'");
    CurvePanel(page, {0, 0, 14, 22}, {40, 40}, {560, 200},
               "position of the car, 0 to 22 m, over 14 seconds")
        .Draw(car, "#2060a0");
    CurvePanel(page, {0, 0, 14, 3600}, {40, 300}, {560, 200},
               "angle of the wheel, 0 to 3600 degrees, level on the ice")
        .Draw(*angle, "#2060a0");
    return page.Close("driven_keys") ? 0 : 1;
}
