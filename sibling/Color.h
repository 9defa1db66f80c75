/// @file
/// The older sibling's colour value.

#pragma once

#include <sibling/Export.h>
#include <cstdint>

namespace PW {

/// A colour of four bytes: red, green, blue and opacity, each from 0 to 255.
class PW_API Color {
public:
    /// Opaque black.
    Color();
    /// The colour of the given components; opaque unless `alpha` says otherwise.
    Color(std::uint8_t red, std::uint8_t green, std::uint8_t blue, std::uint8_t alpha = 255);
    Color(const Color&) = default;
    Color& operator=(const Color&) = default;
    ~Color();

    std::uint8_t GetRed() const { return m_red; }
    std::uint8_t GetGreen() const { return m_green; }
    std::uint8_t GetBlue() const { return m_blue; }
    /// 0 for fully transparent, 255 for opaque.
    std::uint8_t GetAlpha() const { return m_alpha; }

    /// Whether all four components agree.
    bool operator==(const Color&) const = default;

private:
    std::uint8_t m_red;
    std::uint8_t m_green;
    std::uint8_t m_blue;
    std::uint8_t m_alpha;
};

}  // namespace PW
