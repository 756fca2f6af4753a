// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The path with a property: life, and the keys of its curves edit by edit.

#include <hv/pathbuild/HvPath2fProp1d.h>

#include <tests/shape/slot_of.h>

#include <gtest/gtest.h>

#include "prop_path_support.h"

#include <memory>

namespace {

// Points 0 to 5 with curve 1, points 6 to 8 with curve 2.
OpenProp SixAndThree()
{
    OpenProp path;
    path.AddLines({{0, 0}, {1, 0}, {2, 0}, {3, 0}, {4, 0}, {5, 0}});
    path.AddLines({{0, 1}, {1, 1}, {2, 1}});
    path.SetPropCurve(0, Constant(1));
    path.SetPropCurve(6, Constant(2));
    return path;
}

}  // namespace

// Life.

TEST(HvPath2fProp1d, NewPathsHaveNoCurves)
{
    OpenProp const path;
    EXPECT_EQ(path.NumPoints(), 0u);
    EXPECT_EQ(path.propCurves->Count(), 0u);
    EXPECT_EQ(path.HasPropCurve(0), 0);
    EXPECT_EQ(path.GetPropCurve(0), nullptr);
}

TEST(HvPath2fProp1d, IsMadeOfAPathWithoutCurves)
{
    OpenProp const source = ThreeLines();
    OpenProp const path(HvPath2fProp1d(static_cast<HvPath2f const&>(source)));
    EXPECT_EQ(path.NumPoints(), 12u);
    EXPECT_EQ(path.IsSiblingOf(source), 1);
    EXPECT_EQ(path.Keys(), PropKeys());
}

TEST(HvPath2fProp1d, CopiesAreDeep)
{
    OpenProp source = ThreeLines();
    OpenProp copy(source);
    std::unique_ptr<HvPath2fProp1d> const clone(source.Clone());
    OpenProp assigned;
    assigned.AddLines({{9, 9}, {8, 8}});
    assigned.SetPropCurve(0, Constant(9));
    assigned = source;
    PropKeys const keys{{0, 1}, {4, 2}, {8, 3}};
    source.GetPropCurve(0)->ShiftValues(100);
    source.RemoveSubpath(4);
    EXPECT_EQ(copy.Keys(), keys);
    EXPECT_EQ(KeysOf(*clone), keys);
    EXPECT_EQ(assigned.Keys(), keys);
    EXPECT_EQ(assigned.NumPoints(), 12u);
}

TEST(HvPath2fProp1d, ItsOwnCopyChangesNothing)
{
    OpenProp path = ThreeLines();
    HvRawFCurve* const curve = path.GetPropCurve(0);
    OpenProp const& self = path;
    path = self;
    EXPECT_EQ(path.GetPropCurve(0), curve);
    EXPECT_EQ(path.Keys(), (PropKeys{{0, 1}, {4, 2}, {8, 3}}));
}

TEST(HvPath2fProp1d, AssignedToAsAPathItKeepsItsCurves)
{
    OpenProp path = ThreeLines();
    HvPath2f other(0u);
    other.Moveto({0, 0});
    HvPath2f& base = path;
    base = other;
    EXPECT_EQ(path.NumPoints(), 1u);
    EXPECT_EQ(path.Keys(), (PropKeys{{0, 1}, {4, 2}, {8, 3}}));
}

TEST(HvPath2fProp1d, AnswersToItsOwnKindAlone)
{
    HvPath2fProp1d const path(0u);
    EXPECT_EQ(path.QueryShapeKind(HvShape2f::PathProp1d), &path);
    for (HvShape2f::Kind const kind :
         {HvShape2f::NoShape, HvShape2f::Path, HvShape2f::Rect, HvShape2f::Oval}) {
        EXPECT_EQ(path.QueryShapeKind(kind), nullptr);
    }
}

TEST(HvPath2fProp1d, AddsNoSlots)
{
    EXPECT_EQ(SlotOf(&HvPath2fProp1d::RemoveSubpathSection), 39u);
    EXPECT_EQ(SlotOf(&HvPath2fProp1d::RemoveSubpath), 38u);
    EXPECT_EQ(SlotOf(static_cast<int (HvPath2fProp1d::*)(
                         unsigned int, unsigned int, HvPath2f const&, unsigned int, unsigned int)>(
                  &HvPath2fProp1d::ReplaceSubpathSection)),
              37u);
    // The field follows those of the path.
    EXPECT_EQ(sizeof(HvPath2fProp1d), sizeof(HvPath2f) + sizeof(void*));
}

// Keys, edit by edit.

