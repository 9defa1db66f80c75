/// @file
/// A file in memory.

#pragma once

#include <platform/files/CFile.h>

/// A file in memory: a block of bytes that grows as it is written.
///
/// A file of its own grows by steps and frees its block. A block that is attached
/// stays the caller's and is neither freed nor, unless a growth step was given
/// with it, ever enlarged: writing past it raises the memory exception. A block
/// that may be enlarged comes from `malloc`, as all blocks of this class do, and
/// may lie elsewhere afterwards: `Detach` tells where.
///
/// There is no path and no handle. A failure raises the exceptions of `CFile`,
/// except that locking and duplicating are not supported.
class ZTP_API CMemFile : public CFile {
    DECLARE_DYNAMIC(CMemFile)

    /// An empty file whose block grows by multiples of `growBytes`; of 0 it cannot
    /// grow and so stays empty.
    explicit CMemFile(UINT growBytes = 1024);

    /// A file over `buffer`; see `Attach`.
    CMemFile(BYTE* buffer, UINT size, UINT growBytes = 0);

    /// Frees the block if it is the object's own.
    ~CMemFile() override;

    /// Puts `size` bytes at `buffer` in the place of the present block, which is
    /// freed if it is the object's own. With a `growBytes` of 0 the bytes are the
    /// content of the file; with another the content is ignored and the file is
    /// empty. The position is the start.
    void Attach(BYTE* buffer, UINT size, UINT growBytes = 0);

    /// Hands the block to the caller, who frees one that was not attached with
    /// `free`, and leaves an empty file that cannot grow. Ask for the length
    /// before.
    BYTE* Detach();

    ULONGLONG GetPosition() const override;

    /// A file in memory has no status of its own: size and the zero times.
    BOOL GetStatus(CFileStatus& status) const;

    ULONGLONG Seek(LONGLONG offset, UINT from) override;

    /// New bytes are zero; a position behind the end is moved to it.
    void SetLength(ULONGLONG length) override;
    ULONGLONG GetLength() const override;
    UINT Read(void* buffer, UINT count) override;
    void Write(const void* buffer, UINT count) override;

    /// Empties the file and frees the block if it is the object's own.
    void Abort() override;
    void Close() override;
    void Flush() override;

    /// Not supported: these raise the not-supported exception.
    CFile* Duplicate() const override;
    void LockRange(ULONGLONG position, ULONGLONG count) override;
    void UnlockRange(ULONGLONG position, ULONGLONG count) override;

protected:
    /// The block's memory; an override sees each request. Null if there is none.
    virtual BYTE* Alloc(SIZE_T bytes);
    virtual BYTE* Realloc(BYTE* block, SIZE_T bytes);
    virtual BYTE* Memcpy(BYTE* target, const BYTE* source, SIZE_T bytes);
    virtual void Free(BYTE* block);

    /// Makes room for `length` bytes; raises the memory exception if it cannot.
    virtual void GrowFile(SIZE_T length);

    /// Step of growth in bytes, 0 for none.
    SIZE_T m_nGrowBytes;
    /// The position.
    SIZE_T m_nPosition = 0;
    /// Bytes of the block, and of it those of the file.
    SIZE_T m_nBufferSize = 0;
    SIZE_T m_nFileSize = 0;
    /// The block, or null.
    BYTE* m_lpBuffer = nullptr;
    /// Whether the block is the object's own.
    BOOL m_bAutoDelete = TRUE;

private:
    void ReleaseBlock();
    void FillTo(SIZE_T length);
};
