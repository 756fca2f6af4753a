// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Saves curves of several kinds one behind another, loads them, and shows what becomes of bytes
// that were damaged on their way.

#include <hv/hv.h>

#include <cstddef>
#include <cstdio>
#include <memory>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;
using Curves = std::vector<std::unique_ptr<HvBaseFCurve>>;

void Append(Bytes& file, HvBaseFCurve const& curve)
{
    std::size_t const at = file.size();
    file.resize(at + curve.GetBufferSize());
    curve.WriteToBuffer(file.data() + at);
}

/// Every archive begins with its length, so that one can follow another. Stops at the first fault:
/// no byte beyond the end is read, whatever the lengths and counts in the bytes claim.
Curves Load(Bytes const& file)
{
    Curves curves;
    for (std::size_t at = 0; at < file.size();) {
        HvBaseFCurve* curve = nullptr;
        HvArchiveFault fault;
        unsigned int const used =
            HvBaseFCurve_CreateFromBuffer(file.data() + at, file.size() - at, &curve, fault);
        if (used == 0) {
            std::printf("refused at byte %zu: %s\n", at + fault.place, fault.reason);
            break;
        }
        curves.emplace_back(curve);
        at += used;
    }
    return curves;
}

}  // namespace

int main()
{
    HvStdFCurve ramp(0, 0, 2, 10, HvBaseFCurve::LinearSegment, HvBaseFCurve::LinearSegment);
    HvIntegerFCurve count(3);
    double time = 1;
    count.CreateKey(time, 7);
    HvBooleanFCurve isOn(true);

    Bytes file;
    for (HvBaseFCurve const* curve :
         {static_cast<HvBaseFCurve const*>(&ramp), static_cast<HvBaseFCurve const*>(&count),
          static_cast<HvBaseFCurve const*>(&isOn)}) {
        Append(file, *curve);
    }
    std::printf("%zu bytes\n", file.size());
    for (auto const& curve : Load(file)) {
        std::printf("kind %d, %u keys, at 1.5: %g\n", curve->GetKind(), curve->GetNumKeys(),
                    curve->Eval(1.5, 0));
    }

    // The last curve lost its end on the way; those before it are whole.
    Bytes damaged = file;
    damaged.resize(damaged.size() - 5);
    std::printf("damaged: %zu of 3 curves\n", Load(damaged).size());
}
