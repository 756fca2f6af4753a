// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A key of a quaternion curve.

#ifndef HV_ROTATION_HVQUATKEY_H
#define HV_ROTATION_HVQUATKEY_H

#include <hv/foundation/HvPoint3.h>
#include <hv/platform/HvExport.h>

/// A key of a quaternion curve: a rotation at a time, and how the curve passes through it. A plain
/// record of 48 bytes.
///
/// Bits without a name of their own are not used by the library, but kept: a write of `spins` or of
/// a flag leaves them, copies carry them, comparisons ignore them.
struct HV_API_TYPE HvQuatKey {
    double time;              ///< parameter of the key
    HvPoint3<double> angles;  ///< radians, in the rotation order of the curve
    float tension;            ///< 0 a round path, 1 a halt at the key, -1 a wider curve
    float continuity;         ///< 0 a smooth path, otherwise a corner at the key
    float bias;               ///< 1 the tangent of the segment before, -1 of the one after
    short spins : 12;         ///< turns by a whole circle added to the segment that starts here
    unsigned short spinsUnused : 4;     ///< fills the word; no meaning
    unsigned char flagsUnusedLow : 4;   ///< fills the byte; no meaning
    unsigned char parameterLocked : 1;  ///< whether the time may not change
    unsigned char valueLocked : 1;      ///< whether the angles may not change
    unsigned char selected : 1;         ///< whether the key is selected
    unsigned char flagsUnusedHigh : 1;  ///< fills the byte; no meaning

    /// All zero, all flags clear.
    constexpr HvQuatKey() : HvQuatKey(0.0, HvPoint3<double>(), 0.0f, 0.0f, 0.0f, 0) {}
    /// The flags are clear; `numSpins` is cut to its low 12 bits, of which the highest is the sign.
    constexpr HvQuatKey(double keyTime, HvPoint3<double> const& keyAngles, float keyTension,
                        float keyContinuity, float keyBias, int numSpins);

    /// Compares the times alone.
    friend constexpr bool operator<(HvQuatKey const& a, HvQuatKey const& b)
    {
        return a.time < b.time;
    }
    /// Compares everything that has a name but `selected`, exactly; a NaN is equal to nothing.
    friend constexpr bool operator==(HvQuatKey const& a, HvQuatKey const& b)
    {
        return a.time == b.time && a.angles == b.angles && a.tension == b.tension &&
               a.continuity == b.continuity && a.bias == b.bias && a.spins == b.spins &&
               a.parameterLocked == b.parameterLocked && a.valueLocked == b.valueLocked;
    }
    /// Whether anything differs that == compares.
    friend constexpr bool operator!=(HvQuatKey const& a, HvQuatKey const& b) { return !(a == b); }
};

// To cut a number is what the constructor is for, and no cast of C++ says so of a bit-field.
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#endif
constexpr HvQuatKey::HvQuatKey(double keyTime, HvPoint3<double> const& keyAngles, float keyTension,
                               float keyContinuity, float keyBias, int numSpins)
    : time(keyTime), angles(keyAngles), tension(keyTension), continuity(keyContinuity),
      bias(keyBias), spins(((numSpins & 0xFFF) ^ 0x800) - 0x800), spinsUnused(0), flagsUnusedLow(0),
      parameterLocked(0), valueLocked(0), selected(0), flagsUnusedHigh(0)
{
}
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

#endif
