// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The pages of rectangles and ovals, as shapes and scanned directly.

#include "PicturePage.h"

#include <hv/raster/HvFloatRaster.h>
#include <hv/raster/scan_convert.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvOval2f.h>
#include <hv/shape/HvRect2f.h>

#include <limits>

namespace {

using Point = HvPoint2<float>;

constexpr int kSide = 48;
constexpr double kHalf = 0.5;
constexpr int kBrush = 5;

struct Exhibit {
    char const* name;
    Point p0, p1, p2;
};

Exhibit const kExhibits[] = {
    {"upright", {7.25F, 9.5F}, {38.5F, 9.5F}, {7.25F, 36}},
    {"square", {8, 8}, {40, 8}, {8, 40}},
    {"turned", {5.25F, 25}, {29, 4.5F}, {18.75F, 42.25F}},
    {"sheared, turned over", {4, 38}, {32, 32}, {16, 6}},
    {"axes exchanged", {12, 6}, {12, 42}, {35, 6}},
    {"thin, almost level", {3, 21.5F}, {45, 25.5F}, {3, 22.75F}},
    {"thin, almost upright", {21, 3}, {22.25F, 3}, {26, 45}},
    {"cut on all sides", {24, -12.5F}, {60, 24}, {-11, 24}},
    {"without a width", {9, 12}, {9, 12}, {38, 33}},
};

// --- shapes -------------------------------------------------------------------------------------

template <class Shape>
using FillOf = void (Shape::*)(HvGC const&, HvUByteRaster&, int (*)()) const;

template <class Shape>
void AddFills(PicturePage& page, std::string const& kind, HvGC const& gc, FillOf<Shape> fill)
{
    for (Exhibit const& exhibit : kExhibits) {
        Shape const shape(exhibit.p0, exhibit.p1, exhibit.p2);
        page.Add(kind + ", " + exhibit.name,
                 [&](HvUByteRaster& cell) { (shape.*fill)(gc, cell, nullptr); });
    }
}

/// On a grey ground, so that pixels that are written 0 differ from those that are left alone.
template <class Shape>
void AddRadialFills(PicturePage& page, std::string const& kind, HvGC const& gc)
{
    for (Exhibit const& exhibit : kExhibits) {
        Shape const shape(exhibit.p0, exhibit.p1, exhibit.p2);
        page.Add(kind + ", radial, " + exhibit.name, [&](HvUByteRaster& cell) {
            cell.CopyRaster(0, 0, HvUByteRaster(kSide, kSide, 48));
            shape.RadialFill(gc, cell);
        });
    }
}

template <class Shape>
void AddShape(PicturePage& page, std::string const& kind)
{
    HvGC gc;
    gc.flatness = 0.25;
    AddFills<Shape>(page, kind + ", hard", gc, &Shape::Fill);
    AddFills<Shape>(page, kind + ", anti-aliased", gc, &Shape::AAFill);
    AddRadialFills<Shape>(page, kind, gc);
    gc.softRadiusA = 5.0;
    AddFills<Shape>(page, kind + ", soft and cut", gc, &Shape::SoftFill);
    gc.softClipToShape = 0;
    AddFills<Shape>(page, kind + ", soft", gc, &Shape::SoftFill);
    // Moved, enlarged and turned over, so that all three points are mapped.
    gc.transform.Translate(50.5, -3.25, 0.0);
    gc.transform.Scale(-1.125, 1.125, 1.0);
    AddFills<Shape>(page, kind + ", hard, mapped", gc, &Shape::Fill);
}

// --- direct scans -------------------------------------------------------------------------------

/// A distance as a grey: 0 bright, `greatest` dark, and black where none was stored.
void ShowDistances(HvFloatRaster const& distance, float greatest, HvUByteRaster& cell)
{
    for (std::size_t i = 0; i < cell.NumPixels(); ++i) {
        float const value = distance.data[i];
        if (value != std::numeric_limits<float>::max()) {
            cell.data[i] = static_cast<unsigned char>(255.0F - 191.0F * value / greatest);
        }
    }
}

/// A row of scans: what `scan(exhibit, raster, distance)` leaves in the raster, or in the distances
/// when these have a greatest one.
template <class Scan>
void AddScans(PicturePage& page, std::string const& kind, float greatest, Scan const& scan)
{
    for (Exhibit const& exhibit : kExhibits) {
        page.Add(kind + ", " + exhibit.name, [&](HvUByteRaster& cell) {
            HvFloatRaster distance(kSide, kSide, std::numeric_limits<float>::max());
            if (greatest == 0.0F) {
                scan(exhibit, cell, distance);
            } else {
                HvUByteRaster unseen(kSide, kSide, 0);
                scan(exhibit, unseen, distance);
                ShowDistances(distance, greatest, cell);
            }
        });
    }
}

void AddRectScans(PicturePage& page)
{
    for (int mode = RectFillPlain; mode <= RectFillLinearThin; ++mode) {
        bool const storesDistances = mode >= RectFillRadial;
        AddScans(page, "rectangle, mode " + std::to_string(mode), storesDistances ? 1.0F : 0.0F,
                 [mode](Exhibit const& e, HvUByteRaster& raster, HvFloatRaster& distance) {
                     ScanConvert(e.p0, e.p1, e.p2, kHalf, raster, 255, distance,
                                 static_cast<RectFillMode>(mode));
                 });
    }
}

using OvalScan = void (*)(Point const&, Point const&, Point const&, double, HvUByteRaster&,
                          unsigned char, HvFloatRaster&, int, OvalFillMode);

void AddOvalScans(PicturePage& page, std::string const& kind, OvalScan ovalScan)
{
    for (int mode = OvalFillPlain; mode <= OvalFillBrushed + 1; ++mode) {
        auto const scan = [mode, ovalScan](Exhibit const& e, HvUByteRaster& raster,
                                           HvFloatRaster& distance) {
            ovalScan(e.p0, e.p1, e.p2, kHalf, raster, 255, distance, kBrush,
                     static_cast<OvalFillMode>(mode));
        };
        AddScans(page, kind + ", mode " + std::to_string(mode), 0.0F, scan);
        if (mode == OvalFillBrushed) {
            AddScans(page, kind + ", brush", kBrush, scan);
        }
    }
}

}  // namespace

PicturePage ShapePage()
{
    PicturePage page("shapes", 9, 12, kSide);
    AddShape<HvRect2f>(page, "rectangle");
    AddShape<HvOval2f>(page, "oval");
    return page;
}

PicturePage ScanPage()
{
    PicturePage page("scans", 9, 17, kSide);
    AddRectScans(page);
    AddOvalScans(page, "oval", &ScanConvert);
    AddOvalScans(page, "isothetic oval", &ScanConvertIsothetic);
    AddScans(page, "distances in an oval", 1.0F,
             [](Exhibit const& e, HvUByteRaster&, HvFloatRaster& distance) {
                 FillDistanceRaster(e.p0, e.p1, e.p2, kHalf, distance);
             });
    AddScans(page, "distances in an isothetic oval", 1.0F,
             [](Exhibit const& e, HvUByteRaster&, HvFloatRaster& distance) {
                 FillDistanceRasterIsothetic(e.p0, e.p1, e.p2, kHalf, distance);
             });
    return page;
}
