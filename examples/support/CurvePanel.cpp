// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A panel of a picture in which curves are drawn over time.

#include "CurvePanel.h"

CurvePanel::CurvePanel(SvgPage& page, HvExtent2<double> const& shown,
                       HvPoint2<double> const& topLeft, HvPoint2<double> const& size,
                       char const* title)
    : page_(page), shown_(shown)
{
    page.Print("<rect x='%g' y='%g' width='%g' height='%g' stroke='#bbb' stroke-width='1'/>\n",
               topLeft.x, topLeft.y, size.x, size.y);
    page.Text({topLeft.x, topLeft.y - 7}, title);
    toPage_.Translate(topLeft.x, topLeft.y + size.y, 0)
        .Scale(size.x / (shown.max.x - shown.min.x), -size.y / (shown.max.y - shown.min.y), 1);
    toPage_.Translate(-shown.min.x, -shown.min.y, 0);
}

void CurvePanel::Draw(HvBaseFCurve const& curve, char const* colour)
{
    constexpr double kFlatness = 0.05;  // pixels
    HvPoint2dArray points;
    HvPointTagArray tags;
    HvBoolArray flags;
    curve.FlattenFromTo(shown_, toPage_, kFlatness, points, tags, flags, 0);
    for (unsigned int i = 0; i + 1 < points.Size(); ++i) {
        // Two runs that meet in a jump both have the flag 0 there; between runs nothing is drawn.
        if (tags[i] != HvPointTagEnd) {
            char const* const dash = flags[i] ? "" : " stroke-dasharray='3 4' stroke-width='0.8'";
            page_.Print("<path d='M%.2f %.2fL%.2f %.2f' stroke='%s'%s/>\n", points[i].x,
                        points[i].y, points[i + 1].x, points[i + 1].y, colour, dash);
        }
    }
    HvDoubleArray times, lefts, rights;
    curve.GetKeys(times, lefts, rights, 0);
    for (unsigned int i = 0; i < times.Size(); ++i) {
        page_.Dot(toPage_.Map(HvPoint2<double>(times[i], rights[i])), 3, colour);
    }
}
