// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Curves as a fit makes them, drawn into a picture.

#include "FitSink.h"

void FitSink::Begin(char const* colour)
{
    joints_.Chop(0);
    colour_ = colour;
    page_.Print("<path stroke='%s' d='", colour);
}

unsigned int FitSink::End()
{
    page_.Print("'/>\n");
    for (HvPoint2<float> const& p : joints_) {
        page_.Print("<circle cx='%.2f' cy='%.2f' r='3.2' stroke='%s'/>\n", double(p.x), double(p.y),
                    colour_);
    }
    return joints_.Size() - 1;
}

void FitSink::Moveto(HvPoint2<float> const& p)
{
    page_.Print("M%.2f %.2f", double(p.x), double(p.y));
    joints_.Add(p);
}

void FitSink::Curveto(HvPoint2<float> const& c1, HvPoint2<float> const& c2,
                      HvPoint2<float> const& p)
{
    page_.Print("C%.2f %.2f %.2f %.2f %.2f %.2f", double(c1.x), double(c1.y), double(c2.x),
                double(c2.y), double(p.x), double(p.y));
    joints_.Add(p);
}

int FitSink::Closeto()
{
    page_.Print("Z");
    return 1;
}

void DrawPoints(SvgPage& page, HvPoint2fArray const& points, double radius)
{
    for (HvPoint2<float> const& p : points) {
        page.Dot(HvPoint2<double>(p), radius, "#aaa");
    }
}
