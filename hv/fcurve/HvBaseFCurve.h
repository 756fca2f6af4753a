// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The function curve contract: what every kind of curve can do, and how every call is locked.

#ifndef HV_FCURVE_HVBASEFCURVE_H
#define HV_FCURVE_HVBASEFCURVE_H

#include <hv/foundation/HvMemory.h>
#include <hv/platform/HvExport.h>
#include <hv/platform/critical_section.h>

#include <cstddef>

struct _GUID;
template <class T>
struct HvExtent2;
class CFCUserData;
class CFCUserDataSet;
class HvBoolArray;
class HvByteReader;
class HvDoubleArray;
class HvPoint2dArray;
class HvPointTagArray;
class HvTransfo4;

/// A value over a double parameter (time, as a rule), given by keys sorted by strictly rising
/// parameter, with rules for what lies before, between and after them.
///
/// **Results.** An operation that can refuse returns 1 for done, 0 for refused or nothing found; a
/// refusal leaves the curve, and the arguments that take results, as they were. Reasons to refuse:
/// the curve is read-only, a locked key stands in the way, an argument is outside the kind's domain
/// or not finite where it would be stored, no key matches, another curve is of another kind. The
/// only exception is std::bad_alloc; it passes through with all locks released and every object
/// valid.
///
/// **Arguments.** A `tolerance` finds the key nearest to the parameter among those in the closed
/// interval of `tolerance` around it, the earliest on a tie. `openAtFrom` and `openAtTo`, when not
/// 0, exclude the key at exactly that end from an interval. Arrays that take results are appended
/// to. A `clamp` that is not 0 limits values to the clamping values, on the kinds that have them.
/// Of the writers of one parameter, those that take a `double&` store the found key's parameter
/// back into it.
///
/// **Locks**, from the outside in: (1) the process-wide CActiveDataMultiThreadedRenderingLock,
/// taken by writers alone; (2) the curve's own critical section, recursive, entered by readers and
/// writers; (3) in operations that take a second curve, that curve's section. They are released in
/// reverse order, also when an exception passes. Two operations between two curves in opposite
/// directions cannot deadlock, since both hold the access lock first. These depart from the rule,
/// and stay so:
///  - SnapShot takes the access lock too on boolean and standard curves, though it is const;
///  - FoldParameter takes the access lock too on every kind, though it is const;
///  - SetExtrapolationMethod of the standard curve takes the section only;
///  - AreAny...LockedInInterval, GetKind and IsConstraintSupported take no lock;
///  - SetClampingValues takes none where it does nothing: on boolean, integer and quaternion
///  curves.
///
/// The evaluation of near parameters in sequence is fast: each thread keeps a search hint per
/// curve.
class HV_API HvBaseFCurve {
public:
    /// What GetKind returns. Stored in files: add at the end, never renumber. 0 is never a curve.
    enum Kind : int {
        Boolean = 10,    ///< HvBooleanFCurve
        Integer = 15,    ///< HvIntegerFCurve
        Standard = 20,   ///< HvStdFCurve
        Raw = 30,        ///< HvRawFCurve
        Quaternion = 40  ///< HvQuatFCurve
    };

    /// A key may hold two values; they differ where the curve jumps.
    enum KeySide : int {
        Left = 1,  ///< the value reached from the left
        Right = 2  ///< the value that leaves to the right
    };

    /// The shape of the segment that starts at a key. Stored in files: never renumber. Stepped
    /// curves have no kinds; they report ConstantSegment.
    enum FSKind : int {
        ConstantSegment = 1,  ///< the key's right value up to the next key
        LinearSegment = 2,    ///< a line to the next key's left value
        CubicSegment = 3      ///< a cubic Bezier over the two keys' evaluated handles
    };

    /// What the curve does outside its keys. Stored in files: never renumber. Initially 1.
    enum ExtrapolationMethod : int {
        ConstantExtrapolation = 1,  ///< hold the end value
        LinearExtrapolation = 2,    ///< continue the end segment as a line; standard and raw curves
        CycleExtrapolation = 3,     ///< repeat the key range
        RelativeCycleExtrapolation =
            4  ///< repeat, each cycle offset by last value minus first value
    };

