// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Points at chosen lengths along the outline of a path.

#include <hv/shape/HvPath2f.h>

#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvFloatArray.h>
#include <hv/foundation/array_capacity.h>
#include <hv/foundation/polyline_length.h>
#include <hv/foundation/saturate.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/internal/HvAppended.h>
#include <hv/shape/internal/HvPathFlattener.h>
#include <hv/shape/internal/HvShapeLock.h>

#include <algorithm>
#include <cmath>
#include <new>

namespace {

/// Below this length a subpath has no places along it.
constexpr double kLeastLength = 1e-7;

/// The point at `share` of the way from `a` to `b`: a difference in float, the rest in double.
HvPoint2<float> Between(HvPoint2<float> const& a, HvPoint2<float> const& b, double share)
{
    HvPoint2<float> const d = b - a;
    return HvPoint2<float>(static_cast<float>(double(a.x) + double(d.x) * share),
                           static_cast<float>(double(a.y) + double(d.y) * share));
}

/// A polyline beside its cumulative lengths, walked from front to back.
class LengthCursor {
public:
    LengthCursor(HvPoint2fArray const& line, HvDoubleArray const& lengths, unsigned int first,
                 unsigned int last)
        : line_(line), lengths_(lengths), at_(first + 1), last_(last)
    {
    }

    /// Moves on to the first vertex, from the second on, whose length is not below `target`; false
    /// when the vertices run out.
    bool MoveTo(double target)
    {
        while (at_ <= last_ && lengths_[at_] < target) {
            ++at_;
        }
        return at_ <= last_;
    }

    /// The point at `target` on the edge that ends in the vertex.
    HvPoint2<float> PointAt(double target) const
    {
        double const from = lengths_[at_ - 1];
        double const span = lengths_[at_] - from;
        return span == 0.0 ? line_[at_ - 1]
                           : Between(line_[at_ - 1], line_[at_], (target - from) / span);
    }

private:
    HvPoint2fArray const& line_;
    HvDoubleArray const& lengths_;
    unsigned int at_;
    unsigned int last_;
};

/// Into how many steps of about `spacing` a length is divided: rounded, half down; 0 or 1 when
/// there is nothing to divide. Throws std::bad_alloc for more than an array holds.
unsigned int NumSteps(double length, double spacing)
{
    if (!(length > spacing) || !std::isfinite(length)) {
        return 0;
    }
    double steps = std::floor(length / spacing);
    if (std::fmod(length, spacing) > spacing * 0.5) {
        steps += 1.0;
    }
    if (!(steps <= kHvArrayMaxCapacity)) {
        throw std::bad_alloc();
    }
    return HvSaturate_To<unsigned int>(steps);
}

/// Appends the samples of a polyline that is one subpath.
void AppendSamples(HvPoint2fArray const& line, double spacing, bool isClosed,
                   HvDoubleArray& lengths, HvPoint2fArray& pts, HvPointTagArray& ptTags)
{
    pts.Add(line[0]);
    ptTags.Add(HvPointTagStart);
    unsigned int const last = line.Size() - 1;
    lengths.Chop(0);
    HvPoint2fArray_ComputeChordLength(line, 0, last, lengths);

    unsigned int const steps = NumSteps(lengths[last], spacing);
    double const step = lengths[last] / steps;
    LengthCursor cursor(line, lengths, 0, last);
    unsigned int added = 0;
    double target = step;
    for (; added + 1 < steps && cursor.MoveTo(target); ++added, target += step) {
        pts.Add(cursor.PointAt(target));
        ptTags.Add(HvPointTagInner);
    }

    if (added == 0) {
        pts.Add(line[last]);
        ptTags.Add(HvPointTagEnd);
        return;
    }
    if (isClosed && added > 1 && pts[pts.Size() - 1] == line[last]) {
        pts.Chop(pts.Size() - 1);
        ptTags.Chop(ptTags.Size() - 1);
    }
    ptTags[ptTags.Size() - 1] = HvPointTagEnd;
}

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
    HvAppendedTagged appended(pts, ptTags);
    HvPoint2fArray line(64);
    HvDoubleArray lengths(64);
    flattener.VisitSubpaths([&](unsigned int first, unsigned int last) {
        line.Chop(0);
        if (flattener.AppendSubpath(first, last, line) != 0) {
            AppendSamples(line, gc.sampleSpacing, flattener.Structure().IsClosingEnd(last), lengths,
                          pts, ptTags);
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

    HvAppendedTagged appended(pts, ptTags);
    unsigned int next = 0;
    for (unsigned int first = 0; first < line.Size() && next < parameters.Size();) {
        unsigned int last = first;
        while (lineTags[last] != HvPointTagEnd) {
            ++last;
        }
        LengthCursor cursor(line, lengths, first, last);
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
