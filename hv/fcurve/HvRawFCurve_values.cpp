// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The raw curve's values, clamps and constraints.

#include <hv/fcurve/HvRawFCurve.h>
#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvRawFCurveImpl.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {

/// A lower clamp is rescaled only above this, the smallest positive normal double. A clamp of the
/// most negative double, which limits nothing, must stay; that zero and every other negative clamp
/// stay with it is what callers rely on.
constexpr double kLowestScaledClamp = std::numeric_limits<double>::min();

bool IsSide(HvBaseFCurve::KeySide side)
{
    return side == HvBaseFCurve::Left || side == HvBaseFCurve::Right;
}

/// Gives all values and the value when no keys the height map(y); false, with nothing changed, when
/// one would not stay finite.
template <class Map>
bool MapValues(HvRawFCurveImpl& curve, Map const& map)
{
    bool const isFinite = std::isfinite(map(curve.valueWhenNoKeys)) &&
                          std::all_of(curve.keys.begin(), curve.keys.end(), [&](auto const& key) {
                              return std::isfinite(map(key.value));
                          });
    if (!isFinite) {
        return false;
    }
    curve.valueWhenNoKeys = map(curve.valueWhenNoKeys);
    for (auto& key : curve.keys) {
        key.value = map(key.value);
    }
    return true;
}

}  // namespace

int HvRawFCurveImpl::IsValid() const
{
    bool const hasNaN =
        std::isnan(valueWhenNoKeys) || std::any_of(keys.begin(), keys.end(), [](auto const& key) {
            return std::isnan(key.parameter) || std::isnan(key.value);
        });
    return !hasNaN && lowerClamp <= upperClamp ? HasAscendingParameters() : 0;
}

int HvRawFCurve::GetKeyValue(double x, KeySide side, double& value, double tolerance) const
{
    HvCurveReader const lock(*this);
    unsigned int i;
    if (!IsSide(side) || !impl_->FindKey(x, tolerance, i)) {
        return 0;
    }
    value = impl_->keys[i].value;
    return 1;
}

int HvRawFCurve::SetKeyValue(double x, KeySide side, double value, double tolerance)
{
    HvCurveWriter const lock(*this);
    unsigned int i;
    if (impl_->readOnly || !IsSide(side) || !std::isfinite(value) ||
        AreAnyValuesLockedInInterval(x, x, 0, 0) || !impl_->FindKey(x, tolerance, i)) {
        return 0;
    }
    impl_->keys[i].value = value;
    return 1;
}

unsigned int HvRawFCurve::GetKeys(HvDoubleArray& parameters, HvDoubleArray& leftValues,
                                  HvDoubleArray& rightValues, int selectedOnly) const
{
    return CollectKeys(parameters, leftValues, rightValues, selectedOnly);
}

int HvRawFCurve::ShiftValues(double offset)
{
    HvCurveWriter const lock(*this);
    if (impl_->readOnly || AreAnyValuesLockedInInterval(-kHvMaxDouble, kHvMaxDouble, 0, 0)) {
        return 0;
    }
    return MapValues(*impl_, [offset](double y) { return y + offset; }) ? 1 : 0;
}

int HvRawFCurve::ScaleAndShiftValues(double scale, double offset)
{
    if (!(std::fabs(scale) >= kSmallestValueScale)) {
        return 0;
    }
    HvCurveWriter const lock(*this);
    if (impl_->readOnly || AreAnyValuesLockedInInterval(-kHvMaxDouble, kHvMaxDouble, 0, 0)) {
        return 0;
    }
    auto const mapped = [scale, offset](double y) { return y * scale + offset; };
    double lower = impl_->lowerClamp;
    double upper = impl_->upperClamp;
    if (lower > kLowestScaledClamp) {
        lower = mapped(lower);
    }
    if (upper < kHvMaxDouble) {
        upper = mapped(upper);
    }
    if (lower > upper) {
        std::swap(lower, upper);
    }
    // Clamps that were set infinite may be so still, but none becomes NaN.
    if (!(lower <= upper) || !MapValues(*impl_, mapped)) {
        return 0;
    }
    impl_->lowerClamp = lower;
    impl_->upperClamp = upper;
    return 1;
}

int HvRawFCurve::MirrorValues()
{
    HvCurveWriter const lock(*this);
    if (impl_->readOnly || AreAnyValuesLockedInInterval(-kHvMaxDouble, kHvMaxDouble, 0, 0)) {
        return 0;
    }
    if (impl_->NumKeys() == 0) {
        return 1;
    }
    double const sum = impl_->GetValueUpperBound(0) + impl_->GetValueLowerBound(0);
    return MapValues(*impl_, [sum](double y) { return sum - y; }) ? 1 : 0;
}

// Clamping values.

int HvRawFCurve::SetClampingValues(double lower, double upper)
{
    HvCurveWriter const lock(*this);
    if (impl_->readOnly || !(lower <= upper)) {
        return 0;
    }
    impl_->lowerClamp = lower;
    impl_->upperClamp = upper;
    return 1;
}

int HvRawFCurve::GetClampingValues(double& lower, double& upper) const
{
    HvCurveReader const lock(*this);
    lower = impl_->lowerClamp;
    upper = impl_->upperClamp;
    return 1;
}

// Constraints.

int HvRawFCurve::SetConstraint(double& parameter, KeyConstraint, int, double tolerance)
{
    HvCurveWriter const lock(*this);
    unsigned int i;
    if (impl_->readOnly || !impl_->FindKey(parameter, tolerance, i)) {
        return 0;
    }
    parameter = impl_->Parameter(i);
    return 1;
}

int HvRawFCurve::GetConstraint(double& parameter, KeyConstraint, int& on, double tolerance) const
{
    HvCurveReader const lock(*this);
    unsigned int i;
    if (!impl_->FindKey(parameter, tolerance, i)) {
        return 0;
    }
    on = 0;
    parameter = impl_->Parameter(i);
    return 1;
}

int HvRawFCurve::GetConstraintByIndex(unsigned int index, KeyConstraint, int& on) const
{
    HvCurveReader const lock(*this);
    if (index >= impl_->NumKeys()) {
        return 0;
    }
    on = 0;
    return 1;
}
