// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The values of a stroke, and how they come to lie along its outline.

#ifndef HV_PATHBUILD_INTERNAL_HVPROPTRACK_H
#define HV_PATHBUILD_INTERNAL_HVPROPTRACK_H

#include <hv/bezier/HvBezierTool.h>
#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPoint2fArray.h>
#include <hv/pathbuild/internal/HvSwingFilter.h>

class HvPath2fProp1d;
class HvRawFCurve;
struct HvGC;

/// Follows a stroke with the values of its points.
///
/// Two lengths measure a stroke: the way of the pen, from point to point as they came in, and the
/// arc along what was built of them. The outline passes through some points of the builder's input,
/// its nodes; there both lengths are known, and between two nodes they go in proportion. So a
/// value, known by its place on the way, finds its place on the arc, where the curve takes it.
///
/// Every step leaves what it needs to be taken again when it ends in std::bad_alloc.
class HvPropTrack : public HvAllocated {
public:
    explicit HvPropTrack(double tolerance);

    void Reset();
    /// Takes in a point. A value that is not finite repeats the one before.
    ///
    /// @param gap  a point that is not farther than this from the last place, on either axis, is at
    ///             that place.
    void Add(HvPoint2<float> const& q, double value, double gap);
    /// Notes the places of the points that the builder has added to its input.
    void FollowInput(HvPoint2fArray const& input);
    /// Notes the place of a point that a commit will add to the input, behind those noted.
    void Expect(HvPoint2<float> const& q);
    /// Takes in the step that leads back to the first point and value.
    void Close();

    /// Brings the property of the last subpath of `path` up to its end.
    ///
    /// @param input     the builder's input, all of which is in the path.
    /// @param flatness  of the polylines by which the arc is measured.
    void Commit(HvPath2fProp1d& path, HvPoint2fArray const& input, double flatness);

    /// Makes Values() the property at `count` samples, `spacing` apart, that go on from those
    /// before.
    void Sample(HvPath2fProp1d const& path, unsigned int count, double spacing);
    HvDoubleArray const& Values() const { return samples_; }

private:
    double WayOf(HvPoint2<float> const& q) const;
    void MeasureArc(HvPath2fProp1d const& path, HvPoint2fArray const& input, double flatness);
    void AppendSegment(HvPath2fProp1d const& path, unsigned int start, unsigned int end,
                       double flatness);
    double FootOf(HvPoint2<float> const& q, double low, double high, double guess);
    double PlaceOf(unsigned int i, unsigned int node);
    void FilterValues();
    void WriteKeys(HvRawFCurve& curve);

    // The way.
    HvPoint2fArray points_;    // points that are not committed yet, as they came in,
    HvDoubleArray ways_;       // their places,
    HvDoubleArray values_;     // and values
    HvPoint2<float> first_;    // the first point of the stroke,
    double firstValue_ = 0.0;  // and its value
    HvPoint2<float> place_;    // the last point that is a place of its own,
    double way_ = 0.0;         // and where that is
    double lastValue_ = 0.0;
    bool hasFirst_ = false;
    HvDoubleArray inputWays_;  // the places of the builder's input

    // The arc.
    unsigned int start_ = 0;     // the first point of the subpath
    unsigned int measured_ = 0;  // the node of the path up to which the arc is known,
    unsigned int node_ = 0;      // the point of the input that it is,
    double arc_ = 0.0;           // and where it lies
    HvPoint2dArray nodes_;       // way and arc of the nodes of this commit and of the last before
    bool hasSubpath_ = false;
    HvPoint2fArray line_;     // the outline of this commit,
    HvDoubleArray arcs_;      // where its points lie,
    unsigned int edge_ = 0;   // and the edge that a place has been found on
    HvPoint2fArray segment_;  // the outline of one segment
    HvBezierTool tool_;

    // The property.
    HvSwingFilter filter_;
    HvPoint2dArray keys_;       // final keys,
    unsigned int nextKey_ = 0;  // of which those from this one on are not in the curve yet
    bool hasKey_ = false;       // the first key has been made
    bool hasCurve_ = false;     // the subpath has been given its curve
    bool hasEnd_ = false;       // the last key of the curve is not final
    HvDoubleArray samples_;
    double arcOfSample_ = 0.0;
    bool hasSample_ = false;
};

#endif
