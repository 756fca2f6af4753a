// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Moving the points of a path, and the locks that keep handles in line.

#include <hv/shape/HvPath2f.h>

#include <hv/shape/HvShapeLock.h>
#include <hv/shape/internal/HvPathTags.h>

namespace {

using Point = HvPoint2<float>;

// A handle of this length or less has no direction: it is in line with every other. A longer one
// would excuse visible corners, a shorter one would judge by the rounding of coordinates.
constexpr double kCollapsedHandleLength = 1e-6;

// The squared sine of the turn up to which two handles count as in line, about 0.057 degrees. It
// leaves room for the rounding of handles to float.
constexpr double kInLineSquaredSine = 1e-6;

// Whether an outline through b, with the handles a before and c after it, does not turn at b.
int IsInLine(Point const& a, Point const& b, Point const& c)
{
    constexpr double kCollapsed = kCollapsedHandleLength * kCollapsedHandleLength;
    double const before = HvPoint2_SquaredLengthAB(b, a);
    double const after = HvPoint2_SquaredLengthAB(b, c);
    if (kCollapsed >= before || kCollapsed >= after) {
        return 1;
    }
    if (!(HvPoint2_ABdotCD(a, b, b, c) > 0)) {
        return 0;
    }
    double const det = HvPoint2_ABdetCD(a, b, b, c);
    return kInLineSquaredSine >= det * det / (before * after) ? 1 : 0;
}

// The foot of p on the line through a and b, which are apart.
Point ProjectedOnLine(Point const& p, Point const& a, Point const& b)
{
    double const t = HvPoint2_ABdotCD(a, b, a, p) / HvPoint2_SquaredLengthAB(a, b);
    return Point(static_cast<float>((1 - t) * double(a.x) + t * double(b.x)),
                 static_cast<float>((1 - t) * double(a.y) + t * double(b.y)));
}

// Where the handle on the far side of a node comes to lie when the one on this side moves from
// `from` to `to`: opposite to it, with its own length or with the ratio of the two lengths.
Point OppositeHandle(Point const& node, Point const& opposite, Point const& from, Point const& to,
                     int keepRatio)
{
    double vx = double(to.x) - double(node.x);
    double vy = double(to.y) - double(node.y);
    double factor = HvPoint2_LengthAB(node, opposite);
    if (keepRatio == 0) {
        double const length = std::hypot(vx, vy);
        if (vx != 0 || vy != 0) {
            vx /= length;
            vy /= length;
        }
    } else if (from != node) {
        factor /= HvPoint2_LengthAB(from, node);
    }
    return Point(static_cast<float>(double(node.x) - factor * vx),
                 static_cast<float>(double(node.y) - factor * vy));
}

// The handle on the other side of the node beside handle `i`. Where a subpath closes it lies at the
// other end of the subpath.
unsigned int IndexOfOppositeHandle(HvPathTags const& structure, unsigned int i, unsigned int node)
{
    if (node < i) {
        return node == 0 || structure.IsStart(node) ? structure.LastOfSubpath(node) - 1 : node - 1;
    }
    return structure.IsLastOfSubpath(node) ? structure.FirstOfSubpath(node) + 1 : node + 1;
}

}  // namespace

void HvPath2f::ReplacePoint(unsigned int i, HvPoint2<float> const& p, int keepRatio)
{
    HvShapeLock const lock(*this);
    HvPathTags const structure(tags);
    HvPoint2<float> const to = p;  // p may be one of the points that move
    if (!structure.Has(i)) {
        return;
    }
    if (structure.IsEndpoint(i)) {
        MoveEndpoint(i, to);
    } else if (structure.IsNode(i)) {
        MoveInnerNode(i, to);
    } else if (structure.IsFirstControl(i)) {
        MoveHandle(i, i - 1, to, keepRatio);
    } else if (structure.IsLastControl(i)) {
        MoveHandle(i, i + 1, to, keepRatio);
    } else {
        points[i] = to;
    }
}

