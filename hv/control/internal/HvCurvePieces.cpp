// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Reading curves as pieces.

#include <hv/control/internal/HvCurvePieces.h>

#include <hv/bezier/cubic_split.h>
#include <hv/bezier/quadratic.h>
#include <hv/fcurve/HvStdFCurve.h>
#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/saturate.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>
#include <utility>

namespace {

using Point = HvPoint2<double>;
using Curve = HvBaseFCurve;

// Evaluation takes a parameter this close to a key for the key.
constexpr double kKeySnap = 1e-12;

// Pieces that Find passes over at most: more than a few in 1e-12 are no curve that evaluation could
// follow, and a curve that cycles in 1e-300 would have no end of them.
constexpr int kMaxPassedOver = 4;

// Beyond this, neighbouring whole numbers are no longer neighbouring doubles: 2^53.
constexpr double kLargestCycle = 9007199254740992.0;

// A cubic is cut where its x advances at less than this part of its mean speed: next to such a
// place values change all at once, which samples that are spread over the whole may not see.
constexpr double kSteepSpeed = 0.05;

constexpr double kThirdOfSpan = 0.3333333333333333;

bool HasConstraint(HvStdFCurve const& curve, unsigned int i, Curve::KeyConstraint constraint)
{
    int on = 0;
    return curve.GetConstraintByIndex(i, constraint, on) && on;
}

/// The s between 0 and 1 where a cubic is all but upright, 0 when there is none.
double SteepParameter(Point const* P)
{
    HvCubicTerms const x = HvCubicTerms::Of(P[0].x, P[1].x, P[2].x, P[3].x);
    double const slowest = -x.a2 / (3 * x.a3);
    bool const isSteep =
        slowest > 0 && slowest < 1 && x.SlopeAt(slowest) < kSteepSpeed * (P[3].x - P[0].x);
    return isSteep ? slowest : 0;
}

/// Whether x rises along the cubic, which makes y a function of x.
bool IsFunction(Point const* P)
{
    return HvStdFCurve_IsCubicSegmentValid(P[0], P[1], P[2], P[3]) != 0;
}

/// The last s below 1 where x(s) is that of P[0] once more, 0 when there is none.
double LastReturnToStart(Point const* P)
{
    HvCubicTerms const x = HvCubicTerms::Of(P[0].x, P[1].x, P[2].x, P[3].x);
    double first = 0;
    double second = 0;
    if (!SolveQuadraticEquation(first, second, x.a3, x.a2, x.a1)) {
        return 0;
    }
    return second > 0 && second < 1 ? second : first > 0 && first < 1 ? first : 0;
}

/// Cuts from a cubic what lies before its last return to the x of its start, and the same from its
/// end. Evaluation inverts x(s), and of a cubic that leaves its span it only sees what comes back:
///
///      handle o             o handle               seen:
///         \  P0 *          /                             *
///            (   |     * P3                         |    / P3
///             \__|____/                             |___/
void CutOverhang(Point* P)
{
    double const start = LastReturnToStart(P);
    Point const reversed[4] = {-P[3], -P[2], -P[1], -P[0]};
    double const end = 1 - LastReturnToStart(reversed);
    if (!(start < end)) {
        return;
    }
    double const x0 = P[0].x;
    double const x3 = P[3].x;
    Point head[4];
    Point rest[4];
    HvCubic_Split(P, end, head, rest);
    HvCubic_Split(head, start / end, rest, P);
    P[0].x = x0;
    P[3].x = x3;
}

}  // namespace

HvCurvePieces::HvCurvePieces(std::unique_ptr<HvBaseFCurve> curve)
    : curve_(std::move(curve)), pieces_(curve_->GetNumKeys())
{
    curve_->SetReadOnlyConstraint(0);
    hasKeys_ = curve_->GetNumKeys() != 0;
    Curve::ExtrapolationMethod const method = curve_->GetExtrapolationMethod();
    cycles_ = curve_->GetNumKeys() > 1 &&
              (method == Curve::CycleExtrapolation || method == Curve::RelativeCycleExtrapolation);
    isStepped_ = curve_->GetKind() == Curve::Boolean || curve_->GetKind() == Curve::Integer;
    curve_->GetSmallestKeyParameter(first_);
    curve_->GetLargestKeyParameter(last_);
    ReadKeys();
    if (curve_->GetKind() == Curve::Standard) {
        ReadHandles(static_cast<HvStdFCurve&>(*curve_));
    }
}

HvCurvePieces::~HvCurvePieces() = default;

