// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Quaternions in long double: the slow, plain reference of the quaternion's tests.

#ifndef HV_TESTS_ROTATION_LONG_QUAT_H
#define HV_TESTS_ROTATION_LONG_QUAT_H

#include "long_matrix.h"

#include <hv/rotation/HvQuat.h>
#include <hv/rotation/HvQuatKey.h>

#include <algorithm>
#include <cmath>
#include <vector>

constexpr long double kLongPi = 3.141592653589793238462643383279502884L;
constexpr double kPi = static_cast<double>(kLongPi);
constexpr double kDegree = static_cast<double>(kLongPi / 180.0L);

constexpr HvQuat::RotOrder kAllOrders[6] = {HvQuat::XYZ, HvQuat::XZY, HvQuat::YXZ,
                                            HvQuat::YZX, HvQuat::ZXY, HvQuat::ZYX};
/// The axes of each order as their names say, 0 = x.
constexpr int kOrderAxes[6][3] = {{0, 1, 2}, {0, 2, 1}, {1, 0, 2}, {1, 2, 0}, {2, 0, 1}, {2, 1, 0}};

/// Numbers that have broken code before.
constexpr double kHostileNumbers[] = {0.0,
                                      -0.0,
                                      5e-324,
                                      -5e-324,
                                      1e-12,
                                      1.0,
                                      -1.0,
                                      1.0 + 2.3e-16,
                                      2147483648.0,
                                      9007199254740992.0,
                                      1e300,
                                      std::numeric_limits<double>::max(),
                                      std::numeric_limits<double>::lowest(),
                                      kInfinity,
                                      -kInfinity,
                                      kNaN};

struct LongQuat {
    long double w = 1;
    long double v[3] = {0, 0, 0};

    LongQuat() = default;
    LongQuat(long double qw, long double x, long double y, long double z) : w(qw), v{x, y, z} {}
    explicit LongQuat(HvQuat const& q) : w(q.w), v{q.x, q.y, q.z} {}

    /// The product of the three rotations of an order, the first on the right.
    static LongQuat FromAngles(HvPoint3<double> const& angles, HvQuat::RotOrder order);

    LongQuat Conjugate() const { return LongQuat(w, -v[0], -v[1], -v[2]); }
    LongQuat Negative() const { return LongQuat(-w, -v[0], -v[1], -v[2]); }
    LongMatrix Matrix() const;
};

inline LongQuat operator*(LongQuat const& a, LongQuat const& b)
{
    // w = aw bw - a.b, v = aw b + bw a + a x b
    LongQuat p;
    p.w = a.w * b.w;
    for (int i = 0; i < 3; ++i) {
        int const j = (i + 1) % 3;
        int const k = (i + 2) % 3;
        p.w -= a.v[i] * b.v[i];
        p.v[i] = a.w * b.v[i] + b.w * a.v[i] + a.v[j] * b.v[k] - a.v[k] * b.v[j];
    }
    return p;
}

inline LongQuat LongQuat::FromAngles(HvPoint3<double> const& angles, HvQuat::RotOrder order)
{
    double const byAxis[3] = {angles.x, angles.y, angles.z};
    LongQuat product;
    for (int axis : kOrderAxes[order]) {
        LongQuat turn;
        turn.w = std::cos(byAxis[axis] * 0.5L);
        turn.v[axis] = std::sin(byAxis[axis] * 0.5L);
        product = turn * product;
    }
    return product;
}

/// By conjugation of the unit vectors: another road than the elements written out.
inline LongMatrix LongQuat::Matrix() const
{
    LongMatrix m;
    long double const n = w * w + v[0] * v[0] + v[1] * v[1] + v[2] * v[2];
    for (int c = 0; c < 3; ++c) {
        LongQuat unit(0, 0, 0, 0);
        unit.v[c] = 1 / n;
        LongQuat const image = *this * unit * Conjugate();
        for (int r = 0; r < 3; ++r) {
            m.e[r][c] = image.v[r];
        }
    }
    return m;
}

inline long double Dot(LongQuat const& a, LongQuat const& b)
{
    return a.w * b.w + a.v[0] * b.v[0] + a.v[1] * b.v[1] + a.v[2] * b.v[2];
}

/// Greatest difference of the components, of signs too.
inline long double Difference(LongQuat const& a, LongQuat const& b)
{
    long double greatest = std::fabs(a.w - b.w);
    for (int i = 0; i < 3; ++i) {
        greatest = std::max(greatest, std::fabs(a.v[i] - b.v[i]));
    }
    return greatest == greatest ? greatest : std::numeric_limits<long double>::infinity();
}
inline long double Difference(HvQuat const& a, LongQuat const& b)
{
    return Difference(LongQuat(a), b);
}
inline long double Difference(HvQuat const& a, HvQuat const& b)
{
    return Difference(LongQuat(a), LongQuat(b));
}

/// Greatest difference of the rotations' matrices.
inline long double RotationDifference(HvQuat const& a, HvQuat const& b)
{
    return Difference(LongQuat(a).Matrix(), LongQuat(b).Matrix());
}

inline LongQuat LongExp(long double const (&v)[3], long double scale = 1)
{
    long double const a = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]) * scale;
    long double const f = a == 0 ? scale : std::sin(a) / a * scale;
    return LongQuat(std::cos(a), v[0] * f, v[1] * f, v[2] * f);
}

struct LongVector {
    long double v[3] = {0, 0, 0};
};

