// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Paths cut by their length: trims and dashes.

#include <tools/play/evaluation/PathLength.h>
#include <tools/play/evaluation/path_pieces.h>

#include <hv/shape/HvPath2fIter.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace {

/// More dashes on one subpath are finer than any picture shows.
constexpr double kMostDashes = 10000.0;

/// A dash of no length has round ends still: it is drawn with this share of the pattern's length.
constexpr double kShortestDash = 1e-3;

std::vector<PathLength> SubpathsOf(HvPath2f const& path)
{
    std::vector<PathLength> subpaths;
    HvPath2fIter walk(path);
    unsigned int first = 0;
    unsigned int last = 0;
    while (walk.GetNextSubPathIndices(first, last) != 0) {
        subpaths.emplace_back(path, first, last);
    }
    return subpaths;
}

double Finite(double value)
{
    return std::isfinite(value) ? value : 0.0;
}

/// Where a closed subpath is cut in two at its seam, the first part continues the second.
void AppendWrapped(PathLength const& subpath, double start, double end, HvPath2f& out)
{
    double const length = subpath.Length();
    if (!(end > length)) {
        subpath.AppendPiece(start, end, PathLength::WithMoveto, out);
        return;
    }
    unsigned int const before = out.NumPoints();
    subpath.AppendPiece(start, length, PathLength::WithMoveto, out);
    bool const continues = subpath.IsClosed() && out.NumPoints() > before;
    subpath.AppendPiece(0.0, end - length,
                        continues ? PathLength::AsContinuation : PathLength::WithMoveto, out);
}

/// The overlap of a subpath, which begins at `begin` of a run, with a piece of the run.
void AppendOverlap(PathLength const& subpath, double begin, double from, double to, HvPath2f& out)
{
    double const start = std::max(from - begin, 0.0);
    double const end = std::min(to - begin, subpath.Length());
    if (end > start) {
        subpath.AppendPiece(start, end, PathLength::WithMoveto, out);
    }
}

/// A pattern of dashes at a place of it.
class DashWalk {
public:
    /// @param offset  where the walk begins, 0 up to but not including the pattern's length.
    DashWalk(std::vector<double> const& pattern, double offset) : pattern_(pattern)
    {
        while (offset >= pattern_[at_] && offset > 0.0) {
            offset -= pattern_[at_];
            at_ = (at_ + 1) % pattern_.size();
        }
        left_ = pattern_[at_] - offset;
    }

    double Left() const { return left_; }
    bool IsPainted() const { return at_ % 2 == 0; }
    void Next()
    {
        at_ = (at_ + 1) % pattern_.size();
        left_ = pattern_[at_];
    }

private:
    std::vector<double> const& pattern_;
    std::size_t at_ = 0;
    double left_ = 0.0;
};

}  // namespace

TrimRange TrimRange_Of(double start, double end, double offset)
{
    double const a = std::clamp(Finite(start), 0.0, 1.0);
    double const b = std::clamp(Finite(end), 0.0, 1.0);
    double const moved = std::min(a, b) + Finite(offset);
    double const first = moved - std::floor(moved);
    return {first, std::fabs(b - a)};
}

HvPath2f PathPieces_Trim(HvPath2f const& path, TrimRange const& range)
{
    if (range.IsWhole()) {
        return path;
    }
    HvPath2f trimmed(path.NumPoints());
    for (PathLength const& subpath : SubpathsOf(path)) {
        double const length = subpath.Length();
        AppendWrapped(subpath, range.start * length, range.End() * length, trimmed);
    }
    return trimmed;
}

void PathPieces_TrimAsOne(std::vector<HvPath2f*> const& paths, TrimRange const& range)
{
    if (range.IsWhole()) {
        return;
    }
    std::vector<std::vector<PathLength>> measured;
    double total = 0.0;
    for (HvPath2f const* path : paths) {
        measured.push_back(SubpathsOf(*path));
        for (PathLength const& subpath : measured.back()) {
            total += subpath.Length();
        }
    }
    double const start = range.start * total;
    double const end = range.End() * total;
    double begin = 0.0;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        HvPath2f trimmed(paths[i]->NumPoints());
        for (PathLength const& subpath : measured[i]) {
            AppendOverlap(subpath, begin, start, end, trimmed);
            AppendOverlap(subpath, begin, start - total, end - total, trimmed);
            begin += subpath.Length();
        }
        *paths[i] = trimmed;
    }
}

HvPath2f PathPieces_Dash(HvPath2f const& path, std::vector<double> const& dashes, double offset)
{
    std::vector<double> pattern;
    for (std::size_t i = 0; i < (dashes.size() % 2 + 1) * dashes.size(); ++i) {
        pattern.push_back(std::max(Finite(dashes[i % dashes.size()]), 0.0));
    }
    double period = 0.0;
    for (double const length : pattern) {
        period += length;
    }
    for (std::size_t i = 0; i < pattern.size(); i += 2) {
        pattern[i] = std::max(pattern[i], kShortestDash * period);
    }
    std::vector<PathLength> const subpaths = SubpathsOf(path);
    for (PathLength const& subpath : subpaths) {
        double const count =
            subpath.Length() / period * (static_cast<double>(pattern.size()) / 2.0);
        if (!(count <= kMostDashes)) {
            return path;
        }
    }
    double const shift = Finite(offset);
    double const begin = std::max(shift - std::floor(shift / period) * period, 0.0);
    HvPath2f dashed(path.NumPoints());
    for (PathLength const& subpath : subpaths) {
        DashWalk walk(pattern, begin < period ? begin : 0.0);
        for (double at = 0.0; at < subpath.Length(); walk.Next()) {
            double const next = std::min(at + walk.Left(), subpath.Length());
            if (walk.IsPainted()) {
                subpath.AppendPiece(at, next, PathLength::WithMoveto, dashed);
            }
            at = next;
        }
    }
    return dashed;
}
