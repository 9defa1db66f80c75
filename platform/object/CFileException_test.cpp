#include <gtest/gtest.h>

#include <platform/object/CFileException.h>

#include <cerrno>
#include <string>

namespace {

std::string MessageOf(INT cause, LPCTSTR name) {
    char text[200];
    CFileException(cause, -1, name).GetErrorMessage(text, sizeof text);
    return text;
}

}  // namespace

TEST(CFileException, CausesHaveTheirNumbers) {
    EXPECT_EQ(CFileException::none, 0);
    EXPECT_EQ(CFileException::genericException, 1);
    EXPECT_EQ(CFileException::fileNotFound, 2);
    EXPECT_EQ(CFileException::badPath, 3);
    EXPECT_EQ(CFileException::tooManyOpenFiles, 4);
    EXPECT_EQ(CFileException::accessDenied, 5);
    EXPECT_EQ(CFileException::invalidFile, 6);
    EXPECT_EQ(CFileException::removeCurrentDir, 7);
    EXPECT_EQ(CFileException::directoryFull, 8);
    EXPECT_EQ(CFileException::badSeek, 9);
    EXPECT_EQ(CFileException::hardIO, 10);
    EXPECT_EQ(CFileException::sharingViolation, 11);
    EXPECT_EQ(CFileException::lockViolation, 12);
    EXPECT_EQ(CFileException::diskFull, 13);
    EXPECT_EQ(CFileException::endOfFile, 14);
}

TEST(CFileException, DefaultHasNoCauseNoCodeAndNoName) {
    const CFileException exception;
    EXPECT_EQ(exception.m_cause, CFileException::none);
    EXPECT_EQ(exception.m_lOsError, -1);
    EXPECT_STREQ(exception.m_strFileName, "");
}

TEST(CFileException, ErrnoHasACause) {
    EXPECT_EQ(CFileException::ErrnoToException(0), CFileException::none);
    EXPECT_EQ(CFileException::ErrnoToException(ENOENT), CFileException::fileNotFound);
    EXPECT_EQ(CFileException::ErrnoToException(ENOTDIR), CFileException::badPath);
    EXPECT_EQ(CFileException::ErrnoToException(ENAMETOOLONG), CFileException::badPath);
    EXPECT_EQ(CFileException::ErrnoToException(EMFILE), CFileException::tooManyOpenFiles);
    EXPECT_EQ(CFileException::ErrnoToException(EACCES), CFileException::accessDenied);
    EXPECT_EQ(CFileException::ErrnoToException(EPERM), CFileException::accessDenied);
    EXPECT_EQ(CFileException::ErrnoToException(EROFS), CFileException::accessDenied);
    EXPECT_EQ(CFileException::ErrnoToException(EBADF), CFileException::invalidFile);
    EXPECT_EQ(CFileException::ErrnoToException(ESPIPE), CFileException::badSeek);
    EXPECT_EQ(CFileException::ErrnoToException(EIO), CFileException::hardIO);
    EXPECT_EQ(CFileException::ErrnoToException(EBUSY), CFileException::sharingViolation);
    EXPECT_EQ(CFileException::ErrnoToException(EAGAIN), CFileException::lockViolation);
    EXPECT_EQ(CFileException::ErrnoToException(ENOSPC), CFileException::diskFull);
    EXPECT_EQ(CFileException::ErrnoToException(EDQUOT), CFileException::diskFull);
    EXPECT_EQ(CFileException::ErrnoToException(EFBIG), CFileException::diskFull);
}

TEST(CFileException, ErrnoWithoutACauseIsGeneric) {
    EXPECT_EQ(CFileException::ErrnoToException(EDOM), CFileException::genericException);
    EXPECT_EQ(CFileException::ErrnoToException(-5), CFileException::genericException);
}

TEST(CFileException, OsErrorIsTheSameAsErrno) {
    EXPECT_EQ(CFileException::OsErrorToException(ENOSPC), CFileException::diskFull);
}

TEST(CFileException, ThrowErrnoKeepsCodeAndName) {
    try {
        CFileException::ThrowErrno(ENOENT, "b.txt");
    } catch (CFileException* exception) {
        EXPECT_EQ(exception->m_cause, CFileException::fileNotFound);
        EXPECT_EQ(exception->m_lOsError, ENOENT);
        EXPECT_STREQ(exception->m_strFileName, "b.txt");
        exception->Delete();
        return;
    }
    FAIL() << "nothing was thrown";
}

TEST(CFileException, ThrowOsErrorKeepsCode) {
    try {
        CFileException::ThrowOsError(EACCES);
    } catch (CException* exception) {
        const auto* file = static_cast<CFileException*>(exception);
        EXPECT_EQ(file->m_cause, CFileException::accessDenied);
        EXPECT_EQ(file->m_lOsError, EACCES);
        EXPECT_STREQ(file->m_strFileName, "");
        exception->Delete();
        return;
    }
    FAIL() << "nothing was thrown";
}

TEST(CFileException, MessageTellsCauseAndName) {
    EXPECT_EQ(MessageOf(CFileException::fileNotFound, "b.txt"), "b.txt was not found.");
    EXPECT_EQ(MessageOf(CFileException::diskFull, ""),
              "The disk is full while accessing an unnamed file.");
    EXPECT_EQ(MessageOf(77, "b.txt"), "An unspecified error occurred while accessing b.txt.");
}
