// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Exponential, logarithm and powers of unit quaternions. A vector stands for a quaternion without
// scalar part; its length is half the angle of the rotation.

#ifndef HV_ROTATION_INTERNAL_QUAT_EXP_H
#define HV_ROTATION_INTERNAL_QUAT_EXP_H

#include <hv/rotation/HvQuat.h>

#include <cmath>

/// A sine or a length below this is taken for that of the zero angle, where the quotient of sine
/// and angle is 1.
constexpr double kQuatZeroSine = 1e-12;
/// Quaternions whose scalar product is nearer to 1 than this are taken for parallel.
constexpr double kQuatParallel = 1e-12;
/// Half a turn.
constexpr double kQuatPi = 3.141592653589793;

/// The vector part.
inline HvPoint3<double> HvQuat_Vector(HvQuat const& q)
{
    return HvPoint3<double>(q.x, q.y, q.z);
}

/// The quaternion with this vector part and no scalar part.
inline HvQuat HvQuat_FromVector(HvPoint3<double> const& v)
{
    return HvQuat(0.0, v.x, v.y, v.z);
}

inline double HvQuat_Dot(HvQuat const& a, HvQuat const& b)
{
    return a.w * b.w + a.x * b.x + a.y * b.y + a.z * b.z;
}

/// f * a + g * b
inline HvQuat HvQuat_Combine(double f, HvQuat const& a, double g, HvQuat const& b)
{
    return HvQuat(f * a.w + g * b.w, f * a.x + g * b.x, f * a.y + g * b.y, f * a.z + g * b.z);
}

inline double HvQuat_VectorLength(HvPoint3<double> const& v)
{
    return std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
}

/// The rotation by twice the length of `v` about its direction.
inline HvQuat HvQuat_Exp(HvPoint3<double> const& v)
{
    double const angle = HvQuat_VectorLength(v);
    double const sine = std::sin(angle);
    double const factor = std::fabs(sine) >= kQuatZeroSine ? sine / angle : 1.0;
    return HvQuat(std::cos(angle), v.x * factor, v.y * factor, v.z * factor);
}

/// The vector whose exponential is the unit quaternion `q`, of length 0 to pi. The angle comes from
/// both parts: the arc cosine of `w` alone loses half of its digits near both of its ends, and near
/// -1 the length of the result with them.
inline HvPoint3<double> HvQuat_Log(HvQuat const& q)
{
    HvPoint3<double> const v = HvQuat_Vector(q);
    double const sine = HvQuat_VectorLength(v);
    if (std::fabs(q.w) < 1.0 && sine >= kQuatZeroSine) {
        return v * (std::atan2(sine, q.w) / sine);
    }
    return v;
}

/// The `n`-th power of a unit quaternion: by de Moivre's formula, so that its cost does not grow
/// with `n` nor its length drift.
inline HvQuat HvQuat_Power(HvQuat const& q, double n)
{
    double const sine = HvQuat_VectorLength(HvQuat_Vector(q));
    double const angle = std::atan2(sine, q.w) * n;
    double const factor = sine > 0.0 ? std::sin(angle) / sine : 0.0;
    return HvQuat(std::cos(angle), q.x * factor, q.y * factor, q.z * factor);
}

#endif
