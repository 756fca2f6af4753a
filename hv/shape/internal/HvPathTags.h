// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What the tags of a path say: the one place that knows the roles.

#ifndef HV_SHAPE_INTERNAL_HVPATHTAGS_H
#define HV_SHAPE_INTERNAL_HVPATHTAGS_H

#include <hv/foundation/HvUByteArray.h>

#include <algorithm>

/// Highest degree of a segment; the roles of a byte's six bits reach no further.
constexpr unsigned int kHvPathMaxDegree = 8;
/// The bits of a tag that hold the role.
constexpr unsigned char kHvPathRoleMask = 63;
/// The bit of a tag that locks a node.
constexpr unsigned char kHvPathLockBit = 128;
/// The role of the start of a subpath.
constexpr unsigned int kHvPathStartRole = 1;

/// What a role means.
struct HvPathRole {
    unsigned char degree = 0;  ///< of the point's segment; 0 for a start and for what is no role
    unsigned char place = 0;   ///< steps from the start of the segment; `degree` at its end
    bool isNode = false;
    bool isClosingEnd = false;
};

/// All roles, by number.
struct HvPathRoleTable {
    HvPathRole roles[kHvPathRoleMask + 1];
    /// Where the roles of each degree begin: with the first control, or the end of a line.
    unsigned char base[kHvPathMaxDegree + 1] = {};

    constexpr HvPathRoleTable() : roles()
    {
        roles[kHvPathStartRole].isNode = true;
        unsigned char role = 3;
        for (unsigned char degree = 1; degree <= kHvPathMaxDegree; ++degree) {
            base[degree] = role;
            for (unsigned char place = 1; place <= degree; ++place, ++role) {
                roles[role].degree = degree;
                roles[role].place = place;
                roles[role].isNode = place == degree;
            }
            roles[role] = roles[role - 1];
            roles[role++].isClosingEnd = true;
        }
    }
};
inline constexpr HvPathRoleTable kHvPathRoles;

/// The role of control `place` of a segment, 1 to `degree` - 1.
constexpr unsigned char HvPathRole_OfControl(unsigned int degree, unsigned int place)
{
    return static_cast<unsigned char>(kHvPathRoles.base[degree] + place - 1);
}

/// Stores the roles of all controls of a segment, `degree` - 1 of them.
inline void HvPathRoles_OfControls(unsigned int degree, unsigned char* roles)
{
    for (unsigned int place = 1; place < degree; ++place) {
        *roles++ = HvPathRole_OfControl(degree, place);
    }
}

/// The role of the end of a segment.
constexpr unsigned char HvPathRole_OfEnd(unsigned int degree, bool isClosing)
{
    return static_cast<unsigned char>(kHvPathRoles.base[degree] + degree - (isClosing ? 0 : 1));
}

/// The tag with another role and its other bits.
constexpr unsigned char HvPathTag_WithRole(unsigned char tag, unsigned int role)
{
    return static_cast<unsigned char>((tag & ~unsigned{kHvPathRoleMask}) | role);
}

/// The structure of a path, read from its tags. A view: it lives while the array is as it was.
///
/// Every walk stays within the tags, also where they make no sense: it stops at the first and at
/// the last of them. An index is below Count() unless it is said otherwise.
class HvPathTags {
public:
    HvPathTags(unsigned char const* tags, unsigned int count) : tags_(tags), count_(count) {}
    explicit HvPathTags(HvUByteArray const& tags) : HvPathTags(tags.Data(), tags.Size()) {}

    unsigned int Count() const { return count_; }
    /// Whether there is a point `i`.
    bool Has(unsigned int i) const { return i < count_; }

    // One point.

    unsigned int RoleNumber(unsigned int i) const { return tags_[i] & kHvPathRoleMask; }
    HvPathRole const& Role(unsigned int i) const { return kHvPathRoles.roles[RoleNumber(i)]; }
    bool IsLocked(unsigned int i) const { return (tags_[i] & kHvPathLockBit) != 0; }
    bool IsStart(unsigned int i) const { return RoleNumber(i) == kHvPathStartRole; }
    /// Whether there is a point `i` that is a node.
    bool IsNode(unsigned int i) const { return Has(i) && Role(i).isNode; }
    bool IsClosingEnd(unsigned int i) const { return Role(i).isClosingEnd; }
    bool IsPlainEnd(unsigned int i) const
    {
        return Role(i).isNode && !Role(i).isClosingEnd && !IsStart(i);
    }
    /// Whether point `i` is the first control of its segment; the only one of a quadratic is.
    bool IsFirstControl(unsigned int i) const { return Role(i).place == 1 && !Role(i).isNode; }
    /// Whether point `i` is the last control of a segment of degree 3 or more.
    bool IsLastControl(unsigned int i) const
    {
        return Role(i).degree >= 3 && Role(i).place + 1 == Role(i).degree;
    }

    // The segment of a point.

    /// For a start the degree of the segment that follows; 0 when none does.
    unsigned int Degree(unsigned int i) const
    {
        return IsStart(i) && !IsLastOfSubpath(i) ? Role(i + 1).degree : Role(i).degree;
    }
    unsigned int StartOfSegment(unsigned int i) const
    {
        if (IsStart(i)) {
            return i;
        }
        HvPathRole const& role = Role(i);
        return role.degree == 0 || role.place > i ? 0 : i - role.place;
    }
    unsigned int EndOfSegment(unsigned int i) const
    {
        if (IsStart(i)) {
            if (IsLastOfSubpath(i)) {
                return i;
            }
            ++i;
        }
        HvPathRole const& role = Role(i);
        unsigned int const steps = role.degree - role.place;
        return role.degree == 0 ? 0 : i + std::min(steps, count_ - 1 - i);
    }
    /// The index behind the segment of point `i`: always above `i`, so a loop over segments ends.
    unsigned int NextSegment(unsigned int i) const { return std::max(EndOfSegment(i), i) + 1; }

    // The subpath of a point.

    /// Whether there is a point `i` and it is the last of its subpath.
    bool IsLastOfSubpath(unsigned int i) const
    {
        return Has(i) && (i + 1 == count_ || IsStart(i + 1));
    }
    unsigned int FirstOfSubpath(unsigned int i) const
    {
        while (i > 0 && !IsStart(i)) {
            --i;
        }
        return i;
    }
    unsigned int LastOfSubpath(unsigned int i) const
    {
        while (!IsLastOfSubpath(i)) {
            ++i;
        }
        return i;
    }
    /// Whether point `i` is the first or the last of its subpath.
    bool IsEndpoint(unsigned int i) const { return i == 0 || IsStart(i) || IsLastOfSubpath(i); }

    // The whole.

    /// Whether no subpath starts in (first, last].
    bool AreInOneSubpath(unsigned int first, unsigned int last) const
    {
        unsigned int i = last;
        while (i > first && !IsStart(i)) {
            --i;
        }
        return i == first;
    }
    /// Whether the roles make up whole subpaths, each of a start and whole segments.
    bool AreWellFormed() const
    {
        HvPathRole before;
        before.isNode = true;
        for (unsigned int i = 0; i < count_; ++i) {
            HvPathRole const& role = Role(i);
            bool const continues = role.degree == before.degree && role.place == before.place + 1;
            bool const begins = IsStart(i) || (i > 0 && role.place == 1);
            if (before.isNode ? !begins : !continues) {
                return false;
            }
            before = role;
        }
        return before.isNode;
    }

private:
    unsigned char const* tags_;
    unsigned int count_;
};

#endif
