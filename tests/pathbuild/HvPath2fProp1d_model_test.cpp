// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Random edits of a path and of a list of its subpaths: every property stays with its subpath.

#include <hv/pathbuild/HvPath2fProp1d.h>

#include <tests/support/generators.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "prop_path_support.h"

#include <cstddef>

namespace {

unsigned int PickBelow(unsigned int end)
{
    return PickInRange<unsigned int>(0, end);
}

/// What is known of a subpath: how many points it has, and its property. No property is 0.
struct Subpath {
    unsigned int count;
    double property;
};

/// A path and the list of its subpaths.
class Twins {
public:
    OpenProp path;

    void Append()
    {
        PropPoint const start = PickPoint();
        path.Moveto(start);
        unsigned int count = 1;
        unsigned int const segments = PickBelow(5);
        for (unsigned int k = 0; k < segments; ++k) {
            unsigned int const degree = 1 + PickBelow(8);
            PropPoint pts[8];
            for (PropPoint& p : pts) {
                p = PickPoint();
            }
            if (k + 1 == segments && PickBelow(2) == 0) {
                pts[degree - 1] = start;
            }
            path.AltCurveto(pts, degree);
            count += degree;
        }
        if (PickBelow(2) == 0) {
            path.Closeto();
        }
        subpaths_.push_back({count, 0.0});
    }

    void Set()
    {
        unsigned int const i = PickPointIndex();
        double const property = NewProperty();
        path.SetPropCurve(i, Constant(property));
        At(i).property = property;
    }

    void CopyProperty()
    {
        unsigned int const i = PickPointIndex();
        unsigned int const from = PickPointIndex();
        if (PickBelow(2) == 0) {
            path.SetPropCurve(i, from);
        } else {
            path.SetPropCurve(i, OpenProp(path), from);
        }
        if (At(from).property != 0.0) {
            At(i).property = At(from).property;
        }
    }

    void RemoveSubpath()
    {
        unsigned int const i = PickPointIndex();
        RC_ASSERT(path.RemoveSubpath(i) == 1);
        subpaths_.erase(subpaths_.begin() + std::ptrdiff_t(Number(i)));
    }

    void RemoveSection()
    {
        unsigned int first = 0;
        unsigned int last = 0;
        PickSection(path, first, last);
        std::size_t const number = Number(first);
        unsigned int const start = Start(number);
        Subpath const whole = subpaths_[number];
        if (path.RemoveSubpathSection(first, last) == 0) {
            return;
        }
        Subpath head = whole;
        Subpath tail = whole;
        head.count = first - start + 1;
        tail.count = start + whole.count - last;
        bool const isTailLeft = tail.count > 1;
        if (isTailLeft) {
            subpaths_.insert(subpaths_.begin() + std::ptrdiff_t(number) + 1, tail);
        }
        if (isTailLeft && first == start) {
            subpaths_.erase(subpaths_.begin() + std::ptrdiff_t(number));
        } else {
            subpaths_[number] = head;
        }
    }

    void ReplaceSection()
    {
        unsigned int first = 0;
        unsigned int last = 0;
        PickSection(path, first, last);
        OpenProp source(path);
        if (PickBelow(2) == 0) {
            Twins other;
            other.Append();
            source = other.path;
        }
        unsigned int sourceFirst = 0;
        unsigned int sourceLast = 0;
        PickSection(source, sourceFirst, sourceLast);
        if (PickBelow(8) != 0) {
            source.ReplacePointIgnoringLock(sourceFirst, path.GetPoint(first));
            source.ReplacePointIgnoringLock(sourceLast, path.GetPoint(last));
        }
        if (path.ReplaceSubpathSection(first, last, source, sourceFirst, sourceLast) != 0) {
            At(first).count += (sourceLast - sourceFirst) - (last - first);
        }
    }

    // Edits that move no index.
    void Reshape()
    {
        unsigned int const i = PickPointIndex();
        path.ReplacePoint(i, PickPoint(), PickInRange(0, 2));
        path.LockG1(i);
        path.OpenSubpath(PickPointIndex());
        path.Closeto();
        OpenProp const copy(path);
        path = copy;
    }

    void RequireAlike() const
    {
        PropKeys keys;
        for (std::size_t n = 0; n < subpaths_.size(); ++n) {
            unsigned int start = 0;
            unsigned int end = 0;
            path.GetSubpathIndices(Start(n), start, end);
            RC_ASSERT(start == Start(n));
            RC_ASSERT(end == start + subpaths_[n].count - 1);
            if (subpaths_[n].property != 0.0) {
                keys.emplace_back(start, subpaths_[n].property);
            }
        }
        RC_ASSERT(path.NumPoints() == Start(subpaths_.size()));
        RC_ASSERT(path.Keys() == keys);
    }

    bool IsEmpty() const { return subpaths_.empty(); }

private:
    static PropPoint PickPoint() { return {float(PickInRange(-2, 3)), float(PickInRange(-2, 3))}; }
    double NewProperty() { return newest_ += 1.0; }

    unsigned int PickPointIndex() const { return PickBelow(path.NumPoints()); }
    // Mostly two nodes of one subpath in their order.
    static void PickSection(HvPath2f const& of, unsigned int& first, unsigned int& last)
    {
        unsigned int const i = PickBelow(of.NumPoints());
        unsigned int start = 0;
        unsigned int end = 0;
        of.GetSubpathIndices(i, start, end);
        first = of.StartOfSegment(i);
        last = of.EndOfSegment(start + PickBelow(end - start + 1));
        if (first > last) {
            std::swap(first, last);
        }
        if (PickBelow(10) == 0) {
            last = PickBelow(of.NumPoints());
        }
    }

    std::size_t Number(unsigned int i) const
    {
        std::size_t n = 0;
        while (i >= Start(n + 1)) {
            ++n;
        }
        return n;
    }
    Subpath& At(unsigned int i) { return subpaths_[Number(i)]; }
    unsigned int Start(std::size_t n) const
    {
        unsigned int start = 0;
        for (std::size_t k = 0; k < n; ++k) {
            start += subpaths_[k].count;
        }
        return start;
    }

    std::vector<Subpath> subpaths_;
    double newest_ = 0.0;
};

}  // namespace

TEST(HvPath2fProp1d_model, PropertiesFollowTheirSubpaths)
{
    EXPECT_TRUE(rc::check([] {
        Twins twins;
        for (int step = 0; step < 40; ++step) {
            if (twins.IsEmpty()) {
                twins.Append();
            }
            switch (PickBelow(10)) {
            case 0:
            case 1:
                twins.Append();
                break;
            case 2:
            case 3:
            case 4:
                twins.Set();
                break;
            case 5:
                twins.CopyProperty();
                break;
            case 6:
                twins.RemoveSubpath();
                break;
            case 7:
                twins.RemoveSection();
                break;
            case 8:
                twins.ReplaceSection();
                break;
            default:
                twins.Reshape();
                break;
            }
            twins.RequireAlike();
        }
    }));
}
