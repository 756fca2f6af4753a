// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Thread-local variables at the price of one addition, also in a shared library.

#ifndef HV_PLATFORM_INTERNAL_FAST_THREAD_LOCAL_H
#define HV_PLATFORM_INTERNAL_FAST_THREAD_LOCAL_H

#include <cstddef>

// In a shared library a thread-local variable is found by a call into the loader, unless it lies in
// the block that every thread is born with. glibc keeps room there for libraries loaded later, so
// the few words that are declared with this may lie there; other systems take the usual way.
#if defined(__GLIBC__) && (defined(__GNUC__) || defined(__clang__))
#define HV_FAST_THREAD_LOCAL __attribute__((tls_model("initial-exec"))) thread_local
#else
#define HV_FAST_THREAD_LOCAL thread_local
#endif

#endif
