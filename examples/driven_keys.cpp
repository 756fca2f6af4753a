// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Drives a wheel's angle by a car's position, and draws both over time.
//
//     hv_example_driven_keys [FILE]     writes the picture, driven_keys.svg unless told otherwise
//
// The car starts, waits at a light, goes on over a patch of ice, on which the wheel does not turn,
// and backs into a parking space. Nobody animates the wheel: its angle is a curve over the position
// and follows every change of the car's keys.

#include <hv/hv.h>

#include <cstdio>
#include <memory>

using Point = HvPoint2<double>;

// Draws a curve over [0, 14] seconds as a path 560 wide and 200 high, below `top`, its keys as
// dots.
void Draw(std::FILE* file, HvStdFCurve const& curve, double top, char const* label)
{
    double const low = curve.GetValueLowerBound(0);
    double const high = curve.GetValueUpperBound(0);
    HvTransfo4 panel;
    panel.Translate(40, top + 200, 0).Scale(40, -200 / (high - low), 1).Translate(0, -low, 0);

    HvPoint2dArray points;
    HvPointTagArray tags;
    curve.Flatten(panel, 0.1, points, tags, 0);
    std::fprintf(file, "<text x='40' y='%g'>%s</text>\n<path d='", top - 8, label);
    for (unsigned i = 0; i < points.Size(); ++i) {
        std::fprintf(file, "%c%.2f %.2f", i == 0 ? 'M' : 'L', points[i].x, points[i].y);
    }
    std::fprintf(file, "' fill='none' stroke='#2060a0' stroke-width='2'/>\n");

    HvDoubleArray times, lefts, rights;
    curve.GetKeys(times, lefts, rights, 0);
    for (unsigned i = 0; i < times.Size(); ++i) {
        Point const key = panel.Map(Point(times[i], rights[i]));
        std::fprintf(file, "<circle cx='%.2f' cy='%.2f' r='3.5'/>\n", key.x, key.y);
    }
}

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

    char const* const name = argc > 1 ? argv[1] : "driven_keys.svg";
    std::FILE* const file = std::fopen(name, "w");
    if (file == nullptr) {
        std::fprintf(stderr, "driven_keys: cannot write %s\n", name);
        return 1;
    }
    std::fprintf(file, "<svg xmlns='http://www.w3.org/2000/svg' width='640' height='520' "
                       "font-family='sans-serif' font-size='14'>\n"
                       "<rect width='640' height='520' fill='white'/>\n");
    Draw(file, car, 40, "position of the car, 0 to 22 m, over 14 seconds");
    Draw(file, *angle, 300, "angle of the wheel, 0 to 3600 degrees, level on the ice");
    std::fprintf(file, "</svg>\n");
    return std::fclose(file) == 0 ? 0 : 1;
}
