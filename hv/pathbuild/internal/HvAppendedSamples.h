// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Appending points, tags and values together, or not at all.

#ifndef HV_PATHBUILD_INTERNAL_HVAPPENDEDSAMPLES_H
#define HV_PATHBUILD_INTERNAL_HVAPPENDEDSAMPLES_H

#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvPoint2fArray.h>
#include <hv/foundation/HvPointTagArray.h>

/// Takes back what was appended to the three arrays, unless Keep is called: without memory for the
/// whole, all are as they were.
class HvAppendedSamples {
public:
    HvAppendedSamples(HvPoint2fArray& points, HvPointTagArray& tags, HvDoubleArray& values)
        : points_(points), tags_(tags), values_(values), pointsBefore_(points.Size()),
          tagsBefore_(tags.Size()), valuesBefore_(values.Size())
    {
    }
    ~HvAppendedSamples()
    {
        if (!kept_) {
            points_.Chop(pointsBefore_);
            tags_.Chop(tagsBefore_);
            values_.Chop(valuesBefore_);
        }
    }
    HvAppendedSamples(HvAppendedSamples const&) = delete;
    HvAppendedSamples& operator=(HvAppendedSamples const&) = delete;

    /// Keeps what was appended, and returns how many points that is.
    unsigned int Keep()
    {
        kept_ = true;
        return points_.Size() - pointsBefore_;
    }

private:
    HvPoint2fArray& points_;
    HvPointTagArray& tags_;
    HvDoubleArray& values_;
    unsigned int pointsBefore_;
    unsigned int tagsBefore_;
    unsigned int valuesBefore_;
    bool kept_ = false;
};

#endif
