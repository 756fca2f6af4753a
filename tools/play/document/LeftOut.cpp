// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What a document asks for and the player does not do.

#include <tools/play/document/LeftOut.h>

#include <algorithm>

void LeftOut::Add(std::string const& text, std::string const& place)
{
    auto const found = std::find_if(entries_.begin(), entries_.end(),
                                    [&text](Entry const& entry) { return entry.text == text; });
    if (found != entries_.end()) {
        ++found->count;
    } else {
        entries_.push_back({text, place, 1});
    }
}
