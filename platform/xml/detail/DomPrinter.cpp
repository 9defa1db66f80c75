#include <platform/xml/detail/DomPrinter.h>

#include <cstring>
#include <string>

#include <platform/xml/detail/XmlSyntax.h>

namespace {

// Hands text on and masks carriage returns, which the parser's library leaves as they
// are in a text. Nothing but a text can hold one.
class MaskingWriter final : public pugi::xml_writer {
public:
    explicit MaskingWriter(DomSink& sink) : m_sink(sink) {}

    void write(const void* data, std::size_t size) override {
        const char* from = static_cast<const char*>(data);
        while (const void* found = std::memchr(from, '\r', size)) {
            const auto before = static_cast<std::size_t>(static_cast<const char*>(found) - from);
            m_sink.Write(from, before);
            m_sink.Write("&#13;", 5);
            from += before + 1;
            size -= before + 1;
        }
        m_sink.Write(from, size);
    }

private:
    DomSink& m_sink;
};

// The text is written in UTF-8, so that is what the declaration says if it names an
// encoding.
void PrintDeclaration(pugi::xml_node node, DomSink& sink) {
    const std::string data = std::string(" ") + node.value();
    XmlDeclaration declaration;
    ReadXmlDeclaration(data, declaration);
    std::string text = "<?xml version=\"" + std::string(declaration.version) + '"';
    if (!declaration.encoding.empty()) text += " encoding=\"UTF-8\"";
    if (!declaration.standalone.empty()) {
        text += " standalone=\"" + std::string(declaration.standalone) + '"';
    }
    text += "?>";
    sink.Write(text.data(), text.size());
}

void PrintNode(pugi::xml_node node, MaskingWriter& writer, DomSink& sink) {
    if (IsDeclaration(node)) {
        PrintDeclaration(node, sink);
    } else {
        node.print(writer, "", pugi::format_raw, pugi::encoding_utf8);
    }
}

}  // namespace

void PrintDom(const DomTree& tree, pugi::xml_node node, DomSink& sink) {
    MaskingWriter writer(sink);
    if (node.type() != pugi::node_document) return PrintNode(node, writer, sink);
    for (pugi::xml_node child = tree.FirstChild(node); !IsNull(child); child = tree.Next(child)) {
        PrintNode(child, writer, sink);
    }
}
