#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <platform/modules/detail/ResourceSection.h>

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <tuple>

using testing::ElementsAre;

namespace {

ByteView Bytes(std::string_view text) {
    return {reinterpret_cast<const BYTE*>(text.data()), text.size()};
}

std::string Text(ByteView bytes) {
    return {bytes.begin(), bytes.end()};
}

// The section in memory of exactly its size, so that a read behind it is noticed.
class Section {
public:
    explicit Section(ByteView bytes) : m_size(bytes.size()), m_bytes(new BYTE[bytes.size()]) {
        std::copy(bytes.begin(), bytes.end(), m_bytes.get());
    }
    ByteView Bytes() const { return {m_bytes.get(), m_size}; }
    ResourceSection View() const { return ResourceSection(Bytes()); }

private:
    std::size_t m_size;
    std::unique_ptr<BYTE[]> m_bytes;
};

// Two types, three names, three languages.
std::vector<BYTE> Shelf() {
    return MakeResourceSection({{"ICON", "Nail", 7, Bytes("german nail")},
                                {"ICON", "Nail", 1033, Bytes("nail")},
                                {"ICON", "Screw", 7, Bytes("german screw")},
                                {"ICON", "Screw", 12, Bytes("french screw")},
                                {"TABLE", "Nail", 1033, Bytes("")}});
}

// Reads all that there is; true if each resource lies in the section.
bool ReadsInside(ResourceSection section, ByteView all) {
    section.Find("ICON", "Screw", 7);
    section.FindAny("none", "none", 0);
    for (DWORD i = 0; i < section.Count(); ++i) {
        const auto record = section.At(i);
        if (!record) continue;
        const auto* const end = all.data() + all.size();
        if (record->bytes.data() < all.data() || record->bytes.size() > all.size() ||
            record->bytes.data() + record->bytes.size() > end)
            return false;
    }
    return true;
}

}  // namespace

TEST(ResourceSection, WithoutResourcesIsAHead) {
    EXPECT_THAT(MakeResourceSection({}),
                ElementsAre('Z', 'T', 'R', 'S', 'R', 'C', 1, 0, 0, 0, 0, 0, 0, 0, 0, 0));
}

TEST(ResourceSection, HasTheDocumentedLayout) {
    const std::vector<BYTE> section =
        MakeResourceSection({{"Ty", "Name", 1033, Bytes("\xAB\xCD")}});
    std::string expected = {'Z', 'T', 'R', 'S', 'R', 'C', 1, 0, 1, 0, 0, 0, 0, 0, 0, 0};
    expected += {48, 0, 0, 0, 2, 0, 0, 0};    // type: at 48, 2 bytes
    expected += {50, 0, 0, 0, 4, 0, 0, 0};    // name: at 50, 4 bytes
    expected += {64, 0, 0, 0, 0, 0, 0, 0};    // bytes: at 64 ...
    expected += {2, 0, 0, 0, 0x09, 4, 0, 0};  // ... 2 of them, language 1033
    expected += "TyName";
    expected.resize(64);
    expected += "\xAB\xCD";
    expected.resize(80);
    EXPECT_EQ(Text(section), expected);
}

TEST(ResourceSection, GivesEachResourceAnAlignedPlace) {
    const std::vector<BYTE> bytes = Shelf();
    const ResourceSection section(bytes);
    ASSERT_EQ(section.Damage(), nullptr);
    ASSERT_EQ(section.Count(), 5u);
    for (DWORD i = 0; i < 5; ++i)
        EXPECT_EQ((section.At(i)->bytes.data() - bytes.data()) % 16, 0) << i;
    EXPECT_EQ(Text(section.At(2)->bytes), "german screw");
    EXPECT_EQ(section.At(5), std::nullopt);
}

