// Blobs in files and archives.

#include <platform/files/CArchive.h>
#include <platform/files/CFile.h>
#include <platform/files/TempFile.h>
#include <zt/memory/HXBlob.h>
#include <zt/memory/detail/BlobFiles.h>
#include <zt/memory/detail/BlockBytes.h>

#include <algorithm>
#include <cstddef>
#include <memory>

namespace ZT {

using memory::NewBytes;

bool memory::OpenForWriting(CFile& file, const CString& path) {
    constexpr UINT asItIs = CFile::modeWrite | CFile::shareDenyWrite;
    return file.Open(path, asItIs) || file.Open(path, CFile::modeCreate | asItIs);
}

bool memory::ReplaceEnding(CString& name, const char* ending) {
    const int point = name.ReverseFind('.');
    if (point < 0) return false;
    name = name.Left(point + 1) + ending;
    return true;
}

int HXBlob::Read(CFile& f) {
    return ReadNonVirt(f, 0, 0);
}

int HXBlob::ReadNonVirt(CFile& f, ulong nOffset, ulong nCount) {
    Renew(nCount != 0 ? nCount : static_cast<ulong>(f.GetLength()));
    if (m_nSize == 0) return 0;
    ulong read = 0;
    try {
        // The offset is one in the block, deliberately.
        read = f.Read(m_pData + nOffset, m_nSize);
    } catch (...) {
        Renew(0);
        throw;
    }
    m_nSize = read;
    // A block that is held without a size could never be freed.
    if (read == 0) delete[] Reset();
    return static_cast<int>(read);
}

bool HXBlob::Read(const CString& path) {
    CFile file;
    if (!file.Open(path, CFile::modeRead)) return false;
    Read(file);
    return true;
}

bool HXBlob::ReadNonVirt(const CString& path, ulong nOffset, ulong nCount) {
    CFile file;
    if (!file.Open(path, CFile::modeRead)) return false;
    ReadNonVirt(file, nOffset, nCount);
    return true;
}

bool HXBlob::Write(CFile& f) {
    return WriteNonVirt(f);
}

bool HXBlob::WriteNonVirt(CFile& f) const {
    try {
        f.Write(m_pData, Held());
    } catch (CFileException* failure) {
        failure->Delete();
        return false;
    }
    return true;
}

bool HXBlob::Write(const CString& path, bool bCreate) {
    CFile file;
    const bool open =
        bCreate ? file.Open(path, CFile::modeCreate | CFile::modeWrite | CFile::shareDenyWrite)
                : memory::OpenForWriting(file, path);
    return open && Write(file);
}

bool HXBlob::WriteNonVirt(const CString& path) const {
    CFile file;
    return memory::OpenForWriting(file, path) && WriteNonVirt(file);
}

CString HXBlob::WriteToTempFile(const char* ext) {
    CString name = AfxGetTempFileName(AfxGetTempPath(), "ztxl");
    if (name.IsEmpty()) return CString();
    const CString made = name;
    if (ext && !memory::ReplaceEnding(name, ext)) return CString();
    if (ext) CFile::Rename(made, name);
    if (Write(name)) return name;
    CFile::Remove(name);
    return CString();
}

void HXBlob::Serialize(CArchive& ar) {
    if (ar.IsStoring()) {
        ar << Held();
        Write(ar);
        return;
    }
    ulong size = 0;
    ar >> size;
    Renew(0);
    // More and more at a time, so that a false size meets the end of the archive before it has
    // claimed much memory.
    std::unique_ptr<unsigned char[]> block;
    for (std::size_t done = 0; done < size;) {
        const std::size_t room =
            std::min<std::size_t>(size, std::max(memory::kBytesOnTrust, 2 * done));
        std::unique_ptr<unsigned char[]> larger(NewBytes(static_cast<ulong>(room)));
        memory::CopyBytes(larger.get(), block.get(), done);
        block = std::move(larger);
        ar.EnsureRead(block.get() + done, static_cast<UINT>(room - done));
        done = room;
    }
    m_pData = block.release();
    m_nSize = size;
}

void HXBlob::Write(CArchive& ar) const {
    if (Held() != 0) ar.Write(m_pData, m_nSize);
}

}  // namespace ZT
