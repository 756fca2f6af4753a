// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A slow path for the tests: a list of subpaths, each a list of records that know their place in
// their segment. Edits insert and remove one record at a time, in the order in which they are
// described. Indices are those of the path.

#ifndef TESTS_SHAPE_PATH_MODEL_H
#define TESTS_SHAPE_PATH_MODEL_H

#include "path_test_support.h"

#include <cmath>
#include <utility>
#include <vector>

class PathModel {
public:
    struct Record {
        PathPoint p;
        unsigned int degree = 0;  ///< 0 for the start of a subpath
        unsigned int place = 0;   ///< steps from the start of the segment
        bool isClosing = false;
        bool isLocked = false;
    };
    using Subpath = std::vector<Record>;

    std::vector<Subpath> subpaths;
    int lastSubpathOpen = 0;

    static bool IsNode(Record const& r) { return r.place == r.degree; }

    unsigned int Count() const
    {
        std::size_t count = 0;
        for (Subpath const& s : subpaths) {
            count += s.size();
        }
        return static_cast<unsigned int>(count);
    }

    /// The roles, typed from the table of the class: for each degree the first of its numbers.
    static unsigned int RoleOf(Record const& r)
    {
        static constexpr unsigned int kFirst[] = {1, 3, 5, 8, 12, 17, 23, 30, 38};
        if (r.degree == 0) {
            return 1;
        }
        return kFirst[r.degree] + r.place - 1 + (r.isClosing ? 1 : 0);
    }

    PathImage Image() const
    {
        PathImage image;
        image.lastSubpathOpen = lastSubpathOpen;
        for (Subpath const& s : subpaths) {
            for (Record const& r : s) {
                image.points.push_back(r.p);
                image.tags.push_back(RoleOf(r) + (r.isLocked ? 128 : 0));
            }
        }
        return image;
    }

    // Building.

    void Moveto(PathPoint p)
    {
        subpaths.push_back({Record{p, 0, 0, false, false}});
        lastSubpathOpen = 1;
    }
    void Curve(std::vector<PathPoint> const& pts)
    {
        unsigned int const degree = static_cast<unsigned int>(pts.size());
        for (unsigned int k = 1; k <= degree; ++k) {
            subpaths.back().push_back(Record{pts[k - 1], degree, k, false, false});
        }
    }
    int Closeto()
    {
        Subpath& s = subpaths.back();
        if (s.front().p != s.back().p) {
            return 0;
        }
        if (s.back().degree != 0) {
            s.back().isClosing = true;
        }
        lastSubpathOpen = 0;
        return 1;
    }

    // Moving.

    int IsG1(unsigned int i) const
    {
        auto const [n, k] = Find(i);
        Subpath const& s = subpaths[n];
        std::size_t const e = s.size() - 1;
        if (k > 0 && k < e) {
            return InLine(s[k - 1].p, s[k].p, s[k + 1].p);
        }
        return s[e].isClosing && e > 2 ? InLine(s[1].p, s[k].p, s[e - 1].p) : 0;
    }
    int Lock(unsigned int i)
    {
        auto const [n, k] = Find(i);
        Subpath& s = subpaths[n];
        std::size_t const e = s.size() - 1;
        if (s[k].isLocked) {
            return 1;
        }
        if (!IsNode(s[k]) || IsG1(i) == 0) {
            return 0;
        }
        if (k == 0 || k == e) {
            if (s[e].degree <= 2) {
                return 0;
            }
            s[0].isLocked = s[e].isLocked = true;
            return 1;
        }
        if (s[k].degree <= 2 || s[k + 1].degree <= 2) {
            return 0;
        }
        s[k].isLocked = true;
        return 1;
    }
    void Replace(unsigned int i, PathPoint p, int keepRatio)
    {
        auto const [n, k] = Find(i);
        ReplaceIn(n, k, p, keepRatio);
    }
    void ReplaceIgnoringLock(unsigned int i, PathPoint p)
    {
        auto const [n, k] = Find(i);
        subpaths[n][k].p = p;
    }
    int ReplaceTangents(unsigned int i, PathPoint d)
    {
        auto const [n, k] = Find(i);
        Subpath& s = subpaths[n];
        if (!IsNode(s[k])) {
            return 0;
        }
        bool const isEnd = k == 0 || k + 1 == s.size();
        if (isEnd && !s.back().isClosing) {
            return 0;
        }
        PathPoint const at = s[k].p;
        s[isEnd ? s.size() - 2 : k - 1].p = at - d;
        s[isEnd ? 1 : k + 1].p = at + d;
        return 1;
    }

