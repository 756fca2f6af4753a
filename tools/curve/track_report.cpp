// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What the tool tells of an animation and its tracks.

#include <tools/curve/curve_names.h>
#include <tools/curve/track_curve.h>
#include <tools/curve/track_report.h>
#include <tools/number_text.h>
#include <tools/text_table.h>

#include <algorithm>
#include <ostream>

namespace {

/// Significant digits of numbers in the table; exact ones are had by evaluating.
constexpr int kTableDigits = 6;

constexpr int kErrorDigits = 3;

/// Columns of the table that hold numbers to be compared: track and keys.
constexpr std::size_t kNumberColumns = 2;

std::string Range(double low, double high)
{
    std::string const from = NumberText_Rounded(low, kTableDigits);
    std::string const to = NumberText_Rounded(high, kTableDigits);
    return from == to ? from : from + " to " + to;
}

TextRow RowOf(std::size_t number, LottieTrack const& track)
{
    auto const [low, high] = std::minmax_element(
        track.keys.begin(), track.keys.end(),
        [](LottieKey const& a, LottieKey const& b) { return a.value < b.value; });
    return {std::to_string(number),
            std::to_string(track.keys.size()),
            Range(track.keys.front().time, track.keys.back().time),
            Range(low->value, high->value),
            CurveName_OfExtrapolation(TrackCurve_Build(track)->GetExtrapolationMethod()),
            track.path + (track.name.empty() ? "" : "  (" + track.name + ")")};
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
        std::vector<TextRow> rows = {
            {"track", "keys", "frames", "values at keys", "beyond keys", "place"}};
        for (LottieTrack const& track : document.tracks) {
            rows.push_back(RowOf(rows.size() - 1, track));
        }
        TextTable_Write(out, rows, kNumberColumns);
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

void TrackReport_Reductions(std::ostream& out, std::vector<TrackReport_Reduced> const& tracks)
{
    std::size_t before = 0;
    std::size_t after = 0;
    std::vector<TextRow> rows = {
        {"track", "keys", "reduced to", "largest error", "allowed", "place"}};
    for (TrackReport_Reduced const& reduced : tracks) {
        TrackReduction const& reduction = reduced.reduction;
        before += reduction.keysBefore;
        after += reduction.keysAfter;
        rows.push_back({std::to_string(reduced.number), std::to_string(reduction.keysBefore),
                        std::to_string(reduction.keysAfter),
                        NumberText_Rounded(reduction.largestError, kErrorDigits),
                        NumberText_Rounded(reduction.allowed, kErrorDigits), reduced.track->path});
    }
    if (!tracks.empty()) {
        TextTable_Write(out, rows, rows.front().size() - 1);
    }
    out << "reduced " << NumberText_Counted(before, "key") << " to " << after << "\n";
}
