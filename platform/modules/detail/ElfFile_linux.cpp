#include <gelf.h>
#include <libelf.h>

#include <platform/modules/detail/ElfFile.h>

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

// A module that is read through the library.
class ElfReader {
public:
    // The bytes are only read.
    explicit ElfReader(ByteView file) {
        if (elf_version(EV_CURRENT) == EV_NONE || file.size() < EI_NIDENT) return;
        auto* const image = reinterpret_cast<char*>(const_cast<BYTE*>(file.data()));
        m_elf = elf_memory(image, file.size());
    }
    ~ElfReader() {
        if (m_elf) elf_end(m_elf);
    }
    ElfReader(const ElfReader&) = delete;
    ElfReader& operator=(const ElfReader&) = delete;

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

// Calls `visit` with each section and its header; false if one of them cannot be read. A
// module without a table has no sections, whatever their number is said to be.
template <class Visit>
bool ForEachSection(Elf* elf, Visit visit) {
    GElf_Ehdr head;
    std::size_t count = 0;
    if (!gelf_getehdr(elf, &head) || elf_getshdrnum(elf, &count) != 0) return false;
    if (head.e_shoff == 0) return true;
    for (std::size_t i = 0; i < count; ++i) {
        Elf_Scn* const section = elf_getscn(elf, i);
        GElf_Shdr header;
        if (!section || !gelf_getshdr(section, &header)) return false;
        visit(section, header);
    }
    return true;
}

// The name in the section of names that has the index `names`, 0 for none; null if it
// cannot be read.
const char* NameOf(Elf* elf, std::size_t names, const GElf_Shdr& header) {
    return names != 0 ? elf_strptr(elf, names, header.sh_name) : nullptr;
}

// The section of this name; null if there is none.
Elf_Scn* SectionOfName(Elf* elf, std::string_view name) {
    std::size_t names = 0;
    if (elf_getshdrstrndx(elf, &names) != 0) return nullptr;
    Elf_Scn* found = nullptr;
    const bool read = ForEachSection(elf, [&](Elf_Scn* section, const GElf_Shdr& header) {
        const char* const text = NameOf(elf, names, header);
        // The first place of the table stands for no section, whatever it says.
        const bool real = elf_ndxscn(section) != 0;
        if (!found && real && text && text == name) found = section;
    });
    return read ? found : nullptr;
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

template <class To, class From>
void Assign(To& to, From from) {
    to = static_cast<To>(from);
}

// A section's header in the form of the module's class.
template <class Header>
Header OfClass(const GElf_Shdr& header) {
    Header out{};
    Assign(out.sh_name, header.sh_name);
    Assign(out.sh_type, header.sh_type);
    Assign(out.sh_flags, header.sh_flags);
    Assign(out.sh_addr, header.sh_addr);
    Assign(out.sh_offset, header.sh_offset);
    Assign(out.sh_size, header.sh_size);
    Assign(out.sh_link, header.sh_link);
    Assign(out.sh_info, header.sh_info);
    Assign(out.sh_addralign, header.sh_addralign);
    Assign(out.sh_entsize, header.sh_entsize);
    return out;
}

struct Class32 {
    using Head = Elf32_Ehdr;
    using Header = Elf32_Shdr;
    static const Head* HeadOf(Elf* elf) { return elf32_getehdr(elf); }
};

struct Class64 {
    using Head = Elf64_Ehdr;
    using Header = Elf64_Shdr;
    static const Head* HeadOf(Elf* elf) { return elf64_getehdr(elf); }
};

// The bytes that `headers` are in the module's file, in its own order; none if the library
// cannot tell.
template <class Header>
std::vector<BYTE> Coded(Elf* elf, Elf_Type type, std::vector<Header> headers) {
    std::vector<BYTE> bytes(headers.size() * sizeof(Header));
    Elf_Data from{};
    from.d_buf = headers.data();
    from.d_size = bytes.size();
    from.d_type = type;
    from.d_version = EV_CURRENT;
    Elf_Data to = from;
    to.d_buf = bytes.data();
    const auto order = static_cast<unsigned char>(elf_getident(elf, nullptr)[EI_DATA]);
    return gelf_xlatetof(elf, &to, &from, order) ? bytes : std::vector<BYTE>();
}

// The change of one section of a module. The names of the sections, the section and the
// table of sections, in this order, become the end of the file.
//
// The library reads the module and codes the new headers. It could write the file as
// well, but it ends the program over a layout that it does not expect, and it clears what
// lies between the sections.
class SectionChange {
public:
    SectionChange(ByteView old, std::string_view name)
        : m_old(old), m_name(name), m_module(old), m_elf(m_module.Get()) {}

    std::optional<ElfChange> Put(ByteView content) {
        const std::optional<GElf_Ehdr> head = m_module.Head();
        if (!head || !Read(*head)) return std::nullopt;
        m_keep = Cut();
        AddSections();
        Place(m_names, Bytes(m_texts), 1);
        Place(m_section, content, 16);
        return gelf_getclass(m_elf) == ELFCLASS32 ? Finish<Class32>() : Finish<Class64>();
    }

private:
    static ByteView Bytes(const std::string& text) {
        return {reinterpret_cast<const BYTE*>(text.data()), text.size()};
    }

    // Reads what there is; false if the module is not whole, or if the section is loaded
    // with it.
    bool Read(const GElf_Ehdr& head) {
        const std::optional<std::vector<Extent>> segments = Segments(m_elf, head, m_old);
        // The head changes, so nothing else may stand in it.
        const std::size_t headSize = SizeOf(m_elf, ELF_T_EHDR, 1);
        if (!segments || segments->empty() || head.e_phoff < headSize) return false;
        if (!ReadSections()) return false;
        m_staying = *segments;
        m_staying.push_back({0, headSize});
        m_moving = {SectionTable(m_elf, head)};
        for (const GElf_Shdr& header : m_headers)
            (Moves(header) ? m_moving : m_staying).push_back(PlaceOf(header));
        return AllLieIn(m_staying, m_old) && AllLieIn(m_moving, m_old) && ReadNames();
    }

    // Reads the table; false if a section of it has no name although there are names.
    bool ReadSections() {
        std::size_t names = 0;
        if (elf_getshdrstrndx(m_elf, &names) != 0) return false;
        bool named = true;
        const bool read = ForEachSection(m_elf, [&](Elf_Scn*, GElf_Shdr header) {
            const std::size_t index = m_headers.size();
            const char* const text = NameOf(m_elf, names, header);
            if (!m_section && index != 0 && text && text == m_name) m_section = index;
            if (index != 0 && index == names) m_names = index;
            // Without names, there is nothing for the header to point at.
            if (names == 0) header.sh_name = 0;
            named = named && (text || names == 0);
            m_headers.push_back(header);
        });
        const bool ambiguous = m_section && m_section == m_names;
        return read && named && !ambiguous && !(m_section && IsLoaded(*m_section));
    }

    bool IsLoaded(std::size_t index) const { return (m_headers[index].sh_flags & SHF_ALLOC) != 0; }

    bool Moves(const GElf_Shdr& header) const {
        const auto index = static_cast<std::size_t>(&header - m_headers.data());
        return index == m_section || (index == m_names && !IsLoaded(index));
    }

    // Names that are loaded with the module stay where they are, and their copy moves.
    bool ReadNames() {
        m_texts.assign(1, '\0');
        if (!m_names) return true;
        const Extent place = PlaceOf(m_headers[*m_names]);
        if (!place.LiesIn(m_old)) return false;
        const ByteView texts = m_old.subspan(place.offset, place.size);
        m_texts.assign(texts.begin(), texts.end());
        if (IsLoaded(*m_names)) m_names.reset();
        return true;
    }

    // Where the file is cut: behind the last byte that belongs to nothing that moves. What
    // has no bytes in the file, as a segment of zeros, is to lie in it all the same. Bytes
    // that nothing in the module tells of are kept, unless all up to the next that moves
    // are zero, as those are that align it.
    std::uint64_t Cut() const {
        std::uint64_t cut = 0;
        for (const Extent& extent : m_staying) cut = std::max(cut, extent.End());
        std::uint64_t at = cut;
        while (at < m_old.size()) {
            const std::uint64_t behind = BehindMoved(at);
            const std::uint64_t next = behind != at ? behind : NextMoved(at);
            if (behind == at && !IsZero({at, next - at})) cut = next;
            at = next;
        }
        return cut;
    }
    bool IsZero(const Extent& place) const {
        const ByteView bytes = m_old.subspan(place.offset, place.size);
        return std::all_of(bytes.begin(), bytes.end(), [](BYTE byte) { return byte == 0; });
    }
    // Where the next thing begins that moves and stands behind `at`; the end of the file if
    // nothing does.
    std::uint64_t NextMoved(std::uint64_t at) const {
        std::uint64_t next = m_old.size();
        for (const Extent& extent : m_moving)
            if (extent.size != 0 && extent.offset > at) next = std::min(next, extent.offset);
        return next;
    }
    // The end of what moves and stands at `at`; `at` itself if nothing does.
    std::uint64_t BehindMoved(std::uint64_t at) const {
        for (const Extent& extent : m_moving)
            if (at >= extent.offset && at < extent.End()) return extent.End();
        return at;
    }

    // The index of a new section.
    std::size_t Add(std::string_view name, GElf_Word type) {
        GElf_Shdr header{};
        header.sh_name = static_cast<GElf_Word>(m_texts.size());
        header.sh_type = type;
        m_texts.append(name).push_back('\0');
        m_headers.push_back(header);
        return m_headers.size() - 1;
    }

    void AddSections() {
        // The first place of the table stands for no section.
        if (m_headers.empty()) m_headers.emplace_back();
        if (!m_section) m_section = Add(m_name, SHT_PROGBITS);
        if (!m_names) m_names = Add(".shstrtab", SHT_STRTAB);
        m_headers[*m_section].sh_type = SHT_PROGBITS;
        m_headers[*m_section].sh_flags = 0;
    }

    // Fills up to the next place that `alignment` divides, and answers it.
    std::uint64_t Align(std::uint64_t alignment) {
        const std::uint64_t end = m_keep + m_end.size();
        const std::uint64_t place = (end + alignment - 1) / alignment * alignment;
        m_end.resize(m_end.size() + (place - end));
        return place;
    }

    void Place(std::optional<std::size_t> index, ByteView bytes, std::uint64_t alignment) {
        GElf_Shdr& header = m_headers[*index];
        header.sh_offset = Align(alignment);
        header.sh_size = bytes.size();
        header.sh_addralign = alignment;
        m_end.insert(m_end.end(), bytes.begin(), bytes.end());
    }

    // Numbers that are too large for the head stand in the table's first place.
    template <class Head>
    void Count(Head& head) {
        const std::size_t count = m_headers.size();
        const bool manySections = count >= SHN_LORESERVE;
        const bool lateNames = *m_names >= SHN_LORESERVE;
        head.e_shnum = static_cast<GElf_Half>(manySections ? 0 : count);
        head.e_shstrndx = static_cast<GElf_Half>(lateNames ? std::size_t{SHN_XINDEX} : *m_names);
        m_headers[0].sh_size = manySections ? count : 0;
        m_headers[0].sh_link = static_cast<GElf_Word>(lateNames ? *m_names : 0);
    }

    template <class Class>
    std::optional<ElfChange> Finish() {
        using Header = typename Class::Header;
        typename Class::Head head = *Class::HeadOf(m_elf);
        const std::uint64_t table = Align(8);
        head.e_shoff = static_cast<decltype(head.e_shoff)>(table);
        head.e_shentsize = sizeof(Header);
        Count(head);
        std::vector<Header> headers;
        for (const GElf_Shdr& header : m_headers) headers.push_back(OfClass<Header>(header));
        const std::vector<BYTE> coded = Coded(m_elf, ELF_T_SHDR, headers);
        m_end.insert(m_end.end(), coded.begin(), coded.end());
        // An offset that the class has no room for is noticed by its change.
        ElfChange change{Coded(m_elf, ELF_T_EHDR, std::vector{head}), {}, {}};
        if (coded.empty() || change.head.empty() || head.e_shoff != table) return std::nullopt;
        change.kept = m_old.subspan(change.head.size(), m_keep - change.head.size());
        change.end = std::move(m_end);
        return change;
    }

    ByteView m_old;
    std::string_view m_name;
    ElfReader m_module;
    Elf* m_elf;
    std::vector<Extent> m_staying;
    std::vector<Extent> m_moving;
    std::vector<GElf_Shdr> m_headers;
    // The places of the section and of the names in the table.
    std::optional<std::size_t> m_section;
    std::optional<std::size_t> m_names;
    std::string m_texts;
    // Up to here the file stays as it is.
    std::uint64_t m_keep = 0;
    // What stands behind that.
    std::vector<BYTE> m_end;
};

}  // namespace

ElfSection FindElfSection(ByteView file, std::string_view name) {
    const ElfReader module(file);
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
    const ElfReader module(file);
    const std::optional<GElf_Ehdr> head = module.Head();
    if (!head) return false;
    const std::optional<std::vector<Extent>> segments = Segments(module.Get(), *head, file);
    return segments && !segments->empty() && AllLieIn(*segments, file);
}

std::optional<ElfChange> PutElfSection(ByteView file, std::string_view name, ByteView content) {
    return SectionChange(file, name).Put(content);
}