    // Editing.

    int Close(unsigned int i)
    {
        auto const [n, k] = Find(i);
        Subpath& s = subpaths[n];
        if (s.front().p == s.back().p) {
            if (s.size() == 1 || s.back().isClosing || !IsNode(s.back())) {
                return 0;
            }
            s.back().isClosing = true;
        } else {
            s.push_back(Record{s.front().p, 1, 1, true, false});
        }
        if (n + 1 == subpaths.size()) {
            lastSubpathOpen = 0;
        }
        return 1;
    }
    int Open(unsigned int i)
    {
        std::size_t const n = Find(i).first;
        Subpath& s = subpaths[n];
        if (!s.back().isClosing) {
            return 0;
        }
        s.back().isClosing = false;
        s.front().isLocked = s.back().isLocked = false;
        if (n + 1 == subpaths.size()) {
            lastSubpathOpen = 1;
        }
        return 1;
    }
    int ReplaceSegment(unsigned int i, std::vector<PathPoint> const& pts)
    {
        unsigned int const degree = static_cast<unsigned int>(pts.size()) - 1;
        auto const [n, k] = Find(i);
        Subpath& s = subpaths[n];
        if (s.size() == 1 || degree < 1 || degree > 8) {
            return 0;
        }
        Record const& r = s[k == 0 ? 1 : k];
        std::size_t const first = (k == 0 ? 1 : k) - r.place;
        std::size_t const last = first + r.degree;
        if (s[first].p != pts.front() || s[last].p != pts.back() ||
            (degree <= 2 && (s[first].isLocked || s[last].isLocked))) {
            return 0;
        }
        Subpath inner;
        for (unsigned int place = 1; place < degree; ++place) {
            inner.push_back(Record{pts[place], degree, place, false, false});
        }
        PutBetween(n, first, last, inner, degree);
        return 1;
    }
    int ReplaceByLine(unsigned int first, unsigned int last)
    {
        auto const [n, a] = Find(first);
        auto const [m, b] = Find(last);
        if (first == last || !IsNode(subpaths[n][a]) || !IsNode(subpaths[m][b]) ||
            subpaths[n][a].isLocked || subpaths[m][b].isLocked) {
            return 0;
        }
        if (first > last) {
            return 1;
        }
        if (n != m) {
            return 0;
        }
        if (b - a >= 2) {
            PutBetween(n, a, b, {}, 1);
        }
        return 1;
    }
    int ReplaceByCubic(unsigned int first, unsigned int last, PathPoint p, PathPoint q)
    {
        if (!IsSection(first, last)) {
            return 0;
        }
        auto const [n, a] = Find(first);
        std::size_t const b = a + last - first;
        Record const inner[] = {{p, 3, 1, false, false}, {q, 3, 2, false, false}};
        if (b - a == 2) {
            ReplaceIn(n, a + 1, p, 1);
            subpaths[n][a + 1] = Record{subpaths[n][a + 1].p, 3, 1, false, false};
            Insert(n, a + 2, inner[1]);
            SetEnd(n, a + 3, 3);
        } else {
            PutBetween(n, a, b, {inner[0], inner[1]}, 3);
        }
        return 1;
    }
    int ReplaceBySource(unsigned int first, unsigned int last, PathModel const source,
                        unsigned int sourceFirst, unsigned int sourceLast)
    {
        if (!IsSection(first, last) || !source.IsSection(sourceFirst, sourceLast)) {
            return 0;
        }
        auto const [n, a] = Find(first);
        auto const [m, c] = source.Find(sourceFirst);
        std::size_t const b = a + last - first;
        std::size_t const d = c + sourceLast - sourceFirst;
        Subpath const& s = subpaths[n];
        Subpath const& from = source.subpaths[m];
        if (s[a].p != from[c].p || s[b].p != from[d].p ||
            (s[a].isLocked && from[c + 1].degree <= 2) || (s[b].isLocked && from[d].degree <= 2)) {
            return 0;
        }
        Subpath const inner(from.begin() + std::ptrdiff_t(c) + 1, from.begin() + std::ptrdiff_t(d));
        PutBetween(n, a, b, inner, from[d].degree);
        return 1;
    }
    int RemoveSubpath(unsigned int i)
    {
        std::size_t const n = Find(i).first;
        bool const wasLast = n + 1 == subpaths.size();
        subpaths.erase(subpaths.begin() + std::ptrdiff_t(n));
        if (wasLast && n > 0) {
            lastSubpathOpen = subpaths.back().back().isClosing ? 0 : 1;
        }
        return 1;
    }
    int RemoveSection(unsigned int first, unsigned int last)
    {
        if (!IsSection(first, last)) {
            return 0;
        }
        auto const [n, a] = Find(first);
        std::size_t const b = a + last - first;
        Open(first);
        Subpath const s = subpaths[n];
        Subpath head(s.begin(), s.begin() + std::ptrdiff_t(a) + 1);
        head.back().isLocked = false;
        Subpath tail(s.begin() + std::ptrdiff_t(b), s.end());
        tail.front() = Record{tail.front().p, 0, 0, false, false};
        subpaths.erase(subpaths.begin() + std::ptrdiff_t(n));
        if (b + 1 != s.size()) {
            subpaths.insert(subpaths.begin() + std::ptrdiff_t(n), tail);
        }
        if (b + 1 == s.size() || a != 0) {
            subpaths.insert(subpaths.begin() + std::ptrdiff_t(n), head);
        }
        return 1;
    }

