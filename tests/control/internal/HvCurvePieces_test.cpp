// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Curves as pieces, against the curves' own evaluation.

#include <hv/control/internal/HvCurvePieces.h>

#include "../control_test_support.h"

#include <tests/fcurve/std_archive_bodies.h>

#include <gtest/gtest.h>

namespace {

CurvePtr Copy(Curve const& curve)
{
    return CurvePtr(curve.Clone());
}

constexpr HvCurvePieces::Side kUp = HvCurvePieces::Up;
constexpr HvCurvePieces::Side kDown = HvCurvePieces::Down;

}  // namespace

// Evaluation solves for the Bezier parameter to 1e-9; values of these curves change by at most some
// ten units over it.
TEST(HvCurvePieces, HaveTheValuesOfTheCurve)
{
    for (unsigned int seed = 0; seed < 400; ++seed) {
        CurveMaker make(seed);
        CurvePtr const curve = make.Any(6, -2, 8, -3, 7);
        HvCurvePieces const pieces(Copy(*curve));
        for (int k = 0; k < 300; ++k) {
            double const x = make.Real(-20, 25);
            EXPECT_NEAR(pieces.Value(x), curve->Eval(x, 0), 1e-7) << seed << " at " << x;
        }
    }
}

TEST(HvCurvePieces, FollowOneAnotherWithoutGaps)
{
    for (unsigned int seed = 0; seed < 100; ++seed) {
        CurveMaker make(seed);
        CurvePtr const curve = make.Any(6, -2, 8, -3, 7);
        HvCurvePieces const pieces(Copy(*curve));
        HvCurvePieces::Place place = pieces.Find(-15, kUp);
        double x = -15;
        for (int n = 0; x < 20 && n < 1000; ++n) {
            HvCurvePiece const piece = pieces.Piece(place, -15, 20);
            EXPECT_LE(piece.First(), x + 1e-12) << seed;
            EXPECT_GT(piece.Last(), x) << seed;
            x = piece.Last();
            HvCurvePieces::Place const back = pieces.Next(pieces.Next(place, kUp), kDown);
            EXPECT_EQ(back.index, place.index) << seed;
            EXPECT_EQ(back.cycle, place.cycle) << seed;
            place = pieces.Next(place, kUp);
        }
        EXPECT_GE(x, 20) << seed;
    }
}

TEST(HvCurvePieces, AreFoundOnBothSidesOfAKey)
{
    StdPtr const curve = StdCurve({{0, 1, 2, kLinear}, {1, 3, 4, kConstant}, {2, 5, 6, kLinear}});
    HvCurvePieces const pieces(Copy(*curve));
    EXPECT_EQ(pieces.Find(0, kDown).index, -1);
    EXPECT_EQ(pieces.Find(0, kUp).index, 0);
    EXPECT_EQ(pieces.Find(1, kDown).index, 0);
    EXPECT_EQ(pieces.Find(1, kUp).index, 1);
    EXPECT_EQ(pieces.Find(2, kDown).index, 1);
    EXPECT_EQ(pieces.Find(2, kUp).index, 2);
    // Closer than evaluation tells from the key.
    EXPECT_EQ(pieces.Find(1 - 5e-13, kUp).index, 1);
    EXPECT_EQ(pieces.Find(1 + 5e-13, kDown).index, 0);
    EXPECT_EQ(pieces.Find(1 - 5e-12, kUp).index, 0);
    EXPECT_EQ(pieces.Find(-9, kDown).index, -1);
    EXPECT_EQ(pieces.Find(9, kUp).index, 2);
}

TEST(HvCurvePieces, CountTheCyclesOfARange)
{
    StdPtr const held = Line(0, 0, 2, 1);
    StdPtr const cycling = StdCurve({{0, 0, 0, kLinear}, {1, 1, 1, kLinear}, {2, 0, 0, kLinear}},
                                    Curve::CycleExtrapolation);
    EXPECT_EQ(HvCurvePieces(Copy(*held)).NumCyclePieces(-9, 9), 0);
    HvCurvePieces const pieces(Copy(*cycling));
    EXPECT_EQ(pieces.NumCyclePieces(0, 2), 2);
    EXPECT_EQ(pieces.NumCyclePieces(-1, 3.5), 5);
    EXPECT_EQ(pieces.NumCyclePieces(0.1, 0.2), 1);
    EXPECT_GT(pieces.NumCyclePieces(0, 1e300), 1e100);
}

// The first key has no handle and the second's reaches beyond the first: x(s) = 2 s^3 - s^2 leaves
// the span to the left and comes back at s = 1/2, where y(s) = 3 s^2 - 2 s^3 is 1/2 already.
TEST(HvCurvePieces, OverhangingCubicBeginsWhereItComesBack)
{
    HvStdFCurve curve(Point(0, 0), Point(1 / 3.0, 0), Point(2 / 3.0, 1), Point(1, 1), kCubic,
                      kCubic);
    ASSERT_EQ(curve.SetKeyTgtHandle(1, Curve::Left, Point(-4 / 3.0, 0), 0), 1);
    double first = 0;
    ASSERT_EQ(curve.SetConstraint(first, Curve::ZeroLengthTangents, 1, 0), 1);
    Point left;
    Point right;
    curve.GetEvaluatedKeyTgtHandlesByIndex(1, left, right);
    ASSERT_LT(left.x, -1.3);

    HvCurvePieces const pieces(Copy(curve));
    EXPECT_NEAR(pieces.Value(1e-9), 0.5, 0.01);  // the handle was shortened a little to fit
    for (double x = 0.001; x < 1; x += 0.01) {
        EXPECT_NEAR(pieces.Value(x), curve.Eval(x, 0), 1e-7) << x;
    }
}

// Only a file has handles that cross so far: x(s) reaches the end key, turns back beyond the first
// one and comes again, so that no part of it goes from the one to the other. For one that folds
// between its keys there is no part to cut off.
TEST(HvCurvePieces, CubicThatFoldsIsWhatEvaluationMakesOfIt)
{
    for (double const reach : {4.0, 1.05}) {
        auto const cubic = static_cast<unsigned int>(kCubic);
        FileFields fields;
        fields.extrapolation = Curve::ConstantExtrapolation;
        Bytes const archive =
            NewestStdArchive(StdBody(266,
                                     {{{0, 0, 0, -1, 0, reach, 0.25}, cubic, 0, 0, 0},
                                      {{1, 1, 1, 1 - reach, 0.75, 2, 1}, cubic, 0, 0, 0}},
                                     fields));
        HvBaseFCurve* read = nullptr;
        ASSERT_NE(HvBaseFCurve_CreateFromBuffer(archive.data(), archive.size(), &read), 0u);
        CurvePtr const curve(read);
        Point left;
        Point right;
        static_cast<HvStdFCurve&>(*curve).GetEvaluatedKeyTgtHandlesByIndex(0, left, right);
        ASSERT_EQ(right.x, reach);

        HvCurvePieces const pieces(Copy(*curve));
        EXPECT_EQ(pieces.Piece(pieces.Find(0.5, kUp), 0, 1).GetShape(), HvCurvePiece::Sampled);
        for (double x = -0.5; x <= 1.5; x += 0.01) {
            EXPECT_EQ(pieces.Value(x), curve->Eval(x, 0)) << x;
        }
    }
}
