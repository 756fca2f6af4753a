// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A path of space that an object travels in time.

#ifndef HV_MOTIONPATH_HVMOTIONPATH3D_H
#define HV_MOTIONPATH_HVMOTIONPATH3D_H

#include <hv/foundation/HvArchiveFault.h>
#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvMemory.h>
#include <hv/foundation/HvPoint3.h>
#include <hv/foundation/HvPoint3dArray.h>
#include <hv/foundation/HvUByteArray.h>
#include <hv/foundation/HvULongArray.h>
#include <hv/platform/CXQCriticalSection.h>
#include <hv/platform/HvExport.h>

#include <cstddef>
#include <memory>

class HvByteReader;
class HvMotionPath3dImpl;
class HvPath2f;
class HvTransfo4;

/// A chain of cubic Bezier segments of space whose nodes carry times.
///
///     node 0    control  control    node 1    control  control    node 2
///     point 0   point 1  point 2    point 3   point 4  point 5    point 6
///
/// All indices are point indices: node k is point 3k, and the segment of a node is the one that
/// starts at it. Times strictly rise from node to node. Along a segment time runs over arc length,
/// not over the curve's parameter; a rule on each side of each node (TangentInfo) shapes the speed.
/// A segment made by Lineto is straight and travelled evenly, whatever the rules say, unless it is
/// held.
///
/// Results are 1 for done and 0 for refused or not found; a refusal leaves the path and the outputs
/// as they were, where nothing else is said. Times that are not finite are refused everywhere.
/// Coordinates are not judged: a NaN among them gives NaN where it has its part, and nothing worse.
/// When std::bad_alloc comes out, the path and what an operation appends to are as they were.
///
/// Threads: one critical section for each path guards all of it. Every operation enters it, also
/// when it only reads; a thread may hold it already. Operations between two paths take one after
/// the other, never both.
///
/// Evaluation keeps the polylines of the segments that it has met, so that the next evaluation
/// there at the same tolerance costs two searches and a polynomial. An edit of points drops them.
class HV_API HvMotionPath3d : public HvAllocated {
public:
    /// How the speed behaves on one side of a node. The right member of a node rules the start of
    /// its segment, the left member of the next node the end. Stored in files: add at the end,
    /// never renumber.
    enum TangentInfo : int {
        TangentFree = 0,  ///< as TangentSmooth
        TangentStep = 1,  ///< as a right member: the object rests at the node for the whole segment
        TangentLinear = 2,  ///< even speed: on both ends of a segment, or at its end
        TangentSmooth =
            3,           ///< the mean speed of the two segments at the node; 0 at the path's ends
        TangentStop = 4  ///< speed 0 at the node
    };

    /// What a point of the path is.
    enum PointKind : int {
        LineNode = 0,            ///< node at the start of a straight segment
        LineFirstControl = 1,    ///< first control point of a straight segment
        LineSecondControl = 2,   ///< second control point of a straight segment
        LastLineNode = 3,        ///< last node, marked as the start of a straight segment
        CurveNode = 4,           ///< node at the start of a curved segment
        CurveFirstControl = 5,   ///< first control point of a curved segment
        CurveSecondControl = 6,  ///< second control point of a curved segment
        LastCurveNode = 7,       ///< last node, without that mark
        SinglePoint = 8          ///< the only point of a path
    };

    /// A plane of two axes, which are kept in this order.
    enum Projection : int {
        ProjectionXY = 0,  ///< z is dropped
        ProjectionXZ = 1,  ///< y is dropped
        ProjectionYZ = 2   ///< x is dropped
    };

    /// What a sample of Render is.
    enum SampleKind : int {
        SampleAtNode = 0,   ///< at the time of a node
        SampleOnLine = 1,   ///< inside a straight segment
        SampleOnCurve = 2,  ///< inside a curved segment
        SampleAtRest = 3    ///< inside a held segment, before the first node or behind the last
    };

    // Life.

