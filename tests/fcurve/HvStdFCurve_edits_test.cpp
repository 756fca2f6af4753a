// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Edits of every kind after one another, with ordinary numbers and with hostile ones.

#include <hv/fcurve/HvStdTgtMover.h>

#include "std_edit.h"

#include "../support/generators.h"

#include <gtest/gtest.h>

namespace {

constexpr int kNumEdits = 27;

double OrdinaryNumber()
{
    return PickInRange(-300, 1301) * 0.01;
}

double HostileNumber()
{
    double const limit = std::numeric_limits<double>::max();
    double const infinity = std::numeric_limits<double>::infinity();
    double const numbers[] = {0.0,
                              -0.0,
                              5e-324,
                              -5e-324,
                              limit,
                              -limit,
                              infinity,
                              -infinity,
                              std::numeric_limits<double>::quiet_NaN(),
                              2147483648.0,
                              9007199254740992.0,
                              1e308,
                              1e-300,
                              1e-12,
                              std::nextafter(3.0, 4.0),
                              std::nextafter(3.0, 2.0)};
    int const n = static_cast<int>(sizeof numbers / sizeof numbers[0]);
    int const pick = PickInRange(0, 3 * n);
    return pick < n ? numbers[pick] : OrdinaryNumber();
}

/// One edit, picked at random, with numbers from `number`. Append, which may leave what it did, and
/// the tools are the caller's.
template <class Number>
int Edit(StdCurve& curve, int edit, Number number)
{
    auto const kind = [] { return static_cast<FSKind>(PickInRange(0, 5)); };
    auto const side = [] { return static_cast<HvBaseFCurve::KeySide>(PickInRange(0, 4)); };
    auto const flag = [] { return PickInRange(0, 2); };
    double x = number();
    switch (edit) {
    case 0:
        return curve.CreateKey(x, number(), kind(), kind());
    case 1:
        return curve.CreateNonModifyingKey(x, flag());
    case 2:
        return curve.MergeAndCreateKey(x, number(), number(), number(), kind(), kind(), flag(),
                                       flag(), flag());
    case 3:
        return curve.MergeAndCreateNonModifyingKey(x, number(), number(), flag(), flag(), flag(),
                                                   flag());
    case 4:
        return curve.RemoveKey(x, kind(), 1);
    case 5:
        return curve.RemoveKeys(x, number(), kind(), flag(), flag());
    case 6:
        return curve.RemoveHead(x);
    case 7:
        return curve.RemoveTail(x);
    case 8:
        return curve.AppendLinearSegment({x, number()});
    case 9:
        return curve.AppendConstantSegment({x, number()});
    case 10:
        return curve.AppendOrExtendLinearSegment({x, number()}, number());
    case 11:
        return curve.AppendBezierCubicSegment({x, number()}, {number(), number()},
                                              {number(), number()});
    case 12:
        return curve.ShiftParameters(x);
    case 13:
        return curve.ScaleParameterAxis(x);
    case 14:
        return curve.ShiftValues(x);
    case 15:
        return curve.ScaleAndShiftValues(x, number());
    case 16:
        return curve.MirrorValues();
    case 17:
        return curve.MirrorParameters();
    case 18:
        return curve.SetKeyValue(x, side(), number(), 1);
    case 19:
        return curve.SetSegmentKind(x, side(), kind(), 1);
    case 20:
        return curve.SetSegmentKindAtParameter(x, kind());
    case 21:
        return curve.ConvertToUniformSegmentKind(kind());
    case 22:
        return curve.SetKeyTgtHandle(x, side(), {number(), number()}, 1);
    case 23:
        return curve.SetKeyTgtHandles(x, {number(), number()}, {number(), number()}, 1);
    case 24:
        return curve.FreezeTangentsInInterval(x, number(), flag(), flag(), PickInRange(0, 16384));
    case 25:
        return curve.UnifyAndLockTangentContinuity(x, side(), 1);
    default:
        return curve.UnifyAndLockTangentLengthContinuity(x, side(), number(), 1);
    }
}

bool IsEveryNumberFinite(StdCurve const& curve)
{
    bool finite = std::isfinite(curve.Impl().valueWhenNoKeys);
    for (CFCStdKey const& key : curve.Impl().keys) {
        for (double const number : {key.parameter, key.leftValue, key.rightValue, key.leftHandle.x,
                                    key.leftHandle.y, key.rightHandle.x, key.rightHandle.y}) {
            finite = finite && std::isfinite(number);
        }
    }
    return finite;
}

/// Whether each set of user data stands at a key: the block is as long as the sets of the keys make
/// it. Every set here holds one blob of four bytes.
bool IsEveryUserDataSetAtAKey(StdCurve const& curve)
{
    unsigned int sets = 0;
    for (CFCStdKey const& key : curve.Impl().keys) {
        sets += curve.HasUserData(key.parameter) ? 1 : 0;
    }
    return curve.GetUserDataBufferSize() == (sets == 0 ? 9 : 15 + sets * 44);
}

StdCurve CurveWithUserData()
{
    StdCurve curve = MixedCurve();
    for (CFCStdKey const& key : curve.Impl().keys) {
        curve.SetUserDataSet(SetOf(1, "blob"), key.parameter);
    }
    return curve;
}

}  // namespace

