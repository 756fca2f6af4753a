// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A rotation over time: keys of three angles, interpolated on the quaternion sphere.

#ifndef HV_ROTATION_HVQUATCURVE_H
#define HV_ROTATION_HVQUATCURVE_H

#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvMemory.h>
#include <hv/foundation/HvPoint3.h>
#include <hv/foundation/HvStlAllocator.h>
#include <hv/platform/HvExport.h>
#include <hv/platform/critical_section.h>
#include <hv/rotation/HvQuat.h>
#include <hv/rotation/HvQuatKey.h>

#include <atomic>
#include <memory>
#include <vector>

class HvQuatSpline;

/// A rotation over time: a row of keys in the order of their times, each with three angles, between
/// which the curve moves on the quaternion sphere and gives angles back that are continuous with
/// the keys': keys at 0 and 720 degrees give all the values between.
///
/// Units. A triple of angles is in radians. Whatever takes or returns one `component` of it (0 = x,
/// 1 = y, 2 = z) is in degrees; a component above 2 reads z and sets nothing. Times have the unit
/// of the caller.
///
/// Refusals. Results are 1 for done and 0 for refused or out of range, with the curve as it was. An
/// operation that would give a key a time that is not finite refuses. Values are not judged: angles
/// that are not finite are stored and give NaN.
///
/// Order. The operations keep the keys' times rising strictly, but for SetParameter, Shift, Scale
/// and SetKey with a tolerance below 0, which may leave them in disorder: then IsValid() gives 0,
/// evaluation means little, and searches walk all keys. Otherwise they cost O(log keys).
///
/// The spline. Evaluation runs on an HvQuatSpline over all keys that the first Eval after an edit
/// builds, in O(keys) and with two allocations; then Eval allocates nothing. Every operation that
/// changes a key's time or angles, a whole key, the list of keys or the rotation order drops it:
/// SetRotOrder to another order, all SetKey, SetKeys, ReplaceKeys, SetParameter, SetKeyValue,
/// Shift, Scale and all Remove... that are not refused. It is not dropped by locks, selection,
/// constraint data, the read-only flag, the value when no keys, the extrapolation method, nor by
/// SetKey or SetKeyValue on a key whose value is locked, which change nothing.
///
/// The last result. The curve keeps the result of the last Eval, and answers an Eval of the same
/// parameter with it as long as the spline stands. SetExtrapolationMethod leaves both: a parameter
/// outside the keys that was asked for last goes on giving the old method's value until another one
/// is asked for.
///
/// Ownership. Several owners may share one curve made with `new`: each calls Ref() on taking it and
/// UnRef() when done, and the last UnRef() destroys it. A new curve has the count 0, so an UnRef()
/// without a Ref() destroys it at once, and a curve on the stack must never be given one. A copy is
/// a curve of its own with the count 0. No operation keeps a pointer or reference of the caller's,
/// and none gives one out.
///
/// Threads. Ref() and UnRef() may be called by any thread at any time. All else is for one thread
/// at a time, also Eval and the SetKey of one component: they write the last result and the spline.
/// Owners that share a curve between threads hold its lock around their calls, see AcquireLock().
/// No other operation enters the lock.
///
/// std::bad_alloc leaves the curve as it was, but that an Eval inside may have built the spline.
class HV_API HvQuatCurve : public HvAllocated {
public:
    /// What a search gives that found no key.
    static constexpr unsigned int kNoKey = 0xFFFFFFFFu;

    // Life.

    /// No keys; the value when no keys is (0, 0, 0), extrapolation constant, the order XYZ.
    HvQuatCurve();
    /// Copies keys, flags and settings, the spline and the last result; not the count of owners.
    HvQuatCurve(HvQuatCurve const& other);
    /// Copies what the copy constructor copies; owners and lock stay.
    HvQuatCurve& operator=(HvQuatCurve const& other);
    /// Exchanges all that a copy would copy; each side keeps its owners and its lock.
    void Swap(HvQuatCurve& other) noexcept;
    /// Does not look at the count of owners.
    ~HvQuatCurve();

    /// One owner more.
    void Ref();
    /// One owner less; at 0 or below destroys and frees the curve, which must come from `new`.
    void UnRef();

    // Settings.

    /// The order in which the keys' angles act.
    HvQuat::RotOrder GetRotOrder() const { return rotOrder_; }
    /// Changes the order in which the keys' angles act; the angles stay as they are. A number that
    /// is none of the six orders changes nothing.
    void SetRotOrder(HvQuat::RotOrder order);

