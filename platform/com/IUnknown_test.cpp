#include <platform/com/IUnknown.h>

#include <gtest/gtest.h>
#include <tests/CountedObject.h>

#include <cstring>
#include <type_traits>

namespace {

using testing_support::CountedObject;

// Calls the operation at a place of an object's table.
template <class Result, class... Arguments>
Result CallAt(std::size_t place, IUnknown* object, Arguments... arguments) {
    using Operation = Result (*)(IUnknown*, Arguments...);
    Operation const* table;
    std::memcpy(&table, static_cast<const void*>(object), sizeof table);
    return table[place](object, arguments...);
}

TEST(IUnknown, TableHoldsQueryInterfaceThenAddRefThenRelease) {
    CountedObject object;
    void* found = nullptr;
    EXPECT_EQ((CallAt<HRESULT, const IID*, void**>(0, &object, &IID_IUnknown, &found)), S_OK);
    EXPECT_EQ(found, &object);
    EXPECT_EQ(CallAt<ULONG>(1, &object), 3u);
    EXPECT_EQ(CallAt<ULONG>(2, &object), 2u);
    EXPECT_EQ(object.count, 2u);
}

TEST(IUnknown, OwnOperationsOfAnInterfaceFollow) {
    CountedObject object;
    EXPECT_EQ(CallAt<int>(3, &object), 7);
}

TEST(IUnknown, HasNoDestructorInItsTable) {
    EXPECT_FALSE(std::has_virtual_destructor_v<IUnknown>);
    EXPECT_FALSE(std::is_destructible_v<IUnknown>);
    EXPECT_EQ(sizeof(IUnknown), sizeof(void*));
}

TEST(IUnknown, IdentifierIsTheAgreedOne) {
    wchar_t text[kGuidTextSize];
    StringFromGUID2(IID_IUnknown, text, kGuidTextSize);
    EXPECT_STREQ(text, L"{00000000-0000-0000-C000-000000000046}");
    EXPECT_EQ(InterfaceIdOf<IUnknown>::value, IID_IUnknown);
}

}  // namespace
