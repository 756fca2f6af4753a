// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The path: subpaths of Bezier segments.

#ifndef HV_SHAPE_HVPATH2F_H
#define HV_SHAPE_HVPATH2F_H

#include <hv/foundation/HvPoint2fArray.h>
#include <hv/foundation/HvUByteArray.h>
#include <hv/shape/HvShape2f.h>

#include <iosfwd>

class HvByteReader;
class HvFloatArray;
class HvOval2f;
class HvPoint2dArray;
class HvRect2f;
class HvShapeLock;

/// A sequence of subpaths. A subpath is a start point and Bezier segments of degree 1 to 8, each of
/// which starts where the one before ends.
///
/// **Points and tags.** The path is two arrays of one length, a point and a tag byte for each
/// control point; there are no objects for subpaths or segments, and nothing that is derived from
/// the tags is kept. The low six bits of a tag are the point's role, bit 6 is reserved and survives
/// a change of the role, bit 7 is the lock described below. Role 1 starts a subpath. A segment of
/// degree d adds d - 1 control points and an end; the end of the last segment of a closed subpath
/// has a role of its own, the closing end:
///
///     degree          1   2      3        4         5         6         7         8
///     controls        -   5      8, 9   12 - 14   17 - 20   23 - 27   30 - 35   38 - 44
///     end             3   6     10        15        21        28        36        45
///     closing end     4   7     11        16        22        29        37        46
///
/// A node is a point with role 1, an end or a closing end; every other point is a handle. A closed
/// subpath stores its start twice: its last point equals its first.
///
/// **Locks of nodes.** A locked node keeps the two handles beside it in line: moving one handle
/// turns the other. An inner node of a subpath carries its lock itself; where a closed subpath
/// closes, the lock is on its first and its last point at once. Locks are not saved.
///
/// **Arguments.** An index means a point, and any point of a segment or subpath stands for it. An
/// index outside the path is a caller's mistake: what has a result that can refuse does so, other
/// edits do nothing, other questions answer 0; only GetPoint(i), GetCurrentPoint and GetPoints read
/// without a test. Points may be references into the path itself. No number is refused: a path may
/// hold coordinates that are not finite. A path of segments without a start, as the building
/// operations make it on an empty path, stays safe to ask and edit, but promises no structure.
///
/// **Locks of the object, failures.** As HvShape2f says. An edit either is done whole or, when
/// there is no memory, lets std::bad_alloc out and leaves the path as it was. Storage grows by
/// doubling and is not given up by removals; a copy takes what it needs.
class HV_API HvPath2f : public HvShape2f {
public:
    // Life.

    /// An empty path with room for `capacity` points.
    explicit HvPath2f(unsigned int capacity);
    /// Copies points, tags with their locks, and whether the last subpath is open.
    HvPath2f(HvPath2f const& source);
    /// The piece of `source` from point `first` to `last`, both included; an empty path when there
    /// is no such piece.
    ///
    /// Point `first` becomes the start of a subpath, its locks kept. The last subpath stays closed
    /// when it is closed still, its end equal to its start; otherwise it is opened and its ends
    /// lose their locks. A subpath before the last keeps its closing end even where the piece
    /// cut off its start: give the start of a subpath as `first` where the piece spans several.
    HvPath2f(HvPath2f const& source, unsigned int first, unsigned int last);
    /// The closed polygon through the corners of `rect`, from its handle 2: five points.
    explicit HvPath2f(HvRect2f const& rect);
    /// The outline of `oval` as four cubics, closed, from its handle 1. Computed in float; see
    /// HvOval2f::SetupPathRep for double.
    explicit HvPath2f(HvOval2f const& oval);
    /// Copies like the constructor. Locks this path, then `source`.
    HvPath2f& operator=(HvPath2f const& source);
    using HvShape2f::operator=;
    /// Frees the points.
    ~HvPath2f() override;

    HvShape2f const* QueryShapeKind(Kind kind) const override;
    HvPath2f* Clone() const override;

    // Building: all append to the end. Segments start at the last point of the path.

