// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What pictures of two axes are made of: the field with its grid, the legend above it.

#include <tools/plot/PlotField.h>

namespace {

/// Feet of the titles, from the top of the page.
constexpr double kTitleLine = 36;
constexpr double kSubtitleLine = 58;
/// From the field down to the foot of the name of the axis below it.
constexpr double kAxisNameDrop = 46;
/// Ticks at the edges may lie beside them by rounding; those that lie farther outside are left out.
constexpr double kEdgePixels = 0.01;

/// From a word of the legend back to its sample.
constexpr double kMarkGap = 12;
constexpr double kLineGap = 8;
constexpr double kLineStart = 34;

}  // namespace

void PlotField::DrawGround()
{
    svg_.Rect("field", box_.left, box_.top, box_.Width(), box_.Height());
}

void PlotField::DrawUpright(double x, std::string const& label)
{
    if (x < box_.left - kEdgePixels || x > box_.right + kEdgePixels) {
        return;  // a long label has moved the left edge
    }
    svg_.Line("grid", Point(x, box_.top), Point(x, box_.bottom));
    svg_.Text("low", Point(x, box_.bottom + kPlotLabelGap + 2 * kPlotDigitDrop), label);
}

void PlotField::DrawLevel(double y, std::string const& label, char const* cls)
{
    svg_.Line(cls, Point(box_.left, y), Point(box_.right, y));
    svg_.Text("side", Point(box_.left - kPlotLabelGap, y + kPlotDigitDrop), label);
}

void PlotField::DrawFrame()
{
    svg_.Rect("frame", box_.left, box_.top, box_.Width(), box_.Height());
}

void PlotField::DrawAxisNames(std::string const& across, std::string const& up)
{
    svg_.Text("low axis", Point((box_.left + box_.right) / 2, box_.bottom + kAxisNameDrop), across);
    svg_.Text("side axis", Point(box_.left - kPlotLabelGap, box_.LegendLine() + kPlotDigitDrop),
              up);
}

void PlotField::DrawTitles(std::string const& title, std::size_t longestTitle,
                           std::string const& subtitle, std::size_t longestSubtitle)
{
    svg_.Text("title", Point(box_.left, kTitleLine), PlotStyle_Shortened(title, longestTitle));
    svg_.Text("", Point(box_.left, kSubtitleLine), PlotStyle_Shortened(subtitle, longestSubtitle));
}

void PlotLegend::AddHandle(std::string const& word, double wordWidth)
{
    Add(word, wordWidth, 56, [this](Point const& at) {
        Point const handle = at - Point(kMarkGap, 0);
        svg_.Line("arm", handle - Point(20, 0), handle);
        svg_.Circle("handle", handle, kPlotHandleRadius);
    });
}

void PlotLegend::AddLine(char const* cls, std::string const& word, double wordWidth)
{
    Add(word, wordWidth, 56, [this, cls](Point const& at) {
        svg_.Line(cls, at - Point(kLineStart, 0), at - Point(kLineGap, 0));
    });
}

void PlotLegend::AddKey(std::string const& word, double wordWidth)
{
    Add(word, wordWidth, 38,
        [this](Point const& at) { svg_.Diamond("key", at - Point(kMarkGap, 0), kPlotKeyRadius); });
}
