// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Life and reading of a motion path.

#include <hv/motionpath/HvMotionPath3d.h>

#include <hv/motionpath/internal/HvMotionPath3dImpl.h>

#include <algorithm>

namespace {

/// Nodes further apart than this in time are two; the limit only keeps their distance a number that
/// may be divided by.
constexpr double kLeastTimeStep = 1e-30;

}  // namespace

int CanBeAdjacentTimeValues(double a, double b)
{
    return b > a && b - a > kLeastTimeStep ? 1 : 0;
}

// The implementation.

HvMotionPath3dImpl::HvMotionPath3dImpl()
    : points(4u), clientData(4u), times(2u), nodeFlags(2u), tangents(2u)
{
}

HvMotionPath3dImpl::HvMotionPath3dImpl(HvMotionPath3dImpl const& other)
    : HvAllocated(), points(other.points), clientData(other.clientData), times(other.times),
      nodeFlags(other.nodeFlags), tangents(other.tangents)
{
}

int HvMotionPath3dImpl::GetControlPoint(unsigned int point, Point& p) const
{
    if (point >= NumPoints()) {
        return 0;
    }
    p = points[point];
    return 1;
}

int HvMotionPath3dImpl::GetControlPoints(unsigned int first, unsigned int last, Point* p,
                                         double* t) const
{
    if (first >= NumPoints() || last >= NumPoints()) {
        return 0;
    }
    for (unsigned int i = first; i <= last; ++i) {
        *p++ = points[i];
        *t++ = times[i / 3];
    }
    return 1;
}

int HvMotionPath3dImpl::GetControlPointKind(unsigned int point, PointKind& kind) const
{
    if (point >= NumPoints()) {
        return 0;
    }
    if (NumPoints() == 1) {
        kind = HvMotionPath3d::SinglePoint;
        return 1;
    }
    // The kinds of both sorts of segment stand in the order of the points, the last node behind.
    unsigned int const first =
        IsLine(point / 3) ? HvMotionPath3d::LineNode : HvMotionPath3d::CurveNode;
    unsigned int const place = point == NumPoints() - 1 ? 3 : point % 3;
    kind = static_cast<PointKind>(first + place);
    return 1;
}

int HvMotionPath3dImpl::GetNode(unsigned int point, Point& p, double& t) const
{
    if (!IsNode(point)) {
        return 0;
    }
    p = points[point];
    t = times[point / 3];
    return 1;
}

void* HvMotionPath3dImpl::GetClientData(unsigned int point) const
{
    return point < NumPoints() ? clientData[point] : nullptr;
}

void HvMotionPath3dImpl::SetClientData(unsigned int point, void* data)
{
    if (point < NumPoints()) {
        clientData[point] = data;
    }
}

double HvMotionPath3dImpl::GetFirstTime() const
{
    return NumNodes() == 0 ? 0.0 : times[0];
}

double HvMotionPath3dImpl::GetLastTime() const
{
    return NumNodes() == 0 ? 0.0 : times[NumNodes() - 1];
}

int HvMotionPath3dImpl::GetTangentInfo(unsigned int point, TangentInfo HvTwoSidedTangent::*side,
                                       TangentInfo& info) const
{
    if (point >= NumPoints()) {
        return 0;
    }
    info = tangents[point / 3].*side;
    return 1;
}

int HvMotionPath3dImpl::SetTangentInfo(unsigned int point, TangentInfo HvTwoSidedTangent::*side,
                                       TangentInfo info)
{
    if (point >= NumPoints() || HvTwoSidedTangent::IsValid(info) == 0) {
        return 0;
    }
    tangents[point / 3].*side = info;
    return 1;
}

// The path.

HvMotionPath3d::HvMotionPath3d() : impl(new HvMotionPath3dImpl) {}

HvMotionPath3d::HvMotionPath3d(HvPoint3<double> const& a, HvPoint3<double> const& b, double t0,
                               double t1)
    : HvMotionPath3d()
{
    impl->Moveto(a, t0);
    impl->Lineto(b, t1);
}

