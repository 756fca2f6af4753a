// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Subpaths as polylines, the way every operation of a path flattens them.

#ifndef HV_SHAPE_INTERNAL_HVPATHFLATTENER_H
#define HV_SHAPE_INTERNAL_HVPATHFLATTENER_H

#include <hv/bezier/HvBezierTool.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/rotation/HvTransfo4.h>
#include <hv/shape/internal/HvPathTags.h>

#include <type_traits>

/// The points of a path, its structure and how it is flattened. All are borrowed: a flattener lives
/// within one operation that holds the path.
///
/// The control points are mapped in the type of the output, so a polyline of float is narrowed
/// before it is flattened and one of double never.
template <class T>
class HvPathFlattener {
public:
    using Points = std::conditional_t<std::is_same_v<T, float>, HvPoint2fArray, HvPoint2dArray>;

    /// @param transform  maps the points; null for the path's own coordinates.
    HvPathFlattener(HvPoint2fArray const& points, HvUByteArray const& tags,
                    HvTransfo4 const* transform, double tolerance)
        : points_(points), structure_(tags), transform_(transform), tolerance_(tolerance)
    {
    }

    HvPathTags const& Structure() const { return structure_; }

    /// A control point, mapped.
    HvPoint2<T> Mapped(unsigned int i) const
    {
        HvPoint2<T> p(points_[i]);
        return transform_ == nullptr ? p : transform_->Map(p);
    }

    /// The control points of a segment, mapped.
    struct Segment {
        HvPoint2<T> points[kHvPathMaxDegree + 1];
        unsigned int degree;
    };

    /// The segment whose start is `start` and whose other points follow it up to `end`.
    Segment MappedSegment(unsigned int start, unsigned int end) const
    {
        Segment segment;
        segment.degree = end - start;
        for (unsigned int k = 0; k <= segment.degree; ++k) {
            segment.points[k] = HvPoint2<T>(points_[start + k]);
        }
        if (transform_ != nullptr) {
            transform_->MapInPlace(segment.points, segment.degree + 1);
        }
        return segment;
    }

    /// Appends the polyline of a segment without its first point.
    void AppendSegment(Segment const& segment, Points& out)
    {
        if (segment.degree == 3) {
            AppendCubic(segment.points, out);
        } else {
            tool_.Flatten(segment.points, 0, segment.degree, tolerance_, &out, 1);
        }
    }
    void AppendSegment(unsigned int start, unsigned int end, Points& out)
    {
        AppendSegment(MappedSegment(start, end), out);
    }

    /// Calls `visit(start, end)` for each segment from `first` to `last`, points of one subpath;
    /// stops, and returns false, when it returns false. A segment that is cut short ends at `last`.
    template <class Visit>
    bool VisitSegments(unsigned int first, unsigned int last, Visit visit) const
    {
        for (unsigned int start = first; start < last;) {
            unsigned int const end = std::min(structure_.NextSegment(start + 1) - 1, last);
            if (!visit(start, end)) {
                return false;
            }
            start = end;
        }
        return true;
    }

    /// Appends the polyline of the subpath from `first` to `last` and returns how many points it
    /// has; a subpath without a segment has none.
    unsigned int AppendSubpath(unsigned int first, unsigned int last, Points& out)
    {
        if (first == last) {
            return 0;
        }
        unsigned int const before = out.Size();
        out.Add(Mapped(first));
        VisitSegments(first, last, [&](unsigned int start, unsigned int end) {
            AppendSegment(start, end, out);
            return true;
        });
        return out.Size() - before;
    }

    /// Calls `visit(first, last)` for each subpath of the path.
    template <class Visit>
    void VisitSubpaths(Visit visit) const
    {
        for (unsigned int first = 0; first < structure_.Count();) {
            unsigned int const last = structure_.LastOfSubpath(first);
            visit(first, last);
            first = last + 1;
        }
    }

private:
    void AppendCubic(HvPoint2<float> const* cubic, HvPoint2fArray& out) const
    {
        HvBezierTool_FlattenCubic2f(cubic, tolerance_, &out, 1);
    }
    void AppendCubic(HvPoint2<double> const* cubic, HvPoint2dArray& out) const
    {
        HvBezierTool_FlattenCubic2d(cubic, tolerance_, &out, 1);
    }

    HvPoint2fArray const& points_;
    HvPathTags structure_;
    HvTransfo4 const* transform_;
    double tolerance_;
    HvBezierTool tool_;
};

/// Appends the tags of a run of `count` points: a start, inner ones, an end.
inline void HvPathRun_AppendTags(unsigned int count, HvPointTagArray& tags)
{
    for (unsigned int k = 0; k < count; ++k) {
        tags.Add(k == 0 ? HvPointTagStart : (k + 1 == count ? HvPointTagEnd : HvPointTagInner));
    }
}

#endif
