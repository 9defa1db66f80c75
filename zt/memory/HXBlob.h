/// @file
/// Blocks of bytes.

#pragma once

#include <platform/collections/ElementHelpers.h>
#include <platform/collections/SerializeElements.h>
#include <platform/text/CString.h>
#include <zt/frame/ZT.h>

#include <cstdint>

class CArchive;
class CFile;
struct tagSAFEARRAY;

namespace ZT {

class HXBitArray;
class PCExBase;

/// A block of bytes: a size, a pointer and a flag. Closer to a fat pointer than to a
/// container: copies name the same block, and by default no destructor frees it.
///
///     HXBlob a(100u);          a [100|*]---+
///     HXBlob b = a;                        +--->[ 100 bytes ]
///     HXBlob c = b;            b [100|*]---+
///                              c [100|*]---+
///
///     b.Delete();              b [  0|0]         a and c still name what is gone:
///                                                Reset() them, or do not touch them again
///
/// Nobody counts who names a block, and nothing is copied on writing: what is written
/// through one blob shows in the others. **Whoever uses a block agrees with the others on
/// who frees it, once.** The usual life: made by one blob, handed out in copies, ended by one
/// `Delete` on any of them.
///
/// What happens to a block, and what to do about it:
///
/// | operation | the block this blob had | the block it has then |
/// |---|---|---|
/// | copy constructor | - | the other's |
/// | `operator=`, `CopyShallow` | not freed: lost if nobody names it | the other's |
/// | attaching `Copy(p)` | not freed: lost if nobody names it | the one at `p` |
/// | `HXBlob(n, p)`, `GetInnerBlob`, `GetOuterBlob` | - | a view, valid while the block is |
/// | `operator+`, `operator*` | - | new, and the caller's to end with `Delete` |
/// | `Embed` | not freed, since others may look at it | new |
/// | `Reset` | not freed: it is the result | none |
/// | `Construct` | not freed | none |
/// | `Delete` | freed, but only if the size is not 0 | none |
/// | `DeleteData` | freed | **the same, now dangling** |
/// | `Allocate`, `Set`, `Read`, `Serialize` | freed | new; none for no bytes |
/// | `LoadResource` | freed if it succeeds | new; the same if it fails |
/// | `PersistXML`, loading | freed, but only if the size is not 0 | new, or none |
/// | `SetSize`, `Copy2`, `Copy` of bits, `StringToBinary` | freed when it must grow | new or same |
/// | `Append` | freed, but only if the size is not 0 | new; the same if the size was 0 |
/// | `Copy(const HXBlob&)`, `Copy` of an array | stays, **and must be large enough** | the same |
/// | `CopyData(const HXBlob&)` | stays; takes no more bytes than its size | the same |
/// | `CopyData(p, n)` | stays, **and must be large enough** | the same |
/// | destructor | freed only if `m_bAutoDelete` | - |
///
/// Where a block stays, a blob that had none gets a new one; by `CopyData` only from another
/// blob, and only if it has a size.
///
/// Freeing is always `delete[]`, whether the block came from a blob or was attached. Whoever
/// attached memory of another kind calls `Reset` before any operation that frees.
///
/// `m_bAutoDelete` is read by the destructor alone. Only `HXBlob(true)` sets it, and
/// assignment copies it: two blobs that are assigned to one another while it is set would both
/// free the block. The copy constructor leaves it unset.
///
/// The **growth rule** of some operations makes room for `n` bytes: a blob whose size is not 0
/// and less than `n` frees its block and gets a new one, a blob without a block gets one, and
/// then the size is `n`. What the block held is not kept when it is replaced. The size is no
/// capacity: it can shrink while the block does not, and the larger size is then forgotten.
/// So a blob of size 0 that has a block keeps it whatever `n` is: **never size such a blob up.**
/// A blob without a block gets one also for no bytes; `Delete` drops it without freeing it.
///
/// New blocks come from `new[]`, and their bytes have no defined values unless the operation
/// says so. Without memory the memory exception is raised; a blob whose old block was to be
/// freed first is then empty. A blob with a size and without a block counts as one without
/// bytes wherever bytes are to be copied or written.
///
/// A class derived from this one replaces the virtual operations; those without an own
/// replacement work on the block that is in memory.
class ZT_API HXBlob {
public:
    /// @name Making and ending
    /// @{

