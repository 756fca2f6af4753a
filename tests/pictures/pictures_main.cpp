// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Renders the pages and holds them against the pictures that are kept:
//
//     hv_pictures --kept tests/pictures --out FOLDER [--update] [PAGE...]
//
// A page that differs is told pixel by pixel, with the caption of the cell, and leaves PAGE.png and
// PAGE.difference.png in FOLDER; the program then ends with 1. With --update the kept pictures are
// replaced, after somebody has looked at both.

#include "PicturePage.h"
#include "picture_compare.h"
#include "picture_png.h"

#include <algorithm>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

namespace {

/// Pixels that are told one by one, for each page.
constexpr std::size_t kPixelsTold = 20;

struct Request {
    std::string kept;
    std::string out;
    bool isUpdate = false;
    std::vector<std::string> pages;
};

bool ReadArguments(int count, char** arguments, Request& request)
{
    for (int i = 1; i < count; ++i) {
        std::string const argument = arguments[i];
        if (argument == "--update") {
            request.isUpdate = true;
        } else if ((argument == "--kept" || argument == "--out") && i + 1 < count) {
            (argument == "--kept" ? request.kept : request.out) = arguments[++i];
        } else if (argument.compare(0, 1, "-") != 0) {
            request.pages.push_back(argument);
        } else {
            return false;
        }
    }
    return !request.kept.empty() && (request.isUpdate || !request.out.empty());
}

void Tell(PicturePage const& page, PictureDifference const& difference)
{
    std::cout << page.Name() << ": " << difference.pixels.size() << " of "
              << page.Picture().NumPixels() << " pixels differ, in columns " << difference.left
              << " to " << difference.right << " of rows " << difference.top << " to "
              << difference.bottom << ", by up to " << difference.worst << "\n";
    std::size_t const told = std::min(kPixelsTold, difference.pixels.size());
    for (std::size_t i = 0; i < told; ++i) {
        DifferentPixel const& pixel = difference.pixels[i];
        std::cout << "  (" << pixel.x << ", " << pixel.y << ") was " << pixel.before << ", is "
                  << pixel.now << ": " << page.CaptionAt(pixel.x, pixel.y) << "\n";
    }
    if (told < difference.pixels.size()) {
        std::cout << "  and " << difference.pixels.size() - told << " more\n";
    }
}

/// Whether the page is as it was kept.
bool Compare(PicturePage const& page, Request const& request)
{
    HvUByteRaster const kept = PicturePng_Read(request.kept + "/" + page.Name() + ".png");
    HvUByteRaster const& drawn = page.Picture();
    std::string const stem = request.out + "/" + page.Name();
    if (!Picture_IsSameSize(kept, drawn)) {
        std::cout << page.Name() << ": was " << kept.width << " x " << kept.height << ", is "
                  << drawn.width << " x " << drawn.height << " pixels\n";
        PicturePng_Write(stem + ".png", drawn);
        return false;
    }
    PictureDifference const difference = Picture_Compare(kept, drawn);
    if (difference.pixels.empty()) {
        std::cout << page.Name() << ": as kept\n";
        return true;
    }
    Tell(page, difference);
    PicturePng_Write(stem + ".png", drawn);
    PicturePng_WriteColours(stem + ".difference.png", kept.width, kept.height,
                            Picture_DifferenceColours(kept, drawn));
    std::cout << "  see " << stem << ".difference.png\n";
    return false;
}

int Run(Request const& request)
{
    bool isGood = true;
    std::size_t count = 0;
    for (auto const make :
         {StrokePage, SmoothStrokePage, FillPage, SoftFillPage, ShapePage, ScanPage, PenPage}) {
        PicturePage const page = make();
        if (!request.pages.empty() && std::find(request.pages.begin(), request.pages.end(),
                                                page.Name()) == request.pages.end()) {
            continue;
        }
        ++count;
        if (request.isUpdate) {
            PicturePng_Write(request.kept + "/" + page.Name() + ".png", page.Picture());
        } else if (!Compare(page, request)) {
            isGood = false;
        }
    }
    if (count < std::max<std::size_t>(request.pages.size(), 1)) {
        std::cerr << "hv_pictures: there is no page of that name\n";
        return 2;
    }
    return isGood ? 0 : 1;
}

}  // namespace

int main(int count, char** arguments)
{
    Request request;
    if (!ReadArguments(count, arguments, request)) {
        std::cerr << "hv_pictures --kept FOLDER --out FOLDER [--update] [PAGE...]\n";
        return 2;
    }
    try {
        return Run(request);
    } catch (std::exception const& error) {
        std::cerr << "hv_pictures: " << error.what() << "\n";
        return 2;
    }
}
