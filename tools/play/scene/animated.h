// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Values that move: the properties of a document as curves, motion paths and blends. All are read
// by any number of threads at once.

#ifndef HV_TOOLS_PLAY_SCENE_ANIMATED_H
#define HV_TOOLS_PLAY_SCENE_ANIMATED_H

#include <hv/fcurve/HvStdFCurve.h>
#include <hv/motionpath/HvMotionPath3d.h>
#include <hv/rotation/HvTransfo4.h>
#include <tools/play/document/properties.h>

#include <memory>
#include <vector>

/// A number: a standard curve, an integer curve where every key holds an integer, or a constant.
class AnimatedNumber {
public:
    explicit AnimatedNumber(double constant = 0.0) : constant_(constant) {}
    /// Throws ToolError when the library refuses a key.
    explicit AnimatedNumber(LottieTrack const& track);

    bool IsConstant() const { return curve_ == nullptr; }
    double At(double frame) const { return curve_ == nullptr ? constant_ : curve_->Eval(frame, 0); }

private:
    double constant_;
    std::unique_ptr<HvBaseFCurve> curve_;
};

/// How far something has come along a chain of keys: a key's number and the share of the way to the
/// next, where an easing may leave 0 to 1.
struct Phase {
    unsigned int key;
    double share;
};

/// A track whose key i has the value i, as a curve.
class AnimatedPhase {
public:
    /// A track of at least one key.
    explicit AnimatedPhase(LottieTrack const& track);

    unsigned int NumKeys() const { return static_cast<unsigned int>(times_.size()); }
    Phase At(double frame) const;

private:
    std::vector<double> times_;
    AnimatedNumber value_;
};

/// A place of the plane: two curves, or a motion path and the curve of the way travelled on it.
class AnimatedPlace {
public:
    explicit AnimatedPlace(PlaceProperty const& property);

    HvPoint2<double> At(double frame) const;
    /// Degrees from the direction of x to that in which it moves; 0 where it rests.
    double DirectionAt(double frame) const;

private:
    struct Motion {
        HvMotionPath3d path;  ///< key i at time i, each segment travelled evenly
        AnimatedPhase way;
        std::vector<bool> isStraight;
    };

    static std::unique_ptr<Motion> MotionOf(LottiePath const& path);
    HvPoint2<double> OnPath(Phase const& phase) const;

    AnimatedNumber x_;
    AnimatedNumber y_;
    std::unique_ptr<Motion> motion_;
};

/// A colour, each part from 0 to 1.
struct SceneColour {
    double red = 0.0;
    double green = 0.0;
    double blue = 0.0;
};

class AnimatedColour {
public:
    explicit AnimatedColour(SceneColour const& constant = {});
    /// Three tracks or more; numbers above 1 tell that the parts run to 255.
    explicit AnimatedColour(std::vector<LottieTrack> const& tracks);

    SceneColour At(double frame) const;

private:
    AnimatedNumber red_;
    AnimatedNumber green_;
    AnimatedNumber blue_;
    double scale_ = 1.0;
};

/// A move, turn, skew and scale about an anchor, and an opacity.
class AnimatedTransform {
public:
    /// The identity, opaque.
    AnimatedTransform();
    explicit AnimatedTransform(PropertyReader const& reader);

    /// Whether it turns to where its place moves.
    void SetAlongPath(bool on) { isAlongPath_ = on; }

    /// From inside to around: anchor to place.
    HvTransfo4 At(double frame) const;
    /// 0 to 1.
    double OpacityAt(double frame) const;
    /// A step done `times` times, which need not be whole: moved by the place, turned and scaled
    /// about the anchor.
    HvTransfo4 Repeated(double frame, double times) const;

private:
    HvTransfo4 Composed(double frame, double times, HvPoint2<double> const& home) const;

    AnimatedPlace anchor_;
    AnimatedPlace place_;
    AnimatedPlace scale_;
    AnimatedNumber rotation_;
    AnimatedNumber skew_;
    AnimatedNumber skewAxis_;
    AnimatedNumber opacity_;
    bool isAlongPath_ = false;
};

#endif
