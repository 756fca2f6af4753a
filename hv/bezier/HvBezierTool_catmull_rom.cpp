// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Curves through all points: centripetal Catmull-Rom splines as cubics.
//
// At a point P between the chords a from the point before and b to the point after, the spline over
// the knot distances s and t has the derivative
//
//     D = (t (a / s) + s (b / t)) / (s + t),
//
// that of the parabola through the three points, and the cubics on both sides have the handles
// -D s / 3 and D t / 3. The centripetal distances are s = sqrt |a| and t = sqrt |b|, which leaves
//
//     D = s t (a / |a| + b / |b|) / (s + t):
//
// the direction is the bisector of the turn, and the longer chord has the longer handle. Only where
// the polyline turns straight back is there no direction. With these distances, and with no others
// of their kind, a cubic has neither a cusp nor a loop.
//
// Source: E. Catmull, R. Rom, "A class of local interpolating splines", 1974; P. Barry, R. Goldman,
// "A recursive evaluation algorithm for a class of Catmull-Rom splines", 1988; C. Yuksel, S.
// Schaefer, J. Keyser, "Parameterization and applications of Catmull-Rom curves", 2011.

#include <hv/bezier/HvBezierTool.h>

#include <hv/bezier/HvBezierSink.h>
#include <hv/bezier/internal/distinct_points.h>
#include <hv/bezier/internal/float_point.h>

#include <cmath>

namespace {

using Vector = HvPoint2<double>;

/// A step of the polyline: its direction, and the knot distance, the root of its length.
struct Chord {
    Vector unit;
    double distance;
};

/// The step between two different points; no difference of floats overflows in double.
Chord ChordOf(HvPoint2<float> const& from, HvPoint2<float> const& to)
{
    Vector const step = Vector(to) - Vector(from);
    double const length = HvPoint2_Length(step);
    return {step * (1.0 / length), std::sqrt(length)};
}

/// The step that comes before `chord` when the polyline goes on at that end as it does at the
/// other, by the chord `next`: its mirror image. Points along a circle go on along it.
Chord Mirrored(Chord const& chord, Chord const& next)
{
    return {chord.unit * (2.0 * HvPoint2_AdotB(chord.unit, next.unit)) - next.unit, next.distance};
}

/// A third of the derivative at the point between two chords.
Vector ThirdOfDerivative(Chord const& before, Chord const& after)
{
    double const s = before.distance;
    double const t = after.distance;
    return (before.unit + after.unit) * (s * t / (3.0 * (s + t)));
}

/// Draws the cubics through points that differ from their neighbours; a closed polyline repeats its
/// first point at its end.
unsigned int Draw(HvPoint2fArray const& points, bool isClosed, HvBezierSink& sink)
{
    unsigned int const last = points.Size() - 1;
    if (last == 0) {
        sink.Curveto(points[0], points[0], points[0]);
        return 3;
    }
    Chord const first = ChordOf(points[0], points[1]);
    Chord const final = ChordOf(points[last - 1], points[last]);
    Chord before = isClosed    ? final
                   : last == 1 ? first
                               : Mirrored(first, ChordOf(points[1], points[2]));
    Chord chord = first;
    for (unsigned int i = 0; i < last; ++i) {
        Chord const after = i + 1 < last ? ChordOf(points[i + 1], points[i + 2])
                            : isClosed   ? first
                                         : Mirrored(chord, before);
        Vector const start(points[i]);
        Vector const end(points[i + 1]);
        sink.Curveto(
            HvFloatPoint_Nearest(start + ThirdOfDerivative(before, chord) * chord.distance),
            HvFloatPoint_Nearest(end - ThirdOfDerivative(chord, after) * chord.distance),
            points[i + 1]);
        before = chord;
        chord = after;
    }
    return 3 * last;
}

bool CanDraw(HvPoint2fArray const& points)
{
    return points.Size() >= 2 && HvDistinctPoints_AreFinite(points);
}

}  // namespace

unsigned int HvBezierTool::OpenCatmullRomFit(HvPoint2fArray const& points, HvBezierSink& sink,
                                             int continuePath)
{
    if (!CanDraw(points)) {
        return 0;
    }
    HvPoint2fArray const distinct = HvDistinctPoints_Of(points, false);
    if (continuePath != 0) {
        return Draw(distinct, false, sink);
    }
    sink.Moveto(distinct[0]);
    return 1 + Draw(distinct, false, sink);
}

unsigned int HvBezierTool::ClosedCatmullRomFit(HvPoint2fArray const& points, HvBezierSink& sink)
{
    if (!CanDraw(points)) {
        return 0;
    }
    HvPoint2fArray const distinct = HvDistinctPoints_Of(points, true);
    sink.Moveto(distinct[0]);
    unsigned int const added = 1 + Draw(distinct, true, sink);
    sink.Closeto();
    return added;
}
