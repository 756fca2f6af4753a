// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Life of the vectorizer, and contours as polygons.

#include <hv/vectorize/HvVectorizer.h>

#include <hv/foundation/HvUShortArray.h>
#include <hv/raster/HvUByteRaster.h>
#include <hv/shape/HvPath2f.h>
#include <hv/vectorize/ObContext.h>
#include <hv/vectorize/ObVectorize.h>
#include <hv/vectorize/VectClosure.h>
#include <hv/vectorize/internal/ObRow.h>

#include <algorithm>
#include <cmath>

/// The thresholds, behind the interface.
struct HvVectorizerImpl : HvAllocated {
    HvVectorizerImpl(double perimeter, double area)
        : perimeterThreshold(perimeter), areaThreshold(area)
    {
    }

    double perimeterThreshold;
    double areaThreshold;
};

namespace {

VectClosure& ClosureOf(void* user)
{
    return *static_cast<VectClosure*>(user);
}

void BeginNothing(void*, HvUByteRaster const&, unsigned char, HvExtent2<float> const&) {}

void BeginRegion(void* user)
{
    ClosureOf(user).firstContour = 1;
}

// Draws the point that was held back, and closes the contour, whose last point is its first.
void CloseContour(VectClosure& closure)
{
    closure.path->Lineto(HvPoint2<float>(closure.x, closure.y));
    closure.path->Closeto();
}

void StartContour(int x, int y, void* user)
{
    VectClosure& closure = ClosureOf(user);
    if (closure.firstContour == 0) {
        CloseContour(closure);
    }
    closure.firstContour = 0;
    closure.x = static_cast<float>(x);
    closure.y = static_cast<float>(y);
    closure.path->Moveto(HvPoint2<float>(closure.x, closure.y));
    ++closure.pointsAdded;
    closure.subpathPoints = 1;
}

void ContinueContour(int x, int y, void* user)
{
    VectClosure& closure = ClosureOf(user);
    HvPoint2<float> const p(static_cast<float>(x), static_cast<float>(y));
    if (!ShouldExtendLastSegment(closure, p)) {
        if (closure.subpathPoints > 1) {
            closure.path->Lineto(HvPoint2<float>(closure.x, closure.y));
        }
        closure.beforeX = closure.x;
        closure.beforeY = closure.y;
        ++closure.pointsAdded;
        ++closure.subpathPoints;
    }
    closure.x = p.x;
    closure.y = p.y;
}

void EndRegion(void* user)
{
    CloseContour(ClosureOf(user));
}

void EndNothing(void*) {}

}  // namespace

HvVectorizer::HvVectorizer(double perimeterThreshold, double areaThreshold)
    : impl_(new HvVectorizerImpl(perimeterThreshold, areaThreshold))
{
}

HvVectorizer::~HvVectorizer()
{
    delete impl_;
}

void HvVectorizer::SetPerimeterThreshold(double threshold)
{
    impl_->perimeterThreshold = std::fabs(threshold);
}

void HvVectorizer::SetAreaThreshold(double threshold)
{
    impl_->areaThreshold = std::fabs(threshold);
}

unsigned int HvVectorizer::Vectorize(HvUByteRaster const& raster, unsigned char value,
                                     HvExtent2<float> const& extent, HvPath2f& path) const
{
    // What is wider is refused by the tracer.
    int const width = std::clamp(raster.width, 0, kObWidestRaster);
    auto const entries = static_cast<unsigned int>(ObRow_MostEntries(width));
    HvUShortArray rows[] = {HvUShortArray(entries), HvUShortArray(entries), HvUShortArray(entries)};
    VectClosure closure;
    closure.path = &path;
    ObContext context = {BeginNothing,
                         BeginRegion,
                         StartContour,
                         ContinueContour,
                         EndRegion,
                         EndNothing,
                         &closure,
                         impl_->perimeterThreshold,
                         impl_->areaThreshold,
                         {rows[0].Data(), rows[1].Data(), rows[2].Data()}};
    ObVectorize(context, raster, value, extent);
    return closure.pointsAdded;
}
