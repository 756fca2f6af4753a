// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Three parallel arrays and their contents as text.

#ifndef HV_TESTS_BEZIER_FLATTENED_RUNS_TEST_SUPPORT_H
#define HV_TESTS_BEZIER_FLATTENED_RUNS_TEST_SUPPORT_H

#include <hv/bezier/HvFlattenedRuns.h>

#include "cubic_test_support.h"

#include <sstream>
#include <string>

struct RunArrays {
    HvPoint2dArray points;
    HvPointTagArray tags;
    HvBoolArray flags;
    HvFlattenedRuns runs{points, tags, flags};

    std::string Points() const
    {
        std::ostringstream text;
        for (Point2 const& p : points) {
            text << '(' << p.x << ',' << p.y << ')';
        }
        return text.str();
    }
    std::string Tags() const { return Joined(tags); }
    std::string Flags() const { return Joined(flags); }

private:
    template <class Array>
    static std::string Joined(Array const& array)
    {
        std::ostringstream text;
        for (unsigned int i = 0; i < array.Size(); ++i) {
            text << (i == 0 ? "" : " ") << int(array[i]);
        }
        return text.str();
    }
};

#endif
