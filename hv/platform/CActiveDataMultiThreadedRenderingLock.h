// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// CActiveDataMultiThreadedRenderingLock: the process-wide lock of everybody who edits.

#ifndef HV_PLATFORM_CACTIVEDATAMULTITHREADEDRENDERINGLOCK_H
#define HV_PLATFORM_CACTIVEDATAMULTITHREADEDRENDERINGLOCK_H

#include <hv/platform/HvExport.h>

/// One lock for the whole process, taken by writers before the lock of the object that they edit,
/// so that two edits of two objects each cannot wait for one another; readers never take it. Its
/// holder may take it again. It is usable from the first static constructor to the last static
/// destructor.
class HV_API CActiveDataMultiThreadedRenderingLock {
public:
    /// Takes the lock, waiting while another thread holds it.
    static void ADAccessLock();

    /// Takes back one ADAccessLock of the calling thread.
    static void ADAccessUnlock();
};

#endif
