// Blobs in documents.

#include <zt/containers/HexText.h>
#include <zt/memory/HXBlob.h>
#include <zt/memory/detail/BlockBytes.h>
#include <zt/persist/PCExBase.h>

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace ZT {

namespace {

// The element of a blob: the current one, or the child below it.
IXMLDOMNodePtr BlobElement(const PCExBase& pc) {
    const IXMLDOMNodePtr current = pc.GetCurElem();
    if (!current || current->nodeName() == "Bl") return current;
    return current->selectSingleNode("Bl");
}

void Store(PCExBase& pc, ulong size, const unsigned char* bytes) {
    pc.PushElement("Bl");
    pc.PushInt("Sz", static_cast<int>(size));
    if (size != 0) pc.PushString("Dt", hxBinaryToString(bytes, size));
    pc.PopElement(false);
}

// Decodes the digits that are there; the other bytes become 0.
void Decode(const CString& digits, unsigned char* bytes, std::size_t n) {
    const auto there = std::min(n, static_cast<std::size_t>(digits.GetLength()) / 2);
    if (!hxStringToBinary(digits, static_cast<ulong>(there), bytes)) {
        std::memset(bytes, 0, there);
        hxStringToBinary(digits, static_cast<ulong>(there), bytes);
    }
    std::memset(bytes + there, 0, n - there);
}

}  // namespace

bool HXBlob::PersistXML(PCExBase& pc) {
    if (pc.IsStoring()) Store(pc, m_nSize, m_pData);
    if (!pc.IsLoading()) return true;
    Delete();
    const IXMLDOMNodePtr element = BlobElement(pc);
    if (!element) return false;
    PCExBase::ReadDWORD(element, "Sz", m_nSize);
    const IXMLDOMNodePtr data = element->selectSingleNode("Dt");
    if (!data || m_nSize == 0) return false;
    return DecodeDigits(data->text());
}

// Takes a block of the size from the digits.
bool HXBlob::DecodeDigits(const CString& digits) {
    const ulong size = m_nSize;
    Reset();
    if (size > static_cast<std::size_t>(digits.GetLength()) / 2 + memory::kMissingBytes)
        AfxThrowMemoryException();
    Renew(size);
    Decode(digits, m_pData, size);
    return true;
}

}  // namespace ZT
