// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The process-wide access lock: one critical section.

#include <hv/platform/CActiveDataMultiThreadedRenderingLock.h>
#include <hv/platform/internal/static_section.h>

void CActiveDataMultiThreadedRenderingLock::ADAccessLock()
{
    EnterCriticalSection(&HvStaticSection_Of<CActiveDataMultiThreadedRenderingLock>());
}

void CActiveDataMultiThreadedRenderingLock::ADAccessUnlock()
{
    LeaveCriticalSection(&HvStaticSection_Of<CActiveDataMultiThreadedRenderingLock>());
}
