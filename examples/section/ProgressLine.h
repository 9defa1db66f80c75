/// @file
/// What the program is doing, for a person who waits.

#pragma once

#include <cstdint>
#include <ostream>
#include <string>

namespace section {

/// Tells the stages of a run. On a terminal it is one line that is written over
/// and gone at the end; elsewhere, if anything, one line a stage.
class ProgressLine {
public:
    enum EKind {
        eSilent,
        ePlain,
        eTerminal,
    };

    /// `out` must outlive the line.
    ProgressLine(std::ostream& out, EKind kind) : m_out(out), m_kind(kind) {}
    ~ProgressLine() { Clear(); }
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    /// Begins a stage, told in words such as "reading x.stl".
    void Stage(const std::string& what);

    /// How far the stage is; shown on a terminal, in whole percent.
    void Advance(std::uint64_t done, std::uint64_t total);

    /// Takes the line off the terminal, before something else is written there.
    void Clear();

private:
    void Rewrite(const std::string& text);

    std::ostream& m_out;
    EKind m_kind;
    std::string m_stage;
    std::uint64_t m_percent = 0;
    bool m_bShown = false;
};

}  // namespace section
