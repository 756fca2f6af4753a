// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A property path with simpler and simpler levels of itself.

#include <hv/pathbuild/HvMipPath2fProp1d.h>

#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvStlAllocator.h>
#include <hv/pathbuild/internal/simplify_path.h>

#include <algorithm>
#include <cmath>

namespace {

/// The part of a pixel that a level may be off without being seen.
constexpr double kUnseenPixels = 0.5;

}  // namespace

HvMipPath2fProp1d::HvMipPath2fProp1d(HvPath2fProp1d const& source, double tolerance,
                                     double propertyTolerance)
    : source_(source), tolerance_(tolerance), propertyTolerance_(propertyTolerance)
{
}

HvMipPath2fProp1d::~HvMipPath2fProp1d() = default;

HvMipPath2fProp1d::Edit::Edit(HvMipPath2fProp1d& mip) : held_(mip.section_), mip_(mip)
{
    mip_.DropLevels();
}

void HvMipPath2fProp1d::SetSource(HvPath2fProp1d const& source)
{
    CXQCriticalSectionLock const lock(section_);
    source_ = source;
    DropLevels();
}

void HvMipPath2fProp1d::DropLevels()
{
    for (LevelPath& level : levels_) {
        level = nullptr;
    }
}

unsigned int HvMipPath2fProp1d::CountLevels() const
{
    HvExtent2<double> extent;
    source_.GetExtent(extent);
    double const side = std::max(extent.max.x - extent.min.x, extent.max.y - extent.min.y);
    unsigned int count = 1;
    if (tolerance_ > 0.0) {
        while (count < kMostLevels && std::ldexp(tolerance_, int(count) - 1) < side) {
            ++count;
        }
    }
    return count;
}

unsigned int HvMipPath2fProp1d::NumLevels() const
{
    CXQCriticalSectionLock const lock(section_);
    return CountLevels();
}

double HvMipPath2fProp1d::LevelTolerance(unsigned int k) const
{
    CXQCriticalSectionLock const lock(section_);
    return std::ldexp(tolerance_, static_cast<int>(std::min(k, CountLevels() - 1)));
}

// Each level is made of the one before, from which it may differ by as much as their tolerances
// do: so a level costs less the simpler it is, and never has more points than a finer one.
HvMipPath2fProp1d::LevelPath HvMipPath2fProp1d::Level(unsigned int k) const
{
    CXQCriticalSectionLock const lock(section_);
    unsigned int const last = std::min(k, CountLevels() - 1);
    for (unsigned int level = 0; level <= last; ++level) {
        if (levels_[level] == nullptr) {
            HvPath2fProp1d const& finer = level == 0 ? source_ : *levels_[level - 1];
            int const doublings = level == 0 ? 0 : static_cast<int>(level) - 1;
            auto const path =
                std::allocate_shared<HvPath2fProp1d>(HvStlAllocator<HvPath2fProp1d>(), 0u);
            HvPath_Simplify(finer, std::ldexp(tolerance_, doublings),
                            std::ldexp(propertyTolerance_, doublings), *path);
            levels_[level] = path;
        }
    }
    return levels_[last];
}

unsigned int HvMipPath2fProp1d::LevelForScale(double unitsPerPixel) const
{
    CXQCriticalSectionLock const lock(section_);
    unsigned int const count = CountLevels();
    unsigned int level = 0;
    while (level + 1 < count &&
           std::ldexp(tolerance_, static_cast<int>(level) + 1) <= unitsPerPixel * kUnseenPixels) {
        ++level;
    }
    return level;
}
