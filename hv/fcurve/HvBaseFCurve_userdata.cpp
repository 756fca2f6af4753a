// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// User data of a curve and of its keys: the locks around the record, which is made with the first
// data and goes with the last.

#include <hv/fcurve/HvBaseFCurve.h>
#include <hv/fcurve/internal/CFCUserData.h>
#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/foundation/byte_codec.h>

#include <memory>
#include <utility>

namespace {

// Applies `edit` to the record. A record that comes out without data is dropped, a new one that
// comes out with data is kept; when `edit` throws, `record` is as it was.
template <class Edit>
int EditRecord(CFCUserData*& record, Edit edit)
{
    if (record == nullptr) {
        std::unique_ptr<CFCUserData> created(new CFCUserData);
        int const done = edit(*created);
        if (!created->IsEmpty()) {
            record = created.release();
        }
        return done;
    }
    int const done = edit(*record);
    if (record->IsEmpty()) {
        delete record;
        record = nullptr;
    }
    return done;
}

// The same for an edit that only takes away: without a record there is nothing to find.
template <class Edit>
int EditExistingRecord(CFCUserData*& record, Edit edit)
{
    return record == nullptr ? 0 : EditRecord(record, edit);
}

int TellBlob(CFCUserDataSet const* set, _GUID const& guid, unsigned char const*& bytes,
             unsigned int& size)
{
    CFCUserDataValue const* const blob = set == nullptr ? nullptr : set->FindUserData(guid);
    if (blob == nullptr) {
        return 0;
    }
    bytes = blob->Bytes();
    size = blob->Size();
    return 1;
}

}  // namespace

// The record's own life.

CFCUserData* HvBaseFCurve::CloneUserDataRecord(CFCUserData const* record)
{
    return record == nullptr ? nullptr : new CFCUserData(*record);
}

void HvBaseFCurve::DeleteUserDataRecord(CFCUserData* record) noexcept
{
    delete record;
}

unsigned long HvBaseFCurve::DynamicMemSizeOfUserDataRecord(CFCUserData const* record)
{
    return record == nullptr ? 0 : XQGetDynamicMemSize(*record);
}

// Sets of keys.

int HvBaseFCurve::HasUserData() const
{
    HvCurveReader const lock(*this);
    return userData_ == nullptr ? 0 : 1;
}

int HvBaseFCurve::HasUserData(double parameter) const
{
    return GetUserDataSet(parameter) == nullptr ? 0 : 1;
}

CFCUserDataSet const* HvBaseFCurve::GetUserDataSet(double parameter) const
{
    HvCurveReader const lock(*this);
    return userData_ == nullptr ? nullptr : userData_->FindKeySet(parameter);
}

int HvBaseFCurve::SetUserDataSet(CFCUserDataSet const& set, double parameter)
{
    HvCurveWriter const lock(*this);
    return EditRecord(userData_,
                      [&](CFCUserData& record) { return record.SetKeySet(parameter, set); });
}

int HvBaseFCurve::RemoveKeyUserData(double parameter)
{
    HvCurveWriter const lock(*this);
    return EditExistingRecord(userData_,
                              [=](CFCUserData& record) { return record.RemoveKeySet(parameter); });
}

int HvBaseFCurve::RemoveAllKeyUserData()
{
    HvCurveWriter const lock(*this);
    EditExistingRecord(userData_, [](CFCUserData& record) {
        record.RemoveAllKeySets();
        return 1;
    });
    return 1;
}

// The curve's own blobs.

int HvBaseFCurve::SetFCurveUserData(_GUID const& guid, unsigned char const* bytes,
                                    unsigned int size)
{
    HvCurveWriter const lock(*this);
    return EditRecord(
        userData_, [&](CFCUserData& record) { return record.InsertCurveBlob(guid, bytes, size); });
}

int HvBaseFCurve::GetFCurveUserData(_GUID const& guid, unsigned char const*& bytes,
                                    unsigned int& size) const
{
    HvCurveReader const lock(*this);
    return userData_ == nullptr ? 0 : TellBlob(&userData_->CurveSet(), guid, bytes, size);
}

