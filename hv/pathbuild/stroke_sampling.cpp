// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Even samples of a line that comes in pieces.

#include <hv/pathbuild/stroke_sampling.h>

#include <hv/foundation/array_capacity.h>
#include <hv/foundation/saturate.h>

#include <algorithm>
#include <cmath>
#include <new>

namespace {

/// The end of a line is a sample only when it lies more than this share of the spacing behind the
/// last one; below, the two would be drawn as one.
constexpr double kLeastEndShare = 0.1;

double LengthOf(HvPoint2fArray const& points, unsigned int first, unsigned int last)
{
    double length = 0.0;
    for (unsigned int i = first; i < last; ++i) {
        length += HvPoint2_LengthAB(points[i], points[i + 1]);
    }
    return length;
}

/// How many whole spacings there are in a length. Throws std::bad_alloc for more than an array
/// holds beside `present` elements.
unsigned int NumSpacings(double length, double spacing, unsigned int present)
{
    double const count = std::floor(length / spacing);
    if (!(count < double(kHvArrayMaxCapacity - present))) {
        throw std::bad_alloc();
    }
    return HvSaturate_To<unsigned int>(count);
}

/// Appends `count` samples, the first at length `target`; `length` is that of the whole piece.
void AppendSamples(HvPoint2fArray const& points, unsigned int first, unsigned int count,
                   double target, double spacing, double length, HvPoint2fArray& out)
{
    unsigned int i = first;
    double from = 0.0;
    double to = 0.0;
    for (; count != 0; --count, target += spacing) {
        // Sums of spacings may round past the end, which is then the last sample.
        double const at = std::min(target, length);
        while (to < at) {
            from = to;
            to += HvPoint2_LengthAB(points[i], points[i + 1]);
            ++i;
        }
        HvPoint2<float> const before = points[i - 1];
        HvPoint2<float> const step = points[i] - before;
        double const share = (at - from) / (to - from);
        out.Add(HvPoint2<float>(static_cast<float>(double(before.x) + double(step.x) * share),
                                static_cast<float>(double(before.y) + double(step.y) * share)));
    }
}

}  // namespace

double SampleSubpath(HvPoint2fArray const& points, unsigned int first, unsigned int last,
                     double spacing, double& length, double& remainder, HvPoint2fArray& out,
                     int addEnd)
{
    bool const hasSpacing = spacing > 0.0;
    double const total = LengthOf(points, first, last);
    double walked = remainder;
    unsigned int count = 0;
    if (total > 0.0 && std::isfinite(total)) {
        if (hasSpacing && walked >= spacing) {
            walked = std::fmod(walked, spacing);
        }
        double const whole = walked + total;
        if (hasSpacing && whole >= spacing) {
            count = NumSpacings(whole, spacing, out.Size());
            out.Reserve(out.Size() + count + 1);
            AppendSamples(points, first, count, spacing - walked, spacing, total, out);
            walked = std::max(0.0, whole - spacing * count);
        } else {
            walked = whole;
        }
    }
    if (addEnd != 0 && points.Size() != 0 &&
        walked > (hasSpacing ? spacing * kLeastEndShare : 0.0)) {
        out.Add(points[points.Size() - 1]);
        walked = 0.0;
        ++count;
    }
    length = total;
    remainder = walked;
    return count;
}
