// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Outlines of different numbers of subpaths, as tours over all of them.

#ifndef HV_MORPH_INTERNAL_MORPH_TOUR_H
#define HV_MORPH_INTERNAL_MORPH_TOUR_H

class HvMorphOutput;
struct HvMorpherImpl;

/// Appends what lies between the tours over two outlines at `t`, stretch by stretch.
void HvMorphTour_Append(HvMorpherImpl const& morph, double t, HvMorphOutput& output);

#endif
