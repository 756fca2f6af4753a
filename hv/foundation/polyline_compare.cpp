// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Comparisons of points along a polyline and between two polylines.

#include <hv/foundation/polyline_compare.h>

#include <hv/foundation/array_capacity.h>

#include <algorithm>

namespace {

template <class Array>
int ConsecutivePointsDiffer(Array const& a)
{
    return std::adjacent_find(a.begin(), a.end()) == a.end() ? 1 : 0;
}

/// The place between two points is a number of the points' own type: the comparison of float
/// polylines rounds it to float.
template <class T>
int PolylinesAreClose(HvTypedArray<HvPoint2<T>> const& a, HvDoubleArray const& chordA,
                      unsigned int a0, unsigned int a1, HvTypedArray<HvPoint2<T>> const& b,
                      HvDoubleArray const& chordB, unsigned int b0, unsigned int b1,
                      double tolerance, unsigned int& failedAt)
{
    double const squaredTolerance = tolerance * tolerance;
    double const baseA = chordA[a0];
    double const baseB = chordB[b0];
    unsigned int i = a0;
    for (unsigned int j = b0 + 1; j < b1; ++j) {
        double const d = chordB[j] - baseB;
        while (i <= a1 && chordA[i] - baseA < d) {
            ++i;
        }
        HvPoint2<T> p;
        if (i > a1) {
            p = a[a1];
        } else if (i == a0) {
            // No length has been walked yet: there is no segment before the point.
            p = a[a0];
        } else {
            T const f = static_cast<T>((d + baseA - chordA[i - 1]) / (chordA[i] - chordA[i - 1]));
            p = a[i - 1] + (a[i] - a[i - 1]) * f;
        }
        if (squaredTolerance < HvPoint2_SquaredLengthAB(p, b[j])) {
            failedAt = j;
            return 0;
        }
    }
    return 1;
}

}  // namespace

int HvPoint2fArray_ConsecutivePointsDiffer(HvPoint2fArray const& a)
{
    return ConsecutivePointsDiffer(a);
}

int HvPoint2dArray_ConsecutivePointsDiffer(HvPoint2dArray const& a)
{
    return ConsecutivePointsDiffer(a);
}

int HvPoint2dArray_IsStrictlyIncreasingX(HvPoint2dArray const& a)
{
    for (unsigned int i = 1; i < a.Size(); ++i) {
        HvPoint2<double> const& last = a[i - 1];
        if (!(a[i].x > last.x || (a[i].x == last.x && a[i].y > last.y))) {
            return 0;
        }
    }
    return 1;
}

void HvPoint2dArray_Filter(HvPoint2dArray const& a, HvPointTagArray const& tags,
                           HvPoint2dArray& out, HvPointTagArray& outTags)
{
    if (&tags == &outTags) {
        HvPointTagArray const copy(tags);
        HvPoint2dArray_Filter(a, copy, out, outTags);
        return;
    }
    unsigned int const count = a.Size();
    out.Reserve(HvArrayCapacity_GrownSize(out.Size(), count));
    outTags.Reserve(HvArrayCapacity_GrownSize(outTags.Size(), count));
    for (unsigned int i = 0; i < count; ++i) {
        bool const repeats =
            tags[i] != HvPointTagStart && out.Size() != 0 && a[i] == out[out.Size() - 1];
        if (!repeats) {
            out.Add(a[i]);
            outTags.Add(tags[i]);
        } else if (tags[i] == HvPointTagEnd) {
            HvPointTag& lastTag = outTags[outTags.Size() - 1];
            if (lastTag == HvPointTagStart) {
                out.Add(a[i]);
                outTags.Add(HvPointTagEnd);
            } else {
                lastTag = HvPointTagEnd;
            }
        }
    }
}

int HvPoint2fArray_PolylinesAreClose(HvPoint2fArray const& a, HvDoubleArray const& chordA,
                                     unsigned int a0, unsigned int a1, HvPoint2fArray const& b,
                                     HvDoubleArray const& chordB, unsigned int b0, unsigned int b1,
                                     double tolerance, unsigned int& failedAt)
{
    return PolylinesAreClose(a, chordA, a0, a1, b, chordB, b0, b1, tolerance, failedAt);
}

int HvPoint2dArray_PolylinesAreClose(HvPoint2dArray const& a, HvDoubleArray const& chordA,
                                     unsigned int a0, unsigned int a1, HvPoint2dArray const& b,
                                     HvDoubleArray const& chordB, unsigned int b0, unsigned int b1,
                                     double tolerance, unsigned int& failedAt)
{
    return PolylinesAreClose(a, chordA, a0, a1, b, chordB, b0, b1, tolerance, failedAt);
}
