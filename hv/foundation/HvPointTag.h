// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Tags of flattened sequences.

#ifndef HV_FOUNDATION_HVPOINTTAG_H
#define HV_FOUNDATION_HVPOINTTAG_H

#include <hv/platform/HvExport.h>

/// The role of a point in a flattened sequence. A curve or outline with a jump gives two points at
/// one parameter: the end of a run and the start of the next.
enum HV_API_TYPE HvPointTag : int {
    HvPointTagStart = 0,  ///< starts a run
    HvPointTagInner = 1,  ///< continues the run from the point before
    HvPointTagEnd = 2     ///< ends a run: no line goes from it to the next point
};

#endif
