// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// One angle of a rotation as a polyline.
//
// An angle has no closed form whose bends could be told beforehand, so each piece between two keys
// is sampled evenly and every span of samples is halved until the curve at its middle and quarters
// is near its chord. Where the values of a span do not come together however often it is halved
// the angle jumps, by a turn or to the other triple of angles of the same rotation.

#include <hv/fcurve/internal/CFCFlattenOutput.h>
#include <hv/fcurve/internal/HvQuatFCurveImpl.h>
#include <hv/fcurve/internal/cycle_span.h>

#include <hv/bezier/HvFlattenedRuns.h>
#include <hv/bezier/line_clip.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <new>

namespace {

/// Spans that a piece is divided into before any is looked at; a bend that three probes of each do
/// not meet is not seen.
constexpr int kSpansOfPiece = 16;
/// More of them for each turn that a segment adds.
constexpr int kSpansOfTurn = 16;
/// How often a span is halved to follow a bend: enough for a millionth of a piece that swings fast.
constexpr int kDeepestBend = 12;
/// How often the span of a jump is halved: to the last bit of a parameter.
constexpr int kDeepestJump = 64;
/// No tolerance is finer than this part of a piece's size. It bounds the vertices of a piece to
/// about a thousand where the curve is smooth.
constexpr double kFinestPart = 1e-6;
/// Values nearer than this join, degrees: the same angle found on two ways.
constexpr double kJoinDegrees = 1e-6;
/// An angle jumps by more than this inside a segment: by a turn, or near half a turn when it goes
/// over to the other triple of angles of the same rotation.
constexpr double kLeastJumpDegrees = 1.0;
/// Most pieces outside of the keys. A view of so many shows none of them; what it would take is
/// refused like memory that is not there.
constexpr double kMostPieces = 1048576;

using Point = HvPoint2<double>;

/// Draws pieces of a component one after the other, from left to right.
class Drawing {
public:
    Drawing(HvQuatFCurveImpl const& impl, HvTransfo4 const& transfo, double tolerance,
            CFCFlattenOutput& out)
        : impl_(impl), transfo_(transfo), tolerance_(tolerance > 0 ? tolerance : 0), out_(out)
    {
    }

    /// A piece of constant value.
    void AddLevel(double from, double to, double value)
    {
        BeginAt({from, value});
        LineTo({to, value});
    }
    /// A piece inside the keys, ends included, or outside.
    void AddPiece(double from, double to, int turns, bool isInside);

private:
    struct Sample {
        double x;
        double y;
    };

    double Value(double x) const { return impl_.Curve().Eval(x, impl_.component); }
    Point Mapped(Sample const& s) const { return transfo_.Map(Point(s.x, s.y)); }

    void BeginAt(Point const& p);
    void LineTo(Point const& p);
    void JumpTo(Point const& p);
    void AddSpan(Sample const& a, Sample const& b, double tolerance, int depth);
    void AddSteepSpan(Sample a, Sample b);
    bool IsNear(Sample const& a, Sample const& b, Sample const& probe, double tolerance) const;
    bool IsOffView(Sample const& a, Sample const& b, Sample const& middle) const;

