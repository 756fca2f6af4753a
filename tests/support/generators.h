// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Generators for properties.

#ifndef TESTS_SUPPORT_GENERATORS_H
#define TESTS_SUPPORT_GENERATORS_H

#include <rapidcheck.h>

/// A number of [low, high), each as likely in every case. The plain inRange scales its range by the
/// size of the case, so that early cases of a choice between five operations only see the first.
template <class T>
T PickInRange(T low, T high)
{
    return *rc::gen::resize(rc::kNominalSize, rc::gen::inRange<T>(low, high));
}

#endif
