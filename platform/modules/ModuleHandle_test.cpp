#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <platform/base/LastError.h>
#include <platform/modules/ModuleHandle.h>
#include <platform/text/CString.h>
#include <platform/modules/TestModules_test.hpp>

#include <dlfcn.h>

#include <cerrno>
#include <filesystem>
#include <string>

using testing::HasSubstr;
using testing::StartsWith;

namespace {

int inTheProgram = 0;

HMODULE Platform() {
    return AfxModuleFromAddress(reinterpret_cast<const void*>(&AfxGetModuleFileName));
}

}  // namespace

TEST(ModuleHandle, NullNameIsTheProgram) {
    EXPECT_NE(GetModuleHandle(nullptr), nullptr);
    EXPECT_EQ(AfxModuleFromAddress(&inTheProgram), GetModuleHandle(nullptr));
}

TEST(ModuleHandle, AddressInALibraryIsInThatModule) {
    EXPECT_NE(Platform(), nullptr);
    EXPECT_NE(Platform(), GetModuleHandle(nullptr));
    EXPECT_EQ(AfxModuleFromAddress(reinterpret_cast<const void*>(&GetProcAddress)), Platform());
}

TEST(ModuleHandle, AddressOutsideAllModulesIsInNone) {
    const int onTheStack = 0;
    EXPECT_EQ(AfxModuleFromAddress(&onTheStack), nullptr);
    EXPECT_EQ(AfxModuleFromAddress(nullptr), nullptr);
}

TEST(ModuleHandle, LoadedModuleIsFoundByItsName) {
    EXPECT_EQ(GetModuleHandle(AfxGetModuleFileName(Platform())), Platform());
    EXPECT_NE(GetModuleHandle("libc.so.6"), nullptr);
    EXPECT_EQ(GetModuleHandle("libnowhere.so"), nullptr);
}

TEST(ModuleHandle, OfTheProgramIsFoundByItsPathAndItsName) {
    const HMODULE program = GetModuleHandle(nullptr);
    const std::filesystem::path path(AfxGetModuleFileName(nullptr).GetString());
    EXPECT_EQ(GetModuleHandleA(path.c_str()), program);
    EXPECT_EQ(GetModuleHandleA((path.parent_path() / "." / path.filename()).c_str()), program);
    EXPECT_EQ(GetModuleHandleA(path.filename().c_str()), program);
    EXPECT_EQ(GetModuleHandleA(nullptr), program);
}

TEST(ModuleHandle, OfNothingIsNull) {
    SetLastError(0);
    EXPECT_EQ(GetModuleHandleA(""), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ENOENT});
    SetLastError(0);
    EXPECT_EQ(GetModuleHandleA("/nowhere/module.so"), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ENOENT});
    EXPECT_EQ(GetModuleHandleA("/etc/passwd"), nullptr);
    EXPECT_EQ(GetModuleHandleA("/etc"), nullptr);
}

using LoadedFromAFile = TestModules;

TEST_F(LoadedFromAFile, IsFoundByPathAndByFileName) {
    const std::string path = Copy("odd name.so");
    EXPECT_EQ(GetModuleHandleA(path.c_str()), nullptr) << "nothing is loaded by looking";
    const HMODULE module = LoadLibraryA(path.c_str());
    ASSERT_NE(module, nullptr);
    EXPECT_EQ(GetModuleHandleA(path.c_str()), module);
    EXPECT_EQ(GetModuleHandleA("odd name.so"), module);
    EXPECT_EQ(GetModuleHandleA("name.so"), nullptr);
    std::filesystem::create_symlink(path, directory / "link.so");
    EXPECT_EQ(GetModuleHandleA((directory / "link.so").c_str()), module);
    EXPECT_TRUE(FreeLibrary(module)) << "no look-up has added a reference";
    EXPECT_EQ(GetModuleHandleA(path.c_str()), nullptr);
    EXPECT_EQ(GetModuleHandleA("odd name.so"), nullptr);
}

TEST_F(LoadedFromAFile, IsFoundByARelativePath) {
    const std::string path = Copy();
    const HMODULE module = LoadLibraryA(path.c_str());
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(directory.Path());
    EXPECT_EQ(GetModuleHandleA("./libnail.so"), module);
    std::filesystem::remove("libnail.so");
    EXPECT_EQ(GetModuleHandleA("./libnail.so"), module) << "also when its file is gone";
    std::filesystem::current_path(before);
    EXPECT_TRUE(FreeLibrary(module));
}

