// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Life of the vectorizer, and contours as polygons.

#include <hv/vectorize/HvVectorizer.h>

#include <hv/foundation/HvDynArray.h>
#include <hv/foundation/HvPoint2fArray.h>
#include <hv/foundation/HvUShortArray.h>
#include <hv/raster/HvUByteRaster.h>
#include <hv/shape/HvPath2f.h>
#include <hv/vectorize/ObContext.h>
#include <hv/vectorize/VectClosure.h>
#include <hv/vectorize/internal/ObContourSink.h>
#include <hv/vectorize/internal/ObContour_draw.h>
#include <hv/vectorize/internal/ObRow.h>
#include <hv/vectorize/internal/ObTracer.h>

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

/// Points that are collected before they go to the path: enough for its lock and its growth not to
/// count, few enough to stay in the nearest cache.
constexpr unsigned int kBatchPoints = 2048;

/// Draws one contour into an array, without points within a side. It goes on from a state of its
/// own, which stays in registers.
class PolygonPen {
public:
    PolygonPen(HvPoint2fArray& points, VectClosure const& closure)
        : points_(points), closure_(closure)
    {
    }

    void MoveTo(HvPoint2<int> const& corner)
    {
        closure_.x = static_cast<float>(corner.x);
        closure_.y = static_cast<float>(corner.y);
        closure_.subpathPoints = 1;
    }
    void LineTo(HvPoint2<int> const& corner)
    {
        HvPoint2<float> const p(static_cast<float>(corner.x), static_cast<float>(corner.y));
        if (!ShouldExtendLastSegment(closure_, p)) {
            points_.Add(HvPoint2<float>(closure_.x, closure_.y));
            closure_.beforeX = closure_.x;
            closure_.beforeY = closure_.y;
            ++closure_.subpathPoints;
        }
        closure_.x = p.x;
        closure_.y = p.y;
    }
    /// Adds the last point; returns where the drawing stands behind the contour.
    VectClosure const& Finish()
    {
        points_.Add(HvPoint2<float>(closure_.x, closure_.y));
        closure_.pointsAdded += closure_.subpathPoints;
        closure_.firstContour = 0;
        return closure_;
    }

private:
    HvPoint2fArray& points_;
    VectClosure closure_;
};

/// Draws contours into a path as polygons without points within a side, many at a time.
class PolygonSink final : public ObContourSink {
public:
    explicit PolygonSink(HvPath2f& path) : points_(kBatchPoints), sizes_(kBatchPoints)
    {
        closure_.path = &path;
    }

    void BeginRegion() override { closure_.firstContour = 1; }
    void Add(ObContour const& contour) override;
    void EndRegion() override {}

    /// Hands what was collected to the path.
    void Flush();
    /// Points of all contours.
    unsigned int PointsAdded() const { return closure_.pointsAdded; }

private:
    VectClosure closure_;
    // The polygons that are not in the path yet, and how many points each has.
    HvPoint2fArray points_;
    HvDynArray<unsigned int> sizes_;
};

void PolygonSink::Add(ObContour const& contour)
{
    PolygonPen pen(points_, closure_);
    ObContour_Draw(contour, pen);
    closure_ = pen.Finish();
    sizes_.Add(closure_.subpathPoints);
    if (points_.Size() >= kBatchPoints) {
        Flush();
    }
}

void PolygonSink::Flush()
{
    closure_.path->AppendPolylines(points_.Data(), sizes_.Data(), sizes_.Count());
    points_.Chop(0);
    sizes_.Chop(0);
}

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
                                     HvExtent2<float> const&, HvPath2f& path) const
{
    // What is wider is refused by the tracer.
    int const width = std::clamp(raster.width, 0, kObWidestRaster);
    auto const entries = static_cast<unsigned int>(ObRow_MostEntries(width));
    HvUShortArray rows[] = {HvUShortArray(entries), HvUShortArray(entries), HvUShortArray(entries)};
    // No callbacks: the sink is told instead.
    ObContext context = {nullptr,
                         nullptr,
                         nullptr,
                         nullptr,
                         nullptr,
                         nullptr,
                         nullptr,
                         impl_->perimeterThreshold,
                         impl_->areaThreshold,
                         {rows[0].Data(), rows[1].Data(), rows[2].Data()}};
    PolygonSink sink(path);
    ObTracer(context, sink).Trace(raster, value);
    sink.Flush();
    return sink.PointsAdded();
}
