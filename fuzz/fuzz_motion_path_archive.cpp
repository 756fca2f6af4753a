// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Any bytes, read as the archive of a motion path, are refused, or give a path that can be
// evaluated and edited, writes itself, and reads back as the same bytes.

#include <hv/motionpath/HvMotionPath3d.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

namespace {

using Path = std::unique_ptr<HvMotionPath3d>;

void Require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

Path Read(std::uint8_t const* data, std::size_t size)
{
    HvMotionPath3d* path = nullptr;
    unsigned int const used = HvMotionPath3d_CreateFromBuffer(data, size, &path);
    Require((used != 0) == (path != nullptr));
    Require(used <= size);
    return Path(path);
}

std::vector<unsigned char> Written(HvMotionPath3d const& path)
{
    std::vector<unsigned char> archive(path.GetBufferSize());
    Require(path.WriteToBuffer(archive.data()) == archive.size());
    return archive;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    Path const path = Read(data, size);
    if (path == nullptr) {
        return 0;
    }
    std::vector<unsigned char> const written = Written(*path);
    Path const again = Read(written.data(), written.size());
    Require(again != nullptr);
    Require(Written(*again) == written);

    HvPoint3<double> p;
    unsigned int point = 0;
    int exact = 0;
    for (double const t : {-1e9, 0.0, 0.5, 1.0, 2.5, 10.0, 1e300}) {
        path->Eval(t, 1e-2, p, 0);
        path->InsertNode(t, 1e-2, 1e-6, point, exact);
    }
    path->LockG1ContinuityAtAllNodes();
    path->AdjustLastTwoCubics(p);
    for (unsigned int i = 0; i < path->NumPoints(); i += 3) {
        path->SmoothSegment(i);
    }
    path->RemoveNodes(3, 3);
    Require(path->NumPoints() == 0 || path->NumNodes() == path->NumPoints() / 3 + 1);
    Require(Read(Written(*path).data(), path->GetBufferSize()) != nullptr);
    return 0;
}
