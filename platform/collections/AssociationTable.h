/// @file
/// The hash table that all maps share.

#pragma once

#include <platform/base/Types.h>
#include <platform/collections/CPlex.h>
#include <platform/collections/POSITION.h>
#include <platform/collections/TableSize.h>
#include <platform/object/CInvalidArgException.h>
#include <platform/object/CMemoryException.h>

#include <cstddef>
#include <iterator>
#include <memory>
#include <new>
#include <type_traits>

namespace Collections {

/// The associations of a map and every operation on them: what `CMapPtrToPtr`,
/// `CMapStringToPtr` and `CMap` have in common.
///
/// Each association of a key with a value stands in the bucket that its key's hash names.
/// The table grows with its content, so that a look-up takes the same time however large
/// the map becomes, unless `InitHashTable` fixed its size. Associations are cut from blocks
/// of `m_nBlockSize` and never change their place in memory; when the last is removed, all
/// blocks and the table are freed.
///
/// The order of a walk is the table's own. It stays the same until an association is added.
/// Removing the association that `GetNextAssoc` gave last, or any that was given before, is
/// safe during a walk; adding one, or removing the one that comes next, is not.
///
/// `PROBE` is a key that is sought: made from an `ARG_KEY`, it knows its `hash`, whether it
/// `Matches` a stored key, and what a stored key is made from, its `Source`;
/// `kStoresHash` tells whether an association keeps the hash of its key, and
/// `HashOfStored` gives that of a stored key where it does not; a table that grows keeps at
/// least `kBucketsPerKey` buckets for each key.
template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE, class PROBE>
class AssociationTable {
    template <bool CONST>
    class Walker;

public:
    /// A key with its value.
    struct CPair {
        const KEY key;
        VALUE value;
    };

    using value_type = CPair;
    using iterator = Walker<false>;
    using const_iterator = Walker<true>;

    /// An empty map that takes memory for `nBlockSize` associations at a time. A block size
    /// below 1 raises the invalid-argument exception.
    explicit AssociationTable(INT_PTR nBlockSize) : m_nBlockSize(nBlockSize) {
        if (nBlockSize < 1) AfxThrowInvalidArgException();
    }
    AssociationTable(const AssociationTable&) = delete;
    AssociationTable& operator=(const AssociationTable&) = delete;

    /// @name Size
    /// @{
    INT_PTR GetCount() const { return m_nCount; }
    INT_PTR GetSize() const { return m_nCount; }
    bool IsEmpty() const { return m_nCount == 0; }
    /// Number of buckets of the table.
    UINT GetHashTableSize() const { return m_nHashTableSize.Buckets(); }
    /// Fixes the number of buckets: the table will not grow. Best a prime, about the number
    /// of associations to come. With `bAllocNow` the table gets its memory at once,
    /// otherwise with the first association. A size of 0, or a map that is not empty, raises
    /// the invalid-argument exception.
    void InitHashTable(UINT nHashSize, bool bAllocNow = true) {
        if (nHashSize == 0 || m_nCount != 0) AfxThrowInvalidArgException();
        FreeTable();
        m_nHashTableSize = TableSize(nHashSize);
        m_bFixedSize = true;
        if (bAllocNow) AllocateTable();
    }
    /// @}

    /// @name Looking up
    /// @{
    /// Whether the map has the key; if so, `rValue` becomes its value, otherwise it stays.
    bool Lookup(ARG_KEY key, VALUE& rValue) const {
        const CAssoc* assoc = Find(PROBE(key));
        if (assoc == nullptr) return false;
        rValue = assoc->value;
        return true;
    }
    /// The association of the key, or null. Valid until it is removed.
    const CPair* PLookup(ARG_KEY key) const { return Find(PROBE(key)); }
    CPair* PLookup(ARG_KEY key) { return Find(PROBE(key)); }
    /// @}

    /// @name Adding
    /// @{
    /// The value of the key. A key that the map does not have is added, with a default
    /// value: null or zero for a plain type.
    VALUE& operator[](ARG_KEY key) {
        const PROBE probe(key);
        CAssoc* assoc = Find(probe);
        return (assoc == nullptr ? Add(probe) : assoc)->value;
    }
    /// Gives the key this value, in place of the one it may have.
    void SetAt(ARG_KEY key, ARG_VALUE newValue) { (*this)[key] = newValue; }
    /// @}

    /// @name Removing
    /// @{
    /// Takes the key out; false when the map does not have it.
    bool RemoveKey(ARG_KEY key) {
        if (m_pHashTable == nullptr) return false;
        const PROBE probe(key);
        CAssoc** link = &m_pHashTable[m_nHashTableSize.BucketOf(probe.hash)];
        while (*link != nullptr && !Matches(**link, probe)) link = &(*link)->pNext;
        if (*link == nullptr) return false;
        CAssoc* assoc = *link;
        *link = assoc->pNext;
        FreeAssoc(assoc);
        return true;
    }
    /// Ends all associations and frees table and blocks. A table that was not fixed begins
    /// small again.
    void RemoveAll() {
        if constexpr (!std::is_trivially_destructible_v<CAssoc>) EndAll();
        FreeTable();
        CPlex::FreeDataChain(m_pBlocks);
        m_pBlocks = nullptr;
        m_pFreeList = nullptr;
        m_nCount = 0;
        if (!m_bFixedSize) m_nHashTableSize = TableSize();
    }
    /// @}

