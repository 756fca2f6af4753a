// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Any bytes, read as the body of a user-data block, are refused with the record as it was, or give
// a record that writes itself and reads back the same.

#include <hv/fcurve/internal/CFCUserData.h>
#include <hv/foundation/byte_codec.h>

#include <cstdint>
#include <cstdlib>
#include <vector>

namespace {

std::vector<unsigned char> Block(CFCUserData const& data)
{
    std::vector<unsigned char> block(data.BlockSize());
    HvByteWriter writer(block.data());
    data.WriteBlock(writer);
    return block;
}

void Require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    CFCUserData record;
    record.InsertKeyBlob(1.0, _GUID{}, nullptr, 0);
    std::vector<unsigned char> const before = Block(record);
    HvByteReader reader(data, size);
    if (record.ReadBlockBody(reader) == 0) {
        Require(Block(record) == before);
        return 0;
    }
    std::vector<unsigned char> const written = Block(record);
    Require(written.size() <= size + 4);
    CFCUserData again;
    HvByteReader writtenReader(written.data() + 4, written.size() - 4);
    Require(again.ReadBlockBody(writtenReader) != 0);
    Require(writtenReader.Left() == 0);
    Require(Block(again) == written);
    return 0;
}
