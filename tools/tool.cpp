// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The tool's subcommands, and how their faults become exit codes.

#include <tools/ToolError.h>
#include <tools/commands/curve_command.h>
#include <tools/commands/fit_command.h>
#include <tools/commands/inspect_command.h>
#include <tools/commands/morph_command.h>
#include <tools/commands/play_command.h>
#include <tools/commands/render_command.h>
#include <tools/commands/vectorize_command.h>
#include <tools/tool.h>

#include <CLI/CLI.hpp>

#include <exception>
#include <new>
#include <ostream>

namespace {

/// One line about what went wrong.
int Refuse(ToolStreams const& streams, char const* reason)
{
    streams.err << "hv: " << reason << "\n";
    return ToolExitRefused;
}

int Run(int argc, char const* const* argv, ToolStreams const& streams)
{
    CLI::App app("Looks into animations, drawings and strokes through the library.", "hv");
    app.require_subcommand(1);
    int result = ToolExitDone;
    CurveCommand_Add(app, streams, result);
    FitCommand_Add(app, streams, result);
    InspectCommand_Add(app, streams, result);
    PlayCommand_Add(app, streams, result);
    MorphCommand_Add(app, streams, result);
    RenderCommand_Add(app, streams, result);
    VectorizeCommand_Add(app, streams, result);
    try {
        app.parse(argc, argv);
    } catch (CLI::Success const& success) {
        // Help was asked for.
        return app.exit(success, streams.out, streams.err);
    } catch (CLI::ParseError const& error) {
        streams.err << "hv: " << error.what() << " (hv --help tells more)\n";
        return ToolExitRefused;
    }
    streams.out.flush();
    return streams.out ? result : Refuse(streams, "cannot write the output");
}

}  // namespace

int HvTool_Run(int argc, char const* const* argv, ToolStreams const& streams) noexcept
{
    try {
        return Run(argc, argv, streams);
    } catch (ToolError const& error) {
        return Refuse(streams, error.what());
    } catch (std::bad_alloc const&) {
        return Refuse(streams, "out of memory");
    } catch (std::exception const& error) {
        return Refuse(streams, error.what());
    }
}
