// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Strokes as fitted cubics.

#include <hv/pathbuild/HvBezierFitPathBuilder.h>

#include <hv/foundation/array_capacity.h>
#include <hv/foundation/polyline_length.h>
#include <hv/foundation/saturate.h>
#include <hv/pathbuild/internal/builder_limits.h>
#include <hv/pathbuild/stroke_fitting.h>
#include <hv/shape/HvPath2f.h>

#include <cmath>

namespace {

/// Most points into which one step is subdivided. No pen asks for as many; a spacing of next to
/// nothing would, and fill the memory.
constexpr double kMostSubdivisions = 65536.0;

/// The squared cosine that a corner's turn must exceed: 0, so that every turn back is a corner.
constexpr double kCornerCosSquared = 0.0;

}  // namespace

HvBezierFitPathBuilder::HvBezierFitPathBuilder(HvGC const& context, HvPath2f* target,
                                               double longestFitted, double spacing,
                                               double tolerance, unsigned int fewestPoints)
    : HvBasePathBuilder(context, target), longStep(longestFitted), subdivideSpacing(spacing),
      minFitPoints(fewestPoints), fitTolerance(tolerance), chordLengths(kHvBuilderFirstCapacity),
      corners(kHvBuilderFirstCapacity), polyline(kHvBuilderFirstCapacity)
{
}

HvBezierFitPathBuilder::~HvBezierFitPathBuilder() = default;

void HvBezierFitPathBuilder::Reset()
{
    HvBasePathBuilder::Reset();
    chordLengths.Chop(0);
    corners.Chop(0);
    polyline.Chop(0);
}

// Input.

void HvBezierFitPathBuilder::AddInputPoint(HvPoint2<float> const& p, int force)
{
    HvPoint2<float> const q = ToDevice(p);
    if (force != 0 || input.Size() == 0) {
        input.Add(q);
        return;
    }
    HvPoint2<float> const from = input[input.Size() - 1];
    if (!AreApart(q, from)) {
        return;
    }
    double const distance = HvPoint2_CheapLengthAB(q, from);
    double const parts = distance / subdivideSpacing;
    bool const isSubdivided = distance > subdivideSpacing && distance <= longStep &&
                              subdivideSpacing > 0.0 && parts < kMostSubdivisions;
    if (isSubdivided) {
        input.Reserve(
            HvArrayCapacity_GrownSize(input.Size(), HvSaturate_To<unsigned int>(parts) + 2));
        double const share = subdivideSpacing / distance;
        HvPoint2<float> const step = q - from;
        unsigned int k = 1;
        for (double t = share; t < 1.0; t = ++k * share) {
            input.Add(from + HvPoint2<float>(static_cast<float>(double(step.x) * t),
                                             static_cast<float>(double(step.y) * t)));
        }
        if (!AreApart(q, input[input.Size() - 1])) {
            input[input.Size() - 1] = q;
            return;
        }
    }
    input.Add(q);
}

HvPoint2fArray const* HvBezierFitPathBuilder::GetTrailingSamples()
{
    return Commit(0, 0);
}

HvPoint2fArray const* HvBezierFitPathBuilder::EndSubpath(HvPoint2<float> const& p, int closed)
{
    AppendUnlessLast(ToDevice(p));
    return Commit(closed, 1);
}

HvPoint2fArray const* HvBezierFitPathBuilder::Commit(int closed, int final)
{
    unsigned int const n = path->NumPoints();
    try {
        AddTrailingInputPoints(closed);
        ComputeTrailingSamplePoints(n, final);
    } catch (...) {
        // What was noted about points that are not committed now is found anew.
        corners.Chop(processedIndex);
        chordLengths.Chop(processedIndex == 0 ? 0 : processedIndex + 1);
        TakeBack(n);
        throw;
    }
    return &samples;
}

// Committing.

void HvBezierFitPathBuilder::AddTrailingInputPoints(int closed)
{
    StartOutline();
    if (input.Size() < 2) {
        return;
    }
    if (closed != 0) {
        AppendUnlessLast(HvPoint2<float>(input[0]));
    }
    unsigned int const last = input.Size() - 1;
    corners.Reserve(last);
    chordLengths.Reserve(input.Size());
    bool const startIsCorner = MarkCornersAndSmooth();
    HvPoint2fArray_ComputeIncrementalChordLength(input, processedIndex, last, chordLengths);
    if (processedIndex != last) {
        AddRuns(startIsCorner ? 1 : 0, closed);
    } else if (closed != 0) {
        path->Closeto();
    }
}

