// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Coverage that is kept from frame to frame.

#include <tools/play/painting/CoverageCache.h>

#include <functional>

void CoverageCache::BeginFrame()
{
    for (auto entry = kept_.begin(); entry != kept_.end();) {
        if (entry->second.isAsked) {
            entry->second.isAsked = false;
            ++entry;
        } else {
            numBytesKept_ -= entry->first.size() + entry->second.coverage.NumBytes();
            entry = kept_.erase(entry);
        }
    }
    askedBefore_.swap(askedNow_);
    askedNow_.clear();
}

/// A hash tells: one that two keys share keeps, at worst, what comes but once.
bool CoverageCache::IsRepeated(PaintKey const& key)
{
    std::size_t const hash = std::hash<std::string>()(key.Bytes());
    askedNow_.insert(hash);
    return askedBefore_.count(hash) != 0;
}

Coverage const& CoverageCache::Keep(PaintKey const& key)
{
    std::size_t const size = key.Bytes().size() + fresh_.NumBytes();
    if (numBytesKept_ + size > mostBytes_) {
        return fresh_;
    }
    numBytesKept_ += size;
    return kept_.emplace(key.Bytes(), Entry{fresh_, true}).first->second.coverage;
}
