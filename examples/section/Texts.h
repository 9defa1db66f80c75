/// @file
/// The texts that the program carries as resources.

#pragma once

#include <map>
#include <string>
#include <string_view>

namespace section {

/// What stands for each placeholder of a text.
using TextValues = std::map<std::string, std::string, std::less<>>;

/// The resource `name` of the type "TEXT" of the running program. Throws `Failure` that names
/// it if the program doesn't carry it.
std::string TextResource(const char* name);

/// `text` with a value in place of each placeholder, which is a name in braces. Values are put
/// in as they are, braces and all. Throws `Failure` for a placeholder that has no value and for
/// a brace that isn't closed.
std::string Filled(std::string_view text, const TextValues& values);

/// The text resource `name`, filled.
std::string FilledResource(const char* name, const TextValues& values);

/// The resources of the texts.
inline constexpr const char* kReportText = "Report";
inline constexpr const char* kLabelText = "Label";

/// Throws `Failure` if the program lacks one of its texts.
void CheckTexts();

}  // namespace section
