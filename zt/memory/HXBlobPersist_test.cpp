// Blobs in documents.

#include <gtest/gtest.h>
#include <tests/Raises.h>
#include <zt/containers/HXBitArray.h>
#include <zt/memory/HXBlob.h>
#include <zt/memory/Blob_test.hpp>
#include <zt/persist/Cursor_test.hpp>

namespace ZT {
namespace {

struct HXBlobXml : CursorTest {
    std::string bytes = "a\x00\xFF"s;

    std::string StoredXml(HXBlob blob, bool indent = false) {
        Store(indent);
        EXPECT_TRUE(blob.PersistXML(*cursor));
        EXPECT_EQ(cursor->GetStackPosn(), 1);
        cursor->PopElement(false);
        return Xml();
    }

    /// Loads into `blob` from a document.
    bool Loads(HXBlob& blob, const std::string& xml) {
        Load(xml);
        const bool result = blob.PersistXML(*cursor);
        EXPECT_EQ(cursor->GetStackPosn(), 1);
        return result;
    }
};

TEST_F(HXBlobXml, IsSizeAndDigits) {
    EXPECT_EQ(StoredXml(Naming(bytes)), "<R><Bl><Sz>3</Sz><Dt>6100FF</Dt></Bl></R>");
}

TEST_F(HXBlobXml, HasNoDigitsWithoutASize) {
    EXPECT_EQ(StoredXml(HXBlob()), "<R><Bl><Sz>0</Sz></Bl></R>");
    EXPECT_EQ(StoredXml(HXBlob(0u, AddressIn(bytes))), "<R><Bl><Sz>0</Sz></Bl></R>");
}

TEST_F(HXBlobXml, BlocklessHasEmptyDigits) {
    EXPECT_EQ(StoredXml(Blockless(3)), "<R><Bl><Sz>3</Sz><Dt/></Bl></R>");
}

TEST_F(HXBlobXml, ClosingTagStandsOnItsOwnLine) {
    EXPECT_EQ(StoredXml(Naming(bytes), true),
              "<R>\n\t<Bl>\n\t\t<Sz>3</Sz>\n\t\t<Dt>6100FF</Dt>\n\t</Bl>\n</R>");
}

TEST_F(HXBlobXml, LoadsFromAChild) {
    Own blob("old"s);
    EXPECT_TRUE(Loads(blob, "<R><X/><Bl><Sz>3</Sz><Dt>6100FF</Dt></Bl></R>"));
    EXPECT_EQ(Bytes(blob), bytes);
    EXPECT_TRUE(blob.m_bAutoDelete);
}

TEST_F(HXBlobXml, LoadsFromTheCurrentElement) {
    Own blob;
    EXPECT_TRUE(Loads(blob, "<Bl><Sz>1</Sz><Dt>61</Dt><Bl><Sz>1</Sz><Dt>62</Dt></Bl></Bl>"));
    EXPECT_EQ(Bytes(blob), "a");
}

TEST_F(HXBlobXml, NamesAreExact) {
    Own blob;
    EXPECT_FALSE(Loads(blob, "<R><bl><Sz>1</Sz><Dt>61</Dt></bl></R>"));
    EXPECT_FALSE(Loads(blob, "<R><X><Bl><Sz>1</Sz><Dt>61</Dt></Bl></X></R>"));
    EXPECT_FALSE(Loads(blob, "<R><Bl><sz>1</sz><Dt>61</Dt></Bl></R>"));
}

TEST_F(HXBlobXml, NoElementEmptiesTheBlob) {
    HXBlob blob(3u);
    EXPECT_FALSE(Loads(blob, "<R/>"));
    EXPECT_EQ(blob.m_nSize, 0u);
    EXPECT_EQ(blob.m_pData, nullptr);
}

TEST_F(HXBlobXml, NoCurrentElementEmptiesTheBlob) {
    HXBlob blob(3u);
    Load("<Bl><Sz>1</Sz><Dt>61</Dt></Bl>");
    cursor->PopElement(false);
    EXPECT_FALSE(blob.PersistXML(*cursor));
    EXPECT_EQ(blob.m_nSize, 0u);
    EXPECT_EQ(blob.m_pData, nullptr);
}

TEST_F(HXBlobXml, BlockOfSizeZeroIsDroppedNotFreed) {
    HXBlob blob(0u, AddressIn(bytes));
    EXPECT_FALSE(Loads(blob, "<R/>"));
    EXPECT_EQ(blob.m_pData, nullptr);
}

TEST_F(HXBlobXml, NoDigitsLeaveTheSizeWithoutABlock) {
    HXBlob blob(7u);
    EXPECT_FALSE(Loads(blob, "<R><Bl><Sz>3</Sz></Bl></R>"));
    EXPECT_EQ(blob.m_nSize, 3u);
    EXPECT_EQ(blob.m_pData, nullptr);
}

TEST_F(HXBlobXml, SizeWithoutABlockHasNoBits) {
    HXBlob blob;
    EXPECT_FALSE(Loads(blob, "<R><Bl><Sz>5</Sz></Bl></R>"));
    EXPECT_EQ(blob.m_nSize, 5u);
    EXPECT_EQ(blob.GetBits().m_nBits, 0);
    EXPECT_EQ(blob.GetBits().m_pBits, nullptr);
}

TEST_F(HXBlobXml, SizeWithoutABlockComesBackAsZerosUpToALimit) {
    Own small;
    EXPECT_FALSE(Loads(small, "<R><Bl><Sz>3</Sz></Bl></R>"));
    EXPECT_TRUE(Loads(small, StoredXml(small)));
    EXPECT_EQ(Bytes(small), "\0\0\0"s);
    HXBlob large;
    EXPECT_FALSE(Loads(large, "<R><Bl><Sz>20000000</Sz></Bl></R>"));
    EXPECT_EQ(large.m_nSize, 20000000u);
    const std::string stored = StoredXml(large);
    EXPECT_EQ(stored, "<R><Bl><Sz>20000000</Sz><Dt/></Bl></R>");
    EXPECT_TRUE(testing_support::Raises<CMemoryException>([&] { Loads(large, stored); }));
    EXPECT_EQ(large.m_nSize, 0u);
    EXPECT_EQ(large.m_pData, nullptr);
}

TEST_F(HXBlobXml, NoSizeLeavesNothing) {
    for (const char* xml : {"<R><Bl><Dt>61</Dt></Bl></R>", "<R><Bl><Sz>0</Sz><Dt>61</Dt></Bl></R>",
                            "<R><Bl><Sz>x</Sz><Dt>61</Dt></Bl></R>"}) {
        HXBlob blob(7u);
        EXPECT_FALSE(Loads(blob, xml));
        EXPECT_EQ(blob.m_nSize, 0u);
        EXPECT_EQ(blob.m_pData, nullptr);
    }
}

TEST_F(HXBlobXml, BadDigitsAreNoFailure) {
    Own blob;
    EXPECT_TRUE(Loads(blob, "<R><Bl><Sz>4</Sz><Dt>61GG6363</Dt></Bl></R>"));
    EXPECT_EQ(Bytes(blob), "a\0\0\0"s);
    EXPECT_TRUE(Loads(blob, "<R><Bl><Sz>4</Sz><Dt>616</Dt></Bl></R>"));
    EXPECT_EQ(Bytes(blob), "a\0\0\0"s);
    EXPECT_TRUE(Loads(blob, "<R><Bl><Sz>2</Sz><Dt/></Bl></R>"));
    EXPECT_EQ(Bytes(blob), "\0\0"s);
    EXPECT_TRUE(Loads(blob, "<R><Bl><Sz>2</Sz><Dt>61626364</Dt></Bl></R>"));
    EXPECT_EQ(Bytes(blob), "ab");
}

TEST_F(HXBlobXml, MuchThatIsMissingCountsAsNoMemory) {
    Own blob;
    EXPECT_TRUE(Loads(blob, "<R><Bl><Sz>16777217</Sz><Dt>61</Dt></Bl></R>"));
    EXPECT_EQ(blob.m_nSize, 16777217u);
    EXPECT_EQ(blob.m_pData[0], 'a');
    EXPECT_TRUE(HXBlob::IsAllZeros(blob.m_pData + 1, 16777216));
    for (const char* size : {"16777218", "-1", "2147483647"}) {
        const std::string xml = "<R><Bl><Sz>"s + size + "</Sz><Dt>61</Dt></Bl></R>";
        EXPECT_TRUE(testing_support::Raises<CMemoryException>([&] { Loads(blob, xml); })) << size;
        EXPECT_EQ(blob.m_nSize, 0u);
        EXPECT_EQ(blob.m_pData, nullptr);
    }
}

TEST_F(HXBlobXml, NeitherModeDoesNothing) {
    HXBlob blob = Naming(bytes);
    Load("<R><Bl><Sz>1</Sz><Dt>61</Dt></Bl></R>", kNeither);
    EXPECT_TRUE(blob.PersistXML(*cursor));
    EXPECT_EQ(Bytes(blob), bytes);
    EXPECT_EQ(blob.m_pData, AddressIn(bytes));
}

TEST_F(HXBlobXml, StoringWithoutACurrentElementIsTrue) {
    NewDocument();
    Start(kStoring);
    EXPECT_TRUE(Naming(bytes).PersistXML(*cursor));
    EXPECT_EQ(cursor->GetStackPosn(), 0);
}

TEST_F(HXBlobXml, LargeBlobComesBack) {
    std::string large = Pattern(100000);
    StoredXml(Naming(large));
    Own blob;
    EXPECT_TRUE(Loads(blob, Xml()));
    EXPECT_TRUE(Bytes(blob) == large);
}

}  // namespace
}  // namespace ZT
