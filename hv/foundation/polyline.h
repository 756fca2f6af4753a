// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Polylines: point arrays read as a line from point to point.
//
// A table of chord lengths beside a polyline is cumulative: entry i is the length of the polyline
// up to point i, and the first entry is 0. None of the functions locks, and none allocates beyond
// the arrays that it appends to. Indices and ranges are not checked; ranges are inclusive.

#ifndef HV_FOUNDATION_POLYLINE_H
#define HV_FOUNDATION_POLYLINE_H

#include <hv/foundation/polyline_compare.h>
#include <hv/foundation/polyline_eval.h>
#include <hv/foundation/polyline_interpolate.h>
#include <hv/foundation/polyline_length.h>
#include <hv/foundation/polyline_sample.h>

#endif
