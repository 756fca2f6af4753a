// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Sizes that the builders share.

#ifndef HV_PATHBUILD_INTERNAL_BUILDER_LIMITS_H
#define HV_PATHBUILD_INTERNAL_BUILDER_LIMITS_H

/// First capacity of the arrays of a builder: they grow by doubling from here, so that a stroke of
/// a second does not allocate often, and a click costs little.
constexpr unsigned int kHvBuilderFirstCapacity = 128;

/// Highest degree of a segment of a path.
constexpr unsigned int kHvBuilderMaxDegree = 8;

#endif
