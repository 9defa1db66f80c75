/// @file
/// Binary records, stored and loaded through one code path.

#pragma once

#include <platform/base/Export.h>
#include <platform/base/Types.h>
#include <platform/object/CArchiveException.h>
#include <platform/object/CRuntimeClass.h>
#include <platform/text/CString.h>

#include <algorithm>
#include <array>
#include <bit>
#include <concepts>
#include <cstring>
#include <memory>
#include <type_traits>

class CFile;
class CObject;

/// A number that an archive holds in as many bytes as it has in memory; a `bool`
/// in one. A wide character is none of them: its width is not the same everywhere.
template <class T>
concept ArchivedNumber = (std::integral<T> && !std::same_as<T, wchar_t>) ||
                         std::same_as<T, float> || std::same_as<T, double>;

/// A stream of binary records over a file, in one of two directions, fixed when
/// it is made: storing or loading. An object's `Serialize` asks `IsStoring` and
/// does the one or the other with the same members in the same order.
///
///     void Point::Serialize(CArchive& ar) {
///         if (ar.IsStoring())
///             ar << m_x << m_y;
///         else
///             ar >> m_x >> m_y;
///     }
///
/// Numbers stand in the archive in little-endian order, without tags; texts and
/// counts in the forms below. The archive buffers, so the file's position is not
/// that of the archive until `Flush` or `Close`; the file must outlive it.
///
/// Failures: reading from a storing archive raises a `CArchiveException` with the
/// cause `writeOnly`, writing to a loading one with `readOnly`, and a file that
/// ends within a value with `endOfFile`. The file's own exceptions pass through.
/// After `Close` or `Abort` every transfer raises the invalid-argument exception.
///
/// Objects: a pointer that is stored twice is loaded as two pointers to one
/// object. The first time, the object's class and content are stored; after
/// that, a number. Such pointers need a class with `DECLARE_SERIAL`. What an
/// archive says is checked when it is loaded, since it may be damaged: a reference
/// to no object gives `badIndex`, another or an unknown class `badClass`, another
/// version `badSchema`.
class ZTP_API CArchive {
public:
    /// Direction, and bits that may be added to it.
    enum Mode : UINT {
        store = 0,
        load = 1,
        bNoFlushOnDelete = 2,  ///< the destructor does not close: what is buffered is lost
        bNoByteSwap = 4,       ///< without meaning where the machine is little-endian
    };

    /// An archive over `file`, which must be open in the direction of `mode`,
    /// beginning at the file's position. `bufferSize` bytes are buffered, 128 at
    /// least; in `buffer`, if it is given and as large as that. A null file raises
    /// the invalid-argument exception.
    CArchive(CFile* file, UINT mode, INT bufferSize = 4096, void* buffer = nullptr);

    /// Closes the archive, unless `bNoFlushOnDelete` was given. A failure cannot be
    /// told from here: call `Close` where it matters.
    ~CArchive();

    CArchive(const CArchive&) = delete;
    CArchive& operator=(const CArchive&) = delete;

    /// @name State
    /// @{
    BOOL IsLoading() const { return (m_nMode & load) != 0; }
    BOOL IsStoring() const { return (m_nMode & load) == 0; }
    /// Whether numbers change their byte order on the way.
    BOOL IsByteSwapping() const { return m_bSwaps; }
    /// Whether nothing waits in the buffer, to be taken out or to be put into the
    /// file.
    BOOL IsBufferEmpty() const { return m_lpBufCur == (IsLoading() ? m_lpBufMax : m_lpBufStart); }
    /// The file; null once the archive is closed.
    CFile* GetFile() const { return m_pFile; }
    /// @}

    /// @name Bytes
    /// @{
    /// Reads up to `count` bytes and answers how many the file had.
    UINT Read(void* bytes, UINT count);
    /// Reads `count` bytes; fewer raise the exception with the cause `endOfFile`.
    void EnsureRead(void* bytes, UINT count);
    /// Writes `count` bytes.
    void Write(const void* bytes, UINT count);
    /// Storing: hands what is buffered to the file; what the file refuses is dropped.
    /// Loading: gives back to the file what was read ahead, so that its position is
    /// that of the archive.
    void Flush();
    /// Flushes and lets go of the file, which stays open.
    void Close();
    /// Lets go of the file without flushing; raises nothing.
    void Abort();
    /// @}

    /// @name Numbers
    /// @{
    template <ArchivedNumber T>
    CArchive& operator<<(T number) {
        if (static_cast<std::size_t>(m_lpBufMax - m_lpBufCur) < sizeof(T) || IsLoading())
            MakeRoom(sizeof(T));
        const Bytes<T> bytes = InArchiveOrder(std::bit_cast<Bytes<T>>(number));
        std::memcpy(m_lpBufCur, bytes.data(), sizeof(T));
        m_lpBufCur += sizeof(T);
        return *this;
    }

    /// A `bool` is true for any byte but 0.
    template <ArchivedNumber T>
    CArchive& operator>>(T& number) {
        if (static_cast<std::size_t>(m_lpBufMax - m_lpBufCur) < sizeof(T) || IsStoring())
            FillBuffer(sizeof(T));
        Bytes<T> bytes;
        std::memcpy(bytes.data(), m_lpBufCur, sizeof(T));
        m_lpBufCur += sizeof(T);
        bytes = InArchiveOrder(bytes);
        if constexpr (std::same_as<T, bool>)
            number = bytes[0] != 0;
        else
            number = std::bit_cast<T>(bytes);
        return *this;
    }

    /// Loading: brings at least `count` bytes, no more than the buffer holds, into
    /// the buffer; fewer in the file raise the exception with the cause `endOfFile`.
    void FillBuffer(UINT count);
    /// @}

