// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The subpaths of a path, one after the other.

#ifndef HV_SHAPE_HVPATH2FITER_H
#define HV_SHAPE_HVPATH2FITER_H

#include <hv/platform/HvExport.h>

class HvPath2f;

/// Walks over the subpaths of a path in their order; the path must outlive it.
///
///     HvPath2fIter subpaths(path);
///     unsigned int first, last;
///     while (subpaths.GetNextSubPathIndices(first, last) != 0) {
///
/// The path's lock is held only within each call. An edit in between moves the points under the
/// iterator: it goes on with the subpath that then has the next point.
class HV_API HvPath2fIter {
public:
    /// Starts with the first subpath of `path`, which must outlive the iterator.
    explicit HvPath2fIter(HvPath2f const& path) : path_(&path) {}

    /// Starts again with the first subpath.
    void Reset() { cursor_ = 0; }
    /// Stores the first and last point of the next subpath and returns 1; 0, with both untouched,
    /// when there is none. Cost: a walk over this subpath.
    int GetNextSubPathIndices(unsigned int& first, unsigned int& last);

private:
    HvPath2f const* path_;
    unsigned int cursor_ = 0;
};

#endif
