// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The path: life, building, and the storage that all edits share.

#include <hv/shape/HvPath2f.h>

#include <hv/foundation/raw_elements.h>
#include <hv/shape/HvShapeLock.h>
#include <hv/shape/internal/HvPathTags.h>

#include <algorithm>

namespace {

// Puts `inserted` elements in place of the `removed` ones from `at` on. Allocates only where the
// array grows beyond its capacity, and never shrinks it. The elements lie outside the array.
template <class T>
void SpliceElements(HvTypedArray<T>& array, unsigned int at, unsigned int removed,
                    T const* elements, unsigned int inserted)
{
    unsigned int const replaced = std::min(removed, inserted);
    HvElements_Copy(array.Data() + at, elements, replaced);
    if (inserted > replaced) {
        array.InsertBefore(at + replaced, elements + replaced, inserted - replaced);
    } else {
        unsigned int const tail = at + removed;
        HvElements_Move(array.Data() + at + replaced, array.Data() + tail, array.Size() - tail);
        array.Chop(array.Size() - (removed - replaced));
    }
}

}  // namespace

// Life.

HvPath2f::HvPath2f(unsigned int capacity) : points(capacity), tags(capacity), lastSubpathOpen(0) {}

// The lock stands as an argument, so that it is held while the members are made.
HvPath2f::HvPath2f(HvPath2f const& source) : HvPath2f(source, HvShapeLock(source)) {}

HvPath2f::HvPath2f(HvPath2f const& source, HvShapeLock const&)
    : HvShape2f(source), points(source.points.Data(), source.points.Size()),
      tags(source.tags.Data(), source.tags.Size()), lastSubpathOpen(source.lastSubpathOpen)
{
}

HvPath2f::HvPath2f(HvPath2f const& source, unsigned int first, unsigned int last)
    : HvShape2f(source), lastSubpathOpen(0)
{
    HvShapeLock const lock(source);
    if (first > last || last >= source.points.Size()) {
        return;
    }
    Splice(0, 0, source.points.Data() + first, source.tags.Data() + first, last - first + 1);
    SetRole(0, kHvPathStartRole);
    HvPathTags const structure(tags);
    unsigned int const end = last - first;
    unsigned int const start = structure.FirstOfSubpath(end);
    bool const isClosed = structure.IsClosingEnd(end) && points[start] == points[end];
    if (!isClosed) {
        Unlock(end);
        OpenSubpath(end);
    }
    lastSubpathOpen = isClosed ? 0 : 1;
}

HvPath2f& HvPath2f::operator=(HvPath2f const& source)
{
    HvShapePairLock const lock(*this, source);
    if (this != &source) {
        Splice(0, points.Size(), source.points.Data(), source.tags.Data(), source.points.Size());
        lastSubpathOpen = source.lastSubpathOpen;
    }
    return *this;
}

HvPath2f::~HvPath2f() = default;

HvShape2f const* HvPath2f::QueryShapeKind(Kind kind) const
{
    HvShapeSection const section(*this);
    return kind == Path ? this : nullptr;
}

HvPath2f* HvPath2f::Clone() const
{
    return new HvPath2f(*this);
}

// Building.

void HvPath2f::Moveto(HvPoint2<float> const& p)
{
    HvShapeLock const lock(*this);
    HvPoint2<float> const start = p;
    unsigned char const tag = kHvPathStartRole;
    Splice(points.Size(), 0, &start, &tag, 1);
    lastSubpathOpen = 1;
}

void HvPath2f::Lineto(HvPoint2<float> const& p)
{
    HvShapeLock const lock(*this);
    AppendSegment(&p, 1);
}

void HvPath2f::Curveto(HvPoint2<float> const& c, HvPoint2<float> const& p)
{
    HvShapeLock const lock(*this);
    HvPoint2<float> const pts[] = {c, p};
    AppendSegment(pts, 2);
}

void HvPath2f::Curveto(HvPoint2<float> const& c1, HvPoint2<float> const& c2,
                       HvPoint2<float> const& p)
{
    HvShapeLock const lock(*this);
    HvPoint2<float> const pts[] = {c1, c2, p};
    AppendSegment(pts, 3);
}

void HvPath2f::AltCurveto(HvPoint2<float> const* pts, unsigned int degree)
{
    HvShapeLock const lock(*this);
    if (degree >= 1 && degree <= kHvPathMaxDegree) {
        AppendSegment(pts, degree);
    }
}

