#include <platform/collections/ElementMemory.h>
#include <platform/object/CMemoryException.h>

#include <algorithm>
#include <limits>
#include <new>

namespace Collections {

namespace {

constexpr INT_PTR kMost = std::numeric_limits<INT_PTR>::max();
constexpr INT_PTR kSmallest = 4;

INT_PTR SaturatedSum(INT_PTR a, INT_PTR b) {
    return a > kMost - b ? kMost : a + b;
}

}  // namespace

void* AllocateElements(INT_PTR count, std::size_t elementSize, std::size_t alignment) {
    if (static_cast<std::size_t>(count) > PTRDIFF_MAX / elementSize) AfxThrowMemoryException();
    void* memory = ::operator new(static_cast<std::size_t>(count) * elementSize,
                                  std::align_val_t(alignment), std::nothrow);
    if (memory == nullptr) AfxThrowMemoryException();
    return memory;
}

void FreeElements(void* memory, std::size_t alignment) noexcept {
    ::operator delete(memory, std::align_val_t(alignment));
}

INT_PTR GrownCapacity(INT_PTR capacity, INT_PTR needed, INT_PTR step) {
    if (capacity == 0) return std::max(needed, step);
    const INT_PTR more = step > 0 ? step : std::max(capacity, kSmallest);
    return std::max(needed, SaturatedSum(capacity, more));
}

}  // namespace Collections
