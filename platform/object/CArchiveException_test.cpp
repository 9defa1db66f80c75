#include <gtest/gtest.h>

#include <platform/object/CArchiveException.h>

#include <string>

namespace {

std::string MessageOf(INT cause, LPCTSTR name) {
    char text[200];
    CArchiveException(cause, name).GetErrorMessage(text, sizeof text);
    return text;
}

}  // namespace

TEST(CArchiveException, CausesHaveTheirNumbers) {
    EXPECT_EQ(CArchiveException::none, 0);
    EXPECT_EQ(CArchiveException::genericException, 1);
    EXPECT_EQ(CArchiveException::readOnly, 2);
    EXPECT_EQ(CArchiveException::endOfFile, 3);
    EXPECT_EQ(CArchiveException::writeOnly, 4);
    EXPECT_EQ(CArchiveException::badIndex, 5);
    EXPECT_EQ(CArchiveException::badClass, 6);
    EXPECT_EQ(CArchiveException::badSchema, 7);
    EXPECT_EQ(CArchiveException::bufferFull, 8);
}

TEST(CArchiveException, DefaultHasNoCauseAndNoName) {
    const CArchiveException exception;
    EXPECT_EQ(exception.m_cause, CArchiveException::none);
    EXPECT_STREQ(exception.m_strFileName, "");
}

TEST(CArchiveException, IsThrownWithCauseAndName) {
    try {
        AfxThrowArchiveException(CArchiveException::endOfFile, "model.bin");
    } catch (CArchiveException* exception) {
        EXPECT_EQ(exception->m_cause, 3);
        EXPECT_STREQ(exception->m_strFileName, "model.bin");
        EXPECT_TRUE(exception->IsKindOf(RUNTIME_CLASS(CException)));
        exception->Delete();
        return;
    }
    FAIL() << "nothing was thrown";
}

TEST(CArchiveException, NullNameIsAnEmptyOne) {
    try {
        AfxThrowArchiveException(CArchiveException::badIndex, nullptr);
    } catch (CException* exception) {
        EXPECT_STREQ(static_cast<CArchiveException*>(exception)->m_strFileName, "");
        exception->Delete();
        return;
    }
    FAIL() << "nothing was thrown";
}

TEST(CArchiveException, MessageTellsCauseAndName) {
    EXPECT_EQ(MessageOf(CArchiveException::endOfFile, "a%s.bin"),
              "An attempt was made to access a%s.bin past its end.");
    EXPECT_EQ(MessageOf(CArchiveException::badClass, nullptr),
              "An unnamed archive has an object of an unexpected class.");
    EXPECT_EQ(MessageOf(CArchiveException::readOnly, "a.bin"),
              "An attempt was made to write to a.bin, which is being read.");
    EXPECT_EQ(MessageOf(CArchiveException::writeOnly, nullptr),
              "An attempt was made to read from an unnamed archive, which is being written.");
    EXPECT_EQ(MessageOf(CArchiveException::none, "a"), "No error occurred.");
}

TEST(CArchiveException, MessageOfAnUnknownCauseIsTheGeneralOne) {
    EXPECT_EQ(MessageOf(99, "a"), "An unspecified error occurred while accessing a.");
    EXPECT_EQ(MessageOf(-1, "a"), "An unspecified error occurred while accessing a.");
}
