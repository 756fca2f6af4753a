// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The graphics context. Its life stands here once, and not in every translation unit that has one.

#include <hv/shape/HvGC.h>

HvGC::HvGC() : falloff(0.0, 1.0, 1.0, 0.0, HvBaseFCurve::CubicSegment, HvBaseFCurve::CubicSegment)
{
}

HvGC::HvGC(HvGC const& other) = default;

HvGC& HvGC::operator=(HvGC const& other) = default;

HvGC::~HvGC() = default;
