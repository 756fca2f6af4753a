// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// hv inspect: what a file of archives holds.

#ifndef HV_TOOLS_COMMANDS_INSPECT_COMMAND_H
#define HV_TOOLS_COMMANDS_INSPECT_COMMAND_H

#include <tools/tool.h>

namespace CLI {
class App;
}

/// Adds the subcommand to `app`. When it runs it stores its exit code in `result`, or throws
/// ToolError.
void InspectCommand_Add(CLI::App& app, ToolStreams const& streams, int& result);

#endif
