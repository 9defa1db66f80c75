#include <gelf.h>
#include <libelf.h>
#include <unistd.h>

#include <platform/modules/detail/ElfFile.h>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <vector>

namespace {

// A module that is read through the library.
class Elf_Reader {
public:
    // From memory, which is only read.
    explicit Elf_Reader(ByteView file) {
        if (elf_version(EV_CURRENT) == EV_NONE || file.size() < EI_NIDENT) return;
        auto* const image = reinterpret_cast<char*>(const_cast<BYTE*>(file.data()));
        m_elf = elf_memory(image, file.size());
    }
    // From an open file, for reading and writing.
    explicit Elf_Reader(int file) {
        if (elf_version(EV_CURRENT) == EV_NONE) return;
        m_elf = elf_begin(file, ELF_C_RDWR, nullptr);
    }
    ~Elf_Reader() {
        if (m_elf) elf_end(m_elf);
    }
    Elf_Reader(const Elf_Reader&) = delete;
    Elf_Reader& operator=(const Elf_Reader&) = delete;

    Elf* Get() const { return m_elf; }
    // The head; none if this is no module.
    std::optional<GElf_Ehdr> Head() const {
        GElf_Ehdr head;
        if (!m_elf || elf_kind(m_elf) != ELF_K_ELF || !gelf_getehdr(m_elf, &head)) return {};
        return head;
    }

private:
    Elf* m_elf = nullptr;
};

// A piece of a file.
struct Extent {
    std::uint64_t offset = 0;
    std::uint64_t size = 0;

    std::uint64_t End() const { return offset + size; }
    bool LiesIn(ByteView file) const {
        return offset <= file.size() && size <= file.size() - offset;
    }
};

std::size_t SizeOf(Elf* elf, Elf_Type type, std::size_t count) {
    return gelf_fsize(elf, type, count, EV_CURRENT);
}

// The table of sections. It is empty if there is none, and has no count that fits if the
// count itself cannot be read.
Extent SectionTable(Elf* elf, const GElf_Ehdr& head) {
    if (head.e_shoff == 0) return {};
    std::size_t count = 0;
    if (elf_getshdrnum(elf, &count) != 0 || count == 0) return {head.e_shoff, UINT64_MAX};
    return {head.e_shoff, SizeOf(elf, ELF_T_SHDR, count)};
}

Extent PlaceOf(const GElf_Shdr& header) {
    const bool inFile = header.sh_type != SHT_NOBITS && header.sh_type != SHT_NULL;
    return {header.sh_offset, inFile ? header.sh_size : 0};
}

// Calls `visit` with each section and its header.
template <class Visit>
void ForEachSection(Elf* elf, Visit visit) {
    Elf_Scn* section = nullptr;
    while ((section = elf_nextscn(elf, section)) != nullptr) {
        GElf_Shdr header;
        if (gelf_getshdr(section, &header)) visit(section, header);
    }
}

// The section of this name; null if there is none.
Elf_Scn* SectionOfName(Elf* elf, std::string_view name) {
    std::size_t names = 0;
    if (elf_getshdrstrndx(elf, &names) != 0) return nullptr;
    Elf_Scn* found = nullptr;
    ForEachSection(elf, [&](Elf_Scn* section, const GElf_Shdr& header) {
        const char* const text = elf_strptr(elf, names, header.sh_name);
        if (!found && text && text == name) found = section;
    });
    return found;
}

// Where the segments of the module stand, and the table of them; none if the table
// cannot be read.
std::optional<std::vector<Extent>> Segments(Elf* elf, const GElf_Ehdr& head, ByteView file) {
    std::size_t count = 0;
    if (elf_getphdrnum(elf, &count) != 0) return std::nullopt;
    std::vector<Extent> segments = {{head.e_phoff, SizeOf(elf, ELF_T_PHDR, count)}};
    if (count == 0) return std::vector<Extent>();
    if (!segments.front().LiesIn(file)) return std::nullopt;
    for (std::size_t i = 0; i < count; ++i) {
        GElf_Phdr segment;
        if (!gelf_getphdr(elf, static_cast<int>(i), &segment)) return std::nullopt;
        segments.push_back({segment.p_offset, segment.p_filesz});
    }
    return segments;
}

bool AllLieIn(const std::vector<Extent>& extents, ByteView file) {
    return std::all_of(extents.begin(), extents.end(),
                       [file](const Extent& extent) { return extent.LiesIn(file); });
}

std::uint64_t Aligned(std::uint64_t offset, std::uint64_t alignment) {
    return (offset + alignment - 1) / alignment * alignment;
}

// The change of one section of a module. The names of the sections, the section and the
// table of sections, in this order, become the end of the file.
class SectionChange {
public:
    SectionChange(int file, ByteView old, std::string_view name)
        : m_old(old), m_name(name), m_file(file), m_module(file), m_elf(m_module.Get()) {}

