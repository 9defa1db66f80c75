/// @file
/// How the parts of the program tell that they cannot go on, and text of
/// foreign origin made fit for one line.

#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace section {

/// What was wrong and where, as one line for the person who called the program.
class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// `text` with U+FFFD in place of everything that would break a line or an XML
/// document: control characters, and bytes that aren't UTF-8. A file name may
/// hold both.
std::string Printable(std::string_view text);

/// `Printable` text in quotes, cut after 40 characters.
std::string Quoted(std::string_view text);

}  // namespace section