void HvCurvePieces::ReadKeys()
{
    Curve::Kind const kind = curve_->GetKind();
    HvCurvePiece::Shape const shape = isStepped_ ? HvCurvePiece::Constant
                                      : kind == Curve::Standard || kind == Curve::Raw
                                          ? HvCurvePiece::Line
                                          : HvCurvePiece::Sampled;
    HvDoubleArray parameters(pieces_.Capacity());
    HvDoubleArray lefts(pieces_.Capacity());
    HvDoubleArray rights(pieces_.Capacity());
    // It answers with nothing when memory runs out.
    if (curve_->GetKeys(parameters, lefts, rights, 0) != curve_->GetNumKeys()) {
        throw std::bad_alloc();
    }
    for (unsigned int i = 0; i + 1 < parameters.Size(); ++i) {
        KeyPiece piece{};
        piece.shape = shape;
        piece.P[0] = Point(parameters[i], rights[i]);
        piece.P[3] = Point(parameters[i + 1], lefts[i + 1]);
        pieces_.Add(piece);
    }
    if (curve_->GetExtrapolationMethod() == Curve::RelativeCycleExtrapolation && cycles_) {
        cycleOffset_ = rights[rights.Size() - 1] - rights[0];
    }
}

// Evaluation leaves it to the limit of the automatic slope to flatten an extremum, where the
// evaluated handles that the curve shows are flat: they are read without that constraint then.
void HvCurvePieces::ReadHandles(HvStdFCurve& curve)
{
    unsigned int const numKeys = curve.GetNumKeys();
    for (unsigned int i = 0; i < numKeys; ++i) {
        bool const isAutomatic = HasConstraint(curve, i, Curve::AutomaticTangents);
        bool const isLimited = isAutomatic && HasConstraint(curve, i, Curve::FlatAtExtremum) &&
                               !HasConstraint(curve, i, Curve::UnlimitedAutoSlope);
        double x = 0;
        Point left;
        Point right;
        if (isLimited) {
            curve.GetKeyParameter(i, x);
            curve.SetConstraint(x, Curve::FlatAtExtremum, 0, 0);
        }
        curve.GetEvaluatedKeyTgtHandlesByIndex(i, left, right);
        if (isLimited) {
            curve.SetConstraint(x, Curve::FlatAtExtremum, 1, 0);
        }
        Curve::FSKind kind = Curve::ConstantSegment;
        curve.GetSegmentKindByIndex(i, Curve::Right, kind);
        SetHandles(i, left, right, kind,
                   isAutomatic && !HasConstraint(curve, i, Curve::ZeroLengthTangents));
    }
    for (KeyPiece& piece : pieces_) {
        if (piece.shape == HvCurvePiece::Cubic && !IsFunction(piece.P)) {
            CutOverhang(piece.P);
        }
        // What folds inside its span is what evaluation makes of it.
        if (piece.shape == HvCurvePiece::Cubic && !IsFunction(piece.P)) {
            piece.shape = HvCurvePiece::Sampled;
        }
    }
    CutSteepPieces();
}

void HvCurvePieces::CutSteepPieces()
{
    auto const steepOf = [](KeyPiece const& piece) {
        return piece.shape == HvCurvePiece::Cubic ? SteepParameter(piece.P) : 0;
    };
    auto const isSteep = [&](KeyPiece const& piece) { return steepOf(piece) > 0; };
    if (std::none_of(pieces_.begin(), pieces_.end(), isSteep)) {
        return;
    }
    HvAltDynArray<KeyPiece> cut(pieces_.Count() + 1);
    for (KeyPiece const& piece : pieces_) {
        double const s = steepOf(piece);
        KeyPiece left = piece;
        KeyPiece right = piece;
        HvCubic_Split(piece.P, s, left.P, right.P);
        if (left.P[0].x < left.P[3].x && right.P[0].x < right.P[3].x) {
            cut.Add(left);
            cut.Add(right);
        } else {
            cut.Add(piece);
        }
    }
    pieces_ = cut;
}

// Evaluation takes the third of the span as x of every handle of an automatic key, a flat one too,
// of which the curve shows the stored x.
void HvCurvePieces::SetHandles(unsigned int i, Point const& left, Point const& right,
                               HvBaseFCurve::FSKind kind, bool isAtThird)
{
    if (i != 0) {
        Point* const P = pieces_[i - 1].P;
        P[2] = P[3] + Point(isAtThird ? (P[0].x - P[3].x) * kThirdOfSpan : left.x, left.y);
    }
    if (i < pieces_.Count()) {
        KeyPiece& piece = pieces_[i];
        Point* const P = piece.P;
        P[1] = P[0] + Point(isAtThird ? (P[3].x - P[0].x) * kThirdOfSpan : right.x, right.y);
        piece.shape = kind == Curve::CubicSegment    ? HvCurvePiece::Cubic
                      : kind == Curve::LinearSegment ? HvCurvePiece::Line
                                                     : HvCurvePiece::Constant;
    }
}

