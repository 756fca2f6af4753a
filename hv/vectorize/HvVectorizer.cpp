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

/// Writes the corners of a contour into an array, which grows where they need it.
class CornerPen {
public:
    CornerPen(HvPoint2fArray& room, unsigned int used) : room_(room) { GoTo(used); }

    void Begin(HvPoint2<int> const& start)
    {
        MakeRoom(1);
        *at_++ = HvPoint2<float>(start);
    }
    /// Adds both ends of a move along x at `y`, or nothing when they are one place. Both are
    /// written and then counted or not, as the processor could only guess which way a branch goes.
    void AddTurn(int fromX, int toX, int y)
    {
        MakeRoom(2);
        at_[0] = HvPoint2<float>(HvPoint2<int>(fromX, y));
        at_[1] = HvPoint2<float>(HvPoint2<int>(toX, y));
        at_ += fromX != toX ? 2 : 0;
    }
    /// The last side may have begun at the start already.
    void End(int fromX, HvPoint2<int> const& start)
    {
        AddTurn(fromX, start.x, start.y);
        if (at_[-1] != HvPoint2<float>(start)) {
            *at_++ = HvPoint2<float>(start);
        }
    }

    /// A whole outline: down, to the right, up and back.
    void AddRectangle(HvPoint2<int> const& low, HvPoint2<int> const& high)
    {
        MakeRoom(5);
        HvPoint2<float> const a(low);
        HvPoint2<float> const b(high);
        at_[0] = a;
        at_[1] = HvPoint2<float>(a.x, b.y);
        at_[2] = b;
        at_[3] = HvPoint2<float>(b.x, a.y);
        at_[4] = a;
        at_ += 5;
    }

    /// Points of the array that are in use.
    unsigned int Used() const { return static_cast<unsigned int>(at_ - room_.Data()); }

private:
    void MakeRoom(unsigned int points)
    {
        if (end_ - at_ < points) {
            unsigned int const used = Used();
            room_.Resize(HvArrayCapacity_GrownSize(used, std::max(used, points)));
            GoTo(used);
        }
    }
    void GoTo(unsigned int used)
    {
        at_ = room_.Data() + used;
        end_ = room_.end();
    }

    HvPoint2fArray& room_;
    HvPoint2<float>* at_ = nullptr;
    HvPoint2<float>* end_ = nullptr;
};

/// Draws contours into a path as polygons without points within a side, many at a time.
class PolygonSink final : public ObContourSink {
public:
    explicit PolygonSink(HvPath2f& path) : path_(path), sizes_(kBatchPoints)
    {
        points_.Resize(kBatchPoints);
    }

    void BeginRegion() override {}
    void Add(ObContour const& contour) override;
    void EndRegion() override {}
    void AddRun(int start, int end, int y) override;

    /// Hands what was collected to the path.
    void Flush();
    /// Points of all contours.
    unsigned int PointsAdded() const { return pointsAdded_; }

private:
    void Finish(CornerPen const& pen);

    HvPath2f& path_;
    unsigned int pointsAdded_ = 0;
    // The polygons that are not in the path yet, how many points they have together, and each.
    HvPoint2fArray points_;
    unsigned int used_ = 0;
    HvDynArray<unsigned int> sizes_;
};

void PolygonSink::Add(ObContour const& contour)
{
    CornerPen pen(points_, used_);
    ObContour_DrawCorners(contour, pen);
    Finish(pen);
}

void PolygonSink::AddRun(int start, int end, int y)
{
    CornerPen pen(points_, used_);
    pen.AddRectangle({start, y}, {end + 1, y + 1});
    Finish(pen);
}

void PolygonSink::Finish(CornerPen const& pen)
{
    unsigned int const size = pen.Used() - used_;
    sizes_.Add(size);
    used_ += size;
    pointsAdded_ += size;
    if (used_ >= kBatchPoints) {
        Flush();
    }
}

void PolygonSink::Flush()
{
    path_.AppendPolylines(points_.Data(), sizes_.Data(), sizes_.Count());
    used_ = 0;
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
