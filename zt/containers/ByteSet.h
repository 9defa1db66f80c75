/// @file
/// Sets of characters, and scans of a text for what is in or out of one.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ZT {

/// A set of characters, made from a text of its members.
///
/// The terminating zero counts as a member of every set: the place after the end of
/// a text is thereby a separator like any other.
class ByteSet {
public:
    /// The set of the characters of `chars` and the zero; a null `chars` gives the zero
    /// alone.
    explicit constexpr ByteSet(const char* chars) {
        Add('\0');
        for (; chars != nullptr && *chars != '\0'; ++chars) Add(*chars);
    }

    /// Whether `c` is in the set.
    constexpr bool Has(char c) const {
        const auto byte = static_cast<unsigned char>(c);
        return (m_bits[byte / 64] >> (byte % 64) & 1) != 0;
    }

private:
    constexpr void Add(char c) {
        const auto byte = static_cast<unsigned char>(c);
        m_bits[byte / 64] |= std::uint64_t{1} << (byte % 64);
    }

    std::uint64_t m_bits[4] = {};
};

/// The character at `place`, from 0 to the length, where the terminating zero stands.
constexpr char CharAt(std::string_view text, int place) {
    const auto index = static_cast<std::size_t>(place);
    return index == text.size() ? '\0' : text[index];
}

/// The first place at or after `from`, which must not be negative, and before the end
/// that holds a member of `set`; -1 when there is none.
constexpr int FirstIn(std::string_view text, int from, const ByteSet& set) {
    const int length = static_cast<int>(text.size());
    int place = from;
    while (place < length && !set.Has(CharAt(text, place))) ++place;
    return place < length ? place : -1;
}

/// The first place at or after `from`, which must not be negative, and before the end
/// that holds no member of `set`; -1 when there is none.
constexpr int FirstNotIn(std::string_view text, int from, const ByteSet& set) {
    const int length = static_cast<int>(text.size());
    int place = from;
    while (place < length && set.Has(CharAt(text, place))) ++place;
    return place < length ? place : -1;
}

/// The last place at or before `from`, which must not lie beyond the length, that holds
/// a member of `set`; -1 when there is none. At the length stands the zero, which is a
/// member.
constexpr int LastIn(std::string_view text, int from, const ByteSet& set) {
    int place = from;
    while (place >= 0 && !set.Has(CharAt(text, place))) --place;
    return place;
}

/// The last place at or before `from`, which must lie before the end, that holds no
/// member of `set`; -1 when there is none.
constexpr int LastNotIn(std::string_view text, int from, const ByteSet& set) {
    int place = from;
    while (place >= 0 && set.Has(CharAt(text, place))) --place;
    return place;
}

}  // namespace ZT
