// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The path whose subpaths carry a property.

#ifndef HV_PATHBUILD_HVPATH2FPROP1D_H
#define HV_PATHBUILD_HVPATH2FPROP1D_H

#include <hv/pathbuild/HvPropCurveData.h>
#include <hv/shape/HvPath2f.h>

class HvDoubleArray;
template <class T>
class HvDLList;

/// A path whose subpaths may each carry a number along their length, as the pressure or the width
/// of a stroke: a raw curve of the property over arc length. A subpath without a curve has no
/// property of its own.
///
/// **Keys.** A curve belongs to the subpath whose first point it is keyed by. The operations that
/// remove subpaths or sections, or replace a section by that of another path, move the keys with
/// the points. ReplaceSegment, the two ReplaceSubpathSection without a source, and CloseSubpath
/// where it adds a point to a subpath that is not the last, are those of HvPath2f: they change the
/// number of points and leave the keys, so on a path with several curves those behind are stale,
/// and the caller sets them anew. The same holds for what writes the path as an HvPath2f: assigned
/// to through such a reference it keeps its curves. A stale key harms nothing but its meaning.
///
/// **Arc length.** A curve has a parameter of its own, usually the length of the subpath in its own
/// coordinates. Wherever property and outline meet, the last key of the curve belongs to the end of
/// the subpath, and what lies between goes along in proportion.
///
/// **Arguments.** An index means a point, and any point of a subpath stands for it. An index
/// outside the path has no curve, and setting one there does nothing.
///
/// **Locks of the object, failures.** As HvShape2f and HvPath2f say; the lock guards the curves'
/// list. A curve has locks of its own besides: inside the lock of the path an edit of a curve takes
/// the process-wide lock of curves, so nobody who holds that one may wait for a path. An operation
/// that fails with std::bad_alloc leaves points and curves as they were.
class HV_API HvPath2fProp1d : public HvPath2f {
public:
    // Life.

    /// An empty path with room for `capacity` points.
    explicit HvPath2fProp1d(unsigned int capacity);
    /// Copies the path, without curves.
    explicit HvPath2fProp1d(HvPath2f const& source);
    /// Copies path and curves.
    HvPath2fProp1d(HvPath2fProp1d const& source);
    /// Copies path and curves. Locks this path, then `source`.
    HvPath2fProp1d& operator=(HvPath2fProp1d const& source);
    using HvPath2f::operator=;
    /// Frees the points and the curves.
    ~HvPath2fProp1d() override;

    HvShape2f const* QueryShapeKind(Kind kind) const override;
    HvPath2fProp1d* Clone() const override;

    // Curves.

    /// 1 when the subpath has a curve.
    int HasPropCurve(unsigned int index) const;
    /// The curve of the subpath itself, null when it has none. Once this has returned, the path's
    /// lock guards it no more: it lives until it is removed with its subpath or the path is
    /// assigned to, and who edits it while another thread saves or draws the path holds the path
    /// meanwhile (HvShapeLock).
    HvRawFCurve* GetPropCurve(unsigned int index) const;
    /// Makes `curve`, which may be one of this path, the curve of the subpath, by a deep copy. A
    /// curve that is there already stays where it is and takes the copy in.
    void SetPropCurve(unsigned int index, HvRawFCurve const& curve);
    /// The same with a curve through points of arc length and value.
    ///
    /// Without a point nothing happens; one gives a constant, with its key at 0; two give a line,
    /// or the later value alone where their lengths are equal; three or more a polyline through
    /// some of them, near the others within `tolerance` (see HvRawFCurve).
    void SetPropCurve(unsigned int index, HvPoint2dArray const& points, double tolerance);
    /// Copies the curve of another subpath. Nothing happens when that has none.
    void SetPropCurve(unsigned int index, unsigned int fromIndex);
    /// Copies the curve of a subpath of `source`, which may be this path. Nothing happens when it
    /// has none. Locks this path, then `source`.
    void SetPropCurve(unsigned int index, HvPath2fProp1d const& source, unsigned int sourceIndex);
    /// The property at arc length `s`, not clamped; 0 without a curve.
    double EvalPropCurve(unsigned int index, double s) const;
    /// Appends the property at each of the lengths and returns how many; 0 without a curve. The two
    /// arrays may be one.
    unsigned int EvalPropCurve(unsigned int index, HvDoubleArray const& s,
                               HvDoubleArray& out) const;
    /// The parameter of the last key of the curve; 0 without a curve or a key.
    double GetLargestArcLength(unsigned int index) const;
    /// Where `node` lies on the curve of its subpath.
    ///
    /// @param tolerance  of the polyline on which the length is measured.
    /// @param s          takes the parameter, from 0 to that of the last key.
    /// @return           0, with `s` untouched, for a point that is no node and for a subpath
    ///                   without a curve.
    int GetPropCurveParameter(unsigned int node, double tolerance, double& s) const;
    /// Appends a key to the curve of the subpath; see HvRawFCurve::AppendLinearSegment. Nothing
    /// happens without a curve.
    void AppendLinearSegment(unsigned int index, double s, double value);
    /// The same through HvRawFCurve::AppendOrExtendLinearSegment.
    void AppendOrExtendLinearSegment(unsigned int index, double s, double value, double tolerance);

    // Editing: the keys of the curves follow.

    using HvPath2f::ReplaceSubpathSection;
    /// As HvPath2f tells. The subpath keeps its own curve as it is.
    int ReplaceSubpathSection(unsigned int first, unsigned int last, HvPath2f const& source,
                              unsigned int sourceFirst, unsigned int sourceLast) override;
    /// Removes the subpath of point `index` and its curve.
    int RemoveSubpath(unsigned int index) override;
    /// As HvPath2f tells. What is left of the subpath keeps the curve, which is not cut; where it
    /// falls in two, both have it.
    int RemoveSubpathSection(unsigned int first, unsigned int last) override;

