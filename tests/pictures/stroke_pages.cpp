// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The pages of strokes.

#include "PicturePage.h"
#include "picture_paths.h"

#include <hv/shape/HvGC.h>
#include <hv/shape/HvPath2f.h>

namespace {

constexpr int kColumns = 9;
constexpr int kRows = 6;
constexpr int kSide = 56;

char const* const kJoins[] = {"bevel", "miter", "round"};
char const* const kCaps[] = {"round", "square", "butt"};

/// How a stroke comes into a cell.
using Render = void (*)(HvPath2f const&, HvGC const&, HvUByteRaster&);

void RenderHard(HvPath2f const& path, HvGC const& gc, HvUByteRaster& cell)
{
    path.Stroke(gc, cell);
}

void RenderSmooth(HvPath2f const& path, HvGC const& gc, HvUByteRaster& cell)
{
    HvPath2f outline(1u);
    path.GetStrokeOutline(gc, outline);
    HvGC outlineGc(gc);
    outlineGc.transform.SetToIdentity();
    outlineGc.fillRule = 1;
    outline.AAFill(outlineGc, cell, nullptr);
}

HvGC StrokeContext(double width, int cap, int join, double miterLimit)
{
    HvGC gc;
    gc.flatness = 0.25;  // small enough that every corner below is joined
    gc.strokeWidth = width;
    gc.capStyle = cap;
    gc.joinStyle = join;
    gc.miterLimit = miterLimit;
    return gc;
}

/// Fills a page with one kind of rendering.
class StrokeSheet {
public:
    StrokeSheet(std::string const& name, Render render)
        : page_(name, kColumns, kRows, kSide), render_(render)
    {
        for (double const width : {9.0, 2.0}) {
            AddCapsAndJoins(width, 0);
        }
        AddCapsAndJoins(14.0, 1);
        AddClosed();
        AddMiterLimits();
        AddOddities();
    }

    PicturePage const& Page() const { return page_; }

private:
    void Add(std::string const& caption, HvPath2f const& path, HvGC const& gc)
    {
        page_.Add(caption, [&](HvUByteRaster& cell) { render_(path, gc, cell); });
    }

    /// Turns to both sides, by less and by more than a right angle and by more than 120 degrees.
    void AddCapsAndJoins(double width, int taper)
    {
        HvPath2f const bend = PicturePath_Lines({{9, 12}, {38, 12}, {44, 30}, {12, 36}, {32, 47}});
        std::string const kind = taper != 0 ? "tapered" : width < 3.0 ? "thin" : "wide";
        for (int cap = 0; cap < 3; ++cap) {
            for (int join = 0; join < 3; ++join) {
                HvGC gc = StrokeContext(width, cap, join, 4.0);
                gc.taperStroke = taper;
                Add(std::string("open, ") + kind + ", " + kCaps[cap] + " caps, " + kJoins[join] +
                        " joins",
                    bend, gc);
            }
        }
    }

    void AddClosed()
    {
        HvPath2f const kite = PicturePath_Polygons({{{28, 10}, {45, 36}, {28, 47}, {11, 36}}});
        for (int kind = 0; kind < 3; ++kind) {
            double const widths[] = {8.0, 2.0, 12.0};
            char const* const names[] = {"wide", "thin", "tapered"};
            for (int join = 0; join < 3; ++join) {
                HvGC gc = StrokeContext(widths[kind], 2, join, 4.0);
                gc.taperStroke = kind == 2 ? 1 : 0;
                Add(std::string("closed, ") + names[kind] + ", " + kJoins[join] + " joins", kite,
                    gc);
            }
        }
    }

    /// Miters of 2.76, 1.41 and 1.12 half widths: the limit of 1.5 cuts the first of them, that of
    /// 1 all. What it cuts off a sharp corner reaches back beyond the corner itself.
    void AddMiterLimits()
    {
        struct Corner {
            char const* name;
            HvPath2f path;
        };
        Corner const corners[] = {
            {"sharp", PicturePath_Lines({{4, 19}, {40, 33}, {4, 47}})},
            {"right angle", PicturePath_Lines({{10, 42}, {28, 24}, {46, 42}})},
            {"obtuse", PicturePath_Lines({{8, 34}, {28, 24}, {48, 34}})},
        };
        for (Corner const& corner : corners) {
            for (char const* const limit : {"1", "1.5", "4"}) {
                Add(std::string(corner.name) + ", miter limit " + limit, corner.path,
                    StrokeContext(10.0, 2, 1, std::stod(limit)));
            }
        }
    }

    void AddOddities()
    {
        HvPath2f wave(0u);
        wave.Moveto({10, 28});
        wave.Curveto({20, -12}, {36, 68}, {46, 28});
        Add("wave, round caps and joins", wave, StrokeContext(8.0, 0, 2, 4.0));

        HvPath2f loop(0u);
        loop.Moveto({8, 44});
        loop.Curveto({88, 4}, {-32, 4}, {48, 44});
        Add("loop, square caps", loop, StrokeContext(6.0, 1, 1, 4.0));

        HvPath2f cusp(0u);
        cusp.Moveto({10, 46});
        cusp.Curveto({46, 6}, {10, 6}, {46, 46});
        Add("cusp, butt caps", cusp, StrokeContext(6.0, 2, 1, 4.0));

        HvPath2f const reversal = PicturePath_Lines({{12, 20}, {44, 30}, {12, 20}, {12, 44}});
        for (int join = 0; join < 3; ++join) {
            Add(std::string("exact reversal, ") + kJoins[join] + " joins", reversal,
                StrokeContext(8.0, 0, join, 4.0));
        }

        HvPath2f const returning = PicturePath_Lines({{14, 14}, {44, 20}, {30, 44}, {14, 14}});
        Add("open but back at its start, round caps", returning, StrokeContext(7.0, 0, 1, 4.0));

        HvPath2f several = PicturePath_Lines({{10, 10}, {46, 10}});
        several.Moveto({28, 20});
        several.Lineto({28, 20});
        several.Moveto({14, 30});
        several.Curveto({28, 60}, {42, 30});
        Add("line, dot and quadratic, square caps", several, StrokeContext(6.0, 1, 1, 4.0));

        HvPath2f const outside = PicturePath_Polygons({{{-20, 20}, {30, 8}, {76, 50}, {20, 70}}});
        Add("sticks out on all sides but the top", outside, StrokeContext(12.0, 2, 2, 4.0));
    }

    PicturePage page_;
    Render render_;
};  // namespace

}  // namespace

PicturePage StrokePage()
{
    return StrokeSheet("strokes", RenderHard).Page();
}

PicturePage SmoothStrokePage()
{
    return StrokeSheet("strokes_smooth", RenderSmooth).Page();
}
