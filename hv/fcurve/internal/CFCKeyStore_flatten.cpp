// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The pieces of a curve between its keys, as lines and cubics. A piece draws the jump at the key
// where it starts when it starts at the key, never the one where it ends: the next piece does.

#include <hv/fcurve/internal/CFCFlattenOutput.h>
#include <hv/fcurve/internal/CFCKeyStore.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>

#include <hv/bezier/cubic_split.h>

#include <algorithm>

namespace {

using Point = HvPoint2<double>;

/// A cut nearer than this to an end of a cubic, in its parameter, leaves no meaningful half.
constexpr double kLowestCut = 1e-7;
constexpr double kHighestCut = 0.9999999;

template <class Store>
Point LeftPoint(Store const& store, unsigned int i)
{
    return Point(store.keys[i].parameter, static_cast<double>(store.LeftValueOf(i)));
}

template <class Store>
Point RightPoint(Store const& store, unsigned int i)
{
    return Point(store.keys[i].parameter, static_cast<double>(store.RightValueOf(i)));
}

template <class Store>
void AddJumpAt(Store const& store, unsigned int i, CFCFlattenOutput& out)
{
    Point const left = LeftPoint(store, i);
    Point const right = RightPoint(store, i);
    if (left.y != right.y) {
        out.AddJump(left, right);
    }
}

/// Where a segment that is drawn as a line ends: at the next key's left value, which on stepped
/// curves is this key's value; level with its own key when it is constant.
template <class Store>
Point LineEnd(Store const& store, unsigned int i)
{
    return LeftPoint(store, i + 1);
}
Point LineEnd(CFCStdStore const& store, unsigned int i)
{
    if (store.keys[i].segmentKind == HvBaseFCurve::ConstantSegment) {
        return Point(store.keys[i + 1].parameter, store.keys[i].rightValue);
    }
    return LeftPoint(store, i + 1);
}

/// The point of segment i at x, both ends included: the key's right value, the end of its line.
template <class Store>
Point PointOnLine(Store const& store, unsigned int i, double x)
{
    if (x == store.keys[i].parameter) {
        return RightPoint(store, i);
    }
    if (x == store.keys[i + 1].parameter) {
        return LineEnd(store, i);
    }
    return Point(x, store.EvalJustAfterIndex(x, i));
}

template <class Store>
void AddLinePiece(Store const& store, unsigned int i, double from, double to, CFCFlattenOutput& out)
{
    out.AddLine(PointOnLine(store, i, from), PointOnLine(store, i, to));
}

/// A cubic segment, to be cut to a part of it.
class CubicPiece {
public:
    CubicPiece(CFCStdStore const& store, unsigned int i) : store_(store), index_(i)
    {
        store.BezierCubicSetupUsingEvaluatedTangents(i, i + 1, points_);
    }

    Point const& RightHandle() const { return points_[1]; }
    Point const& LeftHandle() const { return points_[2]; }
    /// The point of the curve at x, with the key's right value at the key.
    Point At(double x) const { return PointOnLine(store_, index_, x); }

    /// Keeps what lies before x; false, with nothing changed, when that is no meaningful half.
    bool KeepBefore(double x)
    {
        Point left[4];
        Point right[4];
        if (!Split(x, left, right)) {
            return false;
        }
        left[3].x = x;
        Take(left);
        return true;
    }
    /// Keeps what lies after x; false, with nothing changed, when that is no meaningful half.
    bool KeepAfter(double x)
    {
        Point left[4];
        Point right[4];
        if (!Split(x, left, right)) {
            return false;
        }
        right[0].x = x;
        Take(right);
        return true;
    }
    void AddTo(CFCFlattenOutput& out) const { out.AddCubic(points_); }

private:
    bool Split(double x, Point* left, Point* right) const
    {
        double const t =
            FindCubicParameter(x, points_[0].x, points_[1].x, points_[2].x, points_[3].x);
        if (!(t > kLowestCut && t < kHighestCut)) {
            return false;
        }
        HvCubic_Split(points_, t, left, right);
        return true;
    }
    void Take(Point const* half)
    {
        std::copy(half, half + 4, points_);
        RegularizeBezierCubicPoints(points_);
    }

