// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// How long does it take to fill a shape, and how long do others take?
//
// Each shape is a list of polygons that fills a square raster of the given side: a five-pointed
// star, a circle, the outline of a random closed path of 200 cubics, a random polygon of 2,000
// sides. "Icons" are 10,000 blobs of 8 to 32 pixels all over one raster of 4,096 squared. A peer is
// given the same polygons, into an image of bytes, by winding: the A8 surface of Cairo, the smooth
// rasteriser of FreeType, the scanline rasteriser of AGG. Building their outline belongs to their
// time, as ours takes the points as they come; nobody clears the image. The degenerate case is a
// raster that the shape covers without an edge within. "WriteAlone" writes the bytes that the hard
// fill writes, row by row, and does nothing else: no fill can be quicker than the memory. The peer
// of soft fills is OpenCV: its hard fill, then its separable filter with the weights of our kernel.
// "SolidPixel" asks what a soft fill takes for a pixel that the rim does not reach, by the
// difference of rasters that are covered wholly, all larger than the caches.

#include <hv/bezier/HvBezierTool.h>
#include <hv/raster/polygon_fill.h>

#include <benchmark/benchmark.h>

#if defined(HV_PEER_CAIRO)
#include <cairo.h>
#endif
#if defined(HV_PEER_FREETYPE)
#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H
#endif
#if defined(HV_PEER_OPENCV)
#include <opencv2/imgproc.hpp>
#endif
#if defined(HV_PEER_AGG)
#include <agg2/agg_pixfmt_gray.h>
#include <agg2/agg_rasterizer_scanline_aa.h>
#include <agg2/agg_renderer_scanline.h>
#include <agg2/agg_scanline_p.h>
#endif

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <ctime>
#include <random>
#include <string>
#include <vector>

namespace {

using Point = HvPoint2<double>;

constexpr double kTurn = 6.283185307179586;
constexpr int kWinding = 1;

struct Shape {
    HvPoint2dArray points;
    HvPointTagArray tags;