    // The subpath of an index, and the place in it.
    std::pair<std::size_t, std::size_t> Find(unsigned int i) const
    {
        std::size_t n = 0;
        std::size_t k = i;
        while (k >= subpaths[n].size()) {
            k -= subpaths[n++].size();
        }
        return {n, k};
    }
    bool IsSection(unsigned int first, unsigned int last) const
    {
        return first < last && last < Count() && Find(first).first == Find(last).first &&
               IsNode(At(first)) && IsNode(At(last));
    }
    Record const& At(unsigned int i) const
    {
        auto const [n, k] = Find(i);
        return subpaths[n][k];
    }

private:
    static int InLine(PathPoint a, PathPoint b, PathPoint c)
    {
        double const ux = double(b.x) - a.x, uy = double(b.y) - a.y;
        double const vx = double(c.x) - b.x, vy = double(c.y) - b.y;
        double const uu = ux * ux + uy * uy, vv = vx * vx + vy * vy;
        double const e = 1e-6;
        if (uu <= e * e || vv <= e * e) {
            return 1;
        }
        double const cross = ux * vy - uy * vx;
        return ux * vx + uy * vy > 0 && cross * cross / (uu * vv) <= e ? 1 : 0;
    }
    static double Distance(PathPoint a, PathPoint b)
    {
        return std::hypot(double(a.x) - b.x, double(a.y) - b.y);
    }
    // c onto the line through a and b.
    static PathPoint Projected(PathPoint c, PathPoint a, PathPoint b)
    {
        double const dx = double(b.x) - a.x, dy = double(b.y) - a.y;
        double const t =
            (dx * (double(c.x) - a.x) + dy * (double(c.y) - a.y)) / (dx * dx + dy * dy);
        return {float((1 - t) * a.x + t * b.x), float((1 - t) * a.y + t * b.y)};
    }
    static bool AreNear(PathPoint a, PathPoint b)
    {
        double const dx = double(a.x) - b.x, dy = double(a.y) - b.y;
        return dx * dx + dy * dy < 1e-7;
    }

    unsigned int IndexOf(std::size_t n, std::size_t k) const
    {
        std::size_t i = k;
        for (std::size_t m = 0; m < n; ++m) {
            i += subpaths[m].size();
        }
        return static_cast<unsigned int>(i);
    }

