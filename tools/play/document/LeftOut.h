// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What a document asks for and the player does not do.

#ifndef HV_TOOLS_PLAY_DOCUMENT_LEFTOUT_H
#define HV_TOOLS_PLAY_DOCUMENT_LEFTOUT_H

#include <cstddef>
#include <string>
#include <vector>

/// Collects what is left out: each thing once, with the place where it was first met.
class LeftOut {
public:
    struct Entry {
        std::string text;   ///< images
        std::string place;  ///< layers[2]
        std::size_t count;
    };

    void Add(std::string const& text, std::string const& place);
    /// In the order in which they were first met.
    std::vector<Entry> const& Entries() const { return entries_; }

private:
    std::vector<Entry> entries_;
};

#endif
