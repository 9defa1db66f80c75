// Blobs from and into the resources of modules.

#include <zt/memory/HXBlob.h>
#include <zt/memory/ResourceManager.h>
#include <zt/memory/detail/BlockBytes.h>

#include <memory>

namespace ZT {

namespace {

constexpr ulong kNoType = 8;
constexpr ulong kNoName = 9;

}  // namespace

ulong HXBlob::LoadResource(const char* name, const char* type, const char* module) {
    if (!type) return kNoType;
    if (!name) return kNoName;
    bool temporary = false;
    unsigned char* const bytes =
        ResourceManager::LoadResource(module, name, type, m_nSize, &temporary);
    // The code stays where the size was, deliberately.
    if (!bytes) return m_nSize;
    const std::unique_ptr<unsigned char[]> owner(temporary ? bytes : nullptr);
    Allocate();
    CopyData(bytes);
    return 0;
}

bool HXBlob::WriteResource(const char* name, const char* type, const char* module) {
    return name && type && ResourceManager::UpdateResourceA(module, name, type, *this);
}

}  // namespace ZT
