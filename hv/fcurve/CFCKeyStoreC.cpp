// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The evaluated tangents of standard keys, and the value inside a segment.
//
// The first rule whose bit the key has decides. p is the key's parameter, v its value on the
// handle's side, H the general handle x: p for zero length, a third of the span for an automatic
// key with a neighbour on that side, otherwise the stored x.
//
//     zero length       (p, v)
//     flat              (stored x, v)
//     flat at extremum  (stored x, v) when the key is one, otherwise the rules go on
//     linear            (H, on the line to the neighbour on that side), v without one
//     no rule           the stored handle
//     automatic         (H, v + (H - p) * slope), v for the first and the last key
//
// Three forms read these rules, and they differ on purpose:
//  - both coordinates (GetEvaluatedLeftTgt, GetEvaluatedRightTgt, and the set-up of a segment's
//    control points) ask every key with the bit whether it is an extremum;
//  - y alone (GetEvaluatedLeftTgtY, GetEvaluatedRightTgtY) asks an automatic key only when its
//    overshoot is not limited, since the limit already keeps extrema flat;
//  - EvalJustAfterIndex takes y from the second form, and H as x of every handle, so that a flat
//    automatic key is evaluated with its handle at the third.

#include <hv/fcurve/internal/HvStdFCurveImpl.h>

#include <cmath>

namespace {

using Point = HvPoint2<double>;
using Word = CFCKeyConstraint;

/// How far beyond both neighbours' values a key may stay behind and still count as an extremum.
/// Larger flattens keys on gentle slopes, smaller lets noise in equal values tilt a plateau.
constexpr double kExtremumValueTolerance = 1e-6;

/// The bits of the word that derive handles; without any the stored handle holds.
constexpr unsigned short kDerivingBits = Word::kFlatTangents | Word::kFlatAtExtremum |
                                         Word::kZeroLengthTangents | Word::kLinearTangents |
                                         Word::kAutomaticTangents;

/// Which keys with the FlatAtExtremum bit are asked whether they are an extremum.
enum class ExtremumTest {
    All,
    AllButLimitedAutomatic
};

/// A key and its neighbours, null beyond the ends.
struct KeySite {
    CFCStdKey const& key;
    CFCStdKey const* previous;
    CFCStdKey const* next;

    bool IsInner() const { return previous != nullptr && next != nullptr; }
    bool Has(unsigned short bits) const { return key.constraints.HasAny(bits); }
};

KeySite SiteOf(HvAltDynArray<CFCStdKey> const& keys, unsigned int i)
{
    CFCStdKey const* const key = keys.Data() + i;
    return {*key, i == 0 ? nullptr : key - 1, i + 1 < keys.Count() ? key + 1 : nullptr};
}

/// What the left and the right handle have each for its own, so that a rule is written once.
struct LeftSide {
    static double Value(CFCStdKey const& key) { return key.leftValue; }
    static Point const& Stored(CFCStdKey const& key) { return key.leftHandle; }
    static CFCStdKey const* Neighbour(KeySite const& site) { return site.previous; }
    /// The value with which a neighbour faces the key.
    static double FacingValue(CFCStdKey const& neighbour) { return neighbour.rightValue; }
};
struct RightSide {
    static double Value(CFCStdKey const& key) { return key.rightValue; }
    static Point const& Stored(CFCStdKey const& key) { return key.rightHandle; }
    static CFCStdKey const* Neighbour(KeySite const& site) { return site.next; }
    static double FacingValue(CFCStdKey const& neighbour) { return neighbour.leftValue; }
};

/// H, the general handle x.
template <class Side>
double HandleX(KeySite const& site)
{
    double const p = site.key.parameter;
    if (site.Has(Word::kZeroLengthTangents)) {
        return p;
    }
    CFCStdKey const* const neighbour = Side::Neighbour(site);
    if (site.Has(Word::kAutomaticTangents) && neighbour != nullptr) {
        return p + (neighbour->parameter - p) * kThirdOfSpan;
    }
    return Side::Stored(site.key).x;
}

/// Whether the first, the last or a key that does not lie between its neighbours' values.
bool IsExtremum(KeySite const& site)
{
    if (!site.IsInner()) {
        return true;
    }
    double const a = site.previous->rightValue;
    double const b = site.next->leftValue;
    auto const isBeyondBoth = [a, b](double v) {
        return (v <= a + kExtremumValueTolerance && v <= b + kExtremumValueTolerance) ||
               (a - kExtremumValueTolerance <= v && b - kExtremumValueTolerance <= v);
    };
    double const right = site.key.rightValue;
    double const left = site.key.leftValue;
    return isBeyondBoth(right) || (right != left && isBeyondBoth(left));
}

/// Whether a flat rule makes the handles level.
bool IsFlat(KeySite const& site, ExtremumTest test)
{
    if (site.Has(Word::kFlatTangents)) {
        return true;
    }
    if (!site.Has(Word::kFlatAtExtremum)) {
        return false;
    }
    bool const isLimitedAutomatic =
        site.Has(Word::kAutomaticTangents) && !site.Has(Word::kUnlimitedAutoSlope);
    if (test == ExtremumTest::AllButLimitedAutomatic && isLimitedAutomatic) {
        return false;
    }
    return IsExtremum(site);
}

/// The slope of an inner automatic key: that of the chord between its neighbours, unless one of the
/// handles would then leave the range of the neighbours' values; then the slope that keeps both in.
double AutomaticSlope(KeySite const& site)
{
    double const a = site.previous->rightValue;
    double const b = site.next->leftValue;
    double const slope = (b - a) / (site.next->parameter - site.previous->parameter);
    if (site.Has(Word::kUnlimitedAutoSlope)) {
        return slope;
    }
    double const low = b < a ? b : a;
    double const high = b < a ? a : b;
    auto const isOutside = [low, high](double v) { return v < low || v > high; };
    double const left = site.key.leftValue;
    double const right = site.key.rightValue;
    if (isOutside(left) || isOutside(right)) {
        return 0;
    }
    // The slope of one handle, cut where the handle meets the range.
    auto const limited = [&](double value, double reach) {
        double const y = value + slope * reach;
        return isOutside(y) ? ((y < low ? low : high) - value) / reach : slope;
    };
    double const slopeLeft = limited(left, HandleX<LeftSide>(site) - site.key.parameter);
    double const slopeRight = limited(right, HandleX<RightSide>(site) - site.key.parameter);
    return std::fabs(slopeLeft) < std::fabs(slopeRight) ? slopeLeft : slopeRight;
}

template <class Side>
double HandleY(KeySite const& site, ExtremumTest test)
{
    if (!site.Has(kDerivingBits)) {
        return Side::Stored(site.key).y;
    }
    double const value = Side::Value(site.key);
    if (site.Has(Word::kZeroLengthTangents) || IsFlat(site, test)) {
        return value;
    }
    double const p = site.key.parameter;
    if (site.Has(Word::kLinearTangents)) {
        CFCStdKey const* const neighbour = Side::Neighbour(site);
        if (neighbour == nullptr) {
            return value;
        }
        double const slope = (Side::FacingValue(*neighbour) - value) / (neighbour->parameter - p);
        return value + slope * (HandleX<Side>(site) - p);
    }
    if (!site.Has(Word::kAutomaticTangents)) {
        return Side::Stored(site.key).y;
    }
    return site.IsInner() ? value + (HandleX<Side>(site) - p) * AutomaticSlope(site) : value;
}

template <class Side>
Point Handle(KeySite const& site)
{
    if (!site.Has(kDerivingBits)) {
        return Side::Stored(site.key);
    }
    if (!site.Has(Word::kZeroLengthTangents) && IsFlat(site, ExtremumTest::All)) {
        return {Side::Stored(site.key).x, Side::Value(site.key)};
    }
    return {HandleX<Side>(site), HandleY<Side>(site, ExtremumTest::All)};
}

}  // namespace

