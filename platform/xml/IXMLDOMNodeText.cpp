#include <platform/com/COleVariant.h>
#include <platform/com/ComError.h>
#include <platform/xml/IXMLDOMNode.h>
#include <platform/xml/detail/DomAccess.h>
#include <platform/xml/detail/DomChecks.h>
#include <platform/xml/detail/DomPrinter.h>

namespace {

class StringSink final : public DomSink {
public:
    void Write(const char* data, std::size_t size) override {
        m_text += std::string_view(data, size);
    }
    CString Take() { return std::move(m_text); }

private:
    CString m_text;
};

bool HasValue(pugi::xml_node_type type) {
    return IsTextType(type) || type == pugi::node_comment || type == pugi::node_pi;
}

std::string_view JoinTexts(const DomTree& tree, pugi::xml_node top, std::string& scratch) {
    scratch.clear();
    for (pugi::xml_node node = top; !IsNull(node); node = tree.NextBelow(top, node, true)) {
        if (IsTextType(node.type())) scratch += node.value();
    }
    return scratch;
}

}  // namespace

COleVariant DomAccess::TextOrNull(std::optional<std::string_view> text) {
    if (text) return WithDomMemory([&] { return COleVariant(CString(*text)); });
    COleVariant null;
    null.vt = VT_NULL;
    return null;
}

COleVariant IXMLDOMNode::nodeValue() const {
    const pugi::xml_node node = NodeOf(m_node);
    if (!HasValue(node.type())) return DomAccess::TextOrNull(std::nullopt);
    return DomAccess::TextOrNull(node.value());
}

std::string_view IXMLDOMNode::textView(std::string& scratch) const {
    const DomTree& tree = DomAccess::Tree(*this);
    const pugi::xml_node node = NodeOf(m_node);
    const pugi::xml_node first = tree.FirstChild(node);
    if (IsNull(first)) return node.value();
    const bool single = IsTextType(first.type()) && IsNull(first.next_sibling());
    if (single) return first.value();
    return WithDomMemory([&] { return JoinTexts(tree, node, scratch); });
}

CString IXMLDOMNode::text() const {
    return WithDomMemory([this] {
        std::string scratch;
        return CString(textView(scratch));
    });
}

void IXMLDOMNode::put_text(DomText text) const {
    const pugi::xml_node node = NodeOf(m_node);
    DomTree& tree = DomAccess::Tree(*this);
    CheckDomText(text.View());
    if (tree.SetFirstContent(node, text.View())) return;
    if (!IsElement(node)) return put_nodeValue(text);
    tree.SetContent(node, text.View());
}

void IXMLDOMNode::put_nodeValue(DomText value) const {
    pugi::xml_node node = NodeOf(m_node);
    DomAccess::Tree(*this).CheckCurrent(node);
    switch (node.type()) {
        case pugi::node_pcdata:
            CheckDomText(value.View());
            break;
        case pugi::node_cdata:
            CheckDomSection(value.View());
            break;
        case pugi::node_comment:
            CheckDomComment(value.View());
            break;
        case pugi::node_pi:
            WithDomMemory([&] { CheckDomInstruction(node.name(), value.View()); });
            break;
        default:
            _com_raise_error(E_INVALIDARG, "The node has no value of its own.");
    }
    CheckDomMemory(node.set_value(value.View().data(), value.View().size()));
}

CString IXMLDOMNode::xml() const {
    return WithDomMemory([this] {
        StringSink sink;
        PrintDom(DomAccess::Tree(*this), NodeOf(m_node), sink);
        return sink.Take();
    });
}
