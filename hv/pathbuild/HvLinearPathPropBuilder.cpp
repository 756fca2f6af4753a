// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Strokes with a property as polylines.

#include <hv/pathbuild/HvLinearPathPropBuilder.h>

#include <hv/pathbuild/HvLinearPathBuilder.h>
#include <hv/pathbuild/HvPath2fProp1d.h>
#include <hv/pathbuild/internal/HvPropTrack.h>
#include <hv/pathbuild/internal/HvStroke.h>

namespace {

class LinearStroke : public HvStroke, private HvLinearPathBuilder {
public:
    LinearStroke(HvGC const& context, HvPath2f* target) : HvLinearPathBuilder(context, target) {}

    using HvStroke::operator new;
    using HvStroke::operator delete;

    HvBasePathBuilder& Builder() override { return *this; }
    HvPoint2fArray const& Input() const override { return input; }
    HvPoint2<float> const* Pending() const override { return hasPending != 0 ? &pending : nullptr; }
    HvPoint2<float> Mapped(HvPoint2<float> const& p) const override { return ToDevice(p); }
};

}  // namespace

HvLinearPathPropBuilder::HvLinearPathPropBuilder(HvGC const& gc, HvPath2fProp1d* path,
                                                 double tolerance)
    : HvBasePathPropBuilder(gc, path, tolerance, std::make_unique<LinearStroke>(gc, path))
{
}

HvLinearPathPropBuilder::~HvLinearPathPropBuilder() = default;
