// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Coverage that is kept from frame to frame.

#ifndef HV_TOOLS_PLAY_PAINTING_COVERAGECACHE_H
#define HV_TOOLS_PLAY_PAINTING_COVERAGECACHE_H

#include <tools/paint/Coverage.h>
#include <tools/play/painting/PaintKey.h>

#include <cstddef>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>

/// Remembers the coverage of what stays the same: many parts of an animation rest while others
/// move. What is kept was asked for in the frame before, too; so what moves costs a look-up alone,
/// and what is gone from the picture is forgotten with the next frame.
class CoverageCache {
public:
    /// @param mostBytes  keeps no more than that.
    explicit CoverageCache(std::size_t mostBytes = kMostBytes) : mostBytes_(mostBytes) {}

    /// Begins a frame: forgets what the one before did not ask for.
    void BeginFrame();

    /// The coverage of this key, made by make(coverage) when it is not known. Valid until the next
    /// one is asked for.
    template <class Make>
    Coverage const& Get(PaintKey const& key, Make const& make)
    {
        auto const known = kept_.find(key.Bytes());
        if (known != kept_.end()) {
            known->second.isAsked = true;
            return known->second.coverage;
        }
        make(fresh_);
        return IsRepeated(key) ? Keep(key) : fresh_;
    }

private:
    static constexpr std::size_t kMostBytes = std::size_t(64) << 20;

    struct Entry {
        Coverage coverage;
        bool isAsked;
    };

    bool IsRepeated(PaintKey const& key);
    Coverage const& Keep(PaintKey const& key);

    std::unordered_map<std::string, Entry> kept_;
    std::size_t const mostBytes_;
    std::size_t numBytesKept_ = 0;
    std::unordered_set<std::size_t> askedBefore_;  ///< hashes of the frame before
    std::unordered_set<std::size_t> askedNow_;
    Coverage fresh_;
};

#endif