TEST(ResourceSection, FindsByTypeNameAndLanguage) {
    const std::vector<BYTE> bytes = Shelf();
    const ResourceSection section(bytes);
    EXPECT_EQ(section.Find("ICON", "Nail", 1033), 1u);
    EXPECT_EQ(section.Find("TABLE", "Nail", 1033), 4u);
    EXPECT_EQ(section.Find("ICON", "Screw", 1033), std::nullopt);
    EXPECT_EQ(section.Find("ICON", "Bolt", 1033), std::nullopt);
    EXPECT_EQ(section.Find("ICO", "Nail", 1033), std::nullopt);
    EXPECT_EQ(section.Find("Nail", "ICON", 1033), std::nullopt);
}

TEST(ResourceSection, ComparesTextsWithoutCase) {
    const std::vector<BYTE> bytes = Shelf();
    const ResourceSection section(bytes);
    EXPECT_EQ(section.Find("icon", "NAIL", 1033), 1u);
    EXPECT_TRUE(IsResourceBefore({"a", "b", 1, {}}, {"A", "B", 2, {}}));
    EXPECT_FALSE(IsResourceBefore({"a", "b", 1, {}}, {"A", "B", 1, {}}));
    EXPECT_FALSE(IsResourceBefore({"A", "B", 1, {}}, {"a", "b", 1, {}}));
    // Neighbours of the letters are no letters.
    EXPECT_TRUE(IsResourceBefore({"@", "n", 1, {}}, {"`", "n", 1, {}}));
    EXPECT_TRUE(IsResourceBefore({"[", "n", 1, {}}, {"{", "n", 1, {}}));
}

TEST(ResourceSection, OrderIsTypeThenNameThenLanguage) {
    EXPECT_TRUE(IsResourceBefore({"a", "z", 9, {}}, {"b", "a", 1, {}}));
    EXPECT_TRUE(IsResourceBefore({"a", "a", 9, {}}, {"a", "b", 1, {}}));
    EXPECT_TRUE(IsResourceBefore({"a", "a", 1, {}}, {"a", "a", 2, {}}));
    EXPECT_TRUE(IsResourceBefore({"a", "a", 1, {}}, {"aa", "a", 1, {}}));
}

TEST(ResourceSection, TakesThePreferredLanguageOrTheFirst) {
    const std::vector<BYTE> bytes = Shelf();
    const ResourceSection section(bytes);
    EXPECT_EQ(section.FindAny("ICON", "Nail", 1033), 1u);
    EXPECT_EQ(section.FindAny("ICON", "Screw", 1033), 2u);
    EXPECT_EQ(section.FindAny("ICON", "Screw", 12), 3u);
    EXPECT_EQ(section.FindAny("ICON", "Bolt", 12), std::nullopt);
}

TEST(ResourceSection, TellsPlacesByTheirAddresses) {
    const std::vector<BYTE> bytes = Shelf();
    const ResourceSection section(bytes);
    EXPECT_EQ(section.PlaceAt(section.AddressOf(0)), 0u);
    EXPECT_EQ(section.PlaceAt(section.AddressOf(4)), 4u);
    EXPECT_EQ(section.PlaceAt(section.AddressOf(4) + 32), std::nullopt);
    EXPECT_EQ(section.PlaceAt(section.AddressOf(4) + 1), std::nullopt);
    EXPECT_EQ(section.PlaceAt(bytes.data()), std::nullopt);
    EXPECT_EQ(section.PlaceAt(nullptr), std::nullopt);
}

TEST(ResourceSection, OfNothingIsEmpty) {
    const ResourceSection section;
    EXPECT_NE(section.Damage(), nullptr);
    EXPECT_EQ(section.Count(), 0u);
    EXPECT_EQ(section.At(0), std::nullopt);
    EXPECT_EQ(section.Find("a", "b", 1), std::nullopt);
}

TEST(ResourceSection, CutAnywhereIsDamagedAndReadsInside) {
    const std::vector<BYTE> whole = Shelf();
    // The last resource has no bytes, and the one before it ends with four of padding.
    const std::size_t needed = whole.size() - 4;
    for (std::size_t size = 0; size < needed; ++size) {
        const Section section(ByteView(whole).first(size));
        EXPECT_NE(section.View().Damage(), nullptr) << size;
        EXPECT_TRUE(ReadsInside(section.View(), section.Bytes())) << size;
    }
}

