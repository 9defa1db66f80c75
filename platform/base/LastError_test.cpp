#include <gtest/gtest.h>

#include <platform/base/LastError.h>

#include <cerrno>
#include <thread>

TEST(LastError, IsWhatWasSet) {
    SetLastError(ENOENT);
    EXPECT_EQ(GetLastError(), DWORD{ENOENT});
    SetLastError(0);
    EXPECT_EQ(GetLastError(), 0u);
}

TEST(LastError, IsThatOfTheSystem) {
    errno = EACCES;
    EXPECT_EQ(GetLastError(), DWORD{EACCES});
}

TEST(LastError, BelongsToTheThread) {
    SetLastError(EIO);
    DWORD other = EIO;
    std::thread([&other] { other = GetLastError(); }).join();
    EXPECT_EQ(other, 0u);
    EXPECT_EQ(GetLastError(), DWORD{EIO});
}

TEST(SystemErrorText, IsTheTextOfTheCode) {
    EXPECT_EQ(SystemErrorText(ENOENT), "No such file or directory");
    EXPECT_EQ(SystemErrorText(EACCES), "Permission denied");
}

TEST(SystemErrorText, HasATextForSuccess) {
    EXPECT_EQ(SystemErrorText(0), "Success");
}

TEST(SystemErrorText, IsEmptyForAnUnknownCode) {
    EXPECT_EQ(SystemErrorText(987654), "");
    EXPECT_EQ(SystemErrorText(0xFFFFFFFF), "");
}

TEST(SystemErrorText, LeavesTheLastErrorAlone) {
    SetLastError(EDOM);
    SystemErrorText(ENOENT);
    SystemErrorText(987654);
    EXPECT_EQ(GetLastError(), DWORD{EDOM});
}
