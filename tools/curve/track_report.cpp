// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What the tool tells of an animation and its tracks.

#include <tools/curve/track_curve.h>
#include <tools/curve/track_report.h>
#include <tools/number_text.h>

#include <algorithm>
#include <array>
#include <ostream>

namespace {

/// Significant digits of numbers in the table; exact ones are had by evaluating.
constexpr int kTableDigits = 6;

constexpr std::size_t kColumns = 6;
using Row = std::array<std::string, kColumns>;

std::string Range(double low, double high)
{
    std::string const from = NumberText_Rounded(low, kTableDigits);
    std::string const to = NumberText_Rounded(high, kTableDigits);
    return from == to ? from : from + " to " + to;
}

std::string ExtrapolationName(HvBaseFCurve::ExtrapolationMethod method)
{
    switch (method) {
    case HvBaseFCurve::ConstantExtrapolation:
        return "constant";
    case HvBaseFCurve::LinearExtrapolation:
        return "linear";
    case HvBaseFCurve::CycleExtrapolation:
        return "cycle";
    case HvBaseFCurve::RelativeCycleExtrapolation:
        return "relative cycle";
    }
    return "unknown";
}

Row RowOf(std::size_t number, LottieTrack const& track)
{
    auto const [low, high] = std::minmax_element(
        track.keys.begin(), track.keys.end(),
        [](LottieKey const& a, LottieKey const& b) { return a.value < b.value; });
    return {std::to_string(number),
            std::to_string(track.keys.size()),
            Range(track.keys.front().time, track.keys.back().time),
            Range(low->value, high->value),
            ExtrapolationName(TrackCurve_Build(track)->GetExtrapolationMethod()),
            track.path + (track.name.empty() ? "" : "  (" + track.name + ")")};
}

/// The rows with each column as wide as its widest cell; numbers, the first two, to the right.
void WriteTable(std::ostream& out, std::vector<Row> const& rows)
{
    std::array<std::size_t, kColumns> widths{};
    for (Row const& row : rows) {
        for (std::size_t i = 0; i < kColumns; ++i) {
            widths[i] = std::max(widths[i], row[i].size());
        }
    }
    for (Row const& row : rows) {
        for (std::size_t i = 0; i < kColumns; ++i) {
            std::string const padding(widths[i] - row[i].size(), ' ');
            bool const isLast = i + 1 == kColumns;
            out << "  " << (i < 2 ? padding + row[i] : row[i] + (isLast ? "" : padding));
        }
        out << "\n";
    }
}

}  // namespace

void TrackReport_List(std::ostream& out, std::string const& file, LottieDocument const& document)
{
    out << file << ":";
    if (!document.name.empty()) {
        out << " \"" << document.name << "\",";
    }
    if (document.frameRate > 0.0) {
        out << " frames " << Range(document.firstFrame, document.lastFrame) << " at "
            << NumberText_Rounded(document.frameRate, kTableDigits) << " a second,";
    }
    out << " " << NumberText_Counted(document.tracks.size(), "animated track") << "\n";
    if (!document.tracks.empty()) {
        std::vector<Row> rows = {
            {"track", "keys", "frames", "values at keys", "beyond keys", "place"}};
        for (LottieTrack const& track : document.tracks) {
            rows.push_back(RowOf(rows.size() - 1, track));
        }
        WriteTable(out, rows);
    }
    for (LottieNote const& note : document.notes) {
        out << "note: " << note.path << ": " << note.text << "\n";
    }
}

void TrackReport_Evaluate(std::ostream& out, HvStdFCurve const& curve,
                          std::vector<double> const& times)
{
    for (double const time : times) {
        double const value = curve.Eval(time, 0);
        double const left = curve.EvalLeft(time, 0);
        out << NumberText_Exact(time) << " " << NumberText_Exact(value);
        if (left < value || left > value) {
            out << " (from the left " << NumberText_Exact(left) << ")";
        }
        out << "\n";
    }
}
