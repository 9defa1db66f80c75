#include <gtest/gtest.h>

#include <platform/files/detail/FileReplacement.h>
#include <platform/files/TestDirectory_test.hpp>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <iterator>

namespace {

// Both ways: into a file without a name, and, as where there are no such files, into one
// that has a name from the start.
struct FileReplacementOf : testing::TestWithParam<bool> {
    TestDirectory directory;
    std::string path = directory / "file";

    std::ptrdiff_t Files() const {
        return std::distance(std::filesystem::directory_iterator(directory.Path()), {});
    }
    mode_t Mode() const {
        struct stat status {};
        return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
    }
    // Writes the file anew; the system's error number.
    int Replace(const std::string& bytes) const {
        FileReplacement file(GetParam());
        if (const int error = file.Open(path.c_str()); error != 0) return error;
        if (const int error = file.Write(bytes.data(), bytes.size()); error != 0) return error;
        return file.Finish();
    }
};

INSTANTIATE_TEST_SUITE_P(WithoutAName, FileReplacementOf, testing::Values(false));
INSTANTIATE_TEST_SUITE_P(WithAName, FileReplacementOf, testing::Values(true));

}  // namespace

TEST_P(FileReplacementOf, ShowsTheOldContentUntilTheEnd) {
    MakeFile(path, "old content");
    FileReplacement file(GetParam());
    ASSERT_EQ(file.Open(path.c_str()), 0);
    ASSERT_EQ(file.Write("new", 3), 0);
    EXPECT_EQ(BytesOf(path), "old content");
    EXPECT_EQ(file.Finish(), 0);
    EXPECT_EQ(BytesOf(path), "new");
    EXPECT_EQ(Files(), 1);
}

TEST_P(FileReplacementOf, MakesANewFile) {
    EXPECT_EQ(Replace("new"), 0);
    EXPECT_EQ(BytesOf(path), "new");
    EXPECT_EQ(Files(), 1);
}

TEST_P(FileReplacementOf, LeavesNothingWithoutAnEnd) {
    MakeFile(path, "old");
    {
        FileReplacement file(GetParam());
        ASSERT_EQ(file.Open(path.c_str()), 0);
        ASSERT_EQ(file.Write("new", 3), 0);
        EXPECT_EQ(Files(), GetParam() ? 2 : 1);
    }
    EXPECT_EQ(Files(), 1);
    EXPECT_EQ(BytesOf(path), "old");
}

TEST_P(FileReplacementOf, LeavesAFileOfItsKindWhenItIsKilled) {
    MakeFile(path, "old");
    const pid_t child = fork();
    if (child == 0) {
        FileReplacement file(GetParam());
        if (file.Open(path.c_str()) == 0) file.Write("new", 3);
        kill(getpid(), SIGKILL);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(BytesOf(path), "old");
    std::ptrdiff_t left = 0;
    for (const auto& entry : std::filesystem::directory_iterator(directory.Path()))
        left += entry.path().filename().native().starts_with(".new-");
    EXPECT_EQ(left, GetParam() ? 1 : 0);
    EXPECT_EQ(Files(), 1 + left);
}

TEST_P(FileReplacementOf, KeepsTheMode) {
    for (const mode_t mode : {0600u, 0751u, 04755u}) {
        MakeFile(path, "old");
        ASSERT_EQ(chmod(path.c_str(), mode), 0);
        EXPECT_EQ(Replace("new"), 0);
        EXPECT_EQ(Mode(), mode);
    }
}

TEST_P(FileReplacementOf, DoesNotRunAsAnOwnerWhoDidNotWriteIt) {
    if (geteuid() != 0) GTEST_SKIP() << "nobody may take another's part here";
    MakeFile(path, "old");
    ASSERT_EQ(chmod(path.c_str(), 06777), 0);
    ASSERT_EQ(chmod(directory.Path().c_str(), 0777), 0);
    const pid_t child = fork();
    if (child == 0) _exit(setgid(54321) != 0 || setuid(54321) != 0 ? 255 : Replace("new"));
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_EQ(BytesOf(path), "new");
    EXPECT_EQ(Mode(), 0777u) << "the bits that let it run as its owner are gone";
}

TEST_P(FileReplacementOf, WritesToADeviceDirectly) {
    path = "/dev/full";
    EXPECT_EQ(Replace("x"), ENOSPC);
    path = "/dev/null";
    EXPECT_EQ(Replace("x"), 0);
    EXPECT_TRUE(std::filesystem::is_character_file(path));
}

TEST_P(FileReplacementOf, TellsWhyItCannotBegin) {
    path = "/nowhere/file";
    EXPECT_EQ(Replace("x"), ENOENT);
    path = directory.Path();
    EXPECT_EQ(Replace("x"), EISDIR);
}