    /// Flags that lock or derive one aspect of a key. Each maps to a bit of the key's stored
    /// constraint word (CFCKeyConstraint); the two numberings differ and both are fixed, since
    /// files hold the word.
    enum KeyConstraint : int {
        ParameterLocked = 1,          ///< the parameter may not change
        ValueLocked = 2,              ///< the values may not change
        TangentContinuityLocked = 4,  ///< the two handles stay on one line
        TangentDirectionLocked = 8,   ///< the handles' directions may not change
        TangentLengthLocked = 16,     ///< the handles' lengths may not change
        AllLocked = 32,               ///< 1, 2, 8 and 16 together; read as 1 when all are set
        FlatTangents = 64,            ///< handle y equals the key's value
        FlatAtExtremum = 128,         ///< flat when first, last or a local extremum
        UnlimitedAutoSlope = 256,     ///< AutomaticTangents without its overshoot limit
        ZeroLengthTangents = 512,     ///< handles coincide with the key
        TangentLengthContinuityLocked = 1024,  ///< the two handles keep equal lengths
        LinearTangents = 2048,                 ///< handles point at the neighbouring keys
        MirroredTangents = 4096,               ///< what counts as unified is a mirror image
        AutomaticTangents = 8192               ///< handles at thirds, slope from the neighbours
    };

    /// Handles of a region of selected keys, for ScaleAndOffsetParameters and the curve stretcher.
    enum RegionHandle : int {
        BottomHandle = 1,  ///< the side of the smallest values
        LeftHandle = 2,    ///< the side of the smallest parameters
        RightHandle = 4,   ///< the side of the largest parameters
        TopHandle = 8      ///< the side of the largest values
    };

    /// What GetFCurveInfo tells of a curve. In: `mask` names the fields wanted. Out: the bits of
    /// fields that the kind does not have are cleared.
    struct FCurveInfo {
        /// The fields wanted; on return, those that the kind has.
        unsigned int mask;
        Kind kind;                          ///< 0x01
        double valueWhenNoKeys;             ///< 0x04
        unsigned int numKeys;               ///< 0x02
        FSKind defaultSegmentKind;          ///< 0x08, kind given to new keys; not on stepped curves
        double lowerClamp;                  ///< 0x10, not on stepped curves
        double upperClamp;                  ///< 0x20, not on stepped curves
        ExtrapolationMethod extrapolation;  ///< 0x40
    };

    /// What GetKeyInfoFromIndex and GetKeyInfoFromParameter tell of a key; `mask` as in FCurveInfo.
    /// The tangents are evaluated handles as vectors from the key.
    struct KeyInfo {
        /// The fields wanted; on return, those that the kind has.
        unsigned int mask;
        unsigned int index;    ///< 0x001
        double parameter;      ///< 0x002
        double leftValue;      ///< 0x004
        double rightValue;     ///< 0x008
        double leftTangentX;   ///< 0x010, handle x minus the parameter; not on stepped curves
        double leftTangentY;   ///< 0x020, handle y minus the left value; not on stepped curves
        double rightTangentX;  ///< 0x040, handle x minus the parameter; not on stepped curves
        double rightTangentY;  ///< 0x080, handle y minus the right value; not on stepped curves
        FSKind segmentKind;    ///< 0x100, of the segment to the right; not on stepped curves
        int selected;          ///< 0x200, 1 when the curve and the key are selected
    };

    /// The storage of a curve is the library's own, see HvAllocate; std::bad_alloc when there is
    /// none.
    static void* operator new(std::size_t size) { return HvAllocate(size); }
    /// Places a curve in storage of the caller.
    static void* operator new(std::size_t, void* place) noexcept { return place; }
    /// Gives back what `new` took; null does nothing.
    static void operator delete(void* block) noexcept { HvFree(block); }
    /// Matches the placement form; does nothing.
    static void operator delete(void*, void*) noexcept {}

    /// A curve without user data.
    HvBaseFCurve();
    /// Copies the user data of `other`.
    HvBaseFCurve(HvBaseFCurve const& other);

    // The virtual operations stand in the order of their slots, which is part of the contract.

    /// Copies the user data of `other`. The kinds' own assignments copy the keys and fields too.
    virtual HvBaseFCurve& operator=(HvBaseFCurve const& other);
    /// Takes the locks and frees what the curve owns.
    virtual ~HvBaseFCurve();

