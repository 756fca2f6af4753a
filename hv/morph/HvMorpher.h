// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The outline between two outlines.

#ifndef HV_MORPH_HVMORPHER_H
#define HV_MORPH_HVMORPHER_H

#include <hv/foundation/HvMemory.h>
#include <hv/platform/HvExport.h>

#include <memory>

class HvPath2f;
class HvPath2fProp1d;
struct HvGC;
struct HvMorpherImpl;

/// Turns one outline into another: for a morph value `t` it appends the outline in between, with
/// its property curves, to a path of the caller's.
///
/// t = 0 gives the first outline, t = 1 the second; nothing clamps it, so that other values go on
/// beyond the two. Both outlines are flattened and divided into as many even steps as the longer
/// one has of `gc.minPointGap`; the samples are blended, and the polyline between is fitted by
/// cubics within that distance again, with corners as `gc.cornerCosSquared` tells. The property
/// curves are blended over as many steps and kept within `gc.propFlatness`.
///
/// Outlines and context are not owned and must outlive the morpher. An outline without a point,
/// or none at all (null), morphs into nothing. A morph reads both outlines before it changes `out`,
/// which may be one of them, and changes it in one piece.
///
/// No lock of its own: any number of threads may morph with one morpher, while nobody adds motion
/// paths. Each call of the outlines and of `out` takes their lock for itself. The context must not
/// change during a morph.
///
/// When std::bad_alloc comes out, which is also the answer to more steps than an array holds, `out`
/// is as it was. Cost: linear in the length of the longer outline over `gc.minPointGap`.
class HV_API HvMorpher : public HvAllocated {
public:
    /// A morph from `first` to `second`; all three must outlive it. Without one of the outlines
    /// there is nothing between.
    HvMorpher(HvPath2fProp1d const* first, HvPath2fProp1d const* second, HvGC const& gc);
    ~HvMorpher();
    HvMorpher(HvMorpher const&) = delete;
    HvMorpher& operator=(HvMorpher const&) = delete;

    /// Adds an anchor for LinearMotionPathMorph: a point of the first outline, the point of the
    /// second that it goes to, and the road between, which must outlive the morpher; null is the
    /// straight line. Anchors only accumulate, and the first two count. Always 1.
    int SetMotionPath(unsigned int firstIndex, unsigned int secondIndex, HvPath2f const* path);

    /// Blends the places of corresponding samples. Always 1.
    ///
    /// Siblings (HvPath2f::IsSiblingOf) are blended exactly, point by point, and `out` becomes the
    /// result; see HvPath2fProp1d::SetToLerpAB.
    ///
    /// As many subpaths in both: they are paired in their order, and a pair gives a closed subpath
    /// when both are closed. Otherwise all subpaths of an outline are walked as one tour, which
    /// ends with the shorter list; a stretch of both that lies within a subpath of each becomes a
    /// subpath, a closed one when it ends within `gc.minPointGap` of its start.
    int LinearMorph(double t, HvPath2fProp1d& out) const;

    /// Blends directions and step lengths of the outlines, as a turtle walks them; see
    /// HvPoint2fArraySingleComponent_TurtleInterp. Always 1.
    ///
    /// Each outline counts as one polyline, gaps between its subpaths as steps. The result is one
    /// open subpath, with the property of the outlines' first subpaths.
    int TurtleMorph(double t, HvPath2fProp1d& out) const;

    /// Blends the sections of the outlines between their anchors, after both have been turned,
    /// scaled and moved so that their ends lie on the travelling anchors.
    ///
    /// An anchor on a straight road is at PA + t * (PB - PA). On a path it is at `t` of the length
    /// of the path, whose ends are never reached: there the outlines' own points stand. Ends of a
    /// section that are not 1e-7 apart leave it where it is. The result is one open subpath, with
    /// the property of the outlines' first subpaths, whole.
    ///
    /// @return  1; 0, with `out` as it was, for fewer than two anchors, for anchors that do not
    ///          ascend on both outlines, and for those that lie outside.
    int LinearMotionPathMorph(double t, HvPath2fProp1d& out) const;

private:
    std::unique_ptr<HvMorpherImpl> impl_;
};

#endif