    /// Nothing: no size, no block.
    HXBlob() noexcept : HXBlob(false) {}

    /// Nothing yet; with `bAutoDelete`, whatever block it has in the end is freed by the
    /// destructor.
    explicit HXBlob(bool bAutoDelete) noexcept
        : m_nSize(0), m_pData(nullptr), m_bAutoDelete(bAutoDelete) {}

    /// Names the block of `o`, which nobody copies; the destructor will not free it, whatever
    /// `o` does.
    HXBlob(const HXBlob& o) noexcept : HXBlob(o.m_nSize, o.m_pData) {}

    /// A new block of `n` zeros; none if `n` is 0. Write `HXBlob(100u)`: a plain 100 is
    /// ambiguous.
    explicit HXBlob(ulong n);

    /// Names `n` bytes at `p`; nothing is copied.
    HXBlob(ulong n, unsigned char* p) noexcept : m_nSize(n), m_pData(p), m_bAutoDelete(false) {}

    /// A new block with a copy of `n` bytes at `p`; their values are undefined if `p` is null.
    /// None if `n` is 0. The last argument plays no part: the block is not freed by the
    /// destructor.
    HXBlob(const unsigned char* p, ulong n, bool);

    /// A new block from hexadecimal text, as by `StringToBinary`. Empty for a null text and
    /// for a bad one.
    explicit HXBlob(const char* hex);

    /// A new block with the text and its closing zero.
    explicit HXBlob(const CString& s);

    /// Names the block of `o` and takes over its flag. The old block is not freed. With the
    /// flag set, both destructors would free the block: reset one of the two.
    HXBlob& operator=(const HXBlob& o) noexcept {
        CopyShallow(o);
        m_bAutoDelete = o.m_bAutoDelete;
        return *this;
    }

    /// Clears size, block and flag, freeing nothing: for fields that were never made.
    void Construct() noexcept {
        m_nSize = 0;
        m_pData = nullptr;
        m_bAutoDelete = false;
    }

    /// @}
    /// @name What a derived class replaces
    /// @{

    /// `m_nSize`; a derived class may answer for bytes that are elsewhere.
    virtual ulong GetSize();

    /// Takes the size of `o` and copies its bytes, without the growth rule: only a blob
    /// without a block gets one. **A block that is there is assumed to be large enough; bytes
    /// are written behind a smaller one.** `Copy2` makes room.
    ///
    /// Of an `o` without a block only the size is taken: a new block is then all zeros, and one
    /// that is there keeps its bytes.
    virtual void Copy(const HXBlob& o);

    /// Frees the block and reads as many bytes as the file is long, from the file's position
    /// on; size and result are how many there were, and there is no block if there were none. A
    /// file that is longer than 2^32 - 1 bytes counts with the low 32 bits of its length, and a
    /// result of 2^31 or more is negative.
    virtual int Read(CFile& f);

    /// Writes the bytes at the file's position. False if the file does not take them; some may
    /// have been written.
    virtual bool Write(CFile& f);

    /// Copies the bytes to `p`; a null `p` is ignored. **Room is needed for the larger one of
    /// `GetSize()` and `m_nSize`**: a derived class may first fetch bytes from elsewhere.
    virtual void CopyDataTo(unsigned char* p) const;

    /// Frees the block only if `m_bAutoDelete` is set.
    virtual ~HXBlob();

    /// @}
    /// @name Size and position
    /// @{

    /// Whether there are a block and a size.
    bool IsValid() const { return m_nSize != 0 && m_pData; }