TEST(ResourceSection, WithAnyByteChangedReadsInside) {
    const std::vector<BYTE> whole = Shelf();
    for (std::size_t at = 0; at < whole.size(); ++at)
        for (const int value : {0x00, 0x01, 0x7F, 0x80, 0xFF}) {
            std::vector<BYTE> changed = whole;
            changed[at] = static_cast<BYTE>(value);
            const ResourceSection section(changed);
            section.Damage();
            EXPECT_TRUE(ReadsInside(section, changed)) << at;
        }
}

// A field of the layout, a value that no whole section has there, and what is then wrong.
struct BadField {
    std::size_t offset;
    std::vector<BYTE> value;
    const char* damage;
};

TEST(ResourceSection, TellsWhatIsWrong) {
    const BadField fields[] = {
        {0, {'z'}, "it does not begin with \"ZTRSRC\""},
        {6, {2}, "it is of an unknown version"},
        {7, {1}, "it is of an unknown version"},
        {8, {0xFF}, "its directory is longer than the section"},
        {11, {0x80}, "its directory is longer than the section"},
        {12, {1}, "its head is not closed with a zero"},
        {16, {0xFF, 0xFF}, "an entry of its directory reaches out of it"},
        {20, {0, 0, 0, 0}, "an entry of its directory reaches out of it"},
        {23, {0xFF}, "an entry of its directory reaches out of it"},
        {24, {0xFF, 0xFF, 0xFF, 0xFF}, "an entry of its directory reaches out of it"},
        {28, {0, 0, 0, 0}, "an entry of its directory reaches out of it"},
        {32, {0, 0, 0, 0, 0, 0, 0, 0x80}, "an entry of its directory reaches out of it"},
        {32,
         {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF},
         "an entry of its directory reaches out of it"},
        {40, {0xFF, 0xFF, 0xFF, 0xFF}, "an entry of its directory reaches out of it"},
    };
    for (const BadField& field : fields) {
        std::vector<BYTE> section = Shelf();
        std::copy(field.value.begin(), field.value.end(),
                  section.begin() + static_cast<std::ptrdiff_t>(field.offset));
        EXPECT_STREQ(ResourceSection(section).Damage(), field.damage) << field.offset;
    }
    EXPECT_STREQ(ResourceSection(ByteView(Shelf()).first(15)).Damage(),
                 "it is too short for its head");
}

RC_GTEST_PROP(ResourceSectionLaws, GivesBackWhatWasPutIn, ()) {
    using Key = std::tuple<std::string, std::string, WORD>;
    // Types of digits and names of hexadecimal letters, which have one case.
    const auto text =
        rc::gen::nonEmpty(rc::gen::container<std::string>(rc::gen::inRange('0', ':')));
    const auto put = *rc::gen::container<std::map<Key, std::string>>(
        rc::gen::tuple(text, text, rc::gen::arbitrary<WORD>()), rc::gen::arbitrary<std::string>());
    std::vector<ResourceRecord> records;
    for (const auto& [key, bytes] : put)
        records.push_back({std::get<0>(key), std::get<1>(key), std::get<2>(key), Bytes(bytes)});
    const std::vector<BYTE> bytes = MakeResourceSection(records);
    const ResourceSection section(bytes);
    RC_ASSERT(section.Damage() == nullptr);
    RC_ASSERT(section.Count() == put.size());
    RC_ASSERT(std::is_sorted(records.begin(), records.end(), IsResourceBefore));
    for (const auto& [key, value] : put) {
        const auto place = section.Find(std::get<0>(key), std::get<1>(key), std::get<2>(key));
        RC_ASSERT(place.has_value());
        RC_ASSERT(Text(section.At(*place)->bytes) == value);
    }
}
