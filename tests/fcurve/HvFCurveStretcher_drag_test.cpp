// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Any drag of any side of any region, on curves of every kind with any locks, against the slow
// model.

#include "any_quat_key.h"
#include "std_edit.h"
#include "stretch_drag.h"

#include "../support/curve_image.h"
#include "../support/drag_replay.h"
#include "../support/generators.h"

#include <hv/fcurve/HvBooleanFCurve.h>
#include <hv/fcurve/HvIntegerFCurve.h>
#include <hv/fcurve/HvRawFCurve.h>
#include <hv/fcurve/internal/HvCurveToolAccess.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <memory>
#include <string>
#include <vector>

namespace {

/// The model cuts the drag by halving, the library by one division: a few units in the last place
/// of numbers below 1000, times what 1/(side - pivot), here below 4, makes of them.
constexpr double kModelRounding = 1e-9;
/// Rounding of handles in a drag there and back: lengths and units of vectors below 100.
constexpr double kHandleRounding = 1e-9;

std::unique_ptr<HvBaseFCurve> NewCurve(HvBaseFCurve::Kind kind)
{
    switch (kind) {
    case HvBaseFCurve::Boolean:
        return std::unique_ptr<HvBaseFCurve>(new HvBooleanFCurve(0));
    case HvBaseFCurve::Integer:
        return std::unique_ptr<HvBaseFCurve>(new HvIntegerFCurve(0));
    case HvBaseFCurve::Raw:
        return std::unique_ptr<HvBaseFCurve>(new HvRawFCurve(0));
    case HvBaseFCurve::Quaternion:
        return std::unique_ptr<HvBaseFCurve>(new HvQuatFCurve(PickInRange(0u, 3u)));
    default:
        return std::unique_ptr<HvBaseFCurve>(new StdCurve(0, kCubic));
    }
}

void MakeHandlesAndKinds(StdCurve& curve, bool uniform)
{
    HvStdFCurveImpl& impl = curve.Impl();
    for (unsigned int i = 0; i < impl.NumKeys(); ++i) {
        CFCStdKey& key = impl.keys[i];
        if (PickInRange(0, 3) == 0) {
            key.rightValue += PickInRange(-4, 5);
            key.rightHandle.y = key.rightValue;
        }
        double const before = i == 0 ? 2 : (key.parameter - impl.Parameter(i - 1)) * 0.45;
        double const after =
            i + 1 == impl.NumKeys() ? 2 : (impl.Parameter(i + 1) - key.parameter) * 0.45;
        key.leftHandle = {key.parameter - before * PickInRange(0, 5) / 4,
                          key.leftValue + PickInRange(-3, 4)};
        key.rightHandle = {key.parameter + after * PickInRange(0, 5) / 4,
                           key.rightValue + PickInRange(-3, 4)};
        impl.SetKind(i, uniform ? kCubic : static_cast<FSKind>(PickInRange(1, 4)));
        unsigned short const bits[] = {0,
                                       0,
                                       0,
                                       Word::kTangentLengthLocked,
                                       Word::kTangentDirectionLocked,
                                       Word::kTangentContinuityLocked,
                                       Word::kTangentLengthContinuityLocked};
        key.constraints.word = bits[PickInRange(0, 7)];
    }
}

/// Gives the keys of a rotation other angles of the two other components, and any shape.
void MakeRotations(HvQuatFCurve& curve)
{
    HvQuatCurve& shown = *curve.GetQuatCurve();
    for (unsigned int i = 0; i < shown.GetNumKeys(); ++i) {
        double const value = shown.GetKeyValue(i, curve.GetComponent());
        shown.SetKey(i, AnyQuatKey(shown.GetKeyTime(i)));
        shown.SetKeyValue(i, curve.GetComponent(), value);
    }
}

/// Up to ten keys with parameters of -10 to 70 and values of -8 to 8.
std::unique_ptr<HvBaseFCurve> AnyCurve(HvBaseFCurve::Kind kind)
{
    std::unique_ptr<HvBaseFCurve> curve = NewCurve(kind);
    int const count = PickInRange(1, 11);
    double parameter = PickInRange(-40, 40) / 4.0;
    for (int i = 0; i < count; ++i) {
        double const value = kind == HvBaseFCurve::Boolean ? PickInRange(0, 2) : PickInRange(-8, 9);
        curve->CreateKey(parameter, value);
        parameter += PickInRange(1, 32) / 4.0;
    }
    if (kind == HvBaseFCurve::Standard) {
        MakeHandlesAndKinds(static_cast<StdCurve&>(*curve), PickInRange(0, 2) == 0);
    }
    if (kind == HvBaseFCurve::Quaternion) {
        MakeRotations(static_cast<HvQuatFCurve&>(*curve));
    }
    // A selection hidden behind that of the curve is lost with a key that is lifted.
    int const selected = PickInRange(0, 2);
    for (unsigned int i = 0; i < curve->GetNumKeys(); ++i) {
        double p = 0;
        curve->GetKeyParameter(i, p);
        if (PickInRange(0, 4) == 0) {
            curve->SetConstraint(p, HvBaseFCurve::ParameterLocked, 1, 0);
        }
        if (PickInRange(0, 4) == 0) {
            curve->SetConstraint(p, HvBaseFCurve::ValueLocked, 1, 0);
        }
        curve->SetKeySelected(i, selected != 0 ? PickInRange(0, 2) : 0);
        if (PickInRange(0, 3) == 0) {
            unsigned char const byte = static_cast<unsigned char>(i);
            curve->SetKeyUserData(p, Guid(1), &byte, 1, 0);
        }
    }
    curve->SetSelected(selected);
    curve->SetExtrapolationMethod(
        static_cast<HvBaseFCurve::ExtrapolationMethod>(PickInRange(1, 5)));
    return curve;
}

double AnyParameter(HvBaseFCurve const& curve)
{
    double p = 0;
    curve.GetKeyParameter(static_cast<unsigned int>(PickInRange(0, 10)) % curve.GetNumKeys(), p);
    return p;
}

StretchArguments AnyArguments(HvBaseFCurve const& curve)
{
    StretchArguments arguments;
    // An edge on a key, or nowhere near one; now and then no key in the width.
    double const x = AnyParameter(curve) - PickInRange(0, 3) * 0.55;
    double const y = PickInRange(-10, 8) + 0.3;
    double const width = PickInRange(0, 160) / 4.0 + 0.3;
    double const height = PickInRange(1, 14);
    arguments.region = HvExtent2<double>(x, y, x + width, y + height);
    arguments.handle = static_cast<HvBaseFCurve::RegionHandle>(1 << PickInRange(0, 4));
    bool const nearIsLow = arguments.handle == kLeftHandle || arguments.handle == kBottomHandle;
    HvPoint2<double> const nearCorner(nearIsLow ? x : x + width, nearIsLow ? y : y + height);
    HvPoint2<double> const farCorner(nearIsLow ? x + width : x, nearIsLow ? y + height : y);
    switch (PickInRange(0, 10)) {
    case 0:
        arguments.pivot = nearCorner;
        break;
    case 1:
    case 2:
        arguments.pivot = HvPoint2<double>(AnyParameter(curve), 1);
        break;
    case 3:
    case 4:
    case 5:
        arguments.pivot = HvPoint2<double>(PickInRange(-20, 60) + 0.7, PickInRange(-9, 10) + 0.7);
        break;
    default:
        arguments.pivot = farCorner;
    }
    arguments.ripple = PickInRange(0, 2) != 0;
    arguments.minimalScale = PickInRange(0, 3) * 0.125;
    for (int i = PickInRange(0, 4); i > 0; --i) {
        arguments.listed.push_back(AnyParameter(curve));
    }
    if (PickInRange(0, 3) == 0) {
        arguments.limits = HvExtent2<double>(PickInRange(-30, 10), PickInRange(-12, 0),
                                             PickInRange(20, 90), PickInRange(0, 12));
    }
    return arguments;
}

/// What a key carries along, by its parameter at the start.
struct Luggage {
    unsigned short locks;
    int selected;
    bool operator==(Luggage const& other) const
    {
        return locks == other.locks && selected == other.selected;
    }
};

Luggage LuggageOf(HvBaseFCurve const& curve, unsigned int i)
{
    Luggage luggage{0, curve.IsKeySelected(i)};
    for (int constraint = 1; constraint <= 8192; constraint *= 2) {
        int on = 0;
        curve.GetConstraintByIndex(i, static_cast<HvBaseFCurve::KeyConstraint>(constraint), on);
        luggage.locks = static_cast<unsigned short>(luggage.locks * 2 + on);
    }
    return luggage;
}

bool IsValid(HvBaseFCurve const& curve)
{
    if (curve.GetKind() == HvBaseFCurve::Standard) {
        return static_cast<StdCurve const&>(curve).Impl().IsValid() != 0;
    }
    double last = -HUGE_VAL;
    for (unsigned int i = 0; i < curve.GetNumKeys(); ++i) {
        double p = 0;
        curve.GetKeyParameter(i, p);
        if (!(p > last)) {
            return false;
        }
        last = p;
    }
    return true;
}

bool AreNear(Point const& a, Point const& b)
{
    return std::fabs(a.x - b.x) < kHandleRounding && std::fabs(a.y - b.y) < kHandleRounding;
}

/// One drag of a few steps, each compared with the model.
void ExpectDragAsInTheModel(HvBaseFCurve::Kind kind)
{
    std::unique_ptr<HvBaseFCurve> const curve = AnyCurve(kind);
    RC_PRE(IsValid(*curve));
    StretchArguments const arguments = AnyArguments(*curve);
    std::string const image = CurveImage(*curve);
    std::unique_ptr<HvBaseFCurve> const atStart(curve->Clone());
    RC_LOG() << image << "\n region " << arguments.region.min.x << " " << arguments.region.min.y
             << " " << arguments.region.max.x << " " << arguments.region.max.y << " pivot "
             << arguments.pivot.x << " " << arguments.pivot.y << " handle " << arguments.handle
             << " ripple " << arguments.ripple << " least " << arguments.minimalScale << "\n";
    for (double const x : arguments.listed) {
        RC_LOG() << " listed " << x << "\n";
    }
    StretchModel const model(*curve, arguments);
    std::vector<Luggage> luggage;
    for (unsigned int i = 0; i < curve->GetNumKeys(); ++i) {
        luggage.push_back(LuggageOf(*curve, i));
    }
    StretchDrag drag(*curve, arguments);
    drag.viewLeft = -100;
    drag.viewRight = 130;
    DragReplay replay(*curve, drag.viewLeft, drag.viewRight);
    if (!model.IsUsable()) {
        RC_ASSERT(drag.To(1) == 0);
        RC_ASSERT(drag.stretcher.Finalize() == 0);
        RC_ASSERT(CurveImage(*curve) == image);
        return;
    }
    double const extent = model.Horizontal() ? 60 : 20;
    for (int k = 0; k < 5; ++k) {
        double const amount =
            k == 4 ? 0 : PickInRange(-1000, 1001) / 1000.0 * (k % 2 == 0 ? extent : extent / 10);
        RC_LOG() << "step " << amount << "\n";
        std::unique_ptr<HvBaseFCurve> const previous(curve->Clone());
        std::string const previousImage = CurveImage(*curve);
        StretchModelStep const step = model.Step(amount);
        HvPoint2<double> told =
            model.Horizontal() ? HvPoint2<double>(amount, 5) : HvPoint2<double>(5, amount);
        double toldScale = 0;
        bool const toldLimited =
            drag.stretcher.ComputeScalingFactorAndTranslationVector(told, toldScale);
        if (drag.To(amount) == 0) {
            RC_ASSERT(CurveImage(*curve) == previousImage);
            // Only keys that fall on one another are refused: listed ones beyond the region can
            // meet those that follow.
            RC_ASSERT(model.Horizontal() && !arguments.listed.empty());
            continue;
        }
        RC_ASSERT(told == drag.translation);
        RC_ASSERT(toldLimited == (drag.limited != 0));
        RC_ASSERT(std::fabs(toldScale - step.scale) < kModelRounding);
        RC_ASSERT(std::fabs(drag.Used() - step.amount) < 100 * kModelRounding);
        if (step.doubt > 1e-8) {
            RC_ASSERT(step.limited == (drag.limited != 0));
        }

        // The keys: those of the model by rising parameter, with what they carry.
        std::vector<std::size_t> order;
        for (std::size_t i = 0; i < step.keys.size(); ++i) {
            order.push_back(i);
        }
        std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
            return step.keys[a].parameter < step.keys[b].parameter;
        });
        RC_ASSERT(curve->GetNumKeys() == order.size());
        RC_ASSERT(IsValid(*curve));
        std::string const fault = replay.Check(drag.invalid);
        RC_LOG() << fault << "\n";
        RC_ASSERT(fault.empty());
        bool areApart = true;
        for (std::size_t i = 1; i < order.size(); ++i) {
            double const before = step.keys[order[i - 1]].parameter;
            areApart = areApart && step.keys[order[i]].parameter - before > 100 * kModelRounding;
        }
        if (!areApart) {
            continue;  // which of two keys comes first is up to rounding
        }
        for (unsigned int i = 0; i < order.size(); ++i) {
            StretchModelKey const& expected = step.keys[order[i]];
            StretchModelKey const& start = model.Start()[order[i]];
            double p = 0;
            double left = 0;
            double right = 0;
            curve->GetKeyParameter(i, p);
            curve->GetKeyValuesByIndex(i, left, right);
            RC_ASSERT(std::fabs(p - expected.parameter) < 100 * kModelRounding);
            RC_ASSERT(!start.parameterLocked || p == start.parameter);
            if (kind == HvBaseFCurve::Standard) {
                bool const flips = step.scale < 0 && p != start.parameter;
                double const wanted = flips ? expected.right : expected.left;
                RC_ASSERT(std::fabs(left - wanted) < 100 * kModelRounding);
                right = flips ? left : right;
            }
            double const wanted = expected.right;
            bool const steps = kind == HvBaseFCurve::Boolean || kind == HvBaseFCurve::Integer;
            double const tolerance = 100 * kModelRounding + (steps ? 1 : 0);
            // Where the model is within rounding of half a step, either number is right.
            if (kind != HvBaseFCurve::Standard || step.scale >= 0) {
                RC_ASSERT(std::fabs(right - wanted) < tolerance);
                RC_ASSERT(!start.valueLocked || right == start.right);
            }
            RC_ASSERT(LuggageOf(*curve, i) == luggage[order[i]]);
        }
        // What the tool answers.
        RC_ASSERT(drag.after.Size() == model.End() - model.Begin());
        RC_ASSERT(drag.before.Size() == drag.after.Size());
        for (unsigned int j = 0; j < drag.after.Size(); ++j) {
            StretchModelKey const& expected = step.keys[model.Begin() + j];
            RC_ASSERT(std::fabs(drag.after[j] - expected.parameter) < 100 * kModelRounding);
            RC_ASSERT(curve->IsKeyParameter(drag.after[j], 0));
            RC_ASSERT(previous->IsKeyParameter(drag.before[j], 0));
        }
    }
    // The last step went back to the start.
    RC_ASSERT(drag.stretcher.Finalize() == 1);
    if (kind != HvBaseFCurve::Standard) {
        RC_ASSERT(CurveImage(*curve) == image);
        return;
    }
    HvStdFCurveImpl const& startCurve =
        HvCurveToolAccess::ImplOf(static_cast<HvStdFCurve&>(*atStart));
    for (unsigned int i = 0; i < curve->GetNumKeys(); ++i) {
        StretchModelKey const& start = model.Start()[i];
        CFCStdKey const& key = static_cast<StdCurve&>(*curve).Impl().keys[i];
        RC_ASSERT(key.parameter == start.parameter);
        RC_ASSERT(key.leftValue == start.left);
        RC_ASSERT(key.rightValue == start.right);
        // An outer handle of no length takes the place of a continued one for good.
        if (i != 0 || startCurve.LeftVector(i) != Point()) {
            RC_ASSERT(AreNear(key.leftHandle, startCurve.keys[i].leftHandle));
        }
        if (i + 1 != curve->GetNumKeys() || startCurve.RightVector(i) != Point()) {
            RC_ASSERT(AreNear(key.rightHandle, startCurve.keys[i].rightHandle));
        }
    }
}

}  // namespace

TEST(HvFCurveStretcher_drag, BooleanCurveFollowsTheModel)
{
    ExpectProperty("a boolean curve follows the model",
                   [] { ExpectDragAsInTheModel(HvBaseFCurve::Boolean); });
}

TEST(HvFCurveStretcher_drag, IntegerCurveFollowsTheModel)
{
    ExpectProperty("an integer curve follows the model",
                   [] { ExpectDragAsInTheModel(HvBaseFCurve::Integer); });
}

TEST(HvFCurveStretcher_drag, RawCurveFollowsTheModel)
{
    ExpectProperty("a raw curve follows the model",
                   [] { ExpectDragAsInTheModel(HvBaseFCurve::Raw); });
}

TEST(HvFCurveStretcher_drag, StandardCurveFollowsTheModel)
{
    ExpectProperty("a standard curve follows the model",
                   [] { ExpectDragAsInTheModel(HvBaseFCurve::Standard); });
}

TEST(HvFCurveStretcher_drag, RotationFollowsTheModel)
{
    ExpectProperty("a rotation follows the model",
                   [] { ExpectDragAsInTheModel(HvBaseFCurve::Quaternion); });
}