    /// Starts a subpath.
    void Moveto(HvPoint2<float> const& p);
    /// A line.
    void Lineto(HvPoint2<float> const& p);
    /// A quadratic.
    void Curveto(HvPoint2<float> const& c, HvPoint2<float> const& p);
    /// A cubic.
    void Curveto(HvPoint2<float> const& c1, HvPoint2<float> const& c2, HvPoint2<float> const& p);
    /// A segment of `degree` 1 to 8 from as many points: its controls, then its end. Another degree
    /// appends nothing.
    void AltCurveto(HvPoint2<float> const* pts, unsigned int degree);
    /// The same from `pts[first]` on; nothing when the array does not hold them.
    void AltAltCurveto(HvPoint2fArray const& pts, unsigned int first, unsigned int degree);
    /// Marks the last subpath as closed and returns 1 when its last point equals its start exactly;
    /// otherwise 0. Adds no segment: see CloseSubpath. A last point that is no plain end keeps its
    /// role, and 1 is returned still.
    int Closeto();
    /// Appends polylines in one edit, under one lock: for each what Moveto to its first point and
    /// Lineto to the others append, and Closeto where the last of several points equals the first.
    ///
    /// @param pts    the points of all, one polyline after the other; not those of this path.
    /// @param sizes  how many points each of the `count` polylines has; 0 adds nothing.
    void AppendPolylines(HvPoint2<float> const* pts, unsigned int const* sizes, unsigned int count);

    // Structure. Counts are walks over the tags.

    /// 8.
    unsigned int MaxDegreeForThisImplementation() const;
    /// Control points of all subpaths.
    unsigned int NumPoints() const override;
    /// Subpaths, lone starts included.
    unsigned int NumSubpaths() const;
    /// Segments, where a start without a segment counts as one.
    unsigned int NumSegments() const;
    /// Ends of segments and starts of subpaths.
    unsigned int NumNodes() const;
    /// Nodes without closing ends, which repeat the start of their subpath.
    unsigned int NumNodesExceptLastNodeOfClosedSubpaths() const;
    /// The highest degree of a segment; 0 without segments.
    unsigned int LargestDegree() const;
    /// 1 when no segment is above degree 1; 0 for an empty path.
    int IsPolyline() const;
    /// The degree of the segment of point `i`; for the start of a subpath that of the segment that
    /// follows, 0 when none does. Takes no lock: for a caller that holds the path, or is alone with
    /// it.
    unsigned int Degree(unsigned int i) const;
    /// The same under the lock.
    unsigned int GetDegree(unsigned int i) const;
    /// The start point of the segment that point `i` belongs to; the start of a subpath is its own.
    unsigned int StartOfSegment(unsigned int i) const;
    /// The end of the segment that point `i` belongs to, which for the start of a subpath is the
    /// one that follows; `i` itself for a start without segments.
    unsigned int EndOfSegment(unsigned int i) const;
    /// Both of the above.
    void GetSegmentIndices(unsigned int i, unsigned int& start, unsigned int& end) const;
    /// The first and the last point of the subpath of point `i`. Cost: a walk over the subpath; see
    /// HvPath2fIter for all subpaths in turn.
    void GetSubpathIndices(unsigned int i, unsigned int& first, unsigned int& last) const;
    /// 1 when `i` is the first point of its subpath.
    int IsStartOfSubpath(unsigned int i) const;
    /// 1 when `i` is the last point of its subpath, with `closed` telling whether that is closed;
    /// otherwise 0, with `closed` untouched.
    int IsEndOfSubpath(unsigned int i, int& closed) const;
    /// Whether the subpath of point `i` is closed. Cost: a walk to its end.
    int IsSubpathClosed(unsigned int i) const;
    /// 1 when both paths have the same roles, point by point. Locks this path, then `other`.
    int IsSiblingOf(HvPath2f const& other) const;

    // Points.

    /// The last point of the path, which must not be empty.
    HvPoint2<float> GetCurrentPoint() const;
    int GetPoint(unsigned int i, HvPoint2<float>& p) const override;
    HvPoint2<float> GetPoint(unsigned int i) const override;
    HvPoint2<float>* GetPoints(unsigned int first, unsigned int last,
                               HvPoint2<float>* dest) const override;
    /// The same, widened to `double`.
    HvPoint2<double>* GetPoints(unsigned int first, unsigned int last,
                                HvPoint2<double>* dest) const override;

    // Moving points, and the locks that hold them in line.

