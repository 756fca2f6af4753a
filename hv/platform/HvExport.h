// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// HV_API marks what the library exports; everything else is hidden.

#ifndef HV_PLATFORM_HVEXPORT_H
#define HV_PLATFORM_HVEXPORT_H

#if defined(_WIN32)
#if defined(HV_STATIC)
#define HV_API
#elif defined(HV_BUILDING)
#define HV_API __declspec(dllexport)
#else
#define HV_API __declspec(dllimport)
#endif
#else
#define HV_API __attribute__((visibility("default")))
#endif

#endif
