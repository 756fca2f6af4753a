// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The three fills of polygons written down plainly: every list is searched, every row is sorted, no
// pixel is skipped. They judge the fills of the library byte for byte, and share no code with them.
// For finite coordinates only.

#ifndef TESTS_SUPPORT_SLOW_FILL_H
#define TESTS_SUPPORT_SLOW_FILL_H

#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/raster/HvUByteRaster.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

/// The rectangle of pixels that a fill scans; x1 and y1 are not included.
struct SlowBox {
    int x0;
    int y0;
    int x1;
    int y1;
};

/// Asked as the library's fills ask; empty asks nobody.
using SlowInterrupt = std::function<int()>;

/// Thrown where the fill is abandoned.
struct SlowFillAbandoned {};

/// The scan converter: entries sorted by y, a list of active edges searched by id.
class SlowScanner {
public:
    SlowScanner(HvPoint2dArray const& points, HvPointTagArray const& tags, double scale)
    {
        int first = 0;
        for (unsigned int i = 0; i < points.Size(); ++i) {
            if (tags[i] != HvPointTagEnd) {
                int const k = static_cast<int>(vertices_.size());
                vertices_.push_back(HvPoint2<double>(points[i].x * scale, points[i].y * scale));
                entries_.push_back({k, k - 1, k + 1});
            } else {
                int const end = static_cast<int>(vertices_.size());
                if (end > first) {
                    entries_[static_cast<std::size_t>(first)].predecessor = end - 1;
                    entries_.back().successor = first;
                }
                first = end;
            }
        }
        vertices_.resize(static_cast<std::size_t>(first));  // a polygon without an end is none
        entries_.resize(static_cast<std::size_t>(first));
        std::stable_sort(entries_.begin(), entries_.end(), [&](Entry const& a, Entry const& b) {
            return At(a.vertex).y < At(b.vertex).y;
        });
    }

    /// Calls span(a, e) for the spans of row y.
    template <class Span>
    void Row(double y, int fillRule, double leftLimit, double rightLimit, Span const& span)
    {
        double const c = y + 0.5;
        double const b = y - 0.5;
        for (; next_ < entries_.size() && c >= At(entries_[next_].vertex).y; ++next_) {
            Entry const& entry = entries_[next_];
            Handle(entry.vertex, entry.predecessor, entry.predecessor, b, c, -1);
            Handle(entry.vertex, entry.successor, entry.vertex, b, c, 1);
        }
        std::stable_sort(active_.begin(), active_.end(),
                         [](Edge const& p, Edge const& q) { return p.x < q.x; });
        if (fillRule != 0) {
            Winding(leftLimit, rightLimit, span);
        } else {
            EvenOdd(leftLimit, rightLimit, span);
        }
    }

private:
    struct Entry {
        int vertex;
        int predecessor;
        int successor;
    };
    struct Edge {
        double x;
        double dxdy;
        int id;
        int direction;
    };

    HvPoint2<double> const& At(int vertex) const
    {
        return vertices_[static_cast<std::size_t>(vertex)];
    }

    /// One of the two edges at vertex v; `away` is 1 when the polygon runs from v to w.
    void Handle(int v, int w, int id, double b, double c, int away)
    {
        HvPoint2<double> const V = At(v);
        HvPoint2<double> const W = At(w);
        if (b >= W.y) {
            auto const found = std::find_if(active_.begin(), active_.end(),
                                            [id](Edge const& edge) { return edge.id == id; });
            if (found != active_.end()) {
                active_.erase(found);
            }
        } else if (W.y > c) {
            HvPoint2<double> const L = V.y < W.y ? V : W;
            HvPoint2<double> const H = V.y < W.y ? W : V;
            double const dxdy = (H.x - L.x) / (H.y - L.y);
            active_.push_back({dxdy * (c - L.y) + L.x, dxdy, id, away});
        }
    }

