/// @file
/// What may be put into a document.

#pragma once

#include <string_view>

/// Each of these raises `_com_error` with `E_INVALIDARG` if its argument cannot be
/// stored in a document.

/// An XML name.
void CheckDomName(std::string_view name);
/// A text in UTF-8 without characters that XML cannot hold.
void CheckDomText(std::string_view text);
/// The same, for what is stored without a way to mask characters: also without
/// carriage returns, which would come back as line feeds.
void CheckDomSection(std::string_view text);
/// The content of a comment.
void CheckDomComment(std::string_view text);
/// The data of a processing instruction; with the target "xml", of a declaration.
void CheckDomInstruction(std::string_view target, std::string_view data);
