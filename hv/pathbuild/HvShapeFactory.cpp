// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Shapes from their archives: the kind decides which shape is made, and that reads itself.

#include <hv/pathbuild/HvShapeFactory.h>

#include <hv/foundation/archive_envelope.h>
#include <hv/pathbuild/HvPath2fProp1d.h>
#include <hv/shape/HvOval2f.h>
#include <hv/shape/HvRect2f.h>
#include <hv/shape/HvShapeArchive.h>

#include <memory>

namespace {

/// Makes an empty shape of a kind and calls `read(shape)`, which returns the bytes used; hands the
/// shape out unless that is 0. Null for no kind.
template <class Read>
HvShape2f* Create(HvShape2f::Kind kind, unsigned int& used, Read read)
{
    auto const readInto = [&](auto shape) -> HvShape2f* {
        used = read(*shape);
        return used == 0 ? nullptr : shape.release();
    };
    switch (kind) {
    case HvShape2f::Path:
        return readInto(std::make_unique<HvPath2f>(1u));
    case HvShape2f::Rect:
        return readInto(std::make_unique<HvRect2f>());
    case HvShape2f::Oval:
        return readInto(std::make_unique<HvOval2f>());
    case HvShape2f::PathProp1d:
        return readInto(std::make_unique<HvPath2fProp1d>(1u));
    case HvShape2f::NoShape:
        break;
    }
    used = 0;
    return nullptr;
}

}  // namespace

HvShape2f* HvShape2f_CreateFromBufferBody(void const* body, unsigned int& consumed)
{
    consumed = 0;
    try {
        return Create(HvShape2f_GetKindFromBufferBody(body), consumed,
                      [body](auto& shape) { return shape.ReadFromBufferBody(body); });
    } catch (...) {
        consumed = 0;
        return nullptr;
    }
}

unsigned int HvShape2f_CreateFromBuffer(void const* buffer, std::size_t size, HvShape2f** shape)
{
    HvArchiveFault unasked;
    return HvShape2f_CreateFromBuffer(buffer, size, shape, unasked);
}

unsigned int HvShape2f_CreateFromBuffer(void const* buffer, std::size_t size, HvShape2f** shape,
                                        HvArchiveFault& fault)
{
    if (shape == nullptr) {
        return 0;
    }
    *shape = nullptr;
    if (buffer == nullptr) {
        return 0;
    }
    return HvArchive_ReadBounded(buffer, size, fault, [shape](HvByteReader& body) {
        HvByteReader ahead = body;
        unsigned char const* const kind = ahead.ReadBytes(2);
        if (kind == nullptr) {
            body.FailAs(ahead);
            return 0u;
        }
        unsigned int used = 0;
        *shape = Create(HvShape2f_GetKindFromBufferBody(kind), used,
                        [&body](auto& read) { return read.ReadArchiveBody(body); });
        if (used == 0) {
            body.Fail("there is no such kind of shape");
        }
        return used;
    });
}
