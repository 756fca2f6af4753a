// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Plain, slow and more exact mathematics of Bezier curves, to judge the library's.

#ifndef HV_TESTS_BEZIER_CUBIC_TEST_SUPPORT_H
#define HV_TESTS_BEZIER_CUBIC_TEST_SUPPORT_H

#include <hv/foundation/HvPoint2.h>
#include <hv/foundation/HvPoint3.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kGreatest = std::numeric_limits<double>::max();

using Point2 = HvPoint2<double>;
using Point3 = HvPoint3<double>;

/// One coordinate of a Bezier curve of degree n = controls.size() - 1, from its Bernstein form.
inline long double BezierAt(std::vector<long double> controls, long double t)
{
    for (std::size_t level = controls.size(); level > 1; --level) {
        for (std::size_t i = 0; i + 1 < level; ++i) {
            controls[i] = controls[i] * (1 - t) + controls[i + 1] * t;
        }
    }
    return controls[0];
}

/// One coordinate of a cubic.
inline double CubicAt(long double a, long double b, long double c, long double d, long double t)
{
    long double const s = 1 - t;
    return static_cast<double>(s * s * (s * a + 3 * t * b) + t * t * (3 * s * c + t * d));
}

/// The point of a cubic at t.
inline Point2 CubicAt(Point2 const* p, double t)
{
    return {CubicAt(p[0].x, p[1].x, p[2].x, p[3].x, t), CubicAt(p[0].y, p[1].y, p[2].y, p[3].y, t)};
}
inline Point3 CubicAt(Point3 const* p, double t)
{
    return {CubicAt(p[0].x, p[1].x, p[2].x, p[3].x, t), CubicAt(p[0].y, p[1].y, p[2].y, p[3].y, t),
            CubicAt(p[0].z, p[1].z, p[2].z, p[3].z, t)};
}

inline double Dot(Point2 const& a, Point2 const& b)
{
    return a.x * b.x + a.y * b.y;
}
inline double Dot(Point3 const& a, Point3 const& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
template <class Point>
double Length(Point const& v)
{
    return std::sqrt(Dot(v, v));
}

/// Greatest absolute coordinate.
inline double Magnitude(Point2 const* p, int count)
{
    double m = 0.0;
    for (int i = 0; i < count; ++i) {
        m = std::fmax(m, std::fmax(std::fabs(p[i].x), std::fabs(p[i].y)));
    }
    return m;
}
inline double Magnitude(Point3 const* p, int count)
{
    double m = 0.0;
    for (int i = 0; i < count; ++i) {
        m = std::fmax(
            m, std::fmax(std::fabs(p[i].x), std::fmax(std::fabs(p[i].y), std::fabs(p[i].z))));
    }
    return m;
}

/// Random curves with a fixed seed.
class RandomCurves {
public:
    explicit RandomCurves(unsigned int seed) : engine_(seed) {}

    double Uniform(double low, double high)
    {
        return std::uniform_real_distribution<double>(low, high)(engine_);
    }
    /// A power of two times 1 to 2, its exponent between the limits.
    double Scale(double lowExponent, double highExponent)
    {
        return std::exp2(Uniform(lowExponent, highExponent));
    }
    void Fill(Point2* p, int count, double scale)
    {
        for (int i = 0; i < count; ++i) {
            p[i] = Point2(Uniform(-scale, scale), Uniform(-scale, scale));
        }
    }
    void Fill(Point3* p, int count, double scale)
    {
        for (int i = 0; i < count; ++i) {
            p[i] = Point3(Uniform(-scale, scale), Uniform(-scale, scale), Uniform(-scale, scale));
        }
    }

private:
    std::mt19937 engine_;
};

#endif
