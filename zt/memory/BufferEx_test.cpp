// Named fields of the rows of a buffer.

#include <zt/memory/BufferEx.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/object/CMemoryException.h>
#include <tests/NoMemory.h>
#include <tests/Raises.h>
#include <zt/memory/Rows_test.hpp>

#include <cstddef>
#include <string>
#include <type_traits>

namespace ZT {
namespace {

TEST(BufferEx, FieldsStandInOrder) {
    EXPECT_EQ(offsetof(BufferEx, m_pBuffer), 0u);
    EXPECT_EQ(offsetof(BufferEx, m_nFieldCount), 8u);
    EXPECT_EQ(offsetof(BufferEx, m_pFields), 16u);
    EXPECT_EQ(sizeof(BufferEx), 24u);
    EXPECT_FALSE(std::is_polymorphic_v<BufferEx>);
    EXPECT_TRUE((std::is_same_v<decltype(BufferEx::m_nFieldCount), std::uint8_t>));
    EXPECT_TRUE((std::is_same_v<decltype(BufferEx::FieldDefinition::m_nSize), std::uint8_t>));
}

TEST(BufferEx, BeginsWithoutBufferAndFields) {
    const BufferEx description;
    EXPECT_EQ(description.m_pBuffer, nullptr);
    EXPECT_EQ(description.m_pFields, nullptr);
    EXPECT_EQ(description.GetFieldCount(), 0);
    EXPECT_EQ(description.GetRowSize(), 0);
}

TEST(BufferEx, NewDefinitionsAreEmpty) {
    BufferEx description;
    description.SetFieldCount(2);
    EXPECT_EQ(description.GetFieldCount(), 2);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(description.m_pFields[i].m_nSize, 0);
        EXPECT_EQ(description.m_pFields[i].m_strType, "");
        EXPECT_EQ(description.m_pFields[i].m_strName, "");
    }
}

TEST(BufferEx, TheCountOnlyGrowsAndKeepsTheDefinitions) {
    BufferEx description;
    description.SetFieldCount(3);
    description.SetFieldDefinition(2, 8, "double", "z");
    BufferEx::FieldDefinition* const fields = description.m_pFields;
    description.SetFieldCount(2);
    description.SetFieldCount(3);
    description.SetFieldCount(0);
    EXPECT_EQ(description.GetFieldCount(), 3);
    EXPECT_EQ(description.m_pFields, fields);
    description.SetFieldCount(5);
    EXPECT_EQ(description.GetFieldCount(), 5);
    EXPECT_EQ(description.m_pFields[2].m_nSize, 8);
    EXPECT_EQ(description.m_pFields[2].m_strType, "double");
    EXPECT_EQ(description.m_pFields[2].m_strName, "z");
    EXPECT_EQ(description.m_pFields[4].m_nSize, 0);
    description.SetFieldCount(255);
    EXPECT_EQ(description.FindField("z"), 2);
}

TEST(BufferEx, SetFieldCountWithoutMemoryChangesNothing) {
    using testing_support::Raises;
    BufferEx description;
    description.SetFieldCount(1);
    description.SetFieldDefinition(0, 8, "double", "x");
    const testing_support::NoMemory limit(100);
    EXPECT_TRUE(Raises<CMemoryException>([&] { description.SetFieldCount(200); }));
    EXPECT_EQ(description.GetFieldCount(), 1);
    EXPECT_EQ(description.FindField("x"), 0);
}

TEST(BufferEx, DefinitionsAreSetWithBothKindsOfText) {
    BufferEx description;
    description.SetFieldCount(2);
    const CString type("int"), name("count");
    description.SetFieldDefinition(0, 4, type, name);
    description.SetFieldDefinition(1, 255, static_cast<const char*>(nullptr), nullptr);
    EXPECT_EQ(description.m_pFields[0].m_nSize, 4);
    EXPECT_EQ(description.m_pFields[0].m_strType, "int");
    EXPECT_EQ(description.m_pFields[0].m_strName, "count");
    EXPECT_EQ(description.m_pFields[1].m_nSize, 255);
    EXPECT_EQ(description.m_pFields[1].m_strName, "");
}

TEST(BufferEx, ADefinitionThatDoesNotExistIsNotSet) {
    BufferEx description;
    description.SetFieldDefinition(0, 4, "int", "a");
    EXPECT_EQ(description.m_pFields, nullptr);
    description.SetFieldCount(1);
    description.SetFieldDefinition(1, 4, "int", "a");
    const CString type("int"), name("a");
    description.SetFieldDefinition(255, 4, type, name);
    EXPECT_EQ(description.GetRowSize(), 0);
    EXPECT_EQ(description.FindField("a"), -1);
}

TEST(BufferEx, RowSizeIsTheSumOfTheFieldsInEightBits) {
    BufferEx description;
    description.SetFieldCount(3);
    description.SetFieldDefinition(0, 200, "", "a");
    EXPECT_EQ(description.GetRowSize(), 200);
    description.SetFieldDefinition(1, 55, "", "b");
    EXPECT_EQ(description.GetRowSize(), 255);
    description.SetFieldDefinition(2, 1, "", "c");
    EXPECT_EQ(description.GetRowSize(), 0);
    description.SetFieldDefinition(2, 10, "", "c");
    EXPECT_EQ(description.GetRowSize(), 9);
}

TEST(BufferEx, FindFieldGivesTheFirstOfThatNameAndCase) {
    BufferEx description;
    description.SetFieldCount(4);
    description.SetFieldDefinition(0, 1, "X", "x");
    description.SetFieldDefinition(1, 1, "", "y");
    description.SetFieldDefinition(2, 1, "", "Y");
    description.SetFieldDefinition(3, 1, "", "y");
    EXPECT_EQ(description.FindField("x"), 0);
    EXPECT_EQ(description.FindField("y"), 1);
    EXPECT_EQ(description.FindField("Y"), 2);
    EXPECT_EQ(description.FindField("X"), -1);
    EXPECT_EQ(description.FindField("yy"), -1);
    EXPECT_EQ(description.FindField(""), -1);
    EXPECT_TRUE((std::is_same_v<decltype(description.FindField("x")), short>));
}

TEST(BufferEx, FindFieldBeforeAnyFieldGivesZero) {
    BufferEx description;
    EXPECT_EQ(description.FindField("x"), 0);
    description.SetFieldCount(1);
    description.SetFieldDefinition(0, 1, "", "y");
    EXPECT_EQ(description.FindField("x"), -1);
}

TEST(BufferEx, FindFieldReachesTheLastOf255) {
    BufferEx description;
    description.SetFieldCount(255);
    description.SetFieldDefinition(254, 1, "", "last");
    EXPECT_EQ(description.FindField("last"), 254);
}

TEST(BufferEx, AllocateLaysTheBufferOut) {
    BufferEx description;
    BufferBase buffer;
    description.AttachData(&buffer);
    EXPECT_EQ(description.m_pBuffer, &buffer);
    description.SetFieldCount(2);
    description.SetFieldDefinition(0, 4, "", "a");
    description.SetFieldDefinition(1, 3, "", "b");
    description.Allocate(5);
    EXPECT_THAT(buffer, HasFields(7, 5u, 0u));
    EXPECT_EQ(TextOf(buffer), std::string(35, '\0'));
}

TEST(BufferEx, AllocateKeepsTheRowsOfTheBuffer) {
    Rows buffer(4, "aaaabbbb");
    BufferEx description;
    description.AttachData(&buffer);
    description.SetFieldCount(1);
    description.SetFieldDefinition(0, 4, "", "a");
    description.Allocate(3);
    EXPECT_EQ(TextOf(buffer), std::string("aaaabbbb\0\0\0\0", 12));
}

/// A description of one field of `size` bytes in `buffer`.
struct OneField : BufferEx {
    OneField(BufferBase& buffer, unsigned char size) {
        AttachData(&buffer);
        SetFieldCount(1);
        SetFieldDefinition(0, size, "", "a");
    }
};

TEST(BufferEx, AllocateOverSmallerRowsTakesNoMoreThanTheyHave) {
    Rows buffer(1, "ab");
    OneField(buffer, 4).Allocate(2);
    EXPECT_THAT(buffer, HasFields(4, 2u, 0u));
    EXPECT_EQ(TextOf(buffer), std::string("ab\0\0\0\0\0\0", 8));
}

// Two rows of 4 bytes are kept: as many rows as there were, by the new size.
TEST(BufferEx, AllocateOverGreaterRowsTakesAsManyNewOnes) {
    Rows buffer(8, "aaaabbbbccccdddd");
    OneField(buffer, 4).Allocate(4);
    EXPECT_THAT(buffer, HasFields(4, 4u, 0u));
    EXPECT_EQ(TextOf(buffer), std::string("aaaabbbb\0\0\0\0\0\0\0\0", 16));
    OneField(buffer, 2).Allocate(1);
    EXPECT_EQ(TextOf(buffer), "aa");
}

TEST(BufferEx, AllocateOverRoomOfRowsWithoutASizeTakesNothing) {
    Rows buffer(2, "aabb");
    buffer.AllocateEx(2);
    buffer.SetRowSize(0);
    buffer.AddNewRow();
    OneField(buffer, 200).Allocate(3);
    EXPECT_THAT(buffer, HasFields(200, 3u, 0u));
    EXPECT_EQ(TextOf(buffer), std::string(600, '\0'));
}

TEST(BufferEx, AllocateWithoutMemoryChangesNothing) {
    using testing_support::Raises;
    Rows buffer(4, "aaaa");
    unsigned char* const block = buffer.m_pData;
    OneField description(buffer, 255);
    const testing_support::NoMemory limit(100'000);
    EXPECT_TRUE(Raises<CMemoryException>([&] { description.Allocate(1000); }));
    EXPECT_THAT(buffer, HasFields(4, 1u, 0u));
    EXPECT_EQ(buffer.m_pData, block);
    EXPECT_EQ(TextOf(buffer), "aaaa");
}

TEST(BufferEx, AllocateWithoutBufferOrFieldsOrSizeDoesNothing) {
    Rows buffer(4, "aaaa");
    BufferEx description;
    description.Allocate(3);
    description.AttachData(&buffer);
    description.Allocate(3);
    description.SetFieldCount(1);
    description.Allocate(3);
    EXPECT_EQ(TextOf(buffer), "aaaa");
    EXPECT_EQ(buffer.GetRowSize(), 4);
    description.SetFieldDefinition(0, 4, "", "a");
    description.AttachData(nullptr);
    description.Allocate(3);
    EXPECT_EQ(TextOf(buffer), "aaaa");
}

TEST(BufferEx, PlainCopiesShareTheDefinitions) {
    BufferBase buffer;
    BufferEx description;
    description.AttachData(&buffer);
    description.SetFieldCount(1);
    BufferEx assigned;
    assigned = description;
    BufferEx copy(description);
    for (BufferEx* const other : {&assigned, &copy}) {
        EXPECT_EQ(other->m_pBuffer, &buffer);
        EXPECT_EQ(other->m_nFieldCount, 1);
        EXPECT_EQ(other->m_pFields, description.m_pFields);
        other->m_pFields = nullptr;
        other->m_nFieldCount = 0;
    }
}

TEST(BufferEx, TheBufferOutlivesTheDescription) {
    Rows buffer(4, "aaaa");
    {
        BufferEx description;
        description.AttachData(&buffer);
    }
    EXPECT_EQ(TextOf(buffer), "aaaa");
}

}  // namespace
}  // namespace ZT
