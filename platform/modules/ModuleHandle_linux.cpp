#include <dlfcn.h>
#include <link.h>
#include <sys/auxv.h>

#include <platform/base/LastError.h>
#include <platform/modules/ModuleHandle.h>
#include <platform/modules/detail/ElfFile.h>
#include <platform/modules/detail/FileMapping.h>
#include <platform/modules/detail/LoadedFile.h>
#include <platform/modules/detail/LoadedResources.h>
#include <platform/text/CString.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <map>
#include <mutex>
#include <string>
#include <system_error>
#include <vector>

#include <unistd.h>

namespace {

// A reference to a loaded module in the form that the loader's functions take.
class LoaderReference {
public:
    explicit LoaderReference(LPCTSTR path) : m_handle(dlopen(path, RTLD_LAZY | RTLD_NOLOAD)) {}
    ~LoaderReference() {
        if (m_handle) dlclose(m_handle);
    }
    LoaderReference(const LoaderReference&) = delete;
    LoaderReference& operator=(const LoaderReference&) = delete;

    void* Get() const { return m_handle; }

private:
    void* m_handle;
};

// The references that the platform holds to modules that it has loaded.
class HeldReferences {
public:
    void Add(HMODULE module, void* loaderHandle) {
        const std::scoped_lock lock(m_lock);
        Held& held = m_held[module];
        held.loaderHandle = loaderHandle;
        ++held.count;
    }
    // One reference in the loader's form, which the caller is to close; null if there is
    // none.
    void* Take(HMODULE module) {
        const std::scoped_lock lock(m_lock);
        const auto found = m_held.find(module);
        if (found == m_held.end()) return nullptr;
        void* const taken = found->second.loaderHandle;
        if (--found->second.count == 0) m_held.erase(found);
        return taken;
    }

private:
    struct Held {
        void* loaderHandle = nullptr;
        unsigned count = 0;
    };

