#include <platform/xml/IXMLDOMDocument.h>

#include <string>

#include <platform/base/LastError.h>
#include <platform/com/ComError.h>
#include <platform/files/detail/FileReplacement.h>
#include <platform/xml/IXMLDOMElementPtr.h>
#include <platform/xml/detail/DomAccess.h>
#include <platform/xml/detail/DomChecks.h>
#include <platform/xml/detail/DomFile.h>
#include <platform/xml/detail/DomPrinter.h>

namespace {

// Writes to a file and remembers the first failure.
class FileSink final : public DomSink {
public:
    explicit FileSink(FileReplacement& file) : m_file(file) {}

    void Write(const char* data, std::size_t size) override {
        if (m_error != 0) return;
        m_buffer.append(data, size);
        if (m_buffer.size() >= kBlock) Flush();
    }
    int Finish() {
        if (m_error == 0) Flush();
        return m_error;
    }

private:
    static constexpr std::size_t kBlock = 256 * 1024;

    void Flush() {
        m_error = m_file.Write(m_buffer.data(), m_buffer.size());
        m_buffer.clear();
    }

    FileReplacement& m_file;
    std::string m_buffer;
    int m_error = 0;
};

// `error` is the system's number, 0 for none.
void CheckSystem(int error, const std::string& path) {
    if (error == 0) return;
    const std::string reason = path + ": " + SystemErrorText(static_cast<DWORD>(error));
    _com_raise_error(ResultFromBits(0x80070000u | static_cast<unsigned>(error)), reason.c_str());
}

void SaveTree(const DomTree& tree, const std::string& path) {
    FileReplacement file;
    CheckSystem(file.Open(path.c_str()), path);
    FileSink sink(file);
    PrintDom(tree, tree.Root(), sink);
    CheckSystem(sink.Finish(), path);
    CheckSystem(file.Finish(), path);
}

IXMLDOMNodePtr NewNode(const IXMLDOMNode& document, pugi::xml_node_type type, std::string_view name,
                       std::string_view value) {
    DomTree& tree = DomAccess::Tree(document);
    return DomAccess::Make<IXMLDOMNodePtr>(tree, tree.NewDetached(type, name, value));
}

}  // namespace

IXMLDOMElementPtr IXMLDOMDocument::createElement(DomText name) const {
    CheckDomName(name.View());
    DomTree& tree = DomAccess::Tree(*this);
    return DomAccess::Make<IXMLDOMElementPtr>(
        tree, tree.NewDetached(pugi::node_element, name.View(), {}));
}

IXMLDOMNodePtr IXMLDOMDocument::createTextNode(DomText text) const {
    CheckDomText(text.View());
    return NewNode(*this, pugi::node_pcdata, {}, text.View());
}

IXMLDOMNodePtr IXMLDOMDocument::createComment(DomText text) const {
    CheckDomComment(text.View());
    return NewNode(*this, pugi::node_comment, {}, text.View());
}

IXMLDOMNodePtr IXMLDOMDocument::createCDATASection(DomText text) const {
    CheckDomSection(text.View());
    return NewNode(*this, pugi::node_cdata, {}, text.View());
}

IXMLDOMNodePtr IXMLDOMDocument::createProcessingInstruction(DomText target, DomText data) const {
    WithDomMemory([&] { CheckDomInstruction(target.View(), data.View()); });
    return NewNode(*this, pugi::node_pi, target.View(), data.View());
}

IXMLDOMElementPtr IXMLDOMDocument::documentElement() const {
    DomTree& tree = DomAccess::Tree(*this);
    return DomAccess::Make<IXMLDOMElementPtr>(tree, tree.DocumentElement());
}

void IXMLDOMDocument::putref_documentElement(const IXMLDOMElementPtr& element) const {
    if (const IXMLDOMElementPtr old = documentElement()) {
        replaceChild(element, old);
    } else {
        appendChild(element);
    }
}

IXMLDOMNodeListPtr IXMLDOMDocument::getElementsByTagName(DomText name) const {
    DomTree& tree = DomAccess::Tree(*this);
    return DomAccess::ElementsBelow(tree, tree.Root(), name.View());
}

bool IXMLDOMDocument::load(DomText path) const {
    return DomAccess::Tree(*this).LoadFile(path.View());
}

bool IXMLDOMDocument::loadXML(DomText text) const {
    return DomAccess::Tree(*this).LoadText(text.View());
}

const IXMLDOMParseError& IXMLDOMDocument::parseError() const {
    return DomAccess::Tree(*this).ParseError();
}

bool IXMLDOMDocument::preserveWhiteSpace() const {
    return DomAccess::Tree(*this).PreservesWhiteSpace();
}

void IXMLDOMDocument::put_preserveWhiteSpace(bool preserve) const {
    DomAccess::Tree(*this).PreserveWhiteSpace(preserve);
}

void IXMLDOMDocument::save(DomText path) const {
    const DomTree& tree = DomAccess::Tree(*this);
    if (IsNull(tree.DocumentElement())) {
        _com_raise_error(E_UNEXPECTED, "A document without a root element cannot be saved.");
    }
    WithDomMemory([&] { SaveTree(tree, std::string(path.View())); });
}
