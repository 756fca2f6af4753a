// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// HvQuat: the angles of a rotation, chosen near a reference.
//
// With A, B, C the angles about the first, second and third axis of the order, a rotation is given
// by two triples,
//
//     S = (A, B, C)   and   T = (A + pi, pi - B, C + pi),
//
// and where B is a quarter turn, at the poles, by infinitely many: there A - C or A + C alone is
// determined. The reference decides. The constants are the doubles nearest to their names.

#include <hv/rotation/HvQuat.h>
#include <hv/rotation/internal/quat_axes.h>

#include <cmath>

namespace {

constexpr double kPi = 3.141592653589793;
constexpr double kTwoPi = 6.283185307179586;
/// Turns in a radian.
constexpr double kTurnsPerRadian = 0.15915494309189535;
/// Sines of the middle angle nearer to 1 or -1 than this are a pole: a cosine of 1.4e-6.
constexpr double kPoleSine = 1e-12;
/// From this sine on, 8 degrees from a pole, the angles are not taken from the matrix: the outer
/// two would lose as many digits as its elements are small.
constexpr double kNearPoleSine = 0.99;
/// cos 45 degrees in eight digits: up to it the arc cosine is the better conditioned inverse.
constexpr double kArcCosineLimit = 0.70710679;
/// An angle between the outer axes below this counts as none.
constexpr double kNoAngle = 1e-6;
/// References whose outer angles differ by less than this are shared out without the difference.
constexpr double kEqualReference = 1e-12;

/// The angles about the first, second and third axis of an order.
struct Triple {
    double a;
    double b;
    double c;
};

/// The rotation as a matrix, transposed: a row is the image of an axis.
struct Matrix {
    double m[3][3];

