// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Strokes with a property as fitted cubics.

#ifndef HV_PATHBUILD_HVBEZIERFITPATHPROPBUILDER_H
#define HV_PATHBUILD_HVBEZIERFITPATHPROPBUILDER_H

#include <hv/pathbuild/HvBasePathPropBuilder.h>

/// Fits cubics to the points, as HvBezierFitPathBuilder does.
class HV_API HvBezierFitPathPropBuilder : public HvBasePathPropBuilder {
public:
    /// See HvBezierFitPathBuilder for how the outline is fitted.
    ///
    /// @param tolerance  greatest error of the property; 0 or below keeps every value.
    HvBezierFitPathPropBuilder(HvGC const& gc, HvPath2fProp1d* path, double longStep,
                               double subdivideSpacing, double fitTolerance,
                               unsigned int minFitPoints, double tolerance);
    ~HvBezierFitPathPropBuilder() override;
};

#endif
