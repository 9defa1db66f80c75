#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <platform/base/LastError.h>
#include <platform/files/TempFile.h>
#include <platform/files/TestDirectory_test.hpp>

#include <cerrno>
#include <cstdlib>
#include <optional>
#include <set>
#include <string>

#include <sys/stat.h>

using testing::EndsWith;
using testing::StartsWith;

namespace {

// The environment's directory for temporary files, for the length of a test.
class TempDirectoryVariable {
public:
    explicit TempDirectoryVariable(const char* value) {
        if (const char* before = std::getenv("TMPDIR")) m_before = before;
        Set(value);
    }
    ~TempDirectoryVariable() { Set(m_before ? m_before->c_str() : nullptr); }
    TempDirectoryVariable(const TempDirectoryVariable&) = delete;
    TempDirectoryVariable& operator=(const TempDirectoryVariable&) = delete;

private:
    static void Set(const char* value) {
        if (value)
            setenv("TMPDIR", value, 1);
        else
            unsetenv("TMPDIR");
    }
    std::optional<std::string> m_before;
};

}  // namespace

TEST(TempPath, IsWhatTheEnvironmentNames) {
    const TempDirectoryVariable variable("/var/tmp");
    EXPECT_STREQ(AfxGetTempPath(), "/var/tmp/");
}

TEST(TempPath, EndsWithOneSlash) {
    const TempDirectoryVariable variable("/var/tmp/");
    EXPECT_STREQ(AfxGetTempPath(), "/var/tmp/");
}

TEST(TempPath, IsTheCommonDirectoryWhereTheEnvironmentNamesNone) {
    {
        const TempDirectoryVariable variable(nullptr);
        EXPECT_STREQ(AfxGetTempPath(), "/tmp/");
    }
    const TempDirectoryVariable variable("");
    EXPECT_STREQ(AfxGetTempPath(), "/tmp/");
}

TEST(TempPath, IsCopiedIfItFits) {
    const TempDirectoryVariable variable("/var/tmp");
    char text[10] = "";
    EXPECT_EQ(GetTempPath(10, text), 9u);
    EXPECT_STREQ(text, "/var/tmp/");
}

TEST(TempPath, IsNotCopiedIfItDoesNotFit) {
    const TempDirectoryVariable variable("/var/tmp");
    char text[10] = "before";
    EXPECT_EQ(GetTempPath(9, text), 10u);
    EXPECT_STREQ(text, "before");
    EXPECT_EQ(GetTempPath(0, nullptr), 10u);
}

struct TempFile : testing::Test {
    TestDirectory directory;
};

TEST_F(TempFile, IsMadeEmptyAndForTheUserAlone) {
    const CString path = AfxGetTempFileName(directory.Path().c_str(), "ztBlob");
    struct stat status {};
    ASSERT_EQ(stat(path, &status), 0);
    EXPECT_EQ(status.st_size, 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
}

TEST_F(TempFile, NameHasThePrefixAndAnEnding) {
    const CString path = AfxGetTempFileName(directory.Path().c_str(), "ztBlob");
    EXPECT_THAT(path.GetString(), StartsWith(directory / "ztBlob"));
    EXPECT_THAT(path.GetString(), EndsWith(".tmp"));
}

TEST_F(TempFile, NamesAreUnique) {
    std::set<std::string> names;
    for (int i = 0; i < 200; ++i)
        names.insert(AfxGetTempFileName(directory.Path().c_str(), "u").GetString());
    EXPECT_EQ(names.size(), 200u);
    EXPECT_EQ(names.count(""), 0u);
}

TEST_F(TempFile, NullPrefixIsNone) {
    EXPECT_THAT(AfxGetTempFileName(directory.Path().c_str(), nullptr).GetString(),
                EndsWith(".tmp"));
}

TEST_F(TempFile, PrefixAndDirectoryAreUtf8) {
    const std::string inner = directory / "\xC3\xA9t\xC3\xA9";
    std::filesystem::create_directory(inner);
    const CString path = AfxGetTempFileName(inner.c_str(), "\xE5\x9E\x8B");
    EXPECT_THAT(path.GetString(), StartsWith(inner + "/\xE5\x9E\x8B"));
    EXPECT_TRUE(std::filesystem::exists(path.GetString()));
}

TEST_F(TempFile, MissingDirectoryGivesNoName) {
    EXPECT_STREQ(AfxGetTempFileName((directory / "no").c_str(), "x"), "");
    EXPECT_EQ(GetLastError(), DWORD{ENOENT});
}

TEST_F(TempFile, BadArgumentsGiveNoName) {
    EXPECT_STREQ(AfxGetTempFileName("", "x"), "");
    EXPECT_EQ(GetLastError(), DWORD{EINVAL});
    EXPECT_STREQ(AfxGetTempFileName(nullptr, "x"), "");
    EXPECT_STREQ(AfxGetTempFileName(directory.Path().c_str(), "../x"), "");
    char text[MAX_PATH];
    EXPECT_EQ(GetTempFileName(nullptr, "x", 0, text), 0u);
    EXPECT_EQ(GetTempFileName(directory.Path().c_str(), "x", 0, nullptr), 0u);
    EXPECT_TRUE(std::filesystem::is_empty(directory.Path()));
}

TEST_F(TempFile, BufferFormMakesTheFileToo) {
    char text[MAX_PATH] = "";
    EXPECT_NE(GetTempFileName(directory.Path().c_str(), "ztxl", 0, text), 0u);
    EXPECT_THAT(text, StartsWith(directory / "ztxl"));
    EXPECT_TRUE(std::filesystem::exists(text));
}

TEST_F(TempFile, BufferFormWithANumberOnlyMakesTheName) {
    char text[MAX_PATH] = "";
    EXPECT_EQ(GetTempFileName("/d", "p", 0xAB12, text), 0xAB12u);
    EXPECT_STREQ(text, "/d/pAB12.tmp");
}

TEST_F(TempFile, PathTooLongForTheBufferLeavesNoFile) {
    const std::string deep = directory / std::string(250, 'd');
    std::filesystem::create_directory(deep);
    char text[MAX_PATH] = "before";
    EXPECT_EQ(GetTempFileName(deep.c_str(), "x", 0, text), 0u);
    EXPECT_EQ(GetLastError(), DWORD{ENAMETOOLONG});
    EXPECT_EQ(GetTempFileName(deep.c_str(), "x", 7, text), 0u);
    EXPECT_STREQ(text, "before");
    EXPECT_TRUE(std::filesystem::is_empty(deep));
}
