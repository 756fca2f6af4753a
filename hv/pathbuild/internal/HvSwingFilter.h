// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A polyline near points that arrive one by one.

#ifndef HV_PATHBUILD_INTERNAL_HVSWINGFILTER_H
#define HV_PATHBUILD_INTERNAL_HVSWINGFILTER_H

#include <hv/foundation/HvPoint2.h>

/// Thins out points of ascending x to the keys of a polyline that passes each of them within a
/// tolerance in y.
///
/// All lines through the last final key that pass every point since within the tolerance make up a
/// cone. A point narrows it; one that leaves nothing of it makes the end of the line so far a key,
/// from which a new cone opens. Between points there is nothing to miss: the keys lie at the x of
/// points.
///
///     |          . - hi
///     |     . -   |            the end of the line is as near to the newest point
///     K  -   o    o            as the cone lets it be
///     |     - .   |
///     |          - . lo
///
/// Source: Elmeleegy, Elmagarmid, Cecchet, Aref, Zwaenepoel, "Online piece-wise linear
/// approximation of numerical streams with precision guarantees", 2009, the swing filter; the
/// cone's end here follows the newest point instead of least squares. Constant time a point.
class HvSwingFilter {
public:
    using Point = HvPoint2<double>;

    /// A tolerance that is not above 0 keeps all points but those on a line.
    explicit HvSwingFilter(double tolerance) : tolerance_(tolerance > 0.0 ? tolerance : 0.0) {}

    /// Begins with the first key.
    void Start(Point const& key)
    {
        key_ = key;
        hasEnd_ = false;
    }
    /// Takes a point. Returns whether it has made a key final, which is stored then. A point that
    /// does not lie behind the one before is left out.
    bool Add(Point const& p, Point& key);
    /// The x of the last point.
    double Reach() const { return hasEnd_ ? end_.x : key_.x; }
    /// Whether there is a point behind the last final key.
    bool HasEnd() const { return hasEnd_; }
    /// The end of the line behind the last final key; it moves until it becomes final.
    Point End() const { return end_; }

private:
    void Open(Point const& p);
    void MoveEnd(Point const& p);

    double tolerance_;
    Point key_;
    Point end_;
    double low_ = 0.0;
    double high_ = 0.0;
    bool hasEnd_ = false;
};

#endif
