// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What pictures of two axes are made of: the field with its grid, the legend above it.

#ifndef HV_TOOLS_PLOT_PLOTFIELD_H
#define HV_TOOLS_PLOT_PLOTFIELD_H

#include <tools/plot/NiceTicks.h>
#include <tools/plot/SvgWriter.h>
#include <tools/plot/plot_style.h>

#include <string>

/// The edges of a field, in pixels.
struct PlotBox {
    double left;
    double top;
    double right;
    double bottom;

    double Width() const { return right - left; }
    double Height() const { return bottom - top; }
    /// Middle of the line above the field, with the legend and the name of the axis that goes up.
    double LegendLine() const { return top - 14; }
};

/// A field with a grid at the ticks of its axes, which have numbers and names. Borrows all that it
/// is given.
class PlotField {
public:
    using Point = SvgWriter::Point;

    PlotField(SvgWriter& svg, PlotBox const& box, NiceTicks const& across, NiceTicks const& up)
        : svg_(svg), box_(box), across_(across), up_(up)
    {
    }

    void DrawGround();
    /// Draws a line at each tick, and the frame. `Point toPixel(Point)` maps the axes to pixels;
    /// the line of 0 on the axis that goes up has the class `zero`.
    template <class ToPixel>
    void DrawGrid(ToPixel const& toPixel, char const* zero)
    {
        for (int i = 0; i < across_.Count(); ++i) {
            DrawUpright(toPixel(Point(across_.Value(i), 0)).x, across_.Label(i));
        }
        for (int i = 0; i < up_.Count(); ++i) {
            DrawLevel(toPixel(Point(0, up_.Value(i))).y, up_.Label(i),
                      up_.Value(i) == 0.0 ? zero : "grid");
        }
        DrawFrame();
    }
    void DrawAxisNames(std::string const& across, std::string const& up);
    /// The two lines at the top of the page, each shortened to so many bytes.
    void DrawTitles(std::string const& title, std::size_t longestTitle, std::string const& subtitle,
                    std::size_t longestSubtitle);

private:
    void DrawUpright(double x, std::string const& label);
    void DrawLevel(double y, std::string const& label, char const* cls);
    void DrawFrame();

    SvgWriter& svg_;
    PlotBox const& box_;
    NiceTicks const& across_;
    NiceTicks const& up_;
};

/// Samples of what is in a picture, each with a word, from the right end of a field leftwards.
/// Widths of words and samples, with the gaps before them, are in pixels.
class PlotLegend {
public:
    using Point = SvgWriter::Point;

    PlotLegend(SvgWriter& svg, PlotBox const& box) : svg_(svg), at_(box.right, box.LegendLine()) {}

    void AddHandle(std::string const& word, double wordWidth);
    /// A line of a class, such as "curve" and "jump".
    void AddLine(char const* cls, std::string const& word, double wordWidth);
    void AddKey(std::string const& word, double wordWidth);
    /// `sample(Point)` draws what stands before the word, which begins at the point.
    template <class Sample>
    void Add(std::string const& word, double wordWidth, double sampleWidth, Sample const& sample)
    {
        at_.x -= wordWidth;
        sample(at_);
        svg_.Text("", at_ + Point(0, kPlotDigitDrop), word);
        at_.x -= sampleWidth;
    }

private:
    SvgWriter& svg_;
    Point at_;
};

#endif