void HvPath2f::AltAltCurveto(HvPoint2fArray const& pts, unsigned int first, unsigned int degree)
{
    if (first <= pts.Size() && degree <= pts.Size() - first) {
        AltCurveto(pts.Data() + first, degree);
    }
}

int HvPath2f::Closeto()
{
    HvShapeLock const lock(*this);
    if (points.Size() == 0) {
        return 0;
    }
    HvPathTags const structure(tags);
    unsigned int const last = points.Size() - 1;
    if (points[structure.FirstOfSubpath(last)] != points[last]) {
        return 0;
    }
    if (structure.IsPlainEnd(last)) {
        SetRole(last, HvPathRole_OfEnd(structure.Degree(last), true));
    }
    lastSubpathOpen = 0;
    return 1;
}

void HvPath2f::AppendPolylines(HvPoint2<float> const* pts, unsigned int const* sizes,
                               unsigned int count)
{
    unsigned int total = 0;
    for (unsigned int i = 0; i < count; ++i) {
        total = HvArrayCapacity_GrownSize(total, sizes[i]);
    }
    HvUByteArray roles(HvPathRole_OfEnd(1, false), total);
    bool isClosed = false;
    unsigned int first = 0;
    for (unsigned int i = 0; i < count; ++i) {
        if (sizes[i] != 0) {
            unsigned int const last = first + sizes[i] - 1;
            roles[first] = kHvPathStartRole;
            isClosed = first != last && pts[first] == pts[last];
            if (isClosed) {
                roles[last] = HvPathRole_OfEnd(1, true);
            }
            first = last + 1;
        }
    }
    if (total != 0) {
        HvShapeLock const lock(*this);
        Splice(points.Size(), 0, pts, roles.Data(), total);
        lastSubpathOpen = isClosed ? 0 : 1;
    }
}

// What all edits share. The lock is held.

// The points may lie in this path's own storage, which moves when it grows.
void HvPath2f::AppendSegment(HvPoint2<float> const* pts, unsigned int degree)
{
    HvPoint2<float> newPoints[kHvPathMaxDegree];
    std::copy_n(pts, degree, newPoints);
    Reserve(HvArrayCapacity_GrownSize(points.Size(), degree));
    for (unsigned int place = 1; place < degree; ++place) {
        points.Add(newPoints[place - 1]);
        tags.Add(HvPathRole_OfControl(degree, place));
    }
    points.Add(newPoints[degree - 1]);
    tags.Add(HvPathRole_OfEnd(degree, false));
}

// Makes room, so that as many points can come without an allocation.
void HvPath2f::Reserve(unsigned int numPoints)
{
    if (numPoints > points.Capacity() || numPoints > tags.Capacity()) {
        points.Reserve(numPoints);
        tags.Reserve(numPoints);
    }
}

// Puts `inserted` points in place of the `removed` ones from `at` on: the one way in which points
// come and go. They lie outside this path. Cost: one move of the tail.
void HvPath2f::Splice(unsigned int at, unsigned int removed, HvPoint2<float> const* newPoints,
                      unsigned char const* newTags, unsigned int inserted)
{
    Reserve(HvArrayCapacity_GrownSize(points.Size() - removed, inserted));
    // Nothing fails from here on.
    SpliceElements(points, at, removed, newPoints, inserted);
    SpliceElements(tags, at, removed, newTags, inserted);
}

// Removes the points from `first` up to but not including `end`.
void HvPath2f::Erase(unsigned int first, unsigned int end)
{
    Splice(first, end - first, nullptr, nullptr, 0);
}

// Changes the role alone.
void HvPath2f::SetRole(unsigned int i, unsigned int role)
{
    tags[i] = HvPathTag_WithRole(tags[i], role);
}

// Gives the end of a rebuilt segment its role: it closes the subpath if it did so before.
void HvPath2f::SetEndOfSegment(unsigned int end, unsigned int degree)
{
    HvPathTags const structure(tags);
    bool const isClosing = structure.IsLastOfSubpath(end) && structure.IsClosingEnd(end);
    SetRole(end, HvPathRole_OfEnd(degree, isClosing));
}

// Takes the lock off a node; where a subpath closes, off both its ends.
void HvPath2f::Unlock(unsigned int node)
{
    HvPathTags const structure(tags);
    auto const unlock = [this](unsigned int i) {
        tags[i] = static_cast<unsigned char>(tags[i] & ~kHvPathLockBit);
    };
    unlock(node);
    if (structure.IsEndpoint(node)) {
        unlock(structure.FirstOfSubpath(node));
        unlock(structure.LastOfSubpath(node));
    }
}