    /// @name Walking
    /// @{
    /// Where a walk begins: the mark for before the first association, or null for an empty
    /// map.
    POSITION GetStartPosition() const { return IsEmpty() ? nullptr : BeforeStartPosition(); }
    /// Key and value of the association at `rNextPosition`, which moves to the next one: to
    /// null after the last. A null position raises the invalid-argument exception, as does
    /// a start position when the map has become empty.
    void GetNextAssoc(POSITION& rNextPosition, KEY& rKey, VALUE& rValue) const {
        const CAssoc* assoc = AssocAt(rNextPosition);
        rNextPosition = reinterpret_cast<POSITION>(Next(assoc));
        rKey = assoc->key;
        rValue = assoc->value;
    }
    /// The first association of a walk; null for an empty map.
    const CPair* PGetFirstAssoc() const { return First(); }
    CPair* PGetFirstAssoc() { return First(); }
    /// The association after `pAssoc`, which must still be in the map; null after the last.
    /// A null `pAssoc` raises the invalid-argument exception.
    const CPair* PGetNextAssoc(const CPair* pAssoc) const { return Next(Checked(pAssoc)); }
    CPair* PGetNextAssoc(const CPair* pAssoc) { return Next(Checked(pAssoc)); }

    iterator begin() { return {this, First()}; }
    iterator end() { return {this, nullptr}; }
    const_iterator begin() const { return {this, First()}; }
    const_iterator end() const { return {this, nullptr}; }
    /// @}

protected:
    struct NoHash {};
    struct OwnHash {
        UINT nHashValue;
    };

    /// A pair in its bucket, or, with `pNext` alone, in the free list.
    struct CAssoc : CPair, std::conditional_t<PROBE::kStoresHash, OwnHash, NoHash> {
        explicit CAssoc(const PROBE& probe) : CPair{KEY(probe.Source()), VALUE()}, pNext(nullptr) {
            if constexpr (PROBE::kStoresHash) this->nHashValue = probe.hash;
        }

        CAssoc* pNext;
    };
    static_assert(alignof(CAssoc) <= alignof(CPlex), "blocks are aligned for ordinary types only");

    ~AssociationTable() { RemoveAll(); }

    /// The association of a key, or null.
    CAssoc* Find(const PROBE& probe) const {
        if (m_pHashTable == nullptr) return nullptr;
        CAssoc* assoc = m_pHashTable[m_nHashTableSize.BucketOf(probe.hash)];
        while (assoc != nullptr && !Matches(*assoc, probe)) assoc = assoc->pNext;
        return assoc;
    }

    /// Whether count, buckets and blocks agree with one another. Walks the whole map.
    bool IsConsistent() const {
        if (m_pHashTable == nullptr) return m_nCount == 0;
        INT_PTR seen = 0;
        for (UINT bucket = 0; bucket < GetHashTableSize(); ++bucket) {
            for (const CAssoc* assoc = m_pHashTable[bucket]; assoc != nullptr;
                 assoc = assoc->pNext) {
                if (m_nHashTableSize.BucketOf(HashOf(assoc)) != bucket) return false;
                if (++seen > m_nCount) return false;
            }
        }
        return seen == m_nCount && (m_pBlocks != nullptr || m_nCount == 0);
    }

    CAssoc** m_pHashTable = nullptr;  ///< the buckets; null while the map has no memory
    TableSize m_nHashTableSize;
    INT_PTR m_nCount = 0;
    CAssoc* m_pFreeList = nullptr;  ///< associations of the blocks that are not in use
    CPlex* m_pBlocks = nullptr;     ///< the newest block
    INT_PTR m_nBlockSize;           ///< associations of the next block, at least 1
    bool m_bFixedSize = false;      ///< the table does not grow

private:
    static bool Matches(const CAssoc& assoc, const PROBE& probe) {
        if constexpr (PROBE::kStoresHash) {
            if (assoc.nHashValue != probe.hash) return false;
        }
        return probe.Matches(assoc.key);
    }

    static UINT HashOf(const CAssoc* assoc) {
        if constexpr (PROBE::kStoresHash) {
            return assoc->nHashValue;
        } else {
            return PROBE::HashOfStored(assoc->key);
        }
    }

    static const CAssoc* Checked(const CPair* pair) {
        if (pair == nullptr) AfxThrowInvalidArgException();
        return static_cast<const CAssoc*>(pair);
    }

