// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Random drags on random curves of every kind, against a model that only knows where keys may go,
// and against what must hold of any drag.

#include <hv/fcurve/HvFCurveKeyMover.h>

#include "any_quat_key.h"
#include "key_move_model.h"
#include "raw_test_support.h"
#include "std_edit.h"

#include <tests/support/drag_replay.h>
#include <tests/support/generators.h>

namespace {

using Extent = HvExtent2<double>;

constexpr HvBaseFCurve::ExtrapolationMethod kMethods[] = {
    HvBaseFCurve::ConstantExtrapolation, HvBaseFCurve::LinearExtrapolation,
    HvBaseFCurve::CycleExtrapolation, HvBaseFCurve::RelativeCycleExtrapolation};

/// Rising parameters at quarters, so that keys meet now and then.
std::vector<double> AnyParameters()
{
    std::vector<double> parameters;
    double x = PickInRange(-8, 8) / 4.0;
    for (int n = PickInRange(1, 12); n > 0; --n) {
        parameters.push_back(x);
        x += PickInRange(1, 9) / 4.0;
    }
    return parameters;
}

template <class Curve>
void SetAnyFields(Curve& curve)
{
    curve.SetExtrapolationMethod(kMethods[PickInRange(0, 4)]);
    curve.SetSelected(1);
    for (unsigned int i = 0; i < curve.GetNumKeys(); ++i) {
        double x = 0;
        curve.GetKeyParameter(i, x);
        curve.SetKeySelected(i, PickInRange(0, 2));
        curve.SetConstraint(x, HvBaseFCurve::ParameterLocked, PickInRange(0, 5) == 0, 0);
        curve.SetConstraint(x, HvBaseFCurve::ValueLocked, PickInRange(0, 5) == 0, 0);
        if (PickInRange(0, 3) == 0) {
            curve.SetUserDataSet(SetOf(1, std::to_string(x).c_str()), x);
        }
    }
}

template <class Curve>
Curve AnyCurve(int lowestValue, int endOfValues)
{
    Curve curve(0.0);
    for (double const x : AnyParameters()) {
        curve.CreateKey(x, PickInRange(lowestValue, endOfValues));
    }
    SetAnyFields(curve);
    return curve;
}

/// What the handles of a key may be derived from, or kept by.
constexpr unsigned short kAnyWord[] = {0,
                                       Word::kTangentContinuityLocked,
                                       Word::kAutomaticTangents,
                                       Word::kAutomaticTangents | Word::kUnlimitedAutoSlope,
                                       Word::kFlatTangents,
                                       Word::kFlatAtExtremum,
                                       Word::kLinearTangents,
                                       Word::kTangentLengthLocked,
                                       Word::kTangentLengthContinuityLocked,
                                       Word::kTangentDirectionLocked,
                                       Word::kMirroredTangents};

/// Draws in the handles of segments that would turn back.
void MakeSegmentsValid(StdCurve& curve)
{
    HvStdFCurveImpl& impl = curve.Impl();
    for (unsigned int i = 0; i + 1 < impl.NumKeys(); ++i) {
        if (!impl.IsSegmentValidWith(i, impl.keys[i].rightHandle, impl.keys[i + 1].leftHandle)) {
            impl.keys[i].rightHandle = impl.RightPoint(i);
            impl.keys[i + 1].leftHandle = impl.LeftPoint(i + 1);
        }
    }
}

/// A curve with jumps, mixed kinds, and handles some of which reach past the next key, or hardly
/// leave their own.
StdCurve AnyStdCurve()
{
    std::vector<double> const parameters = AnyParameters();
    StdCurve curve({});
    std::size_t const last = parameters.size() - 1;
    bool const isUniform = PickInRange(0, 3) == 0;
    for (std::size_t i = 0; i <= last; ++i) {
        double const x = parameters[i];
        double const spanBefore = i == 0 ? 1 : x - parameters[i - 1];
        double const spanAfter = i == last ? 1 : parameters[i + 1] - x;
        CFCStdKey key(x, PickInRange(-5, 6),
                      static_cast<FSKind>(isUniform ? 3 : PickInRange(1, 4)));
        key.rightValue = PickInRange(0, 3) == 0 ? PickInRange(-5, 6) : key.leftValue;
        auto const share = [] {
            return PickInRange(0, 20) == 0 ? 1e-8 : PickInRange(1, 13) / 10.0;
        };
        key.leftHandle = Point(x - share() * spanBefore, key.leftValue + PickInRange(-2, 3));
        key.rightHandle = Point(x + share() * spanAfter, key.rightValue + PickInRange(-2, 3));
        key.constraints.word = kAnyWord[PickInRange(0, 11)];
        key.privateByte1 = static_cast<unsigned char>(i);
        curve.Impl().keys.Add(key);
    }
    MakeSegmentsValid(curve);
    curve.SetDefaultBezierTangentConstraint(PickInRange(0, 5) == 0);
    curve.Impl().defaultSegmentKind = isUniform ? 3 : PickInRange(1, 4);
    SetAnyFields(curve);
    return curve;
}

/// A component of a rotation with keys of any shape.
HvQuatFCurve AnyQuatCurve()
{
    HvQuatFCurve curve(PickInRange(0u, 3u));
    HvQuatCurve& shown = *curve.GetQuatCurve();
    for (double const x : AnyParameters()) {
        shown.SetKey(AnyQuatKey(x), 0.0);
    }
    SetAnyFields(curve);
    shown.SetExtrapolationMethod(PickInRange(1u, 5u));
    shown.SetRotOrder(static_cast<HvQuat::RotOrder>(PickInRange(0, 6)));
    shown.SetSelected(PickInRange(0, 2));
    return curve;
}

std::vector<double> AnySet(HvBaseFCurve const& curve)
{
    std::vector<double> all;
    std::vector<double> set;
    int const share = PickInRange(1, 5);
    for (unsigned int i = 0; i < curve.GetNumKeys(); ++i) {
        double x = 0;
        curve.GetKeyParameter(i, x);
        all.push_back(x);
        if (PickInRange(0, 4) < share) {
            set.push_back(x);
        }
    }
    return set.empty() ? all : set;
}

/// Ways at quarters, which meet keys, and between them.
HvPoint2<double> AnyTranslation()
{
    double const x = PickInRange(-40, 41) / 4.0;
    double const aside[] = {0, 0, 0.1, 0.9e-6, -1.1e-6};
    return {x + aside[PickInRange(0, 5)], PickInRange(-12, 13) / 4.0};
}

Extent AnyLimits()
{
    return PickInRange(0, 3) == 0 ? Extent(-6, -7, 12, 7) : Extent();
}

/// Where a curve stands beside the model: the first difference as a sentence.
std::string Difference(HvBaseFCurve const& curve, KeyMoveModel const& model, double tolerance)
{
    std::vector<KeyMoveModel::Key> const expected = model.Sorted();
    if (curve.GetNumKeys() != expected.size()) {
        return "another number of keys";
    }
    bool const isStandard = curve.GetKind() == HvBaseFCurve::Standard;
    // Angles are kept in radians.
    double const ofValues = curve.GetKind() == HvBaseFCurve::Quaternion ? kRoundTrip : tolerance;
    for (unsigned int i = 0; i < curve.GetNumKeys(); ++i) {
        double x = 0;
        double left = 0;
        double right = 0;
        curve.GetKeyParameter(i, x);
        curve.GetKeyValuesByIndex(i, left, right);
        KeyMoveModel::Key const& key = expected[i];
        // A key that has become the first shows no jump until it is another's again.
        bool const isLeftKnown = isStandard && (key.isDragged || i != 0);
        if (!(std::fabs(x - key.x) <= tolerance) || !(std::fabs(right - key.right) <= ofValues) ||
            (isLeftKnown && !(std::fabs(left - key.left) <= ofValues))) {
            std::ostringstream text;
            text << "key " << i << " at " << x << " (" << left << ", " << right << ") and not at "
                 << key.x << " (" << key.left << ", " << key.right << ")";
            return text.str();
        }
        int isLocked = 0;
        curve.GetConstraintByIndex(i, HvBaseFCurve::ValueLocked, isLocked);
        if ((isLocked != 0) != key.isValueLocked) {
            return "the locks of key " + std::to_string(i);
        }
    }
    return std::string();
}

/// Plays a random drag, ends it at (0, 0), and checks all along. The curve is as it was then; what
/// only its kind knows is compared by `compare(before, after)`.
template <class Curve, class Compare>
void PlayAnyDrag(Curve& curve, Compare compare)
{
    Curve const before(curve);
    std::vector<double> const set = AnySet(curve);
    Extent const limits = AnyLimits();
    KeyMoveModel model(curve, set, limits);
    HvDoubleArray given;
    for (double const x : set) {
        given.Add(x);
    }
    constexpr double kViewLeft = -15;
    constexpr double kViewRight = 40;
    // A shift of the whole curve adds up what a drag adds once: steps of a few units in the last
    // place of numbers below 100, ten of them.
    double const tolerance = model.IsWhole() ? 1e-12 : 0;

    DragSteps steps;
    for (int n = PickInRange(1, 8); n > 0; --n) {
        steps.push_back(AnyTranslation());
    }
    steps.push_back({0, 0});
    {
        HvFCurveKeyMover mover(curve, given, limits, Extent(0, 0, 1, 1));
        DragReplay replay(curve, kViewLeft, kViewRight);
        std::string fault = replay.Play(steps, [&](HvPoint2<double> t, Extent& invalid) {
            HvPoint2<double> expected = t;
            HvDoubleArray stand;
            Extent moved;
            int const result = mover.Update(t, stand, invalid, moved, kViewLeft, kViewRight);
            bool const isDone = model.IsUsable() && model.Move(expected);
            RC_ASSERT(result == (isDone ? 1 : 0));
            RC_ASSERT(!isDone || t == expected);
            RC_ASSERT(Difference(curve, model, tolerance) == "");
            std::vector<double> const places = isDone ? model.Dragged() : std::vector<double>();
            RC_ASSERT(stand.Size() == places.size());
            for (unsigned int i = 0; i < stand.Size(); ++i) {
                RC_ASSERT(std::fabs(stand[i] - places[i]) <= tolerance);
            }
        });
        RC_ASSERT(fault == "");
        mover.Finalize();
    }
    if (limits.state != Extent::Ordinary) {
        compare(before, curve);
    }
}

/// User data, selection and words are back to the bit.
template <class Curve>
void AssertSameBesides(Curve const& before, Curve const& after)
{
    for (unsigned int i = 0; i < before.GetNumKeys(); ++i) {
        double was = 0;
        double is = 0;
        before.GetKeyParameter(i, was);
        after.GetKeyParameter(i, is);
        RC_ASSERT(before.IsKeySelected(i) == after.IsKeySelected(i));
        RC_ASSERT(TextIn(before.GetUserDataSet(was), 1) == TextIn(after.GetUserDataSet(is), 1));
    }
}

template <class Curve>
void AssertSameSingleValues(Curve const& before, Curve const& after)
{
    AssertSameBesides(before, after);
    RC_ASSERT(std::fabs(before.GetMinusInfinityVal() - after.GetMinusInfinityVal()) < 1e-12);
}

void AssertSameStandard(StdCurve const& before, StdCurve const& after)
{
    AssertSameBesides(before, after);
    HvStdFCurveImpl const& was = before.Impl();
    HvStdFCurveImpl const& is = after.Impl();
    RC_ASSERT(was.defaultSegmentKind == is.defaultSegmentKind);
    for (unsigned int i = 0; i < was.NumKeys(); ++i) {
        RC_ASSERT(was.keys[i].segmentKind == is.keys[i].segmentKind);
        RC_ASSERT(was.keys[i].privateByte1 == is.keys[i].privateByte1);
        RC_ASSERT(was.ConstraintWord(i) == is.ConstraintWord(i));
        RC_ASSERT(std::fabs(was.keys[i].leftValue - is.keys[i].leftValue) < 1e-12);
        constexpr double kTangent = 1e-9;
        RC_ASSERT(HvPoint2_Length(was.LeftVector(i) - is.LeftVector(i)) < kTangent);
        RC_ASSERT(HvPoint2_Length(was.RightVector(i) - is.RightVector(i)) < kTangent);
    }
}

void AssertSameRotation(HvQuatFCurve const& before, HvQuatFCurve const& after)
{
    AssertSameBesides(before, after);
    RC_ASSERT(QuatImage(before) == QuatImage(after));
}

}  // namespace

