// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// One outline that becomes another.

#ifndef HV_TOOLS_PLAY_SCENE_PATHBLEND_H
#define HV_TOOLS_PLAY_SCENE_PATHBLEND_H

#include <hv/morph/HvMorpher.h>
#include <hv/pathbuild/HvPath2fProp1d.h>
#include <hv/shape/HvGC.h>

#include <memory>

/// The way from one outline to another: point by point where they are siblings, by a morph where
/// they are not. Read by any number of threads at once.
class PathBlend {
public:
    /// Both outlines outlive the blend and do not change.
    PathBlend(HvPath2fProp1d const& from, HvPath2fProp1d const& to);

    /// The outline that has gone this share of the way: at 0 the first, at 1 the second; beyond it
    /// goes on.
    HvPath2f At(double share) const;

private:
    struct Morph {
        HvGC gc;
        HvMorpher morpher;

        Morph(HvPath2fProp1d const& from, HvPath2fProp1d const& to);
    };

    HvPath2fProp1d const* from_;
    HvPath2fProp1d const* to_;
    std::unique_ptr<Morph> morph_;  ///< null for siblings
};

#endif
