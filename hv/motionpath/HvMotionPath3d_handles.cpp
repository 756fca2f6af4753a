// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Points of a motion path that move, and the nodes that stay smooth thereby.

#include <hv/motionpath/HvMotionPath3d.h>
#include <hv/motionpath/internal/HvMotionPath3dImpl.h>
#include <hv/motionpath/internal/align_handles.h>
#include <hv/rotation/HvTransfo4.h>

#include <cmath>

// The implementation.

int HvMotionPath3dImpl::AlignHandlesAt(unsigned int point)
{
    Point* const node = EditPoints().Data() + point;
    return HvHandle_Align(node[-1], node[0], node[1]);
}

int HvMotionPath3dImpl::ReplaceNode(unsigned int point, Point const& p, double t, double minGap)
{
    if (!IsNode(point) || !(minGap >= 0.0) || !std::isfinite(t)) {
        return 0;
    }
    unsigned int const node = point / 3;
    if (node > 0) {
        double const previous = times[node - 1];
        if (!(t > previous + minGap) || CanBeAdjacentTimeValues(previous, t) == 0) {
            return 0;
        }
    }
    if (node + 1 < NumNodes()) {
        double const next = times[node + 1];
        if (!(t + minGap < next) || CanBeAdjacentTimeValues(t, next) == 0) {
            return 0;
        }
    }
    MoveNode(point, p);
    times[node] = t;
    return 1;
}

void HvMotionPath3dImpl::MoveNode(unsigned int point, Point const& p)
{
    HvPoint3dArray& edited = EditPoints();
    if (IsLocked(point / 3)) {
        Point const delta = p - edited[point];
        if (point > 0) {
            edited[point - 1] = edited[point - 1] + delta;
        }
        if (point + 1 < NumPoints()) {
            edited[point + 1] = edited[point + 1] + delta;
        }
    }
    edited[point] = p;
}

int HvMotionPath3dImpl::ReplaceControlPoint(unsigned int point, Point const& p, int keepLength)
{
    if (point >= NumPoints()) {
        return 0;
    }
    switch (point % 3) {
    case 0:
        MoveNode(point, p);
        return 1;
    case 1:
        if (point > 1) {
            RotateOpposite(point - 1, point, point - 2, p, keepLength);
        }
        break;
    default:
        if (point + 2 < NumPoints()) {
            RotateOpposite(point + 1, point, point + 2, p, keepLength);
        }
        break;
    }
    EditPoints()[point] = p;
    return 1;
}

/// Turns the control `opposite` of a locked node with the control `moved` that goes to `p`:
///
///     p  ---->  node  ---->  opposite
void HvMotionPath3dImpl::RotateOpposite(unsigned int node, unsigned int moved,
                                        unsigned int opposite, Point const& p, int keepLength)
{
    if (IsLine(node / 3) || !IsLocked(node / 3)) {
        return;
    }
    HvPoint3dArray& edited = EditPoints();
    Point direction = edited[node] - p;
    double const newLength = HvPoint3_Length(direction);
    if (!HvHandle_Normalize(direction)) {
        return;
    }
    double length = HvPoint3_LengthAB(edited[opposite], edited[node]);
    double const oldLength = HvPoint3_LengthAB(edited[moved], edited[node]);
    if (keepLength != 0 && oldLength >= kLeastHandle) {
        length = length / oldLength * newLength;
    }
    edited[opposite] = edited[node] + direction * length;
}

int HvMotionPath3dImpl::ReplaceControlPointIgnoringLock(unsigned int point, Point const& p)
{
    if (point >= NumPoints()) {
        return 0;
    }
    EditPoints()[point] = p;
    return 1;
}

int HvMotionPath3dImpl::ReplaceTangentVectorDirections(unsigned int point, Point const& v)
{
    if (!IsSegment(point) || point == 0) {
        return 0;
    }
    HvPoint3dArray& edited = EditPoints();
    edited[point - 1] = edited[point] - v;
    edited[point + 1] = edited[point] + v;
    return 1;
}

