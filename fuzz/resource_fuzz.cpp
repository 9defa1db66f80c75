// Takes any bytes for the file of a module, and for the section in it: looks up
// resources, and gives the module others.

#include <platform/modules/ResourceFile.h>
#include <platform/modules/detail/ElfFile.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
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
    Check(module.Read(file) == module.Failure().IsEmpty());
    for (DWORD i = 0; i < module.GetCount(); ++i) Check(module.GetAt(i).has_value());
    const ElfSection section = FindElfSection(file, resourceSectionName);
    if (section.state == ElfSection::found) ReadAll(ResourceSection(section.bytes));
}

// The module keeps what stays, byte for byte, or there is no change.
void ChangeModule(ByteView file) {
    const std::vector<BYTE> content(100, 7);
    const auto change = PutElfSection(file, resourceSectionName, content);
    if (!change) return;
    std::vector<BYTE> changed = change->head;
    changed.insert(changed.end(), change->kept.begin(), change->kept.end());
    Check(std::equal(change->kept.begin(), change->kept.end(),
                     file.begin() + static_cast<std::ptrdiff_t>(change->head.size())));
    changed.insert(changed.end(), change->end.begin(), change->end.end());
    // Of a module with several sections of the name, or with sections over one another,
    // another one may be found then. An update reads its module back and drops such a one.
    FindElfSection(changed, resourceSectionName);
    HoldsElfSegments(changed);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ByteView bytes(data, size);
    ReadAll(ResourceSection(bytes));
    ReadModule(bytes);
    ChangeModule(bytes);
    return 0;
}