    /// Whether the curve is selected, as it was set; 0 at first.
    int IsSelected() const { return selected_; }
    /// Selects the curve or not; the flag is kept as it is given.
    void SetSelected(int selected) { selected_ = selected; }
    /// A mere flag: whoever shows the curve to a user keeps to it.
    int IsReadOnly() const { return readOnly_; }
    /// Stores the flag; 0 at first.
    void SetReadOnlyConstraint(int readOnly) { readOnly_ = readOnly; }

    /// One of HvQuatSpline::ExtrapolationMethod, initially constant.
    unsigned int GetExtrapolationMethod() const { return extrapolationMethod_; }
    /// Refuses all but 1 to 4.
    int SetExtrapolationMethod(unsigned int method);

    /// The angles of a curve without keys, in radians.
    HvPoint3<double> GetValueWhenNoKeys() const { return valueWhenNoKeys_; }
    /// Sets these angles, in radians.
    void SetValueWhenNoKeys(HvPoint3<double> const& angles) { valueWhenNoKeys_ = angles; }
    /// One of these angles, in degrees.
    double GetValueWhenNoKeys(unsigned int component) const;
    /// Sets one of these angles, in degrees.
    void SetValueWhenNoKeys(unsigned int component, double degrees);

    // Reading keys.

    /// Bytes held outside the object: room for keys, and the spline when one stands.
    unsigned long GetDynamicMemSize() const;
    /// 1 when all times rise strictly, also with fewer than two keys; otherwise 0. Cost: constant.
    int IsValid() const;

    /// Number of keys.
    unsigned int GetNumKeys() const { return static_cast<unsigned int>(keys_.size()); }
    /// A copy of a key; a default key when out of range.
    HvQuatKey GetKey(unsigned int i) const;
    /// The value when no keys when out of range.
    HvPoint3<double> GetKeyValue(unsigned int i) const;
    /// One angle of the key, in degrees.
    double GetKeyValue(unsigned int i, unsigned int component) const;
    /// 0 when out of range.
    double GetKeyTime(unsigned int i) const;
    /// An extent over time and degrees that holds the curve wherever key `i` shapes it: the keys
    /// from two before to two after, a whole turn up and down. Empty when out of range.
    HvExtent2<double> GetKeyExtent(unsigned int i, unsigned int component) const;

    /// Index of the key nearest to `t`, not further than `tolerance` from it; the earlier one on a
    /// tie, kNoKey for none. Of keys in disorder the walk that stops at the first key beyond the
    /// tolerance, or further from `t` than the best one yet, is the rule.
    unsigned int FindKey(double t, double tolerance) const;
    /// Index of the last key with time < t - tolerance, or kNoKey.
    unsigned int GetPrevKey(double t, double tolerance) const;
    /// Index of the first key with time > t + tolerance, or kNoKey.
    unsigned int GetNextKey(double t, double tolerance) const;

    // Editing keys.

    /// Sets the angles of the key that FindKey gives, leaving all else of it; a key whose value is
    /// locked stays. Where there is none, inserts one with these angles and zeros.
    ///
    /// @return  index of the key; kNoKey, with nothing changed, when a new key's time would not be
    ///          finite.
    unsigned int SetKey(double t, HvPoint3<double> const& angles, double tolerance);
    /// Replaces the key that FindKey gives for the key's time, whole and whatever its locks, or
    /// inserts `key`. Result and refusal as above.
    unsigned int SetKey(HvQuatKey const& key, double tolerance);
    /// Replaces key `i` whole, whatever its locks. Refuses a time that is not strictly between the
    /// neighbours'.
    int SetKey(unsigned int i, HvQuatKey const& key);
    /// Replaces all keys by `n` others, in the order in which they stand, whatever their locks.
    /// Refuses a time that is not finite. Cost: O(n).
    int SetKeys(HvQuatKey const* keys, unsigned int n);
    /// Replaces the `n` keys from index `first` on by as many others, whatever their locks. Refuses
    /// where there are fewer, and times that are not finite or do not rise strictly among each
    /// other and between the neighbours. Takes no memory. Cost: O(n).
    int ReplaceKeys(unsigned int first, HvQuatKey const* keys, unsigned int n);
    /// Takes Eval(t), replaces one component of it and sets the result as the first SetKey.
    unsigned int SetKey(double t, unsigned int component, double degrees, double tolerance);