    int Put(ByteView content) {
        const std::optional<GElf_Ehdr> head = m_module.Head();
        if (!head || !Read(*head)) return ENOEXEC;
        errno = 0;
        if (!Change(content) || elf_update(m_elf, ELF_C_WRITE) < 0)
            return errno != 0 ? errno : ENOEXEC;
        return Finish();
    }

private:
    // Reads what there is; false if the module is not whole.
    bool Read(const GElf_Ehdr& head) {
        const std::optional<std::vector<Extent>> segments = Segments(m_elf, head, m_old);
        if (!segments || elf_getshdrstrndx(m_elf, &m_namesIndex) != 0) return false;
        m_staying = *segments;
        m_staying.push_back({0, SizeOf(m_elf, ELF_T_EHDR, 1)});
        m_moving = {SectionTable(m_elf, head)};
        m_section = SectionOfName(m_elf, m_name);
        m_names = MovableNames();
        ForEachSection(m_elf, [this](Elf_Scn* section, const GElf_Shdr& header) {
            const bool moves = section == m_names || section == m_section;
            (moves ? m_moving : m_staying).push_back(PlaceOf(header));
        });
        return AllLieIn(m_staying, m_old) && AllLieIn(m_moving, m_old) && !IsLoaded(m_section);
    }

    static bool IsLoaded(Elf_Scn* section) {
        GElf_Shdr header;
        return section && gelf_getshdr(section, &header) && (header.sh_flags & SHF_ALLOC) != 0;
    }

    // The section of the names; null if a new one is needed, since there is none or it is
    // loaded with the module.
    Elf_Scn* MovableNames() const {
        Elf_Scn* const names = m_namesIndex != 0 ? elf_getscn(m_elf, m_namesIndex) : nullptr;
        return IsLoaded(names) ? nullptr : names;
    }

    // Where the file is cut: behind all that stays, unless something stands behind that
    // which nothing in the module tells of.
    std::uint64_t Cut() const {
        std::uint64_t cut = 0;
        for (const Extent& extent : m_staying)
            if (extent.size != 0) cut = std::max(cut, extent.End());
        std::uint64_t at = cut;
        while (at < m_old.size()) {
            const std::uint64_t next = BehindMoved(at);
            if (next == at && m_old[at] != 0) return m_old.size();
            at = std::max(next, at + 1);
        }
        return cut;
    }
    // The end of what moves and stands at `at`; `at` itself if nothing does.
    std::uint64_t BehindMoved(std::uint64_t at) const {
        for (const Extent& extent : m_moving)
            if (at >= extent.offset && at < extent.End()) return extent.End();
        return at;
    }

    // Adds `text` to the names and answers where it stands.
    std::size_t AddName(std::string_view text) {
        const std::size_t place = m_nameTexts.size();
        m_nameTexts.append(text).push_back('\0');
        return place;
    }

    // The texts of the names as they are.
    bool ReadNames() {
        m_nameTexts.assign(1, '\0');
        Elf_Scn* const names = m_namesIndex != 0 ? elf_getscn(m_elf, m_namesIndex) : nullptr;
        if (!names) return true;
        const Elf_Data* const texts = elf_getdata(names, nullptr);
        if (!texts || !texts->d_buf) return false;
        m_nameTexts.assign(static_cast<const char*>(texts->d_buf), texts->d_size);
        return true;
    }

    // Gives a section its place and content; the header has all else.
    bool Place(Elf_Scn* section, GElf_Shdr header, const void* bytes, std::size_t size) {
        Elf_Data* data = elf_getdata(section, nullptr);
        if (!data) data = elf_newdata(section);
        if (!data) return false;
        data->d_buf = const_cast<void*>(bytes);
        data->d_size = size;
        data->d_type = ELF_T_BYTE;
        data->d_version = EV_CURRENT;
        data->d_align = header.sh_addralign;
        data->d_off = 0;
        header.sh_offset = m_end = Aligned(m_end, header.sh_addralign);
        header.sh_size = size;
        m_end += size;
        elf_flagdata(data, ELF_C_SET, ELF_F_DIRTY);
        elf_flagscn(section, ELF_C_SET, ELF_F_DIRTY);
        return gelf_update_shdr(section, &header) != 0;
    }

