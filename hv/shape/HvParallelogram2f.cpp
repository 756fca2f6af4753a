// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The three points of a rectangle or an oval, and its nine handles.

#include <hv/shape/HvParallelogram2f.h>

#include <hv/foundation/HvULongArray.h>
#include <hv/rotation/HvTransfo4.h>
#include <hv/shape/internal/shape_hits.h>

#include <cmath>

namespace {

HvPoint2<float> HalfWay(HvPoint2<float> const& from, HvPoint2<float> const& to)
{
    return HvPoint2<float>((HvPoint2<double>(to) - HvPoint2<double>(from)) * 0.5);
}

bool CoincideOnBothAxes(HvPoint2<float> const& a, HvPoint2<float> const& b)
{
    return kHvGeometryTolerance > std::fabs(double(a.x) - double(b.x)) &&
           kHvGeometryTolerance > std::fabs(double(a.y) - double(b.y));
}

/// The point at `length` from `from` on the way to `to`, which is another point.
HvPoint2<float> PointAlong(HvPoint2<float> const& from, HvPoint2<float> const& to, float length)
{
    HvPoint2<double> const start(from);
    HvPoint2<double> const way = HvPoint2<double>(to) - start;
    double const wayLength = HvPoint2_Length(way);
    HvPoint2<double> const unit(way.x / wayLength, way.y / wayLength);
    return HvPoint2<float>(start + unit * double(length));
}

}  // namespace

HvParallelogram2f::HvParallelogram2f(HvPoint2<float> const& center, float width, float height)
    : p0(-0.5F * width + center.x, -0.5F * height + center.y),
      p1(0.5F * width + center.x, -0.5F * height + center.y),
      p2(-0.5F * width + center.x, 0.5F * height + center.y)
{
}

HvParallelogram2f::HvParallelogram2f(HvPoint2<float> const& a, HvPoint2<float> const& b)
    : p0(a), p1(b.x, a.y), p2(a.x, b.y)
{
}

HvPoint2<float> HvParallelogram2f::Handle(unsigned int i) const
{
    switch (i) {
    case 1:
        return p1 + HalfWay(p0, p2);
    case 2:
        return FourthCorner();
    case 3:
        return p2 + HalfWay(p0, p1);
    case 4:
        return p2;
    case 5:
        return p0 + HalfWay(p0, p2);
    case 6:
        return p0;
    case 7:
        return p0 + HalfWay(p0, p1);
    case 8:
        return p1;
    default:
        return HvPoint2<float>((HvPoint2<double>(p1) + HvPoint2<double>(p2)) * 0.5);
    }
}

template <class T>
void HvParallelogram2f::GetHandles(unsigned int first, unsigned int last,
                                   HvPoint2<T>* handles) const
{
    unsigned int const count = last >= first ? last - first + 1 : 0;
    for (unsigned int k = 0; k < count; ++k) {
        handles[k] = HvPoint2<T>(Handle(first + k));
    }
}

template HV_API void HvParallelogram2f::GetHandles(unsigned int, unsigned int,
                                                   HvPoint2<float>*) const;
template HV_API void HvParallelogram2f::GetHandles(unsigned int, unsigned int,
                                                   HvPoint2<double>*) const;

HvExtent2<float> HvParallelogram2f::Extent() const
{
    HvExtent2<float> extent;
    HvPoint2<float> const corners[] = {p0, p1, p2, FourthCorner()};
    for (HvPoint2<float> const& corner : corners) {
        extent.Augment(corner);
    }
    return extent;
}

int HvParallelogram2f::FindCloseHandle(HvPoint2<float> const& p, double size,
                                       unsigned int& index) const
{
    for (unsigned int i = 0; i < kHandles; ++i) {
        if (HvShapeHit_IsInSquare(Handle(i), p, size)) {
            index = i;
            return 1;
        }
    }
    return 0;
}

unsigned int HvParallelogram2f::AddHandlesInExtent(HvExtent2<float> const& extent,
                                                   HvULongArray& indices) const
{
    unsigned long found[kHandles];
    unsigned int count = 0;
    for (unsigned int i = 0; i < kHandles; ++i) {
        if (extent.Contains(Handle(i)) != 0) {
            found[count++] = i;
        }
    }
    indices.Add(found, count);
    return count;
}

bool HvParallelogram2f::IsDegenerate() const
{
    // Every coordinate is a factor of the area, so one that is not finite makes the area so.
    double const area = HvPoint2_ABdetCD(p0, p1, p0, p2);
    return CoincideOnBothAxes(p0, p1) || CoincideOnBothAxes(p0, p2) || !std::isfinite(area) ||
           kHvGeometryTolerance > std::fabs(area);
}

void HvParallelogram2f::SetWidth(float width)
{
    p1 = p0 == p1 ? HvPoint2<float>(p0.x + width, p1.y) : PointAlong(p0, p1, width);
}

void HvParallelogram2f::SetHeight(float height)
{
    p2 = p0 == p2 ? HvPoint2<float>(p2.x, p0.y + height) : PointAlong(p0, p2, height);
}

void HvParallelogram2f::Translate(HvPoint2<float> const& offset)
{
    p0 = p0 + offset;
    p1 = p1 + offset;
    p2 = p2 + offset;
}

void HvParallelogram2f::Transform(HvTransfo4 const& transform)
{
    transform.MapInPlace(p0);
    transform.MapInPlace(p1);
    transform.MapInPlace(p2);
}
