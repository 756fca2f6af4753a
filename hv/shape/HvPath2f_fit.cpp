// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The outline of a path drawn anew through its samples.

#include <hv/shape/HvPath2f.h>

#include <hv/bezier/HvBezierTool.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvPath2fSink.h>
#include <hv/shape/HvShapeLock.h>
#include <hv/shape/internal/HvPathTags.h>

namespace {

/// Degree of the segments that a fit draws.
constexpr unsigned int kFittedDegree = 3;

/// How the subpaths that have segments end.
struct SubpathEnds {
    /// The last points, mapped as the samples are.
    HvPoint2fArray points;
    /// 1 where the subpath is closed.
    HvUByteArray isClosed;
};

SubpathEnds EndsOf(HvPoint2fArray const& points, HvPathTags const& structure,
                   HvTransfo4 const& transform)
{
    SubpathEnds ends;
    for (unsigned int first = 0; first < structure.Count();) {
        unsigned int const last = structure.LastOfSubpath(first);
        if (first != last) {
            ends.points.Add(transform.Map(points[last]));
            ends.isClosed.Add(structure.IsClosingEnd(last) ? 1 : 0);
        }
        first = last + 1;
    }
    return ends;
}

}  // namespace

unsigned int HvPath2f::AddFittedSamplesFromPath(HvGC const& gc, HvPath2f const& source)
{
    HvPoint2fArray samples(64);
    HvPointTagArray sampleTags(64);
    source.Sample(gc, samples, sampleTags);

    HvShapePairLock const lock(*this, source);
    // Known beforehand: the path may be its own source.
    SubpathEnds const ends = EndsOf(source.points, HvPathTags(source.tags), gc.transform);
    unsigned int const before = points.Size();
    int const openBefore = lastSubpathOpen;
    HvPath2fSink sink(*this);
    HvBezierTool tool;
    HvPoint2fArray run;
    try {
        unsigned int subpath = 0;
        for (unsigned int i = 0; i < samples.Size() && subpath < ends.points.Size(); ++i) {
            run.Add(samples[i]);
            if (sampleTags[i] != HvPointTagEnd) {
                continue;
            }
            if (ends.isClosed[subpath] != 0) {
                run.Add(run[0]);
                tool.ClosedFit(run, gc.cornerCosSquared, kFittedDegree, gc.flatness, 0, sink);
            } else {
                run.Add(ends.points[subpath]);
                int const continues = points.Size() != 0 ? 1 : 0;
                tool.OpenFit(run, gc.cornerCosSquared, kFittedDegree, gc.flatness, 0, sink,
                             continues);
            }
            run.Chop(0);
            ++subpath;
        }
    } catch (...) {
        points.Chop(before);
        tags.Chop(before);
        lastSubpathOpen = openBefore;
        throw;
    }
    return points.Size() - before;
}
