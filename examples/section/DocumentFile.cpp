#include "section/DocumentFile.h"

namespace section {

Failure NamingFile(const std::filesystem::path& path, const std::string& text) {
    return Failure(Printable(path.string()) + ": " + text);
}

std::string TextOf(const _com_error& error) {
    const _bstr_t description = error.Description();
    return description.length() > 0 ? Printable(static_cast<const char*>(description))
                                    : error.ErrorMessage();
}

void SaveDocument(const IXMLDOMDocumentPtr& document, const std::filesystem::path& path) {
    try {
        document->save(path.string());
    } catch (const _com_error& error) {
        // The description names the file.
        throw Failure(TextOf(error));
    }
}

}  // namespace section
