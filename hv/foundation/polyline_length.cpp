// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Lengths along polylines.

#include <hv/foundation/polyline_length.h>

#include <hv/foundation/array_capacity.h>

#include <cassert>

namespace {

template <class T>
double Distance(HvPoint2<T> const& a, HvPoint2<T> const& b)
{
    return HvPoint2_LengthAB(a, b);
}

double Distance(HvPoint3<double> const& a, HvPoint3<double> const& b)
{
    return HvPoint3_LengthAB(a, b);
}

void ReserveMore(HvDoubleArray& out, unsigned int count)
{
    out.Reserve(HvArrayCapacity_GrownSize(out.Size(), count));
}

/// Appends `length` plus the running length from `first`, without an entry for `first` itself;
/// returns the length at `last`.
template <class Array>
double AppendRunningLength(Array const& a, unsigned int first, unsigned int last, double length,
                           HvDoubleArray& out)
{
    for (unsigned int i = first; i < last; ++i) {
        length += Distance(a[i], a[i + 1]);
        out.Add(length);
    }
    return length;
}

template <class Array>
double AppendChordLength(Array const& a, unsigned int first, unsigned int last, HvDoubleArray& out)
{
    if (a.Size() == 0) {
        return 0.0;
    }
    assert(first <= last && last < a.Size());
    ReserveMore(out, last - first + 1);
    out.Add(0.0);
    return AppendRunningLength(a, first, last, 0.0, out);
}

}  // namespace

void HvPoint2fArray_ComputeChordLength(HvPoint2fArray const& a, unsigned int first,
                                       unsigned int last, HvDoubleArray& out)
{
    AppendChordLength(a, first, last, out);
}

void HvPoint2dArray_ComputeChordLength(HvPoint2dArray const& a, unsigned int first,
                                       unsigned int last, HvDoubleArray& out)
{
    AppendChordLength(a, first, last, out);
}

void HvPoint2fArray_ComputeChordLength(HvPoint2fArray const& a, HvPointTagArray const& tags,
                                       HvDoubleArray& out)
{
    ReserveMore(out, a.Size());
    double length = 0.0;
    bool isStart = true;
    for (unsigned int i = 0; i < a.Size(); ++i) {
        length = isStart ? 0.0 : length + Distance(a[i - 1], a[i]);
        out.Add(length);
        isStart = tags[i] == HvPointTagEnd;
    }
}

void HvPoint2fArray_ComputeIncrementalChordLength(HvPoint2fArray const& a, unsigned int first,
                                                  unsigned int last, HvDoubleArray& out)
{
    if (first == 0 && out.Size() == 0) {
        AppendChordLength(a, first, last, out);
    } else if (a.Size() != 0) {
        assert(first <= last && last < a.Size() && first < out.Size());
        ReserveMore(out, last - first);
        AppendRunningLength(a, first, last, out[first], out);
    }
}

double HvPoint2fArraySingleComponent_ComputeChordLength(HvPoint2fArray const& a, HvDoubleArray& out)
{
    return AppendChordLength(a, 0, a.Size() - 1, out);
}

double HvPoint3dArraySingleComponent_ComputeChordLength(HvPoint3dArray const& a, HvDoubleArray& out)
{
    return AppendChordLength(a, 0, a.Size() - 1, out);
}

double HvPoint2fArraySingleComponent_ComputeLength(HvPoint2fArray const& a)
{
    double length = 0.0;
    for (unsigned int i = 1; i < a.Size(); ++i) {
        length += Distance(a[i - 1], a[i]);
    }
    return length;
}
