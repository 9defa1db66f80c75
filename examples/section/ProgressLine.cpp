#include "section/ProgressLine.h"

namespace section {
namespace {

/// To the start of the line, and erase it.
constexpr const char* kErase = "\r\x1b[K";

}  // namespace

void ProgressLine::Stage(const std::string& what) {
    m_stage = "section: " + what;
    m_percent = 0;
    if (m_kind == ePlain) {
        m_out << m_stage << std::endl;
    } else {
        Rewrite(m_stage);
    }
}

void ProgressLine::Advance(std::uint64_t done, std::uint64_t total) {
    const std::uint64_t percent =
        total == 0 ? 100
                   : static_cast<std::uint64_t>(100.0 * static_cast<double>(done) /
                                                static_cast<double>(total));
    if (percent != m_percent) {
        m_percent = percent;
        Rewrite(m_stage + ", " + std::to_string(percent) + " %");
    }
}

void ProgressLine::Clear() {
    if (m_bShown) {
        m_out << kErase << std::flush;
        m_bShown = false;
    }
}

void ProgressLine::Rewrite(const std::string& text) {
    if (m_kind == eTerminal) {
        m_out << kErase << text << std::flush;
        m_bShown = true;
    }
}

}  // namespace section
