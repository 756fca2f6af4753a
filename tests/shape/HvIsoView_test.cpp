// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The view on a world: numbers by hand, changes that are undone, inverse pairs.

#include <hv/shape/HvIsoView.h>

#include <tests/support/generators.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

namespace {

using Extent = HvExtent2<double>;
using Point = HvPoint2<double>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// 200 by 100 pixels, each 2 by 4 in the world.
HvIsoView MakeView()
{
    return HvIsoView(200, 2, 100, 4, 1);
}

/// A view whose transforms are the identity.
HvIsoView MakePlainView(double width, double height)
{
    HvIsoView view(0, 1, 0, 1, 1);
    view.SetViewWidth(width);
    view.SetViewHeight(height);
    return view;
}

void ExpectExtent(Extent const& extent, double minX, double minY, double maxX, double maxY)
{
    EXPECT_EQ(extent.state, Extent::Ordinary);
    EXPECT_EQ(extent.min, Point(minX, minY));
    EXPECT_EQ(extent.max, Point(maxX, maxY));
}

bool AreEqual(HvTransfo4 const& a, HvTransfo4 const& b)
{
    return std::memcmp(a.GetMatrixPtr(), b.GetMatrixPtr(), 16 * sizeof(double)) == 0;
}

void ExpectSame(HvIsoView const& a, HvIsoView const& b)
{
    EXPECT_TRUE(AreEqual(a.GetViewToWorld(), b.GetViewToWorld()));
    EXPECT_TRUE(AreEqual(a.GetWorldToView(), b.GetWorldToView()));
    EXPECT_EQ(a.GetViewWidth(), b.GetViewWidth());
    EXPECT_EQ(a.GetViewHeight(), b.GetViewHeight());
}

}  // namespace

TEST(HvIsoView, HasTheWorldsOriginInItsCentre)
{
    HvIsoView const view = MakeView();
    EXPECT_EQ(view.IsValid(), 1);
    EXPECT_EQ(view.GetWorldToView().Map(Point(0, 0)), Point(100, 50));
    EXPECT_EQ(view.GetViewToWorld().Map(Point(0, 0)), Point(-200, -200));
    EXPECT_EQ(view.GetViewToWorld().Map(Point(1, 1)), Point(-198, -196));
    EXPECT_EQ(view.GetViewToWorld().Map(HvPoint3<double>(0, 0, 1)).z, 1.0);
}

TEST(HvIsoView, ScalesTheThirdAxisByItsPixel)
{
    HvIsoView const view(10, 1, 10, 1, 8);
    EXPECT_EQ(view.GetViewToWorld().Map(HvPoint3<double>(0, 0, 1)).z, 8.0);
    EXPECT_EQ(view.GetWorldToView().Map(HvPoint3<double>(0, 0, 8)).z, 1.0);
}

TEST(HvIsoView, GivesItsExtentInBothSystems)
{
    HvIsoView const view = MakeView();
    Extent extent;
    EXPECT_EQ(&view.GetViewExtentInViewCS(extent), &extent);
    ExpectExtent(extent, 0, 0, 200, 100);
    EXPECT_EQ(&view.GetViewExtentInWorldCS(extent), &extent);
    ExpectExtent(extent, -200, -200, 200, 200);
}

TEST(HvIsoView, SortsTheExtentOfANegativeSize)
{
    HvIsoView const view = MakePlainView(-3, 5);
    Extent extent;
    ExpectExtent(view.GetViewExtentInViewCS(extent), -3, 0, 0, 5);
}

TEST(HvIsoView, SizesLeaveTheTransformsAlone)
{
    HvIsoView view = MakeView();
    view.SetViewWidth(7);
    view.SetViewHeight(9);
    EXPECT_EQ(view.GetViewWidth(), 7);
    EXPECT_EQ(view.GetViewHeight(), 9);
    EXPECT_TRUE(AreEqual(view.GetViewToWorld(), MakeView().GetViewToWorld()));
    EXPECT_TRUE(AreEqual(view.GetWorldToView(), MakeView().GetWorldToView()));
}

