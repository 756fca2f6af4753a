// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A path drawn anew through the samples of a path, with its property.

#include <hv/pathbuild/HvPath2fProp1d.h>

#include <hv/bezier/HvBezierTool.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/foundation/array_capacity.h>
#include <hv/pathbuild/internal/prop_curves.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvPath2fIter.h>
#include <hv/shape/HvPath2fSink.h>
#include <hv/shape/HvShapeLock.h>

namespace {

/// Degree of the segments that a fit draws.
constexpr unsigned int kFittedDegree = 3;

/// Moves all entries of `from` to the end of `to`, or none.
void MoveEntries(HvPropCurves& from, HvPropCurves& to)
{
    HvDLListIter<HvPropCurveData> entries(&from);
    try {
        while (HvPropCurveData* const entry = entries.Next()) {
            to.Append(entry);
        }
    } catch (...) {
        HvDLListIter<HvPropCurveData> moved(&from);
        while (HvPropCurveData* const entry = moved.Next()) {
            to.Remove(entry);
        }
        throw;
    }
    from.RemoveAll();
}

}  // namespace

unsigned int HvPath2fProp1d::AddFittedSamplesFromPath(HvGC const& gc, HvPath2fProp1d const& source)
{
    HvShapePairLock const lock(*this, source);
    HvPoint2fArray samples(64);
    HvPointTagArray sampleTags(64);
    source.Sample(gc, samples, sampleTags);

    // Drawn aside: this path may be the source, and is as it was until all is done.
    HvPath2fProp1d fitted(0u);
    HvPath2fSink sink(fitted);
    HvBezierTool tool;
    HvPoint2fArray run;
    HvPropCurveWalk curves(*source.propCurves);
    HvPath2fIter subpaths(source);
    unsigned int start = 0;
    unsigned int end = 0;
    unsigned int next = 0;
    while (next < samples.Size() && subpaths.GetNextSubPathIndices(start, end) != 0) {
        if (start == end) {
            continue;  // no segment, no samples
        }
        run.Chop(0);
        do {
            run.Add(samples[next]);
        } while (sampleTags[next++] != HvPointTagEnd && next < samples.Size());
        unsigned int const before = fitted.points.Size();
        if (source.IsSubpathClosed(end) != 0) {
            run.Add(run[0]);
            tool.ClosedFit(run, gc.cornerCosSquared, kFittedDegree, gc.flatness, 0, sink);
        } else {
            run.Add(gc.transform.Map(source.points[end]));
            tool.OpenFit(run, gc.cornerCosSquared, kFittedDegree, gc.flatness, 0, sink, 0);
        }
        HvRawFCurve const* const curve = curves.MoveTo(start);
        if (curve != nullptr && fitted.points.Size() != before) {
            HvPropCurves_Append(*fitted.propCurves,
                                std::make_unique<HvPropCurveData>(before, *curve));
        }
    }

    unsigned int const added = fitted.points.Size();
    if (added == 0) {
        return 0;
    }
    unsigned int const before = points.Size();
    points.Reserve(HvArrayCapacity_GrownSize(before, added));
    tags.Reserve(HvArrayCapacity_GrownSize(before, added));
    HvDLListIter<HvPropCurveData> entries(fitted.propCurves);
    while (HvPropCurveData* const entry = entries.Next()) {
        entry->subpathStart += before;
    }
    MoveEntries(*fitted.propCurves, *propCurves);
    // Nothing fails from here on.
    points.Add(fitted.points);
    tags.Add(fitted.tags);
    lastSubpathOpen = fitted.lastSubpathOpen;
    return added;
}