// A corner is looked for on points as they came in: what lies before it is smoothed only when it
// has been found, and what lies behind when the next one has. So the neighbours that tell of a
// corner are raw, but for the one before `processedIndex`.
bool HvBezierFitPathBuilder::MarkCornersAndSmooth()
{
    unsigned int const last = input.Size() - 1;
    unsigned int from = processedIndex;
    bool const startIsCorner = from > 0 && from < last && IsCorner(from);
    if (from < last && from == corners.Size()) {
        corners.Add(startIsCorner);
    }
    for (unsigned int i = processedIndex + 1; i < last; ++i) {
        bool const isCorner = IsCorner(i);
        if (isCorner) {
            SmoothInput(from, i);
            from = i;
        }
        corners.Add(isCorner);
    }
    SmoothInput(from, last);
    return startIsCorner;
}

bool HvBezierFitPathBuilder::IsCorner(unsigned int i) const
{
    auto const isFar = [this](HvPoint2<float> const& a, HvPoint2<float> const& b) {
        return std::fabs(double(a.x) - double(b.x)) > fitTolerance ||
               std::fabs(double(a.y) - double(b.y)) > fitTolerance;
    };
    HvPoint2<float> const before = input[i - 1];
    HvPoint2<float> const here = input[i];
    HvPoint2<float> const after = input[i + 1];
    if (!isFar(here, before) || !isFar(here, after)) {
        return false;
    }
    double const dot = HvPoint2_ABdotCD(before, here, here, after);
    return dot < 0.0 && dot * dot > kCornerCosSquared * HvPoint2_SquaredLengthAB(before, here) *
                                        HvPoint2_SquaredLengthAB(here, after);
}

// The end of the run of steps from point `s` on that are all long, or all not; at the latest a
// corner. The flag of a corner is read only where the next step would go on with the run.
unsigned int HvBezierFitPathBuilder::EndOfRun(unsigned int s, bool isLong, int& lastIsCorner) const
{
    lastIsCorner = 0;
    unsigned int v = s + 1;
    for (; v + 1 < input.Size(); ++v) {
        double const distance = HvPoint2_CheapLengthAB(input[v], input[v + 1]);
        if (isLong ? !(distance >= longStep) : !(distance < longStep)) {
            break;
        }
        if (corners[v]) {
            lastIsCorner = 1;
            break;
        }
    }
    return v;
}

void HvBezierFitPathBuilder::AddRuns(int startIsCorner, int closed)
{
    unsigned int const end = input.Size() - 1;
    for (unsigned int s = processedIndex; s != end;) {
        double const distance = HvPoint2_CheapLengthAB(input[s], input[s + 1]);
        bool const isLong = distance >= longStep;
        int isCorner = 0;
        // A step whose length is no number is a run of its own.
        unsigned int const v =
            isLong || distance < longStep ? EndOfRun(s, isLong, isCorner) : s + 1;
        unsigned int const steps = v - s;
        int const close = closed != 0 && v == end ? 1 : 0;
        if (!isLong && steps >= minFitPoints) {
            FitBezierCurve(input, chordLengths, fitTolerance, minFitPoints, s, startIsCorner, v,
                           isCorner, close, tool, path);
        } else if (!isLong && steps >= 2) {
            FindBezierCurve(input, minFitPoints, s, startIsCorner, v, isCorner, close, path);
        } else {
            CubicInterpolation(input, chordLengths, fitTolerance, s, startIsCorner, v, isCorner,
                               close, path);
        }
        s = v;
        startIsCorner = isCorner;
    }
}

void HvBezierFitPathBuilder::ComputeTrailingSamplePoints(unsigned int n, int final)
{
    samples.Chop(0);
    if (input.Size() < 2) {
        return;
    }
    FlattenAdded(n, tool, polyline);
    SampleLine(polyline, 0, polyline.Size() - 1, final);
    processedIndex = input.Size() - 1;
}
