// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Strokes with a property as polylines.

#ifndef HV_PATHBUILD_HVLINEARPATHPROPBUILDER_H
#define HV_PATHBUILD_HVLINEARPATHPROPBUILDER_H

#include <hv/pathbuild/HvBasePathPropBuilder.h>

/// Builds a polyline with a vertex only where the pen turns, as HvLinearPathBuilder does; its
/// property has keys where it needs them, on vertices or between.
class HV_API HvLinearPathPropBuilder : public HvBasePathPropBuilder {
public:
    /// @param tolerance  greatest error of the property; 0 or below keeps every value.
    HvLinearPathPropBuilder(HvGC const& gc, HvPath2fProp1d* path, double tolerance);
    ~HvLinearPathPropBuilder() override;
};

#endif
