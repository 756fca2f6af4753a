// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Random edits of a motion path beside the same edits of a list of nodes.

#include <hv/motionpath/HvMotionPath3d.h>

#include <tests/motionpath/path_model.h>
#include <tests/support/generators.h>

#include <rapidcheck/gtest.h>

namespace {

/// Few places, so that nodes, handles and whole neighbours coincide often.
Point AnyPlace()
{
    return {PickInRange(-2, 3) * 1.0, PickInRange(-2, 3) * 1.0, PickInRange(-1, 2) * 1.0};
}

/// One edit of both; false when the two disagree about its result.
class TwinEdits {
public:
    Path path;
    PathModel model;

    bool Any()
    {
        bool const isEmpty = model.nodes.empty();
        int const operation = isEmpty ? 0 : PickInRange(0, 14);
        double const step = PickInRange(0, 4) * 0.5;  // 0 is refused
        double const first = isEmpty ? 0 : model.nodes.front().time;
        double const last = isEmpty ? 0 : model.nodes.back().time;
        std::size_t const k = isEmpty ? 0 : PickInRange<std::size_t>(0, model.nodes.size());
        unsigned int const i = static_cast<unsigned int>(3 * k);
        Point const a = AnyPlace();
        Point const b = AnyPlace();
        Point const c = AnyPlace();
        switch (operation) {
        case 0:
            return Same(path.Moveto(a, step), model.Moveto(a, step));
        case 1:
            return Same(path.Lineto(a, last + step), model.Lineto(a, last + step));
        case 2:
            return Same(path.PreLineto(a, first - step), model.PreLineto(a, first - step));
        case 3:
        case 4:
            return Same(path.Curveto(a, b, c, last + step), model.Curveto(a, b, c, last + step));
        case 5:
            return Same(path.PreCurveto(a, b, c, first - step),
                        model.PreCurveto(a, b, c, first - step));
        case 6:
            return Remove(k);
        case 7: {
            double const t = model.nodes[k].time + (PickInRange(0, 5) - 2) * 0.25;
            return Same(path.ReplaceNode(i, a, t, 0.25), model.ReplaceNode(k, a, t, 0.25));
        }
        case 8:
        case 9:
            return MoveAny(a);
        case 10:
        case 11:
            return Same(path.LockG1Continuity(i), model.Lock(k));
        case 12:
            return Same(path.LinearizeSegment(i), model.Linearize(k));
        default:
            return Same(path.SmoothSegment(i), model.Smooth(k));
        }
    }

private:
    static bool Same(int result, bool expected) { return result == (expected ? 1 : 0); }

    bool Remove(std::size_t first)
    {
        std::size_t const last = std::min(model.Last(), first + PickInRange<std::size_t>(0, 3));
        unsigned int const before = path.NumPoints();
        unsigned int const removed = path.RemoveNodes(static_cast<unsigned int>(3 * first),
                                                      static_cast<unsigned int>(3 * last));
        model.Remove(first, last);
        return removed == before - path.NumPoints();
    }

    bool MoveAny(Point const& p)
    {
        unsigned int const i = PickInRange(0u, path.NumPoints());
        int const keepLength = PickInRange(0, 2);
        if (i % 3 == 0) {
            model.MoveNode(i / 3, p);
        } else {
            bool const isOut = i % 3 == 1;
            model.MoveControl(isOut ? i / 3 : i / 3 + 1, isOut, p, keepLength != 0);
        }
        return path.ReplaceControlPoint(i, p, keepLength) == 1;
    }
};

RC_GTEST_PROP(HvMotionPath3d_edits, AgreeWithAListOfNodes, ())
{
    TwinEdits twins;
    for (int i = 0; i < 40; ++i) {
        RC_ASSERT(twins.Any());
        twins.model.ExpectEqual(twins.path);
        RC_ASSERT(!testing::Test::HasFailure());
    }
    // What was flattened on the way is of no consequence.
    Path const copy(twins.path);
    for (double t = -3; t < 6; t += 0.375) {
        Point const a = At(twins.path, t, 1e-3);
        Point const b = At(copy, t, 1e-3);
        RC_ASSERT(twins.model.nodes.empty() || a == b);
    }
}

}  // namespace
