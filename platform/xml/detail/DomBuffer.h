/// @file
/// Memory that a parsed document takes over.

#pragma once

#include <cstddef>
#include <string_view>
#include <utility>

#include <pugixml.hpp>

/// A block of bytes from the parser's own allocator, with one zero byte behind the
/// text that it holds. Empty when there was no memory for it.
class DomBuffer {
public:
    DomBuffer() = default;
    /// Room for `size` bytes of text.
    explicit DomBuffer(std::size_t size)
        : m_data(static_cast<char*>(pugi::get_memory_allocation_function()(size + 1))) {
        if (m_data != nullptr) Resize(size);
    }
    DomBuffer(DomBuffer&& other) noexcept { swap(other); }
    DomBuffer& operator=(DomBuffer&& other) noexcept {
        DomBuffer(std::move(other)).swap(*this);
        return *this;
    }
    ~DomBuffer() {
        if (m_data != nullptr) pugi::get_memory_deallocation_function()(m_data);
    }
    void swap(DomBuffer& other) noexcept {
        std::swap(m_data, other.m_data);
        std::swap(m_size, other.m_size);
    }

    explicit operator bool() const { return m_data != nullptr; }
    char* Data() { return m_data; }
    std::size_t Size() const { return m_size; }
    std::string_view Text() const { return {m_data, m_size}; }

    /// Shortens the text to `size` bytes.
    void Resize(std::size_t size) {
        m_size = size;
        m_data[size] = 0;
    }
    /// Hands the block over.
    char* Detach() {
        m_size = 0;
        return std::exchange(m_data, nullptr);
    }

private:
    char* m_data = nullptr;
    std::size_t m_size = 0;
};
