#include <zt/memory/BlobSet.h>

#include <zt/memory/detail/BlockBytes.h>

#include <algorithm>
#include <cstdint>

template class Collections::ElementArray<ZT::HXBlob, ZT::HXBlob>;
template class CArray<ZT::HXBlob, ZT::HXBlob>;

namespace ZT {

namespace {

// An address `n` bytes further on, also where no block is.
unsigned char* Shifted(unsigned char* p, ulong n) {
    return reinterpret_cast<unsigned char*>(reinterpret_cast<std::uintptr_t>(p) + n);
}

}  // namespace

BlobSetPtr::~BlobSetPtr() = default;

BlobSet::~BlobSet() = default;

// The number of blobs; a damaged one raises the exception of an index that is out of bounds.
INT_PTR BlobSet::Count() const {
    if (m_nSize < 0) AfxThrowInvalidArgException();
    return m_nSize;
}

const HXBlob& BlobSet::At(INT_PTR i) const {
    if (i < 0 || i >= Count()) AfxThrowInvalidArgException();
    return m_pData[i];
}

BlobSetPtr BlobSet::StartOf(INT_PTR i) const {
    return BlobSetPtr(At(i).m_pData, static_cast<int>(i));
}

ulong BlobSet::GetLength() const {
    ulong length = 0;
    const INT_PTR count = Count();
    for (INT_PTR i = 0; i < count; ++i) length += m_pData[i].m_nSize;
    return length;
}

bool BlobSet::SetLength(ulong n) {
    const ulong length = GetLength();
    if (length >= n) return false;
    HXBlob tail(n - length);
    // The set's copy does not free the block; this one does, if the set has no room for it.
    tail.m_bAutoDelete = true;
    SetAtGrow(Count(), tail);
    tail.m_bAutoDelete = false;
    return true;
}

unsigned char* BlobSet::GetData() const {
    return Count() == 0 ? nullptr : m_pData->m_pData;
}

bool BlobSet::IsValid() const {
    return std::all_of(m_pData, m_pData + Count(),
                       [](const HXBlob& blob) { return blob.IsValid(); });
}

void BlobSet::Reset() {
    std::fill_n(m_pData, Count(), HXBlob());
}

void BlobSet::CopyTo(HXBlob& dst) const {
    if (!dst.m_pData) return;
    unsigned char* to = dst.m_pData;
    const INT_PTR count = Count();
    for (INT_PTR i = 0; i < count; ++i) {
        m_pData[i].HXBlob::CopyDataTo(to);
        to += m_pData[i].m_nSize;
    }
}

HXBlob BlobSet::GetMergedBlob() const {
    ulong length = 0;
    const INT_PTR count = Count();
    for (INT_PTR i = 0; i < count; ++i) length = memory::Total(length, m_pData[i].m_nSize);
    HXBlob merged(length);
    CopyTo(merged);
    return merged;
}

unsigned char* BlobSet::GetPointer(ulong pos) const {
    ulong rest = pos;
    const INT_PTR count = Count();
    for (INT_PTR i = 0; i < count; ++i) {
        if (unsigned char* const p = m_pData[i].GetPointer(rest)) return p;
        // Not guarded, deliberately: a blob without a block can make it wrap.
        rest -= m_pData[i].m_nSize;
    }
    return nullptr;
}

ulong BlobSet::GetPosition(const unsigned char* p) const {
    ulong before = 0;
    const INT_PTR count = Count();
    for (INT_PTR i = 0; i < count; ++i) {
        if (m_pData[i].In(p)) return before + m_pData[i].GetOffset(p);
        before += m_pData[i].m_nSize;
    }
    return 0xFFFFFFFF;
}

unsigned char* BlobSet::IncrementPointer(const unsigned char* p, ulong n) const {
    return GetPointer(GetPosition(p) + n);
}

int BlobSet::FindBlob(const unsigned char* p, int iFirst) const {
    if (iFirst < 0) AfxThrowInvalidArgException();
    const INT_PTR count = Count();
    for (INT_PTR i = iFirst; i < count; ++i)
        if (m_pData[i].In(p)) return static_cast<int>(i);
    return -1;
}

bool BlobSet::IsValid(const BlobSetPtr& p) const {
    return p.m_pPos && At(p.m_nBlob).In(p.m_pPos);
}

BlobSetPtr BlobSet::GetHead() const {
    return StartOf(0);
}

bool BlobSet::GetNextBlob(BlobSetPtr& p) const {
    const bool another = p.m_nBlob < Count() - 1;
    p = another ? StartOf(INT_PTR{p.m_nBlob} + 1) : BlobSetPtr(nullptr, -1);
    return another;
}

bool BlobSet::Increment(BlobSetPtr& p, ulong n) const {
    BlobSetPtr at = p;
    for (ulong left = n;;) {
        const ulong rest = At(at.m_nBlob).GetLength(at.m_pPos);
        if (rest > left) {
            p = BlobSetPtr(Shifted(at.m_pPos, left), at.m_nBlob);
            return true;
        }
        if (at.m_nBlob == GetUpperBound()) break;
        at = StartOf(INT_PTR{at.m_nBlob} + 1);
        left -= rest;
    }
    p.m_pPos = nullptr;
    // The index stays when the walk did not get out of the last blob, deliberately.
    if (p.m_nBlob != GetUpperBound()) p.m_nBlob = -1;
    return false;
}

}  // namespace ZT