    CFCStdStore const& store_;
    unsigned int index_;
    Point points_[4];
};

// Where a cut leaves no meaningful half of a cubic, one line takes its place: along the handle at
// its key, or, when the handle's end is in view, to the curve's own point.

void AddCubicLeftPiece(CFCStdStore const& store, unsigned int i, double x, CFCFlattenOutput& out)
{
    CubicPiece piece(store, i);
    if (x == store.keys[i + 1].parameter || piece.KeepBefore(x)) {
        piece.AddTo(out);
        return;
    }
    Point const handle = piece.RightHandle();
    // Nothing of the segment is to be drawn at its own key: a vertical handle would draw a spike.
    bool const spike = x == store.keys[i].parameter && handle.x == x;
    out.AddLine(RightPoint(store, i), spike || out.Shows(handle) ? piece.At(x) : handle);
}

void AddCubicRightPiece(CFCStdStore const& store, unsigned int i, double x, CFCFlattenOutput& out)
{
    CubicPiece piece(store, i);
    if (x == store.keys[i].parameter || piece.KeepAfter(x)) {
        piece.AddTo(out);
        return;
    }
    Point const handle = piece.LeftHandle();
    out.AddLine(out.Shows(handle) ? piece.At(x) : handle, LeftPoint(store, i + 1));
}

void AddCubicPartialSegment(CFCStdStore const& store, unsigned int i, double a, double b,
                            CFCFlattenOutput& out)
{
    CubicPiece piece(store, i);
    bool const fromKey = a == store.keys[i].parameter;
    bool const toKey = b == store.keys[i + 1].parameter;
    if ((fromKey || piece.KeepAfter(a)) && (toKey || piece.KeepBefore(b))) {
        piece.AddTo(out);
    } else {
        out.AddLine(piece.At(a), piece.At(b));
    }
}

bool IsCubic(CFCStdStore const& store, unsigned int i)
{
    return store.keys[i].segmentKind == HvBaseFCurve::CubicSegment;
}

/// A kind that is none of the three draws nothing.
bool IsLine(CFCStdStore const& store, unsigned int i)
{
    return store.keys[i].segmentKind == HvBaseFCurve::ConstantSegment ||
           store.keys[i].segmentKind == HvBaseFCurve::LinearSegment;
}

// The pieces of the stores whose segments all are lines.

template <class Store>
void AddLineSegments(Store const& store, unsigned int i, unsigned int j, CFCFlattenOutput& out)
{
    for (unsigned int k = i; k < j; ++k) {
        AddJumpAt(store, k, out);
        out.AddLine(RightPoint(store, k), LineEnd(store, k));
    }
}

template <class Store>
void AddLineLeftPiece(Store const& store, unsigned int i, double x, CFCFlattenOutput& out)
{
    AddJumpAt(store, i, out);
    AddLinePiece(store, i, store.keys[i].parameter, x, out);
}

}  // namespace

template <class T, class K>
void CFCKeyStoreA<T, K>::AddFlattenedSegments(unsigned int i, unsigned int j,
                                              CFCFlattenOutput& out) const
{
    AddLineSegments(*this, i, j, out);
}

template <class T, class K>
void CFCKeyStoreA<T, K>::AddFlattenedLeftPiece(unsigned int i, double x,
                                               CFCFlattenOutput& out) const
{
    AddLineLeftPiece(*this, i, x, out);
}

template <class T, class K>
void CFCKeyStoreA<T, K>::AddFlattenedRightPiece(unsigned int i, double x,
                                                CFCFlattenOutput& out) const
{
    AddLinePiece(*this, i, x, keys[i + 1].parameter, out);
}

template <class T, class K>
void CFCKeyStoreA<T, K>::AddFlattenedPartialSegment(unsigned int i, double a, double b,
                                                    CFCFlattenOutput& out) const
{
    AddLinePiece(*this, i, a, b, out);
}

template <class T, class K>
void CFCKeyStoreB<T, K>::AddFlattenedSegments(unsigned int i, unsigned int j,
                                              CFCFlattenOutput& out) const
{
    AddLineSegments(*this, i, j, out);
}

template <class T, class K>
void CFCKeyStoreB<T, K>::AddFlattenedLeftPiece(unsigned int i, double x,
                                               CFCFlattenOutput& out) const
{
    AddLineLeftPiece(*this, i, x, out);
}

template <class T, class K>
void CFCKeyStoreB<T, K>::AddFlattenedRightPiece(unsigned int i, double x,
                                                CFCFlattenOutput& out) const
{
    AddLinePiece(*this, i, x, keys[i + 1].parameter, out);
}

template <class T, class K>
void CFCKeyStoreB<T, K>::AddFlattenedPartialSegment(unsigned int i, double a, double b,
                                                    CFCFlattenOutput& out) const
{
    AddLinePiece(*this, i, a, b, out);
}

