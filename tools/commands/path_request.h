// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What `hv curve` is asked about motion paths.

#ifndef HV_TOOLS_COMMANDS_PATH_REQUEST_H
#define HV_TOOLS_COMMANDS_PATH_REQUEST_H

#include <tools/lottie/LottieDocument.h>

#include <cstddef>
#include <optional>
#include <string>

namespace CLI {
class App;
class Option;
}  // namespace CLI

/// The options of a motion path.
struct PathRequest {
    std::optional<std::size_t> number;
    std::string plane = "xy";
    std::optional<double> ticks;

    bool IsAsked() const { return number.has_value(); }
};

/// Adds the options to `command`; they exclude the option `track`.
void PathRequest_AddOptions(CLI::App& command, PathRequest& request, CLI::Option* track);

/// The path that was asked for; throws ToolError when the document of `file` has none of that
/// number.
LottiePath const& PathRequest_Find(PathRequest const& request, LottieDocument const& document,
                                   std::string const& file);

/// Draws it into the SVG file `plot`.
void PathRequest_Plot(PathRequest const& request, LottiePath const& path, std::string const& plot);

#endif