HvCurvePieces::Place HvCurvePieces::Find(double x, Side side) const
{
    Place place{0, 0};
    double local = x;
    if (cycles_) {
        double const width = last_ - first_;
        place.cycle = std::floor((x - first_) / width);
        local = std::min(std::max(x - place.cycle * width, first_), last_);
    }
    if (!cycles_ && (!hasKeys_ || local < first_)) {
        place.index = -1;
    } else if (!cycles_ && (local >= last_)) {
        place.index = NumKeyPieces();
    } else {
        KeyPiece const* const begin = pieces_.Data();
        KeyPiece const* const end = begin + pieces_.Count();
        KeyPiece const* const after = std::upper_bound(
            begin, end, local, [](double value, KeyPiece const& p) { return value < p.P[0].x; });
        place.index = std::max(static_cast<int>(after - begin) - 1, 0);
    }
    for (int k = 0; k < kMaxPassedOver; ++k) {
        bool const isOutermost = side == Up ? place.index >= NumKeyPieces() : place.index < 0;
        HvCurvePiece const piece = Piece(place, x, x);
        bool const endsHere =
            side == Up ? piece.Last() - x <= kKeySnap : x - piece.First() <= kKeySnap;
        if ((isOutermost && !cycles_) || !endsHere) {
            break;
        }
        place = Next(place, side);
    }
    return place;
}

HvCurvePieces::Place HvCurvePieces::Next(Place const& place, Side side) const
{
    Place next{place.cycle, place.index + side};
    if (cycles_ && next.index < 0) {
        next = {place.cycle - 1, NumKeyPieces() - 1};
    } else if (cycles_ && next.index >= NumKeyPieces()) {
        next = {place.cycle + 1, 0};
    }
    return next;
}

HvCurvePiece HvCurvePieces::Piece(Place const& place, double low, double high) const
{
    if (place.index < 0 || place.index >= NumKeyPieces()) {
        return OuterPiece(place, low, high);
    }
    KeyPiece const& piece = pieces_[static_cast<unsigned int>(place.index)];
    // The number of the cycle counts as evaluation counts it, in an int.
    Point const shift(place.cycle * (last_ - first_),
                      cycleOffset_ == 0 ? 0 : HvSaturate_To<int>(place.cycle) * cycleOffset_);
    Point const P[4] = {piece.P[0] + shift, piece.P[1] + shift, piece.P[2] + shift,
                        piece.P[3] + shift};
    switch (piece.shape) {
    case HvCurvePiece::Constant: {
        // Stepped curves fold and offset in their own arithmetic, of which one value tells all.
        double const middle = P[0].x + (P[3].x - P[0].x) * 0.5;
        return HvCurvePiece::OfConstant(P[0].x, P[3].x,
                                        isStepped_ ? curve_->EvalNoLock(middle, 0) : P[0].y);
    }
    case HvCurvePiece::Line:
        return HvCurvePiece::OfLine(P[0], P[3]);
    case HvCurvePiece::Cubic:
        return HvCurvePiece::OfCubic(P);
    case HvCurvePiece::Sampled:
        break;
    }
    return HvCurvePiece::OfCurve(*curve_, P[0], P[3]);
}

// Outside its keys a curve that does not cycle is constant or a line, so that two values tell all.
// They are taken well away from the key, where the curve has the key's own value.
HvCurvePiece HvCurvePieces::OuterPiece(Place const& place, double low, double high) const
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    if (!hasKeys_) {
        return HvCurvePiece::OfConstant(-kInfinity, kInfinity, curve_->EvalNoLock(0, 0));
    }
    double const key = place.index < 0 ? first_ : last_;
    double const side = place.index < 0 ? -1.0 : 1.0;
    double const least = std::max(1.0, std::fabs(key) * 1e-9);
    double const reach = std::max(place.index < 0 ? key - low : high - key, least);
    Point const far(key + side * reach, curve_->EvalNoLock(key + side * reach, 0));
    double const middle = curve_->EvalNoLock(key + side * reach * 0.5, 0);
    Point const near(key, middle + (middle - far.y));
    if (middle == far.y) {
        return place.index < 0 ? HvCurvePiece::OfConstant(-kInfinity, key, middle)
                               : HvCurvePiece::OfConstant(key, kInfinity, middle);
    }
    return place.index < 0 ? HvCurvePiece::OfLine(far, near) : HvCurvePiece::OfLine(near, far);
}

double HvCurvePieces::Value(double x) const
{
    return Piece(Find(x, Up), x, x).Value(x);
}

double HvCurvePieces::NumCyclePieces(double low, double high) const
{
    if (!cycles_) {
        return 0;
    }
    Place const first = Find(low, Up);
    Place const last = Find(high, Down);
    if (!(std::fabs(first.cycle) < kLargestCycle) || !(std::fabs(last.cycle) < kLargestCycle)) {
        return std::numeric_limits<double>::infinity();
    }
    return (last.cycle - first.cycle) * NumKeyPieces() + (last.index - first.index) + 1;
}
