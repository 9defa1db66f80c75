#include <gtest/gtest.h>

#include <platform/modules/AFX_MODULE_STATE.h>
#include <platform/modules/ModuleResource.h>
#include <platform/modules/ResourceFile.h>
#include <platform/modules/ResourceUpdate.h>
#include <platform/object/CMemoryException.h>
#include <tests/NoMemory.h>
#include <tests/Raises.h>
#include <zt/memory/HXBlob.h>
#include <zt/memory/ResourceManager.h>
#include <platform/files/TestDirectory_test.hpp>

#include <sys/stat.h>

#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <type_traits>

namespace ZT {
namespace {

HXBlob BlobOf(const std::string& bytes) {
    return HXBlob(reinterpret_cast<const unsigned char*>(bytes.data()),
                  static_cast<ulong>(bytes.size()), false);
}

std::string Text(const unsigned char* bytes, unsigned int size) {
    return {bytes, bytes + size};
}

// Writes a resource as a client does.
bool Write(const std::string& file, const char* name, const char* type, const std::string& bytes) {
    HXBlob blob = BlobOf(bytes);
    const bool written = ResourceManager::UpdateResourceA(file.c_str(), name, type, blob);
    blob.Delete();
    return written;
}

std::string InFile(const std::string& path, std::string_view name, std::string_view type,
                   WORD language = 1033) {
    ResourceFile file;
    if (!file.Open(path.c_str())) return file.Failure().GetString();
    const auto found = file.Find(type, name, language);
    return found ? std::string(found->bytes.begin(), found->bytes.end()) : "(none)";
}

// A module that counts as the one that calls.
class Calling {
public:
    explicit Calling(HINSTANCE module)
        : m_before(std::exchange(AfxGetModuleState()->m_hCurrentInstanceHandle, module)) {}
    ~Calling() { AfxGetModuleState()->m_hCurrentInstanceHandle = m_before; }
    Calling(const Calling&) = delete;
    Calling& operator=(const Calling&) = delete;

private:
    HINSTANCE m_before;
};

// A module file with the resource "Gauge" of type "TABLE", and one without bytes, "Empty".
struct ResourceManagerOn : testing::Test {
    TestDirectory directory;
    std::string file = directory / "libgauge.so";
    unsigned int size = 77;
    bool temporary = false;

    void SetUp() override {
        std::filesystem::copy_file(ZT_TEST_MODULE, file);
        ASSERT_TRUE(Write(file, "Gauge", "TABLE", "1 2 3"));
        const HANDLE update = BeginUpdateResourceA(file.c_str(), FALSE);
        ASSERT_TRUE(::UpdateResourceA(update, "TABLE", "Empty", 1033, "", 0));
        ASSERT_TRUE(EndUpdateResourceA(update, FALSE));
    }
    // Frees all references that a test may have left.
    void TearDown() override {
        while (const HMODULE module = GetModuleHandleA(file.c_str())) FreeLibrary(module);
    }

