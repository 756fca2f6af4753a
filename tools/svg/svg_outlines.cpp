// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The outlines of an SVG document.

#include <hv/foundation/HvExtent2.h>
#include <hv/shape/HvPath2fIter.h>
#include <tools/ToolError.h>
#include <tools/svg/svg_outlines.h>

#include <vector>

namespace {

/// Looks through elements for the best shape so far.
class OutlineSearch {
public:
    OutlineSearch(std::string const& id, SvgOutline& found) : id_(id), found_(found) {}

    bool HasFound() const { return largest_ >= 0.0; }

    void LookThrough(std::vector<SvgElement> const& elements)
    {
        for (SvgElement const& element : elements) {
            if (element.outline.NumPoints() != 0) {
                LookAt(element);
            }
            LookThrough(element.children);
        }
    }

private:
    void LookAt(SvgElement const& element)
    {
        HvPath2f path(element.outline);
        path.Transform(element.transform);
        HvExtent2<double> box;
        path.GetTightExtent(box);
        double const area = (box.max.x - box.min.x) * (box.max.y - box.min.y);
        // Of several with one id the first counts, as everywhere in such files.
        if (id_.empty() ? area > largest_ : element.id == id_ && !HasFound()) {
            largest_ = area;
            found_.path = path;
            found_.style = element.style;
        }
    }

    std::string const& id_;
    SvgOutline& found_;
    double largest_ = -1.0;
};

}  // namespace

HvPath2f SvgOutline_Closed(HvPath2f const& outline)
{
    std::vector<unsigned int> starts;
    HvPath2fIter subpaths(outline);
    unsigned int first = 0;
    unsigned int last = 0;
    while (subpaths.GetNextSubPathIndices(first, last) != 0) {
        starts.push_back(first);
    }
    HvPath2f closed(outline);
    // From the end, since closing adds points.
    for (auto start = starts.rbegin(); start != starts.rend(); ++start) {
        closed.CloseSubpath(*start);
    }
    return closed;
}

SvgOutline SvgOutline_Find(SvgDocument const& document, std::string const& id)
{
    SvgOutline found;
    OutlineSearch search(id, found);
    search.LookThrough(document.elements);
    if (!search.HasFound()) {
        throw ToolError(id.empty() ? "there is no shape" : "there is no shape named " + id);
    }
    return found;
}
