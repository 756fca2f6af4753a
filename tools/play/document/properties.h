// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The properties of a Lottie document, typed: what may move, whether it does or not.
//
// A property is {a: 0, k: value} or {a: 1, k: keyframes}. Both become tracks; one that does not
// move has a single key.

#ifndef HV_TOOLS_PLAY_DOCUMENT_PROPERTIES_H
#define HV_TOOLS_PLAY_DOCUMENT_PROPERTIES_H

#include <hv/foundation/HvPoint2.h>
#include <tools/lottie/LottieDocument.h>
#include <tools/lottie/json_access.h>
#include <tools/play/document/LeftOut.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

/// A place of the plane: two numbers that move by themselves, or along a motion path.
struct PlaceProperty {
    LottieTrack x;
    LottieTrack y;
    std::optional<LottiePath> motion;  ///< when there are handles in space; `x` and `y` then rest
};

/// One outline: nodes, and from each the offsets of its handles.
struct OutlineValue {
    std::vector<HvPoint2<double>> nodes;
    std::vector<HvPoint2<double>> arriving;
    std::vector<HvPoint2<double>> leaving;
    bool isClosed = false;
};

/// An outline that may change from one to the next: the track's key i has the value i and belongs
/// to outline i.
struct OutlineProperty {
    std::vector<OutlineValue> outlines;
    LottieTrack phase;
};

/// Reads the properties of one object of a document. Everything throws ToolError, naming the place,
/// where a value cannot be understood. What was found and is not done goes to `leftOut`.
class PropertyReader {
public:
    /// @param owner  the object; it and `leftOut` outlive the reader.
    /// @param path   where it stands: layers[0].ks.
    PropertyReader(Json const& owner, std::string path, LeftOut& leftOut);

    std::string const& Path() const { return path_; }
    Json const& Owner() const { return owner_; }
    std::string PathOf(char const* key) const { return Json_MemberPath(path_, key); }
    bool Has(char const* key) const { return Json_Find(owner_, key) != nullptr; }

    // Plain members, which never move.

    double Plain(char const* key, double missing) const;
    int PlainInteger(char const* key, int missing) const;
    bool PlainSwitch(char const* key) const { return Json_IsOn(Json_Find(owner_, key)); }

    // Properties; `missing` stands for one, or for a component, that is not there.

    LottieTrack Number(char const* key, double missing) const;
    PlaceProperty Place(char const* key, double missing) const;
    /// As many tracks as the property has components, at least `count`.
    std::vector<LottieTrack> Numbers(char const* key, std::size_t count, double missing) const;
    /// Throws when there is none.
    OutlineProperty Outline(char const* key) const;

private:
    LottieDocument Read(char const* key, std::size_t count, double missing) const;
    LottieDocument Animated(Json const& property, std::string const& path) const;
    void NoteExpression(Json const& property, std::string const& path) const;

    Json const& owner_;
    std::string path_;
    LeftOut& leftOut_;
};

#endif
