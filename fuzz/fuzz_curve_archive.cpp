// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Any bytes, read as the archive of a curve, are refused, or give a curve that can be evaluated,
// writes itself, and reads back as the same bytes.

#include <hv/fcurve/HvBaseFCurve.h>
#include <hv/fcurve/HvFCurveArchive.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

namespace {

using Curve = std::unique_ptr<HvBaseFCurve>;

void Require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

Curve Read(std::uint8_t const* data, std::size_t size)
{
    HvBaseFCurve* curve = nullptr;
    unsigned int const used = HvBaseFCurve_CreateFromBuffer(data, size, &curve);
    Require((used != 0) == (curve != nullptr));
    Require(used <= size);
    return Curve(curve);
}

std::vector<unsigned char> Written(HvBaseFCurve const& curve)
{
    std::vector<unsigned char> archive(curve.GetBufferSize());
    Require(curve.WriteToBuffer(archive.data()) == archive.size());
    return archive;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    Curve const curve = Read(data, size);
    if (curve == nullptr) {
        return 0;
    }
    for (double const x : {-1e9, -1.0, 0.0, 0.5, 1.0, 2.5, 1e300}) {
        curve->Eval(x, 1);
    }
    std::vector<unsigned char> const written = Written(*curve);
    Curve const again = Read(written.data(), written.size());
    Require(again != nullptr);
    Require(again->GetKind() == curve->GetKind());
    Require(again->GetNumKeys() == curve->GetNumKeys());
    Require(Written(*again) == written);
    return 0;
}
