// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A panel of a picture that shows pixels and outlines over them.

#include "PixelPanel.h"

#include <cmath>

namespace {

using Point = HvPoint2<float>;

}  // namespace

PixelPanel::PixelPanel(SvgPage& page, int index, HvUByteRaster const& raster, unsigned char ink)
    : page_(page), raster_(raster), ink_(ink), left_(10 + index * (kPixel * raster.width + 10))
{
}

void PixelPanel::DrawPixels()
{
    page_.Print("<path fill='#ddd' d='");
    for (int y = 0; y < raster_.height; ++y) {
        for (int x = 0; x < raster_.width; ++x) {
            if (raster_.data[y * raster_.width + x] == ink_) {
                page_.Print("M%g,%gh9v9h-9z", PageX(x) + 0.5, PageY(y) + 0.5);
            }
        }
    }
    page_.Print("'/>\n");
}

void PixelPanel::Draw(HvPath2f const& path, char const* title)
{
    page_.Print("<text x='%g' y='25' fill='#222'>%s: %u points</text>\n", left_ + 15, title,
                path.NumPoints());
    DrawPixels();
    HvPath2fIter subpaths(path);
    unsigned int first = 0;
    unsigned int last = 0;
    while (subpaths.GetNextSubPathIndices(first, last) != 0) {
        constexpr double kFlatness = 0.02;  // pixels of the raster
        HvPoint2fArray flat;
        path.FlattenSubpath(first, kFlatness, flat);
        DrawSubpath(flat, path.IsPolyline() != 0);
    }
}

void PixelPanel::DrawSubpath(HvPoint2fArray const& flat, bool hasArrows)
{
    double area = 0;
    for (unsigned int i = 1; i < flat.Size(); ++i) {
        area += HvPoint2_AdetB(flat[i], flat[i - 1]);
    }
    char const* const colour = area > 0 ? "#2060a0" : "#c04020";
    page_.Print("<path d='M");
    for (Point const& p : flat) {
        page_.Print(" %.1f,%.1f", PageX(double(p.x)), PageY(double(p.y)));
    }
    page_.Print("Z' stroke='%s' stroke-width='2'/>\n", colour);
    page_.Print("<circle cx='%.1f' cy='%.1f' r='4' fill='%s'/>\n", PageX(double(flat[0].x)),
                PageY(double(flat[0].y)), colour);
    for (unsigned int i = 1; hasArrows && i < flat.Size(); ++i) {
        if (HvPoint2_LengthAB(flat[i - 1], flat[i]) >= 3) {
            Point const middle = (flat[i - 1] + flat[i]) * 0.5f;
            double const turn = 57.29578 * std::atan2(double(flat[i].y - flat[i - 1].y),
                                                      double(flat[i].x - flat[i - 1].x));
            page_.Print("<path d='M-5,-4L4,0L-5,4Z' fill='%s' transform='translate(%.1f %.1f) "
                        "rotate(%.0f)'/>\n",
                        colour, PageX(double(middle.x)), PageY(double(middle.y)), turn);
        }
    }
}
