// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The contract of the path builders.

#ifndef HV_PATHBUILD_HVBASEPATHBUILDER_H
#define HV_PATHBUILD_HVBASEPATHBUILDER_H

#include <hv/foundation/HvMemory.h>
#include <hv/foundation/HvPoint2fArray.h>

class HvBezierTool;
class HvPath2f;
struct HvGC;

/// Turns the points of a pen, as they arrive, into a subpath of a path, and hands back evenly
/// spaced samples of what it has built, for a stroke drawn live.
///
/// A stroke is a StartSubpath, any number of AddInputPoint and GetTrailingSamples, and one
/// EndSubpath. Points are mapped by `gc.transform` when they come in: path and samples are in
/// device space. Nothing reaches the path but through GetTrailingSamples and EndSubpath, which
/// commit all input that has arrived since. A builder serves any number of strokes, one after the
/// other; a stroke that is given up needs no EndSubpath.
///
/// **Context and path** are borrowed: the caller keeps them alive, and reads of the context happen
/// at each call, so a change of its tolerances holds from then on. Only the end of the path is
/// built on; the path may hold other subpaths before.
///
/// **Numbers.** None is refused. A point with a coordinate that is no number is as near as any
/// other on that axis, so AddInputPoint drops it where both are none. A piece of the stroke whose
/// length is not finite has no samples.
///
/// **Failure.** When std::bad_alloc comes out of a call, the path is as it was, but for the start
/// of the stroke that may be there already, and the builder may go on: what it has taken in is
/// committed by the next call, smoothed once more than otherwise.
///
/// Threads: one at a time. A builder does not lock; the path locks itself for each of its calls.
class HV_API HvBasePathBuilder : public HvAllocated {
public:
    /// Builds at the end of `path`, which may be null until a StartSubpath gives one.
    HvBasePathBuilder(HvGC const& gc, HvPath2f* path);
    HvBasePathBuilder(HvBasePathBuilder const&) = delete;
    HvBasePathBuilder& operator=(HvBasePathBuilder const&) = delete;

    // The virtual operations stand in the order of their slots.

    /// Forgets the stroke that is not ended; the path keeps what was committed.
    virtual ~HvBasePathBuilder();
    /// Begins a stroke at `p`. The path is left alone until there is something to commit.
    virtual void StartSubpath(HvPoint2<float> const& p);
    /// The same at the end of another path, to which the builder turns for good.
    virtual void StartSubpath(HvPoint2<float> const& p, HvPath2f* target);
    /// Takes in a point. The first of a stroke is always taken; another one may be dropped or held
    /// back, as each builder says.
    ///
    /// @param force  not 0: the point is taken as it is.
    virtual void AddInputPoint(HvPoint2<float> const& p, int force) = 0;
    /// Commits what has arrived and samples it.
    ///
    /// @return  the samples since the last call, `gc.sampleSpacing` apart along the stroke, the
    ///          first at its start; the builder's own array, changed by its next call. None before
    ///          the second input point. A spacing that is not above 0 gives none but the ends.
    ///
    /// Cost: proportional to what has arrived, whatever the length of the stroke.
    virtual HvPoint2fArray const* GetTrailingSamples() = 0;
    /// Takes in `p`, unless it is the last point already, commits, and ends the stroke. Its end is
    /// a sample too when it lies more than a tenth of the spacing behind the last one.
    ///
    /// @param closed  not 0: the subpath is led back to its start and closed. A stroke of a single
    ///                point stays a lone start.
    virtual HvPoint2fArray const* EndSubpath(HvPoint2<float> const& p, int closed) = 0;
    /// Forgets the stroke. What was committed stays in the path.
    virtual void Reset();

protected:
    /// What the constructor was given; not owned.
    HvGC const* gc;
    /// Where the stroke goes; not owned.
    HvPath2f* path;
    /// The points of the stroke, in device space.
    HvPoint2fArray input;
    /// Index in `input` of the last point that has gone into the path.
    unsigned int processedIndex;
    /// Index in `path` of the first point of the stroke.
    unsigned int subpathStart;
    /// 1 until the first sample has been given.
    int firstSamples;
    /// 1 until the path has received its Moveto.
    int needMoveto;
    /// Length of the stroke behind the last sample.
    double sampleRemainder;
    /// What the last call gave.
    HvPoint2fArray samples;

    // What the builders share.

    /// A point through the transform of `gc`.
    HvPoint2<float> ToDevice(HvPoint2<float> const& p) const;
    /// Whether two points differ by more than `gc.minPointGap` on either axis.
    bool AreApart(HvPoint2<float> const& a, HvPoint2<float> const& b) const;
    /// Appends a point to `input` unless it equals the last one.
    void AppendUnlessLast(HvPoint2<float> const& p);
    /// Draws each input between `first` and `last`, one after the other, halfway to the middle of
    /// its two neighbours, unless it would then not be apart from the one before.
    void SmoothInput(unsigned int first, unsigned int last);
    /// Sends the Moveto when there is something to start with.
    void StartOutline();
    /// Makes `polyline` the outline of all segments from point `n` of the path on, with the point
    /// where they begin; empty when the path has none. A segment with a number that is not finite
    /// counts as a line, where flattening would ask for more points than there is memory.
    void FlattenAdded(unsigned int n, HvBezierTool& tool, HvPoint2fArray& polyline) const;
    /// Makes `samples` those of line[first] to line[last], which is the end of the line.
    void SampleLine(HvPoint2fArray const& line, unsigned int first, unsigned int last, int addEnd);
    /// Removes the segments from point `n` of the path on, which the running call has added.
    void TakeBack(unsigned int n);
};

#endif
