#include <gtest/gtest.h>

#include <platform/base/ResultCodes.h>
#include <platform/base/Types.h>

TEST(Types, WidthsAreThoseOfTheNames) {
    EXPECT_EQ(sizeof(BYTE), 1u);
    EXPECT_EQ(sizeof(WORD), 2u);
    EXPECT_EQ(sizeof(SHORT), 2u);
    EXPECT_EQ(sizeof(DWORD), 4u);
    EXPECT_EQ(sizeof(LONG), 4u);
    EXPECT_EQ(sizeof(ULONG), 4u);
    EXPECT_EQ(sizeof(BOOL), 4u);
    EXPECT_EQ(sizeof(HRESULT), 4u);
    EXPECT_EQ(sizeof(LONGLONG), 8u);
    EXPECT_EQ(sizeof(ULONGLONG), 8u);
    EXPECT_EQ(sizeof(INT_PTR), sizeof(void*));
    EXPECT_EQ(sizeof(DWORD_PTR), sizeof(void*));
}

TEST(Types, TrueIsOneAndFalseIsZero) {
    EXPECT_EQ(TRUE, 1);
    EXPECT_EQ(FALSE, 0);
}

TEST(ResultCodes, FailuresAreNegative) {
    EXPECT_TRUE(SUCCEEDED(S_OK));
    EXPECT_TRUE(SUCCEEDED(S_FALSE));
    EXPECT_TRUE(SUCCEEDED(120));
    EXPECT_TRUE(FAILED(E_UNEXPECTED));
    EXPECT_TRUE(FAILED(DISP_E_BADINDEX));
}

TEST(ResultCodes, HaveTheirBits) {
    EXPECT_EQ(static_cast<DWORD>(E_NOINTERFACE), 0x80004002u);
    EXPECT_EQ(static_cast<DWORD>(REGDB_E_CLASSNOTREG), 0x80040154u);
    EXPECT_EQ(static_cast<DWORD>(E_POINTER), 0x80004003u);
    EXPECT_EQ(static_cast<DWORD>(E_FAIL), 0x80004005u);
    EXPECT_EQ(static_cast<DWORD>(E_UNEXPECTED), 0x8000FFFFu);
    EXPECT_EQ(static_cast<DWORD>(E_OUTOFMEMORY), 0x8007000Eu);
    EXPECT_EQ(static_cast<DWORD>(E_INVALIDARG), 0x80070057u);
    EXPECT_EQ(static_cast<DWORD>(DISP_E_BADINDEX), 0x8002000Bu);
    EXPECT_EQ(static_cast<DWORD>(DISP_E_PARAMNOTOPTIONAL), 0x8002000Fu);
}
