// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Paths whose inside can be seen, and what the tests of paths share.

#ifndef TESTS_SHAPE_PATH_TEST_SUPPORT_H
#define TESTS_SHAPE_PATH_TEST_SUPPORT_H

#include <hv/shape/HvPath2f.h>

#include <cstring>
#include <ostream>
#include <vector>

using PathPoint = HvPoint2<float>;

/// A path that shows its arrays.
class OpenPath : public HvPath2f {
public:
    OpenPath() : HvPath2f(0u) {}
    OpenPath(HvPath2f const& path) : HvPath2f(path) {}
    OpenPath(HvPath2f const& path, unsigned int first, unsigned int last)
        : HvPath2f(path, first, last)
    {
    }
    using HvPath2f::lastSubpathOpen;
    using HvPath2f::points;
    using HvPath2f::tags;
    using HvPath2f::operator=;
};

/// All that a path holds, compared to the bit.
struct PathImage {
    std::vector<PathPoint> points;
    std::vector<unsigned int> tags;
    int lastSubpathOpen = 0;

    friend bool operator==(PathImage const& a, PathImage const& b)
    {
        return a.tags == b.tags && a.lastSubpathOpen == b.lastSubpathOpen &&
               a.points.size() == b.points.size() &&
               (a.points.empty() ||
                std::memcmp(static_cast<void const*>(a.points.data()), b.points.data(),
                            a.points.size() * sizeof(PathPoint)) == 0);
    }
    friend bool operator!=(PathImage const& a, PathImage const& b) { return !(a == b); }
    friend std::ostream& operator<<(std::ostream& stream, PathImage const& image)
    {
        for (std::size_t i = 0; i < image.points.size() && i < image.tags.size(); ++i) {
            stream << "\n  " << i << ": role " << (image.tags[i] & 63) << " flags "
                   << image.tags[i] / 64 << " (" << image.points[i].x << ", " << image.points[i].y
                   << ")";
        }
        return stream << "\n  open " << image.lastSubpathOpen << ", " << image.points.size()
                      << " points, " << image.tags.size() << " tags";
    }
};

inline PathImage ImageOf(HvPath2f const& path)
{
    // A copy sees the arrays of any path, through the protected door.
    OpenPath const open(path);
    PathImage image;
    image.points.assign(open.points.begin(), open.points.end());
    image.tags.assign(open.tags.begin(), open.tags.end());
    image.lastSubpathOpen = open.lastSubpathOpen;
    return image;
}

inline std::vector<unsigned int> TagsOf(HvPath2f const& path)
{
    return ImageOf(path).tags;
}

/// A closed triangle of lines.
inline OpenPath Triangle()
{
    OpenPath path;
    path.Moveto({0, 0});
    path.Lineto({4, 0});
    path.Lineto({0, 3});
    path.Lineto({0, 0});
    path.Closeto();
    return path;
}

/// Two cubics in a smooth closed loop: the nodes 0 at (0, 0), 3 at (10, 0), 6 at (0, 0) have
/// vertical handles.
inline OpenPath SmoothLoop()
{
    OpenPath path;
    path.Moveto({0, 0});
    path.Curveto({0, 5}, {10, 4}, {10, 0});
    path.Curveto({10, -2}, {0, -3}, {0, 0});
    path.Closeto();
    return path;
}

/// An open run of four cubics along the x axis, smooth at all inner nodes: 0, 3, 6, 9, 12.
inline OpenPath SmoothRun()
{
    OpenPath path;
    path.Moveto({0, 0});
    for (int k = 0; k < 4; ++k) {
        float const x = static_cast<float>(10 * k);
        path.Curveto({x + 2, 0}, {x + 7, 0}, {x + 10, 0});
    }
    return path;
}

#endif
