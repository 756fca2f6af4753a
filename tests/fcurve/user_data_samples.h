// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Identifiers and blobs for the tests of user data.

#ifndef HV_TESTS_FCURVE_USER_DATA_SAMPLES_H
#define HV_TESTS_FCURVE_USER_DATA_SAMPLES_H

#include <hv/fcurve/CFCUserDataSet.h>

#include <cstring>
#include <string>

/// An identifier of which the first number is `n`.
inline _GUID Guid(unsigned int n)
{
    return {n, 0x0506, 0x0708, {9, 10, 11, 12, 13, 14, 15, 16}};
}

inline unsigned char const* BytesOf(char const* text)
{
    return reinterpret_cast<unsigned char const*>(text);
}

inline unsigned int SizeOf(char const* text)
{
    return static_cast<unsigned int>(std::strlen(text));
}

/// A set of one blob under Guid(n).
inline CFCUserDataSet SetOf(unsigned int n, char const* text)
{
    CFCUserDataSet set;
    set.InsertUserData(Guid(n), BytesOf(text), SizeOf(text));
    return set;
}

/// The blob of Guid(n) as text, or "none".
inline std::string TextIn(CFCUserDataSet const* set, unsigned int n)
{
    CFCUserDataValue const* const value = set == nullptr ? nullptr : set->FindUserData(Guid(n));
    if (value == nullptr) {
        return "none";
    }
    return std::string(value->Bytes(), value->Bytes() + value->Size());
}

#endif
