// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The round numbers along an axis.

#ifndef HV_TOOLS_PLOT_NICETICKS_H
#define HV_TOOLS_PLOT_NICETICKS_H

#include <string>

/// Ticks at the multiples of 1, 2 or 5 times a power of ten that lie in a range.
class NiceTicks {
public:
    /// @param low, high  finite, low < high, and so far apart that their difference counts beside
    ///                   them; see NiceTicks_Widen.
    /// @param most       how many ticks at most, 2 or more; there are at least a third of it.
    NiceTicks(double low, double high, int most);

    int Count() const { return count_; }
    double Step() const { return step_; }
    /// Tick i, 0 <= i < Count(). A multiple of the step: no error adds up.
    double Value(int i) const;
    /// Its text, with as many decimals as tell it from its neighbours, or as a power of ten when it
    /// is very large or small.
    std::string Label(int i) const;

private:
    double first_;  ///< number of the first multiple
    double step_;
    int exponent_;  ///< of the power of ten below the step
    int count_;
};

/// Opens up a range that an axis cannot show: one of no width, or of a width that rounding swallows
/// beside its numbers. Afterwards NiceTicks takes it.
void NiceTicks_Widen(double& low, double& high);

#endif
