/// @file
/// A chain of objects that carry their own link.

#pragma once

#include <cstddef>
#include <iterator>

/// A chain of objects of class `T`, linked through their member `Next`; a plain
/// head pointer that owns nothing. An object is on one chain at a time. While
/// walking, take the next object before the present one is removed.
template <class T, auto Next>
class CTypedSimpleList {
public:
    class iterator {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = T*;
        using difference_type = std::ptrdiff_t;
        using pointer = T* const*;
        using reference = T*;

        iterator() = default;
        explicit iterator(T* at) : m_at(at) {}
        T* operator*() const { return m_at; }
        iterator& operator++() {
            m_at = m_at->*Next;
            return *this;
        }
        iterator operator++(int) {
            const iterator before = *this;
            ++*this;
            return before;
        }
        bool operator==(const iterator&) const = default;

    private:
        T* m_at = nullptr;
    };

    using value_type = T*;
    using const_iterator = iterator;

    /// The first object, or null.
    T* GetHead() const { return m_pHead; }
    /// The object behind `object`, or null.
    T* GetNext(const T* object) const { return object->*Next; }
    bool IsEmpty() const { return !m_pHead; }

    iterator begin() const { return iterator(m_pHead); }
    iterator end() const { return iterator(); }

    /// Links `object` before all others.
    void AddHead(T* object) {
        object->*Next = m_pHead;
        m_pHead = object;
    }

    /// Takes `object` out; false if it is not on the chain. Its own link keeps
    /// its value, so that another head into the same chain still finds the rest.
    bool Remove(const T* object) {
        T** link = &m_pHead;
        while (*link && *link != object) link = &((*link)->*Next);
        if (!*link) return false;
        *link = object->*Next;
        return true;
    }

    /// Forgets the chain, whose objects keep their links.
    void RemoveAll() { m_pHead = nullptr; }

    /// The first object. Assigning makes the chain begin there.
    T* m_pHead = nullptr;
};
