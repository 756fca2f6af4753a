// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The builders of property paths: a path builder draws the outline, a track follows with the
// values.

#include <hv/pathbuild/HvBasePathPropBuilder.h>

#include <hv/pathbuild/HvPath2fProp1d.h>
#include <hv/pathbuild/internal/HvPropTrack.h>
#include <hv/pathbuild/internal/HvStroke.h>
#include <hv/shape/HvGC.h>

HvBasePathPropBuilder::HvBasePathPropBuilder(HvGC const& gc, HvPath2fProp1d* path, double tolerance,
                                             std::unique_ptr<HvStroke> stroke)
    : gc_(&gc), path_(path), stroke_(std::move(stroke)),
      track_(std::make_unique<HvPropTrack>(tolerance))
{
}

HvBasePathPropBuilder::~HvBasePathPropBuilder() = default;

void HvBasePathPropBuilder::Reset()
{
    stroke_->Builder().Reset();
    track_->Reset();
}

void HvBasePathPropBuilder::StartSubpath(HvPoint2<float> const& p, double value)
{
    HvPoint2<float> const q = stroke_->Mapped(p);
    stroke_->Builder().StartSubpath(p);
    track_->Reset();
    track_->Add(q, value, gc_->minPointGap);
    track_->FollowInput(stroke_->Input());
}

void HvBasePathPropBuilder::StartSubpath(HvPoint2<float> const& p, double value,
                                         HvPath2fProp1d* target)
{
    path_ = target;
    stroke_->Builder().StartSubpath(p, target);
    StartSubpath(p, value);
}

void HvBasePathPropBuilder::AddInputPoint(HvPoint2<float> const& p, double value, int force)
{
    HvPoint2<float> const q = stroke_->Mapped(p);
    // An end that failed may have told the track of points that did not come.
    track_->FollowInput(stroke_->Input());
    stroke_->Builder().AddInputPoint(p, force);
    track_->Add(q, value, gc_->minPointGap);
    track_->FollowInput(stroke_->Input());
}

HvPoint2fArray const* HvBasePathPropBuilder::GetTrailingSamples()
{
    return Follow(stroke_->Builder().GetTrailingSamples());
}

HvPoint2fArray const* HvBasePathPropBuilder::EndSubpath(HvPoint2<float> const& p, double value,
                                                        int closed)
{
    HvPoint2<float> const q = stroke_->Mapped(p);
    HvPoint2fArray const& input = stroke_->Input();
    // What is held back will be followed by the end, so the commit smooths it before it can be
    // seen.
    track_->Add(q, value, gc_->minPointGap);
    track_->FollowInput(input);
    HvPoint2<float> const* last = input.Size() == 0 ? nullptr : &input[input.Size() - 1];
    if (HvPoint2<float> const* const pending = stroke_->Pending()) {
        track_->Expect(*pending);
        last = pending;
    }
    if (last == nullptr || *last != q) {
        track_->Expect(q);
    }
    HvPoint2fArray const* const samples = stroke_->Builder().EndSubpath(p, closed);
    if (closed != 0) {
        track_->Close();
    }
    return Follow(samples);
}

HvPoint2fArray const* HvBasePathPropBuilder::Follow(HvPoint2fArray const* samples)
{
    track_->FollowInput(stroke_->Input());
    track_->Commit(*path_, stroke_->Input(), gc_->flatness);
    track_->Sample(*path_, samples->Size(), gc_->sampleSpacing);
    return samples;
}

HvDoubleArray const* HvBasePathPropBuilder::GetTrailingValues() const
{
    return &track_->Values();
}
