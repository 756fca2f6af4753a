// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// CXQCriticalSection: a critical section that knows how deep it is entered.

#ifndef HV_PLATFORM_CXQCRITICALSECTION_H
#define HV_PLATFORM_CXQCRITICALSECTION_H

#include <hv/platform/critical_section.h>

/// The lock of a shape or of a motion path: a recursive section and the number of entries that its
/// holder has open. `depth` is guarded by `section`: only the holder may read it.
class CXQCriticalSection {
public:
    CXQCriticalSection() { InitializeCriticalSection(&section); }
    ~CXQCriticalSection() { DeleteCriticalSection(&section); }

    CXQCriticalSection(CXQCriticalSection const&) = delete;
    CXQCriticalSection& operator=(CXQCriticalSection const&) = delete;

    /// Enters, waiting while another thread is inside; the holder may enter again.
    void Enter()
    {
        if (TryEnterCriticalSection(&section) == 0) {
            EnterCriticalSection(&section);
        }
        ++depth;
    }

    /// Takes back one Enter of the calling thread.
    void Leave()
    {
        --depth;
        LeaveCriticalSection(&section);
    }

    CRITICAL_SECTION section;  ///< the lock
    int depth = 0;             ///< how often its holder has entered; guarded by the section
};

/// Holds a CXQCriticalSection from its construction to the end of its scope, also when an exception
/// ends it.
class CXQCriticalSectionLock {
public:
    /// Enters `target`.
    explicit CXQCriticalSectionLock(CXQCriticalSection& target) : held(target) { held.Enter(); }
    ~CXQCriticalSectionLock() { held.Leave(); }

    CXQCriticalSectionLock(CXQCriticalSectionLock const&) = delete;
    CXQCriticalSectionLock& operator=(CXQCriticalSectionLock const&) = delete;

private:
    CXQCriticalSection& held;
};

#endif
