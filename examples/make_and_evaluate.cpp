// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Makes a curve of values over time, key by key, and asks it for values.
//
// The lamp of a lighthouse: it swells and fades smoothly, is switched off at once, stays dark, and
// begins again after eight seconds.

#include <hv/hv.h>

#include <cstdio>

int main()
{
    HvStdFCurve lamp(0, HvBaseFCurve::CubicSegment);

    // A key tells which kind of segment begins at it. A parameter is taken by reference: a key very
    // near is the same key, and its own parameter comes back.
    double const keys[][2] = {{0, 0}, {2, 100}, {4, 60}};
    for (auto const& key : keys) {
        double time = key[0];
        lamp.CreateKey(time, key[1], HvBaseFCurve::CubicSegment, HvBaseFCurve::CubicSegment);
        // Automatic tangents go through the neighbours without overshooting them.
        lamp.SetConstraint(time, HvBaseFCurve::AutomaticTangents, 1, 0);
    }
    // The value jumps at the last key: what the segment before it runs to stays 60.
    lamp.SetKeyValue(4, HvBaseFCurve::Right, 0, 0);
    lamp.AppendConstantSegment(HvPoint2<double>(8, 0));
    // Beyond its keys the curve repeats what lies between them.
    lamp.SetExtrapolationMethod(HvBaseFCurve::CycleExtrapolation);

    // The 0 stands for "as it is": a 1 would clamp values to the bounds that a host may set.
    for (double const time : {0.0, 1.0, 2.0, 3.0, 3.999, 4.0, 6.0, 9.0, 10.0}) {
        std::printf("at %5.3f s  %6.2f\n", time, lamp.Eval(time, 0));
    }

    // A series of samples is cheaper than its values one by one: the curve is locked once.
    HvDoubleArray times, values;
    lamp.EvalSequence(0, 4, 0.5, 0.01, times, values, 0);
    std::printf("%u samples:", values.Size());
    for (double const value : values) {
        std::printf(" %.1f", value);
    }
    std::printf("\n");

    // The other way round, where the curve rises or falls throughout.
    HvStdFCurve const dawn({0, 0}, {2, 0}, {4, 100}, {6, 100}, HvBaseFCurve::CubicSegment,
                           HvBaseFCurve::CubicSegment);
    double time = 0;
    if (dawn.EvalInverse(25, time, 0) != 0) {
        std::printf("dawn reaches 25 after %.4f s\n", time);
    }
}
