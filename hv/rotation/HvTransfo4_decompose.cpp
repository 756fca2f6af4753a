// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A transform built from, and taken apart into, what an editor shows: points, scale, shear, angles.

#include <hv/rotation/HvTransfo4.h>
#include <hv/rotation/internal/transfo_angles.h>

#include <cmath>

namespace {

/// A determinant or length below this cannot be divided by.
constexpr double kDegenerate = 1e-15;
/// cos 45 degrees: below it the arc cosine is the better conditioned of the two inverses.
constexpr double kArcCosineLimit = 0.7071067811865476;

/// The angle, 0 to about a turn, of the direction whose cosine and sine are given.
double AngleOf(double c, double s)
{
    if (std::fabs(c) <= kArcCosineLimit) {
        double const a = std::acos(c);
        return s > 0.0 ? a : kTransfoTwoPi - a;
    }
    if (c > 0.0) {
        double const a = std::asin(s);
        return s >= 0.0 ? a : a + kTransfoTwoPi;
    }
    return kTransfoPi - std::asin(s);
}

}  // namespace

void HvTransfo4::RecomposeXY(HvPoint2<double> const& centre, double sx, double sy, double shear,
                             double degrees, HvPoint2<double> const& translation)
{
    double const angle = degrees * kTransfoRadiansPerDegree;
    double const c = std::cos(angle);
    double const s = std::sin(angle);
    double const m0 = sx * c;
    double const m1 = sx * s;
    double const m4 = shear * c * sy - sy * s;
    double const m5 = s * shear * sy + c * sy;
    double const m12 = centre.x + translation.x - centre.x * m0 - centre.y * m4;
    double const m13 = centre.y + translation.y - sx * s * centre.x - centre.y * m5;
    double const numbers[16] = {m0, m1, 0, 0, m4, m5, 0, 0, 0, 0, 1, 0, m12, m13, 0, 1};
    SetMatrix(numbers);
}

int HvTransfo4::DecomposeXY(HvPoint2<double> const& centre, double& sx, double& sy, double& shear,
                            double& degrees, HvPoint2<double>& translation) const
{
    if (m[1] == 0.0 && m[4] == 0.0) {
        sx = m[0];
        sy = m[5];
        shear = 0.0;
        degrees = 0.0;
    } else if (m[0] == 0.0 && m[5] == 0.0) {
        sx = m[1];
        sy = -m[4];
        shear = 0.0;
        degrees = 90.0;
    } else {
        sx = std::sqrt(m[0] * m[0] + m[1] * m[1]);
        if (sx < kDegenerate) {
            return 0;
        }
        double const det = m[0] * m[5] - m[1] * m[4];
        if (std::fabs(det) < kDegenerate) {
            return 0;
        }
        sy = det / sx;
        shear = (m[0] * m[4] + m[1] * m[5]) / det;
        degrees = AngleOf(HvTransfo_ClampToUnit(m[0] / sx), HvTransfo_ClampToUnit(m[1] / sx)) *
                  kTransfoDegreesPerRadian;
        if (degrees >= 360.0 || degrees < 0.0) {
            degrees = 0.0;
        }
    }
    translation = Map(centre) - centre;
    return 1;
}

int HvTransfo4::SetTo3PointTransformXY(HvPoint2<double> const* from, HvPoint2<double> const* to)
{
    double const d = HvPoint2_ABdetCD(from[0], from[1], from[0], from[2]);
    if (std::fabs(d) < kDegenerate) {
        return 0;
    }
    HvPoint2<double> const du1 = to[1] - to[0];
    HvPoint2<double> const du2 = to[2] - to[0];
    HvPoint2<double> const f1 = from[1] - from[0];
    HvPoint2<double> const f2 = from[2] - from[0];
    SetToIdentity();
    m[0] = (du1.x * f2.y - du2.x * f1.y) / d;
    m[4] = (du2.x * f1.x - du1.x * f2.x) / d;
    m[12] = to[0].x - m[0] * from[0].x - m[4] * from[0].y;
    m[1] = (du1.y * f2.y - du2.y * f1.y) / d;
    m[5] = (du2.y * f1.x - du1.y * f2.x) / d;
    m[13] = to[0].y - m[1] * from[0].x - m[5] * from[0].y;
    return 1;
}

HvTransfo4& HvTransfo4::SetTo4PointTransform(HvPoint3<double> const& p0, HvPoint3<double> const& p1,
                                             HvPoint3<double> const& p2, HvPoint3<double> const& p3)
{
    double const numbers[16] = {
        p1.x - p0.x, p1.y - p0.y, p1.z - p0.z, 0, p2.x - p0.x, p2.y - p0.y, p2.z - p0.z, 0,
        p3.x - p0.x, p3.y - p0.y, p3.z - p0.z, 0, p0.x,        p0.y,        p0.z,        1};
    return SetMatrix(numbers);
}

HvTransfo4& HvTransfo4::SetTo3PointTransformXY(HvPoint3<double> const& p0,
                                               HvPoint3<double> const& p1,
                                               HvPoint3<double> const& p2)
{
    return SetTo4PointTransform(p0, p1, p2, HvPoint3<double>(p0.x, p0.y, 1.0));
}

void HvTransfo4::ExtractTransforms(HvPoint3<double>& scale, HvPoint3<double>& rotation,
                                   HvPoint3<double>& translation) const
{
    scale.x = HvPoint3_Length(HvPoint3<double>(m[0], m[1], m[2]));
    scale.y = HvPoint3_Length(HvPoint3<double>(m[4], m[5], m[6]));
    scale.z = HvPoint3_Length(HvPoint3<double>(m[8], m[9], m[10]));
    HvTransfo4 unit(*this);
    for (int row = 0; row < 3; ++row) {
        unit.m[row] /= scale.x;
        unit.m[row + 4] /= scale.y;
        unit.m[row + 8] /= scale.z;
    }
    unit.ExtractXYZRotationAngles(rotation);
    rotation = rotation * kTransfoDegreesPerRadian;
    translation = HvPoint3<double>(m[12], m[13], m[14]);
}
