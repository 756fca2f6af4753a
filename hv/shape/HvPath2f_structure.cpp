// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What a path consists of, read from its tags.

#include <hv/shape/HvPath2f.h>

#include <hv/shape/HvShapeLock.h>
#include <hv/shape/internal/HvPathTags.h>

#include <algorithm>

namespace {

// The number of points for which `test(structure, i)` holds.
template <class Test>
unsigned int CountPoints(HvPathTags const& structure, Test test)
{
    unsigned int count = 0;
    for (unsigned int i = 0; i < structure.Count(); ++i) {
        count += test(structure, i) ? 1 : 0;
    }
    return count;
}

// The answer about the structure at point `i`, 0 when there is no such point.
template <class Question>
unsigned int AskAt(HvUByteArray const& tags, unsigned int i, Question question)
{
    HvPathTags const structure(tags);
    return structure.Has(i) ? static_cast<unsigned int>((structure.*question)(i)) : 0;
}

}  // namespace

// Counts.

unsigned int HvPath2f::MaxDegreeForThisImplementation() const
{
    return kHvPathMaxDegree;
}

unsigned int HvPath2f::NumPoints() const
{
    HvShapeLock const lock(*this);
    return points.Size();
}

unsigned int HvPath2f::NumSubpaths() const
{
    HvShapeLock const lock(*this);
    return CountPoints(HvPathTags(tags), [](HvPathTags const& structure, unsigned int i) {
        return structure.IsLastOfSubpath(i);
    });
}

unsigned int HvPath2f::NumSegments() const
{
    HvShapeLock const lock(*this);
    HvPathTags const structure(tags);
    unsigned int count = 0;
    for (unsigned int i = 0; i < structure.Count(); i = structure.NextSegment(i)) {
        ++count;
    }
    return count;
}

unsigned int HvPath2f::NumNodes() const
{
    HvShapeLock const lock(*this);
    return CountPoints(HvPathTags(tags), [](HvPathTags const& structure, unsigned int i) {
        return structure.Role(i).isNode;
    });
}

unsigned int HvPath2f::NumNodesExceptLastNodeOfClosedSubpaths() const
{
    HvShapeLock const lock(*this);
    return CountPoints(HvPathTags(tags), [](HvPathTags const& structure, unsigned int i) {
        return structure.Role(i).isNode && !structure.IsClosingEnd(i);
    });
}

unsigned int HvPath2f::LargestDegree() const
{
    HvShapeLock const lock(*this);
    HvPathTags const structure(tags);
    unsigned char largest = 0;
    for (unsigned int i = 0; i < structure.Count(); ++i) {
        largest = std::max(largest, structure.Role(i).degree);
    }
    return largest;
}

int HvPath2f::IsPolyline() const
{
    HvShapeLock const lock(*this);
    return points.Size() != 0 && LargestDegree() <= 1 ? 1 : 0;
}

// Segments.

unsigned int HvPath2f::Degree(unsigned int i) const
{
    return AskAt(tags, i, &HvPathTags::Degree);
}

unsigned int HvPath2f::GetDegree(unsigned int i) const
{
    HvShapeLock const lock(*this);
    return Degree(i);
}

unsigned int HvPath2f::StartOfSegment(unsigned int i) const
{
    HvShapeLock const lock(*this);
    return AskAt(tags, i, &HvPathTags::StartOfSegment);
}

unsigned int HvPath2f::EndOfSegment(unsigned int i) const
{
    HvShapeLock const lock(*this);
    return AskAt(tags, i, &HvPathTags::EndOfSegment);
}

void HvPath2f::GetSegmentIndices(unsigned int i, unsigned int& start, unsigned int& end) const
{
    HvShapeLock const lock(*this);
    start = StartOfSegment(i);
    end = EndOfSegment(i);
}

// Subpaths.

unsigned int HvPath2f::FirstOfSubpath(unsigned int i) const
{
    return HvPathTags(tags).FirstOfSubpath(i);
}

void HvPath2f::GetSubpathIndices(unsigned int i, unsigned int& first, unsigned int& last) const
{
    HvShapeLock const lock(*this);
    first = AskAt(tags, i, &HvPathTags::FirstOfSubpath);
    last = AskAt(tags, i, &HvPathTags::LastOfSubpath);
}

int HvPath2f::IsStartOfSubpath(unsigned int i) const
{
    HvShapeLock const lock(*this);
    HvPathTags const structure(tags);
    return structure.Has(i) && structure.IsStart(i) ? 1 : 0;
}

int HvPath2f::IsEndOfSubpath(unsigned int i, int& closed) const
{
    HvShapeLock const lock(*this);
    HvPathTags const structure(tags);
    if (!structure.IsLastOfSubpath(i)) {
        return 0;
    }
    closed = structure.IsClosingEnd(i) ? 1 : 0;
    return 1;
}

int HvPath2f::IsSubpathClosed(unsigned int i) const
{
    HvShapeLock const lock(*this);
    HvPathTags const structure(tags);
    return structure.Has(i) && structure.IsClosingEnd(structure.LastOfSubpath(i)) ? 1 : 0;
}

int HvPath2f::IsSiblingOf(HvPath2f const& other) const
{
    HvShapePairLock const lock(*this, other);
    return std::equal(
               tags.begin(), tags.end(), other.tags.begin(), other.tags.end(),
               [](unsigned char a, unsigned char b) { return ((a ^ b) & kHvPathRoleMask) == 0; })
               ? 1
               : 0;
}

// Points.

HvPoint2<float> HvPath2f::GetCurrentPoint() const
{
    HvShapeLock const lock(*this);
    return points[points.Size() - 1];
}

int HvPath2f::GetPoint(unsigned int i, HvPoint2<float>& p) const
{
    HvShapeLock const lock(*this);
    if (i >= points.Size()) {
        return 0;
    }
    p = points[i];
    return 1;
}

HvPoint2<float> HvPath2f::GetPoint(unsigned int i) const
{
    HvShapeLock const lock(*this);
    return points[i];
}

HvPoint2<float>* HvPath2f::GetPoints(unsigned int first, unsigned int last,
                                     HvPoint2<float>* dest) const
{
    HvShapeLock const lock(*this);
    if (first <= last) {
        std::copy_n(points.Data() + first, last - first + 1, dest);
    }
    return dest;
}

HvPoint2<double>* HvPath2f::GetPoints(unsigned int first, unsigned int last,
                                      HvPoint2<double>* dest) const
{
    HvShapeLock const lock(*this);
    if (first <= last) {
        std::transform(points.Data() + first, points.Data() + last + 1, dest,
                       [](HvPoint2<float> const& p) { return HvPoint2<double>(p); });
    }
    return dest;
}
