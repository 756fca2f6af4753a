// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What all pictures look like.

#include <tools/plot/plot_style.h>

#include <algorithm>

namespace {

constexpr char kSheet[] =
    "text { font-family: Inter, 'Segoe UI', 'DejaVu Sans', Helvetica, Arial, sans-serif; "
    "font-size: 12px; fill: #475569; }\n"
    ".page { fill: #ffffff; }\n"
    ".field { fill: #ffffff; }\n"
    ".outside { fill: #f1f5f9; }\n"
    ".frame { fill: none; stroke: #cbd5e1; }\n"
    ".grid { stroke: #e2e8f0; }\n"
    ".zero { stroke: #94a3b8; }\n"
    ".curve { fill: none; stroke: #2563eb; stroke-width: 2.5; stroke-linecap: round; "
    "stroke-linejoin: round; }\n"
    ".jump { fill: none; stroke: #2563eb; stroke-width: 1.6; stroke-dasharray: 6 4; }\n"
    ".arm { stroke: #d97706; stroke-width: 1.3; }\n"
    ".handle { fill: #ffffff; stroke: #d97706; stroke-width: 1.6; }\n"
    ".key { fill: #0f172a; stroke: #ffffff; stroke-width: 1.5; }\n"
    ".left { fill: #ffffff; stroke: #0f172a; stroke-width: 1.5; }\n"
    ".title { font-size: 18px; font-weight: 600; fill: #0f172a; }\n"
    ".low { text-anchor: middle; }\n"
    ".side { text-anchor: end; }\n"
    ".axis { font-weight: 600; fill: #334155; }\n";

}  // namespace

char const* PlotStyle_Sheet()
{
    return kSheet;
}

std::string PlotStyle_Shortened(std::string const& text, std::size_t most)
{
    if (text.size() <= most) {
        return text;
    }
    // Bytes 10xxxxxx continue a letter of UTF-8: no cut goes before one.
    auto const atLetter = [&text](std::size_t at) {
        while (at < text.size() && (static_cast<unsigned char>(text[at]) & 0xc0) == 0x80) {
            ++at;
        }
        return at;
    };
    std::size_t const half = most / 2;
    return text.substr(0, atLetter(half)) + "..." + text.substr(atLetter(text.size() - half + 3));
}

double PlotStyle_LeftEdge(NiceTicks const& ticks, double least)
{
    std::size_t longest = 0;
    for (int i = 0; i < ticks.Count(); ++i) {
        longest = std::max(longest, ticks.Label(i).size());
    }
    return std::max(least, static_cast<double>(longest) * kPlotDigitWidth + 2 * kPlotLabelGap);
}

void PlotStyle_Pad(double& low, double& high, double share)
{
    NiceTicks_Widen(low, high);
    double const margin = (high - low) * share;
    low -= margin;
    high += margin;
}
