#include <platform/base/LargePages.h>
#include <platform/text/LargeBlock.h>

#include <cstdlib>

namespace {

constexpr std::size_t kLargePage = std::size_t{2} << 20;

}  // namespace

void* AllocateLargeBlock(std::size_t bytes) noexcept {
    if (bytes > static_cast<std::size_t>(-1) - kLargePage) return nullptr;
    const std::size_t whole_pages = (bytes + kLargePage - 1) / kLargePage * kLargePage;
    void* block = std::aligned_alloc(kLargePage, whole_pages);
    if (block != nullptr) PreferLargePages(block, whole_pages);
    return block;
}

void FreeLargeBlock(void* block) noexcept {
    std::free(block);
}