    /// Address of byte `i`; null if there is none.
    unsigned char* GetPointer(ulong i) const {
        return m_pData && i < m_nSize ? m_pData + i : nullptr;
    }

    /// Address behind the last byte; null without a block.
    unsigned char* GetEnd() const { return m_pData ? m_pData + m_nSize : nullptr; }

    /// Whether `p` is the address of a byte of the block. The address behind the last one is
    /// not. A blob with a size and no block counts from address 0.
    bool In(const unsigned char* p) const { return Distance(p) < m_nSize; }

    /// Offset of the byte at `p`; 0xFFFFFFFF if `p` is not `In` the block.
    ulong GetOffset(const unsigned char* p) const {
        return In(p) ? static_cast<ulong>(Distance(p)) : kNowhere;
    }

    /// Bytes from `p` to the end; 0xFFFFFFFF if `p` is not `In` the block.
    ulong GetLength(const unsigned char* p) const {
        return In(p) ? m_nSize - static_cast<ulong>(Distance(p)) : kNowhere;
    }

    /// Lets go of the block without freeing it: the result is its address, the blob is empty.
    unsigned char* Reset() noexcept {
        unsigned char* const block = m_pData;
        m_nSize = 0;
        m_pData = nullptr;
        return block;
    }

    /// @}
    /// @name Changing the block
    /// @{

    /// Frees the block and takes a new one of `m_nSize` bytes; none if that is 0.
    void Allocate();

    /// Makes the size `n` by the growth rule. The bytes are kept only if the block is.
    void SetSize(ulong n);

    /// Frees the block and leaves the blob empty. A block that is held with size 0 is dropped
    /// without being freed. All other blobs that name the block dangle.
    void Delete();

    /// Frees the block and leaves size and pointer as they are, so that this blob dangles as
    /// well: `Reset` it, or never touch it again. Not for a blob with `m_bAutoDelete`, which
    /// would free the block once more.
    void DeleteData() { delete[] m_pData; }

    /// Frees the block and takes a new one with the text and its closing zero. A null text
    /// changes nothing.
    void Set(const char* s);

    /// @}
    /// @name Copying
    /// @{

    /// Copies the bytes of `o`, after the growth rule for its size. `o` must not name a part of
    /// this blob's block that is freed for it. Of an `o` without a block only the size is taken:
    /// a new block is then all zeros, and one that stays keeps its bytes.
    void Copy2(const HXBlob& o);

    /// Copies the bytes of `a`, after the growth rule for their number. Without a buffer in `a`,
    /// a new block is all zeros, and one that stays keeps its bytes.
    void Copy(const HXBitArray& a);

    /// Names the bytes of an image as `CopyTo(unsigned char*)` writes it: the size is taken
    /// from the 4 bytes at `p`, and the block stands behind them. Nothing is copied, the old
    /// block is not freed, and the size is believed. Before anything that frees a block,
    /// `Reset` this blob. Null changes nothing.
    void Copy(unsigned char* p);

    /// Copies the bytes of an array of one dimension whose elements are bytes, by the virtual
    /// `Copy`: a block that is there must be large enough. False, with nothing done, for any
    /// other array, for null, and for one that cannot be locked; false also if it cannot be
    /// unlocked afterwards.
    bool Copy(tagSAFEARRAY** pp);

    /// Names the block of `o`. The old block is not freed, and the flag stays.
    void CopyShallow(const HXBlob& o) noexcept {
        m_nSize = o.m_nSize;
        m_pData = o.m_pData;
    }

    /// Copies as many bytes as the smaller one of the two blobs has. The size stays. A blob
    /// with a size and no block gets one; its bytes behind the copied ones are 0.
    void CopyData(const HXBlob& o);

    /// Copies `m_nSize` bytes from `p`, if there are a size, a block and `p`.
    void CopyData(const unsigned char* p) { CopyData(p, m_nSize); }

    /// Copies `n` bytes from `p`, if there are a block and `p`. `n` **is not compared with the
    /// size**: the block must have room.
    void CopyData(const unsigned char* p, ulong n);

