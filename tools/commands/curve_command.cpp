// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// hv curve: the animated numbers of an animation file as curves.

#include <tools/ProgressBar.h>
#include <tools/ToolError.h>
#include <tools/commands/curve_command.h>
#include <tools/curve/track_curve.h>
#include <tools/curve/track_report.h>
#include <tools/curve/track_reshape.h>
#include <tools/files.h>
#include <tools/lottie/LottieDocument.h>
#include <tools/number_text.h>
#include <tools/plot/curve_plot.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace {

/// A check passes up to this difference: what rounding may do to values of some thousands.
constexpr double kCheckTolerance = 1e-9;
/// More samples than anybody reads are taken for a slip of the step.
constexpr double kMostSamples = 1e8;
/// The most keys that a value is smoothed over.
constexpr unsigned int kMostTaps = 999;
/// Samples evaluated under one lock, and between two looks at the clock.
constexpr std::size_t kSampleBatch = 4096;

/// What was asked for.
struct Request {
    std::string file;
    std::optional<std::size_t> track;
    std::string plot;
    std::string csv;
    double step = 1.0;
    std::optional<double> from;
    std::optional<double> to;
    std::vector<double> evaluate;
    bool check = false;
    TrackReshape reshape;
    std::string save;
};

/// A track that was asked for, by its number, and its curve.
struct NumberedCurve {
    std::size_t number;
    std::unique_ptr<HvStdFCurve> curve;
};

LottieDocument ReadDocument(std::string const& file)
{
    std::string const text = File_Read(file);
    try {
        return LottieDocument_Parse(text);
    } catch (ToolError const& error) {
        throw ToolError(file + ": " + error.what());
    }
}

void RefuseUnknownTrack(Request const& request, LottieDocument const& document)
{
    std::size_t const count = document.tracks.size();
    if (count == 0) {
        throw ToolError(request.file + ": has no animated tracks");
    }
    if (*request.track >= count) {
        throw ToolError(request.file + ": has no track " + std::to_string(*request.track) +
                        "; its tracks are 0 to " + std::to_string(count - 1));
    }
}

/// The curve of the track that was asked for, or of all tracks.
std::vector<NumberedCurve> CurvesOf(Request const& request, LottieDocument const& document)
{
    std::vector<NumberedCurve> curves;
    for (std::size_t i = 0; i < document.tracks.size(); ++i) {
        if (!request.track || *request.track == i) {
            curves.push_back({i, TrackCurve_Build(document.tracks[i])});
        }
    }
    return curves;
}

/// Reshapes the curves, and tells what was reduced. Nothing is told when `quiet`.
void Reshape(Request const& request, LottieDocument const& document,
             std::vector<NumberedCurve> const& curves, bool quiet, ToolStreams const& streams)
{
    ProgressBar progress(streams.err, streams.showProgress, "reshaping", curves.size());
    std::vector<TrackReduction> reductions;
    for (NumberedCurve const& numbered : curves) {
        reductions.push_back(TrackReshape_Apply(request.reshape, *numbered.curve));
        progress.Advance(1);
    }
    if (request.reshape.reduceTolerance && !quiet) {
        std::vector<TrackReport_Reduced> reduced;
        for (std::size_t i = 0; i < curves.size(); ++i) {
            reduced.push_back(
                {curves[i].number, &document.tracks[curves[i].number], reductions[i]});
        }
        TrackReport_Reductions(streams.out, reduced);
    }
}

/// Writes the archives of the curves, one behind another.
void Save(std::string const& path, std::vector<NumberedCurve> const& curves)
{
    OutputFile file(path);
    std::string bytes;
    for (NumberedCurve const& numbered : curves) {
        // The curve does not write every byte that it counts; what it leaves is zero here.
        bytes.assign(numbered.curve->GetBufferSize(), '\0');
        numbered.curve->WriteToBuffer(bytes.data());
        file.Stream() << bytes;
    }
    file.Close();
}

