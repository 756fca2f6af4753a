// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Segments and nodes of a motion path that come and go.

#include <hv/bezier/HvBezierTool_locate.h>
#include <hv/bezier/HvBezierTool_split.h>
#include <hv/motionpath/HvMotionPath3d.h>
#include <hv/motionpath/internal/HvMotionPath3dImpl.h>

#include <algorithm>
#include <cmath>

namespace {

/// Inserts elements into an array that has room for them: nothing is allocated.
template <class Array, class T>
void InsertReserved(Array& array, unsigned int at, T const* elements, unsigned int count)
{
    for (unsigned int i = 0; i < count; ++i) {
        array.Add(elements[i]);
    }
    std::rotate(array.begin() + at, array.end() - count, array.end());
}

/// Removes the elements `first` to `last` inclusive. The storage stays, for what is added next:
/// nothing is allocated.
template <class Array>
void Erase(Array& array, unsigned int first, unsigned int last)
{
    auto const end = std::move(array.begin() + last + 1, array.end(), array.begin() + first);
    array.Chop(static_cast<unsigned int>(end - array.begin()));
}

template <class Array>
void ReserveMore(Array& array, unsigned int size, unsigned int count)
{
    array.Reserve(HvArrayCapacity_GrownSize(size, count));
}

}  // namespace

// The implementation.

void HvMotionPath3dImpl::ReserveNode(unsigned int newPoints)
{
    ReserveMore(points, NumPoints(), newPoints);
    ReserveMore(clientData, NumPoints(), newPoints);
    ReserveMore(times, NumNodes(), 1);
    ReserveMore(nodeFlags, NumNodes(), 1);
    ReserveMore(tangents, NumNodes(), 1);
}

void HvMotionPath3dImpl::InsertPoints(unsigned int at, Point const* inserted,
                                      unsigned int count) noexcept
{
    void* const noData[3] = {};
    InsertReserved(EditPoints(), at, inserted, count);
    InsertReserved(clientData, at, noData, count);
}

void HvMotionPath3dImpl::InsertNodeData(unsigned int node, double t, std::uint8_t flags) noexcept
{
    HvTwoSidedTangent const smooth;
    InsertReserved(times, node, &t, 1);
    InsertReserved(nodeFlags, node, &flags, 1);
    InsertReserved(tangents, node, &smooth, 1);
}

bool HvMotionPath3dImpl::CanAppendAt(double t) const
{
    return NumNodes() != 0 && std::isfinite(t) && CanBeAdjacentTimeValues(GetLastTime(), t) != 0;
}

bool HvMotionPath3dImpl::CanPrependAt(double t) const
{
    return NumNodes() != 0 && std::isfinite(t) && CanBeAdjacentTimeValues(t, GetFirstTime()) != 0;
}

void HvMotionPath3dImpl::Append(Point const& c1, Point const& c2, Point const& p, double t)
{
    Point const inserted[3] = {c1, c2, p};
    InsertPoints(NumPoints(), inserted, 3);
    InsertNodeData(NumNodes(), t, 0);
}

void HvMotionPath3dImpl::Prepend(Point const& p, Point const& c1, Point const& c2, double t,
                                 std::uint8_t flags)
{
    Point const inserted[3] = {p, c1, c2};
    InsertPoints(0, inserted, 3);
    InsertNodeData(0, t, flags);
}

int HvMotionPath3dImpl::Moveto(Point const& p, double t)
{
    if (NumNodes() != 0 || !std::isfinite(t)) {
        return 0;
    }
    ReserveNode(1);
    InsertPoints(0, &p, 1);
    InsertNodeData(0, t, 0);
    return 1;
}

int HvMotionPath3dImpl::Lineto(Point const& p, double t)
{
    if (!CanAppendAt(t)) {
        return 0;
    }
    ReserveNode(3);
    nodeFlags[NumNodes() - 1] |= sm_LINENODE;
    Append(p, p, p, t);
    return 1;
}

int HvMotionPath3dImpl::PreLineto(Point const& p, double t)
{
    if (!CanPrependAt(t)) {
        return 0;
    }
    ReserveNode(3);
    Prepend(p, p, p, t, sm_LINENODE);
    return 1;
}

int HvMotionPath3dImpl::Curveto(Point const& c1, Point const& c2, Point const& p, double t)
{
    if (!CanAppendAt(t)) {
        return 0;
    }
    ReserveNode(3);
    unsigned int const joint = NumNodes() - 1;
    // A node that was the start of a straight segment, since removed, would make this one straight.
    nodeFlags[joint] &= static_cast<std::uint8_t>(~sm_LINENODE);
    Append(c1, c2, p, t);
    if (joint > 0 && !IsLine(joint - 1) && IsLocked(joint)) {
        AlignHandlesAt(3 * joint);
    }
    return 1;
}

int HvMotionPath3dImpl::PreCurveto(Point const& c1, Point const& c2, Point const& p, double t)
{
    if (!CanPrependAt(t)) {
        return 0;
    }
    ReserveNode(3);
    Prepend(p, c2, c1, t, 0);
    if (IsSegment(3) && !IsLine(1) && IsLocked(1)) {
        AlignHandlesAt(3);
    }
    return 1;
}

