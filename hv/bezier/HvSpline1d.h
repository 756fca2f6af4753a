// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A smooth piecewise cubic function, fitted to samples.

#ifndef HV_BEZIER_HVSPLINE1D_H
#define HV_BEZIER_HVSPLINE1D_H

#include <hv/bezier/HvSpline.h>

/// A piecewise cubic function y(x) of numbers. All that it does is HvSpline's.
class HV_API HvSpline1d : public HvSpline<double> {};

#endif
