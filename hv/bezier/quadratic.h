// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Quadratic equations.

#ifndef HV_BEZIER_QUADRATIC_H
#define HV_BEZIER_QUADRATIC_H

#include <hv/platform/HvExport.h>

/// Solves a x^2 + b x + c = 0 without cancellation.
///
/// @param first, second  the roots, first <= second; a double root twice. With a = 0 or c = 0 a
///                       root may come out infinite or NaN: the coefficients are not looked at.
/// @return               1; 0, with the outputs as they were, when the discriminant is negative.
///
/// Source: Press et al., Numerical Recipes, 2007, 5.6.
HV_API int SolveQuadraticEquation(double& first, double& second, double a, double b, double c);

#endif
