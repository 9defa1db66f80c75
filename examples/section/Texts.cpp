#include "section/Texts.h"

#include <zt/memory/HXBlob.h>

#include "section/Failure.h"

namespace section {
namespace {

constexpr const char* kType = "TEXT";

Failure Unfit(std::string_view placeholder) {
    return Failure("a text of this program has the unknown placeholder " + Quoted(placeholder));
}

}  // namespace

std::string TextResource(const char* name) {
    ZT::HXBlob bytes(true);
    if (bytes.LoadResource(name, kType, nullptr) != 0) {
        bytes.Reset();
        throw Failure(std::string("this program lacks its text '") + name + "', the resource " +
                      kType + '/' + name);
    }
    return std::string(reinterpret_cast<const char*>(bytes.m_pData), bytes.m_nSize);
}

std::string Filled(std::string_view text, const TextValues& values) {
    std::string filled;
    for (;;) {
        const std::size_t open = text.find('{');
        filled += text.substr(0, open);
        if (open == text.npos) {
            return filled;
        }
        const std::size_t close = text.find('}', open);
        const auto value = close == text.npos
                               ? values.end()
                               : values.find(text.substr(open + 1, close - open - 1));
        if (value == values.end()) {
            throw Unfit(text.substr(open, close == text.npos ? close : close + 1 - open));
        }
        filled += value->second;
        text.remove_prefix(close + 1);
    }
}

std::string FilledResource(const char* name, const TextValues& values) {
    return Filled(TextResource(name), values);
}

void CheckTexts() {
    TextResource(kReportText);
    TextResource(kLabelText);
}

}  // namespace section