    /// Writes an image to `p`, which has room for 4 bytes more than the size: the size as 32
    /// bits in the machine's order, then the bytes. Nothing for a null `p` or without bytes.
    void CopyTo(unsigned char* p) const;

    /// Makes an array of bytes, which the caller ends with `SafeArrayDestroy`, with as many
    /// elements as `m_nSize` says and the bytes that the virtual `CopyDataTo` gives, zeros where
    /// it gives none. A blob whose virtual `GetSize` says more than `m_nSize` gives what it has
    /// in memory: a derived class whose bytes are elsewhere must fetch them first, or the array
    /// has no elements.
    ///
    /// False, with null in `*pp`, without memory for the array and for more than 2^31
    /// elements; false for a null `pp`. What `*pp` held is not freed.
    bool CopyTo(tagSAFEARRAY** pp) const;

    /// @}
    /// @name Joining and nesting
    /// A composite holds an inner and an outer blob in one block: the size of the inner one as
    /// 32 bits in the machine's order, its bytes, then the outer bytes.
    ///
    ///     offset  0            4              4 + a
    ///             [ a: 4 bytes ][ inner: a ]  [ outer ]
    ///
    /// A result that would have 2^32 bytes or more raises the memory exception.
    /// @{

    /// A new block with the bytes of both, this blob's first. The caller ends it.
    HXBlob operator+(const HXBlob& b) const;

    /// `Append`.
    HXBlob& operator+=(const HXBlob& b) {
        Append(b);
        return *this;
    }

    /// Puts the bytes of `b` behind this blob's, by the growth rule: the old block is freed, so
    /// that other blobs that name it dangle. A blob of size 0 with a block must have room
    /// there. Nothing happens if `b` has no bytes. `b` may be this blob.
    void Append(const HXBlob& b);

    /// A new composite with this blob as the inner and `b` as the outer one. The caller ends
    /// it.
    HXBlob operator*(const HXBlob& b) const;

    /// Becomes the composite of `inner` and this blob. The old block is not freed, since
    /// others may look at it, and the flag stays.
    void Embed(const HXBlob& inner);

    /// A view of the inner bytes of a composite. Empty if there are none, if this blob has no
    /// block or fewer than 4 bytes, or if the inner size is not less than this blob's. An inner
    /// size that is up to 3 bytes too large for what stands behind it is let through, and the
    /// view then reaches behind the end.
    HXBlob GetInnerBlob() const;

    /// A view of what stands behind the inner bytes: of size 0, with the address behind the
    /// block, if nothing does. Empty if this blob has no block or fewer than 4 bytes. **The
    /// inner size is believed**: for a block that is no composite, address and size are
    /// meaningless. When the bytes come from outside, use neither view unless the size of this
    /// one is at most `m_nSize - 4`; whether `GetInnerBlob` gives something does not tell.
    HXBlob GetOuterBlob() const;

    /// A view of the bits; what is written there is written to the block. No bits without a
    /// block. Of more than 2^28 - 1 bytes, those are in the view whose bits can be counted.
    HXBitArray GetBits() const;

    /// Spreads the bits of `o` evenly over the bits of this blob, and leaves those between them
    /// as they are: bit i of `o` goes to i times the ratio of the two sizes, rounded down, or
    /// one further if that is where the bit before went. Nothing happens if `o` is empty or
    /// larger than this blob. The places are counted in single precision: from 2^24 bits, 2
    /// MiB, on, they are no longer even, some bits of `o` land on one another, and bits whose
    /// place would lie behind the end are left out.
    void Inject(const HXBlob& o);

    /// @}
    /// @name Searching and comparing
    /// @{

    /// Address of the first `c` at offset `from` or behind it; null if there is none. `from`
    /// **must not be above the size**, which is not checked: what lies behind the block would
    /// be searched.
    unsigned char* FindChar(unsigned char c, ulong from) const;

