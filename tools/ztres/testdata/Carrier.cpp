// A module that carries resources of its own and reads them from inside.

#include <platform/base/Export.h>
#include <platform/modules/ModuleHandle.h>
#include <zt/memory/ResourceManager.h>

/// The bytes of a resource of this module, or null and the failure code.
extern "C" ZTP_API const unsigned char* OwnResource(const char* name, const char* type,
                                                    unsigned int* size) {
    const HMODULE self = AfxModuleFromAddress(reinterpret_cast<const void*>(&OwnResource));
    return ZT::ResourceManager::LoadResource(self, name, type, *size);
}
