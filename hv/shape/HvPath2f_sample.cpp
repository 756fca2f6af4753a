// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Points at chosen lengths along the outline of a path.

#include <hv/shape/HvPath2f.h>

#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvFloatArray.h>
#include <hv/foundation/polyline_length.h>
#include <hv/foundation/polyline_sample.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvShapeLock.h>
#include <hv/shape/internal/HvAppended.h>
#include <hv/shape/internal/HvPathFlattener.h>

#include <algorithm>

namespace {

/// Below this length a subpath has no places along it.
constexpr double kLeastLength = 1e-7;

/// Makes lengths that start anew with each subpath run on over all of them. Gaps between subpaths
/// have no length. Returns the whole length.
double JoinLengths(HvPointTagArray const& lineTags, HvDoubleArray& lengths)
{
    double before = 0.0;
    double total = 0.0;
    for (unsigned int i = 0; i < lengths.Size(); ++i) {
        lengths[i] = before + lengths[i];
        total = lengths[i];
        if (lineTags[i] == HvPointTagEnd) {
            before = total;
        }
    }
    return total;
}

}  // namespace

unsigned int HvPath2f::Sample(HvGC const& gc, HvPoint2fArray& pts, HvPointTagArray& ptTags) const
{
    HvShapeLock const lock(*this);
    HvPathFlattener<float> flattener(points, tags, &gc.transform, gc.flatness);
    HvAppended appended(pts, ptTags);
    HvPoint2fArray line(64);
    HvDoubleArray lengths(64);
    flattener.VisitSubpaths([&](unsigned int first, unsigned int last) {
        line.Chop(0);
        if (flattener.AppendSubpath(first, last, line) != 0) {
            lengths.Chop(0);
            HvPoint2fArraySingleComponent_ComputeChordLength(line, lengths);
            HvPoint2fArray_AppendEvenSamples(line, lengths, 0, line.Size() - 1, gc.sampleSpacing,
                                             flattener.Structure().IsClosingEnd(last), pts, ptTags);
        }
    });
    return appended.Keep();
}

unsigned int HvPath2f::Sample(HvGC const& gc, HvFloatArray const& parameters, HvPoint2fArray& pts,
                              HvPointTagArray& ptTags) const
{
    HvShapeLock const lock(*this);
    HvPoint2fArray line(64);
    HvPointTagArray lineTags(64);
    HvDoubleArray lengths(64);
    Flatten(gc, line, lineTags);
    HvPoint2fArray_ComputeChordLength(line, lineTags, lengths);
    double const total = JoinLengths(lineTags, lengths);

    HvAppended appended(pts, ptTags);
    unsigned int next = 0;
    for (unsigned int first = 0; first < line.Size() && next < parameters.Size();) {
        unsigned int last = first;
        while (lineTags[last] != HvPointTagEnd) {
            ++last;
        }
        HvPolylineCursor cursor(line, lengths, first, last);
        unsigned int const before = pts.Size();
        for (; next < parameters.Size(); ++next) {
            double const target = double(parameters[next]) * total;
            if (!cursor.MoveTo(target)) {
                break;
            }
            pts.Add(cursor.PointAt(target));
            ptTags.Add(HvPointTagInner);
        }
        if (pts.Size() != before) {
            ptTags[ptTags.Size() - (pts.Size() - before)] = HvPointTagStart;
            ptTags[ptTags.Size() - 1] = HvPointTagEnd;
        }
        first = last + 1;
    }
    return appended.Keep();
}

double HvPath2f::GetNodeNormalizedArcLength(unsigned int node, double tolerance) const
{
    HvShapeLock const lock(*this);
    HvPathFlattener<float> flattener(points, tags, nullptr, tolerance);
    HvPathTags const& structure = flattener.Structure();
    if (!structure.Has(node)) {
        return 0.0;
    }
    unsigned int const first = structure.FirstOfSubpath(node);
    unsigned int const last = structure.LastOfSubpath(node);
    if (node <= first || node >= last) {
        return node <= first ? 0.0 : 1.0;
    }
    HvPoint2fArray line(64);
    line.Add(points[first]);
    unsigned int vertexOfNode = 0;
    flattener.VisitSegments(first, last, [&](unsigned int start, unsigned int end) {
        flattener.AppendSegment(start, end, line);
        if (start < node && node <= end) {
            vertexOfNode = line.Size() - 1;
        }
        return true;
    });
    HvDoubleArray lengths(line.Size());
    double const total = HvPoint2fArraySingleComponent_ComputeChordLength(line, lengths);
    if (!(total >= kLeastLength)) {
        return 1.0;
    }
    double const share = lengths[vertexOfNode] / total;
    return share > 0.0 ? std::min(share, 1.0) : 0.0;
}
