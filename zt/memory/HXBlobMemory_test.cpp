// Blobs, sets and cached blobs where memory is short.

#include <gtest/gtest.h>
#include <platform/files/CFile.h>
#include <tests/NoMemory.h>
#include <tests/Raises.h>
#include <zt/containers/HXBitArray.h>
#include <zt/memory/BlobCached.h>
#include <zt/memory/BlobSet.h>
#include <platform/files/Archived_test.hpp>
#include <zt/memory/Blob_test.hpp>
#include <zt/memory/TempDirectory_test.hpp>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <functional>

#include <sys/wait.h>
#include <unistd.h>

namespace ZT {
namespace {

using testing_support::NoMemory;

template <class Work>
testing::AssertionResult FindsNoMemory(Work work) {
    return testing_support::Raises<CMemoryException>(work);
}

TEST(HXBlobMemory, CopiesAndViewsTakeNone) {
    std::string bytes = "\x01\0\0\0abc"s;
    const HXBlob blob = Naming(bytes);
    const NoMemory limit(0);
    const HXBlob copy = blob;
    HXBlob assigned;
    assigned = blob;
    EXPECT_EQ(Bytes(copy.GetInnerBlob()), "a");
    EXPECT_EQ(Bytes(assigned.GetOuterBlob()), "bc");
    EXPECT_EQ(blob.GetBits().m_pBits, AddressIn(bytes));
    EXPECT_TRUE(HXBlob().ToCString().IsEmpty());
    EXPECT_EQ(blob.ToString(), "\x01");
}

TEST(HXBlobMemory, LargerSizeIsForgottenWhenABlobShrinks) {
    Own blob;
    blob.SetSize(10);
    blob.SetSize(5);
    const NoMemory limit(5);
    EXPECT_TRUE(FindsNoMemory([&] { blob.SetSize(10); }));
    EXPECT_EQ(blob.m_nSize, 0u);
    EXPECT_EQ(blob.m_pData, nullptr);
}

TEST(HXBlobMemory, WhatFreesItsBlockFirstLeavesAnEmptyBlob) {
    std::string large(1000, 'x');
    std::string digits(2000, 'A');
    const HXBitArray bits(AddressIn(large), 8000);
    const TestDirectory directory;
    MakeFile(directory / "large", large);
    const CString path((directory / "large").c_str());
    const std::function<void(HXBlob&)> operations[] = {
        [](HXBlob& blob) { (blob.m_nSize = 1000), blob.Allocate(); },
        [](HXBlob& blob) { blob.SetSize(1000); },
        [&](HXBlob& blob) { blob.Copy2(Naming(large)); },
        [&](HXBlob& blob) { blob.Copy(bits); },
        [&](HXBlob& blob) { blob.StringToBinary(digits.c_str()); },
        [&](HXBlob& blob) { blob.Read(path); },
    };
    const NoMemory limit(500);
    for (const auto& operation : operations) {
        Own blob("old"s);
        EXPECT_TRUE(FindsNoMemory([&] { operation(blob); }));
        EXPECT_EQ(blob.m_nSize, 0u);
        EXPECT_EQ(blob.m_pData, nullptr);
    }
}

TEST(HXBlobMemory, WhatMakesAnotherBlockLeavesTheBlobAsItWas) {
    std::string large(1000, 'x');
    const std::function<void(HXBlob&)> operations[] = {
        [&](HXBlob& blob) { blob.Set(large.c_str()); },
        [&](HXBlob& blob) { blob.Append(Naming(large)); },
        [&](HXBlob& blob) { blob.Embed(Naming(large)); },
        [&](HXBlob& blob) { blob + Naming(large); },
        [&](HXBlob& blob) { blob* Naming(large); },
    };
    const NoMemory limit(500);
    for (const auto& operation : operations) {
        Own blob("old"s);
        EXPECT_TRUE(FindsNoMemory([&] { operation(blob); }));
        EXPECT_EQ(Bytes(blob), "old");
    }
}

TEST(HXBlobMemory, FalseSizeInAnArchiveClaimsNoMoreThanAFixedAmount) {
    const NoMemory limit(std::size_t{1} << 20);
    for (const std::string& size : {"\xFF\xFF\xFF\xFF"s, "\0\0\0\x80"s, "\0\0\0\x01"s}) {
        HXBlob blob;
        const auto load = [&](CArchive& ar) { blob.Serialize(ar); };
        EXPECT_EQ(LoadingCause(size + "0123456789", load), CArchiveException::endOfFile);
    }
}

TEST(HXBlobMemory, FalseSizeInAnArchiveClaimsAsManyBytesAgainAsThereAre) {
    // Behind 32 MiB that are there, as many more are looked for.
    CMemFile file;
    Fill(file, "\xFF\xFF\xFF\xFF"s + std::string((std::size_t{32} << 20) + 1, 'x'));
    CArchive ar(&file, CArchive::load);
    Own blob("old"s);
    const NoMemory limit(std::size_t{48} << 20);
    EXPECT_TRUE(FindsNoMemory([&] { blob.Serialize(ar); }));
    EXPECT_EQ(blob.m_nSize, 0u);
    EXPECT_EQ(blob.m_pData, nullptr);
}

TEST(HXBlobMemory, ReadingBackWithoutMemoryLeavesNothingInMemory) {
    const TempDirectory temporary;
    std::string large(10001, 'x');
    std::string room(10001, '.');
    BlobCached blob;
    blob.Copy(Naming(large));
    blob.LoadCache();
    ASSERT_EQ(blob.m_nSize, 10001u);
    std::filesystem::resize_file(temporary.OnlyFile(), std::size_t{1} << 20);
    const NoMemory limit(500000);
    EXPECT_TRUE(FindsNoMemory([&] { blob.CopyDataTo(AddressIn(room)); }));
    EXPECT_EQ(blob.m_nSize, 0u);
    EXPECT_EQ(blob.m_pData, nullptr);
    EXPECT_EQ(room, std::string(10001, '.'));
    EXPECT_EQ(blob.GetSize(), ulong{1} << 20);
}

TEST(HXBlobMemory, SetThatFindsNoneStaysAsItIs) {
    std::string bytes = "abc";
    BlobSet set;
    set.Add(Naming(bytes));
    const NoMemory limit(100);
    EXPECT_TRUE(FindsNoMemory([&] { set.SetLength(1000); }));
    EXPECT_TRUE(FindsNoMemory([&] { set.Add(HXBlob(1000u)); }));
    EXPECT_EQ(set.GetSize(), 1);
    EXPECT_EQ(set.GetLength(), 3u);
}

#if defined(__linux__) && !defined(__SANITIZE_ADDRESS__)

// The most memory that this process ever had, in bytes.
std::size_t Peak() {
    std::FILE* const status = std::fopen("/proc/self/status", "r");
    char line[256];
    unsigned long kilobytes = 0;
    while (std::fgets(line, sizeof line, status) &&
           std::sscanf(line, "VmHWM: %lu", &kilobytes) != 1) {
    }
    std::fclose(status);
    return std::size_t{kilobytes} << 10;
}

// Runs in a process of its own, whose peak begins with what it has; 0 when all is well.
int WritesAndReadsWithOneBlock(const CString& copy) {
    constexpr ulong kSize = ulong{64} << 20;
    constexpr std::size_t kSlack = std::size_t{8} << 20;
    const std::size_t before = Peak();
    BlobCached blob;
    blob.SetSize(kSize);
    std::memset(blob.m_pData, 'x', kSize);
    blob.UpdateCachingFlag();
    blob.Cache();
    if (blob.m_pData || blob.GetSize() != kSize) return 1;
    for (int i = 0; i < 2; ++i) {
        blob.LoadCache();
        if (blob.m_nSize != kSize || blob.m_pData[kSize - 1] != 'x') return 2;
        if (!static_cast<HXBlob&>(blob).Write(copy) || blob.m_pData) return 3;
    }
    return Peak() - before < kSize + kSlack ? 0 : 4;
}

TEST(HXBlobMemory, CachedBlobIsWrittenAndReadBackWithOneBlock) {
    const TempDirectory temporary;
    const CString copy((temporary.Directory() / "copy").c_str());
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) _exit(WritesAndReadsWithOneBlock(copy));
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

#endif

}  // namespace
}  // namespace ZT