TEST(HvPath2fProp1d, RemovedSubpathTakesItsCurve)
{
    for (unsigned int const index : {4u, 5u, 7u}) {
        OpenProp path = ThreeLines();
        EXPECT_EQ(path.RemoveSubpath(index), 1);
        EXPECT_EQ(path.Keys(), (PropKeys{{0, 1}, {4, 3}}));
        EXPECT_EQ(path.NumPoints(), 8u);
    }
}

TEST(HvPath2fProp1d, RemovedSubpathWithoutACurveMovesThoseBehind)
{
    OpenProp path;
    path.AddLines({{0, 0}, {1, 0}, {2, 0}});
    path.AddLines({{0, 1}, {1, 1}});
    path.SetPropCurve(3, Constant(5));
    EXPECT_EQ(path.RemoveSubpath(1), 1);
    EXPECT_EQ(path.Keys(), (PropKeys{{0, 5}}));
}

TEST(HvPath2fProp1d, NothingIsRemovedBeyondThePath)
{
    OpenProp path = ThreeLines();
    EXPECT_EQ(path.RemoveSubpath(12), 0);
    EXPECT_EQ(path.Keys(), (PropKeys{{0, 1}, {4, 2}, {8, 3}}));
}

TEST(HvPath2fProp1d, SectionAtTheEndShortensTheSubpath)
{
    OpenProp path = SixAndThree();
    EXPECT_EQ(path.RemoveSubpathSection(2, 5), 1);  // points 3 to 5
    EXPECT_EQ(path.Keys(), (PropKeys{{0, 1}, {3, 2}}));
    EXPECT_EQ(path.GetPoint(3), PropPoint(0, 1));
}

TEST(HvPath2fProp1d, SectionAtTheStartLeavesTheTailWithTheCurve)
{
    OpenProp path = SixAndThree();
    EXPECT_EQ(path.RemoveSubpathSection(0, 2), 1);  // points 0 and 1
    EXPECT_EQ(path.Keys(), (PropKeys{{0, 1}, {4, 2}}));
    EXPECT_EQ(path.GetPoint(4), PropPoint(0, 1));
}

TEST(HvPath2fProp1d, SectionInTheMiddleGivesBothPartsTheCurve)
{
    OpenProp path = SixAndThree();
    EXPECT_EQ(path.RemoveSubpathSection(1, 4), 1);  // points 2 and 3
    EXPECT_EQ(path.Keys(), (PropKeys{{0, 1}, {2, 1}, {4, 2}}));
    EXPECT_NE(path.GetPropCurve(0), path.GetPropCurve(2));
    path.GetPropCurve(0)->ShiftValues(10);
    EXPECT_EQ(path.EvalPropCurve(2, 0), 1.0);
    EXPECT_EQ(path.GetPoint(4), PropPoint(0, 1));
}

TEST(HvPath2fProp1d, SectionOfOneLineInTheMiddleMovesNoPoint)
{
    OpenProp path = SixAndThree();
    EXPECT_EQ(path.RemoveSubpathSection(2, 3), 1);
    EXPECT_EQ(path.NumPoints(), 9u);
    EXPECT_EQ(path.Keys(), (PropKeys{{0, 1}, {3, 1}, {6, 2}}));
}

TEST(HvPath2fProp1d, WholeSubpathAsASectionLeavesItsStartWithTheCurve)
{
    OpenProp path = SixAndThree();
    EXPECT_EQ(path.RemoveSubpathSection(0, 5), 1);
    EXPECT_EQ(path.Keys(), (PropKeys{{0, 1}, {1, 2}}));
}

TEST(HvPath2fProp1d, FirstLineOfALaterSubpathLeavesItsKeyWhereItIs)
{
    OpenProp path = SixAndThree();
    path.AddLines({{7, 7}, {8, 8}});
    path.SetPropCurve(9, Constant(3));
    EXPECT_EQ(path.RemoveSubpathSection(6, 7), 1);  // point 6
    EXPECT_EQ(path.Keys(), (PropKeys{{0, 1}, {6, 2}, {8, 3}}));
}

TEST(HvPath2fProp1d, SectionOfASubpathWithoutACurveMakesNone)
{
    OpenProp path = SixAndThree();
    path.RemovePropCurveInsideCriticalSection(0);
    EXPECT_EQ(path.RemoveSubpathSection(1, 4), 1);
    EXPECT_EQ(path.Keys(), (PropKeys{{4, 2}}));
}

TEST(HvPath2fProp1d, SectionOfAClosedSubpath)
{
    OpenProp path;
    path.AddLines({{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0}});
    path.Closeto();
    path.AddLines({{5, 5}, {6, 6}});
    path.SetPropCurve(0, Constant(1));
    path.SetPropCurve(5, Constant(2));
    EXPECT_EQ(path.RemoveSubpathSection(1, 3), 1);
    EXPECT_EQ(path.Keys(), (PropKeys{{0, 1}, {2, 1}, {4, 2}}));
}