    HMODULE Load() const { return LoadLibraryA(file.c_str()); }
    bool IsLoaded() const { return GetModuleHandleA(file.c_str()) != nullptr; }
    unsigned char* FromFile(const char* name, const char* type) {
        return ResourceManager::LoadResource(file.c_str(), name, type, size, &temporary);
    }
};

}  // namespace

TEST(ResourceManager, HasATableAndNoFields) {
    EXPECT_EQ(sizeof(ResourceManager), sizeof(void*));
    EXPECT_TRUE(std::is_polymorphic_v<ResourceManager>);
    EXPECT_TRUE(std::has_virtual_destructor_v<ResourceManager>);
    EXPECT_TRUE(std::is_copy_constructible_v<ResourceManager>);
    EXPECT_TRUE(std::is_copy_assignable_v<ResourceManager>);
    // Deleting through the table is all that it can do.
    ResourceManager* const manager = new ResourceManager(ResourceManager());
    delete manager;
}

TEST(ResourceManager, NullModuleIsCode4) {
    unsigned int size = 0;
    EXPECT_EQ(ResourceManager::LoadResource(static_cast<HINSTANCE>(nullptr), "n", "t", size),
              nullptr);
    EXPECT_EQ(size, 4u);
}

TEST_F(ResourceManagerOn, LoadedModuleGivesItsBytes) {
    const HMODULE module = Load();
    const unsigned char* const bytes =
        ResourceManager::LoadResource(module, "Gauge", "TABLE", size);
    ASSERT_NE(bytes, nullptr);
    EXPECT_EQ(Text(bytes, size), "1 2 3");
    EXPECT_EQ(ResourceManager::LoadResource(module, "Gauge", "TABLE", size), bytes);
}

TEST_F(ResourceManagerOn, LoadedModuleGivesAnEmptyResourceAPointer) {
    EXPECT_NE(ResourceManager::LoadResource(Load(), "Empty", "TABLE", size), nullptr);
    EXPECT_EQ(size, 0u);
}

TEST_F(ResourceManagerOn, MissingResourceIsCode5) {
    const HMODULE module = Load();
    const auto code = [&](const char* name, const char* type) {
        size = 0;
        EXPECT_EQ(ResourceManager::LoadResource(module, name, type, size), nullptr);
        return size;
    };
    EXPECT_EQ(code("Gaug", "TABLE"), 5u);
    EXPECT_EQ(code("TABLE", "Gauge"), 5u) << "the name stands before the type";
    EXPECT_EQ(code(nullptr, "TABLE"), 5u);
    EXPECT_EQ(code("Gauge", nullptr), 5u);
}

TEST_F(ResourceManagerOn, CallingModuleGivesItsBytes) {
    const HMODULE module = Load();
    const Calling calling(module);
    const unsigned char* const bytes = ResourceManager::LoadResource("Gauge", "TABLE", size);
    EXPECT_EQ(bytes, ResourceManager::LoadResource(module, "Gauge", "TABLE", size));
    EXPECT_EQ(Text(bytes, size), "1 2 3");
    EXPECT_EQ(ResourceManager::LoadResource("Gaug", "TABLE", size), nullptr);
    EXPECT_EQ(size, 5u);
}

TEST_F(ResourceManagerOn, CallingProgramWithoutResourcesIsCode5) {
    EXPECT_EQ(ResourceManager::LoadResource("Gauge", "TABLE", size), nullptr);
    EXPECT_EQ(size, 5u);
}

TEST_F(ResourceManagerOn, NoInstanceHandleIsCode1) {
    const Calling calling(nullptr);
    EXPECT_EQ(ResourceManager::LoadResource("Gauge", "TABLE", size), nullptr);
    EXPECT_EQ(size, 1u);
}

TEST_F(ResourceManagerOn, HandleWithoutAPathIsCode2) {
    int nowhere = 0;
    const Calling calling(reinterpret_cast<HINSTANCE>(&nowhere));
    EXPECT_EQ(ResourceManager::LoadResource("Gauge", "TABLE", size), nullptr);
    EXPECT_EQ(size, 2u);
}

TEST_F(ResourceManagerOn, PathTooLongForItsBufferIsCode3) {
    std::string folder = directory.Path();
    while (folder.size() < 250) folder += "/" + std::string(40, 'd');
    std::filesystem::create_directories(folder);
    const std::string deep = folder + "/libgauge.so";
    std::filesystem::copy_file(file, deep);
    const HMODULE module = LoadLibraryA(deep.c_str());
    ASSERT_NE(module, nullptr);
    {
        const Calling calling(module);
        EXPECT_EQ(ResourceManager::LoadResource("Gauge", "TABLE", size), nullptr);
        EXPECT_EQ(size, 3u);
    }
    FreeLibrary(module);
}

TEST_F(ResourceManagerOn, NullFileIsTheCallingModule) {
    const Calling calling(Load());
    for (const bool before : {false, true}) {
        temporary = before;
        EXPECT_EQ(ResourceManager::LoadResource(nullptr, "Gauge", "TABLE", size, &temporary),
                  ResourceManager::LoadResource("Gauge", "TABLE", size));
        EXPECT_EQ(size, 5u);
        EXPECT_EQ(temporary, before) << "it is not written";
    }
    EXPECT_EQ(ResourceManager::LoadResource(nullptr, "Gaug", "TABLE", size, nullptr), nullptr);
    EXPECT_EQ(size, 5u);
}

TEST_F(ResourceManagerOn, FileOfALoadedModuleGivesTheModulesBytes) {
    const HMODULE module = Load();
    temporary = true;
    const unsigned char* const bytes = FromFile("Gauge", "TABLE");
    EXPECT_FALSE(temporary);
    EXPECT_EQ(bytes, ResourceManager::LoadResource(module, "Gauge", "TABLE", size));
    EXPECT_EQ(Text(bytes, size), "1 2 3");
    EXPECT_EQ(ResourceManager::LoadResource(file.c_str(), "Gauge", "TABLE", size, nullptr), bytes);
    FreeLibrary(module);
    EXPECT_FALSE(IsLoaded()) << "no load was added";
}

TEST_F(ResourceManagerOn, FileOfALoadedModuleTellsTheExactFailure) {
    Load();
    temporary = true;
    EXPECT_EQ(FromFile("Gaug", "TABLE"), nullptr);
    EXPECT_EQ(size, 5u);
    EXPECT_FALSE(temporary);
    EXPECT_NE(FromFile("Empty", "TABLE"), nullptr) << "size 0 is no failure here";
    EXPECT_EQ(size, 0u);
}

TEST_F(ResourceManagerOn, FileThatIsLoadedForItGivesACopy) {
    const std::unique_ptr<unsigned char[]> bytes(FromFile("Gauge", "TABLE"));
    ASSERT_NE(bytes, nullptr);
    EXPECT_TRUE(temporary);
    EXPECT_FALSE(IsLoaded()) << "the module is unloaded again";
    EXPECT_EQ(Text(bytes.get(), size), "1 2 3") << "the copy outlives it";
    bytes[0] = '9';
    const std::unique_ptr<unsigned char[]> again(
        ResourceManager::LoadResource(file.c_str(), "Gauge", "TABLE", size, nullptr));
    EXPECT_EQ(Text(again.get(), size), "1 2 3");
}

TEST_F(ResourceManagerOn, FileThatIsLoadedForNothingIsCode11AndStaysLoaded) {
    for (const char* name : {"Gaug", "Empty"}) {
        temporary = true;
        ASSERT_FALSE(IsLoaded());
        EXPECT_EQ(FromFile(name, "TABLE"), nullptr);
        EXPECT_EQ(size, 11u) << name;
        EXPECT_FALSE(temporary);
        EXPECT_TRUE(IsLoaded());
        FreeLibrary(GetModuleHandleA(file.c_str()));
    }
}

TEST_F(ResourceManagerOn, FileThatCannotBeLoadedIsCode10) {
    const std::string text = directory / "text.so";
    MakeFile(text, "no module");
    const std::string cut = directory / "cut.so";
    MakeFile(cut, BytesOf(file).substr(0, 5000));
    for (const std::string& path : {text, cut, directory / "none.so", std::string()}) {
        temporary = true;
        EXPECT_EQ(ResourceManager::LoadResource(path.c_str(), "Gauge", "TABLE", size, &temporary),
                  nullptr);
        EXPECT_EQ(size, 10u) << path;
        EXPECT_FALSE(temporary);
    }
}

TEST_F(ResourceManagerOn, CopyWithoutMemoryRaisesTheMemoryException) {
    ASSERT_TRUE(Write(file, "Large", "TABLE", std::string(5000, 'x')));
    temporary = true;
    {
        const testing_support::NoMemory none(4999);
        EXPECT_TRUE(testing_support::Raises<CMemoryException>([&] { FromFile("Large", "TABLE"); }));
    }
    EXPECT_FALSE(temporary);
    EXPECT_TRUE(IsLoaded());
    const Calling calling(GetModuleHandleA(file.c_str()));
    HXBlob blob = BlobOf("block");
    {
        const testing_support::NoMemory none(4999);
        EXPECT_TRUE(testing_support::Raises<CMemoryException>(
            [&] { ResourceManager().LoadResource("Large", "TABLE", blob); }));
    }
    EXPECT_TRUE(ResourceManager().LoadResource("Large", "TABLE", blob)) << "there is memory again";
    EXPECT_EQ(Text(blob.m_pData, blob.m_nSize), std::string(5000, 'x'));
    blob.Delete();
}

TEST_F(ResourceManagerOn, PlainNameIsAFileToAWriteAndNoneToALoad) {
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(directory.Path());
    HXBlob blob = BlobOf("9 8 7");
    EXPECT_TRUE(blob.WriteResource("Gauge", "TABLE", "libgauge.so"));
    EXPECT_EQ(InFile(file, "Gauge", "TABLE"), "9 8 7");
    HXBlob read;
    EXPECT_EQ(read.LoadResource("Gauge", "TABLE", "libgauge.so"), 10u);
    EXPECT_EQ(read.LoadResource("Gauge", "TABLE", "./libgauge.so"), 0u);
    EXPECT_EQ(Text(read.m_pData, read.m_nSize), "9 8 7");
    const HMODULE module = Load();
    HXBlob of;
    EXPECT_EQ(of.LoadResource("Gauge", "TABLE", "libgauge.so"), 0u) << "a loaded module's name";
    EXPECT_EQ(Text(of.m_pData, of.m_nSize), "9 8 7");
    FreeLibrary(module);
    std::filesystem::current_path(before);
    of.Delete();
    read.Delete();
    blob.Delete();
}

TEST_F(ResourceManagerOn, BlobIsFilledFromTheCallingModule) {
    const Calling calling(Load());
    HXBlob blob = BlobOf("what was there");
    EXPECT_TRUE(ResourceManager().LoadResource("Gauge", "TABLE", blob));
    EXPECT_EQ(Text(blob.m_pData, blob.m_nSize), "1 2 3");
    EXPECT_NE(blob.m_pData, ResourceManager::LoadResource("Gauge", "TABLE", size)) << "a copy";
    EXPECT_TRUE(ResourceManager().LoadResource("Empty", "TABLE", blob));
    EXPECT_EQ(blob.m_nSize, 0u);
    blob.Delete();
}

TEST_F(ResourceManagerOn, BlobHasTheFailureCodeAsItsSize) {
    HXBlob blob = BlobOf("block");
    unsigned char* const block = blob.m_pData;
    EXPECT_FALSE(ResourceManager().LoadResource("Gaug", "TABLE", blob));
    EXPECT_EQ(blob.m_nSize, 5u);
    EXPECT_EQ(blob.m_pData, block);
    const Calling calling(nullptr);
    EXPECT_FALSE(ResourceManager().LoadResource("Gaug", "TABLE", blob));
    EXPECT_EQ(blob.m_nSize, 1u);
    delete[] block;
}

TEST_F(ResourceManagerOn, BlobStaysAsItIsWithoutANameOrAType) {
    HXBlob blob = BlobOf("block");
    EXPECT_FALSE(ResourceManager().LoadResource(nullptr, "TABLE", blob));
    EXPECT_FALSE(ResourceManager().LoadResource("Gauge", nullptr, blob));
    EXPECT_EQ(Text(blob.m_pData, blob.m_nSize), "block");
    blob.Delete();
}

TEST_F(ResourceManagerOn, UpdateWritesInEnglishAndLeavesTheRest) {
    EXPECT_TRUE(Write(file, "Nail", "ICON", "icon"));
    EXPECT_EQ(InFile(file, "Nail", "ICON", 1033), "icon");
    EXPECT_EQ(InFile(file, "Gauge", "TABLE"), "1 2 3");
    EXPECT_TRUE(Write(file, "Nail", "ICON", "another icon"));
    EXPECT_EQ(InFile(file, "Nail", "ICON", 1033), "another icon");
}

TEST_F(ResourceManagerOn, UpdateWithAnEmptyBlobTakesTheResourceAway) {
    HXBlob empty;
    EXPECT_TRUE(ResourceManager::UpdateResourceA(file.c_str(), "Gauge", "TABLE", empty));
    EXPECT_EQ(InFile(file, "Gauge", "TABLE"), "(none)");
    EXPECT_FALSE(ResourceManager::UpdateResourceA(file.c_str(), "Gauge", "TABLE", empty));
}

TEST_F(ResourceManagerOn, UpdateThatFailsIsFalseAndLosesNothing) {
    const std::string before = BytesOf(file);
    HXBlob blob = BlobOf("bytes");
    EXPECT_FALSE(ResourceManager::UpdateResourceA(nullptr, "n", "t", blob));
    EXPECT_FALSE(ResourceManager::UpdateResourceA((directory / "no").c_str(), "n", "t", blob));
    EXPECT_FALSE(ResourceManager::UpdateResourceA(file.c_str(), nullptr, "t", blob));
    EXPECT_FALSE(ResourceManager::UpdateResourceA(file.c_str(), "n", nullptr, blob));
    chmod(file.c_str(), 0444);
    EXPECT_FALSE(ResourceManager::UpdateResourceA(file.c_str(), "n", "t", blob));
    EXPECT_TRUE(BytesOf(file) == before);
    blob.Delete();
}

TEST_F(ResourceManagerOn, UpdateThatWasLeftOpenDoesNotHinderTheNext) {
    HXBlob blob = BlobOf("bytes");
    EXPECT_FALSE(ResourceManager::UpdateResourceA(file.c_str(), nullptr, "t", blob));
    EXPECT_TRUE(ResourceManager::UpdateResourceA(file.c_str(), "n", "t", blob));
    EXPECT_EQ(InFile(file, "n", "t"), "bytes");
    blob.Delete();
}

TEST_F(ResourceManagerOn, UpdateOfALoadedModuleIsSeenByTheNextLoad) {
    const HMODULE module = Load();
    EXPECT_TRUE(Write(file, "Gauge", "TABLE", "4 5 6 7"));
    const unsigned char* const bytes = FromFile("Gauge", "TABLE");
    EXPECT_EQ(Text(bytes, size), "1 2 3");
    FreeLibrary(module);
    const std::unique_ptr<unsigned char[]> next(FromFile("Gauge", "TABLE"));
    EXPECT_EQ(Text(next.get(), size), "4 5 6 7");
}

TEST_F(ResourceManagerOn, BlobsOwnOperationsGoTheSameWay) {
    HXBlob blob = BlobOf("9 8 7");
    EXPECT_TRUE(blob.WriteResource("Gauge", "TABLE", file.c_str()));
    HXBlob read;
    EXPECT_EQ(read.LoadResource("Gauge", "TABLE", file.c_str()), 0u);
    EXPECT_EQ(Text(read.m_pData, read.m_nSize), "9 8 7");
    EXPECT_FALSE(IsLoaded());
    EXPECT_EQ(read.LoadResource("Gauge", nullptr, file.c_str()), 8u);
    EXPECT_EQ(read.LoadResource(nullptr, "TABLE", file.c_str()), 9u);
    read.Delete();
    blob.Delete();
}

}  // namespace ZT
