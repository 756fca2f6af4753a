// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The pages of fills and of soft fills.

#include "PicturePage.h"
#include "picture_paths.h"

#include <hv/shape/HvGC.h>
#include <hv/shape/HvPath2f.h>

#include <sstream>

namespace {

using Point = HvPoint2<float>;

constexpr int kSide = 48;

struct Exhibit {
    char const* name;
    HvPath2f path;
};

void AddCircle(HvPath2f& path, Point const& center, float radius)
{
    float const k = 0.5522848F * radius;
    float const x = center.x;
    float const y = center.y;
    path.Moveto({x + radius, y});
    path.Curveto({x + radius, y + k}, {x + k, y + radius}, {x, y + radius});
    path.Curveto({x - k, y + radius}, {x - radius, y + k}, {x - radius, y});
    path.Curveto({x - radius, y - k}, {x - k, y - radius}, {x, y - radius});
    path.Curveto({x + k, y - radius}, {x + radius, y - k}, {x + radius, y});
    path.Closeto();
}

HvPath2f Star()
{
    return PicturePath_Polygons({{{24, 3}, {36, 42}, {4, 18}, {44, 18}, {12, 42}}});
}

HvPath2f Frame(bool isHoleReversed)
{
    Corners const hole = {{15, 15}, {33, 15}, {33, 33}, {15, 33}};
    return PicturePath_Polygons({{{6, 6}, {42, 6}, {42, 42}, {6, 42}},
                                 isHoleReversed ? Corners(hole.rbegin(), hole.rend()) : hole});
}

HvPath2f Circles()
{
    HvPath2f path(0u);
    AddCircle(path, {20.3F, 20.6F}, 16.5F);
    AddCircle(path, {36.2F, 36.1F}, 8.2F);
    AddCircle(path, {5.5F, 42.5F}, 1.5F);
    return path;
}

/// Teeth that are wider than a pixel at one end of the row and thinner at the other.
HvPath2f Comb()
{
    Corners corners;
    float x = 3;
    for (int tooth = 0; tooth < 12; ++tooth) {
        float const width = 0.3F + 0.3F * static_cast<float>(tooth);
        corners.push_back({x, 36});
        corners.push_back({x + width / 2, 5});
        x += width;
        corners.push_back({x, 36});
        x += 1.2F;
    }
    corners.push_back({x, 43});
    corners.push_back({3, 43});
    return PicturePath_Polygons({corners});
}

HvPath2f Slivers()
{
    return PicturePath_Polygons({{{4, 5}, {44, 9}, {44, 9.5F}},
                                 {{4, 14}, {44, 16}, {4, 14.75F}},
                                 {{5, 44}, {6, 20}, {6.25F, 44}},
                                 {{12, 20}, {40, 44}, {41, 44}},
                                 {{20, 22}, {44, 22}, {44, 22.2F}, {20, 22.2F}}});
}

HvPath2f OnAllSides()
{
    return PicturePath_Polygons({{{24, -30}, {78, 24}, {24, 78}, {-30, 24}},
                                 {{24, 4}, {4, 24}, {24, 44}, {44, 24}},
                                 {{-9, 40}, {8, 40}, {8, 60}, {-9, 60}}});
}

/// Segments of degree 2, 4, 8 and 3.
HvPath2f Degrees()
{
    HvPath2f path(0u);
    path.Moveto({8, 24});
    path.Curveto({4, 2}, {24, 6});
    Point const quartic[] = {{32, -4}, {34, 22}, {46, 4}, {44, 20}};
    path.AltCurveto(quartic, 4);
    Point const octic[] = {{46, 60}, {36, 10}, {34, 70}, {28, 0},
                           {26, 80}, {20, 10}, {18, 60}, {10, 44}};
    path.AltCurveto(octic, 8);
    path.Curveto({2, 38}, {14, 30}, {8, 24});
    path.Closeto();
    return path;
}

/// Corners on sample lines, twice the same corner, a spike, a polygon of two points, and an open
/// line that widens the box.
HvPath2f Degenerate()
{
    HvPath2f path =
        PicturePath_Polygons({{{5.5F, 5.5F}, {20.5F, 5.5F}, {20.5F, 20.5F}, {5.5F, 20.5F}},
                              {{26, 6}, {26, 6}, {42, 6}, {42, 20}, {42, 20}, {26, 20}},
                              {{6, 28}, {20, 28}, {20, 46}, {20, 28}, {20, 42}, {6, 42}},
                              {{26, 28}, {42, 42}}});
    path.Moveto({30, 44});
    path.Lineto({46, 30});
    return path;
}

std::vector<Exhibit> Exhibits()
{
    return {{"star", Star()},
            {"hole in the same direction", Frame(false)},
            {"hole in the other direction", Frame(true)},
            {"circles", Circles()},
            {"comb", Comb()},
            {"slivers", Slivers()},
            {"cut on all sides", OnAllSides()},
            {"degrees 2, 4, 8, 3", Degrees()},
            {"degenerate polygons", Degenerate()}};
}

HvGC FillContext(int rule)
{
    HvGC gc;
    gc.flatness = 0.25;
    gc.fillRule = rule;
    return gc;
}

/// Without a turn, as numbers that depend on a sine may differ between machines.
HvTransfo4 Enlarged()
{
    HvTransfo4 transform;
    transform.Translate(-3.3, 6.7, 0.0);
    transform.Scale(1.3, 0.7, 1.0);
    return transform;
}

void AddFills(PicturePage& page, std::string const& kind, HvGC const& gc,
              void (HvPath2f::*fill)(HvGC const&, HvUByteRaster&, int (*)()) const)
{
    for (Exhibit const& exhibit : Exhibits()) {
        page.Add(std::string(exhibit.name) + ", " + kind,
                 [&](HvUByteRaster& cell) { (exhibit.path.*fill)(gc, cell, nullptr); });
    }
}

}  // namespace

