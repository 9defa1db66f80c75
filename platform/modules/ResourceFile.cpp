#include <platform/base/LastError.h>
#include <platform/modules/ResourceFile.h>
#include <platform/modules/detail/ElfFile.h>
#include <platform/modules/detail/FileMapping.h>

struct ResourceFile::Content {
    FileMapping file;
    ResourceSection section;
    bool hasSection = false;
    CString failure;
};

namespace {

// Why the section cannot be read; null if it can, or if there is none.
const char* Damage(const ElfSection& section) {
    if (section.state == ElfSection::damaged)
        return "it, or the table of sections, reaches out of the file";
    return section.state == ElfSection::found ? ResourceSection(section.bytes).Damage() : nullptr;
}

}  // namespace

ResourceFile::ResourceFile() : m_content(std::make_unique<Content>()) {}

ResourceFile::~ResourceFile() = default;

bool ResourceFile::Open(LPCTSTR path) {
    m_content = std::make_unique<Content>();
    FileMapping file;
    if (const int error = file.Open(path ? path : ""); error != 0) {
        m_content->failure = SystemErrorText(static_cast<DWORD>(error));
        return false;
    }
    const bool read = Read(file.Bytes());
    m_content->file = std::move(file);
    return read;
}

bool ResourceFile::Read(ByteView file) {
    m_content = std::make_unique<Content>();
    const ElfSection found = FindElfSection(file, resourceSectionName);
    const char* const damage = Damage(found);
    if (found.state == ElfSection::noModule)
        m_content->failure = "no module, so it can have no section .ztrsrc";
    else if (damage)
        m_content->failure.Format("section .ztrsrc is damaged: %s", damage);
    else if (found.state == ElfSection::found)
        m_content->section = ResourceSection(found.bytes);
    m_content->hasSection = found.state == ElfSection::found && !damage;
    return m_content->failure.IsEmpty();
}

const CString& ResourceFile::Failure() const {
    return m_content->failure;
}

bool ResourceFile::HasSection() const {
    return m_content->hasSection;
}

DWORD ResourceFile::GetCount() const {
    return m_content->section.Count();
}

std::optional<ResourceRecord> ResourceFile::GetAt(DWORD place) const {
    return m_content->section.At(place);
}

std::optional<ResourceRecord> ResourceFile::Find(std::string_view type, std::string_view name,
                                                 WORD language) const {
    const std::optional<DWORD> place = m_content->section.Find(type, name, language);
    return place ? GetAt(*place) : std::nullopt;
}

std::optional<ResourceRecord> ResourceFile::FindAny(std::string_view type,
                                                    std::string_view name) const {
    const std::optional<DWORD> place =
        m_content->section.FindAny(type, name, defaultResourceLanguage);
    return place ? GetAt(*place) : std::nullopt;
}
