// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A path builder whose points can be seen.

#ifndef HV_PATHBUILD_INTERNAL_HVSTROKE_H
#define HV_PATHBUILD_INTERNAL_HVSTROKE_H

#include <hv/foundation/HvMemory.h>
#include <hv/foundation/HvPoint2fArray.h>
#include <hv/pathbuild/HvBasePathBuilder.h>

/// The path builder that draws the outline under a property.
class HvStroke : public HvAllocated {
public:
    virtual ~HvStroke() = default;
    virtual HvBasePathBuilder& Builder() = 0;
    /// The points of the stroke, in device space; once committed, they are smoothed.
    virtual HvPoint2fArray const& Input() const = 0;
    /// The point that a commit will add to the input; null when it holds none back.
    virtual HvPoint2<float> const* Pending() const = 0;
    /// A point as the builder maps it.
    virtual HvPoint2<float> Mapped(HvPoint2<float> const& p) const = 0;
};

#endif
