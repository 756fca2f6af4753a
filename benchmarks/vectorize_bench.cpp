// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// How long does it take to turn pixels into outlines, and how long do others take?
//
// Square images of the given side: single pixels at random, one in a hundred; lines of text-like
// blobs; one large region with a wavy border and a thousand holes; a checkerboard, where every
// other pixel is a region, the worst case; combs whose teeth rise or fall to the right, so that
// regions join at each tooth. "Trace" tells contours to callbacks that count them, "Vectorize"
// writes them into a new path, "Fit" fits cubics within half a pixel. FindContours is OpenCV's, all
// points kept, with outer contours and holes; PotraceDecompose is the first stage of potrace, all
// paths found and dropped as too small. They get the image in the form that they take: potrace has
// eight pixels in a byte. Floors tell what parts of the way cost by themselves. No vectorizer can
// do without "ReadPixels", which looks at every byte of the image, and "WritePoints", which appends
// the outlines, known beforehand, to a new path. No sweep over runs can do without "FindRuns",
// which finds the runs in an image of bits, and "MatchRuns", which also asks of each whether it
// touches one in the row above.

#include <hv/raster/HvUByteRaster.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvPath2f.h>
#include <hv/shape/HvPath2fIter.h>
#include <hv/vectorize/HvVectorizer.h>
#include <hv/vectorize/ObContext.h>
#include <hv/vectorize/ObVectorize.h>

#include <benchmark/benchmark.h>

#if defined(HV_PEER_OPENCV)
#include <opencv2/imgproc.hpp>
#endif
#if defined(HV_PEER_POTRACE)
#include <potracelib.h>
#endif

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr unsigned char kInk = 255;

// --- images -------------------------------------------------------------------------------------

HvUByteRaster Noise(int side)
{
    std::mt19937 engine(1);
    HvUByteRaster image(side, side, 0);
    for (std::size_t i = 0; i < image.NumPixels(); ++i) {
        image.data[i] = engine() % 100 == 0 ? kInk : 0;
    }
    return image;
}

void Disc(HvUByteRaster& image, double cx, double cy, double radius, unsigned char value)
{
    int const x0 = static_cast<int>(cx - radius);
    int const y0 = static_cast<int>(cy - radius);
    int const size = static_cast<int>(2 * radius) + 2;
    for (int y = y0; y < y0 + size; ++y) {
        for (int x = x0; x < x0 + size; ++x) {
            if (std::hypot(x - cx, y - cy) < radius && x >= 0 && y >= 0 && x < image.width &&
                y < image.height) {
                image.data[y * image.width + x] = value;
            }
        }
    }
}

/// Letters of 20 pixels, each some round strokes, some with a counter.
HvUByteRaster Text(int side)
{
    std::mt19937 engine(2);
    std::uniform_real_distribution<double> place(4, 12);
    HvUByteRaster image(side, side, 0);
    for (int y = 8; y + 20 < side; y += 30) {
        for (int x = 8; x + 16 < side; x += 18) {
            if (engine() % 6 == 0) {
                continue;  // a space
            }
            double const cx = x + place(engine);
            double const cy = y + place(engine);
            Disc(image, cx, cy, 5, kInk);
            Disc(image, x + place(engine), y + place(engine), 3, kInk);
            Disc(image, x + 3, y + 14, 3, kInk);
            if (engine() % 2 == 0) {
                Disc(image, cx, cy, 2.5, 0);
            }
        }
    }
    return image;
}

HvUByteRaster OneRegion(int side)
{
    std::mt19937 engine(3);
    HvUByteRaster image(side, side, 0);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            double const dx = x - 0.5 * side;
            double const dy = y - 0.5 * side;
            double const border = side * (0.42 + 0.05 * std::sin(31 * std::atan2(dy, dx)));
            image.data[y * side + x] = std::hypot(dx, dy) < border ? kInk : 0;
        }
    }
    std::uniform_real_distribution<double> place(0.25 * side, 0.75 * side);
    for (int i = 0; i < 1000; ++i) {
        double const x = place(engine);
        Disc(image, x, place(engine), side / 400.0, 0);
    }
    return image;
}

HvUByteRaster Checkerboard(int side)
{
    HvUByteRaster image(side, side, 0);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            image.data[y * side + x] = (x + y) % 2 == 0 ? kInk : 0;
        }
    }
    return image;
}

/// Teeth every other column, each joined with the one to its left in its own second row.
HvUByteRaster Comb(int side, bool isRising)
{
    HvUByteRaster image(side, side, 0);
    int const teeth = side / 2;
    for (int tooth = 0; tooth < teeth; ++tooth) {
        int const top = 2 * (isRising ? teeth - 1 - tooth : tooth);
        for (int y = top; y < side; ++y) {
            image.data[y * side + 2 * tooth] = kInk;
        }
        int const joint = isRising ? top + 3 : top + 1;
        if (tooth > 0 && joint < side) {
            image.data[joint * side + 2 * tooth - 1] = kInk;
        }
    }
    return image;
}

