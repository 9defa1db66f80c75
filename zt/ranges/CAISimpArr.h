/// @file
/// A growable array whose copies share their elements.

#pragma once

#include <platform/files/CArchive.h>
#include <platform/object/Allocation.h>
#include <platform/object/CMemoryException.h>
#include <zt/frame/ZT.h>
#include <zt/numerics/Constants.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

namespace ZT {

/// A growable array of `T`, with a count of the elements in use and a capacity. All elements up
/// to the capacity exist, made by their default constructor, plain ones as 0; what lies between
/// count and capacity holds whatever was there before.
///
/// **No operation tests an index**, and none tests whether there is a last element.
///
/// **Copying** an array, by constructor or `=`, is cheap: the copy shares the elements, so that
/// what is written through one shows in the other, while each has its own count. `Copy` is the
/// deep form. When one of the two needs more room it moves to elements of its own, and from then
/// on they are apart.
///
/// **Ownership.** An array notes whether it has a part in the block of elements that it made, and
/// the last array that has one frees the block, whatever the order in which they end. It has no
/// part in elements that were attached to it: they stay with the caller, who frees them when no
/// array uses them any more. `Detach`, `Attach` and `=` give up an array's part in its block
/// without freeing it: if no other array has one, the block is now the caller's, who has taken
/// `GetData` before and ends it with `delete[]`. A block of which nobody took note is lost.
///
/// Elements that change places, or move to a larger block, are assigned. Where the assignment of
/// `T` leaves alone what is nearly the same, so does a move, and where it does not give the same,
/// nor does a move: an empty angular `Range` in radians, with its limits at pi, arrives as the full
/// circle.
///
/// Room grows by more than is asked for, so that adding one by one stays cheap; only `Create`,
/// `SetSize`, `SetSizeGrow` and `SetCount` make it exactly as large as they say. Memory that cannot
/// be had raises the platform's memory exception and leaves the array as it was.
///
/// One thread at a time may use arrays that share elements.
template <class T>
class CAISimpArr {
public:
    /// The elements, or null.
    T* m_pData = nullptr;
    /// The capacity, in elements.
    int64 m_nSize = 0;
    /// The elements in use.
    int64 m_nCount = 0;
    /// The number of elements of which `SetAtGrow` makes the capacity at least the next multiple.
    int64 m_nBlock = 3;

    /// @name Making and sharing
    /// @{

    /// The empty array, without memory.
    CAISimpArr() = default;

    /// An array that shares the elements of `src`.
    CAISimpArr(const CAISimpArr& src) = default;

    /// Ends the elements, all up to the capacity, unless another array shares them or they were
    /// attached.
    ~CAISimpArr() = default;

    /// Shares the elements of `src` from now on, and takes over count, capacity and block. The
    /// present elements are not freed; see the class.
    CAISimpArr& operator=(const CAISimpArr& src) {
        if (this == &src) return *this;
        LeaveBlock();
        Share(src);
        return *this;
    }

    /// Uses the `n` elements at `p` from now on, all of them counted. They are neither copied nor
    /// will they be freed, and have to outlive their use here; `const` does not protect them. Those
    /// of another array end when it does, and when it moves to more room. The present elements are
    /// not freed; see the class.
    void Attach(const T* p, int64 n) {
        LeaveBlock();
        m_pData = const_cast<T*>(p);
        m_nSize = m_nCount = n;
    }

    /// Becomes empty, without memory. The present elements are not freed; see the class.
    void Detach() { Attach(nullptr, 0); }

    /// Ends the elements of this array, which is empty afterwards, and gives nothing: `sub` is a
    /// copy, which takes them over and ends with the call. Deliberately so; it is here because
    /// clients may name it. Elements that another array shares, or that were attached, live on.
    /// For a part of an array see `CopySubArr`.
    void GetSubArray(CAISimpArr sub, int64 from, int64 to) {
        sub.Share(*this);
        sub.m_nSize = sub.m_nCount = to - from + 1;
        m_pBlock.reset();
        Detach();
    }

    /// @}
    /// @name Elements
    /// A `const` array does not protect its elements.
    /// @{

    T& operator[](int64 i) { return m_pData[i]; }
    const T& operator[](int64 i) const { return m_pData[i]; }
    T& Elem(int64 i) { return m_pData[i]; }
    T& GetAt(int64 i) const { return m_pData[i]; }
    /// A copy of element `i`.
    T operator()(int64 i) const { return m_pData[i]; }
    /// The last element.
    T& GetLast() const { return m_pData[m_nCount - 1]; }
    /// The last element, whatever the index, deliberately. `GetAt` goes by the index.
    T& GetRefAt(int64) const { return GetLast(); }
    T* GetData() const { return m_pData; }

