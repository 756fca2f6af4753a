// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Motion paths for tests, and what can be seen of one.

#ifndef HV_TESTS_MOTIONPATH_MOTION_PATH_SUPPORT_H
#define HV_TESTS_MOTIONPATH_MOTION_PATH_SUPPORT_H

#include <hv/motionpath/HvMotionPath3d.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

using Point = HvPoint3<double>;
using Path = HvMotionPath3d;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// Numbers that nobody would pass on purpose.
constexpr std::array<double, 13> kHostileNumbers = {
    0.0,        -0.0,  1.0,          std::numeric_limits<double>::denorm_min(),
    1e-300,     1e308, -1e308,       kInfinity,
    -kInfinity, kNaN,  2147483648.0, 9007199254740993.0,
    -1.0};

/// Everything that a path shows, for comparisons: points, pointers, times, kinds, rules, locks and
/// the archive, bit for bit.
inline std::vector<std::uint64_t> ImageOf(Path const& path)
{
    std::vector<std::uint64_t> image;
    auto const add = [&image](auto value) {
        std::uint64_t bits = 0;
        static_assert(sizeof value <= sizeof bits, "a number or a pointer");
        std::memcpy(&bits, &value, sizeof value);
        image.push_back(bits);
    };
    add(path.NumPoints());
    add(path.NumNodes());
    for (unsigned int i = 0; i < path.NumPoints(); ++i) {
        Point p;
        double t = 0;
        Path::PointKind kind = Path::SinglePoint;
        Path::TangentInfo left = Path::TangentFree;
        Path::TangentInfo right = Path::TangentFree;
        EXPECT_EQ(path.GetControlPoints(i, i, &p, &t), 1);
        EXPECT_EQ(path.GetControlPointKind(i, kind), 1);
        EXPECT_EQ(path.GetLeftTangentInfo(i, left), 1);
        EXPECT_EQ(path.GetRightTangentInfo(i, right), 1);
        add(p.x), add(p.y), add(p.z), add(t);
        add(static_cast<int>(kind)), add(static_cast<int>(left)), add(static_cast<int>(right));
        add(path.IsG1ContinuityLocked(i));
        add(path.GetClientData(i));
    }
    return image;
}

inline std::vector<unsigned char> ArchiveOf(Path const& path)
{
    std::vector<unsigned char> archive(path.GetBufferSize(), 0xCD);
    EXPECT_EQ(path.WriteToBuffer(archive.data()), archive.size());
    return archive;
}

inline Point PointOf(Path const& path, unsigned int i)
{
    Point p;
    EXPECT_EQ(path.GetControlPoint(i, p), 1);
    return p;
}

inline double TimeOf(Path const& path, unsigned int i)
{
    Point p;
    double t = kNaN;
    EXPECT_EQ(path.GetNode(i, p, t), 1);
    return t;
}

inline Path::PointKind KindOf(Path const& path, unsigned int i)
{
    Path::PointKind kind = Path::SinglePoint;
    EXPECT_EQ(path.GetControlPointKind(i, kind), 1);
    return kind;
}

inline Point At(Path const& path, double t, double tolerance = 1e-6)
{
    Point out(kNaN, kNaN, kNaN);
    path.Eval(t, tolerance, out, 0);
    return out;
}

inline double Distance(Point const& a, Point const& b)
{
    return std::sqrt((a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y) +
                     (a.z - b.z) * (a.z - b.z));
}

inline void ExpectNear(Point const& a, Point const& b, double tolerance)
{
    EXPECT_LE(Distance(a, b), tolerance) << "(" << a.x << ", " << a.y << ", " << a.z << ") is not ("
                                         << b.x << ", " << b.y << ", " << b.z << ")";
}

/// Points and times as they come.
class PathSource {
public:
    explicit PathSource(unsigned int seed) : engine_(seed) {}

    double Number(double low, double high)
    {
        return std::uniform_real_distribution<double>(low, high)(engine_);
    }
    unsigned int Index(unsigned int count)
    {
        return std::uniform_int_distribution<unsigned int>(0, count - 1)(engine_);
    }
    Point Place() { return {Number(-5, 5), Number(-5, 5), Number(-5, 5)}; }

    /// A path of curved segments, from time 1 on, of durations between 0.5 and 2.
    Path CurvedPath(unsigned int segments)
    {
        Path path;
        double t = 1.0;
        EXPECT_EQ(path.Moveto(Place(), t), 1);
        for (unsigned int i = 0; i < segments; ++i) {
            t += Number(0.5, 2.0);
            // One by one: arguments are worked out in an order of the compiler's.
            Point const c1 = Place();
            Point const c2 = Place();
            EXPECT_EQ(path.Curveto(c1, c2, Place(), t), 1);
        }
        return path;
    }

private:
    std::mt19937 engine_;
};

#endif