    /// This curve when `kind` is its own, otherwise null.
    virtual HvBaseFCurve const* QueryFCurveKind(Kind kind) const = 0;
    /// The kind of the curve. Takes no lock.
    virtual Kind GetKind() const = 0;
    /// A new curve of the same kind, keys, fields and user data, owned by the caller.
    virtual HvBaseFCurve* Clone() const = 0;
    /// A new curve, owned by the caller, that evaluates like this one on [from, to], beyond the
    /// keys and across cycles too. Its extrapolation becomes `method` when that is one of 1 to 4.
    /// Null when an end, or the value there, is not finite; std::bad_alloc, before it starts, when
    /// the cycles have more keys than an array holds.
    virtual HvBaseFCurve* SnapShot(double from, double to, ExtrapolationMethod method) const = 0;

    /// Inserts a key, or sets the value of the key that stands at exactly `parameter`. The first
    /// key of a curve also sets its value when no keys.
    virtual int CreateKey(double parameter, double value) = 0;
    /// Replaces the keys of the interval from `from` to `to` by one at `parameter`. With
    /// `keepKeyData` the new key takes over the constraints and user data of the key nearest to it.
    /// Refuses when a key in the interval is locked or `parameter` does not lie between the keys
    /// that stay.
    virtual int MergeAndCreateKey(double from, double to, double parameter, double value,
                                  int openAtFrom, int openAtTo, int keepKeyData) = 0;
    /// Inserts a key that leaves the curve's shape unchanged. With `ignoreExtrapolation` 0 a
    /// cycling curve first folds the parameter into the key range.
    virtual int CreateNonModifyingKey(double parameter, int ignoreExtrapolation) = 0;
    /// MergeAndCreateKey with the value that the curve has at `parameter`.
    virtual int MergeAndCreateNonModifyingKey(double from, double to, double parameter,
                                              int openAtFrom, int openAtTo, int keepKeyData,
                                              int ignoreExtrapolation) = 0;
    /// Removes the key within `tolerance`. Locks are looked for at exactly `parameter`. 1 also on a
    /// curve without keys.
    virtual int RemoveKey(double parameter, double tolerance) = 0;
    /// Removes the keys of an interval. When `from` equals `to` and one end is open, both count as
    /// closed. 1 also when there is nothing to remove.
    virtual int RemoveKeys(double from, double to, int openAtFrom, int openAtTo) = 0;

    /// Sets the value that a curve without keys has everywhere; refuses what the kind cannot hold,
    /// NaN on every kind.
    virtual int SetValueWhenNoKeys(double value) = 0;
    /// Gives the value on one side of the key within `tolerance`; 0 without such a key and for a
    /// side other than Left and Right.
    virtual int GetKeyValue(double parameter, KeySide side, double& value,
                            double tolerance) const = 0;
    /// Gives both values of the key within `tolerance`.
    virtual int GetKeyValues(double parameter, double& left, double& right,
                             double tolerance) const = 0;
    /// Sets the value on one side of a key; 0 for a side other than Left and Right.
    virtual int SetKeyValue(double parameter, KeySide side, double value, double tolerance) = 0;

    /// Moves the interval from `from` to `to` out into `removed`, a curve of the same kind, and
    /// closes the gap.
    virtual int Cut(double from, double to, HvBaseFCurve& removed) = 0;
    /// Ends the curve at `parameter`, with a key of the value that it has there.
    virtual int RemoveTail(double parameter) = 0;
    /// Starts the curve at `parameter`, with a key of the value that it has there.
    virtual int RemoveHead(double parameter) = 0;
    /// Appends a curve of the same kind: its first key fuses with this curve's last, the others
    /// follow.
    virtual int Append(HvBaseFCurve const& other) = 0;
    /// Replaces the interval from `from` to `to` by a curve of the same kind.
    virtual int Paste(HvBaseFCurve const& other, double from, double to) = 0;
    /// Adds `offset` to every parameter.
    virtual int ShiftParameters(double offset) = 0;
    /// Multiplies every parameter by `scale`; refuses when the keys would not stay in order.
    virtual int ScaleParameterAxis(double scale) = 0;
    /// Adds `offset` to every value.
    virtual int ShiftValues(double offset) = 0;
    /// Makes keys at `from` and `to` and removes those between that add no more than `tolerance`
    /// times the range of the values; locked keys stay. Returns by how much the number of keys
    /// fell. A negative tolerance, an interval that is turned round or not finite: nothing, 0.
    virtual unsigned int ReduceNumKeys(double from, double to, double tolerance) = 0;

