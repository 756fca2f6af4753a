// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Stepped curves for tests: short ways to build one and to see all of it.

#ifndef TESTS_FCURVE_STEPPED_TEST_SUPPORT_H
#define TESTS_FCURVE_STEPPED_TEST_SUPPORT_H

#include <hv/fcurve/CFCUserDataSet.h>
#include <hv/fcurve/HvBooleanFCurve.h>
#include <hv/fcurve/HvIntegerFCurve.h>
#include <hv/fcurve/internal/CFCSingleValueImpl.h>
#include <hv/foundation/HvDoubleArray.h>
#include <tests/support/curve_image.h>

#include <initializer_list>
#include <limits>
#include <string>
#include <utility>
#include <vector>

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// A curve whose implementation a test may reach.
template <class Curve>
class Open : public Curve {
public:
    using Curve::Curve;
    Open(double whenNoKeys, std::initializer_list<std::pair<double, double>> keys)
        : Curve(whenNoKeys)
    {
        for (auto const& key : keys) {
            this->CreateKey(key.first, key.second);
        }
        // The first key has set both; they are the curve's own here.
        this->SetValueWhenNoKeys(whenNoKeys);
        this->impl_->leftValue = {};
    }

    auto& Impl() { return *this->impl_; }
    double LeftValue() const { return static_cast<double>(this->impl_->leftValue); }
    void SetLeftValue(double value)
    {
        this->impl_->leftValue = static_cast<decltype(this->impl_->leftValue)>(value);
    }
    double WhenNoKeys() const { return static_cast<double>(this->impl_->valueWhenNoKeys); }
    /// The image of the curve with what the interface does not show.
    std::string Image() const
    {
        std::string image = CurveImage(*this);
        CurveImage_AddNumber(image, "left", LeftValue());
        CurveImage_AddNumber(image, "lowest", static_cast<double>(this->impl_->lowerClamp));
        CurveImage_AddNumber(image, "highest", static_cast<double>(this->impl_->upperClamp));
        return image;
    }
};

using OpenBoolean = Open<HvBooleanFCurve>;
using OpenInteger = Open<HvIntegerFCurve>;

/// Keys as pairs of parameter and value.
using Keys = std::vector<std::pair<double, double>>;

inline Keys KeysOf(HvBaseFCurve const& curve)
{
    HvDoubleArray parameters;
    HvDoubleArray left;
    HvDoubleArray right;
    curve.GetKeys(parameters, left, right, 0);
    Keys keys;
    for (unsigned int i = 0; i < parameters.Size(); ++i) {
        keys.emplace_back(parameters[i], right[i]);
    }
    return keys;
}

/// Locks a key, as an editor would.
inline void Lock(HvBaseFCurve& curve, double parameter, HvBaseFCurve::KeyConstraint constraint)
{
    curve.SetConstraint(parameter, constraint, 1, 0);
}

inline int IsLocked(HvBaseFCurve const& curve, double parameter,
                    HvBaseFCurve::KeyConstraint constraint)
{
    int on = 0;
    return curve.GetConstraint(parameter, constraint, on, 0) ? on : -1;
}

/// Hangs one byte on the key at `parameter`.
inline void Tag(HvBaseFCurve& curve, double parameter, unsigned char byte)
{
    curve.SetKeyUserData(parameter, _GUID{1, 2, 3, {4}}, &byte, 1, 0);
}

/// The byte that hangs on the key at `parameter`, -1 for none.
inline int TagAt(HvBaseFCurve const& curve, double parameter)
{
    CFCUserDataSet const* const set = curve.GetUserDataSet(parameter);
    CFCUserDataValue const* const value =
        set == nullptr ? nullptr : set->FindUserData(_GUID{1, 2, 3, {4}});
    return value == nullptr ? -1 : value->Bytes()[0];
}

#endif
