// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// From the keyframes of one property to the tracks of its components.

#ifndef HV_TOOLS_LOTTIE_KEYFRAMES_H
#define HV_TOOLS_LOTTIE_KEYFRAMES_H

#include <tools/lottie/LottieDocument.h>
#include <tools/lottie/json_access.h>

#include <string>

/// Whether `value` is a property with keyframes: an object whose "k" is a list of objects with
/// times.
bool Keyframes_Has(Json const& value);

/// Adds the tracks of an animated property to the document, and its motion path where its keys have
/// handles in space, or the note that it is no number.
/// Throws ToolError, naming the place, when the keyframes cannot be understood.
void Keyframes_Read(Json const& property, std::string const& path, std::string const& name,
                    LottieDocument& document);

#endif
