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

/// Several neighbouring runs of a row, by their pairs in its list; null when there is none.
struct ObRunRange {
    unsigned short const* first = nullptr;
    unsigned short const* last = nullptr;

    bool IsEmpty() const { return first == nullptr; }
};

/// Finds the runs of a row that share columns with the runs of a neighbouring one.
class ObRowCursor {
public:
    explicit ObRowCursor(unsigned short const* row) : at_(row) {}

    /// The runs that share a column with the run at `run` in another row; asked from left to right.
    /// Cost: one walk over the row for all runs of the other.
    ObRunRange Overlapping(unsigned short const* run)
    {
        unsigned int const start = run[0];
        unsigned int const end = run[1];
        // Whether the first of them is to be passed is as open as a coin; no branch then.
        at_ += 2 * static_cast<int>(EndsBefore(at_, start));
        while (EndsBefore(at_, start)) {
            at_ += 2;
        }
        if (!BeginsUpTo(at_, end)) {
            return {};
        }
        ObRunRange range = {at_, at_};
        while (BeginsUpTo(range.last + 2, end)) {
            range.last += 2;
        }
        at_ = range.last;  // it may reach the next run too
        return range;
    }

private:
    /// Whether there is a run at `pair` that ends before `start`; the 0 at the end of the row wraps
    /// around.
    static bool EndsBefore(unsigned short const* pair, unsigned int start)
    {
        return pair[1] - 1u < start - 1u;
    }
    /// Whether there is a run at `pair` that begins no later than at `end`; likewise.
    static bool BeginsUpTo(unsigned short const* pair, unsigned int end)
    {
        return pair[0] - 1u < end;
    }

    unsigned short const* at_;
};

#endif
