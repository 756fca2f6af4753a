// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The animated numbers of a Lottie document.

#ifndef HV_TOOLS_LOTTIE_LOTTIEDOCUMENT_H
#define HV_TOOLS_LOTTIE_LOTTIEDOCUMENT_H

#include <hv/foundation/HvPoint3.h>

#include <string>
#include <vector>

/// How a track gets from a key to the next.
enum class LottieSegment {
    Hold,    ///< it stays and jumps at the next key
    Linear,  ///< a straight line
    Eased    ///< a cubic by the handles of LottieEasing
};

/// The handles of an eased segment, as fractions of the step to the next key: x of its time, 0 to
/// 1, and y of its value, any number. `out` leaves the first key, `in` arrives at the second.
struct LottieEasing {
    double outX = 0;
    double outY = 0;
    double inX = 1;
    double inY = 1;
};

/// One value of a track, and the way to the next.
struct LottieKey {
    double time = 0;  ///< frames
    double value = 0;
    LottieSegment segment = LottieSegment::Hold;
    LottieEasing easing;
};

/// One animated number: a property, or one component of it. There is at least one key, and times
/// strictly rise. Before the first and behind the last key the value stays.
struct LottieTrack {
    std::string path;  ///< where it stands: layers[0].ks.p[1]
    std::string name;  ///< what it is: Ball / position y
    std::vector<LottieKey> keys;
};

/// One place of a motion path, and the way to the next.
struct LottiePathKey {
    double time = 0;  ///< frames
    HvPoint3<double> place;
    HvPoint3<double> leaving;   ///< from the place to the first handle of the way
    HvPoint3<double> arriving;  ///< from the next key's place to the second handle
    LottieSegment segment = LottieSegment::Hold;
    LottieEasing easing;  ///< of the length travelled
};

/// One animated position whose keys have handles in space. There is at least one key, and times
/// strictly rise.
struct LottiePath {
    std::string path;  ///< where it stands: layers[0].ks.p
    std::string name;  ///< what it is: Ball / position
    std::vector<LottiePathKey> keys;
};

/// What was found and left aside, or mended.
struct LottieNote {
    std::string path;
    std::string text;
};

/// What an animation holds.
struct LottieDocument {
    std::string name;
    double frameRate = 0;   ///< frames per second; 0 when the document does not tell
    double firstFrame = 0;  ///< of the composition
    double lastFrame = 0;
    std::vector<LottieTrack> tracks;  ///< in the order of the document, assets included
    std::vector<LottiePath> paths;    ///< those of its positions that have handles in space
    std::vector<LottieNote> notes;
};

/// Reads a document from the text of its file.
///
/// Every object with keyframes is read, wherever it stands: in layers, shapes, effects, and in the
/// compositions among the assets. Properties whose keys hold paths or texts are no numbers: each
/// gives a note. Positions whose keys have handles in space are tracks and motion paths.
/// Expressions are ignored with a note. Of two keys at one time the later is kept. Throws
/// ToolError, naming the place, where the text is no JSON, no Lottie document, or holds keyframes
/// that cannot be understood: key times that fall, values that are no numbers, numbers beyond
/// 1e100.
LottieDocument LottieDocument_Parse(std::string const& text);

#endif
