/// @file
/// Typed pointers in containers of untyped ones.

#pragma once

#include <concepts>
#include <cstddef>
#include <iterator>
#include <type_traits>

namespace Collections {

/// `stored` as what it is known to point to.
template <class TYPE, class STORED>
TYPE AsTyped(STORED stored) {
    return static_cast<TYPE>(stored);
}

/// `typed` as the container keeps it.
template <class STORED, class TYPE>
STORED AsStored(TYPE typed) {
    using Kept = std::remove_pointer_t<STORED>;
    return const_cast<STORED>(static_cast<const Kept*>(typed));
}

/// A place in an array of `STORED` pointers that is read and written as a `TYPE`. It
/// stands for the element as a reference would, and is stale when that would be.
template <class TYPE, class STORED>
class TypedPlace {
public:
    explicit TypedPlace(STORED& stored) : m_stored(stored) {}
    TypedPlace(const TypedPlace&) = default;

    operator TYPE() const { return AsTyped<TYPE>(m_stored); }
    /// As the language casts the pointer itself, to a derived class or to any other.
    template <class OTHER>
    requires requires(TYPE typed) { static_cast<OTHER>(typed); }
    explicit operator OTHER() const { return static_cast<OTHER>(AsTyped<TYPE>(m_stored)); }
    TYPE operator->() const { return *this; }
    std::add_lvalue_reference_t<std::remove_pointer_t<TYPE>> operator*() const {
        return *AsTyped<TYPE>(m_stored);
    }

    TypedPlace& operator=(TYPE newElement) {
        m_stored = AsStored<STORED>(newElement);
        return *this;
    }
    TypedPlace& operator=(const TypedPlace& other) { return *this = static_cast<TYPE>(other); }

private:
    STORED& m_stored;
};

/// Walks like a `WALKER` over stored pointers, and reads each as a `TYPE`.
template <class TYPE, std::bidirectional_iterator WALKER>
class TypedWalker {
public:
    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = TYPE;
    using difference_type = std::ptrdiff_t;
    using reference = TYPE;
    using pointer = void;

    TypedWalker() = default;
    explicit TypedWalker(WALKER walker) : m_walker(walker) {}

    TYPE operator*() const { return AsTyped<TYPE>(*m_walker); }
    TypedWalker& operator++() {
        ++m_walker;
        return *this;
    }
    TypedWalker operator++(int) { return TypedWalker(m_walker++); }
    TypedWalker& operator--() {
        --m_walker;
        return *this;
    }
    TypedWalker operator--(int) { return TypedWalker(m_walker--); }
    friend bool operator==(const TypedWalker& a, const TypedWalker& b) {
        return a.m_walker == b.m_walker;
    }

private:
    WALKER m_walker{};
};

}  // namespace Collections
