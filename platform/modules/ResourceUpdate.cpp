#include <platform/base/LastError.h>
#include <platform/files/detail/FileReplacement.h>
#include <platform/modules/ModuleHandle.h>
#include <platform/modules/ResourceUpdate.h>
#include <platform/modules/detail/ElfFile.h>
#include <platform/modules/detail/FileMapping.h>
#include <platform/modules/detail/LoadedResources.h>
#include <platform/modules/detail/LockedFile.h>
#include <platform/modules/detail/ResourceText.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <new>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

namespace {

// What a resource is addressed by.
struct ResourceKey {
    std::string type;
    std::string name;
    WORD language = 0;

    ResourceRecord Record(ByteView bytes = {}) const { return {type, name, language, bytes}; }
    bool operator<(const ResourceKey& other) const {
        return IsResourceBefore(Record(), other.Record());
    }
};

// The bytes that a resource is to have; none if it is to go away.
using Change = std::optional<std::vector<BYTE>>;

// Reads a module's file and what it has of resources: 0, or the system's error number.
// With `dropExisting`, nothing of them is read.
int ReadModule(const FileMapping& file, bool dropExisting, ResourceSection& existing) {
    const ElfSection found = FindElfSection(file.Bytes(), resourceSectionName);
    if (found.state == ElfSection::noModule || !HoldsElfSegments(file.Bytes())) return ENOEXEC;
    if (found.state == ElfSection::damaged) return EBADMSG;
    if (found.state == ElfSection::none || dropExisting) return 0;
    existing = ResourceSection(found.bytes);
    return existing.Damage() ? EBADMSG : 0;
}

// Whether the module in the open file can be loaded as far as `old` could, and has these
// resources.
bool IsWritten(int file, ByteView content) {
    FileMapping written;
    if (written.Map(file) != 0 || !HoldsElfSegments(written.Bytes())) return false;
    const ElfSection found = FindElfSection(written.Bytes(), resourceSectionName);
    return found.state == ElfSection::found && std::ranges::equal(found.bytes, content);
}

// The path from the root, which names the same file when the process changes its
// directory. Empty for an empty path.
std::string FullPath(LPCSTR path) {
    std::error_code failure;
    const std::filesystem::path full = std::filesystem::absolute(path, failure);
    return failure || !*path ? std::string(path) : full.native();
}

class ResourceUpdate {
public:
    ResourceUpdate(LPCSTR path, bool dropExisting) : m_path(FullPath(path)), m_drop(dropExisting) {}

    int Begin() {
        LockedFile file;
        FileMapping mapping;
        ResourceSection existing;
        if (const int error = Read(file, mapping, existing); error != 0) return error;
        for (DWORD i = 0; i < existing.Count(); ++i) {
            const ResourceRecord record = existing.At(i).value_or(ResourceRecord());
            m_present[{std::string(record.type), std::string(record.name), record.language}] = true;
        }
        return 0;
    }

    int Put(const ResourceKey& key, const void* data, DWORD size) {
        const auto* const from = static_cast<const BYTE*>(data);
        if (!from && size != 0) return EINVAL;
        if (!from && !m_present[key]) return ENOENT;
        // The latest spelling is the one that is kept.
        m_changes.erase(key);
        m_changes.emplace(key, from ? Change(std::in_place, from, from + size) : Change());
        m_present[key] = from != nullptr;
        return 0;
    }

    int End() {
        LockedFile file;
        FileMapping mapping;
        ResourceSection existing;
        if (const int error = Read(file, mapping, existing); error != 0) return error;
        // A module that is loaded from the old file keeps it.
        if (const HMODULE loaded = GetModuleHandle(m_path.c_str())) KeepResourcesOf(loaded);
        return Write(mapping.Bytes(), MakeResourceSection(Merged(existing)));
    }

private:
    int Read(LockedFile& file, FileMapping& mapping, ResourceSection& existing) const {
        if (const int error = file.Open(m_path.c_str()); error != 0) return error;
        if (const int error = mapping.Map(file.Descriptor()); error != 0) return error;
        return ReadModule(mapping, m_drop, existing);
    }

