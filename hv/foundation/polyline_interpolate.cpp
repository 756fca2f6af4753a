// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Polylines between two polylines, and even spacing along one.

#include <hv/foundation/polyline_interpolate.h>

#include <hv/foundation/angle.h>
#include <hv/foundation/array_capacity.h>

#include <algorithm>
#include <cassert>
#include <cmath>

namespace {

/// Each product is rounded to float before the sum.
float LerpCoordinate(float a, float b, double t)
{
    return static_cast<float>(double(b) * t) + static_cast<float>(double(a) * (1.0 - t));
}

HvPoint2<float> LerpPoint(HvPoint2<float> const& a, HvPoint2<float> const& b, double t)
{
    return HvPoint2<float>(LerpCoordinate(a.x, b.x, t), LerpCoordinate(a.y, b.y, t));
}

double StepAngle(HvPoint2<float> const& from, HvPoint2<float> const& to)
{
    return AngleWithFirstAxisRadian(double(to.x) - double(from.x), double(to.y) - double(from.y));
}

}  // namespace

void HvPoint2fArraySingleComponent_Lerp(HvPoint2fArray const& a, HvPoint2fArray const& b, double t,
                                        HvPoint2fArray& out)
{
    if (t == 0.0) {
        out = a;
        return;
    }
    if (t == 1.0) {
        out = b;
        return;
    }
    unsigned int const count = a.Size();
    out.Resize(count);
    for (unsigned int i = 0; i < count; ++i) {
        out[i] = LerpPoint(a[i], b[i], t);
    }
}

void HvPoint2fArraySingleComponent_Lerp(HvPoint2fArray const& a, unsigned int a0, unsigned int a1,
                                        HvPoint2fArray const& b, unsigned int b0, unsigned int b1,
                                        double t, HvPoint2fArray& out)
{
    unsigned int const countA = a1 - a0 + 1;
    unsigned int const countB = b1 - b0 + 1;
    if (t == 0.0) {
        out.Add(a, a0, countA);
        return;
    }
    if (t == 1.0) {
        out.Add(b, b0, countB);
        return;
    }
    unsigned int const count = std::min(countA, countB);
    out.Reserve(HvArrayCapacity_GrownSize(out.Size(), count));
    for (unsigned int k = 0; k < count; ++k) {
        out.Add(LerpPoint(a[a0 + k], b[b0 + k], t));
    }
}

void HvPoint2fArraySingleComponent_EvenSubdivide(HvPoint2fArray const& a,
                                                 HvDoubleArray const& chord, unsigned int n,
                                                 HvPoint2fArray& out)
{
    unsigned int const count = a.Size();
    if (count == 0) {
        return;
    }
    assert(chord.Size() == count);
    // The points are read before `out` grows: it may be `a` itself.
    HvPoint2<float> const last = a[count - 1];
    double const length = chord[count - 1];
    double const step = length / n;
    bool const divides = step < length && n != 1;
    unsigned int const inner = divides ? n - 1 : 0;
    out.Reserve(HvArrayCapacity_GrownSize(out.Size(), HvArrayCapacity_GrownSize(inner, 2)));
    out.Add(a[0]);
    double target = 0.0;
    unsigned int i = 1;
    for (unsigned int k = 0; k < inner; ++k) {
        target += step;
        while (i < count && chord[i] < target) {
            ++i;
        }
        if (i == count) {
            break;
        }
        double const f = (target - chord[i - 1]) / (chord[i] - chord[i - 1]);
        HvPoint2<float> const along = a[i] - a[i - 1];
        out.Add(HvPoint2<float>(static_cast<float>(double(a[i - 1].x) + double(along.x) * f),
                                static_cast<float>(double(a[i - 1].y) + double(along.y) * f)));
    }
    out.Add(last);
}

void HvPoint2fArraySingleComponent_TurtleInterp(HvPoint2fArray const& a, HvPoint2fArray const& b,
                                                double t, HvPoint2fArray& out)
{
    unsigned int const count = a.Size();
    if (t == 0.0 || t == 1.0 || count < 2) {
        HvPoint2fArraySingleComponent_Lerp(a, b, t, out);
        return;
    }
    double const length =
        (1.0 - t) * HvPoint2_LengthAB(a[0], a[1]) + t * HvPoint2_LengthAB(b[0], b[1]);
    out.Resize(count);
    // The steps read the points before they are written over: `out` may be `a` or `b`.
    HvPoint2<float> previousA = a[0];
    HvPoint2<float> previousB = b[0];
    HvPoint2<float> position = LerpPoint(previousA, previousB, t);
    out[0] = position;
    for (unsigned int i = 1; i < count; ++i) {
        HvPoint2<float> const pointA = a[i];
        HvPoint2<float> const pointB = b[i];
        double const angle =
            (1.0 - t) * StepAngle(previousA, pointA) + t * StepAngle(previousB, pointB);
        position =
            HvPoint2<float>(static_cast<float>(double(position.x) + length * std::cos(angle)),
                            static_cast<float>(double(position.y) + length * std::sin(angle)));
        out[i] = position;
        previousA = pointA;
        previousB = pointB;
    }
}
