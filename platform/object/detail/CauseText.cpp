#include <platform/object/detail/CauseText.h>

std::string CauseText(std::span<const LPCSTR> texts, INT cause, INT fallback, LPCSTR name,
                      LPCSTR kind) {
    const bool known = cause >= 0 && static_cast<std::size_t>(cause) < texts.size();
    std::string text = texts[static_cast<std::size_t>(known ? cause : fallback)];
    const std::size_t place = text.find("%s");
    if (place == std::string::npos) return text;
    const LPCSTR unnamed = place == 0 ? "An unnamed " : "an unnamed ";
    return text.replace(place, 2, *name ? std::string(name) : std::string(unnamed) + kind);
}
