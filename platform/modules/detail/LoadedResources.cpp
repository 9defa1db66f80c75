#include <platform/base/LastError.h>
#include <platform/modules/detail/ElfFile.h>
#include <platform/modules/detail/FileMapping.h>
#include <platform/modules/detail/LoadedFile.h>
#include <platform/modules/detail/LoadedResources.h>

#include <cerrno>
#include <filesystem>
#include <mutex>
#include <system_error>
#include <unordered_map>
#include <vector>

namespace {

// What was mapped before the file was written to in its place; bytes and places of it may
// still be in use.
struct EarlierFile {
    FileMapping file;
    ResourceSection section;
};

// A module's file in memory.
struct KeptFile {
    // The file that is loaded under the handle.
    std::string identity;
    // The count of unloads up to which the handle is known to stand for this file.
    unsigned long long checked = 0;
    FileMapping file;
    std::vector<EarlierFile> earlier;
    ResourceSection section;
    // Why there are no resources, or 0.
    int error = 0;
};

int FindSection(ByteView file, ResourceSection& section) {
    const ElfSection found = FindElfSection(file, resourceSectionName);
    if (found.state == ElfSection::none) return ENOENT;
    if (found.state != ElfSection::found) return EBADMSG;
    section = ResourceSection(found.bytes);
    return section.Damage() ? EBADMSG : 0;
}

void ReadSection(KeptFile& kept) {
    kept.section = ResourceSection();
    kept.error = FindSection(kept.file.Bytes(), kept.section);
    if (kept.error != 0) kept.section = ResourceSection();
}

// The resource at a place that a look-up gave, be it before the file was written to.
std::optional<ResourceRecord> RecordAt(const KeptFile& kept, const void* place) {
    if (const auto index = kept.section.PlaceAt(place)) return kept.section.At(*index);
    for (const auto& [file, section] : kept.earlier) {
        // What the file has become too short for can be read no more.
        if (file.Bytes().size() > kept.file.Bytes().size()) continue;
        if (const auto index = section.PlaceAt(place)) return section.At(*index);
    }
    return std::nullopt;
}

// Whether the file is as long as it was when it was mapped. One that cannot be opened any
// more is.
bool HasItsLength(const KeptFile& kept, const LoadedFile& loaded) {
    std::error_code failure;
    const auto size = std::filesystem::file_size(loaded.path, failure);
    return loaded.path.empty() || failure || size == kept.file.Bytes().size();
}

bool IsModule(HMODULE module) {
    return module && AfxModuleFromAddress(module) == module;
}

// The lock is never held while the loader is asked about a module: a module's constructor
// runs under the loader's own lock, and may ask for resources.
class LoadedResources {
public:
    // Calls `use` with what is kept of the module; 0, or why nothing is.
    template <class Use>
    int With(HMODULE module, Use use) {
        const unsigned long long unloads = CountOfUnloads();
        if (UseKnown(module, unloads, use)) return 0;
        const std::optional<LoadedFile> loaded =
            IsModule(module) ? LoadedFileOf(module) : std::optional<LoadedFile>();
        if (!loaded) return EINVAL;
        const std::scoped_lock lock(m_lock);
        if (const int error = Check(module, *loaded, unloads); error != 0) return error;
        use(m_files.at(module));
        return 0;
    }

    void ForgetUnloaded() {
        std::vector<HMODULE> gone = Modules();
        std::erase_if(gone, IsModule);
        const unsigned long long unloads = CountOfUnloads();
        const std::scoped_lock lock(m_lock);
        // What has been checked since is of another module at the same address.
        for (const HMODULE module : gone)
            if (const auto known = m_files.find(module);
                known != m_files.end() && known->second.checked != unloads)
                m_files.erase(known);
    }

private:
    std::vector<HMODULE> Modules() {
        const std::scoped_lock lock(m_lock);
        std::vector<HMODULE> modules;
        for (const auto& entry : m_files) modules.push_back(entry.first);
        return modules;
    }

    // False if it has to be found out which module is loaded under the handle.
    template <class Use>
    bool UseKnown(HMODULE module, unsigned long long unloads, Use use) {
        const std::scoped_lock lock(m_lock);
        const auto known = m_files.find(module);
        if (known == m_files.end() || known->second.checked != unloads) return false;
        use(known->second);
        return true;
    }

    // Makes sure that what is kept under the handle is of the module that is loaded now.
    int Check(HMODULE module, const LoadedFile& loaded, unsigned long long unloads) {
        const auto known = m_files.find(module);
        if (known == m_files.end() || known->second.identity != loaded.identity)
            return Keep(module, loaded, unloads);
        // The same file may have been unloaded, written to in its place and loaded again.
        if (!HasItsLength(known->second, loaded)) return KeepAnew(module, loaded, unloads);
        ReadSection(known->second);
        known->second.checked = unloads;
        return 0;
    }

    int KeepAnew(HMODULE module, const LoadedFile& loaded, unsigned long long unloads) {
        KeptFile before = std::move(m_files.at(module));
        const int error = Keep(module, loaded, unloads);
        KeptFile& now = m_files.at(module);
        if (error != 0) {
            now = std::move(before);
            return error;
        }
        before.earlier.push_back({std::move(before.file), before.section});
        now.earlier = std::move(before.earlier);
        return 0;
    }

    int Keep(HMODULE module, const LoadedFile& loaded, unsigned long long unloads) {
        if (loaded.path.empty()) return ESTALE;
        KeptFile kept;
        if (const int error = kept.file.Open(loaded.path.c_str()); error != 0) return error;
        // Another file may have taken the name before it was opened.
        const std::optional<LoadedFile> still = LoadedFileOf(module);
        if (!still || still->path != loaded.path) return ESTALE;
        kept.identity = loaded.identity;
        kept.checked = unloads;
        // Also a file without resources stays mapped, or another could take its identity.
        ReadSection(kept);
        m_files.insert_or_assign(module, std::move(kept));
        return 0;
    }

    std::mutex m_lock;
    std::unordered_map<HMODULE, KeptFile> m_files;
};

// Never ended, since a module may ask while the program ends.
LoadedResources& AllLoaded() {
    static LoadedResources& all = *new LoadedResources;
    return all;
}

}  // namespace

std::optional<ResourceSection> ResourcesOf(HMODULE module) {
    ResourceSection section;
    int missing = 0;
    const int error = AllLoaded().With(module, [&](const KeptFile& kept) {
        section = kept.section;
        missing = kept.error;
    });
    if (error == 0 && missing == 0) return section;
    SetLastError(static_cast<DWORD>(error != 0 ? error : missing));
    return std::nullopt;
}

std::optional<ResourceRecord> ResourceAt(HMODULE module, const void* place) {
    std::optional<ResourceRecord> record;
    AllLoaded().With(module, [&](const KeptFile& kept) { record = RecordAt(kept, place); });
    return record;
}

void KeepResourcesOf(HMODULE module) {
    const DWORD before = GetLastError();
    AllLoaded().With(module, [](const KeptFile&) {});
    SetLastError(before);
}

void ForgetUnloadedResources() {
    AllLoaded().ForgetUnloaded();
}
