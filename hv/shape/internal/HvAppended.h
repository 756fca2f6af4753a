// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Appending to points and tags together, or not at all.

#ifndef HV_SHAPE_INTERNAL_HVAPPENDED_H
#define HV_SHAPE_INTERNAL_HVAPPENDED_H

/// Takes back what was appended to an array of points and the array of their tags, unless Keep is
/// called: without memory for the whole, both are as they were.
template <class Points, class Tags>
class HvAppended {
public:
    HvAppended(Points& points, Tags& tags)
        : points_(points), tags_(tags), pointsBefore_(points.Size()), tagsBefore_(tags.Size())
    {
    }
    ~HvAppended()
    {
        if (!kept_) {
            points_.Chop(pointsBefore_);
            tags_.Chop(tagsBefore_);
        }
    }
    HvAppended(HvAppended const&) = delete;
    HvAppended& operator=(HvAppended const&) = delete;

    /// Keeps what was appended, and returns how many points that is.
    unsigned int Keep()
    {
        kept_ = true;
        return points_.Size() - pointsBefore_;
    }

private:
    Points& points_;
    Tags& tags_;
    unsigned int pointsBefore_;
    unsigned int tagsBefore_;
    bool kept_ = false;
};

#endif
