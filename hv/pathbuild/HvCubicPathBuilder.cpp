// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Strokes as cubics through every point.

#include <hv/pathbuild/HvCubicPathBuilder.h>

#include <hv/bezier/HvBezierTool.h>
#include <hv/pathbuild/stroke_tangents.h>
#include <hv/shape/HvPath2f.h>

namespace {

/// Length of a handle over that of its step. Somewhat above a third, so that the chain is rounder
/// than an even walk along its points would be; more makes it wave.
constexpr float kHandleShare = 0.4f;

}  // namespace

HvCubicPathBuilder::HvCubicPathBuilder(HvGC const& context, HvPath2f* target)
    : HvBasePathBuilder(context, target)
{
}

HvCubicPathBuilder::~HvCubicPathBuilder() = default;

void HvCubicPathBuilder::AddInputPoint(HvPoint2<float> const& p, int force)
{
    HvPoint2<float> const q = ToDevice(p);
    if (force == 1 || input.Size() == 0 || AreApart(q, input[input.Size() - 1])) {
        input.Add(q);
    }
}

HvPoint2fArray const* HvCubicPathBuilder::GetTrailingSamples()
{
    return Commit(0, 0);
}

HvPoint2fArray const* HvCubicPathBuilder::EndSubpath(HvPoint2<float> const& p, int closed)
{
    AppendUnlessLast(ToDevice(p));
    return Commit(closed, 1);
}

HvPoint2fArray const* HvCubicPathBuilder::Commit(int closed, int final)
{
    if (input.Size() != 0) {
        SmoothInput(processedIndex, input.Size() - 1);
    }
    unsigned int const n = path->NumPoints();
    try {
        AddTrailingInputPoints(closed, final);
        ComputeTrailingSamplePoints(n, final);
    } catch (...) {
        TakeBack(n);
        throw;
    }
    return &samples;
}

void HvCubicPathBuilder::AddTrailingInputPoints(int closed, int final)
{
    StartOutline();
    if (input.Size() < 2) {
        return;
    }
    bool const closes = closed != 0 && final != 0;
    if (closes) {
        AppendUnlessLast(HvPoint2<float>(input[0]));
    }
    unsigned int const last = input.Size() - 1;
    unsigned int i = processedIndex;
    HvPoint2<float> tangent = EstimateTangentDirection(input, i, i == 0 ? 1 : 0, 0, 0);
    for (; i + 1 < last; ++i) {
        HvPoint2<float> const next = EstimateTangentDirection(input, i + 1, 0, 0, 0);
        AddCubic(i, tangent, next);
        tangent = next;
    }
    if (final != 0 && i < last) {
        AddCubic(i, tangent,
                 closes ? EstimateTangentDirection(input, 0, 1, 0, 0)
                        : EstimateTangentDirection(input, last, 0, 1, 0));
    }
    if (closes) {
        path->Closeto();
    }
}

void HvCubicPathBuilder::AddCubic(unsigned int i, HvPoint2<float> const& startTangent,
                                  HvPoint2<float> const& endTangent)
{
    HvPoint2<float> const from = input[i];
    HvPoint2<float> const to = input[i + 1];
    float const h = static_cast<float>(HvPoint2_LengthAB(from, to)) * kHandleShare;
    path->Curveto(from + startTangent * h, to - endTangent * h, to);
}

void HvCubicPathBuilder::ComputeTrailingSamplePoints(unsigned int n, int final)
{
    samples.Chop(0);
    if (input.Size() < 2) {
        return;
    }
    HvBezierTool tool;
    HvPoint2fArray polyline(64);
    FlattenAdded(n, tool, polyline);
    SampleLine(polyline, 0, polyline.Size() - 1, final);
    processedIndex = input.Size() - (final != 0 ? 1 : 2);
}
