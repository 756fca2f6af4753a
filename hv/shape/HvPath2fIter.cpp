// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The subpaths of a path, one after the other.

#include <hv/shape/HvPath2fIter.h>

#include <hv/shape/HvPath2f.h>
#include <hv/shape/HvShapeLock.h>

int HvPath2fIter::GetNextSubPathIndices(unsigned int& first, unsigned int& last)
{
    HvShapeLock const lock(*path_);
    if (cursor_ >= path_->NumPoints()) {
        return 0;
    }
    path_->GetSubpathIndices(cursor_, first, last);
    cursor_ = last + 1;
    return 1;
}
