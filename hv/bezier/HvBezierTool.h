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

class HvBezierSink;
class HvDoubleArray;

/// Flattens Bezier curves of degree 0 to 8 and holds the working state of that; fits cubics to
/// points.
///
/// A scratch object for one thread at a time; any number of curves may be flattened with it, one
/// after the other. Nothing is owned; flattening allocates nothing but what the output arrays need.
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

    // Fitting one cubic to the points `first` to `last`. G1 stands for an end whose direction is
    // given, C0 for one that is free; the first of the two is the start.

    /// Fits a cubic by least squares over its handles; the ends are exactly those of the points.
    ///
    /// @param parameters     one for each point, not descending, such as the length of the polyline
    ///                       up to it; only their proportions count. Where they are of no use, the
    ///                       points count as evenly spaced.
    /// @param startTangent,endTangent  unit directions along the walk at both ends. Zero or no
    ///                       number collapses the handle.
    /// @param tolerance      greatest distance of a point from its foot on the curve, for the
    ///                       controls as rounded to float; 0 or more.
    /// @param maxIterations  rounds of Newton's method that move the parameters to the feet, 0 or
    ///                       more. Fewer are done when they gain nothing, and never more than 32.
    /// @param cubic          the four control points; written only when the fit succeeds.
    /// @param split          written only when it fails and there is a point between the ends: the
    ///                       one farthest from its foot, strictly between `first` and `last`.
    /// @return               1 when every point is within the tolerance, otherwise 0; also 0 unless
    ///                       `first` < `last` are indices of both arrays, and for ends or a
    ///                       tolerance that are no numbers.
    ///
    /// Handles that the points do not determine, and those that would lead backward, are a third
    /// of the chord long. Between the points the curve is not watched. Cost: a round is
    /// proportional to the points; allocates. Source: P. Schneider, "An algorithm for automatically
    /// fitting digitized curves", Graphics Gems, 1990.
    int SingleCurveFitG1G1(HvPoint2fArray const& points, HvDoubleArray const& parameters,
                           unsigned int first, unsigned int last,
                           HvPoint2<double> const& startTangent, HvPoint2<double> const& endTangent,
                           double tolerance, unsigned int maxIterations, HvPoint2<float>* cubic,
                           unsigned int& split);
    /// The same with a free end.
    int SingleCurveFitG1C0(HvPoint2fArray const& points, HvDoubleArray const& parameters,
                           unsigned int first, unsigned int last,
                           HvPoint2<double> const& startTangent, double tolerance,
                           unsigned int maxIterations, HvPoint2<float>* cubic, unsigned int& split);
    /// The same with a free start.
    int SingleCurveFitC0G1(HvPoint2fArray const& points, HvDoubleArray const& parameters,
                           unsigned int first, unsigned int last,
                           HvPoint2<double> const& endTangent, double tolerance,
                           unsigned int maxIterations, HvPoint2<float>* cubic, unsigned int& split);
    /// The same with both ends free.
    int SingleCurveFitC0C0(HvPoint2fArray const& points, HvDoubleArray const& parameters,
                           unsigned int first, unsigned int last, double tolerance,
                           unsigned int maxIterations, HvPoint2<float>* cubic, unsigned int& split);

    // Fitting a polyline by a chain of cubics, as few as the tolerance allows. Neighbouring cubics
    // join in one direction, except at corners.

    /// Draws a fit of an open polyline.
    ///
    /// @param points            the polyline; repeated points count once.
    /// @param cornerCosSquared  a point is a corner when the cosine of the turn is negative, or its
    ///                          square is below this. The turn is that of the steps before and
    ///                          after the point; where they are shorter than four tolerances, so
    ///                          that noise may have turned them, the turn over that distance must
    ///                          be a corner too. Of corners within two tolerances only the sharpest
    ///                          one counts, and within four a less sharp one must be a corner
    ///                          without the points beyond the sharper. The ends count as corners.
    /// @param degree            3; any other draws nothing.
    /// @param tolerance         greatest distance of a point from its foot on the curve; 0 or more.
    /// @param flag              has no effect.
    /// @param sink              takes the cubics, when all are known.
    /// @param continuePath      0: a Moveto to the first point comes first. Otherwise none does.
    /// @return                  points added: 3 for each cubic and 1 for a Moveto. 0, with nothing
    ///                          drawn, for fewer than two points, points that are not finite, and a
    ///                          negative tolerance or one that is no number.
    ///
    /// Between neighbouring points the curve stays near the step from one to the other. Points that
    /// are all equal give one collapsed cubic. Without memory nothing is drawn, unless the sink
    /// itself runs out of it. Cost: n log n at most for n points, about n in practice.
    unsigned int OpenFit(HvPoint2fArray const& points, double cornerCosSquared, unsigned int degree,
                         double tolerance, int flag, HvBezierSink& sink, int continuePath);
    /// The same for a closed polyline, whose last point should repeat the first; otherwise it is
    /// taken as if it did. A Moveto comes first and a Closeto last; where the two meet the curve is
    /// smooth, unless that point is a corner.
    unsigned int ClosedFit(HvPoint2fArray const& points, double cornerCosSquared,
                           unsigned int degree, double tolerance, int flag, HvBezierSink& sink);

    // Smooth curves that go through every point, however close: one cubic for each step of the
    // polyline.

    /// Draws the centripetal Catmull-Rom spline through the points of an open polyline.
    ///
    /// @param points        repeated points count once.
    /// @param sink          takes the cubics.
    /// @param continuePath  0: a Moveto to the first point comes first. Otherwise none does.
    /// @return              points added: 3 for each cubic and 1 for a Moveto. 0, with nothing
    ///                      drawn, for fewer than two points and points that are not finite.
    ///
    /// At a point the curve goes along the bisector of the polyline's turn, and neighbouring cubics
    /// join in one direction; where the polyline turns straight back their handles collapse. No
    /// cubic has a cusp or a loop. The ends go on as they begin: the steps beyond them are the
    /// mirror images of the second and the last but one. Points that are all equal give one
    /// collapsed cubic. Without memory nothing is drawn. Cost: proportional to the points.
    unsigned int OpenCatmullRomFit(HvPoint2fArray const& points, HvBezierSink& sink,
                                   int continuePath);
    /// The same for a closed polyline, whose last point may repeat the first: smooth at the seam
    /// too. A Moveto comes first and a Closeto last.
    unsigned int ClosedCatmullRomFit(HvPoint2fArray const& points, HvBezierSink& sink);

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

    /// Degree of the curve that is flattened.
    unsigned int degree = 0;
    /// Greatest distance of the polyline from the curve.
    double tolerance = 0.0;
    /// 2^depth + 1, or the greatest number of the type where that does not fit.
    unsigned int pointCount = 0;
    /// Points appended so far by the running Flatten.
    unsigned int outputCount = 0;
    /// Binary logarithm of the steps of the current run.
    unsigned int depth = 0;
    /// Where points go in `float`; not owned.
    HvPoint2fArray* floatOutput = nullptr;
    /// Where points go in `double`; not owned.
    HvPoint2dArray* doubleOutput = nullptr;
    /// 1: points go to `doubleOutput`; 0: they go to `floatOutput`.
    int outputIsDouble = 0;
    /// Row after row, row r with the degree + 1 - r differences of order r of the control points.
    HvPoint2<double> differenceTable[45];
    /// The point and its differences, as the steps advance them.
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
