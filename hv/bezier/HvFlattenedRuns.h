// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Visible pieces of a curve, kept as runs in three parallel arrays.

#ifndef HV_BEZIER_HVFLATTENEDRUNS_H
#define HV_BEZIER_HVFLATTENEDRUNS_H

#include <hv/foundation/HvBoolArray.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPointTagArray.h>

/// Writes edges into a caller's points, tags and flags, one entry of each per vertex. Edges that
/// meet, by exact comparison, become one run; a gap ends the run and starts the next. The flag of a
/// vertex is 0 where an edge that is no part of the curve starts, otherwise 1.
///
/// The arrays are appended to, and what they hold at first counts: an edge may go on from their
/// last vertex. They stay parallel also when std::bad_alloc goes out. The last vertex keeps the tag
/// HvPointTagInner: who knows that nothing follows calls EndRun. Not thread-safe; owns nothing.
class HV_API HvFlattenedRuns {
public:
    /// Appends to three arrays, which must outlive this object.
    HvFlattenedRuns(HvPoint2dArray& points, HvPointTagArray& tags, HvBoolArray& flags)
        : points_(points), tags_(tags), flags_(flags)
    {
    }

    /// Starts an edge of the curve at `p`: nothing when the last vertex is `p`; otherwise the last
    /// vertex, if any, ends its run with the flag `flagOfBreak`, and `p` starts the next.
    void BeginEdge(HvPoint2<double> const& p, int flagOfBreak);
    /// Starts an edge that is a jump at `p`, where the last vertex may stand already. Both the
    /// vertex that ends a run here and the one that starts the jump get the flag 0.
    void BeginJump(HvPoint2<double> const& p);
    /// Ends the edge at `p`.
    void EndEdge(HvPoint2<double> const& p);
    /// Gives `count` vertices that were appended to the points alone their tags and flags, as ends
    /// of edges.
    void AdoptPoints(unsigned int count);
    /// Makes the last vertex, if any, the end of its run.
    void EndRun();

    /// The state of the arrays, to which CutBack returns.
    struct Mark {
        unsigned int points;  ///< size of the points
        unsigned int tags;    ///< size of the tags
        unsigned int flags;   ///< size of the flags
        HvPointTag lastTag;   ///< the tag of the last vertex
        int lastFlag;         ///< the flag of the last vertex
    };
    /// The state of the arrays now.
    Mark GetMark() const;
    /// Removes what was added since `mark` was taken; the storage stays.
    void CutBack(Mark const& mark);

private:
    bool IsAt(HvPoint2<double> const& p) const;
    void Break(int flag);
    void Append(HvPoint2<double> const& p, HvPointTag tag, int flag);

    HvPoint2dArray& points_;
    HvPointTagArray& tags_;
    HvBoolArray& flags_;
};

#endif
