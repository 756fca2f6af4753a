// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Main of the fuzz programs in a test build: runs the entry point on every file of the folders that
// are its arguments, in the order of their names. A fault ends the program by itself.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);

int main(int argc, char** argv)
{
    std::size_t inputs = 0;
    for (int i = 1; i < argc; ++i) {
        std::vector<std::filesystem::path> files;
        for (auto const& entry : std::filesystem::directory_iterator(argv[i])) {
            files.push_back(entry.path());
        }
        std::sort(files.begin(), files.end());
        for (auto const& file : files) {
            std::printf("%s\n", file.c_str());
            std::fflush(stdout);
            std::ifstream stream(file, std::ios::binary);
            std::vector<char> const bytes{std::istreambuf_iterator<char>(stream), {}};
            LLVMFuzzerTestOneInput(reinterpret_cast<std::uint8_t const*>(bytes.data()),
                                   bytes.size());
            ++inputs;
        }
    }
    // A replay of nothing checks nothing.
    return inputs > 0 ? 0 : 1;
}
