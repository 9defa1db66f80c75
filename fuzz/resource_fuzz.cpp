// Takes any bytes for the file of a module, and for the section in it: looks up
// resources, and gives the module others.

#include <platform/modules/ResourceFile.h>
#include <platform/modules/detail/ElfFile.h>

#include <elf.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <vector>

namespace {

void Check(bool holds) {
    if (!holds) std::abort();
}

// Reads each byte, so that one outside of what there is gets noticed.
unsigned Sum(ByteView bytes) {
    unsigned sum = 0;
    for (const BYTE byte : bytes) sum += byte;
    return sum;
}

unsigned Sum(std::string_view text) {
    return Sum(ByteView(reinterpret_cast<const BYTE*>(text.data()), text.size()));
}

void ReadAll(ResourceSection section) {
    const bool whole = !section.Damage();
    unsigned sum = 0;
    for (DWORD i = 0; i < section.Count(); ++i) {
        const auto record = section.At(i);
        Check(record || !whole);
        if (!record) continue;
        sum += Sum(record->bytes) + Sum(record->type) + Sum(record->name);
        Check(!whole || section.Find(record->type, record->name, record->language));
    }
    section.FindAny("TABLE", "Gauge", 1033);
    volatile unsigned used = sum;
    static_cast<void>(used);
}

void ReadModule(ByteView file) {
    ResourceFile module;
    const bool read = module.Read(file);
    const ElfSection section = FindElfSection(file, resourceSectionName);
    const bool found = section.state == ElfSection::found;
    const bool whole = found && !ResourceSection(section.bytes).Damage();
    Check(read == (whole || section.state == ElfSection::none));
    Check(module.HasSection() == whole);
    Check(module.GetCount() == (whole ? ResourceSection(section.bytes).Count() : 0));
    for (DWORD i = 0; i < module.GetCount(); ++i) Check(module.GetAt(i).has_value());
    if (found) ReadAll(ResourceSection(section.bytes));
}

// Whether the segments of a module of this machine's class and order, behind its head, are
// in `changed` as they are in `file`. Read by hand, past the library that the code uses.
bool HasSegmentsOf(ByteView file, ByteView changed) {
    Elf64_Ehdr head;
    if (file.size() < sizeof head) return true;
    std::memcpy(&head, file.data(), sizeof head);
    const bool ours = head.e_ident[EI_CLASS] == ELFCLASS64 && head.e_ident[EI_DATA] == ELFDATA2LSB;
    if (!ours || head.e_phnum == PN_XNUM) return true;
    for (std::size_t i = 0; i < head.e_phnum; ++i) {
        Elf64_Phdr segment;
        const std::size_t at = head.e_phoff + i * sizeof segment;
        if (at + sizeof segment > changed.size()) return false;
        if (std::memcmp(file.data() + at, changed.data() + at, sizeof segment) != 0) return false;
        std::memcpy(&segment, file.data() + at, sizeof segment);
        const std::size_t end = segment.p_offset + segment.p_filesz;
        const std::size_t begin = std::max<std::size_t>(segment.p_offset, sizeof head);
        if (end > changed.size()) return false;
        if (begin < end && std::memcmp(file.data() + begin, changed.data() + begin, end - begin))
            return false;
    }
    return true;
}

// The module keeps what is loaded of it, byte for byte, and has the section, or there is no
// change.
void ChangeModule(ByteView file) {
    const std::vector<BYTE> content(100, 7);
    const auto change = PutElfSection(file, resourceSectionName, content);
    if (!change) return;
    std::vector<BYTE> changed = change->head;
    changed.insert(changed.end(), change->kept.begin(), change->kept.end());
    changed.insert(changed.end(), change->end.begin(), change->end.end());
    Check(HasSegmentsOf(file, changed));
    Check(HoldsElfSegments(changed));
    const ElfSection found = FindElfSection(changed, resourceSectionName);
    Check(found.state == ElfSection::found && std::ranges::equal(found.bytes, content));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ByteView bytes(data, size);
    ReadAll(ResourceSection(bytes));
    ReadModule(bytes);
    ChangeModule(bytes);
    return 0;
}