TEST_F(LoadedFromAFile, IsFoundByItsPathAfterAnotherFileTookItsPlace) {
    const std::string path = Copy();
    const HMODULE module = LoadLibraryA(path.c_str());
    std::filesystem::remove(path);
    MakeFile(path, "no module at all");
    EXPECT_EQ(GetModuleHandleA(path.c_str()), module);
    EXPECT_EQ(LoadLibraryA(path.c_str()), module);
    EXPECT_STREQ(AfxGetModuleFileName(module), path.c_str());
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_EQ(LoadLibraryA(path.c_str()), nullptr);
}

TEST_F(LoadedFromAFile, LivesUntilTheLastReferenceIsFreed) {
    const std::string path = Copy();
    const HMODULE module = LoadLibraryExA(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    ASSERT_NE(module, nullptr);
    EXPECT_EQ(LoadLibraryExA(path.c_str(), nullptr, 0), module);
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_EQ(GetModuleHandleA(path.c_str()), module);
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_EQ(GetModuleHandleA(path.c_str()), nullptr);
    EXPECT_FALSE(FreeLibrary(module));
    EXPECT_EQ(GetLastError(), DWORD{EINVAL});
}

TEST_F(LoadedFromAFile, KnowsNoOtherFlags) {
    const std::string path = Copy();
    SetLastError(0);
    EXPECT_EQ(LoadLibraryExA(path.c_str(), nullptr, 2), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{EINVAL});
    int reserved = 0;
    EXPECT_EQ(LoadLibraryExA(path.c_str(), &reserved, 8), nullptr);
    EXPECT_EQ(LoadLibraryExA(nullptr, nullptr, 8), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ENOENT});
}

TEST_F(LoadedFromAFile, PathOf260CharactersAndMoreIsCut) {
    std::string folder = directory.Path();
    while (folder.size() < 250) folder += "/" + std::string(40, 'd');
    std::filesystem::create_directories(folder);
    const std::string path = folder + "/libnail.so";
    ASSERT_GE(path.size(), 260u);
    std::filesystem::copy_file(ZT_TEST_MODULE, path);
    const HMODULE module = LoadLibraryA(path.c_str());
    ASSERT_NE(module, nullptr);
    char text[260];
    EXPECT_EQ(GetModuleFileNameA(module, text, 260), 260u);
    EXPECT_EQ(GetLastError(), DWORD{ENAMETOOLONG});
    EXPECT_EQ(text, path.substr(0, 259));
    EXPECT_EQ(GetModuleHandleA(text), nullptr);
    EXPECT_TRUE(FreeLibrary(module));
}

TEST_F(LoadedFromAFile, IsRefusedWhenItIsCutOff) {
    const std::string path = Copy();
    MakeFile(path, BytesOf(path).substr(0, 4096));
    CString reason;
    EXPECT_EQ(AfxLoadLibrary(path.c_str(), &reason), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ENOEXEC});
    EXPECT_EQ(reason.GetString(), path + ": the file holds no whole module");
}

TEST(ModuleFileName, IsThePathOfTheFile) {
    EXPECT_EQ(AfxGetModuleFileName(nullptr).GetString(),
              std::filesystem::read_symlink("/proc/self/exe").string());
    EXPECT_EQ(AfxGetModuleFileName(GetModuleHandle(nullptr)), AfxGetModuleFileName(nullptr));
    EXPECT_THAT(AfxGetModuleFileName(Platform()).GetString(), HasSubstr("libztplatform"));
    EXPECT_TRUE(std::filesystem::exists(AfxGetModuleFileName(Platform()).GetString()));
}

TEST(ModuleFileName, OfNoModuleIsEmpty) {
    int nowhere = 0;
    EXPECT_STREQ(AfxGetModuleFileName(reinterpret_cast<HMODULE>(&nowhere)), "");
    EXPECT_STREQ(AfxGetModuleFileName(reinterpret_cast<HMODULE>(&inTheProgram)), "");
}

TEST(ModuleFileName, IsCutToTheBuffer) {
    const CString path = AfxGetModuleFileName(nullptr);
    const auto length = static_cast<DWORD>(path.GetLength());
    std::string text(length + 2, '#');
    EXPECT_EQ(GetModuleFileName(nullptr, text.data(), length + 1), length);
    EXPECT_STREQ(text.c_str(), path);
    EXPECT_EQ(GetModuleFileName(nullptr, text.data(), 5), 5u);
    EXPECT_STREQ(text.c_str(), path.Left(4));
    EXPECT_EQ(GetModuleFileName(nullptr, text.data(), 0), 0u);
    EXPECT_EQ(GetModuleFileName(nullptr, nullptr, 5), 0u);
    int nowhere = 0;
    EXPECT_EQ(GetModuleFileName(reinterpret_cast<HMODULE>(&nowhere), text.data(), 5), 0u);
}

