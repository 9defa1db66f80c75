#include <gtest/gtest.h>

#include <platform/object/CInvalidArgException.h>
#include <platform/object/CMemoryException.h>
#include <platform/object/CNotSupportedException.h>
#include <platform/object/COleException.h>

#include <string>

namespace {

std::string MessageOf(HRESULT result) {
    COleException exception;
    exception.m_sc = result;
    char text[200];
    exception.GetErrorMessage(text, sizeof text);
    return text;
}

}  // namespace

TEST(COleException, IsThrownWithItsResult) {
    try {
        AfxThrowOleException(E_FAIL);
    } catch (COleException* exception) {
        EXPECT_EQ(exception->m_sc, E_FAIL);
        EXPECT_TRUE(exception->IsKindOf(RUNTIME_CLASS(COleException)));
        exception->Delete();
        return;
    }
    FAIL() << "nothing was thrown";
}

TEST(COleException, ProcessTellsTheResultThatStandsForAnException) {
    COleException exception;
    exception.m_sc = E_ACCESSDENIED;
    EXPECT_EQ(COleException::Process(&exception), E_ACCESSDENIED);
    const CMemoryException memory;
    EXPECT_EQ(COleException::Process(&memory), E_OUTOFMEMORY);
    const CNotSupportedException notSupported;
    EXPECT_EQ(COleException::Process(&notSupported), E_NOTIMPL);
    const CInvalidArgException invalid;
    EXPECT_EQ(COleException::Process(&invalid), E_UNEXPECTED);
    EXPECT_EQ(COleException::Process(nullptr), E_UNEXPECTED);
}

TEST(COleException, MessageTellsTheResult) {
    EXPECT_EQ(MessageOf(E_OUTOFMEMORY), "Out of memory.");
    EXPECT_EQ(MessageOf(E_INVALIDARG), "An argument is not valid.");
    EXPECT_EQ(MessageOf(ResultFromBits(0x80040154)),
              "The operation failed with the result 0x80040154.");
}
