// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// hv inspect: what a file of archives holds.

#include <tools/commands/inspect_command.h>
#include <tools/curve/archive_report.h>
#include <tools/files.h>

#include <CLI/CLI.hpp>

#include <memory>
#include <string>

namespace {

struct Request {
    std::string file;
    bool brief = false;
};

}  // namespace

void InspectCommand_Add(CLI::App& app, ToolStreams const& streams, int& result)
{
    CLI::App* command = app.add_subcommand("inspect", "Print what a file of archives holds.");
    command->footer("Example: hv inspect bounce.hvc");
    auto const request = std::make_shared<Request>();
    command->add_option("FILE", request->file, "archives of curves and shapes, one behind another")
        ->required();
    command->add_flag("--brief", request->brief, "a line for each, without keys and subpaths");
    command->callback([request, &streams, &result] {
        ArchiveReport_Write(streams.out, request->file, File_Read(request->file), request->brief);
        result = ToolExitDone;
    });
}
