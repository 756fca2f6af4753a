// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Lengths along polylines.
//
// A table of chord lengths is cumulative: entry i is the length of the polyline up to point i. All
// functions append to `out`; an empty polyline appends nothing. When std::bad_alloc comes out,
// `out` is as it was.

#ifndef HV_FOUNDATION_POLYLINE_LENGTH_H
#define HV_FOUNDATION_POLYLINE_LENGTH_H

#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPoint2fArray.h>
#include <hv/foundation/HvPoint3dArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/platform/HvExport.h>

/// Appends 0, then the running length from point `first` to point `last`: last - first + 1 entries.
HV_API void HvPoint2fArray_ComputeChordLength(HvPoint2fArray const& a, unsigned int first,
                                              unsigned int last, HvDoubleArray& out);
/// The form for points in double.
HV_API void HvPoint2dArray_ComputeChordLength(HvPoint2dArray const& a, unsigned int first,
                                              unsigned int last, HvDoubleArray& out);

/// Appends one entry for each point, starting again from 0 after each point with an end tag.
HV_API void HvPoint2fArray_ComputeChordLength(HvPoint2fArray const& a, HvPointTagArray const& tags,
                                              HvDoubleArray& out);

/// Continues a table while its polyline grows: appends the running length from point `first`, which
/// out[first] tells, up to point `last`. With `first` 0 an empty table starts with 0. Calls that
/// follow each other hand over the `last` of the call before as `first`.
HV_API void HvPoint2fArray_ComputeIncrementalChordLength(HvPoint2fArray const& a,
                                                         unsigned int first, unsigned int last,
                                                         HvDoubleArray& out);

/// Appends the table of a whole polyline; returns its length.
HV_API double HvPoint2fArraySingleComponent_ComputeChordLength(HvPoint2fArray const& a,
                                                               HvDoubleArray& out);
/// The form for points of space.
HV_API double HvPoint3dArraySingleComponent_ComputeChordLength(HvPoint3dArray const& a,
                                                               HvDoubleArray& out);

/// Length of a whole polyline.
HV_API double HvPoint2fArraySingleComponent_ComputeLength(HvPoint2fArray const& a);

#endif
