// Tables of rows in a document.

#include <platform/object/CMemoryException.h>
#include <rapidcheck.h>
#include <tests/NoMemory.h>
#include <tests/Raises.h>
#include <zt/memory/Rows_test.hpp>
#include <zt/persist/Cursor_test.hpp>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace ZT {
namespace {

using testing::ElementsAre;
using testing_support::NoMemory;
using testing_support::Raises;

constexpr bool kBinary = true;
constexpr bool kText = false;

/// The 32-bit words of all rows.
std::vector<std::uint32_t> WordsOf(const BufferBase& buffer) {
    const std::string bytes = TextOf(buffer);
    std::vector<std::uint32_t> words(bytes.size() / 4);
    if (!words.empty()) std::memcpy(words.data(), bytes.data(), 4 * words.size());
    return words;
}

/// A buffer of the bytes of `words`.
template <class Word>
struct WordRows : Rows {
    WordRows(unsigned char rowSize, const std::vector<Word>& words)
        : Rows(rowSize, std::string(reinterpret_cast<const char*>(words.data()),
                                    sizeof(Word) * words.size())) {}
};

struct BufferPersist : CursorTest {
    /// What storing makes.
    std::string Stored(BufferBase& buffer, bool bBinary) {
        Store();
        buffer.PersistXML(*cursor, bBinary);
        EXPECT_EQ(cursor->GetStackPosn(), 1);
        return Xml();
    }