    /// A path without points.
    HvMotionPath3d();
    /// Two nodes and a straight segment: Moveto(a, t0), Lineto(b, t1). Where the second is refused
    /// there is one node, where the first is, none.
    HvMotionPath3d(HvPoint3<double> const& a, HvPoint3<double> const& b, double t0, double t1);
    /// Two nodes and a cubic: Moveto(a, t0), Curveto(c, d, b, t1).
    HvMotionPath3d(HvPoint3<double> const& a, HvPoint3<double> const& b, double t0, double t1,
                   HvPoint3<double> const& c, HvPoint3<double> const& d);
    /// Copies points, client pointers, times, flags and rules, under the lock of `other`.
    HvMotionPath3d(HvMotionPath3d const& other);
    /// The same; all or nothing. Two paths may be assigned to each other in two threads at once:
    /// the source is copied under its lock before the lock of the target is taken.
    HvMotionPath3d& operator=(HvMotionPath3d const& other);
    /// Frees the points, not what the client pointers lead to.
    virtual ~HvMotionPath3d();

    // Reading. An index out of range gives 0.

    /// Nodes and control points together.
    unsigned int NumPoints() const;
    /// Nodes; one more than segments, 0 without points.
    unsigned int NumNodes() const;
    /// 1 for the index of a node.
    int IsNode(unsigned int point) const;
    /// The place of a node or a control point.
    int GetControlPoint(unsigned int point, HvPoint3<double>& p) const;
    /// Copies the points `first` to `last`, inclusive, and for each the time of the node that its
    /// segment starts at; `p` and `t` have room for them. 1 with nothing copied when first > last.
    int GetControlPoints(unsigned int first, unsigned int last, HvPoint3<double>* p,
                         double* t) const;
    /// What the point is.
    int GetControlPointKind(unsigned int point, PointKind& kind) const;
    /// Place and time of a node; 0 for a control point.
    int GetNode(unsigned int point, HvPoint3<double>& p, double& t) const;
    /// The caller's pointer at a point; null where none was set. It is copied with the path, not
    /// owned and not saved.
    void* GetClientData(unsigned int point) const;
    /// Sets the caller's pointer at a point; an index out of range does nothing.
    void SetClientData(unsigned int point, void* data);
    /// Time of the first node; 0 for a path without points. The argument has no meaning.
    double GetFirstTime(int unused) const;
    /// Time of the last node; 0 for a path without points. The argument has no meaning.
    double GetLastTime(int unused) const;
    /// Both; left as they were for a path without points.
    void GetTimeInterval(double& first, double& last) const;
    /// The rule before the node that the segment of `point` starts at.
    int GetLeftTangentInfo(unsigned int point, TangentInfo& info) const;
    /// The rule behind it.
    int GetRightTangentInfo(unsigned int point, TangentInfo& info) const;
    /// Sets the rule before the node that the segment of `point` starts at; refuses what is no
    /// TangentInfo.
    int SetLeftTangentInfo(unsigned int point, TangentInfo info);
    /// Sets the rule behind it.
    int SetRightTangentInfo(unsigned int point, TangentInfo info);

    // Finding.

    /// Finds the nodes around a time: equal ones at the time of a node. Before the first node, or
    /// at NaN, only `right` is valid, behind the last only `left`, without points neither; an
    /// output that is not valid is left as it was.
    ///
    /// @param leftValid, rightValid  1 when the index beside is one.
    /// @param tolerance, unused      without meaning.
    void GetBracketingIndices(double t, double tolerance, unsigned int& left, int& leftValid,
                              unsigned int& right, int& rightValid, int unused) const;
    /// Finds the node whose time is within `tolerance` of `t`; of two the nearer, of two as near
    /// the left one. Node 0 is taken for a `t` before it only when t + tolerance passes its time.
    int GetNodeIndexFromInitialTime(double t, double tolerance, unsigned int& point) const;
    /// Finds the point of the path nearest to `p` among those that lie in the cube of half side
    /// `radius` about it; the first of several. Cost: linear.
    int GetClosestControlPointIndex(HvPoint3<double> const& p, double radius,
                                    unsigned int& point) const;

