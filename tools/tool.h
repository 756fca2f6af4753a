// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The command-line tool as a function, for main() and for the tests.

#ifndef HV_TOOLS_TOOL_H
#define HV_TOOLS_TOOL_H

#include <iosfwd>

/// Where a command writes, and whether somebody watches.
struct ToolStreams {
    std::ostream& out;
    std::ostream& err;
    /// Whether `err` is a terminal: long work then shows a progress bar there.
    bool showProgress;
};

/// How the tool ends.
enum ToolExit : int {
    ToolExitDone = 0,         ///< all went well
    ToolExitCheckFailed = 1,  ///< a check that was asked for found a fault
    ToolExitRefused = 2,      ///< the arguments or a file cannot be used; one line says why
    ToolExitLeftOut = 3       ///< all was written, without what a file asks for and is not done
};

/// Runs the tool with the arguments of main() and returns its exit code. Nothing is thrown.
int HvTool_Run(int argc, char const* const* argv, ToolStreams const& streams) noexcept;

#endif