    /// Sets the time of key `i`, whatever its locks, and does not look at its neighbours.
    int SetParameter(unsigned int i, double t);
    /// A key whose value is locked gives 1 and stays as it is.
    int SetKeyValue(unsigned int i, HvPoint3<double> const& angles);
    /// Sets one angle of the key, in degrees; the lock counts as above.
    int SetKeyValue(unsigned int i, unsigned int component, double degrees);

    /// Moves all keys whose parameter is not locked.
    int Shift(double delta);
    /// Multiplies the times of all keys whose parameter is not locked. Refuses a factor below 1e-12
    /// and NaN.
    int Scale(double factor);

    /// Removes key `i`, whatever its locks; 0 when out of range.
    int RemoveKeyAt(unsigned int i);
    /// Removes the key that FindKey gives.
    int RemoveKey(double t, double tolerance);
    /// Removes the keys `first` to `last`, both included; refuses first > last.
    int RemoveKeyRange(unsigned int first, unsigned int last);
    /// Removes all keys, whatever their locks; 1.
    int RemoveAllKeys();

    // Locks and selection of keys. Of a flag to set only the lowest bit counts.

    /// Locks the angles of a key or not; 0 when out of range.
    int SetValueLock(unsigned int i, int locked);
    /// Locks the time of a key or not; 0 when out of range.
    int SetParamLock(unsigned int i, int locked);
    /// -1 when locked (hosts rely on this number), 0 otherwise and when out of range.
    int IsValueLocked(unsigned int i) const;
    /// The same for the time.
    int IsParamLocked(unsigned int i) const;

    /// Selects a key or not; 0 when out of range.
    int SetKeySelected(unsigned int i, int selected);
    /// 1 when key and curve are selected, otherwise 0.
    int IsKeySelected(unsigned int i) const;

    /// Sets the value lock from bit 1 and the parameter lock from bit 2 of `flags`.
    int SetConstraintData(unsigned int i, unsigned short flags);
    /// 2 for a locked value plus 4 for a locked parameter; 0 when out of range.
    unsigned short GetConstraintData(unsigned int i) const;

    // Evaluating.

    /// The angles at `t`; the value when no keys without keys, with one key its angles.
    ///
    /// Of all triples that give the rotation there, the result is the one nearest to the straight
    /// line between the angles of the two keys around `t`, outside the keys to the end key's.
    /// Accuracy: as HvQuat::Get. NaN gives NaN.
    HvPoint3<double> Eval(double t) const;
    /// One angle of it, in degrees.
    double Eval(double t, unsigned int component) const;

    // Locking, for owners that share the curve.

    /// Enters the lock of the curve, waiting while another thread is inside; the holder may enter
    /// again. It guards everything but the count of owners. Where an owner has a lock of its own,
    /// that one is taken first. HvQuatCurveLock holds it for a scope.
    void AcquireLock() const { EnterCriticalSection(&section_); }
    /// Takes back one AcquireLock of the calling thread.
    void ReleaseLock() const { LeaveCriticalSection(&section_); }

private:
    using Keys = std::vector<HvQuatKey, HvStlAllocator<HvQuatKey>>;

    template <class Before>
    unsigned int CountWhile(Before before) const;
    unsigned int FirstKeyToWalk(double t, double tolerance) const;
    bool IsBetweenNeighbours(unsigned int i, double t) const;
    void UpdateOrderAt(unsigned int i);
    void UpdateOrder();
    void Invalidate();
    unsigned int InsertKey(HvQuatKey const& key);
    template <class Move>
    int MoveTimes(Move move);
    HvPoint3<double> EvalOnSpline(HvQuatSpline const& spline, HvQuatKey const* keys,
                                  double t) const;
    HvPoint3<double> EvalForEdit(double t) const;

    HvPoint3<double> valueWhenNoKeys_;
    mutable HvPoint3<double> cachedValue_;
    mutable double cachedParameter_ = 0;
    Keys keys_;
    mutable std::unique_ptr<HvQuatSpline> spline_;  ///< null when out of date
    std::atomic<int> referenceCount_{0};
    unsigned int extrapolationMethod_;
    int readOnly_ = 0;
    int selected_ = 0;
    HvQuat::RotOrder rotOrder_ = HvQuat::XYZ;
    bool isAscending_ = true;  ///< all times rise strictly
    mutable CRITICAL_SECTION section_;
};

#endif
