// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Cutting the runs of a flattened curve at a value.

#include <hv/fcurve/internal/clamp_runs.h>

#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPointTagArray.h>

namespace {

/// What is kept, run by run.
class KeptRuns {
public:
    explicit KeptRuns(unsigned int count) : points(count), tags(count) {}

    HvPoint2dArray points;
    HvPointTagArray tags;

    void Add(HvPoint2<double> const& p)
    {
        points.Add(p);
        tags.Add(open_ ? HvPointTagInner : HvPointTagStart);
        if (!open_) {
            start_ = points.Size() - 1;
            open_ = true;
        }
    }
    void EndRun()
    {
        if (!open_) {
            return;
        }
        open_ = false;
        if (points.Size() - start_ == 1) {
            points.Chop(start_);
            tags.Chop(start_);
        } else {
            tags[tags.Size() - 1] = HvPointTagEnd;
        }
    }

private:
    bool open_ = false;
    unsigned int start_ = 0;
};

}  // namespace

void HvClampRuns_Cut(HvPoint2dArray& points, HvPointTagArray& tags, unsigned int first,
                     double limit, HvClampSide side)
{
    auto const keeps = [limit, side](HvPoint2<double> const& p) {
        return side == HvClampSide::Above ? p.y >= limit : p.y <= limit;
    };
    unsigned int const count = points.Size();
    KeptRuns kept(count - first);
    for (unsigned int i = first; i < count; ++i) {
        HvPoint2<double> const p = points[i];
        bool const startsRun = i == first || tags[i] == HvPointTagStart;
        if (!startsRun) {
            HvPoint2<double> const before = points[i - 1];
            bool const enters = keeps(p) && !keeps(before) && p.y != limit;
            bool const leaves = !keeps(p) && keeps(before) && before.y != limit;
            if (enters || leaves) {
                double const t = (limit - before.y) / (p.y - before.y);
                kept.Add({before.x + (p.x - before.x) * t, limit});
            }
        }
        if (keeps(p)) {
            kept.Add(p);
        } else {
            kept.EndRun();
        }
        if (tags[i] == HvPointTagEnd) {
            kept.EndRun();
        }
    }
    kept.EndRun();
    if (kept.points.Size() == 0) {
        return;
    }
    // Room first, so that nothing fails once the old vertices are gone.
    points.Reserve(first + kept.points.Size());
    tags.Reserve(first + kept.tags.Size());
    points.Chop(first);
    tags.Chop(first);
    points.Add(kept.points);
    tags.Add(kept.tags);
}
