#include <zt/memory/HXBlob.h>

#include <platform/com/SafeArray.h>
#include <platform/files/CArchive.h>
#include <platform/object/Allocation.h>
#include <zt/containers/HXBitArray.h>
#include <zt/memory/detail/BlockBytes.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <memory>

namespace ZT {

using memory::CopyBytes;
using memory::NewBytes;

namespace {

// A lock on an array that ends with it, unless it was ended before.
class ArrayLock {
public:
    explicit ArrayLock(SAFEARRAY* array)
        : m_array(SUCCEEDED(SafeArrayLock(array)) ? array : nullptr) {}
    ArrayLock(const ArrayLock&) = delete;
    ArrayLock& operator=(const ArrayLock&) = delete;
    ~ArrayLock() { End(); }

    bool Holds() const { return m_array; }

    bool End() {
        SAFEARRAY* const array = std::exchange(m_array, nullptr);
        return array && SUCCEEDED(SafeArrayUnlock(array));
    }

private:
    SAFEARRAY* m_array;
};

bool IsRowOfBytes(const SAFEARRAY* array) {
    return array && array->cDims == 1 && array->cbElements == 1;
}

}  // namespace

HXBlob::HXBlob(ulong n) : HXBlob() {
    Renew(n);
    std::fill_n(m_pData, n, static_cast<unsigned char>(0));
}

HXBlob::HXBlob(const unsigned char* p, ulong n, bool) : HXBlob() {
    Renew(n);
    CopyData(p);
}

HXBlob::HXBlob(const char* hex) : HXBlob() {
    StringToBinary(hex);
}

HXBlob::HXBlob(const CString& s) : HXBlob() {
    Renew(static_cast<ulong>(s.GetLength()) + 1);
    CopyBytes(m_pData, s.GetString(), m_nSize);
}

HXBlob::~HXBlob() {
    if (m_bAutoDelete) delete[] m_pData;
}

ulong HXBlob::GetSize() {
    return m_nSize;
}

// Frees the block and takes one of `n` bytes, none for 0. The old one is gone first, so that
// both need not fit into memory at once.
void HXBlob::Renew(ulong n) {
    delete[] Reset();
    if (n == 0) return;
    m_pData = NewBytes(n);
    m_nSize = n;
}

// The growth rule; whether the block is a new one.
bool HXBlob::Grow(ulong n) {
    if (n > m_nSize && m_nSize != 0) delete[] Reset();
    // A block of size 0 stays, deliberately, whatever its real size.
    const bool fresh = !m_pData;
    if (fresh) {
        m_nSize = 0;
        m_pData = NewBytes(n);
    }
    m_nSize = n;
    return fresh;
}

void HXBlob::Allocate() {
    Renew(m_nSize);
}

// Copies the bytes at `p`; without them, a fresh block is all zeros.
void HXBlob::Fill(const unsigned char* p, bool fresh) {
    if (fresh && !p) std::fill_n(m_pData, m_nSize, static_cast<unsigned char>(0));
    CopyData(p);
}

void HXBlob::SetSize(ulong n) {
    Grow(n);
}

void HXBlob::Delete() {
    // Without a size the block is dropped, deliberately.
    if (m_nSize != 0) delete[] m_pData;
    Reset();
}

void HXBlob::Set(const char* s) {
    if (!s) return;
    // The text may stand in the block that it replaces.
    const ulong n = memory::Total(std::strlen(s), std::size_t{1});
    unsigned char* const block = NewBytes(n);
    std::memcpy(block, s, n);
    delete[] m_pData;
    m_pData = block;
    m_nSize = n;
}

void HXBlob::Copy2(const HXBlob& o) {
    const HXBlob source = o;
    const bool fresh = Grow(source.m_nSize);
    Fill(source.m_pData, fresh);
}

void HXBlob::Copy(const HXBlob& o) {
    const HXBlob source = o;
    // No growth rule, deliberately: the caller picks this or Copy2.
    const bool fresh = !m_pData;
    if (fresh) m_pData = NewBytes(source.m_nSize);
    m_nSize = source.m_nSize;
    Fill(source.m_pData, fresh);
}

void HXBlob::Copy(const HXBitArray& a) {
    const auto n = static_cast<ulong>(a.GetByteCount());
    const unsigned char* const bytes = a.m_pBits;
    const bool fresh = Grow(n);
    Fill(bytes, fresh);
}

void HXBlob::Copy(unsigned char* p) {
    if (!p) return;
    m_nSize = memory::Prefix(p);
    m_pData = p + memory::kPrefixBytes;
}

bool HXBlob::Copy(tagSAFEARRAY** pp) {
    if (!pp || !IsRowOfBytes(*pp)) return false;
    ArrayLock lock(*pp);
    if (!lock.Holds()) return false;
    const HXBlob bytes((*pp)->rgsabound[0].cElements, static_cast<unsigned char*>((*pp)->pvData));
    Copy(bytes);
    return lock.End();
}

void HXBlob::CopyData(const HXBlob& o) {
    if (!m_pData && m_nSize != 0) CopyShallow(HXBlob(m_nSize));
    CopyData(o.m_pData, std::min(m_nSize, o.m_nSize));
}

void HXBlob::CopyData(const unsigned char* p, ulong n) {
    if (m_pData && p) CopyBytes(m_pData, p, n);
}

void HXBlob::CopyDataTo(unsigned char* p) const {
    if (p) CopyBytes(p, m_pData, Held());
}

void HXBlob::CopyTo(unsigned char* p) const {
    if (!p || Held() == 0) return;
    std::memcpy(p, &m_nSize, memory::kPrefixBytes);
    CopyBytes(p + memory::kPrefixBytes, m_pData, m_nSize);
}

bool HXBlob::CopyTo(tagSAFEARRAY** pp) const {
    if (!pp) return false;
    const SAFEARRAYBOUND bound{m_nSize, 0};
    *pp = SafeArrayCreate(VT_UI1, 1, &bound);
    if (!*pp) return false;
    const ArrayLock lock(*pp);
    auto* const room = m_nSize == 0 ? nullptr : static_cast<unsigned char*>((*pp)->pvData);
    // A derived class that has more bytes elsewhere would write them behind the array.
    const bool fits = !room || const_cast<HXBlob*>(this)->GetSize() <= m_nSize;
    if (fits)
        CopyDataTo(room);
    else
        HXBlob::CopyDataTo(room);
    return true;
}

namespace {

// What a blob is in memory, without anything that means something only there.
struct ElementRecord {
    std::array<unsigned char, 32> bytes{};

