#include <zt/memory/BlobCached.h>

#include <platform/files/CFile.h>
#include <platform/files/CFileStatus.h>
#include <platform/files/TempFile.h>
#include <zt/persist/PCExBase.h>

namespace ZT {

namespace {

constexpr ulong kLargestInMemory = 10000;

}  // namespace

BlobCached::~BlobCached() {
    DeleteCache();
}

ulong BlobCached::GetSize() {
    if (!IsCached()) return m_nSize;
    CFileStatus status;
    const bool known = !m_strCacheFile.IsEmpty() && CFile::GetStatus(m_strCacheFile, status);
    return known ? static_cast<ulong>(status.m_size) : 0;
}

void BlobCached::Copy(const HXBlob& o) {
    HXBlob::Copy(o);
    UpdateCachingFlag();
    Cache();
}

int BlobCached::Read(CFile& f) {
    const int read = HXBlob::Read(f);
    UpdateCachingFlag();
    Cache();
    return read;
}

bool BlobCached::Write(CFile& f) {
    LoadCache();
    const bool written = WriteNonVirt(f);
    EndRead();
    return written;
}

void BlobCached::CopyDataTo(unsigned char* p) const {
    auto& self = const_cast<BlobCached&>(*this);
    self.LoadCache();
    HXBlob::CopyDataTo(p);
    self.EndRead();
}

// Frees the memory of a large blob, whether or not there is a file: deliberately.
void BlobCached::EndRead() {
    if (m_bCaching) Delete();
}

void BlobCached::Cache() {
    if (!m_bCaching || !m_bInMemory) return;
    if (m_strCacheFile.IsEmpty()) m_strCacheFile = AfxGetTempFileName(AfxGetTempPath(), "ztBlob");
    if (m_strCacheFile.IsEmpty()) return;
    // Nobody asks whether it succeeded, deliberately.
    WriteNonVirt(m_strCacheFile);
    Delete();
    m_bInMemory = false;
}

void BlobCached::LoadCache() {
    if (IsCached() && !m_strCacheFile.IsEmpty()) ReadNonVirt(m_strCacheFile, 0, 0);
}

void BlobCached::DeleteCache() {
    if (!m_bCaching || m_strCacheFile.IsEmpty()) return;
    try {
        CFile::Remove(m_strCacheFile);
    } catch (CException* failure) {
        failure->Delete();
    }
    m_strCacheFile.Empty();
}

void BlobCached::UpdateCachingFlag() {
    const bool large = m_nSize > kLargestInMemory;
    if (!large) DeleteCache();
    m_bCaching = large;
}

bool BlobCached::PersistXML(PCExBase& pc) {
    if (pc.IsStoring()) LoadCache();
    HXBlob::PersistXML(pc);
    if (pc.IsLoading()) UpdateCachingFlag();
    Cache();
    return true;
}

}  // namespace ZT
