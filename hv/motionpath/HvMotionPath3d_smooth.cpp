// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Handles of a motion path that are derived from its nodes.

#include <hv/motionpath/HvMotionPath3d.h>
#include <hv/motionpath/internal/HvMotionPath3dImpl.h>
#include <hv/motionpath/internal/align_handles.h>

#include <cmath>

namespace {

using Point = HvPoint3<double>;

/// Controls this near to the thirds of a chord, along each axis, are at them.
constexpr double kThirdsTolerance = 1e-7;
/// A squared distance below which a neighbour shows no direction.
constexpr double kLeastSquaredDistance = 1e-7;

Point FirstThird(Point const& a, Point const& b)
{
    return (b - a) * kThird + a;
}

Point SecondThird(Point const& a, Point const& b)
{
    return (b - a) * kTwoThirds + a;
}

bool IsAt(Point const& a, Point const& b)
{
    return std::fabs(a.x - b.x) < kThirdsTolerance && std::fabs(a.y - b.y) < kThirdsTolerance &&
           std::fabs(a.z - b.z) < kThirdsTolerance;
}

/// Puts the controls of a cubic at the thirds of its chord.
void Straighten(Point* cubic)
{
    cubic[1] = FirstThird(cubic[0], cubic[3]);
    cubic[2] = SecondThird(cubic[0], cubic[3]);
}

/// Where the control at `node` goes, the outer end of a cubic whose other end was made smooth.
///
/// @param control    where it was.
/// @param opposite   the cubic's other control, and `joint` the node there.
/// @param isPathEnd  nothing follows beyond `node`.
Point OuterControl(Point const& node, Point const& control, Point const& opposite,
                   Point const& joint, bool isPathEnd)
{
    if (isPathEnd) {
        return (node + opposite) * 0.5;
    }
    Point direction = control - node;
    return HvHandle_Normalize(direction)
               ? node + direction * (HvPoint3_LengthAB(node, joint) * kThird)
               : FirstThird(node, joint);
}

}  // namespace

// The implementation.

int HvMotionPath3dImpl::LinearizeSegment(unsigned int point)
{
    if (!IsSegment(point)) {
        return 0;
    }
    unsigned int const node = point / 3;
    if (IsLine(node)) {
        return 1;
    }
    UnlockG1Continuity(point);
    UnlockG1Continuity(point + 3);
    Straighten(EditPoints().Data() + point);
    return 1;
}

int HvMotionPath3dImpl::IsCubicSegmentLinearlyParameterized(unsigned int point) const
{
    if (!IsSegment(point)) {
        return 0;
    }
    Point const* const cubic = points.Data() + point;
    return IsAt(cubic[1], FirstThird(cubic[0], cubic[3])) &&
                   IsAt(cubic[2], SecondThird(cubic[0], cubic[3]))
               ? 1
               : 0;
}

bool HvMotionPath3dImpl::NeighbourDirection(unsigned int node, unsigned int control,
                                            unsigned int farNode, bool isLine,
                                            Point& direction) const
{
    direction = points[node] - points[isLine ? farNode : control];
    return HvPoint3_SquaredLength(direction) >= kLeastSquaredDistance &&
           HvHandle_Normalize(direction);
}

int HvMotionPath3dImpl::SmoothSegment(unsigned int point)
{
    if (!IsSegment(point) || IsLine(point / 3)) {
        return 0;
    }
    if (NumNodes() == 2) {
        return 1;  // no neighbour to be smooth with
    }
    unsigned int const end = point + 3;
    bool const hasPrevious = point > 0;
    bool const hasNext = end + 1 < NumPoints();
    bool const isLineBefore = hasPrevious && IsLine(point / 3 - 1);
    bool const isLineBehind = hasNext && IsLine(end / 3);

    // Both directions first, so that a refusal at one end finds the other end untouched.
    Point out;
    Point in;
    if (hasPrevious && !NeighbourDirection(point, point - 1, point - 3, isLineBefore, out)) {
        return 0;
    }
    if (hasNext && !NeighbourDirection(end, end + 1, end + 3, isLineBehind, in)) {
        return 0;
    }
    HvPoint3dArray& edited = EditPoints();
    double const handle = HvPoint3_LengthAB(edited[point], edited[end]) * kThird;
    if (hasPrevious) {
        edited[point + 1] = edited[point] + out * handle;
        if (!isLineBefore && AlignHandlesAt(point) != 0) {
            nodeFlags[point / 3] |= sm_G1LOCK;
        }
    }
    if (hasNext) {
        edited[end - 1] = edited[end] + in * handle;
        if (!isLineBehind && AlignHandlesAt(end) != 0) {
            nodeFlags[end / 3] |= sm_G1LOCK;
        }
    }
    return 1;
}

// Two cubics A J B in a row after the join J, or a node beside it, was dragged:
//
//             J1 - J - J2           the line A B gives the direction at J, a third of the
//           /             \         chord A J or J B the length of a handle there
//         A1               B1
//        /                   \      an end of the path sees its neighbour handle half-way;
//       A                     B     an inner node keeps the direction of its own handle
//
// On a straight line with even handles each rule alone gives the thirds of the chords.

int HvMotionPath3dImpl::AdjustTwoCubics(unsigned int first, Point& direction)
{
    if (IsLine(first / 3) || IsLine(first / 3 + 1)) {
        return 0;
    }
    bool const startsPath = first == 0;
    bool const endsPath = first + 7 == NumPoints();
    Point* const p = EditPoints().Data() + first;
    Point along = p[6] - p[0];
    if (HvHandle_Normalize(along)) {
        direction = along;
    } else {
        along = direction;
        if (!HvHandle_Normalize(along)) {
            Straighten(p);
            Straighten(p + 3);
            return 1;
        }
    }
    p[2] = p[3] - along * (HvPoint3_LengthAB(p[0], p[3]) * kThird);
    p[4] = p[3] + along * (HvPoint3_LengthAB(p[3], p[6]) * kThird);
    p[1] = OuterControl(p[0], p[1], p[2], p[3], startsPath);
    p[5] = OuterControl(p[6], p[5], p[4], p[3], endsPath);
    return 1;
}

int HvMotionPath3dImpl::AdjustFirstTwoCubics(Point& direction)
{
    return NumNodes() < 3 ? 0 : AdjustTwoCubics(0, direction);
}

int HvMotionPath3dImpl::AdjustLastTwoCubics(Point& direction)
{
    return NumNodes() < 3 ? 0 : AdjustTwoCubics(NumPoints() - 7, direction);
}

// The path.

int HvMotionPath3d::LinearizeSegment(unsigned int point)
{
    CXQCriticalSectionLock const lock(section);
    return impl->LinearizeSegment(point);
}

int HvMotionPath3d::IsCubicSegmentLinearlyParameterized(unsigned int point) const
{
    CXQCriticalSectionLock const lock(section);
    return impl->IsCubicSegmentLinearlyParameterized(point);
}

int HvMotionPath3d::SmoothSegment(unsigned int point)
{
    CXQCriticalSectionLock const lock(section);
    return impl->SmoothSegment(point);
}

int HvMotionPath3d::AdjustFirstTwoCubics(HvPoint3<double>& direction)
{
    CXQCriticalSectionLock const lock(section);
    return impl->AdjustFirstTwoCubics(direction);
}

int HvMotionPath3d::AdjustLastTwoCubics(HvPoint3<double>& direction)
{
    CXQCriticalSectionLock const lock(section);
    return impl->AdjustLastTwoCubics(direction);
}
