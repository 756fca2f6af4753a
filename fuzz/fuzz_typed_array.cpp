// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Any sequence of edits of a typed array gives what the same edits of a std::vector give, arguments
// from within the array itself included.

#include <hv/foundation/HvDoubleArray.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

namespace {

constexpr unsigned int kMaxSize = 4096;  // inputs explore orders of edits, not memory

// Hands out the input byte by byte; beyond its end there are zeros.
class Bytes {
public:
    Bytes(std::uint8_t const* data, std::size_t size) : data_(data), left_(size) {}
    bool Empty() const { return left_ == 0; }
    unsigned int Next()
    {
        if (left_ == 0) {
            return 0;
        }
        --left_;
        return *data_++;
    }
    // A number from 0 to `limit` inclusive.
    unsigned int UpTo(unsigned int limit) { return (Next() * 256 + Next()) % (limit + 1); }

private:
    std::uint8_t const* data_;
    std::size_t left_;
};

void Step(Bytes& bytes, HvDoubleArray& array, std::vector<double>& model)
{
    unsigned int const size = array.Size();
    unsigned int const at = bytes.UpTo(size);
    auto const place = model.begin() + at;
    switch (bytes.Next() % 7) {
    case 0:
        array.Add(bytes.Next());
        model.push_back(array[size]);
        break;
    case 1:  // the tail of the array, added to the array itself
        if (size <= kMaxSize / 2) {
            std::vector<double> const tail(place, model.end());
            array.Add(array, at, size - at);
            model.insert(model.end(), tail.begin(), tail.end());
        }
        break;
    case 2:  // an own element in front of any element
        if (size > 0 && size < kMaxSize) {
            double const value = model[at % size];
            array.InsertBefore(at, array[at % size]);
            model.insert(place, value);
        }
        break;
    case 3:  // the whole array into itself
        if (size <= kMaxSize / 2) {
            std::vector<double> const all = model;
            array.InsertBefore(at, array);
            model.insert(place, all.begin(), all.end());
        }
        break;
    case 4:
        if (at < size) {
            unsigned int const last = at + bytes.UpTo(size - 1 - at);
            array.RemoveClosedRange(at, last);
            model.erase(place, model.begin() + last + 1);
        }
        break;
    case 5:
        array.Chop(at);
        model.resize(at);
        break;
    default:
        array.ChopAndResize(at);
        model.resize(at);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    Bytes bytes(data, size);
    HvDoubleArray array(bytes.Next() % 9);
    std::vector<double> model;
    while (!bytes.Empty()) {
        Step(bytes, array, model);
        if (array.Size() != model.size() || array.Capacity() < array.Size() ||
            !std::equal(model.begin(), model.end(), array.begin())) {
            std::abort();
        }
    }
    return 0;
}