    /// @}
    /// @name Count and capacity
    /// @{

    int64 GetCount() const { return m_nCount; }
    /// The capacity, not the count.
    int64 GetSize() const { return m_nSize; }
    /// Whether the count is 0.
    bool IsEmpty() const { return m_nCount == 0; }

    /// Replaces the elements by default ones, as many as the capacity. The count stays.
    void Create() { Reallocate(m_nSize, 0); }

    /// Makes the capacity `n`. If that is no more than it was, only the figure changes and the
    /// elements stay; otherwise they are replaced by default ones. The count stays; if it is above
    /// the new elements, it has to be lowered before they are used.
    void Create(int64 n) {
        if (m_pData != nullptr && n <= m_nSize) {
            m_nSize = n;
        } else {
            Reallocate(n, 0);
        }
    }

    /// Makes room for `n` elements. **If there is not room enough the contents are lost**, and
    /// all elements are default ones; `SetSizeGrow` keeps them. The count stays.
    void SetSize(int64 n) {
        if (n > m_nSize) Reallocate(n, 0);
    }

    /// `SetSize(n)`, then `SetCount(count)`.
    void SetSize(int64 n, int64 count) {
        SetSize(n);
        SetCount(count);
    }

    /// Makes room for `n` elements and keeps the contents. The count stays.
    void SetSizeGrow(int64 n) {
        if (n > m_nSize) Reallocate(n, m_pData != nullptr ? m_nSize : 0);
    }

    /// Makes the count `n`, with room for it. Elements that come into use hold what they held.
    void SetCount(int64 n) {
        SetSizeGrow(n);
        m_nCount = n;
    }

    /// Does nothing.
    void Air(int64) {}

    /// @}
    /// @name Adding and removing
    /// @{

    /// Takes one more element into use, and returns it. It holds what it held.
    T* Add() {
        Grow(m_nCount + 1);
        return m_pData + m_nCount++;
    }

    /// Puts `value` behind the last element, and returns its index.
    int64 Add(T value) {
        *Add() = value;
        return m_nCount - 1;
    }

    /// Sets element `i`. One behind the last makes the count `i` + 1; what lies between comes
    /// into use as it is. Where the capacity does not reach, it becomes at least the next
    /// multiple of the block that holds the element; a block below 1 becomes 5 first.
    void SetAtGrow(int64 i, const T& value) {
        const T arriving(value);  // it may be an element
        if (i >= m_nSize) Grow(CapacityInBlocks(i));
        m_pData[i] = arriving;
        m_nCount = std::max(m_nCount, i + 1);
    }

    /// Inserts `value` before element `i`, which moves up with all behind it.
    void InsertAt(int64 i, const T& value) {
        const T arriving(value);  // it may be an element
        OpenGap(i, 1);
        m_pData[i] = arriving;
    }

    /// Removes `n` elements, from element `i` on; those behind move down. Nothing happens if `n`
    /// is below 1. Whether there are so many is not tested.
    void RemoveAt(int64 i, int64 n) {
        if (n <= 0) return;
        for (int64 k = i; k + n < m_nCount; ++k) m_pData[k] = m_pData[k + n];
        m_nCount -= n;
    }

    /// @}
    /// @name Copying elements
    /// @{

    /// Assigns the elements of `src`, and takes over its count: the deep copy. Elements beyond
    /// the count are assigned, too, as far as both have them. An array without room for the
    /// count, or that shares the elements of `src`, first gets new ones.
    void Copy(const CAISimpArr& src) {
        // Held, for src may be this array, or stand on its elements without a part in them.
        const std::shared_ptr<Block> present = m_pBlock;
        const T* const from = src.m_pData;
        const int64 existing = src.Existing();
        const bool shares = this != &src && SharesWith(src);
        if (shares || m_nSize < src.m_nCount) Reallocate(std::max(m_nSize, src.m_nCount), 0);
        if (m_pData == nullptr) Create();
        Assign(0, from, std::min(m_nSize, existing));
        m_nCount = src.m_nCount;
    }