    void Add(HvPoint2dArray const& corners)
    {
        for (unsigned int i = 0; i < corners.Size(); ++i) {
            points.Add(corners[i]);
            tags.Add(i == 0 ? HvPointTagStart : HvPointTagInner);
        }
        points.Add(corners[0]);
        tags.Add(HvPointTagEnd);
    }
    HvPolygons Polygons(HvUByteRaster const& raster) const
    {
        HvExtent2<float> extent;
        for (Point const& point : points) {
            extent.Augment(HvPoint2<float>(point));
        }
        HvFillBox box = {0, 0, 0, 0, false};
        HvFillBox_FromExtent(extent, raster, box);
        return {points, tags, kWinding, box};
    }
};

Shape Star(double size)
{
    HvPoint2dArray corners;
    for (int i = 0; i < 5; ++i) {
        double const angle = kTurn * (2 * i / 5.0 - 0.25);
        corners.Add(size * (0.5 + 0.47 * std::cos(angle)), size * (0.5 + 0.47 * std::sin(angle)));
    }
    Shape shape;
    shape.Add(corners);
    return shape;
}

/// With as many sides as a tolerance of a quarter of a pixel asks for.
Shape Circle(double size)
{
    HvPoint2dArray corners;
    int const sides = 8 + static_cast<int>(kTurn / std::sqrt(8 * 0.25 / (0.47 * size)));
    for (int i = 0; i < sides; ++i) {
        double const angle = kTurn * i / sides;
        corners.Add(size * (0.5 + 0.47 * std::cos(angle)), size * (0.5 + 0.47 * std::sin(angle)));
    }
    Shape shape;
    shape.Add(corners);
    return shape;
}

Shape Curves(double size)
{
    std::mt19937 engine(1);
    std::uniform_real_distribution<double> coordinate(0.02 * size, 0.98 * size);
    auto const random = [&] {
        double const x = coordinate(engine);
        return Point(x, coordinate(engine));
    };
    HvPoint2dArray corners;
    Point const start = random();
    Point cubic[4] = {start, start, start, start};
    for (int i = 0; i < 200; ++i) {
        cubic[0] = cubic[3];
        cubic[1] = random();
        cubic[2] = random();
        cubic[3] = i == 199 ? start : random();
        HvBezierTool_FlattenCubic2d(cubic, 0.25, &corners, i == 0 ? 0 : 1);
    }
    corners.Chop(corners.Size() - 1);
    Shape shape;
    shape.Add(corners);
    return shape;
}

Shape Polygon2000(double size)
{
    std::mt19937 engine(2);
    std::uniform_real_distribution<double> coordinate(0.02 * size, 0.98 * size);
    HvPoint2dArray corners;
    for (int i = 0; i < 2000; ++i) {
        double const x = coordinate(engine);
        corners.Add(x, coordinate(engine));
    }
    Shape shape;
    shape.Add(corners);
    return shape;
}

Shape Cover(double size)
{
    HvPoint2dArray corners;
    corners.Add(-1.0, -1.0);
    corners.Add(size + 1, -1.0);
    corners.Add(size + 1, size + 1);
    corners.Add(-1.0, size + 1);
    Shape shape;
    shape.Add(corners);
    return shape;
}

constexpr double kIconsSide = 4096;

std::vector<Shape> const& Icons()
{
    static std::vector<Shape> const icons = [] {
        std::mt19937 engine(3);
        std::uniform_real_distribution<double> place(0.0, kIconsSide - 32.0);
        std::uniform_real_distribution<double> extent(4.0, 16.0);
        std::uniform_real_distribution<double> wave(0.6, 1.0);
        std::vector<Shape> all(10000);
        for (Shape& icon : all) {
            double const x = place(engine) + 16;
            double const y = place(engine) + 16;
            double const radius = extent(engine);
            HvPoint2dArray corners;
            for (int i = 0; i < 24; ++i) {
                double const r = radius * wave(engine);
                corners.Add(x + r * std::cos(kTurn * i / 24), y + r * std::sin(kTurn * i / 24));
            }
            icon.Add(corners);
        }
        return all;
    }();
    return icons;
}

// --- who fills ----------------------------------------------------------------------------------

struct Hard {
    HvUByteRaster raster;
    explicit Hard(int size) : raster(size, size, 0) {}
    void Fill(Shape const& shape) { HvPolygons_Fill(shape.Polygons(raster), raster, nullptr); }
};

struct AntiAliased {
    HvUByteRaster raster;
    explicit AntiAliased(int size) : raster(size, size, 0) {}
    void Fill(Shape const& shape)
    {
        HvPolygons_AAFill(shape.Polygons(raster), 1.0, raster, nullptr);
    }
};

double Falloff(double x)
{
    return 1.0 - x;
}

/// Of a shape with one span in each row.
struct WriteAlone {
    HvUByteRaster raster;
    std::vector<std::size_t> first, length;  // of the span of each row
    explicit WriteAlone(int size) : raster(size, size, 0) {}
    void Fill(Shape const& shape)
    {
        if (length.empty()) {
            Find(shape);
        }
        unsigned char* row = raster.data;
        for (std::size_t y = 0; y < length.size(); ++y, row += raster.width) {
            std::memset(row + first[y], 255, length[y]);
        }
    }

private:
    void Find(Shape const& shape)
    {
        HvPolygons_Fill(shape.Polygons(raster), raster, nullptr);
        std::size_t const width = static_cast<std::size_t>(raster.width);
        for (unsigned char const* row = raster.data; row != raster.data + raster.NumPixels();
             row += width) {
            auto const isSet = [](unsigned char pixel) { return pixel != 0; };
            auto const begin = std::find_if(row, row + width, isSet);
            first.push_back(static_cast<std::size_t>(begin - row));
            length.push_back(static_cast<std::size_t>(std::count_if(begin, row + width, isSet)));
        }
    }
};

template <int Radius>
struct Soft {
    HvUByteRaster raster;
    explicit Soft(int size) : raster(size, size, 0) {}
    void Fill(Shape const& shape)
    {
        HvBlurKernel const kernel(Radius, Falloff);
        HvPolygons_SoftFill(shape.Polygons(raster), kernel, 1.0, raster, nullptr);
    }
};

#if defined(HV_PEER_OPENCV)
template <int Radius>
struct OpenCv {
    cv::Mat hard, soft;
    std::vector<cv::Point> corners;
    explicit OpenCv(int size) : hard(cv::Mat::zeros(size, size, CV_8U)) { cv::setNumThreads(1); }
    void Fill(Shape const& shape)
    {
        constexpr int kFractionBits = 8;
        corners.clear();
        for (Point const& p : shape.points) {
            corners.emplace_back(static_cast<int>(std::ldexp(p.x, kFractionBits)),
                                 static_cast<int>(std::ldexp(p.y, kFractionBits)));
        }
        cv::fillPoly(hard, std::vector<std::vector<cv::Point>>{corners}, cv::Scalar(255),
                     cv::LINE_8, kFractionBits);
        HvBlurKernel const kernel(Radius, Falloff);
        cv::Mat weights;
        cv::Mat(2 * kernel.Reach() + 1, 1, CV_64F, const_cast<double*>(kernel.Weights()))
            .convertTo(weights, CV_32F);
        cv::sepFilter2D(hard, soft, CV_8U, weights, weights, cv::Point(-1, -1), 0.0,
                        cv::BORDER_CONSTANT);
    }
};
#endif

#if defined(HV_PEER_CAIRO)
struct Cairo {
    cairo_surface_t* surface;
    cairo_t* cairo;
    explicit Cairo(int size)
        : surface(cairo_image_surface_create(CAIRO_FORMAT_A8, size, size)),
          cairo(cairo_create(surface))
    {
        cairo_set_source_rgba(cairo, 1, 1, 1, 1);
    }
    Cairo(Cairo const&) = delete;
    Cairo& operator=(Cairo const&) = delete;
    ~Cairo()
    {
        cairo_destroy(cairo);
        cairo_surface_destroy(surface);
    }
    void Fill(Shape const& shape)
    {
        cairo_new_path(cairo);
        for (unsigned int i = 0; i < shape.points.Size(); ++i) {
            Point const p = shape.points[i];
            if (shape.tags[i] == HvPointTagStart) {
                cairo_move_to(cairo, p.x, p.y);
            } else if (shape.tags[i] == HvPointTagInner) {
                cairo_line_to(cairo, p.x, p.y);
            } else {
                cairo_close_path(cairo);
            }
        }
        cairo_fill(cairo);
        cairo_surface_flush(surface);
    }
};
#endif

#if defined(HV_PEER_FREETYPE)
struct FreeType {
    FT_Library library = nullptr;
    std::vector<unsigned char> pixels;
    FT_Bitmap bitmap = {};
    std::vector<FT_Vector> points;
    std::vector<char> tags;
    std::vector<short> ends;
    explicit FreeType(int size)
        : pixels(static_cast<std::size_t>(size) * static_cast<std::size_t>(size))
    {
        FT_Init_FreeType(&library);
        bitmap.rows = bitmap.width = static_cast<unsigned int>(size);
        bitmap.pitch = -size;  // rows downward
        bitmap.buffer = pixels.data();
        bitmap.num_grays = 256;
        bitmap.pixel_mode = FT_PIXEL_MODE_GRAY;
    }
    FreeType(FreeType const&) = delete;
    FreeType& operator=(FreeType const&) = delete;
    ~FreeType() { FT_Done_FreeType(library); }
    void Fill(Shape const& shape)
    {
        points.clear();
        ends.clear();
        for (unsigned int i = 0; i < shape.points.Size(); ++i) {
            if (shape.tags[i] == HvPointTagEnd) {
                ends.push_back(static_cast<short>(points.size() - 1));
            } else {
                points.push_back({static_cast<FT_Pos>(shape.points[i].x * 64.0),
                                  static_cast<FT_Pos>(shape.points[i].y * 64.0)});
            }
        }
        tags.assign(points.size(), FT_CURVE_TAG_ON);
        FT_Outline outline = {};
        outline.n_contours = static_cast<short>(ends.size());
        outline.n_points = static_cast<short>(points.size());
        outline.points = points.data();
        outline.tags = tags.data();
        outline.contours = ends.data();
        FT_Outline_Get_Bitmap(library, &outline, &bitmap);
    }
};
#endif

#if defined(HV_PEER_AGG)
struct Agg {
    std::vector<unsigned char> pixels;
    agg::rendering_buffer buffer;
    agg::pixfmt_gray8 format;
    agg::renderer_base<agg::pixfmt_gray8> renderer;
    agg::rasterizer_scanline_aa<> rasterizer;
    agg::scanline_p8 scanline;
    explicit Agg(int size)
        : pixels(static_cast<std::size_t>(size) * static_cast<std::size_t>(size)),
          buffer(pixels.data(), static_cast<unsigned int>(size), static_cast<unsigned int>(size),
                 size),
          format(buffer), renderer(format)
    {
    }
    void Fill(Shape const& shape)
    {
        rasterizer.reset();
        for (unsigned int i = 0; i < shape.points.Size(); ++i) {
            Point const p = shape.points[i];
            if (shape.tags[i] == HvPointTagStart) {
                rasterizer.move_to_d(p.x, p.y);
            } else if (shape.tags[i] == HvPointTagInner) {
                rasterizer.line_to_d(p.x, p.y);
            }
        }
        agg::render_scanlines_aa_solid(rasterizer, scanline, renderer, agg::gray8(255, 255));
    }
};
#endif

// --- measuring ----------------------------------------------------------------------------------

template <class Filler>
void One(benchmark::State& state, Shape (*make)(double))
{
    int const size = static_cast<int>(state.range(0));
    Shape const shape = make(size);
    Filler filler(size);
    for (auto _ : state) {
        filler.Fill(shape);
        benchmark::ClobberMemory();
    }
    double const pixels = static_cast<double>(state.iterations()) * size * size;
    state.counters["pixels/s"] = benchmark::Counter(pixels, benchmark::Counter::kIsRate);
}

/// A raster of the size has the rim of two of half the side, and twice their pixels.
template <class Filler>
void SolidPixel(benchmark::State& state)
{
    int const size = static_cast<int>(state.range(0));
    Shape const large = Cover(size);
    Shape const small = Cover(size / 2);
    Filler largeFiller(size);
    Filler smallFiller(size / 2);
    std::clock_t ticks = 0;
    for (auto _ : state) {
        std::clock_t const start = std::clock();
        smallFiller.Fill(small);
        smallFiller.Fill(small);
        std::clock_t const middle = std::clock();
        largeFiller.Fill(large);
        ticks += (std::clock() - middle) - (middle - start);
    }
    double const pixels = static_cast<double>(state.iterations()) * size * size / 2;
    state.counters["ns/pixel"] = 1e9 * static_cast<double>(ticks) / CLOCKS_PER_SEC / pixels;
}

template <class Filler>
void Many(benchmark::State& state)
{
    Filler filler(static_cast<int>(kIconsSide));
    std::vector<Shape> const& icons = Icons();
    for (auto _ : state) {
        for (Shape const& icon : icons) {
            filler.Fill(icon);
        }
        benchmark::ClobberMemory();
    }
    double const filled =
        static_cast<double>(state.iterations()) * static_cast<double>(icons.size());
    state.counters["icons/s"] = benchmark::Counter(filled, benchmark::Counter::kIsRate);
}

template <class Filler>
void Sizes(std::string const& name, Shape (*make)(double))
{
    benchmark::RegisterBenchmark(name.c_str(), One<Filler>, make)
        ->Arg(64)
        ->Arg(512)
        ->Arg(4096)
        ->Unit(benchmark::kMicrosecond);
}

template <class Filler>
void Register(std::string const& filler)
{
    Sizes<Filler>("Star/" + filler, Star);
    Sizes<Filler>("Circle/" + filler, Circle);
    Sizes<Filler>("Curves200/" + filler, Curves);
    Sizes<Filler>("Polygon2000/" + filler, Polygon2000);
    Sizes<Filler>("CoveredWholly/" + filler, Cover);
    benchmark::RegisterBenchmark(("Icons/" + filler).c_str(), Many<Filler>)
        ->Unit(benchmark::kMillisecond);
}

bool const isRegistered = [] {
    Register<AntiAliased>("AAFill");
#if defined(HV_PEER_CAIRO)
    Register<Cairo>("Cairo");
#endif
#if defined(HV_PEER_FREETYPE)
    Register<FreeType>("FreeType");
#endif
#if defined(HV_PEER_AGG)
    Register<Agg>("AGG");
#endif
    Register<Hard>("Fill");
    Sizes<WriteAlone>("Star/WriteAlone", Star);
    Sizes<WriteAlone>("Circle/WriteAlone", Circle);
    Sizes<WriteAlone>("CoveredWholly/WriteAlone", Cover);
    Sizes<Soft<2>>("Circle/SoftFill2", Circle);
    Sizes<Soft<32>>("Circle/SoftFill32", Circle);
    Sizes<Soft<2>>("CoveredWholly/SoftFill2", Cover);
    Sizes<Soft<32>>("CoveredWholly/SoftFill32", Cover);
    benchmark::RegisterBenchmark("SolidPixel/SoftFill2", SolidPixel<Soft<2>>)->Arg(8192);
    benchmark::RegisterBenchmark("SolidPixel/SoftFill32", SolidPixel<Soft<32>>)->Arg(8192);
#if defined(HV_PEER_OPENCV)
    Sizes<OpenCv<2>>("Circle/OpenCV2", Circle);
    Sizes<OpenCv<32>>("Circle/OpenCV32", Circle);
#endif
    return true;
}();

}  // namespace
