// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Where the flattened pieces of a curve go.

#ifndef HV_FCURVE_INTERNAL_CFCFLATTENOUTPUT_H
#define HV_FCURVE_INTERNAL_CFCFLATTENOUTPUT_H

#include <hv/bezier/HvBezierTool_clip.h>
#include <hv/fcurve/flatten_edges.h>
#include <hv/rotation/HvTransfo4.h>

/// A view on a curve: pieces come in curve space, are mapped by one transform, clipped in view
/// space and appended to the caller's arrays. One key point must always be mapped by the same
/// transform: edges join by exact comparison of the mapped points.
class CFCFlattenOutput {
public:
    CFCFlattenOutput(HvTransfo4 const& transfo, double tolerance, HvExtent2<double> const& clip,
                     HvPoint2dArray& points, HvPointTagArray& tags, HvBoolArray& flags)
        : transfo_(transfo), tolerance_(tolerance), clip_(clip), points_(points), tags_(tags),
          flags_(flags)
    {
    }

    /// The same arrays and clip under `transfo`: the view of one cycle.
    CFCFlattenOutput WithTransfo(HvTransfo4 const& transfo) const
    {
        return CFCFlattenOutput(transfo, tolerance_, clip_, points_, tags_, flags_);
    }

    HvExtent2<double> const& Clip() const { return clip_; }
    /// Whether the image of a point of curve space lies in the clip.
    bool Shows(HvPoint2<double> const& p) const { return clip_.Contains(transfo_.Map(p)) != 0; }

    void AddLine(HvPoint2<double> const& from, HvPoint2<double> const& to)
    {
        HvPoint2<double> a = transfo_.Map(from);
        HvPoint2<double> b = transfo_.Map(to);
        ClipAndAddLineSegment(a, b, clip_, points_, tags_, flags_);
    }
    void AddJump(HvPoint2<double> const& from, HvPoint2<double> const& to)
    {
        HvPoint2<double> a = transfo_.Map(from);
        HvPoint2<double> b = transfo_.Map(to);
        ClipAndAddDiscontinuity(a, b, clip_, points_, tags_, flags_);
    }
    /// The cubic with the control points P[0] to P[3].
    void AddCubic(HvPoint2<double> const* P)
    {
        HvPoint2<double> mapped[4];
        transfo_.Map(P, 4, mapped);
        HvBezierTool_ClipAndFlattenCubic2d(mapped, tolerance_, clip_, &points_, &tags_, &flags_);
    }

private:
    HvTransfo4 transfo_;
    double tolerance_;
    HvExtent2<double> clip_;
    HvPoint2dArray& points_;
    HvPointTagArray& tags_;
    HvBoolArray& flags_;
};

/// Appends two vertices as a run of their own.
inline void CFCFlatten_AddPair(HvPoint2<double> const& a, HvPoint2<double> const& b, int flag,
                               HvPoint2dArray& points, HvPointTagArray& tags, HvBoolArray& flags)
{
    points.Add(a);
    tags.Add(HvPointTagStart);
    flags.Add(flag);
    points.Add(b);
    tags.Add(HvPointTagEnd);
    flags.Add(flag);
}

#endif
