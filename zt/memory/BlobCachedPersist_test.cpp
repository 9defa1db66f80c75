// Cached blobs in documents.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <platform/object/CMemoryException.h>
#include <tests/Raises.h>
#include <zt/memory/BlobCached.h>
#include <zt/memory/Blob_test.hpp>
#include <zt/memory/TempDirectory_test.hpp>
#include <zt/persist/Cursor_test.hpp>

#include <filesystem>

namespace ZT {
namespace {

using testing::StartsWith;

struct CachedXml : CursorTest {
    TempDirectory temporary;
    std::string large = Pattern(10001);

    std::string StoredXml(BlobCached& blob) {
        Store();
        EXPECT_TRUE(blob.PersistXML(*cursor));
        return Xml();
    }
};

TEST_F(CachedXml, FreshBlobIsCachedByStoringIt) {
    BlobCached blob;
    static_cast<HXBlob&>(blob).Copy2(Naming(large));
    blob.UpdateCachingFlag();
    const std::string xml = StoredXml(blob);
    EXPECT_EQ(blob.m_nSize, 0u);
    EXPECT_EQ(BytesOf(temporary.OnlyFile()), large);
    EXPECT_THAT(xml, StartsWith("<R><Bl><Sz>10001</Sz><Dt>001F3E"));
    // Storing a second time reads back, and the bytes stay.
    EXPECT_EQ(StoredXml(blob), xml);
    EXPECT_EQ(Bytes(blob), large);
    blob.Delete();
}

TEST_F(CachedXml, LoadingCachesAFreshBlob) {
    BlobCached source;
    source.Copy(Naming(large));
    StoredXml(source);
    source.Delete();
    Reload();
    BlobCached blob;
    EXPECT_TRUE(blob.PersistXML(*cursor));
    EXPECT_EQ(blob.m_nSize, 0u);
    EXPECT_EQ(blob.GetSize(), 10001u);
    EXPECT_EQ(BytesOf(blob.m_strCacheFile.GetString()), large);
}

TEST_F(CachedXml, LoadingIntoABlobThatWasCachedStaysInMemory) {
    std::string other = Pattern(20000);
    BlobCached source;
    source.Copy(Naming(other));
    StoredXml(source);
    source.Delete();
    Reload();
    BlobCached blob;
    blob.Copy(Naming(large));
    EXPECT_TRUE(blob.PersistXML(*cursor));
    EXPECT_EQ(Bytes(blob), other);
    EXPECT_EQ(blob.GetSize(), 10001u);
    blob.Delete();
}

TEST_F(CachedXml, IsTrueAlsoWhereNothingIsFound) {
    Load("<R/>");
    BlobCached blob;
    blob.Copy(Naming(large));
    EXPECT_TRUE(blob.PersistXML(*cursor));
    EXPECT_FALSE(blob.m_bCaching);
    EXPECT_EQ(temporary.FileCount(), 0u);
}

TEST_F(CachedXml, FileThatDisappearedLeavesWhatIsInMemoryToStore) {
    BlobCached blob;
    blob.Copy(Naming(large));
    std::filesystem::remove(temporary.OnlyFile());
    EXPECT_EQ(StoredXml(blob), "<R><Bl><Sz>0</Sz></Bl></R>");
    BlobCached readBack;
    readBack.Copy(Naming(large));
    readBack.LoadCache();
    std::filesystem::remove(temporary.OnlyFile());
    const std::string digits = Naming(large).ToCString().GetString();
    EXPECT_EQ(StoredXml(readBack), "<R><Bl><Sz>10001</Sz><Dt>" + digits + "</Dt></Bl></R>");
    readBack.Delete();
}

TEST_F(CachedXml, IsNotReachedThroughTheBase) {
    BlobCached blob;
    blob.Copy(Naming(large));
    HXBlob& base = blob;
    Store();
    EXPECT_TRUE(base.PersistXML(*cursor));
    EXPECT_EQ(Xml(), "<R><Bl><Sz>0</Sz></Bl></R>");
}

TEST_F(CachedXml, NeitherModeCachesAllTheSame) {
    BlobCached blob;
    static_cast<HXBlob&>(blob).Copy2(Naming(large));
    blob.UpdateCachingFlag();
    Load("<R><Bl><Sz>1</Sz><Dt>61</Dt></Bl></R>", kNeither);
    EXPECT_TRUE(blob.PersistXML(*cursor));
    EXPECT_EQ(blob.m_nSize, 0u);
    EXPECT_EQ(blob.m_pData, nullptr);
    EXPECT_FALSE(blob.m_bInMemory);
    EXPECT_EQ(BytesOf(temporary.OnlyFile()), large);
}

TEST_F(CachedXml, LargeSizeWithoutDigitsMakesAnEmptyFile) {
    Load("<R><Bl><Sz>20000</Sz></Bl></R>");
    BlobCached blob;
    EXPECT_TRUE(blob.PersistXML(*cursor));
    EXPECT_TRUE(blob.m_bCaching);
    EXPECT_FALSE(blob.m_bInMemory);
    EXPECT_EQ(blob.m_nSize, 0u);
    EXPECT_EQ(BytesOf(temporary.OnlyFile()), "");
    EXPECT_EQ(blob.GetSize(), 0u);
}

TEST_F(CachedXml, LoadingThatRaisesLeavesFlagsAndFile) {
    BlobCached blob;
    blob.Copy(Naming(large));
    Load("<R><Bl><Sz>16777218</Sz><Dt>61</Dt></Bl></R>");
    EXPECT_TRUE(testing_support::Raises<CMemoryException>([&] { blob.PersistXML(*cursor); }));
    EXPECT_EQ(blob.m_nSize, 0u);
    EXPECT_EQ(blob.m_pData, nullptr);
    EXPECT_TRUE(blob.m_bCaching);
    EXPECT_FALSE(blob.m_bInMemory);
    EXPECT_EQ(blob.GetSize(), 10001u);
    EXPECT_EQ(BytesOf(temporary.OnlyFile()), large);
}

TEST_F(CachedXml, SmallBlobIsLikeAnyOther) {
    BlobCached blob;
    std::string bytes = "ab";
    blob.Copy(Naming(bytes));
    EXPECT_EQ(StoredXml(blob), "<R><Bl><Sz>2</Sz><Dt>6162</Dt></Bl></R>");
    EXPECT_EQ(Bytes(blob), "ab");
    blob.Delete();
}

}  // namespace
}  // namespace ZT
