#include <platform/com/Guid.h>

#include <string_view>

namespace {

// Where each byte's two digits stand in the text, byte by byte as they are read.
constexpr int kDigitPlaces[16] = {1, 3, 5, 7, 10, 12, 15, 17, 20, 22, 25, 27, 29, 31, 33, 35};
constexpr int kHyphenPlaces[4] = {9, 14, 19, 24};
constexpr std::size_t kTextLength = kGuidTextSize - 1;

using Bytes = std::uint8_t[16];

// The bytes in the order of the text: the numbers with their highest byte first.
void ToBytes(const GUID& id, Bytes& bytes) {
    for (int i = 0; i < 4; ++i) bytes[i] = static_cast<std::uint8_t>(id.Data1 >> (24 - 8 * i));
    for (int i = 0; i < 2; ++i) bytes[4 + i] = static_cast<std::uint8_t>(id.Data2 >> (8 - 8 * i));
    for (int i = 0; i < 2; ++i) bytes[6 + i] = static_cast<std::uint8_t>(id.Data3 >> (8 - 8 * i));
    for (int i = 0; i < 8; ++i) bytes[8 + i] = id.Data4[i];
}

GUID FromBytes(const Bytes& bytes) {
    GUID id = {};
    for (int i = 0; i < 4; ++i) id.Data1 = id.Data1 << 8 | bytes[i];
    for (int i = 0; i < 2; ++i) id.Data2 = static_cast<std::uint16_t>(id.Data2 << 8 | bytes[4 + i]);
    for (int i = 0; i < 2; ++i) id.Data3 = static_cast<std::uint16_t>(id.Data3 << 8 | bytes[6 + i]);
    for (int i = 0; i < 8; ++i) id.Data4[i] = bytes[8 + i];
    return id;
}

OLECHAR Digit(int value) {
    return L"0123456789ABCDEF"[value];
}

int DigitValue(OLECHAR c) {
    if (c >= L'0' && c <= L'9') return c - L'0';
    if (c >= L'A' && c <= L'F') return c - L'A' + 10;
    if (c >= L'a' && c <= L'f') return c - L'a' + 10;
    return -1;
}

bool HasShape(std::wstring_view text) {
    if (text.size() != kTextLength || text.front() != L'{' || text.back() != L'}') return false;
    for (const int place : kHyphenPlaces) {
        if (text[static_cast<std::size_t>(place)] != L'-') return false;
    }
    return true;
}

bool ReadBytes(const OLECHAR* text, Bytes& bytes) {
    for (int i = 0; i < 16; ++i) {
        const int high = DigitValue(text[kDigitPlaces[i]]);
        const int low = DigitValue(text[kDigitPlaces[i] + 1]);
        if (high < 0 || low < 0) return false;
        bytes[i] = static_cast<std::uint8_t>(high * 16 + low);
    }
    return true;
}

}  // namespace

int StringFromGUID2(REFGUID id, OLECHAR* text, int size) {
    if (text == nullptr || size < kGuidTextSize) return 0;
    Bytes bytes;
    ToBytes(id, bytes);
    text[0] = L'{';
    for (const int place : kHyphenPlaces) text[place] = L'-';
    for (int i = 0; i < 16; ++i) {
        text[kDigitPlaces[i]] = Digit(bytes[i] >> 4);
        text[kDigitPlaces[i] + 1] = Digit(bytes[i] & 15);
    }
    text[kTextLength - 1] = L'}';
    text[kTextLength] = L'\0';
    return kGuidTextSize;
}

HRESULT CLSIDFromString(const OLECHAR* text, CLSID* id) {
    if (id == nullptr) return E_INVALIDARG;
    *id = GUID_NULL;
    if (text == nullptr) return S_OK;
    Bytes bytes;
    if (!HasShape(text) || !ReadBytes(text, bytes)) return CO_E_CLASSSTRING;
    *id = FromBytes(bytes);
    return S_OK;
}

HRESULT IIDFromString(const OLECHAR* text, IID* id) {
    return CLSIDFromString(text, id);
}