    HvQuatFCurveImpl const& impl_;
    HvTransfo4 const& transfo_;
    double tolerance_;
    CFCFlattenOutput& out_;
    bool hasBegun_ = false;
    Point last_;
};

/// Starts a piece where the one before has ended, with a jump unless they meet.
void Drawing::BeginAt(Point const& p)
{
    if (!hasBegun_) {
        hasBegun_ = true;
        last_ = p;
    } else if (std::fabs(p.y - last_.y) > kJoinDegrees) {
        JumpTo(p);
    }
}

void Drawing::LineTo(Point const& p)
{
    out_.AddLine(last_, p);
    last_ = p;
}

void Drawing::JumpTo(Point const& p)
{
    out_.AddJump(last_, p);
    last_ = p;
}

/// Whether the curve at `probe` is within `tolerance` of the chord from a to b in the view.
bool Drawing::IsNear(Sample const& a, Sample const& b, Sample const& probe, double tolerance) const
{
    Point const p = Mapped(a);
    Point const chord = Mapped(b) - p;
    Point const d = Mapped(probe) - p;
    double const length = std::hypot(chord.x, chord.y);
    double const along = length > 0 ? (d.x * chord.x + d.y * chord.y) / length : 0;
    if (!(along > 0)) {
        return std::hypot(d.x, d.y) <= tolerance;
    }
    if (along > length) {
        return std::hypot(d.x - chord.x, d.y - chord.y) <= tolerance;
    }
    return std::fabs(d.x * chord.y - d.y * chord.x) <= tolerance * length;
}

/// Whether the span lies above or below the view.
bool Drawing::IsOffView(Sample const& a, Sample const& b, Sample const& middle) const
{
    HvExtent2<double> const& clip = out_.Clip();
    double const y[] = {Mapped(a).y, Mapped(b).y, Mapped(middle).y};
    bool const isAbove = std::all_of(y, y + 3, [&](double v) { return v > clip.max.y; });
    bool const isBelow = std::all_of(y, y + 3, [&](double v) { return v < clip.min.y; });
    return clip.state == HvExtent2<double>::Ordinary && (isAbove || isBelow);
}

void Drawing::AddSpan(Sample const& a, Sample const& b, double tolerance, int depth)
{
    double const x = a.x + 0.5 * (b.x - a.x);
    Sample const middle{x, Value(x)};
    bool const isNumber = std::isfinite(a.y) && std::isfinite(b.y) && std::isfinite(middle.y);
    if (!isNumber || !(a.x < x && x < b.x) || IsOffView(a, b, middle)) {
        LineTo({b.x, b.y});
        return;
    }
    if (IsNear(a, b, middle, tolerance)) {
        double const leftX = a.x + 0.25 * (b.x - a.x);
        double const rightX = a.x + 0.75 * (b.x - a.x);
        Sample const left{leftX, Value(leftX)};
        Sample const right{rightX, Value(rightX)};
        if (IsNear(a, b, left, tolerance) && IsNear(a, b, right, tolerance)) {
            // The line through a narrow span is near a jump in it as well.
            double const step = std::max({std::fabs(left.y - a.y), std::fabs(middle.y - left.y),
                                          std::fabs(right.y - middle.y), std::fabs(b.y - right.y)});
            if (step > kLeastJumpDegrees && step > 0.75 * std::fabs(b.y - a.y)) {
                AddSteepSpan(a, b);
            } else {
                LineTo({b.x, b.y});
            }
            return;
        }
    }
    if (depth == 0) {
        AddSteepSpan(a, b);
        return;
    }
    AddSpan(a, middle, tolerance, depth - 1);
    AddSpan(middle, b, tolerance, depth - 1);
}

/// A span too short to be halved for its bend: a jump when most of its height stays in one half
/// down to neighbouring numbers.
void Drawing::AddSteepSpan(Sample a, Sample b)
{
    Sample const end = b;
    double const height = std::fabs(b.y - a.y);
    for (int i = 0; i < kDeepestJump; ++i) {
        double const x = a.x + 0.5 * (b.x - a.x);
        if (!(a.x < x && x < b.x)) {
            break;
        }
        Sample const middle{x, Value(x)};
        (std::fabs(middle.y - a.y) > std::fabs(b.y - middle.y) ? b : a) = middle;
    }
    double const rest = std::fabs(b.y - a.y);
    if (rest > kLeastJumpDegrees && rest > 0.5 * height) {
        LineTo({b.x, a.y});
        JumpTo({b.x, b.y});
    }
    LineTo({end.x, end.y});
}

void Drawing::AddPiece(double from, double to, int turns, bool isInside)
{
    // Outside, where cycles meet, a parameter belongs to one of them: ask beside it.
    double const first = isInside ? from : std::min(std::nextafter(from, to), to);
    double const last = isInside ? to : std::max(std::nextafter(to, from), from);
    int const n = kSpansOfPiece + kSpansOfTurn * std::abs(turns);
    auto const sample = [&](int i) {
        double const x = i == n ? to : from + (to - from) * (double(i) / n);
        return Sample{x, Value(i == 0 ? first : i == n ? last : x)};
    };
    Sample a = sample(0);
    BeginAt({a.x, a.y});
    double low = Mapped(a).y;
    double high = low;
    for (int i = 1; i <= n; ++i) {
        double const y = Mapped(sample(i)).y;
        low = std::min(low, y);
        high = std::max(high, y);
    }
    double const width = std::fabs(Mapped({to, a.y}).x - Mapped(a).x);
    double const tolerance = std::max(tolerance_, kFinestPart * std::max(width, high - low));
    for (int i = 1; i <= n; ++i) {
        Sample const b = sample(i);
        AddSpan(a, b, tolerance, kDeepestBend);
        a = b;
    }
}

/// What [a, b] shows of a curve of two keys or more.
class Walk {
public:
    Walk(HvQuatFCurveImpl const& impl, double a, double b, Drawing& drawing)
        : impl_(impl), a_(a), b_(b), drawing_(drawing), first_(impl.FirstParameter()),
          last_(impl.LastParameter())
    {
    }

    void AddCycles();
    void AddBefore();
    void AddInside() { AddSegments(0); }
    void AddAfter();

private:
    void AddSegments(double shift);
    void AddEvenly(double from, double to, unsigned int segment);
    int Turns(unsigned int segment) const { return impl_.Curve().GetKey(segment).spins; }
    bool IsLinear() const { return impl_.Method() == HvBaseFCurve::LinearExtrapolation; }

