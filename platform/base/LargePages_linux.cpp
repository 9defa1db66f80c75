#include <platform/base/LargePages.h>
#include <sys/mman.h>

#include <cstdint>

void PreferLargePages(void* block, std::size_t bytes) noexcept {
    constexpr std::uintptr_t page = std::uintptr_t{2} << 20;
    const auto address = reinterpret_cast<std::uintptr_t>(block);
    const std::uintptr_t begin = (address + page - 1) / page * page;
    const std::uintptr_t end = (address + bytes) / page * page;
    if (begin < end) madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
}