TEST(HvStdFCurve_edits, EveryRunOfEditsLeavesAValidCurveWithItsDataAtItsKeys)
{
    ExpectProperty("ordinary edits keep order, segments and user data", [] {
        StdCurve curve = CurveWithUserData();
        StdCurve clipboard(0, kCubic);
        if (PickInRange(0, 3) == 0) {
            curve.SetDefaultBezierTangentConstraint(true);
        }
        for (int step = 0; step < 30; ++step) {
            std::string const before = StdImage(curve);
            double const from = OrdinaryNumber();
            int done = 1;
            switch (int const edit = PickInRange(0, kNumEdits + 4)) {
            case kNumEdits:
                done = curve.Cut(from, from + PickInRange(0, 300) * 0.01, clipboard);
                break;
            case kNumEdits + 1:
                done = curve.Paste(clipboard, from, from + PickInRange(0, 300) * 0.01);
                break;
            case kNumEdits + 2: {
                double x = from;
                int const bits = PickInRange(0, 16384) & ~(1 | 2 | 8 | 16 | 32);
                done = curve.SetConstraint(x, static_cast<HvBaseFCurve::KeyConstraint>(bits),
                                           PickInRange(0, 2), 1);
                break;
            }
            case kNumEdits + 3:
                done = curve.FreezeAllTangents(64 | 128 | 512 | 2048 | 8192);
                break;
            default:
                done = Edit(curve, edit, OrdinaryNumber);
            }
            RC_LOG() << "step " << step << " gives " << done << "\nbefore" << before << "\nafter"
                     << StdImage(curve) << "\n";
            RC_ASSERT(done == 1 || StdImage(curve) == before);
            RC_ASSERT(curve.Impl().IsValid() != 0);
            RC_ASSERT(IsEveryNumberFinite(curve));
            RC_ASSERT(IsEveryUserDataSetAtAKey(curve));
        }
    });
}

TEST(HvStdFCurve_edits, HostileNumbersAreRefusedOrLeaveAValidCurve)
{
    ExpectProperty("whatever the numbers, the curve stays valid and finite", [] {
        StdCurve curve = CurveWithUserData();
        for (int step = 0; step < 10; ++step) {
            std::string const before = StdImage(curve);
            int const edit = PickInRange(0, kNumEdits);
            RC_LOG() << "edit " << edit << " ";
            int const done = Edit(curve, edit, HostileNumber);
            RC_LOG() << "step " << step << " gives " << done << "\nbefore" << before << "\nafter"
                     << StdImage(curve) << "\n";
            RC_ASSERT(done == 1 || StdImage(curve) == before);
            RC_ASSERT(curve.Impl().IsValid() != 0);
            RC_ASSERT(IsEveryNumberFinite(curve));
            RC_ASSERT(IsEveryUserDataSetAtAKey(curve));
        }
    });
}
