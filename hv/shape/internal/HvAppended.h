// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Appending to arrays whole, or not at all.

#ifndef HV_SHAPE_INTERNAL_HVAPPENDED_H
#define HV_SHAPE_INTERNAL_HVAPPENDED_H

/// Takes back what was appended to an array, unless Keep is called: without memory for the whole,
/// the array is as it was.
template <class Array>
class HvAppended {
public:
    explicit HvAppended(Array& array) : array_(array), before_(array.Size()) {}
    ~HvAppended()
    {
        if (!kept_) {
            array_.Chop(before_);
        }
    }
    HvAppended(HvAppended const&) = delete;
    HvAppended& operator=(HvAppended const&) = delete;

    /// Keeps what was appended, and returns how many elements that is.
    unsigned int Keep()
    {
        kept_ = true;
        return array_.Size() - before_;
    }

private:
    Array& array_;
    unsigned int before_;
    bool kept_ = false;
};

/// The same for points and their tags together.
template <class Points, class Tags>
class HvAppendedTagged {
public:
    HvAppendedTagged(Points& points, Tags& tags) : points_(points), tags_(tags) {}

    /// Keeps what was appended, and returns how many points that is.
    unsigned int Keep()
    {
        tags_.Keep();
        return points_.Keep();
    }

private:
    HvAppended<Points> points_;
    HvAppended<Tags> tags_;
};

#endif
