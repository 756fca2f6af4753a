// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// hv morph: from one drawing's outline to another's.

#ifndef HV_TOOLS_COMMANDS_MORPH_COMMAND_H
#define HV_TOOLS_COMMANDS_MORPH_COMMAND_H

#include <tools/tool.h>

namespace CLI {
class App;
}

/// Adds the subcommand to `app`. When it runs it stores its exit code in `result`, or throws
/// ToolError.
void MorphCommand_Add(CLI::App& app, ToolStreams const& streams, int& result);

#endif
