#include <zt/containers/HexText.h>
#include <zt/containers/detail/HexKernels.h>

#include <platform/object/Allocation.h>
#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>

namespace ZT {

namespace {

// Bytes converted in one go: their digits stay in the nearest cache between two
// steps that both pass over them.
constexpr std::size_t kChunk = 4096;

const hex::Kernel& Fastest() {
    static const hex::Kernel& kernel = hex::Kernels().back();
    return kernel;
}

}  // namespace

CString hxBinaryToString(const unsigned char* p, ulong n) {
    CString text;
    if (p == nullptr || n == 0) return text;
    if (n > ulong{std::numeric_limits<int>::max()} / 2) AfxThrowMemoryException();
    text.Preallocate(static_cast<int>(2 * n));
    char digits[2 * kChunk];
    for (std::size_t done = 0; done < n;) {
        const std::size_t count = std::min<std::size_t>(kChunk, n - done);
        Fastest().encode(p + done, count, digits);
        text.Append(digits, static_cast<int>(2 * count));
        done += count;
    }
    return text;
}

bool hxStringToBinary(const char* text, ulong n, unsigned char* out) {
    if (n == 0) return true;
    if (text == nullptr || out == nullptr) return false;
    for (std::size_t done = 0; done < n;) {
        const std::size_t wanted = std::min<std::size_t>(kChunk, n - done);
        const std::size_t present = strnlen(text + 2 * done, 2 * wanted) / 2;
        const std::size_t decoded = Fastest().decode(text + 2 * done, present, out + done);
        if (decoded < wanted) return false;
        done += decoded;
    }
    return true;
}

unsigned char* hxStringToBinary(const CString& text, ulong& n) {
    const auto length = static_cast<std::size_t>(text.GetLength());
    if (length % 2 != 0) {
        n = std::numeric_limits<ulong>::max();
        return nullptr;
    }
    const std::size_t count = length / 2;
    std::unique_ptr<unsigned char[]> bytes(AfxNewArray<unsigned char>(count));
    const std::size_t decoded = Fastest().decode(text.GetString(), count, bytes.get());
    std::fill(bytes.get() + decoded, bytes.get() + count, static_cast<unsigned char>(0));
    n = static_cast<ulong>(count);
    return bytes.release();
}

}  // namespace ZT
