// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Edits that change the structure of a path: closing and opening, replacing and removing segments.

#include <hv/shape/HvPath2f.h>

#include <hv/shape/HvShapeLock.h>
#include <hv/shape/internal/HvPathTags.h>

#include <algorithm>

// Closing and opening.

int HvPath2f::CloseSubpath(unsigned int i)
{
    HvShapeLock const lock(*this);
    HvPathTags const structure(tags);
    if (!structure.Has(i)) {
        return 0;
    }
    unsigned int const first = structure.FirstOfSubpath(i);
    unsigned int const last = structure.LastOfSubpath(i);
    bool const isLastSubpath = last + 1 == points.Size();
    HvPoint2<float> const start = points[first];
    if (start != points[last]) {
        unsigned char const role = HvPathRole_OfEnd(1, true);
        Splice(last + 1, 0, &start, &role, 1);
    } else if (structure.IsPlainEnd(last)) {
        SetRole(last, HvPathRole_OfEnd(structure.Role(last).degree, true));
    } else {
        return 0;
    }
    if (isLastSubpath) {
        lastSubpathOpen = 0;
    }
    return 1;
}

int HvPath2f::OpenSubpath(unsigned int i)
{
    HvShapeLock const lock(*this);
    HvPathTags const structure(tags);
    if (!structure.Has(i)) {
        return 0;
    }
    unsigned int const last = structure.LastOfSubpath(i);
    if (!structure.IsClosingEnd(last)) {
        return 0;
    }
    Unlock(last);
    SetRole(last, HvPathRole_OfEnd(structure.Role(last).degree, false));
    if (last + 1 == points.Size()) {
        lastSubpathOpen = 1;
    }
    return 1;
}

// Replacing.

int HvPath2f::ReplaceSegment(unsigned int index, HvPoint2<float> const* pts, unsigned int degree)
{
    HvShapeLock const lock(*this);
    HvPathTags const structure(tags);
    if (!structure.Has(index) || degree < 1 || degree > kHvPathMaxDegree) {
        return 0;
    }
    unsigned int const start = structure.StartOfSegment(index);
    unsigned int const end = structure.EndOfSegment(index);
    if (start >= end || pts[0] != points[start] || pts[degree] != points[end] ||
        (degree < 3 && (structure.IsLocked(start) || structure.IsLocked(end)))) {
        return 0;
    }
    HvPoint2<float> controls[kHvPathMaxDegree];  // the points may lie in this path
    std::copy_n(pts + 1, degree - 1, controls);
    unsigned char roles[kHvPathMaxDegree];
    HvPathRoles_OfControls(degree, roles);
    if (degree >= 3 && end - start >= 3) {
        roles[0] = HvPathTag_WithRole(tags[start + 1], roles[0]);
        roles[degree - 2] = HvPathTag_WithRole(tags[end - 1], roles[degree - 2]);
    }
    ReplaceInterior(start, end, controls, roles, degree - 1);
    SetEndOfSegment(start + degree, degree);
    return 1;
}

int HvPath2f::ReplaceSubpathSection(unsigned int first, unsigned int last)
{
    HvShapeLock const lock(*this);
    HvPathTags const structure(tags);
    if (!structure.IsNode(first) || !structure.IsNode(last) || first == last ||
        structure.IsLocked(first) || structure.IsLocked(last)) {
        return 0;
    }
    if (first > last) {
        return 1;  // nothing lies between them
    }
    if (!structure.AreInOneSubpath(first, last)) {
        return 0;
    }
    if (last - first >= 2) {
        Erase(first + 1, last);
        SetEndOfSegment(first + 1, 1);
    }
    return 1;
}

int HvPath2f::ReplaceSubpathSection(unsigned int first, unsigned int last, HvPoint2<float> const& p,
                                    HvPoint2<float> const& q)
{
    HvShapeLock const lock(*this);
    if (!IsSection(first, last)) {
        return 0;
    }
    HvPoint2<float> const controls[] = {p, q};
    unsigned char const roles[] = {HvPathRole_OfControl(3, 1), HvPathRole_OfControl(3, 2)};
    if (last - first == 2) {
        // The one point between becomes the first control; it moves before another comes.
        Reserve(HvArrayCapacity_GrownSize(points.Size(), 1));
        ReplacePoint(first + 1, controls[0], 1);
        tags[first + 1] = roles[0];
        Splice(first + 2, 0, controls + 1, roles + 1, 1);
    } else {
        ReplaceInterior(first, last, controls, roles, 2);
    }
    SetEndOfSegment(first + 3, 3);
    return 1;
}

