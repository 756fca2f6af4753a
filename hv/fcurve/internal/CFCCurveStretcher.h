// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The work of the curve stretcher on one kind of curve.

#ifndef HV_FCURVE_INTERNAL_CFCCURVESTRETCHER_H
#define HV_FCURVE_INTERNAL_CFCCURVESTRETCHER_H

#include <hv/fcurve/internal/CFCDraggedKeys.h>
#include <hv/fcurve/internal/CFCKeyLift.h>
#include <hv/fcurve/internal/CFCWantedHandles.h>
#include <hv/fcurve/internal/HvDragUserData.h>
#include <hv/fcurve/internal/HvFCurveStretcherImpl.h>

/// Parameters are stretched by lifting the keys that move and putting them down at their targets,
/// values in place; handles follow once all keys stand where they belong. Targets and handles are
/// always worked out from the start of the drag.
template <class Curve>
class CFCCurveStretcher final : public HvFCurveStretcherImpl {
public:
    CFCCurveStretcher(Curve& curve, HvStretchRequest const& request, HvDoubleArray const& listed);

    int Stretch(Step const& step, double viewLeft, double viewRight, HvDoubleArray& before,
                HvDoubleArray& after, HvExtent2<double>& invalid) override;
    void Finalize() override;

private:
    using Traits = HvCurveKindTraits<Curve>;
    using Impl = typename Traits::Impl;
    using Point = HvPoint2<double>;

    /// The handles of a key at the start.
    struct Handles {
        Point left;
        Point right;
    };
    /// What the host shows of the parameter axis.
    struct View {
        double left;
        double right;
    };

    HvStretchKey const& Planned(unsigned int k) const { return Plan().Keys()[plannedOf_[k]]; }
    void SetTargets(Step const& step);
    void SetTarget(unsigned int k, Step const& step);
    bool AreTargetsFinite() const;
    bool IsAtTargets() const;
    void AppendParameters(HvDoubleArray& parameters) const;
    bool FindIndex(unsigned int k, unsigned int& i) const;
    void AugmentByKeys(bool fixedOnly, HvExtent2<double>& invalid) const;
    void AugmentByEdges(View const& view, bool first, bool last, HvExtent2<double>& invalid) const;
    bool ReachesFirst() const;
    bool ReachesLast() const;

    bool PrepareLift();
    void StretchParameters(Step const& step, View const& view, HvExtent2<double>& invalid);
    void StoreHandles(double scale);
    void StretchValues(Step const& step);
    void SetValues(unsigned int k, unsigned int i, Step const& step);
    void StretchLockedHandles(unsigned int k, unsigned int i, double scale);

    Impl& impl_;
    CFCDraggedKeys<Curve> dragged_;             ///< those of which anything follows
    HvAltDynArray<unsigned int> plannedOf_{1};  ///< index in the plan of each
    HvAltDynArray<Handles> handles_{1};         ///< of each, where values stretch and have handles
    CFCKeyLift<Curve> lift_;
    typename CFCKeyLift<Curve>::Order order_{1};  ///< those that change places
    HvAltDynArray<CFCWantedHandles> wanted_{1};
    HvDragUserData userData_;
};

extern template class CFCCurveStretcher<HvBooleanFCurve>;
extern template class CFCCurveStretcher<HvIntegerFCurve>;
extern template class CFCCurveStretcher<HvRawFCurve>;
extern template class CFCCurveStretcher<HvStdFCurve>;
extern template class CFCCurveStretcher<HvQuatFCurve>;

#endif
