#include <gtest/gtest.h>

#include <platform/files/detail/FileReplacement.h>
#include <platform/files/TestDirectory_test.hpp>

#include <fcntl.h>
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
    // Whether the file system does what the test is about.
    bool HasSuchFiles() const {
        if (GetParam()) return true;
        const int file = open(directory.Path().c_str(), O_RDWR | O_TMPFILE | O_CLOEXEC, 0600);
        return file >= 0 && close(file) == 0;
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
    if (!HasSuchFiles()) GTEST_SKIP() << "no files without names here";
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
    if (!HasSuchFiles()) GTEST_SKIP() << "no files without names here";
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

TEST_P(FileReplacementOf, ReplacesWhatALinkNames) {
    MakeFile(path, "old");
    const std::string target = path;
    path = directory / "link";
    std::filesystem::create_symlink("file", path);
    EXPECT_EQ(Replace("new"), 0);
    EXPECT_TRUE(std::filesystem::is_symlink(path));
    EXPECT_EQ(BytesOf(target), "new");
    EXPECT_EQ(Files(), 2);
}

TEST_P(FileReplacementOf, MakesWhatALinkNames) {
    std::filesystem::create_directory(directory / "folder");
    std::filesystem::create_symlink(directory / "folder/second", path);
    std::filesystem::create_symlink("third", directory / "folder/second");
    EXPECT_EQ(Replace("new"), 0);
    EXPECT_TRUE(std::filesystem::is_symlink(path));
    EXPECT_TRUE(std::filesystem::is_symlink(directory / "folder/second"));
    EXPECT_FALSE(std::filesystem::is_symlink(directory / "folder/third"));
    EXPECT_EQ(BytesOf(directory / "folder/third"), "new");
    EXPECT_EQ(Files(), 2);
}

TEST_P(FileReplacementOf, MakesNothingWhereALinkNamesNoPlaceForAFile) {
    std::filesystem::create_symlink("nowhere/file", path);
    EXPECT_EQ(Replace("new"), ENOENT);
    std::filesystem::remove(path);
    std::filesystem::create_symlink("file", path);
    EXPECT_EQ(Replace("new"), ELOOP);
    EXPECT_TRUE(std::filesystem::is_symlink(path));
    EXPECT_EQ(Files(), 1);
}

TEST_P(FileReplacementOf, WritesToAnOpenFileDirectly) {
    const std::string target = path;
    MakeFile(target, "old, ");
    const int file = open(target.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC);
    ASSERT_GE(file, 0);
    const std::string number = std::to_string(file);
    path = directory / "link";
    std::filesystem::create_symlink("/dev/fd/" + number, path);
    for (const std::string& other : {"/dev/fd/" + number, "/proc/self/fd/" + number, path}) {
        path = other;
        EXPECT_EQ(Replace("new, "), 0) << other;
    }
    EXPECT_EQ(BytesOf(target), "old, new, new, new, ");
    EXPECT_EQ(Files(), 2);
    EXPECT_EQ(close(file), 0) << "it stays open";
    EXPECT_NE(Replace("new"), 0) << "no such file is open";
}

TEST_P(FileReplacementOf, WritesToAnOpenFileThatHasNoNameAnyMore) {
    const int file = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    ASSERT_GE(file, 0);
    std::filesystem::remove(path);
    path = "/dev/fd/" + std::to_string(file);
    EXPECT_EQ(Replace("new"), 0);
    char bytes[4] = {};
    EXPECT_EQ(pread(file, bytes, 3, 0), 3);
    EXPECT_STREQ(bytes, "new");
    EXPECT_EQ(Files(), 0);
    close(file);
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
