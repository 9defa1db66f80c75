// The text forms of blobs.

#include <platform/object/Allocation.h>
#include <zt/containers/HexText.h>
#include <zt/memory/HXBlob.h>

#include <cstring>

namespace ZT {

CString HXBlob::ToCString() const {
    return hxBinaryToString(m_pData, Held());
}

CString HXBlob::ToString() const {
    const char* const text = reinterpret_cast<const char*>(m_pData);
    return CString(std::string_view(text, Held() == 0 ? 0 : strnlen(text, m_nSize)));
}

char* HXBlob::ToString(int& nLen) const {
    if (Held() == 0) return nullptr;
    const CString digits = ToCString();
    const auto withZero = static_cast<std::size_t>(digits.GetLength()) + 1;
    char* const text = AfxNewArray<char>(withZero);
    std::memcpy(text, digits.GetString(), withZero);
    nLen = digits.GetLength();
    return text;
}

bool HXBlob::StringToBinary(const char* s) {
    if (!s) return false;
    // In single precision, deliberately.
    const float half = static_cast<float>(std::strlen(s)) * 0.5f;
    constexpr float kPastAllSizes = 4294967296.0f;
    if (half >= kPastAllSizes) AfxThrowMemoryException();
    const auto n = static_cast<ulong>(half);
    const bool fresh = Grow(n);
    if (hxStringToBinary(s, n, m_pData)) return true;
    // An older block may have others who look at it.
    unsigned char* const block = Reset();
    if (fresh) delete[] block;
    return false;
}

}  // namespace ZT
