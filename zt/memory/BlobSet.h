/// @file
/// Several blobs read as one sequence of bytes.

#pragma once

#include <platform/collections/CArray.h>
#include <zt/memory/BlobSetPtr.h>
#include <zt/memory/HXBlob.h>

extern template class ZT_API Collections::ElementArray<ZT::HXBlob, ZT::HXBlob>;
extern template class ZT_API CArray<ZT::HXBlob, ZT::HXBlob>;

namespace ZT {

/// An ordered array of blobs that are read as one sequence of bytes, such as a message in
/// several pieces that nobody has to glue together.
///
///     blobs       [ a b c ]   [ ]   [ d e f g h ]
///     index           0        1          2
///     position      0 1 2             3 4 5 6 7
///
/// A byte is named by its position, counted from the start of the first blob, or by a
/// `BlobSetPtr`, its address and the index of its blob. Blobs of size 0 occupy no positions. A
/// blob with a size and no block makes positions behind it meaningless: ask `IsValid` first.
///
/// The set shares the blocks with whoever added the blobs: adding copies size and address, and
/// the set frees no block, unless an element was given `m_bAutoDelete` by assignment. Blocks
/// that the set makes itself are the caller's to free.
///
/// Everything else is as in the array: an index out of bounds raises the invalid-argument
/// exception, and `GetSize` is the number of blobs, not of bytes.
///
/// An archive of a set holds the number of the blobs and, for each, a record without its bytes:
/// what is loaded is a set of as many empty blobs. Elements behind the loaded number are ended,
/// which frees a block that one of them has with `m_bAutoDelete`; no other block that was there
/// before is freed.
class ZT_API BlobSet : public CArray<HXBlob, HXBlob> {
public:
    /// No blobs.
    BlobSet() = default;

    ~BlobSet() override;

    /// @name The whole
    /// @{

    /// Number of bytes in all blobs, in 32 bits: more than that wrap.
    ulong GetLength() const;

    /// Adds a blob of zeros at the end, so that there are `n` bytes in all; the caller frees its
    /// block. False, with nothing changed, if there are as many already.
    bool SetLength(ulong n);

    /// Address of the first blob's block; null for an empty set. Hides the array's operation of
    /// that name.
    unsigned char* GetData() const;

    /// Whether there is a blob of that index.
    bool InRange(int i) const { return 0 <= i && i < GetSize(); }

    /// Whether every blob has a size and a block; true for an empty set.
    bool IsValid() const;

    /// Lets go of all blocks, freeing none: the blobs become empty ones.
    void Reset();

    /// Copies the bytes of all blobs, in order, into the block of `dst`, which **must have room
    /// for them**. Places of a blob without a block are left as they are. Nothing without a
    /// block.
    void CopyTo(HXBlob& dst) const;

    /// All bytes in one new blob, which the caller ends with `Delete`; zeros in the places of a
    /// blob without a block. 2^32 bytes and more raise the memory exception.
    HXBlob GetMergedBlob() const;

    /// @}
    /// @name Positions
    /// @{

    /// Address of the byte at a position; null behind the end.
    unsigned char* GetPointer(ulong pos) const;

    /// Position of the byte at `p`; 0xFFFFFFFF if no blob holds it. The address behind the last
    /// byte of a blob belongs to none.
    ulong GetPosition(const unsigned char* p) const;

    /// Address of the byte `n` positions behind the one at `p`; null behind the end. For a `p`
    /// that no blob holds, the position 0xFFFFFFFF wraps: `n` - 1 positions behind the start.
    unsigned char* IncrementPointer(const unsigned char* p, ulong n) const;

    /// Index of the first blob from `iFirst` on that holds `p`, or -1. A negative `iFirst` raises
    /// the invalid-argument exception.
    int FindBlob(const unsigned char* p, int iFirst) const;

    /// @}
    /// @name Walking
    /// @{

    /// Whether the blob of `p` holds the byte of `p`. False for a null address; an index that is
    /// not in range raises the invalid-argument exception.
    bool IsValid(const BlobSetPtr& p) const;

    /// The start of the first blob, which has a null address if that has no block. An empty set
    /// raises the invalid-argument exception.
    BlobSetPtr GetHead() const;

    /// Moves `p` to the start of the next blob, also an empty one. False at the last blob or
    /// behind it: `p` then has a null address and the index -1. Behind that, the walk begins
    /// again: the index -1 is before the first blob. An index below -1 raises the
    /// invalid-argument exception.
    bool GetNextBlob(BlobSetPtr& p) const;

    /// Moves `p` by `n` bytes, across blobs. An index that is not in range raises the
    /// invalid-argument exception.
    ///
    /// False when there are fewer bytes: `p` then has a null address, and its index is -1, except
    /// that **it stays where it was when `p` was in the last blob**. In a blob that does not hold
    /// `p`, such as one of size 0, the address is moved all the same: walk a set with empty blobs
    /// by `GetNextBlob`.
    bool Increment(BlobSetPtr& p, ulong n) const;

    /// @}

private:
    INT_PTR Count() const;
    const HXBlob& At(INT_PTR i) const;
    BlobSetPtr StartOf(INT_PTR i) const;
};

}  // namespace ZT
