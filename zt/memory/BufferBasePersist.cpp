#include <zt/memory/BufferBase.h>

#include <zt/containers/HexText.h>
#include <zt/persist/PCExBase.h>
#include <zt/persist/detail/NumberRow.h>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>

namespace ZT {

namespace {

// Rows of three 16-bit words, and what they become when words are loaded as 32-bit ones.
constexpr unsigned char kShortRow = 6;
constexpr unsigned char kLoadedRow = 12;

// The first `count` words of a block of `size` bytes in decimal, with blanks between; words
// beyond the block are 0.
template <class Word>
CString WordsOf(const unsigned char* block, ulong size, ulong count) {
    CString text;
    for (ulong i = 0; i < count; ++i) {
        Word word = 0;
        const ulong place = i * ulong{sizeof word};
        if (block && place < size)
            std::memcpy(&word, block + place, std::min(ulong{sizeof word}, size - place));
        char digits[std::numeric_limits<Word>::digits10 + 1];
        const char* const end = std::to_chars(digits, std::end(digits), word).ptr;
        if (i != 0) text.AppendChar(' ');
        text.Append(digits, static_cast<int>(end - digits));
    }
    return text;
}

}  // namespace

void BufferBase::PersistXML(PCExBase& pc, bool bBinary) {
    if (pc.IsStoring()) {
        Store(pc, bBinary);
    } else if (pc.IsLoading()) {
        Load(pc);
    }
}

void BufferBase::Store(PCExBase& pc, bool bBinary) const {
    if (!pc.PushElement("BB")) return;
    const bool shortWords = !bBinary && m_nRowSize == kShortRow;
    const ulong total = Total();
    pc.PushInt("SR", shortWords ? kLoadedRow : m_nRowSize);
    pc.PushInt("C", static_cast<int>(m_nCount));
    pc.PushInt("Bn", bBinary);
    if (total == 0) {
    } else if (bBinary) {
        pc.PushString("Dt", hxBinaryToString(m_pData, total));
    } else if (shortWords) {
        pc.PushString("Dt", WordsOf<std::uint16_t>(m_pData, total, total / 2));
    } else {
        // Four words, deliberately, however long the block is.
        pc.PushString("Dt", WordsOf<std::uint32_t>(m_pData, total, 4));
    }
    pc.PopElement(false);
}

void BufferBase::Load(PCExBase& pc) {
    const IXMLDOMElementPtr current = pc.GetCurElem();
    if (!current) return;
    const IXMLDOMElementPtr element = current->childElement("BB", 0);
    if (!element) return;
    std::uint8_t rowSize = m_nRowSize;
    ulong count = m_nCount;
    PCExBase::ReadBYTE(element, "SR", rowSize);
    PCExBase::ReadDWORD(element, "C", count);
    const IXMLDOMElementPtr data = element->childElement("Dt", 0);
    m_nRowSize = rowSize;
    m_nCount = count;
    if (count == 0) return;
    // The block there was need not have the bytes of the new shape.
    DestroyNoCount();
    if (!data || rowSize == 0) return;
    Allocate();
    // What the text does not fill is left open; zero is the harmless value.
    std::memset(m_pData, 0, Total());
    bool binary = true;
    PCExBase::ReadBool(element, "Bn", binary);
    const CString text = data->text();
    if (binary) {
        hxStringToBinary(text.GetString(), Total(), m_pData);
    } else {
        NumberText::ScanRow(text.View(), reinterpret_cast<int*>(m_pData), Total() / 4);
    }
}

}  // namespace ZT
