// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Any bytes, read as the body of a path, are refused, or give a path that can be asked and edited:
// after every edit, its archive is one that is read back as the same bytes. What follows the body
// chooses the edits.

#include <hv/foundation/byte_codec.h>
#include <hv/shape/HvPath2f.h>

#include <cstdint>
#include <cstdlib>
#include <vector>

namespace {

void Require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

using Archive = std::vector<unsigned char>;

Archive Written(HvPath2f const& path)
{
    Archive archive(path.GetBufferSize());
    Require(path.WriteToBuffer(archive.data()) == archive.size());
    return archive;
}

void RequireReadable(HvPath2f const& path)
{
    Archive const archive = Written(path);
    HvByteReader body(archive.data() + 4, archive.size() - 4);
    HvPath2f again(0u);
    Require(again.ReadArchiveBody(body) == archive.size() - 4);
    Require(Written(again) == archive);
    Require(again.IsSiblingOf(path) == 1);
}

void Ask(HvPath2f const& path)
{
    unsigned int const count = path.NumPoints();
    Require(path.NumSegments() <= count);
    Require(path.NumNodes() <= count);
    Require((path.NumSubpaths() == 0) == (count == 0));
    for (unsigned int i = 0; i < count; ++i) {
        Require(path.StartOfSegment(i) <= i);
        Require(path.EndOfSegment(i) >= i && path.EndOfSegment(i) < count);
        path.IsG1Continuous(i);
    }
}

// One edit, of any points; some are refused.
void Edit(HvPath2f& path, HvByteReader& choice)
{
    unsigned int const a = choice.ReadUInt8();
    unsigned int const b = choice.ReadUInt8();
    unsigned int const kind = choice.ReadUInt8();
    HvPoint2<float> const p(float(a) - 9, float(b) - 9);
    switch (kind % 12) {
    case 0:
        path.ReplacePoint(a, p, int(b % 2));
        break;
    case 1:
        path.ReplacePointIgnoringLock(a, p);
        break;
    case 2:
        path.LockG1(a);
        break;
    case 3:
        path.CloseSubpath(a);
        break;
    case 4:
        path.OpenSubpath(a);
        break;
    case 5: {
        if (a < path.NumPoints()) {
            HvPoint2<float> pts[9] = {path.GetPoint(path.StartOfSegment(a)), p, p, p, p, p, p, p};
            pts[1 + b % 8] = path.GetPoint(path.EndOfSegment(a));
            path.ReplaceSegment(a, pts, 1 + b % 8);
        }
        break;
    }
    case 6:
        path.ReplaceSubpathSection(a, b);
        break;
    case 7:
        path.ReplaceSubpathSection(a, b, p, p);
        break;
    case 8: {
        HvPath2f const source(path, 0, b);
        path.ReplaceSubpathSection(a, b, source, a, b);
        break;
    }
    case 9:
        path.ReplaceSubpathSection(a, b, path, b, a);
        break;
    case 10:
        path.RemoveSubpath(a);
        break;
    default:
        path.RemoveSubpathSection(a, b);
        break;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    HvByteReader reader(data, size);
    HvPath2f path(0u);
    path.Moveto({1, 2});
    unsigned int const used = path.ReadArchiveBody(reader);
    Require((used == 0) == reader.Failed());
    Require(used == 0 ? path.NumPoints() == 1 : used == 9 * path.NumPoints() + 12);
    for (int edit = 0; edit < 32; ++edit) {
        Ask(path);
        RequireReadable(path);
        if (reader.Left() < 3) {
            break;
        }
        Edit(path, reader);
    }
    return 0;
}
