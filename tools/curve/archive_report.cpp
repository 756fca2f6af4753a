// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What a file of archives holds.

#include <hv/fcurve/CFCUserDataSet.h>
#include <hv/fcurve/HvBaseFCurve.h>
#include <hv/fcurve/HvFCurveArchive.h>
#include <hv/pathbuild/HvShapeFactory.h>
#include <hv/shape/HvShape2f.h>
#include <tools/ToolError.h>
#include <tools/curve/archive_report.h>
#include <tools/curve/curve_names.h>
#include <tools/number_text.h>
#include <tools/shape/shape_report.h>
#include <tools/text_table.h>

#include <limits>
#include <memory>
#include <ostream>
#include <vector>

namespace {

/// The block of user data that a curve without any writes.
constexpr unsigned int kEmptyUserDataBlock = 9;
/// The clamping values of a curve that nobody limited.
constexpr double kWidest = std::numeric_limits<double>::max();
/// Where the version stands, and the columns of the table that hold numbers.
constexpr std::size_t kVersionPlace = 4;
constexpr std::size_t kNumberColumns = 4;

/// A number of four bytes of an archive; 0 where it is cut off.
unsigned long NumberAt(std::string const& bytes, std::size_t place)
{
    unsigned long number = 0;
    for (std::size_t k = 4; k-- > 0 && place + 4 <= bytes.size();) {
        number = number << 8 | static_cast<unsigned char>(bytes[place + k]);
    }
    return number;
}

/// Whether an archive is that of a shape. What stands where a curve has its version is the kind of
/// a shape, and but for 1 no version; of those two, a path tells its length by its points.
bool IsShape(std::string const& bytes, std::size_t start)
{
    constexpr unsigned long kPath = HvShape2f::Path;
    constexpr unsigned long kPathWithProperty = HvShape2f::PathProp1d;
    unsigned long const version = NumberAt(bytes, start + kVersionPlace);
    if (version == kPath) {
        return NumberAt(bytes, start) == 9 * NumberAt(bytes, start + kVersionPlace + 4) + 12;
    }
    return version == HvShape2f::Rect || version == HvShape2f::Oval ||
           (version & 0xffff) == kPathWithProperty;
}

void WriteHead(std::ostream& out, HvBaseFCurve const& curve, unsigned long version,
               std::size_t size)
{
    out << CurveName_OfKind(curve.GetKind()) << ", version " << version << ", "
        << NumberText_Counted(size, "byte") << ", " << NumberText_Counted(curve.GetNumKeys(), "key")
        << ", beyond keys " << CurveName_OfExtrapolation(curve.GetExtrapolationMethod());
    double lower = 0.0;
    double upper = 0.0;
    if (curve.GetClampingValues(lower, upper) != 0 && (lower > -kWidest || upper < kWidest)) {
        out << ", clamped to " << NumberText_Exact(lower) << " to " << NumberText_Exact(upper);
    }
    out << (curve.IsReadOnly() != 0 ? ", read only" : "")
        << (curve.IsTimeFCurve() != 0 ? ", time curve" : "")
        << (curve.IsDefautlBezierTangentConstraintOn() != 0 ? ", handles at thirds" : "");
    if (unsigned int const block = curve.GetUserDataBufferSize(); block > kEmptyUserDataBlock) {
        out << ", user data of " << NumberText_Counted(block, "byte");
    }
    out << "\n";
}

std::string UserDataOf(HvBaseFCurve const& curve, double parameter)
{
    CFCUserDataSet const* const set = curve.GetUserDataSet(parameter);
    if (set == nullptr) {
        return "-";
    }
    std::string sizes;
    for (auto const& [guid, blob] : *set) {
        sizes += (sizes.empty() ? "" : "+") + std::to_string(blob.Size());
    }
    return sizes;
}

/// The kind of the segment behind a key; "-" on curves that have none.
std::string SegmentOf(HvBaseFCurve const& curve, unsigned int key)
{
    HvBaseFCurve::KeyInfo info = {};
    info.mask = 0x100;
    return curve.GetKeyInfoFromIndex(key, &info) == 0 ? "-"
                                                      : CurveName_OfSegmentKind(info.segmentKind);
}

void WriteKeys(std::ostream& out, HvBaseFCurve const& curve)
{
    std::vector<TextRow> rows = {
        {"key", "at", "left value", "right value", "segment", "constraints", "user data"}};
    unsigned int const count = curve.GetNumKeys();
    for (unsigned int key = 0; key < count; ++key) {
        double parameter = 0.0;
        double left = 0.0;
        double right = 0.0;
        curve.GetKeyParameter(key, parameter);
        curve.GetKeyValuesByIndex(key, left, right);
        rows.push_back({std::to_string(key), NumberText_Exact(parameter), NumberText_Exact(left),
                        NumberText_Exact(right), SegmentOf(curve, key),
                        CurveName_OfConstraints(curve, key), UserDataOf(curve, parameter)});
    }
    if (count != 0) {
        TextTable_Write(out, rows, kNumberColumns);
    }
}

/// Throws the fault of the archive at `start`.
[[noreturn]] void Refuse(std::string const& what, std::size_t start, HvArchiveFault const& fault)
{
    throw ToolError(what + ", which starts at byte " + std::to_string(start) +
                    ", is refused at byte " + std::to_string(start + fault.place) + ": " +
                    fault.reason);
}

/// Write what the archive at `start` holds and return its bytes; `name` and its number lead.
std::size_t WriteShape(std::ostream& out, std::string const& file, std::string const& bytes,
                       std::size_t start, std::string const& name, bool brief)
{
    HvShape2f* read = nullptr;
    HvArchiveFault fault;
    std::size_t const used =
        HvShape2f_CreateFromBuffer(bytes.data() + start, bytes.size() - start, &read, fault);
    std::unique_ptr<HvShape2f> const shape(read);
    if (shape == nullptr) {
        Refuse(file + ": " + name, start, fault);
    }
    out << name << " at byte " << start << ": ";
    ShapeReport_Write(out, *shape, used, brief);
    return used;
}

std::size_t WriteCurve(std::ostream& out, std::string const& file, std::string const& bytes,
                       std::size_t start, std::string const& name, bool brief)
{
    HvBaseFCurve* read = nullptr;
    HvArchiveFault fault;
    std::size_t const used =
        HvBaseFCurve_CreateFromBuffer(bytes.data() + start, bytes.size() - start, &read, fault);
    std::unique_ptr<HvBaseFCurve> const curve(read);
    if (curve == nullptr) {
        Refuse(file + ": " + name, start, fault);
    }
    out << name << " at byte " << start << ": ";
    WriteHead(out, *curve, NumberAt(bytes, start + kVersionPlace), used);
    if (!brief) {
        WriteKeys(out, *curve);
    }
    return used;
}

}  // namespace

void ArchiveReport_Write(std::ostream& out, std::string const& file, std::string const& bytes,
                         bool brief)
{
    std::size_t curves = 0;
    std::size_t shapes = 0;
    for (std::size_t start = 0; start < bytes.size();) {
        if (IsShape(bytes, start)) {
            std::string const name = "shape " + std::to_string(shapes);
            start += WriteShape(out, file, bytes, start, name, brief);
            ++shapes;
        } else {
            std::string const name = "curve " + std::to_string(curves);
            start += WriteCurve(out, file, bytes, start, name, brief);
            ++curves;
        }
    }
    out << file << ": ";
    if (curves != 0 || shapes == 0) {
        out << NumberText_Counted(curves, "curve") << ", ";
    }
    if (shapes != 0) {
        out << NumberText_Counted(shapes, "shape") << ", ";
    }
    out << NumberText_Counted(bytes.size(), "byte") << "\n";
}
