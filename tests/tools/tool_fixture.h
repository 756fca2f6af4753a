// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Runs of the tool, and a folder for the files that they read and write.

#ifndef HV_TESTS_TOOLS_TOOL_FIXTURE_H
#define HV_TESTS_TOOLS_TOOL_FIXTURE_H

#include <tools/tool.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

struct ToolRun {
    int code;
    std::string out;
    std::string err;

    explicit ToolRun(std::vector<char const*> arguments)
    {
        arguments.insert(arguments.begin(), "hv");
        std::ostringstream outStream;
        std::ostringstream errStream;
        code = HvTool_Run(static_cast<int>(arguments.size()), arguments.data(),
                          {outStream, errStream, false});
        out = outStream.str();
        err = errStream.str();
    }
};

/// A folder of its own for each test, gone afterwards.
class ToolFixture : public testing::Test {
protected:
    ToolFixture()
    {
        std::string name = (std::filesystem::temp_directory_path() / "hv_tool_XXXXXX").string();
        folder_ = mkdtemp(name.data());
    }
    ~ToolFixture() override
    {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    std::string PathOf(std::string const& name) const { return (folder_ / name).string(); }

    std::string Write(std::string const& name, std::string const& text) const
    {
        std::ofstream(PathOf(name), std::ios::binary) << text;
        return PathOf(name);
    }

    static std::string Read(std::string const& path)
    {
        std::ostringstream text;
        text << std::ifstream(path, std::ios::binary).rdbuf();
        return text.str();
    }

    /// Whether the run refused, in one line.
    static bool Refused(ToolRun const& run)
    {
        return run.code == 2 && run.err.rfind("hv: ", 0) == 0 &&
               run.err.find('\n') == run.err.size() - 1;
    }

private:
    std::filesystem::path folder_;
};

#endif
