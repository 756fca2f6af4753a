// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Whole files, read and written.

#include <tools/ToolError.h>
#include <tools/files.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace {

/// Animations are some kilobytes, the largest some megabytes; their parsed form takes ten times as
/// much memory.
constexpr std::size_t kLargestFile = std::size_t(256) << 20;

[[noreturn]] void Fail(std::string const& path, char const* what)
{
    std::string const reason = errno != 0 ? std::string(": ") + std::strerror(errno) : "";
    throw ToolError(path + ": " + what + reason);
}

}  // namespace

std::string File_Read(std::string const& path)
{
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) {
        throw ToolError(path + ": cannot be read: it is a folder");
    }
    errno = 0;
    std::ifstream stream(path, std::ios::binary);
    if (!stream) {
        Fail(path, "cannot be read");
    }
    std::string text;
    char block[1 << 16];
    while (stream.read(block, sizeof block) || stream.gcount() > 0) {
        text.append(block, static_cast<std::size_t>(stream.gcount()));
        if (text.size() > kLargestFile) {
            throw ToolError(path + ": is larger than 256 MiB");
        }
    }
    if (stream.bad()) {
        Fail(path, "cannot be read");
    }
    return text;
}

OutputFile::OutputFile(std::string const& path) : path_(path), part_(path)
{
    std::error_code ignored;
    std::filesystem::file_status const status = std::filesystem::status(path, ignored);
    if (std::filesystem::is_directory(status)) {
        throw ToolError(path + ": cannot be written: it is a folder");
    }
    if (!std::filesystem::exists(status) || std::filesystem::is_regular_file(status)) {
        part_ += ".part";
    }
    std::filesystem::path const folder = std::filesystem::path(path).parent_path();
    if (!folder.empty()) {
        // When this fails, opening the file fails too, and tells why.
        std::filesystem::create_directories(folder, ignored);
    }
    errno = 0;
    stream_.open(part_, std::ios::binary);
    if (!stream_) {
        Fail(path_, "cannot be written");
    }
}

OutputFile::~OutputFile()
{
    if (stream_.is_open()) {
        stream_.close();
        RemovePart();
    }
}

void OutputFile::Close()
{
    errno = 0;
    stream_.close();
    bool const isWritten = static_cast<bool>(stream_);
    if (!isWritten || (part_ != path_ && std::rename(part_.c_str(), path_.c_str()) != 0)) {
        int const fault = errno;
        RemovePart();
        errno = fault;
        Fail(path_, "cannot be written");
    }
}

void OutputFile::RemovePart() const
{
    std::error_code ignored;
    if (part_ != path_) {
        std::filesystem::remove(part_, ignored);
    }
}

void File_Write(std::string const& path, std::string const& text)
{
    OutputFile file(path);
    file.Stream() << text;
    file.Close();
}
