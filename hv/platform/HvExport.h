// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// HV_API marks what the library exports; everything else is hidden. HV_API_TYPE marks value types
// that have no code of their own in the library: code made for a hidden type would be hidden with
// it, an array of points as well as a function that throws one.

#ifndef HV_PLATFORM_HVEXPORT_H
#define HV_PLATFORM_HVEXPORT_H

#if defined(_WIN32)
#define HV_API_TYPE
#if defined(HV_STATIC)
#define HV_API
#elif defined(HV_BUILDING)
#define HV_API __declspec(dllexport)
#else
#define HV_API __declspec(dllimport)
#endif
#else
/// Marks what the library exports.
#define HV_API __attribute__((visibility("default")))
/// Marks a class template or a type whose type information is exported, where that has a meaning.
#define HV_API_TYPE __attribute__((visibility("default")))
#endif

#endif
