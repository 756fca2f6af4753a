// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Positions and directions on polylines.

#include <hv/foundation/polyline_eval.h>

namespace {

/// Two neighbours of a sorted table and the place between them: 0 at `low`, 1 at `high`.
struct Bracket {
    unsigned int low;
    unsigned int high;
    double fraction;
};

/// Finds `key` among the sorted keyAt(0) to keyAt(count - 1). An equal key gives a bracket of that
/// index alone, and so do neighbours with equal keys; a key beyond the ends gives the first or last
/// two with a fraction outside 0 to 1.
template <class KeyAt>
Bracket Find(unsigned int count, double key, KeyAt keyAt)
{
    unsigned int low = 0;
    unsigned int high = count - 1;
    while (high - low >= 2) {
        unsigned int const middle = low + (high - low) / 2;
        double const found = keyAt(middle);
        if (found == key) {
            return {middle, middle, 0.0};
        }
        if (found < key) {
            low = middle;
        } else {
            high = middle;
        }
    }
    double const width = keyAt(high) - keyAt(low);
    if (width == 0.0) {
        return {low, low, 0.0};
    }
    return {low, high, (key - keyAt(low)) / width};
}

HvPoint2<double> UnitVector(HvPoint2<double> const& from, HvPoint2<double> const& to)
{
    HvPoint2<double> const difference = to - from;
    double const length = HvPoint2_Length(difference);
    return length == 0.0 ? difference
                         : HvPoint2<double>(difference.x / length, difference.y / length);
}

}  // namespace

void HvPoint3dArraySingleComponent_ComputePosition(HvPoint3dArray const& a,
                                                   HvDoubleArray const& chord, double s,
                                                   HvPoint3<double>& out)
{
    unsigned int const count = a.Size();
    if (count == 0) {
        return;
    }
    if (s == 0.0) {
        out = a[0];
    } else if (s >= chord[count - 1]) {
        out = a[count - 1];
    } else {
        Bracket const at = Find(count, s, [&](unsigned int i) { return chord[i]; });
        out = at.low == at.high ? a[at.low] : a[at.low] + (a[at.high] - a[at.low]) * at.fraction;
    }
}

HvPoint2<double> HvPoint2dArray_FirstTangent(HvPoint2dArray const& a)
{
    return a.Size() < 2 ? HvPoint2<double>() : UnitVector(a[0], a[1]);
}

HvPoint2<double> HvPoint2dArray_LastTangent(HvPoint2dArray const& a)
{
    return a.Size() < 2 ? HvPoint2<double>() : UnitVector(a[a.Size() - 2], a[a.Size() - 1]);
}

double HvPoint2dArray_EvalYInSortedArray(HvPoint2dArray const& a, double x)
{
    unsigned int const count = a.Size();
    if (count == 0) {
        return 0.0;
    }
    if (x == a[0].x) {
        return a[0].y;
    }
    if (x == a[count - 1].x) {
        return a[count - 1].y;
    }
    Bracket const at = Find(count, x, [&](unsigned int i) { return a[i].x; });
    return at.low == at.high ? a[at.low].y
                             : a[at.low].y + (a[at.high].y - a[at.low].y) * at.fraction;
}
