// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A motion path as a path of the plane.

#include <hv/motionpath/HvMotionPath3d.h>
#include <hv/motionpath/internal/HvMotionPath3dImpl.h>
#include <hv/shape/HvPath2f.h>

namespace {

/// The two axes that a plane keeps.
struct Axes {
    double HvPoint3<double>::*first;
    double HvPoint3<double>::*second;
};

using Place = HvPoint3<double>;
constexpr Axes kAxes[3] = {{&Place::x, &Place::y}, {&Place::x, &Place::z}, {&Place::y, &Place::z}};

}  // namespace

// The implementation.

void HvMotionPath3dImpl::Project(HvMotionPath3d::Projection plane, HvPath2f& path) const
{
    Axes const axes = kAxes[plane];
    auto const projected = [&](unsigned int i) {
        return HvPoint2<float>(HvPoint2<double>(points[i].*axes.first, points[i].*axes.second));
    };
    if (NumPoints() != 0) {
        path.Moveto(projected(0));
    }
    for (unsigned int s = 0; IsSegment(s); s += 3) {
        if (IsLine(s / 3)) {
            path.Lineto(projected(s + 3));
        } else {
            path.Curveto(projected(s + 1), projected(s + 2), projected(s + 3));
        }
    }
}

// The path.

int HvMotionPath3d::GetProjectedPath(Projection plane, HvPath2f& path) const
{
    if (plane < ProjectionXY || plane > ProjectionYZ) {
        return 0;
    }
    // Built aside: so `path` is whole or as it was, and its lock is never waited for under ours.
    HvPath2f projected(NumPoints());
    {
        CXQCriticalSectionLock const lock(section);
        impl->Project(plane, projected);
    }
    path = projected;
    return 1;
}
