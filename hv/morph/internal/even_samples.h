// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Outlines as polylines of even steps.

#ifndef HV_MORPH_INTERNAL_EVEN_SAMPLES_H
#define HV_MORPH_INTERNAL_EVEN_SAMPLES_H

#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvPoint2fArray.h>

class HvPath2f;

/// A polyline and the table of its lengths. Empty, or at least two points: a lone point counts as
/// itself twice.
struct HvMorphLine {
    HvPoint2fArray points;
    HvDoubleArray chord;
    double length = 0.0;
};

/// The subpath that starts at point `first`, flattened within `spacing`.
HvMorphLine HvMorphLine_OfSubpath(HvPath2f const& path, unsigned int first, double spacing);
/// A whole path, the gaps between its subpaths as steps.
HvMorphLine HvMorphLine_OfPath(HvPath2f const& path, double spacing);

/// Into how many steps of `spacing` a length is divided, rounded up. Throws std::bad_alloc for
/// more samples than an array holds.
unsigned int HvMorph_StepsFor(double length, double spacing);

/// The points that divide a line into `steps` even steps, 1 or more: steps + 1 points, the last of
/// them repeated where the line gives fewer. Nothing for an empty line.
HvPoint2fArray HvMorph_EvenSamples(HvMorphLine const& line, unsigned int steps);

/// Two lines with as many samples each.
struct HvMorphSamples {
    HvPoint2fArray first;
    HvPoint2fArray second;
    unsigned int steps = 0;  ///< of each; 0, without a sample, when one of the lines is empty
};

/// Samples that are at most `spacing` apart on the longer of two lines.
HvMorphSamples HvMorphSamples_Of(HvMorphLine const& first, HvMorphLine const& second,
                                 double spacing);

#endif
