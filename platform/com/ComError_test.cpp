#include <platform/com/ComError.h>

#include <gtest/gtest.h>

namespace {

const char* DescriptionOf(const _com_error& error, _bstr_t& holder) {
    holder = error.Description();
    return holder;
}

TEST(ComError, CarriesItsResult) {
    EXPECT_EQ(_com_error(E_POINTER).Error(), E_POINTER);
    EXPECT_EQ(_com_error(S_OK).Error(), S_OK);
}

TEST(ComError, DescriptionIsTheFailingObjectsText) {
    _bstr_t holder;
    EXPECT_STREQ(DescriptionOf(_com_error(E_FAIL, "line 3: no such \xC3\xA9"), holder),
                 "line 3: no such \xC3\xA9");
    EXPECT_EQ(DescriptionOf(_com_error(E_FAIL), holder), nullptr);
    EXPECT_EQ(_com_error(E_FAIL).Description().length(), 0u);
}

TEST(ComError, MessageNamesTheResult) {
    EXPECT_STREQ(_com_error(E_INVALIDARG).ErrorMessage(), "An argument is not valid");
    EXPECT_STREQ(_com_error(E_POINTER).ErrorMessage(), "A pointer is null");
    EXPECT_STREQ(_com_error(ResultFromBits(0x80041234)).ErrorMessage(), "Unknown error 0x80041234");
}

TEST(ComError, MessageOfASystemErrorIsTheSystemsText) {
    EXPECT_STREQ(_com_error(ResultFromBits(0x80070002)).ErrorMessage(),
                 "No such file or directory");
    EXPECT_STREQ(_com_error(E_OUTOFMEMORY).ErrorMessage(), "There is not enough memory");
    EXPECT_STREQ(_com_error(ResultFromBits(0x80070000)).ErrorMessage(), "Unknown error 0x80070000");
    EXPECT_STREQ(_com_error(ResultFromBits(0x8007FFFF)).ErrorMessage(), "Unknown error 0x8007FFFF");
}

TEST(ComError, CheckErrorRaisesFailuresOnly) {
    EXPECT_NO_THROW(_com_util::CheckError(S_FALSE));
    try {
        _com_util::CheckError(E_ABORT);
        FAIL() << "nothing thrown";
    } catch (const _com_error& error) {
        EXPECT_EQ(error.Error(), E_ABORT);
    }
}

TEST(ComError, CopiesKeepResultAndTexts) {
    const _com_error original(ResultFromBits(0x80040001), "why");
    _com_error copy(original);
    _com_error assigned(E_FAIL);
    assigned = copy;
    _bstr_t holder;
    EXPECT_EQ(assigned.Error(), original.Error());
    EXPECT_STREQ(assigned.ErrorMessage(), "Unknown error 0x80040001");
    EXPECT_STREQ(DescriptionOf(assigned, holder), "why");
}

TEST(ComError, IsThrownByValue) {
    try {
        _com_issue_error(E_NOINTERFACE);
        FAIL() << "nothing thrown";
    } catch (const _com_error& error) {
        EXPECT_EQ(error.Error(), E_NOINTERFACE);
        EXPECT_EQ(error.Description().length(), 0u);
    }
    try {
        _com_raise_error(E_ABORT, "stopped");
        FAIL() << "nothing thrown";
    } catch (const _com_error& error) {
        _bstr_t holder;
        EXPECT_EQ(error.Error(), E_ABORT);
        EXPECT_STREQ(DescriptionOf(error, holder), "stopped");
    }
}

}  // namespace
