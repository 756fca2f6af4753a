// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The contract of two-dimensional shapes.

#ifndef HV_SHAPE_HVSHAPE2F_H
#define HV_SHAPE_HVSHAPE2F_H

#include <hv/foundation/HvMemory.h>
#include <hv/foundation/HvPoint2.h>
#include <hv/platform/CXQCriticalSection.h>
#include <hv/platform/HvExport.h>

template <class T>
struct HvExtent2;
struct HvGC;
class HvPoint2fArray;
class HvPointTagArray;
class HvTransfo4;
class HvUByteRaster;
class HvULongArray;

/// A shape of the plane, given by control points in single precision: a path, a rectangle, an oval,
/// or a path with a property.
///
/// **Coordinates.** Control points and extents are in the shape's own coordinates. What renders,
/// flattens, samples or hits takes a graphics context (HvGC) and works in device coordinates: the
/// control points mapped through its transform. Pixel (x, y) is the square [x, x+1) x [y, y+1).
///
/// **Results.** An operation that can refuse returns 1 for done, 0 for refused or not found, and
/// then leaves the shape and its result arguments as they were. Extents come back in the argument,
/// whose reference is returned. Arrays are appended to. The only exception is std::bad_alloc; it
/// passes through with all locks released and every object valid.
///
/// **Locks.** Every shape has one recursive lock of its own, with a count of its depth; each member
/// that touches the shape's data holds it (HvShapeLock.h), so any thread may call any
/// member. QueryShapeKind enters the lock without counting. An operation on two shapes locks its
/// target first, then its source: two threads that run it on one pair in opposite directions block
/// each other for ever. Shapes never take the process-wide lock of curves, but for those that an
/// HvPath2fProp1d holds. The graphics context is not guarded: nobody may change it during a call.
///
/// A shape is deleted by whoever owns it, through the virtual destructor.
class HV_API HvShape2f : public HvAllocated {
public:
    /// The classes of shapes. Stored in files: add at the end, never renumber.
    enum Kind : int {
        NoShape = 0,    ///< what an unknown kind in a file is read as
        Path = 1,       ///< HvPath2f
        Rect = 2,       ///< HvRect2f
        Oval = 3,       ///< HvOval2f
        PathProp1d = 4  ///< HvPath2fProp1d
    };

    // The virtual operations stand in the order of their slots, which is part of the contract.

    /// Copies nothing: the base holds the lock alone, and a lock is never copied. Waits until
    /// nobody else holds this shape's lock or, when it is another shape, that of `other`. The
    /// concrete classes have assignments of their own, which copy the data.
    virtual HvShape2f& operator=(HvShape2f const& other);
    /// Frees the shape's data; nobody may hold its lock.
    virtual ~HvShape2f();

    // Kind and copy.

    /// This shape when `kind` is exactly its own class, otherwise null.
    virtual HvShape2f const* QueryShapeKind(Kind kind) const = 0;
    /// A new shape of the same class and data, owned by the caller.
    virtual HvShape2f* Clone() const = 0;

    // Control points and extents, in the shape's coordinates.

    /// Number of control points.
    virtual unsigned int NumPoints() const = 0;
    /// The extent of all control points.
    virtual HvExtent2<float>& GetExtent(HvExtent2<float>& extent) const = 0;
    /// The same in `double`.
    virtual HvExtent2<double>& GetExtent(HvExtent2<double>& extent) const = 0;
    /// The extent of the outline; each class says how tight it is.
    virtual HvExtent2<float>& GetTightExtent(HvExtent2<float>& extent) const = 0;
    /// The same in `double`.
    virtual HvExtent2<double>& GetTightExtent(HvExtent2<double>& extent) const = 0;
    /// Stores control point `i`; 0 when there is none of that number.
    virtual int GetPoint(unsigned int i, HvPoint2<float>& point) const = 0;
    /// Control point `i`, which must exist.
    virtual HvPoint2<float> GetPoint(unsigned int i) const = 0;
    /// Stores the control points `first` to `last` inclusive, which must exist, and returns
    /// `points`; none when `first` is above `last`.
    virtual HvPoint2<float>* GetPoints(unsigned int first, unsigned int last,
                                       HvPoint2<float>* points) const = 0;
    /// The same, widened to `double`.
    virtual HvPoint2<double>* GetPoints(unsigned int first, unsigned int last,
                                        HvPoint2<double>* points) const = 0;
    /// Finds the first control point in the closed square of side `size` centred on `p`.
    virtual int GetClosePointIndex(HvPoint2<float> const& p, double size,
                                   unsigned int* index) const = 0;
    /// Appends the numbers of the control points in the closed extent; returns how many.
    virtual unsigned int GetPointsInExtentIndices(HvExtent2<float> const& extent,
                                                  HvULongArray* indices) const = 0;