TEST(HvIsoView, MeasuresTheDiagonalUnitVector)
{
    HvIsoView const view(0, 3, 0, 3, 3);
    // A pure scale of 3, and its inverse: hypot rounds once, the third in a pixel once more.
    EXPECT_DOUBLE_EQ(view.GetViewUnitVectorLengthInWorld(), 3.0 * std::sqrt(2.0));
    EXPECT_DOUBLE_EQ(view.GetWorldUnitVectorLengthInView(), std::sqrt(2.0) / 3.0);
    EXPECT_EQ(MakeView().GetViewUnitVectorLengthInWorld(), std::hypot(2.0, 4.0));
}

TEST(HvIsoView, PansInItsOwnCoordinates)
{
    HvIsoView view = MakeView();
    view.Pan(Point(10, -5));
    EXPECT_EQ(view.GetViewToWorld().Map(Point(0, 0)), Point(-180, -220));
    EXPECT_EQ(view.GetWorldToView().Map(Point(0, 0)), Point(90, 55));
}

TEST(HvIsoView, ZoomKeepsItsCentreInBothSystems)
{
    HvIsoView view = MakeView();
    Point const center(30, 60);
    Point const world = view.GetViewToWorld().Map(center);
    view.Zoom(0.5, 0.25, 2.0, center);
    EXPECT_EQ(view.GetViewToWorld().Map(center), world);
    EXPECT_EQ(view.GetViewToWorld().Map(Point(31, 61)), Point(world.x + 1.0, world.y + 1.0));
    EXPECT_EQ(view.GetWorldToView().Map(world), center);
    EXPECT_EQ(view.GetViewToWorld().Map(HvPoint3<double>(0, 0, 1)).z, 2.0);
}

TEST(HvIsoView, FitsAnExtentByTheSmallerRatio)
{
    HvIsoView view = MakePlainView(200, 100);
    view.SetFromExtent(Extent(10, 20, 60, 70));
    // 200 / 50 = 4 across, 100 / 50 = 2 up: 2 pixels a unit.
    EXPECT_EQ(view.GetWorldToView().Map(Point(10, 20)), Point(0, 0));
    EXPECT_EQ(view.GetWorldToView().Map(Point(60, 70)), Point(100, 100));
    Extent extent;
    ExpectExtent(view.GetViewExtentInWorldCS(extent), 10, 20, 110, 70);
}

TEST(HvIsoView, FitsTheWiderExtentByItsWidth)
{
    HvIsoView view = MakePlainView(100, 100);
    view.SetFromExtent(Extent(-10, 5, 40, 10));
    EXPECT_EQ(view.GetWorldToView().Map(Point(40, 10)), Point(100, 10));
}

TEST(HvIsoView, ExtentIsComposedWithWhatTheViewHas)
{
    HvIsoView view = MakePlainView(200, 100);
    view.SetFromExtent(Extent(10, 20, 60, 70));
    view.SetFromExtent(Extent(10, 20, 60, 70));
    // Half a world unit a pixel: 10 pixels on, 20 up, and halved again.
    EXPECT_EQ(view.GetViewToWorld().Map(Point(0, 0)), Point(15, 30));
    EXPECT_EQ(view.GetViewToWorld().Map(Point(4, 4)), Point(16, 31));
}

TEST(HvIsoView, ExtentsStateIsNotAsked)
{
    HvIsoView view = MakePlainView(200, 100);
    Extent extent(10, 20, 60, 70);
    extent.state = Extent::WholePlane;
    view.SetFromExtent(extent);
    EXPECT_EQ(view.GetWorldToView().Map(Point(60, 70)), Point(100, 100));
}

TEST(HvIsoView, ViewWithoutAreaTakesNoExtent)
{
    for (HvIsoView view : {MakePlainView(0, 5), MakePlainView(5, 0)}) {
        HvIsoView const before(view);
        view.SetFromExtent(Extent(1, 2, 3, 4));
        ExpectSame(view, before);
        EXPECT_EQ(view.IsValid(), 1);
    }
}

TEST(HvIsoView, ExtentOfOneZeroSideIsFittedByTheOther)
{
    HvIsoView view = MakePlainView(200, 100);
    view.SetFromExtent(Extent(10, 20, 10, 70));
    EXPECT_EQ(view.GetWorldToView().Map(Point(10, 70)), Point(0, 100));
}

