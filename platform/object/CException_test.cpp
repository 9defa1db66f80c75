#include <gtest/gtest.h>

#include <platform/object/CException.h>
#include <platform/object/CInvalidArgException.h>
#include <platform/object/CMemoryException.h>
#include <platform/object/CNotSupportedException.h>

#include <string>

namespace {

class Mishap : public CException {
public:
    explicit Mishap(bool& ended, BOOL autoDelete = TRUE) : CException(autoDelete), m_ended(ended) {}
    ~Mishap() override { m_ended = true; }

private:
    bool& m_ended;
};

class Told : public CException {
public:
    explicit Told(LPCSTR message) : m_message(message) {}
    BOOL GetErrorMessage(LPTSTR text, UINT size, UINT* helpContext) const override {
        return CopyMessage(m_message, text, size, helpContext);
    }

private:
    LPCSTR m_message;
};

std::string MessageOf(const CException& exception, UINT room = 100) {
    std::string text(100, '#');
    exception.GetErrorMessage(text.data(), room);
    return text.c_str();
}

// What `raise` throws; the standing exceptions need no `Delete`.
template <class Exception, class Raise>
Exception* Raised(Raise raise) {
    try {
        raise();
    } catch (Exception* exception) {
        return exception;
    }
    return nullptr;
}

}  // namespace

TEST(CException, DeleteFreesAnExceptionOnTheHeap) {
    bool ended = false;
    (new Mishap(ended))->Delete();
    EXPECT_TRUE(ended);
}

TEST(CException, DeleteLeavesAnExceptionThatIsNotItsOwn) {
    bool ended = false;
    Mishap mishap(ended, FALSE);
    mishap.Delete();
    EXPECT_FALSE(ended);
}

TEST(CException, IsCaughtAsItsBases) {
    bool ended = false;
    try {
        throw new Mishap(ended);
    } catch (CException* exception) {
        exception->Delete();
    }
    EXPECT_TRUE(ended);
    ended = false;
    try {
        throw new Mishap(ended);
    } catch (CObject* object) {
        EXPECT_TRUE(object->IsKindOf(RUNTIME_CLASS(CException)));
        static_cast<CException*>(object)->Delete();
    }
    EXPECT_TRUE(ended);
}

TEST(CException, HasNoMessageOfItsOwn) {
    bool ended = false;
    const Mishap mishap(ended);
    char text[8] = "before";
    UINT help = 5;
    EXPECT_FALSE(mishap.GetErrorMessage(text, sizeof text, &help));
    EXPECT_STREQ(text, "");
    EXPECT_EQ(help, 0u);
    EXPECT_FALSE(mishap.GetErrorMessage(nullptr, 0));
}

TEST(CException, MessageIsCutToTheRoom) {
    const Told told("0123456789");
    EXPECT_EQ(MessageOf(told, 11), "0123456789");
    EXPECT_EQ(MessageOf(told, 10), "012345678");
    EXPECT_EQ(MessageOf(told, 1), "");
}

TEST(CException, MessageIsNotCutWithinACharacter) {
    const Told told(
        "ab\xC3\xA9"
        "c");
    EXPECT_EQ(MessageOf(told, 5), "ab\xC3\xA9");
    EXPECT_EQ(MessageOf(told, 4), "ab");
    EXPECT_EQ(MessageOf(told, 3), "ab");
}

TEST(CException, MessageWithoutRoomIsRefused) {
    const Told told("text");
    char text[] = "before";
    EXPECT_FALSE(told.GetErrorMessage(text, 0, nullptr));
    EXPECT_FALSE(told.GetErrorMessage(nullptr, 10, nullptr));
    EXPECT_STREQ(text, "before");
}

TEST(CException, ReportErrorPrintsTheMessage) {
    Told told("The pen is dry.");
    testing::internal::CaptureStderr();
    EXPECT_EQ(told.ReportError(), 1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "The pen is dry.\n");
}

TEST(CException, ReportErrorWithoutAMessageSaysSo) {
    bool ended = false;
    Mishap mishap(ended);
    testing::internal::CaptureStderr();
    EXPECT_EQ(mishap.ReportError(), 1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "An error without a message\n");
}

TEST(CException, TableContinuesThatOfTheRoot) {
    CMemoryException exception;
    void** table = *reinterpret_cast<void***>(&exception);
    char text[100] = "";
    using GetErrorMessage = BOOL (*)(const CException*, LPTSTR, UINT, UINT*);
    EXPECT_TRUE(reinterpret_cast<GetErrorMessage>(table[6])(&exception, text, 100, nullptr));
    EXPECT_STREQ(text, "Out of memory.");
    testing::internal::CaptureStderr();
    using ReportError = INT (*)(CException*, UINT, UINT);
    reinterpret_cast<ReportError>(table[7])(&exception, 0, 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Out of memory.\n");
}

TEST(CMemoryException, StandsReadyAndOutlivesDelete) {
    auto* first = Raised<CMemoryException>([] { AfxThrowMemoryException(); });
    ASSERT_NE(first, nullptr);
    first->Delete();
    auto* second = Raised<CMemoryException>([] { AfxThrowMemoryException(); });
    EXPECT_EQ(first, second);
    EXPECT_EQ(MessageOf(*second), "Out of memory.");
}

TEST(CMemoryException, IsCaughtAsException) {
    EXPECT_NE(Raised<CException>([] { AfxThrowMemoryException(); }), nullptr);
    EXPECT_NE(Raised<CObject>([] { AfxThrowMemoryException(); }), nullptr);
}

TEST(CInvalidArgException, StandsReadyAndOutlivesDelete) {
    auto* first = Raised<CInvalidArgException>([] { AfxThrowInvalidArgException(); });
    ASSERT_NE(first, nullptr);
    first->Delete();
    EXPECT_EQ(Raised<CException>([] { AfxThrowInvalidArgException(); }), first);
    EXPECT_EQ(MessageOf(*first), "An invalid argument was encountered.");
    EXPECT_EQ(first->GetRuntimeClass(), RUNTIME_CLASS(CInvalidArgException));
}

TEST(CNotSupportedException, StandsReadyAndOutlivesDelete) {
    auto* first = Raised<CNotSupportedException>([] { AfxThrowNotSupportedException(); });
    ASSERT_NE(first, nullptr);
    first->Delete();
    EXPECT_EQ(Raised<CException>([] { AfxThrowNotSupportedException(); }), first);
    EXPECT_EQ(first->GetRuntimeClass(), RUNTIME_CLASS(CNotSupportedException));
}

TEST(SimpleExceptions, OfTheProgramsOwnLieOnTheHeapAndAreFreed) {
    (new CMemoryException)->Delete();
    (new CInvalidArgException)->Delete();
    (new CNotSupportedException)->Delete();
}
