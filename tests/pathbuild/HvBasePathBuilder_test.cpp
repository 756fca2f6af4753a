// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What all path builders promise.

#include <hv/pathbuild/HvBasePathBuilder.h>
