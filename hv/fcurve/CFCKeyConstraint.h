// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The constraint word of a key.

#ifndef HV_FCURVE_CFCKEYCONSTRAINT_H
#define HV_FCURVE_CFCKEYCONSTRAINT_H

#include <hv/fcurve/HvBaseFCurve.h>

/// The flags of a key. Archives hold the word without its selection bit: never renumber.
struct CFCKeyConstraint {
    /// HvBaseFCurve::TangentContinuityLocked.
    static constexpr unsigned short kTangentContinuityLocked = 0x0001;
    /// HvBaseFCurve::ValueLocked.
    static constexpr unsigned short kValueLocked = 0x0002;
    /// HvBaseFCurve::ParameterLocked.
    static constexpr unsigned short kParameterLocked = 0x0004;
    /// HvBaseFCurve::TangentDirectionLocked.
    static constexpr unsigned short kTangentDirectionLocked = 0x0008;
    /// HvBaseFCurve::TangentLengthLocked.
    static constexpr unsigned short kTangentLengthLocked = 0x0010;
    /// HvBaseFCurve::AllLocked: the four before.
    static constexpr unsigned short kAllLocked = 0x001E;
    /// HvBaseFCurve::FlatTangents.
    static constexpr unsigned short kFlatTangents = 0x0020;
    /// HvBaseFCurve::FlatAtExtremum.
    static constexpr unsigned short kFlatAtExtremum = 0x0040;
    /// HvBaseFCurve::UnlimitedAutoSlope.
    static constexpr unsigned short kUnlimitedAutoSlope = 0x0080;
    /// HvBaseFCurve::ZeroLengthTangents.
    static constexpr unsigned short kZeroLengthTangents = 0x0100;
    /// HvBaseFCurve::TangentLengthContinuityLocked.
    static constexpr unsigned short kTangentLengthContinuityLocked = 0x0200;
    /// HvBaseFCurve::LinearTangents.
    static constexpr unsigned short kLinearTangents = 0x0400;
    /// HvBaseFCurve::MirroredTangents.
    static constexpr unsigned short kMirroredTangents = 0x0800;
    /// HvBaseFCurve::AutomaticTangents.
    static constexpr unsigned short kAutomaticTangents = 0x1000;
    /// The key is selected; never in a file.
    static constexpr unsigned short kSelected = 0x8000;

    unsigned short word;  ///< the flags together

    /// Whether all of `bits` are set.
    constexpr bool HasAll(unsigned short bits) const { return (word & bits) == bits; }
    /// Whether any of `bits` is set.
    constexpr bool HasAny(unsigned short bits) const { return (word & bits) != 0; }
    /// Sets all of `bits`.
    void Set(unsigned short bits) { word = static_cast<unsigned short>(word | bits); }
    /// Clears all of `bits`.
    void Clear(unsigned short bits)
    {
        word = static_cast<unsigned short>(word & static_cast<unsigned short>(~bits));
    }
    /// Sets all of `bits` when `on`, otherwise clears them.
    void Assign(unsigned short bits, bool on) { on ? Set(bits) : Clear(bits); }
};

/// The bits of the word that a constraint stands for; 0 for what is no single known constraint.
constexpr unsigned short CFCKeyConstraint_Bits(HvBaseFCurve::KeyConstraint constraint)
{
    switch (constraint) {
    case HvBaseFCurve::ParameterLocked:
        return CFCKeyConstraint::kParameterLocked;
    case HvBaseFCurve::ValueLocked:
        return CFCKeyConstraint::kValueLocked;
    case HvBaseFCurve::TangentContinuityLocked:
        return CFCKeyConstraint::kTangentContinuityLocked;
    case HvBaseFCurve::TangentDirectionLocked:
        return CFCKeyConstraint::kTangentDirectionLocked;
    case HvBaseFCurve::TangentLengthLocked:
        return CFCKeyConstraint::kTangentLengthLocked;
    case HvBaseFCurve::AllLocked:
        return CFCKeyConstraint::kAllLocked;
    case HvBaseFCurve::FlatTangents:
        return CFCKeyConstraint::kFlatTangents;
    case HvBaseFCurve::FlatAtExtremum:
        return CFCKeyConstraint::kFlatAtExtremum;
    case HvBaseFCurve::UnlimitedAutoSlope:
        return CFCKeyConstraint::kUnlimitedAutoSlope;
    case HvBaseFCurve::ZeroLengthTangents:
        return CFCKeyConstraint::kZeroLengthTangents;
    case HvBaseFCurve::TangentLengthContinuityLocked:
        return CFCKeyConstraint::kTangentLengthContinuityLocked;
    case HvBaseFCurve::LinearTangents:
        return CFCKeyConstraint::kLinearTangents;
    case HvBaseFCurve::MirroredTangents:
        return CFCKeyConstraint::kMirroredTangents;
    case HvBaseFCurve::AutomaticTangents:
        return CFCKeyConstraint::kAutomaticTangents;
    }
    return 0;
}

#endif
