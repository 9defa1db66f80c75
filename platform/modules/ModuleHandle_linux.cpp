#include <dlfcn.h>
#include <link.h>
#include <sys/auxv.h>

#include <platform/base/LastError.h>
#include <platform/modules/ModuleHandle.h>
#include <platform/text/CString.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
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
        if (bytes < path.size()) return std::string_view(path.data(), bytes);
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

void TellLoadFailure(LPCTSTR path, CString* reason) {
    const char* text = dlerror();
    if (reason) *reason = text ? text : "";
    const bool absent = std::strchr(path, '/') && access(path, F_OK) != 0;
    SetLastError(static_cast<DWORD>(absent ? ENOENT : ENOEXEC));
}

}  // namespace

HMODULE AfxModuleFromAddress(const void* address) {
    Dl_info info;
    if (!address || !dladdr(address, &info)) return nullptr;
    return static_cast<HMODULE>(info.dli_fbase);
}

HMODULE GetModuleHandle(LPCTSTR name) {
    if (!name) return Program();
    return ModuleOf(LoaderReference(name).Get());
}

CString AfxGetModuleFileName(HMODULE module) {
    if (!module || module == Program()) return ProgramPath();
    return LoaderName(module);
}

DWORD GetModuleFileName(HMODULE module, LPTSTR text, DWORD size) {
    const CString path = AfxGetModuleFileName(module);
    const auto length = static_cast<DWORD>(path.GetLength());
    if (length == 0 || !text || size == 0) return 0;
    const DWORD kept = std::min(length, size - 1);
    std::memcpy(text, path.GetString(), kept);
    text[kept] = 0;
    return kept < length ? size : length;
}

HMODULE AfxLoadLibrary(LPCTSTR path, CString* reason) {
    if (!path || !*path) {
        if (reason) *reason = "a library without a name";
        SetLastError(ENOENT);
        return nullptr;
    }
    void* handle = dlopen(PathToLoad(path).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle) TellLoadFailure(path, reason);
    return ModuleOf(handle);
}

BOOL AfxFreeLibrary(HMODULE module) {
    const LPCTSTR name = LoaderName(module);
    if (!name) return FALSE;
    const LoaderReference reference(name);
    return reference.Get() && dlclose(reference.Get()) == 0;
}

void* GetProcAddress(HMODULE module, LPCSTR name) {
    const LPCTSTR path = LoaderName(module);
    if (!name || (!path && module != Program())) return nullptr;
    const LoaderReference reference(path);
    return reference.Get() ? dlsym(reference.Get(), name) : nullptr;
}