    // Building.

    /// Begins a path with its first node; refused on a path with points. The new node, as each
    /// later one, has null for its client pointers, no flags and smooth rules.
    int Moveto(HvPoint3<double> const& p, double t);
    /// Appends a straight segment to `p`, its controls at `p` too. Refused on a path without points
    /// and unless the last time and `t` can be adjacent; see CanBeAdjacentTimeValues.
    int Lineto(HvPoint3<double> const& p, double t);
    /// Puts a straight segment from `p` before the first node, its controls at `p` too. Refused on
    /// a path without points and unless `t` and the first time can be adjacent. Cost: linear.
    int PreLineto(HvPoint3<double> const& p, double t);
    /// Appends a cubic through the controls `c1` and `c2` to `p`; refused as Lineto. Where the old
    /// last node is locked and the segment before it curved, the handles there are aligned as by
    /// LockG1Continuity.
    int Curveto(HvPoint3<double> const& c1, HvPoint3<double> const& c2, HvPoint3<double> const& p,
                double t);
    /// Puts a cubic before the first node, refused as PreLineto; the mirror of Curveto: in the
    /// order of the path its points are `p`, `c2`, `c1` and the old first node. Cost: linear.
    int PreCurveto(HvPoint3<double> const& c1, HvPoint3<double> const& c2,
                   HvPoint3<double> const& p, double t);
    /// Splits the segment at a time; the object travels through the new node at that time, and the
    /// shape stays. Its speed is then shaped anew, by smooth rules at the new node.
    ///
    /// @param tolerance  as for Eval.
    /// @param nearTime   a time within it of a node finds that node.
    /// @param point      index of the new node, or of the node that was found.
    /// @param exact      1 when there is a node already, at the time or near it.
    /// @return           1 for a new node; 0 for one that was found, before the first time, from
    ///                   the last time on, where the time between would be too short, and where the
    ///                   place on the curve cannot be told within `tolerance`.
    ///
    /// A segment shorter than 1e-7 is split at the middle of its parameter. Cost: linear.
    int InsertNode(double t, double tolerance, double nearTime, unsigned int& point, int& exact);
    /// Removes the nodes `first` to `last`, point indices, and with inner ones the controls on both
    /// sides; the nodes that become neighbours keep their outer handles.
    ///
    /// @return  number of points removed; 0 when an index is not of a node, or `first` is above
    ///          `last`. No memory is needed and none is given back.
    unsigned int RemoveNodes(unsigned int first, unsigned int last);
    /// Makes each time t * scale + offset; refused, all of it, unless the new times can be
    /// adjacent.
    int ScaleAndOffsetInitialTimes(double scale, double offset);

    // Moving points.

    /// Moves a node in space and time; the controls of a locked one go along.
    ///
    /// @param minGap  least distance in time to both neighbours, not reached; 0 or more.
    /// @return        0 for an index that is not of a node, a negative `minGap`, and a time too
    ///                near to a neighbour or beyond it.
    int ReplaceNode(unsigned int point, HvPoint3<double> const& p, double t, double minGap);
    /// Moves any point. The controls of a locked node go along with it; a control of a locked inner
    /// node that no straight segment starts at turns the opposite one, so that the three stay on a
    /// line.
    ///
    /// @param keepLength  not 0: the two handles of the node keep their ratio; 0: the opposite one
    ///                    keeps its length. A handle shorter than 1e-7 has no ratio, and a control
    ///                    that near to its node no direction: the opposite one stays.
    int ReplaceControlPoint(unsigned int point, HvPoint3<double> const& p, int keepLength);
    /// ReplaceControlPoint to the place `delta` away.
    int TranslateControlPoint(unsigned int point, HvPoint3<double> const& delta, int keepLength);
    /// Moves one point and no other.
    int ReplaceControlPointIgnoringLock(unsigned int point, HvPoint3<double> const& p);
    /// Sets the control before an inner node to node - v and the one behind it to node + v; refused
    /// for other indices.
    int ReplaceTangentVectorDirections(unsigned int point, HvPoint3<double> const& v);
    /// Maps all points; times stay. Returns 1.
    int Transform(HvTransfo4 const& transfo);