template <class T, class K>
void CFCKeyStoreC<T, K>::AddFlattenedSegments(unsigned int i, unsigned int j,
                                              CFCFlattenOutput& out) const
{
    for (unsigned int k = i; k < j; ++k) {
        AddJumpAt(*this, k, out);
        if (IsCubic(*this, k)) {
            CubicPiece(*this, k).AddTo(out);
        } else if (IsLine(*this, k)) {
            out.AddLine(RightPoint(*this, k), LineEnd(*this, k));
        }
    }
}

template <class T, class K>
void CFCKeyStoreC<T, K>::AddFlattenedLeftPiece(unsigned int i, double x,
                                               CFCFlattenOutput& out) const
{
    AddJumpAt(*this, i, out);
    if (IsCubic(*this, i)) {
        AddCubicLeftPiece(*this, i, x, out);
    } else if (IsLine(*this, i)) {
        AddLinePiece(*this, i, keys[i].parameter, x, out);
    }
}

template <class T, class K>
void CFCKeyStoreC<T, K>::AddFlattenedRightPiece(unsigned int i, double x,
                                                CFCFlattenOutput& out) const
{
    if (IsCubic(*this, i)) {
        AddCubicRightPiece(*this, i, x, out);
    } else if (IsLine(*this, i)) {
        AddLinePiece(*this, i, x, keys[i + 1].parameter, out);
    }
}

template <class T, class K>
void CFCKeyStoreC<T, K>::AddFlattenedPartialSegment(unsigned int i, double a, double b,
                                                    CFCFlattenOutput& out) const
{
    if (IsCubic(*this, i)) {
        AddCubicPartialSegment(*this, i, a, b, out);
    } else if (IsLine(*this, i)) {
        AddLinePiece(*this, i, a, b, out);
    }
}

template void
CFCKeyStoreA<bool, CFCSingleValueKey<bool>>::AddFlattenedSegments(unsigned int, unsigned int,
                                                                  CFCFlattenOutput&) const;
template void
CFCKeyStoreA<bool, CFCSingleValueKey<bool>>::AddFlattenedLeftPiece(unsigned int, double,
                                                                   CFCFlattenOutput&) const;
template void
CFCKeyStoreA<bool, CFCSingleValueKey<bool>>::AddFlattenedRightPiece(unsigned int, double,
                                                                    CFCFlattenOutput&) const;
template void CFCKeyStoreA<bool, CFCSingleValueKey<bool>>::AddFlattenedPartialSegment(
    unsigned int, double, double, CFCFlattenOutput&) const;
template void
CFCKeyStoreA<int, CFCSingleValueKey<int>>::AddFlattenedSegments(unsigned int, unsigned int,
                                                                CFCFlattenOutput&) const;
template void
CFCKeyStoreA<int, CFCSingleValueKey<int>>::AddFlattenedLeftPiece(unsigned int, double,
                                                                 CFCFlattenOutput&) const;
template void
CFCKeyStoreA<int, CFCSingleValueKey<int>>::AddFlattenedRightPiece(unsigned int, double,
                                                                  CFCFlattenOutput&) const;
template void
CFCKeyStoreA<int, CFCSingleValueKey<int>>::AddFlattenedPartialSegment(unsigned int, double, double,
                                                                      CFCFlattenOutput&) const;
template void
CFCKeyStoreB<double, CFCSingleValueKey<double>>::AddFlattenedSegments(unsigned int, unsigned int,
                                                                      CFCFlattenOutput&) const;
template void
CFCKeyStoreB<double, CFCSingleValueKey<double>>::AddFlattenedLeftPiece(unsigned int, double,
                                                                       CFCFlattenOutput&) const;
template void
CFCKeyStoreB<double, CFCSingleValueKey<double>>::AddFlattenedRightPiece(unsigned int, double,
                                                                        CFCFlattenOutput&) const;
template void CFCKeyStoreB<double, CFCSingleValueKey<double>>::AddFlattenedPartialSegment(
    unsigned int, double, double, CFCFlattenOutput&) const;
template void CFCKeyStoreC<double, CFCStdKey>::AddFlattenedSegments(unsigned int, unsigned int,
                                                                    CFCFlattenOutput&) const;
template void CFCKeyStoreC<double, CFCStdKey>::AddFlattenedLeftPiece(unsigned int, double,
                                                                     CFCFlattenOutput&) const;
template void CFCKeyStoreC<double, CFCStdKey>::AddFlattenedRightPiece(unsigned int, double,
                                                                      CFCFlattenOutput&) const;
template void CFCKeyStoreC<double, CFCStdKey>::AddFlattenedPartialSegment(unsigned int, double,
                                                                          double,
                                                                          CFCFlattenOutput&) const;