inline LongVector LongLog(LongQuat const& q)
{
    long double const s = std::sqrt(q.v[0] * q.v[0] + q.v[1] * q.v[1] + q.v[2] * q.v[2]);
    long double const f = s == 0 ? 1 : std::atan2(s, q.w) / s;
    LongVector log;
    for (int i = 0; i < 3; ++i) {
        log.v[i] = q.v[i] * f;
    }
    return log;
}

/// One segment of the spline, from the quaternions and times of four keys.
struct LongSegment {
    LongQuat q0;
    LongVector w1, w2, w3;

    LongSegment(LongQuat const (&q)[4], double const (&times)[4], HvQuatKey const& b,
                HvQuatKey const& c)
        : q0(q[1])
    {
        LongVector const ab = LongLog(q[0].Conjugate() * q[1]);
        LongVector const bc = LongLog(q[1].Conjugate() * q[2]);
        LongVector const cd = LongLog(q[2].Conjugate() * q[3]);
        long double const span = static_cast<long double>(times[2]) - times[0];
        long double const k1 = (static_cast<long double>(times[1]) - times[0]) / span *
                               (1 - static_cast<long double>(b.tension)) * (b.spins < 0 ? -1 : 1);
        long double const k2 = (static_cast<long double>(times[2]) - times[1]) / span *
                               (1 - static_cast<long double>(c.tension)) * (c.spins < 0 ? -1 : 1);
        long double const continuityB = b.continuity;
        long double const continuityC = c.continuity;
        long double const biasB = b.bias;
        long double const biasC = c.bias;
        for (int i = 0; i < 3; ++i) {
            w1.v[i] = ((1 + biasB) * k1 * (1 + continuityB) * ab.v[i] +
                       (1 - biasB) * k1 * (1 - continuityB) * bc.v[i]) /
                      3;
            w3.v[i] = ((1 + biasC) * k2 * (1 - continuityC) * bc.v[i] +
                       (1 - biasC) * k2 * (1 + continuityB) * cd.v[i]) /
                      3;
        }
        w2 = LongLog(LongExp(w1.v, -1) * q[1].Conjugate() * q[2] * LongExp(w3.v, -1));
        long double const n = std::sqrt(w2.v[0] * w2.v[0] + w2.v[1] * w2.v[1] + w2.v[2] * w2.v[2]);
        for (int i = 0; i < 3 && b.spins != 0 && n * n >= 1e-12L; ++i) {
            w2.v[i] += b.spins * kLongPi * w2.v[i] / n;
        }
    }

    LongQuat Eval(long double u) const
    {
        return q0 * LongExp(w1.v, 1 - (1 - u) * (1 - u) * (1 - u)) *
               LongExp(w2.v, 3 * u * u - 2 * u * u * u) * LongExp(w3.v, u * u * u);
    }
};

/// The whole spline, the keys beyond its ends by the formula of the slerp.
struct LongSpline {
    std::vector<LongSegment> segments;
    std::vector<LongQuat> quats;  ///< of the keys and those beyond, in their signs

    LongSpline(std::vector<HvQuatKey> const& keys, HvQuat::RotOrder order)
    {
        std::size_t const n = keys.size();
        std::vector<double> times;
        times.push_back(2 * keys[0].time - keys[1].time);
        quats.emplace_back();
        for (HvQuatKey const& key : keys) {
            times.push_back(key.time);
            quats.push_back(LongQuat::FromAngles(key.angles, order));
        }
        times.push_back(2 * keys[n - 1].time - keys[n - 2].time);
        quats[0] = Beyond(quats[2], quats[1]);
        quats.push_back(Beyond(quats[n - 1], quats[n]));
        if (Dot(quats[0], quats[1]) < 0) {
            quats[0] = quats[0].Negative();
        }
        for (std::size_t i = 2; i < quats.size(); ++i) {
            if (Dot(quats[i], quats[i - 1]) < 0) {
                quats[i] = quats[i].Negative();
            }
        }
        for (std::size_t i = 0; i + 1 < n; ++i) {
            segments.emplace_back(LongSegment({quats[i], quats[i + 1], quats[i + 2], quats[i + 3]},
                                              {times[i], times[i + 1], times[i + 2], times[i + 3]},
                                              keys[i], keys[i + 1]));
        }
    }

    static LongQuat Beyond(LongQuat const& a, LongQuat const& b)
    {
        long double c = Dot(a, b);
        long double const sign = c < 0 ? -1 : 1;
        c *= sign;
        long double f = -1;
        long double g = 2 * sign;
        if (c < 1) {
            long double const h = std::acos(c);
            f = std::sin(-h) / std::sin(h);
            g = std::sin(2 * h) / std::sin(h) * sign;
        }
        return LongQuat(f * a.w + g * b.w, f * a.v[0] + g * b.v[0], f * a.v[1] + g * b.v[1],
                        f * a.v[2] + g * b.v[2]);
    }
};

/// Keys at rising times, all of whose settings are drawn; spins of -2 to 2.
inline std::vector<HvQuatKey> AnyKeys(int least, int most)
{
    std::vector<HvQuatKey> keys;
    double time = *AnyNumber();
    for (int n = *rc::gen::inRange(least, most + 1); n > 0; --n) {
        auto const part = [] { return static_cast<float>(*AnyNumber() / 10); };
        keys.emplace_back(time, *AnyPoint3(), part(), part(), part(), *rc::gen::inRange(-2, 3));
        time += 0.1 + std::fabs(*AnyNumber());
    }
    return keys;
}

/// The keys with tension, continuity, bias and spins 0.
inline std::vector<HvQuatKey> Plain(std::vector<HvQuatKey> keys)
{
    for (HvQuatKey& key : keys) {
        key = HvQuatKey(key.time, key.angles, 0, 0, 0, 0);
    }
    return keys;
}

#endif
