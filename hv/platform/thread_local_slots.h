// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Thread-local slots: a number, and a pointer for it in each thread. Any number of them may be
// alive.

#ifndef HV_PLATFORM_THREAD_LOCAL_SLOTS_H
#define HV_PLATFORM_THREAD_LOCAL_SLOTS_H

#include <hv/platform/HvExport.h>

// A slot costs eight bytes for the process and twelve for each thread that has stored a pointer in
// it or in one of its 255 neighbours by number. A thread that only reads costs nothing. What a
// thread has stored goes when the thread ends; the eight bytes stay for the next slot of that
// number.

/// Allocates a slot. It reads null in every thread, whatever its number held before. Throws
/// std::bad_alloc when there is no memory; nothing has changed then. Threads: any. Cost: O(1)
/// amortised.
HV_API unsigned int XQTlsAlloc();

/// Frees `slot`, whose number may be given out again by any later XQTlsAlloc. What threads have
/// stored is forgotten, not deleted. A number that is not allocated does nothing. Threads: any; the
/// caller sees to it that no other thread uses the slot any more. Cost: O(1), no allocation.
HV_API void XQTlsFree(unsigned int slot);

/// Returns what the calling thread last stored in `slot`, null when it has stored nothing since the
/// slot was allocated, or when `slot` is not allocated. Threads: any, without a lock. Cost: a few
/// loads; no allocation.
HV_API void* XQTlsGetValue(unsigned int slot);

/// Stores `value` in `slot` for the calling thread and returns 1. Returns 0, with the slot reading
/// as before, when `slot` is not allocated, when there is no memory for the thread's table, and in
/// a thread that is already being torn down. It never throws: what is kept in slots only saves
/// work, so a read-only operation need not fail for it. Threads: any, without a lock. Cost: a few
/// loads and stores; the first non-null pointer near a number allocates.
HV_API int XQTlsSetValue(unsigned int slot, void* value);

#endif
