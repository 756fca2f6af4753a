// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// How shapes lock, written once: the body of a member names its guard first, and a caller holds a
// shape through several calls.

#ifndef HV_SHAPE_HVSHAPELOCK_H
#define HV_SHAPE_HVSHAPELOCK_H

#include <hv/shape/HvShape2f.h>

/// Holds the lock of a shape to the end of its scope. A shape that is held may be held again.
class HvShapeLock {
public:
    /// Waits for the lock of `shape` and enters it.
    explicit HvShapeLock(HvShape2f const& shape) : held_(shape.objectLock_) {}

    /// How often the calling thread, which holds `shape`, has entered its lock.
    static int Depth(HvShape2f const& shape) { return shape.objectLock_.depth; }

private:
    CXQCriticalSectionLock held_;
};

/// Holds the section of a shape's lock without counting in its depth, as QueryShapeKind does and
/// whoever waits for a source only to let it go again.
class HvShapeSection {
public:
    /// Waits for the section of `shape` and enters it.
    explicit HvShapeSection(HvShape2f const& shape) : section_(shape.objectLock_.section)
    {
        EnterCriticalSection(&section_);
    }
    ~HvShapeSection() { LeaveCriticalSection(&section_); }
    HvShapeSection(HvShapeSection const&) = delete;
    HvShapeSection& operator=(HvShapeSection const&) = delete;

private:
    CRITICAL_SECTION& section_;
};

/// Holds the two shapes of an operation: the target, then the source. They may be one.
class HvShapePairLock {
public:
    /// Locks the target, then the source.
    HvShapePairLock(HvShape2f const& target, HvShape2f const& source)
        : target_(target), source_(source)
    {
    }

private:
    HvShapeLock target_;
    HvShapeLock source_;
};

#endif
