#include <platform/com/CheckError.h>

#include <gtest/gtest.h>
#include <tests/Raises.h>

#include <platform/object/CMemoryException.h>
#include <platform/object/COleException.h>

namespace {

using testing_support::Raises;

TEST(CheckError, SuccessDoesNothing) {
    AfxCheckError(S_OK);
    AfxCheckError(S_FALSE);
}

TEST(CheckError, LackOfMemoryIsTheMemoryException) {
    EXPECT_TRUE(Raises<CMemoryException>([] { AfxCheckError(E_OUTOFMEMORY); }));
}

TEST(CheckError, AnyOtherFailureIsTheOleExceptionWithItsResult) {
    for (const SCODE failure : {E_FAIL, DISP_E_OVERFLOW, E_INVALIDARG}) {
        try {
            AfxCheckError(failure);
            ADD_FAILURE() << "nothing was raised";
        } catch (COleException* e) {
            EXPECT_EQ(e->m_sc, failure);
            e->Delete();
        }
    }
}

}  // namespace