PicturePage FillPage()
{
    PicturePage page("fills", 9, 6, kSide);
    HvGC const evenOdd = FillContext(0);
    HvGC const winding = FillContext(1);
    AddFills(page, "even-odd", evenOdd, &HvPath2f::Fill);
    AddFills(page, "winding", winding, &HvPath2f::Fill);
    AddFills(page, "even-odd, anti-aliased", evenOdd, &HvPath2f::AAFill);
    AddFills(page, "winding, anti-aliased", winding, &HvPath2f::AAFill);
    HvGC faint = winding;
    faint.maxCoverage = 0.5;
    AddFills(page, "winding, anti-aliased, coverage to a half", faint, &HvPath2f::AAFill);
    HvGC enlarged = evenOdd;
    enlarged.transform = Enlarged();
    AddFills(page, "even-odd, anti-aliased, enlarged", enlarged, &HvPath2f::AAFill);
    return page;
}

PicturePage SoftFillPage()
{
    Exhibit const exhibits[] = {
        {"star", Star()},
        {"frame", Frame(true)},
        {"circles", Circles()},
        {"cut on all sides", OnAllSides()},
    };
    double const radii[] = {0.9, 1.0, 2.5, 6.0, 14.0};
    PicturePage page("soft_fills", 9, 5, kSide);
    for (double const radius : radii) {
        std::ostringstream text;
        text << ", radius " << radius;
        HvGC gc = FillContext(1);
        gc.softRadiusA = radius / 2;
        gc.softRadiusB = radius / 2;
        for (int const isCut : {0, 1}) {
            gc.softClipToShape = isCut;
            for (Exhibit const& exhibit : exhibits) {
                page.Add(exhibit.name + text.str() + (isCut != 0 ? ", cut" : ", not cut"),
                         [&](HvUByteRaster& cell) { exhibit.path.SoftFill(gc, cell, nullptr); });
            }
        }
        gc.softClipToShape = 0;
        gc.fillRule = 0;
        gc.maxCoverage = 0.5;
        gc.falloff = HvStdFCurve(1.0, HvBaseFCurve::ConstantSegment);
        page.Add("star, even-odd, box profile, coverage to a half" + text.str(),
                 [&](HvUByteRaster& cell) { exhibits[0].path.SoftFill(gc, cell, nullptr); });
    }
    return page;
}
