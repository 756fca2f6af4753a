// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Polygons with coordinates that nobody draws.

#ifndef TESTS_SUPPORT_HOSTILE_POLYGONS_H
#define TESTS_SUPPORT_HOSTILE_POLYGONS_H

#include <tests/support/random_polygons.h>

#include <limits>
#include <vector>

/// Polygons whose corners mix ordinary numbers with NaN, infinities, the greatest and the least,
/// and the powers of two where integers end.
inline PolygonList HostilePolygons(unsigned int seed)
{
    double const infinity = std::numeric_limits<double>::infinity();
    double const greatest = std::numeric_limits<double>::max();
    std::vector<double> const numbers = {0.0,
                                         -0.0,
                                         std::numeric_limits<double>::denorm_min(),
                                         std::numeric_limits<double>::quiet_NaN(),
                                         infinity,
                                         -infinity,
                                         greatest,
                                         -greatest,
                                         2147483648.0,
                                         -2147483649.0,
                                         9007199254740992.0,
                                         -9.3e18,
                                         1e30};
    RandomPolygons random(seed);
    auto const coordinate = [&] {
        return random.Pick(0, 2) == 0 ? numbers[static_cast<std::size_t>(
                                            random.Pick(0, static_cast<int>(numbers.size()) - 1))]
                                      : random.PickReal(-4.0, 12.0);
    };
    PolygonList list;
    for (int i = random.Pick(1, 3); i > 0; --i) {
        std::vector<HvPoint2<double>> corners;
        for (int k = random.Pick(1, 12); k > 0; --k) {
            double const x = coordinate();
            corners.emplace_back(x, coordinate());
        }
        list.Add(corners);
    }
    return list;
}

#endif
