// Any text is either decoded to the very bytes that encode to it again, or
// refused at the first pair that is not two hexadecimal digits.

#include <zt/containers/HexText.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    CString text(reinterpret_cast<const char*>(data), static_cast<int>(size));

    ZT::ulong count = 0;
    const std::unique_ptr<unsigned char[]> bytes(ZT::hxStringToBinary(text, count));
    if (size % 2 == 1) {
        if (bytes || count != 0xFFFFFFFF) std::abort();
        return 0;
    }
    if (count != size / 2) std::abort();

    const std::string zero_terminated(text.GetString());
    const auto out = std::make_unique<unsigned char[]>(count + 1);
    out[count] = 0xA5;
    const bool decoded = ZT::hxStringToBinary(zero_terminated.c_str(), count, out.get());
    if (out[count] != 0xA5) std::abort();
    if (decoded) {
        CString upper = text;
        upper.MakeUpper();
        if (ZT::hxBinaryToString(out.get(), count) != upper) std::abort();
    }
    return 0;
}