int HvMotionPath3dImpl::InsertNode(double t, double tolerance, double nearTime, unsigned int& point,
                                   int& exact)
{
    unsigned int const r = LocateTimeValue(t, exact);
    if (r == 0 || r == NumNodes()) {
        return 0;
    }
    double const t0 = times[r - 1];
    double const t1 = times[r];
    bool const isNearLeft = exact != 0 || t < t0 + nearTime;
    if (isNearLeft || t > t1 - nearTime) {
        exact = 1;
        point = isNearLeft ? 3 * r - 3 : 3 * r;
        return 0;
    }
    if (CanBeAdjacentTimeValues(t0, t) == 0 || CanBeAdjacentTimeValues(t, t1) == 0) {
        return 0;
    }
    unsigned int const s = 3 * r - 3;
    if (IsLine(r - 1)) {
        double const u = (t - t0) / (t1 - t0);
        Point const q = points[s] + (points[s + 3] - points[s]) * u;
        Point const inserted[3] = {q, q, q};
        ReserveNode(3);
        InsertPoints(3 * r, inserted, 3);
        InsertNodeData(r, t, sm_LINENODE);
    } else {
        Point split[5];
        if (!SplitCurve(s, t, tolerance, split)) {
            return 0;
        }
        ReserveNode(3);
        points[s + 1] = split[0];
        points[s + 2] = split[1];
        InsertPoints(3 * r, split + 2, 3);
        InsertNodeData(r, t, 0);
    }
    point = 3 * r;
    return 1;
}

bool HvMotionPath3dImpl::SplitCurve(unsigned int s, double t, double tolerance, Point* split) const
{
    Point const* const cubic = points.Data() + s;
    double u = 0.5;
    Point q;
    if (EvalOnCubic(s, t, tolerance, polylines, q) != 0) {
        double const usable = HvSegment_UsableTolerance(cubic, tolerance);
        double squaredDistance;
        bool const isFound =
            HvBezierTool_LocatePoint3d(cubic, usable, q, usable * usable, squaredDistance, u) != 0;
        if (!isFound || !(u > 0.0 && u < 1.0)) {
            return false;
        }
    }
    HvBezierTool_SplitCubic3d(cubic, split, u);
    return true;
}

unsigned int HvMotionPath3dImpl::RemoveNodes(unsigned int first, unsigned int last)
{
    if (!IsNode(first) || !IsNode(last) || first > last) {
        return 0;
    }
    unsigned int const before = NumPoints();
    bool const isFront = first == 0;
    bool const isBack = last == before - 1;
    // The controls of both sides go with an inner node; at an end, those towards the rest.
    unsigned int const from = isFront ? 0 : first - (isBack ? 2 : 1);
    unsigned int const to = isBack ? last : last + (isFront ? 2 : 1);
    Erase(EditPoints(), from, to);
    Erase(clientData, from, to);
    Erase(times, first / 3, last / 3);
    Erase(nodeFlags, first / 3, last / 3);
    Erase(tangents, first / 3, last / 3);
    return before - NumPoints();
}

int HvMotionPath3dImpl::ScaleAndOffsetInitialTimes(double scale, double offset)
{
    auto const moved = [&](unsigned int node) { return times[node] * scale + offset; };
    for (unsigned int i = 0; i < NumNodes(); ++i) {
        bool const isBehind = i == 0 || CanBeAdjacentTimeValues(moved(i - 1), moved(i)) != 0;
        if (!isBehind || !std::isfinite(moved(i))) {
            return 0;
        }
    }
    for (unsigned int i = 0; i < NumNodes(); ++i) {
        times[i] = moved(i);
    }
    return 1;
}

// The path.

int HvMotionPath3d::Moveto(HvPoint3<double> const& p, double t)
{
    CXQCriticalSectionLock const lock(section);
    return impl->Moveto(p, t);
}

int HvMotionPath3d::Lineto(HvPoint3<double> const& p, double t)
{
    CXQCriticalSectionLock const lock(section);
    return impl->Lineto(p, t);
}

int HvMotionPath3d::PreLineto(HvPoint3<double> const& p, double t)
{
    CXQCriticalSectionLock const lock(section);
    return impl->PreLineto(p, t);
}

int HvMotionPath3d::Curveto(HvPoint3<double> const& c1, HvPoint3<double> const& c2,
                            HvPoint3<double> const& p, double t)
{
    CXQCriticalSectionLock const lock(section);
    return impl->Curveto(c1, c2, p, t);
}

int HvMotionPath3d::PreCurveto(HvPoint3<double> const& c1, HvPoint3<double> const& c2,
                               HvPoint3<double> const& p, double t)
{
    CXQCriticalSectionLock const lock(section);
    return impl->PreCurveto(c1, c2, p, t);
}

int HvMotionPath3d::InsertNode(double t, double tolerance, double nearTime, unsigned int& point,
                               int& exact)
{
    CXQCriticalSectionLock const lock(section);
    return impl->InsertNode(t, tolerance, nearTime, point, exact);
}

unsigned int HvMotionPath3d::RemoveNodes(unsigned int first, unsigned int last)
{
    CXQCriticalSectionLock const lock(section);
    return impl->RemoveNodes(first, last);
}

int HvMotionPath3d::ScaleAndOffsetInitialTimes(double scale, double offset)
{
    CXQCriticalSectionLock const lock(section);
    return impl->ScaleAndOffsetInitialTimes(scale, offset);
}