TEST(HvIsoView, SingularChangesAreUndone)
{
    HvIsoView const before = MakeView();
    HvIsoView view(before);
    view.Zoom(0, 1, 1, Point(3, 4));
    ExpectSame(view, before);
    view.Zoom(1, 0, 1, Point(3, 4));
    ExpectSame(view, before);
    view.Zoom(1, 1, 0, Point(3, 4));
    ExpectSame(view, before);
    view.SetFromExtent(Extent(10, 20, 10, 20));
    ExpectSame(view, before);
    // A pivot of 2 * 5e-16 counts as none, of 2 * 6e-16 as one.
    view.Zoom(5e-16, 1, 1, Point(0, 0));
    ExpectSame(view, before);
    view.Zoom(6e-16, 1, 1, Point(0, 0));
    EXPECT_EQ(view.GetViewToWorld().GetMatrixElement(0, 0), 2 * 6e-16);
}

TEST(HvIsoView, ChangesThatAreNotFiniteAreUndone)
{
    HvIsoView const before = MakeView();
    for (double const bad : {kNaN, kInfinity, -kInfinity}) {
        HvIsoView view(before);
        view.Pan(Point(bad, 0));
        view.Pan(Point(0, bad));
        view.Zoom(bad, 1, 1, Point(0, 0));
        view.Zoom(1, bad, 1, Point(0, 0));
        view.Zoom(1, 1, bad, Point(0, 0));
        view.Zoom(2, 2, 2, Point(bad, 0));
        view.SetFromExtent(Extent(bad, 0, 1, 1));
        view.SetFromExtent(Extent(0, bad, 1, 1));
        ExpectSame(view, before);
    }
    HvIsoView view(before);
    view.Pan(Point(1e308, 0));
    view.Pan(Point(1e308, 0));
    view.Zoom(1e308, 1, 1, Point(0, 0));
    EXPECT_EQ(view.IsValid(), 1);
}

TEST(HvIsoView, IsInvalidWithoutAnInverseOrASize)
{
    EXPECT_EQ(HvIsoView(10, 0, 10, 1, 1).IsValid(), 0);
    EXPECT_EQ(HvIsoView(10, 1, 10, 0, 1).IsValid(), 0);
    EXPECT_EQ(HvIsoView(10, 1, 10, 1, 0).IsValid(), 0);
    EXPECT_EQ(HvIsoView(10, 1, 10, 0, 1).GetWorldToView().IsIdentity(), 1);
    EXPECT_EQ(HvIsoView(-1, 1, 10, 1, 1).IsValid(), 0);
    EXPECT_EQ(HvIsoView(10, 1, -1, 1, 1).IsValid(), 0);
    EXPECT_EQ(HvIsoView(0, 1, 0, 1, 1).IsValid(), 1);
    EXPECT_EQ(HvIsoView(kNaN, 1, 10, 1, 1).IsValid(), 0);
}

TEST(HvIsoView, CopiesAreEqualAndIndependent)
{
    HvIsoView view = MakeView();
    HvIsoView const copy(view);
    HvIsoView assigned(1, 1, 1, 1, 1);
    assigned = view;
    HvIsoView const& self = view;
    view = self;
    ExpectSame(view, copy);
    view.Pan(Point(1, 1));
    ExpectSame(assigned, copy);
    EXPECT_FALSE(AreEqual(view.GetViewToWorld(), copy.GetViewToWorld()));
}

RC_GTEST_PROP(HvIsoView, TransformsStayInverseThroughAnyChanges, ())
{
    HvIsoView view = MakeView();
    int const changes = PickInRange(1, 8);
    for (int i = 0; i < changes; ++i) {
        Point const p(PickInRange(-100, 101), PickInRange(-100, 101));
        double const scale = PickInRange(5, 21) / 10.0;
        switch (PickInRange(0, 3)) {
        case 0:
            view.Pan(p);
            break;
        case 1:
            view.Zoom(scale, 1.0 / scale, scale, p);
            break;
        default:
            view.SetFromExtent(Extent(p.x, p.y, p.x + 200 * scale, p.y + 150));
            break;
        }
        RC_ASSERT(view.IsValid() == 1);
    }
    // Eight steps scale by at most 2^8 each way on coordinates of some 1e6: 1e-6 is far above what
    // rounding leaves of 53 bits.
    Point const p(17, 23);
    Point const back = view.GetWorldToView().Map(view.GetViewToWorld().Map(p));
    RC_ASSERT(HvPoint2_LengthAB(p, back) < 1e-6);
}
