// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The contract of the builders of property paths.

#ifndef HV_PATHBUILD_HVBASEPATHPROPBUILDER_H
#define HV_PATHBUILD_HVBASEPATHPROPBUILDER_H

#include <hv/foundation/HvMemory.h>
#include <hv/foundation/HvPoint2fArray.h>

#include <memory>

class HvDoubleArray;
class HvPath2fProp1d;
class HvPropTrack;
class HvStroke;
struct HvGC;

/// Turns the points of a pen, each with a value such as its pressure, into a subpath of a property
/// path, and hands back samples with values, for a stroke drawn live.
///
/// Points become outline as by the path builder that each class names; see HvBasePathBuilder for
/// strokes, context and samples. The property is a curve over the arc length of what is built.
///
/// **Places.** A value belongs to the place on the outline that is nearest to its point, where the
/// pen was; lengths are measured within `gc.flatness`. A point no more than `gc.minPointGap` away,
/// on each axis, from the last one farther off is no place of its own: it gives its value to that
/// one, unless that has been committed. The step that closes a subpath leads back to the first
/// value.
///
/// **Tolerance.** The curve passes the value at every place within the tolerance, with few keys, in
/// constant time a point. Its last key moves until it is final: between two calls the end of the
/// property may change within the tolerance. A value that is not finite repeats the one before.
///
/// **Failure.** When std::bad_alloc comes out of a call, the builder may go on. The path is then as
/// it was, or has new segments whose property the next call adds.
///
/// Threads: one at a time, as the path builders.
class HV_API HvBasePathPropBuilder : public HvAllocated {
public:
    HvBasePathPropBuilder(HvBasePathPropBuilder const&) = delete;
    HvBasePathPropBuilder& operator=(HvBasePathPropBuilder const&) = delete;
    virtual ~HvBasePathPropBuilder();

    /// Begins a stroke at `p`.
    void StartSubpath(HvPoint2<float> const& p, double value);
    /// The same at the end of another path, to which the builder turns for good.
    void StartSubpath(HvPoint2<float> const& p, double value, HvPath2fProp1d* target);
    /// Takes in a point with its value.
    ///
    /// @param force  not 0: the outline takes the point as it is.
    void AddInputPoint(HvPoint2<float> const& p, double value, int force);
    /// Commits outline and property of what has arrived and samples it: see
    /// HvBasePathBuilder::GetTrailingSamples.
    HvPoint2fArray const* GetTrailingSamples();
    /// Takes in `p`, commits, and ends the stroke.
    ///
    /// @param closed  not 0: the subpath is led back to its start and closed.
    HvPoint2fArray const* EndSubpath(HvPoint2<float> const& p, double value, int closed);
    /// The property at each of the samples of the last call; the builder's own array, changed by
    /// its next call.
    HvDoubleArray const* GetTrailingValues() const;
    /// Forgets the stroke. What was committed stays in the path.
    void Reset();

protected:
    /// Builds with `stroke`, at the end of `path`, which may be null until a StartSubpath gives
    /// one.
    HvBasePathPropBuilder(HvGC const& gc, HvPath2fProp1d* path, double tolerance,
                          std::unique_ptr<HvStroke> stroke);

private:
    HvPoint2fArray const* Follow(HvPoint2fArray const* samples);

    HvGC const* gc_;
    HvPath2fProp1d* path_;
    std::unique_ptr<HvStroke> stroke_;
    std::unique_ptr<HvPropTrack> track_;
};

#endif