std::string Subtitle(LottieTrack const& track)
{
    std::string const first = NumberText_Rounded(track.keys.front().time, 6);
    std::string const last = NumberText_Rounded(track.keys.back().time, 6);
    return track.path + ", " + NumberText_Counted(track.keys.size(), "key") +
           (first == last ? ", frame " + first : ", frames " + first + " to " + last);
}

void Plot(Request const& request, LottieTrack const& track, HvStdFCurve const& curve)
{
    CurvePlotRange range = CurvePlot_WholeRange(curve);
    range.from = request.from.value_or(range.from);
    range.to = request.to.value_or(range.to);
    CurvePlotLabels labels;
    labels.title = track.name.empty() ? track.path : track.name;
    labels.subtitle = Subtitle(track);
    labels.parameterAxis = "frame";
    labels.valueAxis = "value";
    File_Write(request.plot, CurvePlot_Draw(curve, range, labels));
}

/// Writes one line for each step from `from` to `to`, and for `to` itself.
void WriteSamples(std::ostream& out, HvStdFCurve const& curve, double from, double to, double step,
                  ToolStreams const& streams)
{
    double const steps = std::floor((to - from) / step);
    if (!(steps < kMostSamples)) {
        throw ToolError("--step " + NumberText_Exact(step) + " would give more than " +
                        NumberText_Rounded(kMostSamples, 1) + " samples");
    }
    std::size_t const whole = static_cast<std::size_t>(steps) + 1;
    bool const endsBetween = from + steps * step < to;
    std::size_t const count = whole + (endsBetween ? 1 : 0);
    ProgressBar progress(streams.err, streams.showProgress, "sampling", count);
    out << "frame,value\n";
    std::vector<double> times;
    std::vector<double> values;
    for (std::size_t start = 0; start < count; start += kSampleBatch) {
        std::size_t const batch = std::min(kSampleBatch, count - start);
        times.resize(batch);
        values.resize(batch);
        for (std::size_t i = 0; i < batch; ++i) {
            times[i] = start + i < whole ? from + static_cast<double>(start + i) * step : to;
        }
        curve.EvalMany(times.data(), static_cast<unsigned int>(batch), values.data(), 0);
        for (std::size_t i = 0; i < batch; ++i) {
            out << NumberText_Exact(times[i]) << "," << NumberText_Exact(values[i]) << "\n";
        }
        progress.Advance(batch);
    }
}

void Sample(Request const& request, LottieTrack const& track, HvStdFCurve const& curve,
            ToolStreams const& streams)
{
    double const from = request.from.value_or(track.keys.front().time);
    double const to = std::max(from, request.to.value_or(track.keys.back().time));
    if (request.csv == "-") {
        WriteSamples(streams.out, curve, from, to, request.step, streams);
        return;
    }
    OutputFile file(request.csv);
    WriteSamples(file.Stream(), curve, from, to, request.step, streams);
    file.Close();
}

/// Evaluates every track at its keys. The exit code.
int Check(LottieDocument const& document, ToolStreams const& streams)
{
    ProgressBar progress(streams.err, streams.showProgress, "checking", document.tracks.size());
    double largest = 0.0;
    std::size_t keys = 0;
    std::string worst;
    for (LottieTrack const& track : document.tracks) {
        double const error = TrackCurve_LargestError(track, *TrackCurve_Build(track));
        if (error > largest) {
            largest = error;
            worst = track.path;
        }
        keys += track.keys.size();
        progress.Advance(1);
    }
    streams.out << "checked " << NumberText_Counted(document.tracks.size(), "track") << " with "
                << NumberText_Counted(keys, "key") << ": largest error "
                << NumberText_Rounded(largest, 3) << (worst.empty() ? "" : " in " + worst) << "\n";
    return largest > kCheckTolerance ? ToolExitCheckFailed : ToolExitDone;
}

