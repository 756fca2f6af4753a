// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What the short keys of a Lottie document mean.

#ifndef HV_TOOLS_LOTTIE_PROPERTY_LABEL_H
#define HV_TOOLS_LOTTIE_PROPERTY_LABEL_H

#include <string>

/// The name of the property `key` of an object of the type `ownerType` ("tr", "tm", ..., or "" in a
/// layer's own transform) that stands under the key `ownerKey`; the key itself where there is no
/// name for it.
std::string PropertyLabel(std::string const& key, std::string const& ownerType,
                          std::string const& ownerKey);

#endif
