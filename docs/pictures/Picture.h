// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A picture of a page, as an SVG file.

#ifndef DOCS_PICTURES_PICTURE_H
#define DOCS_PICTURES_PICTURE_H

#include <hv/hv.h>

#include <cstdio>

constexpr char const* kBlue = "#2060a0";
constexpr char const* kRed = "#c04020";
constexpr char const* kGreen = "#208040";
constexpr char const* kGrey = "#999";

/// Writes what is drawn into a file, in pixels from the upper left corner.
class Picture {
public:
    using Point = HvPoint2<double>;

    /// A white page; `file` stays the caller's.
    Picture(std::FILE* file, int width, int height);
    Picture(Picture const&) = delete;
    Picture& operator=(Picture const&) = delete;
    ~Picture();

    /// Draws polylines, each to a point with an end tag; edges that start with flag 0 are dashed.
    void Lines(HvPoint2dArray const& points, HvPointTagArray const& tags, HvBoolArray const& flags,
               char const* colour);
    /// Draws one polyline.
    void Line(HvPoint2dArray const& points, char const* colour);
    void Line(Point const& a, Point const& b, char const* colour);
    /// A cubic, within a tenth of a pixel.
    void Cubic(Point const* cubic, char const* colour);
    /// Fills the inside of an outline, by winding.
    void Region(HvPath2f const& outline, char const* colour);
    /// Draws an outline.
    void Outline(HvPath2f const& outline, char const* colour);
    void Dot(Point const& place, double radius, char const* colour);
    void Ring(Point const& place, double radius, char const* colour);
    void Box(HvExtent2<double> const& box, char const* colour);
    void Text(double x, double y, char const* text);
    /// Shows a raster at (x, y), each pixel a square of side `size`; 0 is white, 255 black.
    void Pixels(HvUByteRaster const& raster, double x, double y, double size);

private:
    void Data(HvPath2f const& outline);

    std::FILE* const file_;
};

// The pictures.
void DrawBezier(std::FILE* file);
void DrawCurves(std::FILE* file);
void DrawFills(std::FILE* file);
void DrawStrokes(std::FILE* file);

#endif