    /// Fills the fields that info->mask names. 0 for a null pointer, which takes no lock; 0 with
    /// the rest filled when a field is asked for that the kind does not have: the bits of all such
    /// fields are then cleared and the fields get 0, the segment kind 1. Unknown bits stay and mean
    /// nothing.
    virtual int GetFCurveInfo(FCurveInfo* info) const = 0;
    /// The same of a key; an index beyond the keys sets the mask to 0 and returns 0.
    virtual int GetKeyInfoFromIndex(unsigned int index, KeyInfo* info) const = 0;
    /// The same of the key that stands at exactly `parameter`; without one the mask becomes 0.
    virtual int GetKeyInfoFromParameter(double parameter, KeyInfo* info) const = 0;

    /// Gives the parameter of key `index`, counted from 0; 0 beyond the last.
    virtual int GetKeyParameter(unsigned int index, double& parameter) const = 0;
    /// The index of the key that stands at exactly `parameter`.
    virtual int GetKeyIndex(double parameter, unsigned int& index) const = 0;
    /// Number of keys.
    virtual unsigned int GetNumKeys() const = 0;

    /// 1 when the curve is selected and the key is.
    virtual int IsKeySelected(unsigned int index) const = 0;
    /// The same for the key that stands at exactly `parameter`.
    virtual int IsKeySelected(double parameter) const = 0;
    /// Selects a key or not; works on a read-only curve too.
    virtual int SetKeySelected(unsigned int index, int on) = 0;
    /// The same for the key that stands at exactly `parameter`.
    virtual int SetKeySelected(double parameter, int on) = 0;

    /// Appends the parameters of the keys of an interval, with `selectedOnly` of the selected ones,
    /// and returns how many. When `from` equals `to` and one end is open, both count as closed.
    virtual unsigned int GetKeyParameters(double from, double to, HvDoubleArray& parameters,
                                          int openAtFrom, int openAtTo, int selectedOnly) const = 0;
    /// 1 when a key lies within `tolerance`.
    virtual int IsKeyParameter(double parameter, double tolerance) const = 0;
    /// Appends all parameters and returns how many.
    virtual unsigned int GetAllKeyParameters(HvDoubleArray& parameters) const = 0;
    /// The first key after `parameter`, or with `inclusive` one at it.
    virtual int GetNextKeyParameter(double parameter, double& next, int inclusive) const = 0;
    /// The last key before `parameter`, or with `inclusive` one at it.
    virtual int GetPrevKeyParameter(double parameter, double& previous, int inclusive) const = 0;
    /// The nearest key, the right one on a tie; 0 only without keys.
    virtual int GetNearestKeyParameter(double parameter, double& nearest) const = 0;
    /// Snaps `parameter` to the nearest key within `tolerance`.
    virtual int GetNearestKeyParameterInCenteredInterval(double& parameter,
                                                         double tolerance) const = 0;

    /// Sets the range that evaluation with `clamp` is limited to. Refuses unless lower <= upper.
    /// Does nothing and returns 0 on stepped curves.
    virtual int SetClampingValues(double lower, double upper) = 0;
    /// Gives the range that evaluation with `clamp` is limited to.
    virtual int GetClampingValues(double& lower, double& upper) const = 0;
    /// Gives the first key's parameter; 0 without keys.
    virtual int GetSmallestKeyParameter(double& parameter) const = 0;
    /// Exact comparison with the first key's parameter.
    virtual int IsSmallestKeyParameter(double parameter) const = 0;
    /// The first key's left value; without keys the value when no keys.
    virtual double GetMinusInfinityVal() const = 0;
    /// Gives the last key's parameter; 0 without keys.
    virtual int GetLargestKeyParameter(double& parameter) const = 0;
    /// Exact comparison with the last key's parameter.
    virtual int IsLargestKeyParameter(double parameter) const = 0;
    /// The last key's right value; without keys the value when no keys.
    virtual double GetPlusInfinityVal() const = 0;
    /// A value that the curve does not exceed on its key range.
    virtual double GetValueUpperBound(int clamp) const = 0;
    /// A value that the curve does not fall below on its key range.
    virtual double GetValueLowerBound(int clamp) const = 0;

