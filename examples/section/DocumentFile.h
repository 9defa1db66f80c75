/// @file
/// Documents as files, and their failures as one line.

#pragma once

#include <filesystem>
#include <string>

#include <platform/com/ComError.h>
#include <platform/xml/Dom.h>

#include "section/Failure.h"

namespace section {

/// `text` behind the name of the file that it is about.
Failure NamingFile(const std::filesystem::path& path, const std::string& text);

/// What a failure of the document model says, fit for one line.
std::string TextOf(const _com_error& error);

/// Writes `document` to `path`. The file is whole or it isn't there: a failure leaves what
/// stood there before. Throws `Failure` that names the file if it can't be written.
void SaveDocument(const IXMLDOMDocumentPtr& document, const std::filesystem::path& path);

}  // namespace section
