#include <platform/modules/detail/ResourceSection.h>

#include <algorithm>
#include <array>
#include <compare>
#include <concepts>
#include <cstring>

namespace {

constexpr std::string_view magic = "ZTRSRC";
constexpr WORD version = 1;
constexpr std::size_t alignment = 16;

// Offsets in the head of a section, and its size.
enum Head : std::size_t { headVersion = 6, headCount = 8, headZero = 12, headSize = 16 };

// Offsets in an entry of the directory, and its size. A text is an offset and a length.
enum Entry : std::size_t {
    entryType = 0,
    entryName = 8,
    entryBytes = 16,
    entrySize = 24,
    entryLanguage = 28,
    entryZero = 30,
    entryLength = 32,
};

// Numbers stand with their lowest byte first.
template <std::unsigned_integral T>
T Number(ByteView bytes, std::size_t offset) {
    T number = 0;
    for (std::size_t i = sizeof(T); i-- > 0;)
        number = static_cast<T>(number << 8 | bytes[offset + i]);
    return number;
}

template <std::unsigned_integral T>
void PutNumber(std::vector<BYTE>& bytes, std::size_t offset, T number) {
    for (std::size_t i = 0; i < sizeof(T); ++i)
        bytes[offset + i] = static_cast<BYTE>(number >> 8 * i & 0xFF);
}

std::optional<ByteView> Part(ByteView bytes, QWORD offset, QWORD size) {
    if (offset > bytes.size() || size > bytes.size() - offset) return std::nullopt;
    return bytes.subspan(static_cast<std::size_t>(offset), static_cast<std::size_t>(size));
}

char Lower(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter;
}

std::strong_ordering CompareTexts(std::string_view a, std::string_view b) {
    return std::lexicographical_compare_three_way(
        a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
            return static_cast<unsigned char>(Lower(x)) <=> static_cast<unsigned char>(Lower(y));
        });
}

bool IsSameText(std::string_view a, std::string_view b) {
    return a.size() == b.size() && CompareTexts(a, b) == 0;
}

std::size_t Aligned(std::size_t offset) {
    return (offset + alignment - 1) / alignment * alignment;
}

// Puts `text` at `offset` and tells the entry's field where it is; the offset behind it.
std::size_t PutText(std::vector<BYTE>& section, std::size_t field, std::size_t offset,
                    std::string_view text) {
    PutNumber(section, field, static_cast<DWORD>(offset));
    PutNumber(section, field + 4, static_cast<DWORD>(text.size()));
    std::copy(text.begin(), text.end(), section.begin() + static_cast<std::ptrdiff_t>(offset));
    return offset + text.size();
}

std::size_t TextSize(const std::vector<ResourceRecord>& records) {
    std::size_t size = 0;
    for (const ResourceRecord& record : records) size += record.type.size() + record.name.size();
    return size;
}

std::size_t BytesSize(const std::vector<ResourceRecord>& records) {
    std::size_t size = 0;
    for (const ResourceRecord& record : records) size += Aligned(record.bytes.size());
    return size;
}

}  // namespace

bool IsResourceBefore(const ResourceRecord& a, const ResourceRecord& b) {
    if (const auto byType = CompareTexts(a.type, b.type); byType != 0) return byType < 0;
    if (const auto byName = CompareTexts(a.name, b.name); byName != 0) return byName < 0;
    return a.language < b.language;
}

const char* ResourceSection::Damage() const {
    if (m_section.size() < headSize) return "it is too short for its head";
    if (std::memcmp(m_section.data(), magic.data(), magic.size()) != 0)
        return "it does not begin with \"ZTRSRC\"";
    if (Number<WORD>(m_section, headVersion) != version) return "it is of an unknown version";
    if (Number<DWORD>(m_section, headZero) != 0) return "its head is not closed with a zero";
    const DWORD count = Number<DWORD>(m_section, headCount);
    if (count > (m_section.size() - headSize) / entryLength)
        return "its directory is longer than the section";
    for (DWORD i = 0; i < count; ++i)
        if (!At(i)) return "an entry of its directory reaches out of it";
    return nullptr;
}

