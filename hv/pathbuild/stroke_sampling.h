// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Even samples of a line that comes in pieces.

#ifndef HV_PATHBUILD_STROKE_SAMPLING_H
#define HV_PATHBUILD_STROKE_SAMPLING_H

#include <hv/foundation/HvPoint2fArray.h>

/// Appends samples `spacing` apart along a piece of a polyline; pieces that follow each other are
/// sampled like the whole.
///
/// @param first,last  the piece is points[first] to points[last]; it has no length unless `first` <
///                    `last`.
/// @param spacing     a spacing that is not above 0 gives no samples but the end.
/// @param length      becomes the length of the piece.
/// @param remainder   length walked since the last sample, 0 at the start of a line, whose first
///                    point is no sample of this function. Becomes that at the end of the piece. At
///                    a spacing it or above, as when the spacing has shrunk, it counts modulo that.
/// @param out         is appended to; may not be `points`. More samples than it can hold are
///                    refused by std::bad_alloc; then nothing has changed.
/// @param addEnd      not 0: the last point of all `points` is a sample too, when the remainder
///                    is above a tenth of the spacing; the remainder is 0 then.
/// @return            number of samples appended.
///
/// A length that is not finite gives no samples and leaves the remainder. Cost: linear; allocates
/// nothing but what `out` needs.
HV_API double SampleSubpath(HvPoint2fArray const& points, unsigned int first, unsigned int last,
                            double spacing, double& length, double& remainder, HvPoint2fArray& out,
                            int addEnd);

#endif
