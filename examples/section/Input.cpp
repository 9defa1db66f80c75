#include "section/Input.h"

#include <platform/text/CString.h>
#include <cstring>
#include <string>
#include <vector>

#include "section/DocumentFile.h"
#include "section/DocumentParts.h"

namespace section {
namespace {

std::shared_ptr<ZT::BlobCached> EmptyBlob() {
    auto blob = std::make_shared<ZT::BlobCached>();
    blob->m_bAutoDelete = true;
    return blob;
}

/// Whether `blob` has `size` bytes, where large ones are in the temporary file. What doesn't
/// go into that file is lost without a word.
bool HoldsAll(ZT::BlobCached& blob, std::uint64_t size) {
    return blob.GetSize() == size && !(blob.m_bCaching && blob.m_bInMemory);
}

Failure LostBytes() {
    return Failure("the bytes of the input can't be put into a temporary file");
}

std::vector<unsigned char> BytesOf(const ZT::BlobCached& blob, std::uint64_t size) {
    std::vector<unsigned char> bytes(static_cast<std::size_t>(size));
    blob.CopyDataTo(bytes.data());
    return bytes;
}

}  // namespace

Input::Input(const std::filesystem::path& path) {
    std::error_code error;
    m_size = std::filesystem::file_size(path, error);
    if (error) {
        throw NamingFile(path, error.message());
    }
    if (m_size > kMost) {
        return;
    }
    m_blob = EmptyBlob();
    if (!m_blob->Read(CString(path.string()))) {
        throw NamingFile(path, "cannot be opened");
    }
    if (!HoldsAll(*m_blob, m_size)) {
        throw LostBytes();
    }
}

bool Input::operator==(const Input& other) const {
    if (m_size != other.m_size || IsKept() != other.IsKept()) {
        return false;
    }
    return !IsKept() || m_blob == other.m_blob ||
           BytesOf(*m_blob, m_size) == BytesOf(*other.m_blob, m_size);
}

void Input::PersistXML(ZT::PCExBase& pc) {
    OpenElement(pc, "Input");
    PersistCount(pc, "Size", m_size);
    if (pc.IsLoading()) {
        Load(pc);
    } else if (IsKept()) {
        m_blob->PersistXML(pc);
    }
    pc.PopElement(false);
}

void Input::Load(ZT::PCExBase& pc) {
    m_blob.reset();
    const IXMLDOMElementPtr block = IXMLDOMElementPtr(pc.GetCurElem())->childElement("Bl", 0);
    if (!block) {
        return;
    }
    ZT::ulong size = 0;
    ZT::PCExBase::ReadDWORD(block, "Sz", size);
    if (size != m_size || !HasDigits(block, size)) {
        FailAt(pc, "Bl");
    }
    m_blob = EmptyBlob();
    m_blob->PersistXML(pc);
    if (!HoldsAll(*m_blob, m_size)) {
        throw LostBytes();
    }
}

}  // namespace section
