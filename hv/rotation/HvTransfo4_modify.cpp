// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The transform's modifiers: translation, scale, shear, rotation, each composed on the right.

#include <hv/rotation/HvTransfo4.h>
#include <hv/rotation/internal/transfo_angles.h>

#include <cmath>

template <class Operation>
HvTransfo4& HvTransfo4::ApplyAbout(HvPoint3<double> const& centre, Operation operation)
{
    HvTransfo4 about;
    about.Translate(centre);
    operation(about);
    about.Translate(-centre);
    return PostMultiply(about);
}

HvTransfo4& HvTransfo4::Translate(double x, double y, double z)
{
    m[12] += x * m[0] + y * m[4] + z * m[8];
    m[13] += x * m[1] + y * m[5] + z * m[9];
    m[14] += x * m[2] + y * m[6] + z * m[10];
    m[15] += x * m[3] + y * m[7] + z * m[11];
    return *this;
}

HvTransfo4& HvTransfo4::Translate(HvPoint3<double> const& offset)
{
    return Translate(offset.x, offset.y, offset.z);
}

HvTransfo4& HvTransfo4::Translate(HvPoint3<float> const& offset)
{
    return Translate(HvPoint3<double>(offset));
}

HvTransfo4& HvTransfo4::Translate(HvPoint2<double> const& offset, double z)
{
    return Translate(offset.x, offset.y, z);
}

HvTransfo4& HvTransfo4::Translate(HvPoint2<float> const& offset, double z)
{
    return Translate(HvPoint2<double>(offset), z);
}

HvTransfo4& HvTransfo4::Translate(HvPoint2<float> const& offset, float z)
{
    return Translate(HvPoint2<double>(offset), static_cast<double>(z));
}

HvTransfo4& HvTransfo4::Scale(double sx, double sy, double sz)
{
    for (int row = 0; row < 4; ++row) {
        m[row] *= sx;
        m[row + 4] *= sy;
        m[row + 8] *= sz;
    }
    return *this;
}

HvTransfo4& HvTransfo4::Scale(double s)
{
    return Scale(s, s, s);
}

HvTransfo4& HvTransfo4::Scale(double sx, double sy, double sz, HvPoint3<double> const& centre)
{
    return ApplyAbout(centre, [=](HvTransfo4& t) { t.Scale(sx, sy, sz); });
}

HvTransfo4& HvTransfo4::Scale(double sx, double sy, double sz, HvPoint3<float> const& centre)
{
    return Scale(sx, sy, sz, HvPoint3<double>(centre));
}

HvTransfo4& HvTransfo4::ScaleXY(double sx, double sy, HvPoint2<double> const& centre)
{
    return Scale(sx, sy, 1.0, HvPoint3<double>(centre.x, centre.y, 0.0));
}

HvTransfo4& HvTransfo4::ShearXY(double a, double b)
{
    for (int row = 0; row < 4; ++row) {
        m[row + 8] += a * m[row] + b * m[row + 4];
    }
    return *this;
}

HvTransfo4& HvTransfo4::ShearXY(double a, double b, HvPoint3<double> const& centre)
{
    return ApplyAbout(centre, [=](HvTransfo4& t) { t.ShearXY(a, b); });
}

HvTransfo4& HvTransfo4::ShearXZ(double a, double b)
{
    for (int row = 0; row < 4; ++row) {
        m[row + 4] += a * m[row] + b * m[row + 8];
    }
    return *this;
}

HvTransfo4& HvTransfo4::ShearXZ(double a, double b, HvPoint3<double> const& centre)
{
    return ApplyAbout(centre, [=](HvTransfo4& t) { t.ShearXZ(a, b); });
}

HvTransfo4& HvTransfo4::ShearYZ(double a, double b)
{
    for (int row = 0; row < 4; ++row) {
        m[row] += a * m[row + 4] + b * m[row + 8];
    }
    return *this;
}

HvTransfo4& HvTransfo4::ShearYZ(double a, double b, HvPoint3<double> const& centre)
{
    return ApplyAbout(centre, [=](HvTransfo4& t) { t.ShearYZ(a, b); });
}

HvTransfo4& HvTransfo4::Rotate(double degrees, double ax, double ay, double az)
{
    double const angle = degrees * kTransfoRadiansPerDegree;
    double const c = std::cos(angle);
    double const s = std::sin(angle);
    double const length = HvPoint3_Length(HvPoint3<double>(ax, ay, az));
    double const x = ax / length;
    double const y = ay / length;
    double const z = az / length;
    double const t = 1 - c;

    HvTransfo4 rotation;
    rotation.m[0] = t * (x * x) + c;
    rotation.m[1] = t * x * y + s * z;
    rotation.m[2] = t * x * z - s * y;
    rotation.m[4] = t * x * y - s * z;
    rotation.m[5] = t * (y * y) + c;
    rotation.m[6] = t * y * z + s * x;
    rotation.m[8] = t * x * z + s * y;
    rotation.m[9] = t * y * z - s * x;
    rotation.m[10] = t * (z * z) + c;
    return PostMultiply(rotation);
}

HvTransfo4& HvTransfo4::Rotate(double degrees, HvPoint3<double> const& a, HvPoint3<double> const& b)
{
    HvPoint3<double> const axis = b - a;
    return ApplyAbout(a, [=](HvTransfo4& t) { t.Rotate(degrees, axis.x, axis.y, axis.z); });
}

HvTransfo4& HvTransfo4::Rotate(double degrees, HvPoint3<float> const& a, HvPoint3<float> const& b)
{
    return Rotate(degrees, HvPoint3<double>(a), HvPoint3<double>(b));
}

HvTransfo4& HvTransfo4::RotateXYZ(HvPoint3<double> const& degrees)
{
    double const x = degrees.x * kTransfoRadiansPerDegree;
    double const y = degrees.y * kTransfoRadiansPerDegree;
    double const z = degrees.z * kTransfoRadiansPerDegree;
    double const sx = std::sin(x);
    double const cx = std::cos(x);
    double const sy = std::sin(y);
    double const cy = std::cos(y);
    double const sz = std::sin(z);
    double const cz = std::cos(z);

    HvTransfo4 rotation;
    rotation.m[0] = cy * cz;
    rotation.m[1] = cy * sz;
    rotation.m[2] = -sy;
    rotation.m[4] = cz * sx * sy - cx * sz;
    rotation.m[5] = sx * sy * sz + cx * cz;
    rotation.m[6] = sx * cy;
    rotation.m[8] = cz * cx * sy + sx * sz;
    rotation.m[9] = sz * cx * sy - cz * sx;
    rotation.m[10] = cx * cy;
    return PostMultiply(rotation);
}

HvTransfo4& HvTransfo4::RotateXY(double degrees, HvPoint2<double> const& centre)
{
    return ApplyAbout(HvPoint3<double>(centre.x, centre.y, 0.0),
                      [=](HvTransfo4& t) { t.Rotate(degrees, 0.0, 0.0, 1.0); });
}

HvTransfo4& HvTransfo4::RotateXY(HvPoint2<double> const& centre, HvPoint2<double> const& from,
                                 HvPoint2<double> const& to)
{
    double degrees = 0.0;
    if (!HvPoint2_AngleInDegrees(from - centre, to - centre, degrees)) {
        return *this;
    }
    return RotateXY(degrees, centre);
}