    template <class Span>
    static void EmitSpan(double left, double right, double e, double leftLimit, double rightLimit,
                         Span const& span)
    {
        double const a = std::max(std::floor(left), leftLimit);
        if (right > left && e >= a && a < rightLimit) {
            span(static_cast<long long>(a), static_cast<long long>(std::min(e, rightLimit - 1)));
        }
    }

    template <class Span>
    void Winding(double leftLimit, double rightLimit, Span const& span)
    {
        std::size_t i = 0;
        int counter = 0;
        while (i < active_.size()) {
            double const left = active_[i].x;
            double right = left;
            double e = rightLimit - 1;
            while (i < active_.size()) {
                Edge& edge = active_[i++];
                counter += edge.direction;
                right = edge.x;
                edge.x += edge.dxdy;
                if (counter == 0) {
                    e = std::floor(right);
                    break;
                }
            }
            EmitSpan(left, right, e, leftLimit, rightLimit, span);
        }
    }

    template <class Span>
    void EvenOdd(double leftLimit, double rightLimit, Span const& span)
    {
        for (std::size_t i = 0; i + 1 < active_.size(); i += 2) {
            double const left = active_[i].x;
            double const right = active_[i + 1].x;
            active_[i].x += active_[i].dxdy;
            active_[i + 1].x += active_[i + 1].dxdy;
            EmitSpan(left, right, std::floor(right), leftLimit, rightLimit, span);
        }
    }

    std::vector<HvPoint2<double>> vertices_;
    std::vector<Entry> entries_;
    std::vector<Edge> active_;
    std::size_t next_ = 0;
};

inline void SlowFill_Ask(SlowInterrupt const& interrupted)
{
    if (interrupted && interrupted() != 0) {
        throw SlowFillAbandoned();
    }
}

inline unsigned char& SlowFill_Pixel(HvUByteRaster& raster, long long x, long long y)
{
    return raster.data[y * raster.width + x];
}

/// Throws SlowFillAbandoned when abandoned, as the two others.
inline void SlowFill(HvPoint2dArray const& points, HvPointTagArray const& tags, int fillRule,
                     SlowBox const& box, HvUByteRaster& raster, SlowInterrupt const& interrupted)
{
    SlowScanner scanner(points, tags, 1.0);
    for (int y = box.y0; y < box.y1; ++y) {
        SlowFill_Ask(interrupted);
        scanner.Row(y, fillRule, box.x0, box.x1, [&](long long a, long long e) {
            for (long long x = a; x <= e; ++x) {
                SlowFill_Pixel(raster, x, y) = 255;
            }
        });
    }
}

inline void SlowAAFill(HvPoint2dArray const& points, HvPointTagArray const& tags, int fillRule,
                       SlowBox const& box, double maxCoverage, HvUByteRaster& raster,
                       SlowInterrupt const& interrupted)
{
    int const alpha = static_cast<int>(std::floor(255.0 * maxCoverage + 0.5)) & 0xFF;
    SlowScanner scanner(points, tags, 4.0);
    std::size_t const width = static_cast<std::size_t>(std::max(raster.width, 1));
    for (int y = box.y0; y < box.y1; ++y) {
        std::vector<int> covered(16 * width);
        long long lo = box.x1;
        long long hi = -1;
        for (int r = 0; r < 4; ++r) {
            if (fillRule != 0 || r == 0) {
                SlowFill_Ask(interrupted);
            }
            scanner.Row(4.0 * y + r, fillRule, 4.0 * box.x0, 4.0 * box.x1,
                        [&](long long a, long long e) {
                            lo = std::min(lo, a / 4);
                            hi = std::max(hi, e / 4);
                            for (long long x = a; x <= e; ++x) {
                                covered[static_cast<std::size_t>(x / 4 * 16 + r * 4 + x % 4)] = 1;
                            }
                        });
        }
        for (long long x = lo; x <= hi; ++x) {
            auto const first = covered.begin() + static_cast<std::ptrdiff_t>(16 * x);
            long const count = std::count(first, first + 16, 1);
            int const coverage = count == 16 ? 255 : static_cast<int>(16 * count);
            SlowFill_Pixel(raster, x, y) = static_cast<unsigned char>(std::min(coverage, alpha));
        }
    }
}