    /// Assigns the elements of `src`, from element `from` to its last, to this array from element
    /// `at` on, and makes the count so large that it covers them. The capacity follows. `src` may
    /// be this array, or share its elements: they arrive as they were before.
    void Copy(const CAISimpArr& src, int64 at, int64 from) {
        const int64 n = src.m_nCount - from;
        if (n <= 0) return;
        if (SharesWith(src)) return Copy(DeepCopy(src), at, from);
        Grow(at + n);
        Assign(at, src.m_pData + from, n);
        m_nCount = std::max(m_nCount, at + n);
    }

    /// Becomes the elements of `src` from element `from` to element `to`, both included, in
    /// reverse order if `bReverse` is true. They may lie beyond the count of `src`, up to its
    /// capacity.
    void CopySubArr(const CAISimpArr& src, int64 from, int64 to, bool bReverse) {
        if (SharesWith(src)) return CopySubArr(DeepCopy(src), from, to, bReverse);
        SetCount(to - from + 1);
        for (int64 k = 0; k < m_nCount; ++k) {
            m_pData[k] = src.m_pData[bReverse ? to - k : from + k];
        }
    }

    /// @}
    /// @name Order
    /// @{

    /// The index of the first element that equals `*p`; -1 if none does.
    int64 Find(const T* p) const {
        for (int64 i = 0; i < m_nCount; ++i) {
            if (m_pData[i] == *p) return i;
        }
        return -1;
    }

    /// Whether no element is less than the one before, by the `<` of `T`. Between ranges that
    /// asks whether one lies inside the other, and not which comes first, deliberately.
    bool IsIncreasing() const {
        for (int64 i = 1; i < m_nCount; ++i) {
            if (m_pData[i] < m_pData[i - 1]) return false;
        }
        return true;
    }

    /// Becomes the merger of two arrays, and returns the count. The lists are walked side by
    /// side: that of `a` comes first if it is `<=` that of `b`, otherwise that of `b`, and if
    /// their difference by `-` is below the tolerance the other is dropped as a duplicate. The
    /// rest of either follows as it is.
    ///
    /// Between ranges `<=` asks whether the second contains the first, and `-` is the distance
    /// of their lower limits, deliberately; so the result need not be in ascending order.
    int64 Merge(const CAISimpArr& a, const CAISimpArr& b) {
        if (SharesWith(a)) return Merge(DeepCopy(a), b);
        if (SharesWith(b)) return Merge(a, DeepCopy(b));
        int64 n = a.m_nCount + b.m_nCount;
        SetSizeGrow(n);
        if (a.IsEmpty() || b.IsEmpty()) {
            Copy(a.IsEmpty() ? b : a);
            return n;
        }
        Walker inA{a};
        Walker inB{b};
        for (int64 k = 0; k < n; ++k) {
            const double d = inA.Element() - inB.Element();
            const bool takesA = inA.Element() <= inB.Element();
            Walker& taken = takesA ? inA : inB;
            Walker& other = takesA ? inB : inA;
            m_pData[k] = taken.Element();
            ++taken.i;
            if (zToler > std::fabs(d)) {
                --n;
                ++other.i;
            }
            // An end of the other list comes before one of the list that was taken from.
            const bool otherEnds = other.IsAtEnd();
            if (!otherEnds && !taken.IsAtEnd()) continue;
            const Walker& rest = otherEnds ? taken : other;
            Copy(rest.array, k + 1, rest.i);
            break;
        }
        m_nCount = n;
        return n;
    }

    /// @}
    /// @name Persistence
    /// @{

    /// Stores the low halves of capacity and count as two 32-bit integers, and then each element
    /// by its own `Serialize`; or loads them. On loading the array gets the capacity by `SetSize`,
    /// so that its elements stay where there is room already, and then the count. The archive
    /// raises its exception when it ends early.
    ///
    /// **The figures of a file are believed.** Elements that store nothing, as ranges do, need no
    /// bytes to stand for them, so that a file of 8 bytes can ask for 2^31 - 1 of them. That is
    /// made, or raises the memory exception. Do not load files of strangers.
    void Serialize(CArchive& ar) {
        if (ar.IsStoring()) {
            ar << static_cast<std::int32_t>(m_nSize) << static_cast<std::int32_t>(m_nCount);
        } else {
            std::int32_t size;
            std::int32_t count;
            ar >> size >> count;
            SetSize(size, std::max(count, 0));
        }
        for (int64 i = 0; i < m_nCount; ++i) m_pData[i].Serialize(ar);
    }

    /// @}

protected:
    // Makes room for `n` elements, and where it has to be made, for some more.
    void Grow(int64 n) {
        if (n > m_nSize) SetSizeGrow(std::max(n, 2 * m_nSize));
    }

