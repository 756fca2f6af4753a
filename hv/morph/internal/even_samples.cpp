// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Outlines as polylines of even steps.

#include <hv/morph/internal/even_samples.h>

#include <hv/foundation/HvPointTagArray.h>
#include <hv/foundation/array_capacity.h>
#include <hv/foundation/polyline_interpolate.h>
#include <hv/foundation/polyline_length.h>
#include <hv/foundation/saturate.h>
#include <hv/shape/HvPath2f.h>

#include <algorithm>
#include <cmath>
#include <new>

namespace {

/// Completes a line whose points stand. `path` gives the lone point `first` where flattening, which
/// needs a segment, gave nothing.
void Complete(HvMorphLine& line, HvPath2f const& path, unsigned int first)
{
    HvPoint2<float> lone;
    if (line.points.Size() == 0 && path.GetPoint(first, lone) != 0) {
        line.points.Add(lone);
    }
    if (line.points.Size() == 1) {
        line.points.Add(line.points[0]);
    }
    line.length = HvPoint2fArraySingleComponent_ComputeChordLength(line.points, line.chord);
}

}  // namespace

HvMorphLine HvMorphLine_OfSubpath(HvPath2f const& path, unsigned int first, double spacing)
{
    HvMorphLine line;
    path.FlattenSubpath(first, spacing, line.points);
    Complete(line, path, first);
    return line;
}

HvMorphLine HvMorphLine_OfPath(HvPath2f const& path, double spacing)
{
    HvMorphLine line;
    HvPointTagArray tags;
    path.AltFlatten(spacing, line.points, tags);
    Complete(line, path, 0);
    return line;
}

unsigned int HvMorph_StepsFor(double length, double spacing)
{
    double const steps = std::ceil(length / spacing);
    if (steps >= kHvArrayMaxCapacity) {
        throw std::bad_alloc();
    }
    return HvSaturate_To<unsigned int>(steps);
}

HvPoint2fArray HvMorph_EvenSamples(HvMorphLine const& line, unsigned int steps)
{
    HvPoint2fArray samples(steps + 1);
    if (line.points.Size() != 0) {
        HvPoint2fArraySingleComponent_EvenSubdivide(line.points, line.chord, steps, samples);
        while (samples.Size() < steps + 1) {
            samples.Add(line.points[line.points.Size() - 1]);
        }
    }
    return samples;
}

HvMorphSamples HvMorphSamples_Of(HvMorphLine const& first, HvMorphLine const& second,
                                 double spacing)
{
    HvMorphSamples samples;
    if (first.points.Size() != 0 && second.points.Size() != 0) {
        samples.steps =
            std::max(1u, HvMorph_StepsFor(std::max(first.length, second.length), spacing));
        samples.first = HvMorph_EvenSamples(first, samples.steps);
        samples.second = HvMorph_EvenSamples(second, samples.steps);
    }
    return samples;
}
