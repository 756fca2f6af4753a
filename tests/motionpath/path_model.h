// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A motion path as a plain list of nodes, each with its two handles: edits that are index
// arithmetic on an array of points are assignments to fields here.

#ifndef HV_TESTS_MOTIONPATH_PATH_MODEL_H
#define HV_TESTS_MOTIONPATH_PATH_MODEL_H

#include <tests/motionpath/motion_path_support.h>

#include <algorithm>

class PathModel {
public:
    struct Node {
        Point in;  ///< the control before; of no meaning on the first node
        Point place;
        Point out;  ///< the control behind; of no meaning on the last node
        double time = 0;
        bool isLine = false;
        bool isLocked = false;
    };

    std::vector<Node> nodes;

    std::size_t Last() const { return nodes.size() - 1; }
    bool Rises(double a, double b) const { return b > a && b - a > 1e-30; }

    bool Moveto(Point const& p, double t)
    {
        if (!nodes.empty()) {
            return false;
        }
        nodes.push_back(At(p, t));
        return true;
    }

    bool Lineto(Point const& p, double t)
    {
        if (nodes.empty() || !Rises(nodes.back().time, t)) {
            return false;
        }
        nodes.back().isLine = true;
        nodes.back().out = p;
        nodes.push_back(At(p, t));
        return true;
    }

    bool PreLineto(Point const& p, double t)
    {
        if (nodes.empty() || !Rises(t, nodes.front().time)) {
            return false;
        }
        nodes.front().in = p;
        nodes.insert(nodes.begin(), At(p, t));
        nodes.front().isLine = true;
        return true;
    }

    bool Curveto(Point const& c1, Point const& c2, Point const& p, double t)
    {
        if (nodes.empty() || !Rises(nodes.back().time, t)) {
            return false;
        }
        std::size_t const joint = Last();
        nodes.back().isLine = false;
        nodes.back().out = c1;
        nodes.push_back(At(p, t));
        nodes.back().in = c2;
        if (joint > 0 && !nodes[joint - 1].isLine && nodes[joint].isLocked) {
            Align(nodes[joint]);
        }
        return true;
    }

    bool PreCurveto(Point const& c1, Point const& c2, Point const& p, double t)
    {
        if (nodes.empty() || !Rises(t, nodes.front().time)) {
            return false;
        }
        nodes.front().in = c1;
        nodes.insert(nodes.begin(), At(p, t));
        nodes.front().out = c2;
        if (nodes.size() > 2 && !nodes[1].isLine && nodes[1].isLocked) {
            Align(nodes[1]);
        }
        return true;
    }

    void Remove(std::size_t first, std::size_t last)
    {
        auto const begin = nodes.begin();
        nodes.erase(begin + static_cast<std::ptrdiff_t>(first),
                    begin + static_cast<std::ptrdiff_t>(last) + 1);
    }

    bool ReplaceNode(std::size_t k, Point const& p, double t, double gap)
    {
        if (k > 0 && !(t > nodes[k - 1].time + gap && Rises(nodes[k - 1].time, t))) {
            return false;
        }
        if (k < Last() && !(t + gap < nodes[k + 1].time && Rises(t, nodes[k + 1].time))) {
            return false;
        }
        MoveNode(k, p);
        nodes[k].time = t;
        return true;
    }

    void MoveNode(std::size_t k, Point const& p)
    {
        Node& n = nodes[k];
        if (n.isLocked) {
            Point const delta = p - n.place;
            n.in = n.in + delta;
            n.out = n.out + delta;
        }
        n.place = p;
    }

    /// Moves the control behind node k (`isOut`) or before it.
    void MoveControl(std::size_t k, bool isOut, Point const& p, bool keepsRatio)
    {
        Node& n = nodes[k];
        Point& moved = isOut ? n.out : n.in;
        Point& opposite = isOut ? n.in : n.out;
        bool const isInner = k > 0 && k < Last();
        if (isInner && !n.isLine && n.isLocked && HvPoint3_LengthAB(p, n.place) >= 1e-7) {
            Point const d = n.place - p;
            double const length = HvPoint3_Length(d);
            double const old = HvPoint3_LengthAB(opposite, n.place);
            double const oldMoved = HvPoint3_LengthAB(moved, n.place);
            double const now = keepsRatio && oldMoved >= 1e-7 ? old / oldMoved * length : old;
            opposite = n.place + Point(d.x / length, d.y / length, d.z / length) * now;
        }
        moved = p;
    }