    // Takes `n` more elements into use, by moving those from `i` to the last one up.
    void OpenGap(int64 i, int64 n) {
        Grow(m_nCount + n);
        for (int64 k = m_nCount; k-- > i;) m_pData[k + n] = m_pData[k];
        m_nCount += n;
    }

    // Assigns the `n` elements at `from` to those from `at` on.
    void Assign(int64 at, const T* from, int64 n) {
        for (int64 k = 0; k < n; ++k) m_pData[at + k] = from[k];
    }

    // Whether an element of this array may be one of `other`, too, or lie in its block. The other
    // one may stand on a part of these elements, by `Attach`.
    bool SharesWith(const CAISimpArr& other) const {
        const std::less<const T*> before;
        const Elements own = AllElements();
        const Elements others = other.AllElements();
        return before(own.begin, others.end) && before(others.begin, own.end);
    }

    // A deep copy of all elements that there are.
    static CAISimpArr DeepCopy(const CAISimpArr& src) {
        CAISimpArr copy;
        copy.SetSize(src.Existing());
        copy.Copy(src);
        return copy;
    }

    // Shares everything of `src`, and frees the present elements if nobody has a part in them
    // then. If `src` stands on them without a part, this array keeps its own.
    void ShareInstead(const CAISimpArr& src) {
        const std::shared_ptr<Block> present = m_pBlock;
        const bool standsOnThem = src.m_pBlock == nullptr && SharesWith(src);
        Share(src);
        if (standsOnThem) m_pBlock = present;
    }

private:
    struct Elements {
        const T* begin;
        const T* end;
    };

    // Elements, with their true number: the capacity of an array may be a smaller figure.
    struct Block {
        std::unique_ptr<T[]> elements;
        int64 size;

        Elements All() const { return {elements.get(), elements.get() + size}; }
    };

    // The whole block that the elements lie in; of those that are the caller's, as many as the
    // figures tell.
    Elements AllElements() const {
        const std::less<const T*> before;
        if (m_pBlock != nullptr) {
            const Elements all = m_pBlock->All();
            if (!before(m_pData, all.begin) && !before(all.end, m_pData)) return all;
        }
        return {m_pData, m_pData + (m_pData != nullptr ? std::max(m_nSize, m_nCount) : 0)};
    }

    // How many elements there are from the first one on, whatever `Create` made of the capacity.
    int64 Existing() const { return AllElements().end - m_pData; }

    // Takes over all fields of `src`. The part in the present block is given up.
    void Share(const CAISimpArr& src) {
        m_pData = src.m_pData;
        m_nSize = src.m_nSize;
        m_nCount = src.m_nCount;
        m_nBlock = src.m_nBlock;
        m_pBlock = src.m_pBlock;
    }

    // A place in one of two arrays that are merged.
    struct Walker {
        const T& Element() const { return array.m_pData[i]; }
        bool IsAtEnd() const { return i == array.m_nCount; }

        const CAISimpArr& array;
        int64 i = 0;
    };

    static std::shared_ptr<Block> NewBlock(int64 n) {
        std::unique_ptr<T[]> elements(AfxNewArray<T>(static_cast<std::size_t>(n)));
        if constexpr (std::is_trivially_default_constructible_v<T>) {
            std::fill_n(elements.get(), n, T());
        }
        try {
            return std::make_shared<Block>(Block{std::move(elements), n});
        } catch (const std::bad_alloc&) {
            AfxThrowMemoryException();
        }
    }

    // Moves to a new block of `n` elements, the first `kept` of which are assigned from the old.
    void Reallocate(int64 n, int64 kept) {
        std::shared_ptr<Block> block = NewBlock(n);
        T* const elements = block->elements.get();
        for (int64 k = 0; k < kept; ++k) elements[k] = m_pData[k];
        m_pBlock = std::move(block);
        m_pData = elements;
        m_nSize = n;
    }

    // Gives up the part in the block, and leaves it to the caller if nobody else has one.
    void LeaveBlock() {
        if (m_pBlock.use_count() == 1) static_cast<void>(m_pBlock->elements.release());
        m_pBlock.reset();
    }

    int64 CapacityInBlocks(int64 i) {
        if (m_nBlock < 1) m_nBlock = 5;
        // One block more where the element would be the first behind the last block.
        return m_nBlock * (i / m_nBlock + 1);
    }

    // The block of `m_pData`, held together with the other arrays that have a part in it; null
    // for elements that are the caller's.
    std::shared_ptr<Block> m_pBlock;
};

}  // namespace ZT
