// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// One outline that becomes another.

#include <tools/play/scene/PathBlend.h>

#include <hv/foundation/polyline_interpolate.h>
#include <hv/foundation/polyline_length.h>

namespace {

/// Steps along outlines of different build: no step is seen at the sizes that are painted.
constexpr unsigned int kSteps = 512;
/// How far those outlines may be off before they are divided, in units of the document.
constexpr double kFlatness = 0.01;

/// Points at even steps along the first subpath.
HvPoint2fArray SamplesOf(HvPath2f const& path)
{
    HvPoint2fArray polyline;
    HvDoubleArray chords;
    HvPoint2fArray samples;
    path.FlattenSubpath(0, kFlatness, polyline);
    HvPoint2fArraySingleComponent_ComputeChordLength(polyline, chords);
    HvPoint2fArraySingleComponent_EvenSubdivide(polyline, chords, kSteps, samples);
    return samples;
}

/// Outlines of different build meet point by point at the same shares of their lengths.
void BlendSamples(HvPath2f const& a, HvPath2f const& b, double share, HvPath2f& out)
{
    HvPoint2fArray const from = SamplesOf(a);
    HvPoint2fArray const to = SamplesOf(b);
    if (from.Size() != to.Size()) {
        // One of them has no length to be divided.
        out = share < 0.5 ? a : b;
        return;
    }
    HvPoint2fArray blend;
    HvPoint2fArraySingleComponent_Lerp(from, to, share, blend);
    out = HvPath2f(blend.Size());
    for (unsigned int i = 0; i < blend.Size(); ++i) {
        if (i == 0) {
            out.Moveto(blend[i]);
        } else {
            out.Lineto(blend[i]);
        }
    }
    if (a.IsSubpathClosed(0) != 0 && b.IsSubpathClosed(0) != 0) {
        out.Closeto();
    }
}

}  // namespace

void PathBlend_Set(HvPath2f const& a, HvPath2f const& b, double share, HvPath2f& out)
{
    if (a.IsSiblingOf(b) == 0) {
        BlendSamples(a, b, share, out);
        return;
    }
    out = a;
    for (unsigned int i = 0; i < a.NumPoints(); ++i) {
        HvPoint2<double> const from(a.GetPoint(i));
        HvPoint2<double> const to(b.GetPoint(i));
        out.ReplacePointIgnoringLock(i, HvPoint2<float>(from + (to - from) * share));
    }
}