TEST(HvFCurveKeyMover_drags, OfBooleanCurvesFollowTheModelAndLeadBack)
{
    ExpectProperty("boolean", [] {
        OpenBoolean curve = AnyCurve<OpenBoolean>(0, 2);
        curve.SetLeftValue(PickInRange(0, 2));
        PlayAnyDrag(curve, AssertSameSingleValues<OpenBoolean>);
    });
}

TEST(HvFCurveKeyMover_drags, OfIntegerCurvesFollowTheModelAndLeadBack)
{
    ExpectProperty("integer", [] {
        OpenInteger curve = AnyCurve<OpenInteger>(-5, 6);
        curve.SetLeftValue(PickInRange(-5, 6));
        PlayAnyDrag(curve, AssertSameSingleValues<OpenInteger>);
    });
}

TEST(HvFCurveKeyMover_drags, OfRawCurvesFollowTheModelAndLeadBack)
{
    ExpectProperty("raw", [] {
        OpenRaw curve = AnyCurve<OpenRaw>(-5, 6);
        PlayAnyDrag(curve, AssertSameSingleValues<OpenRaw>);
    });
}

TEST(HvFCurveKeyMover_drags, OfStandardCurvesFollowTheModelAndLeadBack)
{
    ExpectProperty("standard", [] {
        StdCurve curve = AnyStdCurve();
        RC_PRE(EverySegmentRunsForward(curve));
        PlayAnyDrag(curve, AssertSameStandard);
    });
}

TEST(HvFCurveKeyMover_drags, OfRotationsFollowTheModelAndLeadBack)
{
    ExpectProperty("rotation", [] {
        HvQuatFCurve curve = AnyQuatCurve();
        RC_LOG() << QuatImage(curve) << "\n";
        PlayAnyDrag(curve, AssertSameRotation);
    });
}
