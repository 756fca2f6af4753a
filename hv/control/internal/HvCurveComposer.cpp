// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Composition of two curves.

#include <hv/control/internal/HvCurveComposer.h>

#include <hv/foundation/array_capacity.h>

#include <algorithm>
#include <cmath>
#include <new>

namespace {

using Pieces = HvCurvePieces;

// Closer than this evaluation takes a parameter for the key, so that no span is that short and a
// value this close to a key of the driven curve does not reach beyond it.
constexpr double kKeySnap = 1e-12;

// How far from t, as a part of its piece, the controller shows whether it rises or falls.
constexpr double kHeadingStep = 1e-6;

}  // namespace

/// What a composition has come to.
struct HvCurveComposer::Walk {
    HvComposedCurve& curve;
    HvSpanFitter fitter;
    double numPieces;  // of cycles, met so far; each leaves a key

    // Counts pieces that are about to be walked through.
    void Expect(double count)
    {
        numPieces += count;
        if (!(numPieces <= kHvArrayMaxCapacity)) {
            throw std::bad_alloc();
        }
    }
};

std::unique_ptr<HvStdFCurve> HvCurveComposer::Compose(double from, double to,
                                                      double tolerance) const
{
    HvComposedCurve curve(from, driven_.Value(controller_.Value(from)));
    Walk walk{curve, HvSpanFitter(curve, tolerance), 0};
    walk.Expect(controller_.NumCyclePieces(from, to));
    double t = from;
    for (Pieces::Place place = controller_.Find(from, Pieces::Up); t < to && !curve.HasFailed();
         place = controller_.Next(place, Pieces::Up)) {
        HvCurvePiece const piece = controller_.Piece(place, from, to);
        double const end = std::min(piece.Last(), to);
        if (end > t) {
            AddPiece(walk, piece, t, end);
            t = end;
        }
    }
    return curve.Finish(driven_.Value(controller_.Value(to)));
}

void HvCurveComposer::AddPiece(Walk& walk, HvCurvePiece const& piece, double from, double to) const
{
    if (piece.GetShape() == HvCurvePiece::Constant) {
        walk.curve.AddConstant(to, driven_.Value(piece.Value(from)));
        walk.curve.EndPiece();
        return;
    }
    double cuts[HvCurvePiece::kMaxTurns + 1];
    int const numTurns = piece.Turns(from, to, cuts);
    cuts[numTurns] = to;
    double start = from;
    double startValue = piece.Value(from);
    for (int k = 0; k <= numTurns; ++k) {
        double const endValue = piece.Value(cuts[k]);
        AddMonotone(walk, piece, start, cuts[k], startValue, endValue);
        start = cuts[k];
        startValue = endValue;
    }
    walk.curve.EndPiece();
}

void HvCurveComposer::AddMonotone(Walk& walk, HvCurvePiece const& piece, double from, double to,
                                  double fromValue, double toValue) const
{
    if (fromValue == toValue) {
        walk.curve.AddConstant(to, driven_.Value(fromValue));
        return;
    }
    double const low = std::min(fromValue, toValue);
    double const high = std::max(fromValue, toValue);
    if (!std::isfinite(low) || !std::isfinite(high)) {
        walk.curve.Fail();
        return;
    }
    walk.Expect(driven_.NumCyclePieces(low, high));
    Pieces::Side const side = toValue > fromValue ? Pieces::Up : Pieces::Down;
    Pieces::Place place = driven_.Find(fromValue, side);
    double t = from;
    double value = fromValue;
    for (bool isLast = false; !isLast && !walk.curve.HasFailed();
         place = driven_.Next(place, side)) {
        HvCurvePiece const driven = driven_.Piece(place, low, high);
        double const border = side == Pieces::Up ? driven.Last() : driven.First();
        isLast = int(side) * (toValue - border) <= kKeySnap;
        double const endValue = isLast ? toValue : border;
        double const end = isLast ? to : piece.FindValue(border, t, to);
        if (end - t > kKeySnap) {
            walk.fitter.Add(HvComposedSpan(piece, driven, t, end, value, endValue));
            t = end;
        }
        value = endValue;
    }
}

double HvCurveComposer::Slope(double t, Pieces::Side side) const
{
    double const room = std::max(1.0, std::fabs(t));
    HvCurvePiece const piece = controller_.Piece(controller_.Find(t, side), t - room, t + room);
    double const value = piece.Value(t);
    double const step = (piece.Last() - piece.First()) * kHeadingStep;
    if (piece.GetShape() == HvCurvePiece::Constant || !std::isfinite(step)) {
        return 0;
    }
    double const ahead = piece.Value(t + int(side) * step);
    Pieces::Side const heading = ahead < value ? Pieces::Down : Pieces::Up;
    HvCurvePiece const driven = driven_.Piece(driven_.Find(value, heading), value, value);
    double const from = std::min(t, t + int(side) * step);
    double const to = std::max(t, t + int(side) * step);
    HvComposedSpan const span(piece, driven, from, to, piece.Value(from), piece.Value(to));
    return span.Slope(t);
}
