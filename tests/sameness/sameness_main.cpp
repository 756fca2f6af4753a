// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Prints a hash of each family of results over fixed inputs. Two builds of the library, and any
// number of threads, print the same text: hv_sameness [THREADS].

#include "families.h"

#include <atomic>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <thread>

namespace {

/// The digests of all items, worked out by `threads` threads that take the next item each.
std::vector<std::uint64_t> ItemDigests(Family const& family, unsigned int threads)
{
    std::vector<std::uint64_t> digests(family.items);
    std::atomic<unsigned int> next{0};
    auto const work = [&] {
        for (unsigned int item = next++; item < family.items; item = next++) {
            Digest digest;
            family.add(item, digest);
            digests[item] = digest.Value();
        }
    };
    std::vector<std::thread> pool;
    for (unsigned int i = 0; i < threads; ++i) {
        pool.emplace_back(work);
    }
    for (std::thread& thread : pool) {
        thread.join();
    }
    return digests;
}

}  // namespace

int main(int argc, char** argv)
{
    int const threads = argc > 1 ? std::atoi(argv[1]) : 1;
    if (argc > 2 || threads < 1 || threads > 64) {
        std::fprintf(stderr, "usage: hv_sameness [THREADS], 1 to 64\n");
        return 2;
    }
    Families families;
    AddCurveFamilies(families);
    AddRotationFamilies(families);
    AddOutlineFamilies(families);
    AddRasterFamilies(families);
    AddMotionFamilies(families);
    AddDrawnFamilies(families);
    for (Family const& family : families) {
        Digest whole;
        for (std::uint64_t const digest : ItemDigests(family, static_cast<unsigned int>(threads))) {
            whole.Add(digest);
        }
        std::printf("%016" PRIx64 " %s\n", whole.Value(), family.name.c_str());
    }
    return 0;
}
