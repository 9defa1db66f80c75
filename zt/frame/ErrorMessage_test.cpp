#include <gtest/gtest.h>

#include <platform/base/LastError.h>
#include <zt/frame/ErrorMessage.h>
#include <cerrno>
#include <cstring>
#include <thread>

namespace ZT {
namespace {

TEST(ErrorMessage, IsEmptyWithoutAnError) {
    SetLastError(0);
    EXPECT_EQ(hxGetErrorMessage(), "");
}

TEST(ErrorMessage, IsTheSystemsText) {
    for (const int code : {ENOENT, EACCES, ENOMEM}) {
        const CString expected = std::strerror(code);
        SetLastError(static_cast<DWORD>(code));
        EXPECT_EQ(hxGetErrorMessage(), expected);
        EXPECT_FALSE(expected.IsEmpty());
    }
}

TEST(ErrorMessage, LeavesTheLastErrorAsItIs) {
    SetLastError(ENOENT);
    hxGetErrorMessage();
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ENOENT));
}

TEST(ErrorMessage, IsThatOfTheCallingThread) {
    SetLastError(ENOENT);
    CString other = "unset";
    std::thread([&] {
        SetLastError(0);
        other = hxGetErrorMessage();
    }).join();
    SetLastError(ENOENT);
    EXPECT_EQ(other, "");
    EXPECT_NE(hxGetErrorMessage(), "");
}

TEST(ErrorMessage, OneLineEndIsCutOff) {
    EXPECT_EQ(hxWithoutLineEnd("No such file.\r\n"), "No such file.");
    EXPECT_EQ(hxWithoutLineEnd("twice\r\n\r\n"), "twice\r\n");
    EXPECT_EQ(hxWithoutLineEnd("\r\n"), "");
}

TEST(ErrorMessage, TextWithoutLineEndIsReturnedWhole) {
    for (const char* text : {"", "\n", "\r", "plain", "a\n", "a\r", "a\n\r", "\r\na"}) {
        EXPECT_EQ(hxWithoutLineEnd(text), text);
    }
}

}  // namespace
}  // namespace ZT
