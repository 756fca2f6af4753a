// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Stroking a path: the outline of the stroke, filled.

#include <hv/shape/HvPath2f.h>

#include <hv/foundation/polyline_compare.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/internal/rendering_flatness.h>
#include <hv/shape/internal/stroke_outline.h>

void HvPath2f::GetStrokeOutline(HvGC const& gc, HvPath2f& outline) const
{
    HvPoint2dArray flattened;
    HvPointTagArray flattenedTags;
    TransformAndFlattenPath(gc.transform, HvRenderingFlatness(gc), flattened, flattenedTags);
    HvPoint2dArray pts(flattened.Size());
    HvPointTagArray ptTags(flattened.Size());
    HvPoint2dArray_Filter(flattened, flattenedTags, pts, ptTags);

    HvPath2f stroke(1u);
    HvStroke_AppendOutlines(pts, ptTags, gc, stroke);
    outline = stroke;
}

void HvPath2f::Stroke(HvGC const& gc, HvUByteRaster& raster) const
{
    HvPath2f outline(1u);
    GetStrokeOutline(gc, outline);
    // The outline is in device space already, and its rings lie over one another.
    HvGC outlineGc(gc);
    outlineGc.transform.SetToIdentity();
    outlineGc.fillRule = 1;
    outline.Fill(outlineGc, raster, nullptr);
}
