// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The contour tracer: from pixels to callbacks.

#include <hv/vectorize/ObVectorize.h>

#include <hv/vectorize/ObContext.h>
#include <hv/vectorize/internal/ObContourSink.h>
#include <hv/vectorize/internal/ObContour_draw.h>
#include <hv/vectorize/internal/ObTracer.h>

namespace {

/// Tells contours to the callbacks of a context, corner by corner.
class CallbackSink final : public ObContourSink {
public:
    explicit CallbackSink(ObContext const& context) : context_(context) {}

    void BeginRegion() override { context_.beginRegion(context_.user); }
    void Add(ObContour const& contour) override { ObContour_Draw(contour, *this); }
    void EndRegion() override { context_.endRegion(context_.user); }
    void AddRun(int start, int end, int y) override
    {
        BeginRegion();
        MoveTo({start, y});
        LineTo({start, y + 1});
        LineTo({end + 1, y + 1});
        LineTo({end + 1, y});
        LineTo({start, y});
        EndRegion();
    }

    void MoveTo(HvPoint2<int> const& p) { context_.moveto(p.x, p.y, context_.user); }
    void LineTo(HvPoint2<int> const& p) { context_.lineto(p.x, p.y, context_.user); }

private:
    ObContext const& context_;
};

}  // namespace

void ObVectorize(ObContext& context, HvUByteRaster const& raster, unsigned char value,
                 HvExtent2<float> const& extent)
{
    context.begin(context.user, raster, value, extent);
    CallbackSink sink(context);
    ObTracer(context, sink).Trace(raster, value);
    context.end(context.user);
}
