#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <platform/base/LastError.h>
#include <platform/modules/ModuleHandle.h>
#include <platform/text/CString.h>

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

TEST(GetProcAddress, OfAnUnknownNameOrModuleIsNull) {
    EXPECT_EQ(GetProcAddress(Platform(), "no_such_function"), nullptr);
    EXPECT_EQ(GetProcAddress(Platform(), nullptr), nullptr);
    EXPECT_EQ(GetProcAddress(nullptr, "cos"), nullptr);
}