    /// Address of the first place where the bytes of `pattern` stand; null if there is none, or
    /// if one of the two has no bytes. The place must begin inside the block but **is compared
    /// whole, even where that reaches behind the end**: when the first byte of the pattern may
    /// stand near the end, there must be memory for the rest, and a match may continue there.
    unsigned char* FindData(const HXBlob& pattern) const;

    /// Whether the sizes are equal. **The bytes are not compared**: blobs of one size count as
    /// the same whatever they hold.
    bool IsSameData(const HXBlob& o) const;

    /// Whether the first `n` bytes are 0; also true for a null `p` and for an `n` below 1.
    static bool IsAllZeros(const unsigned char* p, int n);

    /// Reverses the bytes of each group of 4; up to 3 bytes at the end stay.
    void SwapEndianBytes() { SwapEndianBytes(m_pData, m_nSize); }

    /// The same for `n` bytes at `p`; a null `p` is ignored.
    static void SwapEndianBytes(unsigned char* p, ulong n);

    /// @}
    /// @name Text
    /// A text longer than 2^31 - 1 characters raises the memory exception.
    /// @{

    /// Two upper-case hexadecimal digits a byte; empty without bytes.
    CString ToCString() const;

    /// The bytes as text, up to the first zero byte or the end; empty without bytes. Not the
    /// hexadecimal text.
    CString ToString() const;

    /// The hexadecimal text with a closing zero in a new array, which the caller ends with
    /// `delete[]`; its length goes to `nLen`. Null without bytes, and `nLen` then stays.
    char* ToString(int& nLen) const;

    /// Takes the bytes from hexadecimal text of either case, after the growth rule for half its
    /// length; an odd digit at the end is ignored. False for a null text, which changes nothing.
    ///
    /// False also for one with anything but digits: the blob then is empty, and a block that it
    /// had before and that was large enough is not freed and may hold part of the bytes. Half
    /// the length is counted in single precision: of a text above 2^24 characters up to 2 in
    /// 2^24 may be left unread, or be missed at the end, which counts as bad text.
    bool StringToBinary(const char* s);

    /// @}
    /// @name Files
    /// What a file cannot give or take is told by the result where the comment says so;
    /// any other failure of the file raises its `CFileException`.
    ///
    /// A file is opened for writing as it is, if it exists, and made otherwise: **what an
    /// existing longer file holds behind the blob's bytes stays there.** Others can then read
    /// it, but not write.
    /// @{

    /// As the virtual `Read`, but for `nCount` bytes, or as many as the file is long if that is 0.
    /// `nOffset` moves **the place in the new block where the bytes go**, not the position in
    /// the file, and the block gets no room for it: unless the file ends early enough, bytes
    /// are written behind the block. Keep it at 0.
    int ReadNonVirt(CFile& f, ulong nOffset, ulong nCount);

    /// Opens the file at `path` and reads it by the virtual `Read`. False, with the blob
    /// unchanged, if it cannot be opened; the result tells nothing else.
    bool Read(const CString& path);

    /// Opens the file at `path` and reads it by `ReadNonVirt`; the result as for `Read`.
    bool ReadNonVirt(const CString& path, ulong nOffset, ulong nCount);

    /// As the virtual `Write`, which it does not call.
    bool WriteNonVirt(CFile& f) const;

    /// Writes to the file at `path` by the virtual `Write`. False if it cannot be opened or
    /// does not take the bytes.
    bool Write(const CString& path) { return Write(path, false); }

    /// The same; with `bCreate`, an existing file is emptied first.
    bool Write(const CString& path, bool bCreate);

    /// Writes to the file at `path`, not by the virtual `Write`.
    bool WriteNonVirt(const CString& path) const;

    /// Writes by the virtual `Write` to a new file in the directory for temporary files, and
    /// answers its path. The name begins with "ztxl" and ends with ".tmp", or with `ext` behind
    /// the point if that is not null. Empty if the file cannot be made or written; nothing is
    /// left behind then. An `ext` by which the file cannot be renamed raises the
    /// `CFileException`, and the empty file stays.
    CString WriteToTempFile(const char* ext);

