// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Strokes as polylines.

#include <hv/pathbuild/HvLinearPathBuilder.h>

#include <hv/pathbuild/internal/unit_direction.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvPath2f.h>

#include <cmath>

HvLinearPathBuilder::HvLinearPathBuilder(HvGC const& context, HvPath2f* target)
    : HvBasePathBuilder(context, target), hasPending(0)
{
}

HvLinearPathBuilder::~HvLinearPathBuilder() = default;

void HvLinearPathBuilder::Reset()
{
    HvBasePathBuilder::Reset();
    hasPending = 0;
}

void HvLinearPathBuilder::AddInputPoint(HvPoint2<float> const& p, int force)
{
    HvPoint2<float> const q = ToDevice(p);
    if (force != 0 || input.Size() == 0) {
        input.Add(q);
        return;
    }
    HvPoint2<float> const last = input[input.Size() - 1];
    if (hasPending != 0 && AreApart(q, pending)) {
        double const offset = std::fabs(HvPoint2_AdetB(direction, q - last));
        if (offset < gc->flatness * 0.5 && HvPoint2_AdotB(direction, q - pending) > 0.0) {
            pending = q;
            return;
        }
        input.Add(pending);
        direction = HvPoint2<float>(HvDirection_FromTo(pending, q));
        pending = q;
    } else if (AreApart(q, last)) {
        pending = q;
        direction = HvPoint2<float>(HvDirection_FromTo(last, q));
        hasPending = 1;
    }
}

void HvLinearPathBuilder::PushPending()
{
    if (hasPending != 0) {
        input.Add(pending);
        hasPending = 0;
    }
}

HvPoint2fArray const* HvLinearPathBuilder::GetTrailingSamples()
{
    PushPending();
    return Commit(0, 0);
}

HvPoint2fArray const* HvLinearPathBuilder::EndSubpath(HvPoint2<float> const& p, int closed)
{
    HvPoint2<float> const q = ToDevice(p);
    PushPending();
    AppendUnlessLast(q);
    return Commit(closed, 1);
}

HvPoint2fArray const* HvLinearPathBuilder::Commit(int closed, int final)
{
    if (input.Size() != 0) {
        SmoothInput(processedIndex, input.Size() - 1);
    }
    unsigned int const n = path->NumPoints();
    try {
        AddTrailingInputPoints(closed);
        ComputeTrailingSamplePoints(final);
    } catch (...) {
        TakeBack(n);
        throw;
    }
    return &samples;
}

void HvLinearPathBuilder::AddTrailingInputPoints(int closed)
{
    StartOutline();
    unsigned int const count = input.Size();
    if (count < 2) {
        return;
    }
    for (unsigned int i = processedIndex + 1; i < count; ++i) {
        path->Lineto(input[i]);
    }
    if (closed != 0) {
        if (input[count - 1] != input[0]) {
            path->Lineto(input[0]);
        }
        path->Closeto();
    }
}

void HvLinearPathBuilder::ComputeTrailingSamplePoints(int final)
{
    samples.Chop(0);
    if (input.Size() < 2) {
        return;
    }
    unsigned int const last = input.Size() - 1;
    SampleLine(input, processedIndex, last, final);
    processedIndex = last;
}
