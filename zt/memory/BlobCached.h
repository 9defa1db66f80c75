/// @file
/// Blocks of bytes that stay in a temporary file while nobody reads them.

#pragma once

#include <zt/memory/HXBlob.h>

namespace ZT {

/// A blob that keeps more than 10000 bytes in a temporary file, and up to 10000 in memory.
///
/// | state | `m_bCaching` | `m_bInMemory` | where the bytes are |
/// |---|---|---|---|
/// | small | false | true | in memory |
/// | large, and no file could be made | true | true | in memory |
/// | cached | true | false | in the file; in memory nothing, or a copy that was read back |
///
/// Bytes go to the file once in the life of an object: by the first `Copy`, `Read`,
/// `PersistXML` or `Cache` that finds it large. From then on, `m_bInMemory` stays false. The
/// file lives until the size is found to be small or the object is destroyed; it is open only
/// while it is read or written.
///
/// Only the virtual operations, `LoadCache` and `PersistXML` bring the bytes back. All others of
/// `HXBlob` work on what is in memory: of a cached blob they see size 0 and no block, so call
/// `LoadCache` first. Reading back replaces the block, which is freed.
///
/// Hazards:
/// - **Bytes that could not be written to the file are lost**, and nothing tells so.
/// - A file that can no longer be opened is passed over: the operation works on what is in
///   memory. One that opens but cannot be read raises its `CFileException`, and one for which
///   there is no memory the memory exception; nothing is in memory then.
/// - `PersistXML` is not virtual: through an `HXBlob&`, a cached blob is stored as an empty one
///   unless `LoadCache` was called before.
/// - **An object that was cached once does not go to the file again.** Give it other large
///   bytes, and it holds them in memory, while `GetSize` and reading back still answer from
///   the old file, or, when that was removed meanwhile, `GetSize` says 0. Use a new object.
/// - `Write` and `CopyDataTo` free the memory of a large blob even if no file could be made for
///   it: the bytes are then gone.
/// - Copies name the same block and the same file. The first one to be destroyed removes the
///   file. Of two objects of which one was assigned to the other, the file that the latter had
///   stays behind.
/// - `Copy` into a blob that was read back needs the block to be large enough, as in `HXBlob`.
class ZT_API BlobCached : public HXBlob {
public:
    /// Empty and small.
    BlobCached() = default;

    /// Names the block and the file of `o`; the destructor does not free the block.
    BlobCached(const BlobCached& o) = default;

    /// Names the block and the file of `o` and takes over all flags. The old block is not freed
    /// and the old file not removed.
    BlobCached& operator=(const BlobCached& o) = default;

    /// Removes the file of a caching blob. The block is freed only if `m_bAutoDelete` is set.
    ~BlobCached() override;

    /// Size of the file of a cached blob, its low 32 bits; 0 if there is none. Otherwise
    /// `m_nSize`.
    ulong GetSize() override;

    using HXBlob::Copy;
    using HXBlob::Read;
    using HXBlob::Write;

    /// Copies the bytes of `o` as `HXBlob` does, then `UpdateCachingFlag` and `Cache`.
    void Copy(const HXBlob& o) override;

    /// Reads the file as `HXBlob` does, then `UpdateCachingFlag` and `Cache`.
    int Read(CFile& f) override;

    /// Reads back, writes the bytes, and frees the memory if the blob is large.
    bool Write(CFile& f) override;

    /// Reads back, copies the bytes, and frees the memory if the blob is large. `p` needs room
    /// for the larger one of `GetSize()` and `m_nSize`. A const blob changes by that, too.
    void CopyDataTo(unsigned char* p) const override;

    /// Moves the bytes of a large blob that was never cached to the file, which is made if there
    /// is none; their memory is freed. Without a file they stay in memory.
    void Cache();

    /// Reads the bytes of a cached blob back into memory, where they stay until they are freed
    /// or read back again. The blob stays cached.
    void LoadCache();

    /// Removes the file of a large blob, and forgets its path also if that fails. The flags stay.
    void DeleteCache();

    /// Makes the blob a large or a small one by `m_nSize`. A large one that becomes small loses
    /// its file. Of a cached blob, only what is in memory counts: read it back first.
    void UpdateCachingFlag();

    /// As `HXBlob`, with the bytes read back for storing; after loading, `UpdateCachingFlag`; and
    /// in every mode `Cache`. Bytes that were read back for storing stay in memory.
    ///
    /// Always true when it returns: reading back may raise, and so may loading, as in `HXBlob`.
    /// Loading that raises leaves nothing in memory and neither flag nor file changed, so that
    /// `GetSize` of a cached blob still says what the file has.
    bool PersistXML(PCExBase& pc);

    CString m_strCacheFile;   ///< Path of the temporary file; empty if there is none.
    bool m_bCaching = false;  ///< Whether the blob is a large one.
    bool m_bInMemory = true;  ///< Whether the bytes have never gone to the file.

private:
    bool IsCached() const { return m_bCaching && !m_bInMemory; }
    void EndRead();
};

}  // namespace ZT