    bool Lock(std::size_t k)
    {
        if (nodes.size() < 2) {
            return false;
        }
        if ((k > 0 && nodes[k - 1].isLine) || (k < Last() && nodes[k].isLine)) {
            return false;
        }
        if (k > 0 && k < Last() && !Align(nodes[k])) {
            return false;
        }
        nodes[k].isLocked = true;
        return true;
    }

    bool Linearize(std::size_t k)
    {
        if (k >= Last()) {
            return false;
        }
        if (!nodes[k].isLine) {
            nodes[k].isLocked = nodes[k + 1].isLocked = false;
            Point const chord = nodes[k + 1].place - nodes[k].place;
            nodes[k].out = chord * 0.3333333333333333 + nodes[k].place;
            nodes[k + 1].in = chord * 0.6666666666666666 + nodes[k].place;
        }
        return true;
    }

    bool Smooth(std::size_t k)
    {
        if (k >= Last() || nodes[k].isLine) {
            return false;
        }
        if (nodes.size() == 2) {
            return true;
        }
        Node& near = nodes[k];
        Node& far = nodes[k + 1];
        bool const hasPrevious = k > 0;
        bool const hasNext = k + 1 < Last();
        bool const lineBefore = hasPrevious && nodes[k - 1].isLine;
        bool const lineBehind = hasNext && far.isLine;
        Point before;
        Point behind;
        if (hasPrevious) {
            before = near.place - (lineBefore ? nodes[k - 1].place : near.in);
        }
        if (hasNext) {
            behind = far.place - (lineBehind ? nodes[k + 2].place : far.out);
        }
        if ((hasPrevious && HvPoint3_SquaredLength(before) < 1e-7) ||
            (hasNext && HvPoint3_SquaredLength(behind) < 1e-7)) {
            return false;
        }
        double const third = HvPoint3_LengthAB(near.place, far.place) * 0.3333333333333333;
        if (hasPrevious) {
            near.out = near.place + Unit(before) * third;
            near.isLocked = (!lineBefore && Align(near)) || near.isLocked;
        }
        if (hasNext) {
            far.in = far.place + Unit(behind) * third;
            far.isLocked = (!lineBehind && Align(far)) || far.isLocked;
        }
        return true;
    }

    void ExpectEqual(Path const& path) const
    {
        ASSERT_EQ(path.NumNodes(), nodes.size());
        ASSERT_EQ(path.NumPoints(), nodes.empty() ? 0 : 3 * nodes.size() - 2);
        for (std::size_t k = 0; k < nodes.size(); ++k) {
            unsigned int const i = static_cast<unsigned int>(3 * k);
            Node const& n = nodes[k];
            EXPECT_EQ(PointOf(path, i), n.place) << k;
            EXPECT_EQ(TimeOf(path, i), n.time) << k;
            EXPECT_EQ(path.IsG1ContinuityLocked(i), n.isLocked ? 1 : 0) << k;
            if (k > 0) {
                EXPECT_EQ(PointOf(path, i - 1), n.in) << k;
            }
            if (k < Last()) {
                EXPECT_EQ(PointOf(path, i + 1), n.out) << k;
                EXPECT_EQ(KindOf(path, i), n.isLine ? Path::LineNode : Path::CurveNode) << k;
            }
        }
    }

    static Point Unit(Point const& v)
    {
        double const length = HvPoint3_Length(v);
        return {v.x / length, v.y / length, v.z / length};
    }

    static bool Align(Node& n)
    {
        Point const a = n.in - n.place;
        Point const b = n.place - n.out;
        double const la = HvPoint3_Length(a);
        double const lb = HvPoint3_Length(b);
        Point const d = (a + b) * 0.5;
        if (la < 1e-7 || lb < 1e-7 || HvPoint3_Length(d) < 1e-7) {
            return false;
        }
        n.in = n.place + Unit(d) * la;
        n.out = n.place - Unit(d) * lb;
        return true;
    }

private:
    static Node At(Point const& p, double t) { return {p, p, p, t, false, false}; }
};

#endif
