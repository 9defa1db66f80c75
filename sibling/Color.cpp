#include <sibling/Color.h>

namespace PW {

Color::Color() : Color(0, 0, 0) {}

Color::Color(std::uint8_t red, std::uint8_t green, std::uint8_t blue, std::uint8_t alpha)
    : m_red(red), m_green(green), m_blue(blue), m_alpha(alpha) {}

Color::~Color() = default;

}  // namespace PW