    GElf_Shdr HeaderOf(Elf_Scn* section, std::size_t name, GElf_Word type, std::uint64_t align) {
        GElf_Shdr header{};
        if (section) gelf_getshdr(section, &header);
        if (!section) header.sh_name = static_cast<GElf_Word>(name);
        header.sh_type = type;
        header.sh_flags = 0;
        header.sh_addralign = align;
        return header;
    }

    bool Change(ByteView content) {
        // Without the mark of change, headers of new sections are written from memory that
        // they do not have.
        elf_flagelf(m_elf, ELF_C_SET, ELF_F_LAYOUT | ELF_F_DIRTY);
        if (!ReadNames()) return false;
        m_keep = m_end = Cut();
        const GElf_Shdr section =
            HeaderOf(m_section, m_section ? 0 : AddName(m_name), SHT_PROGBITS, 16);
        const GElf_Shdr names =
            HeaderOf(m_names, m_names ? 0 : AddName(".shstrtab"), SHT_STRTAB, 1);
        if (!m_section) m_section = elf_newscn(m_elf);
        if (!m_names) m_names = elf_newscn(m_elf);
        return m_section && m_names &&
               Place(m_names, names, m_nameTexts.data(), m_nameTexts.size()) &&
               Place(m_section, section, content.data(), content.size()) && PlaceTable();
    }

    // The head is read again, since sections may have come to the module.
    bool PlaceTable() {
        GElf_Ehdr head;
        std::size_t count = 0;
        if (!gelf_getehdr(m_elf, &head) || elf_getshdrnum(m_elf, &count) != 0) return false;
        const std::size_t names = elf_ndxscn(m_names);
        // An index past the reserved ones stands elsewhere than in the head.
        if (names != m_namesIndex && names >= SHN_LORESERVE) return false;
        if (names != m_namesIndex) head.e_shstrndx = static_cast<GElf_Half>(names);
        head.e_shoff = Aligned(m_end, 8);
        m_end = head.e_shoff + SizeOf(m_elf, ELF_T_SHDR, count);
        return gelf_update_ehdr(m_elf, &head) != 0;
    }

    // The library clears what lies between the sections that it knows; what no section
    // tells of is put back.
    int Finish() const {
        std::uint64_t at = SizeOf(m_elf, ELF_T_EHDR, 1);
        while (at < m_keep) {
            const ssize_t put =
                pwrite(m_file, m_old.data() + at, m_keep - at, static_cast<off_t>(at));
            if (put < 0 && errno != EINTR) return errno;
            if (put > 0) at += static_cast<std::uint64_t>(put);
        }
        return ftruncate(m_file, static_cast<off_t>(m_end)) == 0 ? 0 : errno;
    }

    ByteView m_old;
    std::string_view m_name;
    int m_file;
    Elf_Reader m_module;
    Elf* m_elf;
    std::vector<Extent> m_staying;
    std::vector<Extent> m_moving;
    Elf_Scn* m_section = nullptr;
    Elf_Scn* m_names = nullptr;
    std::size_t m_namesIndex = 0;
    std::string m_nameTexts;
    // Up to here the file stays as it is.
    std::uint64_t m_keep = 0;
    // The end of what is placed.
    std::uint64_t m_end = 0;
};

}  // namespace

ElfSection FindElfSection(ByteView file, std::string_view name) {
    const Elf_Reader module(file);
    const std::optional<GElf_Ehdr> head = module.Head();
    if (!head) return {};
    if (!SectionTable(module.Get(), *head).LiesIn(file)) return {ElfSection::damaged, {}};
    Elf_Scn* const section = SectionOfName(module.Get(), name);
    GElf_Shdr header;
    if (!section || !gelf_getshdr(section, &header)) return {ElfSection::none, {}};
    const Extent place = PlaceOf(header);
    if (!place.LiesIn(file)) return {ElfSection::damaged, {}};
    return {ElfSection::found, file.subspan(place.offset, place.size)};
}

bool HoldsElfSegments(ByteView file) {
    const Elf_Reader module(file);
    const std::optional<GElf_Ehdr> head = module.Head();
    if (!head) return false;
    const std::optional<std::vector<Extent>> segments = Segments(module.Get(), *head, file);
    return segments && !segments->empty() && AllLieIn(*segments, file);
}

int PutElfSection(int file, ByteView old, std::string_view name, ByteView content) {
    return SectionChange(file, old, name).Put(content);
}