HvUByteRaster RisingComb(int side)
{
    return Comb(side, true);
}

HvUByteRaster FallingComb(int side)
{
    return Comb(side, false);
}

// --- who traces ---------------------------------------------------------------------------------

struct Trace {
    HvUByteRaster const& image;
    std::vector<unsigned short> rows[3];
    explicit Trace(HvUByteRaster const& raster) : image(raster)
    {
        for (auto& row : rows) {
            row.resize(static_cast<std::size_t>(raster.width / 2 * 2 + 4));
        }
    }
    std::size_t Run()
    {
        std::size_t points = 0;
        ObContext context = {};
        context.begin = [](void*, HvUByteRaster const&, unsigned char, HvExtent2<float> const&) {};
        context.beginRegion = context.endRegion = context.end = [](void*) {};
        context.moveto =
            context.lineto = [](int, int, void* user) { ++*static_cast<std::size_t*>(user); };
        context.user = &points;
        for (int i = 0; i < 3; ++i) {
            context.rows[i] = rows[i].data();
        }
        ObVectorize(context, image, kInk, HvExtent2<float>());
        return points;
    }
};

struct Vectorize {
    HvUByteRaster const& image;
    HvVectorizer vectorizer{0, 0};
    explicit Vectorize(HvUByteRaster const& raster) : image(raster) {}
    std::size_t Run()
    {
        HvPath2f path(0);
        return vectorizer.Vectorize(image, kInk, HvExtent2<float>(), path);
    }
};

struct Fit {
    HvUByteRaster const& image;
    HvVectorizer vectorizer{0, 0};
    HvGC gc;
    explicit Fit(HvUByteRaster const& raster) : image(raster) { gc.flatness = 0.5; }
    std::size_t Run()
    {
        HvPath2f path(0);
        return vectorizer.VectorizeAndFit(image, kInk, HvExtent2<float>(), gc, path);
    }
};

struct ReadPixels {
    HvUByteRaster const& image;
    explicit ReadPixels(HvUByteRaster const& raster) : image(raster) {}
    std::size_t Run()
    {
        // A value that no pixel has.
        return std::memchr(image.data, 1, image.NumPixels()) == nullptr ? 1 : 0;
    }
};

/// Rows as lists of columns, where a run begins and behind its end; two of kNoColumn end a list.
/// The image, as wide as a multiple of 64, comes as bits: to read its bytes costs ReadPixels.
struct FindRuns {
    static constexpr unsigned short kNoColumn = 65535;
    int height;
    int wordsPerRow;
    std::vector<std::uint64_t> words;
    std::vector<unsigned short> row;
    explicit FindRuns(HvUByteRaster const& raster)
        : height(raster.height), wordsPerRow(raster.width / 64), words(raster.NumPixels() / 64),
          row(static_cast<std::size_t>(raster.width) + 3, kNoColumn)
    {
        for (std::size_t i = 0; i < raster.NumPixels(); ++i) {
            words[i / 64] |= static_cast<std::uint64_t>(raster.data[i] == kInk) << i % 64;
        }
    }
    void FindRow(int y)
    {
        unsigned short* column = row.data();
        std::uint64_t last = 0;  // the pixel before, 0 or 1
        for (int i = 0; i < wordsPerRow; ++i) {
            std::uint64_t const word = words[static_cast<std::size_t>(y * wordsPerRow + i)];
            for (std::uint64_t turns = word ^ (word << 1 | last); turns != 0; turns &= turns - 1) {
                *column++ = static_cast<unsigned short>(64 * i + __builtin_ctzll(turns));
            }
            last = word >> 63;
        }
        *column = static_cast<unsigned short>(64 * wordsPerRow);
        column += last;
        column[0] = column[1] = kNoColumn;
    }
    std::size_t Run()
    {
        std::size_t sum = 0;
        for (int y = 0; y < height; ++y) {
            FindRow(y);
            sum += row[0];
        }
        return sum;
    }
};

struct MatchRuns {
    FindRuns current;
    std::vector<unsigned short> above;
    explicit MatchRuns(HvUByteRaster const& raster)
        : current(raster), above(current.row.size(), FindRuns::kNoColumn)
    {
    }
    std::size_t Run()
    {
        std::size_t touching = 0;
        for (int y = 0; y < current.height; ++y) {
            current.FindRow(y);
            unsigned short const* other = above.data();
            for (unsigned short const* run = current.row.data(); *run != FindRuns::kNoColumn;
                 run += 2) {
                while (other[1] <= run[0]) {
                    other += 2;
                }
                touching += other[0] < run[1] ? 1 : 0;
            }
            std::swap(current.row, above);
        }
        return touching;
    }
};