HvMotionPath3d::HvMotionPath3d(HvPoint3<double> const& a, HvPoint3<double> const& b, double t0,
                               double t1, HvPoint3<double> const& c, HvPoint3<double> const& d)
    : HvMotionPath3d()
{
    impl->Moveto(a, t0);
    impl->Curveto(c, d, b, t1);
}

HvMotionPath3d::HvMotionPath3d(HvMotionPath3d const& other) : HvAllocated()
{
    CXQCriticalSectionLock const lock(other.section);
    impl.reset(new HvMotionPath3dImpl(*other.impl));
}

HvMotionPath3d& HvMotionPath3d::operator=(HvMotionPath3d const& other)
{
    // One lock after the other: with both held, a = b in one thread and b = a in another could wait
    // for each other for ever.
    HvMotionPath3d copy(other);
    CXQCriticalSectionLock const lock(section);
    impl.swap(copy.impl);
    return *this;
}

HvMotionPath3d::~HvMotionPath3d() = default;

unsigned int HvMotionPath3d::NumPoints() const
{
    CXQCriticalSectionLock const lock(section);
    return impl->NumPoints();
}

unsigned int HvMotionPath3d::NumNodes() const
{
    CXQCriticalSectionLock const lock(section);
    return impl->NumNodes();
}

int HvMotionPath3d::IsNode(unsigned int point) const
{
    CXQCriticalSectionLock const lock(section);
    return impl->IsNode(point) ? 1 : 0;
}

int HvMotionPath3d::GetControlPoint(unsigned int point, HvPoint3<double>& p) const
{
    CXQCriticalSectionLock const lock(section);
    return impl->GetControlPoint(point, p);
}

int HvMotionPath3d::GetControlPoints(unsigned int first, unsigned int last, HvPoint3<double>* p,
                                     double* t) const
{
    CXQCriticalSectionLock const lock(section);
    return impl->GetControlPoints(first, last, p, t);
}

int HvMotionPath3d::GetControlPointKind(unsigned int point, PointKind& kind) const
{
    CXQCriticalSectionLock const lock(section);
    return impl->GetControlPointKind(point, kind);
}

int HvMotionPath3d::GetNode(unsigned int point, HvPoint3<double>& p, double& t) const
{
    CXQCriticalSectionLock const lock(section);
    return impl->GetNode(point, p, t);
}

void* HvMotionPath3d::GetClientData(unsigned int point) const
{
    CXQCriticalSectionLock const lock(section);
    return impl->GetClientData(point);
}

void HvMotionPath3d::SetClientData(unsigned int point, void* data)
{
    CXQCriticalSectionLock const lock(section);
    impl->SetClientData(point, data);
}

double HvMotionPath3d::GetFirstTime(int) const
{
    CXQCriticalSectionLock const lock(section);
    return impl->GetFirstTime();
}

double HvMotionPath3d::GetLastTime(int) const
{
    CXQCriticalSectionLock const lock(section);
    return impl->GetLastTime();
}

void HvMotionPath3d::GetTimeInterval(double& first, double& last) const
{
    CXQCriticalSectionLock const lock(section);
    if (impl->NumNodes() != 0) {
        first = impl->GetFirstTime();
        last = impl->GetLastTime();
    }
}

int HvMotionPath3d::GetLeftTangentInfo(unsigned int point, TangentInfo& info) const
{
    CXQCriticalSectionLock const lock(section);
    return impl->GetTangentInfo(point, &HvTwoSidedTangent::left, info);
}

int HvMotionPath3d::GetRightTangentInfo(unsigned int point, TangentInfo& info) const
{
    CXQCriticalSectionLock const lock(section);
    return impl->GetTangentInfo(point, &HvTwoSidedTangent::right, info);
}

int HvMotionPath3d::SetLeftTangentInfo(unsigned int point, TangentInfo info)
{
    CXQCriticalSectionLock const lock(section);
    return impl->SetTangentInfo(point, &HvTwoSidedTangent::left, info);
}

int HvMotionPath3d::SetRightTangentInfo(unsigned int point, TangentInfo info)
{
    CXQCriticalSectionLock const lock(section);
    return impl->SetTangentInfo(point, &HvTwoSidedTangent::right, info);
}
