// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A polyline near points that arrive one by one.

#include <hv/pathbuild/internal/HvSwingFilter.h>

#include <algorithm>

bool HvSwingFilter::Add(Point const& p, Point& key)
{
    if (!(p.x > Reach())) {
        return false;
    }
    if (!hasEnd_) {
        Open(p);
        return false;
    }
    double const run = p.x - key_.x;
    double const low = std::max(low_, (p.y - tolerance_ - key_.y) / run);
    double const high = std::min(high_, (p.y + tolerance_ - key_.y) / run);
    if (low <= high) {
        low_ = low;
        high_ = high;
        MoveEnd(p);
        return false;
    }
    key = key_ = end_;
    Open(p);
    return true;
}

void HvSwingFilter::Open(Point const& p)
{
    double const run = p.x - key_.x;
    low_ = (p.y - tolerance_ - key_.y) / run;
    high_ = (p.y + tolerance_ - key_.y) / run;
    hasEnd_ = true;
    end_ = p;
}

void HvSwingFilter::MoveEnd(Point const& p)
{
    double const run = p.x - key_.x;
    double const slope = (p.y - key_.y) / run;
    end_ = p;
    if (slope < low_) {
        end_.y = key_.y + low_ * run;
    } else if (slope > high_) {
        end_.y = key_.y + high_ * run;
    }
}