TEST(LoadLibrary, GivesTheModuleAndItsFunctions) {
    const HMODULE library = AfxLoadLibrary("libm.so.6");
    ASSERT_NE(library, nullptr);
    using Cosine = double (*)(double);
    const auto cosine = reinterpret_cast<Cosine>(GetProcAddress(library, "cos"));
    ASSERT_NE(cosine, nullptr);
    EXPECT_EQ(cosine(0), 1);
    EXPECT_TRUE(AfxFreeLibrary(library));
}

TEST(LoadLibrary, ByARelativePathKnowsTheFullOne) {
    const std::filesystem::path system =
        std::filesystem::path(AfxGetModuleFileName(GetModuleHandle("libc.so.6")).GetString())
            .parent_path();
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(system);
    const HMODULE library = AfxLoadLibrary("./libresolv.so.2");
    std::filesystem::current_path(before);
    ASSERT_NE(library, nullptr);
    const CString path = AfxGetModuleFileName(library);
    EXPECT_THAT(path.GetString(), StartsWith("/"));
    EXPECT_TRUE(std::filesystem::exists(path.GetString()));
    EXPECT_TRUE(AfxFreeLibrary(library));
}

TEST(LoadLibrary, OfAMissingFileTellsTheReason) {
    CString reason;
    EXPECT_EQ(AfxLoadLibrary("/nowhere/module.so", &reason), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ENOENT});
    EXPECT_THAT(reason.GetString(), HasSubstr("/nowhere/module.so"));
}

TEST(LoadLibrary, OfAFileThatIsNoModuleTellsTheReason) {
    CString reason;
    EXPECT_EQ(AfxLoadLibrary("/etc/passwd", &reason), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ENOEXEC});
    EXPECT_FALSE(reason.IsEmpty());
}

TEST(LoadLibrary, WithoutANameFails) {
    CString reason;
    EXPECT_EQ(AfxLoadLibrary("", &reason), nullptr);
    EXPECT_FALSE(reason.IsEmpty());
    EXPECT_EQ(AfxLoadLibrary(nullptr), nullptr);
}

TEST(FreeLibrary, OfNoModuleIsFalse) {
    EXPECT_FALSE(AfxFreeLibrary(nullptr));
    int nowhere = 0;
    EXPECT_FALSE(AfxFreeLibrary(reinterpret_cast<HMODULE>(&nowhere)));
}

TEST(FreeLibrary, OfALinkedLibraryIsFalse) {
    SetLastError(0);
    EXPECT_FALSE(AfxFreeLibrary(Platform()));
    EXPECT_EQ(GetLastError(), DWORD{EINVAL});
    EXPECT_FALSE(AfxFreeLibrary(GetModuleHandle(nullptr)));
    const HMODULE library = AfxLoadLibrary(AfxGetModuleFileName(Platform()));
    EXPECT_EQ(library, Platform());
    EXPECT_TRUE(AfxFreeLibrary(library)) << "this reference is one of AfxLoadLibrary";
    EXPECT_FALSE(AfxFreeLibrary(library));
}

TEST_F(LoadedFromAFile, BySomethingElseIsNotFreed) {
    const std::string path = Copy();
    void* const handle = dlopen(path.c_str(), RTLD_NOW);
    ASSERT_NE(handle, nullptr);
    const HMODULE module = GetModuleHandleA(path.c_str());
    SetLastError(0);
    EXPECT_FALSE(FreeLibrary(module));
    EXPECT_EQ(GetLastError(), DWORD{EINVAL});
    EXPECT_EQ(GetModuleHandleA(path.c_str()), module);
    dlclose(handle);
    EXPECT_EQ(GetModuleHandleA(path.c_str()), nullptr);
}

TEST(GetProcAddress, OfAnUnknownNameOrModuleIsNull) {
    EXPECT_EQ(GetProcAddress(Platform(), "no_such_function"), nullptr);
    EXPECT_EQ(GetProcAddress(Platform(), nullptr), nullptr);
    EXPECT_EQ(GetProcAddress(nullptr, "cos"), nullptr);
}
