// The archive record of a blob.

#include <gtest/gtest.h>
#include <platform/collections/CArray.h>
#include <rapidcheck/gtest.h>
#include <tests/Raises.h>
#include <zt/memory/HXBlob.h>
#include <platform/files/Archived_test.hpp>
#include <zt/memory/Blob_test.hpp>

namespace ZT {
namespace {

const std::string kRecord = "\x03\0\0\0abc"s;

std::string StoredBlob(HXBlob blob) {
    return Stored([&](CArchive& ar) { blob.Serialize(ar); });
}

TEST(HXBlobArchive, RecordIsSizeAndBytes) {
    std::string bytes = "abc";
    EXPECT_EQ(StoredBlob(Naming(bytes)), kRecord);
    EXPECT_EQ(StoredBlob(HXBlob()), "\0\0\0\0"s);
    std::string longer(0x201, 'x');
    EXPECT_EQ(StoredBlob(Naming(longer)), "\x01\x02\0\0"s + longer);
}

TEST(HXBlobArchive, BlocklessIsStoredWithoutBytes) {
    EXPECT_EQ(StoredBlob(Blockless(5)), "\0\0\0\0"s);
}

TEST(HXBlobArchive, LoadingTakesANewBlock) {
    Own blob("old"s);
    Loaded(kRecord + "more", [&](CArchive& ar) {
        blob.Serialize(ar);
        char next = 0;
        ar >> next;
        EXPECT_EQ(next, 'm');
    });
    EXPECT_EQ(Bytes(blob), "abc");
    EXPECT_TRUE(blob.m_bAutoDelete);
}

TEST(HXBlobArchive, LoadingNothingEmpties) {
    Own blob("old"s);
    Loaded("\0\0\0\0"s, [&](CArchive& ar) { blob.Serialize(ar); });
    EXPECT_EQ(blob.m_nSize, 0u);
    EXPECT_EQ(blob.m_pData, nullptr);
}

TEST(HXBlobArchive, EndAtEveryByteRaisesTheArchivesException) {
    for (std::size_t length = 0; length < kRecord.size(); ++length) {
        Own blob("old"s);
        const auto load = [&](CArchive& ar) { blob.Serialize(ar); };
        EXPECT_EQ(LoadingCause(kRecord.substr(0, length), load), CArchiveException::endOfFile);
        EXPECT_EQ(Bytes(blob), length < 4 ? "old" : "") << length;
        EXPECT_EQ(blob.m_nSize, length < 4 ? 3u : 0u) << length;
    }
}

TEST(HXBlobArchive, FalseSizeRaisesTheArchivesException) {
    for (const std::string& size : {"\xFF\xFF\xFF\xFF"s, "\0\0\0\x80"s, "\x01\0\0\x02"s}) {
        Own blob;
        const auto load = [&](CArchive& ar) { blob.Serialize(ar); };
        EXPECT_EQ(LoadingCause(size + "0123456789", load), CArchiveException::endOfFile);
        EXPECT_EQ(blob.m_nSize, 0u);
        EXPECT_EQ(blob.m_pData, nullptr);
    }
}

TEST(HXBlobArchive, LargeBlobComesBack) {
    std::string bytes = Pattern((std::size_t{40} << 20) + 5);
    CMemFile file;
    {
        CArchive ar(&file, CArchive::store);
        Naming(bytes).Serialize(ar);
        ar.Close();
    }
    EXPECT_EQ(file.GetLength(), bytes.size() + 4);
    file.SeekToBegin();
    CArchive ar(&file, CArchive::load);
    Own blob;
    blob.Serialize(ar);
    EXPECT_TRUE(Bytes(blob) == bytes);
}

RC_GTEST_PROP(HXBlobArchive, ComesBack, ()) {
    auto bytes = *rc::gen::arbitrary<std::string>();
    Own blob;
    Loaded(StoredBlob(Naming(bytes)), [&](CArchive& ar) { blob.Serialize(ar); });
    RC_ASSERT(Bytes(blob) == bytes);
}

TEST(HXBlobArchive, BytesAlone) {
    std::string bytes = "abc";
    const auto written = [](const HXBlob& blob) {
        return Stored([&](CArchive& ar) { blob.Write(ar); });
    };
    EXPECT_EQ(written(Naming(bytes)), "abc");
    EXPECT_EQ(written(HXBlob()), "");
    EXPECT_EQ(written(Blockless(3)), "");
    EXPECT_EQ(written(HXBlob(0u, AddressIn(bytes))), "");
}

TEST(HXBlobArchive, WrongDirectionRaisesTheArchivesException) {
    std::string bytes = "abc";
    const auto write = [&](CArchive& ar) { Naming(bytes).Write(ar); };
    EXPECT_EQ(LoadingCause("", write), CArchiveException::readOnly);
}

TEST(HXBlobArchive, StoringLeavesTheBlob) {
    std::string bytes = "abc";
    HXBlob blob = Naming(bytes);
    Stored([&](CArchive& ar) { blob.Serialize(ar); });
    EXPECT_EQ(blob.m_pData, AddressIn(bytes));
    EXPECT_EQ(blob.m_nSize, 3u);
}

}  // namespace
}  // namespace ZT
