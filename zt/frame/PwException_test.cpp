#include <gtest/gtest.h>

#include <zt/frame/PwException.h>
#include <cstddef>
#include <string>
#include <zt/frame/VirtualTable_test.hpp>

namespace ZT {
namespace {

int destroyed = 0;

struct Watched : PwException {
    using PwException::PwException;
    ~Watched() override { ++destroyed; }
};

TEST(PwException, TextIsItsOnlyField) {
    EXPECT_EQ(sizeof(PwException::m_szMessage), 50u);
    EXPECT_EQ(offsetof(PwException, m_szMessage), sizeof(void*) + sizeof(BOOL));
    EXPECT_EQ(sizeof(PwException), 64u);
}

TEST(PwException, DefaultMessageIsEmpty) {
    const PwException e;
    EXPECT_STREQ(e.m_szMessage, "");
}

TEST(PwException, NullTextGivesTheEmptyMessage) {
    const PwException e(nullptr);
    EXPECT_STREQ(e.m_szMessage, "");
}

TEST(PwException, CarriesItsText) {
    const PwException e("Bad int in xml string");
    EXPECT_STREQ(e.m_szMessage, "Bad int in xml string");
}

TEST(PwException, CutsTheTextAt49Bytes) {
    const std::string exact(49, 'x');
    EXPECT_EQ(PwException(exact.c_str()).m_szMessage, exact);
    const std::string longer(50, 'x');
    EXPECT_EQ(PwException(longer.c_str()).m_szMessage, exact);
    const std::string longest(500, 'x');
    EXPECT_EQ(PwException(longest.c_str()).m_szMessage, exact);
}

template <class Caught>
void ThrowAndCatchAs() {
    try {
        throw new PwException("text");
    } catch (Caught* e) {
        static_cast<CException*>(e)->Delete();
        return;
    }
    FAIL() << "not caught";
}

TEST(PwException, IsCaughtAsItselfAndAsTheFrameworksException) {
    ThrowAndCatchAs<PwException>();
    ThrowAndCatchAs<CException>();
}

TEST(PwException, IsCaughtAsAnObject) {
    try {
        throw new PwException("text");
    } catch (CObject* e) {
        EXPECT_STREQ(dynamic_cast<PwException&>(*e).m_szMessage, "text");
        static_cast<CException*>(e)->Delete();
    }
}

TEST(PwException, IsCaughtAsAPlainPointer) {
    try {
        throw new PwException("text");
    } catch (void* e) {
        static_cast<PwException*>(e)->Delete();
    }
}

TEST(PwException, DeleteOfTheBaseEndsIt) {
    destroyed = 0;
    CException* e = new Watched("text");
    e->Delete();
    EXPECT_EQ(destroyed, 1);
}

TEST(PwException, MessageIsNotConnectedToTheBaseOperations) {
    const PwException e("secret");
    char text[100] = "untouched";
    EXPECT_EQ(e.GetErrorMessage(text, sizeof text),
              e.CException::GetErrorMessage(text, sizeof text));
    EXPECT_EQ(std::string(text).find("secret"), std::string::npos);
    EXPECT_STREQ(e.GetRuntimeClass()->m_lpszClassName, "CException");
}

TEST(PwException, ItsTableIsThatOfTheFrameworksException) {
    struct Reporter : Watched {
        using Watched::Watched;
        INT ReportError(UINT type, UINT id) override {
            m_reported = type + id;
            return 7;
        }
        UINT m_reported = 0;
    };
    auto* const e = new Reporter("secret");
    char text[100] = "untouched";
    UINT help = 5;
    EXPECT_EQ((CallSlot<BOOL, LPTSTR, UINT, UINT*>(e, kSlotFirstOwn, text, sizeof text, &help)),
              FALSE);
    EXPECT_STREQ(text, "");
    EXPECT_EQ(help, 0u);
    EXPECT_EQ((CallSlot<INT, UINT, UINT>(e, kSlotFirstOwn + 1, 30, 4)), 7);
    EXPECT_EQ(e->m_reported, 34u);
    EXPECT_EQ(CallSlot<CRuntimeClass*>(e, kSlotGetRuntimeClass), RUNTIME_CLASS(CException));
    destroyed = 0;
    CallSlot<void>(e, kSlotDeletingDestructor);
    EXPECT_EQ(destroyed, 1);
}

TEST(PwException, OverridesNothingButTheDestructor) {
    struct Plain : CException {};
    PwException e("text");
    Plain plain;
    const auto table = [](void* object) { return *static_cast<void***>(object); };
    constexpr std::size_t kReportError = kSlotFirstOwn + 1;
    for (std::size_t slot = 0; slot <= kReportError; ++slot) {
        const bool same = table(&e)[slot] == table(&plain)[slot];
        EXPECT_EQ(same, slot != kSlotDestructor && slot != kSlotDeletingDestructor) << slot;
    }
}

}  // namespace
}  // namespace ZT