    // Outline with the property, in device coordinates. All append, a value for each point, and
    // return the number of points. A subpath without a segment gives nothing.

    using HvPath2f::Flatten;
    /// The outline of HvPath2f::Flatten, with further points where the property breaks.
    ///
    /// The curve is flattened within `gc.propFlatness`, and its break points, but for those within
    /// `gc.minPointGap` behind the point before them, stand between the vertices of the outline. A
    /// subpath shorter than that gap gives its first and its last point alone, one without a curve
    /// values of 0. The clamping values of a curve do not count here.
    unsigned int Flatten(HvGC const& gc, HvPoint2fArray& pts, HvPointTagArray& ptTags,
                         HvDoubleArray& values) const;
    using HvPath2f::Sample;
    /// The points of HvPath2f::Sample. The values are taken at even steps from the first key's
    /// parameter 0 to that of the last key, clamped: so the last sample, though it lies a step
    /// short of the end, has the property of the end. A subpath without a curve has
    /// `gc.defaultProperty`.
    unsigned int Sample(HvGC const& gc, HvPoint2fArray& pts, HvPointTagArray& ptTags,
                        HvDoubleArray& values) const;
    /// Samples whose distance follows the property: each lies as far behind the one before as
    /// `gc.sampleSpacing` times the property there, at most `gc.sampleSpacing`, but at least
    /// `gc.minPointGap`. A property that is no number counts as too small. A subpath without a
    /// curve is sampled as Sample does.
    unsigned int PropertySample(HvGC const& gc, HvPoint2fArray& pts, HvPointTagArray& ptTags,
                                HvDoubleArray& values) const;
    using HvPath2f::IntersectSamplePointsExtent;
    /// Appends those of the points of Sample that lie in the extent, each with its tag and value;
    /// returns how many. See HvShape2f for `skipExtentTest`.
    int IntersectSamplePointsExtent(HvGC const& gc, HvExtent2<float> const& extent,
                                    HvPoint2fArray& pts, HvPointTagArray& ptTags,
                                    HvDoubleArray& values, int skipExtentTest) const;
    /// The same with the points of PropertySample.
    int IntersectPropertySamplePointsExtent(HvGC const& gc, HvExtent2<float> const& extent,
                                            HvPoint2fArray& pts, HvPointTagArray& ptTags,
                                            HvDoubleArray& values, int skipExtentTest) const;

    // From other paths.

    using HvPath2f::AddFittedSamplesFromPath;
    /// Appends a fit of the samples of `source`, which may be this path, with its curves, and
    /// returns the points added. As on HvPath2f, but every subpath begins anew, and both paths are
    /// locked, this one first, before `source` is sampled.
    unsigned int AddFittedSamplesFromPath(HvGC const& gc, HvPath2fProp1d const& source);
    /// Becomes the path between `a` and `b`: points and property (1 - t) times those of `a` plus t
    /// times those of `b`.
    ///
    /// Nothing happens unless the two are siblings (IsSiblingOf). Either may be this path. Where
    /// only one has a curve, that is copied; where a subpath has no length to speak of, below 1e-7,
    /// in one of them, the curve of the other is, and that of `a` where it has none in both.
    ///
    /// @param step       distance, along the longer of two subpaths, of the places where two curves
    ///                   are interpolated. Unless it is above 0, paths with two curves to
    ///                   interpolate change nothing; more places than an array holds are refused
    ///                   with std::bad_alloc.
    /// @param tolerance  of the curve through those places, in the unit of the property.
    ///
    /// Locks this path, then `a`, then `b`.
    void SetToLerpAB(HvPath2fProp1d const& a, HvPath2fProp1d const& b, double t, double step,
                     double tolerance);

    // Saving: see docs/shape_archive.md. A path whose archive would not fit 32 bits has a size of 0
    // and writes nothing.

    unsigned int WriteToBuffer(void* buffer) const override;
    unsigned int GetBufferSize() const override;
    /// Reads this kind in all versions. Returns the bytes of the body but for four for each curve;
    /// 0, with the path as it was, for what is no such body, and without memory.
    unsigned int ReadFromBufferBody(void const* body) override;
    /// The same through a reader, for bytes that nobody vouches for: see HvPath2f::ReadArchiveBody.
    /// Refuses also curves that belong to no subpath or do not stand in their order.
    unsigned int ReadArchiveBody(HvByteReader& body);

protected:
    // The operations on the list, for members that hold the lock; `start` is the first point of a
    // subpath.

    /// Null when there is none.
    HvRawFCurve* GetPropCurveInsideCriticalSection(unsigned int start) const;
    /// Puts a copy of `curve` in place of the one that the subpath had.
    void SetPropCurveInsideCriticalSection(unsigned int start, HvRawFCurve const& curve);
    /// Drops the curve of the subpath, if it has one.
    void RemovePropCurveInsideCriticalSection(unsigned int start);

    /// In ascending order of `subpathStart`, at most one for a subpath. List and entries are owned.
    HvDLList<HvPropCurveData>* propCurves;

private:
    HvPath2fProp1d(HvPath2fProp1d const& source, HvShapeLock const& held);

    HvRawFCurve* CurveOf(unsigned int index) const;
    void TakeOver(HvPath2fProp1d& other) noexcept;
    unsigned int ReadAside(HvByteReader& body, bool isVouched);
    unsigned int ReadVersion(HvByteReader& body, bool isVouched);
    unsigned int ReadCurve(HvByteReader& body, unsigned int version, bool isVouched);
};

#endif
