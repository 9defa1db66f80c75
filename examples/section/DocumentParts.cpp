#include "section/DocumentParts.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "section/Failure.h"

namespace section {
namespace {

/// Tags from the root to the current element and to `name` in it: "Section/Model/Bounds".
std::string PathTo(const ZT::PCExBase& pc, const char* name) {
    std::string path = name;
    for (IXMLDOMNodePtr node = pc.GetCurElem(); node && node->nodeType() == NODE_ELEMENT;
         node = node->parentNode()) {
        path.insert(0, "/").insert(0, node->nameView());
    }
    return path;
}

bool IsDigit(char c) {
    return ('0' <= c && c <= '9') || ('A' <= c && c <= 'F') || ('a' <= c && c <= 'f');
}

}  // namespace

void FailAt(const ZT::PCExBase& pc, const char* name) {
    throw Failure("no whole model: the element " + PathTo(pc, name) + " is missing or damaged");
}

void OpenElement(ZT::PCExBase& pc, const char* name) {
    if (!pc.PersistElement(name, true)) {
        FailAt(pc, name);
    }
}

void PersistCount(ZT::PCExBase& pc, const char* name, ZT::uint64& count) {
    pc.PersistDWORD(name, count, false);
    int ignored = 0;
    if (pc.IsLoading() && !pc.ReadInt(name, ignored)) {
        FailAt(pc, name);
    }
}

bool HasDigits(const IXMLDOMElementPtr& block, std::uint64_t bytes) {
    const IXMLDOMElementPtr data = block->childElement("Dt", 0);
    if (!data) {
        return bytes == 0;
    }
    std::string scratch;
    const std::string_view digits = data->textView(scratch);
    return digits.size() == 2 * bytes && std::all_of(digits.begin(), digits.end(), IsDigit);
}

}  // namespace section
