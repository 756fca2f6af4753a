// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Where fitted curves are drawn.

#ifndef HV_BEZIER_HVBEZIERSINK_H
#define HV_BEZIER_HVBEZIERSINK_H

#include <hv/foundation/HvMemory.h>
#include <hv/foundation/HvPoint2.h>
#include <hv/platform/HvExport.h>

/// Takes an outline segment by segment, as a fit finds it. A path takes one through an adapter of
/// its own; a host may derive another and count, draw or store what comes.
///
/// Each segment starts where the one before ended, the first one at the point of the last Moveto. A
/// fit that continues an outline sends no Moveto: its segments start at the point that the receiver
/// has reached. The points are references only for the call. What an operation throws comes out of
/// the fit, and what was drawn before stays.
class HV_API HvBezierSink : public HvAllocated {
public:
    virtual ~HvBezierSink() = default;

    /// Starts a subpath at `p`.
    virtual void Moveto(HvPoint2<float> const& p) = 0;
    /// A straight segment to `p`.
    virtual void Lineto(HvPoint2<float> const& p) = 0;
    /// A cubic with the handles `c1` and `c2` to `p`.
    virtual void Curveto(HvPoint2<float> const& c1, HvPoint2<float> const& c2,
                         HvPoint2<float> const& p) = 0;
    /// Closes the subpath, whose last point is then exactly its first: 1 when it is closed,
    /// otherwise 0.
    virtual int Closeto() = 0;

protected:
    HvBezierSink() = default;
    /// Sinks are copied as parts of their derived classes alone.
    HvBezierSink(HvBezierSink const&) = default;
    /// Sinks are copied as parts of their derived classes alone.
    HvBezierSink& operator=(HvBezierSink const&) = default;
};

#endif
