// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A property path with simpler and simpler levels of itself.

#ifndef HV_PATHBUILD_HVMIPPATH2FPROP1D_H
#define HV_PATHBUILD_HVMIPPATH2FPROP1D_H

#include <hv/pathbuild/HvPath2fProp1d.h>
#include <hv/platform/CXQCriticalSection.h>

#include <memory>

/// A property path and its levels: level k is the path simplified to 2^k times the base tolerances,
/// for whoever draws it smaller.
///
/// **A level** is within its tolerance of the source, subpath by subpath: outlines as cubics and
/// lines that go on smoothly where the source does, properties as fewer keys. Subpaths are as many,
/// in their order, open and closed as they were, with a curve where they had one; none has more
/// points than on the level before, and one that cannot be made simpler is copied. Locks of nodes
/// are not kept: a level is there to be drawn.
///
/// **Building.** A level is built when it is first asked for, with those before it, of which each
/// is made; they are kept until the source is edited. Edits go through an Edit. Who holds a level
/// keeps it whatever happens to the source.
///
/// Threads: any thread may call any member. One lock guards source and levels; a level is built
/// inside it, so that it is built once, and its path is never changed again. The lock is held
/// before that of any path.
class HV_API HvMipPath2fProp1d : public HvAllocated {
public:
    /// A level, shared by all who asked for it.
    using LevelPath = std::shared_ptr<HvPath2fProp1d const>;

    /// Copies `source`.
    ///
    /// @param tolerance          greatest distance of level 0 from the outline, in the path's own
    ///                           coordinates. Unless it is above 0 there is one level, a copy.
    /// @param propertyTolerance  greatest error of the property on level 0. Below 0 it counts as 0.
    HvMipPath2fProp1d(HvPath2fProp1d const& source, double tolerance, double propertyTolerance);
    HvMipPath2fProp1d(HvMipPath2fProp1d const&) = delete;
    HvMipPath2fProp1d& operator=(HvMipPath2fProp1d const&) = delete;
    ~HvMipPath2fProp1d();

    /// How many levels there are: the last is the first whose tolerance is not below the longer
    /// side of the path's extent, and none is beyond level 31.
    unsigned int NumLevels() const;
    /// The tolerance of level `k`, 2^k times the base; that of the last level beyond it.
    double LevelTolerance(unsigned int k) const;
    /// Level `k`, never null; the last one beyond it. When std::bad_alloc comes out, nothing has
    /// changed. Cost: that of a fit the first time, then none.
    LevelPath Level(unsigned int k) const;
    /// The level to draw where a pixel spans so many units of the path: the simplest of which
    /// nobody sees that it is one, its tolerance being at most half a pixel. 0 where none is as
    /// fine, and for a scale that is no number.
    unsigned int LevelForScale(double unitsPerPixel) const;

    /// Makes a copy of `source` the source.
    void SetSource(HvPath2fProp1d const& source);

    /// The source in the hands of one thread, to be read or edited; others wait meanwhile. The
    /// levels are dropped when it begins.
    class HV_API Edit {
    public:
        /// Enters the lock of `mip` and drops its levels.
        explicit Edit(HvMipPath2fProp1d& mip);
        Edit(Edit const&) = delete;
        Edit& operator=(Edit const&) = delete;

        /// The source.
        HvPath2fProp1d& operator*() const { return mip_.source_; }
        /// The source.
        HvPath2fProp1d* operator->() const { return &mip_.source_; }

    private:
        CXQCriticalSectionLock held_;
        HvMipPath2fProp1d& mip_;
    };

private:
    static constexpr unsigned int kMostLevels = 32;

    void DropLevels();
    unsigned int CountLevels() const;

    mutable CXQCriticalSection section_;
    HvPath2fProp1d source_;
    double tolerance_;
    double propertyTolerance_;
    mutable LevelPath levels_[kMostLevels];
};

#endif
