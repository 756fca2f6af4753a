// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A picture of a page, as an SVG file.

#include "Picture.h"

Picture::Picture(std::FILE* file, int width, int height) : file_(file)
{
    std::fprintf(file_,
                 "<svg xmlns='http://www.w3.org/2000/svg' width='%d' height='%d' fill='none' "
                 "stroke-width='1.6' font-family='sans-serif' font-size='13'>\n"
                 "<rect width='%d' height='%d' fill='white'/>\n",
                 width, height, width, height);
}

Picture::~Picture()
{
    std::fprintf(file_, "</svg>\n");
}

void Picture::Lines(HvPoint2dArray const& points, HvPointTagArray const& tags,
                    HvBoolArray const& flags, char const* colour)
{
    // A stroke for what is continuous, and a dashed one for each jump.
    for (unsigned int i = 0; i + 1 < points.Size(); ++i) {
        if (tags[i] != HvPointTagEnd) {
            bool const isJump = flags[i] == 0;
            std::fprintf(file_, "<path stroke='%s'%s d='M%.2f %.2fL%.2f %.2f'/>\n", colour,
                         isJump ? " stroke-dasharray='2 3'" : "", points[i].x, points[i].y,
                         points[i + 1].x, points[i + 1].y);
        }
    }
}

void Picture::Line(HvPoint2dArray const& points, char const* colour)
{
    std::fprintf(file_, "<path stroke='%s' d='", colour);
    for (unsigned int i = 0; i < points.Size(); ++i) {
        std::fprintf(file_, "%c%.2f %.2f", i == 0 ? 'M' : 'L', points[i].x, points[i].y);
    }
    std::fprintf(file_, "'/>\n");
}

void Picture::Line(Point const& a, Point const& b, char const* colour)
{
    HvPoint2dArray ends;
    ends.Add(a);
    ends.Add(b);
    Line(ends, colour);
}

void Picture::Cubic(Point const* cubic, char const* colour)
{
    HvPoint2dArray points;
    HvBezierTool_FlattenCubic2d(cubic, 0.1, &points, 0);
    Line(points, colour);
}

void Picture::Data(HvPath2f const& outline)
{
    HvPoint2fArray points;
    HvPointTagArray tags;
    outline.AltFlatten(0.1, points, tags);
    for (unsigned int i = 0; i < points.Size(); ++i) {
        std::fprintf(file_, "%c%.2f %.2f", tags[i] == HvPointTagStart ? 'M' : 'L',
                     static_cast<double>(points[i].x), static_cast<double>(points[i].y));
    }
}

void Picture::Region(HvPath2f const& outline, char const* colour)
{
    std::fprintf(file_, "<path fill='%s' d='", colour);
    Data(outline);
    std::fprintf(file_, "'/>\n");
}

void Picture::Outline(HvPath2f const& outline, char const* colour)
{
    std::fprintf(file_, "<path stroke='%s' d='", colour);
    Data(outline);
    std::fprintf(file_, "'/>\n");
}

void Picture::Dot(Point const& place, double radius, char const* colour)
{
    std::fprintf(file_, "<circle cx='%.2f' cy='%.2f' r='%g' fill='%s'/>\n", place.x, place.y,
                 radius, colour);
}

void Picture::Ring(Point const& place, double radius, char const* colour)
{
    std::fprintf(file_, "<circle cx='%.2f' cy='%.2f' r='%g' fill='white' stroke='%s'/>\n", place.x,
                 place.y, radius, colour);
}

void Picture::Box(HvExtent2<double> const& box, char const* colour)
{
    std::fprintf(file_, "<rect x='%.2f' y='%.2f' width='%.2f' height='%.2f' stroke='%s'/>\n",
                 box.min.x, box.min.y, box.max.x - box.min.x, box.max.y - box.min.y, colour);
}

void Picture::Text(double x, double y, char const* text)
{
    std::fprintf(file_, "<text x='%g' y='%g' fill='#222'>%s</text>\n", x, y, text);
}

void Picture::Pixels(HvUByteRaster const& raster, double x, double y, double size)
{
    for (int row = 0; row < raster.height; ++row) {
        unsigned char const* const pixels = raster.data + row * raster.width;
        // Neighbours of one value are one rectangle.
        for (int begin = 0; begin < raster.width;) {
            int end = begin + 1;
            while (end < raster.width && pixels[end] == pixels[begin]) {
                ++end;
            }
            int const grey = 255 - pixels[begin];
            if (grey != 255) {
                std::fprintf(
                    file_, "<rect x='%g' y='%g' width='%g' height='%g' fill='#%02x%02x%02x'/>\n",
                    x + begin * size, y + row * size, (end - begin) * size, size, grey, grey, grey);
            }
            begin = end;
        }
    }
    double const right = x + raster.width * size;
    double const bottom = y + raster.height * size;
    Box({x, y, right, bottom}, kGrey);
}
