/// @file
/// Hash values of the keys of maps.

#pragma once

#include <platform/base/Types.h>

#include <bit>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string_view>
#include <type_traits>

namespace Collections {

/// Both halves of a 64-bit value in one; a value that fits into 32 bits stays.
constexpr UINT FoldBits(std::uint64_t bits) {
    return static_cast<UINT>(bits) ^ static_cast<UINT>(bits >> 32);
}

/// The bytes of a text of less than eight, each at least once, as one number.
inline std::uint64_t ShortTextBits(std::string_view text) {
    const auto byte = [&](std::size_t i) {
        return static_cast<std::uint64_t>(static_cast<unsigned char>(text[i]));
    };
    const std::size_t size = text.size();
    if (size >= sizeof(UINT)) {
        UINT first = 0;
        UINT last = 0;
        std::memcpy(&first, text.data(), sizeof first);
        std::memcpy(&last, text.data() + size - sizeof last, sizeof last);
        return first | static_cast<std::uint64_t>(last) << 32;
    }
    return size == 0 ? 0 : byte(0) | byte(size / 2) << 8 | byte(size - 1) << 16;
}

/// Hash of the bytes of a text, the same in every run.
inline UINT HashText(std::string_view text) {
    constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15;
    const auto mixed = [](std::uint64_t bits) {
        bits *= kFactor;
        return bits ^ (bits >> 29);
    };
    const std::size_t size = text.size();
    std::uint64_t hash = size * kFactor;
    std::uint64_t word = 0;
    if (size < sizeof word) return FoldBits(mixed(mixed(hash ^ ShortTextBits(text))));
    for (std::size_t at = 0; at + sizeof word < size; at += sizeof word) {
        std::memcpy(&word, text.data() + at, sizeof word);
        hash = mixed(hash ^ word);
    }
    // The last word, which may overlap the one before.
    std::memcpy(&word, text.data() + size - sizeof word, sizeof word);
    return FoldBits(mixed(mixed(hash ^ word)));
}

}  // namespace Collections

/// Hash value of a key of a `CMap`, which looks for the key in the bucket with this number
/// modulo the size of its table.
///
/// By default a text, which is whatever turns into a `const char*`, has a hash of its bytes
/// up to the zero; an integer is its own hash; that of another pointer is its address, turned by
/// four bits so that objects which lie side by side have buckets near one another; any other
/// key has that of `std::hash`. A program specialises this for its own keys, so that keys which are
/// equal by `CompareElements` have equal hashes, and before the first map of that key is used.
template <class ARG_KEY>
UINT HashKey(ARG_KEY key) {
    using Key = std::remove_cvref_t<ARG_KEY>;
    if constexpr (std::is_convertible_v<ARG_KEY, const char*>) {
        const char* text = key;
        return Collections::HashText(text == nullptr ? std::string_view() : text);
    } else if constexpr (std::is_pointer_v<Key>) {
        const std::uint64_t address = reinterpret_cast<std::uintptr_t>(key);
        return Collections::FoldBits(std::rotr(address, 4));
    } else if constexpr (std::is_integral_v<Key> || std::is_enum_v<Key>) {
        return Collections::FoldBits(static_cast<std::uint64_t>(key));
    } else {
        return Collections::FoldBits(std::hash<Key>()(key));
    }
}