int HvBaseFCurve::RemoveFCurveUserData(_GUID const& guid)
{
    HvCurveWriter const lock(*this);
    return EditExistingRecord(userData_,
                              [&](CFCUserData& record) { return record.RemoveCurveBlob(guid); });
}

// Blobs of the key found within a tolerance.

int HvBaseFCurve::SetKeyUserData(double& parameter, _GUID const& guid, unsigned char const* bytes,
                                 unsigned int size, double tolerance)
{
    HvCurveWriter const lock(*this);
    double found = parameter;
    if (GetNearestKeyParameterInCenteredInterval(found, tolerance) == 0) {
        return 0;
    }
    int const done = EditRecord(userData_, [&](CFCUserData& record) {
        return record.InsertKeyBlob(found, guid, bytes, size);
    });
    if (done != 0) {
        parameter = found;
    }
    return done;
}

int HvBaseFCurve::GetKeyUserData(double& parameter, _GUID const& guid, unsigned char const*& bytes,
                                 unsigned int& size, double tolerance) const
{
    HvCurveReader const lock(*this);
    double found = parameter;
    if (userData_ == nullptr || GetNearestKeyParameterInCenteredInterval(found, tolerance) == 0 ||
        TellBlob(userData_->FindKeySet(found), guid, bytes, size) == 0) {
        return 0;
    }
    parameter = found;
    return 1;
}

int HvBaseFCurve::RemoveKeyUserData(double& parameter, _GUID const& guid, double tolerance)
{
    HvCurveWriter const lock(*this);
    double found = parameter;
    if (GetNearestKeyParameterInCenteredInterval(found, tolerance) == 0) {
        return 0;
    }
    int const done = EditExistingRecord(
        userData_, [&](CFCUserData& record) { return record.RemoveKeyBlob(found, guid); });
    if (done != 0) {
        parameter = found;
    }
    return done;
}

// Moving and copying.

int HvBaseFCurve::ScaleAllKeyUserData(double scale)
{
    HvCurveWriter const lock(*this);
    return userData_ == nullptr ? 1 : userData_->ScaleKeySets(scale);
}

int HvBaseFCurve::TranslateAllKeyUserData(double offset)
{
    HvCurveWriter const lock(*this);
    return userData_ == nullptr ? 1 : userData_->TranslateKeySets(offset);
}

int HvBaseFCurve::MoveKeyUserDataTail(HvDoubleArray const& from, HvDoubleArray const& to)
{
    HvCurveWriter const lock(*this);
    return userData_ == nullptr ? 1 : userData_->MoveKeySets(from, to);
}

int HvBaseFCurve::CopyKeyUserData(HvBaseFCurve const& other, double from, double to)
{
    HvCurveWriter const lock(*this);
    HvCurveReader const otherLock(other);
    CFCUserDataSet const* const set = other.GetUserDataSet(from);
    return set == nullptr ? 0 : SetUserDataSet(*set, to);
}

void HvBaseFCurve::ExchangeUserData(HvBaseFCurve& other)
{
    HvCurveWriter const lock(*this);
    HvCurveReader const otherLock(other);
    std::swap(userData_, other.userData_);
}

// The archive's block.

unsigned int HvBaseFCurve::GetUserDataBufferSize() const
{
    HvCurveReader const lock(*this);
    return userData_ == nullptr ? CFCUserData::kEmptyBlockSize : userData_->BlockSize();
}

unsigned int HvBaseFCurve::WriteUserDataToBuffer(void* buffer) const
{
    HvCurveReader const lock(*this);
    CFCUserData const none;
    HvByteWriter writer(buffer);
    (userData_ == nullptr ? none : *userData_).WriteBlock(writer);
    return static_cast<unsigned int>(writer.Used());
}

unsigned int HvBaseFCurve::ReadUserDataFromBufferBody(void const* body)
{
    HvByteReader reader = HvByteReader::Unbounded(body);
    return ReadUserDataBlockBody(reader) == 0 ? 0 : static_cast<unsigned int>(reader.Used());
}

int HvBaseFCurve::ReadUserDataBlockBody(HvByteReader& reader)
{
    HvCurveWriter const lock(*this);
    return EditRecord(userData_, [&](CFCUserData& record) { return record.ReadBlockBody(reader); });
}