    /// Moves point `i` to `p`.
    ///
    /// A locked node takes its two handles along; where they are not in line even so, the handle
    /// after it (before it, where a subpath closes) is projected on the line of the other. The ends
    /// of a closed subpath move together. Moving a handle of a locked node turns the handle on the
    /// node's other side in line: with its length kept when `keepRatio` is 0, otherwise with the
    /// ratio of the two lengths kept.
    void ReplacePoint(unsigned int i, HvPoint2<float> const& p, int keepRatio);
    /// Stores `p` at `i` and nothing else: locks and the closing of subpaths may break.
    void ReplacePointIgnoringLock(unsigned int i, HvPoint2<float> const& p);
    /// Sets the points before and after a node to node - d and node + d, whatever the locks say.
    /// Refuses a handle, and the ends of an open subpath.
    int ReplaceTangentVectorDirections(unsigned int node, HvPoint2<float> const& d);
    /// 1 when the outline does not turn at the node: the squared sine of the angle between its two
    /// handles is at most 1e-6 and they point opposite ways. A handle within 1e-6 of the node is
    /// always in line. 0 for the ends of an open subpath, and for those of a closed one of three
    /// points.
    int IsG1Continuous(unsigned int node) const;
    /// Locks a node. Refuses a point that is no node or not IsG1Continuous, and a node beside a
    /// line or a quadratic; where a subpath closes only the closing segment is asked for that.
    int LockG1(unsigned int node);

    // Editing. The nodes that stay keep their locks, unless it is said otherwise.

    /// Closes the subpath of point `i`: marks it when its last point equals its first, otherwise
    /// adds a line to the first. Refuses where both are equal and the last point is no plain end,
    /// as in a subpath that is closed already or is a lone point.
    int CloseSubpath(unsigned int i);
    /// Makes the closing end of the subpath of point `i` a plain one and unlocks both ends; refuses
    /// an open subpath.
    int OpenSubpath(unsigned int i);

    // The virtual operations of this class stand in the order of their slots.

    /// Puts another curve in place of the segment of point `index`.
    ///
    /// @param pts     `degree` + 1 points, the first and last exactly those of the segment.
    /// @param degree  1 to 8; below 3 it is refused where either end is locked.
    ///
    /// A segment of degree 3 or more that stays so has its two outer controls moved as ReplacePoint
    /// moves them with the ratio kept, so locked ends stay in line.
    virtual int ReplaceSegment(unsigned int index, HvPoint2<float> const* pts, unsigned int degree);
    /// Puts one line in place of all segments between two nodes of one subpath. Refuses locked
    /// nodes. Does nothing, and returns 1, when `first` is above `last`.
    virtual int ReplaceSubpathSection(unsigned int first, unsigned int last);
    /// Puts one cubic with the controls `p` and `q` in place of all segments between two nodes of
    /// one subpath, `first` below `last`. A control that takes the place of a point moves as
    /// ReplacePoint moves it with the ratio kept, so a locked node stays in line; beside a section
    /// that had no such point the lock stays, and its handles part.
    virtual int ReplaceSubpathSection(unsigned int first, unsigned int last,
                                      HvPoint2<float> const& p, HvPoint2<float> const& q);
    /// Puts a copy of the section of `source` between two of its nodes in place of the section
    /// between two nodes of this path, locks between them included.
    ///
    /// Refuses unless `first` is below `last` in one subpath, the same holds of the source, and the
    /// ends of both sections are exactly equal; and where a locked end would get a line or a
    /// quadratic beside it. `source` may be this path. Locks this path, then `source`.
    virtual int ReplaceSubpathSection(unsigned int first, unsigned int last, HvPath2f const& source,
                                      unsigned int sourceFirst, unsigned int sourceLast);
    /// Removes the subpath of point `index`.
    virtual int RemoveSubpath(unsigned int index);
    /// Cuts out the segments between two nodes of one subpath, `first` below `last`: a closed
    /// subpath is opened, and what lies behind `last` becomes a subpath of its own. The two nodes
    /// lose their locks and stay as ends of what is left on their sides; one with nothing left goes
    /// too, but a subpath that is cut out whole leaves its start.
    virtual int RemoveSubpathSection(unsigned int first, unsigned int last);

    // Extents.