void RefuseBadNumbers(Request const& request)
{
    if (!(request.step > 0.0)) {
        throw ToolError("--step must be above 0");
    }
    TrackReshape const& reshape = request.reshape;
    if (!(reshape.resampleStep.value_or(1.0) > 0.0)) {
        throw ToolError("--resample must be above 0");
    }
    unsigned int const taps = reshape.smoothTaps.value_or(1);
    if (taps % 2 == 0 || taps > kMostTaps) {
        throw ToolError("--smooth must be an odd number up to " + std::to_string(kMostTaps));
    }
    if (!(reshape.reduceTolerance.value_or(0.0) >= 0.0)) {
        throw ToolError("--reduce must not be below 0");
    }
    bool const isOrdered =
        !request.from || !request.to ||
        (std::isfinite(*request.from) && std::isfinite(*request.to) && *request.from < *request.to);
    bool const isFinite =
        std::isfinite(request.from.value_or(0.0)) && std::isfinite(request.to.value_or(0.0));
    if (!isOrdered || !isFinite) {
        throw ToolError("--from must lie before --to");
    }
}

/// The values, samples and picture of a track that were asked for.
void ShowTrack(Request const& request, LottieTrack const& track, HvStdFCurve const& curve,
               ToolStreams const& streams)
{
    TrackReport_Evaluate(streams.out, curve, request.evaluate);
    if (!request.csv.empty()) {
        Sample(request, track, curve, streams);
    }
    if (!request.plot.empty()) {
        Plot(request, track, curve);
    }
}

int Run(Request const& request, ToolStreams const& streams)
{
    RefuseBadNumbers(request);
    LottieDocument const document = ReadDocument(request.file);
    if (request.check) {
        return Check(document, streams);
    }
    if (request.track) {
        RefuseUnknownTrack(request, document);
    }
    // What prints numbers prints nothing else, so that another program can read it.
    bool const printsNumbers = !request.evaluate.empty() || request.csv == "-";
    if (!printsNumbers) {
        TrackReport_List(streams.out, request.file, document);
    }
    std::vector<NumberedCurve> const curves = CurvesOf(request, document);
    if (request.reshape.IsAsked()) {
        Reshape(request, document, curves, printsNumbers, streams);
    }
    if (!request.save.empty()) {
        Save(request.save, curves);
    }
    if (request.track) {
        ShowTrack(request, document.tracks[*request.track], *curves.front().curve, streams);
    }
    return ToolExitDone;
}

}  // namespace

void CurveCommand_Add(CLI::App& app, ToolStreams const& streams, int& result)
{
    CLI::App* command = app.add_subcommand(
        "curve", "List, draw, sample and check the animated numbers of a Lottie animation.");
    command->footer("Example: hv curve bounce.json --track 0 --plot bounce.svg");
    auto const request = std::make_shared<Request>();
    command->add_option("FILE", request->file, "the animation, in the Lottie JSON format")
        ->required();
    CLI::Option* track = command->add_option("--track", request->track,
                                             "the track to work on, by its number in the list");
    command->add_option("--plot", request->plot, "draw the track into this SVG file")->needs(track);
    CLI::Option* csv =
        command->add_option("--csv", request->csv, "sample the track into this file; - prints it")
            ->needs(track);
    command->add_option("--step", request->step, "frames between two samples; initially 1")
        ->needs(csv);
    command->add_option("--from", request->from, "first frame to draw or sample")->needs(track);
    command->add_option("--to", request->to, "last frame to draw or sample")->needs(track);
    command->add_option("--evaluate", request->evaluate, "print the track's values at these frames")
        ->needs(track);
    TrackReshape& reshape = request->reshape;
    CLI::Option* resample =
        command->add_option("--resample", reshape.resampleStep,
                            "put keys this many frames apart in place of the file's");
    CLI::Option* smooth = command->add_option(
        "--smooth", reshape.smoothTaps, "smooth the values at the keys over this many keys, odd");
    CLI::Option* reduce =
        command->add_option("--reduce", reshape.reduceTolerance,
                            "remove keys that add no more than this share of the values' range");
    CLI::Option* save = command->add_option(
        "--save", request->save, "write the archives of the track, or of all, into this .hvc file");
    command
        ->add_flag("--check", request->check,
                   "compare every track with the file at its keys; fails above 1e-9")
        ->excludes(resample)
        ->excludes(smooth)
        ->excludes(reduce)
        ->excludes(save);
    command->callback([request, &streams, &result] { result = Run(*request, streams); });
}
