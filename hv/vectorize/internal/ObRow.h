// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A row of pixels as a list of runs.

#ifndef HV_VECTORIZE_INTERNAL_OBROW_H
#define HV_VECTORIZE_INTERNAL_OBROW_H

// A row is a list of pairs, one for each maximal stretch of pixels of the value looked for: the
// column of its first pixel and that of its last, each kObRowOffset higher, from left to right. The
// pair (0, 0) ends the list.

/// Keeps the columns of a row apart from the 0 that ends it, at both ends of a pair.
constexpr int kObRowOffset = 2;

/// The widest raster whose columns fit the entries of a row.
constexpr int kObWidestRaster = 65533;

/// Entries of the row with the most runs, every other pixel being one, and its end.
constexpr int ObRow_MostEntries(int width)
{
    return width / 2 * 2 + 4;
}

/// Makes `row` the list of an empty row.
inline void ObRow_Clear(unsigned short* row)
{
    row[0] = 0;
    row[1] = 0;
}

/// Makes `row` the list of `width` pixels.
void ObRow_Encode(unsigned char const* pixels, int width, unsigned char value, unsigned short* row);

/// Several neighbouring runs of a row by their numbers, which begin with 1; 0, 0 when there is
/// none.
struct ObRunRange {
    unsigned int first = 0;
    unsigned int last = 0;

    bool IsEmpty() const { return first == 0; }
};

/// Finds the runs of a row that share columns with the runs of a neighbouring one.
class ObRowCursor {
public:
    explicit ObRowCursor(unsigned short const* row) : row_(row) {}

    /// The runs that share a column with those from `start` to `end`; asked from left to right for
    /// stretches that do not touch. Cost: one walk over the row for all of them.
    ObRunRange Overlapping(int start, int end)
    {
        while (HasRun(index_) && End(index_) < start) {
            ++index_;
        }
        unsigned int beyond = index_;
        while (HasRun(beyond) && Start(beyond) <= end) {
            ++beyond;
        }
        if (beyond == index_) {
            return {};
        }
        ObRunRange const range = {index_ + 1, beyond};
        index_ = beyond - 1;  // the last of them may reach the next stretch too
        return range;
    }

private:
    bool HasRun(unsigned int i) const { return row_[2 * i] != 0; }
    int Start(unsigned int i) const { return row_[2 * i] - kObRowOffset; }
    int End(unsigned int i) const { return row_[2 * i + 1] - kObRowOffset; }

    unsigned short const* row_;
    unsigned int index_ = 0;
};

#endif