    std::mutex m_lock;
    std::map<HMODULE, Held> m_held;
};

// Never ended, since a module may be freed while the program ends.
HeldReferences& AllHeld() {
    static HeldReferences& all = *new HeldReferences;
    return all;
}

HMODULE ModuleOf(void* loaderHandle) {
    link_map* map = nullptr;
    if (!loaderHandle || dlinfo(loaderHandle, RTLD_DI_LINKMAP, &map) != 0) return nullptr;
    return AfxModuleFromAddress(map->l_ld);
}

HMODULE Program() {
    return AfxModuleFromAddress(reinterpret_cast<const void*>(getauxval(AT_PHDR)));
}

// The loader's name of a module, null for the program and for no module.
LPCTSTR LoaderName(HMODULE module) {
    Dl_info info;
    const bool loaded = module && dladdr(module, &info) && info.dli_fbase == module;
    return loaded && module != Program() ? info.dli_fname : nullptr;
}

CString ProgramPath() {
    std::vector<char> path(256);
    for (;;) {
        const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
        if (length < 0) return {};
        const auto bytes = static_cast<std::size_t>(length);
        bool there = false;
        if (bytes < path.size())
            return WithoutMarkOfRemoval(std::string(path.data(), bytes), &there).c_str();
        path.resize(2 * path.size());
    }
}

// A path is completed, so that the module's file is found again from any directory;
// a plain name is left to the system's search.
std::string PathToLoad(LPCTSTR path) {
    std::error_code failure;
    if (!std::strchr(path, '/')) return path;
    const std::filesystem::path full = std::filesystem::absolute(path, failure);
    return failure ? std::string(path) : full.native();
}

std::string_view FileNameOf(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

bool IsProgram(LPCTSTR name, bool isPath) {
    const CString program = ProgramPath();
    if (!isPath) return FileNameOf(program.GetString()) == name;
    std::error_code failure;
    return program == name || std::filesystem::equivalent(name, "/proc/self/exe", failure);
}

struct NamedModule {
    std::string_view fileName;
    ElfW(Addr) address = 0;
};

// Only takes down the address, since the loader's functions must not be called in here.
int FindNamed(dl_phdr_info* info, std::size_t, void* sought) {
    auto& named = *static_cast<NamedModule*>(sought);
    if (!info->dlpi_name || FileNameOf(info->dlpi_name) != named.fileName) return 0;
    for (int i = 0; i < info->dlpi_phnum; ++i)
        if (info->dlpi_phdr[i].p_type == PT_DYNAMIC)
            named.address = info->dlpi_addr + info->dlpi_phdr[i].p_vaddr;
    return named.address != 0;
}

// The first loaded module whose file has this name, from whatever directory.
HMODULE ModuleOfFileName(LPCTSTR name) {
    NamedModule named = {name};
    dl_iterate_phdr(FindNamed, &named);
    return AfxModuleFromAddress(reinterpret_cast<const void*>(named.address));
}

HMODULE LoadedModule(LPCTSTR name) {
    const bool isPath = std::strchr(name, '/') != nullptr;
    if (IsProgram(name, isPath)) return Program();
    if (const HMODULE module = ModuleOf(LoaderReference(name).Get())) return module;
    return isPath ? ModuleOf(LoaderReference(PathToLoad(name).c_str()).Get())
                  : ModuleOfFileName(name);
}

void TellLoadFailure(int error, std::string_view text, CString* reason) {
    if (reason) *reason = text;
    SetLastError(static_cast<DWORD>(error));
}

void TellLoadFailure(LPCTSTR path, CString* reason) {
    const char* text = dlerror();
    const bool absent = std::strchr(path, '/') && access(path, F_OK) != 0;
    TellLoadFailure(absent ? ENOENT : ENOEXEC, text ? text : "", reason);
}

// The loader maps what a module's head tells of without looking whether the file has it,
// and the program ends when it reads on behind the end of the file. Files in which the
// system searches are left to it.
bool IsCutOff(const std::string& path) {
    FileMapping file;
    if (path.find('/') == std::string::npos || file.Open(path.c_str()) != 0) return false;
    return FindElfSection(file.Bytes(), {}).state != ElfSection::noModule &&
           !HoldsElfSegments(file.Bytes());
}

}  // namespace

HMODULE AfxModuleFromAddress(const void* address) {
    Dl_info info;
    if (!address || !dladdr(address, &info)) return nullptr;
    return static_cast<HMODULE>(info.dli_fbase);
}

HMODULE GetModuleHandle(LPCTSTR name) {
    if (!name) return Program();
    const HMODULE module = *name ? LoadedModule(name) : nullptr;
    if (!module) SetLastError(ENOENT);
    return module;
}

CString AfxGetModuleFileName(HMODULE module) {
    if (!module || module == Program()) return ProgramPath();
    return LoaderName(module);
}

DWORD GetModuleFileName(HMODULE module, LPTSTR text, DWORD size) {
    const CString path = AfxGetModuleFileName(module);
    const auto length = static_cast<DWORD>(path.GetLength());
    if (length == 0 || !text || size == 0) {
        SetLastError(EINVAL);
        return 0;
    }
    const DWORD kept = std::min(length, size - 1);
    std::memcpy(text, path.GetString(), kept);
    text[kept] = 0;
    if (kept == length) return length;
    SetLastError(ENAMETOOLONG);
    return size;
}

HMODULE AfxLoadLibrary(LPCTSTR path, CString* reason) {
    if (!path || !*path) {
        TellLoadFailure(ENOENT, "a library without a name", reason);
        return nullptr;
    }
    const std::string full = PathToLoad(path);
    if (!LoaderReference(full.c_str()).Get() && IsCutOff(full)) {
        TellLoadFailure(ENOEXEC, full + ": the file holds no whole module", reason);
        return nullptr;
    }
    void* handle = dlopen(full.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle) TellLoadFailure(path, reason);
    const HMODULE module = ModuleOf(handle);
    if (!module) return nullptr;
    AllHeld().Add(module, handle);
    KeepResourcesOf(module);
    return module;
}

HMODULE LoadLibraryExA(LPCSTR path, HANDLE reserved, DWORD flags) {
    if (!reserved && (flags & ~LOAD_WITH_ALTERED_SEARCH_PATH) == 0) return AfxLoadLibrary(path);
    SetLastError(EINVAL);
    return nullptr;
}

BOOL AfxFreeLibrary(HMODULE module) {
    void* const reference = AllHeld().Take(module);
    const bool freed = reference && dlclose(reference) == 0;
    ForgetUnloadedResources();
    if (!freed) SetLastError(EINVAL);
    return freed;
}

void* GetProcAddress(HMODULE module, LPCSTR name) {
    const LPCTSTR path = LoaderName(module);
    if (!name || (!path && module != Program())) return nullptr;
    const LoaderReference reference(path);
    return reference.Get() ? dlsym(reference.Get(), name) : nullptr;
}
