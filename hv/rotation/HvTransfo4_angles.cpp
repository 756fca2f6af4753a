// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The angles about x, y and z of a rotation, chosen near a reference.
//
// A rotation Rz * Ry * Rx is given by two triples of angles,
//
//     (x1, y1, z1)   and   (x2, y2, z2) = (x1 + pi, pi - y1, z1 + pi),
//
// and at the poles, y = +-90 degrees, by infinitely many: there x - z (at +90) or x + z (at -90)
// alone is determined. The reference, usually the angles of the previous frame, decides.

#include <hv/rotation/HvTransfo4.h>
#include <hv/rotation/internal/transfo_angles.h>

#include <cmath>

namespace {

/// Turns in a radian.
constexpr double kTurnsPerRadian = 0.15915494309189535;
/// |cos y| up to this counts as a pole: beyond it x and z are mostly rounding.
constexpr double kPoleTolerance = 1e-5;
/// cos 45 degrees in nine digits: up to it the arc cosine is the better conditioned inverse.
constexpr double kArcCosineLimit = 0.707106781;

using Angles = HvPoint3<double>;

/// The angle in 0 .. 2 pi.
double Wrap(double v)
{
    return v + std::floor(v * kTurnsPerRadian) * -kTransfoTwoPi;
}

/// The angle in -pi .. pi.
double WrapAroundZero(double v)
{
    return v + std::floor((v + kTransfoPi) * kTurnsPerRadian) * -kTransfoTwoPi;
}

/// Distance of two angles on the circle.
double Distance(double a, double b)
{
    double const d = std::fabs(Wrap(a) - Wrap(b));
    return d > kTransfoPi ? kTransfoTwoPi - d : d;
}

double Distance(Angles const& a, Angles const& b)
{
    return Distance(a.x, b.x) + Distance(a.y, b.y) + Distance(a.z, b.z);
}

/// The angle, -pi to pi, whose sine and cosine are given.
double AngleOf(double s, double c)
{
    s = HvTransfo_ClampToUnit(s);
    double const a = std::asin(s);
    if (c < -1.0 || c > 1.0) {
        c = HvTransfo_ClampToUnit(c);
    } else if (!(std::fabs(c) > kArcCosineLimit)) {
        return s < 0.0 ? -std::acos(c) : std::acos(c);
    }
    if (c < 0.0) {
        return a > 0.0 ? kTransfoPi - a : -kTransfoPi - a;
    }
    return a;
}

/// The triple with y as given, away from the poles.
Angles RegularAngles(double const* m, double y)
{
    double const c = std::cos(y);
    return Angles(AngleOf(m[6] / c, m[10] / c), y, AngleOf(m[1] / c, m[0] / c));
}

/// The triple at a pole: what is determined of x and z is shared out equally, so that both move as
/// far from the reference `r`.
Angles PoleAngles(double const* m, Angles const& r, double y1, double y2)
{
    double a;
    double b;
    if (y1 > 0.0) {
        double t = AngleOf(m[4], m[5]);
        if (std::fabs(r.x - r.z) >= kPoleTolerance) {
            t = t - (r.x - r.z);
        }
        a = t * 0.5 + r.x;
        b = t * -0.5 + r.z;
    } else {
        // A rotation without a sum takes on half of the reference's: it leans towards it.
        double t = AngleOf(-m[4], m[5]);
        if (std::fabs(t) < kPoleTolerance) {
            t = (r.x + r.z) * 0.5;
        }
        double const sum = r.x + r.z;
        double const e = (std::fabs(sum) < kPoleTolerance ? t : t - sum) * 0.5;
        a = r.x + e;
        b = e + r.z;
    }
    double const a1 = Wrap(a);
    double const b1 = Wrap(b);
    double const a2 = Wrap(a + kTransfoPi);
    double const b2 = Wrap(b + kTransfoPi);
    bool const first =
        Distance(r.x, a2) + Distance(r.z, b2) > Distance(r.x, a1) + Distance(r.z, b1);
    // y is chosen by its own distance, whichever pair serves x and z: at a pole y1 and y2 agree.
    double const y = Distance(r.y, y2) > Distance(r.y, y1) ? y1 : y2;
    return first ? Angles(a1, y, b1) : Angles(a2, y, b2);
}

/// The angle v moved by whole turns to within half a turn of the reference.
double WindTo(double reference, double v)
{
    return v + std::floor((reference + kTransfoPi - v) / kTransfoTwoPi) * kTransfoTwoPi;
}

}  // namespace

void HvTransfo4::ExtractXYZRotationAngles(HvPoint3<double>& angles) const
{
    Angles const reference = angles;
    Angles const wrapped(WrapAroundZero(reference.x), WrapAroundZero(reference.y),
                         WrapAroundZero(reference.z));
    double const y1 = std::asin(HvTransfo_ClampToUnit(-m[2]));
    double const y2 = (y1 <= 0.0 ? -kTransfoPi : kTransfoPi) - y1;
    Angles result;
    if (std::fabs(std::cos(y1)) > kPoleTolerance) {
        Angles const first = RegularAngles(m, y1);
        Angles const second = RegularAngles(m, y2);
        result = Distance(wrapped, second) > Distance(wrapped, first) ? first : second;
    } else {
        result = PoleAngles(m, wrapped, y1, y2);
    }
    angles = Angles(WindTo(reference.x, result.x), WindTo(reference.y, result.y),
                    WindTo(reference.z, result.z));
}