    /// The value at `parameter`; at a key, and within 1e-12 of one, the right-hand value. Allocates
    /// nothing. Cost: constant for near parameters in sequence, otherwise O(log keys).
    virtual double Eval(double parameter, int clamp) const = 0;
    /// Eval for a caller that holds the curve through AcquireLocks.
    virtual double EvalNoLock(double parameter, int clamp) const = 0;
    /// Samples the curve, flattened to `tolerance`, at from, from + step, ... below `to`, and at
    /// `to`. Appends to both arrays and returns the number of samples. A step that does not move
    /// the parameter ends the walk. Stepped curves ignore `tolerance` and `clamp`.
    virtual unsigned int EvalSequence(double from, double to, double step, double tolerance,
                                      HvDoubleArray& parameters, HvDoubleArray& values,
                                      int clamp) const = 0;
    /// Appends the curve between its first and last key as a polyline, mapped by `transfo` and
    /// flattened to `tolerance` there. Returns the number of points then in `points`; 0 without
    /// keys.
    virtual unsigned int Flatten(HvTransfo4 const& transfo, double tolerance,
                                 HvPoint2dArray& points, HvPointTagArray& tags,
                                 int clamp) const = 0;
    /// Appends the curve over the x range of `extent` (curve space), extrapolation included,
    /// clipped to the extent, mapped by `transfo` and flattened to `tolerance` there. An edge whose
    /// start vertex has flag 0 is a jump. Returns 1; 0 with the three arrays emptied when memory
    /// runs out.
    virtual int FlattenFromTo(HvExtent2<double> const& extent, HvTransfo4 const& transfo,
                              double tolerance, HvPoint2dArray& points, HvPointTagArray& tags,
                              HvBoolArray& flags, int clamp) const = 0;
    /// Appends each key's parameter, left and right value, with `selectedOnly` of the selected keys
    /// only (ignored by stepped curves). Returns the number of keys.
    virtual unsigned int GetKeys(HvDoubleArray& parameters, HvDoubleArray& leftValues,
                                 HvDoubleArray& rightValues, int selectedOnly) const = 0;

    /// Replaces keys by evenly spaced ones, at from, from + step, ... and `to`; with `keepExisting`
    /// the old keys stay between them. On a curve that cycles both ends are folded into the key
    /// range unless `ignoreExtrapolation`. Refuses a step that is not above 0; std::bad_alloc,
    /// before it starts, for more samples than an array holds.
    virtual int ResampleSequence(double from, double to, double step, int keepExisting,
                                 int ignoreExtrapolation) = 0;
    /// Convolves the values of the keys from `from` to `to` with a kernel, whose middle tap, of two
    /// the left one, falls on the key itself. Where taps meet no key, their sum is divided by that
    /// of the others' weights. Refuses locked values; without a kernel or keys nothing changes, 1.
    virtual int SmoothSequence(double from, double to, double const* kernel,
                               unsigned int kernelSize) = 0;
    /// Mirrors all values about the middle of their range; on stepped curves false becomes true,
    /// and each number its negative. Refuses when a value is locked.
    virtual int MirrorValues() = 0;
    /// Mirrors the curve about the middle of its key range.
    virtual int MirrorParameters() = 0;
    /// Scales the keys of an interval about `pivot`, then shifts them by `offset`; neighbouring
    /// keys ripple along as the flags say. A negative scale also mirrors what it gives. Where the
    /// interval does not hold all keys, it is done as by HvFCurveStretcher, dragged by the end that
    /// `handle` or a single ripple names unless that is the pivot, and by HvFCurveKeyMover: keys
    /// stop where others stand, and no scale is nearer to 0 than 0.001. Refuses any locked
    /// parameter and a scale within 1e-7 of 0.
    virtual int ScaleAndOffsetParameters(double from, double to, double pivot, double scale,
                                         double offset, int rippleLeft, int rippleRight,
                                         RegionHandle handle, int selectedOnly) = 0;

