// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A picture that an example draws, as an SVG file.

#ifndef EXAMPLES_SUPPORT_SVGPAGE_H
#define EXAMPLES_SUPPORT_SVGPAGE_H

#include <hv/hv.h>

#include <cstdio>

/// Writes shapes into a file as they are drawn. A style is what stands in the element:
/// "stroke='red'".
class SvgPage {
public:
    /// Begins a white page of `width` by `height` pixels; `style` holds for all that is drawn.
    SvgPage(char const* file, int width, int height, char const* style = "");
    SvgPage(SvgPage const&) = delete;
    SvgPage& operator=(SvgPage const&) = delete;
    ~SvgPage();

    /// Ends the page. False, with a line that begins with the example's name, when the file could
    /// not be written.
    bool Close(char const* example);

    /// As std::fprintf.
    void Print(char const* format, ...);
    /// Draws a path, its place (0, 0) at `origin`.
    void Path(HvPath2f const& path, HvPoint2<double> const& origin, char const* style);
    void Dot(HvPoint2<double> const& place, double radius, char const* colour);
    void Text(HvPoint2<double> const& place, char const* text);

private:
    char const* const name_;
    std::FILE* file_;
};

#endif