TEST(HvPath2fProp1d, RefusedSectionsMoveNothing)
{
    OpenProp path;
    path.Moveto({0, 0});
    path.Curveto({1, 0}, {2, 0}, {3, 0});
    path.AddLines({{0, 1}, {1, 1}});
    path.SetPropCurve(0, Constant(1));
    path.SetPropCurve(4, Constant(2));
    for (auto const& [first, last] : {std::pair(0u, 1u), std::pair(1u, 3u), std::pair(3u, 0u),
                                      std::pair(3u, 3u), std::pair(0u, 4u), std::pair(4u, 99u)}) {
        EXPECT_EQ(path.RemoveSubpathSection(first, last), 0);
        EXPECT_EQ(path.Keys(), (PropKeys{{0, 1}, {4, 2}}));
        EXPECT_EQ(path.NumPoints(), 6u);
    }
}

TEST(HvPath2fProp1d, LongerSectionOfASourceMovesTheKeysBehind)
{
    OpenProp path = SixAndThree();
    HvPath2f source(0u);
    source.Moveto({1, 0});
    source.Curveto({1, 1}, {2, 2}, {2, 0});
    EXPECT_EQ(path.ReplaceSubpathSection(1, 2, source, 0, 3), 1);
    EXPECT_EQ(path.Keys(), (PropKeys{{0, 1}, {8, 2}}));
    EXPECT_EQ(path.GetPoint(8), PropPoint(0, 1));
}

TEST(HvPath2fProp1d, ShorterSectionOfASourceMovesTheKeysBack)
{
    OpenProp path = SixAndThree();
    HvPath2f source(0u);
    source.Moveto({1, 0});
    source.Lineto({4, 0});
    EXPECT_EQ(path.ReplaceSubpathSection(1, 4, source, 0, 1), 1);
    EXPECT_EQ(path.Keys(), (PropKeys{{0, 1}, {4, 2}}));
    EXPECT_EQ(path.GetPoint(4), PropPoint(0, 1));
}

TEST(HvPath2fProp1d, SectionOfTheLastSubpathMovesNoKey)
{
    OpenProp path = SixAndThree();
    HvPath2f source(0u);
    source.Moveto({0, 1});
    source.Curveto({1, 1}, {2, 2}, {2, 1});
    EXPECT_EQ(path.ReplaceSubpathSection(6, 8, source, 0, 3), 1);
    EXPECT_EQ(path.Keys(), (PropKeys{{0, 1}, {6, 2}}));
}

TEST(HvPath2fProp1d, SectionOfAnotherPlaceIsRefused)
{
    OpenProp path = SixAndThree();
    HvPath2f source(0u);
    source.Moveto({1, 0});
    source.Curveto({1, 1}, {2, 2}, {2, 0.5F});
    EXPECT_EQ(path.ReplaceSubpathSection(1, 2, source, 0, 3), 0);
    EXPECT_EQ(path.Keys(), (PropKeys{{0, 1}, {6, 2}}));
}

TEST(HvPath2fProp1d, EditsOfThePathAloneLeaveTheKeys)
{
    PropKeys const stale{{0, 1}, {6, 2}};
    OpenProp path = SixAndThree();
    PropPoint const cubic[] = {{1, 0}, {1, 1}, {2, 2}, {2, 0}};
    EXPECT_EQ(path.ReplaceSegment(2, cubic, 3), 1);
    EXPECT_EQ(path.Keys(), stale);
    EXPECT_EQ(path.HasPropCurve(8), 0);

    path = SixAndThree();
    EXPECT_EQ(path.ReplaceSubpathSection(1, 4), 1);
    EXPECT_EQ(path.Keys(), stale);

    path = SixAndThree();
    EXPECT_EQ(path.ReplaceSubpathSection(1, 2, PropPoint(1, 1), PropPoint(2, 2)), 1);
    EXPECT_EQ(path.Keys(), stale);

    path = SixAndThree();
    EXPECT_EQ(path.CloseSubpath(0), 1);
    EXPECT_EQ(path.NumPoints(), 10u);
    EXPECT_EQ(path.Keys(), stale);
}

TEST(HvPath2fProp1d, AppendedSubpathsLeaveTheKeys)
{
    OpenProp path = SixAndThree();
    path.CloseSubpath(8);
    path.Moveto({1, 1});
    path.Curveto({1, 1}, {2, 2}, {3, 3});
    EXPECT_EQ(path.Keys(), (PropKeys{{0, 1}, {6, 2}}));
}