    /// Makes the curve read-only or not; a read-only curve refuses its writers.
    virtual int SetReadOnlyConstraint(int on) = 0;
    /// 1 when the curve is read-only.
    virtual int IsReadOnly() const = 0;
    /// Switches a constraint of the key within `tolerance`; a standard curve takes several at once.
    /// Clearing AutomaticTangents clears UnlimitedAutoSlope too. A raw curve keeps none; answers 1.
    virtual int SetConstraint(double& parameter, KeyConstraint constraint, int on,
                              double tolerance) = 0;
    /// Gives 1 in `on` when the key within `tolerance` has the constraint, otherwise 0.
    virtual int GetConstraint(double& parameter, KeyConstraint constraint, int& on,
                              double tolerance) const = 0;
    /// 1 when keys of this kind may have the constraint.
    virtual int IsConstraintSupported(KeyConstraint constraint) const = 0;
    /// 1 when the value of a key of the interval is locked.
    virtual int AreAnyValuesLockedInInterval(double from, double to, int openAtFrom,
                                             int openAtTo) const = 0;
    /// 1 when the parameter of a key of the interval is locked.
    virtual int AreAnyParametersLockedInInterval(double from, double to, int openAtFrom,
                                                 int openAtTo) const = 0;
    /// 1 when a key of the interval has every lock that its kind knows.
    virtual int AreAnyKeysLockedInInterval(double from, double to, int openAtFrom,
                                           int openAtTo) const = 0;

    /// Sets how the curve goes on outside its keys; refuses a method that the kind does not have.
    virtual int SetExtrapolationMethod(ExtrapolationMethod method) = 0;
    /// How the curve goes on outside its keys.
    virtual ExtrapolationMethod GetExtrapolationMethod() const = 0;
    /// Maps a parameter into the key range of a cycling curve with two keys or more and snaps it to
    /// a key within 1e-12; otherwise returns it unchanged.
    virtual double FoldParameter(double parameter) const = 0;

    /// Bytes that WriteToBuffer needs. Keys whose order is broken are dropped first.
    virtual unsigned int GetBufferSize() const = 0;
    /// Writes the curve's archive, length prefix included, and returns GetBufferSize().
    virtual unsigned int WriteToBuffer(void* buffer) const = 0;
    /// Reads the archive whose length prefix ends at `body`; the caller vouches for the bytes.
    /// Returns the body bytes used, 0 with the curve as it was when they are no archive of this
    /// kind.
    virtual unsigned int ReadFromBufferBody(void const* body) = 0;

    /// Makes every value offset + scale * value; refuses |scale| < 1e-7.
    virtual int ScaleAndShiftValues(double scale, double offset) = 0;
    /// Finds where a bijective curve has `value`; beyond its range the nearer end. `flag` has no
    /// effect.
    virtual int EvalInverse(double value, double& parameter, int flag) const = 0;
    /// Whether the curve strictly rises or strictly falls over its key range.
    virtual bool IsBijective() const = 0;
    /// Switches the rule that keeps handles at thirds of their spans; works on a read-only standard
    /// or raw curve too. A stored flag without effect on the other kinds.
    virtual int SetDefaultBezierTangentConstraint(bool on) = 0;
    /// 1 when the rule is on. The name keeps its old spelling.
    virtual int IsDefautlBezierTangentConstraintOn() const = 0;
    /// Stores the time curve flag; 1 when it changed.
    virtual int SetAsTimeFCurve(bool on) = 0;
    /// 1 when the time curve flag is set.
    virtual int IsTimeFCurve() const = 0;
    /// Assignment when the kinds agree, otherwise 0.
    virtual int Set(HvBaseFCurve const& other) = 0;
    /// The curve's own selection, which gates that of its keys; works on a read-only curve too.
    virtual int IsSelected() const = 0;
    /// Selects the curve or not.
    virtual int SetSelected(int on) = 0;
    /// 1 when the curve is selected and any of its keys is.
    virtual int HasSelectedKeys() const;

    /// Enters the curve's critical section, not the access lock, for several calls under one lock;
    /// see HvCurveLock.
    virtual void AcquireLocks() const;
    /// Leaves the section that AcquireLocks entered, once.
    virtual void ReleaseLocks() const;

