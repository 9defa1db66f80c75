#include <zt/containers/MapPtrToPtrZT.h>

#include <cstdint>
#include <cstdio>

namespace ZT {
namespace {

unsigned LowHalf(const void* pointer) {
    return static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(pointer));
}

}  // namespace

MapPtrToPtrZT::MapPtrToPtrZT() : CMapPtrToPtr(10) {}

void* MapPtrToPtrZT::FindValue(void* value) const {
    for (const CPair& pair : *this) {
        if (pair.value == value) return pair.key;
    }
    return nullptr;
}

void MapPtrToPtrZT::Pr() const {
    std::printf("MapPtrToPtrZT: 0x%08x count=%d map (key, value):\n", LowHalf(this),
                static_cast<int>(GetCount()));
    int printedBefore = 0;
    for (const CPair& pair : *this) {
        std::printf("0x%08x   0x%08x\n", LowHalf(pair.key), LowHalf(pair.value));
        // Asked after printing, so that a map of exactly 21 pairs deliberately gets the notice.
        if (printedBefore++ == 20) {
            std::printf("First 20 pairs. Has more");
            break;
        }
    }
    std::printf("\n");
}

}  // namespace ZT
