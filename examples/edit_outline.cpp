// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Edits a round outline as a drawing program does: smooth nodes, a dragged handle, a flattened
// side, saved and loaded.

#include <hv/hv.h>

#include <cstdio>
#include <vector>

using Point = HvPoint2<float>;

namespace {

void Print(char const* what, HvPath2f const& path)
{
    std::printf("%s: %u points, %u segments\n ", what, path.NumPoints(), path.NumSegments());
    for (unsigned i = 0; i < path.NumPoints(); ++i) {
        Point const p = path.GetPoint(i);
        std::printf(" (%g, %g)", p.x, p.y);
    }
    std::printf("\n");
}

}  // namespace

int main()
{
    // Four cubics; the last point repeats the first, so that Closeto finds the outline closed.
    HvPath2f path(13);
    path.Moveto({0, -100});
    path.Curveto({55, -100}, {100, -55}, {100, 0});
    path.Curveto({100, 55}, {55, 100}, {0, 100});
    path.Curveto({-55, 100}, {-100, 55}, {-100, 0});
    path.Curveto({-100, -55}, {-55, -100}, {0, -100});
    path.Closeto();
    Print("round", path);

    // Nodes whose handles are in line can be locked: 0, 3, 6, 9; the last, 12, is the first again.
    int locked = 0;
    for (unsigned i = 0; i + 1 < path.NumPoints(); ++i) {
        locked += path.LockG1(i);
    }
    std::printf("%d nodes stay smooth from now on\n", locked);

    // The handle before node 3 is dragged: the one behind it turns, and keeps its length.
    path.ReplacePoint(2, {70, -40}, 0);
    Point const turned = path.GetPoint(4);
    std::printf("the handle on the other side is at (%.1f, %.1f)\n", turned.x, turned.y);

    // A locked node needs its handles, so a line is refused beside it; the outline is as it was.
    std::printf("a line from node 6 to node 9: %s\n",
                path.ReplaceSubpathSection(6, 9) != 0 ? "done" : "refused");
    // One cubic in place of two, which the locked nodes at its ends follow.
    path.ReplaceSubpathSection(6, 12, {-150, 100}, {-150, -100});
    Print("one side in one piece", path);

    // What comes from a file is read with its size: nothing is read beyond it.
    std::vector<unsigned char> file(path.GetBufferSize());
    path.WriteToBuffer(file.data());
    HvByteReader body(file.data() + 4, file.size() - 4);
    HvPath2f loaded(1);
    unsigned const used = loaded.ReadArchiveBody(body);
    std::printf("%u bytes saved, %u read, the same structure: %d\n", unsigned(file.size()), used,
                loaded.IsSiblingOf(path));
    HvByteReader half(file.data() + 4, file.size() / 2);
    if (loaded.ReadArchiveBody(half) == 0) {
        std::printf("half a file: refused, %s\n", half.Fault());
    }
    return 0;
}