    // What the file has and no change touches, and what the changes add.
    std::vector<ResourceRecord> Merged(const ResourceSection& existing) const {
        std::vector<ResourceRecord> records;
        for (DWORD i = 0; i < existing.Count(); ++i) {
            const ResourceRecord record = existing.At(i).value_or(ResourceRecord());
            const ResourceKey key = {std::string(record.type), std::string(record.name),
                                     record.language};
            if (!m_changes.contains(key)) records.push_back(record);
        }
        for (const auto& [key, bytes] : m_changes)
            if (bytes) records.push_back(key.Record(*bytes));
        std::stable_sort(records.begin(), records.end(), IsResourceBefore);
        return records;
    }

    int Write(ByteView old, const std::vector<BYTE>& content) const {
        const std::optional<ElfChange> change = PutElfSection(old, resourceSectionName, content);
        if (!change) return ENOEXEC;
        // A path to an open file is that of the file here: nothing is written in its place.
        std::error_code failure;
        const std::filesystem::path real = std::filesystem::canonical(m_path, failure);
        if (failure) return failure.value();
        FileReplacement file;
        int error = file.Open(real.c_str());
        for (const ByteView part : {ByteView(change->head), change->kept, ByteView(change->end)})
            if (error == 0) error = file.Write(part.data(), part.size());
        if (error != 0) return error;
        return IsWritten(file.Descriptor(), content) ? file.Finish() : ENOEXEC;
    }

    std::string m_path;
    bool m_drop;
    // What is there after the changes so far.
    std::map<ResourceKey, bool> m_present;
    std::map<ResourceKey, Change> m_changes;
};

// The updates that have begun and not ended.
class OpenUpdates {
public:
    HANDLE Add(std::unique_ptr<ResourceUpdate> update) {
        const std::scoped_lock lock(m_lock);
        const HANDLE handle = update.get();
        m_updates.emplace(handle, std::move(update));
        return handle;
    }
    // Null if the handle is none.
    ResourceUpdate* Find(HANDLE handle) {
        const std::scoped_lock lock(m_lock);
        const auto found = m_updates.find(handle);
        return found == m_updates.end() ? nullptr : found->second.get();
    }
    std::unique_ptr<ResourceUpdate> Take(HANDLE handle) {
        const std::scoped_lock lock(m_lock);
        const auto taken = m_updates.extract(handle);
        return taken ? std::move(taken.mapped()) : nullptr;
    }

private:
    std::mutex m_lock;
    std::map<HANDLE, std::unique_ptr<ResourceUpdate>> m_updates;
};

OpenUpdates& AllOpen() {
    static OpenUpdates& all = *new OpenUpdates;
    return all;
}

// Runs a step, tells the system's error number that it answers as the last error, and
// whether there was none.
template <class Step>
BOOL Succeeds(Step step) {
    int error = 0;
    try {
        error = step();
    } catch (const std::bad_alloc&) {
        error = ENOMEM;
    }
    if (error != 0) SetLastError(static_cast<DWORD>(error));
    return error == 0;
}

}  // namespace

HANDLE BeginUpdateResourceA(LPCSTR path, BOOL deleteExisting) {
    HANDLE handle = nullptr;
    Succeeds([&] {
        if (!path) return EINVAL;
        auto update = std::make_unique<ResourceUpdate>(path, deleteExisting != FALSE);
        const int error = update->Begin();
        if (error == 0) handle = AllOpen().Add(std::move(update));
        return error;
    });
    return handle;
}

BOOL UpdateResourceA(HANDLE handle, LPCSTR type, LPCSTR name, WORD language, const void* data,
                     DWORD size) {
    return Succeeds([&] {
        ResourceUpdate* const update = AllOpen().Find(handle);
        const ResourceKey key = {ResourceText(type), ResourceText(name), language};
        if (!update || key.type.empty() || key.name.empty()) return EINVAL;
        return update->Put(key, data, size);
    });
}

BOOL EndUpdateResourceA(HANDLE handle, BOOL discard) {
    return Succeeds([&] {
        const std::unique_ptr<ResourceUpdate> update = AllOpen().Take(handle);
        if (!update) return EINVAL;
        return discard ? 0 : update->End();
    });
}
