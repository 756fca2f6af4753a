// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Points at chosen lengths along a polyline.

#include <hv/foundation/polyline_sample.h>

#include <hv/foundation/saturate.h>

#include <cmath>
#include <new>

namespace {

/// The point at `share` of the way from `a` to `b`: a difference in float, the rest in double.
HvPoint2<float> Between(HvPoint2<float> const& a, HvPoint2<float> const& b, double share)
{
    HvPoint2<float> const d = b - a;
    return HvPoint2<float>(static_cast<float>(double(a.x) + double(d.x) * share),
                           static_cast<float>(double(a.y) + double(d.y) * share));
}

/// Into how many steps of about `spacing` a length is divided: rounded, half down; 0 or 1 when
/// there is nothing to divide. Throws std::bad_alloc for more than an array holds.
unsigned int NumSteps(double length, double spacing)
{
    if (!(length > spacing) || !std::isfinite(length)) {
        return 0;
    }
    double steps = std::floor(length / spacing);
    if (std::fmod(length, spacing) > spacing * 0.5) {
        steps += 1.0;
    }
    if (!(steps <= kHvArrayMaxCapacity)) {
        throw std::bad_alloc();
    }
    return HvSaturate_To<unsigned int>(steps);
}

}  // namespace

bool HvPolylineCursor::MoveTo(double target)
{
    while (at_ <= last_ && lengths_[at_] < target) {
        ++at_;
    }
    return at_ <= last_;
}

HvPoint2<float> HvPolylineCursor::PointAt(double target) const
{
    double const from = lengths_[at_ - 1];
    double const span = lengths_[at_] - from;
    return span == 0.0 ? line_[at_ - 1]
                       : Between(line_[at_ - 1], line_[at_], (target - from) / span);
}

unsigned int HvPoint2fArray_AppendEvenSamples(HvPoint2fArray const& line,
                                              HvDoubleArray const& lengths, unsigned int first,
                                              unsigned int last, double spacing, bool isClosed,
                                              HvPoint2fArray& pts, HvPointTagArray& tags)
{
    unsigned int const steps = NumSteps(lengths[last], spacing);
    pts.Add(line[first]);
    tags.Add(HvPointTagStart);
    double const step = lengths[last] / steps;
    HvPolylineCursor cursor(line, lengths, first, last);
    unsigned int added = 0;
    double target = step;
    for (; added + 1 < steps && cursor.MoveTo(target); ++added, target += step) {
        pts.Add(cursor.PointAt(target));
        tags.Add(HvPointTagInner);
    }
    HvPoint2fArray_FinishSamples(line, last, added, isClosed, pts, tags);
    return added == 0 ? 2 : added + 1;
}

bool HvPoint2fArray_FinishSamples(HvPoint2fArray const& line, unsigned int last, unsigned int added,
                                  bool isClosed, HvPoint2fArray& pts, HvPointTagArray& tags)
{
    if (added == 0) {
        pts.Add(line[last]);
        tags.Add(HvPointTagEnd);
        return false;
    }
    bool const isRepeat = isClosed && added > 1 && pts[pts.Size() - 1] == line[last];
    if (isRepeat) {
        pts.Chop(pts.Size() - 1);
        tags.Chop(tags.Size() - 1);
    }
    tags[tags.Size() - 1] = HvPointTagEnd;
    return isRepeat;
}
