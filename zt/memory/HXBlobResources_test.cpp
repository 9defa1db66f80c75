// Blobs from and into the resources of modules.

#include <gtest/gtest.h>
#include <platform/modules/AFX_MODULE_STATE.h>
#include <platform/modules/ModuleResource.h>
#include <zt/memory/HXBlob.h>
#include <platform/files/TestDirectory_test.hpp>
#include <zt/memory/Blob_test.hpp>

#include <filesystem>
#include <utility>

namespace ZT {
namespace {

// A module file with the resource "Gauge" of type "TABLE".
struct HXBlobResource : testing::Test {
    TestDirectory directory;
    std::string file = directory / "libgauge.so";
    std::string bytes = "1\0 3"s;
    std::string room = "ABCDE";

    void SetUp() override {
        std::filesystem::copy_file(ZT_TEST_MODULE, file);
        ASSERT_TRUE(Naming(bytes).WriteResource("Gauge", "TABLE", file.c_str()));
    }
    // Frees all references that a test may have left.
    void TearDown() override {
        while (const HMODULE module = GetModuleHandleA(file.c_str())) FreeLibrary(module);
    }
};

TEST_F(HXBlobResource, ComesFromAModuleThatIsNotLoaded) {
    Own blob("old"s);
    EXPECT_EQ(blob.LoadResource("Gauge", "TABLE", file.c_str()), 0u);
    EXPECT_EQ(Bytes(blob), bytes);
    EXPECT_TRUE(blob.m_bAutoDelete);
    EXPECT_EQ(GetModuleHandleA(file.c_str()), nullptr);
}

TEST_F(HXBlobResource, ComesFromALoadedModuleAsACopy) {
    const HMODULE module = LoadLibraryA(file.c_str());
    Own blob;
    EXPECT_EQ(blob.LoadResource("Gauge", "TABLE", file.c_str()), 0u);
    ASSERT_TRUE(FreeLibrary(module));
    EXPECT_EQ(Bytes(blob), bytes);
}

TEST_F(HXBlobResource, ComesFromTheCallingModuleWithoutAPath) {
    const HMODULE module = LoadLibraryA(file.c_str());
    HINSTANCE& calling = AfxGetModuleState()->m_hCurrentInstanceHandle;
    const HINSTANCE before = std::exchange(calling, module);
    Own blob;
    EXPECT_EQ(blob.LoadResource("Gauge", "TABLE", nullptr), 0u);
    calling = before;
    EXPECT_EQ(Bytes(blob), bytes);
}

TEST_F(HXBlobResource, NullTypeIsCode8AndNullNameCode9) {
    HXBlob blob = Naming(room);
    EXPECT_EQ(blob.LoadResource("Gauge", nullptr, file.c_str()), 8u);
    EXPECT_EQ(blob.LoadResource(nullptr, nullptr, file.c_str()), 8u);
    EXPECT_EQ(blob.LoadResource(nullptr, "TABLE", file.c_str()), 9u);
    EXPECT_EQ(blob.m_nSize, 5u);
    EXPECT_EQ(blob.m_pData, AddressIn(room));
}

TEST_F(HXBlobResource, FailureCodeIsLeftAsTheSizeBesideTheBlock) {
    const HMODULE module = LoadLibraryA(file.c_str());
    HXBlob blob = Naming(room);
    EXPECT_EQ(blob.LoadResource("Missing", "TABLE", file.c_str()), 5u);
    EXPECT_EQ(blob.GetSize(), 5u);
    EXPECT_EQ(blob.m_pData, AddressIn(room));
    HXBlob shorter(2u, AddressIn(room));
    EXPECT_EQ(shorter.LoadResource("Gauge", "OTHER", file.c_str()), 5u);
    EXPECT_EQ(shorter.GetSize(), 5u);
    EXPECT_EQ(shorter.LoadResource("Gauge", "TABLE", (directory / "missing.so").c_str()), 10u);
    EXPECT_EQ(shorter.GetSize(), 10u);
    EXPECT_EQ(shorter.m_pData, AddressIn(room));
    FreeLibrary(module);
}

TEST_F(HXBlobResource, WritingReplacesTheBytes) {
    EXPECT_TRUE(Naming(room).WriteResource("Gauge", "TABLE", file.c_str()));
    EXPECT_TRUE(Naming(bytes).WriteResource("Other", "TABLE", file.c_str()));
    Own blob;
    EXPECT_EQ(blob.LoadResource("Gauge", "TABLE", file.c_str()), 0u);
    EXPECT_EQ(Bytes(blob), room);
    EXPECT_EQ(blob.LoadResource("Other", "TABLE", file.c_str()), 0u);
    EXPECT_EQ(Bytes(blob), bytes);
}

TEST_F(HXBlobResource, WritingNeedsANameATypeAndAModule) {
    HXBlob blob = Naming(room);
    EXPECT_FALSE(blob.WriteResource(nullptr, "TABLE", file.c_str()));
    EXPECT_FALSE(blob.WriteResource("Gauge", nullptr, file.c_str()));
    EXPECT_FALSE(blob.WriteResource("Gauge", "TABLE", (directory / "missing.so").c_str()));
    Own kept;
    EXPECT_EQ(kept.LoadResource("Gauge", "TABLE", file.c_str()), 0u);
    EXPECT_EQ(Bytes(kept), bytes);
}

}  // namespace
}  // namespace ZT
