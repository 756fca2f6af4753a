// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Visible pieces of a curve, kept as runs in three parallel arrays.

#include <hv/bezier/HvFlattenedRuns.h>

namespace {

/// Room for `count` more elements, so that adding them cannot fail.
template <class Array>
void MakeRoom(Array& array, unsigned int count)
{
    array.Reserve(HvArrayCapacity_GrownSize(array.Size(), count));
}

}  // namespace

void HvFlattenedRuns::BeginEdge(HvPoint2<double> const& p, int flagOfBreak)
{
    if (!IsAt(p)) {
        Break(flagOfBreak);
        Append(p, HvPointTagStart, 1);
    }
}

void HvFlattenedRuns::BeginJump(HvPoint2<double> const& p)
{
    if (!IsAt(p)) {
        Break(0);
        Append(p, HvPointTagStart, 0);
    } else if (flags_.Size() != 0) {
        flags_[flags_.Size() - 1] = 0;
    }
}

void HvFlattenedRuns::EndEdge(HvPoint2<double> const& p)
{
    Append(p, HvPointTagInner, 1);
}

void HvFlattenedRuns::AdoptPoints(unsigned int count)
{
    MakeRoom(tags_, count);
    MakeRoom(flags_, count);
    for (unsigned int i = 0; i < count; ++i) {
        tags_.Add(HvPointTagInner);
        flags_.Add(1);
    }
}

void HvFlattenedRuns::EndRun()
{
    if (tags_.Size() != 0) {
        tags_[tags_.Size() - 1] = HvPointTagEnd;
    }
}

HvFlattenedRuns::Mark HvFlattenedRuns::GetMark() const
{
    return {points_.Size(), tags_.Size(), flags_.Size(),
            tags_.Size() != 0 ? tags_[tags_.Size() - 1] : HvPointTagStart,
            flags_.Size() != 0 ? flags_[flags_.Size() - 1] : 0};
}

void HvFlattenedRuns::CutBack(Mark const& mark)
{
    points_.Chop(mark.points);
    tags_.Chop(mark.tags);
    flags_.Chop(mark.flags);
    if (mark.tags != 0) {
        tags_[mark.tags - 1] = mark.lastTag;
    }
    if (mark.flags != 0) {
        flags_[mark.flags - 1] = mark.lastFlag;
    }
}

bool HvFlattenedRuns::IsAt(HvPoint2<double> const& p) const
{
    return points_.Size() != 0 && points_[points_.Size() - 1] == p;
}

void HvFlattenedRuns::Break(int flag)
{
    EndRun();
    if (flags_.Size() != 0) {
        flags_[flags_.Size() - 1] = flag;
    }
}

void HvFlattenedRuns::Append(HvPoint2<double> const& p, HvPointTag tag, int flag)
{
    HvPoint2<double> const copy = p;
    MakeRoom(points_, 1);
    MakeRoom(tags_, 1);
    MakeRoom(flags_, 1);
    points_.Add(copy);
    tags_.Add(tag);
    flags_.Add(flag);
}
