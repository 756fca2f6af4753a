// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Strokes with a property as fitted cubics.

#include <hv/pathbuild/HvBezierFitPathPropBuilder.h>

#include <hv/pathbuild/HvBezierFitPathBuilder.h>
#include <hv/pathbuild/HvPath2fProp1d.h>
#include <hv/pathbuild/internal/HvPropTrack.h>
#include <hv/pathbuild/internal/HvStroke.h>

namespace {

class FitStroke : public HvStroke, private HvBezierFitPathBuilder {
public:
    FitStroke(HvGC const& context, HvPath2f* target, double longestFitted, double spacing,
              double fitted, unsigned int fewestPoints)
        : HvBezierFitPathBuilder(context, target, longestFitted, spacing, fitted, fewestPoints)
    {
    }

    using HvStroke::operator new;
    using HvStroke::operator delete;

    HvBasePathBuilder& Builder() override { return *this; }
    HvPoint2fArray const& Input() const override { return input; }
    HvPoint2<float> const* Pending() const override { return nullptr; }
    HvPoint2<float> Mapped(HvPoint2<float> const& p) const override { return ToDevice(p); }
};

}  // namespace

HvBezierFitPathPropBuilder::HvBezierFitPathPropBuilder(HvGC const& gc, HvPath2fProp1d* path,
                                                       double longStep, double subdivideSpacing,
                                                       double fitTolerance,
                                                       unsigned int minFitPoints, double tolerance)
    : HvBasePathPropBuilder(gc, path, tolerance,
                            std::make_unique<FitStroke>(gc, path, longStep, subdivideSpacing,
                                                        fitTolerance, minFitPoints))
{
}

HvBezierFitPathPropBuilder::~HvBezierFitPathPropBuilder() = default;