DWORD ResourceSection::Count() const {
    if (m_section.size() < headSize) return 0;
    const std::size_t room = (m_section.size() - headSize) / entryLength;
    const DWORD count = Number<DWORD>(m_section, headCount);
    return count <= room ? count : 0;
}

std::string_view ResourceSection::Text(ByteView entry, std::size_t field) const {
    const auto text = Part(m_section, Number<DWORD>(entry, field), Number<DWORD>(entry, field + 4));
    if (!text || text->empty()) return {};
    return {reinterpret_cast<const char*>(text->data()), text->size()};
}

std::optional<ResourceRecord> ResourceSection::At(DWORD index) const {
    if (index >= Count()) return std::nullopt;
    const ByteView entry = m_section.subspan(headSize + index * entryLength, entryLength);
    const auto bytes =
        Part(m_section, Number<QWORD>(entry, entryBytes), Number<DWORD>(entry, entrySize));
    const ResourceRecord record = {Text(entry, entryType), Text(entry, entryName),
                                   Number<WORD>(entry, entryLanguage), bytes.value_or(ByteView())};
    const bool whole = bytes && !record.type.empty() && !record.name.empty();
    return whole ? std::optional(record) : std::nullopt;
}

std::optional<DWORD> ResourceSection::Find(std::string_view type, std::string_view name,
                                           WORD language) const {
    const std::optional<DWORD> found = FindAny(type, name, language);
    return found && At(*found).value_or(ResourceRecord()).language == language ? found
                                                                               : std::nullopt;
}

std::optional<DWORD> ResourceSection::FindAny(std::string_view type, std::string_view name,
                                              WORD preferred) const {
    std::optional<DWORD> first;
    for (DWORD i = 0; i < Count(); ++i) {
        const std::optional<ResourceRecord> record = At(i);
        if (!record) return std::nullopt;
        if (!IsSameText(record->name, name) || !IsSameText(record->type, type)) continue;
        if (record->language == preferred) return i;
        if (!first) first = i;
    }
    return first;
}

const BYTE* ResourceSection::AddressOf(DWORD index) const {
    return m_section.data() + headSize + index * entryLength;
}

std::optional<DWORD> ResourceSection::PlaceAt(const void* address) const {
    // Addresses of nothing in particular are told apart as numbers.
    const auto begin = reinterpret_cast<UINT_PTR>(m_section.data()) + headSize;
    const auto at = reinterpret_cast<UINT_PTR>(address);
    if (at < begin || (at - begin) % entryLength != 0) return std::nullopt;
    const std::size_t place = (at - begin) / entryLength;
    return place < Count() ? std::optional(static_cast<DWORD>(place)) : std::nullopt;
}

std::vector<BYTE> MakeResourceSection(const std::vector<ResourceRecord>& records) {
    const std::size_t texts = headSize + records.size() * entryLength;
    const std::size_t bytes = Aligned(texts + TextSize(records));
    std::vector<BYTE> section(bytes + BytesSize(records));
    std::copy(magic.begin(), magic.end(), section.begin());
    PutNumber(section, headVersion, version);
    PutNumber(section, headCount, static_cast<DWORD>(records.size()));
    std::size_t entry = headSize;
    std::size_t nextText = texts;
    std::size_t nextBytes = bytes;
    for (const ResourceRecord& record : records) {
        nextText = PutText(section, entry + entryType, nextText, record.type);
        nextText = PutText(section, entry + entryName, nextText, record.name);
        PutNumber(section, entry + entryBytes, QWORD{nextBytes});
        PutNumber(section, entry + entrySize, static_cast<DWORD>(record.bytes.size()));
        PutNumber(section, entry + entryLanguage, record.language);
        std::copy(record.bytes.begin(), record.bytes.end(),
                  section.begin() + static_cast<std::ptrdiff_t>(nextBytes));
        nextBytes += Aligned(record.bytes.size());
        entry += entryLength;
    }
    return section;
}
