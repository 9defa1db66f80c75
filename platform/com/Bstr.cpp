#include <platform/com/Bstr.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <limits>

namespace {

using ByteCount = std::uint32_t;

// The block begins a little before the byte count, so that the text stands at a
// multiple of 8.
constexpr std::size_t kPrefix = 8;

char* BlockOf(BSTR string) {
    return reinterpret_cast<char*>(string) - kPrefix;
}

BSTR Allocate(const void* data, std::uint64_t bytes) {
    if (bytes > std::numeric_limits<ByteCount>::max()) return nullptr;
    auto* block = static_cast<char*>(std::malloc(kPrefix + bytes + sizeof(OLECHAR)));
    if (block == nullptr) return nullptr;
    const auto count = static_cast<ByteCount>(bytes);
    char* text = block + kPrefix;
    std::memcpy(text - sizeof count, &count, sizeof count);
    if (data == nullptr) {
        std::memset(text, 0, bytes);
    } else if (bytes != 0) {
        std::memcpy(text, data, bytes);
    }
    std::memset(text + bytes, 0, sizeof(OLECHAR));
    return reinterpret_cast<BSTR>(text);
}

INT Replace(BSTR* string, BSTR fresh) {
    SysFreeString(*string);
    *string = fresh;
    return 1;
}

}  // namespace

BSTR SysAllocString(const OLECHAR* text) {
    if (text == nullptr) return nullptr;
    return Allocate(text, std::uint64_t{std::wcslen(text)} * sizeof(OLECHAR));
}

BSTR SysAllocStringLen(const OLECHAR* text, UINT length) {
    return Allocate(text, std::uint64_t{length} * sizeof(OLECHAR));
}

BSTR SysAllocStringByteLen(const char* data, UINT bytes) {
    return Allocate(data, bytes);
}

INT SysReAllocString(BSTR* string, const OLECHAR* text) {
    if (string == nullptr) return 0;
    BSTR fresh = SysAllocString(text);
    if (fresh == nullptr && text != nullptr) return 0;
    return Replace(string, fresh);
}

INT SysReAllocStringLen(BSTR* string, const OLECHAR* text, UINT length) {
    if (string == nullptr) return 0;
    BSTR fresh = SysAllocStringLen(text, length);
    return fresh == nullptr ? 0 : Replace(string, fresh);
}

void SysFreeString(BSTR string) {
    if (string != nullptr) std::free(BlockOf(string));
}

UINT SysStringLen(BSTR string) {
    return SysStringByteLen(string) / static_cast<UINT>(sizeof(OLECHAR));
}

UINT SysStringByteLen(BSTR string) {
    if (string == nullptr) return 0;
    ByteCount count;
    std::memcpy(&count, reinterpret_cast<const char*>(string) - sizeof count, sizeof count);
    return count;
}