struct WritePoints {
    std::vector<HvPoint2<float>> points;
    std::vector<unsigned int> sizes;
    explicit WritePoints(HvUByteRaster const& raster)
    {
        HvPath2f path(0);
        HvVectorizer(0, 0).Vectorize(raster, kInk, HvExtent2<float>(), path);
        HvPath2fIter subpaths(path);
        unsigned int first = 0;
        unsigned int last = 0;
        while (subpaths.GetNextSubPathIndices(first, last) != 0) {
            sizes.push_back(last - first + 1);
        }
        points.resize(path.NumPoints());
        path.GetPoints(0, path.NumPoints() - 1, points.data());
    }
    std::size_t Run()
    {
        HvPath2f path(0);
        path.AppendPolylines(points.data(), sizes.data(), static_cast<unsigned int>(sizes.size()));
        return path.NumPoints();
    }
};

#if defined(HV_PEER_OPENCV)
struct FindContours {
    cv::Mat image;
    explicit FindContours(HvUByteRaster const& raster)
        : image(raster.height, raster.width, CV_8UC1, raster.data)
    {
        cv::setNumThreads(1);
    }
    std::size_t Run()
    {
        std::vector<std::vector<cv::Point>> contours;
        std::vector<cv::Vec4i> hierarchy;
        cv::findContours(image, contours, hierarchy, cv::RETR_CCOMP, cv::CHAIN_APPROX_NONE);
        return contours.size();
    }
};
#endif

#if defined(HV_PEER_POTRACE)
struct PotraceDecompose {
    std::vector<potrace_word> words;
    potrace_bitmap_t bitmap;
    std::unique_ptr<potrace_param_t, void (*)(potrace_param_t*)> parameters;
    explicit PotraceDecompose(HvUByteRaster const& raster)
        : parameters(potrace_param_default(), potrace_param_free)
    {
        constexpr int kBits = 8 * sizeof(potrace_word);
        int const perRow = (raster.width + kBits - 1) / kBits;
        words.resize(static_cast<std::size_t>(perRow) * static_cast<std::size_t>(raster.height));
        for (int y = 0; y < raster.height; ++y) {
            for (int x = 0; x < raster.width; ++x) {
                if (raster.data[y * raster.width + x] == kInk) {
                    words[static_cast<std::size_t>(y * perRow + x / kBits)] |=
                        potrace_word(1) << (kBits - 1 - x % kBits);
                }
            }
        }
        bitmap = {raster.width, raster.height, perRow, words.data()};
        // No path is as large, so nothing but the decomposition is done.
        parameters->turdsize = std::numeric_limits<int>::max();
    }
    std::size_t Run()
    {
        potrace_state_t* const state = potrace_trace(parameters.get(), &bitmap);
        std::size_t const isDone = state->status == POTRACE_STATUS_OK;
        potrace_state_free(state);
        return isDone;
    }
};
#endif

// --- measuring ----------------------------------------------------------------------------------

template <class Tracer>
void One(benchmark::State& state, HvUByteRaster (*make)(int))
{
    HvUByteRaster const image = make(static_cast<int>(state.range(0)));
    Tracer tracer(image);
    for (auto _ : state) {
        benchmark::DoNotOptimize(tracer.Run());
    }
    double const pixels =
        static_cast<double>(state.iterations()) * static_cast<double>(image.NumPixels());
    state.counters["pixels/s"] = benchmark::Counter(pixels, benchmark::Counter::kIsRate);
}

/// @param mostCheckers  largest side of the checkerboard, of which others make so many contours
/// that
///                      their time grows with the square of the pixels.
template <class Tracer>
void Register(std::string const& tracer, int mostCheckers = 4096)
{
    struct Image {
        char const* name;
        HvUByteRaster (*make)(int);
    };
    for (Image const& image :
         {Image{"Noise", Noise}, Image{"Text", Text}, Image{"OneRegion", OneRegion},
          Image{"Checkerboard", Checkerboard}, Image{"RisingComb", RisingComb},
          Image{"FallingComb", FallingComb}}) {
        int const most = image.make == Checkerboard ? mostCheckers : 4096;
        benchmark::RegisterBenchmark((image.name + ("/" + tracer)).c_str(), One<Tracer>, image.make)
            ->RangeMultiplier(2)
            ->Range(512, most)
            ->Unit(benchmark::kMillisecond);
    }
}

bool const isRegistered = [] {
    Register<Trace>("Trace");
    Register<Vectorize>("Vectorize");
    Register<ReadPixels>("ReadPixels");
    Register<FindRuns>("FindRuns");
    Register<MatchRuns>("MatchRuns");
    Register<WritePoints>("WritePoints");
#if defined(HV_PEER_OPENCV)
    Register<FindContours>("FindContours", 512);
#endif
#if defined(HV_PEER_POTRACE)
    Register<PotraceDecompose>("PotraceDecompose", 512);
#endif
    benchmark::RegisterBenchmark("Text/Fit", One<Fit>, Text)
        ->Arg(512)
        ->Arg(2048)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("OneRegion/Fit", One<Fit>, OneRegion)
        ->Arg(512)
        ->Arg(2048)
        ->Unit(benchmark::kMillisecond);
    return true;
}();

}  // namespace
