/// @file
/// Memory seen as numbered bits.

#pragma once

#include <platform/text/CString.h>
#include <zt/frame/ZT.h>

#include <cstdint>

namespace ZT {

/// A view of `m_nBits` bits in the bytes at `m_pBits`, which may be null.
///
/// Bit i stands in byte i / 8 at the mask 1 << (i mod 8): bit 0 is the lowest bit of the
/// first byte. The byte count is the number of bits divided by 8 and rounded up, and 0 for a
/// negative number of bits; what stands in the last byte past the last bit is called stray
/// here.
///
/// The bytes usually belong to someone else. The destructor frees nothing, and a plain copy
/// names the same bytes. `SetSize` and the two `Copy` operations may allocate a block with
/// `new[]`, and `SetSize` ends the block that it replaces with `delete[]`. So whoever lets
/// an array grow has to see to it that its bytes came from `new[]`, and ends the last block
/// by hand: `delete[] array.GetByte(0)`.
///
/// No index is checked, and an operation tolerates a null buffer only where it says so:
/// anything else reads or writes outside of the buffer. An index of an operation that writes,
/// and that of `GetByte`, is turned into a byte index in single precision; above bit
/// 16777216 it can name a byte next to the one that the reading operations look at.
///
/// The static operations do the same on a plain word, so that flags need no object.
class ZT_API HXBitArray {
public:
    /// No buffer and no bits.
    HXBitArray() : HXBitArray(nullptr, 0) {}
    /// A view of 32 bits.
    explicit HXBitArray(unsigned char* p) : HXBitArray(p, 32) {}
    explicit HXBitArray(ulong& word) : HXBitArray(BytesOf(word)) {}
    /// A view of `n` bits.
    HXBitArray(unsigned char* p, int n) : m_pBits(p), m_nBits(n) {}
    /// A view of `n` bits, all set to `bValue`, the stray ones included, unless `p` is null.
    HXBitArray(unsigned char* p, int n, bool bValue) : HXBitArray(p, n) { SetAll(bValue); }

    /// A copy names the same bytes: what is written through one shows in the other. For
    /// bytes of its own, see `Copy`.
    HXBitArray(const HXBitArray&) = default;
    HXBitArray& operator=(const HXBitArray&) = default;

    /// Frees nothing.
    virtual ~HXBitArray();

    /// Names `n` bits at `p`. Frees and copies nothing.
    void SetData(unsigned char* p, int n) {
        m_pBits = p;
        m_nBits = n;
    }

    /// Makes `n` the number of bits. If that takes more bytes than the present number of
    /// bits, the present buffer is ended with `delete[]` and a new one without defined
    /// contents takes its place: growing loses the bits. Otherwise the buffer stays as it is.
    /// Raises the memory exception, with the array unchanged, when there is no memory.
    void SetSize(int n);

    /// `SetSize` to the number of bits of `src`, and a copy of its bytes. A null buffer in
    /// `src` changes nothing. When this array has to grow and both name one block, `src` and
    /// all others that name it are left with a freed one. An array that has no buffer but
    /// enough bits gets none; the caller has to avoid that. Raises the memory exception, with
    /// the array unchanged, when there is no memory.
    void Copy(const HXBitArray& src);

    /// Copies as many bytes as this array has from `p`, and takes a new block for them if it
    /// has no buffer yet. A null `p` changes nothing. Raises the memory exception, and the
    /// array has no buffer still, when there is no memory.
    void Copy(const unsigned char* p);

    /// Copies the bytes to `p`, which needs room for `GetByteCount()` of them. A null `p` is
    /// ignored.
    void CopyTo(unsigned char* p) const;

    /// @name Single bits
    /// @{
    bool Get(int i) const { return Bit(m_pBits, i); }

    void Set(int i, bool b) { SetBit(i, b, m_pBits); }

    void Clear(int i) { SetBit(i, false, m_pBits); }
    /// @}

    /// @name All bits
    /// @{

    /// Sets all bytes to 0; nothing with a null buffer.
    void ClearAll() { SetAll(false); }

    /// Sets all bytes to 0xFF or 0; nothing with a null buffer.
    void SetAll(bool b);

    /// Whether all bytes are 0. A stray bit counts.
    bool IsClear() const;

    /// Index of the first bit equal to `b`, or -1. Stray bits are not looked at.
    int FindFirstBit(bool b) const;

    /// Whether the bit counts and all bytes are equal. Stray bits count.
    bool operator==(const HXBitArray& o) const;
    bool operator!=(const HXBitArray& o) const { return !(*this == o); }
    /// @}

    /// @name Runs of bits
    /// `first` and `last` are the places of the two end bits of the run, both in it.
    /// @{

    /// The run as a number with bit `first` as its lowest. Only the first eight bits of the
    /// run count. 0 when `first` is above `last`. Does not return when `last` is 255: the
    /// walk never gets past it. Pass a smaller one.
    unsigned char GetBitsValue(unsigned char first, unsigned char last) const;