    void Take(const HXBlob& blob) {
        for (std::size_t i = 0; i < sizeof blob.m_nSize; ++i)
            bytes[8 + i] = static_cast<unsigned char>(blob.m_nSize >> (8 * i));
        bytes[24] = blob.m_bAutoDelete;
    }
};

// Archived in parts of a few kilobytes.
using ElementRecords = std::array<ElementRecord, 128>;

void StoreElements(CArchive& ar, const HXBlob* elements, std::size_t count) {
    ElementRecords records;
    for (std::size_t i = 0; i < count; ++i) records[i].Take(elements[i]);
    ar.Write(records.data(), static_cast<UINT>(count * sizeof(ElementRecord)));
}

// A block cannot come out of a file, and a size without one would claim bytes that are not
// there: nothing in a record says more than that there is an element.
void LoadElements(CArchive& ar, HXBlob* elements, std::size_t count) {
    ElementRecords records;
    ar.EnsureRead(records.data(), static_cast<UINT>(count * sizeof(ElementRecord)));
    std::fill_n(elements, count, HXBlob());
}

}  // namespace

}  // namespace ZT

template <>
void SerializeElements<ZT::HXBlob>(CArchive& ar, ZT::HXBlob* pElements, INT_PTR nCount) {
    const auto count = static_cast<std::size_t>(nCount);
    for (std::size_t done = 0; done < count;) {
        const std::size_t part = std::min(count - done, ZT::ElementRecords().size());
        if (ar.IsStoring())
            ZT::StoreElements(ar, pElements + done, part);
        else
            ZT::LoadElements(ar, pElements + done, part);
        done += part;
    }
}

template <>
void RelocateElements<ZT::HXBlob>(ZT::HXBlob* pDest, ZT::HXBlob* pSrc, INT_PTR nCount) noexcept {
    if (nCount <= 0) return;
    std::memmove(static_cast<void*>(pDest), static_cast<void*>(pSrc),
                 static_cast<std::size_t>(nCount) * sizeof(ZT::HXBlob));
}