    explicit Matrix(HvQuat const& q)
        : m{{1 - 2 * q.y * q.y - 2 * q.z * q.z, 2 * q.x * q.y + 2 * q.w * q.z,
             2 * q.x * q.z - 2 * q.w * q.y},
            {2 * q.x * q.y - 2 * q.w * q.z, 1 - 2 * q.x * q.x - 2 * q.z * q.z,
             2 * q.y * q.z + 2 * q.w * q.x},
            {2 * q.x * q.z + 2 * q.w * q.y, 2 * q.y * q.z - 2 * q.w * q.x,
             1 - 2 * q.x * q.x - 2 * q.y * q.y}}
    {
    }
};

double ClampToUnit(double v)
{
    return v < -1.0 ? -1.0 : (v > 1.0 ? 1.0 : v);
}

/// The angle in 0 .. 2 pi.
double WrapTwoPi(double v)
{
    return v + std::floor(v * kTurnsPerRadian) * -kTwoPi;
}

/// The angle in -pi .. pi.
double WrapAroundZero(double v)
{
    return v + std::floor((v + kPi) * kTurnsPerRadian) * -kTwoPi;
}

/// Distance of two angles on the circle.
double CircularDistance(double a, double b)
{
    double const d = std::fabs(WrapTwoPi(a) - WrapTwoPi(b));
    return d > kPi ? kTwoPi - d : d;
}

/// The angle, -pi to pi, whose sine and cosine are given.
double AngleFromSinCos(double s, double c)
{
    s = ClampToUnit(s);
    c = ClampToUnit(c);
    if (!(std::fabs(c) > kArcCosineLimit)) {
        return s < 0.0 ? -std::acos(c) : std::acos(c);
    }
    double const a = std::asin(s);
    if (c < 0.0) {
        return (a > 0.0 ? kPi : -kPi) - a;
    }
    return a;
}

/// The angle half a turn away, -pi to pi: what AngleFromSinCos gives for -s and -c.
double Opposite(double angle)
{
    return angle >= 0.0 ? angle - kPi : angle + kPi;
}

/// T of S.
Triple OtherTriple(Triple const& s)
{
    return {Opposite(s.a), (s.b > 0.0 ? kPi : -kPi) - s.b, Opposite(s.c)};
}

/// S away from the poles; `sine` is that of the middle angle.
Triple RegularTriple(Matrix const& matrix, HvQuatAxes const& axes, double sine)
{
    auto const& m = matrix.m;
    double const k = 1.0 / std::sqrt((1.0 - sine) * (1.0 + sine));
    double const p = axes.parity;
    return {AngleFromSinCos(p * m[axes.second][axes.third] * k, m[axes.third][axes.third] * k),
            std::asin(sine),
            AngleFromSinCos(p * m[axes.first][axes.second] * k, m[axes.first][axes.first] * k)};
}

/// S near a pole. Half the sum and half the difference of the outer angles are those of two pairs
/// of numbers,
///
///     w - p b = r cos((A + C) / 2)     w + p b = R cos((A - C) / 2)
///     a + c   = r sin((A + C) / 2)     a - c   = R sin((A - C) / 2)
///
/// with r = cos(B / 2) - p sin(B / 2), R = cos(B / 2) + p sin(B / 2) and a, b, c the components of
/// the quaternion along the axes. Near a pole r or R is small and its angle uncertain, but then A
/// and C are off by the same amount, in a direction in which the rotation hardly changes.
/// Source: E. Bernardes, S. Viollet, "Quaternion to Euler angles conversion: a direct, general and
/// computationally efficient method", 2022.
Triple NearPoleTriple(HvQuat const& q, HvQuatAxes const& axes)
{
    double const v[3] = {q.x, q.y, q.z};
    double const p = axes.parity;
    double const sumCos = q.w - p * v[axes.second];
    double const sumSin = v[axes.first] + v[axes.third];
    double const differenceCos = q.w + p * v[axes.second];
    double const differenceSin = v[axes.first] - v[axes.third];
    double const r = std::sqrt(sumCos * sumCos + sumSin * sumSin);
    double const R = std::sqrt(differenceCos * differenceCos + differenceSin * differenceSin);
    double const halfSum = std::atan2(sumSin, sumCos);
    double const halfDifference = std::atan2(differenceSin, differenceCos);
    return {halfSum + halfDifference, p * (2.0 * std::atan2(R, r) - kPi * 0.5),
            halfSum - halfDifference};
}

/// Whichever of S and T lies nearer to the reference in total; T on a tie.
Triple Nearer(Triple const& reference, Triple const& s, Triple const& t)
{
    auto const distance = [&](Triple const& v) {
        return CircularDistance(reference.a, v.a) + CircularDistance(reference.b, v.b) +
               CircularDistance(reference.c, v.c);
    };
    return distance(t) > distance(s) ? s : t;
}

/// The outer angles where A - C = theta alone is determined: the reference's, moved equally.
void ShareDifference(double theta, Triple const& reference, Triple& s)
{
    double const p0 = reference.a;
    double const p2 = reference.c;
    if (std::fabs(theta) < kNoAngle) {
        s.a = s.c = (p0 + p2) * 0.5;
        return;
    }
    double const e = std::fabs(p0 - p2) < kEqualReference ? theta : theta - (p0 - p2);
    s.a = e * 0.5 + p0;
    s.c = e * -0.5 + p2;
}

/// The outer angles where A + C = theta alone is determined.
void ShareSum(double theta, Triple const& reference, Triple& s)
{
    double const p0 = reference.a;
    double const p2 = reference.c;
    if (std::fabs(theta) < kNoAngle) {
        // Both get the mean of the reference with the other sign, and so do not add up to theta
        // unless the reference does: stored animations depend on it.
        s.a = s.c = 0.0 - (p0 + p2) * 0.5;
        return;
    }
    double const e = std::fabs(p0 + p2) < kEqualReference ? theta : theta - (p0 + p2);
    s.a = p0 + e * 0.5;
    s.c = e * 0.5 + p2;
}

/// The triple at a pole, the middle angle being `middle`.
Triple PoleTriple(Matrix const& matrix, HvQuatAxes const& axes, double middle,
                  Triple const& reference)
{
    auto const& m = matrix.m;
    Triple s = {0.0, middle, 0.0};
    double const cosine = m[axes.second][axes.second];
    double const sine = axes.parity > 0.0 ? m[axes.second][axes.first] : m[axes.third][axes.second];
    if (middle * axes.parity > 0.0) {
        ShareDifference(AngleFromSinCos(sine, cosine), reference, s);
    } else {
        ShareSum(AngleFromSinCos(-axes.parity * sine, cosine), reference, s);
    }
    Triple const t = {WrapTwoPi(s.a + kPi), OtherTriple(s).b, WrapTwoPi(s.c + kPi)};
    s.a = WrapTwoPi(s.a);
    s.c = WrapTwoPi(s.c);
    double const distanceS =
        CircularDistance(reference.a, s.a) + CircularDistance(reference.c, s.c);
    double const distanceT =
        CircularDistance(reference.a, t.a) + CircularDistance(reference.c, t.c);
    Triple result = distanceT > distanceS ? s : t;
    // At a pole both middle angles are the quarter turn, so either serves both pairs.
    result.b = CircularDistance(reference.b, t.b) > CircularDistance(reference.b, s.b) ? s.b : t.b;
    return result;
}

/// The triple nearest to the reference, each member of which lies in -pi .. pi.
Triple NearestTriple(HvQuat const& q, HvQuatAxes const& axes, Triple const& reference)
{
    Matrix const matrix(q);
    double const sine = -axes.parity * matrix.m[axes.first][axes.third];
    if (sine < -1.0 || sine > 1.0 || std::fabs(std::fabs(sine) - 1.0) < kPoleSine) {
        return PoleTriple(matrix, axes, sine < 0.0 ? kPi * -0.5 : kPi * 0.5, reference);
    }
    Triple const s = std::fabs(sine) > kNearPoleSine ? NearPoleTriple(q, axes)
                                                     : RegularTriple(matrix, axes, sine);
    return Nearer(reference, s, OtherTriple(s));
}

/// The angle moved by whole turns to within half a turn of the reference.
double WindTo(double reference, double angle)
{
    return angle + std::floor((reference + kPi - angle) * kTurnsPerRadian) * kTwoPi;
}

}  // namespace

void HvQuat::Get(HvPoint3<double>& angles, HvPoint3<double> const& reference, RotOrder order) const
{
    if (!HvQuat_IsOrder(order)) {
        return;
    }
    HvQuatAxes const& axes = kQuatAxes[order];
    double const whole[3] = {reference.x, reference.y, reference.z};
    Triple const nearest =
        NearestTriple(*this, axes,
                      {WrapAroundZero(whole[axes.first]), WrapAroundZero(whole[axes.second]),
                       WrapAroundZero(whole[axes.third])});
    double result[3];
    result[axes.first] = WindTo(whole[axes.first], nearest.a);
    result[axes.second] = WindTo(whole[axes.second], nearest.b);
    result[axes.third] = WindTo(whole[axes.third], nearest.c);
    angles = HvPoint3<double>(result[0], result[1], result[2]);
}

void HvQuat::Get(HvPoint3<double>& angles, HvPoint3<double> const& reference) const
{
    Get(angles, reference, XYZ);
}

void HvQuat::Get(HvPoint3<double>& angles, RotOrder order) const
{
    Get(angles, HvPoint3<double>(), order);
}

void HvQuat::Get(HvPoint3<double>& angles) const
{
    Get(angles, HvPoint3<double>(), XYZ);
}
