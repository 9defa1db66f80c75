#include <zt/interfaces/BlobOI.h>

#include <platform/object/NewObject.h>
#include <zt/memory/BlobCached.h>

namespace ZT {

namespace {

HXBlob* NewBlob(bool cached) {
    if (cached) return AfxNewObject<BlobCached>();
    return AfxNewObject<HXBlob>();
}

}  // namespace

BlobOI::BlobOI() : BlobOI(0, nullptr) {}

BlobOI::BlobOI(ulong n, unsigned char* p) : m_blob(n, p) {
    Construct();
}

BlobOI::BlobOI(HXBlob* p) : BlobOI() {
    if (p != nullptr) m_pBlob = p;
}

BlobOI::BlobOI(bool bAllocate, bool bCached) : BlobOI() {
    if (!bAllocate) return;
    m_pBlob = NewBlob(bCached);
    m_bCached = bCached;
}

// The blob embedded in `o` stays in use, deliberately. The count is not taken over: as after
// every construction of this class, nobody has a reference yet.
BlobOI::BlobOI(const BlobOI& o)
    : RefObj(o), m_blob(o.m_blob), m_pBlob(o.m_pBlob), m_bCached(o.m_bCached) {
    m_nRefCount = 0;
}

BlobOI::~BlobOI() = default;

void BlobOI::Construct() {
    m_nRefCount = 0;
    m_pBlob = &m_blob;
    m_bCached = false;
}

HRESULT BlobOI::QueryInterface(const GUID& iid, void** ppv) {
    return QueryParts(*this, iid, ppv, m_xBlob);
}

HRESULT BlobOI::XBlob::GetSize(std::uint32_t* size) {
    if (size == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    *size = Blob().GetSize();
    return S_OK;
}

HRESULT BlobOI::XBlob::ReadFile(const char* path) {
    return Blob().Read(CString(path)) ? S_OK : ERROR_FILE_NOT_FOUND;
}

HRESULT BlobOI::XBlob::WriteFile(const char* path) {
    return Blob().Write(CString(path)) ? S_OK : E_UNEXPECTED;
}

HRESULT BlobOI::XBlob::SetData(tagSAFEARRAY** array) {
    if (array == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    return Blob().Copy(array) ? S_OK : DISP_E_PARAMNOTOPTIONAL;
}

HRESULT BlobOI::XBlob::GetData(tagSAFEARRAY** array) {
    if (array == nullptr) return DISP_E_PARAMNOTOPTIONAL;
    return Blob().CopyTo(array) ? S_OK : E_OUTOFMEMORY;
}

}  // namespace ZT
