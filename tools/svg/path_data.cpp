// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The path data of SVG: the text of a "d" attribute, and arcs. Arcs as in the implementation notes
// of SVG 1.1, F.6.

#include <tools/svg/NumberScanner.h>
#include <tools/svg/path_data.h>

#include <algorithm>
#include <cctype>
#include <cmath>

namespace {

using Point = HvPoint2<double>;

constexpr double kPi = 3.14159265358979323846;
/// The most that one cubic of an arc turns.
constexpr double kMostTurn = kPi / 2;

Point Turned(Point const& p, double angle)
{
    double const c = std::cos(angle);
    double const s = std::sin(angle);
    return Point(c * p.x - s * p.y, s * p.x + c * p.y);
}

/// Draws path data command by command; see PathData_Draw.
class PathDataReader {
public:
    PathDataReader(std::string const& text, HvBezierSink& sink) : scanner_(text), sink_(sink) {}

    std::string Read()
    {
        scanner_.SkipSpace();
        char command = 0;
        while (!scanner_.IsAtEnd()) {
            if (std::isalpha(static_cast<unsigned char>(scanner_.Peek())) != 0) {
                command = scanner_.Take();
            } else if (command == 'Z' || command == 'z' || !scanner_.IsAtNumber()) {
                command = 0;
            }
            if (!Draw(command)) {
                return "no path data at character " + std::to_string(scanner_.Place() + 1);
            }
            // Further points of a move are lines.
            command = command == 'M' ? 'L' : (command == 'm' ? 'l' : command);
            scanner_.SkipSeparator();
        }
        return "";
    }

private:
    /// Draws one command with its arguments; false when they are not all there.
    bool Draw(char command)
    {
        bool const isRelative = std::islower(static_cast<unsigned char>(command)) != 0;
        char const kind = static_cast<char>(std::toupper(static_cast<unsigned char>(command)));
        if (!isStarted_ && kind != 'M') {
            return false;
        }
        origin_ = isRelative ? at_ : Point();
        lastKind_ = kind_;
        kind_ = kind;
        switch (kind) {
        case 'M':
            return Move();
        case 'L':
            return Line();
        case 'H':
            return Level(true);
        case 'V':
            return Level(false);
        case 'C':
            return Cubic();
        case 'S':
            return SmoothCubic();
        case 'Q':
            return Quadratic();
        case 'T':
            return SmoothQuadratic();
        case 'A':
            return Arc();
        case 'Z':
            return Close();
        default:
            return false;
        }
    }

    bool ReadPoint(Point& p)
    {
        if (!scanner_.ReadNumber(p.x) || !scanner_.ReadNumber(p.y)) {
            return false;
        }
        p = origin_ + p;
        return true;
    }

    static HvPoint2<float> Narrow(Point const& p) { return HvPoint2<float>(p); }

    void StartSubpathAfterClose()
    {
        if (isClosed_) {
            sink_.Moveto(Narrow(at_));
            isClosed_ = false;
        }
    }

    void LineTo(Point const& p)
    {
        StartSubpathAfterClose();
        sink_.Lineto(Narrow(p));
        at_ = p;
    }

    void CubicTo(Point const& c1, Point const& c2, Point const& p)
    {
        StartSubpathAfterClose();
        sink_.Curveto(Narrow(c1), Narrow(c2), Narrow(p));
        handle_ = c2;
        at_ = p;
    }

    void QuadraticTo(Point const& c, Point const& p)
    {
        CubicTo(at_ + (c - at_) * (2.0 / 3.0), p + (c - p) * (2.0 / 3.0), p);
        handle_ = c;
    }

    /// The last handle mirrored through the point, after one of the kinds; else the point.
    Point MirroredHandle(char kind, char smoothKind) const
    {
        bool const follows = lastKind_ == kind || lastKind_ == smoothKind;
        return follows ? at_ * 2.0 - handle_ : at_;
    }

    bool Move()
    {
        Point p;
        if (!ReadPoint(p)) {
            return false;
        }
        sink_.Moveto(Narrow(p));
        at_ = start_ = p;
        isStarted_ = true;
        isClosed_ = false;
        return true;
    }

    bool Line()
    {
        Point p;
        if (!ReadPoint(p)) {
            return false;
        }
        LineTo(p);
        return true;
    }

    bool Level(bool isHorizontal)
    {
        double value = 0.0;
        if (!scanner_.ReadNumber(value)) {
            return false;
        }
        LineTo(isHorizontal ? Point(origin_.x + value, at_.y) : Point(at_.x, origin_.y + value));
        return true;
    }

    bool Cubic()
    {
        Point c1;
        Point c2;
        Point p;
        if (!ReadPoint(c1) || !ReadPoint(c2) || !ReadPoint(p)) {
            return false;
        }
        CubicTo(c1, c2, p);
        return true;
    }

    bool SmoothCubic()
    {
        Point c2;
        Point p;
        if (!ReadPoint(c2) || !ReadPoint(p)) {
            return false;
        }
        CubicTo(MirroredHandle('C', 'S'), c2, p);
        return true;
    }

