// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Bezier curves of any degree up to 8; the operations on single cubics come along.

#ifndef HV_BEZIER_HVBEZIERTOOL_H
#define HV_BEZIER_HVBEZIERTOOL_H

#include <hv/bezier/HvBezierTool_clip.h>
#include <hv/bezier/HvBezierTool_extent.h>
#include <hv/bezier/HvBezierTool_flatten.h>
#include <hv/bezier/HvBezierTool_locate.h>
#include <hv/bezier/HvBezierTool_split.h>
#include <hv/bezier/quadratic.h>
#include <hv/foundation/HvPoint2.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPoint2fArray.h>

/// Flattens Bezier curves of degree 0 to 8 and holds the working state of that.
///
/// A scratch object for one thread at a time; any number of curves may be flattened with it, one
/// after the other. Nothing is owned and nothing allocated but what the output arrays need.
class HV_API HvBezierTool {
public:
    /// All state zero.
    HvBezierTool() = default;
    ~HvBezierTool() = default;

    /// 8.
    unsigned int MaxDegreeForThisImplementation() const;

    /// Appends a polyline of the curve points[start] to points[start + degree], whose distance from
    /// it, measured across the chord of each piece, is within `tolerance`. For cubics it places the
    /// points of HvBezierTool_FlattenCubic2f.
    ///
    /// @param points     control points; they may lie in the storage of `out`.
    /// @param degree     0 to 8; 0 and 1 give the ends. Above 8 nothing is appended and 0 returned.
    /// @param tolerance  above 0, in the unit of the points.
    /// @param out        the points are appended to it. More points than it can hold are refused by
    ///                   std::bad_alloc; it then holds what it held before.
    /// @param skipFirst  not 0: the first point is not appended.
    /// @return           number of points appended.
    ///
    /// Cost: `degree` additions for each point.
    unsigned int Flatten(HvPoint2<double> const* points, unsigned int start, unsigned int degree,
                         double tolerance, HvPoint2dArray* out, int skipFirst);
    /// The form in float; all arithmetic is in double and each point is rounded at its appending.
    unsigned int Flatten(HvPoint2<float> const* points, unsigned int start, unsigned int degree,
                         double tolerance, HvPoint2fArray* out, int skipFirst);
    /// The same with the control points in an array, which may be `out`.
    unsigned int Flatten(HvPoint2fArray const& points, unsigned int start, unsigned int degree,
                         double tolerance, HvPoint2fArray* out, int skipFirst);

    /// Estimates the number of points of a flattened curve, as if it were not halved first: degree
    /// + 1 below degree 2, 0 above degree 8. No bound in spite of its name; the array has to grow.
    unsigned int FlatPolylineSizeUpperBound(HvPoint2<float> const* points, unsigned int start,
                                            unsigned int degree, double tolerance);

    // The steps of Flatten. `points` are `degree` + 1 control points of the piece at hand; the
    // output pointer that `outputIsDouble` names must be set where points are appended. Above
    // degree 8 they do nothing.

    /// Fills `differenceTable`, `depth` and `pointCount` from the control points, `degree` and
    /// `tolerance`.
    void ContextInitOne(HvPoint2<double> const* points);
    /// Fills `forwardDifferences` from `differenceTable` and `depth`.
    void ContextInitTwo();
    /// Appends the `pointCount` - 2 inner points of a run by forward differences.
    void OFDInnerLoop();
    /// Levels of midpoint subdivision that `differenceTable` asks for, 0 to 10.
    unsigned int DepthPMSOFD();
    /// Appends the inner points of a curve: halves it `depth` times, at most 31, and runs forward
    /// differences over each piece.
    void PMSOFD(HvPoint2<double> const* points, unsigned int depth);

    unsigned int degree = 0;
    double tolerance = 0.0;
    /// 2^depth + 1, or the greatest number of the type where that does not fit.
    unsigned int pointCount = 0;
    /// Points appended so far by the running Flatten.
    unsigned int outputCount = 0;
    /// Binary logarithm of the steps of the current run.
    unsigned int depth = 0;
    HvPoint2fArray* floatOutput = nullptr;
    HvPoint2dArray* doubleOutput = nullptr;
    /// 1: points go to `doubleOutput`; 0: they go to `floatOutput`.
    int outputIsDouble = 0;
    /// Row after row, row r with the degree + 1 - r differences of order r of the control points.
    HvPoint2<double> differenceTable[45];
    HvPoint2<double> forwardDifferences[9];

private:
    template <class Element, class Array>
    unsigned int FlattenPoints(Element const* points, unsigned int curveDegree, double within,
                               Array& out, int skipFirst);
    void SetOutput(HvPoint2fArray& out);
    void SetOutput(HvPoint2dArray& out);
    void Append(HvPoint2<double> const& point);
    HvPoint2<double> const* DifferenceRow(unsigned int order) const;
    void FillDifferenceTable(HvPoint2<double> const* points);
    double Deviation(HvPoint2<double> const* points) const;
};

#endif