    // Hits, against an extent in device coordinates. When `skipExtentTest` is not 0 the caller
    // vouches that the extent meets that of the control points, which is else tested first.

    /// 1 when the outline meets the extent.
    virtual int IsIntersectingExtent(HvGC const& gc, HvExtent2<float> const& extent,
                                     int skipExtentTest) const = 0;
    /// Whether the outline meets the extent or the extent lies inside the filled shape.
    virtual bool IsInteriorIntersectingExtent(HvGC const& gc, HvExtent2<float> const& extent,
                                              int skipExtentTest) const = 0;
    /// Appends those of the points of Sample that lie in the extent, each with its tag; returns how
    /// many.
    virtual int IntersectSamplePointsExtent(HvGC const& gc, HvExtent2<float> const& extent,
                                            HvPoint2fArray& points, HvPointTagArray& tags,
                                            int skipExtentTest) const = 0;

    // Affine edits of all control points. They return this shape.

    /// Adds `offset` to every control point.
    virtual HvShape2f& Translate(HvPoint2<float> const& offset) = 0;
    /// Rotates counter-clockwise.
    virtual HvShape2f& Rotate(double degrees, HvPoint2<float> const& center) = 0;
    /// Scales about `center`, along the axes.
    virtual HvShape2f& Scale(double sx, double sy, HvPoint2<float> const& center) = 0;
    /// x' = x + shear * y. `y0` has no effect: the fixed point is (y0, 0), and it cancels out.
    virtual HvShape2f& ShearX(double shear, double y0) = 0;
    /// y' = y + shear * (x - x0).
    virtual HvShape2f& ShearY(double shear, double x0) = 0;
    /// Maps every control point through `transform`.
    virtual HvShape2f& Transform(HvTransfo4 const& transform) = 0;

    // Outline as points, in device coordinates. Both append a run for each subpath, tagged start,
    // inner, ..., end, and return the number of points.

    /// The outline as a polyline, within gc.flatness.
    virtual unsigned int Flatten(HvGC const& gc, HvPoint2fArray& points,
                                 HvPointTagArray& tags) const = 0;
    /// Points of the outline at even steps of about gc.sampleSpacing.
    virtual unsigned int Sample(HvGC const& gc, HvPoint2fArray& points,
                                HvPointTagArray& tags) const = 0;

    // Rendering. `interrupted` may be null; otherwise it is asked again and again as the rows
    // advance, and once it returns other than 0 the fill is abandoned: what is written stays. A
    // class that renders in one step never asks it.

    /// Sets the pixels whose centre is inside to 255; the others keep their value.
    virtual void Fill(HvGC const& gc, HvUByteRaster& raster, int (*interrupted)()) const = 0;
    /// The same with coverage by 4 x 4 samples a pixel, at most gc.maxCoverage.
    virtual void AAFill(HvGC const& gc, HvUByteRaster& raster, int (*interrupted)()) const = 0;
    /// The filled shape blurred by the profile gc.falloff over the radius gc.softRadiusA +
    /// gc.softRadiusB. Writes gc.maxCoverage for a while, through the const reference: contexts are
    /// not shared by soft fills that run at once, and none is a const object.
    virtual void SoftFill(HvGC const& gc, HvUByteRaster& raster, int (*interrupted)()) const = 0;
    /// Sets the pixels along the outline to 255, by gc.strokeWidth and the stroke's styles.
    virtual void Stroke(HvGC const& gc, HvUByteRaster& raster) const = 0;

    // Saving. See HvShapeArchive.h for the layout that all kinds share.

    /// Writes GetBufferSize() bytes, the length prefix included, and returns how many.
    virtual unsigned int WriteToBuffer(void* buffer) const = 0;
    /// The bytes that WriteToBuffer needs, the length prefix included.
    virtual unsigned int GetBufferSize() const = 0;
    /// Reads what WriteToBuffer wrote, from behind the length prefix on; the caller vouches for the
    /// bytes. Returns the bytes of the body, GetBufferSize() - 4; 0 for a body of another kind, or
    /// when there is no memory, which is not thrown.
    virtual unsigned int ReadFromBufferBody(void const* body) = 0;

protected:
    HvShape2f() = default;
    /// A lock of its own; waits until nobody else holds the lock of `other`.
    HvShape2f(HvShape2f const& other);

private:
    friend class HvShapeLock;
    friend class HvShapeSection;

    mutable CXQCriticalSection objectLock_;
};

#endif
