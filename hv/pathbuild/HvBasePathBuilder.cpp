// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What the path builders share.

#include <hv/pathbuild/HvBasePathBuilder.h>

#include <hv/bezier/HvBezierTool.h>
#include <hv/pathbuild/internal/builder_limits.h>
#include <hv/pathbuild/stroke_sampling.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvPath2f.h>

#include <algorithm>
#include <cmath>

namespace {

bool AreFinite(HvPoint2<float> const* points, unsigned int count)
{
    return std::all_of(points, points + count, [](HvPoint2<float> const& p) {
        return std::isfinite(p.x) && std::isfinite(p.y);
    });
}

}  // namespace

HvBasePathBuilder::HvBasePathBuilder(HvGC const& context, HvPath2f* target)
    : gc(&context), path(target), input(kHvBuilderFirstCapacity), processedIndex(0),
      subpathStart(0), firstSamples(1), needMoveto(1), sampleRemainder(0.0),
      samples(kHvBuilderFirstCapacity)
{
}

HvBasePathBuilder::~HvBasePathBuilder() = default;

void HvBasePathBuilder::StartSubpath(HvPoint2<float> const& p)
{
    // Mapped first: the point may be one of the samples, which Reset forgets.
    HvPoint2<float> const q = ToDevice(p);
    Reset();
    input.Add(q);
}

void HvBasePathBuilder::StartSubpath(HvPoint2<float> const& p, HvPath2f* target)
{
    path = target;
    StartSubpath(p);
}

void HvBasePathBuilder::Reset()
{
    input.Chop(0);
    samples.Chop(0);
    processedIndex = 0;
    subpathStart = 0;
    firstSamples = 1;
    needMoveto = 1;
    sampleRemainder = 0.0;
}

// Input.

HvPoint2<float> HvBasePathBuilder::ToDevice(HvPoint2<float> const& p) const
{
    return gc->transform.Map(p);
}

bool HvBasePathBuilder::AreApart(HvPoint2<float> const& a, HvPoint2<float> const& b) const
{
    return std::fabs(double(a.x) - double(b.x)) > gc->minPointGap ||
           std::fabs(double(a.y) - double(b.y)) > gc->minPointGap;
}

void HvBasePathBuilder::AppendUnlessLast(HvPoint2<float> const& p)
{
    if (input.Size() == 0 || input[input.Size() - 1] != p) {
        input.Add(p);
    }
}

void HvBasePathBuilder::SmoothInput(unsigned int first, unsigned int last)
{
    if (last - first < 2) {
        return;
    }
    HvPoint2<float> before = input[first];
    for (unsigned int j = first + 1; j < last; ++j) {
        HvPoint2<float> const original = input[j];
        HvPoint2<float> const smooth = original * 0.5f + (before + input[j + 1]) * 0.25f;
        if (AreApart(smooth, input[j - 1])) {
            input[j] = smooth;
        }
        before = original;
    }
}

// Path and samples.

void HvBasePathBuilder::StartOutline()
{
    if (needMoveto != 0 && input.Size() != 0) {
        path->Moveto(input[0]);
        subpathStart = path->NumPoints() - 1;
        needMoveto = 0;
    }
}

void HvBasePathBuilder::FlattenAdded(unsigned int n, HvBezierTool& tool,
                                     HvPoint2fArray& polyline) const
{
    polyline.Chop(0);
    unsigned int const count = path->NumPoints();
    // The outline goes on from the point before, unless the Moveto is one of the new points, or
    // somebody has emptied the path meanwhile.
    unsigned int const begin = n == subpathStart || n == 0 ? n : n - 1;
    if (begin >= count) {
        return;
    }
    polyline.Add(path->GetPoint(begin));
    for (unsigned int i = begin + 1; i < count;) {
        unsigned int start = 0;
        unsigned int end = 0;
        path->GetSegmentIndices(i, start, end);
        HvPoint2<float> points[kHvBuilderMaxDegree + 1];
        path->GetPoints(start, end, points);
        if (AreFinite(points, end - start + 1)) {
            tool.Flatten(points, 0, end - start, gc->flatness, &polyline, 1);
        } else {
            polyline.Add(points[end - start]);
        }
        i = end + 1;
    }
}

void HvBasePathBuilder::SampleLine(HvPoint2fArray const& line, unsigned int first,
                                   unsigned int last, int addEnd)
{
    samples.Chop(0);
    if (line.Size() == 0) {
        return;
    }
    if (firstSamples != 0) {
        samples.Add(line[first]);
    }
    double length = 0.0;
    SampleSubpath(line, first, last, gc->sampleSpacing, length, sampleRemainder, samples, addEnd);
    firstSamples = 0;
}

void HvBasePathBuilder::TakeBack(unsigned int n)
{
    unsigned int const count = path->NumPoints();
    if (n >= count) {
        return;
    }
    unsigned int const node = n == 0 || path->IsStartOfSubpath(n) ? n : n - 1;
    path->RemoveSubpathSection(node, count - 1);
}
