// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The transform applied: vectors of four, arrays of points, extents.

#include <hv/rotation/HvTransfo4.h>

void HvTransfo4::Map(double const* in, double* out) const
{
    double const x = in[0];
    double const y = in[1];
    double const z = in[2];
    double const w = in[3];
    out[0] = m[0] * x + m[4] * y + m[8] * z + m[12] * w;
    out[1] = m[1] * x + m[5] * y + m[9] * z + m[13] * w;
    out[2] = m[2] * x + m[6] * y + m[10] * z + m[14] * w;
    out[3] = m[3] * x + m[7] * y + m[11] * z + m[15] * w;
}

template <class T>
void HvTransfo4::Map(HvPoint3<T> const* in, unsigned int n, HvPoint3<T>* out) const
{
    for (unsigned int i = 0; i < n; ++i) {
        out[i] = Map(in[i]);
    }
}

template <class T>
void HvTransfo4::MapInPlace(HvPoint3<T>* points, unsigned int n) const
{
    Map(points, n, points);
}

template <class T>
void HvTransfo4::Map(HvPoint2<T> const* in, unsigned int n, HvPoint2<T>* out) const
{
    for (unsigned int i = 0; i < n; ++i) {
        out[i] = Map(in[i]);
    }
}

template <class T>
void HvTransfo4::MapInPlace(HvPoint2<T>* points, unsigned int n) const
{
    Map(points, n, points);
}

template <class T>
HvExtent2<T> HvTransfo4::Map(HvExtent2<T> const& extent) const
{
    if (extent.state != HvExtent2<T>::Ordinary) {
        return extent;
    }
    HvExtent2<T> image;
    image.Augment(Map(extent.min));
    image.Augment(Map(HvPoint2<T>(extent.max.x, extent.min.y)));
    image.Augment(Map(HvPoint2<T>(extent.min.x, extent.max.y)));
    image.Augment(Map(extent.max));
    return image;
}

template <class T>
void HvTransfo4::Map(HvExtent2<T> const& in, HvExtent2<T>& out) const
{
    out = Map(in);
}

template <class T>
void HvTransfo4::MapInPlace(HvExtent2<T>& extent) const
{
    extent = Map(extent);
}

template HV_API void HvTransfo4::Map(HvPoint3<double> const*, unsigned int,
                                     HvPoint3<double>*) const;
template HV_API void HvTransfo4::Map(HvPoint3<float> const*, unsigned int, HvPoint3<float>*) const;
template HV_API void HvTransfo4::MapInPlace(HvPoint3<double>*, unsigned int) const;
template HV_API void HvTransfo4::MapInPlace(HvPoint3<float>*, unsigned int) const;
template HV_API void HvTransfo4::Map(HvPoint2<double> const*, unsigned int,
                                     HvPoint2<double>*) const;
template HV_API void HvTransfo4::Map(HvPoint2<float> const*, unsigned int, HvPoint2<float>*) const;
template HV_API void HvTransfo4::MapInPlace(HvPoint2<double>*, unsigned int) const;
template HV_API void HvTransfo4::MapInPlace(HvPoint2<float>*, unsigned int) const;
template HV_API HvExtent2<double> HvTransfo4::Map(HvExtent2<double> const&) const;
template HV_API HvExtent2<float> HvTransfo4::Map(HvExtent2<float> const&) const;
template HV_API void HvTransfo4::Map(HvExtent2<double> const&, HvExtent2<double>&) const;
template HV_API void HvTransfo4::Map(HvExtent2<float> const&, HvExtent2<float>&) const;
template HV_API void HvTransfo4::MapInPlace(HvExtent2<double>&) const;
template HV_API void HvTransfo4::MapInPlace(HvExtent2<float>&) const;
