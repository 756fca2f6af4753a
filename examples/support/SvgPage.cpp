// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A picture that an example draws, as an SVG file.

#include "SvgPage.h"

#include <cstdarg>

SvgPage::SvgPage(char const* file, int width, int height, char const* style)
    : name_(file), file_(std::fopen(file, "w"))
{
    Print("<svg xmlns='http://www.w3.org/2000/svg' width='%d' height='%d' %s>\n"
          "<rect width='%d' height='%d' fill='white'/>\n",
          width, height, style, width, height);
}

SvgPage::~SvgPage()
{
    if (file_ != nullptr) {
        std::fclose(file_);
    }
}

void SvgPage::Print(char const* format, ...)
{
    if (file_ == nullptr) {
        return;
    }
    std::va_list values;
    va_start(values, format);
    std::vfprintf(file_, format, values);
    va_end(values);
}

bool SvgPage::Close(char const* example)
{
    Print("</svg>\n");
    bool const isWritten = file_ != nullptr && std::fclose(file_) == 0;
    file_ = nullptr;
    if (!isWritten) {
        std::fprintf(stderr, "%s: cannot write %s\n", example, name_);
    }
    return isWritten;
}

void SvgPage::Path(HvPath2f const& path, HvPoint2<double> const& origin, char const* style)
{
    constexpr double kFlatness = 0.1;  // pixels
    HvPoint2fArray points;
    HvPointTagArray tags;
    path.AltFlatten(kFlatness, points, tags);
    Print("<path %s d='", style);
    for (unsigned int i = 0; i < points.Size(); ++i) {
        Print("%c%.1f,%.1f", tags[i] == HvPointTagStart ? 'M' : 'L', origin.x + points[i].x,
              origin.y + points[i].y);
    }
    Print("'/>\n");
}

void SvgPage::Dot(HvPoint2<double> const& place, double radius, char const* colour)
{
    Print("<circle cx='%.2f' cy='%.2f' r='%g' fill='%s' stroke='none'/>\n", place.x, place.y,
          radius, colour);
}

void SvgPage::Text(HvPoint2<double> const& place, char const* text)
{
    Print("<text x='%g' y='%g' fill='#222' stroke='none'>%s</text>\n", place.x, place.y, text);
}
