// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Objects whose state is a version: every edit shifts all of an object by one, so that a reader
// that sees half an edit, or half a copy, sees two versions at once.

#ifndef TESTS_SCHEDULES_SHARED_OBJECTS_H
#define TESTS_SCHEDULES_SHARED_OBJECTS_H

#include <cstdint>
#include <memory>
#include <random>

/// Random numbers of one thread of a schedule.
using ScheduleRandom = std::mt19937;

/// Two objects of one kind. Every member may be called from any thread at once.
class SharedPair {
public:
    virtual ~SharedPair() = default;

    /// Shifts one of the two to its next version.
    virtual void Edit(unsigned int which) = 0;
    /// Gives one of the two the state of the other, in whichever directions the kind allows at
    /// once.
    virtual void Assign(unsigned int to) = 0;
    /// Copies one of the two and looks at the copy: whether it is of one version.
    virtual bool IsCopyWhole(unsigned int which) const = 0;
    /// Writes an archive of one of the two, reads it back and looks at that.
    virtual bool IsArchiveWhole(unsigned int which) const = 0;
    /// Reads one of the two by an operation that holds it once: whether what it gives is of one
    /// version.
    virtual bool IsReadingWhole(unsigned int which, ScheduleRandom& random) const = 0;
};

std::unique_ptr<SharedPair> MakeSharedStandardCurves();
std::unique_ptr<SharedPair> MakeSharedIntegerCurves();
std::unique_ptr<SharedPair> MakeSharedRawCurves();
std::unique_ptr<SharedPair> MakeSharedPaths();
std::unique_ptr<SharedPair> MakeSharedMotionPaths();

#endif
