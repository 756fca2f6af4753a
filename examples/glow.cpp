// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Gives a ring a glow: pixels are as bright as they are near to it, inside and outside.
//
// A distance map tells of each pixel how far the nearest seed is, in one pass down and one up, as
// fast for a million seeds as for one.

#include <hv/hv.h>

#include <cmath>
#include <cstdio>

int main()
{
    constexpr int kSize = 24;
    constexpr unsigned char kSeed = 1;
    constexpr unsigned char kInside = 2;

    // The oval in the square from (5, 5) to (19, 19); its pixels that touch others are the seeds.
    HvUByteRaster disc(kSize, kSize, 0);
    HvOval2f({5, 5}, {19, 5}, {5, 19}).Fill(HvGC(), disc, nullptr);
    HvUByteRaster mask(kSize, kSize, 0);
    for (int y = 1; y < kSize - 1; ++y) {
        for (int x = 1; x < kSize - 1; ++x) {
            unsigned char const* const pixel = disc.data + y * kSize + x;
            bool const isWithin =
                pixel[-1] != 0 && pixel[1] != 0 && pixel[-kSize] != 0 && pixel[kSize] != 0;
            if (*pixel != 0) {
                mask.data[y * kSize + x] = isWithin ? kInside : kSeed;
            }
        }
    }

    // Squares of distances; negative where the mask says inside.
    HvDoubleRaster map(kSize, kSize, 0);
    map.SetToSquaredEuclideanDistanceMap(mask);
    for (int y = 0; y < kSize; y += 2) {
        for (int x = 0; x < kSize; ++x) {
            double const distance = std::sqrt(std::fabs(map.data[y * kSize + x]));
            std::putchar(distance < 1 ? '@' : distance < 2.1 ? '*' : distance < 4.1 ? '.' : ' ');
        }
        std::putchar('\n');
    }
    std::printf("the middle lies %.1f within the ring, the corner %.1f outside\n",
                std::sqrt(-map.data[kSize / 2 * kSize + kSize / 2]), std::sqrt(map.data[0]));
}
