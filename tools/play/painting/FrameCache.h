// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What is kept from frame to frame.

#ifndef HV_TOOLS_PLAY_PAINTING_FRAMECACHE_H
#define HV_TOOLS_PLAY_PAINTING_FRAMECACHE_H

#include <tools/play/painting/PaintKey.h>

#include <cstddef>
#include <functional>
#include <string>
#include <unordered_map>
#include <unordered_set>

/// Remembers what stays the same: many parts of an animation rest while others move. What is kept
/// was asked for in the frame before, too; so what moves costs a look-up alone, and what is gone
/// from the picture is forgotten with the next frame. A Value has NumBytes().
template <class Value>
class FrameCache {
public:
    /// @param mostBytes  keeps no more than that.
    explicit FrameCache(std::size_t mostBytes = kMostBytes) : mostBytes_(mostBytes) {}

    /// Begins a frame: forgets what the one before did not ask for.
    void BeginFrame()
    {
        for (auto entry = kept_.begin(); entry != kept_.end();) {
            if (entry->second.isAsked) {
                entry->second.isAsked = false;
                ++entry;
            } else {
                numBytesKept_ -= entry->first.size() + entry->second.value.NumBytes();
                entry = kept_.erase(entry);
            }
        }
        askedBefore_.swap(askedNow_);
        askedNow_.clear();
    }

    /// The value of this key, made by make(value), where a former one may stand, when it is not
    /// known. Valid until the next one is asked for.
    template <class Make>
    Value const& Get(PaintKey const& key, Make const& make)
    {
        auto const known = kept_.find(key.Bytes());
        if (known != kept_.end()) {
            known->second.isAsked = true;
            return known->second.value;
        }
        make(fresh_);
        return IsRepeated(key) ? Keep(key) : fresh_;
    }

private:
    static constexpr std::size_t kMostBytes = std::size_t(64) << 20;

    struct Entry {
        Value value;
        bool isAsked;
    };

    /// A hash tells: one that two keys share keeps, at worst, what comes but once.
    bool IsRepeated(PaintKey const& key)
    {
        std::size_t const hash = std::hash<std::string>()(key.Bytes());
        askedNow_.insert(hash);
        return askedBefore_.count(hash) != 0;
    }
    Value const& Keep(PaintKey const& key)
    {
        std::size_t const size = key.Bytes().size() + fresh_.NumBytes();
        if (numBytesKept_ + size > mostBytes_) {
            return fresh_;
        }
        numBytesKept_ += size;
        return kept_.emplace(key.Bytes(), Entry{fresh_, true}).first->second.value;
    }

    std::unordered_map<std::string, Entry> kept_;
    std::size_t const mostBytes_;
    std::size_t numBytesKept_ = 0;
    std::unordered_set<std::size_t> askedBefore_;  ///< hashes of the frame before
    std::unordered_set<std::size_t> askedNow_;
    Value fresh_;
};

#endif
