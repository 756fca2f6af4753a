// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Coverage over distance, for the radial fills.

#ifndef HV_SHAPE_INTERNAL_HVRADIALPROFILE_H
#define HV_SHAPE_INTERNAL_HVRADIALPROFILE_H

#include <hv/foundation/HvPoint2dArray.h>

class HvStdFCurve;

/// The falloff of a graphics context, flattened once for all pixels of a radial fill.
class HvRadialProfile {
public:
    explicit HvRadialProfile(HvStdFCurve const& falloff);

    /// The parameter of the falloff's last key, which is the distance at which it ends; 1 for a
    /// falloff without keys.
    double Length() const { return length_; }
    /// The pixel at a distance: the falloff's value there in 0 to 1, scaled to 255 and rounded half
    /// up. A falloff without keys has its value when no keys everywhere; NaN gives 0.
    unsigned char CoverageAt(double distance) const;

private:
    HvPoint2dArray pairs_;  // (distance, value), at least one
    double length_ = 1.0;
};

#endif
