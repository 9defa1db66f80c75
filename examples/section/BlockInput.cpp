#include "section/BlockInput.h"

#include <algorithm>
#include <utility>

namespace section {

BlockInput::BlockInput(std::istream& in, std::uint64_t length, Progress progress,
                       std::size_t blockSize)
    : m_in(in),
      m_progress(std::move(progress)),
      m_length(length),
      m_block(static_cast<std::size_t>(std::clamp<std::uint64_t>(length, 256, blockSize))) {}

void BlockInput::Fill() {
    if (!m_in) {
        return;
    }
    std::copy(m_block.begin() + static_cast<std::ptrdiff_t>(m_begin),
              m_block.begin() + static_cast<std::ptrdiff_t>(m_end), m_block.begin());
    m_end -= m_begin;
    m_begin = 0;
    m_in.read(m_block.data() + m_end, static_cast<std::streamsize>(m_block.size() - m_end));
    const auto count = static_cast<std::size_t>(m_in.gcount());
    m_end += count;
    m_read += count;
    if (m_progress) {
        m_progress(m_read, m_length);
    }
}

}  // namespace section
