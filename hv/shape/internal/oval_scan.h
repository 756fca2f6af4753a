// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Which scan converter fills an oval.

#ifndef HV_SHAPE_INTERNAL_OVAL_SCAN_H
#define HV_SHAPE_INTERNAL_OVAL_SCAN_H

#include <hv/shape/HvParallelogram2f.h>

/// How an oval is scanned.
enum class HvOvalScan {
    Isothetic,  ///< the converter for axes along x and y
    General,    ///< the converter for any axes, row by row
    Transposed  ///< the same with x and y exchanged, for ovals that are thin across their rows
};

/// The scan for an oval in device coordinates.
///
/// An oval whose width runs along y is isothetic at any size, one whose width runs along x only
/// above 20 units both ways. Where one of the others is not above 1.5 units both ways and lies
/// rather than stands, the row scan would lose parts of it.
HvOvalScan HvOvalScan_For(HvParallelogram2f const& frame);

#endif
