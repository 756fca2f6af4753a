// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What is compared: families of results over fixed inputs.

#ifndef TESTS_SAMENESS_FAMILIES_H
#define TESTS_SAMENESS_FAMILIES_H

#include "Digest.h"

#include <functional>
#include <string>
#include <vector>

/// A family of results. Its items are worked out independently, by any number of threads at once;
/// they share the objects that they read, as a host's rendering threads do.
struct Family {
    std::string name;
    unsigned int items;
    /// Adds the results of one item.
    std::function<void(unsigned int item, Digest& digest)> add;
};
using Families = std::vector<Family>;

void AddCurveFamilies(Families& families);
void AddRotationFamilies(Families& families);
void AddOutlineFamilies(Families& families);
void AddRasterFamilies(Families& families);
void AddMotionFamilies(Families& families);
void AddDrawnFamilies(Families& families);

#endif
