// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// hv curve: the animated numbers of an animation file as curves.

#ifndef HV_TOOLS_COMMANDS_CURVE_COMMAND_H
#define HV_TOOLS_COMMANDS_CURVE_COMMAND_H

#include <tools/tool.h>

namespace CLI {
class App;
}

/// Adds the subcommand to `app`. When it runs it stores its exit code in `result`, or throws
/// ToolError.
void CurveCommand_Add(CLI::App& app, ToolStreams const& streams, int& result);

#endif
