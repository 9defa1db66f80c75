// What a question does when there is no memory for its named parameters. The program's
// operator new can be made to fail.

#include <gtest/gtest.h>
#include <platform/object/CMemoryException.h>
#include <tests/CountingNew.h>
#include <tests/Raises.h>
#include <zt/dictionary/DictionaryZT.h>
#include <zt/modules/QC.h>

namespace ZT {
namespace {

using testing_support::AllocationsIn;
using testing_support::MemoryFor;
using testing_support::Raises;

TEST(QCMemory, NamedParametersAreMadeOrNot) {
    QC qc;
    EXPECT_TRUE(Raises<CMemoryException>([&] {
        const MemoryFor none(0);
        qc.GetNamedParams(true);
    }));
    EXPECT_EQ(qc.m_pNamedParams, nullptr);
    EXPECT_EQ(AllocationsIn([&] { qc.GetNamedParams(true); }), 1u);
    EXPECT_NE(qc.m_pNamedParams, nullptr);
}

TEST(QCMemory, AnOptionWithoutMemoryStaysOpen) {
    QC qc;
    const auto setWith = [&](std::size_t allocations) {
        return Raises<CMemoryException>([&] {
            const MemoryFor some(allocations);
            qc.SetBool("option", true);
        });
    };
    EXPECT_TRUE(setWith(0));
    EXPECT_EQ(qc.m_pNamedParams, nullptr);
    EXPECT_EQ(qc.GetBool("option"), eUnknown);
    // The dictionary is made, its entry is not.
    EXPECT_TRUE(setWith(1));
    ASSERT_NE(qc.m_pNamedParams, nullptr);
    EXPECT_EQ(qc.m_pNamedParams->GetParamCount(eDictNone), 0);
    EXPECT_EQ(qc.GetBool("option"), eUnknown);
    qc.SetBool("option", true);
    EXPECT_EQ(qc.GetBool("option"), eTrue);
}

}  // namespace
}  // namespace ZT