template <class T, class K>
HvPoint2<double> CFCKeyStoreC<T, K>::GetEvaluatedLeftTgt(unsigned int i) const
{
    return Handle<LeftSide>(SiteOf(keys, i));
}

template <class T, class K>
HvPoint2<double> CFCKeyStoreC<T, K>::GetEvaluatedRightTgt(unsigned int i) const
{
    return Handle<RightSide>(SiteOf(keys, i));
}

template <class T, class K>
double CFCKeyStoreC<T, K>::GetEvaluatedLeftTgtY(unsigned int i) const
{
    return HandleY<LeftSide>(SiteOf(keys, i), ExtremumTest::AllButLimitedAutomatic);
}

template <class T, class K>
double CFCKeyStoreC<T, K>::GetEvaluatedRightTgtY(unsigned int i) const
{
    return HandleY<RightSide>(SiteOf(keys, i), ExtremumTest::AllButLimitedAutomatic);
}

template <class T, class K>
void CFCKeyStoreC<T, K>::BezierCubicSetupUsingEvaluatedTangents(unsigned int i, unsigned int j,
                                                                HvPoint2<double>* P) const
{
    P[0] = Point(keys[i].parameter, keys[i].rightValue);
    P[1] = GetEvaluatedRightTgt(i);
    P[2] = GetEvaluatedLeftTgt(j);
    P[3] = Point(keys[j].parameter, keys[j].leftValue);
}

template <class T, class K>
double CFCKeyStoreC<T, K>::EvalJustAfterIndex(double x, unsigned int i) const
{
    K const& key = keys[i];
    K const& next = keys[i + 1];
    switch (key.segmentKind) {
    case HvBaseFCurve::ConstantSegment:
        return key.rightValue;
    case HvBaseFCurve::LinearSegment:
        return key.rightValue + (next.leftValue - key.rightValue) *
                                    ((x - key.parameter) / (next.parameter - key.parameter));
    case HvBaseFCurve::CubicSegment: {
        KeySite const site = SiteOf(keys, i);
        KeySite const nextSite = SiteOf(keys, i + 1);
        double const t = FindCubicParameter(x, key.parameter, HandleX<RightSide>(site),
                                            HandleX<LeftSide>(nextSite), next.parameter);
        return EvalCubicAt(t, key.rightValue, GetEvaluatedRightTgtY(i), GetEvaluatedLeftTgtY(i + 1),
                           next.leftValue);
    }
    default:
        return 0;
    }
}

template HvPoint2<double> CFCKeyStoreC<double, CFCStdKey>::GetEvaluatedLeftTgt(unsigned int) const;
template HvPoint2<double> CFCKeyStoreC<double, CFCStdKey>::GetEvaluatedRightTgt(unsigned int) const;
template double CFCKeyStoreC<double, CFCStdKey>::GetEvaluatedLeftTgtY(unsigned int) const;
template double CFCKeyStoreC<double, CFCStdKey>::GetEvaluatedRightTgtY(unsigned int) const;
template void
CFCKeyStoreC<double, CFCStdKey>::BezierCubicSetupUsingEvaluatedTangents(unsigned int, unsigned int,
                                                                        HvPoint2<double>*) const;
template double CFCKeyStoreC<double, CFCStdKey>::EvalJustAfterIndex(double, unsigned int) const;