int HvPath2f::ReplaceSubpathSection(unsigned int first, unsigned int last, HvPath2f const& source,
                                    unsigned int sourceFirst, unsigned int sourceLast)
{
    HvShapePairLock const lock(*this, source);
    if (!IsSection(first, last) || !source.IsSection(sourceFirst, sourceLast) ||
        points[first] != source.points[sourceFirst] || points[last] != source.points[sourceLast]) {
        return 0;
    }
    // A locked node needs a handle of a cubic or higher segment beside it.
    HvPathTags const structure(tags);
    HvPathTags const sourceStructure(source.tags);
    unsigned int const degree = sourceStructure.Role(sourceLast).degree;
    if ((structure.IsLocked(first) && sourceStructure.Role(sourceFirst + 1).degree < 3) ||
        (structure.IsLocked(last) && degree < 3)) {
        return 0;
    }
    unsigned int const count = sourceLast - sourceFirst - 1;
    HvPoint2<float> const* const newPoints = source.points.Data() + sourceFirst + 1;
    unsigned char const* const newTags = source.tags.Data() + sourceFirst + 1;
    if (this == &source) {
        ReplaceInterior(first, last, HvPoint2fArray(newPoints, count).Data(),
                        HvUByteArray(newTags, count).Data(), count);
    } else {
        ReplaceInterior(first, last, newPoints, newTags, count);
    }
    SetEndOfSegment(first + count + 1, degree);
    return 1;
}

bool HvPath2f::IsSection(unsigned int first, unsigned int last) const
{
    HvPathTags const structure(tags);
    return first < last && structure.IsNode(first) && structure.IsNode(last) &&
           structure.AreInOneSubpath(first, last);
}

// Puts other points between two nodes. Where both the old and the new are two or more, the outer
// ones move as handles do, with the ratio kept and under their old roles: so locked nodes stay in
// line.
void HvPath2f::ReplaceInterior(unsigned int first, unsigned int last,
                               HvPoint2<float> const* newPoints, unsigned char const* newTags,
                               unsigned int count)
{
    unsigned int const oldCount = last - first - 1;
    if (oldCount < 2 || count < 2) {
        Splice(first + 1, oldCount, newPoints, newTags, count);
        return;
    }
    Splice(first + 2, oldCount - 2, newPoints + 1, newTags + 1, count - 2);
    for (unsigned int const k : {0u, count - 1}) {
        ReplacePoint(first + 1 + k, newPoints[k], 1);
        tags[first + 1 + k] = newTags[k];
    }
}

// Removing.

int HvPath2f::RemoveSubpath(unsigned int index)
{
    HvShapeLock const lock(*this);
    HvPathTags const structure(tags);
    if (!structure.Has(index)) {
        return 0;
    }
    unsigned int const first = structure.FirstOfSubpath(index);
    Erase(first, structure.LastOfSubpath(index) + 1);
    if (first > 0 && first == points.Size()) {
        lastSubpathOpen = HvPathTags(tags).IsClosingEnd(first - 1) ? 0 : 1;
    }
    return 1;
}

int HvPath2f::RemoveSubpathSection(unsigned int first, unsigned int last)
{
    HvShapeLock const lock(*this);
    if (!IsSection(first, last)) {
        return 0;
    }
    Unlock(first);
    Unlock(last);
    OpenSubpath(first);
    HvPathTags const structure(tags);
    if (structure.IsLastOfSubpath(last)) {
        Erase(first + 1, last + 1);
        return 1;
    }
    // What lies behind becomes a subpath; what lies before stays one unless it is a lone point.
    SetRole(last, kHvPathStartRole);
    bool const isHeadLeft = first > 0 && !structure.IsStart(first);
    Erase(isHeadLeft ? first + 1 : first, last);
    return 1;
}
