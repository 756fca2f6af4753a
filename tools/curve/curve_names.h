// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Words for what the numbers of a curve mean.

#ifndef HV_TOOLS_CURVE_CURVE_NAMES_H
#define HV_TOOLS_CURVE_CURVE_NAMES_H

#include <hv/fcurve/HvBaseFCurve.h>

#include <string>

std::string CurveName_OfKind(HvBaseFCurve::Kind kind);
std::string CurveName_OfExtrapolation(HvBaseFCurve::ExtrapolationMethod method);
std::string CurveName_OfSegmentKind(HvBaseFCurve::FSKind kind);
/// The constraints that are set on a key, separated by commas; "-" for none.
std::string CurveName_OfConstraints(HvBaseFCurve const& curve, unsigned int key);

#endif
