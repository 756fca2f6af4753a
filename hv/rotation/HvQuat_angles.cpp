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
#include <hv/rotation/internal/transfo_angles.h>

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
/// Angles below this are less than a turn, also when a product with kTurnsPerRadian is rounded.
constexpr double kSafelyInATurn = 6.0;
/// Sums of distances that differ by less than this may be equal but for rounding.
constexpr double kTieTolerance = 1e-9;
/// An angle between the outer axes below this counts as none.
constexpr double kNoAngle = 1e-6;
/// References whose outer angles differ by less than this are shared out without the difference.
constexpr double kEqualReference = 1e-12;

/// Angles by axis, 0 = x, 1 = y, 2 = z.
struct Triple {
    double angle[3];

    double operator[](int axis) const { return angle[axis]; }
    double& operator[](int axis) { return angle[axis]; }
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

/// The angle in 0 .. 2 pi. Most are within half a turn of 0 and need no floor, which costs as much
/// as all else here.
double WrapTwoPi(double v)
{
    if (std::fabs(v) < kSafelyInATurn) {
        return v + (v < 0.0 ? kTwoPi : 0.0);
    }
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
    s = HvTransfo_ClampToUnit(s);
    if (!(std::fabs(c) > kArcCosineLimit)) {
        return s < 0.0 ? -std::acos(c) : std::acos(c);
    }
    double const a = std::asin(s);
    if (c < 0.0) {
        return (a > 0.0 ? kPi : -kPi) - a;
    }
    return a;
}

/// The angle half a turn away.
double Opposite(double angle)
{
    return angle > 0.0 ? angle - kPi : angle + kPi;
}

/// The middle angle of T when that of S is `middle`.
double OtherMiddle(double middle)
{
    return (middle > 0.0 ? kPi : -kPi) - middle;
}

/// The triple with this middle angle, away from the poles.
Triple RegularTriple(Matrix const& matrix, HvQuatAxes const& axes, double middle)
{
    auto const& m = matrix.m;
    double const p = axes.parity;
    double const k = 1.0 / std::cos(middle);
    Triple v;
    v[axes.first] =
        AngleFromSinCos(p * m[axes.second][axes.third] * k, m[axes.third][axes.third] * k);
    v[axes.second] = middle;
    v[axes.third] =
        AngleFromSinCos(p * m[axes.first][axes.second] * k, m[axes.first][axes.first] * k);
    return v;
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
    double const vector[3] = {q.x, q.y, q.z};
    double const a = vector[axes.first];
    double const b = axes.parity * vector[axes.second];
    double const c = vector[axes.third];
    double const r = std::sqrt((q.w - b) * (q.w - b) + (a + c) * (a + c));
    double const R = std::sqrt((q.w + b) * (q.w + b) + (a - c) * (a - c));
    double const halfSum = std::atan2(a + c, q.w - b);
    double const halfDifference = std::atan2(a - c, q.w + b);
    Triple s;
    s[axes.first] = halfSum + halfDifference;
    s[axes.second] = axes.parity * (2.0 * std::atan2(R, r) - kPi * 0.5);
    s[axes.third] = halfSum - halfDifference;
    return s;
}

/// T of S near a pole.
Triple OtherNearPoleTriple(Triple const& s, HvQuatAxes const& axes)
{
    Triple t;
    t[axes.first] = Opposite(s[axes.first]);
    t[axes.second] = OtherMiddle(s[axes.second]);
    t[axes.third] = Opposite(s[axes.third]);
    return t;
}

double CircularDistance(Triple const& a, Triple const& b)
{
    return CircularDistance(a[0], b[0]) + CircularDistance(a[1], b[1]) +
           CircularDistance(a[2], b[2]);
}

/// Whichever of S and T lies nearer to the reference in total; T on a tie.
Triple NearerOf(Triple const& reference, Triple const& s, Triple const& t)
{
    return CircularDistance(reference, t) > CircularDistance(reference, s) ? s : t;
}

/// The nearest triple away from the poles; `middle` is that of S. The outer angles of T are half a
/// turn from those of S, so its distances are known before it is, but for rounding, and mostly it
/// need not be.
Triple NearestRegularTriple(Matrix const& matrix, HvQuatAxes const& axes, double middle,
                            Triple const& reference)
{
    Triple const s = RegularTriple(matrix, axes, middle);
    double const other = OtherMiddle(middle);
    double const outer = CircularDistance(reference[axes.first], s[axes.first]) +
                         CircularDistance(reference[axes.third], s[axes.third]);
    double const fromS = outer + CircularDistance(reference[axes.second], middle);
    double const fromT = kTwoPi - outer + CircularDistance(reference[axes.second], other);
    if (fromT - fromS > kTieTolerance) {
        return s;
    }
    Triple const t = RegularTriple(matrix, axes, other);
    return fromS - fromT > kTieTolerance ? t : NearerOf(reference, s, t);
}

/// The outer angles A and C where A - C = theta alone is determined: those of the reference, a and
/// c, moved equally.
void ShareDifference(double theta, double& a, double& c)
{
    if (std::fabs(theta) < kNoAngle) {
        a = c = (a + c) * 0.5;
        return;
    }
    double const e = std::fabs(a - c) < kEqualReference ? theta : theta - (a - c);
    a = e * 0.5 + a;
    c = e * -0.5 + c;
}

/// The same where A + C = theta alone is determined.
void ShareSum(double theta, double& a, double& c)
{
    if (std::fabs(theta) < kNoAngle) {
        // Both get the mean of the reference with the other sign, and so do not add up to theta
        // unless the reference does: stored animations depend on it.
        a = c = 0.0 - (a + c) * 0.5;
        return;
    }
    double const e = std::fabs(a + c) < kEqualReference ? theta : theta - (a + c);
    a = a + e * 0.5;
    c = e * 0.5 + c;
}

/// The triple at a pole, the middle angle being `middle`.
Triple PoleTriple(Matrix const& matrix, HvQuatAxes const& axes, double middle,
                  Triple const& reference)
{
    auto const& m = matrix.m;
    double const cosine = m[axes.second][axes.second];
    double const sine = axes.parity > 0.0 ? m[axes.second][axes.first] : m[axes.third][axes.second];
    double a = reference[axes.first];
    double c = reference[axes.third];
    if (middle * axes.parity > 0.0) {
        ShareDifference(AngleFromSinCos(sine, cosine), a, c);
    } else {
        ShareSum(AngleFromSinCos(-axes.parity * sine, cosine), a, c);
    }
    Triple s;
    Triple t;
    s[axes.first] = WrapTwoPi(a);
    t[axes.first] = WrapTwoPi(a + kPi);
    s[axes.third] = WrapTwoPi(c);
    t[axes.third] = WrapTwoPi(c + kPi);
    auto const outerDistance = [&](Triple const& v) {
        return CircularDistance(reference[axes.first], v[axes.first]) +
               CircularDistance(reference[axes.third], v[axes.third]);
    };
    Triple nearest = outerDistance(t) > outerDistance(s) ? s : t;
    // At a pole the other middle angle is the same quarter turn.
    nearest[axes.second] = middle;
    return nearest;
}

/// The triple nearest to the reference, each member of which lies in -pi .. pi.
Triple NearestTriple(HvQuat const& q, HvQuatAxes const& axes, Triple const& reference)
{
    Matrix const matrix(q);
    double const sine = -axes.parity * matrix.m[axes.first][axes.third];
    if (sine < -1.0 || sine > 1.0 || std::fabs(std::fabs(sine) - 1.0) < kPoleSine) {
        return PoleTriple(matrix, axes, sine < 0.0 ? kPi * -0.5 : kPi * 0.5, reference);
    }
    if (std::fabs(sine) > kNearPoleSine) {
        Triple const s = NearPoleTriple(q, axes);
        return NearerOf(reference, s, OtherNearPoleTriple(s, axes));
    }
    return NearestRegularTriple(matrix, axes, std::asin(sine), reference);
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
    Triple const whole = {{reference.x, reference.y, reference.z}};
    Triple const wrapped = {
        {WrapAroundZero(whole[0]), WrapAroundZero(whole[1]), WrapAroundZero(whole[2])}};
    Triple const nearest = NearestTriple(*this, kQuatAxes[order], wrapped);
    angles = HvPoint3<double>(WindTo(whole[0], nearest[0]), WindTo(whole[1], nearest[1]),
                              WindTo(whole[2], nearest[2]));
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
