// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The outline of a path as polylines that break where the outline or the property does.

#include <hv/pathbuild/HvPath2fProp1d.h>

#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/polyline_sample.h>
#include <hv/pathbuild/internal/HvAppendedSamples.h>
#include <hv/pathbuild/internal/HvPropOutline.h>
#include <hv/rotation/HvTransfo4.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvShapeLock.h>

#include <algorithm>
#include <cmath>

namespace {

/// The property of one subpath as points of length and value, from length 0 to that of the
/// subpath. An object serves all subpaths in turn, so that its storage does.
class Breaks {
public:
    explicit Breaks(double flatness) : flatness_(flatness), flat_(64), flatTags_(64), breaks_(64) {}

    double FirstValue() const { return breaks_[0].y; }
    double LastValue() const { return breaks_[Count() - 1].y; }
    /// The value of the last point of the curve, also where that was left out.
    double EndOfCurve() const { return flat_[flat_.Size() - 1].y; }
    unsigned int Count() const { return breaks_.Size(); }
    double Length(unsigned int j) const { return breaks_[j].x; }
    double Value(unsigned int j) const { return breaks_[j].y; }
    /// The value at a length between break `j` - 1 and break `j`.
    double ValueBefore(unsigned int j, double length) const
    {
        HvPoint2<double> const& a = breaks_[j - 1];
        HvPoint2<double> const& b = breaks_[j];
        return a.y + (b.y - a.y) * ((length - a.x) / (b.x - a.x));
    }

    /// Takes the break points of `curve`, its last key coming to lie at `total`. The curve's
    /// parameters need not rise: those that do not come after the one kept before are left out, so
    /// that of a jump the first value counts. The first value holds from 0, whatever the parameter
    /// of its key.
    void Take(HvRawFCurve const& curve, double total)
    {
        flat_.Chop(0);
        flatTags_.Chop(0);
        curve.Flatten(identity_, flatness_, flat_, flatTags_, 0);
        if (flat_.Size() == 0) {
            flat_.Add(0.0, curve.Eval(0.0, 0));
        }
        breaks_.Chop(0);
        breaks_.Add(0.0, flat_[0].y);
        Rescale(total);
        if (breaks_.Size() == 1) {
            breaks_.Add(total, EndOfCurve());
        }
        breaks_[breaks_.Size() - 1].x = total;
    }

private:
    // Appends the points that come after one another on the scale of the subpath.
    void Rescale(double total)
    {
        double const reach = flat_[flat_.Size() - 1].x;
        if (!(reach > 0.0) || !std::isfinite(reach)) {
            return;
        }
        double const scale = total / reach;
        for (unsigned int k = 1; k < flat_.Size(); ++k) {
            double const length = std::min(scale * flat_[k].x, total);
            if (length > breaks_[breaks_.Size() - 1].x) {
                breaks_.Add(length, flat_[k].y);
            }
        }
    }

    HvTransfo4 const identity_;
    double flatness_;
    HvPoint2dArray flat_;
    HvPointTagArray flatTags_;
    HvPoint2dArray breaks_;
};

/// Appends the polyline of a run without its first point, with the breaks of its property between
/// the vertices. A break within `gap` behind the point before it is left out, but still bends the
/// values behind it; a vertex never is.
void AppendMerged(HvPropOutline const& outline, HvPropOutline::Run const& run, Breaks const& breaks,
                  double gap, HvPoint2fArray& pts, HvDoubleArray& values)
{
    HvPoint2fArray const& line = outline.Line();
    HvDoubleArray const& lengths = outline.Lengths();
    HvPolylineCursor cursor(line, lengths, run.first, run.last);
    double before = 0.0;
    unsigned int i = run.first + 1;
    unsigned int j = 1;
    while (i <= run.last && j < breaks.Count()) {
        double const vertex = lengths[i];
        double const length = breaks.Length(j);
        if (vertex < length) {
            pts.Add(line[i++]);
            values.Add(breaks.ValueBefore(j, vertex));
            before = vertex;
        } else if (vertex == length) {
            pts.Add(line[i++]);
            values.Add(breaks.Value(j++));
            before = vertex;
        } else {
            if (length - before > gap && cursor.MoveTo(length)) {
                pts.Add(cursor.PointAt(length));
                values.Add(breaks.Value(j));
                before = length;
            }
            ++j;
        }
    }
    // Doubled points at the end of the line come after the last break.
    for (; i <= run.last; ++i) {
        pts.Add(line[i]);
        values.Add(breaks.LastValue());
    }
}

/// Appends a run with its property and returns the number of points.
unsigned int AppendRun(HvPropOutline const& outline, HvPropOutline::Run const& run, Breaks& breaks,
                       double gap, HvPoint2fArray& pts, HvDoubleArray& values)
{
    HvPoint2fArray const& line = outline.Line();
    unsigned int const before = pts.Size();
    if (run.curve == nullptr) {
        for (unsigned int i = run.first; i <= run.last; ++i) {
            pts.Add(line[i]);
            values.Add(0.0);
        }
        return pts.Size() - before;
    }
    double const total = outline.Lengths()[run.last];
    breaks.Take(*run.curve, total);
    pts.Add(line[run.first]);
    values.Add(breaks.FirstValue());
    if (total < gap) {
        pts.Add(line[run.last]);
        values.Add(breaks.EndOfCurve());
    } else {
        AppendMerged(outline, run, breaks, gap, pts, values);
    }
    return pts.Size() - before;
}

}  // namespace

unsigned int HvPath2fProp1d::Flatten(HvGC const& gc, HvPoint2fArray& pts, HvPointTagArray& ptTags,
                                     HvDoubleArray& values) const
{
    HvShapeLock const lock(*this);
    HvPropOutline const outline(*this, *propCurves, gc);
    HvAppendedSamples appended(pts, ptTags, values);
    Breaks breaks(gc.propFlatness);
    outline.VisitRuns([&](HvPropOutline::Run const& run) {
        unsigned int const count = AppendRun(outline, run, breaks, gc.minPointGap, pts, values);
        for (unsigned int k = 0; k < count; ++k) {
            ptTags.Add(k == 0 ? HvPointTagStart
                              : (k + 1 == count ? HvPointTagEnd : HvPointTagInner));
        }
    });
    return appended.Keep();
}