    // Smooth nodes. A locked node keeps its two controls on a line through it.

    /// 1 when the node at `point` is locked.
    int IsG1ContinuityLocked(unsigned int point) const;
    /// Unlocks the node at `point`; no point moves.
    int UnlockG1Continuity(unsigned int point);
    /// Locks a node. At an inner one the handles are aligned first: each keeps its length, both
    /// take the mean of their two directions. Refused beside a straight segment, on a path of one
    /// node, and where a handle, or that mean, is shorter than 1e-7.
    int LockG1Continuity(unsigned int point);
    /// LockG1Continuity on each node in order.
    void LockG1ContinuityAtAllNodes();
    /// Puts the controls of the segment at `point` to the thirds of its chord and unlocks both its
    /// nodes. A straight segment stays as it is, result 1. Refused where no segment starts.
    int LinearizeSegment(unsigned int point);
    /// 1 when the controls of the segment at `point` are at the thirds of its chord, each
    /// coordinate within 1e-7.
    int IsCubicSegmentLinearlyParameterized(unsigned int point) const;
    /// Turns the handles of the segment at `point` into the directions in which its neighbours
    /// meet it, a third of its chord long; beside a curved neighbour both handles of the node are
    /// then aligned and the node is locked, where LockG1Continuity would do it. Ends of the path
    /// stay as they are.
    ///
    /// @return  1, also for the only segment of a path; 0, with nothing changed, where no segment
    ///          starts, for a straight one, and when a neighbour shows no direction: its near
    ///          handle, or when it is straight its chord, has a squared length below 1e-7.
    int SmoothSegment(unsigned int point);
    /// Reshapes the first two cubics after one of their nodes was moved: the node between them
    /// becomes smooth, its handles lie along the line between its two neighbours and are thirds of
    /// their chords. The control at an end of the path goes half-way between that end and the
    /// cubic's other control; at an inner node it keeps its direction and becomes a third of the
    /// chord long.
    ///
    /// @param direction  becomes the unit vector from the one neighbour to the other. When these
    ///                   are within 1e-7 of each other it is used instead, and when it is shorter
    ///                   than that all controls go to the thirds of the chords.
    /// @return           0 when there are no two such segments, or one is straight.
    int AdjustFirstTwoCubics(HvPoint3<double>& direction);
    /// The same with the last two cubics.
    int AdjustLastTwoCubics(HvPoint3<double>& direction);

    // Evaluating.

    /// Where the object is at a time.
    ///
    /// @param tolerance  how far a segment's polyline may be from it, above 0, in the unit of the
    ///                   points. One below 1e-11 of the segment's size, or NaN, counts as that.
    /// @param out        the first point before the first time and at NaN, the last one behind the
    ///                   last; left as it was by a path without points. A segment shorter than 1e-7
    ///                   gives its first node.
    /// @param unused     without meaning.
    ///
    /// The distance travelled is a cubic polynomial of time with the given speeds at both ends,
    /// held between 0 and the length: speeds much above the mean may make the object rest at an end
    /// for a while. Cost: the first time on a segment, the flattening of it and its neighbours.
    void Eval(double t, double tolerance, HvPoint3<double>& out, int unused) const;
    /// Appends Eval(first + i * step) for i = 0, 1, ... while that time is not above `last`;
    /// nothing for a step that is not above 0. There are at most (last - first) / step + 2 samples:
    /// where a step is lost to rounding, times do not repeat without end. More samples than an
    /// array holds are refused by std::bad_alloc.
    void EvalSequence(double first, double last, double step, double tolerance, HvPoint3dArray& out,
                      int unused) const;