/// `radius` is at least 1. The blurred rows and columns are padded by the kernel on all sides.
inline void SlowSoftFill(HvPoint2dArray const& points, HvPointTagArray const& tags, int fillRule,
                         SlowBox const& box, double radius,
                         std::function<double(double)> const& falloff, double maxCoverage,
                         HvUByteRaster& raster, SlowInterrupt const& interrupted)
{
    int const n = std::max(static_cast<int>(std::ceil(radius - 0.5)), 1);
    int const K = 2 * n + 1;
    auto const at = [](long long i) { return static_cast<std::size_t>(i); };
    std::vector<double> kernel(at(K));
    std::vector<double> sums(at(K));
    kernel[at(n)] = falloff(0.0);
    for (int i = 1; i <= n; ++i) {
        kernel[at(n - i)] = kernel[at(n + i)] = falloff(i / (n + 0.5));
    }
    double total = 0.0;
    for (double const weight : kernel) {
        total += weight;
    }
    for (double& weight : kernel) {
        weight /= total;
    }
    sums[at(K - 1)] = 255 * kernel[at(K - 1)];
    for (int i = K - 2; i >= 0; --i) {
        sums[at(i)] = 255 * kernel[at(i)] + sums[at(i + 1)];
    }
    // Adds the run a to e to line[p + offset] for all p it reaches.
    auto const addRun = [&](long long a, long long e, double* line, long long offset,
                            long long size) {
        for (long long p = a - n; p <= e + n; ++p) {
            if (p + offset < 0 || p + offset >= size) {
                continue;
            }
            long long const lo = std::max(a, p - n) - (p - n);
            long long const hi = std::min(e, p + n) - (p - n);
            double& place = line[p + offset];
            if (lo == 0 && hi == K - 1) {
                place = 255.0;
            } else if (hi == K - 1) {
                place += sums[at(lo)];
            } else {
                place += sums[at(lo)] - sums[at(hi + 1)];
            }
        }
    };

    long long const Wk = raster.width + 2 * n;
    long long const Hk = raster.height + 2 * n;
    std::vector<double> A(at(Wk * Hk));
    SlowScanner scanner(points, tags, 1.0);
    for (int y = box.y0; y < box.y1; ++y) {
        SlowFill_Ask(interrupted);
        scanner.Row(y, fillRule, box.x0, box.x1, [&](long long a, long long e) {
            addRun(a, e, A.data() + (y + n) * Wk, n, Wk);
        });
    }
    for (int x = 0; x < raster.width; ++x) {
        SlowFill_Ask(interrupted);
        std::vector<double> T(at(Hk));
        for (long long r = 0; r < Hk;) {
            double const value = A[at(r * Wk + x + n)];
            long long r2 = r;
            while (r2 < Hk && A[at(r2 * Wk + x + n)] >= 255.0) {
                ++r2;
            }
            if (r2 > r) {
                addRun(r, r2 - 1, T.data(), 0, Hk);
                r = r2;
                continue;
            }
            if (value > 0.0 || std::isnan(value)) {
                for (int j = 0; j < K; ++j) {
                    if (r - n + j >= 0 && r - n + j < Hk) {
                        T[at(r - n + j)] += value * kernel[at(j)];
                    }
                }
            }
            ++r;
        }
        for (int y = 0; y < raster.height; ++y) {
            double const v = std::floor(maxCoverage * T[at(y + n)] + 0.5);
            double const limited = v > 255.0 ? 255.0 : (v >= 0.0 ? v : 0.0);
            SlowFill_Pixel(raster, x, y) = static_cast<unsigned char>(limited);
        }
    }
}

#endif