    /// Loads an element "BB" with these children.
    void LoadFrom(const std::string& children, BufferBase& buffer) {
        Load("<R><BB>" + children + "</BB></R>");
        buffer.PersistXML(*cursor, kBinary);
        EXPECT_EQ(cursor->GetStackPosn(), 1);
    }
};

// Storing.

TEST_F(BufferPersist, BinaryFormIsAllBytesInHexadecimal) {
    Rows rows(3, std::string("\x00\x0A\xFF\x61\x80\x7F", 6));
    EXPECT_EQ(Stored(rows, kBinary),
              "<R><BB><SR>3</SR><C>2</C><Bn>1</Bn><Dt>000AFF61807F</Dt></BB></R>");
    Rows six(6, "abcdef");
    EXPECT_EQ(Stored(six, kBinary),
              "<R><BB><SR>6</SR><C>1</C><Bn>1</Bn><Dt>616263646566</Dt></BB></R>");
}

TEST_F(BufferPersist, WithoutBytesThereIsNoData) {
    BufferBase none;
    EXPECT_EQ(Stored(none, kBinary), "<R><BB><SR>0</SR><C>0</C><Bn>1</Bn></BB></R>");
    Rows empty(6, "");
    EXPECT_EQ(Stored(empty, kText), "<R><BB><SR>12</SR><C>0</C><Bn>0</Bn></BB></R>");
    none.m_nCount = 7;
    EXPECT_EQ(Stored(none, kText), "<R><BB><SR>0</SR><C>7</C><Bn>0</Bn></BB></R>");
}

TEST_F(BufferPersist, IndentedChildrenStandOneLevelDeeper) {
    BufferBase none;
    Store(true);
    none.PersistXML(*cursor, kBinary);
    EXPECT_EQ(Xml(), "<R>\n\t<BB>\n\t\t<SR>0</SR>\n\t\t<C>0</C>\n\t\t<Bn>1</Bn>\n\t</BB></R>");
}

TEST_F(BufferPersist, RowsOfSixBytesAreShortWordsAnnouncedAsTwelveBytes) {
    WordRows<std::uint16_t> rows(6, {0, 1, 65535, 32768, 10, 999});
    EXPECT_EQ(Stored(rows, kText),
              "<R><BB><SR>12</SR><C>2</C><Bn>0</Bn><Dt>0 1 65535 32768 10 999</Dt></BB></R>");
    EXPECT_EQ(rows.GetRowSize(), 6);
}

TEST_F(BufferPersist, AllOtherRowsAreTheFirstFourWords) {
    WordRows<std::uint32_t> exact(8, {0, 4294967295, 2147483648, 12});
    EXPECT_EQ(Stored(exact, kText),
              "<R><BB><SR>8</SR><C>2</C><Bn>0</Bn>"
              "<Dt>0 4294967295 2147483648 12</Dt></BB></R>");
    WordRows<std::uint32_t> longer(8, {1, 2, 3, 4, 5, 6});
    EXPECT_EQ(Stored(longer, kText),
              "<R><BB><SR>8</SR><C>3</C><Bn>0</Bn><Dt>1 2 3 4</Dt></BB></R>");
    WordRows<std::uint32_t> twelve(12, {1, 2, 3, 4, 5, 6});
    EXPECT_EQ(Stored(twelve, kText),
              "<R><BB><SR>12</SR><C>2</C><Bn>0</Bn><Dt>1 2 3 4</Dt></BB></R>");
}

TEST_F(BufferPersist, WordsBeyondAShortBlockAreZero) {
    Rows rows(5, std::string("\x01\x00\x00\x00\x02\x00\x00\x00\x00\x03", 10));
    EXPECT_EQ(Stored(rows, kText),
              "<R><BB><SR>5</SR><C>2</C><Bn>0</Bn><Dt>1 2 768 0</Dt></BB></R>");
    Rows byte(1, "\x07");
    EXPECT_EQ(Stored(byte, kText), "<R><BB><SR>1</SR><C>1</C><Bn>0</Bn><Dt>7 0 0 0</Dt></BB></R>");
}

TEST_F(BufferPersist, AShapeWithoutABlockIsStoredWithoutBytes) {
    Rows rows(6, "abcdef");
    rows.DestroyNoCount();
    EXPECT_EQ(Stored(rows, kText), "<R><BB><SR>12</SR><C>1</C><Bn>0</Bn><Dt>0 0 0</Dt></BB></R>");
    EXPECT_EQ(Stored(rows, kBinary), "<R><BB><SR>6</SR><C>1</C><Bn>1</Bn><Dt/></BB></R>");
    rows.SetRowSize(4);
    EXPECT_EQ(Stored(rows, kText), "<R><BB><SR>4</SR><C>1</C><Bn>0</Bn><Dt>0 0 0 0</Dt></BB></R>");
}

TEST_F(BufferPersist, ACountBeyond31BitsIsStoredAsItsBits) {
    BufferBase buffer;
    buffer.m_nCount = 0xFFFFFFFE;
    EXPECT_EQ(Stored(buffer, kBinary), "<R><BB><SR>0</SR><C>-2</C><Bn>1</Bn></BB></R>");
    BufferBase loaded;
    Reload();
    loaded.PersistXML(*cursor, kBinary);
    EXPECT_THAT(loaded, HasFields(0, 0xFFFFFFFEu, 0u));
    EXPECT_EQ(loaded.m_pData, nullptr);
}

// Loading.

TEST_F(BufferPersist, BinaryFormComesBackWhole) {
    Rows rows(3, std::string("\x00\x0A\xFF\x61\x80\x7F", 6));
    Stored(rows, kBinary);
    Reload();
    Rows loaded(5, "abcdefghij");
    loaded.AllocateEx(2);
    loaded.PersistXML(*cursor, kText);
    EXPECT_TRUE(loaded.IsSame(rows));
    EXPECT_EQ(loaded.m_nAllocated, 0u);
}

TEST_F(BufferPersist, RowsOfSixBytesComeBackAsRowsOfTwelve) {
    WordRows<std::uint16_t> rows(6, {0, 1, 65535, 32768, 10, 999});
    Stored(rows, kText);
    Reload();
    BufferBase loaded;
    loaded.PersistXML(*cursor, kBinary);
    EXPECT_THAT(loaded, HasFields(12, 2u, 0u));
    EXPECT_THAT(WordsOf(loaded), ElementsAre(0, 1, 65535, 32768, 10, 999));
}

TEST_F(BufferPersist, SixteenBytesComeBackWholeAsWords) {
    WordRows<std::uint32_t> rows(8, {0, 4294967295, 2147483648, 12});
    Stored(rows, kText);
    Reload();
    BufferBase loaded;
    loaded.PersistXML(*cursor, kBinary);
    EXPECT_TRUE(loaded.IsSame(rows));
}

TEST_F(BufferPersist, WordsThatWereNotStoredAreNotLoaded) {
    WordRows<std::uint32_t> rows(8, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
    Stored(rows, kText);
    Reload();
    BufferBase loaded;
    loaded.PersistXML(*cursor, kText);
    EXPECT_THAT(loaded, HasFields(8, 5u, 0u));
    ASSERT_NE(loaded.GetRow(4), nullptr);
    EXPECT_THAT(WordsOf(loaded), ElementsAre(1, 2, 3, 4, 0, 0, 0, 0, 0, 0));
}

TEST_F(BufferPersist, WithoutBnTheDataIsHexadecimal) {
    BufferBase loaded;
    LoadFrom("<SR>2</SR><C>1</C><Dt>3132</Dt>", loaded);
    EXPECT_EQ(TextOf(loaded), "12");
    BufferBase unreadable;
    LoadFrom("<SR>2</SR><C>1</C><Bn>no</Bn><Dt>3132</Dt>", unreadable);
    EXPECT_EQ(TextOf(unreadable), "12");
    BufferBase other;
    LoadFrom("<SR>2</SR><C>1</C><Bn>7</Bn><Dt>3132</Dt>", other);
    EXPECT_EQ(TextOf(other), "12");
}

TEST_F(BufferPersist, WordsFollowBlanks) {
    const struct {
        const char* text;
        std::vector<std::uint32_t> words;
    } rows[] = {
        {"1 2 3", {1, 2, 3}},
        {"-1 +2 4294967295", {4294967295, 2, 4294967295}},
        {"2147483648 4294967296 3", {2147483648, 0, 3}},
        {"1 2 3 4", {1, 2, 3}},
        {"1  2", {1, 2, 2}},
        {"1x 2y 3", {1, 2, 3}},
        {"1\t9 2 3", {1, 2, 3}},
    };
    for (const auto& row : rows) {
        BufferBase loaded;
        LoadFrom(std::string("<SR>12</SR><C>1</C><Bn>0</Bn><Dt>") + row.text + "</Dt>", loaded);
        EXPECT_EQ(WordsOf(loaded), row.words) << row.text;
    }
}

TEST_F(BufferPersist, WordsEndWhereThereIsNoNumberOrNoBlank) {
    for (const char* const text : {"5 6", "5 6 x", "5 6 x 7"}) {
        BufferBase loaded;
        LoadFrom(std::string("<SR>16</SR><C>1</C><Bn>0</Bn><Dt>") + text + "</Dt>", loaded);
        EXPECT_THAT(loaded, HasFields(16, 1u, 0u));
        EXPECT_THAT(WordsOf(loaded), ElementsAre(5, 6, 0, 0)) << text;
    }
}

TEST_F(BufferPersist, WordsFillOnlyWholeWordsOfTheBlock) {
    BufferBase loaded;
    LoadFrom("<SR>7</SR><C>1</C><Bn>0</Bn><Dt>5 6</Dt>", loaded);
    EXPECT_EQ(TextOf(loaded), std::string("\x05\0\0\0\0\0\0", 7));
    LoadFrom("<SR>3</SR><C>1</C><Bn>0</Bn><Dt>5 6</Dt>", loaded);
    EXPECT_THAT(loaded, HasFields(3, 1u, 0u));
    EXPECT_EQ(TextOf(loaded), std::string(3, '\0'));
}

TEST_F(BufferPersist, BadOrShortHexadecimalTextEndsTheLoading) {
    for (const char* const text : {"6162", "6162xx64", "61626", "6162 364"}) {
        BufferBase loaded;
        LoadFrom(std::string("<SR>4</SR><C>1</C><Dt>") + text + "</Dt>", loaded);
        EXPECT_THAT(loaded, HasFields(4, 1u, 0u));
        EXPECT_EQ(TextOf(loaded), std::string("ab\0\0", 4)) << text;
    }
    BufferBase longer;
    LoadFrom("<SR>2</SR><C>1</C><Dt>616263</Dt>", longer);
    EXPECT_EQ(TextOf(longer), "ab");
}

TEST_F(BufferPersist, WithoutAnElementNothingChanges) {
    Rows rows(2, "aabb");
    rows.m_nAllocated = 4;
    Load("<R><X/></R>");
    rows.PersistXML(*cursor, kBinary);
    cursor->Push(IXMLDOMElementPtr());
    rows.PersistXML(*cursor, kBinary);
    // One level too deep.
    Load("<R><X><BB><SR>9</SR><C>9</C></BB></X></R>");
    rows.PersistXML(*cursor, kBinary);
    EXPECT_THAT(rows, HasFields(2, 2u, 4u));
    EXPECT_EQ(TextOf(rows), "aabb");
}

TEST_F(BufferPersist, InNeitherDirectionNothingHappens) {
    Rows rows(2, "aabb");
    Load("<R><BB><SR>1</SR><C>1</C><Dt>61</Dt></BB></R>", kNeither);
    rows.PersistXML(*cursor, kBinary);
    EXPECT_EQ(TextOf(rows), "aabb");
    EXPECT_EQ(Xml(), "<R><BB><SR>1</SR><C>1</C><Dt>61</Dt></BB></R>");
}

TEST_F(BufferPersist, TheFirstElementCountsWhateverTheChildIndex) {
    Load("<R><BB><SR>1</SR><C>1</C><Dt>61</Dt></BB><BB><SR>1</SR><C>1</C><Dt>62</Dt></BB></R>");
    cursor->m_nChildIndex = 1;
    BufferBase loaded;
    loaded.PersistXML(*cursor, kBinary);
    EXPECT_EQ(TextOf(loaded), "a");
    EXPECT_EQ(cursor->m_nChildIndex, 1);
}

TEST_F(BufferPersist, AMissingRowSizeOrCountStays) {
    Rows rows(2, "aabb");
    LoadFrom("<C>1</C><Dt>6364</Dt>", rows);
    EXPECT_THAT(rows, HasFields(2, 1u, 0u));
    EXPECT_EQ(TextOf(rows), "cd");
    LoadFrom("<SR>3</SR><Dt>656667</Dt>", rows);
    EXPECT_EQ(TextOf(rows), "efg");
    LoadFrom("<SR>x</SR><C/><Dt>68696A</Dt>", rows);
    EXPECT_EQ(TextOf(rows), "hij");
    LoadFrom("<SR>257</SR><Dt>6B</Dt>", rows);
    EXPECT_EQ(TextOf(rows), "k");
}

// A file never makes a buffer claim bytes that it does not have.

TEST_F(BufferPersist, WithoutDataTheOldBlockIsDropped) {
    Rows rows(2, "aabb");
    rows.AllocateEx(2);
    LoadFrom("<SR>9</SR><C>1000</C>", rows);
    EXPECT_THAT(rows, HasFields(9, 1000u, 0u));
    EXPECT_EQ(rows.m_pData, nullptr);
    EXPECT_EQ(rows.GetRow(0), nullptr);
    ASSERT_NE(rows.AddNewRow(), nullptr);
    EXPECT_EQ(TextOf(rows), std::string(9009, '\0'));
}

TEST_F(BufferPersist, NeitherDoRowsWithoutASizeKeepIt) {
    Rows rows(2, "aabb");
    LoadFrom("<SR>0</SR><C>1000</C><Dt>61</Dt>", rows);
    EXPECT_THAT(rows, HasFields(0, 1000u, 0u));
    rows.SetRowSize(255);
    EXPECT_EQ(rows.GetRow(999), nullptr);
}

TEST_F(BufferPersist, WithoutRowsTheOldBlockStaysAsRoom) {
    Rows rows(2, "aabb");
    rows.AllocateEx(2);
    unsigned char* const block = rows.m_pData;
    LoadFrom("<SR>1</SR><C>0</C><Dt>61</Dt>", rows);
    EXPECT_THAT(rows, HasFields(1, 0u, 4u));
    EXPECT_EQ(rows.m_pData, block);
    EXPECT_EQ(rows.GetRow(0), nullptr);
}

TEST_F(BufferPersist, AShapeWithoutABlockComesBackWithOneOfZeros) {
    Rows rows(6, "abcdef");
    rows.DestroyNoCount();
    Stored(rows, kBinary);
    Reload();
    BufferBase loaded;
    loaded.PersistXML(*cursor, kBinary);
    EXPECT_THAT(loaded, HasFields(6, 1u, 0u));
    ASSERT_NE(loaded.GetRow(0), nullptr);
    EXPECT_EQ(TextOf(loaded), std::string(6, '\0'));
}

TEST_F(BufferPersist, ARowCountWithoutMemoryRaisesTheMemoryException) {
    Rows rows(2, "aabb");
    const NoMemory limit(1'000'000);
    EXPECT_TRUE(Raises<CMemoryException>(
        [&] { LoadFrom("<SR>1</SR><C>4000000000</C><Dt>61</Dt>", rows); }));
    EXPECT_THAT(rows, HasFields(1, 4000000000u, 0u));
    EXPECT_EQ(rows.m_pData, nullptr);
    EXPECT_EQ(rows.GetRow(0), nullptr);
    EXPECT_EQ(rows.GetRow(3999999999), nullptr);
    // Such a buffer stores, copies and compares as one without bytes.
    EXPECT_FALSE(rows.IsSame(Rows(1, "a")));
    BufferBase copy;
    copy.Copy(rows, 0);
    EXPECT_EQ(copy.GetRow(0), nullptr);
    rows.SetCount(3);
    EXPECT_NE(rows.GetRow(2), nullptr);
}

// 128 * 2^25 and 255 * 16843010 are 0 and 254 in 32 bits.
TEST_F(BufferPersist, AShapeBeyond32BitsIsOneWithoutMemory) {
    for (const char* const shape : {"<SR>128</SR><C>33554432</C>", "<SR>255</SR><C>16843010</C>"}) {
        Rows rows(2, "aabb");
        EXPECT_TRUE(
            Raises<CMemoryException>([&] { LoadFrom(shape + std::string("<Dt>61</Dt>"), rows); }));
        EXPECT_EQ(rows.m_pData, nullptr);
        EXPECT_EQ(rows.GetRow(16843009), nullptr);
        Rows without(2, "aabb");
        LoadFrom(shape, without);
        EXPECT_EQ(without.m_pData, nullptr);
    }
}

// The same shape, and 255 * 16843009, which is 2^32 - 1.
TEST_F(BufferPersist, WhatIsDoneWithAShapeBeyond32BitsRaisesTheMemoryException) {
    BufferBase beyond;
    LoadFrom("<SR>255</SR><C>16843010</C>", beyond);
    Rows rows(255, std::string(255, 'a'));
    const BufferBase* const none = &beyond;
    EXPECT_TRUE(Raises<CMemoryException>([&] { rows.Merge(*none); }));
    EXPECT_TRUE(Raises<CMemoryException>([&] { rows.Unite(*none); }));
    EXPECT_THAT(rows, HasFields(255, 1u, 0u));
    EXPECT_EQ(TextOf(rows), std::string(255, 'a'));
    EXPECT_TRUE(Raises<CMemoryException>([&] { beyond.AddNewRow(); }));
    EXPECT_TRUE(Raises<CMemoryException>([&] { beyond.Allocate(); }));
    EXPECT_THAT(beyond, HasFields(255, 16843010u, 0u));
    EXPECT_EQ(beyond.GetRow(0), nullptr);

    BufferBase last;
    LoadFrom("<SR>255</SR><C>16843009</C>", last);
    EXPECT_TRUE(Raises<CMemoryException>([&] { last.Merge(rows); }));
    EXPECT_TRUE(Raises<CMemoryException>([&] { last.AddNewRow(); }));
    EXPECT_THAT(last, HasFields(255, 16843009u, 0u));
    EXPECT_EQ(last.m_pData, nullptr);
}

TEST_F(BufferPersist, RowsBeyond32BitsInNumberRaiseTheMemoryException) {
    BufferBase most;
    LoadFrom("<SR>1</SR><C>4294967295</C>", most);
    EXPECT_TRUE(Raises<CMemoryException>([&] { most.Merge(Rows(1, "xy")); }));
    EXPECT_THAT(most, HasFields(1, 4294967295u, 0u));
    Rows rows(1, "xy");
    EXPECT_TRUE(Raises<CMemoryException>([&] { rows.Merge(most); }));
    EXPECT_EQ(TextOf(rows), "xy");
    EXPECT_TRUE(Raises<CMemoryException>([&] { most.AddNewRow(); }));
    EXPECT_THAT(most, HasFields(1, 4294967295u, 0u));
}

TEST_F(BufferPersist, MoreRowsThanCanBeCountedWithoutSizeAndRoomAreNotAdded) {
    BufferBase most;
    LoadFrom("<SR>0</SR><C>4294967295</C>", most);
    EXPECT_EQ(most.AddNewRow(), nullptr);
    EXPECT_THAT(most, HasFields(0, 4294967295u, 0u));
}

// Rows that are counted over the old room have no bytes of their own.
TEST_F(BufferPersist, RowsCountedOverTheOldRoomBringAlongNoMoreThanIt) {
    Rows rows(2, "aabb");
    rows.AllocateEx(2);
    LoadFrom("<SR>0</SR><C>0</C>", rows);
    for (int i = 0; i < 3; ++i) rows.AddNewRow();
    EXPECT_THAT(rows, HasFields(0, 3u, 4u));
    EXPECT_EQ(rows.Merge(Rows(200, std::string(200, 'c'))), 3u);
    EXPECT_EQ(TextOf(rows), "aabb" + std::string(596, '\0') + std::string(200, 'c'));
}

// Laws.

TEST_F(BufferPersist, AnyBufferComesBackFromHexadecimalText) {
    EXPECT_TRUE(rc::check([this](std::string bytes) {
        const auto rowSize = *rc::gen::inRange<unsigned char>(1, 20);
        bytes.resize(bytes.size() / rowSize * rowSize);
        Rows rows(rowSize, bytes);
        Stored(rows, kBinary);
        Reload();
        BufferBase loaded;
        loaded.PersistXML(*cursor, kText);
        RC_ASSERT(loaded.IsSame(rows));
    }));
}

TEST_F(BufferPersist, AnySixteenBytesAndAnyShortWordsComeBackFromDecimalText) {
    EXPECT_TRUE(rc::check([this] {
        const auto words =
            *rc::gen::container<std::vector<std::uint32_t>>(4, rc::gen::arbitrary<std::uint32_t>());
        WordRows<std::uint32_t> rows(16, words);
        Stored(rows, kText);
        Reload();
        BufferBase loaded;
        loaded.PersistXML(*cursor, kText);
        RC_ASSERT(WordsOf(loaded) == words);
    }));
    EXPECT_TRUE(rc::check([this] {
        const auto words = *rc::gen::container<std::vector<std::uint16_t>>(
            12, rc::gen::arbitrary<std::uint16_t>());
        WordRows<std::uint16_t> rows(6, words);
        Stored(rows, kText);
        Reload();
        BufferBase loaded;
        loaded.PersistXML(*cursor, kText);
        RC_ASSERT(WordsOf(loaded) == std::vector<std::uint32_t>(words.begin(), words.end()));
    }));
}

}  // namespace
}  // namespace ZT
