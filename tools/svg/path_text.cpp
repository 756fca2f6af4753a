// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A path as path data of SVG.

#include <tools/svg/path_text.h>

#include <hv/shape/HvPath2f.h>
#include <hv/shape/HvPath2fIter.h>
#include <tools/ToolError.h>
#include <tools/number_text.h>

namespace {

/// As many digits as a float has.
constexpr int kDigits = 7;

/// Puts commands together, none named twice in a row.
class PathWriter {
public:
    void Command(char command)
    {
        if (command != last_) {
            text_ += command;
            last_ = command;
        } else {
            text_ += ' ';
        }
    }
    void Number(float value) { text_ += NumberText_Rounded(static_cast<double>(value), kDigits); }
    void Point(HvPoint2<float> const& p)
    {
        Number(p.x);
        text_ += ',';
        Number(p.y);
    }
    void Space() { text_ += ' '; }
    void EndLine()
    {
        text_ += '\n';
        last_ = '\0';
    }
    std::string const& Text() const { return text_; }

private:
    std::string text_;
    char last_ = '\0';
};

void WriteLine(HvPoint2<float> const& from, HvPoint2<float> const& to, PathWriter& writer)
{
    if (to.y == from.y) {
        writer.Command('H');
        writer.Number(to.x);
    } else if (to.x == from.x) {
        writer.Command('V');
        writer.Number(to.y);
    } else {
        writer.Command('L');
        writer.Point(to);
    }
}

void WriteSegment(HvPath2f const& path, unsigned int start, unsigned int end, PathWriter& writer)
{
    unsigned int const degree = end - start;
    if (degree > 3) {
        throw ToolError("a path has a segment of degree " + std::to_string(degree) +
                        ", which SVG cannot draw");
    }
    if (degree == 1) {
        WriteLine(path.GetPoint(start), path.GetPoint(end), writer);
        return;
    }
    writer.Command(degree == 2 ? 'Q' : 'C');
    for (unsigned int i = start + 1; i <= end; ++i) {
        writer.Point(path.GetPoint(i));
        if (i < end) {
            writer.Space();
        }
    }
}

}  // namespace

std::string PathText_Of(HvPath2f const& path)
{
    PathWriter writer;
    HvPath2fIter subpaths(path);
    unsigned int first = 0;
    unsigned int last = 0;
    while (subpaths.GetNextSubPathIndices(first, last) != 0) {
        writer.Command('M');
        writer.Point(path.GetPoint(first));
        int isClosed = 0;
        path.IsEndOfSubpath(last, isClosed);
        for (unsigned int start = first; start < last;) {
            unsigned int const end = path.EndOfSegment(start + 1);
            // The closing command draws the last line itself.
            if (isClosed == 0 || end < last || end - start > 1) {
                WriteSegment(path, start, end, writer);
            }
            start = end;
        }
        if (isClosed != 0) {
            writer.Command('Z');
        }
        writer.EndLine();
    }
    return writer.Text();
}
