/// @file
/// A file of the system.

#pragma once

#include <platform/base/Export.h>
#include <platform/base/Types.h>
#include <platform/object/CFileException.h>
#include <platform/object/CObject.h>
#include <platform/text/CString.h>

class CFile;
struct CFileStatus;

/// The system's handle of an open file: a descriptor.
using HFILE = INT;

/// A file of the system, read and written at a position of 64 bits, without a
/// buffer in between; and the base of what can stand in a file's place.
///
/// An object is closed, with the handle `hFileNull`, or open. All failures but
/// that of `Open` raise a `CFileException` with the system's code and the path;
/// an operation on a closed file raises it with the cause `invalidFile`. Paths
/// are UTF-8.
class ZTP_API CFile : public CObject {
    DECLARE_DYNAMIC(CFile)

    /// How to open: one access, one way of sharing, and any of the rest.
    enum OpenFlags : UINT {
        modeRead = 0x0000,           ///< for reading
        modeWrite = 0x0001,          ///< for writing
        modeReadWrite = 0x0002,      ///< for both
        shareCompat = 0x0000,        ///< as `shareExclusive`
        shareExclusive = 0x0010,     ///< nobody else reads or writes
        shareDenyWrite = 0x0020,     ///< nobody else writes
        shareDenyRead = 0x0030,      ///< nobody else reads
        shareDenyNone = 0x0040,      ///< others do as they like
        modeNoInherit = 0x0080,      ///< no child process gets the handle; always so
        modeCreate = 0x1000,         ///< make the file, or empty it if it exists
        modeNoTruncate = 0x2000,     ///< with `modeCreate`: keep the content of a file that exists
        typeText = 0x4000,           ///< for derived classes
        typeBinary = 0x8000,         ///< for derived classes
        osNoBuffer = 0x10000,        ///< a hint, not used
        osWriteThrough = 0x20000,    ///< a write ends when the device has the data
        osRandomAccess = 0x40000,    ///< a hint
        osSequentialScan = 0x80000,  ///< a hint
    };

    /// Bits of `CFileStatus::m_attribute`.
    enum Attribute : BYTE {
        normal = 0x00,
        readOnly = 0x01,   ///< the owner may not write
        hidden = 0x02,     ///< the name begins with a point
        volume = 0x08,     ///< never set
        directory = 0x10,  ///< a directory
        archive = 0x20,    ///< never set
    };

    /// The bit of `Attribute` for a device, a pipe or a socket.
    static constexpr BYTE system = 0x04;

    /// From where a position counts.
    enum SeekPosition : UINT { begin = 0, current = 1, end = 2 };

    /// The handle of a closed file.
    static constexpr HFILE hFileNull = -1;

    /// A closed file.
    CFile();

    /// A file over a handle that is already open; it closes the handle with
    /// itself. The path is empty.
    explicit CFile(HFILE handle);

    /// An open file; raises the exception if it cannot be opened.
    CFile(LPCTSTR path, UINT openFlags);

    /// Closes the file, without raising anything.
    ~CFile() override;

    /// Bytes from the start to the position.
    virtual ULONGLONG GetPosition() const;

    /// The last part of the path without its ending: "b" of "/a/b.txt".
    virtual CString GetFileTitle() const;

    /// The last part of the path: "b.txt" of "/a/b.txt".
    virtual CString GetFileName() const;

    /// The full path as it was when the file was opened; empty for a closed file.
    virtual CString GetFilePath() const;

    /// Gives the object another path, without renaming the file. The names above
    /// and the exceptions tell the new one.
    virtual void SetFilePath(LPCTSTR path);

    /// Opens `path`. On failure the result is false, `*error`, if given, receives
    /// the reason, and the object stays closed. A file that is already open is
    /// closed first.
    ///
    /// How the file is shared binds those who open it through this class, in
    /// any process, and on file systems that have locks; the cause is then
    /// `sharingViolation`. Directories cannot be opened (`accessDenied`).
    virtual BOOL Open(LPCTSTR path, UINT openFlags, CFileException* error = nullptr);

    /// A second object on the same open file, with one position for both; owned
    /// by the caller.
    virtual CFile* Duplicate() const;

    /// Moves the position and answers it as bytes from the start. It may lie behind
    /// the end: a write there fills the gap with zeros. A position before the
    /// start, or an unknown `from`, raises the exception with the cause `badSeek`
    /// and changes nothing.
    virtual ULONGLONG Seek(LONGLONG offset, UINT from);

    /// Cuts the file, or extends it by zeros. The position then is the new end.
    virtual void SetLength(ULONGLONG length);

    /// Bytes of the file.
    virtual ULONGLONG GetLength() const;

    /// Reads up to `count` bytes from the position on and answers how many there
    /// were: less than `count` only at the end of the file, or when a pipe has no
    /// more for now.
    virtual UINT Read(void* buffer, UINT count);

    /// Writes `count` bytes at the position. It writes all of them or raises the
    /// exception, `diskFull` where there is no room; some may then be written.
    virtual void Write(const void* buffer, UINT count);

    /// Locks a range against the locks of others; raises the exception with the
    /// cause `lockViolation` if another one has locked part of it. A `count` of 0
    /// reaches to the end of any file. The file must be open for writing.
    virtual void LockRange(ULONGLONG position, ULONGLONG count);

    /// Takes a lock back.
    virtual void UnlockRange(ULONGLONG position, ULONGLONG count);

    /// Closes the file without raising anything.
    virtual void Abort();

    /// Hands over what is buffered. This class buffers nothing.
    virtual void Flush();

    /// Closes the file. Nothing happens to a closed one.
    virtual void Close();

    /// Moves the position to the end and answers it.
    ULONGLONG SeekToEnd() { return Seek(0, end); }

    /// Moves the position to the start.
    void SeekToBegin() { Seek(0, begin); }

    /// What the system knows of the open file; false if it tells nothing.
    BOOL GetStatus(CFileStatus& status) const;

    operator HFILE() const { return m_hFile; }

    /// What the system knows of the file at `path`; false if there is none. A
    /// link is followed.
    static BOOL GetStatus(LPCTSTR path, CFileStatus& status);

    /// Sets the times of change and reading, where they are not zero, and the
    /// bit `readOnly` of a file.
    static void SetStatus(LPCTSTR path, const CFileStatus& status);

    /// Gives a file another path on the same file system. An existing `newPath`
    /// is not replaced: `accessDenied`.
    static void Rename(LPCTSTR oldPath, LPCTSTR newPath);

    /// Removes a file; a directory is not removed: `accessDenied`.
    static void Remove(LPCTSTR path);

    /// The handle; `hFileNull` for a closed file.
    HFILE m_hFile;

protected:
    /// Whether the destructor closes the handle.
    BOOL m_bCloseOnDelete;
    /// The full path, or empty.
    CString m_strFileName;
};
