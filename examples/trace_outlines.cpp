// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Draws the outlines of pixels: along their sides, and fitted by curves.
//
//     hv_example_trace_outlines [FILE]     writes the picture, trace_outlines.svg by default
//
// On the left the polygons with their directions, a dot where each starts; outer contours are blue,
// holes red. Then the curves within half a pixel and within one.

#include <hv/hv.h>

#include <cmath>
#include <cstdio>

namespace {

constexpr int kColumns = 30;
constexpr int kRows = 30;
constexpr double kPixel = 10;  // side of a pixel in the picture
constexpr unsigned char kInk = 1;

using Point = HvPoint2<float>;

/// Gives `value` to the pixels of an oval.
void PaintOval(HvUByteRaster& raster, Point const& min, Point const& max, unsigned char value)
{
    HvOval2f const oval(min, Point(max.x, min.y), Point(min.x, max.y));
    HvUByteRaster mask(raster.width, raster.height, 0);
    oval.Fill(HvGC(), mask, nullptr);
    for (unsigned int i = 0; i < mask.NumPixels(); ++i) {
        raster.data[i] = mask.data[i] != 0 ? value : raster.data[i];
    }
}

/// A letter with a counter and a stem, and a dot in the counter.
HvUByteRaster Picture()
{
    HvUByteRaster raster(kColumns, kRows, 0);
    PaintOval(raster, Point(2, 6), Point(24, 28), kInk);
    PaintOval(raster, Point(6, 10), Point(20, 24), 0);
    for (int y = 2; y < 28; ++y) {
        for (int x = 21; x < 26; ++x) {
            raster.data[y * kColumns + x] = kInk;
        }
    }
    PaintOval(raster, Point(10, 14), Point(15, 19), kInk);
    return raster;
}

void DrawPixels(std::FILE* file, HvUByteRaster const& raster, double left)
{
    std::fprintf(file, "<path fill='#ddd' d='");
    for (int y = 0; y < raster.height; ++y) {
        for (int x = 0; x < raster.width; ++x) {
            if (raster.data[y * raster.width + x] == kInk) {
                std::fprintf(file, "M%g,%gh9v9h-9z", left + kPixel * x + 0.5,
                             40 + kPixel * y + 0.5);
            }
        }
    }
    std::fprintf(file, "'/>\n");
}

/// Draws each subpath, with a dot where it starts and, where it is a polygon, an arrow on each side
/// of some length. Holes are told by their direction: the other way round.
void DrawOutlines(std::FILE* file, HvPath2f const& path, double left)
{
    auto const px = [left](Point const& p) { return left + kPixel * double(p.x); };
    auto const py = [](Point const& p) { return 40 + kPixel * double(p.y); };
    HvPath2fIter subpaths(path);
    unsigned int first = 0;
    unsigned int last = 0;
    while (subpaths.GetNextSubPathIndices(first, last) != 0) {
        HvPoint2fArray flat;
        path.FlattenSubpath(first, 0.02, flat);
        double area = 0;
        for (unsigned int i = 1; i < flat.Size(); ++i) {
            area += HvPoint2_AdetB(flat[i], flat[i - 1]);
        }
        char const* const colour = area > 0 ? "#2060a0" : "#c04020";
        std::fprintf(file, "<path d='M");
        for (Point const& p : flat) {
            std::fprintf(file, " %.1f,%.1f", px(p), py(p));
        }
        std::fprintf(file, "Z' stroke='%s' stroke-width='2'/>\n", colour);
        std::fprintf(file, "<circle cx='%.1f' cy='%.1f' r='4' fill='%s'/>\n", px(flat[0]),
                     py(flat[0]), colour);
        for (unsigned int i = 1; path.IsPolyline() != 0 && i < flat.Size(); ++i) {
            if (HvPoint2_LengthAB(flat[i - 1], flat[i]) >= 3) {
                Point const middle = (flat[i - 1] + flat[i]) * 0.5f;
                double const turn = 57.29578 * std::atan2(double(flat[i].y - flat[i - 1].y),
                                                          double(flat[i].x - flat[i - 1].x));
                std::fprintf(file,
                             "<path d='M-5,-4L4,0L-5,4Z' fill='%s' transform='translate(%.1f %.1f) "
                             "rotate(%.0f)'/>\n",
                             colour, px(middle), py(middle), turn);
            }
        }
    }
}

void Panel(std::FILE* file, int index, HvUByteRaster const& raster, HvPath2f const& path,
           char const* label)
{
    double const left = 10 + index * (kPixel * kColumns + 10);
    std::fprintf(file, "<text x='%g' y='25' fill='#222'>%s: %u points</text>\n", left + 15, label,
                 path.NumPoints());
    DrawPixels(file, raster, left);
    DrawOutlines(file, path, left);
}

}  // namespace

int main(int argc, char** argv)
{
    char const* const name = argc > 1 ? argv[1] : "trace_outlines.svg";
    std::FILE* const file = std::fopen(name, "w");
    if (file == nullptr) {
        std::fprintf(stderr, "trace_outlines: cannot write %s\n", name);
        return 1;
    }
    std::fprintf(file, "<svg xmlns='http://www.w3.org/2000/svg' width='950' height='350' "
                       "font-family='sans-serif' font-size='15' fill='none'>\n"
                       "<rect width='950' height='350' fill='white'/>\n");
    HvUByteRaster const raster = Picture();
    HvVectorizer const vectorizer(0, 0);
    HvExtent2<float> const everywhere;

    HvPath2f polygons(0);
    vectorizer.Vectorize(raster, kInk, everywhere, polygons);
    Panel(file, 0, raster, polygons, "along the pixels");

    HvGC gc;
    gc.flatness = 0.5;
    HvPath2f near(0);
    vectorizer.VectorizeAndFit(raster, kInk, everywhere, gc, near);
    Panel(file, 1, raster, near, "within half a pixel");

    gc.flatness = 1.0;
    HvPath2f smooth(0);
    vectorizer.VectorizeAndFit(raster, kInk, everywhere, gc, smooth);
    Panel(file, 2, raster, smooth, "within a pixel");

    std::fprintf(file, "</svg>\n");
    return std::fclose(file) == 0 ? 0 : 1;
}
