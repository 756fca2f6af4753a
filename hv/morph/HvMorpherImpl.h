// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What a morpher works on, and the property between two outlines.

#ifndef HV_MORPH_HVMORPHERIMPL_H
#define HV_MORPH_HVMORPHERIMPL_H

#include <hv/foundation/HvDynArray.h>
#include <hv/foundation/HvMemory.h>
#include <hv/platform/HvExport.h>

class HvPath2f;
class HvPath2fProp1d;
struct HvGC;

/// An anchor that travels from a point of the first outline to one of the second.
struct MPathData {
    unsigned int firstIndex;   ///< index of the point on the first outline
    unsigned int secondIndex;  ///< index of the point on the second outline
    HvPath2f const* path;      ///< the road, not owned; null for a straight line
};

/// The outlines and the context of a morph, none of them owned, and its anchors.
struct HV_API HvMorpherImpl : public HvAllocated {
    HvPath2fProp1d const* first;        ///< the outline at 0
    HvPath2fProp1d const* second;       ///< the outline at 1
    HvGC const* gc;                     ///< tolerances and steps
    HvDynArray<MPathData> motionPaths;  ///< the anchors, in the order in which they were added

    /// A morph without anchors.
    HvMorpherImpl(HvPath2fProp1d const* first, HvPath2fProp1d const* second, HvGC const& gc);

    /// Whether there are two outlines; without one there is nothing between.
    bool HasOutlines() const { return first != nullptr && second != nullptr; }

    /// Gives a subpath of `out` the property between those of two whole subpaths, each named by the
    /// index of its first point.
    ///
    /// With two curves both are read at `steps` even steps over their lengths; the parameter of the
    /// result is that of the longer one, and it is kept within `gc.propFlatness`. A single curve is
    /// copied; without any nothing happens.
    void SetThePropertyCurve(double t, HvPath2fProp1d& out, unsigned int steps,
                             unsigned int firstSubpath, unsigned int secondSubpath,
                             unsigned int outSubpath) const;

    /// The same for stretches of subpaths: of `firstSteps` even steps over the length of the first
    /// curve those from `firstStart` on, of the second likewise, `samples` places in all. The
    /// parameter of the result starts at 0 and advances by the longer step. A single curve is read
    /// by itself.
    void SetThePropertyCurve(double t, unsigned int firstSubpath, unsigned int firstStart,
                             unsigned int firstSteps, unsigned int secondSubpath,
                             unsigned int secondStart, unsigned int secondSteps,
                             unsigned int samples, HvPath2fProp1d& out,
                             unsigned int outSubpath) const;
};

#endif
