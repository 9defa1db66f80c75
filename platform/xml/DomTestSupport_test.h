/// @file
/// What the tests of the DOM share.

#pragma once

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include <platform/xml/Dom.h>

/// The code with which `operation` raises `_com_error`; 0 if it does not.
template <class Operation>
HRESULT FailureOf(Operation operation) {
    try {
        operation();
    } catch (const _com_error& error) {
        return error.Error();
    }
    return 0;
}

/// The description with which `operation` raises `_com_error`; empty if it does not.
template <class Operation>
std::string DescriptionOf(Operation operation) {
    try {
        operation();
    } catch (const _com_error& error) {
        const _bstr_t description = error.Description();
        return description.length() == 0 ? "" : static_cast<const char*>(description);
    }
    return "";
}

/// A document with the content of `text`, which must be loadable.
inline IXMLDOMDocumentPtr DocumentOf(std::string_view text) {
    IXMLDOMDocumentPtr document = IXMLDOMDocumentPtr::CreateInstance();
    if (!document->loadXML(text)) throw std::string(document->parseError().reason().GetString());
    return document;
}

/// A folder that goes away with all its files.
class TestFolder {
public:
    TestFolder() {
        const char* root = std::getenv("TMPDIR");
        m_path = std::string(root != nullptr ? root : "/tmp") + "/dom-test-XXXXXX";
        if (::mkdtemp(m_path.data()) == nullptr) throw std::string("no folder for the test");
    }
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;
    ~TestFolder() { static_cast<void>(std::system(("rm -rf '" + m_path + "'").c_str())); }

    std::string Path(std::string_view name) const { return m_path + '/' + std::string(name); }
    const std::string& Path() const { return m_path; }

    std::string Write(std::string_view name, std::string_view content) const {
        std::ofstream(Path(name), std::ios::binary)
            .write(content.data(), static_cast<std::streamsize>(content.size()));
        return Path(name);
    }
    std::string Read(std::string_view name) const {
        std::ifstream file(Path(name), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }

private:
    std::string m_path;
};