    const CAssoc* AssocAt(POSITION position) const {
        const CAssoc* assoc =
            position == BeforeStartPosition() ? First() : reinterpret_cast<const CAssoc*>(position);
        if (assoc == nullptr) AfxThrowInvalidArgException();
        return assoc;
    }

    CAssoc* First() const { return m_nCount == 0 ? nullptr : FirstFrom(0); }

    CAssoc* Next(const CAssoc* assoc) const {
        if (assoc->pNext != nullptr) return assoc->pNext;
        return FirstFrom(m_nHashTableSize.BucketOf(HashOf(assoc)) + 1);
    }

    CAssoc* FirstFrom(UINT bucket) const {
        for (; bucket < GetHashTableSize(); ++bucket) {
            if (m_pHashTable[bucket] != nullptr) return m_pHashTable[bucket];
        }
        return nullptr;
    }

    CAssoc* Add(const PROBE& probe) {
        if (m_pHashTable == nullptr) AllocateTable();
        if (m_nCount * PROBE::kBucketsPerKey >= GetHashTableSize() && !m_bFixedSize) Grow();
        CAssoc* assoc = NewAssoc(probe);
        Link(m_pHashTable, m_nHashTableSize, assoc);
        ++m_nCount;
        return assoc;
    }

    static void Link(CAssoc** table, const TableSize& size, CAssoc* assoc) {
        CAssoc*& bucket = table[size.BucketOf(HashOf(assoc))];
        assoc->pNext = bucket;
        bucket = assoc;
    }

    CAssoc* NewAssoc(const PROBE& probe) {
        if (m_pFreeList == nullptr) AddBlock();
        CAssoc* place = m_pFreeList;
        CAssoc* nextFree = place->pNext;
        try {
            ::new (static_cast<void*>(place)) CAssoc(probe);
        } catch (...) {
            place->pNext = nextFree;
            throw;
        }
        m_pFreeList = nextFree;
        return place;
    }

    void FreeAssoc(CAssoc* assoc) {
        std::destroy_at(assoc);
        assoc->pNext = m_pFreeList;
        m_pFreeList = assoc;
        if (--m_nCount == 0) RemoveAll();
    }

    void AddBlock() {
        const auto count = static_cast<UINT_PTR>(m_nBlockSize);
        auto* places =
            static_cast<CAssoc*>(CPlex::Create(m_pBlocks, count, sizeof(CAssoc))->data());
        // Backwards, so that associations are handed out in the order of their addresses.
        for (UINT_PTR i = count; i-- > 0;) {
            places[i].pNext = m_pFreeList;
            m_pFreeList = &places[i];
        }
    }

    void EndAll() {
        for (CAssoc* assoc = First(); assoc != nullptr;) {
            CAssoc* next = Next(assoc);
            std::destroy_at(assoc);
            assoc = next;
        }
    }

    void AllocateTable() {
        m_pHashTable = new (std::nothrow) CAssoc*[GetHashTableSize()]();
        if (m_pHashTable == nullptr) AfxThrowMemoryException();
    }

    void FreeTable() {
        delete[] m_pHashTable;
        m_pHashTable = nullptr;
    }

    /// Moves all associations to a larger table. Without memory for it the present one goes
    /// on serving.
    void Grow() {
        const TableSize size = m_nHashTableSize.Grown();
        if (size.Buckets() == GetHashTableSize()) return;
        auto** table = new (std::nothrow) CAssoc*[size.Buckets()]();
        if (table == nullptr) return;
        for (CAssoc* assoc = First(); assoc != nullptr;) {
            CAssoc* next = Next(assoc);
            Link(table, size, assoc);
            assoc = next;
        }
        FreeTable();
        m_pHashTable = table;
        m_nHashTableSize = size;
    }
};

/// Walks a map in its own order.
template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE, class PROBE>
template <bool CONST>
class AssociationTable<KEY, ARG_KEY, VALUE, ARG_VALUE, PROBE>::Walker {
public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = CPair;
    using difference_type = std::ptrdiff_t;
    using reference = std::conditional_t<CONST, const CPair&, CPair&>;
    using pointer = std::remove_reference_t<reference>*;

    Walker() = default;
    Walker(const AssociationTable* table, CAssoc* assoc) : m_table(table), m_assoc(assoc) {}
    template <bool OTHER>
    requires(CONST && !OTHER) Walker(const Walker<OTHER>& other)
        : m_table(other.m_table), m_assoc(other.m_assoc) {}

    reference operator*() const { return *m_assoc; }
    pointer operator->() const { return m_assoc; }

    Walker& operator++() {
        m_assoc = m_table->Next(m_assoc);
        return *this;
    }
    Walker operator++(int) {
        Walker old = *this;
        ++*this;
        return old;
    }
    friend bool operator==(const Walker& a, const Walker& b) { return a.m_assoc == b.m_assoc; }

private:
    friend class Walker<true>;

    const AssociationTable* m_table = nullptr;
    CAssoc* m_assoc = nullptr;
};

}  // namespace Collections