    /// Projects the path onto the plane of two axes.
    ///
    /// @param plane  the axes kept; refused when it is none of the three.
    /// @param path   becomes one open subpath: a line for each straight segment, a cubic for each
    ///               other one, rounded to float; empty for a path without points. Locks are not
    ///               carried over. This path is not locked any more when `path` is.
    int GetProjectedPath(Projection plane, HvPath2f& path) const;
    /// Appends samples for display, at even times from `first` to `last`, both included.
    ///
    /// @param samples    how many; a single one is at `first`.
    /// @param positions  the places, within 1e-4 of the path's size.
    /// @param kinds      what each of them is, a SampleKind.
    /// @param times      their times.
    /// @param nodes      for each the index of the last node not behind it; 0 before the first.
    ///
    /// Nothing for a path without points, for times that are not finite, and for `first` above
    /// `last`.
    void Render(double first, double last, unsigned int samples, HvPoint3dArray& positions,
                HvUByteArray& kinds, HvDoubleArray& times, HvULongArray& nodes) const;

    // Saving; docs/motion_path_archive.md tells the bytes.

    /// Bytes of the archive. Throws std::bad_alloc when they would not fit 32 bits.
    unsigned int GetBufferSize() const;
    /// Writes the archive, its length included, and returns GetBufferSize(). `buffer` has room.
    unsigned int WriteToBuffer(void* buffer) const;
    /// Becomes the path of an archive whose length ends at `body`; the caller vouches for the
    /// bytes. The client pointers are null. Returns the bytes of the body that were used and 4, so
    /// 4 less than GetBufferSize(); 0, with the path as it was, when it is no archive.
    unsigned int ReadFromBufferBody(void const* body);
    /// The same through a reader, which stays in its bounds and steps over what was used. 0 also,
    /// and the reader then fails, for a body that does not hold what it claims.
    unsigned int ReadArchiveBody(HvByteReader& body);

private:
    std::unique_ptr<HvMotionPath3dImpl> impl;
    mutable CXQCriticalSection section;
};

/// 1 when `b` may be the time of the node behind one at `a`: b > a, and further than 1e-30.
HV_API int CanBeAdjacentTimeValues(double a, double b);

/// 1 when `b` lies in the closed cube of half side `radius` about `a`.
HV_API int IsInEXtent(HvPoint3<double> const& a, double radius, HvPoint3<double> const& b);

/// Bytes of the length that stands before an archive's body: 4.
HV_API unsigned int HvMotionPath3d_GetBufferBodyLengthSize();

/// Makes the path of an archive whose length ends at `body`; the caller vouches for the bytes.
/// Bytes that come from outside are read by HvMotionPath3d_CreateFromBuffer.
///
/// @param consumed  what HvMotionPath3d::ReadFromBufferBody returned; 0 when there is no path.
/// @return          a path that the caller owns; null when it is no archive or there is no memory:
///                  no exception comes out.
HV_API HvMotionPath3d* HvMotionPath3d_CreateFromBufferBody(void const* body,
                                                           unsigned int& consumed);

/// Makes the path of an archive that may be damaged or hostile.
///
/// @param buffer  the archive from its length on; no byte beyond `size` is read, and no more memory
///                is taken than a path of that many bytes needs.
/// @param size    bytes at `buffer`; there may be more than the archive has.
/// @param path    takes the new path, which the caller owns; null when the result is 0.
/// @return        bytes of the archive, its length included; 0 when a pointer is null, `size` is
///                less than the length tells, the body claims more than that length, or it is no
///                archive. A length greater than the body needs is accepted.
///
/// Times are not judged: those out of order come as they stand, and the path lives with them.
HV_API unsigned int HvMotionPath3d_CreateFromBuffer(void const* buffer, std::size_t size,
                                                    HvMotionPath3d** path);

/// The same, and tells where and why the bytes were refused. `fault` is written only when bytes
/// were: not when a pointer is null.
HV_API unsigned int HvMotionPath3d_CreateFromBuffer(void const* buffer, std::size_t size,
                                                    HvMotionPath3d** path, HvArchiveFault& fault);

#endif
