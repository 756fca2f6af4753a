// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The path with a property: life, and the edits that the keys of the curves follow.

#include <hv/pathbuild/HvPath2fProp1d.h>

#include <hv/pathbuild/internal/prop_curves.h>
#include <hv/shape/HvShapeLock.h>

#include <utility>

// Life.

HvPath2fProp1d::HvPath2fProp1d(unsigned int capacity)
    : HvPath2f(capacity), propCurves(new HvPropCurves)
{
}

HvPath2fProp1d::HvPath2fProp1d(HvPath2f const& source)
    : HvPath2f(source), propCurves(new HvPropCurves)
{
}

// The lock stands as an argument, so that it is held while path and curves are copied.
HvPath2fProp1d::HvPath2fProp1d(HvPath2fProp1d const& source)
    : HvPath2fProp1d(source, HvShapeLock(source))
{
}

HvPath2fProp1d::HvPath2fProp1d(HvPath2fProp1d const& source, HvShapeLock const&)
    : HvPath2f(source), propCurves(HvPropCurves_Copy(*source.propCurves).release())
{
}

HvPath2fProp1d& HvPath2fProp1d::operator=(HvPath2fProp1d const& source)
{
    HvShapePairLock const lock(*this, source);
    if (this != &source) {
        HvPropCurvesOwner curves = HvPropCurves_Copy(*source.propCurves);
        HvPath2f::operator=(source);
        HvPropCurvesOwner const former(std::exchange(propCurves, curves.release()));
    }
    return *this;
}

HvPath2fProp1d::~HvPath2fProp1d()
{
    HvPropCurvesDelete()(propCurves);
}

HvShape2f const* HvPath2fProp1d::QueryShapeKind(Kind kind) const
{
    HvShapeSection const section(*this);
    return kind == PathProp1d ? this : nullptr;
}

HvPath2fProp1d* HvPath2fProp1d::Clone() const
{
    return new HvPath2fProp1d(*this);
}

// Exchanges everything with a path that nobody else knows. The lock is held.
void HvPath2fProp1d::TakeOver(HvPath2fProp1d& other) noexcept
{
    points.Swap(other.points);
    tags.Swap(other.tags);
    std::swap(lastSubpathOpen, other.lastSubpathOpen);
    std::swap(propCurves, other.propCurves);
}

// Editing. What the shift of the keys depends on is read before the points move, and a new entry
// is allocated before, so that points and keys move together or not at all. Distances are unsigned:
// those below 0 wrap, and so does the sum.

int HvPath2fProp1d::ReplaceSubpathSection(unsigned int first, unsigned int last,
                                          HvPath2f const& source, unsigned int sourceFirst,
                                          unsigned int sourceLast)
{
    HvShapeLock const lock(*this);
    if (HvPath2f::ReplaceSubpathSection(first, last, source, sourceFirst, sourceLast) == 0) {
        return 0;
    }
    HvPropCurves_Shift(*propCurves, last, (sourceLast - sourceFirst) - (last - first));
    return 1;
}

int HvPath2fProp1d::RemoveSubpath(unsigned int index)
{
    HvShapeLock const lock(*this);
    unsigned int start = 0;
    unsigned int end = 0;
    GetSubpathIndices(index, start, end);
    if (HvPath2f::RemoveSubpath(index) == 0) {
        return 0;
    }
    RemovePropCurveInsideCriticalSection(start);
    HvPropCurves_Shift(*propCurves, start, 0u - (end - start + 1));
    return 1;
}

// The points that go, and the subpaths that stay, `first` and `last` being f and l:
//
//     S ... f ... l = E        f goes on as the end of what is left: points f + 1 to l go
//     S = f ... l ... E        l is the start of what is left, and S after it: f to l - 1 go
//     S ... f ... l ... E      both, as two subpaths: f + 1 to l - 1 go
int HvPath2fProp1d::RemoveSubpathSection(unsigned int first, unsigned int last)
{
    HvShapeLock const lock(*this);
    if (!IsSection(first, last)) {
        return 0;
    }
    unsigned int start = 0;
    unsigned int end = 0;
    GetSubpathIndices(first, start, end);
    bool const isSplit = first != start && last != end;
    HvPropCurveData* const own = HvPropCurves_Find(*propCurves, start);
    HvPropCurveData* ofTail = nullptr;
    if (isSplit && own != nullptr) {
        auto copy = std::make_unique<HvPropCurveData>(*own);
        propCurves->Insert(copy.get(), own, HvPropCurves::After);
        ofTail = copy.release();
    }
    // A section is never refused, and points that only go need no memory.
    HvPath2f::RemoveSubpathSection(first, last);
    unsigned int const removed = isSplit ? last - first - 1 : last - first;
    HvPropCurves_Shift(*propCurves, last == end ? last : last - 1, 0u - removed);
    if (ofTail != nullptr) {
        ofTail->subpathStart = first + 1;
    }
    return 1;
}