    void ReplaceIn(std::size_t n, std::size_t k, PathPoint p, int keepRatio)
    {
        Subpath& s = subpaths[n];
        std::size_t const e = s.size() - 1;
        unsigned int const i = IndexOf(n, k);
        PathPoint const delta = p - s[k].p;
        if (k == 0 || k == e) {
            if (s[k].isLocked) {
                s[e].p = s[0].p = p;
                s[e - 1].p = s[e - 1].p + delta;
                s[1].p = s[1].p + delta;
                if (IsG1(i) == 0 && !AreNear(s[0].p, s[1].p)) {
                    s[e - 1].p = Projected(s[e - 1].p, s[0].p, s[1].p);
                }
            } else if (s[e].isClosing) {
                s[e].p = s[0].p = p;
            } else {
                s[k].p = p;
            }
            return;
        }
        Record const& r = s[k];
        if (IsNode(r)) {
            s[k].p = p;
            if (r.isLocked) {
                s[k - 1].p = s[k - 1].p + delta;
                s[k + 1].p = s[k + 1].p + delta;
                if (IsG1(i) == 0 && !AreNear(s[k - 1].p, s[k].p)) {
                    s[k + 1].p = Projected(s[k + 1].p, s[k - 1].p, s[k].p);
                }
            }
            return;
        }
        if (r.place == 1 && s[k - 1].isLocked) {
            TurnOpposite(s, k, k - 1, k == 1 ? e - 1 : k - 2, p, keepRatio);
        } else if (r.place != 1 && r.place + 1 == r.degree && s[k + 1].isLocked) {
            TurnOpposite(s, k, k + 1, k + 1 == e ? 1 : k + 2, p, keepRatio);
        }
        s[k].p = p;
    }
    static void TurnOpposite(Subpath& s, std::size_t k, std::size_t node, std::size_t opposite,
                             PathPoint p, int keepRatio)
    {
        PathPoint const at = s[node].p;
        double x = double(p.x) - at.x;
        double y = double(p.y) - at.y;
        double const length = Distance(at, s[opposite].p);
        double factor = length;
        if (keepRatio == 0 && (x != 0 || y != 0)) {
            double const norm = std::hypot(x, y);
            x /= norm;
            y /= norm;
        } else if (keepRatio != 0 && s[k].p != at) {
            factor = length / Distance(s[k].p, at);
        }
        s[opposite].p = {float(at.x - factor * x), float(at.y - factor * y)};
    }

    void Insert(std::size_t n, std::size_t k, Record const& r)
    {
        subpaths[n].insert(subpaths[n].begin() + std::ptrdiff_t(k), r);
    }
    void Remove(std::size_t n, std::size_t k)
    {
        subpaths[n].erase(subpaths[n].begin() + std::ptrdiff_t(k));
    }

    // Puts `inner` between the records a and b, whose segment then is of `degree` at its end.
    void PutBetween(std::size_t n, std::size_t a, std::size_t b, Subpath const& inner,
                    unsigned int degree)
    {
        if (inner.size() < 2 || b - a < 3) {
            for (; b - a > 1; --b) {
                Remove(n, a + 1);
            }
            for (Record const& r : inner) {
                Insert(n, b++, r);
            }
        } else {
            for (; b - a > 3; --b) {
                Remove(n, a + 2);
            }
            ReplaceIn(n, a + 1, inner.front().p, 1);
            CopyTag(subpaths[n][a + 1], inner.front());
            for (std::size_t k = 1; k + 1 < inner.size(); ++k) {
                Insert(n, b - 1, inner[k]);
                ++b;
            }
            ReplaceIn(n, b - 1, inner.back().p, 1);
            CopyTag(subpaths[n][b - 1], inner.back());
        }
        SetEnd(n, b, degree);
    }
    // A closing end that is not the last of its subpath, where ends were parted, becomes plain.
    void SetEnd(std::size_t n, std::size_t k, unsigned int degree)
    {
        Record& r = subpaths[n][k];
        r.degree = r.place = degree;
        r.isClosing = r.isClosing && k + 1 == subpaths[n].size();
    }
    static void CopyTag(Record& to, Record const& from)
    {
        PathPoint const p = to.p;
        to = from;
        to.p = p;
    }
};

#endif
