// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What the three rasters share.

#include <hv/raster/HvRasterGrid.h>

#include <hv/foundation/HvMemory.h>
#include <hv/raster/internal/raster_size.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace {

template <class T>
T* NewPixels(int width, int height)
{
    return static_cast<T*>(HvAllocate(HvRasterSize_Bytes<T>(width, height)));
}

template <class T>
T* CopyOf(HvRasterGrid<T> const& raster)
{
    T* const pixels = NewPixels<T>(raster.width, raster.height);
    if (raster.NumPixels() != 0) {
        std::memcpy(pixels, raster.data, raster.NumPixels() * sizeof(T));
    }
    return pixels;
}

/// Calls placeRow(to, from, count) for each row of the part of `source` that lies within `target`
/// when its corner is at (x, y).
template <class T, class PlaceRow>
void Place(HvRasterGrid<T>& target, std::int64_t x, std::int64_t y, HvRasterGrid<T> const& source,
           PlaceRow const& placeRow)
{
    std::int64_t const left = std::max<std::int64_t>(x, 0);
    std::int64_t const right = std::min<std::int64_t>(x + source.width, target.width);
    std::int64_t const top = std::max<std::int64_t>(y, 0);
    std::int64_t const bottom = std::min<std::int64_t>(y + source.height, target.height);
    if (left >= right) {
        return;
    }
    for (std::int64_t row = top; row < bottom; ++row) {
        placeRow(target.data + row * target.width + left,
                 source.data + (row - y) * source.width + (left - x),
                 static_cast<std::size_t>(right - left));
    }
}

}  // namespace

template <class T>
HvRasterGrid<T>::HvRasterGrid(int w, int h, T value)
    : width(std::max(w, 0)), height(std::max(h, 0)), data(NewPixels<T>(width, height))
{
    std::fill_n(data, NumPixels(), value);
}

template <class T>
HvRasterGrid<T>::HvRasterGrid(T* pixels, int w, int h, T value)
    : width(std::max(w, 0)), height(std::max(h, 0)), data(pixels)
{
    HvRasterSize_Bytes<T>(width, height);  // refuses what a raster of its own would refuse
    std::fill_n(data, NumPixels(), value);
}

template <class T>
HvRasterGrid<T>::HvRasterGrid(HvRasterGrid const& other)
    : width(other.width), height(other.height), data(CopyOf(other))
{
}

template <class T>
void HvRasterGrid<T>::Share(HvRasterGrid const& other)
{
    width = other.width;
    height = other.height;
    data = other.data;
}

template <class T>
T* HvRasterGrid<T>::ReplaceWithCopyOf(HvRasterGrid const& other)
{
    T* const pixels = CopyOf(other);
    T* const replaced = data;
    width = other.width;
    height = other.height;
    data = pixels;
    return replaced;
}

template <class T>
void HvRasterGrid<T>::CopyRaster(int x, int y, HvRasterGrid const& source)
{
    Place(*this, x, y, source, [](T* to, T const* from, std::size_t count) {
        std::memmove(to, from, count * sizeof(T));
    });
}

template <class T>
void HvRasterGrid<T>::SetValWhenSmaller(int x, int y, HvRasterGrid const& source)
{
    Place(*this, x, y, source, [](T* to, T const* from, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            to[i] = from[i] < to[i] ? from[i] : to[i];
        }
    });
}

template class HvRasterGrid<unsigned char>;
template class HvRasterGrid<float>;
template class HvRasterGrid<double>;
