// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Thread-local slots: the threads' side, pages of values made when a thread first stores into them.
//
//     slot -> page slot / 256 of this thread -> value and generation slot % 256
//
// A value counts only while its generation is the slot's own: so freeing a slot need not visit the
// threads, and a number given out anew reads null in all of them.

#include <hv/platform/internal/HvSlotRegistry.h>
#include <hv/platform/internal/fast_thread_local.h>
#include <hv/platform/thread_local_slots.h>

#include <algorithm>
#include <type_traits>

namespace {

// A page is what a thread pays for its first value: three kilobytes, so that a thread which looks
// at a few of a million curves stays small, and yet the list of pages for a million is short.
constexpr unsigned int kPageSlots = 256;

// Pages that a thread's list has room for at first.
constexpr unsigned int kFirstPages = 16;

struct Page {
    void* values[kPageSlots];
    std::uint32_t generations[kPageSlots];
};

using Registry = HvSlotRegistry<std::uint32_t>;

static_assert(std::is_trivially_destructible<Registry>::value,
              "slots are freed until the last static object is gone");
static_assert(std::is_trivially_destructible<Page>::value, "a page is freed as bytes");

Registry registry;

// Plain variables without a constructor, so that reading them needs no check whether they are made.
HV_FAST_THREAD_LOCAL Page** pages;
HV_FAST_THREAD_LOCAL unsigned int pageCount;
HV_FAST_THREAD_LOCAL bool threadEnds;

// Frees the thread's pages when it ends. Destructors that the thread runs later read null and store
// nothing: nobody would be left to free it.
class PageReaper {
public:
    ~PageReaper()
    {
        threadEnds = true;
        for (unsigned int page = 0; page < pageCount; ++page) {
            HvRawStorage_Free(pages[page]);
        }
        HvRawStorage_Free(pages);
        pages = nullptr;
        pageCount = 0;
    }
};

Page* FindPage(unsigned int slot)
{
    unsigned int const page = slot / kPageSlots;
    return page < pageCount ? pages[page] : nullptr;
}

bool GrowPageList(unsigned int needed)
{
    unsigned int const count = std::max({needed, 2 * pageCount, kFirstPages});
    auto const grown = static_cast<Page**>(HvRawStorage_Allocate(count, sizeof(Page*)));
    if (grown == nullptr) {
        return false;
    }
    std::copy_n(pages, pageCount, grown);
    HvRawStorage_Free(pages);
    pages = grown;
    pageCount = count;
    return true;
}

Page* MakePage(unsigned int slot)
{
    unsigned int const page = slot / kPageSlots;
    if (threadEnds || (page >= pageCount && !GrowPageList(page + 1))) {
        return nullptr;
    }
    thread_local PageReaper const reaper;
    pages[page] = static_cast<Page*>(HvRawStorage_Allocate(1, sizeof(Page)));
    return pages[page];
}

}  // namespace

unsigned int XQTlsAlloc()
{
    return registry.Allocate();
}

void XQTlsFree(unsigned int slot)
{
    registry.Free(slot);
}

void* XQTlsGetValue(unsigned int slot)
{
    Page const* const page = FindPage(slot);
    if (page == nullptr) {
        return nullptr;
    }
    unsigned int const index = slot % kPageSlots;
    return page->generations[index] == registry.GenerationOf(slot) ? page->values[index] : nullptr;
}

int XQTlsSetValue(unsigned int slot, void* value)
{
    std::uint32_t const generation = registry.GenerationOf(slot);
    if (!Registry::IsAlive(generation)) {
        return 0;
    }
    Page* page = FindPage(slot);
    if (page == nullptr) {
        if (value == nullptr) {
            return 1;  // it reads null already
        }
        page = MakePage(slot);
        if (page == nullptr) {
            return 0;
        }
    }
    unsigned int const index = slot % kPageSlots;
    page->generations[index] = generation;
    page->values[index] = value;
    return 1;
}