// The first or last point of a subpath. A closed subpath has both at one place; when they are
// locked, the points beside them go along.
void HvPath2f::MoveEndpoint(unsigned int i, HvPoint2<float> const& p)
{
    HvPathTags const structure(tags);
    unsigned int const first = structure.FirstOfSubpath(i);
    unsigned int const last = structure.LastOfSubpath(i);
    if (first == last || !(structure.IsLocked(i) || structure.IsClosingEnd(last))) {
        points[i] = p;
        return;
    }
    HvPoint2<float> const delta = p - points[i];
    points[first] = points[last] = p;
    if (!structure.IsLocked(i)) {
        return;
    }
    points[last - 1] = points[last - 1] + delta;
    points[first + 1] = points[first + 1] + delta;
    if (IsG1Continuous(i) == 0 && HvPoint2_AIsNearB(points[first], points[first + 1]) == 0) {
        points[last - 1] = ProjectedOnLine(points[last - 1], points[first], points[first + 1]);
    }
}

void HvPath2f::MoveInnerNode(unsigned int i, HvPoint2<float> const& p)
{
    HvPoint2<float> const delta = p - points[i];
    points[i] = p;
    if (!HvPathTags(tags).IsLocked(i)) {
        return;
    }
    points[i - 1] = points[i - 1] + delta;
    points[i + 1] = points[i + 1] + delta;
    if (IsG1Continuous(i) == 0 && HvPoint2_AIsNearB(points[i - 1], points[i]) == 0) {
        points[i + 1] = ProjectedOnLine(points[i + 1], points[i - 1], points[i]);
    }
}

void HvPath2f::MoveHandle(unsigned int i, unsigned int node, HvPoint2<float> const& p,
                          int keepRatio)
{
    HvPathTags const structure(tags);
    if (structure.IsLocked(node)) {
        unsigned int const opposite = IndexOfOppositeHandle(structure, i, node);
        points[opposite] = OppositeHandle(points[node], points[opposite], points[i], p, keepRatio);
    }
    points[i] = p;
}

void HvPath2f::ReplacePointIgnoringLock(unsigned int i, HvPoint2<float> const& p)
{
    HvShapeLock const lock(*this);
    if (i < points.Size()) {
        points[i] = p;
    }
}

int HvPath2f::ReplaceTangentVectorDirections(unsigned int node, HvPoint2<float> const& d)
{
    HvShapeLock const lock(*this);
    HvPathTags const structure(tags);
    if (!structure.IsNode(node)) {
        return 0;
    }
    unsigned int before = node - 1;
    unsigned int after = node + 1;
    if (structure.IsEndpoint(node)) {
        unsigned int const first = structure.FirstOfSubpath(node);
        unsigned int const last = structure.LastOfSubpath(node);
        if (first == last || !structure.IsClosingEnd(last)) {
            return 0;
        }
        before = last - 1;
        after = first + 1;
    }
    HvPoint2<float> const position = points[node];
    HvPoint2<float> const direction = d;  // d may be one of the two points
    points[before] = position - direction;
    points[after] = position + direction;
    return 1;
}

int HvPath2f::IsG1Continuous(unsigned int node) const
{
    HvShapeLock const lock(*this);
    HvPathTags const structure(tags);
    if (!structure.Has(node)) {
        return 0;
    }
    if (!structure.IsEndpoint(node)) {
        return IsInLine(points[node - 1], points[node], points[node + 1]);
    }
    // Where a subpath closes, both its ends stand for one node.
    unsigned int const first = structure.FirstOfSubpath(node);
    unsigned int const last = structure.LastOfSubpath(node);
    if (!structure.IsClosingEnd(last) || last - first <= 2) {
        return 0;
    }
    return IsInLine(points[first + 1], points[node], points[last - 1]);
}

int HvPath2f::LockG1(unsigned int node)
{
    HvShapeLock const lock(*this);
    HvPathTags const structure(tags);
    if (!structure.Has(node)) {
        return 0;
    }
    if (structure.IsLocked(node)) {
        return 1;
    }
    if (!structure.IsNode(node) || IsG1Continuous(node) == 0) {
        return 0;
    }
    // Lines and quadratics have no handle of their own for the node.
    constexpr unsigned int kLeastDegree = 3;
    bool const isEndpoint = structure.IsEndpoint(node);
    unsigned int const first = isEndpoint ? structure.FirstOfSubpath(node) : node;
    unsigned int const last = isEndpoint ? structure.LastOfSubpath(node) : node;
    if (structure.Role(last).degree < kLeastDegree ||
        (!isEndpoint && structure.Role(node + 1).degree < kLeastDegree)) {
        return 0;
    }
    tags[first] = static_cast<unsigned char>(tags[first] | kHvPathLockBit);
    tags[last] = static_cast<unsigned char>(tags[last] | kHvPathLockBit);
    return 1;
}
