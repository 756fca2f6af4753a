// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// HvCurvePieces: a function curve as an endless row of pieces.

#ifndef HV_CONTROL_INTERNAL_HVCURVEPIECES_H
#define HV_CONTROL_INTERNAL_HVCURVEPIECES_H

#include <hv/control/internal/HvCurvePiece.h>
#include <hv/fcurve/HvBaseFCurve.h>
#include <hv/foundation/HvAltDynArray.h>

#include <memory>

class HvStdFCurve;

/// Reads any kind of curve, with what its extrapolation makes of it, as pieces from left to right.
/// Between keys lie the pieces of the key range; they repeat where the curve cycles, and otherwise
/// one piece lies before the first key and one behind the last.
///
///     n keys:   before | 0 | 1 | ... | n-2 | after
///     cycling:  ... n-2 | 0 | 1 | ... | n-2 | 0 | 1 ...
///
/// Evaluation agrees with that of the curve but for rounding, and for single points: where linear
/// extrapolation leaves a key that jumps, the curve has at the key itself a value of its own.
class HvCurvePieces {
public:
    /// A piece of the row.
    struct Place {
        double cycle;  ///< a whole number; 0 where the curve does not cycle
        int index;     ///< -1 before the keys, numPieces behind them
    };

    /// To which side of a parameter one looks.
    enum Side : int {
        Down = -1,
        Up = 1
    };

    /// Takes over `curve`, which nobody else may change, and reads its keys.
    explicit HvCurvePieces(std::unique_ptr<HvBaseFCurve> curve);
    ~HvCurvePieces();
    HvCurvePieces(HvCurvePieces const&) = delete;
    HvCurvePieces& operator=(HvCurvePieces const&) = delete;

    /// The piece on that side of x. A piece that ends within 1e-12 on that side is passed over, as
    /// evaluation takes such an x for the key.
    Place Find(double x, Side side) const;
    Place Next(Place const& place, Side side) const;
    /// The piece at `place`. Of an endless one at least the part that meets [low, high].
    HvCurvePiece Piece(Place const& place, double low, double high) const;
    /// The value just right of x or at it.
    double Value(double x) const;

    /// How many pieces meet [low, high] when the curve cycles, infinite when its cycles lie so
    /// close that their ends are one number; 0 when it does not cycle.
    double NumCyclePieces(double low, double high) const;

private:
    /// A piece of the key range, at its own place.
    struct KeyPiece {
        HvCurvePiece::Shape shape;
        HvPoint2<double> P[4];
    };

    int NumKeyPieces() const { return static_cast<int>(pieces_.Count()); }
    void ReadKeys();
    void ReadHandles(HvStdFCurve& curve);
    /// Sets the handles beside key i, given as vectors from it, and the shape of its right piece.
    void SetHandles(unsigned int i, HvPoint2<double> const& left, HvPoint2<double> const& right,
                    HvBaseFCurve::FSKind kind, bool isAtThird);
    /// Cuts cubics in two where they are all but upright.
    void CutSteepPieces();
    HvCurvePiece OuterPiece(Place const& place, double low, double high) const;

    std::unique_ptr<HvBaseFCurve> curve_;
    HvAltDynArray<KeyPiece> pieces_;
    bool hasKeys_ = false;
    bool cycles_ = false;
    bool isStepped_ = false;
    double first_ = 0;  // the key range
    double last_ = 0;
    double cycleOffset_ = 0;  // what each cycle adds to the values
};

#endif