void HvMotionPath3dImpl::Transform(HvTransfo4 const& transfo)
{
    transfo.MapInPlace(EditPoints().Data(), NumPoints());
}

int HvMotionPath3dImpl::IsG1ContinuityLocked(unsigned int point) const
{
    return IsNode(point) && IsLocked(point / 3) ? 1 : 0;
}

int HvMotionPath3dImpl::UnlockG1Continuity(unsigned int point)
{
    if (!IsNode(point)) {
        return 0;
    }
    nodeFlags[point / 3] &= static_cast<std::uint8_t>(~sm_G1LOCK);
    return 1;
}

int HvMotionPath3dImpl::LockG1Continuity(unsigned int point)
{
    if (!IsNode(point) || NumPoints() < 4) {
        return 0;
    }
    unsigned int const node = point / 3;
    bool const isLast = point == NumPoints() - 1;
    bool const isStraightBefore = node > 0 && IsLine(node - 1);
    bool const isStraightBehind = !isLast && IsLine(node);
    if (isStraightBefore || isStraightBehind) {
        return 0;
    }
    bool const isInner = node > 0 && !isLast;
    if (isInner && AlignHandlesAt(point) == 0) {
        return 0;
    }
    nodeFlags[node] |= sm_G1LOCK;
    return 1;
}

void HvMotionPath3dImpl::LockG1ContinuityAtAllNodes()
{
    for (unsigned int node = 0; node < NumNodes(); ++node) {
        LockG1Continuity(3 * node);
    }
}

// The path.

int HvMotionPath3d::ReplaceNode(unsigned int point, HvPoint3<double> const& p, double t,
                                double minGap)
{
    CXQCriticalSectionLock const lock(section);
    return impl->ReplaceNode(point, p, t, minGap);
}

int HvMotionPath3d::ReplaceControlPoint(unsigned int point, HvPoint3<double> const& p,
                                        int keepLength)
{
    CXQCriticalSectionLock const lock(section);
    return impl->ReplaceControlPoint(point, p, keepLength);
}

int HvMotionPath3d::TranslateControlPoint(unsigned int point, HvPoint3<double> const& delta,
                                          int keepLength)
{
    CXQCriticalSectionLock const lock(section);
    HvPoint3<double> p;
    return impl->GetControlPoint(point, p) != 0
               ? impl->ReplaceControlPoint(point, p + delta, keepLength)
               : 0;
}

int HvMotionPath3d::ReplaceControlPointIgnoringLock(unsigned int point, HvPoint3<double> const& p)
{
    CXQCriticalSectionLock const lock(section);
    return impl->ReplaceControlPointIgnoringLock(point, p);
}

int HvMotionPath3d::ReplaceTangentVectorDirections(unsigned int point, HvPoint3<double> const& v)
{
    CXQCriticalSectionLock const lock(section);
    return impl->ReplaceTangentVectorDirections(point, v);
}

int HvMotionPath3d::Transform(HvTransfo4 const& transfo)
{
    CXQCriticalSectionLock const lock(section);
    impl->Transform(transfo);
    return 1;
}

int HvMotionPath3d::IsG1ContinuityLocked(unsigned int point) const
{
    CXQCriticalSectionLock const lock(section);
    return impl->IsG1ContinuityLocked(point);
}

int HvMotionPath3d::UnlockG1Continuity(unsigned int point)
{
    CXQCriticalSectionLock const lock(section);
    return impl->UnlockG1Continuity(point);
}

int HvMotionPath3d::LockG1Continuity(unsigned int point)
{
    CXQCriticalSectionLock const lock(section);
    return impl->LockG1Continuity(point);
}

void HvMotionPath3d::LockG1ContinuityAtAllNodes()
{
    CXQCriticalSectionLock const lock(section);
    impl->LockG1ContinuityAtAllNodes();
}