    /// The run with each bit at its own place: bit k counts as 1 << k, not shifted down as
    /// by `GetBitsValue`. From bit 32 on, the places begin again at 0 and the values are
    /// added: with bits 0 and 32 both set, GetVal(0, 32) is 2. 0 when `first` is above
    /// `last`.
    ulong GetVal(int first, int last) const;

    /// Sets the bits that `mask` has to `b`; the others stay.
    void SetBits(ulong mask, bool b);

    /// Writes the low bits of `value` into the run, its lowest bit to `first`. A run longer
    /// than 16 bits gets zeros from the seventeenth on. Nothing when `first` is above `last`.
    void SetBitsValue(unsigned char first, unsigned char last, unsigned short value);
    /// @}

    /// @name Bytes
    /// @{

    /// Address of the byte that holds bit `i`.
    unsigned char* GetByte(int i) const { return m_pBits + WrittenByte(i); }

    /// The byte that holds bit `i`, which becomes the place of the bit in that byte.
    unsigned char GetByteValFactor(int& i) const {
        const unsigned char byte = m_pBits[i / 8];
        i %= 8;
        return byte;
    }

    int GetByteCount() const { return GetByteCount(m_nBits); }

    /// The number of bytes for `n` bits; 0 for a negative `n`.
    static constexpr int GetByteCount(int n) { return n > 0 ? (n - 1) / 8 + 1 : 0; }
    /// @}

    /// @name Flags in a word
    /// @{

    /// The byte with bit i mod 8 set and the others clear.
    static constexpr unsigned char ConstructFlagByte(int i) {
        return static_cast<unsigned char>(1 << (i & 7));
    }

    /// The byte with bit i mod 8 clear and the others set.
    static constexpr unsigned char ConstructHoleByte(int i) {
        return static_cast<unsigned char>(~ConstructFlagByte(i));
    }

    /// Bit `i` of the memory that begins with `word`.
    static bool GetFlag(int i, const ulong& word) { return Bit(BytesOf(word), i); }
    static bool GetFlag2(int i, const uint64& word) { return Bit(BytesOf(word), i); }

    /// Sets bit `i` of the memory that begins with `word` to `b`.
    static void SetFlag(int i, bool b, ulong& word) { SetBit(i, b, BytesOf(word)); }
    static void SetFlag2(int i, bool b, uint64& word) { SetBit(i, b, BytesOf(word)); }

    /// Whether bit i mod 32 of `byte` is set: false for the bits that a byte lacks.
    static bool GetFlagByte(unsigned char i, const unsigned char& byte) {
        return (byte & (1u << (i % 32))) != 0;
    }

    /// Sets or clears bit `i` of `byte`, where setting and clearing differ for an `i` of 8 or
    /// more. Setting takes bit i mod 32 of `byte` itself, and changes nothing when the byte
    /// lacks that bit. Clearing takes bit i of the memory that begins with `byte`, so there
    /// must be enough of it.
    static void SetFlagByte(unsigned char i, bool b, unsigned char& byte) {
        if (b) {  // Not the byte that clearing goes to, deliberately.
            byte = static_cast<unsigned char>(byte | (1u << (i % 32)));
        } else {
            SetBit(i, false, &byte);
        }
    }

    /// Sets the bit of `word` that is the lowest one in `mask` to `b`. The others in `mask`
    /// are ignored; an empty one changes nothing. For all of them, see `SetBits`.
    static void SetFlagFromValue(ulong mask, bool b, ulong& word);
    /// @}

    /// @name Text
    /// @{

    /// Two upper-case digits a byte, the first byte first; empty with a null buffer.
    CString GetHexString() const;

    /// The bits as characters "0" and "1", bit 0 at the right end.
    CString GetString() const;
    /// @}

    unsigned char* m_pBits;  ///< The bytes; may be null.
    std::int32_t m_nBits;    ///< Number of bits.

private:
    // Not the byte that reading goes to, deliberately: the index is rounded to single
    // precision.
    static int WrittenByte(int i) { return static_cast<int>(static_cast<float>(i) * 0.125f); }

    static bool Bit(const unsigned char* bytes, int i) {
        return (bytes[i / 8] & ConstructFlagByte(i)) != 0;
    }

    static void SetBit(int i, bool b, unsigned char* bytes) {
        unsigned char& byte = bytes[WrittenByte(i)];
        byte &= ConstructHoleByte(i);
        if (b) byte |= ConstructFlagByte(i);
    }

    template <class Word>
    static unsigned char* BytesOf(Word& word) {
        return reinterpret_cast<unsigned char*>(&word);
    }
    template <class Word>
    static const unsigned char* BytesOf(const Word& word) {
        return reinterpret_cast<const unsigned char*>(&word);
    }
};

}  // namespace ZT