    /// The extent of all control points; empty for an empty path.
    HvExtent2<float>& GetExtent(HvExtent2<float>& extent) const override;
    /// The same in `double`.
    HvExtent2<double>& GetExtent(HvExtent2<double>& extent) const override;
    /// An extent of the outline: exact for lines; a cubic counts with the control points of its
    /// quarters, a segment of another degree with its own.
    HvExtent2<float>& GetTightExtent(HvExtent2<float>& extent) const override;
    /// The same in `double`.
    HvExtent2<double>& GetTightExtent(HvExtent2<double>& extent) const override;
    /// The extent of the control points of the segment of point `i`.
    HvExtent2<float>& GetSegmentExtent(unsigned int i, HvExtent2<float>& extent) const;

    // Hits.

    int GetClosePointIndex(HvPoint2<float> const& p, double size,
                           unsigned int* index) const override;
    /// The control point nearest to `p` by max + 0.3334 * min of the distances on the axes, the
    /// lowest of several; 0, with `index` 0, for an empty path.
    int GetClosePointIndex(HvPoint2<float> const& p, unsigned int* index) const;
    unsigned int GetPointsInExtentIndices(HvExtent2<float> const& extent,
                                          HvULongArray* indices) const override;
    int IsIntersectingExtent(HvGC const& gc, HvExtent2<float> const& extent,
                             int skipExtentTest) const override;
    bool IsInteriorIntersectingExtent(HvGC const& gc, HvExtent2<float> const& extent,
                                      int skipExtentTest) const override;
    int IntersectSamplePointsExtent(HvGC const& gc, HvExtent2<float> const& extent,
                                    HvPoint2fArray& pts, HvPointTagArray& ptTags,
                                    int skipExtentTest) const override;

    // Affine edits.

    /// Adds `d` to every control point.
    HvPath2f& Translate(HvPoint2<float> const& d) override;
    HvPath2f& Rotate(double degrees, HvPoint2<float> const& center) override;
    /// Scales about `center`, along the axes.
    HvPath2f& Scale(double sx, double sy, HvPoint2<float> const& center) override;
    HvPath2f& ShearX(double shear, double y0) override;
    HvPath2f& ShearY(double shear, double x0) override;
    /// Maps every control point through `transform`.
    HvPath2f& Transform(HvTransfo4 const& transform) override;

    // Outline as points. All append. A subpath without a segment gives nothing.

    unsigned int Flatten(HvGC const& gc, HvPoint2fArray& pts,
                         HvPointTagArray& ptTags) const override;
    /// The outline within `tolerance` in the path's own coordinates, tagged; returns the number of
    /// points.
    unsigned int AltFlatten(double tolerance, HvPoint2fArray& pts, HvPointTagArray& ptTags) const;
    /// The same for the subpath of point `i`, without tags.
    unsigned int FlattenSubpath(unsigned int i, double tolerance, HvPoint2fArray& pts) const;
    /// The mapped outline within `tolerance` in double, tagged; returns the number of subpaths.
    unsigned int TransformAndFlattenPath(HvTransfo4 const& transform, double tolerance,
                                         HvPoint2dArray& pts, HvPointTagArray& ptTags) const;
    /// The same for the closed subpaths alone.
    unsigned int TransformAndFlattenClosedSubPaths(HvTransfo4 const& transform, double tolerance,
                                                   HvPoint2dArray& pts,
                                                   HvPointTagArray& ptTags) const;
    /// The same, each polygon clipped to `clip`, with its first point repeated at its end; returns
    /// the number of subpaths of which something is left.
    unsigned int TransformFlattenAndClipClosedSubPaths(HvTransfo4 const& transform,
                                                       double tolerance,
                                                       HvExtent2<double> const& clip,
                                                       HvPoint2dArray& pts,
                                                       HvPointTagArray& ptTags) const;

    // Samples. All append.

    unsigned int Sample(HvGC const& gc, HvPoint2fArray& pts,
                        HvPointTagArray& ptTags) const override;
    /// Points at fractions of the length of the flattened outline, which `parameters` gives in
    /// ascending order; returns how many.
    unsigned int Sample(HvGC const& gc, HvFloatArray const& parameters, HvPoint2fArray& pts,
                        HvPointTagArray& ptTags) const;
    /// The length of the outline from the start of its subpath to `node`, as a fraction of the
    /// length of the subpath: 0 to 1, measured on a polyline within `tolerance`.
    double GetNodeNormalizedArcLength(unsigned int node, double tolerance) const;
    /// Appends a fit of the samples of `source`, which may be this path, and returns the points
    /// added.
    ///
    /// The samples are those of Sample, in device space, taken before anything is locked. The fit
    /// is within `gc.flatness` of them, smooth but for the corners that `gc.cornerCosSquared`
    /// tells; see HvBezierTool::OpenFit. A closed subpath becomes a closed subpath. An open one,
    /// its last point added to its samples, continues from the last point of this path, without a
    /// Moveto unless this path is empty. Samples that are not finite, and a flatness below 0, add
    /// nothing. Locks this path, then `source`.
    unsigned int AddFittedSamplesFromPath(HvGC const& gc, HvPath2f const& source);

