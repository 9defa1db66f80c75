/// @file
/// For tests: an archive's bytes in memory, and what an operation on it raised.

#pragma once

#include <platform/files/CArchive.h>
#include <platform/files/CMemFile.h>

#include <string>

/// A file in memory with the given bytes, at its start.
inline void Fill(CMemFile& file, const std::string& bytes) {
    file.Write(bytes.data(), static_cast<UINT>(bytes.size()));
    file.SeekToBegin();
}

inline std::string BytesIn(CMemFile& file) {
    std::string bytes(file.GetLength(), 0);
    file.SeekToBegin();
    file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    return bytes;
}

/// The bytes that `store` puts into an archive.
template <class Store>
std::string Stored(Store store, int bufferSize = 4096) {
    CMemFile file;
    CArchive ar(&file, CArchive::store, bufferSize);
    store(ar);
    ar.Close();
    return BytesIn(file);
}

/// Runs `load` on an archive of the bytes.
template <class Load>
void Loaded(const std::string& bytes, Load load, int bufferSize = 4096) {
    CMemFile file;
    Fill(file, bytes);
    CArchive ar(&file, CArchive::load, bufferSize);
    load(ar);
}

/// Cause of the archive exception that `operation` raised, 0 for none.
template <class Operation>
int ArchiveCauseOf(Operation operation) {
    try {
        operation();
    } catch (CArchiveException* exception) {
        const int cause = exception->m_cause;
        exception->Delete();
        return cause;
    }
    return 0;
}

/// The same for loading from bytes.
template <class Load>
int LoadingCause(const std::string& bytes, Load load) {
    return ArchiveCauseOf([&] { Loaded(bytes, load); });
}
