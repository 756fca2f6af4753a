// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What all pictures look like.

#ifndef HV_TOOLS_PLOT_PLOT_STYLE_H
#define HV_TOOLS_PLOT_PLOT_STYLE_H

#include <tools/plot/NiceTicks.h>

#include <cstddef>
#include <string>

// Pixels that texts and marks take.

constexpr double kPlotKeyRadius = 5.5;
constexpr double kPlotHandleRadius = 3.6;
/// Gap between the field and its numbers, and between these and the page's edge.
constexpr double kPlotLabelGap = 10;
/// Width of a digit, on the safe side of the fonts in the style sheet.
constexpr double kPlotDigitWidth = 7.8;
/// From the middle of a digit down to its foot.
constexpr double kPlotDigitDrop = 4;

// Bytes of text that the lines above the field have room for.

constexpr std::size_t kPlotLongestTitle = 76;
constexpr std::size_t kPlotLongestSubtitle = 120;

/// The style sheet.
char const* PlotStyle_Sheet();

/// `text` with at most so many bytes or one letter more; the middle is left out of a longer one.
std::string PlotStyle_Shortened(std::string const& text, std::size_t most);

/// The left edge of a field beside the labels of these ticks, `least` or more.
double PlotStyle_LeftEdge(NiceTicks const& ticks, double least);

/// Opens a range of an axis, and adds a margin on both ends, a share of it.
void PlotStyle_Pad(double& low, double& high, double share);

#endif