    /// @}
    /// @name Archive, resources, documents
    /// @{

    /// Storing: the size as 32 bits in little-endian order, then the bytes. Loading: frees the
    /// block and reads into a new one.
    ///
    /// A record that the archive does not hold whole raises the archive exception with the
    /// cause `endOfFile`; the blob is then empty, or unchanged if not even the size is there. A
    /// false size claims at most three times as much memory as the archive has bytes, or 1 MiB
    /// if that is more; without it the memory exception is raised, and the blob is empty.
    void Serialize(CArchive& ar);

    /// The bytes alone, without the size.
    void Write(CArchive& ar) const;

    /// Frees the block and copies a resource into a new one. 0 for success; else a code: 8 for a
    /// null `type`, 9 for a null `name`, others as `ResourceManager::LoadResource` gives them
    /// for the module file `module`, or for the calling module if that is null. **Such a code
    /// is also left as the size**, while the block stays: after a code that is not 8 or 9, set
    /// the size right or `Reset` the blob.
    ulong LoadResource(const char* name, const char* type, const char* module);

    /// Writes the bytes as a resource into the module file `module`, as
    /// `ResourceManager::UpdateResourceA` does: an empty blob takes the resource away. False for
    /// a null `name` or `type` and if the file could not be changed.
    bool WriteResource(const char* name, const char* type, const char* module);

    /// An element "Bl" with the size in "Sz" and, unless that is 0, the bytes as hexadecimal
    /// text in "Dt". Storing makes it a child of the current element; the result is true.
    ///
    /// Loading empties the blob, freeing the block. The element is the current one if that is
    /// a "Bl", otherwise its first child of that name. False if there is none, or if it has no
    /// "Dt" or the size 0; **the size from "Sz" then stays although there is no block.** True
    /// otherwise, whatever the text: bytes that it has no digits for, or that follow something
    /// that is no digit, are 0. A size for which the digits of more than 16 MiB are missing
    /// counts as one for which there is no memory: the memory exception, and an empty blob.
    ///
    /// A blob with a size and no block is stored with that size and an empty "Dt". Loaded again
    /// it has a block of zeros, but **above 16 MiB it cannot be loaded**. One that was left so by
    /// loading is best set right, or `Reset`, before it is stored.
    ///
    /// A context in neither mode gives true and nothing else.
    bool PersistXML(PCExBase& pc);

    /// @}

    ulong m_nSize;           ///< Bytes of the block, as far as the blob knows.
    unsigned char* m_pData;  ///< The block, or null.
    bool m_bAutoDelete;      ///< Whether the destructor frees the block.

private:
    static constexpr ulong kNowhere = 0xFFFFFFFF;

    /// How far `p` lies behind the start; very far if it lies before it.
    std::uintptr_t Distance(const unsigned char* p) const {
        return reinterpret_cast<std::uintptr_t>(p) - reinterpret_cast<std::uintptr_t>(m_pData);
    }

    /// Number of bytes that are really there.
    ulong Held() const { return m_pData ? m_nSize : 0; }

    void Renew(ulong n);
    bool Grow(ulong n);
    void Fill(const unsigned char* p, bool fresh);
    bool DecodeDigits(const CString& digits);
};

}  // namespace ZT

/// A blob in an archived array: 32 bytes, of which the 4 at offset 8 are the size in
/// little-endian order and the byte at offset 24 is the flag; the others are 0. The bytes of
/// the block are not in the record, so a loaded element is an empty blob. An element that is
/// loaded over does not free its block.
template <>
ZT_API void SerializeElements<ZT::HXBlob>(CArchive& ar, ZT::HXBlob* pElements, INT_PTR nCount);

/// Blobs in an array change places with their flags, and without freeing anything.
template <>
ZT_API void RelocateElements<ZT::HXBlob>(ZT::HXBlob* pDest, ZT::HXBlob* pSrc,
                                         INT_PTR nCount) noexcept;