    // Rendering. Open subpaths are not filled.

    void Fill(HvGC const& gc, HvUByteRaster& raster, int (*interrupted)()) const override;
    void AAFill(HvGC const& gc, HvUByteRaster& raster, int (*interrupted)()) const override;
    void SoftFill(HvGC const& gc, HvUByteRaster& raster, int (*interrupted)()) const override;
    void Stroke(HvGC const& gc, HvUByteRaster& raster) const override;
    /// Makes `outline`, which may be this path, what Stroke fills: closed rings in device space
    /// that give the stroke when they are filled by winding. A host that wants a stroke
    /// anti-aliased or soft fills it with an identity transform. When std::bad_alloc comes out,
    /// `outline` is as it was.
    void GetStrokeOutline(HvGC const& gc, HvPath2f& outline) const;

    // Saving: 9 bytes a point and 16 more. A path whose archive would not fit 32 bits (more than
    // 477 million points) has a size of 0 and writes nothing.

    unsigned int WriteToBuffer(void* buffer) const override;
    unsigned int GetBufferSize() const override;
    /// Without memory the path is left empty.
    unsigned int ReadFromBufferBody(void const* body) override;
    /// The same through a reader, for bytes that nobody vouches for: it stays in the reader's
    /// bounds and takes no more memory than the bytes that are there. Refuses also roles that do
    /// not make up whole subpaths, each from its start; the path is then as it was, and the reader
    /// tells where and why.
    unsigned int ReadArchiveBody(HvByteReader& body);

protected:
    /// The control points of all subpaths, one after the other.
    HvPoint2fArray points;
    /// One for each point.
    HvUByteArray tags;
    /// 1 from Moveto until the last subpath is closed. Kept for the user of the building
    /// operations; nothing here depends on it.
    int lastSubpathOpen;

    // For the operations of a derived class, which hold the lock.

    /// The first point of the subpath of point `i`, which must exist. Cost: a walk back to it.
    unsigned int FirstOfSubpath(unsigned int i) const;
    /// Whether `first` and `last` are nodes of one subpath, in this order and not the same.
    bool IsSection(unsigned int first, unsigned int last) const;
    /// Whether the extent of the control points, mapped, meets `extent`.
    bool DoesOverlap(HvGC const& gc, HvExtent2<float> const& extent) const;
    /// ReadArchiveBody, without the test of the roles when the caller vouches for the bytes.
    unsigned int ReadBody(HvByteReader& reader, bool isVouched);

private:
    HvPath2f(HvPath2f const& source, HvShapeLock const& held);

    // Storage and tags. The lock is held here and below.
    void AppendSegment(HvPoint2<float> const* pts, unsigned int degree);
    void Reserve(unsigned int numPoints);
    void Splice(unsigned int at, unsigned int removed, HvPoint2<float> const* newPoints,
                unsigned char const* newTags, unsigned int inserted);
    void Erase(unsigned int first, unsigned int end);
    void SetRole(unsigned int i, unsigned int role);
    void SetEndOfSegment(unsigned int end, unsigned int degree);
    void Unlock(unsigned int node);
    // Steps of ReplacePoint.
    void MoveEndpoint(unsigned int i, HvPoint2<float> const& p);
    void MoveInnerNode(unsigned int i, HvPoint2<float> const& p);
    void MoveHandle(unsigned int i, unsigned int node, HvPoint2<float> const& p, int keepRatio);
    // Steps of replacing.
    void ReplaceInterior(unsigned int first, unsigned int last, HvPoint2<float> const* newPoints,
                         unsigned char const* newTags, unsigned int count);
};

/// Writes the counts of the path and, for each point, its coordinates and the ends of its segment.
HV_API std::ostream& operator<<(std::ostream& stream, HvPath2f const& path);

#endif