    bool Quadratic()
    {
        Point c;
        Point p;
        if (!ReadPoint(c) || !ReadPoint(p)) {
            return false;
        }
        QuadraticTo(c, p);
        return true;
    }

    bool SmoothQuadratic()
    {
        Point p;
        if (!ReadPoint(p)) {
            return false;
        }
        QuadraticTo(MirroredHandle('Q', 'T'), p);
        return true;
    }

    bool Arc()
    {
        SvgEllipse ellipse = {Point(), 0.0};
        bool isLong = false;
        bool isRising = false;
        Point p;
        if (!scanner_.ReadNumber(ellipse.radii.x) || !scanner_.ReadNumber(ellipse.radii.y) ||
            !scanner_.ReadNumber(ellipse.degrees) || !scanner_.ReadFlag(isLong) ||
            !scanner_.ReadFlag(isRising) || !ReadPoint(p)) {
            return false;
        }
        StartSubpathAfterClose();
        PathData_DrawArc(at_, p, ellipse, isLong, isRising, sink_);
        at_ = p;
        return true;
    }

    bool Close()
    {
        if (isClosed_) {
            return true;  // a second time closes nothing more
        }
        if (at_ != start_) {
            LineTo(start_);
        }
        sink_.Closeto();
        isClosed_ = true;
        return true;
    }

    NumberScanner scanner_;
    HvBezierSink& sink_;
    Point at_;      ///< where the pen stands
    Point start_;   ///< where its subpath started
    Point origin_;  ///< what coordinates are counted from
    Point handle_;  ///< the last handle of the last curve
    char kind_ = 0;
    char lastKind_ = 0;
    bool isStarted_ = false;
    bool isClosed_ = false;
};

/// An arc as centre, first angle and turn, on the ellipse turned back and scaled to a unit circle.
struct UnitArc {
    Point centre;
    double first;
    double turn;
};

UnitArc UnitArcThrough(Point const& from, Point const& to, bool isLong, bool isRising)
{
    Point const half = (to - from) * 0.5;
    double const lengthSquared = half.x * half.x + half.y * half.y;
    double const height = std::sqrt(std::max(0.0, 1.0 / lengthSquared - 1.0));
    double const side = isLong == isRising ? -1.0 : 1.0;
    UnitArc arc;
    arc.centre = from + half + Point(-half.y, half.x) * (height * side);
    arc.first = std::atan2(from.y - arc.centre.y, from.x - arc.centre.x);
    double const last = std::atan2(to.y - arc.centre.y, to.x - arc.centre.x);
    arc.turn = last - arc.first;
    if (isRising && arc.turn < 0.0) {
        arc.turn += 2.0 * kPi;
    } else if (!isRising && arc.turn > 0.0) {
        arc.turn -= 2.0 * kPi;
    }
    return arc;
}

}  // namespace

std::string PathData_Draw(std::string const& text, HvBezierSink& sink)
{
    return PathDataReader(text, sink).Read();
}

void PathData_DrawArc(Point const& from, Point const& to, SvgEllipse const& ellipse, bool isLong,
                      bool isRising, HvBezierSink& sink)
{
    Point radii(std::fabs(ellipse.radii.x), std::fabs(ellipse.radii.y));
    if (from == to) {
        return;
    }
    if (!(radii.x > 0.0 && radii.y > 0.0)) {
        sink.Lineto(HvPoint2<float>(to));
        return;
    }
    double const tilt = ellipse.degrees * (kPi / 180.0);
    Point const across = Turned((to - from) * 0.5, -tilt);
    double const reach = std::hypot(across.x / radii.x, across.y / radii.y);
    radii = radii * std::max(1.0, reach);
    auto const toUnit = [&](Point const& p) {
        Point const turned = Turned(p - from, -tilt);
        return Point(turned.x / radii.x, turned.y / radii.y);
    };
    auto const fromUnit = [&](Point const& p) {
        return HvPoint2<float>(from + Turned(Point(p.x * radii.x, p.y * radii.y), tilt));
    };

    UnitArc const arc = UnitArcThrough(toUnit(from), toUnit(to), isLong, isRising);
    int const pieces =
        std::max(1, static_cast<int>(std::ceil(std::fabs(arc.turn) / kMostTurn - 1e-9)));
    double const step = arc.turn / pieces;
    double const reachOfHandle = 4.0 / 3.0 * std::tan(step / 4.0);
    for (int i = 0; i < pieces; ++i) {
        double const a = arc.first + i * step;
        double const b = a + step;
        Point const start(std::cos(a), std::sin(a));
        Point const end(std::cos(b), std::sin(b));
        Point const c1 = arc.centre + start + Point(-start.y, start.x) * reachOfHandle;
        Point const c2 = arc.centre + end - Point(-end.y, end.x) * reachOfHandle;
        // The arc ends exactly where it was told to.
        sink.Curveto(fromUnit(c1), fromUnit(c2),
                     i + 1 == pieces ? HvPoint2<float>(to) : fromUnit(arc.centre + end));
    }
}
