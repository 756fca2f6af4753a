// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Whole files, read and written with faults told in one line.

#ifndef HV_TOOLS_FILES_H
#define HV_TOOLS_FILES_H

#include <fstream>
#include <iosfwd>
#include <string>

/// The bytes of a file. Throws ToolError when it cannot be read or is beyond 256 MiB.
std::string File_Read(std::string const& path);

/// A file being written; its folder is made when it is missing.
///
/// It has the name with ".part" behind it until it is closed: a file of the name is either whole,
/// or as it was before. What is not a plain file, such as a pipe, is written itself.
class OutputFile {
public:
    /// Throws ToolError when the file cannot be made.
    explicit OutputFile(std::string const& path);
    /// Removes the part when the file was not closed.
    ~OutputFile();
    OutputFile(OutputFile const&) = delete;
    OutputFile& operator=(OutputFile const&) = delete;

    std::ostream& Stream() { return stream_; }
    /// Ends writing. Throws ToolError when not all of it arrived.
    void Close();

private:
    void RemovePart() const;

    std::string path_;
    std::string part_;  ///< the path itself where that is written
    std::ofstream stream_;
};

/// Writes a file of this text.
void File_Write(std::string const& path, std::string const& text);

#endif
