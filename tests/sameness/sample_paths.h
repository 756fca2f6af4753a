// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The outlines that fixed inputs are made of.

#ifndef TESTS_SAMENESS_SAMPLE_PATHS_H
#define TESTS_SAMENESS_SAMPLE_PATHS_H

#include "SampleNumbers.h"

#include <hv/shape/HvPath2f.h>

/// Two closed subpaths of lines, quadratics and cubics in the square from 0 to 200.
inline HvPath2f SamplePath(std::uint64_t seed)
{
    SampleNumbers numbers(seed);
    HvPath2f path(0);
    for (int subpath = 0; subpath < 2; ++subpath) {
        HvPoint2<float> const start = numbers.PointIn(0, 200);
        path.Moveto(start);
        for (int i = 0; i < 4; ++i) {
            HvPoint2<float> const cubic[] = {numbers.PointIn(0, 200), numbers.PointIn(0, 200),
                                             numbers.PointIn(0, 200)};
            path.AltCurveto(cubic, 3);
            path.Lineto(numbers.PointIn(0, 200));
            HvPoint2<float> const quadratic[] = {numbers.PointIn(0, 200), numbers.PointIn(0, 200)};
            path.AltCurveto(quadratic, 2);
        }
        path.Lineto(start);
        path.Closeto();
    }
    return path;
}

#endif
