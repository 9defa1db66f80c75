#include <gtest/gtest.h>
#include <zt/interfaces/IQueryClient.h>
#include <zt/modules/Reference.h>

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace ZT {
namespace {

// Some address; no reference looks behind it.
int place = 0;
IQueryClient* const client = reinterpret_cast<IQueryClient*>(&place);

TEST(Reference, FieldsStandInTheirOrder) {
    EXPECT_EQ(offsetof(Reference, m_pClient), 0u);
    EXPECT_EQ(offsetof(Reference, m_nRefs), 8u);
    EXPECT_EQ(sizeof(Reference), 16u);
    EXPECT_FALSE(std::is_polymorphic_v<Reference>);
    EXPECT_TRUE((std::is_same_v<decltype(Reference::m_nRefs), std::uint32_t>));
    EXPECT_TRUE((std::is_same_v<decltype(Reference().AddRef()), std::uint32_t>));
    EXPECT_TRUE((std::is_same_v<decltype(Reference().Release()), bool>));
}

TEST(Reference, CountsOneForAClientAndNoneWithout) {
    EXPECT_EQ(Reference().m_pClient, nullptr);
    EXPECT_EQ(Reference().m_nRefs, 0u);
    EXPECT_EQ(Reference(nullptr).m_pClient, nullptr);
    EXPECT_EQ(Reference(nullptr).m_nRefs, 0u);
    EXPECT_EQ(Reference(client).m_pClient, client);
    EXPECT_EQ(Reference(client).m_nRefs, 1u);
}

TEST(Reference, ReleaseTellsWhetherReferencesRemain) {
    Reference reference(client);
    EXPECT_EQ(reference.AddRef(), 2u);
    EXPECT_EQ(reference.AddRef(), 3u);
    EXPECT_TRUE(reference.Release());
    EXPECT_TRUE(reference.Release());
    EXPECT_EQ(reference.m_nRefs, 1u);
    EXPECT_FALSE(reference.Release());
    EXPECT_EQ(reference.m_nRefs, 0u);
    EXPECT_FALSE(reference.Release());
    EXPECT_EQ(reference.m_nRefs, 0u);
    EXPECT_EQ(reference.m_pClient, client);
}

TEST(Reference, ReleaseWithoutReferencesIsFalse) {
    Reference none(nullptr);
    EXPECT_FALSE(none.Release());
    EXPECT_EQ(none.AddRef(), 1u);
    EXPECT_FALSE(none.Release());
}

TEST(Reference, AssignmentTakesBothFields) {
    Reference reference(client), other;
    reference.AddRef();
    other = reference;
    EXPECT_EQ(other.m_pClient, client);
    EXPECT_EQ(other.m_nRefs, 2u);
    EXPECT_EQ(reference.m_nRefs, 2u);
}

}  // namespace
}  // namespace ZT