    /// @name Text
    /// @{
    /// A text: its length in bytes, then the bytes. The length takes one byte if it
    /// is below 0xFF; else a byte 0xFF and a 16-bit length if that is below 0xFFFE;
    /// else the 16 bits 0xFFFF besides and a 32-bit length.
    CArchive& operator<<(const CString& text);
    /// A text, also one that was stored in 16-bit characters, which the bytes 0xFF,
    /// 0xFE, 0xFF before the length tell. A text that is longer than what the file
    /// holds raises the exception with the cause `endOfFile`.
    CArchive& operator>>(CString& text);
    /// The bytes of a text, without length and closing zero. A null text writes
    /// nothing.
    void WriteString(LPCTSTR text);
    /// Reads a line into `text`: up to the next line feed, the end of the file, or
    /// `size` bytes. The line feed is dropped, and so is a carriage return before it;
    /// a closing zero is put behind the line, so that `text` has room for
    /// `size` + 1 bytes. Null if the file was at its end.
    LPTSTR ReadString(LPTSTR text, UINT size);
    /// Reads a line of any length; false if the file was at its end.
    BOOL ReadString(CString& text);
    /// @}

    /// @name Counts
    /// @{
    /// A count of elements: 16 bits if it is below 0xFFFF; else the 16 bits 0xFFFF
    /// and 32 bits if it is below 0xFFFFFFFF; else the 32 bits 0xFFFFFFFF besides and
    /// 64 bits.
    void WriteCount(DWORD_PTR count);
    DWORD_PTR ReadCount();
    /// @}

    /// @name Objects
    /// @{
    /// A pointer to an object, or null. A class without an archive record raises
    /// the not-supported exception.
    void WriteObject(const CObject* object);
    CArchive& operator<<(const CObject* object);

    /// A pointer to an object of class `requested` or of one derived from it, or
    /// null; of any class if `requested` is null. A new object belongs to the
    /// caller; one that was read before is the same again. If its `Serialize`
    /// raises an exception, a new object is deleted.
    CObject* ReadObject(const CRuntimeClass* requested);
    CArchive& operator>>(CObject*& object);

    /// A pointer to a class with `DECLARE_SERIAL`.
    template <class T>
    requires std::same_as<typename T::AfxSerialClass, T> CArchive& operator>>(T*& object) {
        object = static_cast<T*>(ReadObject(T::GetThisClass()));
        return *this;
    }

    /// A class, in the form in which it stands before its first object.
    void WriteClass(const CRuntimeClass* aClass);

    /// Reads what stands before an object. If that is a class, it is the result, and
    /// its schema goes to `*schema`; else the result is null and the number of an
    /// object read before, 0 for null, goes to `*objectTag`, without which the
    /// exception is raised with the cause `badIndex`. `requested` as in `ReadObject`.
    CRuntimeClass* ReadClass(const CRuntimeClass* requested = nullptr, UINT* schema = nullptr,
                             DWORD* objectTag = nullptr);

    /// Stores or loads a class, which must be `aClass` or derived from it. Its
    /// schema is then told by `GetObjectSchema`.
    void SerializeClass(const CRuntimeClass* aClass);

    /// Puts an object that both sides know, such as a document, among the objects
    /// that have a number, without storing it. Both sides map the same objects in the
    /// same order.
    void MapObject(const CObject* object);

    /// Schema of the object that is being loaded, for a class with
    /// `VERSIONABLE_SCHEMA`. It is told once: asked again, or outside of an
    /// object, it is 0xFFFFFFFF.
    UINT GetObjectSchema();
    void SetObjectSchema(UINT schema) { m_nObjectSchema = schema; }

    /// Expected numbers of objects; hints, before the first object is transferred.
    void SetLoadParams(UINT growBy = 1024);
    void SetStoreParams(UINT hashSize = 2053, UINT blockSize = 128);
    /// @}

    /// Name of the file, told by the archive's exceptions.
    CString m_strFileName;
    /// The document to which the objects belong, if any; for the caller.
    CObject* m_pDocument = nullptr;

private:
    template <class T>
    using Bytes = std::array<BYTE, sizeof(T)>;

    template <class Order>
    static Order InArchiveOrder(Order bytes) {
        if constexpr (std::endian::native == std::endian::big)
            std::reverse(bytes.begin(), bytes.end());
        return bytes;
    }

    struct Objects;
    struct Tag;

    [[noreturn]] void Fail(INT cause) const;
    void CheckTransfer(BOOL storing) const;
    void MakeRoom(UINT count);
    UINT ReadAhead(UINT count);
    UINT ReadFromFile(BYTE* to, UINT count);
    UINT TakeBuffered(BYTE* to, UINT count);
    bool TakeByte(char& byte);
    bool TakeLineByte(char& byte);
    ULONGLONG ReadLongLength(WORD length);
    CString ReadText(ULONGLONG bytes);
    Objects& Map();
    Tag ReadTag();
    CObject* FindObject(const CRuntimeClass* requested, DWORD tag);
    CObject* ReadNewObject(const CRuntimeClass* aClass, UINT schema);
    CRuntimeClass* ReadNewClass(UINT& schema);
    CRuntimeClass* FindClass(DWORD number, UINT& schema);
    void WriteNumber(DWORD number, bool isClass);

    UINT m_nMode;
    BOOL m_bSwaps = std::endian::native == std::endian::big;
    UINT m_nObjectSchema = 0xFFFFFFFF;
    INT m_nBufSize;
    CFile* m_pFile;
    std::unique_ptr<BYTE[]> m_ownBuffer;
    BYTE* m_lpBufCur = nullptr;
    BYTE* m_lpBufMax = nullptr;
    BYTE* m_lpBufStart = nullptr;
    std::unique_ptr<Objects> m_objects;
};