    HvQuatFCurveImpl const& impl_;
    double a_;
    double b_;
    Drawing& drawing_;
    double first_;
    double last_;
};

/// The segments moved by `shift`, as far as they lie in [a, b].
void Walk::AddSegments(double shift)
{
    int exact;
    unsigned int const n = impl_.NumKeys();
    unsigned int const located = shift == 0 ? impl_.LocateParameter(a_, exact) : 0;
    for (unsigned int i = std::max(located, 1u); i < n; ++i) {
        double const from = std::max(a_, impl_.Parameter(i - 1) + shift);
        double const to = std::min(b_, impl_.Parameter(i) + shift);
        if (from < to) {
            drawing_.AddPiece(from, to, Turns(i - 1), shift == 0);
        } else if (from > b_) {
            return;
        }
    }
}

void Walk::AddCycles()
{
    unsigned int const n = impl_.NumKeys();
    HvCycleSpan const span = HvCycleSpan_Of(a_, b_, first_, last_, n);
    if (!((span.last - span.first + 1) * (n - 1) <= kMostPieces + (n - 1))) {
        throw std::bad_alloc();
    }
    for (double c = span.first; c <= span.last; ++c) {
        AddSegments(c * (last_ - first_));
    }
}

/// [from, to] outside the keys in pieces as wide as the segment that goes on there.
void Walk::AddEvenly(double from, double to, unsigned int segment)
{
    double const width = impl_.Parameter(segment + 1) - impl_.Parameter(segment);
    double const count = std::ceil((to - from) / width);
    if (!(count <= kMostPieces)) {
        throw std::bad_alloc();
    }
    double x = from;
    for (double i = 1; i <= count; ++i) {
        double const next = i == count ? to : from + (to - from) * (i / count);
        if (x < next) {
            drawing_.AddPiece(x, next, Turns(segment), false);
            x = next;
        }
    }
}

void Walk::AddBefore()
{
    double const to = std::min(b_, first_);
    if (!(a_ < to)) {
        return;
    }
    if (IsLinear()) {
        AddEvenly(a_, to, 0);
    } else {
        drawing_.AddLevel(a_, to, impl_.Eval(first_));
    }
}

void Walk::AddAfter()
{
    double const from = std::max(a_, last_);
    if (!(from < b_)) {
        return;
    }
    if (IsLinear()) {
        AddEvenly(from, b_, impl_.NumKeys() - 2);
    } else {
        drawing_.AddLevel(from, b_, impl_.Eval(last_));
    }
}

/// [a, b] in curve space, a < b.
void Draw(HvQuatFCurveImpl const& impl, double a, double b, Drawing& drawing)
{
    Walk walk(impl, a, b, drawing);
    if (impl.NumKeys() < 2 || !impl.Curve().IsValid()) {
        // Keys in disorder, which only an owner of the rotation can leave, mean little.
        drawing.AddLevel(a, b, impl.Eval(a));
    } else if (impl.Cycles()) {
        walk.AddCycles();
    } else {
        walk.AddBefore();
        walk.AddInside();
        walk.AddAfter();
    }
}

}  // namespace

void HvQuatFCurveImpl::FlattenFromTo(HvExtent2<double> const& extent, HvTransfo4 const& transfo,
                                     double tolerance, HvPoint2dArray& points,
                                     HvPointTagArray& tags, HvBoolArray& flags) const
{
    double const a = extent.min.x;
    double const b = extent.max.x;
    if (!(a <= b)) {
        return;
    }
    if (a == b) {
        Point left(a, curve_->Eval(std::nextafter(a, -kHvMaxDouble), component));
        Point right(a, Eval(a));
        if (!(std::fabs(left.y - right.y) > kJoinDegrees)) {
            left.y = right.y;
        }
        bool const jumps = left.y != right.y;
        if (HvLineClip_Clip(left, right, extent) != 0) {
            CFCFlatten_AddPair(transfo.Map(left), transfo.Map(right), jumps ? 0 : 1, points, tags,
                               flags);
        }
        return;
    }
    CFCFlattenOutput out(transfo, tolerance, transfo.Map(extent), points, tags, flags);
    Drawing drawing(*this, transfo, tolerance, out);
    Draw(*this, a, b, drawing);
    HvFlattenedRuns(points, tags, flags).EndRun();
}

unsigned int HvQuatFCurveImpl::Flatten(HvTransfo4 const& transfo, double tolerance,
                                       HvPoint2dArray& points, HvPointTagArray& tags, int) const
{
    unsigned int const n = NumKeys();
    if (n == 0) {
        return 0;
    }
    HvPoint2dArray drawn;
    HvPointTagArray drawnTags;
    HvBoolArray flags;
    HvExtent2<double> whole;
    whole.state = HvExtent2<double>::WholePlane;
    CFCFlattenOutput out(transfo, tolerance, whole, drawn, drawnTags, flags);
    Drawing drawing(*this, transfo, tolerance, out);
    Draw(*this, FirstParameter(), LastParameter(), drawing);
    HvFlattenedRuns(drawn, drawnTags, flags).EndRun();
    points.Reserve(HvArrayCapacity_GrownSize(points.Size(), drawn.Size()));
    tags.Reserve(HvArrayCapacity_GrownSize(tags.Size(), drawn.Size()));
    for (unsigned int i = 0; i < drawn.Size(); ++i) {
        points.Add(drawn[i]);
        tags.Add(drawnTags[i]);
    }
    return points.Size();
}
