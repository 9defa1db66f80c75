/// @file
/// A window that moves forward over a stream of bytes.

#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <istream>
#include <string_view>
#include <vector>

namespace section {

/// A window over a stream of known length, filled in blocks. It moves forward
/// only, so that a file of any size is read with one block of memory.
class BlockInput {
public:
    using Progress = std::function<void(std::uint64_t done, std::uint64_t total)>;

    /// `in` must outlive the window. An empty `progress` is never called.
    BlockInput(std::istream& in, std::uint64_t length, Progress progress = {},
               std::size_t blockSize = std::size_t{1} << 20);

    /// What stands in the window: at least `wanted` bytes, or fewer when the
    /// stream ends before. `wanted` is at most the block size. The view holds
    /// until the next `Peek`.
    std::string_view Peek(std::size_t wanted) {
        if (m_end - m_begin < wanted) {
            Fill();
        }
        return {m_block.data() + m_begin, m_end - m_begin};
    }

    /// Moves the window past `count` bytes of what `Peek` has shown.
    void Skip(std::size_t count) { m_begin += count; }

    /// Place of the first byte of the window in the stream.
    std::uint64_t Offset() const { return m_read - (m_end - m_begin); }

    /// Length of the stream as told at the start.
    std::uint64_t Length() const { return m_length; }

private:
    void Fill();

    std::istream& m_in;
    Progress m_progress;
    std::uint64_t m_length;
    std::uint64_t m_read = 0;
    std::vector<char> m_block;
    std::size_t m_begin = 0;
    std::size_t m_end = 0;
};

}  // namespace section