    /// GetConstraint of key `index`; 0 beyond the last.
    virtual int GetConstraintByIndex(unsigned int index, KeyConstraint constraint,
                                     int& on) const = 0;
    /// GetKeyValues of key `index`; 0 beyond the last.
    virtual int GetKeyValuesByIndex(unsigned int index, double& left, double& right) const = 0;
    /// Bytes held outside the object itself; the base's body counts the user data.
    virtual unsigned long GetDynamicMemSize() const;

    // User data: blobs of the host, tagged with a GUID, on the curve or on a key. The library keeps
    // them on the right key through edits, keyed by the key's exact parameter, and never looks
    // inside. Pointers that a reader hands out stay good until the next edit of the curve or its
    // user data.

    /// 1 when the curve or any key has data.
    int HasUserData() const;
    /// 1 when there are data for the key at exactly `parameter`.
    int HasUserData(double parameter) const;
    /// The set of the key at exactly `parameter`, or null.
    CFCUserDataSet const* GetUserDataSet(double parameter) const;
    /// Replaces the key's set by a copy; an empty set removes it. Refuses a parameter that is not
    /// finite.
    int SetUserDataSet(CFCUserDataSet const& set, double parameter);

    /// Copies `size` bytes onto the curve, in place of those that `guid` had; 0 for a null pointer
    /// with a size.
    int SetFCurveUserData(_GUID const& guid, unsigned char const* bytes, unsigned int size);
    /// Gives the bytes that `guid` has on the curve; they stay the curve's own.
    int GetFCurveUserData(_GUID const& guid, unsigned char const*& bytes, unsigned int& size) const;
    /// Drops the bytes that `guid` has on the curve; 0 when there are none.
    int RemoveFCurveUserData(_GUID const& guid);
    /// Copies `size` bytes onto the key within `tolerance`, in place of those that `guid` had.
    int SetKeyUserData(double& parameter, _GUID const& guid, unsigned char const* bytes,
                       unsigned int size, double tolerance);
    /// Gives the bytes that `guid` has on the key within `tolerance`; they stay the curve's own.
    int GetKeyUserData(double& parameter, _GUID const& guid, unsigned char const*& bytes,
                       unsigned int& size, double tolerance) const;
    /// Drops the bytes that `guid` has on the key within `tolerance`.
    int RemoveKeyUserData(double& parameter, _GUID const& guid, double tolerance);
    /// Drops the set of the key at exactly `parameter`; 0 when there is none.
    int RemoveKeyUserData(double parameter);
    /// Drops the sets of all keys; the curve's own data stay.
    int RemoveAllKeyUserData();
    /// Multiplies the parameter of each key's set by `scale`.
    int ScaleAllKeyUserData(double scale);
    /// Adds `offset` to the parameter of each key's set.
    int TranslateAllKeyUserData(double offset);
    /// Moves the sets at the parameters `from` to the parameters `to`, one by one in order.
    int MoveKeyUserDataTail(HvDoubleArray const& from, HvDoubleArray const& to);
    /// Copies the set of another curve's key at `from` to the key at `to`.
    int CopyKeyUserData(HvBaseFCurve const& other, double from, double to);
    /// Swaps the user data of two curves.
    void ExchangeUserData(HvBaseFCurve& other);
    /// Bytes of the user-data block of an archive, its length prefix included.
    unsigned int GetUserDataBufferSize() const;
    /// Writes the block, GetUserDataBufferSize() bytes, and returns their number.
    unsigned int WriteUserDataToBuffer(void* buffer) const;
    /// Reads the block whose length prefix ends at `body`; the caller vouches for the bytes.
    /// Returns the bytes used, 0 with the user data as they were for a block of another version
    /// than 256.
    unsigned int ReadUserDataFromBufferBody(void const* body);
    /// The same through a reader, which stays in its bounds: 0 also, and the reader then fails, for
    /// a block that does not hold what it claims.
    int ReadUserDataBlockBody(HvByteReader& reader);

private:
    friend class HvCurveReader;

    // The record's own life; null is a record without data.
    static CFCUserData* CloneUserDataRecord(CFCUserData const* record);
    static void DeleteUserDataRecord(CFCUserData* record) noexcept;
    static unsigned long DynamicMemSizeOfUserDataRecord(CFCUserData const* record);

    mutable CRITICAL_SECTION section_;
    CFCUserData* userData_;
};

#endif
