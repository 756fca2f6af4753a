// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Outlines of different numbers of subpaths, as tours over all of them.

#include <hv/morph/internal/morph_tour.h>

#include <hv/foundation/HvDynArray.h>
#include <hv/foundation/polyline_interpolate.h>
#include <hv/foundation/saturate.h>
#include <hv/morph/HvMorpherImpl.h>
#include <hv/morph/internal/HvMorphOutput.h>
#include <hv/morph/internal/even_samples.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvPath2fIter.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

/// The subpaths of an outline that have a point.
struct Tour {
    explicit Tour(HvPath2fProp1d const& outline, double spacing)
    {
        HvPath2fIter subpaths(outline);
        unsigned int first = 0;
        unsigned int last = 0;
        while (subpaths.GetNextSubPathIndices(first, last) != 0) {
            HvMorphLine line = HvMorphLine_OfSubpath(outline, first, spacing);
            if (line.points.Size() != 0) {
                length += line.length;
                lines.Add(std::move(line));
                firstPoints.Add(first);
            }
        }
    }

    unsigned int Count() const { return lines.Count(); }

    HvDynArray<HvMorphLine> lines{1};
    HvDynArray<unsigned int> firstPoints{1};
    double length = 0.0;
};

/// How many of `left` steps a subpath gets that has `length` of the `rest` of a tour: in
/// proportion, at least 1. A rest without a length has no proportions.
unsigned int ShareOf(unsigned int left, double length, double rest)
{
    double const share = std::floor(left * length / rest + 0.5);
    return share > 1.0 ? std::min(HvSaturate_To<unsigned int>(share), std::max(left, 1u)) : 1u;
}

/// The samples of a tour of `steps` steps, shared out among its subpaths by their lengths. Short
/// subpaths may have used up more than their part: the last one gets what is left, but at least 1.
HvDynArray<HvPoint2fArray> SamplesOf(Tour const& tour, unsigned int steps)
{
    HvDynArray<HvPoint2fArray> samples(tour.Count());
    unsigned int left = steps;
    double walked = 0.0;
    for (unsigned int i = 0; i < tour.Count(); ++i) {
        HvMorphLine const& line = tour.lines[i];
        unsigned int const share = i + 1 < tour.Count()
                                       ? ShareOf(left, line.length, tour.length - walked)
                                       : std::max(left, 1u);
        samples.Add(HvMorph_EvenSamples(line, share));
        left -= std::min(left, share);
        walked += line.length;
    }
    return samples;
}

/// Where a walk along a tour stands.
struct Cursor {
    HvDynArray<HvPoint2fArray> const& samples;
    unsigned int subpath = 0;
    unsigned int position = 0;

    bool IsAtEnd() const { return subpath == samples.Count(); }
    HvPoint2fArray const& Line() const { return samples[subpath]; }
    /// Steps of the subpath, and those that are left of them; at least one.
    unsigned int Steps() const { return Line().Size() - 1; }
    unsigned int StepsLeft() const { return Steps() - position; }
    void Advance(unsigned int steps)
    {
        position += steps;
        if (position == Steps()) {
            ++subpath;
            position = 0;
        }
    }
};

}  // namespace

void HvMorphTour_Append(HvMorpherImpl const& morph, double t, HvMorphOutput& output)
{
    double const spacing = morph.gc->minPointGap;
    Tour const first(*morph.first, spacing);
    Tour const second(*morph.second, spacing);
    unsigned int const steps =
        std::max({HvMorph_StepsFor(std::max(first.length, second.length), spacing), first.Count(),
                  second.Count()});
    HvDynArray<HvPoint2fArray> const firstSamples = SamplesOf(first, steps);
    HvDynArray<HvPoint2fArray> const secondSamples = SamplesOf(second, steps);
    Cursor a{firstSamples};
    Cursor b{secondSamples};
    HvPoint2fArray piece;
    while (!a.IsAtEnd() && !b.IsAtEnd()) {
        unsigned int const k = std::min(a.StepsLeft(), b.StepsLeft());
        piece.Chop(0);
        HvPoint2fArraySingleComponent_Lerp(a.Line(), a.position, a.position + k, b.Line(),
                                           b.position, b.position + k, t, piece);
        HvPoint2<float> const start = piece[0];
        HvPoint2<float> const end = piece[k];
        bool const isClosed = HvPoint2_LengthAB(start, end) <= spacing;
        if (isClosed && start != end) {
            piece.Add(start);
        }
        unsigned int const subpath = output.AppendFit(piece, isClosed);
        if (output.Has(subpath)) {
            morph.SetThePropertyCurve(t, first.firstPoints[a.subpath], a.position, a.Steps(),
                                      second.firstPoints[b.subpath], b.position, b.Steps(), k + 1,
                                      output.path, subpath);
        }
        a.Advance(k);
        b.Advance(k);
    }
}
