#include <platform/base/LastError.h>
#include <platform/modules/ModuleResource.h>
#include <platform/modules/detail/LoadedResources.h>
#include <platform/modules/detail/ResourceText.h>

#include <cerrno>

namespace {

HMODULE OrProgram(HMODULE module) {
    return module ? module : GetModuleHandle(nullptr);
}

std::nullptr_t Fail(int error) {
    SetLastError(static_cast<DWORD>(error));
    return nullptr;
}

template <class Search>
HRSRC Find(HMODULE module, LPCSTR type, LPCSTR name, Search search) {
    const std::string typeText = ResourceText(type);
    const std::string nameText = ResourceText(name);
    if (typeText.empty() || nameText.empty()) return Fail(EINVAL);
    const std::optional<ResourceSection> section = ResourcesOf(OrProgram(module));
    if (!section) return nullptr;
    const std::optional<DWORD> place = search(*section, typeText, nameText);
    if (!place) return Fail(ENOENT);
    return reinterpret_cast<HRSRC>(const_cast<BYTE*>(section->AddressOf(*place)));
}

std::optional<ResourceRecord> RecordAt(HMODULE module, HRSRC place) {
    const std::optional<ResourceRecord> record = ResourceAt(OrProgram(module), place);
    if (!record) Fail(EINVAL);
    return record;
}

}  // namespace

HRSRC FindResourceA(HMODULE module, LPCSTR name, LPCSTR type) {
    return Find(module, type, name, [](const ResourceSection& section, auto& t, auto& n) {
        return section.FindAny(t, n, defaultResourceLanguage);
    });
}

HRSRC FindResourceExA(HMODULE module, LPCSTR type, LPCSTR name, WORD language) {
    return Find(module, type, name, [language](const ResourceSection& section, auto& t, auto& n) {
        return section.Find(t, n, language);
    });
}

HGLOBAL LoadResource(HMODULE module, HRSRC place) {
    const std::optional<ResourceRecord> record = RecordAt(module, place);
    return record ? const_cast<BYTE*>(record->bytes.data()) : nullptr;
}

LPVOID LockResource(HGLOBAL resource) {
    return resource;
}

DWORD SizeofResource(HMODULE module, HRSRC place) {
    const std::optional<ResourceRecord> record = RecordAt(module, place);
    return record ? static_cast<DWORD>(record->bytes.size()) : 0;
}
