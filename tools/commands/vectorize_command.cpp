// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// hv vectorize: a picture as an SVG file.

#include <tools/ProgressBar.h>
#include <tools/ToolError.h>
#include <tools/commands/vectorize_command.h>
#include <tools/files.h>
#include <tools/number_text.h>
#include <tools/paint/png_file.h>
#include <tools/svg/path_text.h>

#include <hv/raster/HvUByteRaster.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvPath2f.h>
#include <hv/vectorize/HvVectorizer.h>

#include <CLI/CLI.hpp>

#include <memory>
#include <optional>
#include <ostream>
#include <string>

namespace {

/// What is darker is ink, unless it is said otherwise: half way from black to white.
constexpr double kThreshold = 128.0;
/// The widest picture that the library traces.
constexpr int kMostColumns = 65533;
/// Reading, tracing, writing.
constexpr std::size_t kSteps = 3;

/// What was asked for.
struct Request {
    std::string file;
    std::string out;
    std::optional<int> value;
    double threshold = kThreshold;
    std::optional<double> fit;
    double area = 0.0;
    double perimeter = 0.0;
};

void RefuseBadNumbers(Request const& request)
{
    int const value = request.value.value_or(0);
    if (value < 0 || value > 255) {
        throw ToolError("--value must lie between 0 and 255");
    }
    if (!(request.threshold >= 0.0 && request.threshold <= 256.0)) {
        throw ToolError("--threshold must lie between 0 and 256");
    }
    if (!(request.fit.value_or(0.0) >= 0.0)) {
        throw ToolError("--fit must not be below 0");
    }
    if (!(request.area >= 0.0 && request.perimeter >= 0.0)) {
        throw ToolError("--area and --perimeter must not be below 0");
    }
}

/// The picture with 1 where it is ink and 0 elsewhere.
HvUByteRaster InkOf(Request const& request)
{
    GreyImage const image = PngFile_ReadGrey(request.file);
    if (image.width > kMostColumns) {
        throw ToolError(request.file + ": wider than " + std::to_string(kMostColumns) + " pixels");
    }
    HvUByteRaster raster(image.width, image.height, 0);
    for (std::size_t i = 0; i < image.pixels.size(); ++i) {
        bool const isInk =
            request.value ? image.pixels[i] == *request.value : image.pixels[i] < request.threshold;
        raster.data[i] = isInk ? 1 : 0;
    }
    return raster;
}

void Trace(Request const& request, HvUByteRaster const& raster, HvPath2f& path)
{
    HvVectorizer const vectorizer(request.perimeter, request.area);
    HvExtent2<float> const everywhere;
    if (request.fit) {
        HvGC gc;
        gc.flatness = *request.fit;
        vectorizer.VectorizeAndFit(raster, 1, everywhere, gc, path);
    } else {
        vectorizer.Vectorize(raster, 1, everywhere, path);
    }
}

std::string DocumentOf(HvUByteRaster const& raster, HvPath2f const& path)
{
    std::string const width = std::to_string(raster.width);
    std::string const height = std::to_string(raster.height);
    return "<svg xmlns='http://www.w3.org/2000/svg' width='" + width + "' height='" + height +
           "' viewBox='0 0 " + width + " " + height + "'>\n<path fill-rule='evenodd' d='" +
           PathText_Of(path) + "'/>\n</svg>\n";
}

int Run(Request const& request, ToolStreams const& streams)
{
    RefuseBadNumbers(request);
    HvPath2f path(0);
    {
        ProgressBar progress(streams.err, streams.showProgress, "vectorizing", kSteps);
        HvUByteRaster const raster = InkOf(request);
        progress.Advance(1);
        Trace(request, raster, path);
        progress.Advance(1);
        File_Write(request.out, DocumentOf(raster, path));
        progress.Advance(1);
    }
    streams.out << request.out << ": " << NumberText_Counted(path.NumSubpaths(), "contour") << ", "
                << NumberText_Counted(path.NumSegments(), "segment") << "\n";
    return ToolExitDone;
}

}  // namespace

void VectorizeCommand_Add(CLI::App& app, ToolStreams const& streams, int& result)
{
    CLI::App* command =
        app.add_subcommand("vectorize", "Turn the dark parts of a picture into outlines.");
    command->footer("Example: hv vectorize scan.png --threshold 100 --fit 0.5 --out scan.svg");
    auto const request = std::make_shared<Request>();
    command->add_option("FILE", request->file, "the picture, in PNG; transparent counts as white")
        ->required();
    command->add_option("--out", request->out, "the drawing, in SVG")->required();
    CLI::Option* const value = command->add_option("--value", request->value,
                                                   "trace the pixels of this brightness, 0 to 255");
    command
        ->add_option("--threshold", request->threshold,
                     "trace the pixels darker than this; initially " + NumberText_Exact(kThreshold))
        ->excludes(value);
    command->add_option("--fit", request->fit,
                        "draw curves within this many pixels; initially lines along the pixels");
    command->add_option("--area", request->area, "leave out contours of less area, in pixels");
    command->add_option("--perimeter", request->perimeter,
                        "leave out contours of less perimeter, in pixels");
    command->callback([request, &streams, &result] { result = Run(*request, streams); });
}
