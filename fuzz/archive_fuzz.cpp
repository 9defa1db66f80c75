// Loads any bytes as each kind of binary record, the first byte telling which. What was loaded
// is read whole and stored again, and what is stored must load as the same.

#include <tests/FailingNew.h>

#include <platform/files/CArchive.h>
#include <platform/files/CMemFile.h>
#include <platform/object/CException.h>
#include <zt/memory/BlobSet.h>
#include <zt/memory/HXBlob.h>
#include <zt/ranges/RangeMulti.h>
#include <zt/ranges/RangeR1.h>
#include <zt/ranges/RangeS1.h>
#include <zt/ranges/SetR1.h>

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace ZT {
namespace {

/// No record of a few kilobytes may claim a greater array.
constexpr std::size_t kGreatestArray = std::size_t{1} << 24;

/// Loads `record` from `bytes`; false if the archive refuses it.
template <class Record>
bool Loads(Record& record, std::string bytes) {
    CMemFile file(reinterpret_cast<BYTE*>(bytes.data()), static_cast<UINT>(bytes.size()));
    CArchive ar(&file, CArchive::load);
    try {
        record.Serialize(ar);
    } catch (CException* e) {
        e->Delete();
        return false;
    }
    return true;
}

template <class Record>
std::string Stored(Record& record) {
    CMemFile file;
    CArchive ar(&file, CArchive::store);
    record.Serialize(ar);
    ar.Close();
    std::string bytes(file.GetLength(), 0);
    file.SeekToBegin();
    file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    return bytes;
}

/// Every byte that the record says it has.
unsigned Read(const RangeR1& range) {
    return range.IsEmpty();
}

unsigned Read(SetR1& set) {
    unsigned sum = 0;
    for (const RangeR1& range : set) sum += Read(range);
    return sum;
}

unsigned Read(RangeMulti& list) {
    unsigned sum = 0;
    for (int i = 0; i < list.GetCount(); ++i) sum += Read(list[i]);
    return sum;
}

unsigned Read(const HXBlob& blob) {
    unsigned sum = 0;
    for (ulong i = 0; i < blob.m_nSize; ++i) sum += *blob.GetPointer(i);
    return sum;
}

unsigned Read(BlobSet& set) {
    HXBlob merged = set.GetMergedBlob();
    const unsigned sum = Read(merged);
    merged.Delete();
    BlobSetPtr p;
    for (bool more = set.GetSize() > 0; more; more = set.GetNextBlob(p)) set.IsValid(p);
    return sum;
}

/// Ends what the record does not end itself.
template <class Record>
void End(Record&) {}
template <>
void End(HXBlob& blob) {
    blob.Delete();
}

template <class Record>
void LoadAndStore(const std::string& bytes) {
    Record record;
    if (Loads(record, bytes)) {
        volatile unsigned sink = Read(record);
        static_cast<void>(sink);
        const std::string stored = Stored(record);
        Record again;
        if (!Loads(again, stored) || Stored(again) != stored) std::abort();
        End(again);
    }
    End(record);
}

constexpr std::array kKinds = {LoadAndStore<RangeR1>, LoadAndStore<RangeS1>,
                               LoadAndStore<HXBlob>,  LoadAndStore<BlobSet>,
                               LoadAndStore<SetR1>,   LoadAndStore<RangeMulti>};

}  // namespace
}  // namespace ZT

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const testing_support::NoMemory limit(ZT::kGreatestArray);
    ZT::kKinds[*data % ZT::kKinds.size()](
        std::string(reinterpret_cast<const char*>(data + 1), size - 1));
    return 0;
}
